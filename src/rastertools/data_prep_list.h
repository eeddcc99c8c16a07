// The maps that are prepared, each with the file that is written for it.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace ormel {

class DataPrepList {
 public:
  struct Row {
    std::string input;
    std::string output;
  };

  // Where outputs go; rows that are there keep theirs.
  const std::string& OutputFolder() const { return outputFolder_; }
  void SetOutputFolder(std::string folder) { outputFolder_ = std::move(folder); }

  // Rows count from 1.
  int Count() const { return static_cast<int>(rows_.size()); }
  const Row& At(int row) const { return rows_[static_cast<std::size_t>(row - 1)]; }
  // Its output has the same name in the output folder.
  void Add(const std::string& input);
  void Remove(std::span<const int> rows);
  void Clear() { rows_.clear(); }

  void SetOutput(int row, const std::string& path);
  // Every output gets its input's name, in the output folder.
  void ResetOutputs();
  // Every output keeps its name, in the output folder.
  void MoveOutputs();
  // A text in front of the name of every output, or behind it and before its extension.
  void AddPrefix(const std::string& text);
  void AddSuffix(const std::string& text);

 private:
  std::vector<Row> rows_;
  std::string outputFolder_;
};

// What has to be asked before these rows are written: they modify originals, or overwrite other
// files, or both. Empty: nothing.
std::string OverwriteQuestion(std::span<const DataPrepList::Row> rows);

}  // namespace ormel
