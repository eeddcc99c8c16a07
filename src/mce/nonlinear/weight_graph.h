// Weight graphs: the curve that turns a cell value of a factor into a weight. However a curve is
// described (a type with a few parameters, or control points), it is held as ready-made samples at
// equal spacing over its axis, and these are all that a generator reads.
//
// The axis of a factor's values has the samples 0 to 255, one for each value of a prepared factor.
// A graph over another axis (the steps of a time series) has another number of them: every routine
// here takes the length of the axis from the samples.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace ormel {

inline constexpr int kLargestFactorValue = 255;
inline constexpr int kFewestGraphPoints = 2;
inline constexpr int kMostGraphPoints = 500;

// Part of the graph's text form; never renumber.
enum class GraphType {
  kUnassigned = 0,
  kLinear = 1,
  kBentLine = 2,
  kBell = 3,
  kPeriodic = 4,
  kExponential = 5,
  kCustom = 6,
};
inline constexpr int kCurveTypes = 5;  // those with parameters: 1 to 5
inline constexpr int kGraphTypes = 6;
inline constexpr int kParameterSlots = 4;

// The parameters of one type, by slot, as the user typed them. What is no number counts as 0.
//
//   slot           1              2             3            4
//   linear         initial        final
//   bent line      start          vertex        end
//   bell           base           peak          center       standard deviation
//   periodic       minimum        maximum       period       phase (radians)
//   exponential    initial        final         growth rate  inverted: "1", else "0" or "False"
//
// Center and standard deviation are in widths of the axis, 0 to 1.
using GraphParameters = std::array<std::string, kParameterSlots>;

struct WeightGraph {
  // The flat graph of a new factor: every value weighs 1 until a graph is chosen.
  WeightGraph();

  int LastSample() const { return static_cast<int>(samples.size()) - 1; }
  double& Point(int index) { return points[static_cast<std::size_t>(index - 1)]; }
  double Point(int index) const { return points[static_cast<std::size_t>(index - 1)]; }
  // Of a type with parameters.
  GraphParameters& Parameters(GraphType of) { return parameters[static_cast<std::size_t>(of) - 1]; }
  const GraphParameters& Parameters(GraphType of) const {
    return parameters[static_cast<std::size_t>(of) - 1];
  }

  std::vector<double> samples;  // sample i is the weight at place i of the axis
  // The control points of the custom graph, in the order of the axis. Those above the count keep
  // what they hold, so that it comes back when the count grows again.
  std::array<double, kMostGraphPoints> points{};
  int pointCount;
  // The limits when the samples were last computed, as they were entered: a falling line has its
  // top below its bottom.
  double topValue = 1;
  double bottomValue = 1;
  GraphType type = GraphType::kLinear;
  // Every type keeps its own, so that a change of type and back restores them.
  std::array<GraphParameters, kCurveTypes> parameters;
};

// NOLINTBEGIN(readability-identifier-naming): the names by which these are known to model builders

// Each computes the samples of its type from `parameters` and records limits, type and parameters.
// False when the curve cannot be computed (a standard deviation of 0, a growth rate of 1 or -1, a
// period of 0, limits beyond the range of a double): then nothing of the graph changes, and its
// samples still belong to what is recorded.
bool computeLinear(WeightGraph& graph, const GraphParameters& parameters);
bool computeBentLine(WeightGraph& graph, const GraphParameters& parameters);
bool computeBell(WeightGraph& graph, const GraphParameters& parameters);
bool computePeriodic(WeightGraph& graph, const GraphParameters& parameters);
bool computeExponential(WeightGraph& graph, const GraphParameters& parameters);

// The same from the control points, with the limits between which they are drawn.
bool computeCustom(WeightGraph& graph, double top, double bottom);

// The weight of `value`, which is not below 0 and not above the last sample: a sample, or the
// straight line between two.
inline double lookup(const WeightGraph& graph, double value) {
  const int whole = static_cast<int>(value);
  const double rest = value - whole;
  const double* sample = graph.samples.data() + whole;
  return rest == 0 ? *sample : *sample + rest * (sample[1] - *sample);
}

// What the information file of a map says about a graph: lines that begin with CR LF, without a
// line end behind the last.
std::string describeGraph(const WeightGraph& graph);

// NOLINTEND(readability-identifier-naming)

// The type in a word, for windows: "Bell curve".
const char* TypeWord(GraphType type);

// That of the five above which belongs to `type`.
bool ComputeCurve(WeightGraph& graph, GraphType type, const GraphParameters& parameters);

// Computes the samples anew from what the graph holds, and records nothing: for graphs that come
// from a file. A curve that cannot be computed leaves the samples.
void RefreshSamples(WeightGraph& graph);

// The graph under which every value weighs itself. The control points stay.
void ResetToIdentity(WeightGraph& graph);

}  // namespace ormel
