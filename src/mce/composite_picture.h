// Pictures of a model's maps: palette colours where the constraints allow, their colour elsewhere.
#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "base/canvas.h"
#include "base/grid.h"
#include "mapdata/map_preview.h"
#include "mapdata/palette.h"
#include "mce/composite_map.h"

namespace ormel {

struct MapColours {
  const Palette& palette;
  Colour forbidden;  // of cells that the mask forbids
};

// Draws the cells of one row (from 1), scaled to 0 to 255, when the preview draws that row.
void DrawModelRow(Canvas& picture, const MapPreview& preview, const Grid<std::uint8_t>& mask,
                  const MapColours& colours, int row, std::span<const double> values);

// Draws all rows, their values rounded to `decimalPlaces` first as in written maps. `valuesOf`
// fills a row with its scaled values.
void DrawScaledMap(Canvas& picture, const MapPreview& preview, const Grid<std::uint8_t>& mask,
                   const MapColours& colours, int decimalPlaces,
                   const std::function<void(int row, std::span<double> values)>& valuesOf);

// Draws the scaled composite so.
void DrawComposite(Canvas& picture, const MapPreview& preview, const CompositeMap& map,
                   const MapColours& colours, int decimalPlaces);

}  // namespace ormel
