// The pictures that greet at the start: small scaled maps in the colours of a palette.
#pragma once

#include <filesystem>

#include "base/canvas.h"

namespace ormel {

// Cells outside 0 to 255 stay white. Empty when map or palette cannot be read.
Canvas DrawStartUpPicture(const std::filesystem::path& map, const std::filesystem::path& palette);

}  // namespace ormel
