#include "mapdata/map_statistics.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>
#include <vector>

#include "mapdata/raster.h"
#include "text/numbers.h"
#include "text/token_reader.h"

namespace ormel {
namespace {

constexpr std::size_t kCellsAtOnce = 4096;
constexpr double kCategories = 255;

Outcome<TokenReader> OpenBehindHeader(const std::string& path) {
  Outcome<TokenReader> reader = TokenReader::Open(path);
  if (reader.Ok()) reader.Value().SkipLines(CountHeaderLines(path));
  return reader;
}

double NoDataOf(const std::string& path) {
  const std::string text = ReadNoDataText(path);
  return text.empty() ? std::numeric_limits<double>::quiet_NaN() : TextToNumber(text);
}

// The constraint's values beside those of the map.
class ConstraintValues {
 public:
  [[nodiscard]] Outcome<> Open(const std::string& path) {
    if (path.empty()) return Done{};
    Outcome<TokenReader> reader = OpenBehindHeader(path);
    if (!reader.Ok()) return reader.Stop();
    reader_.emplace(std::move(reader.Value()));
    return Done{};
  }

  // The next `count` values.
  std::span<const double> Next(std::size_t count) {
    const std::size_t read = reader_ ? reader_->ReadNumbers(std::span(values_).first(count)) : 0;
    if (read > 0) last_ = values_[read - 1];
    std::fill(values_.begin() + static_cast<std::ptrdiff_t>(read),
              values_.begin() + static_cast<std::ptrdiff_t>(count), last_);
    return std::span<const double>(values_).first(count);
  }

 private:
  std::optional<TokenReader> reader_;  // none: every cell counts
  double last_ = 1;
  std::vector<double> values_ = std::vector<double>(kCellsAtOnce);
};

// Gives every counted value to `count`, in the order of the file.
template <class Count>
Outcome<> CountValues(const MapToCount& map, ProgressSink& progress, Count count) {
  Outcome<TokenReader> reader = OpenBehindHeader(map.path);
  if (!reader.Ok()) return reader.Stop();
  ConstraintValues constraint;
  const Outcome<> opened = constraint.Open(map.constraint);
  if (!opened.Ok()) return opened;
  const double nodata = NoDataOf(map.path);
  std::vector<double> values(kCellsAtOnce);
  for (;;) {
    const std::size_t read = reader.Value().ReadNumbers(values);
    if (!reader.Value().Error().empty()) {
      return Failure{FailureKind::kDisk, reader.Value().Error()};
    }
    const std::span<const double> allowed = constraint.Next(read);
    for (std::size_t i = 0; i < read; ++i) {
      if (allowed[i] == 1 && values[i] != nodata) count(values[i]);
    }
    if (read < values.size()) return Done{};
    if (!progress.Report(reader.Value().Percent())) return Cancelled{};
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
    const double category = HalfEvenRound(kCategories * (value - minimum) / range);
    // A flat map has no categories; a file that changed since the first pass may leave the range.
    if (!(category >= 0 && category <= kCategories)) return;
    ++distribution.histogram[static_cast<std::size_t>(category)];
  });
  if (!counted.Ok()) return counted.Stop();
  distribution.standardDeviation = std::sqrt(squares / static_cast<double>(figures.cellCount));
  return distribution;
}

}  // namespace ormel
