#include "viewer/region_export.h"

#include <cmath>
#include <iterator>
#include <span>
#include <utility>
#include <vector>

#include "mapdata/map_stream.h"
#include "mapdata/raster_writer.h"
#include "text/numbers.h"

namespace ormel {
namespace {

// The first four lines with the region's values behind their keys, the others as they are.
std::string RegionHeader(const RegionExport& job, const RegionCells& region,
                         std::vector<std::string> lines) {
  const ViewSpecs& specs = job.specs;
  const double values[] = {
      region.newCols, region.newRows, specs.xllcorner + region.startCol * specs.cellsize,
      specs.yllcorner + specs.cellsize * (specs.nrows - region.startRow - region.newRows)};
  std::string header;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (i < std::size(values)) {
      lines[i].erase(lines[i].size() - TextBehindLastBlank(lines[i]).size());
      lines[i] += NumberText(values[i]);
    }
    header += lines[i] + "\r\n";
  }
  return header;
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
  Outcome<RowSource> source =
      RowSource::Open({job.source, CountHeaderLines(job.source), static_cast<int>(job.specs.ncols),
                       static_cast<int>(job.specs.nrows)});
  if (!source.Ok()) return source.Stop();
  const auto kept = static_cast<std::size_t>(region.newCols);
  const auto skipped = static_cast<int>(region.startRow);
  const auto rows = static_cast<int>(region.newRows);
  const int behind = static_cast<int>(job.specs.nrows) - skipped - rows;
  RowSteps steps;
  steps.read = [&](int row, std::span<double> cells) {
    Outcome<> read = row == 1 ? source.Value().SkipRows(skipped) : Done{};
    if (read.Ok()) read = source.Value().ReadRow(cells);
    // The map is read to its end: one that is damaged behind the region is no map, either.
    if (read.Ok() && row == rows) read = source.Value().SkipRows(behind);
    return read;
  };
  steps.make = [&](int, std::span<double> cells, RowText& text) {
    for (const double cell : cells.subspan(static_cast<std::size_t>(region.startCol), kept)) {
      text.Add(cell);
    }
  };
  return WriteMap({job.target, RegionHeader(job, region, source.Value().HeaderLines()), rows,
                   static_cast<std::size_t>(job.specs.ncols)},
                  steps, progress);
}

}  // namespace ormel
