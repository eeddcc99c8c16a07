#include "mce/timestep/step_weights.h"

#include <gtest/gtest.h>

#include <cmath>

#include "mce/nonlinear/graph_text.h"

namespace ormel {
namespace {

using Weights = std::vector<float>;

TEST(StepWeights, ANewGraphWeighsAllStepsAlike) {
  for (const int steps : {2, 29, 30, 149, 150, 200}) {
    const WeightGraph graph = NewStepGraph(steps);
    EXPECT_EQ(StepWeights(graph, steps), Weights(static_cast<std::size_t>(steps), 1));
    EXPECT_EQ(graph.pointCount, std::min(steps, 30));
    WeightGraph loaded = NewStepGraph(steps);
    ASSERT_TRUE(graphFromText(Wri(graph, StepWeights(graph, steps)), loaded));
    EXPECT_EQ(StepWeights(loaded, steps), StepWeights(graph, steps));
  }
}

TEST(StepWeights, TakeTheSampleBeforeTheirPlace) {
  WeightGraph graph = NewStepGraph(5);
  ASSERT_TRUE(computeLinear(graph, {"0", "1", "", ""}));
  EXPECT_EQ(StepWeights(graph, 5),
            (Weights{0, static_cast<float>(37 / 150.0), 0.5, static_cast<float>(112 / 150.0), 1}));
}

// Each curve by its own formula, at the part of the axis where a step's sample lies.
TEST(StepWeights, FollowEachCurveAtAnyNumberOfSteps) {
  const struct {
    GraphType type;
    GraphParameters parameters;
    double (*weight)(double t);
  } curves[] = {
      {GraphType::kLinear, {"2", "-1", "", ""}, [](double t) { return 2 - 3 * t; }},
      {GraphType::kBentLine,
       {"1", "5", "2", ""},
       [](double t) { return t > 0.5 ? 3 * (2 - 2 * t) + 2 : 4 * (2 * t) + 1; }},
      {GraphType::kBell,
       {"0.5", "1.5", "0.5", "0.2"},
       [](double t) {
         const double end = std::exp(-0.25 / 2 / 0.04);
         return 0.5 + (std::exp(-(t - 0.5) * (t - 0.5) / 2 / 0.04) - end) / (1 - end);
       }},
      {GraphType::kPeriodic,
       {"0", "4", "0.5", "0"},
       [](double t) { return 2 * (std::cos(2 * 3.14159265358979 * t) + 1); }},
      {GraphType::kExponential,
       {"1", "3", "10", "1"},
       [](double t) { return 1 + 2 * (std::pow(0.1, t) - 1) / (0.1 - 1); }},
  };
  for (const int steps : {5, 149, 150, 200}) {
    const int last = steps < 150 ? 150 : steps + 1;
    ASSERT_EQ(LastStepSample(steps), last);
    for (const auto& curve : curves) {
      WeightGraph graph = NewStepGraph(steps);
      ASSERT_TRUE(ComputeCurve(graph, curve.type, curve.parameters));
      const Weights weights = StepWeights(graph, steps);
      for (int step = 1; step <= steps; ++step) {
        const int sample = last * (step - 1) / (steps - 1);
        const double t = static_cast<double>(sample) / last;
        ASSERT_NEAR(weights[static_cast<std::size_t>(step - 1)], curve.weight(t), 1e-6)
            << TypeWord(curve.type) << ", step " << step << " of " << steps;
      }
    }
  }
}

TEST(StepWeights, SpreadThePointsOfACustomGraph) {
  for (const int steps : {5, 149, 150, 200}) {
    WeightGraph graph = NewStepGraph(steps);
    graph.pointCount = 3;
    for (int i = 1; i <= 3; ++i) graph.Point(i) = i * i;  // 1, 4, 9
    ASSERT_TRUE(computeCustom(graph, 9, 1));
    const Weights weights = StepWeights(graph, steps);
    EXPECT_EQ(weights.front(), 1);
    EXPECT_EQ(weights.back(), 9);
    for (int step = 1; step <= steps; ++step) {
      const double p = 2.0 * (step - 1) / (steps - 1);
      const double expected = p < 1 ? 1 + 3 * p : 4 + 5 * (p - 1);
      ASSERT_NEAR(weights[static_cast<std::size_t>(step - 1)], expected, 1e-5);
    }
  }
}

TEST(StepWeights, AreThePointsThatFilesHold) {
  WeightGraph graph = NewStepGraph(3);
  ASSERT_TRUE(computeLinear(graph, {"0", "0.1", "", ""}));
  const std::string text = Wri(graph, {0, 0.05F, 1.0F / 3});
  EXPECT_TRUE(text.starts_with("* 3* 0* .1* 0* 0* 0* 255*")) << text;
  EXPECT_TRUE(text.ends_with("* .1* 0* 1* 0* .05* .3333333*")) << text;
  graph.pointCount = 4;  // more than there are steps
  graph.Point(4) = 7;
  EXPECT_TRUE(Wri(graph, {0, 0.05F, 1}).ends_with("* 0* .05* 1* 7*"));
}

TEST(StepWeights, KeepTheirCurveOverAnotherNumberOfSteps) {
  WeightGraph graph = NewStepGraph(4);
  ASSERT_TRUE(computeLinear(graph, {"0", "3", "", ""}));
  FitToSteps(graph, 151);
  EXPECT_EQ(graph.LastSample(), 152);
  EXPECT_FLOAT_EQ(StepWeights(graph, 151).back(), 3);
  FitToSteps(graph, 4);
  EXPECT_EQ(StepWeights(graph, 4), (Weights{0, 1, 2, 3}));
}

}  // namespace
}  // namespace ormel
