#include "text/token_reader.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

#include "text/numbers.h"

namespace ormel {
namespace {

bool IsLineEnd(char c) { return c == '\r' || c == '\n'; }

bool BeginsNumber(char c) { return IsDigit(c) || c == '-' || c == '+' || c == '.'; }

// How many of the first `size` bytes stand before a line end. The pieces looked at are small, so
// that a file whose lines all end in CR is not searched for LF over and over.
std::size_t BytesBeforeLineEnd(const char* from, std::size_t size) {
  if (const void* lf = std::memchr(from, '\n', size)) {
    size = static_cast<std::size_t>(static_cast<const char*>(lf) - from);
  }
  if (const void* cr = std::memchr(from, '\r', size)) {
    size = static_cast<std::size_t>(static_cast<const char*>(cr) - from);
  }
  return size;
}
constexpr std::size_t kLinePiece = 1024;

// ---- Plain cells: a sign, digits and a point, of at most 15 digits, which are nearly all there
// are.

// As many bytes must be in the buffer for a plain cell to be read without asking for each of them.
constexpr std::size_t kPlainBytes = 32;

std::uint64_t LoadEight(const char* from) {
  std::uint64_t bytes;
  std::memcpy(&bytes, from, sizeof bytes);
  return bytes;
}

// The number of eight digits, one a byte, the first in the lowest byte.
std::uint64_t EightDigitNumber(std::uint64_t digits) {
  digits = digits * (1 + (10 << 8)) >> 8 & 0x00FF00FF00FF00FF;
  digits = digits * (1 + (100 << 16)) >> 16 & 0x0000FFFF0000FFFF;
  return digits * (1 + (10000ULL << 32)) >> 32;
}

// Reads digits with a point among them that end within eight bytes, all eight at once. Returns
// their end, or null when they are longer or something else. The end is found first and by few
// steps: the next cell waits for it, all the rest is done side by side.
const char* ReadShortDigits(const char* from, double& value) {
  constexpr std::uint64_t kOnes = 0x0101010101010101;
  constexpr std::uint64_t kTops = kOnes * 0x80;
  const std::uint64_t bytes = LoadEight(from);
  // The top bit of each byte below the point and the digits: all blanks, commas and line ends.
  const std::uint64_t ends = ~(bytes + kOnes * (0x80 - '.')) & kTops;
  if (ends == 0) return nullptr;
  const int length = std::countr_zero(ends) / 8;
  const std::uint64_t values = bytes ^ kOnes * '0';  // those of digits are 0 to 9
  const std::uint64_t others = (((values & ~kTops) + kOnes * (0x80 - 10)) | values) & kTops;
  const std::uint64_t point = others & (ends ^ (ends - 1)) >> 8;
  if (point == 0) {
    if (length == 0) return nullptr;
    value = static_cast<double>(EightDigitNumber(values << (8 * (8 - length))));
    return from + length;
  }
  const int whole = std::countr_zero(point) / 8;
  if ((point & (point - 1)) != 0 || from[whole] != '.' || length == 1) return nullptr;
  // Closes the gap of the point, and moves the last digit into the highest byte.
  const std::uint64_t wholeBytes = (std::uint64_t{1} << (8 * whole)) - 1;
  const std::uint64_t digits = (values & wholeBytes) | (values >> 8 & ~wholeBytes);
  value = static_cast<double>(EightDigitNumber(digits << (8 * (9 - length)))) /
          kPowersOfTen[length - whole - 1];
  return from + length;
}

// The same for up to 15 digits, one by one.
const char* ReadLongDigits(const char* from, double& value) {
  constexpr int kDigits = 15;
  std::uint64_t digits = 0;
  const char* p = from;
  const char* point = nullptr;
  for (;; ++p) {
    if (IsDigit(*p)) {
      digits = digits * 10 + static_cast<std::uint64_t>(*p - '0');
    } else if (*p == '.' && point == nullptr) {
      point = p;
    } else {
      break;
    }
    if (p - from > kDigits) return nullptr;
  }
  const auto count = p - from - (point != nullptr);
  if (count == 0 || count > kDigits) return nullptr;
  value = static_cast<double>(digits) / kPowersOfTen[point == nullptr ? 0 : p - point - 1];
  return p;
}

// The end of the separator behind a token that ends at `from`, or null when it is not a simple one
// or there is none. The byte behind the buffer is neither a blank nor a line end.
const char* SimpleSeparator(const char* from) {
  if (*from == ' ' && (IsDigit(from[1]) || from[1] == '-')) return from + 1;
  const char* p = from;
  while (IsBlank(*p)) ++p;
  if (*p == ',' || *p == '\n') return p + 1;
  if (*p == '\r') return p[1] == '\n' ? p + 2 : nullptr;
  return p != from && BeginsNumber(*p) ? p : nullptr;
}

// Reads a plain cell and its separator, of which the first kPlainBytes bytes can be read. Returns
// where the next token begins, or null when the cell is not plain.
const char* ReadPlainCell(const char* from, double& value) {
  if (*from == ' ') [[unlikely]]
    ++from;  // only at the beginning of a row
  const bool negative = *from == '-';
  if (negative) [[unlikely]]
    ++from;
  const char* end = nullptr;
  if constexpr (std::endian::native == std::endian::little) end = ReadShortDigits(from, value);
  if (end == nullptr) end = ReadLongDigits(from, value);
  if (end == nullptr) return nullptr;
  if (negative) value = -value;
  return SimpleSeparator(end);
}

}  // namespace

Outcome<TokenReader> TokenReader::Open(const std::filesystem::path& path, std::size_t bufferBytes) {
  Outcome<InputFile> file = InputFile::Open(path);
  if (!file.Ok()) return file.Stop();
  return At(std::move(file.Value()), 0, bufferBytes);
}

TokenReader TokenReader::At(InputFile file, std::uint64_t offset, std::size_t bufferBytes) {
  TokenReader reader;
  reader.file_ = std::move(file);
  reader.fileBytes_ = reader.file_.Size();
  reader.bytesRead_ = offset;
  // A small file needs no large buffer.
  if (reader.fileBytes_ > 0) bufferBytes = std::min(bufferBytes, reader.fileBytes_ + 1);
  reader.bufferBytes_ = std::max<std::size_t>(bufferBytes, 1);
  reader.buffer_ = std::make_unique<char[]>(reader.bufferBytes_ + 1);
  reader.place_ = reader.end_ = reader.buffer_.get();
  return reader;
}

TokenReader TokenReader::Over(std::string_view text) {
  TokenReader reader;
  reader.place_ = text.data();
  reader.end_ = text.data() + text.size();
  reader.fileBytes_ = reader.bytesRead_ = text.size();
  return reader;
}

// Moves what is left to the front of the buffer and reads more behind it. False when nothing came:
// the buffer is full, or the file has ended.
bool TokenReader::Fill() {
  if (!file_.IsOpen()) return false;
  const std::size_t left = Left();
  std::memmove(buffer_.get(), place_, left);
  place_ = buffer_.get();
  end_ = place_ + left;
  const std::size_t room = bufferBytes_ - left;
  if (room == 0) return false;
  const std::size_t count = file_.ReadAt(bytesRead_, {buffer_.get() + left, room}, error_);
  end_ += count;
  bytesRead_ += count;
  buffer_[left + count] = '\0';
  if (count < room) file_ = {};
  return count > 0;
}

bool TokenReader::Peek(char& c) {
  if (place_ == end_ && !Fill()) return false;
  c = *place_;
  return true;
}

// Takes `count` bytes of the buffer to the end of `text`, as far as a text may grow.
void TokenReader::Take(std::string& text, std::size_t count) {
  text.append(place_, std::min(count, kLongestText - text.size()));
  place_ += count;
}

// Takes all bytes up to the next one for which `ends` holds, or to the end of the file.
template <class Predicate>
void TokenReader::TakeUntil(std::string& text, Predicate ends) {
  for (char c; Peek(c) && !ends(c);) {
    Take(text, static_cast<std::size_t>(std::find_if(place_, end_, ends) - place_));
  }
}

void TokenReader::SkipLineEnd() {
  char c = 0;
  if (!Peek(c) || !IsLineEnd(c)) return;
  ++place_;
  if (c == '\r' && Peek(c) && c == '\n') ++place_;
}

// The blanks behind a token, and the comma or line end there.
void TokenReader::SkipSeparator() {
  char c = 0;
  while (Peek(c) && IsBlank(c)) ++place_;
  if (Left() == 0) return;
  if (c == ',') {
    ++place_;
  } else {
    SkipLineEnd();
  }
}

bool TokenReader::ReadLine(std::string& line) {
  line.clear();
  if (Left() == 0 && !Fill()) return false;
  do {
    const std::size_t piece = std::min(Left(), kLinePiece);
    const std::size_t length = BytesBeforeLineEnd(place_, piece);
    Take(line, length);
    if (length < piece) break;
  } while (Left() > 0 || Fill());
  SkipLineEnd();
  return true;
}

void TokenReader::SkipLines(int count) {
  std::string line;
  while (count-- > 0 && ReadLine(line)) {
  }
}

bool TokenReader::Next(std::string_view& token) {
  const auto endsWord = [](char c) { return c == ',' || IsLineEnd(c); };
  char c = 0;
  while (Peek(c) && (IsBlank(c) || IsLineEnd(c))) ++place_;
  if (Left() == 0) return false;
  token_.clear();
  if (c == '"') {
    ++place_;
    TakeUntil(token_, [](char d) { return d == '"'; });
    std::string separator;  // all that stands behind the content, the closing quote too
    TakeUntil(separator, endsWord);
  } else if (BeginsNumber(c)) {
    TakeUntil(token_, [=](char d) { return IsBlank(d) || endsWord(d); });
  } else {
    TakeUntil(token_, endsWord);
    while (!token_.empty() && IsBlank(token_.back())) token_.pop_back();
  }
  SkipSeparator();
  token = token_;
  return true;
}

// Reads plain cells as long as they come and lie in the buffer. Returns how many there were.
std::size_t TokenReader::ReadPlainCells(std::span<double> cells) {
  if (Left() < kPlainBytes) return 0;
  const char* const last = end_ - kPlainBytes;
  const char* p = place_;
  std::size_t count = 0;
  while (count < cells.size() && p <= last) {
    const char* next = ReadPlainCell(p, cells[count]);
    if (next == nullptr) break;
    p = next;
    ++count;
  }
  place_ = p;
  return count;
}

std::size_t TokenReader::ReadNumbers(std::span<double> cells) {
  std::size_t count = 0;
  while (count < cells.size()) {
    count += ReadPlainCells(cells.subspan(count));
    if (count == cells.size()) break;
    if (Left() < kPlainBytes && Fill()) continue;
    // The cell is not plain, or one of the last ones of the file.
    std::string_view token;
    if (!Next(token)) break;
    cells[count++] = TextToNumber(token);
  }
  return count;
}

double TokenReader::Percent() const {
  if (fileBytes_ == 0) return 100;
  return std::min(100.0, 100 * static_cast<double>(Offset()) / static_cast<double>(fileBytes_));
}

}  // namespace ormel
