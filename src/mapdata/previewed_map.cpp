#include "mapdata/previewed_map.h"

#include <cmath>
#include <cstddef>
#include <span>
#include <utility>

#include "mapdata/map_stream.h"

namespace ormel {

Outcome<PreviewedMap> PreviewedMap::Read(const std::string& path, ProgressSink& progress) {
  Outcome<MapFrame> frame = ReadMapFrame(path);
  if (!frame.Ok()) return frame.Stop();
  const MapPreview preview(frame.Value().ncols, frame.Value().nrows);
  PreviewedMap map(std::move(frame.Value()), preview, kNoNoData);
  map.drawn_ =
      Grid<double>(map.DrawnColumn(map.frame_.ncols), map.DrawnRow(map.frame_.nrows), kNoNoData);
  const Outcome<> read = map.ReadCells(path, CountHeaderLines(path), progress);
  if (!read.Ok()) return read.Stop();
  return map;
}

Outcome<> PreviewedMap::ReadCells(const std::string& path, int headerLines,
                                  ProgressSink& progress) {
  std::optional<ValueRange> range;
  const auto step = static_cast<std::size_t>(preview_.ColumnStep());
  const Outcome<std::string> read =
      ReadRows({path, headerLines, frame_.ncols, frame_.nrows}, progress,
               [&](int row, std::span<double> cells, double nodata) {
                 if (!range) range.emplace(nodata_ = nodata);
                 range->Add(cells);
                 if (!preview_.DrawsRow(row)) return;
                 const std::span<double> drawn = drawn_.Row(DrawnRow(row));
                 for (std::size_t i = 0; i < cells.size(); i += step) drawn[i / step] = cells[i];
               });
  if (!read.Ok()) return read.Stop();
  fault_ = read.Value();
  if (range) range_ = range->Range();
  return Done{};
}

Canvas PreviewedMap::Picture(const Palette& palette, Colour without, Unscaled unscaled) const {
  Canvas picture = preview_.Blank();
  const bool stretched = !range_.isScaled && unscaled == Unscaled::kStretched;
  const UnscaledColours scale(range_);
  for (int row = 1; row <= frame_.nrows; row += preview_.RowStep()) {
    const std::span<const double> cells = drawn_.Row(DrawnRow(row));
    preview_.DrawRow(picture, row, frame_.ncols, [&](int column) {
      const double value = cells[static_cast<std::size_t>(DrawnColumn(column) - 1)];
      if (value == nodata_ || std::isnan(value)) return without;
      if (stretched) return palette[scale.Number(value)];
      return HasColourNumber(value) ? palette[ColourNumber(value)] : without;
    });
  }
  return picture;
}

std::optional<PreviewedMap::Cell> PreviewedMap::CellAt(double pixelX, double pixelY) const {
  const double x = preview_.CellX(pixelX);
  const double y = preview_.CellY(pixelY);
  if (!(x >= 0 && x < frame_.ncols && y >= 0 && y < frame_.nrows)) return std::nullopt;
  const int column = static_cast<int>(x) / preview_.ColumnStep() * preview_.ColumnStep() + 1;
  const int row = static_cast<int>(y) / preview_.RowStep() * preview_.RowStep() + 1;
  const double value = drawn_(DrawnColumn(column), DrawnRow(row));
  if (std::isnan(value)) return std::nullopt;
  return Cell{column, row, value};
}

}  // namespace ormel
