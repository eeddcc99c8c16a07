#include "rastertools/data_prep_list.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "text/paths.h"

namespace ormel {

void DataPrepList::Add(const std::string& input) {
  rows_.push_back({input, JoinPath(outputFolder_, FileNamePart(input, true))});
}

void DataPrepList::Remove(std::span<const int> rows) {
  std::vector<Row> kept;
  for (int row = 1; row <= Count(); ++row) {
    if (std::find(rows.begin(), rows.end(), row) == rows.end()) kept.push_back(At(row));
  }
  rows_ = std::move(kept);
}

void DataPrepList::SetOutput(int row, const std::string& path) {
  rows_[static_cast<std::size_t>(row - 1)].output = path;
}

void DataPrepList::ResetOutputs() {
  for (Row& row : rows_) row.output = JoinPath(outputFolder_, FileNamePart(row.input, true));
}

void DataPrepList::MoveOutputs() {
  for (Row& row : rows_) row.output = JoinPath(outputFolder_, FileNamePart(row.output, true));
}

void DataPrepList::AddPrefix(const std::string& text) {
  for (Row& row : rows_) {
    row.output = FolderPart(row.output) + text + FileNamePart(row.output, true);
  }
}

void DataPrepList::AddSuffix(const std::string& text) {
  for (Row& row : rows_) {
    const std::string name = FileNamePart(row.output, true);
    const std::size_t point = std::min(name.rfind('.'), name.size());
    row.output = FolderPart(row.output) + name.substr(0, point) + text + name.substr(point);
  }
}

std::string OverwriteQuestion(std::span<const DataPrepList::Row> rows) {
  bool modifies = false;
  bool overwrites = false;
  for (const DataPrepList::Row& row : rows) {
    std::error_code error;
    const bool isOriginal = row.output == row.input;
    modifies = modifies || isOriginal;
    overwrites = overwrites || (!isOriginal && std::filesystem::exists(row.output, error));
  }
  if (modifies && overwrites) {
    return "This will modify one or more original files and overwrite other existing files! "
           "Continue anyway?";
  }
  if (modifies) return "This will modify one or more original files! Continue anyway?";
  if (overwrites) return "This will overwrite existing files! Continue anyway?";
  return "";
}

}  // namespace ormel
