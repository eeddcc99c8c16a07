#include "mapdata/raster_rows.h"

#include <vector>

#include "mapdata/raster.h"
#include "text/numbers.h"
#include "text/token_reader.h"

namespace ormel {
namespace {

constexpr int kNoDataLine = 6;
constexpr int kRowsBetweenReports = 5;

double ReadHeader(TokenReader& reader, int lines) {
  double nodata = kNoNoData;
  std::string line;
  for (int i = 1; i <= lines && reader.ReadLine(line); ++i) {
    if (i == kNoDataLine) nodata = TextToNumber(TextBehindLastBlank(line));
  }
  return nodata;
}

}  // namespace

Outcome<std::string> ReadRows(const RowsToRead& rows, ProgressSink& progress,
                              const UseRow& useRow) {
  Outcome<TokenReader> opened = TokenReader::Open(rows.path);
  if (!opened.Ok()) return opened.Text();
  TokenReader& reader = opened.Value();
  const double nodata = ReadHeader(reader, rows.headerLines);
  std::vector<double> cells(static_cast<std::size_t>(rows.ncols));
  for (int row = 1; row <= rows.nrows; ++row) {
    const std::size_t count = reader.ReadNumbers(cells);
    useRow(row, std::span(cells).first(count), nodata);
    if (count < cells.size()) {
      if (!reader.Error().empty()) return reader.Error();
      return rows.path + ": ends in row " + std::to_string(row) + " of " +
             std::to_string(rows.nrows);
    }
    if (row % kRowsBetweenReports == 0 && !progress.Report(100.0 * row / rows.nrows)) {
      return Cancelled{};
    }
  }
  return std::string();
}

}  // namespace ormel
