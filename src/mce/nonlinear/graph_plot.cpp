#include "mce/nonlinear/graph_plot.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "charts/ink.h"
#include "text/numbers.h"

namespace ormel {
namespace {

constexpr double kMargin = 0.05;  // of the range, beyond each limit

constexpr Colour kGridColour = Rgb(226, 230, 236);
constexpr Colour kLimitColour = Rgb(176, 186, 200);
constexpr Colour kAxisColour = Rgb(120, 128, 140);
constexpr Colour kFigureColour = Rgb(70, 78, 90);
constexpr Colour kTint = Rgb(232, 240, 250);
constexpr Colour kHandleColour = Rgb(208, 92, 24);
constexpr Colour kPictureGround = Rgb(250, 251, 253);

constexpr double kFigureHeight = 9;
constexpr double kCurvePen = 2.2;
constexpr double kHandleRadius = 3.6;
constexpr double kSelectedRadius = 5.6;
constexpr double kCrowdedPoints = 60;  // from here on handles shrink with their spacing

// A press picks a point within 3000 / n or 250 parts of its middle, where the plot is so many wide:
// handles of few points are easy to take, those of many points no harder than can be told apart.
constexpr double kPickParts = 6000;
constexpr double kPickShare = 3000;
constexpr double kPickLeast = 250;

std::vector<InkPoint> PathOf(const PlotFrame& frame, std::span<const double> samples) {
  std::vector<InkPoint> path;
  path.reserve(samples.size());
  const double last = static_cast<double>(samples.size()) - 1;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    path.push_back({frame.X(static_cast<double>(i) / last), frame.Y(samples[i])});
  }
  return path;
}

// Too light to be seen on white without an edge.
bool IsPale(Colour colour) { return 2 * Red(colour) + 5 * Green(colour) + Blue(colour) > 8 * 200; }

// The weight of the straight lines between samples.
double WeightAt(std::span<const double> samples, double place) {
  const double at = place * (static_cast<double>(samples.size()) - 1);
  const auto before = static_cast<std::size_t>(at);
  if (before + 1 >= samples.size()) return samples.back();
  return samples[before] +
         (at - static_cast<double>(before)) * (samples[before + 1] - samples[before]);
}

// The area between curve and weight 0, or the lower edge where 0 is not in sight: a column at a
// time, half a unit wide.
void DrawTint(Ink& ink, const PlotFrame& frame, std::span<const double> samples) {
  constexpr double kColumn = 0.5;
  const double base = std::clamp(frame.Y(0), PlotFrame::kTop, PlotFrame::kBottom);
  for (double x = PlotFrame::kLeft; x < PlotFrame::kRight; x += kColumn) {
    const double y = std::clamp(frame.Y(WeightAt(samples, frame.PlaceAt(x))), PlotFrame::kTop,
                                PlotFrame::kBottom);
    if (y != base) ink.Block(x, std::min(y, base), x + kColumn, std::max(y, base), kTint);
  }
}

void DrawWeightAxis(Ink& ink, const PlotFrame& frame) {
  constexpr double kGap = 8;
  for (const double limit : {frame.Low(), frame.High()}) {
    const double y = frame.Y(limit);
    for (double x = PlotFrame::kLeft; x < PlotFrame::kRight; x += 8) {
      ink.Block(x, y, x + 4, y, kLimitColour);
    }
  }
  for (const double mark : RoundMarks(frame.Low(), frame.High())) {
    const double y = frame.Y(mark);
    ink.Block(PlotFrame::kLeft, y, PlotFrame::kRight, y, kGridColour);
    const std::string text = NumberText(mark);
    const double room = PlotFrame::kLeft - kGap - 2;
    const double fits = room / std::max(Ink::FiguresWidth(text, 1), 1.0);
    const double height = std::min(kFigureHeight, fits);
    ink.Figures(PlotFrame::kLeft - kGap - Ink::FiguresWidth(text, height), y + height / 2, text,
                height, kFigureColour);
  }
}

void DrawPlaceAxis(Ink& ink, const PlotFrame& frame, std::span<const PlotTick> ticks) {
  for (const PlotTick& tick : ticks) {
    const double x = frame.X(tick.place);
    ink.Block(x, PlotFrame::kTop, x, PlotFrame::kBottom + 5, kGridColour);
    const double width = Ink::FiguresWidth(tick.text, kFigureHeight);
    const double left = std::clamp(x - width / 2, 2.0, PlotFrame::kWidth - width - 2);
    ink.Figures(left, PlotFrame::kBottom + 11 + kFigureHeight, tick.text, kFigureHeight,
                kFigureColour);
  }
  ink.Block(PlotFrame::kLeft, PlotFrame::kTop, PlotFrame::kLeft, PlotFrame::kBottom, kAxisColour);
  ink.Block(PlotFrame::kLeft, PlotFrame::kBottom, PlotFrame::kRight, PlotFrame::kBottom,
            kAxisColour);
}

void DrawHandles(Ink& ink, const PlotFrame& frame, const GraphPlot& plot) {
  const auto count = static_cast<double>(plot.points.size());
  const double shrink = std::min(1.0, kCrowdedPoints / std::max(count, 1.0));
  for (std::size_t i = 0; i < plot.points.size(); ++i) {
    const bool selected = static_cast<int>(i) + 1 == plot.selected;
    const double radius = selected ? kSelectedRadius : std::max(kHandleRadius * shrink, 1.2);
    const InkPoint place{frame.X(static_cast<double>(i) / (count - 1)), frame.Y(plot.points[i])};
    ink.Dot(place, radius, selected ? kHandleColour : kCurveColour);
    if (radius > 3) ink.Dot(place, radius - 1.6, selected ? Rgb(255, 224, 200) : kWhite);
  }
}

void DrawPointer(Ink& ink, const PlotFrame& frame, const GraphPlot& plot) {
  const double x = frame.X(plot.pointer);
  const double y = frame.Y(WeightAt(plot.curves.front().samples, plot.pointer));
  ink.Block(x, PlotFrame::kTop, x, PlotFrame::kBottom, kLimitColour);
  ink.Block(PlotFrame::kLeft, y, x, y, kLimitColour);
  ink.Dot({x, y}, 4, kHandleColour);
}

// The step of round marks: 1, 2 or 5 times a power of ten, at least a fifth of the range.
double RoundStep(double range) {
  const double power = std::pow(10, std::floor(std::log10(range / 5)));
  for (const double digit : {1.0, 2.0, 5.0}) {
    if (digit * power * 5 >= range) return digit * power;
  }
  return 10 * power;
}

}  // namespace

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

