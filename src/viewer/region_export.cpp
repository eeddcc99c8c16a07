#include "viewer/region_export.h"

#include <cmath>
#include <span>
#include <utility>
#include <vector>

#include "base/file_writer.h"
#include "mapdata/raster_writer.h"
#include "text/numbers.h"
#include "text/token_reader.h"

namespace ormel {
namespace {

constexpr int kChangedLines = 4;  // columns, rows and the corner

// The first four lines with the region's values behind their keys, the others as they are.
void WriteHeader(const RegionExport& job, const RegionCells& region, TokenReader& reader,
                 FileWriter& file) {
  const ViewSpecs& specs = job.specs;
  const double values[kChangedLines] = {
      region.newCols, region.newRows, specs.xllcorner + region.startCol * specs.cellsize,
      specs.yllcorner + specs.cellsize * (specs.nrows - region.startRow - region.newRows)};
  const int lines = CountHeaderLines(job.source);
  std::string line;
  for (int i = 0; i < lines && reader.ReadLine(line); ++i) {
    if (i < kChangedLines) {
      line.erase(line.size() - TextBehindLastBlank(line).size());
      line += NumberText(values[i]);
    }
    file.Write(line + "\r\n");
  }
}

Outcome<> WriteRows(const RegionExport& job, const RegionCells& region, TokenReader& reader,
                    FileWriter& file, ProgressSink& progress) {
  std::vector<double> cells(static_cast<std::size_t>(job.specs.ncols));
  const auto kept = std::span<const double>(cells).subspan(
      static_cast<std::size_t>(region.startCol), static_cast<std::size_t>(region.newCols));
  RowText text;
  for (double row = 1; row <= job.specs.nrows; ++row) {
    if (reader.ReadNumbers(cells) < cells.size()) {
      return Failure{FailureKind::kDamaged, reader.Error().empty()
                                                ? job.source + ": ends in row " + NumberText(row)
                                                : reader.Error()};
    }
    if (row > region.startRow && row <= region.startRow + region.newRows) {
      for (const double cell : kept) text.Add(cell);
      file.Write(text.Finish());
    }
    if (!progress.Report(100 * row / job.specs.nrows)) return Cancelled{};
  }
  return Done{};
}

}  // namespace

RegionCells CellsOf(const ViewSpecs& specs, const ViewRegion& view) {
  return {std::floor(view.ZW * specs.ncols), std::floor(view.ZH * specs.nrows),
          std::floor(view.x1 * specs.ncols), std::floor(view.y1 * specs.nrows)};
}

Outcome<> ExportRegion(const RegionExport& job, ProgressSink& progress) {
  const RegionCells region = CellsOf(job.specs, InsideMap(job.view));
  if (region.newCols < 1 || region.newRows < 1) {
    return Failure{FailureKind::kRefused, "The view is smaller than a cell of the map."};
  }
  const Outcome<ViewSpecs> now = ReadViewSpecs(job.source);
  if (!now.Ok()) return now.Stop();
  if (now.Value() != job.specs) {
    return Failure{FailureKind::kRefused,
                   job.source + ": has changed since it was loaded; open it again"};
  }
  Outcome<TokenReader> reader = TokenReader::Open(job.source);
  if (!reader.Ok()) return reader.Stop();
  Outcome<FileWriter> file = FileWriter::Open(job.target);
  if (!file.Ok()) return file.Stop();
  WriteHeader(job, region, reader.Value(), file.Value());
  const Outcome<> written = WriteRows(job, region, reader.Value(), file.Value(), progress);
  if (!written.Ok()) return written;
  return file.Value().Commit();
}

}  // namespace ormel
