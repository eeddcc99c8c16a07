// Pictures as PNG files (Portable Network Graphics, ISO/IEC 15948): 24 bits a pixel, compressed
// without loss, which every browser and text program shows.
#pragma once

#include <filesystem>
#include <string>

#include "base/canvas.h"
#include "base/outcome.h"

namespace ormel {

// The bytes of the file. The canvas must not be empty.
std::string PngBytes(const Canvas& canvas);

// Writes the picture. An old file at `path` is replaced only by the finished one. Refuses an empty
// canvas.
[[nodiscard]] Outcome<> WritePng(const Canvas& canvas, const std::filesystem::path& path);

}  // namespace ormel
