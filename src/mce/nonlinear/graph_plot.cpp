#include "mce/nonlinear/graph_plot.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "charts/ink.h"
#include "text/numbers.h"

namespace ormel {
namespace {

constexpr double kMargin = 0.05;  // of the range, beyond each limit

constexpr Colour kFactorColours[] = {Rgb(255, 0, 0),     Rgb(0, 0, 255),   Rgb(0, 218, 0),
                                     Rgb(255, 240, 0),   Rgb(255, 0, 255), Rgb(0, 226, 255),
                                     Rgb(255, 255, 255), Rgb(255, 115, 0), Rgb(135, 135, 135),
                                     Rgb(0, 0, 0),       Rgb(0, 0, 0)};

constexpr Colour kEdgeColour = Rgb(176, 186, 200);
constexpr Colour kTint = Rgb(232, 240, 250);
constexpr Colour kPictureGround = Rgb(250, 251, 253);

// A press picks a point within 3000 / n or 250 parts of its middle, where the plot is so many wide:
// handles of few points are easy to take, those of many points no harder than can be told apart.
constexpr double kPickParts = 6000;
constexpr double kPickShare = 3000;
constexpr double kPickLeast = 250;

// The weight of the straight lines between samples.
double WeightAt(std::span<const double> samples, double place) {
  const double at = place * (static_cast<double>(samples.size()) - 1);
  const auto before = static_cast<std::size_t>(at);
  if (before + 1 >= samples.size()) return samples.back();
  return samples[before] +
         (at - static_cast<double>(before)) * (samples[before + 1] - samples[before]);
}

// Values at equal spacing over the axis.
Series Spread(SeriesKind kind, std::span<const double> values, Colour colour) {
  Series series;
  series.kind = kind;
  series.y.assign(values.begin(), values.end());
  series.step = 1 / (static_cast<double>(values.size()) - 1);
  series.colour = colour;
  return series;
}

}  // namespace

Colour FactorColour(int factor) {
  return kFactorColours[static_cast<std::size_t>(factor - 1) % std::size(kFactorColours)];
}

PlotFrame::PlotFrame(double top, double bottom)
    : high_(std::max(top, bottom)), low_(std::min(top, bottom)) {
  if (high_ == low_) {
    high_ += 1;
    low_ -= 1;
  }
  const double margin = kMargin * high_ - kMargin * low_;
  bandTop_ = high_ + margin;
  bandBottom_ = low_ - margin;
}

double PlotFrame::PlaceAt(double x) const {
  return std::clamp((x - kLeft) / (kRight - kLeft), 0.0, 1.0);
}

double PlotFrame::WeightAt(double y) const {
  const double weight = bandTop_ - (y - kTop) / (kBottom - kTop) * (bandTop_ - bandBottom_);
  return std::isfinite(weight) ? weight : high_;
}

int PlotFrame::PointAt(double x, int count) const {
  const double place = (x - kLeft) / (kRight - kLeft);
  const double index = std::clamp(std::round(place * (count - 1)), 0.0, count - 1.0);
  const double away = std::abs(place - index / (count - 1)) * kPickParts;
  return away <= std::max(kPickShare / count, kPickLeast) ? static_cast<int>(index) + 1 : 0;
}

GraphAxis FactorValueAxis() {
  GraphAxis axis;
  axis.title = "Value";
  for (int value = 0; value <= kLargestFactorValue; value += 51) {
    axis.ticks.push_back({static_cast<double>(value) / kLargestFactorValue, std::to_string(value)});
  }
  axis.textAt = [](double place) { return NumberText(HalfEvenRound(place * kLargestFactorValue)); };
  return axis;
}

Chart WeightChart(const PlotFrame& frame, const GraphPlot& plot) {
  Chart chart;
  chart.frame = {PlotFrame::kLeft, PlotFrame::kTop, PlotFrame::kRight, PlotFrame::kBottom};
  chart.x = {plot.axis.title, Range{0, 1}, plot.axis.ticks, plot.axis.textAt};
  chart.y.title = "Weight";
  chart.y.numberText = [](double weight) { return NumberText(weight); };
  chart.y.range = frame.Band();
  for (const double mark : RoundMarks(frame.Low(), frame.High())) {
    chart.y.marks.push_back({mark, NumberText(mark), {}});
  }
  chart.levels = {frame.Low(), frame.High()};
  if (plot.curves.size() == 1) {
    chart.series.push_back(Spread(SeriesKind::kArea, plot.curves.front().samples, kTint));
  }
  for (const PlotCurve& curve : plot.curves) {
    chart.series.push_back(Spread(SeriesKind::kLine, curve.samples, curve.colour));
    chart.series.back().name = curve.name;
  }
  if (!plot.points.empty()) {
    Series handles = Spread(SeriesKind::kPoints, plot.points, kCurveColour);
    if (plot.selected > 0) handles.selected = {static_cast<std::size_t>(plot.selected) - 1};
    chart.series.push_back(std::move(handles));
  }
  if (plot.pointer >= 0 && !plot.curves.empty()) {
    chart.pointer = {plot.pointer, WeightAt(plot.curves.front().samples, plot.pointer)};
  }
  return chart;
}

void DrawCurvePicture(Canvas& canvas, const WeightGraph& graph, bool chosen) {
  if (canvas.Empty()) return;
  constexpr double kUnitsHigh = 40;
  constexpr double kInset = 6;
  canvas.Clear(chosen ? kTint : kPictureGround);
  Ink ink(canvas, canvas.Height() / kUnitsHigh);
  const auto [low, high] = std::minmax_element(graph.samples.begin(), graph.samples.end());
  const PlotFrame levels(*high, *low);
  std::vector<InkPoint> path;
  for (int i = 0; i <= graph.LastSample(); ++i) {
    double part = (levels.High() - graph.samples[static_cast<std::size_t>(i)]) /
                  (levels.High() - levels.Low());
    if (!std::isfinite(part)) part = 0.5;  // levels that a double cannot tell apart
    path.push_back({kInset + (ink.Width() - 2 * kInset) * i / graph.LastSample(),
                    kInset + (kUnitsHigh - 2 * kInset) * part});
  }
  const Colour edge = chosen ? kCurveColour : kEdgeColour;
  const double pen = chosen ? 2 : 1;
  ink.Block(0, 0, ink.Width(), pen, edge);
  ink.Block(0, kUnitsHigh - pen, ink.Width(), kUnitsHigh, edge);
  ink.Block(0, 0, pen, kUnitsHigh, edge);
  ink.Block(ink.Width() - pen, 0, ink.Width(), kUnitsHigh, edge);
  ink.Stroke(path, 2, kCurveColour);
}

}  // namespace ormel
