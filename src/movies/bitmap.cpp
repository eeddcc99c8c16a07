#include "movies/bitmap.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>

#include "movies/dib.h"

namespace ormel {

Outcome<> WriteBitmap(const Canvas& canvas, const std::filesystem::path& path) {
  constexpr std::size_t kHeaderBytes = 54;
  if (canvas.Empty()) {
    return Failure{FailureKind::kRefused, path.string() + ": the picture has no pixels."};
  }
  const std::size_t rowBytes = (static_cast<std::size_t>(canvas.Width()) * 3 + 3) / 4 * 4;
  const std::size_t imageBytes = rowBytes * static_cast<std::size_t>(canvas.Height());
  if (imageBytes > std::numeric_limits<std::uint32_t>::max() - kHeaderBytes) {
    return Failure{FailureKind::kTooLarge,
                   path.string() + ": a picture of " + std::to_string(canvas.Width()) + " by " +
                       std::to_string(canvas.Height()) + " pixels is too large for a bitmap file."};
  }
  return cDIB::OfCanvas(canvas).WriteToFile(path);
}

}  // namespace ormel
