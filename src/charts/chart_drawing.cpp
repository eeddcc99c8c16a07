#include "charts/chart_drawing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "charts/ink.h"

namespace ormel {
namespace {

constexpr Colour kGridColour = Rgb(226, 230, 236);
constexpr Colour kLevelColour = Rgb(164, 174, 190);
constexpr Colour kAxisColour = Rgb(120, 128, 140);
constexpr Colour kTextColour = Rgb(70, 78, 90);
constexpr Colour kTitleColour = Rgb(40, 46, 56);

// Of one of the chart's own colours in areas and bars, which cover more than a line does.
constexpr double kAreaPart = 0.2;
constexpr double kBarPart = 0.7;

// Too light to be seen on white without an edge.
bool IsPale(Colour colour) { return 2 * Red(colour) + 5 * Green(colour) + Blue(colour) > 8 * 200; }

// A line from sample to sample. Of samples that follow each other in one column of pixels only the
// first, the lowest, the highest and the last are kept: the line covers the same pixels.
class ColumnPath {
 public:
  ColumnPath(double pixelsPerUnit, double width) : scale_(pixelsPerUnit), width_(width) {}

  void Add(InkPoint point) {
    const double column = std::floor(std::clamp(point.x, -1.0, width_ + 1) * scale_);
    if (count_ > 0 && column != column_) Flush();
    column_ = column;
    if (count_ == 0) kept_.fill({0, point});
    if (point.y < kept_[1].point.y) kept_[1] = {count_, point};
    if (point.y > kept_[2].point.y) kept_[2] = {count_, point};
    kept_[3] = {count_, point};
    ++count_;
  }

  std::vector<InkPoint> Take() {
    Flush();
    return std::exchange(path_, {});
  }

 private:
  struct Kept {
    std::size_t number = 0;
    InkPoint point;
  };

  void Flush() {
    if (count_ == 0) return;
    std::sort(kept_.begin(), kept_.end(),
              [](const Kept& a, const Kept& b) { return a.number < b.number; });
    for (std::size_t i = 0; i < kept_.size(); ++i) {
      if (i == 0 || kept_[i].number != kept_[i - 1].number) path_.push_back(kept_[i].point);
    }
    count_ = 0;
  }

  double scale_;
  double width_;
  double column_ = 0;
  std::size_t count_ = 0;
  std::array<Kept, 4> kept_{};  // the first, lowest, highest and last of the column
  std::vector<InkPoint> path_;
};

class Painter {
 public:
  Painter(Canvas& canvas, const ChartLayout& layout)
      : ink_(canvas, canvas.Width() / layout.Width()),
        layout_(layout),
        chart_(layout.Drawn()),
        frame_(layout.Frame()) {}

  void Paint();
  void DrawPointer(const ChartPlace& place);

 private:
  void DrawKind(SeriesKind kind);
  Colour FillOf(std::size_t number) const;
  void DrawArea(std::size_t number);
  void DrawLine(std::size_t number);
  void DrawPath(std::span<const InkPoint> path, double pen, Colour colour, bool dashed);
  void DrawBars(std::size_t number);
  void DrawWideBars(const Series& series, const std::vector<bool>& selected, Colour colour);
  void DrawBarColumns(const Series& series, const std::vector<bool>& selected, bool ofSelected,
                      Colour colour);
  void DrawPoints(std::size_t number);
  void DrawHandle(InkPoint place, double radius, bool selected, Colour colour);

  void DrawGrid();
  void DrawAxisLines();
  void DrawLevels();
  void DrawMarkTexts();
  void DrawSideTexts(const ChartLayout::Side& side, bool isRight);
  void DrawTitles();
  void DrawTitlesInside();
  void DrawLegend();
  void DrawLegendSample(std::size_t number, double x, double y);
  void ClipAround();
  void ClipInside();

