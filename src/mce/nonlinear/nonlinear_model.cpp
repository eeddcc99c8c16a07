#include "mce/nonlinear/nonlinear_model.h"

#include <algorithm>
#include <cmath>

#include "mce/nonlinear/graph_text.h"
#include "text/arithmetic.h"

namespace ormel {
namespace {

class GraphAdder final : public FactorAdder {
 public:
  explicit GraphAdder(const WeightGraph& graph) {
    for (std::size_t i = 0; i < lines_.size(); ++i) {
      const double rise = i + 1 < lines_.size() ? graph.samples[i + 1] - graph.samples[i] : 0;
      lines_[i] = {graph.samples[i], std::isfinite(rise) ? rise : 0};
    }
  }

  void AddRow(const RowToAdd& row) override {
    const auto values = row.values;
    const auto nodata = row.nodata;
    const auto mask = row.mask;
    const auto sums = row.sums;
    LaneExtremes sumExtremes = sums_;  // in registers
    LaneExtremes weightExtremes = weights_;
    ForEachInLanes(values.size(), [&, values, mask, sums, nodata](std::size_t i, std::size_t lane) {
      const double weight = WeightOf(values[i]);
      const double sum = static_cast<double>(sums[i]) + weight;
      const bool counts = (mask[i] != 0) & (values[i] != nodata);
      sums[i] = counts ? Single(sum) : sums[i];
      sumExtremes.Add(lane, sum, counts);
      weightExtremes.Add(lane, weight, counts);
    });
    sums_ = sumExtremes;
    weights_ = weightExtremes;
  }

  AddedExtremes Added() const override { return {sums_.All(), weights_.All()}; }

 private:
  // lookup(), without its question for whole values: their rest is 0.
  double WeightOf(double value) const {
    const auto whole = static_cast<int>(value);
    const Line& line = lines_[static_cast<std::size_t>(whole)];
    return line.start + (value - whole) * line.rise;
  }

  // From one sample to the next.
  struct Line {
    double start;
    double rise;
  };
  std::array<Line, kLargestFactorValue + 1> lines_;
  LaneExtremes sums_;
  LaneExtremes weights_;
};

}  // namespace

std::unique_ptr<FactorAdder> NonlinearModel::AdderOf(int index) const {
  return std::make_unique<GraphAdder>(Factor(index).graph);
}

double NonlinearModel::WeightedValue(int index, double value, double nodata) const {
  const double counted = CountedValue(value, nodata);
  return counted == nodata ? nodata : lookup(Factor(index).graph, counted);
}

std::string NonlinearModel::WeightText(int index) const {
  return TypeWord(Factor(index).graph.type);
}

std::string NonlinearModel::FactorsText() const {
  constexpr std::size_t kGap = 7;
  const std::size_t longest = LongestName(*this);
  std::string text;
  for (const GraphFactor& factor : factors) {
    text += "Factor: " + Padded(factor.name, longest + kGap) + describeGraph(factor.graph);
    text += "\r\n\r\n\r\n";
  }
  return text;
}

std::array<std::string, 2> FieldsOf(const GraphWeight& weight) {
  return {std::to_string(weight.colour), graphToText(weight.graph)};
}

void TakeFields(const std::array<std::string, 2>& fields, GraphWeight& weight) {
  if (const auto colour = ColourOf(fields[0])) weight.colour = *colour;
  (void)graphFromText(fields[1], weight.graph);
}

NonlinearModel NonlinearModelOf(const ModelText& text) {
  NonlinearModel model;
  for (const ModelTextFactor& read : text.factors) {
    GraphFactor& factor = model.factors.emplace_back();
    factor.folder = FolderPart(read.path);
    factor.name = FileNamePart(read.path, true);
    // As in the builder, whose first row begins so: it shows what has no graph that can be read.
    if (model.factors.size() == 1) ResetToIdentity(factor.graph);
    TakeFields(read.fields, factor);
  }
  model.constraints = text.constraints;
  model.title = text.title;
  return model;
}

}  // namespace ormel
