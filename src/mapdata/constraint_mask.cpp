#include "mapdata/constraint_mask.h"

#include <algorithm>
#include <span>
#include <string_view>
#include <utility>

#include "mapdata/map_header.h"
#include "text/token_reader.h"

namespace ormel {
namespace {

// One constraint file, behind its header, with the line that was read last.
struct OpenConstraint {
  std::string path;
  TokenReader reader;
  std::string line;
};

Outcome<std::vector<OpenConstraint>> OpenAll(const std::vector<std::string>& files) {
  std::vector<OpenConstraint> open;
  for (const std::string& path : files) {
    Outcome<TokenReader> reader = TokenReader::Open(path);
    if (!reader.Ok()) return reader.Stop();
    reader.Value().SkipLines(CountHeaderLines(path));
    open.push_back({path, std::move(reader.Value()), {}});
  }
  return open;
}

Failure RowFailure(const OpenConstraint& file, int row, std::string_view reason) {
  return {FailureKind::kDamaged,
          file.path + ": row " + std::to_string(row) + " " + std::string(reason)};
}

// Reads the next line of each file. False at the end of the first one.
Outcome<bool> ReadLines(std::vector<OpenConstraint>& files, int row) {
  for (OpenConstraint& file : files) {
    if (file.reader.ReadLine(file.line)) continue;
    if (!file.reader.Error().empty()) return Failure{FailureKind::kDisk, file.reader.Error()};
    if (&file == &files.front()) return false;
    return RowFailure(file, row, "is missing");
  }
  return true;
}

// Forbids the cells at whose place the line holds no digit from 1 to 9; a line that ends early
// forbids the rest. The place of cell c, from 0, is byte 2 * c + 1.
void ForbidByLine(std::string_view line, std::span<std::uint8_t> cells) {
  const std::size_t held = std::min(line.size() / 2, cells.size());
  const char* place = line.data() + 1;
  for (std::size_t c = 0; c < held; ++c) {
    const auto digit = static_cast<unsigned char>(place[2 * c]);
    cells[c] &= static_cast<std::uint8_t>(digit >= '1' && digit <= '9');
  }
  std::fill(cells.begin() + static_cast<std::ptrdiff_t>(held), cells.end(), std::uint8_t{0});
}

Outcome<> FillMask(std::vector<OpenConstraint>& files, Grid<std::uint8_t>& mask) {
  for (int row = 1;; ++row) {
    const Outcome<bool> more = ReadLines(files, row);
    if (!more.Ok()) return more.Stop();
    if (!more.Value()) return Done{};
    // The line of the last file decides how many cells the row has.
    const OpenConstraint& last = files.back();
    const std::size_t count = last.line.size() / 2;
    if (count > static_cast<std::size_t>(mask.Columns()) || (count > 0 && row > mask.Rows())) {
      return RowFailure(last, row, "reaches past the map");
    }
    if (count == 0) continue;
    const std::span<std::uint8_t> cells = mask.Row(row).first(count);
    std::fill(cells.begin(), cells.end(), std::uint8_t{1});
    for (const OpenConstraint& file : files) ForbidByLine(file.line, cells);
  }
}

}  // namespace

Outcome<ConstraintMaskBuild> BuildConstraintMask(const std::vector<std::string>& files, int ncols,
                                                 int nrows) {
  Outcome<Grid<std::uint8_t>> grid = MakeGrid<std::uint8_t>(ncols, nrows, files.empty());
  if (!grid.Ok()) return grid.Stop();
  ConstraintMaskBuild build{std::move(grid.Value()), {}};
  if (files.empty()) return build;
  Outcome<std::vector<OpenConstraint>> open = OpenAll(files);
  const Outcome<> filled = open.Ok() ? FillMask(open.Value(), build.mask) : open.Stop();
  if (!filled.Ok()) {
    build.failure = filled.Text();
    build.mask.Fill(1);
  }
  return build;
}

}  // namespace ormel
