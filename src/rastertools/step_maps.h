// Factor maps for time steps, from one map and a table of values: a line for each class or kind of
// change, a column for each step.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "base/outcome.h"
#include "base/progress_sink.h"
#include "text/dates.h"

namespace ormel {

// A heading over the steps, and rows whose first field is the class.
class StepTable {
 public:
  // Lines without a letter are passed over. Fails when the file cannot be read, and when it has no
  // step.
  [[nodiscard]] static Outcome<StepTable> Read(const std::string& path);

  // Both count from 1 in the following.
  int Steps() const { return static_cast<int>(heading_.size()) - 1; }
  int Rows() const { return static_cast<int>(rows_.size()); }
  // Fields without the blanks around them: the heading of a step, the class of a row, and its value
  // for a step, "-1" when the row is too short.
  const std::string& Heading(int step) const { return heading_[static_cast<std::size_t>(step)]; }
  const std::string& ClassOf(int row) const { return FieldsOf(row).front(); }
  std::string Value(int row, int step) const;

 private:
  using Fields = std::vector<std::string>;  // at least one
  const Fields& FieldsOf(int row) const { return rows_[static_cast<std::size_t>(row - 1)]; }

  Fields heading_;
  std::vector<Fields> rows_;
};

// What names end in.
enum class StepSuffix { kFixedLength, kVariableLength, kDate, kHeading };

struct StepDates {
  double start = 0;
  DateUnit unit = DateUnit::kDay;
};

// The unit of "year", "month", "week", "day", "hour", "minute" or "second", in letters of any size.
std::optional<DateUnit> DateUnitNamed(const std::string& word);

struct StepNames {
  std::string folder;
  std::string factorName;  // in front of the suffix; empty: nothing
  StepSuffix suffix = StepSuffix::kFixedLength;
  StepDates dates{};  // for kDate
};

// The paths of all steps: FOLDER/NAME + SUFFIX + ".asc". Letters that no name may hold are replaced
// in headings. Fails when a date leaves the calendar.
[[nodiscard]] Outcome<std::vector<std::string>> StepPaths(const StepTable& table,
                                                          const StepNames& names);

struct StepMapsJob {
  std::string factor;
  StepTable table;
  std::string tablePath;
  std::vector<std::string> targets;  // of all steps
  // The row whose numbers multiply the factor; none: each cell becomes the value of its class.
  std::optional<int> row{};
  int decimalPlaces = 2;  // of products
};

// Writes the maps of all steps with the factor's header. NODATA, and a cell whose class is not in
// the table or has no value there, is written as it is; rows whose class is no number have no
// cells. Old files are replaced. Fails, and writes nothing, when two steps have one name or a step
// has that of the factor or the table; fails when the factor or a target cannot be used.
[[nodiscard]] Outcome<> WriteStepMaps(const StepMapsJob& job, ProgressSink& progress);

}  // namespace ormel
