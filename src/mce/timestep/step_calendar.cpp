#include "mce/timestep/step_calendar.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "text/dates.h"
#include "text/numbers.h"

namespace ormel {
namespace {

constexpr char kSingleStep[] = "Your Date Range Encloses Only a Single Step! Please Modify it.";

// Of kStepUnits.
constexpr DateUnit kUnits[] = {DateUnit::kYear, DateUnit::kMonth,  DateUnit::kDay,
                               DateUnit::kHour, DateUnit::kMinute, DateUnit::kSecond};

Failure Refuse(std::string text) { return {FailureKind::kRefused, std::move(text)}; }

// A short date has no time.
std::string ShortDate(double date) { return FormatDate(date, "m/d/yyyy"); }

// What the entries mean.
struct Range {
  double start = 0;
  double end = 0;
  DateUnit unit = DateUnit::kMonth;
  std::int64_t increment = 1;
};

Outcome<double> DateOfEntry(const std::string& text) {
  if (const auto date = ReadDate(text)) return *date;
  return Refuse("\"" + text + "\" is no date.");
}

Outcome<Range> RangeOf(const CalendarEntries& entries) {
  const std::string startText = MomentText(entries.start, entries.extended);
  const std::string endText = MomentText(entries.end, entries.extended);
  if (startText == endText) return Refuse("Your Initial and Final Dates Cannot be the Same!");
  const Outcome<double> start = DateOfEntry(startText);
  if (!start.Ok()) return start.Stop();
  const Outcome<double> end = DateOfEntry(endText);
  if (!end.Ok()) return end.Stop();
  const auto* const unit = std::find(kStepUnits.begin(), kStepUnits.end(), entries.unit);
  if (unit == kStepUnits.end()) return Refuse("\"" + entries.unit + "\" is no unit of time.");
  constexpr double kLargest = 1e15;
  const double increment = std::abs(HalfEvenRound(TextToNumber(entries.increment)));
  return Range{start.Value(), end.Value(), kUnits[unit - kStepUnits.begin()],
               static_cast<std::int64_t>(std::min(increment, kLargest))};
}

// The dates grow from text to text, as they are shown and saved.
Outcome<std::vector<std::string>> DatesFrom(const Range& range, int count, std::int64_t increment) {
  const auto leavesCalendar = [] {
    return Refuse("The dates leave the calendar, which runs from the year 100 to 9999.");
  };
  // One unit forward and back: a day that the next month does not have is clipped to its last.
  std::optional<double> date = DateAdd(range.unit, 1, range.start);
  if (date) date = DateAdd(range.unit, -1, *date);
  std::vector<std::string> dates;
  while (date) {
    dates.push_back(DateText(*date));
    if (static_cast<int>(dates.size()) == count) return dates;
    date = DateAdd(range.unit, increment, ReadDate(dates.back()).value_or(*date));
  }
  return leavesCalendar();
}

// Draws the last date to the end of the range when it is no more than half a step away; else one
// more date closes the range. A sequence that overshoots is closed with the start: models and the
// names of their maps were made so, and it stays.
void CloseRange(const Range& range, std::vector<std::string>& dates) {
  const auto seconds = [](double from, double to) {
    return DateDifference(DateUnit::kSecond, from, to);
  };
  const auto dateOf = [&](std::size_t index) { return ReadDate(dates[index]).value_or(0); };
  const double lastDate = dateOf(dates.size() - 1);
  const std::int64_t total = seconds(range.start, range.end);
  const std::int64_t last = seconds(dateOf(0), lastDate);
  const std::int64_t step = seconds(dateOf(0), dateOf(1));
  if (last == total) return;
  const bool overshoots = last > total;
  const std::int64_t away =
      overshoots ? seconds(range.start, lastDate) : seconds(lastDate, range.end);
  if (static_cast<double>(step) / 2 >= static_cast<double>(away)) {
    dates.back() = ShortDate(range.end);
  } else {
    dates.push_back(ShortDate(overshoots ? range.start : range.end));
  }
}

}  // namespace

std::string MomentText(const CalendarMoment& moment, bool extended) {
  std::string day = moment.month + " " + moment.day + ", " + moment.year;
  if (!extended) return day;
  return moment.hour + ":" + moment.minute + ":" + moment.second + " " + day;
}

std::optional<int> DaysOfMonth(const std::string& month, const std::string& year) {
  constexpr int kDaysOfDecember = 31;
  const auto* const found = std::find(kMonthNames.begin(), kMonthNames.end(), month);
  const auto number = static_cast<int>(found - kMonthNames.begin()) + 1;
  if (number >= static_cast<int>(kMonthNames.size())) return kDaysOfDecember;
  const auto first = ReadDate(std::to_string(number) + "/1/" + year);
  const auto next = ReadDate(std::to_string(number + 1) + "/1/" + year);
  if (!first || !next) return std::nullopt;
  return static_cast<int>(DateDifference(DateUnit::kDay, *first, *next));
}

std::optional<std::string> WholeIncrement(const std::string& text) {
  if (!IsNumeric(text)) return std::nullopt;
  const double value = TextToNumber(text);
  return value == std::trunc(value) ? text : NumberText(HalfEvenRound(value));
}

Outcome<StepCalendar> BuildCalendar(const CalendarEntries& entries) {
  const Outcome<Range> read = RangeOf(entries);
  if (!read.Ok()) return read.Stop();
  const Range& range = read.Value();
  const std::int64_t units = DateDifference(range.unit, range.start, range.end);
  if (units == 0 || range.increment == 0) return Refuse(kSingleStep);
  const double steps =
      1 + std::abs(static_cast<double>(units) / static_cast<double>(range.increment));
  if (steps > kMostSteps) return Refuse("Too Many Steps!");
  const auto count = static_cast<int>(HalfEvenRound(steps));
  if (count < 2) return Refuse(kSingleStep);
  Outcome<std::vector<std::string>> dates =
      DatesFrom(range, count, units > 0 ? range.increment : -range.increment);
  if (!dates.Ok()) return dates.Stop();
  CloseRange(range, dates.Value());
  return StepCalendar{std::move(dates.Value())};
}

}  // namespace ormel
