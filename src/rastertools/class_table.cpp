#include "rastertools/class_table.h"

#include <algorithm>
#include <cstddef>

#include "base/extremes.h"
#include "text/csv.h"
#include "text/numbers.h"

namespace ormel {
namespace {

constexpr double kScaledMaximum = 255;

// A row whose class is no number has no cells.
bool HasCells(const ClassRow& row) { return IsNumeric(WithoutBlanks(row.classText)); }

double ValueOf(const ClassRow& row) { return TextToNumber(row.classText); }

}  // namespace

void ClassTable::SetClasses(const std::vector<double>& values) {
  rows_.clear();
  for (const double value : values) rows_.push_back({NumberText(value), ""});
}

int ClassTable::RowOf(double value) const {
  const auto found = std::find_if(rows_.begin(), rows_.end(), [=](const ClassRow& row) {
    return HasCells(row) && ValueOf(row) == value;
  });
  return found == rows_.end() ? 0 : static_cast<int>(found - rows_.begin()) + 1;
}

void ClassTable::ClearOutputs() {
  for (ClassRow& row : rows_) row.output.clear();
}

void ClassTable::FillOutputs() {
  for (ClassRow& row : rows_) {
    if (WithoutBlanks(row.output).empty()) row.output = row.classText;
  }
}

void ClassTable::ScaleOutputs() {
  Extremes outputs;
  for (const ClassRow& row : rows_) {
    if (IsNumeric(WithoutBlanks(row.output))) outputs.Add(TextToNumber(row.output));
  }
  if (outputs.largest == outputs.smallest) outputs.largest = outputs.smallest + 1;
  const double range = outputs.largest - outputs.smallest;
  for (ClassRow& row : rows_) {
    if (!IsNumeric(WithoutBlanks(row.output))) continue;
    row.output = NumberText(kScaledMaximum * (TextToNumber(row.output) - outputs.smallest) / range);
  }
}

int ClassTable::OutputsWithoutNumber() const {
  return static_cast<int>(std::count_if(rows_.begin(), rows_.end(), [](const ClassRow& row) {
    const std::string_view output = WithoutBlanks(row.output);
    return !output.empty() && !IsNumeric(output);
  }));
}

int ClassTable::RowsWithoutOutput() const {
  return static_cast<int>(std::count_if(rows_.begin(), rows_.end(), [](const ClassRow& row) {
    return WithoutBlanks(row.output).empty();
  }));
}

std::string ClassTable::Csv() const {
  std::string text;
  for (const ClassRow& row : rows_) text += row.classText + ", " + row.output + "\r\n";
  return text;
}

void ClassTable::TakeCsv(std::span<const std::string> lines) {
  const auto before = rows_.size();
  ValueLookup known;
  std::vector<std::size_t> rowOf;  // of the entries
  const auto entryOf = [&](double value, std::size_t row) {
    const auto entry = static_cast<std::size_t>(known.Add(value));
    if (entry == rowOf.size()) rowOf.push_back(row);
    return rowOf[entry];
  };
  for (std::size_t i = 0; i < before; ++i) {
    if (HasCells(rows_[i])) entryOf(ValueOf(rows_[i]), i);
  }
  for (const std::string& line : lines) {
    const std::string_view classText = WithoutBlanks(CsvField(line, 1));
    if (!IsNumeric(classText)) continue;
    const bool hasOutput = line.find(',') != std::string::npos;
    const std::string output(hasOutput ? WithoutBlanks(CsvField(line, 2)) : "");
    const std::size_t row = entryOf(TextToNumber(classText), rows_.size());
    if (row == rows_.size()) rows_.push_back({std::string(classText), ""});
    rows_[row].output = output;
  }
  if (rows_.size() == before) return;
  std::stable_sort(rows_.begin(), rows_.end(), [](const ClassRow& one, const ClassRow& other) {
    return ValueOf(one) < ValueOf(other);
  });
}

ClassOutputs::ClassOutputs(const std::vector<ClassRow>& rows) {
  for (const ClassRow& row : rows) {
    std::string output(WithoutBlanks(row.output));
    if (output.empty() || !HasCells(row)) continue;
    const int entry = lookup_.Add(ValueOf(row));
    if (static_cast<std::size_t>(entry) == texts_.size()) texts_.push_back(std::move(output));
  }
}

}  // namespace ormel
