// Where a map lies and how large it is: what its header says, checked, for tools that make maps.
#pragma once

#include <string>

#include "base/outcome.h"
#include "mapdata/raster_writer.h"

namespace ormel {

// Lengths and places are in map units.
struct MapFrame {
  int ncols = 0;  // 1 to 32767, as the rows
  int nrows = 0;
  double xllcorner = 0;
  double yllcorner = 0;
  double cellsize = 0;
  HeaderValues texts;  // as they are written: X and Y as default text, the others as they were read
};

// A place in map units.
struct MapPlace {
  double x = 0;
  double y = 0;
};

// The centre of a cell, column and row from 1.
MapPlace CentreOf(const MapFrame& frame, int column, int row);

// The frame of the map at `path`. Fails when the file cannot be read, when a side is none of a map,
// and when the file is too short for so many cells.
[[nodiscard]] Outcome<MapFrame> ReadMapFrame(const std::string& path);

}  // namespace ormel
