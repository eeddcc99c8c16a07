#include "charts/chart.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <numeric>

#include "charts/chart_drawing.h"
#include "charts/ink.h"
#include "charts/stroke_font.h"
#include "text/dates.h"
#include "text/numbers.h"

namespace ormel {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
const double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr Colour kRed = Rgb(255, 0, 0);
constexpr Colour kGreen = Rgb(0, 255, 0);
// Units in which most charts here are laid out; a unit is a pixel.
constexpr int kWide = 640;
constexpr int kHigh = 420;

Axis Numbers(std::string title) {
  Axis axis;
  axis.title = std::move(title);
  axis.numberText = [](double number) { return NumberText(number); };
  return axis;
}

Chart ChartOf(std::vector<Series> series) {
  Chart chart;
  chart.x = Numbers("Cell value");
  chart.y = Numbers("Cells");
  chart.series = std::move(series);
  return chart;
}

Canvas Picture(const Chart& chart, int scale = 1) {
  Canvas canvas(kWide * scale, kHigh * scale);
  DrawChart(canvas, chart, kWide);
  return canvas;
}

int Count(const Canvas& canvas, Colour colour) {
  int count = 0;
  for (int i = 0; i < canvas.Width() * canvas.Height(); ++i) {
    count += canvas.Pixel(i % canvas.Width(), i / canvas.Width()) == colour;
  }
  return count;
}

int Whole(double place) { return static_cast<int>(std::floor(place)); }

// ---- Layout -------------------------------------------------------------------------------------

TEST(ChartLayout, TextsHaveRoomBesideTheFrame) {
  for (const double most : {0.9, 80.0, 123456789.0, 1e-7}) {
    Chart chart = ChartOf({Bars("", {0, most / 2, most})});
    const ChartLayout layout(chart, kWide, kHigh);
    double longest = 0;
    for (const AxisMark& mark : layout.Y().marks) {
      longest = std::max(longest, Ink::TextWidth(mark.text, layout.Y().textHeight));
    }
    EXPECT_GT(layout.Y().marks.size(), 2U);
    // The title stands upright between the edge, 9 and 10 wide, and the texts.
    EXPECT_GE(layout.Frame().left - ChartLayout::kMarkGap - longest, 9 + 10) << most;
    EXPECT_LT(layout.Frame().left, kWide / 2.0);
    EXPECT_LE(layout.Y().scale.Values().low, 0);
    EXPECT_GE(layout.Y().scale.Values().high, most);
    // Bars have their whole width: three of them from -0.5 to 2.5.
    EXPECT_EQ(layout.X().scale.Values().low, -0.5);
    EXPECT_EQ(layout.X().scale.Values().high, 2.5);
  }
  // A title and a legend take room above; a legend needs two names.
  Chart chart = ChartOf({Line("North", {0, 1}, {0, 1}), Line("", {0, 1}, {1, 0})});
  const double bare = ChartLayout(chart, kWide, kHigh).Frame().top;
  EXPECT_TRUE(ChartLayout(chart, kWide, kHigh).Legend().empty());
  chart.series[1].name = "South";
  const ChartLayout named(chart, kWide, kHigh);
  ASSERT_EQ(named.Legend().size(), 2U);
  EXPECT_GT(named.Legend()[1].x, named.Legend()[0].x + Ink::TextWidth("North", 9));
  EXPECT_GT(named.Frame().top, bare);
  for (int i = 0; i < 300; ++i) chart.series.push_back(Line("A long name of a map", {}, {}));
  const ChartLayout many(chart, kWide, kHigh);
  EXPECT_LT(many.Frame().top, kHigh / 2.0);
  const auto told = many.Legend().size() - 1;
  EXPECT_EQ(many.Legend().back().text, "and " + std::to_string(302 - told) + " more");
}

TEST(ChartLayout, EveryBarIsFoundInItsColumnHoweverLow) {
  std::vector<double> counts(256);
  for (int i = 0; i < 256; ++i) counts[static_cast<std::size_t>(i)] = i % 7 * i;
  counts[13] = kNaN;
  const Chart chart = ChartOf({Bars("Cells", counts)});
  const ChartLayout layout(chart, kWide, kHigh);
  for (std::size_t i = 0; i < 256; ++i) {
    for (const double part : {-0.45, 0.0, 0.45}) {
      const double x = layout.X().scale.At(static_cast<double>(i) + part);
      const auto bar = layout.BarAt(x, layout.Frame().top + 1);
      ASSERT_EQ(bar.has_value(), i != 13) << i;
      EXPECT_EQ(bar ? bar->sample : 13, i);
    }
  }
  EXPECT_FALSE(layout.BarAt(layout.Frame().left - 3, 200));
  EXPECT_FALSE(layout.BarAt(300, layout.Frame().bottom + 3));
  // A million bars of a step of their own.
  Series many = Bars("", std::vector<double>(1000000, 1));
  many.start = -5;
  many.step = many.barWidth = 0.25;
  const Chart large = ChartOf({many});
  const ChartLayout wide(large, kWide, kHigh);
  const auto bar = wide.BarAt(wide.X().scale.At(-5 + 0.25 * 777777), 200);
  ASSERT_TRUE(bar);
  EXPECT_EQ(bar->sample, 777777U);
  EXPECT_EQ(bar->place.x, -5 + 0.25 * 777777);
}

TEST(ChartLayout, LeadsBackToSamplesAndPlaces) {
  Chart chart = ChartOf({Line("Ridge", {0, 10, 20, 50}, {1, 2, kNaN, 8}),
                         Line("Valley", {0, 10, 20, 50}, {5, 6, 7, 0})});
  chart.right = Numbers("Rain");
  chart.series.push_back(Line("Rain", {25}, {1000}));
  chart.series.back().onRight = true;
  chart.series.push_back({SeriesKind::kPoints, "Nests", {4}, {30}});
  chart.series.push_back({SeriesKind::kArea, "", {100, 100}, {0, 50}});
  const ChartLayout layout(chart, kWide, kHigh);
  const auto x = [&](double value) { return layout.X().scale.At(value); };
  const auto y = [&](double value) { return layout.Y().scale.At(value); };
  const struct {
    double x, y;
    const char* place;
    const char* value;
  } cases[] = {{4, 1, "Cell value: 0", "Ridge: 1"},   {6, 1, "Cell value: 10", "Ridge: 2"},
               {6, 9, "Cell value: 10", "Valley: 6"}, {19, 2, "Cell value: 20", "Valley: 7"},
               {49, 7, "Cell value: 50", "Ridge: 8"}, {31, 4, "Cell value: 30", "Nests: 4"}};
  for (const auto& test : cases) {
    const auto hit = layout.NearestSample(x(test.x), y(test.y));
    ASSERT_TRUE(hit);
    EXPECT_EQ(PlaceText(chart, *hit), test.place);
    EXPECT_EQ(ValueText(chart, *hit), test.value);
  }
  const auto rain = layout.SampleAt(2, -100);
  ASSERT_TRUE(rain);
  EXPECT_EQ(ValueText(chart, *rain), "Rain: 1000");
  EXPECT_EQ(layout.PlaceY(rain->place), layout.Y(true).scale.At(1000));
  EXPECT_FALSE(layout.SampleAt(0, 21));  // a gap
  EXPECT_EQ(layout.HeldFrom(0, 2, false)->sample, 3U);
  EXPECT_EQ(layout.HeldFrom(0, 2, true)->sample, 1U);
  ASSERT_TRUE(layout.PointAt(x(30) + 5, y(4) - 5));
  EXPECT_FALSE(layout.PointAt(x(30) + 7, y(4) - 7));
  const ChartPlace place = layout.ValuesAt(x(12.5), y(3.25));
  EXPECT_NEAR(place.x, 12.5, 1e-9);
  EXPECT_NEAR(place.y, 3.25, 1e-9);
  chart.series.clear();
  EXPECT_FALSE(ChartLayout(chart, kWide, kHigh).NearestSample(300, 200));
}

TEST(Shortened, KeepsBothEndsAndWholeLetters) {
  EXPECT_EQ(Shortened("wolves.csv", 9, 200), "wolves.csv");
  const std::string path = "/home/ranger/räüber/öst/2021/wölfe.csv";
  for (int room = 40; room < 300; room += 3) {
    const std::string text = Shortened(path, 9, room);
    EXPECT_LE(Ink::TextWidth(text, 9), room);
    EXPECT_EQ(text.front(), '/');
    EXPECT_EQ(text.back(), 'v');
    for (std::string_view rest = text; !rest.empty();) EXPECT_NE(TakeCodePoint(rest), U'\uFFFD');
  }
}

// ---- Drawing ------------------------------------------------------------------------------------

TEST(DrawChart, OfAMillionSamplesTheExtremesOfEachColumnAreSeen) {
  Series line = {SeriesKind::kLine, "", std::vector<double>(1000000), {}};
  line.y[777777] = 1;
  line.y[222222] = -1;
  line.colour = kBlack;
  for (const int scale : {1, 2}) {
    const Chart chart = ChartOf({line});
    const ChartLayout layout(chart, kWide, kHigh);
    const Canvas canvas = Picture(chart, scale);
    const auto dark = [&](std::size_t sample, double y) {
      int darkest = 255;
      for (int i = -1; i <= 1; ++i) {
        const int column = Whole(layout.X().scale.At(static_cast<double>(sample)) * scale) + i;
        darkest = std::min(darkest,
                           int{Green(canvas.Pixel(column, Whole(layout.Y().scale.At(y) * scale)))});
      }
      return darkest < 100;
    };
    for (const double part : {0.1, 0.5, 0.97}) {
      EXPECT_TRUE(dark(777777, part)) << part;
      EXPECT_TRUE(dark(222222, -part)) << part;
      EXPECT_FALSE(dark(777777, -part)) << part;
      EXPECT_FALSE(dark(500000, part)) << part;
    }
    EXPECT_TRUE(dark(500000, 0));
  }
}

TEST(DrawChart, BarsAreAsHighAsTheyShouldBeAndSelectedOnesStandOut) {
  // 100000 bars are narrower than a pixel; none of the two high ones is lost.
  Series bars = Bars("", std::vector<double>(100000, 10));
  bars.y[30000] = 100;
  bars.y[60000] = 80;
  bars.selected = {60000, 99999999};
  bars.colour = kBlack;
  bars.selectedColour = kGreen;
  for (const std::size_t count : {std::size_t{100000}, std::size_t{10}}) {
    if (count == 10) {
      bars.y = {10, 10, 10, 100, 10, 10, 80, 10, 10, 10};
      bars.selected = {6};
    }
    const double of = static_cast<double>(count) / 10;
    const Chart chart = ChartOf({bars});
    const ChartLayout layout(chart, kWide, kHigh);
    const Canvas canvas = Picture(chart);
    const auto at = [&](double sample, double y) {
      return canvas.Pixel(Whole(layout.X().scale.At(sample)), Whole(layout.Y().scale.At(y)));
    };
    EXPECT_EQ(at(3 * of, 95), kBlack) << count;
    EXPECT_EQ(at(6 * of, 75), kGreen) << count;
    EXPECT_NE(at(6 * of, 85), kGreen) << count;
    EXPECT_EQ(at(1 * of, 5), kBlack) << count;
    EXPECT_NE(at(1 * of, 15), kBlack) << count;
  }
}

TEST(DrawChart, AreasLieBetweenTheirCurvesAndGapsStayOpen) {
  Series band = Band("", {0, 10, 20, 30, 40}, {2, 2, 2, kNaN, 2}, {4, 6, 4, 9, 4});
  band.colour = kGreen;
  Series line = Line("", {0, 10, 20, 30, 40}, {8.3, 8.3, kNaN, 8.3, 8.3});
  line.colour = kRed;
  const Chart chart = ChartOf({band, line});
  const ChartLayout layout(chart, kWide, kHigh);
  const Canvas canvas = Picture(chart);
  const auto at = [&](double x, double y) {
    return canvas.Pixel(Whole(layout.X().scale.At(x)), Whole(layout.Y().scale.At(y)));
  };
  EXPECT_EQ(at(7, 2.2), kGreen);
  EXPECT_EQ(at(7, 5.2), kGreen);  // the upper curve is at 5.4
  EXPECT_EQ(at(7, 5.7), kWhite);
  EXPECT_EQ(at(7, 1.7), kWhite);
  EXPECT_EQ(at(27, 3.3), kWhite);  // beside a sample without a lower end
  EXPECT_EQ(at(7, 8.3), kRed);
  EXPECT_EQ(at(17, 8.3), kWhite);
  EXPECT_EQ(at(33, 8.3), kRed);
}

TEST(DrawChart, TheLineOfNoSkillIsDashedAndPointersReachTheirAxis) {
  Chart chart = ChartOf({ReferenceLine("No skill", {0, 0}, {1, 1})});
  chart.series[0].colour = kRed;
  chart.x.range = chart.y.range = Range{0, 1};
  const ChartLayout layout(chart, kWide, kHigh);
  Canvas canvas = Picture(chart);
  int changes = 0;
  bool was = false;
  for (int i = 10; i < 1000; ++i) {
    const double x = i / 1000.0;
    const int column = Whole(layout.X().scale.At(x));
    const bool is = Green(canvas.Pixel(column, Whole(layout.Y().scale.At(x)))) < 128;
    changes += is != was;
    was = is;
  }
  EXPECT_GT(changes, 60);
  DrawPointer(canvas, layout, {0.25, 0.75});
  EXPECT_EQ(canvas.Pixel(Whole(layout.X().scale.At(0.25)), Whole(layout.Y().scale.At(0.75))),
            kMarkedColour);
  const Colour mark =
      canvas.Pixel(Whole(layout.X().scale.At(0.1)), Whole(layout.Y().scale.At(0.75)));
  EXPECT_NE(mark, kWhite);
  EXPECT_EQ(canvas.Pixel(Whole(layout.X().scale.At(0.45)), Whole(layout.Y().scale.At(0.75))),
            kWhite);
}

TEST(DrawChart, AnythingIsDrawnInAnySize) {
  const std::vector<std::vector<double>> values = {{},
                                                   {5},
                                                   {kNaN},
                                                   {kInfinity, -kInfinity},
                                                   {kNaN, 3, kInfinity, 4},
                                                   {-1.7e308, 1.7e308},
                                                   {0, 5e-324},
                                                   {1e300, 1e300, 1e300},
                                                   {-3, -2, -1},
                                                   std::vector<double>(70000, 2.5)};
  const std::vector<std::vector<double>> places = {
      {}, {5}, {kNaN, kInfinity, 1, 2}, {-1.7e308, 0, 1.7e308}, {9, 3, 7, 1}, {1e20, 1e20}};
  for (const auto& y : values) {
    for (const auto& x : places) {
      for (const SeriesKind kind :
           {SeriesKind::kLine, SeriesKind::kPoints, SeriesKind::kBars, SeriesKind::kArea}) {
        Chart chart = ChartOf({{kind, "A", y, x}, {kind, "B\xFF", y, x}});
        chart.series[1].floor = {1, kNaN};
        chart.series[1].dashed = chart.series[1].onRight = true;
        chart.series[0].selected = {0, 5, 1000000};
        if (y.size() < 10) chart.levels = y;
        chart.right = Numbers("\xC3");
        chart.pointer = ChartPlace{x.empty() ? kNaN : x[0], 5};
        if (y.size() == 5) chart.x.dateText = FormatDate;
        for (const auto& [width, height] :
             {std::pair(0, 0), std::pair(1, 1), std::pair(3, 900), std::pair(200, 150)}) {
          Canvas canvas(width, height);
          DrawChart(canvas, chart, kWide);
          EXPECT_TRUE(width < 200 || Count(canvas, kWhite) < width * height);
        }
        const ChartLayout layout(chart, kWide, kHigh);
        for (const double place : {-1e300, 0.0, 300.0, 1e300, kNaN}) {
          const auto hit = layout.NearestSample(place, place);
          EXPECT_TRUE(!hit || chart.series[hit->series].Holds(hit->sample));
          (void)layout.BarAt(place, 200);
          (void)layout.PointAt(place, 200);
        }
      }
    }
  }
}

// ---- Colours ------------------------------------------------------------------------------------

using Vector = std::array<double, 3>;

Vector Times(const std::array<Vector, 3>& matrix, const Vector& vector) {
  Vector result{};
  for (std::size_t i = 0; i < 3; ++i) {
    result[i] = std::inner_product(vector.begin(), vector.end(), matrix[i].begin(), 0.0);
  }
  return result;
}

// CIE L*a*b* of a colour that is seen through one of the matrices below.
Vector Seen(Colour colour, const std::array<Vector, 3>& sight) {
  const auto linear = [](int part) {
    const double value = part / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  const Vector rgb =
      Times(sight, {linear(Red(colour)), linear(Green(colour)), linear(Blue(colour))});
  Vector xyz =
      Times({{{0.4339, 0.3762, 0.1899}, {0.2126, 0.7152, 0.0722}, {0.0177, 0.1095, 0.8728}}}, rgb);
  for (double& part : xyz) part = std::cbrt(std::max(part, 0.0));
  return {116 * xyz[1] - 16, 500 * (xyz[0] - xyz[1]), 200 * (xyz[1] - xyz[2])};
}

// The matrices are those of Machado, Oliveira and Fernandes (2009) for the whole loss of one kind
// of cone. A difference of 2 is just seen side by side; thin lines need several times that.
TEST(DefaultColour, AllAreToldApartByReadersWithAnyColourVision) {
  const std::array<Vector, 3> sights[] = {
      {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
      {{{0.1523, 1.0526, -0.2049}, {0.1145, 0.7863, 0.0992}, {-0.0039, -0.0481, 1.0520}}},
      {{{0.3673, 0.8606, -0.2280}, {0.2801, 0.6725, 0.0474}, {-0.0118, 0.0429, 0.9689}}},
      {{{1.2555, -0.0767, -0.1788}, {-0.0784, 0.9308, 0.1476}, {0.0047, 0.6914, 0.3039}}}};
  for (const auto& sight : sights) {
    for (std::size_t i = 0; i < 8; ++i) {
      for (std::size_t k = 0; k < i; ++k) {
        const Vector a = Seen(DefaultColour(i), sight);
        const Vector b = Seen(DefaultColour(k), sight);
        EXPECT_GT(std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]), 14) << i << " and " << k;
      }
    }
  }
  // Own colours do not use up the chart's; from the ninth on lines are dashed.
  Chart chart = ChartOf(std::vector<Series>(10, Line("", {0, 1}, {0, 1})));
  chart.series[0].colour = kRed;
  EXPECT_EQ(ColourOf(chart, 0), kRed);
  EXPECT_EQ(ColourOf(chart, 1), DefaultColour(0));
  EXPECT_FALSE(IsDashed(chart, 8));
  EXPECT_TRUE(IsDashed(chart, 9));
  EXPECT_EQ(ColourOf(chart, 9), DefaultColour(0));
}

}  // namespace
}  // namespace ormel
