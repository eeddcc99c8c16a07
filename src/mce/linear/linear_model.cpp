#include "mce/linear/linear_model.h"

#include <cstddef>

namespace ormel {
namespace {

template <bool HighValuesGood>
class LinearAdder final : public FactorAdder {
 public:
  explicit LinearAdder(double weight) : weight_(weight) {}

  void AddRow(const RowToAdd& row) override {
    LaneExtremes extremes = extremes_;  // in registers
    const auto values = row.values;
    const auto mask = row.mask;
    const auto sums = row.sums;
    ForEachInLanes(values.size(), [&, values, mask, sums](std::size_t i, std::size_t lane) {
      const double value = HighValuesGood ? values[i] : kTopValue - values[i];
      const double sum = static_cast<double>(sums[i]) + weight_ * value;
      const bool counts = mask[i] != 0;
      sums[i] = counts ? static_cast<float>(sum) : sums[i];
      extremes.Add(lane, sum, counts);
    });
    extremes_ = extremes;
  }

  AddedExtremes Added() const override { return {extremes_.All(), {}}; }

 private:
  double weight_;
  LaneExtremes extremes_;
};

}  // namespace

std::unique_ptr<FactorAdder> LinearModel::AdderOf(int index) const {
  const LinearFactor& factor = Factor(index);
  if (factor.highValuesGood) return std::make_unique<LinearAdder<true>>(factor.weight);
  return std::make_unique<LinearAdder<false>>(factor.weight);
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
