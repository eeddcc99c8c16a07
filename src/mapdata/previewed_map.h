// A map as a preview shows it: the cells that its picture draws, and no others, so that a map of
// any size costs one reading and the memory of a picture.
#pragma once

#include <optional>
#include <string>

#include "base/canvas.h"
#include "base/grid.h"
#include "base/outcome.h"
#include "base/progress_sink.h"
#include "mapdata/map_frame.h"
#include "mapdata/map_preview.h"
#include "mapdata/palette.h"
#include "mapdata/raster.h"

namespace ormel {

class PreviewedMap {
 public:
  // Reads the map to its end. Fails as ReadMapFrame() does; a map that ends early is shown as far
  // as it goes.
  [[nodiscard]] static Outcome<PreviewedMap> Read(const std::string& path, ProgressSink& progress);

  const MapFrame& Frame() const { return frame_; }
  const RasterRange& Range() const { return range_; }  // of all values
  // What is missing at the end of the file; empty: nothing.
  const std::string& Fault() const { return fault_; }

  // The map in the colours of a palette. A map that does not run from 0 to 255 is stretched to it,
  // or taken as it stands. Cells without a colour number are drawn in `without`.
  enum class Unscaled { kStretched, kAsItStands };
  Canvas Picture(const Palette& palette, Colour without, Unscaled unscaled) const;

  // The drawn cell under a place of the picture, in its pixels; none beside the map and where the
  // file holds nothing.
  struct Cell {
    int column = 0;
    int row = 0;
    double value = 0;
  };
  std::optional<Cell> CellAt(double pixelX, double pixelY) const;

 private:
  PreviewedMap(MapFrame frame, MapPreview preview, double nodata)
      : frame_(std::move(frame)), preview_(preview), nodata_(nodata) {}

  [[nodiscard]] Outcome<> ReadCells(const std::string& path, int headerLines,
                                    ProgressSink& progress);
  // Of all drawn columns or rows the one in which a column or row lies, both from 1.
  int DrawnColumn(int column) const { return (column - 1) / preview_.ColumnStep() + 1; }
  int DrawnRow(int row) const { return (row - 1) / preview_.RowStep() + 1; }

  MapFrame frame_;
  MapPreview preview_;
  double nodata_;
  Grid<double> drawn_;  // kNoNoData where the file holds nothing
  RasterRange range_;
  std::string fault_;
};

}  // namespace ormel
