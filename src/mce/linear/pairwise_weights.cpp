#include "mce/linear/pairwise_weights.h"

#include <cmath>

#include "text/numbers.h"

namespace ormel {
namespace {

constexpr int kRounds = 1000;

}  // namespace

double ComparisonValue(std::string_view text) {
  const std::size_t stroke = text.find('/');
  if (stroke == std::string_view::npos) return TextToNumber(text);
  const double divisor = std::trunc(TextToNumber(text.substr(stroke + 1)));
  return divisor == 0 ? TextToNumber(text) : TextToNumber(text.substr(0, stroke)) / divisor;
}

bool IsComparison(std::string_view text) {
  const std::size_t stroke = text.find('/');
  if (stroke == std::string_view::npos) return IsNumeric(text);
  return IsNumeric(text.substr(0, stroke)) && IsNumeric(text.substr(stroke + 1));
}

std::string ReciprocalText(const std::string& text, int decimalPlaces) {
  const std::size_t stroke = text.find('/');
  if (stroke != std::string::npos) return text.substr(stroke + 1) + '/' + text.substr(0, stroke);
  const double value = ComparisonValue(text);
  return value == 0 ? "" : NumberText(HalfEvenRound(1 / value, decimalPlaces));
}

std::vector<double> DeriveWeights(const std::vector<double>& values, int n) {
  const auto size = static_cast<std::size_t>(n);
  std::vector<double> v(size, 1.0);
  std::vector<double> y(size);
  for (int round = 0; round < kRounds; ++round) {
    double squares = 0;
    for (std::size_t i = 0; i < size; ++i) {
      y[i] = 0;
      for (std::size_t j = 0; j < size; ++j) y[i] += values[i * size + j] * v[j];
      squares += y[i] * y[i];
    }
    const double norm = std::sqrt(squares);
    if (norm == 0 || !std::isfinite(norm)) break;  // a matrix without a direction
    for (std::size_t i = 0; i < size; ++i) v[i] = 1 / norm * y[i];
  }
  for (double& weight : v) weight *= 100;
  return v;
}

}  // namespace ormel
