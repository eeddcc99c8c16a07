// Pictures as files of the format that their name asks for.
#pragma once

#include <filesystem>

#include "base/canvas.h"
#include "base/outcome.h"

namespace ormel {

// For dialogs that save pictures.
inline constexpr char kPictureFilter[] = "PNG Picture (.png)|*.png|Bitmap (.bmp)|*.bmp";

// A PNG file when the name ends in .png, else a bitmap; see movies/png.h and movies/bitmap.h.
[[nodiscard]] Outcome<> WritePicture(const Canvas& canvas, const std::filesystem::path& path);

}  // namespace ormel
