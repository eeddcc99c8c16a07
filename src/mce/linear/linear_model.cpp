#include "mce/linear/linear_model.h"

#include <cstddef>

namespace ormel {
namespace {

// How one factor's row goes into the sums. The extremes are those of the sums in double precision,
// before they are stored. They stand in several lanes, because a single one would make each cell
// wait for the cell before it.
struct LaneExtremes {
  static constexpr std::size_t kLanes = 4;
  double largest[kLanes];
  double smallest[kLanes];

  LaneExtremes() {
    std::fill_n(largest, kLanes, -std::numeric_limits<double>::infinity());
    std::fill_n(smallest, kLanes, std::numeric_limits<double>::infinity());
  }
  Extremes All() const {
    return {*std::max_element(largest, largest + kLanes),
            *std::min_element(smallest, smallest + kLanes)};
  }
};

template <bool HighValuesGood>
inline void AddCell(double value, std::uint8_t allowed, double weight, float& sum, double& largest,
                    double& smallest) {
  const double next =
      static_cast<double>(sum) + weight * (HighValuesGood ? value : kTopValue - value);
  const bool counts = allowed != 0;
  sum = counts ? static_cast<float>(next) : sum;
  largest = counts && next > largest ? next : largest;
  smallest = counts && next < smallest ? next : smallest;
}

template <bool HighValuesGood>
void AddCells(const RowToAdd& row, double weight, LaneExtremes& extremes) {
  const auto [values, nodata, mask, sums] = row;
  const std::size_t count = values.size();
  std::size_t i = 0;
  for (; i + LaneExtremes::kLanes <= count; i += LaneExtremes::kLanes) {
    for (std::size_t lane = 0; lane < LaneExtremes::kLanes; ++lane) {
      AddCell<HighValuesGood>(values[i + lane], mask[i + lane], weight, sums[i + lane],
                              extremes.largest[lane], extremes.smallest[lane]);
    }
  }
  for (; i < count; ++i) {
    AddCell<HighValuesGood>(values[i], mask[i], weight, sums[i], extremes.largest[0],
                            extremes.smallest[0]);
  }
}

}  // namespace

void LinearModel::AddRow(int index, const RowToAdd& row, AddedExtremes& extremes) const {
  const LinearFactor& factor = Factor(index);
  LaneExtremes lanes;
  (factor.highValuesGood ? AddCells<true> : AddCells<false>)(row, factor.weight, lanes);
  extremes.sums.Add(lanes.All());
}

double LinearModel::WeightedValue(int index, double value, double nodata) const {
  const LinearFactor& factor = Factor(index);
  const double counted = CountedValue(value, nodata);
  return factor.weight * (factor.highValuesGood ? counted : kTopValue - counted);
}

std::string LinearModel::FactorsText() const {
  if (factors.empty()) return "No Factors Used\r\n\r\n";
  const std::size_t longest = LongestName(*this);
  std::string text = "Factor:" + std::string(longest + 1, ' ') + "Weight:\r\n";
  for (const LinearFactor& factor : factors) {
    text += std::string(5, ' ') + Padded(factor.name, longest + 6) + std::to_string(factor.weight) +
            (factor.highValuesGood ? "  (High Values Good)\r\n" : "  (Low Values Good)\r\n");
  }
  return text + "\r\n";
}

}  // namespace ormel
