#include "mce/timestep/time_step_model.h"

#include <utility>

#include "mapdata/factor_set.h"
#include "mce/linear/model_information.h"
#include "mce/nonlinear/graph_text.h"
#include "mce/timestep/step_weights.h"
#include "text/numbers.h"
#include "text/paths.h"

namespace ormel {
namespace {

class LinearStepKind final : public StepKind {
 public:
  explicit LinearStepKind(LinearModel model) : model_(std::move(model)) {}

  const CompositeModel& Model() const override { return model_; }

  void Prepare(int factor, double nodata, std::span<double> cells) const override {
    const bool high = model_.Factor(factor).highValuesGood;
    for (double& cell : cells) {
      const double directed = high ? cell : kTopValue - cell;
      cell = cell == nodata ? 0 : directed;
    }
  }

  // The product of the three numbers is the same for every cell.
  void Add(int factor, const StepNumbers& step, std::span<const double> prepared,
           std::span<double> sums) const override {
    const double by = step.product * step.weight * model_.Factor(factor).weight;
    for (std::size_t i = 0; i < prepared.size(); ++i) sums[i] += by * prepared[i];
  }

  double EffectiveWeight(int factor, const StepNumbers& step) const override {
    return step.product * model_.Factor(factor).weight * step.weight;
  }

  std::string FactorText(int factor) const override {
    return "Weight: " + model_.WeightText(factor);
  }

 private:
  const LinearModel model_;
};

class NonlinearStepKind final : public StepKind {
 public:
  explicit NonlinearStepKind(NonlinearModel model) : model_(std::move(model)) {}

  const CompositeModel& Model() const override { return model_; }

  void Prepare(int factor, double nodata, std::span<double> cells) const override {
    const WeightGraph& graph = model_.Factor(factor).graph;
    for (double& cell : cells) {
      cell = IsOutsideScale(cell) || cell == nodata ? 0 : lookup(graph, cell);
    }
  }

  void Add(int /*factor*/, const StepNumbers& step, std::span<const double> prepared,
           std::span<double> sums) const override {
    for (std::size_t i = 0; i < prepared.size(); ++i) {
      sums[i] += step.weight * (step.product * prepared[i]);
    }
  }

  double EffectiveWeight(int /*factor*/, const StepNumbers& step) const override {
    return step.weight * step.product;
  }

  std::string FactorText(int factor) const override {
    return describeGraph(model_.Factor(factor).graph);
  }

 private:
  const NonlinearModel model_;
};

Failure Damaged(std::string text) { return {FailureKind::kDamaged, std::move(text)}; }

ModelText FactorsOf(const StepFactorsText& text) {
  ModelText model;
  for (const ModelTextFactor& factor : text.factors) {
    if (!FileNamePart(factor.path, true).empty()) model.factors.push_back(factor);
  }
  model.constraints = text.constraints;
  return model;
}

Outcome<FactorBehaviour> BehaviourOf(const BehaviourText& text, const std::string& name,
                                     const std::vector<std::string>& dates) {
  FactorBehaviour behaviour;
  behaviour.method = static_cast<StepMethod>(text.method);
  const std::size_t steps = dates.size();
  if (behaviour.method == StepMethod::kExistingFiles) {
    behaviour.stepFiles = text.files;
    behaviour.stepFiles.resize(steps);
  } else if (behaviour.method == StepMethod::kProducts) {
    behaviour.productCsv = text.csv;
    behaviour.productRow = text.row;
    Outcome<std::vector<float>> row = ReadProductRow(text.csv, text.row);
    if (!row.Ok()) return row.Stop();
    if (row.Value().size() != steps) {
      return Damaged(name + ": the row " + text.row + " has " + std::to_string(row.Value().size()) +
                     " numbers for " + std::to_string(steps) + " steps");
    }
    behaviour.product = std::move(row.Value());
  }
  return behaviour;
}

Outcome<FactorSteps> StepsOf(const TimeStepText& text, std::size_t index, const std::string& name,
                             const std::vector<std::string>& dates) {
  const auto steps = static_cast<int>(dates.size());
  if (index >= text.behaviours.size() || index >= text.stepGraphs.size()) {
    return Damaged("The model does not tell how " + name + " changes.");
  }
  Outcome<FactorBehaviour> behaviour = BehaviourOf(text.behaviours[index], name, dates);
  if (!behaviour.Ok()) return behaviour.Stop();
  FactorSteps factor{std::move(behaviour.Value()), NewStepGraph(steps), {}};
  (void)graphFromText(text.stepGraphs[index], factor.graph);
  factor.weights = StepWeights(factor.graph, steps);
  return factor;
}

StepOutput OutputOf(const StepOutputText& text) {
  StepOutput output{text.folder, text.prefix, text.raster, text.bitmap, text.info, text.group};
  output.constraintColour = ColourOf(text.constraintColour).value_or(kBlack);
  return output;
}

}  // namespace

std::unique_ptr<StepKind> LinearSteps(LinearModel model) {
  return std::make_unique<LinearStepKind>(std::move(model));
}

std::unique_ptr<StepKind> NonlinearSteps(NonlinearModel model) {
  return std::make_unique<NonlinearStepKind>(std::move(model));
}

StepKind::StepNumbers TimeStepModel::NumbersOf(int factor, int step) const {
  const FactorSteps& steps = Factor(factor);
  return {steps.behaviour.Product(step), steps.weights[static_cast<std::size_t>(step - 1)]};
}

std::string TimeStepModel::PathAt(int factor, int step) const {
  const FactorBehaviour& behaviour = Factor(factor).behaviour;
  return behaviour.method == StepMethod::kExistingFiles
             ? behaviour.stepFiles[static_cast<std::size_t>(step - 1)]
             : Maps().Factor(factor).Path();
}

Outcome<TimeStepModel> TimeStepModelOf(const TimeStepText& text) {
  if (text.stage < StepStage::kOutput) {
    return Damaged("The model has not been filled in to its last page.");
  }
  Outcome<StepCalendar> calendar = BuildCalendar(text.calendar);
  if (!calendar.Ok()) return calendar.Stop();
  TimeStepModel model;
  model.dates = std::move(calendar.Value().dates);
  const ModelText factors = FactorsOf(text.factors);
  if (factors.factors.empty()) return Damaged("The model names no factor.");
  model.kind = text.factors.nonlinear ? NonlinearSteps(NonlinearModelOf(factors))
                                      : LinearSteps(LinearModelOf(factors));
  const Outcome<> fits = CheckMaps(model.Maps());
  if (!fits.Ok()) return fits.Stop();
  for (std::size_t i = 0; i < factors.factors.size(); ++i) {
    const std::string& name = model.Maps().Factor(static_cast<int>(i) + 1).name;
    Outcome<FactorSteps> steps = StepsOf(text, i, name, model.dates);
    if (!steps.Ok()) return steps.Stop();
    model.factors.push_back(std::move(steps.Value()));
  }
  model.output = OutputOf(text.output);
  return model;
}

}  // namespace ormel
