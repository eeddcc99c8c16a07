// The factor rows of a builder: a map for each, chosen from the files of its folder, a check box by
// which rows are deleted, and three rows on show at once. What a row holds besides is the affair of
// each kind of builder.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "ui/window.h"

namespace ormel {

// What a kind of builder adds to the rows, which count from 1.
class FactorRowKind {
 public:
  virtual void ResizeRows(int count) = 0;
  virtual void SetRowDefaults(int row) = 0;
  virtual void CopyRow(int from, int to) = 0;
  virtual std::vector<ui::LayoutItem> RowHeadings() const = 0;
  virtual std::vector<ui::LayoutItem> RowCells(int row) = 0;

 protected:
  ~FactorRowKind() = default;
};

class FactorRows {
 public:
  // Both outlive the rows.
  FactorRows(ui::Window& window, FactorRowKind& kind);

  // A person picks another map for a row, by its button or from its drop-down.
  std::function<void(int row)> onBrowse;
  std::function<void(int row)> onChoose;
  // The number of rows, or the rows on show, have changed: the window lays itself out anew.
  ui::Handler onLayout;

  int Count() const { return FList.Count(); }
  // Rows come and go at the end; new ones are free and on show.
  void SetCount(int count);
  // The rows behind a marked one move up. Element 0 is row 1. At least one row stays.
  void Delete(const std::vector<bool>& marked);
  std::vector<bool> Checked() const;
  std::vector<bool> Free() const;

  bool IsFree(int row) const { return FList(row).Text().empty(); }
  const std::string& Folder(int row) const {
    return FactorFolders_[static_cast<std::size_t>(row - 1)];
  }
  // The path of the row's map; empty: it is free.
  std::string Path(int row) const;
  // Also fills the row's drop-down with the maps of the folder.
  void PutFile(int row, const std::string& path);
  void Add(const std::string& path);

  // Where new rows look, and the filter of all drop-downs.
  const std::string& Root() const { return filelist.Folder(); }
  const std::string& Pattern() const { return filelist.Pattern(); }
  void SetRoot(const std::string& folder) { filelist.SetFolder(folder); }
  void SetPattern(const std::string& pattern);
  void Refill();

  void ShowFirst() { FScrl.SetValue(0); }
  ui::LayoutItem Area();

  ui::Label lblfnum;
  ui::SpinButton fchng;
  ui::ControlArray<ui::CheckBox> FCkBox;
  ui::ControlArray<ui::ComboBox> FList;
  ui::ControlArray<ui::Button> FileOpen;
  ui::ScrollBar FScrl;
  // Root folder and filter of new rows, and the files of the folder that was looked at last.
  ui::FileList filelist;
  ui::FileList filelistt;

 private:
  void Start(int row);
  std::vector<std::string> FilesOf(const std::string& folder);

  FactorRowKind& kind_;
  std::vector<std::string> FactorFolders_;  // of row 1 first; grows with the rows, never shrinks
};

}  // namespace ormel
