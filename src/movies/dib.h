// A bitmap as its file (.bmp) holds it: header, colour table and pixels, carried as bytes from a
// file to a movie. Nothing in it is drawn.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "base/canvas.h"
#include "base/outcome.h"

namespace ormel {

// NOLINTBEGIN(readability-identifier-naming): the name by which this is known to makers of movies

class cDIB {
 public:
  // Fails with a sentence that has the path on a line of its own when the file is missing, locked
  // or no bitmap whose size is told.
  [[nodiscard]] static Outcome<cDIB> CreateFromFile(const std::filesystem::path& path);

  // From memory that holds an info header and the pixels behind it: at least 16 bits a pixel, and
  // so without a colour table.
  [[nodiscard]] static Outcome<cDIB> CreateFromPackedDIBPointer(std::span<const char> packed);

  // 24 bits a pixel, uncompressed, rows from the bottom up. The canvas must not be empty, and its
  // pixels take less than 4 GB.
  static cDIB OfCanvas(const Canvas& canvas);

  // An old file at `path` is replaced only by the finished one.
  [[nodiscard]] Outcome<> WriteToFile(const std::filesystem::path& path) const;

  std::int32_t Width() const { return static_cast<std::int32_t>(Field(4, 4)); }
  std::int32_t Height() const { return static_cast<std::int32_t>(Field(8, 4)); }
  std::uint16_t Planes() const { return static_cast<std::uint16_t>(Field(12, 2)); }
  std::uint16_t BitCount() const { return static_cast<std::uint16_t>(Field(14, 2)); }
  std::uint32_t Compression() const { return Field(16, 4); }
  std::uint32_t SizeImage() const { return Field(20, 4); }
  std::int32_t XPelsPerMeter() const { return static_cast<std::int32_t>(Field(24, 4)); }
  std::int32_t YPelsPerMeter() const { return static_cast<std::int32_t>(Field(28, 4)); }
  std::uint32_t ClrUsed() const { return Field(32, 4); }
  std::uint32_t ClrImportant() const { return Field(36, 4); }

  std::string_view Bits() const { return bits_; }
  // The info header and the colour table.
  std::string_view BitmapInfo() const { return info_; }

  // The picture of 24 uncompressed bits a pixel; of others an empty one.
  Canvas Picture() const;

 private:
  cDIB(std::string info, std::string bits) : info_(std::move(info)), bits_(std::move(bits)) {}

  // A number of the info header, the lowest byte first.
  std::uint32_t Field(std::size_t offset, int size) const;

  std::string info_;  // at least the info header
  std::string bits_;
};

// NOLINTEND(readability-identifier-naming)

}  // namespace ormel
