#include "mce/nonlinear/weight_graph.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>
#include <optional>
#include <string_view>
#include <utility>

#include "text/numbers.h"

namespace ormel {
namespace {

constexpr int kFirstPointCount = 32;

// As many digits as model files have always been computed with.
constexpr double kPi = 3.14159265358979;

std::array<GraphParameters, kCurveTypes> DefaultParameters() {
  return {{{"0", "255", "", ""},
           {"0", "255", "255", ""},
           {"0", "255", "0.5", "0.2"},
           {"0", "255", "0.5", "0"},
           {"0", "255", "10", "False"}}};
}

using Samples = std::vector<double>;

// A curve before it becomes the graph's.
struct Curve {
  Samples samples;
  double top = 0;
  double bottom = 0;
};
using Numbers = std::array<double, kParameterSlots>;

// Whether `curve` can be used: what fails to compute ends in numbers that are none.
bool AllFinite(const Curve& curve) {
  return std::isfinite(curve.top) && std::isfinite(curve.bottom) &&
         std::all_of(curve.samples.begin(), curve.samples.end(),
                     [](double sample) { return std::isfinite(sample); });
}

// The samples of `weight` at the places 0 to `last`, each told as the part of the axis before it.
template <class Weight>
Samples Sampled(int last, Weight weight) {
  Samples samples;
  samples.reserve(static_cast<std::size_t>(last) + 1);
  for (int i = 0; i <= last; ++i) samples.push_back(weight(static_cast<double>(i) / last));
  return samples;
}

using MakeCurve = std::optional<Curve> (*)(int last, const Numbers& numbers);

std::optional<Curve> LinearCurve(int last, const Numbers& numbers) {
  const double initial = numbers[0];
  const double final = numbers[1];
  const auto weight = [=](double t) { return initial + (final - initial) * t; };
  return Curve{Sampled(last, weight), final, initial};
}

std::optional<Curve> BentLineCurve(int last, const Numbers& numbers) {
  const double start = numbers[0];
  const double vertex = numbers[1];
  const double end = numbers[2];
  const auto weight = [=](double t) {
    const double x = 2 * t;  // the vertex lies at 1
    return x > 1 ? (vertex - end) * (2 - x) + end : (vertex - start) * x + start;
  };
  return Curve{Sampled(last, weight), std::max({start, vertex, end}),
               std::min({start, vertex, end})};
}

std::optional<Curve> BellCurve(int last, const Numbers& numbers) {
  const double base = numbers[0];
  const double peak = numbers[1];
  const double center = numbers[2];
  const double deviation = numbers[3];
  if (deviation == 0) return std::nullopt;
  const auto gauss = [=](double x) {
    return std::exp(-((x - center) * (x - center)) / 2 / (deviation * deviation));
  };
  const double lowEnd = std::min(gauss(0), gauss(1));
  const auto weight = [=](double t) {
    return base + (peak - base) * (gauss(t) - lowEnd) / (1 - lowEnd);
  };
  return Curve{Sampled(last, weight), peak, base};
}

std::optional<Curve> PeriodicCurve(int last, const Numbers& numbers) {
  const double minimum = numbers[0];
  const double maximum = numbers[1];
  const double period = numbers[2];
  const double phase = numbers[3];
  if (period == 0) return std::nullopt;
  const auto weight = [=](double t) {
    const double s = std::sin(kPi * t / period + kPi / 2 + phase);
    return minimum + (maximum - minimum) * (s + 1) / 2;
  };
  return Curve{Sampled(last, weight), maximum, minimum};
}

std::optional<Curve> ExponentialCurve(int last, const Numbers& numbers) {
  const double initial = numbers[0];
  const double final = numbers[1];
  const double rate = numbers[2];
  const bool invert = numbers[3] != 0;
  if (rate == 1) return std::nullopt;
  double k = invert ? -rate : rate;
  if (k < 0) k = -1 / k;
  const auto weight = [=](double t) {
    return initial + (final - initial) * (std::pow(k, t) - 1) / (k - 1);
  };
  return Curve{Sampled(last, weight), final, initial};
}

constexpr MakeCurve kMakeCurve[kCurveTypes] = {LinearCurve, BentLineCurve, BellCurve, PeriodicCurve,
                                               ExponentialCurve};

// The curve of a type with parameters; none when it cannot be computed.
std::optional<Curve> CurveOf(int last, GraphType type, const GraphParameters& parameters) {
  Numbers numbers{};
  std::transform(parameters.begin(), parameters.end(), numbers.begin(),
                 [](const std::string& text) { return TextToNumber(text); });
  std::optional<Curve> curve = kMakeCurve[static_cast<int>(type) - 1](last, numbers);
  if (curve && !AllFinite(*curve)) curve.reset();
  return curve;
}

// The weight at place `i` of the axis 0 to `last`.
double BetweenPoints(const WeightGraph& graph, int i, int last) {
  const int n = graph.pointCount;
  const int index = 1 + i * (n - 1) / last;  // the point at or before the place
  const int low = (index - 1) * last / (n - 1);
  const int high = index * last / (n - 1);
  const double point = graph.Point(index);
  // A place on which the next point falls takes the weight of this one. It makes a small step in
  // steep graphs, and stays: models were made with it.
  if (high == i) return point;
  if (index != n) {
    return ((high - i) * point + (i - low) * graph.Point(index + 1)) / (high - low);
  }
  const double before = graph.Point(n - 1);
  return (point * high + i * (point - before) - low * (2 * point - before)) / (high - low);
}

std::optional<Samples> CustomSamples(const WeightGraph& graph) {
  const int last = graph.LastSample();
  Curve curve;
  for (int i = 0; i <= last; ++i) curve.samples.push_back(BetweenPoints(graph, i, last));
  if (!AllFinite(curve)) return std::nullopt;
  return std::move(curve.samples);
}

// A parameter as the information file tells it.
struct ToldParameter {
  std::string_view label;
  std::size_t slot = 0;  // from 1
};

struct ToldType {
  std::string_view name;
  std::vector<ToldParameter> parameters;
};

// The information files leave the center of a bell out; those who read them by program count lines.
const ToldType& Told(GraphType type) {
  static const ToldType kTold[] = {
      {"Graph type unassigned", {}},
      {"Linear Graph", {{"Initial value:  ", 1}, {"Final value:  ", 2}}},
      {"Bent Line Graph",
       {{"Initial value:  ", 1}, {"Value at center:  ", 2}, {"Final value:  ", 3}}},
      {"Bell Curve",
       {{"Peak value:  ", 2}, {"Base value:  ", 1}, {"Standard deviation (screen widths):  ", 4}}},
      {"Periodic Function",
       {{"Maximum value:  ", 2}, {"Minimum value:  ", 1}, {"Period:  ", 3}, {"Phase:  ", 4}}},
      {"Exponential function",
       {{"Initial value:  ", 1},
        {"Final value:  ", 2},
        {"Growth constant:  ", 3},
        {"Inverted:  ", 4}}},
      {"Custom graph containing ", {}},
  };
  return kTold[static_cast<std::size_t>(type)];
}

}  // namespace

WeightGraph::WeightGraph()
    : samples(kLargestFactorValue + 1, 1.0),
      pointCount(kFirstPointCount),
      parameters(DefaultParameters()) {
  std::fill_n(points.begin(), kFirstPointCount, 1.0);
}

bool ComputeCurve(WeightGraph& graph, GraphType type, const GraphParameters& parameters) {
  std::optional<Curve> curve = CurveOf(graph.LastSample(), type, parameters);
  if (!curve) return false;
  graph.samples = std::move(curve->samples);
  graph.topValue = curve->top;
  graph.bottomValue = curve->bottom;
  graph.type = type;
  graph.Parameters(type) = parameters;
  return true;
}

bool computeLinear(WeightGraph& graph, const GraphParameters& parameters) {
  return ComputeCurve(graph, GraphType::kLinear, parameters);
}
bool computeBentLine(WeightGraph& graph, const GraphParameters& parameters) {
  return ComputeCurve(graph, GraphType::kBentLine, parameters);
}
bool computeBell(WeightGraph& graph, const GraphParameters& parameters) {
  return ComputeCurve(graph, GraphType::kBell, parameters);
}
bool computePeriodic(WeightGraph& graph, const GraphParameters& parameters) {
  return ComputeCurve(graph, GraphType::kPeriodic, parameters);
}
bool computeExponential(WeightGraph& graph, const GraphParameters& parameters) {
  return ComputeCurve(graph, GraphType::kExponential, parameters);
}

bool computeCustom(WeightGraph& graph, double top, double bottom) {
  std::optional<Samples> samples = CustomSamples(graph);
  if (!samples) return false;
  graph.samples = std::move(*samples);
  graph.topValue = top;
  graph.bottomValue = bottom;
  graph.type = GraphType::kCustom;
  return true;
}

void RefreshSamples(WeightGraph& graph) {
  if (graph.type == GraphType::kUnassigned) return;
  if (graph.type == GraphType::kCustom) {
    if (std::optional<Samples> samples = CustomSamples(graph)) graph.samples = std::move(*samples);
    return;
  }
  if (auto curve = CurveOf(graph.LastSample(), graph.type, graph.Parameters(graph.type))) {
    graph.samples = std::move(curve->samples);
  }
}

void ResetToIdentity(WeightGraph& graph) {
  std::iota(graph.samples.begin(), graph.samples.end(), 0.0);
  graph.topValue = 1;
  graph.bottomValue = 1;
  graph.type = GraphType::kLinear;
  graph.parameters = DefaultParameters();
}

const char* TypeWord(GraphType type) {
  static constexpr const char* kWords[] = {
      "No graph", "Line", "Bent line", "Bell curve", "Wave", "Exponential curve", "Points"};
  return kWords[static_cast<std::size_t>(type)];
}

std::string describeGraph(const WeightGraph& graph) {
  const ToldType& told = Told(graph.type);
  std::string text = "\r\n\tSingle factor weighting function: \r\n\t    Type: ";
  text += told.name;
  if (graph.type == GraphType::kCustom) text += std::to_string(graph.pointCount) + " points";
  for (const auto& [label, slot] : told.parameters) {
    text.append("\r\n\t\t    ").append(label);
    text += graph.Parameters(graph.type)[slot - 1];
  }
  return text;
}

}  // namespace ormel
