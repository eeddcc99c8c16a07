// Weight graphs as files hold them: one line of fields, each ended by "*", with one "*" in front.
//
//   * 32* 0* 255* 0* 0* ... * 255* 0* 1* 1* 1* ... *
//
// They are the count of control points; the four parameters of each of the five types (a slot that
// a type does not use is 0); top, bottom and type; then the points, as many as the count says. The
// line stands alone in a .gri file, and as a field in the model files.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>

#include "base/outcome.h"
#include "mce/nonlinear/weight_graph.h"

namespace ormel {

// A number as the fields hold it: that of NumberText() without the zero in front of a point, and a
// blank where no minus stands: " 0", " .5", "-.5", " 1E+20".
std::string KeyedNumberText(double value);
std::string KeyedNumberText(float value);

// NOLINTBEGIN(readability-identifier-naming): the names by which these are known to model builders

// The graph as one line, without a line end. Parameters are written as the numbers they count as.
std::string graphToText(const WeightGraph& graph);
// The same with other values for the first points.
std::string graphToText(const WeightGraph& graph, std::span<const float> firstPoints);

// Takes the graph from a line and computes its samples. The first character is passed over,
// whatever it is. Points above the count become 0, and parameters the texts of their numbers. False
// leaves `graph` as it was: a field is missing, the count, the type or the flag of an inverted
// curve is out of its range.
bool graphFromText(std::string_view line, WeightGraph& graph);

// NOLINTEND(readability-identifier-naming)

// Writes the graph as a .gri file.
[[nodiscard]] Outcome<> WriteGraphFile(const std::filesystem::path& path, const WeightGraph& graph);

// Takes the graph from the first line of a .gri file. The value says whether it could: a text that
// is none leaves `graph` as it was. Fails when the file cannot be read.
[[nodiscard]] Outcome<bool> ReadGraphFile(const std::filesystem::path& path, WeightGraph& graph);

}  // namespace ormel
