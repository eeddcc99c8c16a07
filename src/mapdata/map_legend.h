// A picture of a map as it goes into a text or a talk: with its name above, and beneath it the
// colour scale with the values at its ends and the colour of cells without one.
#pragma once

#include <optional>
#include <string>

#include "base/canvas.h"
#include "mapdata/palette.h"

namespace ormel {

struct MapLegend {
  std::string title;
  struct Scale {
    Palette palette;
    std::string low;  // the values at the ends
    std::string high;
    Colour without = kBlack;  // of cells that a constraint forbids or that have no data
  };
  std::optional<Scale> scale{};  // none: the picture is no map of values
};

// The picture of a map on a larger canvas with its legend. One that is small is enlarged by whole
// pixels first, so that its legend has room.
Canvas WithLegend(const Canvas& map, const MapLegend& legend);

}  // namespace ormel
