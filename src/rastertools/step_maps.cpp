#include "rastertools/step_maps.h"

#include <algorithm>
#include <filesystem>
#include <span>
#include <string_view>
#include <system_error>
#include <unordered_set>
#include <utility>

#include "mapdata/map_stream.h"
#include "mapdata/value_lookup.h"
#include "text/arithmetic.h"
#include "text/csv.h"
#include "text/numbers.h"
#include "text/paths.h"
#include "text/text_search.h"

namespace ormel {
namespace {

// Files that are open at once; a longer series is written in parts.
constexpr std::size_t kMostFiles = 200;

std::vector<std::string> FieldsOfLine(std::string_view line) {
  std::vector<std::string> fields;
  for (;;) {
    const std::size_t comma = line.find(',');
    fields.emplace_back(WithoutBlanks(line.substr(0, comma)));
    if (comma == std::string_view::npos) return fields;
    line.remove_prefix(comma + 1);
  }
}

bool IsSameFile(const std::string& one, const std::string& other) {
  std::error_code error;
  return one == other || std::filesystem::equivalent(one, other, error);
}

Outcome<std::string> SuffixOf(const StepTable& table, const StepNames& names, int step) {
  switch (names.suffix) {
    case StepSuffix::kFixedLength:
      return NumberInSeries(step, table.Steps());
    case StepSuffix::kVariableLength:
      return std::to_string(step);
    case StepSuffix::kHeading: {
      std::string heading = table.Heading(step);
      CleanFileName(heading, true);
      return heading;
    }
    case StepSuffix::kDate:
      break;
  }
  const auto date = DateAdd(names.dates.unit, step - 1, names.dates.start);
  if (!date) {
    return Failure{FailureKind::kRefused, "The date of step " + std::to_string(step) +
                                              " is beyond the calendar, which ends in 9999"};
  }
  std::string text = DateText(*date);
  std::replace(text.begin(), text.end(), '/', '-');
  return text;
}

Outcome<> CheckTargets(const StepMapsJob& job) {
  std::unordered_set<std::string> known;
  for (const std::string& target : job.targets) {
    if (!known.insert(target).second) {
      return Failure{FailureKind::kRefused, target + ": two steps have this name"};
    }
    if (IsSameFile(target, job.factor) || IsSameFile(target, job.tablePath)) {
      return Failure{FailureKind::kRefused, target + ": would be replaced by one of its steps"};
    }
  }
  return Done{};
}

// What the cells of one part of the series become.
class StepCells {
 public:
  StepCells(const StepMapsJob& job, double nodata, std::size_t first, std::size_t count)
      : nodata_(nodata), places_(job.decimalPlaces) {
    for (std::size_t i = first; i < first + count; ++i) {
      const int step = static_cast<int>(i) + 1;
      if (job.row) {
        factors_.push_back(TextToNumber(job.table.Value(*job.row, step)));
      } else {
        texts_.emplace_back();
        AddClasses(job.table, step);
      }
    }
  }

  void MakeRow(std::span<const double> cells, std::span<RowText> texts) const {
    if (factors_.empty()) {
      for (const double cell : cells) AddClassValue(cell, texts);
    } else {
      for (std::size_t i = 0; i < texts.size(); ++i) Multiply(cells, factors_[i], texts[i]);
    }
  }

 private:
  void AddClasses(const StepTable& table, int step) {
    for (int row = 1; row <= table.Rows(); ++row) {
      if (!IsNumeric(table.ClassOf(row))) continue;
      const auto entry = static_cast<std::size_t>(classes_.Add(TextToNumber(table.ClassOf(row))));
      // A class that is twice in the table has its first row.
      if (entry == texts_.back().size()) texts_.back().push_back(table.Value(row, step));
    }
  }

  void AddClassValue(double cell, std::span<RowText> texts) const {
    const int found = cell == nodata_ ? ValueLookup::kNone : classes_.Find(cell);
    for (std::size_t i = 0; i < texts.size(); ++i) {
      if (found == ValueLookup::kNone || texts_[i][static_cast<std::size_t>(found)].empty()) {
        texts[i].Add(cell);
      } else {
        texts[i].AddText(texts_[i][static_cast<std::size_t>(found)]);
      }
    }
  }

