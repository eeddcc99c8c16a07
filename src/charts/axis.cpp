#include "charts/axis.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "charts/ink.h"

namespace ormel {
namespace {

using std::chrono::day;
using std::chrono::month;
using std::chrono::sys_days;
using std::chrono::year;

constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kNarrow = 1e-12;  // of the value: less than this is not told apart

constexpr double kSecondsADay = 86400;
constexpr sys_days kDayZero{year{1899} / 12 / 30};

double DayNumber(sys_days date) { return static_cast<double>((date - kDayZero).count()); }

// ---- Steps of dates -----------------------------------------------------------------------------

enum class DateStepUnit { kSeconds, kDays, kMonths };

struct DateStep {
  DateStepUnit unit;
  int count;
  const char* pattern;
  const char* under;
};
constexpr char kClock[] = "hh:nn";
constexpr char kFullDay[] = "mmm d, yyyy";
constexpr char kDayOfYear[] = "mmm d";
constexpr DateStep kDateSteps[] = {
    {DateStepUnit::kSeconds, 1, "hh:nn:ss", kFullDay},
    {DateStepUnit::kSeconds, 5, "hh:nn:ss", kFullDay},
    {DateStepUnit::kSeconds, 15, "hh:nn:ss", kFullDay},
    {DateStepUnit::kSeconds, 30, "hh:nn:ss", kFullDay},
    {DateStepUnit::kSeconds, 60, kClock, kFullDay},
    {DateStepUnit::kSeconds, 5 * 60, kClock, kFullDay},
    {DateStepUnit::kSeconds, 15 * 60, kClock, kFullDay},
    {DateStepUnit::kSeconds, 30 * 60, kClock, kFullDay},
    {DateStepUnit::kSeconds, 3600, kClock, kFullDay},
    {DateStepUnit::kSeconds, 2 * 3600, kClock, kFullDay},
    {DateStepUnit::kSeconds, 3 * 3600, kClock, kFullDay},
    {DateStepUnit::kSeconds, 6 * 3600, kClock, kFullDay},
    {DateStepUnit::kSeconds, 12 * 3600, kClock, kFullDay},
    {DateStepUnit::kDays, 1, kDayOfYear, "yyyy"},
    {DateStepUnit::kDays, 2, kDayOfYear, "yyyy"},
    {DateStepUnit::kDays, 7, kDayOfYear, "yyyy"},
    {DateStepUnit::kDays, 14, kDayOfYear, "yyyy"},
    {DateStepUnit::kMonths, 1, "mmm", "yyyy"},
    {DateStepUnit::kMonths, 3, "mmm", "yyyy"},
    {DateStepUnit::kMonths, 6, "mmm", "yyyy"},
    {DateStepUnit::kMonths, 12, "yyyy", ""},
    {DateStepUnit::kMonths, 2 * 12, "yyyy", ""},
    {DateStepUnit::kMonths, 5 * 12, "yyyy", ""},
    {DateStepUnit::kMonths, 10 * 12, "yyyy", ""},
    {DateStepUnit::kMonths, 20 * 12, "yyyy", ""},
    {DateStepUnit::kMonths, 50 * 12, "yyyy", ""},
    {DateStepUnit::kMonths, 100 * 12, "yyyy", ""},
    {DateStepUnit::kMonths, 200 * 12, "yyyy", ""},
    {DateStepUnit::kMonths, 500 * 12, "yyyy", ""},
    {DateStepUnit::kMonths, 1000 * 12, "yyyy", ""},
    {DateStepUnit::kMonths, 2000 * 12, "yyyy", ""},
    {DateStepUnit::kMonths, 5000 * 12, "yyyy", ""},
};

double DaysOf(const DateStep& step) {
  constexpr double kShortestMonth = 28;
  switch (step.unit) {
    case DateStepUnit::kSeconds:
      return step.count / kSecondsADay;
    case DateStepUnit::kDays:
      return step.count;
    default:
      return step.count * kShortestMonth;
  }
}

constexpr int kFirstMonday = 2;  // 1 January 1900

// The dates of a step are counted: the number of the last one that is not after `date`.
std::int64_t NumberBefore(const DateStep& step, double date) {
  double units = date * kSecondsADay;
  if (step.unit == DateStepUnit::kDays) units = date - kFirstMonday;
  if (step.unit == DateStepUnit::kMonths) {
    const std::chrono::days days(static_cast<int>(std::floor(date)));
    const std::chrono::year_month_day on{kDayZero + days};
    units = int{on.year()} * 12.0 + unsigned{on.month()} - 1;
  }
  return static_cast<std::int64_t>(std::floor(units / step.count));
}

double DateOfNumber(const DateStep& step, std::int64_t number) {
  const std::int64_t units = number * step.count;
  switch (step.unit) {
    case DateStepUnit::kSeconds:
      return static_cast<double>(units) / kSecondsADay;
    case DateStepUnit::kDays:
      return static_cast<double>(units + kFirstMonday);
    default:
      return DayNumber(year{static_cast<int>(units / 12)} /
                       month{static_cast<unsigned>(units % 12 + 1)} / day{1});
  }
}

std::vector<double> DatesOf(const DateStep& step, Range range) {
  // The whole part of a day before day 0 runs backward, its time forward: no axis shows that.
  if (step.unit == DateStepUnit::kSeconds) range.low = std::max(range.low, 0.0);
  std::vector<double> dates;
  if (!(range.low <= range.high)) return dates;
  for (std::int64_t number = NumberBefore(step, range.low);; ++number) {
    const double date = DateOfNumber(step, number);
    if (date > range.high) return dates;
    if (date >= range.low) dates.push_back(date);
  }
}

// The larger unit is told at the first mark and where it changes.
std::vector<AxisMark> Written(const DateStep& step, const std::vector<double>& dates,
                              const DateWriter& text) {
  std::vector<AxisMark> marks;
  std::string last;
  for (const double date : dates) {
    std::string under = text(date, step.under);
    marks.push_back({date, text(date, step.pattern), under == last ? "" : under});
    last = std::move(under);
  }
  return marks;
}

// ---- Room ---------------------------------------------------------------------------------------

double GapBetween(const MarkTexts& texts) { return texts.height; }

bool Fit(const std::vector<AxisMark>& marks, const AxisScale& scale, const MarkTexts& texts) {
  constexpr double kLinesApart = 1.8;
  double last = -kLargest;
  for (std::size_t i = 0; i < marks.size(); ++i) {
    const AxisMark& mark = marks[i];
    const bool isNew = mark.text.empty() || i == 0 || mark.text != marks[i - 1].text;
    const double place = scale.At(mark.value);
    if (texts.sideBySide) {
      const double left = MarkTextLeft(mark.text, place, texts);
      if (!isNew || left < last) return false;
      last = left + Ink::TextWidth(mark.text, texts.height) + GapBetween(texts);
    } else if (i > 0) {
      const double before = scale.At(marks[i - 1].value);
      if (!isNew || std::abs(place - before) < kLinesApart * texts.height) return false;
    }
  }
  return true;
}

// The larger unit of the first mark gives way to that of a whole one; others that would overlap the
// one before are left out.
void ThinUnder(std::vector<AxisMark>& marks, const AxisScale& scale, const MarkTexts& texts) {
  AxisMark* before = nullptr;
  double last = -kLargest;
  for (AxisMark& mark : marks) {
    if (mark.under.empty()) continue;
    const double left = MarkTextLeft(mark.under, scale.At(mark.value), texts);
    if (left < last && before != &marks.front()) {
      mark.under.clear();
      continue;
    }
    if (left < last) before->under.clear();
    before = &mark;
    last = left + Ink::TextWidth(mark.under, texts.height) + GapBetween(texts);
  }
}

std::vector<AxisMark> EveryNth(const std::vector<AxisMark>& marks, std::size_t n) {
  std::vector<AxisMark> kept;
  for (std::size_t i = 0; i < marks.size(); i += n) kept.push_back(marks[i]);
  return kept;
}

std::vector<AxisMark> Thinned(const std::vector<AxisMark>& marks, const AxisScale& scale,
                              const MarkTexts& texts) {
  std::vector<AxisMark> kept = marks;
  for (std::size_t n = 2; kept.size() > 1 && !Fit(kept, scale, texts); ++n) {
    kept = EveryNth(marks, n);
  }
  return kept;
}

std::vector<AxisMark> NumberMarks(Range range, int most, const NumberWriter& text) {
  std::vector<AxisMark> marks;
  for (const double value : RoundMarks(range.low, range.high, most)) {
    marks.push_back({value, text ? text(value) : std::string(), ""});
  }
  return marks;
}

}  // namespace

Range Drawable(Range range) {
  if (std::isnan(range.low) || std::isnan(range.high)) return {};
  range.low = std::clamp(range.low, -kLargest, kLargest);
  range.high = std::clamp(range.high, -kLargest, kLargest);
  if (range.low > range.high) std::swap(range.low, range.high);
  const double size = std::max(std::abs(range.low), std::abs(range.high));
  if (range.high / 2 - range.low / 2 > kNarrow * size) return range;
  const double aside = std::max(0.5, size * kNarrow * 100);
  return {std::max(range.low - aside, -kLargest), std::min(range.high + aside, kLargest)};
}

std::string ReadOutText(const Axis& axis, double value) {
  if (!axis.dateText) return axis.numberText ? axis.numberText(value) : std::string();
  const bool hasTime = value != std::floor(value);
  return axis.dateText(value, hasTime ? "mmm d, yyyy hh:nn" : kFullDay);
}

AxisScale::AxisScale(Range range, double from, double to)
    : range_(Drawable(range)), from_(from), to_(to) {}

// Halves, because a whole range may be larger than a double can tell.
double AxisScale::At(double value) const {
  const double part = (value / 2 - range_.low / 2) / (range_.high / 2 - range_.low / 2);
  return from_ + part * (to_ - from_);
}

double AxisScale::ValueAt(double place) const {
  const double part = from_ == to_ ? 0 : (place - from_) / (to_ - from_);
  const double limited = std::min(1.5, std::max(-0.5, part));
  const double value = (1 - limited) * range_.low + limited * range_.high;
  return std::clamp(value, -kLargest, kLargest);
}

double RoundStep(double range, int most) {
  const double power = std::pow(10, std::floor(std::log10(range / most)));
  for (const double digit : {1.0, 2.0, 5.0}) {
    if (digit * power * most >= range) return digit * power;
  }
  return 10 * power;
}

std::vector<double> RoundMarks(double low, double high, int most) {
  const double range = high - low;
  std::vector<double> marks;
  if (!(range > 0) || !std::isfinite(range)) return marks;
  const double step = RoundStep(range, most);
  const double first = std::ceil(low / step);
  // One more than `most` at round ends, and some more where steps cannot be told exactly.
  for (int i = 0; i < most + 3; ++i) {
    // Steps below 1 are no exact doubles: their multiples carry noise that is no part of them.
    const double per = std::round(1 / step);
    const double mark = step < 1 && std::isfinite(per) ? (first + i) / per : (first + i) * step;
    if (!(mark <= high)) break;
    if (marks.empty() || mark > marks.back()) marks.push_back(mark);
  }
  return marks;
}

std::vector<AxisMark> DateMarks(Range range, int most, const DateWriter& text) {
  constexpr sys_days kFirstDay{year{100} / 1 / 1};
  constexpr sys_days kLastDay{year{9999} / 12 / 31};
  range.low = std::max(range.low, DayNumber(kFirstDay));
  range.high = std::min(range.high, DayNumber(kLastDay) + 1 - 1 / kSecondsADay);
  for (const DateStep& step : kDateSteps) {
    if ((range.high - range.low) / DaysOf(step) > 2 * most) continue;
    const std::vector<double> dates = DatesOf(step, range);
    if (!dates.empty() && dates.size() <= static_cast<std::size_t>(most)) {
      return Written(step, dates, text);
    }
  }
  return {};
}

double MarkTextLeft(const std::string& text, double place, const MarkTexts& texts) {
  const double width = Ink::TextWidth(text, texts.height);
  return std::max(texts.least, std::min(place - width / 2, texts.most - width));
}

std::vector<AxisMark> MarksOf(const Axis& axis, const AxisScale& scale, const MarkTexts& texts) {
  constexpr double kBetweenTexts = 64;
  constexpr double kBetweenLines = 50;
  if (!axis.marks.empty()) return Thinned(axis.marks, scale, texts);
  const Range range = scale.Values();
  const double length = std::abs(scale.At(range.high) - scale.At(range.low));
  const double room = length / (texts.sideBySide ? kBetweenTexts : kBetweenLines);
  std::vector<AxisMark> marks;
  for (int most = static_cast<int>(std::clamp(room, 2.0, 12.0)); most > 0; --most) {
    marks = axis.dateText ? DateMarks(range, most, axis.dateText)
                          : NumberMarks(range, most, axis.numberText);
    if (Fit(marks, scale, texts)) break;
  }
  marks = Thinned(marks, scale, texts);
  ThinUnder(marks, scale, texts);
  return marks;
}

double WidestText(const std::vector<AxisMark>& marks, double height) {
  double widest = 0;
  for (const AxisMark& mark : marks) widest = std::max(widest, Ink::TextWidth(mark.text, height));
  return widest;
}

}  // namespace ormel
