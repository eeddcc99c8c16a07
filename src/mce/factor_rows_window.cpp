#include "mce/factor_rows_window.h"

#include <algorithm>

#include "text/paths.h"

namespace ormel {
namespace {

constexpr int kRowsShown = 3;
constexpr int kMostRows = 32767;
constexpr char kAnyMap[] = "*.asc";

}  // namespace

FactorRows::FactorRows(ui::Window& window, FactorRowKind& kind)
    : lblfnum(window, "lblfnum"),
      fchng(window, "fchng", 0, kMostRows),
      FCkBox(window, "FCkBox"),
      FList(window, "FList"),
      FileOpen(window, "FileOpen"),
      FScrl(window, "FScrl"),
      filelist(window, "filelist", ui::ListBox::Choice::kSingle, kAnyMap),
      filelistt(window, "filelistt", ui::ListBox::Choice::kSingle, kAnyMap),
      kind_(kind) {
  for (ui::FileList* list : {&filelist, &filelistt}) list->SetVisible(false);
  fchng.SetToolTip("Add or remove a factor at the end");
  FScrl.onChange = [this] { onLayout(); };
}

ui::LayoutItem FactorRows::Area() {
  const auto row = [](std::vector<ui::LayoutItem> cells, std::vector<ui::LayoutItem> more) {
    ui::Row line;
    line.items = std::move(cells);
    line.items.insert(line.items.end(), more.begin(), more.end());
    return line;
  };
  ui::Table table{};
  table.items.push_back(row({"", "Map", ""}, kind_.RowHeadings()));
  const int first = FScrl.Value() + 1;
  for (int i = first; i < first + kRowsShown && i <= Count(); ++i) {
    table.items.push_back(row({FCkBox(i), ui::Share(3, FList(i)), FileOpen(i)}, kind_.RowCells(i)));
  }
  return ui::Row{ui::Share(1, ui::Column{table, ui::Stretch{}}), FScrl};
}

void FactorRows::SetCount(int count) {
  const int before = Count();
  FCkBox.Resize(count);
  FList.Resize(count);
  FileOpen.Resize(count);
  kind_.ResizeRows(count);
  FactorFolders_.resize(std::max(FactorFolders_.size(), static_cast<std::size_t>(count)));
  for (int row = before + 1; row <= count; ++row) Start(row);
  lblfnum.SetCaption(std::to_string(count));
  fchng.SetValue(count);
  FScrl.SetEnabled(count > kRowsShown);
  FScrl.SetRange(0, std::max(0, count - kRowsShown));
  if (count > before) FScrl.SetValue(FScrl.Maximum());
  onLayout();
}

void FactorRows::Start(int row) {
  FactorFolders_[static_cast<std::size_t>(row - 1)] = JoinPath(Root(), "");
  FCkBox(row).SetCaption(std::to_string(row));
  FCkBox(row).SetToolTip("Check it to delete this factor");
  FileOpen(row).SetCaption("...");
  FileOpen(row).SetToolTip("Look for the map");
  FList(row).SetItems(FilesOf(Root()));
  FList(row).onSelect = [this, row] { onChoose(row); };
  FileOpen(row).onClick = [this, row] { onBrowse(row); };
  kind_.SetRowDefaults(row);
}

std::vector<bool> FactorRows::Checked() const {
  std::vector<bool> checked;
  for (const auto& box : FCkBox) checked.push_back(box->Checked());
  return checked;
}

std::vector<bool> FactorRows::Free() const {
  std::vector<bool> free;
  for (int row = 1; row <= Count(); ++row) free.push_back(IsFree(row));
  return free;
}

void FactorRows::Delete(const std::vector<bool>& marked) {
  int kept = 0;
  for (int row = 1; row <= Count(); ++row) {
    FCkBox(row).SetChecked(false);
    if (marked[static_cast<std::size_t>(row - 1)] || ++kept == row) continue;
    FList(kept).SetItems(FList(row).Items());
    FList(kept).SetText(FList(row).Text());
    FactorFolders_[static_cast<std::size_t>(kept - 1)] = Folder(row);
    kind_.CopyRow(row, kept);
  }
  if (kept == Count()) return;
  SetCount(kept);
  if (kept == 0) SetCount(1);
}

std::vector<std::string> FactorRows::FilesOf(const std::string& folder) {
  if (filelistt.Folder() != folder) filelistt.SetFolder(folder);
  return filelistt.Items();
}

void FactorRows::SetPattern(const std::string& pattern) {
  for (ui::FileList* list : {&filelist, &filelistt}) list->SetPattern(pattern);
}

void FactorRows::Refill() {
  filelistt.Reread();
  for (int row = 1; row <= Count(); ++row) {
    std::string& folder = FactorFolders_[static_cast<std::size_t>(row - 1)];
    if (IsFree(row)) folder = JoinPath(Root(), "");
    FList(row).SetItems(FilesOf(IsFree(row) ? Root() : folder));
  }
}

std::string FactorRows::Path(int row) const {
  return IsFree(row) ? "" : JoinPath(Folder(row), FList(row).Text());
}

void FactorRows::PutFile(int row, const std::string& path) {
  const std::string folder = FolderPart(path);
  FactorFolders_[static_cast<std::size_t>(row - 1)] = folder;
  FList(row).SetItems(FilesOf(folder));
  FList(row).SetText(FileNamePart(path, true));
}

void FactorRows::Add(const std::string& path) {
  SetCount(Count() + 1);
  PutFile(Count(), path);
}

}  // namespace ormel
