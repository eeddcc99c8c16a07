#include "mce/composite_picture.h"

#include <vector>

#include "text/numbers.h"

namespace ormel {

void DrawModelRow(Canvas& picture, const MapPreview& preview, const Grid<std::uint8_t>& mask,
                  const MapColours& colours, int row, std::span<const double> values) {
  const std::span<const std::uint8_t> allowed = mask.Row(row);
  preview.DrawRow(picture, row, static_cast<int>(values.size()), [&](int column) {
    const auto place = static_cast<std::size_t>(column - 1);
    if (allowed[place] == 0) return colours.forbidden;
    return colours.palette[ColourNumber(values[place])];
  });
}

void DrawScaledMap(Canvas& picture, const MapPreview& preview, const Grid<std::uint8_t>& mask,
                   const MapColours& colours, int decimalPlaces,
                   const std::function<void(int row, std::span<double> values)>& valuesOf) {
  std::vector<double> values(static_cast<std::size_t>(mask.Columns()));
  for (int row = 1; row <= mask.Rows(); row += preview.RowStep()) {
    valuesOf(row, values);
    for (double& value : values) value = HalfEvenRound(value, decimalPlaces);
    DrawModelRow(picture, preview, mask, colours, row, values);
  }
}

void DrawComposite(Canvas& picture, const MapPreview& preview, const CompositeMap& map,
                   const MapColours& colours, int decimalPlaces) {
  const ScaleLimits limits = map.Limits();
  DrawScaledMap(picture, preview, map.Mask(), colours, decimalPlaces,
                [&](int row, std::span<double> values) { map.ScaledRow(row, limits, values); });
}

}  // namespace ormel
