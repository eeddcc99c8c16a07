#include "rastertools/map_trim.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <system_error>

#include "mapdata/map_frame.h"
#include "mapdata/map_stream.h"
#include "text/numbers.h"
#include "text/paths.h"

namespace ormel {
namespace {

constexpr double kLargestSide = 32767;

Outcome<> CheckSide(const std::string& target, double side, const char* what) {
  if (side >= 0 && side <= kLargestSide) return Done{};
  return Failure{FailureKind::kRefused, target + ": would have " + NumberText(side) + " " + what +
                                            "; a map has at most " + NumberText(kLargestSide)};
}

Outcome<> CheckJob(const TrimJob& job, const TrimmedCells& cells) {
  const MapBounds& source = job.source;
  if (!source.fault.empty()) return Failure{FailureKind::kDamaged, source.fault};
  if (!(source.cellsize > 0)) {
    return Failure{FailureKind::kDamaged, source.path + ": the header gives no cell size"};
  }
  Outcome<> checked = CheckSide(job.target, cells.ncols, "columns");
  if (checked.Ok()) checked = CheckSide(job.target, cells.nrows, "rows");
  return checked;
}

// The cells of one row of the source that lie inside, with what is missing at both sides.
class RowCut {
 public:
  RowCut(const TrimmedCells& cells, int sourceColumns, double nodata)
      : nodataText_(NumberText(nodata)) {
    const double missing = std::clamp(-cells.west, 0.0, cells.ncols);
    const double cut = std::clamp<double>(cells.west, 0, sourceColumns);
    before_ = static_cast<std::size_t>(missing);
    first_ = static_cast<std::size_t>(cut);
    kept_ =
        static_cast<std::size_t>(std::clamp<double>(sourceColumns - cut, 0, cells.ncols - missing));
    behind_ = static_cast<std::size_t>(cells.ncols) - before_ - kept_;
  }

  void Make(std::span<const double> row, RowText& text) const {
    AddMissing(before_, text);
    for (const double cell : row.subspan(first_, kept_)) text.Add(cell);
    AddMissing(behind_, text);
  }

  void MakeMissing(RowText& text) const { AddMissing(before_ + kept_ + behind_, text); }

 private:
  void AddMissing(std::size_t count, RowText& text) const {
    while (count-- > 0) text.AddText(nodataText_);
  }

  std::string nodataText_;
  std::size_t before_;  // columns that are missing in the west
  std::size_t first_;   // of the source that are left out there
  std::size_t kept_;
  std::size_t behind_;  // that are missing in the east
};

HeaderValues HeaderOf(const TrimJob& job, const TrimmedCells& cells, const WholeMap& source) {
  HeaderValues header;
  header.ncols = NumberText(cells.ncols);
  header.nrows = NumberText(cells.nrows);
  header.xllcorner = NumberText(job.rectangle.west);
  header.yllcorner = NumberText(job.rectangle.south);
  header.cellsize = source.frame.texts.cellsize;
  if (source.rows.HeaderLines().size() >= kNoDataLine) {
    header.nodata = NumberText(source.rows.NoData());
  }
  return header;
}

using Chosen = const double& (*)(const double&, const double&);

// Of all western and southern edges those that `low` chooses, of the others those of `high`.
MapRectangle Combined(std::span<const MapBounds> maps, Chosen low, Chosen high) {
  MapRectangle edges = maps.front().rectangle;
  for (const MapBounds& map : maps) {
    edges.west = low(edges.west, map.rectangle.west);
    edges.south = low(edges.south, map.rectangle.south);
    edges.east = high(edges.east, map.rectangle.east);
    edges.north = high(edges.north, map.rectangle.north);
  }
  return edges;
}

// Where a folder cannot be made, the writer says so.
void MakeFolderOf(const std::string& target) {
  std::error_code error;
  if (const std::string folder = FolderPart(target); !folder.empty()) {
    std::filesystem::create_directories(folder, error);
  }
}

}  // namespace

MapBounds BoundsOf(const std::string& path) {
  MapBounds bounds;
  bounds.path = path;
  const Outcome<MapFrame> frame = ReadMapFrame(path);
  if (!frame.Ok()) {
    bounds.fault = frame.Text();
    return bounds;
  }
  const MapFrame& map = frame.Value();
  bounds.cellsize = map.cellsize;
  bounds.rectangle = {map.xllcorner, map.yllcorner, map.xllcorner + map.ncols * map.cellsize,
                      map.yllcorner + map.nrows * map.cellsize};
  return bounds;
}

MapRectangle Intersection(std::span<const MapBounds> maps) {
  return Combined(maps, std::max<double>, std::min<double>);
}

MapRectangle Union(std::span<const MapBounds> maps) {
  return Combined(maps, std::min<double>, std::max<double>);
}

TrimmedCells CellsInside(const MapBounds& map, const MapRectangle& rectangle) {
  const auto cells = [&map](double length) { return HalfEvenRound(length / map.cellsize); };
  return {cells(rectangle.east - rectangle.west), cells(rectangle.north - rectangle.south),
          cells(rectangle.west - map.rectangle.west), cells(map.rectangle.north - rectangle.north)};
}

Outcome<> TrimMap(const TrimJob& job, ProgressSink& progress) {
  const TrimmedCells cells = CellsInside(job.source, job.rectangle);
  Outcome<> checked = CheckJob(job, cells);
  if (!checked.Ok()) return checked;
  Outcome<WholeMap> opened = OpenWholeMap(job.source.path);
  if (!opened.Ok()) return opened.Stop();
  WholeMap& source = opened.Value();
  const RowCut cut(cells, source.frame.ncols, source.rows.NoData());
  // Both from 1.
  const auto sourceRow = [&](int row) { return row + cells.north; };
  const auto isThere = [&](int row) {
    return sourceRow(row) >= 1 && sourceRow(row) <= source.frame.nrows;
  };
  RowSteps steps;
  steps.read = [&](int row, std::span<double> values) -> Outcome<> {
    if (!isThere(row)) return Done{};
    const bool isFirst = row == 1 && cells.north > 0;
    const Outcome<> skipped =
        isFirst ? source.rows.SkipRows(static_cast<int>(cells.north)) : Done{};
    return skipped.Ok() ? source.rows.ReadRow(values) : skipped;
  };
  steps.make = [&](int row, std::span<double> values, RowText& text) {
    if (isThere(row)) {
      cut.Make(values, text);
    } else {
      cut.MakeMissing(text);
    }
  };
  MakeFolderOf(job.target);
  return WriteMap(
      {job.target, HeaderText(HeaderStyle::kWide14NoDataSpaced, HeaderOf(job, cells, source)),
       static_cast<int>(cells.nrows), static_cast<std::size_t>(source.frame.ncols),
       RowForm::kBlankBefore, job.working},
      steps, progress);
}

}  // namespace ormel
