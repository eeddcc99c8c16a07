// The cells of a map file, one after the other, read on all cores: the file is cut into pieces at
// line ends, and the pieces become numbers side by side. Whoever takes the cells sees one sequence,
// the same for every number of threads, and holds no more of the file than a few pieces.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "base/outcome.h"

namespace ormel {

class CellSource {
 public:
  static constexpr std::size_t kPieceBytes = 128 * 1024;

  // Stands behind the first `headerLines` lines of the file. Fails as InputFile::Open() does.
  // `pieceBytes` (at least 2) decides on speed alone.
  [[nodiscard]] static Outcome<CellSource> Open(const std::filesystem::path& path, int headerLines,
                                                std::size_t pieceBytes = kPieceBytes);

  CellSource(CellSource&&) noexcept;
  CellSource& operator=(CellSource&&) = delete;
  ~CellSource();

  // The header lines as they stand, without their ends; fewer when the file has no more.
  const std::vector<std::string>& HeaderLines() const;

  // Fills `cells` with the next ones, as TokenReader::ReadNumbers() reads them. Returns how many
  // there were: fewer than asked for only at the end of the file.
  std::size_t Read(std::span<double> cells);

  // How much of the file has been taken, 0 to 100.
  double Percent() const;

  // Why reading ended early (the disk failed), naming the path. Empty when it did not.
  const std::string& Error() const;

 private:
  struct Reading;
  explicit CellSource(std::unique_ptr<Reading> reading);

  std::unique_ptr<Reading> reading_;
};

}  // namespace ormel
