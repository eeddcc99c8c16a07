#include "movies/png.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string_view>
#include <vector>

#include "base/file_writer.h"

namespace ormel {
namespace {

using Bytes = std::string;

constexpr std::size_t kBytesPerPixel = 3;

// Numbers of the file have their highest byte first.
void AppendNumber(Bytes& bytes, std::uint32_t number) {
  for (int shift = 24; shift >= 0; shift -= 8) bytes.push_back(static_cast<char>(number >> shift));
}

// ---- Check sums ---------------------------------------------------------------------------------

constexpr std::array<std::uint32_t, 256> MakeCrcTable() {
  std::array<std::uint32_t, 256> table{};
  for (std::uint32_t i = 0; i < table.size(); ++i) {
    std::uint32_t crc = i;
    for (int bit = 0; bit < 8; ++bit) crc = (crc & 1) != 0 ? 0xEDB88320 ^ crc >> 1 : crc >> 1;
    table[i] = crc;
  }
  return table;
}
constexpr std::array<std::uint32_t, 256> kCrcTable = MakeCrcTable();

std::uint32_t Crc(std::string_view bytes) {
  std::uint32_t crc = 0xFFFFFFFF;
  for (const char byte : bytes) {
    crc = kCrcTable[(crc ^ static_cast<unsigned char>(byte)) & 0xFF] ^ crc >> 8;
  }
  return ~crc;
}

std::uint32_t Adler(std::string_view bytes) {
  constexpr std::uint32_t kBase = 65521;
  std::uint32_t a = 1;
  std::uint32_t b = 0;
  for (const char byte : bytes) {
    a = (a + static_cast<unsigned char>(byte)) % kBase;
    b = (b + a) % kBase;
  }
  return b << 16 | a;
}

void AppendChunk(Bytes& file, std::string_view type, std::string_view data) {
  AppendNumber(file, static_cast<std::uint32_t>(data.size()));
  const std::size_t start = file.size();
  file.append(type).append(data);
  AppendNumber(file, Crc(std::string_view(file).substr(start)));
}

// ---- Compression: DEFLATE (RFC 1951), one block with the fixed codes
// ------------------------------

class BitWriter {
 public:
  explicit BitWriter(Bytes& bytes) : bytes_(bytes) {}

  // The lowest bit goes first.
  void Put(std::uint32_t bits, int count) {
    held_ |= static_cast<std::uint64_t>(bits) << count_;
    for (count_ += count; count_ >= 8; count_ -= 8, held_ >>= 8) {
      bytes_.push_back(static_cast<char>(held_));
    }
  }
  // Codes go the other way round.
  void PutCode(std::uint32_t code, int count) {
    std::uint32_t turned = 0;
    for (int i = 0; i < count; ++i) turned |= (code >> i & 1) << (count - 1 - i);
    Put(turned, count);
  }
  void Finish() {
    if (count_ > 0) Put(0, 8 - count_);
  }

 private:
  Bytes& bytes_;
  std::uint64_t held_ = 0;
  int count_ = 0;
};

// Lengths and distances of copies are told as the start of a range and the place in it.
struct Range {
  int start;
  int extraBits;
};

template <std::size_t Count>
constexpr std::array<Range, Count> MakeRanges(int first, int plain, int perDoubling) {
  std::array<Range, Count> ranges{};
  int start = first;
  for (int i = 0; i < static_cast<int>(Count); ++i) {
    const int bits = i < plain ? 0 : (i - plain) / perDoubling + 1;
    ranges[static_cast<std::size_t>(i)] = {start, bits};
    start += 1 << bits;
  }
  return ranges;
}

constexpr int kShortestCopy = 3;
constexpr int kLongestCopy = 257;  // 258 has a code of its own, which is not worth a branch
constexpr std::size_t kFarthestCopy = 32 * 1024;
constexpr auto kLengths = MakeRanges<28>(kShortestCopy, 8, 4);
constexpr auto kDistances = MakeRanges<30>(1, 4, 2);

template <std::size_t Count>
int RangeOf(const std::array<Range, Count>& ranges, int value) {
  const auto behind =
      std::upper_bound(ranges.begin(), ranges.end(), value,
                       [](int wanted, const Range& range) { return wanted < range.start; });
  return static_cast<int>(behind - ranges.begin()) - 1;
}

// The fixed code of a byte (0 to 255), of the end (256) or of a length (257 on).
void PutSymbol(BitWriter& out, int symbol) {
  const auto code = static_cast<std::uint32_t>(symbol);
  if (symbol < 144) return out.PutCode(0x30 + code, 8);
  if (symbol < 256) return out.PutCode(0x190 + code - 144, 9);
  if (symbol < 280) return out.PutCode(code - 256, 7);
  out.PutCode(0xC0 + code - 280, 8);
}

void PutCopy(BitWriter& out, int length, int distance) {
  const int lengthRange = RangeOf(kLengths, length);
  const Range& lengths = kLengths[static_cast<std::size_t>(lengthRange)];
  PutSymbol(out, 257 + lengthRange);
  out.Put(static_cast<std::uint32_t>(length - lengths.start), lengths.extraBits);
  const int distanceRange = RangeOf(kDistances, distance);
  const Range& distances = kDistances[static_cast<std::size_t>(distanceRange)];
  out.PutCode(static_cast<std::uint32_t>(distanceRange), 5);
  out.Put(static_cast<std::uint32_t>(distance - distances.start), distances.extraBits);
}

// Finds earlier places that go on like the present one: the last ones that began with the same
// three bytes.
class Copies {
 public:
  explicit Copies(std::string_view data)
      : data_(data), last_(kHashes, kNone), before_(data.size()) {}

