#include "text/dates.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <chrono>
#include <cmath>
#include <utility>
#include <vector>

#include "text/numbers.h"

namespace ormel {
namespace {

using std::chrono::day;
using std::chrono::days;
using std::chrono::month;
using std::chrono::sys_days;
using std::chrono::year;
using std::chrono::year_month_day;

constexpr std::int64_t kSecondsADay = 86400;
constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;
constexpr sys_days kDayZero = sys_days(year(1899) / 12 / 30);
constexpr std::int64_t kFirstDay = (sys_days(year(kFirstYear) / 1 / 1) - kDayZero).count();
constexpr std::int64_t kLastDay = (sys_days(year(kLastYear) / 12 / 31) - kDayZero).count();

constexpr std::array<std::string_view, 12> kMonths = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};
constexpr std::size_t kShortName = 3;

// A date in whole seconds.
struct Moment {
  std::int64_t day = 0;     // since day 0
  std::int64_t second = 0;  // of the day, 0 to 86399

  std::int64_t Seconds() const { return day * kSecondsADay + second; }
};

Moment MomentOf(double date) {
  if (std::isnan(date)) return {};
  const double whole = std::trunc(date);
  if (whole < static_cast<double>(kFirstDay)) return {kFirstDay, 0};
  if (whole > static_cast<double>(kLastDay)) return {kLastDay, kSecondsADay - 1};
  Moment moment{static_cast<std::int64_t>(whole),
                std::llround(std::abs(date - whole) * static_cast<double>(kSecondsADay))};
  if (moment.second == kSecondsADay) moment = {moment.day + 1, 0};
  return moment.day <= kLastDay ? moment : Moment{kLastDay, kSecondsADay - 1};
}

std::optional<double> DateAt(const Moment& moment) {
  if (moment.day < kFirstDay || moment.day > kLastDay) return std::nullopt;
  const double time = static_cast<double>(moment.second) / static_cast<double>(kSecondsADay);
  const auto whole = static_cast<double>(moment.day);
  return moment.day < 0 ? whole - time : whole + time;
}

std::int64_t FloorDivide(std::int64_t value, std::int64_t divisor) {
  return value / divisor - (value % divisor < 0 ? 1 : 0);
}

std::optional<double> DateAtSecond(std::int64_t seconds) {
  const std::int64_t whole = FloorDivide(seconds, kSecondsADay);
  return DateAt({whole, seconds - whole * kSecondsADay});
}

year_month_day CalendarDay(std::int64_t dayNumber) {
  return {kDayZero + days(static_cast<int>(dayNumber))};
}

// The number of a day of the calendar; none when there is no such day.
std::optional<std::int64_t> DayNumber(int y, int m, int d) {
  if (y < kFirstYear || y > kLastYear || m < 1 || d < 1) return std::nullopt;
  const year_month_day date(year(y), month(static_cast<unsigned>(m)),
                            day(static_cast<unsigned>(d)));
  if (!date.ok()) return std::nullopt;
  return (sys_days(date) - kDayZero).count();
}

// ---- Reading ------------------------------------------------------------------------------------

bool SameLetters(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](unsigned char x, unsigned char y) {
    return std::tolower(x) == std::tolower(y);
  });
}

// 1 to 12; 0 when the word is no month.
int MonthNamed(std::string_view word) {
  for (std::size_t i = 0; i < kMonths.size(); ++i) {
    if (SameLetters(word, kMonths[i]) || SameLetters(word, kMonths[i].substr(0, kShortName))) {
      return static_cast<int>(i) + 1;
    }
  }
  return 0;
}

// A number of up to four digits; none when the word is something else.
std::optional<int> Digits(std::string_view word) {
  if (word.empty() || word.size() > 4 || !std::all_of(word.begin(), word.end(), IsDigit)) {
    return std::nullopt;
  }
  int number = 0;
  for (const char digit : word) number = 10 * number + (digit - '0');
  return number;
}

std::optional<int> YearOf(std::string_view word) {
  const std::optional<int> number = Digits(word);
  if (!number || word.size() > 2) return number;
  return *number < 30 ? 2000 + *number : 1900 + *number;
}

