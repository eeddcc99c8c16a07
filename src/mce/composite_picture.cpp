#include "mce/composite_picture.h"

#include <vector>

#include "text/numbers.h"

namespace ormel {

void DrawModelRow(Canvas& picture, const MapPreview& preview, const CompositeMap& map,
                  const MapColours& colours, int row, std::span<const double> values) {
  preview.DrawRow(picture, row, static_cast<int>(values.size()), [&](int column) {
    if (!map.Allowed(column, row)) return colours.forbidden;
    return colours.palette[ColourNumber(values[static_cast<std::size_t>(column - 1)])];
  });
}

void DrawComposite(Canvas& picture, const MapPreview& preview, const CompositeMap& map,
                   const MapColours& colours, int decimalPlaces) {
  const CompositeMap::Limits limits = map.ScaleLimits();
  std::vector<double> values(static_cast<std::size_t>(map.Frame().ncols));
  for (int row = 1; row <= map.Frame().nrows; row += preview.RowStep()) {
    map.ScaledRow(row, limits, values);
    for (double& value : values) value = HalfEvenRound(value, decimalPlaces);
    DrawModelRow(picture, preview, map, colours, row, values);
  }
}

}  // namespace ormel
