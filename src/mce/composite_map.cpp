#include "mce/composite_map.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "mapdata/constraint_mask.h"
#include "mapdata/map_header.h"
#include "text/numbers.h"

namespace ormel {
namespace {

// Whether any value lies outside 0 to 255, NODATA included. Most rows need no closer look.
bool LeavesScale(std::span<const double> values) {
  LaneExtremes extremes;
  ForEachInLanes(values.size(),
                 [&](std::size_t i, std::size_t lane) { extremes.Add(lane, values[i], true); });
  const Extremes all = extremes.All();
  return IsOutsideScale(all.largest) || IsOutsideScale(all.smallest);
}

void CountRow(std::span<double> values, double nodata) {
  for (double& value : values) value = CountedValue(value, nodata);
}

}  // namespace

Outcome<CompositeMap> CompositeMap::Begin(const CompositeModel& model) {
  if (model.FactorCount() == 0) {
    return Failure{FailureKind::kRefused, "The model has no factor."};
  }
  Outcome<MapFrame> frame = ReadMapFrame(model.Factor(1).Path());
  if (!frame.Ok()) return frame.Stop();
  std::vector<int> headerLines;
  for (int i = 1; i <= model.FactorCount(); ++i) {
    headerLines.push_back(CountHeaderLines(model.Factor(i).Path()));
  }
  CompositeMap map(std::move(frame.Value()), std::move(headerLines), model.ItsRules());
  const MapFrame& size = map.frame_;
  Outcome<Grid<float>> sums = MakeGrid<float>(size.ncols, size.nrows);
  if (!sums.Ok()) return sums.Stop();
  Outcome<ConstraintMaskBuild> build =
      BuildConstraintMask(model.constraints, size.ncols, size.nrows);
  if (!build.Ok()) return build.Stop();
  map.sums_ = std::move(sums.Value());
  map.mask_ = std::move(build.Value().mask);
  map.maskFailure_ = std::move(build.Value().failure);
  return map;
}

RowsToRead CompositeMap::RowsOf(const CompositeModel& model, int index) const {
  const auto place = static_cast<std::size_t>(index - 1);
  return {model.Factor(index).Path(), headerLines_[place], frame_.ncols, frame_.nrows};
}

void CompositeMap::NoteOutOfRange(int row, std::span<const double> values, double nodata) {
  const std::span<const std::uint8_t> mask = mask_.Row(row);
  const auto isFault = [nodata](double value) { return IsOutsideScale(value) & (value != nodata); };
  if (rules_.warnsOfEveryCell) {
    if (outOfRange_ || !LeavesScale(values)) return;
    for (std::size_t i = 0; i < values.size(); ++i) {
      outOfRange_ |= mask[i] != 0 && isFault(values[i]);
    }
    return;
  }
  for (std::size_t i = values.size(); i-- > 0;) {
    if (mask[i] == 0) continue;
    outOfRange_ = isFault(values[i]);
    return;
  }
}

Outcome<std::string> CompositeMap::AccumulateFactor(const CompositeModel& model, int index,
                                                    const RowWatcher& watcher,
                                                    ProgressSink& progress) {
  const std::unique_ptr<FactorAdder> adder = model.AdderOf(index);
  Outcome<std::string> read = ReadRows(
      RowsOf(model, index), progress, [&](int row, std::span<double> cells, double nodata) {
        NoteOutOfRange(row, cells, nodata);
        CountRow(cells, nodata);
        adder->AddRow({cells, nodata, mask_.Row(row), sums_.Row(row)});
        if (watcher) watcher(row, cells, nodata);
      });
  const AddedExtremes added = adder->Added();
  largest_ = std::max(largest_, added.sums.largest);
  if (index == model.FactorCount()) smallest_ = added.sums.smallest;
  weights_[static_cast<std::size_t>(index - 1)] = added.weights;
  return read;
}

Outcome<std::string> CompositeMap::ReadFactor(const CompositeModel& model, int index,
                                              const RowWatcher& watcher,
                                              ProgressSink& progress) const {
  return ReadRows(RowsOf(model, index), progress,
                  [&](int row, std::span<double> cells, double nodata) {
                    CountRow(cells, nodata);
                    watcher(row, cells, nodata);
                  });
}

ScaleLimits CompositeMap::Limits() const {
  ScaleLimits limits{smallest_, largest_};
  if (!std::isfinite(limits.max)) limits = {1, 1};  // every cell is masked
  if (!std::isfinite(limits.min)) limits.min = 0;   // the last factor had no allowed cell
  if (limits.min == limits.max && rules_.widensEqualSums) limits.max = limits.min + 1;
  return limits;
}

void ScaleSums(std::span<const float> sums, std::span<const std::uint8_t> mask,
               const ScaleLimits& limits, std::span<double> values) {
  const double range = limits.max - limits.min;
  for (std::size_t i = 0; i < sums.size(); ++i) {
    const double scaled = kTopValue * (static_cast<double>(sums[i]) - limits.min) / range;
    values[i] = ((mask[i] != 0) & std::isfinite(scaled)) ? scaled : 0.0;
  }
}

}  // namespace ormel
