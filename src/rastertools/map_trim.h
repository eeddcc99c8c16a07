// Trims maps to a common rectangle: cells outside it go, and cells that a map does not have become
// NODATA. Nothing is resampled: the maps are taken to lie on one lattice of cells.
#pragma once

#include <span>
#include <string>

#include "base/outcome.h"
#include "base/progress_sink.h"

namespace ormel {

// In map units.
struct MapRectangle {
  double west = 0;
  double south = 0;
  double east = 0;
  double north = 0;

  bool IsEmpty() const { return east < west || north < south; }
};

// Where a map lies.
struct MapBounds {
  std::string path;
  double cellsize = 0;
  MapRectangle rectangle;
  std::string fault;  // why its header could not be read: all is 0 then
};

MapBounds BoundsOf(const std::string& path);

// What all of the maps cover, or what any of them does; empty when they do not meet. Needs: at
// least one map.
MapRectangle Intersection(std::span<const MapBounds> maps);
MapRectangle Union(std::span<const MapBounds> maps);

// A rectangle in cells of a map.
struct TrimmedCells {
  double ncols = 0;  // whole numbers, of any size
  double nrows = 0;
  double west = 0;   // columns and rows of the map that lie before the rectangle; below 0: so many
  double north = 0;  // are missing
};

// All rounded half to even.
TrimmedCells CellsInside(const MapBounds& map, const MapRectangle& rectangle);

struct TrimJob {
  MapBounds source;
  std::string target;  // may be the source; its folder is made when it is missing
  MapRectangle rectangle;
  std::string working;  // the path of the working file
};

// Fails when source or target cannot be used, when a row that is wanted is not there in full, and
// when a side would be beyond 32767 cells. The old target stays then. A rectangle without rows or
// columns makes a map without cells.
[[nodiscard]] Outcome<> TrimMap(const TrimJob& job, ProgressSink& progress);

}  // namespace ormel
