// ASCII raster maps: a header of five or six lines, then the cells row after row from the north.
//
// The readers never look at a header's keys: the lines come in a fixed order (columns, rows, X and
// Y of the lower left corner, cell size, NODATA), and the value of a line is the text behind its
// last blank. They do not depend on row breaks either: they take columns times rows tokens,
// separated by blanks or commas. A token that is no number counts as 0.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/grid.h"
#include "base/outcome.h"
#include "base/progress_sink.h"

namespace ormel {

// The header of a map. Lengths and places are in map units.
struct MapSpecs {
  std::int16_t ncols = 0;
  std::int16_t nrows = 0;
  double xllcorner = 0;
  double yllcorner = 0;
  double cellsize = 0;
  std::optional<double> nodata;  // none: the file has no such line, and no cell equals it
};

struct RasterMap {
  MapSpecs specs;
  Grid<double> cells;
};

// The values that occur in a map, NODATA cells left out.
struct RasterRange {
  bool isScaled = false;  // the map runs from 0 to 255 exactly
  double min = 0;
  double max = 0;  // above min: a map with a single value has its value plus 0.1 here
};

// A map as far as it could be read. Its reading passes over what fails and never refuses: `skipped`
// holds one sentence for each step that failed, for callers who want to say so.
struct RasterRead {
  RasterMap map;
  std::vector<std::string> skipped;
  bool wasCancelled = false;  // the cells behind the stop are 0
};

// The same for a reader that leaves the cells in the caller's grid.
struct RasterCellsRead {
  std::optional<double> nodata;
  std::vector<std::string> skipped;
  bool wasCancelled = false;
};

// The header values of a file as texts, line 1 first. A line that is missing is an empty text.
struct HeaderTexts {
  std::vector<std::string> values;
  bool complete = false;  // no line is missing
};

// The text behind the last blank of a header line: empty when the line ends in a blank, the whole
// line when it has none.
std::string_view TextBehindLastBlank(std::string_view line);

// Whether a header's size cannot be believed: beyond 100 million cells the file must have at least
// a byte for each of them. Smaller maps may be shorter than their header says.
bool ClaimsTooMuch(const std::filesystem::path& path, int ncols, int nrows);

// The number of tokens before the first numeric one, of which at most 100 are looked at; for a file
// with a header this is its number of lines. 0 for a file that cannot be read.
int CountHeaderLines(const std::filesystem::path& path);

// The values of the first `lines` header lines. Fails when the file cannot be opened or read.
[[nodiscard]] Outcome<HeaderTexts> ReadHeaderTexts(const std::filesystem::path& path,
                                                   int lines = 5);

// The NODATA value of a map as its header writes it; empty when it has no such line.
std::string ReadNoDataText(const std::filesystem::path& path);

// Reads a map. Columns and rows are rounded half to even to 16 bits; what does not fit stays 0, and
// a side below 1 makes a map without cells. Cells that the file does not hold take the value of the
// last cell it does hold, 0 when it holds none.
[[nodiscard]] RasterRead ReadRaster(const std::filesystem::path& path, ProgressSink& progress);
[[nodiscard]] RasterRead ReadRaster(const std::filesystem::path& path);

// Reads a map like ReadRaster() into `cells`, which takes the map's size, and keeps only NODATA of
// its header.
[[nodiscard]] RasterCellsRead ReadRasterCells(const std::filesystem::path& path,
                                              Grid<double>& cells, ProgressSink& progress);

// Reads `ncols` times `nrows` cells behind the header into `cells`, whose size they must fit. Any
// failure, a file that holds too few cells among them, has the text "Bad Constraint!"; the cells
// read up to there stay.
[[nodiscard]] Outcome<> ReadRasterInto(const std::filesystem::path& path, Grid<double>& cells,
                                       int ncols, int nrows, ProgressSink& progress);

// The range of all cells to the end of the file, whatever size the header gives.
[[nodiscard]] Outcome<RasterRange> ScanRasterRange(const std::filesystem::path& path,
                                                   ProgressSink& progress);

// Whether every cell is 0, 1 or NODATA. Fails when the file cannot be read or holds no number.
[[nodiscard]] Outcome<bool> IsValidConstraintFile(const std::filesystem::path& path,
                                                  ProgressSink& progress);

}  // namespace ormel