// Splits at every one of `separators`; parts may be empty.
std::vector<std::string_view> Split(std::string_view text, std::string_view separators) {
  std::vector<std::string_view> parts;
  while (true) {
    const std::size_t end = text.find_first_of(separators);
    parts.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

// The three words of a date in the order month, day, year.
std::optional<std::int64_t> ReadDay(std::string_view m, std::string_view d, std::string_view y) {
  const int named = MonthNamed(m);
  const std::optional<int> monthNumber = named > 0 ? named : Digits(m);
  const std::optional<int> dayOfMonth = Digits(d);
  const std::optional<int> yearNumber = YearOf(y);
  if (!monthNumber || !dayOfMonth || !yearNumber) return std::nullopt;
  return DayNumber(*yearNumber, *monthNumber, *dayOfMonth);
}

std::optional<std::int64_t> ReadDayWords(const std::vector<std::string_view>& words) {
  if (words.size() == 3 && MonthNamed(words[0]) > 0) return ReadDay(words[0], words[1], words[2]);
  if (words.size() != 1) return std::nullopt;
  const std::vector<std::string_view> slashed = Split(words[0], "/");
  if (slashed.size() == 3) return ReadDay(slashed[0], slashed[1], slashed[2]);
  const std::vector<std::string_view> dashed = Split(words[0], "-");
  if (dashed.size() != 3 || dashed[0].size() < 3) return std::nullopt;
  return Digits(dashed[1]) ? ReadDay(dashed[1], dashed[2], dashed[0]) : std::nullopt;
}

enum class Half { kNone, kMorning, kAfternoon };

std::optional<Half> HalfNamed(std::string_view word) {
  if (SameLetters(word, "AM") || SameLetters(word, "A")) return Half::kMorning;
  if (SameLetters(word, "PM") || SameLetters(word, "P")) return Half::kAfternoon;
  return std::nullopt;
}

// The second of the day of "13:45" or "1:45:10"; a half of the day may be given behind it.
std::optional<std::int64_t> ReadTime(std::string_view word, Half half) {
  const std::size_t letter = word.find_first_not_of("0123456789:");
  if (letter != std::string_view::npos) {
    const std::optional<Half> named = HalfNamed(word.substr(letter));
    if (!named || half != Half::kNone) return std::nullopt;
    half = *named;
    word = word.substr(0, letter);
  }
  const std::vector<std::string_view> parts = Split(word, ":");
  if (parts.size() < 2 || parts.size() > 3) return std::nullopt;
  std::array<int, 3> time{};
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const std::optional<int> number = Digits(parts[i]);
    if (!number || *number >= (i == 0 ? 24 : 60)) return std::nullopt;
    time[i] = *number;
  }
  if (half != Half::kNone) {
    if (time[0] > 12) return std::nullopt;
    time[0] = time[0] % 12 + (half == Half::kAfternoon ? 12 : 0);
  }
  return (time[0] * 60 + time[1]) * 60 + time[2];
}

std::vector<std::string_view> Words(std::string_view text) {
  std::vector<std::string_view> words;
  for (const std::string_view word : Split(text, " \t,")) {
    if (!word.empty()) words.push_back(word);
  }
  return words;
}

}  // namespace

std::optional<DateUnit> DateUnitOf(std::string_view key) {
  constexpr std::array<std::pair<std::string_view, DateUnit>, 7> kUnits = {
      {{"yyyy", DateUnit::kYear},
       {"m", DateUnit::kMonth},
       {"ww", DateUnit::kWeek},
       {"d", DateUnit::kDay},
       {"h", DateUnit::kHour},
       {"n", DateUnit::kMinute},
       {"s", DateUnit::kSecond}}};
  for (const auto& [name, unit] : kUnits) {
    if (name == key) return unit;
  }
  return std::nullopt;
}

std::optional<double> ReadDate(std::string_view text) {
  std::vector<std::string_view> words = Words(text);
  const auto clock = std::find_if(words.begin(), words.end(), [](std::string_view word) {
    return word.find(':') != std::string_view::npos;
  });
  Moment moment;
  if (clock != words.end()) {
    const auto behind = clock + 1;
    const std::optional<Half> half = behind == words.end() ? std::nullopt : HalfNamed(*behind);
    const std::optional<std::int64_t> time = ReadTime(*clock, half.value_or(Half::kNone));
    const auto rest = half ? behind + 1 : behind;
    if (!time || (clock != words.begin() && rest != words.end())) return std::nullopt;
    moment.second = *time;
    words.erase(clock, rest);
    if (words.empty()) return DateAt(moment);
  }
  const std::optional<std::int64_t> dayNumber = ReadDayWords(words);
  if (!dayNumber) return std::nullopt;
  moment.day = *dayNumber;
  return DateAt(moment);
}

// ---- Writing ------------------------------------------------------------------------------------

std::string DateText(double date) {
  std::string text = FormatDate(date, "m/d/yyyy");
  const DateParts parts = PartsOf(date);
  if (parts.hour == 0 && parts.minute == 0 && parts.second == 0) return text;
  const int hour = parts.hour % 12 == 0 ? 12 : parts.hour % 12;
  return text + ' ' + std::to_string(hour) + FormatDate(date, ":nn:ss") +
         (parts.hour < 12 ? " AM" : " PM");
}

