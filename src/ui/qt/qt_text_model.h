// The entries of a list as the toolkit reads them. Nothing is copied for each entry: lists of a
// hundred thousand files stay quick.
#pragma once

#include <QAbstractListModel>
#include <QIcon>
#include <string>
#include <vector>

namespace ormel::ui {

class TextModel final : public QAbstractListModel {
 public:
  using QAbstractListModel::QAbstractListModel;

  // Shows `entries`. What is on the screen is only touched as far as it differs: nothing when they
  // are equal, and the place and selection of a person stay when entries are added behind or
  // renamed.
  void Show(const std::vector<std::string>& entries);

  // Stands before every entry.
  void SetIcon(const QIcon& icon) { icon_ = icon; }

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  std::vector<std::string> entries_;
  QIcon icon_;
};

}  // namespace ormel::ui
