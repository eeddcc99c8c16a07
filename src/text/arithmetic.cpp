#include "text/arithmetic.h"

#include <algorithm>
#include <cmath>

#include "text/numbers.h"

namespace ormel {

double RoundToLength(double value, int length) {
  const std::string text = NumberText(value);
  if (static_cast<int>(text.size()) <= length || !(value > 0)) return value;
  const int exponent = static_cast<int>(std::floor(std::log(value) / std::log(10.0)));
  int places = length - exponent - 1;
  if (text.find('.') != std::string::npos) --places;
  return HalfEvenRound(value, std::max(places, 0));
}

std::string ZeroPad(double value) {
  std::string text = NumberText(std::abs(value));
  if (text.starts_with("0.")) text.erase(0, 1);
  return std::string(text.size(), '0');
}

std::string NumberInSeries(int number, int last) {
  const std::string text = std::to_string(number);
  const std::size_t length = ZeroPad(last).size();
  return std::string(length > text.size() ? length - text.size() : 0, '0') + text;
}

double Ceiling(double value) { return value == std::trunc(value) ? value : std::floor(value) + 1; }

double ArcCos(double x) {
  x = std::clamp(x, -1.0, 1.0);
  if (x == 1 || x == -1) return 0;
  return std::atan(-x / std::sqrt(-x * x + 1)) + 2 * std::atan(1.0);
}

double SpreadValue(std::span<const double> values, int i, int n) {
  const double place =
      1 + static_cast<double>(i - 1) * (static_cast<double>(values.size()) - 1) / (n - 1);
  const double floor = std::floor(place);
  const double* value = values.data() + static_cast<std::size_t>(floor) - 1;
  if (place == floor) return *value;
  return static_cast<double>(Single(*value + (place - floor) * (value[1] - *value)));
}

double Distance(double x1, double y1, double x2, double y2) {
  return std::sqrt((x1 - x2) * (x1 - x2) + (y1 - y2) * (y1 - y2));
}

}  // namespace ormel
