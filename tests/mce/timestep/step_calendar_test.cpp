#include "mce/timestep/step_calendar.h"

#include <gtest/gtest.h>

namespace ormel {
namespace {

using Dates = std::vector<std::string>;

CalendarMoment Day(const char* month, const char* day, const char* year) {
  return {year, month, day};
}

CalendarEntries Range(const CalendarMoment& start, const CalendarMoment& end, const char* increment,
                      const char* unit) {
  return {start, end, increment, unit, false};
}

Dates DatesOf(const CalendarEntries& entries) {
  const Outcome<StepCalendar> calendar = BuildCalendar(entries);
  EXPECT_TRUE(calendar.Ok()) << calendar.Text();
  return calendar.Ok() ? calendar.Value().dates : Dates();
}

// The dates between are those of Python's datetime; the ends are worked out by hand.
TEST(StepCalendar, EndsAsItsClosingRuleSays) {
  const CalendarMoment first = Day("January", "1", "2000");
  const CalendarMoment eleventh = Day("January", "11", "2000");
  const struct {
    CalendarEntries entries;
    Dates dates;
  } cases[] = {
      // The range is a multiple of the increment.
      {Range(first, Day("January", "1", "2003"), "1", "Year"),
       {"1/1/2000", "1/1/2001", "1/1/2002", "1/1/2003"}},
      // It falls short by no more than half a step: the last date moves.
      {Range(first, eleventh, "3", "Day"), {"1/1/2000", "1/4/2000", "1/7/2000", "1/11/2000"}},
      // By more: one more date.
      {Range(first, Day("April", "30", "2000"), "1", "Month"),
       {"1/1/2000", "2/1/2000", "3/1/2000", "4/1/2000", "4/30/2000"}},
      // It overshoots: one more date, which is the start.
      {Range(first, eleventh, "4", "Day"),
       {"1/1/2000", "1/5/2000", "1/9/2000", "1/13/2000", "1/1/2000"}},
      // In falling order the two branches change places.
      {Range(eleventh, first, "5", "Day"), {"1/11/2000", "1/6/2000", "1/1/2000"}},
      {Range(eleventh, first, "3", "Day"), {"1/11/2000", "1/8/2000", "1/5/2000", "1/1/2000"}},
      {Range(eleventh, first, "-4", "Day"),
       {"1/11/2000", "1/7/2000", "1/3/2000", "12/30/1999", "1/1/2000"}},
      // A day that a month does not have is clipped, and stays so.
      {Range(Day("January", "31", "2001"), Day("April", "28", "2001"), "1", "Month"),
       {"1/28/2001", "2/28/2001", "3/28/2001", "4/28/2001", "1/31/2001"}},
      {Range(Day("March", "31", "2000"), Day("May", "31", "2000"), "1", "Month"),
       {"3/30/2000", "4/30/2000", "5/30/2000"}},
  };
  for (const auto& one : cases) EXPECT_EQ(DatesOf(one.entries), one.dates);
}

TEST(StepCalendar, TakesTimesOfDayWhenItIsExtended) {
  CalendarEntries entries = Range({"1999", "December", "31", "22", "30", "0"},
                                  {"2000", "January", "1", "0", "30", "0"}, "1", "Hour");
  entries.extended = true;
  EXPECT_EQ(DatesOf(entries),
            (Dates{"12/31/1999 10:30:00 PM", "12/31/1999 11:30:00 PM", "1/1/2000 12:30:00 AM"}));
  entries.end.minute = "50";  // a date that closes the range has no time
  EXPECT_EQ(DatesOf(entries).back(), "1/1/2000");
  entries.unit = "Second";
  entries.end = {"1999", "December", "31", "22", "30", "2"};
  EXPECT_EQ(DatesOf(entries).back(), "12/31/1999 10:30:02 PM");
}

TEST(StepCalendar, HoldsThirtyThousandStepsAndNoMore) {
  const CalendarMoment first = Day("January", "1", "1900");
  const Dates dates = DatesOf(Range(first, Day("February", "19", "1982"), "1", "Day"));
  EXPECT_EQ(dates.size(), 30000U);
  EXPECT_EQ(dates.back(), "2/19/1982");
  EXPECT_EQ(BuildCalendar(Range(first, Day("February", "20", "1982"), "1", "Day")).Text(),
            "Too Many Steps!");
}

TEST(StepCalendar, SaysWhyThereAreNoSteps) {
  const CalendarMoment first = Day("January", "1", "2000");
  constexpr char kSingle[] = "Your Date Range Encloses Only a Single Step! Please Modify it.";
  const struct {
    CalendarMoment end;
    const char* increment;
    const char* unit;
    const char* text;
  } cases[] = {
      {first, "1", "Day", "Your Initial and Final Dates Cannot be the Same!"},
      {Day("January", "31", "2000"), "1", "Month", kSingle},
      {Day("January", "31", "2000"), "0", "Day", kSingle},
      {Day("January", "2", "2000"), "9", "Day", kSingle},
      {Day("January", "2", "soon"), "1", "Day", "\"January 2, soon\" is no date."},
      {Day("December", "31", "9999"), "5000", "Year",
       "The dates leave the calendar, which runs from the year 100 to 9999."},
      {Day("January", "2", "2000"), "1", "Fortnight", "\"Fortnight\" is no unit of time."},
  };
  for (const auto& one : cases) {
    EXPECT_EQ(BuildCalendar(Range(first, one.end, one.increment, one.unit)).Text(), one.text);
  }
}

TEST(StepCalendar, KnowsTheDaysOfMonths) {
  EXPECT_EQ(DaysOfMonth("February", "2000"), 29);
  EXPECT_EQ(DaysOfMonth("February", "1900"), 28);
  EXPECT_EQ(DaysOfMonth("December", "never"), 31);
  EXPECT_EQ(DaysOfMonth("April", "never"), std::nullopt);
  EXPECT_EQ(WholeIncrement("2.5"), "2");
  EXPECT_EQ(WholeIncrement("3.5"), "4");
  EXPECT_EQ(WholeIncrement("-7"), "-7");
  EXPECT_EQ(WholeIncrement("a few"), std::nullopt);
}

}  // namespace
}  // namespace ormel
