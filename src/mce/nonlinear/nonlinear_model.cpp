#include "mce/nonlinear/nonlinear_model.h"

#include <algorithm>
#include <limits>

#include "mapdata/numbers.h"
#include "mce/nonlinear/graph_text.h"

namespace ormel {
namespace {

// Sums are stored in single precision, in which weights can be too large to be told.
float Stored(double sum) {
  constexpr double kLargest = std::numeric_limits<float>::max();
  return static_cast<float>(std::clamp(sum, -kLargest, kLargest));
}

}  // namespace

void NonlinearModel::AddRow(int index, const RowToAdd& row, AddedExtremes& extremes) const {
  const auto [values, nodata, mask, sums] = row;
  const WeightGraph& graph = Factor(index).graph;
  AddedExtremes added = extremes;
  for (std::size_t i = 0; i < values.size(); ++i) {
    if ((mask[i] == 0) | (values[i] == nodata)) continue;
    const double weight = lookup(graph, values[i]);
    const double sum = static_cast<double>(sums[i]) + weight;
    added.weights.Add(weight);
    added.sums.Add(sum);
    sums[i] = Stored(sum);
  }
  extremes = added;
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
  const double colour = HalfEvenRound(TextToNumber(fields[0]));
  if (IsNumeric(fields[0]) && colour >= 0 && colour <= kLargestColour) {
    weight.colour = static_cast<Colour>(colour);
  }
  (void)graphFromText(fields[1], weight.graph);
}

NonlinearModel NonlinearModelOf(const ModelText& text) {
  NonlinearModel model;
  for (const ModelTextFactor& read : text.factors) {
    GraphFactor& factor = model.factors.emplace_back();
    factor.folder = FolderPart(read.path);
    factor.name = FileNamePart(read.path, true);
    TakeFields(read.fields, factor);
  }
  model.constraints = text.constraints;
  model.title = text.title;
  return model;
}

Outcome<NonlinearModel> ReadRunnableNonlinearModel(const std::filesystem::path& path) {
  const Outcome<ModelText> text = ReadRunnableText(path);
  if (!text.Ok()) return text.Stop();
  NonlinearModel model = NonlinearModelOf(text.Value());
  const Outcome<> fits = CheckMaps(model);
  if (!fits.Ok()) return fits.Stop();
  return model;
}

}  // namespace ormel
