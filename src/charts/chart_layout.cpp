#include "charts/chart_layout.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>

#include "charts/ink.h"
#include "charts/stroke_font.h"

namespace ormel {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kMarkText = 9;
constexpr double kBareTop = 14;  // without title and legend: half a mark's text, and air
constexpr double kBelowTitle = 13;
constexpr double kBelowLegend = 5;
constexpr double kBareRight = 20;    // half the text of the last mark
constexpr double kLeastFrame = 0.3;  // of the picture, for the plot

// The extent of what has been added.
struct Extent {
  double low = kInfinity;
  double high = -kInfinity;

  void Add(double value) {
    low = std::min(low, value);
    high = std::max(high, value);
  }
  bool Any() const { return low <= high; }
  Range Values() const { return Any() ? Range{low, high} : Range{}; }
};

bool StandsOnZero(const Series& series) {
  return series.kind == SeriesKind::kBars ||
         (series.kind == SeriesKind::kArea && series.floor.empty());
}

void AddX(const Series& series, Extent& extent) {
  const double aside = series.kind == SeriesKind::kBars ? series.barWidth / 2 : 0;
  for (std::size_t i = 0; i < series.Size(); ++i) {
    if (!series.Holds(i)) continue;
    extent.Add(series.X(i) - aside);
    extent.Add(series.X(i) + aside);
  }
}

void AddY(const Series& series, Extent& extent) {
  for (std::size_t i = 0; i < series.Size(); ++i) {
    if (!series.Holds(i)) continue;
    extent.Add(series.y[i]);
    if (!series.floor.empty() || StandsOnZero(series)) extent.Add(series.Floor(i));
  }
}

// Ends at round numbers, a little beyond the data.
Range RoundedOut(Range range, int most) {
  range = Drawable(range);
  const double step = RoundStep(range.high - range.low, most);
  const Range wider{std::floor(range.low / step) * step, std::ceil(range.high / step) * step};
  return std::isfinite(wider.low) && std::isfinite(wider.high) ? wider : range;
}

Range RangeOfX(const Chart& chart) {
  if (chart.x.range) return *chart.x.range;
  Extent extent;
  for (const Series& series : chart.series) AddX(series, extent);
  return extent.Values();
}

Range RangeOfY(const Chart& chart, const Axis& axis) {
  constexpr int kRoundSteps = 12;
  if (axis.range) return *axis.range;
  Extent extent;
  for (const Series& series : chart.series) {
    if (&AxisOf(chart, series) == &axis) AddY(series, extent);
  }
  for (const double level : chart.levels) {
    if (&axis == &chart.y && std::isfinite(level)) extent.Add(level);
  }
  return axis.dateText || !extent.Any() ? extent.Values()
                                        : RoundedOut(extent.Values(), kRoundSteps);
}

// The number of the sample nearest to a value; any one when the samples do not ascend.
std::size_t NearestNumber(const Series& series, double value) {
  const std::size_t last = series.Size() - 1;
  if (series.x.empty()) {
    const double number = std::round((value - series.start) / series.step);
    return static_cast<std::size_t>(std::min(std::max(0.0, number), static_cast<double>(last)));
  }
  const auto begin = series.x.begin();
  const auto end = begin + static_cast<std::ptrdiff_t>(series.Size());
  const auto behind = std::lower_bound(begin, end, value);
  if (behind == end) return last;
  if (behind == begin) return 0;
  const bool takesBefore = value - behind[-1] < *behind - value;
  return static_cast<std::size_t>(behind - begin) - (takesBefore ? 1 : 0);
}

}  // namespace

// ---- From the data to places --------------------------------------------------------------------

ChartLayout::ChartLayout(const Chart& chart, double width, double height)
    : chart_(chart), width_(std::max(width, 1.0)), height_(std::max(height, 1.0)) {
  const double top = LayOutHead();
  LayOutFrame(top);
}

// Title and legend; returns where they end.
double ChartLayout::LayOutHead() {
  double top = kEdge;
  if (!chart_.title.empty()) top += kChartTitle + kBelowTitle;
  LayOutLegend(top);
  return std::max(top, kBareTop);
}

