#include "ui/qt/qt_text_model.h"

#include <algorithm>

#include "ui/qt/qt_text.h"

namespace ormel::ui {

void TextModel::Show(const std::vector<std::string>& entries) {
  const auto common =
      std::mismatch(entries_.begin(), entries_.end(), entries.begin(), entries.end());
  const auto same = static_cast<int>(common.first - entries_.begin());
  const int before = rowCount();
  const auto after = static_cast<int>(entries.size());
  if (same == before && same == after) return;
  if (before == after) {
    entries_ = entries;
    emit dataChanged(index(same), index(after - 1));
  } else if (same == before) {
    beginInsertRows({}, before, after - 1);
    entries_ = entries;
    endInsertRows();
  } else {
    beginResetModel();
    entries_ = entries;
    endResetModel();
  }
}

int TextModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(entries_.size());
}

QVariant TextModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  if (role == Qt::DecorationRole && !icon_.isNull()) return icon_;
  if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
  return ToQt(entries_[static_cast<std::size_t>(index.row())]);
}

}  // namespace ormel::ui
