#include "charts/axis.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "charts/ink.h"
#include "text/dates.h"
#include "text/numbers.h"

namespace ormel {
namespace {

constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
const double kNaN = std::numeric_limits<double>::quiet_NaN();

double Day(const char* text) { return *ReadDate(text); }

// "Jul/2019 Jan/2020 Jul": the texts of marks, with what stands under them behind a stroke.
std::string Texts(const std::vector<AxisMark>& marks) {
  std::string all;
  for (const AxisMark& mark : marks) {
    all += (all.empty() ? "" : " ") + mark.text + (mark.under.empty() ? "" : "/" + mark.under);
  }
  return all;
}

TEST(RoundMarks, AreRoundNumbersWithinTheLimits) {
  using Marks = std::vector<double>;
  EXPECT_EQ(RoundMarks(0, 255), (Marks{0, 100, 200}));
  EXPECT_EQ(RoundMarks(0, 255, 10), (Marks{0, 50, 100, 150, 200, 250}));
  EXPECT_EQ(RoundMarks(0, 1), (Marks{0, 0.2, 0.4, 0.6, 0.8, 1}));
  EXPECT_EQ(RoundMarks(0, 0.3, 3), (Marks{0, 0.1, 0.2, 0.3}));
  EXPECT_EQ(RoundMarks(-7, 18), (Marks{-5, 0, 5, 10, 15}));
  EXPECT_EQ(RoundMarks(1e9, 1e9 + 0.5),
            (Marks{1e9, 1e9 + 0.1, 1e9 + 0.2, 1e9 + 0.3, 1e9 + 0.4, 1e9 + 0.5}));
  EXPECT_EQ(RoundMarks(3, 3), Marks());
  EXPECT_EQ(RoundMarks(0, kNaN), Marks());
  EXPECT_EQ(RoundMarks(-1.7e308, 1.7e308), Marks());
  EXPECT_EQ(RoundMarks(0, 5e-324), Marks());
}

TEST(DateMarks, StandAtRoundDatesOfTheCalendar) {
  const struct {
    const char* from;
    const char* to;
    int most;
    const char* texts;
  } cases[] = {
      {"3/14/2019", "3/14/2022", 9, "Jul/2019 Jan/2020 Jul Jan/2021 Jul Jan/2022"},
      {"3/14/2019", "3/14/2020", 5, "Apr/2019 Jul Oct Jan/2020"},
      {"11/30/1999", "4/1/2000", 6, "Dec/1999 Jan/2000 Feb Mar Apr"},
      {"3/14/2019 15:20", "3/16/2019 15:20", 9,
       "18:00/Mar 14, 2019 00:00/Mar 15, 2019 06:00 12:00 18:00 00:00/Mar 16, 2019 06:00 12:00"},
      {"2/20/2024", "3/20/2024", 5, "Feb 26/2024 Mar 4 Mar 11 Mar 18"},  // Mondays
      {"2/27/2024", "3/2/2024", 5, "Feb 27/2024 Feb 28 Feb 29 Mar 1 Mar 2"},
      {"6/1/2021 23:58", "6/2/2021 0:03", 6,
       "23:58/Jun 1, 2021 23:59 00:00/Jun 2, 2021 00:01 00:02 00:03"},
      {"6/1/2021 10:00:01", "6/1/2021 10:00:21", 4,
       "10:00:05/Jun 1, 2021 10:00:10 10:00:15 10:00:20"},
      {"5/5/1848", "5/5/1912", 4, "1860 1880 1900"},
      {"5/5/1890", "5/8/1890", 9, "May 5/1890 May 6 May 7 May 8"},  // no times before day 0
      {"1/1/100", "12/31/9999", 2, "5000"},
  };
  for (const auto& test : cases) {
    EXPECT_EQ(Texts(DateMarks({Day(test.from), Day(test.to)}, test.most, FormatDate)), test.texts)
        << test.from;
  }
  // 1 January 2000 is day 36526; February has 31 days before it, March 29 more.
  const auto marks = DateMarks({36526, 36590}, 3, FormatDate);
  ASSERT_EQ(marks.size(), 3U);
  EXPECT_EQ(marks[0].value, 36526);
  EXPECT_EQ(marks[1].value, 36526 + 31);
  EXPECT_EQ(marks[2].value, 36526 + 31 + 29);
  EXPECT_EQ(Texts(DateMarks({-kLargest, kLargest}, 2, FormatDate)), "5000");
  EXPECT_TRUE(DateMarks({1e300, kLargest}, 5, FormatDate).empty());
}

TEST(AxisScale, LeadsFromValuesToPlacesAndBack) {
  const struct {
    Range range;
    double low, high;  // as they are drawn
  } cases[] = {
      {{0, 255}, 0, 255},
      {{5, -5}, -5, 5},
      {{7, 7}, 6.5, 7.5},
      {{0, 1e-300}, 0, 1e-300},
      {{1e20, 1e20}, 1e20 - 1e10, 1e20 + 1e10},
      {{kNaN, 4}, 0, 1},
      {{-kInfinity, kInfinity}, -kLargest, kLargest},
      {{kLargest, kInfinity}, kLargest - kLargest * 1e-10, kLargest},
  };
  for (const auto& test : cases) {
    const AxisScale scale(test.range, 390, 10);  // as upright axes run
    EXPECT_EQ(scale.Values().low, test.low);
    EXPECT_EQ(scale.Values().high, test.high);
    EXPECT_EQ(scale.At(test.low), 390);
    EXPECT_EQ(scale.At(test.high), 10);
    EXPECT_NEAR(scale.At(test.low / 2 + test.high / 2), 200, 1e-3);
    for (const double place : {390.0, 300.5, 10.0}) {
      EXPECT_NEAR(scale.At(scale.ValueAt(place)), place, 1e-3) << test.high;
    }
    for (const double beyond : {-1e9, 1e9, kNaN}) {
      EXPECT_TRUE(std::isfinite(scale.ValueAt(beyond))) << test.high;
    }
  }
}

Axis NumberAxisFor(int places) {
  Axis axis;
  axis.numberText = [places](double value) { return NumberText(HalfEvenRound(value, places)); };
  return axis;
}

// Where the text of a mark at a level axis stands.
std::pair<double, double> Extent(const std::string& text, double value, const AxisScale& scale,
                                 const MarkTexts& texts) {
  const double left = MarkTextLeft(text, scale.At(value), texts);
  return {left, left + Ink::TextWidth(text, texts.height)};
}

TEST(MarksOf, TextsNeverOverlapAndStayInThePicture) {
  Axis dates;
  dates.dateText = FormatDate;
  Axis own = NumberAxisFor(3);
  for (int i = 0; i < 400; ++i) own.marks.push_back({i * 10.0, "Class " + std::to_string(i), {}});
  std::mt19937 random(7);
  std::uniform_real_distribution<double> exponent(-3, 9);
  for (int i = 0; i < 400; ++i) {
    const double low = std::pow(10, exponent(random)) - 1000;
    const double wide = std::pow(10, exponent(random));
    const Range range = i % 4 == 0 ? Range{0, std::pow(10, i % 9)} : Range{low, low + wide};
    const double length = 20 + 3 * i;
    const AxisScale scale(range, 50, 50 + length);
    const MarkTexts texts{9, true, 2, length + 70};
    for (const Axis& axis : {NumberAxisFor(15), dates, own}) {
      double last = 2;
      double lastUnder = 2;
      for (const AxisMark& mark : MarksOf(axis, scale, texts)) {
        const auto [left, right] = Extent(mark.text, mark.value, scale, texts);
        EXPECT_GE(left, last) << mark.text << " at " << low;
        EXPECT_LE(right, std::max(length + 70, last + right - left));
        last = right + 5;
        if (mark.under.empty()) continue;
        const auto [begin, end] = Extent(mark.under, mark.value, scale, texts);
        EXPECT_GE(begin, lastUnder) << mark.under << " at " << low;
        lastUnder = end + 5;
      }
    }
  }
}

TEST(MarksOf, NeighboursDifferAndOwnMarksAreThinnedEvenly) {
  const AxisScale three({0, 3}, 0, 600);
  EXPECT_EQ(Texts(MarksOf(NumberAxisFor(0), three, {9, true, 0, 600})), "0 1 2 3");
  EXPECT_EQ(Texts(MarksOf(NumberAxisFor(0), AxisScale({0, 3}, 600, 0), {9, false})), "0 1 2 3");
  Axis values;
  for (const int value : {0, 51, 102, 153, 204, 255}) {
    values.marks.push_back({value / 255.0, std::to_string(value), {}});
  }
  EXPECT_EQ(Texts(MarksOf(values, AxisScale({0, 1}, 60, 622), {9, true, 2, 638})),
            "0 51 102 153 204 255");
  EXPECT_EQ(Texts(MarksOf(values, AxisScale({0, 1}, 60, 170), {9, true, 2, 200})), "0 102 204");
  // The day of the first mark gives way to a whole day.
  Axis dates;
  dates.dateText = FormatDate;
  const AxisScale days({Day("3/14/2019 17:00"), Day("3/15/2019 17:00")}, 0, 260);
  EXPECT_EQ(Texts(MarksOf(dates, days, {9, true, -50, 310})),
            "18:00 00:00/Mar 15, 2019 06:00 12:00");
}

TEST(ReadOutText, TellsValuesInFull) {
  Axis dates;
  dates.dateText = FormatDate;
  EXPECT_EQ(ReadOutText(dates, Day("3/3/2021")), "Mar 3, 2021");
  EXPECT_EQ(ReadOutText(dates, Day("3/3/2021 14:30")), "Mar 3, 2021 14:30");
  EXPECT_EQ(ReadOutText(NumberAxisFor(2), 1.005), "1");
  EXPECT_EQ(ReadOutText({}, 5), "");
}

}  // namespace
}  // namespace ormel