namespace {

std::string Padded(int value, std::size_t digits) {
  const std::string text = std::to_string(value);
  return text.size() < digits ? std::string(digits - text.size(), '0') + text : text;
}

// What `count` letters of one kind in a pattern stand for.
std::string FormatField(const DateParts& parts, char letter, std::size_t count) {
  const std::string_view name = kMonths[static_cast<std::size_t>(parts.month - 1)];
  switch (letter) {
    case 'y':
      return count > 2 ? std::to_string(parts.year) : Padded(parts.year % 100, 2);
    case 'm':
      if (count > kShortName) return std::string(name);
      if (count == kShortName) return std::string(name.substr(0, kShortName));
      return Padded(parts.month, count);
    case 'd':
      return Padded(parts.day, count);
    case 'h':
      return Padded(parts.hour, count);
    case 'n':
      return Padded(parts.minute, count);
    case 's':
      return Padded(parts.second, count);
    default:
      return std::string(count, letter);
  }
}

}  // namespace

std::string FormatDate(double date, std::string_view pattern) {
  const DateParts parts = PartsOf(date);
  std::string text;
  while (!pattern.empty()) {
    const std::size_t count = std::min(pattern.find_first_not_of(pattern[0]), pattern.size());
    text += FormatField(parts, pattern[0], count);
    pattern.remove_prefix(count);
  }
  return text;
}

// ---- Arithmetic ---------------------------------------------------------------------------------

DateParts PartsOf(double date) {
  const Moment moment = MomentOf(date);
  const year_month_day calendar = CalendarDay(moment.day);
  const auto second = static_cast<int>(moment.second);
  return {int(calendar.year()),
          static_cast<int>(unsigned(calendar.month())),
          static_cast<int>(unsigned(calendar.day())),
          second / 3600,
          second / 60 % 60,
          second % 60};
}

std::optional<double> DateOf(const DateParts& parts) {
  const std::int64_t months = std::int64_t{parts.year} * 12 + (std::int64_t{parts.month} - 1);
  const std::int64_t yearNumber = FloorDivide(months, 12);
  // A year beyond the calendar may come back into it by the days, but not from further than that.
  if (yearNumber < kFirstYear - 1 || yearNumber > kLastYear + 1) return std::nullopt;
  const year_month_day first(year(static_cast<int>(yearNumber)),
                             month(static_cast<unsigned>(months - yearNumber * 12 + 1)), day(1));
  const std::int64_t dayNumber = (sys_days(first) - kDayZero).count() + parts.day - 1;
  return DateAtSecond(dayNumber * kSecondsADay + std::int64_t{parts.hour} * 3600 +
                      std::int64_t{parts.minute} * 60 + parts.second);
}

namespace {

// Moves by whole months; a day that the month does not have becomes its last.
std::optional<double> AddMonths(const Moment& moment, std::int64_t count) {
  constexpr std::int64_t kMost = (kLastYear + 1) * 12;
  if (count < -kMost || count > kMost) return std::nullopt;
  const year_month_day from = CalendarDay(moment.day);
  const std::chrono::year_month target =
      from.year() / from.month() + std::chrono::months(static_cast<int>(count));
  const year_month_day last = year_month_day(target / std::chrono::last);
  const year_month_day to = target / std::min(from.day(), last.day());
  return DateAt({(sys_days(to) - kDayZero).count(), moment.second});
}

constexpr std::int64_t SecondsIn(DateUnit unit) {
  switch (unit) {
    case DateUnit::kWeek:
      return 7 * kSecondsADay;
    case DateUnit::kDay:
      return kSecondsADay;
    case DateUnit::kHour:
      return 3600;
    case DateUnit::kMinute:
      return 60;
    default:
      return 1;
  }
}

std::int64_t MonthNumber(const Moment& moment) {
  const year_month_day date = CalendarDay(moment.day);
  return std::int64_t{int(date.year())} * 12 + unsigned(date.month());
}

}  // namespace

std::optional<double> DateAdd(DateUnit unit, std::int64_t count, double date) {
  constexpr std::int64_t kMost = (kLastDay - kFirstDay + 1) * kSecondsADay;
  if (count < -kMost || count > kMost) return std::nullopt;
  const Moment moment = MomentOf(date);
  if (unit == DateUnit::kYear) return AddMonths(moment, 12 * count);
  if (unit == DateUnit::kMonth) return AddMonths(moment, count);
  return DateAtSecond(moment.Seconds() + count * SecondsIn(unit));
}

std::int64_t DateDifference(DateUnit unit, double from, double to) {
  const Moment first = MomentOf(from);
  const Moment second = MomentOf(to);
  const auto count = [unit](const Moment& moment) -> std::int64_t {
    switch (unit) {
      case DateUnit::kYear:
        return int(CalendarDay(moment.day).year());
      case DateUnit::kMonth:
        return MonthNumber(moment);
      case DateUnit::kWeek:
        return FloorDivide(moment.day - 1, 7);  // day 1 was a Sunday
      default:
        return FloorDivide(moment.Seconds(), SecondsIn(unit));
    }
  };
  return count(second) - count(first);
}

}  // namespace ormel