  void Multiply(std::span<const double> cells, double factor, RowText& text) const {
    for (const double cell : cells) {
      if (cell == nodata_) {
        text.Add(cell);
      } else {
        text.AddRounded(cell * factor, places_);
      }
    }
  }

  const double nodata_;
  const int places_;
  std::vector<double> factors_;  // of each step; none: the classes count
  ValueLookup classes_;
  std::vector<std::vector<std::string>> texts_;  // of each step, by class
};

// The maps of `count` steps, from `first` (from 0) on.
Outcome<> WritePart(const StepMapsJob& job, std::size_t first, std::size_t count,
                    ProgressSink& progress) {
  Outcome<WholeMap> factor = OpenWholeMap(job.factor);
  if (!factor.Ok()) return factor.Stop();
  auto& [frame, rows] = factor.Value();
  const StepCells cells(job, rows.NoData(), first, count);
  const std::string header = CopiedHeader(rows.HeaderLines());
  SeveralMaps maps{{}, frame.nrows, static_cast<std::size_t>(frame.ncols)};
  for (std::size_t i = first; i < first + count; ++i) maps.maps.push_back({job.targets[i], header});
  SeveralRowSteps steps;
  steps.read = [&rows = rows](int, std::span<double> row) { return rows.ReadRow(row); };
  steps.make = [&](int, std::span<double> row, std::span<RowText> texts) {
    cells.MakeRow(row, texts);
  };
  return WriteMaps(maps, steps, progress);
}

}  // namespace

Outcome<StepTable> StepTable::Read(const std::string& path) {
  const Outcome<std::vector<std::string>> lines = ReadCsvLines(path);
  if (!lines.Ok()) return lines.Stop();
  StepTable table;
  for (const std::string& line : lines.Value()) {
    if (WithoutBlanks(line).empty()) continue;
    Fields fields = FieldsOfLine(line);
    if (table.heading_.empty()) {
      table.heading_ = std::move(fields);
    } else {
      table.rows_.push_back(std::move(fields));
    }
  }
  if (table.Steps() >= 1) return table;
  return Failure{FailureKind::kDamaged, path + ": has no column for a step behind the first one"};
}

std::string StepTable::Value(int row, int step) const {
  const Fields& fields = FieldsOf(row);
  const auto place = static_cast<std::size_t>(step);
  return place < fields.size() ? fields[place] : std::string(kMissingField);
}

std::optional<DateUnit> DateUnitNamed(const std::string& word) {
  static constexpr std::pair<const char*, const char*> kKeys[] = {
      {"year", "yyyy"}, {"month", "m"},  {"week", "ww"}, {"day", "d"},
      {"hour", "h"},    {"minute", "n"}, {"second", "s"}};
  const std::string letters = InSmallLetters(WithoutBlanks(word));
  for (const auto& [name, key] : kKeys) {
    if (letters == name) return DateUnitOf(key);
  }
  return std::nullopt;
}

Outcome<std::vector<std::string>> StepPaths(const StepTable& table, const StepNames& names) {
  std::vector<std::string> paths;
  for (int step = 1; step <= table.Steps(); ++step) {
    const Outcome<std::string> suffix = SuffixOf(table, names, step);
    if (!suffix.Ok()) return suffix.Stop();
    paths.push_back(JoinPath(names.folder, names.factorName + suffix.Value() + ".asc"));
  }
  return paths;
}

Outcome<> WriteStepMaps(const StepMapsJob& job, ProgressSink& progress) {
  Outcome<> written = CheckTargets(job);
  const std::size_t steps = job.targets.size();
  for (std::size_t first = 0; first < steps && written.Ok(); first += kMostFiles) {
    const std::size_t count = std::min(kMostFiles, steps - first);
    const auto percent = [steps](std::size_t done) {
      return 100.0 * static_cast<double>(done) / static_cast<double>(steps);
    };
    ProgressSpan span(progress, percent(first), percent(first + count));
    written = WritePart(job, first, count, span);
  }
  return written;
}

}  // namespace ormel