  struct Copy {
    int length = 0;
    int distance = 0;
  };

  Copy Best(std::size_t place) const {
    Copy best;
    if (place + kShortestCopy > data_.size()) return best;
    std::size_t from = last_[HashAt(place)];
    for (int tries = 0; tries < kTries && from != kNone && place - from <= kFarthestCopy; ++tries) {
      const int length = LengthOf(from, place);
      if (length > best.length) best = {length, static_cast<int>(place - from)};
      from = before_[from];
    }
    return best;
  }

  void Remember(std::size_t place) {
    if (place + kShortestCopy > data_.size()) return;
    std::size_t& last = last_[HashAt(place)];
    before_[place] = last;
    last = place;
  }

 private:
  static constexpr std::size_t kHashes = 1 << 15;
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
  static constexpr int kTries = 8;

  std::size_t HashAt(std::size_t place) const {
    std::uint32_t hash = 0;
    for (std::size_t i = 0; i < 3; ++i) {
      hash = hash << 8 | static_cast<unsigned char>(data_[place + i]);
    }
    return hash * 2654435761U >> 17;
  }

  int LengthOf(std::size_t from, std::size_t place) const {
    const auto most = static_cast<int>(std::min<std::size_t>(kLongestCopy, data_.size() - place));
    int length = 0;
    while (length < most && data_[from + static_cast<std::size_t>(length)] ==
                                data_[place + static_cast<std::size_t>(length)]) {
      ++length;
    }
    return length;
  }

  std::string_view data_;
  std::vector<std::size_t> last_;    // by hash
  std::vector<std::size_t> before_;  // of a place, the one before it with the same hash
};

Bytes Compressed(std::string_view data) {
  constexpr int kEnd = 256;
  Bytes bytes{'\x78', '\x01'};  // of the surrounding format (RFC 1950): a window of 32 KiB
  BitWriter out(bytes);
  out.Put(1, 1);  // the last block
  out.Put(1, 2);  // with the fixed codes
  Copies copies(data);
  for (std::size_t place = 0; place < data.size();) {
    const Copies::Copy copy = copies.Best(place);
    const bool isCopy = copy.length >= kShortestCopy;
    if (isCopy) {
      PutCopy(out, copy.length, copy.distance);
    } else {
      PutSymbol(out, static_cast<unsigned char>(data[place]));
    }
    for (int i = 0; i < (isCopy ? copy.length : 1); ++i) copies.Remember(place++);
  }
  PutSymbol(out, kEnd);
  out.Finish();
  AppendNumber(bytes, Adler(data));
  return bytes;
}

// ---- Pixels -------------------------------------------------------------------------------------

// Rows are stored as differences from their left or upper neighbours, whichever are smaller.
enum class Filter { kNone = 0, kLeft = 1, kUp = 2 };

std::uint8_t Filtered(Filter filter, std::span<const std::uint8_t> row,
                      std::span<const std::uint8_t> above, std::size_t i) {
  if (filter == Filter::kNone) return row[i];
  if (filter == Filter::kUp) return static_cast<std::uint8_t>(row[i] - above[i]);
  return static_cast<std::uint8_t>(row[i] - (i < kBytesPerPixel ? 0 : row[i - kBytesPerPixel]));
}

Bytes FilteredRow(Filter filter, std::span<const std::uint8_t> row,
                  std::span<const std::uint8_t> above) {
  Bytes bytes(1, static_cast<char>(filter));
  for (std::size_t i = 0; i < row.size(); ++i) {
    bytes.push_back(static_cast<char>(Filtered(filter, row, above, i)));
  }
  return bytes;
}

int SizeOf(std::string_view row) {
  int size = 0;
  for (const char difference : row.substr(1))
    size += std::abs(static_cast<signed char>(difference));
  return size;
}

Bytes FilteredPixels(const Canvas& canvas) {
  const std::size_t width = static_cast<std::size_t>(canvas.Width()) * kBytesPerPixel;
  std::vector<std::uint8_t> nothing(width);
  std::span<const std::uint8_t> above = nothing;
  Bytes pixels;
  for (std::size_t start = 0; start < canvas.Bytes().size(); start += width) {
    const std::span<const std::uint8_t> row = canvas.Bytes().subspan(start, width);
    Bytes best = FilteredRow(Filter::kNone, row, above);
    for (const Filter filter : {Filter::kLeft, Filter::kUp}) {
      Bytes other = FilteredRow(filter, row, above);
      if (SizeOf(other) < SizeOf(best)) best = std::move(other);
    }
    pixels += best;
    above = row;
  }
  return pixels;
}

}  // namespace

std::string PngBytes(const Canvas& canvas) {
  Bytes header;
  AppendNumber(header, static_cast<std::uint32_t>(canvas.Width()));
  AppendNumber(header, static_cast<std::uint32_t>(canvas.Height()));
  // 8 bits a sample, red, green and blue; the only ways to compress, to filter and to order rows.
  header.append("\x08\x02\0\0\0", 5);
  Bytes file = "\x89PNG\r\n\x1A\n";
  AppendChunk(file, "IHDR", header);
  AppendChunk(file, "IDAT", Compressed(FilteredPixels(canvas)));
  AppendChunk(file, "IEND", "");
  return file;
}

Outcome<> WritePng(const Canvas& canvas, const std::filesystem::path& path) {
  if (canvas.Empty()) {
    return Failure{FailureKind::kRefused, path.string() + ": the picture has no pixels."};
  }
  return WriteFile(path, PngBytes(canvas));
}

}  // namespace ormel
