#include "rastertools/map_report.h"

#include <cstddef>
#include <optional>

#include "text/numbers.h"

namespace ormel {
namespace {

constexpr char kLineEnd[] = "\r\n";
constexpr int kShownPlaces = 5;
constexpr int kCategoryPlaces = 3;
constexpr double kHighestCategory = 255;

}  // namespace

Outcome<MapFigures> FiguresOf(const MapToCount& map, ProgressSink& progress) {
  ProgressSpan first(progress, 0, 50);
  ProgressSpan second(progress, 50, 100);
  const Outcome<MapStatsRecord> summary = MapStatistics(map, first);
  if (!summary.Ok()) return summary.Stop();
  const Outcome<MapDistribution> distribution = DistributionOf(map, summary.Value(), second);
  if (!distribution.Ok()) return distribution.Stop();
  return MapFigures{summary.Value(), distribution.Value()};
}

std::string ShownFigure(const std::optional<double>& figure) {
  return figure ? NumberText(HalfEvenRound(*figure, kShownPlaces)) : std::string();
}

CategoryRange RangeOfCategory(const MapStatsRecord& summary, int category) {
  const double minimum = summary.minimum.value_or(0);
  const double range = summary.maximum.value_or(0) - minimum;
  const double low = category * range / kHighestCategory + minimum;
  const double high = low + range / kHighestCategory;
  return {HalfEvenRound(low, kCategoryPlaces), HalfEvenRound(high, kCategoryPlaces)};
}

std::string FiguresReport(const MapToCount& map, const MapFigures& figures) {
  const auto& [summary, distribution] = figures;
  const struct {
    const char* name;
    std::string value;
  } lines[] = {{"Filename: ", map.path},
               {"Constraint: ", map.constraint},
               {"Minimum: ", FigureText(summary.minimum)},
               {"Maximum: ", FigureText(summary.maximum)},
               {"Mean: ", FigureText(summary.mean)},
               {"Standard Deviation: ", FigureText(distribution.standardDeviation)},
               {"Cell Count: ", std::to_string(summary.cellCount)},
               {"Cell Sum: ", NumberText(summary.cellSum)}};
  std::string report;
  for (const auto& [name, value] : lines) report += name + value + kLineEnd;
  return report;
}

std::string FiguresTableHeading() {
  return std::string("Filename, Minimum, Maximum, Mean, Standard Deviation, Cell Count, Cell Sum") +
         kLineEnd;
}

std::string FiguresTableLine(const std::string& path, const MapFigures& figures) {
  const auto& [summary, distribution] = figures;
  return path + "," + ShownFigure(summary.minimum) + "," + ShownFigure(summary.maximum) + "," +
         ShownFigure(summary.mean) + "," + ShownFigure(distribution.standardDeviation) + "," +
         std::to_string(summary.cellCount) + "," + ShownFigure(summary.cellSum) + kLineEnd;
}

std::string HistogramTable(const MapFigures& figures) {
  std::string table = std::string("Category Number, Category Value Range, Cell Count") + kLineEnd;
  const auto& histogram = figures.distribution.histogram;
  for (std::size_t i = 0; i < histogram.size(); ++i) {
    const auto [low, high] = RangeOfCategory(figures.summary, static_cast<int>(i));
    table += std::to_string(i) + "," + NumberText(low) + "-" + NumberText(high) + "," +
             std::to_string(histogram[i]) + kLineEnd;
  }
  return table;
}

}  // namespace ormel
