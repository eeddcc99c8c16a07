#include "mce/linear/composite_map.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "mapdata/constraint_mask.h"
#include "mapdata/numbers.h"
#include "mapdata/raster.h"

namespace ormel {
namespace {

constexpr int kLargestSide = 32767;

bool IsOutside(double value) { return value < 0 || value > kTopValue; }

// A text from a file as a message can show it: short, and without bytes that are no letters.
std::string Excerpt(const std::string& text) {
  constexpr std::size_t kLongest = 20;
  std::string shown = text.substr(0, kLongest);
  std::replace_if(
      shown.begin(), shown.end(), [](char letter) { return letter < ' ' || letter > '~'; }, '?');
  return shown + (text.size() > kLongest ? "..." : "");
}

// A side of the model: a whole number of cells from 1 to 32767.
Outcome<int> SideFrom(const std::string& path, const std::string& text, const char* what) {
  const double side = HalfEvenRound(TextToNumber(text));
  if (side >= 1 && side <= kLargestSide) return static_cast<int>(side);
  return Failure{FailureKind::kDamaged, path + ": the header gives \"" + Excerpt(text) + "\" " +
                                            what + "; a map has 1 to " +
                                            std::to_string(kLargestSide)};
}

Outcome<ModelFrame> ReadFrame(const std::string& path) {
  const Outcome<HeaderTexts> header = ReadHeaderTexts(path);
  if (!header.Ok()) return header.Stop();
  const std::vector<std::string>& texts = header.Value().values;
  const Outcome<int> ncols = SideFrom(path, texts[0], "columns");
  if (!ncols.Ok()) return ncols.Stop();
  const Outcome<int> nrows = SideFrom(path, texts[1], "rows");
  if (!nrows.Ok()) return nrows.Stop();
  if (ClaimsTooMuch(path, ncols.Value(), nrows.Value())) {
    return Failure{FailureKind::kDamaged, path + ": is too short for " +
                                              std::to_string(ncols.Value()) + " columns and " +
                                              std::to_string(nrows.Value()) + " rows"};
  }
  ModelFrame frame;
  frame.ncols = ncols.Value();
  frame.nrows = nrows.Value();
  frame.xllcorner = TextToNumber(texts[2]);
  frame.yllcorner = TextToNumber(texts[3]);
  frame.cellsize = TextToNumber(texts[4]);
  frame.texts = {texts[0], texts[1],    NumberText(frame.xllcorner), NumberText(frame.yllcorner),
                 texts[4], std::nullopt};
  return frame;
}

void CountRow(std::span<double> values, double nodata) {
  for (double& value : values) value = CountedValue(value, nodata);
}

// How one factor's row goes into the sums. The extremes are those of the sums in double precision,
// before they are stored. They stand in several lanes, because a single one would make each cell
// wait for the cell before it.
struct Extremes {
  static constexpr std::size_t kLanes = 4;
  double largest[kLanes];
  double smallest[kLanes];

