#include "movies/picture_file.h"

#include "movies/bitmap.h"
#include "movies/png.h"

namespace ormel {

Outcome<> WritePicture(const Canvas& canvas, const std::filesystem::path& path) {
  return path.extension() == ".png" ? WritePng(canvas, path) : WriteBitmap(canvas, path);
}

}  // namespace ormel
