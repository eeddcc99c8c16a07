// How weight graphs are drawn: the plot of the editor with its axes, curves over each other in one
// scale, and the small pictures of a curve.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "base/canvas.h"
#include "charts/chart.h"
#include "mce/nonlinear/weight_graph.h"

namespace ormel {

struct PlotCurve {
  std::vector<double> samples;  // at least 2, at equal spacing over the axis
  Colour colour = 0;
  std::string name{};  // in the legend
};

// The factors of a model take the colours of their curves in turn; factors count from 1.
Colour FactorColour(int factor);

inline constexpr Colour kCurveColour = Rgb(24, 90, 168);

// Where things lie in the plot. It is told in units of a picture of kWidth by kHeight, with y
// downwards, whatever the picture's size on the screen.
class PlotFrame {
 public:
  static constexpr int kWidth = 640;
  static constexpr int kHeight = 420;
  static constexpr double kLeft = 60;
  static constexpr double kTop = 10;
  static constexpr double kRight = 622;
  static constexpr double kBottom = 390;

  // Limits in either order; equal ones are moved apart by 1 each way. The band that is drawn runs
  // 5% of their range beyond each.
  PlotFrame(double top, double bottom);

  double High() const { return high_; }
  double Low() const { return low_; }
  // The weights from the lower to the upper edge; infinite where the margin leaves a double's
  // range.
  Range Band() const { return {bandBottom_, bandTop_}; }

  // The part of the axis before x, 0 to 1: beside the plot the nearer end.
  double PlaceAt(double x) const;
  // Above and below the plot as well.
  double WeightAt(double y) const;

  // Of `count` control points at equal spacing the one that a press at `x` picks; 0: none is near
  // enough.
  int PointAt(double x, int count) const;

 private:
  double high_;
  double low_;
  double bandTop_;
  double bandBottom_;
};

// What the horizontal axis of a graph means. Its places are parts of it, 0 to 1.
struct GraphAxis {
  std::string title{};
  std::vector<AxisMark> ticks{};
  std::function<std::string(double place)> textAt{};
};

// The axis of a factor's values, 0 to 255.
GraphAxis FactorValueAxis();

struct GraphPlot {
  GraphAxis axis;
  std::vector<PlotCurve> curves{};   // the area of a single one is tinted
  std::span<const double> points{};  // control points, drawn as handles
  int selected = 0;                  // the emphasised one, from 1; 0: none
  double pointer = -1;               // place whose weight is marked on the first curve; -1: none
};

// The plot, to be drawn PlotFrame::kWidth units wide on a canvas of the frame's proportions. The
// curves' samples are copied.
Chart WeightChart(const PlotFrame& frame, const GraphPlot& plot);

// A picture of the curve alone, in any size. `chosen` puts it into a coloured frame.
void DrawCurvePicture(Canvas& canvas, const WeightGraph& graph, bool chosen);

}  // namespace ormel
