// Pictures of a model's maps: palette colours where the constraints allow, their colour elsewhere.
#pragma once

#include <span>

#include "base/canvas.h"
#include "mapdata/map_preview.h"
#include "mapdata/palette.h"
#include "mce/composite_map.h"

namespace ormel {

struct MapColours {
  const Palette& palette;
  Colour forbidden;  // of cells that the mask forbids
};

// Draws the cells of one row (from 1), scaled to 0 to 255, when the preview draws that row.
void DrawModelRow(Canvas& picture, const MapPreview& preview, const CompositeMap& map,
                  const MapColours& colours, int row, std::span<const double> values);

// Draws the scaled composite, its values rounded to `decimalPlaces` first as in the written map.
void DrawComposite(Canvas& picture, const MapPreview& preview, const CompositeMap& map,
                   const MapColours& colours, int decimalPlaces);

}  // namespace ormel
