#include "mce/nonlinear/graph_csv.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "base/file_writer.h"
#include "text/arithmetic.h"
#include "text/csv.h"
#include "text/numbers.h"

namespace ormel {
namespace {

constexpr int kLimitPlaces = 3;

std::string_view Bare(std::string_view item) {
  item = WithoutBlanks(item);
  const bool quoted = item.size() >= 2 && item.front() == '"' && item.back() == '"';
  return quoted ? item.substr(1, item.size() - 2) : item;
}

void AddNumbers(std::string_view line, std::vector<double>& numbers) {
  while (true) {
    const std::size_t comma = line.find(',');
    const std::string_view item = Bare(line.substr(0, comma));
    if (IsNumeric(item)) numbers.push_back(TextToNumber(item));
    if (comma == std::string_view::npos) return;
    line.remove_prefix(comma + 1);
  }
}

}  // namespace

Outcome<std::vector<double>> ReadCsvNumbers(const std::filesystem::path& path) {
  const Outcome<std::vector<std::string>> lines = ReadCsvLines(path);
  if (!lines.Ok()) return lines.Stop();
  std::vector<double> numbers;
  for (const std::string& line : lines.Value()) AddNumbers(line, numbers);
  return numbers;
}

void FillPoints(WeightGraph& graph, std::span<const double> values, CsvFill fill) {
  const int n = graph.pointCount;
  const bool spread = fill == CsvFill::kInterpolate;
  const int filled = spread ? n : static_cast<int>(std::min<std::size_t>(values.size(), n));
  double top = values[0];
  double bottom = values[0];
  for (int i = 1; i <= filled; ++i) {
    const double value =
        spread ? SpreadValue(values, i, n) : values[static_cast<std::size_t>(i - 1)];
    graph.Point(i) = value;
    top = std::max(top, value);
    bottom = std::min(bottom, value);
  }
  graph.topValue = HalfEvenRound(top, kLimitPlaces);
  graph.bottomValue = HalfEvenRound(bottom, kLimitPlaces);
}

Outcome<> WriteCsvPoints(const std::filesystem::path& path, const WeightGraph& graph) {
  std::string line;
  for (int i = 1; i <= graph.pointCount; ++i) {
    if (i > 1) line += ", ";
    line += NumberText(graph.Point(i));
  }
  return WriteFile(path, line + "\r\n");
}

}  // namespace ormel
