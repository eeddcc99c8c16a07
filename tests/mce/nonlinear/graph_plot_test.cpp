#include "mce/nonlinear/graph_plot.h"

#include <gtest/gtest.h>

#include <cmath>

#include "charts/chart_drawing.h"

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
    const Chart chart = WeightChart(frame, {});
    const ChartLayout drawn(chart, PlotFrame::kWidth, PlotFrame::kHeight);
    EXPECT_NEAR(drawn.PlaceY({0, test.high}), 10 + 380 / 22.0, 1e-9);
    EXPECT_NEAR(drawn.PlaceY({0, test.low}), 390 - 380 / 22.0, 1e-9);
    EXPECT_NEAR(drawn.PlaceX({0.25, 0}), 60 + 562 / 4.0, 1e-9);
    EXPECT_NEAR(frame.WeightAt(10), test.atTop, 1e-9);
    EXPECT_NEAR(frame.WeightAt(390), test.atBottom, 1e-9);
    EXPECT_NEAR(frame.WeightAt(200), test.middle, 1e-9);
    EXPECT_NEAR(frame.WeightAt(0), test.above, 1e-9);  // dragging goes beyond the plot
  }
  // Limits at the ends of what a double can tell, and limits that it cannot tell apart.
  for (const auto& [top, bottom] : {std::pair(1.7e308, -1.7e308), std::pair(1e20, 1e20)}) {
    const PlotFrame frame(top, bottom);
    const Chart chart = WeightChart(frame, {});
    EXPECT_NEAR(ChartLayout(chart, 640, 420).PlaceY({0, bottom / 2 + top / 2}), 200, 1e-6);
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

constexpr Colour kTint = Rgb(232, 240, 250);

WeightGraph Line(const char* initial, const char* final) {
  WeightGraph graph;
  EXPECT_TRUE(computeLinear(graph, {initial, final}));
  return graph;
}

void Draw(Canvas& canvas, const PlotFrame& frame, const GraphPlot& plot) {
  DrawChart(canvas, WeightChart(frame, plot), PlotFrame::kWidth);
}

TEST(GraphPlot, LooksAlikeInEverySizeAndShowsWhichIsChosen) {
  const WeightGraph line = Line("0", "255");
  for (const int scale : {1, 2}) {
    Canvas canvas(640 * scale, 420 * scale);
    Draw(canvas, PlotFrame(255, 0), {{"Value", {{0.5, "128"}}}, {{line.samples, kBlack}}});
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
      Draw(canvas, PlotFrame(top, flat.topValue),
           {{"", {{0, "?"}, {1, "1/1/2000"}}}, {{flat.samples, kBlack}}, {}, 0, 1});
      EXPECT_TRUE(Holds(canvas, kBlack)) << weight << " " << top;
    }
    Canvas picture(60, 40);
    DrawCurvePicture(picture, flat, false);
    EXPECT_TRUE(Holds(picture, kCurveColour)) << weight;
  }
  const WeightGraph line = Line("0", "1");
  for (const auto& [width, height] : {std::pair(0, 0), std::pair(1, 1), std::pair(3, 900)}) {
    Canvas canvas(width, height);
    Draw(canvas, PlotFrame(1, 0), {FactorValueAxis(), {{line.samples, 0}}, line.samples, 256, 0.5});
    DrawCurvePicture(canvas, line, true);
    EXPECT_TRUE(canvas.Empty() || canvas.Pixel(0, 0) == kCurveColour);
  }
}

}  // namespace
}  // namespace ormel
