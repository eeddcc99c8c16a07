#include "base/canvas.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "base/grid.h"

namespace ormel {
namespace {

constexpr Colour kInk = Rgb(1, 2, 3);

// The canvas as lines of text: '#' where it is not white.
std::string Picture(const Canvas& canvas) {
  std::string text;
  for (int y = 0; y < canvas.Height(); ++y) {
    for (int x = 0; x < canvas.Width(); ++x) text += canvas.Pixel(x, y) == kWhite ? '.' : '#';
    text += '\n';
  }
  return text;
}

TEST(Canvas, BytesAreRedGreenBlueFromTheTop) {
  Canvas canvas(2, 2, kBlack);
  canvas.SetPixel(1, 0, kInk);
  const std::vector<std::uint8_t> expected = {0, 0, 0, 1, 2, 3, 0, 0, 0, 0, 0, 0};
  EXPECT_TRUE(
      std::equal(expected.begin(), expected.end(), canvas.Bytes().begin(), canvas.Bytes().end()));
}

TEST(Canvas, AScaleMayRunUpwards) {
  Canvas canvas(4, 4);
  canvas.SetScale(0, 8, 8, 0);  // the origin at the bottom left, two units a pixel
  canvas.Plot(0.5, 0.5, kInk);
  canvas.Plot(7.9, 7.9, kInk);
  EXPECT_EQ(Picture(canvas), "...#\n....\n....\n#...\n");
}

TEST(Canvas, AScaleWithoutWidthChangesNothing) {
  Canvas canvas(2, 1);
  canvas.SetScale(3, 0, 3, 1);
  canvas.Plot(1, 0, kInk);
  EXPECT_EQ(Picture(canvas), ".#\n");
}

TEST(Canvas, WhatLiesOutsideIsClipped) {
  constexpr double kHuge = std::numeric_limits<double>::max();
  Canvas canvas(3, 3);
  canvas.Plot(-0.1, 1, kInk);
  canvas.Plot(3, 1, kInk);
  canvas.Plot(kHuge, -kHuge, kInk);
  canvas.Plot(std::numeric_limits<double>::infinity(), 1, kInk);
  canvas.Line(-5, -1, 9, -1, kInk);
  canvas.FillBlock(5, 5, kHuge, kHuge, kInk);
  EXPECT_EQ(Picture(canvas), "...\n...\n...\n");
  canvas.Line(-kHuge, 1, kHuge, 1, kInk);
  EXPECT_EQ(Picture(canvas), "...\n###\n...\n");
}

// A map of 7 cells on 16 pixels: every pixel belongs to exactly one cell.
TEST(Canvas, BlocksThatShareAnEdgeTile) {
  for (const int cells : {1, 3, 7, 15, 16}) {
    Canvas canvas(16, 16);
    canvas.SetScale(0, 0, cells, cells);
    int painted = 0;
    for (int row = 0; row < cells; ++row) {
      for (int column = 0; column < cells; ++column) {
        Canvas before = canvas;
        canvas.FillBlock(column, row, column + 1, row + 1, kInk);
        for (int i = 0; i < 256; ++i) {
          painted += canvas.Pixel(i % 16, i / 16) != before.Pixel(i % 16, i / 16);
          ASSERT_FALSE(before.Pixel(i % 16, i / 16) == kInk &&
                       canvas.Pixel(i % 16, i / 16) != kInk);
        }
      }
    }
    EXPECT_EQ(painted, 256) << cells;
  }
}

TEST(Canvas, ABlockFillsAtLeastOnePixel) {
  Canvas canvas(2, 2);
  canvas.FillBlock(1.2, 0.2, 1.3, 0.3, kInk);
  EXPECT_EQ(Picture(canvas), ".#\n..\n");
}

TEST(Canvas, LinesHaveBothEndsAndAPen) {
  Canvas thin(5, 5);
  thin.Line(0, 4, 4, 0, kInk);
  EXPECT_EQ(Picture(thin), "....#\n...#.\n..#..\n.#...\n#....\n");
  Canvas thick(5, 5);
  thick.Line(2, 2, 2, 2, kInk, 3);  // centred on its pixel
  EXPECT_EQ(Picture(thick), ".....\n.###.\n.###.\n.###.\n.....\n");
}

// A rounding error in a step must not leave a pixel out: 49 * (1 / 49.0) lies just below 1.
TEST(Canvas, LinesHaveNoGaps) {
  for (int width = 1; width <= 300; ++width) {
    Canvas canvas(width, 1);
    canvas.Line(0, 0, width - 1, 0, kInk);
    EXPECT_EQ(Picture(canvas), std::string(static_cast<std::size_t>(width), '#') + '\n') << width;
  }
}

TEST(Canvas, StretchTakesTheNearestPixel) {
  Canvas source(2, 1);
  source.SetPixel(1, 0, kInk);
  Canvas wide(4, 2);
  wide.Stretch(source);
  EXPECT_EQ(Picture(wide), "..##\n..##\n");
  wide.Stretch(Canvas());  // nothing to take from
  EXPECT_EQ(Picture(wide), "..##\n..##\n");
}

TEST(Canvas, EmptyOnesTakeEveryOperation) {
  for (const int width : {0, -3}) {
    Canvas canvas(width, 5);
    canvas.SetScale(0, 0, 10, 10);
    canvas.Line(0, 0, 9, 9, kInk, 4);
    canvas.FillBlock(0, 0, 9, 9, kInk);
    canvas.Stretch(Canvas(2, 2));
    EXPECT_TRUE(canvas.Empty());
  }
}

TEST(Grid, CellsLieRowAfterRowFromTheNorthWest) {
  Grid<int> grid(3, 2);
  grid(1, 1) = 11;
  grid(3, 1) = 31;
  grid(1, 2) = 12;
  const std::vector<int> expected = {11, 0, 31, 12, 0, 0};
  EXPECT_TRUE(std::equal(expected.begin(), expected.end(), grid.Cells().begin()));
  EXPECT_EQ(grid.Row(2)[0], 12);
  EXPECT_FALSE(grid.Holds(0, 1) || grid.Holds(4, 1) || grid.Holds(1, 3));
}

TEST(Grid, SizesBelowOneHoldNothingAndSizesBeyondMemoryFail) {
  EXPECT_TRUE(Grid<double>(-1, 5).Empty());
  EXPECT_EQ(Grid<double>(5, 0).Columns(), 0);
  struct Large {
    char bytes[1 << 20];
  };
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "AddressSanitizer ends the program where memory runs out";
#endif
  const Outcome<Grid<Large>> grid = MakeGrid<Large>(1 << 20, 1 << 20);
  ASSERT_TRUE(grid.Failed());
  EXPECT_EQ(grid.Why().kind, FailureKind::kTooLarge);
}

}  // namespace
}  // namespace ormel
