// Streams the cells of a map row by row, so that work on maps of any size holds one row.
#pragma once

#include <functional>
#include <limits>
#include <span>
#include <string>

#include "base/outcome.h"
#include "base/progress_sink.h"

namespace ormel {

// The NODATA of a map that has none: no number equals it.
inline constexpr double kNoNoData = std::numeric_limits<double>::quiet_NaN();

struct RowsToRead {
  std::string path;
  int headerLines = 0;  // to pass over; NODATA is taken from line 6
  int ncols = 0;        // cells to a row, whatever the lines of the file hold
  int nrows = 0;        // what the file holds behind them is not read
};

// Takes a row (from 1), its cells from west to east, which it may change, and NODATA. The last row
// of a file that is too short has the cells that are there.
using UseRow = std::function<void(int row, std::span<double> cells, double nodata)>;

// Never fails for what is missing: the value says what was passed over, empty when all rows were
// there. Cancelled when `progress` says so.
[[nodiscard]] Outcome<std::string> ReadRows(const RowsToRead& rows, ProgressSink& progress,
                                            const UseRow& useRow);

}  // namespace ormel
