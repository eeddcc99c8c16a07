#include "mce/nonlinear/graph_plot.h"

#include <gtest/gtest.h>

#include <cmath>

#include "charts/ink.h"

namespace ormel {
namespace {

// The plot is 562 wide and 380 high: from (60, 10) to (622, 390).
TEST(PlotFrame, TheBandRunsATwentiethOfTheRangeBeyondTheLimits) {
  const struct {
    double top, bottom, high, low, atTop, atBottom, middle, above;
  } cases[] = {
      {255, 0, 255, 0, 267.75, -12.75, 127.5, 275.131578947},
      {-20, 10, 10, -20, 11.5, -21.5, -5, 12.368421053},  // a falling line
      {7, 7, 8, 6, 8.1, 5.9, 7, 8.157894737},
  };
  for (const auto& test : cases) {
    const PlotFrame frame(test.top, test.bottom);
    EXPECT_EQ(frame.High(), test.high);
    EXPECT_EQ(frame.Low(), test.low);
    EXPECT_NEAR(frame.Y(test.high), 10 + 380 / 22.0, 1e-9);
    EXPECT_NEAR(frame.Y(test.low), 390 - 380 / 22.0, 1e-9);
    EXPECT_NEAR(frame.WeightAt(10), test.atTop, 1e-9);
    EXPECT_NEAR(frame.WeightAt(390), test.atBottom, 1e-9);
    EXPECT_NEAR(frame.WeightAt(200), test.middle, 1e-9);
    EXPECT_NEAR(frame.WeightAt(0), test.above, 1e-9);  // dragging goes beyond the plot
  }
  // Weights that no double tells apart lie in the middle.
  for (const auto& [top, bottom] : {std::pair(1.7e308, -1.7e308), std::pair(1e20, 1e20)}) {
    const PlotFrame frame(top, bottom);
    EXPECT_EQ(frame.Y(top), 200);
    EXPECT_TRUE(std::isfinite(frame.WeightAt(100)));
  }
}

// Reach of a press on either side of a point: 562 * max(3000 / n, 250) / 6000, which is 140.5 for 2
// points, 35.1 for 8, 23.4 from 12 on. Points stand 562 / (n - 1) apart.
TEST(PlotFrame, APressPicksThePointThatIsNear) {
  const struct {
    int count;
    std::vector<std::pair<double, int>> picked;
  } cases[] = {
      {2, {{0, 1}, {200, 1}, {201, 0}, {341, 0}, {481, 0}, {482, 2}, {639, 2}}},
      {8, {{24, 0}, {25, 1}, {95, 1}, {96, 0}, {105, 0}, {106, 2}, {175, 2}, {176, 0}, {600, 8}}},
      {12, {{36, 0}, {37, 1}, {83, 1}, {84, 0}, {87, 0}, {88, 2}, {111, 2}}},
      {32, {{36, 0}, {37, 1}, {69, 1}, {70, 2}, {87, 2}, {88, 3}, {612, 31}, {613, 32}, {646, 0}}},
      {500, {{36, 0}, {60, 1}, {61, 2}, {62, 3}, {622, 500}, {645, 500}, {646, 0}}},
  };
  const PlotFrame frame(1, 0);
  for (const auto& test : cases) {
    for (const auto& [x, point] : test.picked) {
      EXPECT_EQ(frame.PointAt(x, test.count), point) << test.count << " points, at " << x;
    }
  }
  const std::pair<double, double> places[] = {{0, 0}, {60, 0}, {200.5, 0.25}, {622, 1}, {640, 1}};
  for (const auto& [x, place] : places) EXPECT_EQ(frame.PlaceAt(x), place) << x;
}

TEST(RoundMarks, AreRoundNumbersWithinTheLimits) {
  using Marks = std::vector<double>;
  EXPECT_EQ(RoundMarks(0, 255), (Marks{0, 100, 200}));
  EXPECT_EQ(RoundMarks(0, 1), (Marks{0, 0.2, 0.4, 0.6, 0.8, 1}));
  EXPECT_EQ(RoundMarks(-7, 18), (Marks{-5, 0, 5, 10, 15}));
  EXPECT_EQ(RoundMarks(3, 3), Marks());
  EXPECT_EQ(RoundMarks(-1.7e308, 1.7e308), Marks());
}

constexpr Colour kTint = Rgb(232, 240, 250);

WeightGraph Line(const char* initial, const char* final) {
  WeightGraph graph;
  EXPECT_TRUE(computeLinear(graph, {initial, final}));
  return graph;
}

TEST(GraphPlot, LooksAlikeInEverySizeAndShowsWhichIsChosen) {
  const WeightGraph line = Line("0", "255");
  for (const int scale : {1, 2}) {
    Canvas canvas(640 * scale, 420 * scale);
    DrawGraphPlot(canvas, PlotFrame(255, 0), {{{0.5, "128"}}, {{line.samples, kBlack}}, {}});
    const auto at = [&](int x, int y) { return canvas.Pixel(x * scale, y * scale); };
    EXPECT_EQ(at(200, 286), kBlack);  // weight 63.5 lies at 286.7
    EXPECT_EQ(at(200, 250), kWhite);
    EXPECT_EQ(at(200, 320), kTint);
    EXPECT_EQ(at(200, 380), kWhite);  // below weight 0
    EXPECT_NE(at(341, 100), kWhite);  // the tick
  }
  for (const bool chosen : {false, true}) {
    Canvas canvas(60, 40);
    DrawCurvePicture(canvas, Line("5", "-5"), chosen);
    EXPECT_EQ(canvas.Pixel(6, 6), kCurveColour);
    EXPECT_EQ(canvas.Pixel(53, 33), kCurveColour);
    EXPECT_NE(canvas.Pixel(53, 6), kCurveColour);
    EXPECT_EQ(canvas.Pixel(0, 20) == kCurveColour, chosen);
  }
}

bool Holds(const Canvas& canvas, Colour colour) {
  for (int i = 0; i < canvas.Width() * canvas.Height(); ++i) {
    if (canvas.Pixel(i % canvas.Width(), i / canvas.Width()) == colour) return true;
  }
  return false;
}

TEST(GraphPlot, AnyWeightsAndSizesAreDrawn) {
  for (const char* weight : {"0", "-1E20", "1E308", "1E-310"}) {
    const WeightGraph flat = Line(weight, weight);
    for (const double top : {flat.topValue, 1.7e308}) {
      Canvas canvas(1280, 840);
      DrawGraphPlot(canvas, PlotFrame(top, flat.topValue),
                    {{{0, "?"}, {1, "1/1/2000"}}, {{flat.samples, kBlack}}, {}, 0, 1});
      EXPECT_TRUE(Holds(canvas, kBlack)) << weight << " " << top;
    }
    Canvas picture(60, 40);
    DrawCurvePicture(picture, flat, false);
    EXPECT_TRUE(Holds(picture, kCurveColour)) << weight;
  }
  const WeightGraph line = Line("0", "1");
  for (const auto& [width, height] : {std::pair(0, 0), std::pair(1, 1), std::pair(3, 900)}) {
    Canvas canvas(width, height);
    DrawGraphPlot(canvas, PlotFrame(1, 0),
                  {{{0, "0"}}, {{line.samples, 0}}, line.samples, 256, 0.5});
    DrawCurvePicture(canvas, line, true);
    EXPECT_TRUE(canvas.Empty() || canvas.Pixel(0, 0) == kCurveColour);
  }
}

TEST(Ink, EdgesAreMixedOnceAndBlocksHaveAPixelInsideTheClip) {
  Canvas mixed(10, 10);
  const InkPoint path[] = {{1, 5}, {5, 5}, {9, 5}, {3, 5}};
  Ink(mixed, 1).Stroke(path, 1, kBlack);  // covers half of the rows 4 and 5
  for (int x = 2; x < 8; ++x) {
    EXPECT_EQ(mixed.Pixel(x, 3), kWhite) << x;
    EXPECT_EQ(mixed.Pixel(x, 4), Rgb(128, 128, 128)) << x;
    EXPECT_EQ(mixed.Pixel(x, 5), Rgb(128, 128, 128)) << x;
  }
  Canvas canvas(10, 10);
  Ink ink(canvas, 2);
  ink.Clip(0, 0, 5, 4);
  ink.Block(1, 1, 2, 3, kBlack);
  ink.Block(4, -9, 4, 9, kTint);
  const InkPoint far[] = {{-1e300, 3.75}, {1e300, 3.75}, {1e300, 4.25}, {-1e300, 4.25}};
  ink.Stroke(far, 0.5, kBlack);  // rows 7 and 8, of which 8 lies outside
  const char* rows[] = {"........H.", "........H.", "..BB....H.", "..BB....H.", "..BB....H.",
                        "..BB....H.", "........H.", "BBBBBBBBBB", "..........", ".........."};
  for (int i = 0; i < 100; ++i) {
    const char pixel = rows[i / 10][i % 10];
    const Colour expected = pixel == 'B' ? kBlack : pixel == 'H' ? kTint : kWhite;
    EXPECT_EQ(canvas.Pixel(i % 10, i / 10), expected) << i;
  }
}

}  // namespace
}  // namespace ormel
