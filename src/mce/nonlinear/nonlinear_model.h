// A non-linear model: factor maps whose values are looked up on weight graphs.
//
//   w = graph(v), between two whole values on the straight line between their samples
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "base/colour.h"
#include "mce/composite_model.h"
#include "mce/model_text.h"
#include "mce/nonlinear/weight_graph.h"

namespace ormel {

// How a factor counts.
struct GraphWeight {
  Colour colour = kBlack;  // of its curve
  WeightGraph graph;
};

struct GraphFactor : FactorFile, GraphWeight {};

class NonlinearModel final : public CompositeModel {
 public:
  std::vector<GraphFactor> factors;

  int FactorCount() const override { return static_cast<int>(factors.size()); }
  const GraphFactor& Factor(int index) const override {
    return factors[static_cast<std::size_t>(index - 1)];
  }
  // NODATA and values outside 0 to 255 weigh what 0 weighs. Where 0 itself is NODATA, cells of 0
  // add nothing and take no part in the extremes.
  std::unique_ptr<FactorAdder> AdderOf(int index) const override;
  // NODATA for a cell that adds nothing.
  double WeightedValue(int index, double value, double nodata) const override;
  std::string WeightText(int index) const override;
  std::string FactorsText() const override;
  Rules ItsRules() const override {
    return {.warnsOfEveryCell = true, .rows = RowForm::kBlankBehind};
  }
};

// The fields of a factor in a model file (.cmf): its colour and the text of its graph. A field that
// is neither leaves what `weight` has.
std::array<std::string, 2> FieldsOf(const GraphWeight& weight);
void TakeFields(const std::array<std::string, 2>& fields, GraphWeight& weight);

// The model that a file's text means.
NonlinearModel NonlinearModelOf(const ModelText& text);

}  // namespace ormel
