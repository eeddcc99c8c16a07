#include "mapdata/map_legend.h"

#include <gtest/gtest.h>

namespace ormel {
namespace {

// Whether any pixel of the stretch has the colour.
bool Holds(const Canvas& picture, Colour colour, int top, int bottom) {
  for (int y = top; y < bottom; ++y) {
    for (int x = 0; x < picture.Width(); ++x) {
      if (picture.Pixel(x, y) == colour) return true;
    }
  }
  return false;
}

// The first row of pixels that holds the colour; the height when none does.
int FirstRow(const Canvas& picture, Colour colour) {
  int row = 0;
  while (row < picture.Height() && !Holds(picture, colour, row, row + 1)) ++row;
  return row;
}

TEST(MapLegend, StandsAroundTheEnlargedMap) {
  constexpr Colour kWest = Rgb(200, 0, 0);
  constexpr Colour kEast = Rgb(0, 0, 200);
  constexpr Colour kWithout = Rgb(1, 200, 3);
  Canvas map(2, 1, kWest);
  map.SetPixel(1, 0, kEast);
  MapLegend legend{"Elevation"};
  const Canvas bare = WithLegend(map, legend);
  legend.scale = MapLegend::Scale{GreyPalette(), "-3.5", "2900", kWithout};
  const Canvas whole = WithLegend(map, legend);

  // Two cells become squares of 200 pixels each.
  const int top = FirstRow(whole, kWest);
  EXPECT_TRUE(Holds(whole, kEast, top + 199, top + 200));
  EXPECT_FALSE(Holds(whole, kEast, top + 200, whole.Height()));
  EXPECT_GT(FirstRow(whole, kWithout), top + 200);
  EXPECT_EQ(FirstRow(bare, kWithout), bare.Height());
  EXPECT_LT(bare.Height(), whole.Height());
  legend.title.clear();
  EXPECT_LT(FirstRow(WithLegend(map, legend), kWest), top);
  EXPECT_TRUE(WithLegend({}, legend).Empty());
}

}  // namespace
}  // namespace ormel
