// Weights from comparisons in pairs: a matrix that says how much more important one factor is than
// another, and the weights that follow from it, the principal eigenvector by power iteration
// (T. L. Saaty, The Analytic Hierarchy Process, 1980). No consistency ratio is computed.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ormel {

// What the text of a cell is worth. "3/2" is the number before the stroke divided by the whole part
// behind it; when that whole part is 0, and without a stroke, it is the number that the text begins
// with.
double ComparisonValue(std::string_view text);

// Whether the text is a number or a ratio of two.
bool IsComparison(std::string_view text);

// The text of the cell that compares the same factors the other way round: "3/2" gives "2/3", 3
// gives 0.33 with two decimal places. Empty when the value is 0: there is no such text.
std::string ReciprocalText(const std::string& text, int decimalPlaces);

// The weights of `n` factors from the n times n values of their comparisons, row after row. Each is
// 100 times its entry of the eigenvector of length 1, after exactly 1000 rounds without a test of
// convergence; they do not sum to 100.
std::vector<double> DeriveWeights(const std::vector<double>& values, int n);

}  // namespace ormel
