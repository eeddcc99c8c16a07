// The figures of maps as texts: a report of one map, a table of several, and the histogram of one.
#pragma once

#include <string>

#include "base/outcome.h"
#include "base/progress_sink.h"
#include "mapdata/map_statistics.h"

namespace ormel {

inline constexpr int kShownPlaces = 5;  // of figures on the screen and in the table

// All figures of a map, by two passes.
struct MapFigures {
  MapStatsRecord summary;
  MapDistribution distribution;
};

// Fails when the map or its constraint cannot be read.
[[nodiscard]] Outcome<MapFigures> FiguresOf(const MapToCount& map, ProgressSink& progress);

// The values of a category (from 0), rounded to 3 places: from `low` to `high`.
struct CategoryRange {
  double low = 0;
  double high = 0;
};
CategoryRange RangeOfCategory(const MapStatsRecord& summary, int category);

// A line for each figure, in full precision. Figures that the map does not have are empty.
std::string FiguresReport(const MapToCount& map, const MapFigures& figures);

// A table of maps: its heading, and the line of one map, rounded to kShownPlaces.
std::string FiguresTableHeading();
std::string FiguresTableLine(const std::string& path, const MapFigures& figures);

// A table of the categories: number, range and count.
std::string HistogramTable(const MapFigures& figures);

}  // namespace ormel
