#include "movies/dib.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>
#include <vector>

#include "base/file_writer.h"
#include "base/input_file.h"
#include "movies/little_endian.h"

namespace ormel {
namespace {

constexpr std::size_t kFileHeaderBytes = 14;
constexpr std::size_t kInfoHeaderBytes = 40;
constexpr std::uint32_t kPixelsPerMetre = 2835;  // 72 dots an inch
constexpr int kTrueColourBits = 24;
constexpr int kFewestPackedBits = 16;
constexpr std::size_t kBytesPerPixel = 3;

// The size in bytes of a row in the file, where each begins at a multiple of 4.
std::size_t RowBytes(std::size_t width) { return (width * kBytesPerPixel + 3) / 4 * 4; }

Failure NoBitmap(const std::filesystem::path& path) {
  return {FailureKind::kDamaged, "File is not a supported bitmap format:\n" + path.string()};
}

Outcome<InputFile> OpenBitmap(const std::filesystem::path& path) {
  std::error_code error;
  if (!std::filesystem::exists(path, error)) {
    return Failure{FailureKind::kNotFound, "File does not exist:\n" + path.string()};
  }
  Outcome<InputFile> file = InputFile::Open(path);
  if (file.Ok() || errno != EACCES) return file;
  return Failure{FailureKind::kDisk, "File is locked - cannot access:\n" + path.string()};
}

std::string InfoHeader(const Canvas& canvas, std::size_t imageBytes) {
  const struct {
    std::uint64_t value;
    int size;
  } fields[] = {
      {kInfoHeaderBytes, 4},
      {static_cast<std::uint64_t>(canvas.Width()), 4},
      {static_cast<std::uint64_t>(canvas.Height()), 4},  // above 0: from the bottom up
      {1, 2},                                            // planes
      {kTrueColourBits, 2},
      {0, 4},  // no compression
      {imageBytes, 4},
      {kPixelsPerMetre, 4},
      {kPixelsPerMetre, 4},
      {0, 4},  // colours in a colour table
      {0, 4},  // important ones of them
  };
  std::string bytes;
  for (const auto& field : fields) AppendNumber(bytes, field.value, field.size);
  return bytes;
}

// Pixels are stored blue first.
void CopyReversed(const std::uint8_t* from, std::size_t pixels, char* to) {
  for (std::size_t i = 0; i < pixels * kBytesPerPixel; i += kBytesPerPixel) {
    to[i] = static_cast<char>(from[i + 2]);
    to[i + 1] = static_cast<char>(from[i + 1]);
    to[i + 2] = static_cast<char>(from[i]);
  }
}

}  // namespace

std::uint32_t cDIB::Field(std::size_t offset, int size) const {
  return static_cast<std::uint32_t>(ReadNumber(info_, offset, size));
}

// No header is believed before the file is known to hold what it says.
Outcome<cDIB> cDIB::CreateFromFile(const std::filesystem::path& path) {
  const Outcome<InputFile> opened = OpenBitmap(path);
  if (!opened.Ok()) return opened.Stop();
  const InputFile& file = opened.Value();
  std::string error;
  std::string head(kFileHeaderBytes + kInfoHeaderBytes, '\0');
  const bool whole = file.ReadAt(0, head, error) == head.size();
  if (!error.empty()) return Failure{FailureKind::kDisk, error};
  if (!whole || !head.starts_with("BM")) return NoBitmap(path);
  const std::uint64_t start = ReadNumber(head, 10, 4);
  const std::uint64_t imageBytes = ReadNumber(head, kFileHeaderBytes + 20, 4);
  if (imageBytes < 1 || start < head.size() || start + imageBytes > file.Size()) {
    return NoBitmap(path);
  }
  cDIB dib(std::string(static_cast<std::size_t>(start) - kFileHeaderBytes, '\0'),
           std::string(static_cast<std::size_t>(imageBytes), '\0'));
  const bool read = file.ReadAt(kFileHeaderBytes, dib.info_, error) == dib.info_.size() &&
                    file.ReadAt(start, dib.bits_, error) == dib.bits_.size();
  if (!error.empty()) return Failure{FailureKind::kDisk, error};
  if (!read) return NoBitmap(path);
  return dib;
}

Outcome<cDIB> cDIB::CreateFromPackedDIBPointer(std::span<const char> packed) {
  const Failure refused{FailureKind::kRefused, "Error! DIB was less than 16 colors."};
  if (packed.size() < kInfoHeaderBytes) return refused;
  cDIB dib(std::string(packed.data(), kInfoHeaderBytes), "");
  const std::span<const char> bits = packed.subspan(kInfoHeaderBytes);
  if (dib.BitCount() < kFewestPackedBits || dib.SizeImage() < 1 || dib.SizeImage() > bits.size()) {
    return refused;
  }
  dib.bits_.assign(bits.data(), dib.SizeImage());
  return dib;
}

cDIB cDIB::OfCanvas(const Canvas& canvas) {
  const auto width = static_cast<std::size_t>(canvas.Width());
  const auto height = static_cast<std::size_t>(canvas.Height());
  std::string bits(RowBytes(width) * height, '\0');
  for (std::size_t y = 0; y < height; ++y) {
    CopyReversed(&canvas.Bytes()[(height - 1 - y) * width * kBytesPerPixel], width,
                 &bits[y * RowBytes(width)]);
  }
  std::string info = InfoHeader(canvas, bits.size());
  return {std::move(info), std::move(bits)};
}

Outcome<> cDIB::WriteToFile(const std::filesystem::path& path) const {
  Outcome<FileWriter> file = FileWriter::Open(path);
  if (!file.Ok()) return file.Stop();
  const std::size_t start = kFileHeaderBytes + info_.size();
  std::string head = "BM";
  AppendNumber(head, start + bits_.size(), 4);
  AppendNumber(head, 0, 4);  // reserved
  AppendNumber(head, start, 4);
  for (const std::string_view piece : {std::string_view(head), BitmapInfo(), Bits()}) {
    file.Value().Write(piece);
  }
  return file.Value().Commit();
}

Canvas cDIB::Picture() const {
  const auto width = static_cast<std::size_t>(std::max(Width(), 0));
  const auto height = static_cast<std::size_t>(std::max(Height(), 0));
  const bool plain = BitCount() == kTrueColourBits && Compression() == 0;
  if (!plain || width == 0 || height == 0 || bits_.size() / RowBytes(width) < height) return {};
  Canvas picture(Width(), Height());
  std::vector<Colour> row(width);
  for (std::size_t y = 0; y < height; ++y) {
    const char* from = &bits_[(height - 1 - y) * RowBytes(width)];
    for (std::size_t x = 0; x < width; ++x) {
      const auto part = [&](std::size_t i) {
        return static_cast<unsigned char>(from[x * kBytesPerPixel + i]);
      };
      row[x] = Rgb(part(2), part(1), part(0));
    }
    picture.SetRow(static_cast<int>(y), row);
  }
  return picture;
}

}  // namespace ormel
