#include "text/numbers.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <system_error>

namespace ormel {
namespace {

// Integers below this have at most 15 digits, which a double holds and gives back unchanged.
constexpr double kFifteenDigits = 1e15;

constexpr int kDoubleDigits = 15;
constexpr int kFloatDigits = 7;

// Smaller numbers are written in exponent form.
constexpr int kSmallestPlainExponent = -4;

// A number at the head of a text, taken apart.
struct NumberShape {
  bool negative = false;
  std::string_view mantissa;  // digits with at most one point among them; empty: no number
  std::string_view exponent;  // with its sign, without its letter; empty when it has none
  std::size_t end = 0;        // where the number ends in the text
};

std::size_t SkipDigits(std::string_view text, std::size_t i) {
  while (i < text.size() && IsDigit(text[i])) ++i;
  return i;
}

bool IsSign(char c) { return c == '+' || c == '-'; }

bool IsExponentLetter(char c) { return c == 'e' || c == 'E' || c == 'd' || c == 'D'; }

NumberShape TakeApart(std::string_view text) {
  NumberShape shape;
  std::size_t i = 0;
  while (i < text.size() && IsBlank(text[i])) ++i;
  if (i < text.size() && IsSign(text[i])) shape.negative = text[i++] == '-';
  const std::size_t start = i;
  i = SkipDigits(text, i);
  std::size_t digits = i - start;
  if (i < text.size() && text[i] == '.') {
    const std::size_t point = i;
    i = SkipDigits(text, i + 1);
    digits += i - point - 1;
  }
  if (digits == 0) return shape;
  shape.mantissa = text.substr(start, i - start);
  shape.end = i;

  if (i == text.size() || !IsExponentLetter(text[i])) return shape;
  const std::size_t exponent = ++i;
  if (i < text.size() && IsSign(text[i])) ++i;
  const std::size_t end = SkipDigits(text, i);
  if (end == i) return shape;
  shape.exponent = text.substr(exponent, end - exponent);
  shape.end = end;
  return shape;
}

// Whether a number that is not 0 and that no double can hold is too large rather than too small.
bool IsTooLarge(const NumberShape& shape) {
  const std::size_t first = shape.mantissa.find_first_not_of("0.");
  const std::size_t point = std::min(shape.mantissa.find('.'), shape.mantissa.size());
  const bool negative = !shape.exponent.empty() && shape.exponent[0] == '-';
  // The digits behind the billionth decide no more: no text is that long.
  constexpr std::int64_t kEndless = 1'000'000'000'000;
  std::int64_t exponent = 0;
  for (const char c : shape.exponent) {
    if (IsDigit(c)) exponent = std::min(exponent * 10 + (c - '0'), kEndless);
  }
  return (negative ? -exponent : exponent) + static_cast<std::int64_t>(point) >
         static_cast<std::int64_t>(first);
}

// The exact road for any number; `shape.mantissa` is not empty.
double ConvertAny(const NumberShape& shape) {
  std::string text(shape.mantissa);
  if (!shape.exponent.empty()) (text += 'e').append(shape.exponent);
  double value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  if (result.ec == std::errc::result_out_of_range || std::isinf(value)) {
    return IsTooLarge(shape) ? std::numeric_limits<double>::max() : 0;
  }
  return value;
}

// At most 15 digits and a point are an exact integer over an exact power of ten, so that a single
// division gives the nearest double; 16 digits without a point need no division.
bool ConvertShort(std::string_view mantissa, double& value) {
  if (mantissa.size() > kDoubleDigits + 1) return false;
  std::uint64_t digits = 0;
  std::size_t decimals = 0;
  for (std::size_t i = 0; i < mantissa.size(); ++i) {
    if (mantissa[i] == '.') {
      decimals = mantissa.size() - i - 1;
    } else {
      digits = digits * 10 + static_cast<std::uint64_t>(mantissa[i] - '0');
    }
  }
  value = static_cast<double>(digits) / kPowersOfTen[decimals];
  return true;
}

double PowerOfTen(int places) {
  return places <= kLargestExactPower ? kPowersOfTen[places] : std::pow(10.0, places);
}

char* Append(char* out, std::string_view text) {
  std::memcpy(out, text.data(), text.size());
  return out + text.size();
}

char* AppendZeros(char* out, int count) {
  std::memset(out, '0', static_cast<std::size_t>(count));
  return out + count;
}

// E and a signed exponent of two digits at least.
char* AppendExponent(char* out, int exponent) {
  *out++ = 'E';
  *out++ = exponent < 0 ? '-' : '+';
  const int size = std::abs(exponent);
  if (size < 10) *out++ = '0';
  return std::to_chars(out, out + 4, size).ptr;
}

// The number 0.`digits` times 10^(exponent + 1); `digits` neither begins nor ends with a zero.
char* LayOut(char* out, std::string_view digits, int exponent, int significant) {
  const int count = static_cast<int>(digits.size());
  if (exponent < kSmallestPlainExponent || exponent >= significant) {
    *out++ = digits[0];
    if (count > 1) out = Append((*out++ = '.', out), digits.substr(1));
    return AppendExponent(out, exponent);
  }
  if (exponent < 0) {
    out = AppendZeros(Append(out, "0."), -exponent - 1);
    return Append(out, digits);
  }
  if (exponent >= count - 1) return AppendZeros(Append(out, digits), exponent - count + 1);
  const auto whole = static_cast<std::size_t>(exponent) + 1;
  return Append(Append(Append(out, digits.substr(0, whole)), "."), digits.substr(whole));
}

// The road for any number: rounded to `significant` digits in exponent form, then laid out.
char* WriteAny(char* out, double value, int significant, double largest) {
  if (std::isnan(value)) value = 0;
  value = std::clamp(value, -largest, largest);
  if (value == 0) return Append(out, "0");
  if (value < 0) *out++ = '-';
  char text[kNumberTextLimit];
  const auto result = std::to_chars(text, text + sizeof text, std::abs(value),
                                    std::chars_format::scientific, significant - 1);
  const std::string_view all(text, static_cast<std::size_t>(result.ptr - text));
  const std::size_t letter = all.find('e');
  int exponent = 0;
  const char* from = all.data() + letter + (all[letter + 1] == '+' ? 2 : 1);
  std::from_chars(from, result.ptr, exponent);
  text[1] = text[0];  // over the point: the digits now stand together
  const std::string_view digits = all.substr(1, letter - 1);
  return LayOut(out, digits.substr(0, digits.find_last_not_of('0') + 1), exponent, significant);
}

// The eight digits of a number below 10^8, one a byte, the first in the lowest byte. Quotients are
// taken in all lanes of the word at once, by multiplication.
std::uint64_t EightDigits(std::uint32_t number) {
  const std::uint64_t fours = (number / 10000) | static_cast<std::uint64_t>(number % 10000) << 32;
  const std::uint64_t hundreds = ((fours * 10486) >> 20) & 0x0000007F0000007F;
  const std::uint64_t twos = hundreds | (fours - 100 * hundreds) << 16;
  const std::uint64_t tens = ((twos * 103) >> 10) & 0x000F000F000F000F;
  return tens | (twos - 10 * tens) << 8;
}

void StoreEight(char* out, std::uint64_t bytes) { std::memcpy(out, &bytes, sizeof bytes); }

// number / 10^places for 0 < number < 10^8 and places up to 7, without a branch: a map's cells vary
// so much in length that a processor cannot foresee where their digits end.
char* WriteShortScaled(char* out, std::uint32_t number, int places) {
  constexpr std::uint64_t kZeros = 0x3030303030303030;
  const std::uint64_t digits = EightDigits(number);
  const int before = 8 - places;
  const int leading = std::min(std::countr_zero(digits) / 8, before - 1);
  const int decimals = places - std::min(std::countl_zero(digits) / 8, places);
  const std::uint64_t text = digits | kZeros;
  StoreEight(out, text >> (8 * leading));  // NOLINT: by at most 7 bytes, `number` is not 0
  out += before - leading;
  *out = '.';
  StoreEight(out + 1, text >> (8 * (before - 1)) >> 8);
  return out + decimals + (decimals > 0);
}

// number / 10^places for 0 < number < 10^15 and places up to 22, where no exponent is needed.
char* WriteLongScaled(char* out, std::uint64_t number, int places) {
  char digits[kNumberTextLimit];
  const char* end = std::to_chars(digits, digits + sizeof digits, number).ptr;
  const int exponent = static_cast<int>(end - digits) - 1 - places;
  while (end[-1] == '0') --end;
  return LayOut(out, {digits, static_cast<std::size_t>(end - digits)}, exponent, kDoubleDigits);
}

// scaled / 10^places for an integer `scaled`. A decimal number of at most 15 digits and the double
// nearest to it have the same text, so that its digits can be written as they stand. Null when the
// number has more digits, is written with an exponent, or is NaN.
char* WriteScaled(char* out, double scaled, int places) {
  const double size = std::abs(scaled);
  if (!(size < kFifteenDigits)) return nullptr;
  if (size < PowerOfTen(std::max(places + kSmallestPlainExponent, 0))) {
    return size == 0 ? Append(out, "0") : nullptr;
  }
  *out = '-';
  out += scaled < 0;
  if constexpr (std::endian::native == std::endian::little) {
    if (size < 1e8 && places < 8) {
      return WriteShortScaled(out, static_cast<std::uint32_t>(size), places);
    }
  }
  return WriteLongScaled(out, static_cast<std::uint64_t>(size), places);
}

template <class T>
std::string TextOf(T value) {
  char text[kNumberTextLimit];
  return std::string(text, WriteNumber(text, value));
}

}  // namespace

double TextToNumber(std::string_view text) {
  const NumberShape shape = TakeApart(text);
  if (shape.mantissa.empty()) return 0;
  double value = 0;
  if (!shape.exponent.empty() || !ConvertShort(shape.mantissa, value)) value = ConvertAny(shape);
  return shape.negative ? -value : value;
}

bool IsNumeric(std::string_view text) {
  const NumberShape shape = TakeApart(text);
  return !shape.mantissa.empty() && shape.end == text.size();
}

bool IsInteger(std::string_view text) {
  const double whole = IsNumeric(text) ? std::trunc(TextToNumber(text)) : HUGE_VAL;
  return whole >= std::numeric_limits<std::int32_t>::min() &&
         whole <= std::numeric_limits<std::int32_t>::max();
}

double HalfEvenRound(double value, int places) {
  const double power = PowerOfTen(std::max(places, 0));
  const double scaled = value * power;
  return std::isfinite(scaled) && std::isfinite(power) ? std::nearbyint(scaled) / power : value;
}

std::string NumberText(double value) { return TextOf(value); }
std::string NumberText(float value) { return TextOf(value); }

char* WriteNumber(char* out, double value) {
  // Nearly all numbers of maps are whole in millionths.
  constexpr int kPlaces = 6;
  const double scaled = value * kPowersOfTen[kPlaces];
  if (std::abs(scaled) < kFifteenDigits) {
    const double whole = RoundSmall(scaled);
    if (whole / kPowersOfTen[kPlaces] == value) {
      if (char* end = WriteScaled(out, whole, kPlaces)) return end;
    }
  }
  return WriteAny(out, value, kDoubleDigits, std::numeric_limits<double>::max());
}

char* WriteNumber(char* out, float value) {
  return WriteAny(out, static_cast<double>(value), kFloatDigits,
                  static_cast<double>(std::numeric_limits<float>::max()));
}

char* WriteRounded(char* out, double value, int places) {
  if (places >= 0 && places <= kLargestExactPower) {
    const double scaled = value * kPowersOfTen[places];
    if (std::abs(scaled) < kFifteenDigits) {
      if (char* end = WriteScaled(out, RoundSmall(scaled), places)) return end;
    }
  }
  return WriteNumber(out, HalfEvenRound(value, places));
}

}  // namespace ormel
