// Maps as streams of rows: one source and one sink, so that a tool that turns maps into a map is a
// function from rows to a row. Opening, NODATA, progress, stop, the temporary file and moving it
// into place are done here, on all cores, in a few bands of rows however large the maps are.
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "base/outcome.h"
#include "base/progress_sink.h"
#include "mapdata/cell_source.h"
#include "mapdata/map_frame.h"
#include "mapdata/map_header.h"
#include "mapdata/raster_writer.h"

namespace ormel {

struct RowsToRead {
  std::string path;
  int headerLines = 0;  // to pass over; NODATA is taken from line 6
  int ncols = 0;        // cells to a row, whatever the lines of the file hold
  int nrows = 0;        // what the file holds behind them is not read
};

// The rows of a map, from the north, one after the other.
class RowSource {
 public:
  // Fails when the file cannot be opened.
  [[nodiscard]] static Outcome<RowSource> Open(RowsToRead rows);

  double NoData() const;  // kNoNoData when the header has none
  const std::vector<std::string>& HeaderLines() const { return cells_.HeaderLines(); }

  // Fills `cells`, of the length of a row, with the next row. Fails when the file does not hold the
  // whole row ("PATH: ends in row 3 of 20").
  [[nodiscard]] Outcome<> ReadRow(std::span<double> cells);
  [[nodiscard]] Outcome<> SkipRows(int count);

  // The same for those who can use a part of a row: returns how many of the cells there are.
  std::size_t ReadPart(std::span<double> cells);
  // Why the last row was not whole; empty: it was.
  const std::string& Fault() const { return fault_; }

 private:
  RowSource(RowsToRead rows, CellSource cells) : rows_(std::move(rows)), cells_(std::move(cells)) {}

  RowsToRead rows_;
  CellSource cells_;
  int row_ = 0;  // the last one that was read
  std::string fault_;
};

// Takes a row (from 1), its cells from west to east, which it may change, and NODATA. The last row
// of a file that is too short has the cells that are there.
using UseRow = std::function<void(int row, std::span<double> cells, double nodata)>;

// Hands over all rows in order. Never fails for what is missing: the value says what was passed
// over, empty when all rows were there. Cancelled when `progress` says so.
[[nodiscard]] Outcome<std::string> ReadRows(const RowsToRead& rows, ProgressSink& progress,
                                            const UseRow& useRow);

// A map that a tool reads from its first row to its last.
struct WholeMap {
  MapFrame frame;
  RowSource rows;
};

// Opens the map at `path` behind its header. Fails as ReadMapFrame() does.
[[nodiscard]] Outcome<WholeMap> OpenWholeMap(const std::string& path);

struct MapToWrite {
  std::string path;
  std::string header;  // with its line ends
  int nrows = 0;
  std::size_t width = 0;  // numbers that are kept for a row while it is made
  RowForm form = RowForm::kBlankBefore;
  std::string working{};  // the temporary file's path, FileWriter::OpenThrough(); empty: any
};

// The header of a map as it stands, for a map on the same cells.
std::string CopiedHeader(const std::vector<std::string>& lines);

// What makes the rows of a map (from 1). `cells` are the `width` numbers of the row.
struct RowSteps {
  // Fills them from the sources: one row after the other. May be empty.
  std::function<Outcome<>(int row, std::span<double> cells)> read;
  // Adds the row to its text, with several rows in work at once: it may change `cells` and nothing
  // else that another row sees.
  std::function<void(int row, std::span<double> cells, RowText& text)> make;
  // Sees the finished row: one after the other. May be empty.
  std::function<void(int row, std::span<const double> cells)> use;
};

// Writes the map. An old file at the path is replaced only by the finished one, so that it may be
// one of the sources; it stays when a step fails or `progress` wants to stop.
[[nodiscard]] Outcome<> WriteMap(const MapToWrite& map, const RowSteps& steps,
                                 ProgressSink& progress);

// One of several maps that are made of the same cells.
struct MapOfSeveral {
  std::string path;
  std::string header;  // with its line ends
};

struct SeveralMaps {
  std::vector<MapOfSeveral> maps;
  int nrows = 0;
  std::size_t width = 0;  // as in MapToWrite
};

// As RowSteps; `texts` are those of the maps, in their order.
struct SeveralRowSteps {
  std::function<Outcome<>(int row, std::span<double> cells)> read;
  std::function<void(int row, std::span<double> cells, std::span<RowText> texts)> make;
};

// Writes all of them in one pass. Their files stay open meanwhile. They move into place at the end,
// one after the other: when a step fails, or `progress` wants to stop, all old files stay.
[[nodiscard]] Outcome<> WriteMaps(const SeveralMaps& maps, const SeveralRowSteps& steps,
                                  ProgressSink& progress);

}  // namespace ormel
