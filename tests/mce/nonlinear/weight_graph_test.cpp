// Figures of curves: by decimal arithmetic of 60 digits, apart from this program.
#include "mce/nonlinear/weight_graph.h"

#include <gtest/gtest.h>

#include <tuple>

namespace ormel {
namespace {

using enum GraphType;

auto Everything(const WeightGraph& graph) {
  return std::tie(graph.samples, graph.points, graph.pointCount, graph.topValue, graph.bottomValue,
                  graph.type, graph.parameters);
}

constexpr int kPlaces[] = {0, 64, 128, 255};
const struct {
  GraphType type;
  GraphParameters parameters;
  double top, bottom;
  double weights[std::size(kPlaces)];
} kCurves[] = {
    {kLinear, {"0", "255"}, 255, 0, {0, 64, 128, 255}},
    {kLinear, {"10", "-20.5"}, -20.5, 10, {10, 2.345098039, -5.309803922, -20.5}},
    {kLinear, {"low", "255 m"}, 255, 0, {0, 64, 128, 255}},
    {kBentLine, {"0", "255", "0"}, 255, 0, {0, 128, 254, 0}},
    {kBentLine, {"5", "-1", "2"}, 5, -1, {5, 1.988235294, -0.9882352941, 2}},
    {kBell, {"0", "255", "0.5", "0.2"}, 255, 0, {0, 111.1430223, 254.9871822, 0}},
    {kBell, {"10", "90", "0.25", "0.1"}, 90, 10, {13.51495469, 89.99615542, 13.34616460, 10}},
    // A center beyond the axis; the sign of the deviation does not count.
    {kBell, {"0", "1", "1.5", "-0.4"}, 1, 0, {0, 0.006756046652, 0.04363289244, 0.4573537568}},
    {kPeriodic, {"0", "255", "0.5", "0"}, 255, 0, {255, 126.7146068, 0.009675960359, 255}},
    {kPeriodic, {"2", "8", "0.3", "1"}, 8, 2, {6.620906918, 2.348311564, 7.998933589, 6.375752289}},
    {kExponential, {"0", "255", "10", "0"}, 255, 0, {0, 22.16511842, 61.66997123, 255}},
    {kExponential, {"0", "255", "10", "1"}, 255, 0, {0, 124.3625630, 194.1390774, 255}},
    // A negative rate is inverted by itself, and grows again when it is to be inverted.
    {kExponential, {"1", "3", "-4", "False"}, 3, 1, {1, 1.783609609, 2.336952711, 3}},
    {kExponential, {"1", "3", "-4", "1"}, 3, 1, {1, 1.277424629, 1.670295896, 3}},
    {kExponential, {"7", "9", "0", "0"}, 9, 7, {7, 9, 9, 9}},
};

TEST(WeightGraph, CurvesHaveTheirWeightsAndRecordWhatTheyAreMadeOf) {
  for (const auto& curve : kCurves) {
    SCOPED_TRACE(::testing::PrintToString(curve.parameters));
    WeightGraph graph;
    ASSERT_TRUE(ComputeCurve(graph, curve.type, curve.parameters));
    for (std::size_t i = 0; i < std::size(kPlaces); ++i) {
      EXPECT_NEAR(lookup(graph, kPlaces[i]), curve.weights[i], 1e-6) << kPlaces[i];
    }
    EXPECT_EQ(graph.type, curve.type);
    EXPECT_EQ(graph.topValue, curve.top);
    EXPECT_EQ(graph.bottomValue, curve.bottom);
    EXPECT_EQ(graph.Parameters(curve.type), curve.parameters);
  }
  WeightGraph graph;
  // With all digits of pi it would be 254.999996.
  ASSERT_TRUE(computePeriodic(graph, {"0", "255", "1E-12", "0"}));
  EXPECT_NEAR(lookup(graph, 255), 254.9993, 1e-4);
}

TEST(WeightGraph, ACurveThatCannotBeComputedChangesNothing) {
  const std::pair<GraphType, GraphParameters> cases[] = {
      {kBell, {"0", "9", "0.5", "0"}},       {kBell, {"0", "9", "0.5", "wide"}},
      {kBell, {"0", "9", "0.5", "1E9"}},  // both ends are as high as the peak
      {kExponential, {"0", "9", "1", "0"}},  {kExponential, {"0", "9", "1", "1"}},
      {kExponential, {"0", "9", "-1", "0"}}, {kExponential, {"0", "9", "-1", "1"}},
      {kPeriodic, {"0", "9", "0", "0"}},     {kPeriodic, {"0", "9", "1E-320", "0"}},
      {kLinear, {"-1E308", "1E308"}},        {kBentLine, {"0", "1E308", "-1E308"}},
  };
  for (const auto& [type, parameters] : cases) {
    WeightGraph graph;
    ASSERT_TRUE(computeBentLine(graph, {"3", "4", "5"}));
    const WeightGraph before = graph;
    EXPECT_FALSE(ComputeCurve(graph, type, parameters)) << ::testing::PrintToString(parameters);
    EXPECT_EQ(Everything(graph), Everything(before));
  }
}

TEST(WeightGraph, CustomGraphsRunThroughTheirPoints) {
  const struct {
    int count;
    std::vector<std::pair<int, double>> samples;
  } cases[] = {
      {2, {{0, 1}, {85, 2}, {128, 2.505882353}, {254, 3.988235294}, {255, 4}}},
      // Points at 0, 85, 170 and 255: none of them makes a step.
      {4, {{0, 1}, {84, 3.964705882}, {85, 4}, {86, 4.058823529}, {170, 9}, {255, 16}}},
      // The second point lies at 8.2, the third at 16.5, the last but one at 246.8: columns 8, 16
      // and 246 still have the weight of the point before.
      {32, {{0, 1}, {7, 3.625}, {8, 1}, {9, 4.625}, {15, 8.375}, {16, 4}, {17, 9.875}}},
      {32, {{246, 900}, {247, 968}, {254, 1017}, {255, 1024}}},
      {256, {{0, 1}, {1, 4}, {127, 16384}, {254, 65025}, {255, 65536}}},
      // More points than columns: each column has the weight of one of them.
      {500, {{0, 1}, {1, 4}, {2, 16}, {127, 62001}, {254, 248004}, {255, 250000}}},
  };
  for (const auto& test : cases) {
    WeightGraph graph;
    graph.pointCount = test.count;
    for (int i = 1; i <= test.count; ++i) graph.Point(i) = i * i;
    ASSERT_TRUE(computeCustom(graph, 12.5, -3));
    for (const auto& [place, weight] : test.samples) {
      EXPECT_NEAR(lookup(graph, place), weight, 1e-8) << test.count << " points, at " << place;
    }
    EXPECT_EQ(graph.type, kCustom);
    EXPECT_EQ(graph.topValue, 12.5);
    EXPECT_EQ(graph.bottomValue, -3);
  }
}

TEST(WeightGraph, TheAxisMayHaveAnotherLength) {
  WeightGraph graph;
  graph.samples.assign(5, 1);
  ASSERT_TRUE(computeLinear(graph, {"0", "2"}));
  EXPECT_EQ(graph.samples, (std::vector<double>{0, 0.5, 1, 1.5, 2}));
  graph.pointCount = 3;
  graph.points = {0, 10, 4};
  ASSERT_TRUE(computeCustom(graph, 10, 0));
  EXPECT_EQ(graph.samples, (std::vector<double>{0, 5, 10, 7, 4}));
  const WeightGraph before = graph;
  graph.Point(1) = 1.7e308;  // twice that is no double
  EXPECT_FALSE(computeCustom(graph, 1, 0));
  graph.Point(1) = 0;
  EXPECT_EQ(Everything(graph), Everything(before));
}

TEST(WeightGraph, LookupTakesSamplesOrTheLineBetweenTwo) {
  WeightGraph graph;
  graph.samples[11] = 6;
  graph.samples[254] = -8;
  graph.samples[255] = 4;
  const std::pair<double, double> cases[] = {{0, 1},      {10, 1},   {10.25, 2.25}, {10.5, 3.5},
                                             {11.5, 3.5}, {254, -8}, {254.5, -2},   {255, 4}};
  for (const auto& [value, weight] : cases) EXPECT_EQ(lookup(graph, value), weight) << value;
}

TEST(WeightGraph, ANewGraphWeighsAllAlikeAndAResetOneByValue) {
  WeightGraph graph;
  EXPECT_EQ(graph.samples, std::vector<double>(256, 1));
  EXPECT_EQ(graph.pointCount, 32);
  EXPECT_EQ(graph.Point(32), 1);
  EXPECT_EQ(graph.Point(33), 0);
  const auto defaults = graph.parameters;
  ASSERT_TRUE(computeBell(graph, {"1", "2", "3", "4"}));
  ResetToIdentity(graph);
  for (const double value : {0.0, 0.5, 127.0, 255.0}) EXPECT_EQ(lookup(graph, value), value);
  EXPECT_EQ(graph.type, kLinear);
  EXPECT_EQ(graph.topValue, 1);
  EXPECT_EQ(graph.bottomValue, 1);
  EXPECT_EQ(graph.parameters, defaults);
}

TEST(WeightGraph, RefreshingComputesTheSamplesAndRecordsNothing) {
  WeightGraph graph;
  RefreshSamples(graph);  // a new graph, once it is looked at, is the line from 0 to 255
  EXPECT_EQ(lookup(graph, 100.5), 100.5);
  EXPECT_EQ(graph.topValue, 1);
  graph.Parameters(kBell)[3] = "0";
  graph.type = kBell;
  RefreshSamples(graph);
  EXPECT_EQ(lookup(graph, 100.5), 100.5);
  graph.type = kCustom;
  RefreshSamples(graph);
  EXPECT_EQ(lookup(graph, 100.5), 1);
}

TEST(WeightGraph, DescriptionsNameTypeAndParametersAsTyped) {
  const std::pair<GraphType, std::vector<const char*>> cases[] = {
      {kUnassigned, {"Graph type unassigned"}},
      {kLinear, {"Linear Graph", "Initial value:  10", "Final value:  11"}},
      {kBentLine,
       {"Bent Line Graph", "Initial value:  20", "Value at center:  21", "Final value:  22"}},
      {kBell,
       {"Bell Curve", "Peak value:  31", "Base value:  30",
        "Standard deviation (screen widths):  33"}},
      {kPeriodic,
       {"Periodic Function", "Maximum value:  41", "Minimum value:  40", "Period:  42",
        "Phase:  43"}},
      {kExponential,
       {"Exponential function", "Initial value:  50", "Final value:  51", "Growth constant:  52",
        "Inverted:  False"}},
      {kCustom, {"Custom graph containing 32 points"}},
  };
  WeightGraph graph;
  graph.parameters = {{{"10", "11"},
                       {"20", "21", "22"},
                       {"30", "31", "32", "33"},
                       {"40", "41", "42", "43"},
                       {"50", "51", "52", "False"}}};
  for (const auto& [type, lines] : cases) {
    graph.type = type;
    std::string text = "\r\n\tSingle factor weighting function: \r\n\t    Type: ";
    for (const char* line : lines) {
      if (line != lines[0]) text += "\r\n\t\t    ";
      text += line;
    }
    EXPECT_EQ(describeGraph(graph), text);
  }
}

}  // namespace
}  // namespace ormel
