#include "mce/timestep/step_weights.h"

#include <algorithm>
#include <cstdint>
#include <span>

#include "mce/nonlinear/graph_text.h"
#include "text/arithmetic.h"

namespace ormel {
namespace {

constexpr int kShortAxis = 150;
constexpr int kMostFirstPoints = 30;

}  // namespace

int LastStepSample(int steps) { return steps < kShortAxis ? kShortAxis : steps + 1; }

WeightGraph NewStepGraph(int steps) {
  WeightGraph graph;
  graph.samples.assign(static_cast<std::size_t>(LastStepSample(steps)) + 1, 1.0);
  graph.pointCount = std::min(steps, kMostFirstPoints);
  graph.Parameters(GraphType::kLinear) = {"1", "1", "", ""};
  return graph;
}

void FitToSteps(WeightGraph& graph, int steps) {
  graph.samples.resize(static_cast<std::size_t>(LastStepSample(steps)) + 1, graph.samples.back());
  RefreshSamples(graph);
}

std::vector<float> StepWeights(const WeightGraph& graph, int steps) {
  const auto points = std::span(graph.points).first(static_cast<std::size_t>(graph.pointCount));
  std::vector<float> weights;
  weights.reserve(static_cast<std::size_t>(steps));
  for (std::int64_t step = 1; step <= steps; ++step) {
    const auto sample = static_cast<std::size_t>(graph.LastSample() * (step - 1) / (steps - 1));
    weights.push_back(Single(graph.type == GraphType::kCustom
                                 ? SpreadValue(points, static_cast<int>(step), steps)
                                 : graph.samples[sample]));
  }
  return weights;
}

std::string Wri(const WeightGraph& graph, const std::vector<float>& stepWeights) {
  return graphToText(graph, stepWeights);
}

std::string describeStepGraph(const WeightGraph& graph) { return describeGraph(graph); }

}  // namespace ormel
