#include "mce/timestep/factor_behaviour.h"

#include <algorithm>
#include <string_view>

#include "base/file_writer.h"
#include "base/input_file.h"
#include "text/arithmetic.h"
#include "text/csv.h"
#include "text/numbers.h"

namespace ormel {
namespace {

constexpr char kExpanded[] = "Expanded";

bool BeginsWithNumber(std::string_view text) {
  text = WithoutBlanks(text);
  if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
  if (text.starts_with('.')) text.remove_prefix(1);
  return !text.empty() && IsDigit(text.front());
}

// Cuts the text up to the next comma off a line. `ended` is set behind the last one.
std::string_view CutField(std::string_view& line, bool& ended) {
  const std::size_t comma = line.find(',');
  ended = comma == std::string_view::npos;
  const std::string_view field = line.substr(0, comma);
  line.remove_prefix(ended ? line.size() : comma + 1);
  return field;
}

Outcome<std::vector<float>> NumbersOf(std::string_view fields) {
  std::vector<float> numbers;
  for (bool ended = false; !ended;) {
    const std::string_view field = WithoutBlanks(CutField(fields, ended));
    if (!IsNumeric(field)) return Failure{FailureKind::kDamaged, "Bad Data File"};
    numbers.push_back(Single(TextToNumber(field)));
  }
  return numbers;
}

}  // namespace

std::string describeBehaviour(const FactorBehaviour& behaviour) {
  std::string text = "Method of Change: \t";
  switch (behaviour.method) {
    case StepMethod::kExistingFiles:
      text += "Existing Files:";
      for (const std::string& file : behaviour.stepFiles) text += "\r\n" + file;
      return text;
    case StepMethod::kProducts:
      return text + "Product Database: " + behaviour.productCsv + ", Row: " + behaviour.productRow;
    default:
      return text + "Static";
  }
}

Outcome<std::vector<std::string>> ReadProductTitles(const std::string& path) {
  const Outcome<std::vector<std::string>> lines = ReadCsvLines(path);
  if (!lines.Ok()) return lines.Stop();
  std::vector<std::string> titles;
  for (const std::string_view line : lines.Value()) {
    std::string_view rest = line;
    bool ended = false;
    const std::string_view title = CutField(rest, ended);
    if (!ended && BeginsWithNumber(rest)) titles.emplace_back(title);
  }
  return titles;
}

Outcome<std::vector<float>> ReadProductRow(const std::string& path, const std::string& title) {
  const Outcome<std::vector<std::string>> lines = ReadCsvLines(path);
  if (!lines.Ok()) return lines.Stop();
  std::string_view expanded;  // the fields of the row that was written for a shorter or longer one
  for (const std::string_view line : lines.Value()) {
    std::string_view rest = line;
    bool ended = false;
    const std::string_view first = CutField(rest, ended);
    if (ended) continue;
    if (first == title) return NumbersOf(rest);
    if (first != kExpanded || !expanded.empty()) continue;
    const std::string_view of = CutField(rest, ended);
    if (!ended && ExpandedTitle(std::string(of)) == title) expanded = rest;
  }
  if (!expanded.empty()) return NumbersOf(expanded);
  return Failure{FailureKind::kDamaged, path + ": has no row \"" + title + "\""};
}

std::vector<float> SpreadProducts(const std::vector<float>& row, int steps) {
  const std::vector<double> values(row.begin(), row.end());
  std::vector<float> spread;
  for (int step = 1; step <= steps; ++step)
    spread.push_back(Single(SpreadValue(values, step, steps)));
  return spread;
}

std::string ExpandedTitle(const std::string& title) { return kExpanded + title; }

Outcome<> AppendExpandedRow(const std::string& path, const std::string& title,
                            const std::vector<float>& row) {
  Outcome<std::string> read = ReadWholeFile(path);
  if (!read.Ok()) return read.Stop();
  std::string& table = read.Value();
  if (!table.empty() && table.back() != '\n' && table.back() != '\r') table += "\r\n";
  table += std::string(kExpanded) + "," + title;
  for (const float number : row) table += "," + NumberText(number);
  return WriteFile(path, table + "\r\n");
}

}  // namespace ormel