// Series with a name, when there are several, in as many rows as a third of the picture has room
// for.
void ChartLayout::LayOutLegend(double& top) {
  constexpr double kRow = 17;
  constexpr double kBetween = 18;
  std::vector<std::size_t> named;
  for (std::size_t i = 0; i < chart_.series.size(); ++i) {
    if (!chart_.series[i].name.empty()) named.push_back(i);
  }
  if (named.size() < 2) return;
  constexpr double kSample = kLegendSample + kLegendGap;
  double x = kEdge;
  for (const std::size_t series : named) {
    const double room = width_ - 2 * kEdge - kSample;
    const std::string text = Shortened(chart_.series[series].name, kLegendText, room);
    const double size = kSample + Ink::TextWidth(text, kLegendText);
    if (x > kEdge && x + size > width_ - kEdge) {
      if (top + 2 * kRow > height_ / 3) {
        const std::size_t left = named.size() - legend_.size() + 1;
        legend_.back().series.reset();
        legend_.back().text = "and " + std::to_string(left) + " more";
        break;
      }
      x = kEdge;
      top += kRow;
    }
    legend_.push_back({series, x, top + kLegendText, text});
    x += size + kBetween;
  }
  top += kRow + kBelowLegend;
}

void ChartLayout::LayOutSide(const Axis& axis, Range range, bool isLevel, Side& side) {
  side.textHeight = kMarkText;
  if (isLevel) {
    side.scale = AxisScale(range, frame_.left, frame_.right);
    side.marks = MarksOf(axis, side.scale, {side.textHeight, true, 2, width_ - 2});
  } else {
    side.scale = AxisScale(range, frame_.bottom, frame_.top);
    side.marks = MarksOf(axis, side.scale, {side.textHeight, false});
  }
}

// The longest text decides how large all of an axis are.
void ChartLayout::FitTexts(Side& side, double room) const {
  const double widest = WidestText(side.marks, side.textHeight);
  if (widest > room) side.textHeight *= std::max(room, 1.0) / widest;
}

void ChartLayout::LayOutFrame(double top) {
  const auto titleRoom = [](const Axis& axis) {
    return axis.title.empty() ? 0 : kAxisTitle + kTitleGap;
  };
  const double most = width_ * (1 - kLeastFrame) / 2;
  double bottom = height_ - kEdge - titleRoom(chart_.x) - kMarkText - kMarkGap;
  if (chart_.x.dateText) bottom -= kMarkText + kUnderGap;
  frame_ = {0, std::min(top, height_ / 2), width_,
            std::max(bottom, height_ / 2 + height_ * kLeastFrame / 2)};
  if (chart_.frame) frame_ = *chart_.frame;

  LayOutSide(chart_.y, RangeOfY(chart_, chart_.y), false, y_);
  const double beforeTexts = chart_.frame ? 2 : kEdge + titleRoom(chart_.y);
  if (!chart_.frame) {
    frame_.left = std::min(beforeTexts + WidestText(y_.marks, kMarkText) + kMarkGap, most);
    frame_.right = width_ - kBareRight;
  }
  FitTexts(y_, frame_.left - kMarkGap - beforeTexts);

  if (chart_.right) {
    LayOutSide(*chart_.right, RangeOfY(chart_, *chart_.right), false, right_);
    const double behindTexts = chart_.frame ? 2 : kEdge + titleRoom(*chart_.right);
    const double room = behindTexts + WidestText(right_.marks, kMarkText) + kMarkGap;
    if (!chart_.frame) frame_.right = width_ - std::min(room, most);
    FitTexts(right_, width_ - frame_.right - kMarkGap - behindTexts);
  }
  LayOutSide(chart_.x, RangeOfX(chart_), true, x_);
}

// ---- And back -----------------------------------------------------------------------------------

bool ChartLayout::IsInside(double x, double y) const {
  return x >= frame_.left && x <= frame_.right && y >= frame_.top && y <= frame_.bottom;
}

ChartPlace ChartLayout::ValuesAt(double x, double y, bool onRight) const {
  return {x_.scale.ValueAt(x), Y(onRight).scale.ValueAt(y), onRight};
}

ChartHit ChartLayout::Hit(std::size_t series, std::size_t sample) const {
  const Series& one = chart_.series[series];
  return {series, sample, {one.X(sample), one.y[sample], one.onRight}};
}

