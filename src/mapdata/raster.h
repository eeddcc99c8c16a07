// ASCII raster maps: a header of five or six lines (map_header.h), then the cells row after row
// from the north. The readers do not depend on row breaks: they take columns times rows tokens,
// separated by blanks or commas. A token that is no number counts as 0.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/extremes.h"
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

// Gathers the range of a map from its values.
class ValueRange {
 public:
  explicit ValueRange(double nodata) : nodata_(nodata) {}  // kNoNoData: every value counts

  void Add(std::span<const double> values);
  Extremes All() const { return values_.All(); }
  RasterRange Range() const;

 private:
  double nodata_;
  LaneExtremes values_;
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

// The same as it stands: nothing is there when the map has no value, and a map with a single value
// has it twice.
[[nodiscard]] Outcome<Extremes> ScanExtremes(const std::filesystem::path& path,
                                             ProgressSink& progress);

// Whether every cell is 0, 1 or NODATA. Fails when the file cannot be read or holds no number.
[[nodiscard]] Outcome<bool> IsValidConstraintFile(const std::filesystem::path& path,
                                                  ProgressSink& progress);

}  // namespace ormel
