#include "mapdata/raster.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <span>
#include <utility>

#include "mapdata/cell_source.h"
#include "mapdata/map_header.h"
#include "text/numbers.h"
#include "text/token_reader.h"

namespace ormel {
namespace {

namespace fs = std::filesystem;

constexpr int kConstraintTokens = 1000;  // looked at for the first cell of a constraint
constexpr const char* kBadConstraint = "Bad Constraint!";

// Cells read between two reports of progress when rows do not matter.
constexpr std::size_t kScanCells = 4096;
constexpr std::size_t kCellsPerReport = 65536;

// Passes over tokens until one is numeric, at most `most` of them. Returns how many stood before
// it; `found` says whether there is one.
int TokensBeforeNumber(TokenReader& reader, int most, bool& found) {
  std::string_view token;
  for (int count = 0; count < most; ++count) {
    found = false;
    if (!reader.Next(token)) return count;
    found = IsNumeric(token);
    if (found) return count;
  }
  return most;
}

// NODATA of a file whose header has `lines` lines.
std::optional<double> NoDataOf(const CellSource& source, int lines) {
  if (lines < kNoDataLine) return std::nullopt;
  return TextToNumber(HeaderValue(source.HeaderLines(), kNoDataLine));
}

// One reading of a map, which keeps what it passes over.
class RasterReading {
 public:
  RasterReading(const fs::path& path, int lines, CellSource& source, RasterRead& result)
      : path_(path), lines_(lines), source_(source), result_(result) {}

  void ReadHeader(Grid<double>& cells) {
    MapSpecs& specs = result_.map.specs;
    specs.ncols = ReadSize(1, "number of columns");
    specs.nrows = ReadSize(2, "number of rows");
    MakeCells(cells);
    const std::array<double*, 3> places = {&specs.xllcorner, &specs.yllcorner, &specs.cellsize};
    for (int line = 3; line <= std::min(lines_, kNoDataLine - 1); ++line) {
      *places[static_cast<std::size_t>(line - 3)] = TextToNumber(Value(line));
    }
    specs.nodata = NoDataOf(source_, lines_);
  }

  void ReadCells(Grid<double>& cells, ProgressSink& progress) {
    const std::span<double> all = cells.Cells();
    std::size_t held = 0;
    while (held < all.size()) {
      const std::size_t asked = std::min(kCellsPerReport, all.size() - held);
      const std::size_t count = source_.Read(all.subspan(held, asked));
      held += count;
      if (count < asked) break;
      if (!progress.Report(100.0 * static_cast<double>(held) / static_cast<double>(all.size()))) {
        result_.wasCancelled = true;
        return;
      }
    }
    if (held < all.size()) FillBehind(all, held);
  }

 private:
  std::string_view Value(int line) const { return HeaderValue(source_.HeaderLines(), line); }

  std::int16_t ReadSize(int line, const char* name) {
    const std::string text(Value(line));
    const double value = HalfEvenRound(TextToNumber(text));
    using Limits = std::numeric_limits<std::int16_t>;
    if (value >= Limits::min() && value <= Limits::max()) return static_cast<std::int16_t>(value);
    Skip(std::string("the ") + name + " is out of range: " + text);
    return 0;
  }

  void MakeCells(Grid<double>& cells) {
    const MapSpecs& specs = result_.map.specs;
    cells = {};
    if (ClaimsTooMuch(path_, specs.ncols, specs.nrows)) {
      return Skip("the file is too short for " + std::to_string(specs.ncols) + " columns and " +
                  std::to_string(specs.nrows) + " rows");
    }
    Outcome<Grid<double>> made = MakeGrid<double>(specs.ncols, specs.nrows);
    if (!made.Ok()) return Skip(made.Text());
    cells = std::move(made.Value());
  }

  // A short file gives its last cell to all that are missing: programs that read its maps rely on
  // it.
  void FillBehind(std::span<double> all, std::size_t held) {
    const double last = held > 0 ? all[held - 1] : 0;
    std::fill(all.begin() + static_cast<std::ptrdiff_t>(held), all.end(), last);
    Skip("holds " + std::to_string(held) + " of " + std::to_string(all.size()) + " cells");
    if (!source_.Error().empty()) result_.skipped.push_back(source_.Error());
  }

  void Skip(const std::string& reason) {
    result_.skipped.push_back(path_.string() + ": " + reason);
  }