std::optional<ChartHit> ChartLayout::SampleAt(std::size_t series, double value) const {
  if (chart_.series[series].Size() == 0) return std::nullopt;
  const std::size_t number = NearestNumber(chart_.series[series], value);
  if (!chart_.series[series].Holds(number)) return std::nullopt;
  return Hit(series, number);
}

std::optional<ChartHit> ChartLayout::HeldFrom(std::size_t series, std::size_t sample,
                                              bool backward) const {
  const Series& one = chart_.series[series];
  for (; sample < one.Size(); backward ? --sample : ++sample) {
    if (one.Holds(sample)) return Hit(series, sample);
  }
  return std::nullopt;
}

bool ChartLayout::IsRead(std::size_t series) const {
  return chart_.series[series].kind != SeriesKind::kArea || !chart_.series[series].name.empty();
}

std::optional<ChartHit> ChartLayout::BarAt(double x, double y) const {
  if (!IsInside(x, y)) return std::nullopt;
  const double value = x_.scale.ValueAt(x);
  for (std::size_t i = chart_.series.size(); i-- > 0;) {
    const Series& series = chart_.series[i];
    if (series.kind != SeriesKind::kBars) continue;
    const auto hit = SampleAt(i, value);
    if (hit && std::abs(hit->place.x - value) <= series.barWidth / 2) return hit;
  }
  return std::nullopt;
}

std::optional<ChartHit> ChartLayout::PointAt(double x, double y) const {
  constexpr double kReach = 8;
  std::optional<ChartHit> nearest;
  double away = kReach;
  for (std::size_t i = 0; i < chart_.series.size(); ++i) {
    const Series& series = chart_.series[i];
    if (series.kind != SeriesKind::kPoints) continue;
    for (std::size_t k = 0; k < series.Size(); ++k) {
      if (!series.Holds(k)) continue;
      const ChartHit hit = Hit(i, k);
      const double distance = std::hypot(PlaceX(hit.place) - x, PlaceY(hit.place) - y);
      if (!(distance <= away)) continue;
      away = distance;
      nearest = hit;
    }
  }
  return nearest;
}

std::optional<ChartHit> ChartLayout::NearestSample(double x, double y) const {
  const double value = x_.scale.ValueAt(x);
  std::optional<ChartHit> nearest;
  double away = kInfinity;
  for (std::size_t i = 0; i < chart_.series.size(); ++i) {
    const auto hit = IsRead(i) ? SampleAt(i, value) : std::nullopt;
    if (!hit) continue;
    const double distance = std::hypot(PlaceX(hit->place) - x, PlaceY(hit->place) - y);
    if (!(distance < away)) continue;
    away = distance;
    nearest = hit;
  }
  return nearest;
}

// ---- Texts --------------------------------------------------------------------------------------

namespace {

std::string Told(const std::string& name, const char* otherwise, const std::string& value) {
  return (name.empty() ? otherwise : name) + ": " + value;
}

}  // namespace

std::string PlaceText(const Chart& chart, const ChartHit& hit) {
  return Told(chart.x.title, "Place", ReadOutText(chart.x, hit.place.x));
}

std::string ValueText(const Chart& chart, const ChartHit& hit) {
  constexpr double kLongestName = 200;  // where letters are 9 high
  const Series& series = chart.series[hit.series];
  const Axis& axis = AxisOf(chart, series);
  const std::string& name = series.name.empty() ? axis.title : series.name;
  return Told(Shortened(name, kMarkText, kLongestName), "Value", ReadOutText(axis, hit.place.y));
}

std::string Shortened(const std::string& text, double height, double room) {
  constexpr char kDots[] = "...";
  if (Ink::TextWidth(text, height) <= room) return text;
  std::vector<std::string_view> letters;
  for (std::string_view rest = text; !rest.empty();) {
    const std::string_view all = rest;
    TakeCodePoint(rest);
    letters.push_back(all.substr(0, all.size() - rest.size()));
  }
  std::string head;
  std::string tail;
  for (std::size_t i = 0; 2 * i + 1 < letters.size(); ++i) {
    const std::string longerHead = head + std::string(letters[i]);
    const std::string longerTail = std::string(letters[letters.size() - 1 - i]) + tail;
    if (Ink::TextWidth(longerHead + kDots + longerTail, height) > room) break;
    head = longerHead;
    tail = longerTail;
  }
  return head + kDots + tail;
}

}  // namespace ormel
