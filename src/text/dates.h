// Dates as numbers: days since 30 December 1899, the time of day as the fraction. Before that day
// the whole part is negative and the fraction still adds time: -1.25 is 6 o'clock in the morning of
// 29 December 1899. The calendar is the Gregorian one throughout, years run from 100 to 9999, and
// times are taken to the second. Nothing depends on a locale or a time zone.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ormel {

struct DateParts {
  int year = 1899;
  int month = 12;  // 1 to 12
  int day = 30;    // 1 to 31
  int hour = 0;    // 0 to 23
  int minute = 0;
  int second = 0;
};

// The units in which dates are added and compared.
enum class DateUnit { kYear, kMonth, kWeek, kDay, kHour, kMinute, kSecond };

// The unit of a key: "yyyy", "m", "ww", "d", "h", "n", "s". None for every other text.
std::optional<DateUnit> DateUnitOf(std::string_view key);

// Reads a date, a time, or both with a blank between, either first:
//
//   January 1, 2000   Jan 1 2000   1/31/2000   1/31/00   2000-01-31   Jan/31/2000
//   13:45   13:45:10   1:45 PM   1:45:10pm   1:45 P
//
// Years of two digits up to 29 are 20xx, the others 19xx. A time alone is on day 0. None when the
// text is something else, or no day of the calendar.
std::optional<double> ReadDate(std::string_view text);

inline bool IsDate(std::string_view text) { return ReadDate(text).has_value(); }

// "1/31/2000", with " 1:45:00 PM" behind it unless the time is midnight.
std::string DateText(double date);

// The date in a pattern of yyyy, yy, mmmm (January), mmm (Jan), mm, m, dd, d, hh, h, nn, n, ss, s;
// what stands between them is copied. Hours run from 0 to 23.
std::string FormatDate(double date, std::string_view pattern);

// The calendar date and time, rounded to the second. A date outside the calendar takes the nearer
// end.
DateParts PartsOf(double date);

// Months beyond 1 to 12 and days, hours, minutes and seconds beyond their ends run over into the
// next larger part. None outside the calendar.
std::optional<double> DateOf(const DateParts& parts);

// Adds `count` units. Years and months keep the day of the month, or end at the month's last day.
// None outside the calendar.
std::optional<double> DateAdd(DateUnit unit, std::int64_t count, double date);

// How many boundaries of the unit lie between two dates: from 31 December to 1 January it is one
// year, one month and one day. Weeks begin on Sunday. Negative when `to` is before `from`.
std::int64_t DateDifference(DateUnit unit, double from, double to);

}  // namespace ormel
