// A time-step model as the making of its maps sees it. For every step it has a sum of weighted
// factor maps, as a single-pass model has one:
//
//   S(s) = sum over the factors i, in list order, of P(i, s) * Q(i, s) * w(i)
//
// with P the number of a product table (1 without one), Q the weight of the factor at the step, and
// w what the factor's cell adds by itself: weight times value for a linear model, the weight of the
// value's graph for a non-linear one. Unlike in single-pass models NODATA adds nothing, whatever
// the kind of the model; values outside 0 to 255 count in linear models and not in others.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "base/outcome.h"
#include "mce/composite_model.h"
#include "mce/linear/linear_model.h"
#include "mce/nonlinear/nonlinear_model.h"
#include "mce/timestep/factor_behaviour.h"
#include "mce/timestep/time_step_text.h"

namespace ormel {

// How the factors of a kind of model count. Factors count from 1.
class StepKind {
 public:
  virtual ~StepKind() = default;

  // The maps, constraints and palette.
  virtual const CompositeModel& Model() const = 0;

  // Turns the cells of a map into what does not depend on the step: 0 for cells that add nothing.
  virtual void Prepare(int factor, double nodata, std::span<double> cells) const = 0;

  // What a step multiplies the prepared cells with: P and Q.
  struct StepNumbers {
    double product = 1;
    double weight = 1;
  };
  // Adds prepared cells to the sums of a step; both have the same length.
  virtual void Add(int factor, const StepNumbers& step, std::span<const double> prepared,
                   std::span<double> sums) const = 0;

  // The factor's weight at a step, without its values.
  virtual double EffectiveWeight(int factor, const StepNumbers& step) const = 0;

  // How the factor counts, as the information file tells it behind its name.
  virtual std::string FactorText(int factor) const = 0;
};

std::unique_ptr<StepKind> LinearSteps(LinearModel model);
std::unique_ptr<StepKind> NonlinearSteps(NonlinearModel model);

// How a factor changes over the steps.
struct FactorSteps {
  FactorBehaviour behaviour;
  WeightGraph graph;           // of its weight over the steps
  std::vector<float> weights;  // of all steps, from the graph
};

struct StepOutput {
  std::string folder{};
  std::string prefix{};
  bool raster = true;
  bool bitmap = false;
  bool info = true;
  bool group = false;  // all maps on one scale; else each on its own
  Colour constraintColour = kBlack;
};

struct TimeStepModel {
  std::shared_ptr<const StepKind> kind;
  std::vector<FactorSteps> factors;
  std::vector<std::string> dates;  // of all steps; at least 2
  StepOutput output;

  int Steps() const { return static_cast<int>(dates.size()); }
  const CompositeModel& Maps() const { return kind->Model(); }
  const FactorSteps& Factor(int factor) const {
    return factors[static_cast<std::size_t>(factor - 1)];
  }
  StepKind::StepNumbers NumbersOf(int factor, int step) const;
  // The map that a factor has at a step (from 1).
  std::string PathAt(int factor, int step) const;
};

// The model that a file's text means, which must have reached stage kOutput: its folder and palette
// as they stand there. Fails with one sentence when dates, factors, a product table or a step's
// file are missing or cannot be used, and when a map is missing or does not lie on the grid of the
// first factor. Step files are looked for when their step is computed.
[[nodiscard]] Outcome<TimeStepModel> TimeStepModelOf(const TimeStepText& text);

}  // namespace ormel
