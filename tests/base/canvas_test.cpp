#include "base/canvas.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
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
  EXPECT_EQ((std::vector<std::uint8_t>{canvas.Bytes().begin(), canvas.Bytes().end()}),
            (std::vector<std::uint8_t>{0, 0, 0, 1, 2, 3, 0, 0, 0, 0, 0, 0}));
}

TEST(Canvas, AScaleMayRunUpwardsAndWithoutWidthChangesNothing) {
  Canvas canvas(4, 4);
  canvas.SetScale(0, 8, 8, 0);  // the origin at the bottom left, two units a pixel
  canvas.SetScale(3, 0, 3, 1);
  canvas.Plot(0.5, 0.5, kInk);
  canvas.Plot(7.9, 7.9, kInk);
  EXPECT_EQ(Picture(canvas), "...#\n....\n....\n#...\n");
}

TEST(Canvas, WhatLiesOutsideIsClipped) {
  constexpr double kHuge = std::numeric_limits<double>::max();
  Canvas canvas(3, 3);
  const std::pair<double, double> outside[] = {
      {-0.1, 1}, {3, 1}, {kHuge, -kHuge}, {std::numeric_limits<double>::infinity(), 1}};
  for (const auto& [x, y] : outside) canvas.Plot(x, y, kInk);
  canvas.Line(-5, -1, 9, -1, kInk);
  canvas.FillBlock(5, 5, kHuge, kHuge, kInk);
  EXPECT_EQ(Picture(canvas), "...\n...\n...\n");
  canvas.Line(-kHuge, 1, kHuge, 1, kInk);
  EXPECT_EQ(Picture(canvas), "...\n###\n...\n");
}

// A map of 7 cells on 16 pixels: every pixel belongs to exactly one cell.
TEST(Canvas, BlocksThatShareAnEdgeTile) {
  for (const int cells : {1, 3, 7, 15, 16}) {
    std::array<int, 256> painted{};  // so many times
    for (int cell = 0; cell < cells * cells; ++cell) {
      Canvas canvas(16, 16);
      canvas.SetScale(0, 0, cells, cells);
      const int row = cell / cells;
      const int column = cell % cells;
      canvas.FillBlock(column, row, column + 1, row + 1, kInk);
      for (int i = 0; i < 256; ++i) {
        painted[static_cast<std::size_t>(i)] += canvas.Pixel(i % 16, i / 16) == kInk;
      }
    }
    EXPECT_EQ(std::count(painted.begin(), painted.end(), 1), 256) << cells;
  }
}

TEST(Canvas, LinesHaveBothEndsAndAPenAndABlockAtLeastOnePixel) {
  Canvas thin(5, 5);
  thin.Line(0, 4, 4, 0, kInk);
  EXPECT_EQ(Picture(thin), "....#\n...#.\n..#..\n.#...\n#....\n");
  Canvas flat(5, 2);
  flat.Line(0, 0, 4, 1, kInk);  // each column to the nearest pixel, without a gap
  EXPECT_EQ(Picture(flat), "##...\n..###\n");
  Canvas thick(5, 5);
  thick.Line(2, 2, 2, 2, kInk, 3);  // centred on its pixel
  EXPECT_EQ(Picture(thick), ".....\n.###.\n.###.\n.###.\n.....\n");
  Canvas block(2, 2);
  block.FillBlock(1.2, 0.2, 1.3, 0.3, kInk);
  EXPECT_EQ(Picture(block), ".#\n..\n");
}

TEST(Canvas, StretchTakesTheNearestPixel) {
  Canvas source(2, 1);
  source.SetPixel(1, 0, kInk);
  Canvas wide(4, 2);
  wide.Stretch(source);
  wide.Stretch(Canvas());  // nothing to take from
  EXPECT_EQ(Picture(wide), "..##\n..##\n");
  Canvas empty(-3, 5);  // takes every operation
  empty.SetScale(0, 0, 10, 10);
  empty.Line(0, 0, 9, 9, kInk, 4);
  empty.FillBlock(0, 0, 9, 9, kInk);
  empty.Stretch(source);
  EXPECT_TRUE(empty.Empty() && Canvas(0, 5).Empty());
}

TEST(Grid, CellsLieRowAfterRowFromTheNorthWest) {
  Grid<int> grid(3, 2);
  grid(1, 1) = 11;
  grid(3, 1) = 31;
  grid(1, 2) = 12;
  EXPECT_EQ((std::vector<int>{grid.Cells().begin(), grid.Cells().end()}),
            (std::vector<int>{11, 0, 31, 12, 0, 0}));
  EXPECT_EQ(grid.Row(2)[0], 12);
  EXPECT_FALSE(grid.Holds(0, 1) || grid.Holds(4, 1) || grid.Holds(1, 3));
}

TEST(Grid, SizesBelowOneHoldNothingAndSizesBeyondMemoryFail) {
  EXPECT_TRUE(Grid<double>(-1, 5).Empty());
  EXPECT_EQ(Grid<double>(5, 0).Columns(), 0);
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "AddressSanitizer ends the program where memory runs out";
#endif
  using Large = std::array<char, 1 << 20>;
  const Outcome<Grid<Large>> grid = MakeGrid<Large>(1 << 20, 1 << 20);
  ASSERT_TRUE(grid.Failed());
  EXPECT_EQ(grid.Why().kind, FailureKind::kTooLarge);
}

}  // namespace
}  // namespace ormel