  const fs::path& path_;
  const int lines_;  // of the header
  CellSource& source_;
  RasterRead& result_;
};

// Reads the map into `cells`; the cells of the result stay empty.
RasterRead ReadMap(const fs::path& path, Grid<double>& cells, ProgressSink& progress) {
  RasterRead result;
  const int lines = CountHeaderLines(path);
  // Columns and rows are read in any case.
  Outcome<CellSource> source = CellSource::Open(path, std::max(lines, 2));
  if (!source.Ok()) {
    cells = {};
    result.skipped.push_back(source.Text());
    return result;
  }
  RasterReading reading(path, lines, source.Value(), result);
  reading.ReadHeader(cells);
  reading.ReadCells(cells, progress);
  return result;
}

// Gives all cells from here to the end of the file to `take`, a span of them at a time, until it
// says false.
template <class Take>
Outcome<> TakeCells(CellSource& source, ProgressSink& progress, Take take) {
  std::array<double, kScanCells> cells;
  for (;;) {
    const std::size_t count = source.Read(cells);
    if (!source.Error().empty()) return Failure{FailureKind::kDisk, source.Error()};
    if (!take(std::span<const double>(cells).first(count))) return Done{};
    if (count < cells.size()) return Done{};
    if (!progress.Report(source.Percent())) return Cancelled{};
  }
}

// The range of all cells to the end of the file.
Outcome<ValueRange> ScanValues(const fs::path& path, ProgressSink& progress) {
  const int lines = CountHeaderLines(path);
  Outcome<CellSource> source = CellSource::Open(path, lines);
  if (!source.Ok()) return source.Stop();
  ValueRange range(NoDataOf(source.Value(), lines).value_or(kNoNoData));
  const Outcome<> done = TakeCells(source.Value(), progress, [&](std::span<const double> cells) {
    range.Add(cells);
    return true;
  });
  if (!done.Ok()) return done.Stop();
  return range;
}

}  // namespace

RasterRead ReadRaster(const fs::path& path, ProgressSink& progress) {
  Grid<double> cells;
  RasterRead result = ReadMap(path, cells, progress);
  result.map.cells = std::move(cells);
  return result;
}

RasterRead ReadRaster(const fs::path& path) {
  NoProgress quiet;
  return ReadRaster(path, quiet);
}

RasterCellsRead ReadRasterCells(const fs::path& path, Grid<double>& cells, ProgressSink& progress) {
  RasterRead result = ReadMap(path, cells, progress);
  return {result.map.specs.nodata, std::move(result.skipped), result.wasCancelled};
}

Outcome<> ReadRasterInto(const fs::path& path, Grid<double>& cells, int ncols, int nrows,
                         ProgressSink& progress) {
  const Failure bad{FailureKind::kDamaged, kBadConstraint};
  Outcome<CellSource> source = CellSource::Open(path, CountHeaderLines(path));
  if (!source.Ok() || ncols > cells.Columns() || nrows > cells.Rows()) return bad;
  if (ncols < 1) return Done{};
  const auto count = static_cast<std::size_t>(ncols);
  for (int row = 1; row <= nrows; ++row) {
    if (source.Value().Read(cells.Row(row).first(count)) < count) return bad;
    if (row % 64 == 0 && !progress.Report(100.0 * row / nrows)) return Cancelled{};
  }
  return Done{};
}

void ValueRange::Add(std::span<const double> values) {
  LaneExtremes extremes = values_;  // in registers
  ForEachInLanes(values.size(), [&, values](std::size_t i, std::size_t lane) {
    extremes.Add(lane, values[i], values[i] != nodata_);
  });
  values_ = extremes;
}

RasterRange ValueRange::Range() const {
  const Extremes all = values_.All();
  RasterRange range;
  if (all.Any()) range = {all.smallest == 0 && all.largest == 255, all.smallest, all.largest};
  // Callers divide by the width of the range.
  if (range.min == range.max) range.max = range.min + 0.1;
  return range;
}

Outcome<RasterRange> ScanRasterRange(const fs::path& path, ProgressSink& progress) {
  const Outcome<ValueRange> range = ScanValues(path, progress);
  if (!range.Ok()) return range.Stop();
  return range.Value().Range();
}

Outcome<Extremes> ScanExtremes(const fs::path& path, ProgressSink& progress) {
  const Outcome<ValueRange> range = ScanValues(path, progress);
  if (!range.Ok()) return range.Stop();
  return range.Value().All();
}

Outcome<bool> IsValidConstraintFile(const fs::path& path, ProgressSink& progress) {
  Outcome<TokenReader> counter = TokenReader::Open(path);
  if (!counter.Ok()) return counter.Stop();
  bool found = false;
  int lines = TokensBeforeNumber(counter.Value(), kConstraintTokens, found);
  if (!found && lines < kConstraintTokens) {
    return Failure{FailureKind::kDamaged, path.string() + ": holds no number"};
  }
  if (!found) --lines;  // the last token looked at counts as the first cell
  Outcome<CellSource> source = CellSource::Open(path, lines);
  if (!source.Ok()) return source.Stop();
  const std::optional<double> nodata = NoDataOf(source.Value(), lines);
  bool valid = true;
  const Outcome<> done = TakeCells(source.Value(), progress, [&](std::span<const double> cells) {
    valid = std::all_of(cells.begin(), cells.end(), [&](double value) {
      return value == 0 || value == 1 || (nodata && value == *nodata);
    });
    return valid;
  });
  if (!done.Ok()) return done.Stop();
  return valid;
}

}  // namespace ormel
