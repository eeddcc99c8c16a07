// The figures of maps as texts: a report of one map, a table of several, and the histogram of one.
#pragma once

#include <optional>
#include <string>

#include "base/outcome.h"
#include "base/progress_sink.h"
#include "mapdata/map_statistics.h"

namespace ormel {

// All figures of a map, by two passes.
struct MapFigures {
  MapStatsRecord summary;
  MapDistribution distribution;
};

// Fails when the map or its constraint cannot be read.
[[nodiscard]] Outcome<MapFigures> FiguresOf(const MapToCount& map, ProgressSink& progress);

// A figure as it is shown and stands in tables: rounded to 5 places, empty when there is none.
std::string ShownFigure(const std::optional<double>& figure);

// The values of a category (from 0), rounded to 3 places: from `low` to `high`.
struct CategoryRange {
  double low = 0;
  double high = 0;
};
CategoryRange RangeOfCategory(const MapStatsRecord& summary, int category);

// A line for each figure, in full precision. Figures that the map does not have are empty.
std::string FiguresReport(const MapToCount& map, const MapFigures& figures);

// A table of maps: its heading, and the line of one map, as its figures are shown.
std::string FiguresTableHeading();
std::string FiguresTableLine(const std::string& path, const MapFigures& figures);

// A table of the categories: number, range and count.
std::string HistogramTable(const MapFigures& figures);

}  // namespace ormel