  bool HasBase(const Series& series) const;
  double BaseOf(const Series& series) const { return Y(series, 0); }
  double Y(const Series& series, double value) const {
    return layout_.Y(series.onRight).scale.At(value);
  }
  InkPoint PlaceOf(const Series& series, std::size_t sample) const {
    return {layout_.X().scale.At(series.X(sample)), Y(series, series.y[sample])};
  }
  // Calls `draw` with the numbers of the first sample of each run without gaps and of the first one
  // behind it.
  template <class Draw>
  static void ForEachRun(const Series& series, Draw draw);

  Ink ink_;
  const ChartLayout& layout_;
  const Chart& chart_;
  const ChartFrame& frame_;
};

template <class Draw>
void Painter::ForEachRun(const Series& series, Draw draw) {
  std::size_t begin = 0;
  for (std::size_t i = 0; i <= series.Size(); ++i) {
    if (series.Holds(i)) continue;
    if (i > begin) draw(begin, i);
    begin = i + 1;
  }
}

// ---- Series -------------------------------------------------------------------------------------

void Painter::DrawKind(SeriesKind kind) {
  for (std::size_t i = 0; i < chart_.series.size(); ++i) {
    if (chart_.series[i].kind != kind) continue;
    switch (kind) {
      case SeriesKind::kArea:
        DrawArea(i);
        break;
      case SeriesKind::kBars:
        DrawBars(i);
        break;
      case SeriesKind::kLine:
        DrawLine(i);
        break;
      case SeriesKind::kPoints:
        DrawPoints(i);
        break;
    }
  }
}

Colour Painter::FillOf(std::size_t number) const {
  const Series& series = chart_.series[number];
  const double part = series.kind == SeriesKind::kArea ? kAreaPart : kBarPart;
  return series.colour ? *series.colour : Paler(ColourOf(chart_, number), part);
}

void Painter::DrawArea(std::size_t number) {
  const Series& series = chart_.series[number];
  const Colour colour = FillOf(number);
  ForEachRun(series, [&](std::size_t begin, std::size_t end) {
    ColumnPath upper(ink_.PixelsPerUnit(), layout_.Width());
    ColumnPath lower(ink_.PixelsPerUnit(), layout_.Width());
    for (std::size_t i = begin; i < end; ++i) {
      const InkPoint place = PlaceOf(series, i);
      upper.Add(place);
      if (!series.floor.empty()) lower.Add({place.x, Y(series, series.floor[i])});
    }
    if (series.floor.empty()) {
      lower.Add({PlaceOf(series, begin).x, BaseOf(series)});
      lower.Add({PlaceOf(series, end - 1).x, BaseOf(series)});
    }
    std::vector<InkPoint> outline = upper.Take();
    const std::vector<InkPoint> back = lower.Take();
    outline.insert(outline.end(), back.rbegin(), back.rend());
    ink_.Area(outline, colour);
  });
}

void Painter::DrawPath(std::span<const InkPoint> path, double pen, Colour colour, bool dashed) {
  if (dashed) {
    ink_.Dashes(path, pen, 2.4 * pen + 1, 1.5 * pen + 0.5, colour);
  } else {
    ink_.Stroke(path, pen, colour);
  }
}

void Painter::DrawLine(std::size_t number) {
  const Series& series = chart_.series[number];
  const Colour colour = ColourOf(chart_, number);
  ForEachRun(series, [&](std::size_t begin, std::size_t end) {
    ColumnPath columns(ink_.PixelsPerUnit(), layout_.Width());
    for (std::size_t i = begin; i < end; ++i) columns.Add(PlaceOf(series, i));
    const std::vector<InkPoint> path = columns.Take();
    const bool dashed = IsDashed(chart_, number);
    if (IsPale(colour)) DrawPath(path, series.pen + 1.6, kAxisColour, dashed);
    DrawPath(path, series.pen, colour, dashed);
  });
}

void Painter::DrawBars(std::size_t number) {
  const Series& series = chart_.series[number];
  std::vector<bool> selected(series.Size());
  for (const std::size_t sample : series.selected) {
    if (sample < selected.size()) selected[sample] = true;
  }
  const Colour colour = FillOf(number);
  const double width = std::abs(layout_.X().scale.At(series.barWidth) - layout_.X().scale.At(0));
  if (width * ink_.PixelsPerUnit() >= 1) return DrawWideBars(series, selected, colour);
  DrawBarColumns(series, selected, false, colour);
  if (!series.selected.empty()) DrawBarColumns(series, selected, true, series.selectedColour);
}

// Bars with room for it stand apart.
void Painter::DrawWideBars(const Series& series, const std::vector<bool>& selected, Colour colour) {
  constexpr double kLeastWithGap = 4;
  constexpr double kGapPart = 0.08;
  const double base = BaseOf(series);
  for (std::size_t i = 0; i < series.Size(); ++i) {
    if (!series.Holds(i) || series.y[i] == 0) continue;
    const double left = layout_.X().scale.At(series.X(i) - series.barWidth / 2);
    const double right = layout_.X().scale.At(series.X(i) + series.barWidth / 2);
    const double gap = right - left < kLeastWithGap
                           ? 0
                           : std::max((right - left) * kGapPart, 1 / ink_.PixelsPerUnit() / 2);
    const double top = Y(series, series.y[i]);
    ink_.Block(left + gap, std::min(top, base), right - gap, std::max(top, base),
               selected[i] ? series.selectedColour : colour);
  }
}

// Bars narrower than a pixel: each column of pixels is as high as its highest bar.
void Painter::DrawBarColumns(const Series& series, const std::vector<bool>& selected,
                             bool ofSelected, Colour colour) {
  const double pixel = 1 / ink_.PixelsPerUnit();
  const auto columns =
      static_cast<std::size_t>(std::max(frame_.right - frame_.left, 0.0) / pixel) + 1;
  std::vector<std::pair<double, double>> extents(columns, {0, 0});
  for (std::size_t i = 0; i < series.Size(); ++i) {
    if (!series.Holds(i) || (ofSelected && !selected[i])) continue;
    const double column = (layout_.X().scale.At(series.X(i)) - frame_.left) / pixel;
    if (!(column >= 0 && column < static_cast<double>(columns))) continue;
    auto& [low, high] = extents[static_cast<std::size_t>(column)];
    low = std::min(low, series.y[i]);
    high = std::max(high, series.y[i]);
  }
  for (std::size_t i = 0; i < columns; ++i) {
    const auto [low, high] = extents[i];
    if (low == high) continue;
    const double left = frame_.left + static_cast<double>(i) * pixel;
    ink_.Block(left, Y(series, high), left + pixel, Y(series, low), colour);
  }
}

// Many points are specks, which cost no more than a sample of a line.
void Painter::DrawPoints(std::size_t number) {
  constexpr double kCrowded = 60;
  constexpr double kLeastRadius = 1.2;
  constexpr std::size_t kSpecks = 5000;
  constexpr double kSelectedPlus = 2;
  const Series& series = chart_.series[number];
  const Colour colour = ColourOf(chart_, number);
  const double shrink = std::min(1.0, kCrowded / std::max(static_cast<double>(series.Size()), 1.0));
  const double radius = std::max(series.radius * shrink, std::min(series.radius, kLeastRadius));
  for (std::size_t i = 0; i < series.Size(); ++i) {
    if (!series.Holds(i)) continue;
    const InkPoint place = PlaceOf(series, i);
    if (series.Size() > kSpecks) {
      ink_.Block(place.x - 0.5, place.y - 0.5, place.x + 1, place.y + 1, colour);
    } else {
      DrawHandle(place, radius, false, colour);
    }
  }
  for (const std::size_t sample : series.selected) {
    if (!series.Holds(sample)) continue;
    DrawHandle(PlaceOf(series, sample), series.radius + kSelectedPlus, true, series.selectedColour);
  }
}

void Painter::DrawHandle(InkPoint place, double radius, bool selected, Colour colour) {
  constexpr double kRing = 1.6;
  ink_.Dot(place, radius, colour);
  if (radius > 3) ink_.Dot(place, radius - kRing, selected ? Paler(colour, 0.3) : kWhite);
}

// ---- Grid and axes ------------------------------------------------------------------------------

void Painter::DrawGrid() {
  constexpr double kTick = 5;
  for (const AxisMark& mark : layout_.Y().marks) {
    ink_.LevelLine(frame_.left, frame_.right, layout_.Y().scale.At(mark.value), kGridColour);
  }
  for (const AxisMark& mark : layout_.X().marks) {
    ink_.UprightLine(layout_.X().scale.At(mark.value), frame_.top, frame_.bottom + kTick,
                     kGridColour);
  }
}

// The line from which bars and areas rise, where it is not the lower edge of the plot. A tint needs
// none.
bool Painter::HasBase(const Series& series) const {
  const bool isArea =
      series.kind == SeriesKind::kArea && series.floor.empty() && !series.name.empty();
  const Range& range = layout_.Y(series.onRight).scale.Values();
  return (series.kind == SeriesKind::kBars || isArea) && range.low < 0 && range.high > 0;
}

void Painter::DrawAxisLines() {
  for (const Series& series : chart_.series) {
    if (HasBase(series)) ink_.LevelLine(frame_.left, frame_.right, BaseOf(series), kAxisColour);
  }
  ink_.UprightLine(frame_.left, frame_.top, frame_.bottom, kAxisColour);
  if (chart_.right) ink_.UprightLine(frame_.right, frame_.top, frame_.bottom, kAxisColour);
  ink_.LevelLine(frame_.left, frame_.right, frame_.bottom, kAxisColour);
}

void Painter::DrawLevels() {
  for (const double level : chart_.levels) {
    if (!std::isfinite(level)) continue;
    ink_.LevelDashes(frame_.left, frame_.right, layout_.Y().scale.At(level), 4, kLevelColour);
  }
}

void Painter::DrawPointer(const ChartPlace& place) {
  const double x = layout_.PlaceX(place);
  const double y = layout_.PlaceY(place);
  if (!std::isfinite(x) || !std::isfinite(y)) return;
  ClipAround();
  const double side = place.onRight ? frame_.right : frame_.left;
  ink_.UprightLine(x, frame_.top, frame_.bottom, kLevelColour);
  ink_.LevelLine(std::min(x, side), std::max(x, side), y, kLevelColour);
  ink_.Dot({x, y}, 4, kMarkedColour);
}

// ---- Texts --------------------------------------------------------------------------------------

void Painter::DrawSideTexts(const ChartLayout::Side& side, bool isRight) {
  for (const AxisMark& mark : side.marks) {
    const double width = Ink::TextWidth(mark.text, side.textHeight);
    const double x = isRight ? frame_.right + ChartLayout::kMarkGap
                             : frame_.left - ChartLayout::kMarkGap - width;
    ink_.Text(x, side.scale.At(mark.value) + side.textHeight / 2, mark.text, side.textHeight,
              kTextColour);
  }
}

void Painter::DrawMarkTexts() {
  DrawSideTexts(layout_.Y(), false);
  if (chart_.right) DrawSideTexts(layout_.Y(true), true);
  const ChartLayout::Side& x = layout_.X();
  const MarkTexts room{x.textHeight, true, 2, layout_.Width() - 2};
  const double foot = frame_.bottom + ChartLayout::kMarkGap + x.textHeight;
  for (const AxisMark& mark : x.marks) {
    const double place = x.scale.At(mark.value);
    ink_.Text(MarkTextLeft(mark.text, place, room), foot, mark.text, x.textHeight, kTextColour);
    ink_.Text(MarkTextLeft(mark.under, place, room), foot + x.textHeight + ChartLayout::kUnderGap,
              mark.under, x.textHeight, kTextColour);
  }
}

void Painter::DrawTitles() {
  constexpr double kHeight = ChartLayout::kAxisTitle;
  const auto centred = [](const std::string& text, double from, double to) {
    return (from + to - Ink::TextWidth(text, kHeight)) / 2;
  };
  ink_.Text(ChartLayout::kEdge, ChartLayout::kEdge + ChartLayout::kChartTitle, chart_.title,
            ChartLayout::kChartTitle, kTitleColour);
  if (chart_.frame) return DrawTitlesInside();
  ink_.Text(centred(chart_.x.title, frame_.left, frame_.right),
            layout_.Height() - ChartLayout::kEdge, chart_.x.title, kHeight, kTitleColour);
  const auto upright = [&](const std::string& title, double foot) {
    const double length = Ink::TextWidth(title, kHeight);
    ink_.UprightText(foot, (frame_.top + frame_.bottom + length) / 2, title, kHeight, kTitleColour);
  };
  upright(chart_.y.title, ChartLayout::kEdge + kHeight);
  if (chart_.right) upright(chart_.right->title, layout_.Width() - ChartLayout::kEdge);
}

void Painter::DrawTitlesInside() {
  constexpr double kHeight = 8.5;
  constexpr double kAside = 6;
  constexpr double kGap = 4;
  ink_.Text(frame_.left + kAside, frame_.top + kHeight + kGap / 2, chart_.y.title, kHeight,
            kTextColour);
  ink_.Text(frame_.right - kAside - Ink::TextWidth(chart_.x.title, kHeight), frame_.bottom - kGap,
            chart_.x.title, kHeight, kTextColour);
}

void Painter::DrawLegendSample(std::size_t number, double x, double y) {
  constexpr double kBlock = 9;
  const Series& series = chart_.series[number];
  const Colour colour = ColourOf(chart_, number);
  const double middle = y - ChartLayout::kLegendText / 2;
  const double end = x + ChartLayout::kLegendSample;
  switch (series.kind) {
    case SeriesKind::kLine: {
      const InkPoint path[] = {{x + 1, middle}, {end - 1, middle}};
      if (IsPale(colour)) ink_.Stroke(path, series.pen + 1.6, kAxisColour);
      DrawPath(path, series.pen, colour, IsDashed(chart_, number));
      break;
    }
    case SeriesKind::kPoints:
      DrawHandle({(x + end) / 2, middle}, series.radius, false, colour);
      break;
    default:
      ink_.Block(x, middle - kBlock / 2, end, middle + kBlock / 2, FillOf(number));
  }
}

void Painter::DrawLegend() {
  for (const ChartLayout::LegendEntry& entry : layout_.Legend()) {
    if (entry.series) DrawLegendSample(*entry.series, entry.x, entry.y);
    ink_.Text(entry.x + ChartLayout::kLegendSample + ChartLayout::kLegendGap, entry.y, entry.text,
              ChartLayout::kLegendText, kTextColour);
  }
}

// Half a handle may stand over the ends of the axis, but not over the texts.
void Painter::ClipAround() {
  constexpr double kOver = 6;
  ink_.Clip(frame_.left - kOver, frame_.top - kOver, frame_.right + kOver, frame_.bottom + kOver);
}

void Painter::ClipInside() { ink_.Clip(frame_.left, frame_.top, frame_.right, frame_.bottom); }

void Painter::Paint() {
  ClipInside();
  DrawKind(SeriesKind::kArea);
  ink_.Unclip();
  DrawGrid();
  DrawLevels();
  ClipInside();
  DrawKind(SeriesKind::kBars);
  ink_.Unclip();
  DrawAxisLines();
  DrawMarkTexts();
  DrawTitles();
  DrawLegend();
  ClipAround();
  DrawKind(SeriesKind::kLine);
  if (chart_.pointer) DrawPointer(*chart_.pointer);
  DrawKind(SeriesKind::kPoints);
}

}  // namespace

void DrawChart(Canvas& canvas, const ChartLayout& layout) {
  if (canvas.Empty()) return;
  canvas.Clear(kWhite);
  Painter(canvas, layout).Paint();
}

void DrawChart(Canvas& canvas, const Chart& chart, double unitsWide) {
  if (canvas.Empty()) return;
  DrawChart(canvas, ChartLayout(chart, unitsWide, unitsWide * canvas.Height() / canvas.Width()));
}

void DrawPointer(Canvas& canvas, const ChartLayout& layout, const ChartPlace& place) {
  if (!canvas.Empty()) Painter(canvas, layout).DrawPointer(place);
}

}  // namespace ormel
