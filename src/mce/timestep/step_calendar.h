// The dates of a time-step model: from a first day to a last one, so many units of time apart. One
// suitability map is made for each.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "base/outcome.h"

namespace ormel {

inline constexpr std::array<const char*, 12> kMonthNames = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};

inline constexpr std::array<const char*, 6> kStepUnits = {"Year", "Month",  "Day",
                                                          "Hour", "Minute", "Second"};
inline constexpr std::size_t kUnitsOfDays = 3;  // those that need no time of day

inline constexpr double kMostSteps = 30000;  // before the range is closed, which may add one

// A day and a time of day, as they are entered.
struct CalendarMoment {
  std::string year;
  std::string month = kMonthNames.front();
  std::string day = "1";
  std::string hour = "0";
  std::string minute = "0";
  std::string second = "0";
};

struct CalendarEntries {
  CalendarMoment start;
  CalendarMoment end;
  std::string increment = "1";
  std::string unit = kStepUnits[1];
  bool extended = false;  // the times of day count
};

// "January 31, 2000", with "13:45:0 " in front when the time of day counts.
std::string MomentText(const CalendarMoment& moment, bool extended);

// The days of a month of that name; December has 31 in any year. None when the year is none.
std::optional<int> DaysOfMonth(const std::string& month, const std::string& year);

// A whole number in place of one with a fraction, ties to even. None: the text is no number.
std::optional<std::string> WholeIncrement(const std::string& text);

struct StepCalendar {
  std::vector<std::string> dates;  // of step 1 first, as FormatDate() and DateText() write them

  int Steps() const { return static_cast<int>(dates.size()); }
};

// All dates, in falling order when the end is before the start. Each is computed from the one
// before it: a day that a shorter month has clipped stays so. The last date is drawn to the end of
// the range, or one more is added, when they do not meet. Fails with the sentence for the user when
// the dates enclose no two steps, or too many, or are none.
[[nodiscard]] Outcome<StepCalendar> BuildCalendar(const CalendarEntries& entries);

}  // namespace ormel
