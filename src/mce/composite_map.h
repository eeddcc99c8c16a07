// The multi-criteria evaluation: the sum of weighted factor maps under a mask of constraints,
// scaled to 0 to 255.
//
//   S = sum over the factors i, in list order, of the weighted values w(i)
//   value = 255 * (S - min) / (max - min)
//
// What a cell's weighted value is, the kind of model says: a linear one multiplies by a number, a
// non-linear one looks the value up on a curve. The sum is not divided by the sum of the weights,
// because the scaling takes every common factor out again. It is computed in double precision and
// kept in single precision after each factor: one grid of 4 bytes a cell and a mask of 1 are all
// the memory that a model of any number of factors takes. Files are read once, through a fixed
// buffer.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "base/grid.h"
#include "base/outcome.h"
#include "base/progress_sink.h"
#include "mapdata/map_frame.h"
#include "mapdata/map_stream.h"
#include "mce/composite_model.h"

namespace ormel {

// Sees the cells of a row (from 1, west to east) as they count: NODATA and values outside 0 to 255
// are 0. Cells under the mask are seen as well. At the end of a file that is too short the row has
// the cells that are there.
using RowWatcher = std::function<void(int row, std::span<const double> values, double nodata)>;

// Between which sums a map is scaled to 0 to 255.
struct ScaleLimits {
  double min = 0;
  double max = 0;
};

// The scaled values of a row of sums, not rounded; masked cells are 0, and all are 0 when min and
// max leave no scale. All three have the same length.
void ScaleSums(std::span<const float> sums, std::span<const std::uint8_t> mask,
               const ScaleLimits& limits, std::span<double> values);

class CompositeMap {
 public:
  // Reads the headers and builds the mask; every sum is 0. Fails when the model has no factor, when
  // the first one cannot be read, and when its size is no size of a map (1 to 32767 each way) or
  // does not fit into the memory.
  [[nodiscard]] static Outcome<CompositeMap> Begin(const CompositeModel& model);

  const MapFrame& Frame() const { return frame_; }
  bool Allowed(int column, int row) const { return mask_(column, row) != 0; }
  const Grid<std::uint8_t>& Mask() const { return mask_; }
  // Why the constraints could not be used; the model then runs unconstrained. Empty: they are.
  const std::string& MaskFailure() const { return maskFailure_; }

  // Adds the cells of factor `index` (from 1). A file that is missing or ends early stops nothing:
  // its missing cells add nothing, and the value says what was passed over (empty: nothing).
  [[nodiscard]] Outcome<std::string> AccumulateFactor(const CompositeModel& model, int index,
                                                      const RowWatcher& watcher,
                                                      ProgressSink& progress);

  // Reads a factor as AccumulateFactor() does, for its picture alone.
  [[nodiscard]] Outcome<std::string> ReadFactor(const CompositeModel& model, int index,
                                                const RowWatcher& watcher,
                                                ProgressSink& progress) const;

  // How the file of factor `index` is read: its header lines are those it had when the model began.
  RowsToRead RowsOf(const CompositeModel& model, int index) const;

  // The weighted values of the allowed cells of factor `index`, of none before it was added.
  const Extremes& WeightsOf(int index) const {
    return weights_[static_cast<std::size_t>(index - 1)];
  }

  // An allowed cell held a value outside 0 to 255 that is not NODATA. The warning of linear models
  // tells of the last allowed cell of the last factor and of no other: users know it so, and it is
  // kept.
  bool OutOfRange() const { return outOfRange_; }

  // What the sums are scaled with. Max is the largest of all sums, those before the last factor
  // included; min is the smallest final one. A negative weight can thus leave the top of the scale
  // unused, which is required: maps of different runs stay comparable. Where sums are all alike,
  // the model's rules say whether min stays below max.
  ScaleLimits Limits() const;

  // The scaled values of a row; see ScaleSums().
  void ScaledRow(int row, const ScaleLimits& limits, std::span<double> values) const {
    ScaleSums(sums_.Row(row), mask_.Row(row), limits, values);
  }

 private:
  CompositeMap(MapFrame frame, std::vector<int> headerLines, CompositeModel::Rules rules)
      : rules_(rules),
        frame_(std::move(frame)),
        headerLines_(std::move(headerLines)),
        weights_(headerLines_.size()) {}

  void NoteOutOfRange(int row, std::span<const double> values, double nodata);

  CompositeModel::Rules rules_;
  MapFrame frame_;
  std::vector<int> headerLines_;  // of each factor file
  Grid<float> sums_;
  Grid<std::uint8_t> mask_;
  std::string maskFailure_;
  double largest_ = Extremes().largest;
  double smallest_ = Extremes().smallest;
  std::vector<Extremes> weights_;  // of each factor
  bool outOfRange_ = false;
};

}  // namespace ormel
