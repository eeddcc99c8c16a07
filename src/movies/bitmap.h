// Pictures as bitmap files (.bmp): 24 bits a pixel, uncompressed, rows from the bottom up. Every
// field that other readers insist on, the size of the picture among them, is filled in.
#pragma once

#include <filesystem>

#include "base/canvas.h"
#include "base/outcome.h"

namespace ormel {

// Writes the picture. An old file at `path` is replaced only by the finished one. Refuses an empty
// canvas, and one whose file would be larger than the format can say (4 GB).
[[nodiscard]] Outcome<> WriteBitmap(const Canvas& canvas, const std::filesystem::path& path);

}  // namespace ormel
