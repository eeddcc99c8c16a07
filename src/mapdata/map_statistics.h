// Summary figures of a map file, within a constraint when there is one. The files are streamed: a
// map of any size takes no more memory than a block of cells.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "base/outcome.h"
#include "base/progress_sink.h"

namespace ormel {

struct MapStatsRecord {
  std::int64_t cellCount = 0;
  double cellSum = 0;
  std::optional<double> minimum;  // none, like the next two, without a counted cell
  std::optional<double> maximum;
  std::optional<double> mean;
};

// A map with the constraint that says which of its cells count.
struct MapToCount {
  std::string path;
  std::string constraint;  // empty: every cell counts
};

// One pass over all values to the end of the map, whatever size its header gives. A value counts
// when it is not NODATA and the constraint has exactly 1 in its place; a constraint that ends early
// keeps its last value. Fails when a file cannot be read.
[[nodiscard]] Outcome<MapStatsRecord> MapStatistics(const MapToCount& map, ProgressSink& progress);

// What a second pass adds.
struct MapDistribution {
  std::optional<double> standardDeviation;  // of the whole population
  // Counts of the values by Round(255 * (v - minimum) / (maximum - minimum)). A flat map has none.
  std::array<std::int64_t, 256> histogram{};
};

[[nodiscard]] Outcome<MapDistribution> DistributionOf(const MapToCount& map,
                                                      const MapStatsRecord& figures,
                                                      ProgressSink& progress);

// A figure as it stands; empty when there is none.
std::string FigureText(const std::optional<double>& figure);

}  // namespace ormel
