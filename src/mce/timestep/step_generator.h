// The sums of a time-step model, step after step, and what scales them.
//
// All factors of a step are read together, row by row. Maps that do not change from step to step
// are parsed once and kept, as many of them as fit into a given amount of memory; the others are
// read again for every step. A row's sum is computed in double precision, factor after factor, and
// stored in single precision: the cells do not depend on what was kept or on the number of threads.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/extremes.h"
#include "base/grid.h"
#include "base/outcome.h"
#include "base/progress_sink.h"
#include "mapdata/map_frame.h"
#include "mce/composite_map.h"
#include "mce/timestep/frame_store.h"
#include "mce/timestep/time_step_model.h"

namespace ormel {

struct StepMemory {
  std::string folder;                // for frames beyond the memory
  std::uint64_t maps = 1ULL << 30U;  // bytes for maps that do not change
  std::uint64_t frames = QuarterOfMemory();
};

class StepGenerator {
 public:
  // Reads the frame of the first factor and builds the mask. The model outlives the generator.
  // Fails when the first map cannot be read, and when the frames have no room.
  [[nodiscard]] static Outcome<StepGenerator> Begin(const TimeStepModel& model,
                                                    const StepMemory& memory);

  const MapFrame& Frame() const { return frame_; }
  const Grid<std::uint8_t>& Mask() const { return mask_; }
  // Why the constraints could not be used; every cell is then allowed. Empty: they are.
  const std::string& MaskFailure() const { return maskFailure_; }

  // NOLINTBEGIN(readability-identifier-naming): the name by which model builders know it

  // Fills the frame of a step (from 1), and widens the limits to its sums. Fails when a map of the
  // step is missing, has another size, or ends early.
  [[nodiscard]] Outcome<> computeStep(int step, ProgressSink& progress);

  // NOLINTEND(readability-identifier-naming)

  // The scale of a step is that of the limits now. Each step has its own when the limits are
  // emptied behind it, all have the same when they are not.
  void KeepScale(int step) { scales_[static_cast<std::size_t>(step - 1)] = LimitsNow(); }
  void EmptyLimits() { sums_ = {}; }
  const ScaleLimits& ScaleOf(int step) const { return scales_[static_cast<std::size_t>(step - 1)]; }

  // The scaled values of a row of a step, not rounded; the scale must have been kept.
  void ScaledRow(int step, int row, std::span<double> values) const {
    ScaleSums(frames_.Row(step, row), mask_.Row(row), ScaleOf(step), values);
  }

  // The same for one cell, column and row from 1.
  double ScaledValue(int step, int column, int row) const {
    const auto place = static_cast<std::size_t>(column - 1);
    double value = 0;
    ScaleSums(frames_.Row(step, row).subspan(place, 1), mask_.Row(row).subspan(place, 1),
              ScaleOf(step), {&value, 1});
    return value;
  }

  // Of all factors in the steps computed so far.
  const Extremes& EffectiveWeights() const { return weights_; }

 private:
  StepGenerator(const TimeStepModel& model, MapFrame frame)
      : model_(&model),
        frame_(std::move(frame)),
        scales_(model.dates.size()),
        kept_(model.factors.size()),
        isKept_(model.factors.size()) {}

  class Pass;
  void ChooseMapsToKeep(std::uint64_t memory);
  ScaleLimits LimitsNow() const {
    return sums_.Any() ? ScaleLimits{sums_.smallest, sums_.largest} : ScaleLimits{};
  }

  const TimeStepModel* model_;
  MapFrame frame_;
  Grid<std::uint8_t> mask_;
  std::string maskFailure_;
  FrameStore frames_;
  std::vector<ScaleLimits> scales_;  // of all steps
  Extremes sums_;                    // since the limits were emptied
  Extremes weights_;

  // Of each factor: its prepared cells when they are kept; empty until a step has read them all.
  std::vector<Grid<double>> kept_;
  std::vector<bool> isKept_;  // whether they are to be kept
};

}  // namespace ormel
