#include "text/dates.h"

#include <gtest/gtest.h>

#include <random>

#include "text/step_dates.h"

namespace ormel {
namespace {

// The numbers of days are those of a spreadsheet's date functions from March 1900 on, and of
// Python's datetime everywhere. 1900 had no 29 February.
TEST(Dates, ReadEveryForm) {
  const std::pair<const char*, double> days[] = {
      {"12/30/1899", 0},       {"1/1/1900", 2},        {"2/28/1900", 60},
      {"3/1/1900", 61},        {"2000-02-29", 36585},  {"3/1/2000", 36586},
      {"2/28/2100", 73109},    {"3/1/2100", 73110},    {"1/1/100", -657434},
      {"12/31/9999", 2958465}, {"1/2/29", 47120},      {"1/2/30", 10960},
      {"jan 1 2000", 36526},   {"Jan/01/2000", 36526}, {"January 1, 2000", 36526},
      {"12:00:00 PM", 0.5},    {"12:00 AM", 0},        {"6:00", 0.25},
      {"  6:00 pm ", 0.75},    {"6:00:00P", 0.75}};
  for (const auto& [text, date] : days) EXPECT_DOUBLE_EQ(ReadDate(text).value_or(-1), date) << text;
  EXPECT_DOUBLE_EQ(ReadDate("18:00 1/1/2000").value_or(0), 36526.75);
  EXPECT_DOUBLE_EQ(ReadDate("1/1/2000 6:00:00 a").value_or(0), 36526.25);
  EXPECT_DOUBLE_EQ(ReadDate("January 1, 2000 13:30").value_or(0), 36526.5625);
  EXPECT_DOUBLE_EQ(ReadDate("12/29/1899 6:00").value_or(0), -1.25);
}

TEST(Dates, WhatIsNoDateIsNone) {
  for (const char* text :
       {"", " ", "-1", "1/2", "soon", "24:00", "12:60", "36526", "1:00.5", "2000-1", "x 1:00",
        "0/1/2000", "1/0/2000", "99-01-01", "1:2:3:4", "2/29/1900", "2/29/2100", "4/31/2001",
        "13/1/2000", "1/1/99999", "1/1/50000", "13:00 PM", "1/-1/2000", "+1/1/2000", "1:00 2:00",
        // Words of five digits are none of a date, even where their number would be.
        "00001/1/2000", "1/00001/2000", "1/1/02000", "January 1 02000", "02000-01-31"}) {
    EXPECT_FALSE(IsDate(text)) << text;
  }
  for (const char* text :
       {"1:00 PM AM", "January 2000", "1/1/2000 1:00 x", "January 1:00 1, 2000"}) {
    EXPECT_FALSE(IsDate(text)) << text;
  }
}

TEST(Dates, AreWrittenShort) {
  std::vector<std::string> texts;
  for (const double date : {0.0, 36526.0, 36526.5, 36526.0 + 1 / 86400.0, 36526.999999, -1.25,
                            -0.999999, -657434.0, 1e300}) {
    texts.push_back(DateText(date));
  }
  EXPECT_EQ(texts,
            (std::vector<std::string>{"12/30/1899", "1/1/2000", "1/1/2000 12:00:00 PM",
                                      "1/1/2000 12:00:01 AM", "1/2/2000", "12/29/1899 6:00:00 AM",
                                      "12/31/1899", "1/1/100", "12/31/9999 11:59:59 PM"}));
  EXPECT_EQ(FormatDate(36526.5625, "hh:nn:ss mmm/dd"), "13:30:00 Jan/01");
  EXPECT_EQ(FormatDate(36526.0, "mmmm d, yyyy; m-dd-yy h.n.s"), "January 1, 2000; 1-01-00 0.0.0");
}

TEST(Dates, AddingEndsAtTheMonthsLastDay) {
  const std::tuple<const char*, std::int64_t, const char*, const char*> cases[] = {
      {"m", 1, "1/31/2000", "2/29/2000"},
      {"m", 1, "1/31/2001", "2/28/2001"},
      {"m", -11, "1/31/2001", "2/29/2000"},
      {"m", 13, "12/31/1899", "1/31/1901"},
      {"yyyy", 1, "2/29/2000", "2/28/2001"},
      {"yyyy", 4, "2/29/2000 6:00", "2/29/2004 6:00:00 AM"},
      {"yyyy", -100, "2/29/2000", "2/28/1900"},
      {"ww", 2, "12/25/1999", "1/8/2000"},
      {"d", -1, "3/1/1900", "2/28/1900"},
      {"d", -2, "1/1/1900", "12/30/1899"},
      {"h", 25, "12/31/1999 11:00 PM", "1/2/2000"},
      {"n", -1, "1/1/2000", "12/31/1999 11:59:00 PM"},
      {"s", 86401, "12/28/1899", "12/29/1899 12:00:01 AM"}};
  for (const auto& [unit, count, from, to] : cases) {
    const auto date = DateAdd(*DateUnitOf(unit), count, *ReadDate(from));
    ASSERT_TRUE(date);
    EXPECT_EQ(DateText(*date), to) << from;
  }
  EXPECT_FALSE(DateAdd(DateUnit::kYear, 8000, 36526));
  EXPECT_FALSE(DateAdd(DateUnit::kSecond, -INT64_MAX, 36526));
  EXPECT_FALSE(DateAdd(DateUnit::kDay, 1, 2958465));
}

TEST(Dates, DifferencesCountTheBoundariesCrossed) {
  const std::tuple<const char*, const char*, const char*, std::int64_t> cases[] = {
      {"yyyy", "12/31/1999", "1/1/2000", 1},
      {"yyyy", "1/1/1999", "12/31/1999", 0},
      {"m", "1/31/2000", "2/1/2000", 1},
      {"m", "2/1/2000", "12/31/1999", -2},
      {"ww", "1/1/2000", "1/2/2000", 1},  // a Saturday and a Sunday
      {"ww", "1/2/2000", "1/8/2000", 0},
      {"ww", "12/29/1899", "12/31/1899", 1},
      {"d", "1/1/2000 11:59 PM", "1/2/2000", 1},
      {"d", "12/29/1899 1:00", "12/30/1899 1:00", 1},
      {"h", "1/1/2000 1:59", "1/1/2000 2:00", 1},
      {"h", "1/1/2000 2:00", "1/1/2000 2:59", 0},
      {"n", "1/1/2000 1:00:59", "1/1/2000 1:01", 1},
      {"s", "1/1/2000", "1/2/2000", 86400},
      {"s", "12/29/1899 6:00", "12/30/1899", 64800}};
  for (const auto& [unit, from, to, count] : cases) {
    EXPECT_EQ(DateDifference(*DateUnitOf(unit), *ReadDate(from), *ReadDate(to)), count) << from;
  }
  EXPECT_FALSE(DateUnitOf("q"));
}

TEST(Dates, PartsRunOver) {
  EXPECT_EQ(DateText(*DateOf({2000, 14, 0, 24, 0, 0})), "2/1/2001");
  EXPECT_EQ(DateText(*DateOf({1999, 0, 31, -1, 0, 0})), "12/30/1998 11:00:00 PM");
  EXPECT_FALSE(DateOf({10000, 1, 1, 0, 0, 0}) || DateOf({99, 12, 31, 0, 0, 0}));
  EXPECT_TRUE(DateOf({10000, 1, 0, 0, 0, 0}));
}

TEST(Dates, EveryDayComesBackFromItsText) {
  for (int day = -657434; day <= 2958465; day += 997) {
    ASSERT_EQ(ReadDate(DateText(day)), day);
    const double evening = day < 0 ? day - 0.75 : day + 0.75;
    ASSERT_EQ(ReadDate(DateText(evening)), evening);
  }
}

TEST(Dates, AnyBytesAreSomeDateOrNone) {
  std::mt19937 random(1);
  for (int round = 0; round < 20000; ++round) {
    std::string text = round % 2 == 0 ? "January 31, 2000 1:45:00 PM" : "hh:1/31/2000 13:45.5";
    text.resize(random() % (text.size() + 1));
    for (unsigned i = random() % 4; i > 0 && !text.empty(); --i) {
      text[random() % text.size()] = "0123456789/-:,. APM\xFF"[random() % 20];
    }
    if (const auto date = ReadDate(text)) {
      EXPECT_EQ(ReadDate(DateText(*date)), date) << text;
    }
    for (int code = -1; code <= 4; ++code) {
      FormatStepDate(NormaliseDateText(text, IgnoredParts{code}), IgnoredParts{code});
    }
  }
}

TEST(StepDates, IgnoredPartsReadAsDatesOf2000) {
  constexpr char kFix[] = "2/29/2004 1:45:07.250 PM";
  const std::tuple<IgnoredParts, const char*, const char*> cases[] = {
      {IgnoredParts::kYear, "13:45:07 Feb/29/2000", "Feb/29 13:45:07"},
      {IgnoredParts::kMonth, "13:45:07 01/29/2000", "29 13:45:07"},
      {IgnoredParts::kDay, "13:45:07", "13:45:07"},
      {IgnoredParts::kHour, "00:45:07", "45:07"},
      {IgnoredParts::kMinute, "00:00:07", "07"}};
  for (const auto& [ignored, comparable, shown] : cases) {
    EXPECT_EQ(NormaliseDateText(kFix, ignored), comparable);
    EXPECT_TRUE(IsDate(comparable));
    EXPECT_EQ(FormatStepDate("2/29/2004 1:45:07 PM", ignored), shown);
  }
  EXPECT_EQ(NormaliseDateText(kFix, IgnoredParts::kNone), "2/29/2004 1:45:07 P");
  EXPECT_EQ(FormatStepDate("no date", IgnoredParts::kYear), "no date");
}

TEST(StepDates, TheStepIsTheLastThatHasBegun) {
  const std::vector<std::string> names = {"wet", "dry"};
  EXPECT_EQ(FindStepIndex("dry", names), 1);
  EXPECT_EQ(FindStepIndex("Dry", names), -1);
  const std::vector<double> months = {36526, 36557, 36586, 36617};  // January to April 2000
  const std::pair<int, std::vector<const char*>> cases[] = {
      {-1, {"12/31/1999 11:59:59 PM", "no date"}},
      {0, {"1/1/2000", "1/31/2000 23:59:59"}},
      {1, {"2/1/2000"}},
      {2, {"3/1/2000", "3/31/2000 12:00"}},
      {3, {"4/1/2000", "1/1/2010"}}};
  for (const auto& [step, texts] : cases) {
    for (const char* text : texts) {
      EXPECT_EQ(FindStepIndex(text, months), step) << text;
      EXPECT_EQ(FindStepIndex(text, months, StepEstimate{36526, DateUnit::kMonth, 1}), step);
      EXPECT_EQ(FindStepIndex(text, months, StepEstimate{36526, DateUnit::kDay, 31}), step);
    }
  }
  // A guess that reaches the last step too early is not taken back.
  EXPECT_EQ(FindStepIndex("3/31/2000", months, StepEstimate{36526, DateUnit::kDay, 20}), -1);
  EXPECT_EQ(FindStepIndex("1/1/2000", std::vector<double>{}), -1);
}

}  // namespace
}  // namespace ormel
