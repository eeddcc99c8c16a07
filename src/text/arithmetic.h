// Small arithmetic that several tools share.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <span>
#include <string>

namespace ormel {

// Whether a flag of 16 bits, 0 or -1, is false.
constexpr bool NotFlag(std::int16_t flag) { return static_cast<std::uint16_t>(flag) < 65535; }

// `value` rounded so that its text has about `length` letters. A value whose text is no longer
// stays as it is, and so does one that is not above 0, which has no magnitude to start from.
double RoundToLength(double value, int length);

// As many zeros as the number has digits, a point among them: the pattern for the numbers up to it.
std::string ZeroPad(double value);

// The number with zeros in front, as long as `last` is: a series of files up to `last` sorts by
// name.
std::string NumberInSeries(int number, int last);

// The value when it is whole, otherwise the next whole number above its floor.
double Ceiling(double value);

// The arc cosine of x, which is limited to -1 and 1 first. Of -1 it is 0 and not pi: tools that
// build on it rely on that. Slope and aspect have a routine of their own.
double ArcCos(double x);

// The value in single precision; one that is too large to be told there becomes the largest.
inline float Single(double value) {
  constexpr double kLargest = std::numeric_limits<float>::max();
  return static_cast<float>(std::clamp(value, -kLargest, kLargest));
}

// Place `i` (from 1) of `n` (at least 2) when the values, at least one, are spread evenly over all
// places. Between two values it lies on their straight line, in single precision, in which such
// tables have always been kept.
double SpreadValue(std::span<const double> values, int i, int n);

double Distance(double x1, double y1, double x2, double y2);

}  // namespace ormel
