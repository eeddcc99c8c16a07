// Numbers as map files hold them: text to double, double to text, and the rounding of computed
// cells. Nothing here depends on a locale: the decimal separator is always a point.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ormel {

// Space and tab: the blanks of tokens, header lines and numbers alike.
constexpr bool IsBlank(char c) { return c == ' ' || c == '\t'; }

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The exact powers of ten: an integer below 2^53 divided by one of these is the double nearest to
// the decimal number.
inline constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                          1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                          1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
inline constexpr int kLargestExactPower = 22;

// The number at the head of `text`: blanks, a sign, digits with a point, and an exponent (e, E, d
// or D) when it is complete. What follows is ignored; text without a number is 0. The result is the
// nearest double, never infinite and never NaN: a number too large is the largest double of its
// sign.
double TextToNumber(std::string_view text);

// Whether `text` is a number in its whole length: blanks may lead, nothing may follow.
bool IsNumeric(std::string_view text);

// Whether `text` is a number that can be cut to a whole one of 32 bits.
bool IsInteger(std::string_view text);

// `value` times 10^places to the nearest integer, ties to even, divided by 10^places. Negative
// places count as 0. A value that is too large to be scaled is returned as it stands.
double HalfEvenRound(double value, int places = 0);

// The nearest integer, ties to even, of a value whose size is below 2^51. Adding 1.5 * 2^52 leaves
// no bits for a fraction, and costs less than a call.
inline double RoundSmall(double value) {
  constexpr double kNoFraction = 6755399441055744.0;
  return (value + kNoFraction) - kNoFraction;
}

// The default text of a number: at most 15 significant digits for a double and 7 for a float, no
// trailing zeros, a point only when needed ("0.5" keeps its zero), "0" for -0. The form is "1E+15"
// or "1.5E-05" when the decimal exponent is below -4 or at least 15 (7 for a float). Infinities and
// NaN, which no map file can hold, are written as the largest double and 0.
std::string NumberText(double value);
std::string NumberText(float value);

// Room that each of the following writers may use at `out`, which is more than the text itself.
inline constexpr std::size_t kNumberTextLimit = 32;

// NumberText() at `out`, without a closing zero; returns the end of the text.
char* WriteNumber(char* out, double value);
char* WriteNumber(char* out, float value);

// Exactly WriteNumber(out, HalfEvenRound(value, places)), and several times faster.
char* WriteRounded(char* out, double value, int places);

}  // namespace ormel
