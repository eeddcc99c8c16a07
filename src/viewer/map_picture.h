// A map as a viewer holds it: its cells, and an off-screen image of one pixel a cell. Every zoom,
// pan and repaint is a stretch of a part of that image; the file is read once.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/canvas.h"
#include "base/grid.h"
#include "base/outcome.h"
#include "base/progress_sink.h"
#include "mapdata/palette.h"
#include "mapdata/raster.h"
#include "viewer/view_region.h"

namespace ormel {

// The header that all maps of a viewer have in common. Lengths and places are in map units.
struct ViewSpecs {
  double ncols = 0;
  double nrows = 0;
  double xllcorner = 0;
  double yllcorner = 0;
  double cellsize = 0;

  bool operator==(const ViewSpecs&) const = default;
};

// A place in map units.
struct MapPoint {
  double x = 0;
  double y = 0;

  bool operator==(const MapPoint&) const = default;
};

// The place on the map of a fraction of it, and the other way round.
MapPoint PointAt(const ViewSpecs& specs, MapFraction place);
MapFraction FractionAt(const ViewSpecs& specs, MapPoint point);

// What a map says about its values, whichever way it is viewed.
struct PictureSpecs {
  double Min = 0;
  double Max = 0;
  std::optional<double> NODATA;
};

// How values become colour numbers.
enum class Viewing {
  kScaledMap,      // the map runs from 0 to 255
  kScaledVersion,  // Min has colour 0, Max colour 255
  kAsItStands,     // values are colour numbers; those outside 0 to 255 have no colour
};

// A point that a tool has put on a picture. It stays on its place of the map.
struct Mark {
  MapPoint place;
  Colour colour = kBlack;
};

struct MapPicture {
  std::string path;      // of the map; the name of an image
  bool isImage = false;  // has no cells
  Grid<double> cells;
  PictureSpecs specs;
  Viewing viewing = Viewing::kScaledMap;
  Palette palette;
  Canvas image;  // one pixel a cell
  ViewRegion view;
  std::vector<Mark> marks;
};

// A map file that has been read, before anything is asked or drawn.
struct MapValues {
  ViewSpecs specs;
  Grid<double> cells;  // none when there is a `fault`
  RasterRange range;   // of all values in the file
  std::optional<double> nodata;
  std::string fault;  // why it cannot be shown; empty: it can
};

// The header of a map file.
[[nodiscard]] Outcome<ViewSpecs> ReadViewSpecs(const std::string& path);

// Reads a map in one pass. A map whose header differs from `wanted`, that has no cells or that ends
// early has a fault, and its range as well. Fails when the file cannot be read.
[[nodiscard]] Outcome<MapValues> ReadMapValues(const std::string& path,
                                               const std::optional<ViewSpecs>& wanted,
                                               ProgressSink& progress);

// Draws the off-screen image anew in the picture's palette; cells without a colour are drawn in
// `constraintColor`. `progress` hears of every tenth row and cannot stop it: a picture half in the
// old and half in the new colours is no use to anybody.
void DrawPicture(MapPicture& picture, Colour constraintColor, ProgressSink& progress);

// The values at the two ends of a picture's colour scale.
struct ScaleEnds {
  double low = 0;
  double high = kPaletteColours - 1;
};
ScaleEnds EndsOfScale(const MapPicture& picture);

}  // namespace ormel
