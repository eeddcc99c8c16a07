#include "movies/bitmap.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string>

#include "base/file_writer.h"

namespace ormel {
namespace {

// Parts of the file format.
constexpr std::uint32_t kInfoHeaderBytes = 40;
constexpr std::uint32_t kPixelsStart = 14 + kInfoHeaderBytes;
constexpr int kBitsPerPixel = 24;
constexpr std::uint32_t kPixelsPerMetre = 2835;  // 72 dots an inch
constexpr std::size_t kBytesPerPixel = kBitsPerPixel / 8;

// The size in bytes of a row in the file, where each begins at a multiple of 4.
std::size_t RowBytes(const Canvas& canvas) {
  return (static_cast<std::size_t>(canvas.Width()) * kBytesPerPixel + 3) / 4 * 4;
}

// Numbers are stored with the lowest byte first.
void AppendNumber(std::string& bytes, std::uint32_t number, int size) {
  for (int i = 0; i < size; ++i) bytes.push_back(static_cast<char>(number >> (8 * i) & 0xFF));
}

std::string Headers(const Canvas& canvas, std::uint32_t imageBytes) {
  struct Field {
    std::uint32_t value;
    int size;
  };
  const Field fields[] = {
      {kPixelsStart + imageBytes, 4},  // size of the file
      {0, 2},                          // reserved
      {0, 2},
      {kPixelsStart, 4},
      {kInfoHeaderBytes, 4},
      {static_cast<std::uint32_t>(canvas.Width()), 4},
      {static_cast<std::uint32_t>(canvas.Height()), 4},  // above 0: from the bottom up
      {1, 2},                                            // planes
      {kBitsPerPixel, 2},
      {0, 4},  // no compression
      {imageBytes, 4},
      {kPixelsPerMetre, 4},
      {kPixelsPerMetre, 4},
      {0, 4},  // colours in a colour table
      {0, 4},  // important ones of them
  };
  std::string bytes = "BM";
  for (const Field& field : fields) AppendNumber(bytes, field.value, field.size);
  return bytes;
}

// Pixels are stored blue first. `row` is as long as a row in the file; its padding stays as it is.
void FillRow(std::span<const std::uint8_t> pixels, std::string& row) {
  for (std::size_t i = 0; i < pixels.size(); i += kBytesPerPixel) {
    row[i] = static_cast<char>(pixels[i + 2]);
    row[i + 1] = static_cast<char>(pixels[i + 1]);
    row[i + 2] = static_cast<char>(pixels[i]);
  }
}

}  // namespace

Outcome<> WriteBitmap(const Canvas& canvas, const std::filesystem::path& path) {
  if (canvas.Empty()) {
    return Failure{FailureKind::kRefused, path.string() + ": the picture has no pixels."};
  }
  const std::size_t imageBytes = RowBytes(canvas) * static_cast<std::size_t>(canvas.Height());
  if (imageBytes > std::numeric_limits<std::uint32_t>::max() - kPixelsStart) {
    return Failure{FailureKind::kTooLarge,
                   path.string() + ": a picture of " + std::to_string(canvas.Width()) + " by " +
                       std::to_string(canvas.Height()) + " pixels is too large for a bitmap file."};
  }
  Outcome<FileWriter> file = FileWriter::Open(path);
  if (!file.Ok()) return file.Stop();
  file.Value().Write(Headers(canvas, static_cast<std::uint32_t>(imageBytes)));

  const std::size_t pixelRow = static_cast<std::size_t>(canvas.Width()) * kBytesPerPixel;
  std::string row(RowBytes(canvas), '\0');
  for (int y = canvas.Height() - 1; y >= 0; --y) {
    FillRow(canvas.Bytes().subspan(static_cast<std::size_t>(y) * pixelRow, pixelRow), row);
    file.Value().Write(row);
  }
  return file.Value().Commit();
}

}  // namespace ormel
