// The axes of charts: the range of values along one, the round numbers or dates that are marked,
// and where a value lies. Everything here takes any doubles, and a range that cannot be drawn (NaN,
// a single value, the ends the wrong way round) is made one that can.
//
// Dates are days since 30 December 1899, the time of day as the fraction. How numbers and dates are
// written the owner of the axis says.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ormel {

struct Range {
  double low = 0;
  double high = 1;
};

// A range in order, finite and not too narrow to be told apart: what is not has been mended. A
// single value is moved apart to both sides; one that holds no number becomes 0 to 1.
Range Drawable(Range range);

using NumberWriter = std::function<std::string(double number)>;
// Writes a date in a pattern of yyyy, mmm (Jan), d, hh, nn and ss.
using DateWriter = std::function<std::string(double date, std::string_view pattern)>;

struct AxisMark {
  double value = 0;
  std::string text{};
  std::string under{};  // of dates: the larger unit, where it begins: the year under January
};

struct Axis {
  std::string title{};
  std::optional<Range> range{};   // none: that of the data
  std::vector<AxisMark> marks{};  // empty: round ones are made
  NumberWriter numberText{};      // of marks and read-outs; none: they have no texts
  DateWriter dateText{};          // makes it an axis of dates
};

// A value in full, for read-outs: "12.5", "Mar 3, 2021", "Mar 3, 2021 14:30".
std::string ReadOutText(const Axis& axis, double value);

// Where values lie between two places in units of a picture; the low end of the range is at `from`.
class AxisScale {
 public:
  AxisScale() = default;
  AxisScale(Range range, double from, double to);

  const Range& Values() const { return range_; }
  // Beyond the ends as well. NaN of NaN.
  double At(double value) const;
  // Always a number within twice the range.
  double ValueAt(double place) const;

 private:
  Range range_;
  double from_ = 0;
  double to_ = 1;
};

// The step of round marks: 1, 2 or 5 times a power of ten, the smallest of which `most` reach over
// the range. Needs: range > 0 and finite.
double RoundStep(double range, int most = 5);

// The multiples of RoundStep() from `low` to `high`, ascending: about `most` of them. None when the
// range is empty or infinite.
std::vector<double> RoundMarks(double low, double high, int most = 5);

// Round dates in the range, at most `most` of them when a step of the table is long enough: years,
// quarters, months, weeks, days, hours, minutes and seconds. What lies outside the years 100 to
// 9999 has no marks, and days before 30 December 1899 none within the day.
std::vector<AxisMark> DateMarks(Range range, int most, const DateWriter& text);

// How the texts of marks stand at an axis.
struct MarkTexts {
  double height = 9;
  bool sideBySide = true;  // at a level axis; else above each other
  // Texts at a level axis are moved to stay between these places.
  double least = 0;
  double most = 0;
};

// Where the text of a mark at a level axis begins.
double MarkTextLeft(const std::string& text, double place, const MarkTexts& texts);

// The marks of an axis: its own, thinned out evenly, or as many round ones as have room. The texts
// of those that are left do not overlap, and no two neighbours have the same.
std::vector<AxisMark> MarksOf(const Axis& axis, const AxisScale& scale, const MarkTexts& texts);

// The length of the longest text.
double WidestText(const std::vector<AxisMark>& marks, double height);

}  // namespace ormel