  Extremes() {
    std::fill_n(largest, kLanes, -std::numeric_limits<double>::infinity());
    std::fill_n(smallest, kLanes, std::numeric_limits<double>::infinity());
  }
  double Largest() const { return *std::max_element(largest, largest + kLanes); }
  double Smallest() const { return *std::min_element(smallest, smallest + kLanes); }
};

template <bool HighValuesGood>
inline void AddCell(double value, std::uint8_t allowed, double weight, float& sum, double& largest,
                    double& smallest) {
  const double next =
      static_cast<double>(sum) + weight * (HighValuesGood ? value : kTopValue - value);
  const bool counts = allowed != 0;
  sum = counts ? static_cast<float>(next) : sum;
  largest = counts && next > largest ? next : largest;
  smallest = counts && next < smallest ? next : smallest;
}

template <bool HighValuesGood>
void AddRow(std::span<const double> values, std::span<const std::uint8_t> mask, double weight,
            std::span<float> sums, Extremes& extremes) {
  const std::size_t count = values.size();
  std::size_t i = 0;
  for (; i + Extremes::kLanes <= count; i += Extremes::kLanes) {
    for (std::size_t lane = 0; lane < Extremes::kLanes; ++lane) {
      AddCell<HighValuesGood>(values[i + lane], mask[i + lane], weight, sums[i + lane],
                              extremes.largest[lane], extremes.smallest[lane]);
    }
  }
  for (; i < count; ++i) {
    AddCell<HighValuesGood>(values[i], mask[i], weight, sums[i], extremes.largest[0],
                            extremes.smallest[0]);
  }
}

}  // namespace

Outcome<CompositeMap> CompositeMap::Begin(const LinearModel& model) {
  if (model.factors.empty()) {
    return Failure{FailureKind::kRefused, "The model has no factor."};
  }
  Outcome<ModelFrame> frame = ReadFrame(model.factors.front().Path());
  if (!frame.Ok()) return frame.Stop();
  std::vector<int> headerLines;
  for (const LinearFactor& factor : model.factors) {
    headerLines.push_back(CountHeaderLines(factor.Path()));
  }
  CompositeMap map(std::move(frame.Value()), std::move(headerLines));
  const ModelFrame& size = map.frame_;
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

RowsToRead CompositeMap::RowsOf(const LinearModel& model, int index) const {
  const auto place = static_cast<std::size_t>(index - 1);
  return {model.factors[place].Path(), headerLines_[place], frame_.ncols, frame_.nrows};
}

void CompositeMap::NoteLastAllowed(int row, std::span<const double> values, double nodata) {
  const std::span<const std::uint8_t> mask = mask_.Row(row);
  for (std::size_t i = values.size(); i-- > 0;) {
    if (mask[i] == 0) continue;
    outOfRange_ = IsOutside(values[i]) && values[i] != nodata;
    return;
  }
}

Outcome<std::string> CompositeMap::AccumulateFactor(const LinearModel& model, int index,
                                                    const RowWatcher& watcher,
                                                    ProgressSink& progress) {
  const LinearFactor& factor = model.factors[static_cast<std::size_t>(index - 1)];
  const auto addRow = factor.highValuesGood ? AddRow<true> : AddRow<false>;
  Extremes extremes;
  Outcome<std::string> read = ReadRows(
      RowsOf(model, index), progress, [&](int row, std::span<double> cells, double nodata) {
        NoteLastAllowed(row, cells, nodata);
        CountRow(cells, nodata);
        addRow(cells, mask_.Row(row), factor.weight, sums_.Row(row), extremes);
        if (watcher) watcher(row, cells);
      });
  largest_ = std::max(largest_, extremes.Largest());
  if (index == static_cast<int>(model.factors.size())) smallest_ = extremes.Smallest();
  return read;
}

Outcome<std::string> CompositeMap::ReadFactor(const LinearModel& model, int index,
                                              const RowWatcher& watcher,
                                              ProgressSink& progress) const {
  return ReadRows(RowsOf(model, index), progress,
                  [&](int row, std::span<double> cells, double nodata) {
                    CountRow(cells, nodata);
                    watcher(row, cells);
                  });
}

CompositeMap::Limits CompositeMap::ScaleLimits() const {
  Limits limits{smallest_, largest_};
  if (!std::isfinite(limits.max)) return {1, 2};   // every cell is masked
  if (!std::isfinite(limits.min)) limits.min = 0;  // the last factor had no allowed cell
  if (limits.min == limits.max) limits.max = limits.min + 1;
  return limits;
}

void CompositeMap::ScaledRow(int row, const Limits& limits, std::span<double> values) const {
  const std::span<const float> sums = sums_.Row(row);
  const std::span<const std::uint8_t> mask = mask_.Row(row);
  const double range = limits.max - limits.min;
  for (std::size_t i = 0; i < sums.size(); ++i) {
    const double scaled = kTopValue * (static_cast<double>(sums[i]) - limits.min) / range;
    values[i] = mask[i] != 0 ? scaled : 0.0;
  }
}

}  // namespace ormel
