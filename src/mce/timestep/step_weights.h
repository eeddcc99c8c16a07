// The weight of a factor over the steps of a time series: a weight graph whose axis runs from the
// first step to the last.
#pragma once

#include <string>
#include <vector>

#include "mce/nonlinear/weight_graph.h"

namespace ormel {

// The last sample of the axis for so many steps: 150, and one more than the steps from 150 on.
int LastStepSample(int steps);

// The graph of a new factor, flat at 1 over so many steps (at least 2).
WeightGraph NewStepGraph(int steps);

// Lays a graph over another number of steps; its curve keeps its shape.
void FitToSteps(WeightGraph& graph, int steps);

// The weights of the steps, step 1 first. A curve with parameters gives each step the sample at or
// before its place; there is no straight line between samples. The points of a custom graph are
// spread over the steps by straight lines.
std::vector<float> StepWeights(const WeightGraph& graph, int steps);

// NOLINTBEGIN(readability-identifier-naming): the names by which these are known to model builders

// The graph's text in model files. Its points are the weights of the first steps, whatever the
// points of the graph are: files have always held them so.
std::string Wri(const WeightGraph& graph, const std::vector<float>& stepWeights);

// What the information file says of it; as describeGraph().
std::string describeStepGraph(const WeightGraph& graph);

// NOLINTEND(readability-identifier-naming)

}  // namespace ormel
