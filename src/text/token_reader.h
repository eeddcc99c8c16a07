// Reads map, palette and model files line by line or token by token, through one fixed buffer: the
// size of a file never decides how much memory its reading takes.
//
// Tokens. Blanks and line ends before a token are skipped. A token that begins like a number
// (digit, sign, point) ends at the next blank, comma or line end; any other token ends at a comma
// or line end, so that a whole header line is one token. A token that begins with a double quote
// runs to the next double quote, over line ends too. Blanks before a comma or line end belong to
// the separator; nothing between two commas, or before the first comma of a line, is one empty
// token; what is left of a line or of the file that holds only blanks is none. "1 , 2,,3,\r\n" has
// the tokens 1, 2, nothing and 3.
//
// Lines end in CR LF, LF or CR alone. Files may hold any bytes: a token or line longer than
// kLongestText is cut there and the rest of it skipped.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "base/input_file.h"
#include "base/outcome.h"

namespace ormel {

class TokenReader {
 public:
  static constexpr std::size_t kBufferBytes = 128 * 1024;
  static constexpr std::size_t kLongestText = 1024 * 1024;

  // Fails as InputFile::Open() does. `bufferBytes` (at least 1) decides on speed alone.
  [[nodiscard]] static Outcome<TokenReader> Open(const std::filesystem::path& path,
                                                 std::size_t bufferBytes = kBufferBytes);
  // Reads on in an open file, which several readers may share, from `offset`, where a line begins.
  static TokenReader At(InputFile file, std::uint64_t offset,
                        std::size_t bufferBytes = kBufferBytes);
  // Reads a text where it stands. Behind it stands a 0, as behind every std::string and literal.
  static TokenReader Over(std::string_view text);

  // The next line, without its end, into `line`. False at the end of the file. Behind a token: what
  // is left of the line behind its separator.
  bool ReadLine(std::string& line);

  // Passes over `count` lines, or as many as there are.
  void SkipLines(int count);

  // The next token, valid until the next call of any routine. False at the end of the file.
  bool Next(std::string_view& token);

  // Fills `cells` with the next tokens as TextToNumber() reads them. Returns how many there were:
  // fewer than asked for only at the end of the file.
  std::size_t ReadNumbers(std::span<double> cells);

  // The next byte to be read, counted in the file from 0.
  std::uint64_t Offset() const { return bytesRead_ - Left(); }
  // How much of the file has been read, 0 to 100; for progress bars.
  double Percent() const;

  // Why reading ended early (the disk failed), naming the path. Empty when it did not.
  const std::string& Error() const { return error_; }

 private:
  TokenReader() = default;
  std::size_t Left() const { return static_cast<std::size_t>(end_ - place_); }
  bool Fill();
  bool Peek(char& c);
  void Take(std::string& text, std::size_t count);
  template <class Predicate>
  void TakeUntil(std::string& text, Predicate ends);
  void SkipLineEnd();
  void SkipSeparator();
  std::size_t ReadPlainCells(std::span<double> cells);

  InputFile file_;                  // closed: all that is left lies in the buffer
  std::unique_ptr<char[]> buffer_;  // null: a text is read where it stands
  std::size_t bufferBytes_ = 0;
  const char* place_ = nullptr;  // the next byte
  const char* end_ = nullptr;    // behind the last byte that is there; a 0 stands there
  std::uint64_t fileBytes_ = 0;
  std::uint64_t bytesRead_ = 0;  // those in the buffer included
  std::string token_;
  std::string error_;
};

}  // namespace ormel
