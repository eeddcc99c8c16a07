#include "mapdata/cell_source.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <optional>
#include <utility>

#include "base/input_file.h"
#include "base/parallel_rows.h"
#include "text/token_reader.h"

namespace ormel {
namespace {

// Read behind a piece at once for the end of its last line. Lines beyond the longest text are left
// to the token reader, which cuts them.
constexpr std::size_t kBytesBehind = 8 * 1024;
constexpr std::size_t kMostBytesBehind = TokenReader::kLongestText;

// The lines that begin in a stretch of the file, and their cells.
struct Piece {
  std::vector<char> text;
  std::vector<double> cells;
  std::size_t count = 0;     // of the cells
  std::uint64_t behind = 0;  // the byte of the file behind its last line; 0: no line begins in it
  // It cannot be read by itself: the disk failed, a line has no end, or there is a double quote,
  // whose record may run on over line ends.
  bool irregular = false;
};

// Reads one piece: the lines that begin in the bytes `from` to `to` (not included) of the file. A
// line begins at `from` when the piece is the `first`; else the byte before it decides.
class PieceReading {
 public:
  PieceReading(const InputFile& file, Piece& piece) : file_(file), piece_(piece) {}

  void Read(std::uint64_t from, std::uint64_t to, bool first) {
    base_ = first ? from : from - 1;
    own_ = static_cast<std::size_t>(to - base_);
    piece_.count = 0;
    piece_.behind = 0;
    piece_.irregular = !ReadUpTo(own_ + kBytesBehind);
    if (piece_.irregular) return;
    const std::optional<std::size_t> begin =
        first ? 0 : LineBehind(0, std::min(own_, held_ + 1) - 1);
    if (!begin) return;
    const std::optional<std::size_t> end = EndOfLastLine();
    const char* text = piece_.text.data();
    piece_.irregular = !end || std::memchr(text + *begin, '"', *end - *begin) != nullptr;
    if (piece_.irregular) return;
    piece_.behind = base_ + *end;
    ReadCells(*begin, *end);
  }

 private:
  // Has the first `bytes` of the text, or all there are. False when the disk fails.
  bool ReadUpTo(std::size_t bytes) {
    if (piece_.text.size() < bytes + 1) piece_.text.resize(bytes + 1);
    std::string error;
    held_ += file_.ReadAt(base_ + held_, {piece_.text.data() + held_, bytes - held_}, error);
    atEnd_ = held_ < bytes;
    return error.empty();
  }

  // Where the line begins that stands behind the first line end from `start` to `end` (not
  // included) of the text.
  std::optional<std::size_t> LineBehind(std::size_t start, std::size_t end) const {
    const char* text = piece_.text.data();
    const void* found = start < end ? std::memchr(text + start, '\n', end - start) : nullptr;
    if (found == nullptr) return std::nullopt;
    return static_cast<std::size_t>(static_cast<const char*>(found) - text) + 1;
  }

  // Behind the line end of the last line, or the end of the file. None when it is too far.
  std::optional<std::size_t> EndOfLastLine() {
    for (std::size_t seen = own_ - 1;;) {
      if (const std::optional<std::size_t> end = LineBehind(seen, held_)) return end;
      if (atEnd_) return held_;
      seen = held_;
      if (held_ > own_ + kMostBytesBehind || !ReadUpTo(2 * held_)) return std::nullopt;
    }
  }

  void ReadCells(std::size_t begin, std::size_t end) {
    piece_.text[end] = '\0';
    TokenReader reader = TokenReader::Over({piece_.text.data() + begin, end - begin});
    std::vector<double>& cells = piece_.cells;
    if (cells.empty()) cells.resize(own_ / 4 + 1);
    while (true) {
      piece_.count += reader.ReadNumbers(std::span(cells).subspan(piece_.count));
      if (piece_.count < cells.size()) return;
      cells.resize(2 * cells.size());
    }
  }

