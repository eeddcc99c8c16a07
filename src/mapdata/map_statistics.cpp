#include "mapdata/map_statistics.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>
#include <vector>

#include "mapdata/cell_source.h"
#include "mapdata/map_header.h"
#include "text/numbers.h"

namespace ormel {
namespace {

constexpr std::size_t kCellsAtOnce = 4096;
constexpr double kCategories = 255;

Outcome<CellSource> OpenBehindHeader(const std::string& path) {
  return CellSource::Open(path, CountHeaderLines(path));
}

double NoDataOf(const std::string& path) {
  const std::string text = ReadNoDataText(path);
  return text.empty() ? kNoNoData : TextToNumber(text);
}

// The constraint's values beside those of the map.
class ConstraintValues {
 public:
  [[nodiscard]] Outcome<> Open(const std::string& path) {
    if (path.empty()) return Done{};
    Outcome<CellSource> source = OpenBehindHeader(path);
    if (!source.Ok()) return source.Stop();
    source_.emplace(std::move(source.Value()));
    return Done{};
  }

  // The next `count` values.
  std::span<const double> Next(std::size_t count) {
    const std::size_t read = source_ ? source_->Read(std::span(values_).first(count)) : 0;
    if (read > 0) last_ = values_[read - 1];
    std::fill(values_.begin() + static_cast<std::ptrdiff_t>(read),
              values_.begin() + static_cast<std::ptrdiff_t>(count), last_);
    return std::span<const double>(values_).first(count);
  }

 private:
  std::optional<CellSource> source_;  // none: every cell counts
  double last_ = 1;
  std::vector<double> values_ = std::vector<double>(kCellsAtOnce);
};

// Gives every counted value to `count`, in the order of the file.
template <class Count>
Outcome<> CountValues(const MapToCount& map, ProgressSink& progress, Count count) {
  Outcome<CellSource> source = OpenBehindHeader(map.path);
  if (!source.Ok()) return source.Stop();
  ConstraintValues constraint;
  Outcome<> opened = constraint.Open(map.constraint);
  if (!opened.Ok()) return opened;
  const double nodata = NoDataOf(map.path);
  std::vector<double> values(kCellsAtOnce);
  for (;;) {
    const std::size_t read = source.Value().Read(values);
    if (!source.Value().Error().empty()) {
      return Failure{FailureKind::kDisk, source.Value().Error()};
    }
    const std::span<const double> allowed = constraint.Next(read);
    for (std::size_t i = 0; i < read; ++i) {
      if (allowed[i] == 1 && values[i] != nodata) count(values[i]);
    }
    if (read < values.size()) return Done{};
    if (!progress.Report(source.Value().Percent())) return Cancelled{};
  }
}

}  // namespace

Outcome<MapStatsRecord> MapStatistics(const MapToCount& map, ProgressSink& progress) {
  MapStatsRecord record;
  double minimum = std::numeric_limits<double>::infinity();
  double maximum = -minimum;
  const Outcome<> counted = CountValues(map, progress, [&](double value) {
    ++record.cellCount;
    record.cellSum += value;
    minimum = std::min(minimum, value);
    maximum = std::max(maximum, value);
  });
  if (!counted.Ok()) return counted.Stop();
  if (record.cellCount > 0) {
    record.minimum = minimum;
    record.maximum = maximum;
    record.mean = record.cellSum / static_cast<double>(record.cellCount);
  }
  return record;
}

Outcome<MapDistribution> DistributionOf(const MapToCount& map, const MapStatsRecord& figures,
                                        ProgressSink& progress) {
  MapDistribution distribution;
  if (figures.cellCount == 0) return distribution;
  const double minimum = *figures.minimum;
  const double range = *figures.maximum - minimum;
  double squares = 0;
  const Outcome<> counted = CountValues(map, progress, [&](double value) {
    squares += (value - *figures.mean) * (value - *figures.mean);
    const double category = RoundSmall(kCategories * (value - minimum) / range);
    // A flat map has no categories; a file that changed since the first pass may leave the range.
    if (!(category >= 0 && category <= kCategories)) return;
    ++distribution.histogram[static_cast<std::size_t>(category)];
  });
  if (!counted.Ok()) return counted.Stop();
  distribution.standardDeviation = std::sqrt(squares / static_cast<double>(figures.cellCount));
  return distribution;
}

std::string FigureText(const std::optional<double>& figure) {
  return figure ? NumberText(*figure) : std::string();
}

}  // namespace ormel
