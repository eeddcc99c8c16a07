// A linear model: factor maps of whole-number weights, of which high or low values are good.
//
//   w = W * T,  T = v or 255 - v
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "mce/composite_model.h"

namespace ormel {

struct LinearFactor : FactorFile {
  int weight = 1;  // -32767 to 32767
  // True: a cell counts with its value v. False (low values are good): with 255 - v.
  bool highValuesGood = true;
};

class LinearModel final : public CompositeModel {
 public:
  std::vector<LinearFactor> factors;

  int FactorCount() const override { return static_cast<int>(factors.size()); }
  const LinearFactor& Factor(int index) const override {
    return factors[static_cast<std::size_t>(index - 1)];
  }
  std::unique_ptr<FactorAdder> AdderOf(int index) const override;
  double WeightedValue(int index, double value, double nodata) const override;
  std::string WeightText(int index) const override { return std::to_string(Factor(index).weight); }
  std::string FactorsText() const override;
  Rules ItsRules() const override { return {.widensEqualSums = true}; }
};

}  // namespace ormel
