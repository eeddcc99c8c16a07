// A chart as a plain record: what is to be drawn, in the values of the data. chart_drawing.h draws
// it over a canvas of any size, chart_layout.h tells where things lie and leads from a pixel back
// to the data.
//
//   Chart chart;
//   chart.x.title = "Cell value";
//   chart.y.title = "Cells";
//   chart.series.push_back(Bars("Elevation", counts));
//   DrawChart(canvas, chart, 640);
//
// Any doubles may stand in the data. Values that are NaN or infinite are gaps.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "base/colour.h"
#include "charts/axis.h"

namespace ormel {

inline constexpr Colour kMarkedColour = Rgb(208, 92, 24);  // of selected bars and points

enum class SeriesKind {
  kLine,    // straight from sample to sample
  kPoints,  // a handle at each sample
  kBars,    // a bar from 0 to each sample
  kArea,    // from each sample down to `floor`, or to 0
};

struct Series {
  SeriesKind kind = SeriesKind::kLine;
  std::string name{};  // in the legend and in read-outs; empty: not in the legend
  std::vector<double> y{};
  std::vector<double> x{};  // of each y, ascending; empty: start, start + step, ...
  double start = 0;
  double step = 1;
  std::vector<double> floor{};     // of an area, as many as y; empty: 0
  double barWidth = 1;             // in units of x
  double pen = 2.2;                // of a line, in units of the picture
  double radius = 3.6;             // of a handle; where they are crowded they are drawn smaller
  bool dashed = false;             // of a line
  bool onRight = false;            // measured by the axis at the right
  std::optional<Colour> colour{};  // none: one of the chart's own
  std::vector<std::size_t> selected{};  // bars and points in `selectedColour`, from 0
  Colour selectedColour = kMarkedColour;

  std::size_t Size() const;  // samples that have both x and y
  double X(std::size_t sample) const {
    return x.empty() ? start + static_cast<double>(sample) * step : x[sample];
  }
  // Whether the sample can be drawn.
  bool Holds(std::size_t sample) const;
  // The lower edge of an area's sample.
  double Floor(std::size_t sample) const { return floor.empty() ? 0 : floor[sample]; }
};

struct ChartPlace {
  double x = 0;
  double y = 0;
  bool onRight = false;
};

// The plot inside the axes, in units of the picture.
struct ChartFrame {
  double left = 0;
  double top = 0;
  double right = 0;
  double bottom = 0;
};

struct Chart {
  std::string title{};
  Axis x;
  Axis y;
  std::optional<Axis> right{};
  std::vector<Series> series{};         // areas are drawn first, then bars, lines and points
  std::vector<double> levels{};         // of y: dashed lines across, for limits or a mean
  std::optional<ChartPlace> pointer{};  // a sample that is read out
  // Where the plot lies; none: it leaves the room that texts need. In a fixed frame titles stand
  // inside the plot, at the ends of the axes.
  std::optional<ChartFrame> frame{};
};

// Samples at 0, 1, 2, ...
Series Bars(std::string name, std::vector<double> y);
Series Line(std::string name, std::vector<double> x, std::vector<double> y);
// Between two curves.
Series Band(std::string name, std::vector<double> x, std::vector<double> low,
            std::vector<double> high);
// A dashed line from one place to another in grey: the line of no skill.
Series ReferenceLine(std::string name, ChartPlace from, ChartPlace to);

// Eight colours that readers with any kind of colour vision can tell apart, in turn.
Colour DefaultColour(std::size_t number);
// The colour of a series of the chart. From the ninth line on that has one of the chart's own
// colours lines are dashed as well.
Colour ColourOf(const Chart& chart, std::size_t series);
bool IsDashed(const Chart& chart, std::size_t series);
// `part` of a colour, 0 to 1, on white.
Colour Paler(Colour colour, double part);

// What a series measures by.
const Axis& AxisOf(const Chart& chart, const Series& series);

}  // namespace ormel
