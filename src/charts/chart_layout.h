// Where the things of a chart lie in a picture, and what lies under a place of it. Places are in
// units of the picture, x to the right and y down: a picture that is shown 640 units wide is 640
// units wide on every screen.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "charts/chart.h"

namespace ormel {

// A sample of a series, both from 0.
struct ChartHit {
  std::size_t series = 0;
  std::size_t sample = 0;
  ChartPlace place;  // what the sample holds

  bool operator==(const ChartHit& other) const {
    return series == other.series && sample == other.sample;
  }
};

class ChartLayout {
 public:
  // An axis with its marks, and the height in which all their texts have room.
  struct Side {
    AxisScale scale;
    std::vector<AxisMark> marks;
    double textHeight = 9;
  };
  struct LegendEntry {
    std::optional<std::size_t> series;  // none: the text tells how many more there are
    double x = 0;  // of its sample of the line or colour; the text stands behind it
    double y = 0;  // of the text's foot
    std::string text;
  };

  static constexpr double kEdge = 9;        // between the picture's edge and what is inside
  static constexpr double kMarkGap = 7;     // between an axis and its texts
  static constexpr double kAxisTitle = 10;  // heights of texts
  static constexpr double kChartTitle = 12;
  static constexpr double kLegendText = 9.5;
  static constexpr double kUnderGap = 5;  // between the two lines of dates
  static constexpr double kTitleGap = 8;  // between texts of marks and a title
  static constexpr double kLegendSample = 20;
  static constexpr double kLegendGap = 6;  // behind the sample

  // Lays `chart` out in a picture of that size. The chart outlives the layout and must not be
  // changed meanwhile; the layout looks at every sample once. In a picture that is too small for
  // its texts the plot keeps a little of the room, and texts are cut.
  ChartLayout(const Chart& chart, double width, double height);
  ChartLayout(Chart&& chart, double width, double height) = delete;

  const Chart& Drawn() const { return chart_; }
  const ChartFrame& Frame() const { return frame_; }
  double Width() const { return width_; }
  double Height() const { return height_; }
  const Side& X() const { return x_; }
  const Side& Y(bool onRight = false) const { return onRight && chart_.right ? right_ : y_; }
  const std::vector<LegendEntry>& Legend() const { return legend_; }

  double PlaceX(const ChartPlace& place) const { return x_.scale.At(place.x); }
  double PlaceY(const ChartPlace& place) const { return Y(place.onRight).scale.At(place.y); }

  // The way back.

  bool IsInside(double x, double y) const;
  // What the axes say there; beyond the frame it goes on for half its size.
  ChartPlace ValuesAt(double x, double y, bool onRight = false) const;
  // The bar in whose column the place lies, however high it is: low bars can be clicked as well.
  // The one that is drawn last, where several stand.
  std::optional<ChartHit> BarAt(double x, double y) const;
  // The handle that is near enough to be meant.
  std::optional<ChartHit> PointAt(double x, double y) const;
  // Whether a series is read out: areas without a name are only a tint.
  bool IsRead(std::size_t series) const;
  // The sample to read out: of each series the one that is nearest to x, and of these the nearest.
  // None when there is nothing in the chart.
  std::optional<ChartHit> NearestSample(double x, double y) const;
  // Of one series the sample nearest to a value of x. None when it is empty, or a gap is there.
  std::optional<ChartHit> SampleAt(std::size_t series, double value) const;
  // The first sample of a series from `sample` on, or from there backward, that is no gap.
  std::optional<ChartHit> HeldFrom(std::size_t series, std::size_t sample, bool backward) const;

 private:
  double LayOutHead();
  void LayOutLegend(double& top);
  void LayOutFrame(double top);
  void LayOutSide(const Axis& axis, Range range, bool isLevel, Side& side);
  void FitTexts(Side& side, double room) const;
  ChartHit Hit(std::size_t series, std::size_t sample) const;

  const Chart& chart_;
  double width_;
  double height_;
  ChartFrame frame_;
  Side x_;
  Side y_;
  Side right_;
  std::vector<LegendEntry> legend_;
};

// What a read-out says of a sample: "Cell value: 92", "Cells: 1240". The value goes by the name of
// its series, or of its axis.
std::string PlaceText(const Chart& chart, const ChartHit& hit);
std::string ValueText(const Chart& chart, const ChartHit& hit);

// The text, or as much of its beginning and end as has room, with "..." between.
std::string Shortened(const std::string& text, double height, double room);

}  // namespace ormel
