#include "mce/nonlinear/graph_text.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "base/file_writer.h"
#include "text/numbers.h"
#include "text/token_reader.h"

namespace ormel {
namespace {

constexpr char kFieldEnd = '*';

// Hands out the fields of a line as numbers.
class Fields {
 public:
  explicit Fields(std::string_view line) : left_(line) {}

  // Behind the last field: 0, and Complete() is false from then on.
  double Next() {
    const std::size_t end = left_.find(kFieldEnd);
    if (end == std::string_view::npos) {
      complete_ = false;
      return 0;
    }
    const double number = TextToNumber(left_.substr(0, end));
    left_.remove_prefix(end + 1);
    return number;
  }

  bool Complete() const { return complete_; }

 private:
  std::string_view left_;
  bool complete_ = true;
};

// A field that must be a whole number from `low` to `high`.
std::optional<int> Whole(double field, int low, int high) {
  if (!(field >= low && field <= high) || field != std::floor(field)) return std::nullopt;
  return static_cast<int>(field);
}

std::string Keyed(std::string text) {
  const bool negative = text[0] == '-';
  if (negative) text.erase(0, 1);
  if (text.starts_with("0.")) text.erase(0, 1);
  return (negative ? '-' : ' ') + text;
}

}  // namespace

std::string KeyedNumberText(double value) { return Keyed(NumberText(value)); }
std::string KeyedNumberText(float value) { return Keyed(NumberText(value)); }

std::string graphToText(const WeightGraph& graph) { return graphToText(graph, {}); }

std::string graphToText(const WeightGraph& graph, std::span<const float> firstPoints) {
  std::string text(1, kFieldEnd);
  const auto add = [&](auto number) { (text += KeyedNumberText(number)) += kFieldEnd; };
  add(static_cast<double>(graph.pointCount));
  for (const GraphParameters& slots : graph.parameters) {
    for (const std::string& parameter : slots) add(TextToNumber(parameter));
  }
  add(graph.topValue);
  add(graph.bottomValue);
  add(static_cast<double>(graph.type));
  const int given = std::min(graph.pointCount, static_cast<int>(firstPoints.size()));
  for (int i = 1; i <= given; ++i) add(firstPoints[static_cast<std::size_t>(i - 1)]);
  for (int i = given + 1; i <= graph.pointCount; ++i) add(graph.Point(i));
  return text;
}

bool graphFromText(std::string_view line, WeightGraph& graph) {
  if (line.empty()) return false;
  Fields fields(line.substr(1));
  WeightGraph read;
  read.samples = graph.samples;
  const auto count = Whole(fields.Next(), kFewestGraphPoints, kMostGraphPoints);
  for (GraphParameters& slots : read.parameters) {
    for (std::string& parameter : slots) parameter = NumberText(fields.Next());
  }
  read.topValue = fields.Next();
  read.bottomValue = fields.Next();
  const auto type = Whole(fields.Next(), 1, kGraphTypes);
  const auto inverted = Whole(TextToNumber(read.Parameters(GraphType::kExponential).back()), 0, 1);
  if (!count || !type || !inverted) return false;
  read.pointCount = *count;
  read.type = static_cast<GraphType>(*type);
  read.points.fill(0);
  for (int i = 1; i <= *count; ++i) read.Point(i) = fields.Next();
  if (!fields.Complete()) return false;
  RefreshSamples(read);
  graph = std::move(read);
  return true;
}

Outcome<> WriteGraphFile(const std::filesystem::path& path, const WeightGraph& graph) {
  return WriteFile(path, graphToText(graph) + "\r\n");
}

// The "*" in front goes here and the blank of the count in graphFromText(): the line reads the same
// as one that has both.
Outcome<bool> ReadGraphFile(const std::filesystem::path& path, WeightGraph& graph) {
  Outcome<TokenReader> file = TokenReader::Open(path);
  if (!file.Ok()) return file.Stop();
  std::string line;
  file.Value().ReadLine(line);
  if (!file.Value().Error().empty()) return Failure{FailureKind::kDisk, file.Value().Error()};
  return graphFromText(std::string_view(line).substr(line.empty() ? 0 : 1), graph);
}

}  // namespace ormel
