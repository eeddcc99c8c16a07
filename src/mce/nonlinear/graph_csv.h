// Control points from and to comma-separated files.
#pragma once

#include <filesystem>
#include <span>
#include <vector>

#include "base/outcome.h"
#include "mce/nonlinear/weight_graph.h"

namespace ormel {

// All numbers of the file in order. Items are separated by commas and line ends; those that are no
// number in their whole length are passed over. Double quotes around an item do not count.
[[nodiscard]] Outcome<std::vector<double>> ReadCsvNumbers(const std::filesystem::path& path);

// How values become points when there are more or fewer of them.
enum class CsvFill {
  kOneToOne,     // as many points as there are values for; the others stay
  kInterpolate,  // the values spread over all points
};

// Fills the points from at least one value. The limits of the graph become the largest and the
// smallest of the first value and those filled in, rounded to 3 decimals; samples and type stay.
void FillPoints(WeightGraph& graph, std::span<const double> values, CsvFill fill);

// The points in use, on one line.
[[nodiscard]] Outcome<> WriteCsvPoints(const std::filesystem::path& path, const WeightGraph& graph);

}  // namespace ormel
