#include "rastertools/map_scaling.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "mapdata/map_stream.h"
#include "mapdata/raster.h"
#include "text/numbers.h"

namespace ormel {
namespace {

constexpr double kScaledMaximum = 255;

Outcome<> CheckRange(const ScalingJob& job) {
  const auto& [min, max] = job.range;
  if (min == max) {
    return Failure{FailureKind::kRefused, job.source + ": has a single value, " + NumberText(min) +
                                              ", and cannot be stretched"};
  }
  if (!std::isfinite(kScaledMaximum * (max - min))) {
    return Failure{FailureKind::kRefused, job.source + ": its values are too far apart"};
  }
  return Done{};
}

}  // namespace

Outcome<ScalingRange> RangeToScale(const std::string& path, ProgressSink& progress) {
  const Outcome<Extremes> values = ScanExtremes(path, progress);
  if (!values.Ok()) return values.Stop();
  if (!values.Value().Any()) return ScalingRange{};
  return ScalingRange{values.Value().smallest, values.Value().largest};
}

ScalingRange Joined(const ScalingRange& one, const ScalingRange& other) {
  return {std::min(one.min, other.min), std::max(one.max, other.max)};
}

Outcome<> ScaleMap(const ScalingJob& job, ProgressSink& progress) {
  Outcome<> checked = CheckRange(job);
  if (!checked.Ok()) return checked;
  Outcome<WholeMap> source = OpenWholeMap(job.source);
  if (!source.Ok()) return source.Stop();
  auto& [frame, rows] = source.Value();
  RowSteps steps;
  steps.read = [&rows = rows](int, std::span<double> cells) { return rows.ReadRow(cells); };
  steps.make = [&, nodata = rows.NoData(), min = job.range.min,
                width = job.range.max - job.range.min](int, std::span<double> cells,
                                                       RowText& text) {
    for (const double cell : cells) {
      if (cell == nodata) {
        text.Add(cell);
      } else {
        text.AddRounded(kScaledMaximum * (cell - min) / width, job.decimalPlaces);
      }
    }
  };
  return WriteMap({job.target, CopiedHeader(rows.HeaderLines()), frame.nrows,
                   static_cast<std::size_t>(frame.ncols), RowForm::kBlankBefore, job.working},
                  steps, progress);
}

}  // namespace ormel
