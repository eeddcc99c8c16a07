// A value for each class of a map, as people type them: texts.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "mapdata/value_lookup.h"

namespace ormel {

struct ClassRow {
  std::string classText;
  std::string output;  // empty: a cell of this class stays as it is
};

class ClassTable {
 public:
  // Rows count from 1.
  int Count() const { return static_cast<int>(rows_.size()); }
  ClassRow& At(int row) { return rows_[static_cast<std::size_t>(row - 1)]; }
  const ClassRow& At(int row) const { return rows_[static_cast<std::size_t>(row - 1)]; }
  const std::vector<ClassRow>& Rows() const { return rows_; }

  // A row for each value, without an output. The values ascend.
  void SetClasses(const std::vector<double>& values);
  // The row of a value; 0: none has it.
  int RowOf(double value) const;

  void ClearOutputs();
  // Rows without an output take their class.
  void FillOutputs();
  // Stretches the outputs that are numbers to 0 to 255; a single one becomes 0.
  void ScaleOutputs();

  // Outputs that are no numbers, empty ones left out.
  int OutputsWithoutNumber() const;
  int RowsWithoutOutput() const;

  // "class, output" on each line.
  std::string Csv() const;
  // Takes the outputs of such lines, for the classes of that value. Classes that are not in the
  // table join it, which ascends then; lines that do not begin with a number are passed over.
  void TakeCsv(std::span<const std::string> lines);

 private:
  std::vector<ClassRow> rows_;
};

// The texts that replace the cells of classes. A value that is twice in the table has the first
// one.
class ClassOutputs {
 public:
  explicit ClassOutputs(const std::vector<ClassRow>& rows);

  // What a cell becomes; null: it stays as it is.
  const std::string* Of(double value) const {
    const int entry = lookup_.Find(value);
    return entry == ValueLookup::kNone ? nullptr : &texts_[static_cast<std::size_t>(entry)];
  }

 private:
  ValueLookup lookup_;
  std::vector<std::string> texts_;
};

}  // namespace ormel
