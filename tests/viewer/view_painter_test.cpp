#include "viewer/view_painter.h"

#include <gtest/gtest.h>

namespace ormel {
namespace {

constexpr Colour kInk = Rgb(1, 2, 3);

// A picture of `columns` by `rows` cells, each in a colour of its own.
MapPicture Chequered(int columns, int rows) {
  MapPicture picture;
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
  MapPicture picture = Chequered(10, 10);
  picture.view = {0.3, 0.5, 0.2, 0.2};
  const Canvas canvas = Painted(picture, 40, 20);
  for (int y = 0; y < 20; ++y) {
    for (int x = 0; x < 40; ++x) {
      ASSERT_EQ(canvas.Pixel(x, y), Rgb(3 + x / 20, 5 + y / 10, 9)) << x << ", " << y;
    }
  }
}

TEST(ViewPainter, AViewMayBeginInsideACell) {
  MapPicture picture = Chequered(10, 10);
  picture.view = {0.25, 0, 0.2, 0.2};
  const Canvas canvas = Painted(picture, 4, 1);
  const int columns[] = {2, 3, 3, 4};
  for (int x = 0; x < 4; ++x) EXPECT_EQ(canvas.Pixel(x, 0), Rgb(columns[x], 0, 9)) << x;
}

TEST(ViewPainter, LargeMapsAreThinnedOut) {
  const Canvas canvas = Painted(Chequered(200, 100), 50, 25);
  EXPECT_EQ(canvas.Pixel(1, 1), Rgb(4, 4, 9));
  EXPECT_EQ(canvas.Pixel(49, 24), Rgb(196, 96, 9));
}

TEST(ViewPainter, MarksStayOnTheirPlace) {
  MapPicture picture = Chequered(10, 10);
  picture.marks.push_back({{2.5, 7.5}, kInk});  // the third column, the third row
  EXPECT_EQ(Painted(picture, 100, 100).Pixel(25, 25), kInk);
  picture.view = {0.2, 0.2, 0.1, 0.1};
  EXPECT_EQ(Painted(picture, 100, 100).Pixel(50, 50), kInk);
  picture.view = {0.5, 0.5, 0.5, 0.5};  // outside
  const Canvas canvas = Painted(picture, 10, 10);
  for (int y = 0; y < 10; ++y) {
    for (int x = 0; x < 10; ++x) EXPECT_NE(canvas.Pixel(x, y), kInk);
  }
}

TEST(ViewPainter, LinesAndBandsLieOverTheMap) {
  const MapPicture picture = Chequered(10, 10);
  const Colour line = Painted(picture, 100, 100, {{1, 5}, {9, 5}}).Pixel(40, 50);
  EXPECT_EQ(Painted(picture, 100, 100).Pixel(40, 50), Rgb(4, 5, 9));
  EXPECT_NE(line, Rgb(4, 5, 9));
  const Canvas banded = Painted(picture, 100, 100, {}, RubberBand{{0.8, 0.7}, {0.2, 0.3}});
  for (const auto& [x, y] : {std::pair{20, 50}, {80, 50}, {50, 30}, {50, 70}}) {
    EXPECT_EQ(banded.Pixel(x, y), line) << x << ", " << y;
  }
  EXPECT_EQ(banded.Pixel(50, 50), Rgb(5, 5, 9));
}

TEST(ViewPainter, PicturesHaveTheProportionsOfTheMap) {
  const struct {
    double ncols, nrows;
    int width, height;
  } cases[] = {
      {4, 3, 600, 450},        // whole blocks of 150 pixels
      {181, 149, 543, 447},    // of 3
      {4000, 4000, 450, 450},  //
      {10000, 1, 600, 16},     // high enough to be pointed at
      {1, 10000, 16, 450},
  };
  for (const auto& one : cases) {
    const PictureSize size = PictureSizeOf({one.ncols, one.nrows, 0, 0, 1});
    EXPECT_EQ(size.width, one.width) << one.ncols;
    EXPECT_EQ(size.height, one.height) << one.nrows;
  }
}

}  // namespace
}  // namespace ormel