  const InputFile& file_;
  Piece& piece_;
  std::uint64_t base_ = 0;  // the byte of the file with which the text begins
  std::size_t own_ = 0;     // bytes of the text in which lines may begin
  std::size_t held_ = 0;    // bytes of the text
  bool atEnd_ = false;      // of the file
};

}  // namespace

struct CellSource::Reading {
  InputFile file;
  std::vector<std::string> header;
  std::size_t pieceBytes = 0;
  std::uint64_t start = 0;            // the byte behind the header
  std::optional<TokenReader> serial;  // reads on from where the pieces have ended
  std::vector<Piece> pieces;          // by slot
  std::optional<OrderedPieces> ordered;
  std::span<const double> left;  // of the piece that was taken last
  std::uint64_t taken = 0;       // the byte behind that piece
  std::string noError;

  void ReadInPieces(int threads) {
    pieces.resize(static_cast<std::size_t>(OrderedPieces::SlotsFor(threads)));
    ordered.emplace(
        OrderedPieces::Steps{
            [this](std::int64_t piece, int /*slot*/) { return StartOf(piece) < file.Size(); },
            [this](std::int64_t piece, int slot) {
              PieceReading(file, pieces[static_cast<std::size_t>(slot)])
                  .Read(StartOf(piece), std::min(StartOf(piece + 1), file.Size()), piece == 0);
            }},
        threads);
  }

  std::uint64_t StartOf(std::int64_t piece) const {
    return start + static_cast<std::uint64_t>(piece) * pieceBytes;
  }

  // The next piece with cells becomes what is left. False when the pieces have ended.
  bool TakePiece() {
    for (int slot = ordered->Next(); slot >= 0; slot = ordered->Next()) {
      const Piece& piece = pieces[static_cast<std::size_t>(slot)];
      if (piece.irregular) {
        ordered.reset();
        serial = TokenReader::At(file, taken);
        return false;
      }
      if (piece.behind > 0) taken = piece.behind;
      left = std::span(piece.cells).first(piece.count);
      if (!left.empty()) return true;
    }
    return false;
  }
};

Outcome<CellSource> CellSource::Open(const std::filesystem::path& path, int headerLines,
                                     std::size_t pieceBytes) {
  Outcome<InputFile> file = InputFile::Open(path);
  if (!file.Ok()) return file.Stop();
  auto reading = std::make_unique<Reading>();
  reading->file = file.Value();
  reading->pieceBytes = pieceBytes;
  TokenReader header = TokenReader::At(file.Value(), 0);
  std::string line;
  for (int i = 1; i <= headerLines && header.ReadLine(line); ++i) reading->header.push_back(line);
  reading->start = reading->taken = header.Offset();
  const int threads = ThreadCount();
  if (threads > 1 && file.Value().Size() > reading->start + pieceBytes) {
    reading->ReadInPieces(threads);
  } else {
    reading->serial = std::move(header);
  }
  return CellSource(std::move(reading));
}

CellSource::CellSource(std::unique_ptr<Reading> reading) : reading_(std::move(reading)) {}
CellSource::CellSource(CellSource&&) noexcept = default;
CellSource::~CellSource() = default;

const std::vector<std::string>& CellSource::HeaderLines() const { return reading_->header; }

std::size_t CellSource::Read(std::span<double> cells) {
  Reading& reading = *reading_;
  std::size_t count = 0;
  while (count < cells.size()) {
    if (reading.serial) return count + reading.serial->ReadNumbers(cells.subspan(count));
    if (reading.left.empty()) {
      if (!reading.TakePiece() && !reading.serial) break;
      continue;
    }
    const std::size_t taken = std::min(reading.left.size(), cells.size() - count);
    std::copy_n(reading.left.begin(), taken, cells.begin() + static_cast<std::ptrdiff_t>(count));
    reading.left = reading.left.subspan(taken);
    count += taken;
  }
  return count;
}

double CellSource::Percent() const {
  if (reading_->serial) return reading_->serial->Percent();
  return std::min(100.0, 100 * static_cast<double>(reading_->taken) /
                             static_cast<double>(reading_->file.Size()));
}

const std::string& CellSource::Error() const {
  return reading_->serial ? reading_->serial->Error() : reading_->noError;
}

}  // namespace ormel
