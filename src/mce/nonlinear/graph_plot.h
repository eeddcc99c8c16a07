// How weight graphs are drawn: the plot of the editor with its axes, curves over each other in one
// scale, and the small pictures of a curve.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "base/canvas.h"
#include "mce/nonlinear/weight_graph.h"

namespace ormel {

// A mark on the horizontal axis. The text is of figures: a number or a date.
struct PlotTick {
  double place = 0;  // part of the axis before it, 0 to 1
  std::string text;
};

struct PlotCurve {
  std::span<const double> samples;  // at least 2, at equal spacing over the axis
  Colour colour = 0;
};

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

  double X(double place) const { return kLeft + place * (kRight - kLeft); }
  double Y(double weight) const;
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

struct GraphPlot {
  std::vector<PlotTick> ticks;
  std::vector<PlotCurve> curves;   // the area of a single one is tinted
  std::span<const double> points;  // control points, drawn as handles
  int selected = 0;                // the emphasised one, from 1; 0: none
  double pointer = -1;             // place whose weight is marked on the first curve; -1: none
};

// The plot over the whole canvas, whose proportions should be those of the frame.
void DrawGraphPlot(Canvas& canvas, const PlotFrame& frame, const GraphPlot& plot);

// A picture of the curve alone, in any size. `chosen` puts it into a coloured frame.
void DrawCurvePicture(Canvas& canvas, const WeightGraph& graph, bool chosen);

// Round numbers from `low` to `high`, about five of them, ascending.
std::vector<double> RoundMarks(double low, double high);

}  // namespace ormel
