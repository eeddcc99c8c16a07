#include "viewer/view_painter.h"

#include <gtest/gtest.h>

namespace ormel {
namespace {

constexpr Colour kInk = Rgb(1, 2, 3);

// A picture of `columns` by `rows` cells, each in a colour of its own.
MapPicture Chequered(int columns, int rows, const ViewRegion& view = {}) {
  MapPicture picture;
  picture.view = view;
  picture.image = Canvas(columns, rows);
  for (int y = 0; y < rows; ++y) {
    for (int x = 0; x < columns; ++x) picture.image.SetPixel(x, y, Rgb(x, y, 9));
  }
  return picture;
}

Canvas Painted(const MapPicture& picture, int width, int height,
               const std::vector<MapPoint>& measured = {},
               const std::optional<RubberBand>& band = {}) {
  Canvas canvas(width, height);
  PaintView(canvas, picture, {10, 10, 0, 0, 1}, measured, band);
  return canvas;
}

TEST(ViewPainter, CellsAreBlocksOfOneColour) {
  const Canvas canvas = Painted(Chequered(10, 10, {0.3, 0.5, 0.2, 0.2}), 40, 20);
  for (int i = 0; i < 40 * 20; ++i) {
    ASSERT_EQ(canvas.Pixel(i % 40, i / 40), Rgb(3 + i % 40 / 20, 5 + i / 40 / 10, 9)) << i;
  }
  // A view may begin inside a cell.
  const Canvas inside = Painted(Chequered(10, 10, {0.25, 0, 0.2, 0.2}), 4, 1);
  const int columns[] = {2, 3, 3, 4};
  for (int x = 0; x < 4; ++x) EXPECT_EQ(inside.Pixel(x, 0), Rgb(columns[x], 0, 9)) << x;
  // Large maps are thinned out.
  const Canvas thinned = Painted(Chequered(200, 100), 50, 25);
  EXPECT_EQ(thinned.Pixel(1, 1), Rgb(4, 4, 9));
  EXPECT_EQ(thinned.Pixel(49, 24), Rgb(196, 96, 9));
}

TEST(ViewPainter, MarksLinesAndBandsLieOverTheMapOnTheirPlaces) {
  MapPicture picture = Chequered(10, 10);
  const Colour line = Painted(picture, 100, 100, {{1, 5}, {9, 5}}).Pixel(40, 50);
  EXPECT_NE(line, Rgb(4, 5, 9));
  const Canvas banded = Painted(picture, 100, 100, {}, RubberBand{{0.8, 0.7}, {0.2, 0.3}});
  for (const auto& [x, y] : {std::pair{20, 50}, {80, 50}, {50, 30}, {50, 70}}) {
    EXPECT_EQ(banded.Pixel(x, y), line) << x << ", " << y;
  }
  EXPECT_EQ(banded.Pixel(50, 50), Rgb(5, 5, 9));

  picture.marks.push_back({{2.5, 7.5}, kInk});  // the third column, the third row
  EXPECT_EQ(Painted(picture, 100, 100).Pixel(25, 25), kInk);
  picture.view = {0.2, 0.2, 0.1, 0.1};
  EXPECT_EQ(Painted(picture, 100, 100).Pixel(50, 50), kInk);
  picture.view = {0.5, 0.5, 0.5, 0.5};  // outside
  const Canvas canvas = Painted(picture, 10, 10);
  for (int i = 0; i < 100; ++i) EXPECT_NE(canvas.Pixel(i % 10, i / 10), kInk);
}

TEST(ViewPainter, PicturesHaveTheProportionsOfTheMap) {
  const std::pair<ViewSpecs, std::pair<int, int>> cases[] = {
      {{4, 3}, {600, 450}},                                 // whole blocks of 150 pixels
      {{181, 149}, {543, 447}},                             // of 3
      {{4000, 4000}, {450, 450}}, {{10000, 1}, {600, 16}},  // high enough to be pointed at
      {{1, 10000}, {16, 450}},
  };
  for (const auto& [specs, wanted] : cases) {
    const PictureSize size = PictureSizeOf(specs);
    EXPECT_EQ(std::pair(size.width, size.height), wanted);
  }
}

}  // namespace
}  // namespace ormel