// Weights that are too far apart to be told by a double all lie in the middle.
double PlotFrame::Y(double weight) const {
  const double part = (bandTop_ - weight) / (bandTop_ - bandBottom_);
  const double middle = (kTop + kBottom) / 2;
  return std::isfinite(part) ? kTop + part * (kBottom - kTop) : middle;
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

std::vector<double> RoundMarks(double low, double high) {
  const double range = high - low;
  std::vector<double> marks;
  if (!(range > 0) || !std::isfinite(range)) return marks;
  constexpr int kMostMarks = 8;
  const double step = RoundStep(range);
  const double first = std::ceil(low / step);
  for (int i = 0; i < kMostMarks; ++i) {
    const double mark = (first + i) * step;
    if (!(mark <= high)) break;
    // Steps below 1 are no exact doubles: their multiples carry noise that is no part of them.
    const double per = std::round(1 / step);
    marks.push_back(step < 1 && std::isfinite(per) ? (first + i) / per : mark);
  }
  return marks;
}

void DrawGraphPlot(Canvas& canvas, const PlotFrame& frame, const GraphPlot& plot) {
  if (canvas.Empty()) return;
  canvas.Clear(kWhite);
  Ink ink(canvas, static_cast<double>(canvas.Width()) / PlotFrame::kWidth);
  if (plot.curves.size() == 1) DrawTint(ink, frame, plot.curves.front().samples);
  DrawWeightAxis(ink, frame);
  DrawPlaceAxis(ink, frame, plot.ticks);
  // Half a handle may stand over the ends of the axis, but not over the figures.
  ink.Clip(PlotFrame::kLeft - kSelectedRadius, 0, PlotFrame::kWidth, PlotFrame::kBottom + 6);
  if (plot.pointer >= 0 && !plot.curves.empty()) DrawPointer(ink, frame, plot);
  for (const PlotCurve& curve : plot.curves) {
    const std::vector<InkPoint> path = PathOf(frame, curve.samples);
    if (IsPale(curve.colour)) ink.Stroke(path, kCurvePen + 1.6, kAxisColour);
    ink.Stroke(path, kCurvePen, curve.colour);
  }
  DrawHandles(ink, frame, plot);
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
  const Colour edge = chosen ? kCurveColour : kLimitColour;
  const double pen = chosen ? 2 : 1;
  ink.Block(0, 0, ink.Width(), pen, edge);
  ink.Block(0, kUnitsHigh - pen, ink.Width(), kUnitsHigh, edge);
  ink.Block(0, 0, pen, kUnitsHigh, edge);
  ink.Block(ink.Width() - pen, 0, ink.Width(), kUnitsHigh, edge);
  ink.Stroke(path, 2, kCurveColour);
}

}  // namespace ormel
