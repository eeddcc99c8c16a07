// The window "Data Preparation": scales factor maps to 0 to 255 and trims them to one extent. What
// will be written where is seen before it is.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "parts/app_context.h"
#include "parts/folder_choice.h"
#include "parts/list_rows.h"
#include "rastertools/data_prep_list.h"
#include "rastertools/map_scaling.h"
#include "ui/run.h"
#include "ui/window.h"

namespace ormel {

class FrmDataPrep final : public ui::Window {
 public:
  explicit FrmDataPrep(AppContext& app);

  ui::MenuBar menu{*this, Menus()};
  FolderChoice folder;
  ui::FileList File{*this, "File", ui::ListBox::Choice::kSingle, "*.asc;*.grd"};
  ui::Button cmdDirRead{*this, "cmdDirRead", "&Read Directory"};
  ui::Button cmdSetasOut{*this, "cmdSetasOut", "Set as &Output Directory"};

  // Full paths, for scripts; people see the names.
  ui::ListBox lstFactors{*this, "lstFactors", ui::ListBox::Choice::kMultiple};
  ui::ListBox lstOutput{*this, "lstOutput", ui::ListBox::Choice::kMultiple};
  ui::ListBox lstFactorsD{*this, "lstFactorsD", ui::ListBox::Choice::kMultiple};
  ui::ListBox lstOutputD{*this, "lstOutputD", ui::ListBox::Choice::kMultiple};
  ui::ListBox lstNote{*this, "lstNote", ui::ListBox::Choice::kMultiple};
  ui::Label lblRow{*this, "lblRow"};      // the chosen row in full
  ui::Label lblFault{*this, "lblFault"};  // why the last run could not write a map

  ui::Button cmdAdd{*this, "cmdAdd", "&Add..."};
  ui::Button cmdRemove{*this, "cmdRemove", "Re&move"};
  ui::Button cmdClear{*this, "cmdClear", "C&lear"};
  ui::Button cmdChngOut{*this, "cmdChngOut", "C&hange Output..."};
  ui::Button cmdPrefix{*this, "cmdPrefix", "Add &Prefix..."};
  ui::Button cmdSuffix{*this, "cmdSuffix", "Add S&uffix..."};
  ui::Button cmdResetOut{*this, "cmdResetOut", "Reset Ou&tput"};

  ui::CheckBox ckAll{*this, "ckAll", "All factors"};
  ui::CheckBox ckSelected{*this, "ckSelected", "Selected factors"};
  ui::Button cmdScale{*this, "cmdScale", "&Scale from 0-255"};
  ui::Button cmdTrim{*this, "cmdTrim", "Tr&im Data"};
  ui::Button cmdExit{*this, "cmdExit", "E&xit"};

 private:
  using Rows = std::vector<DataPrepList::Row>;

  std::vector<ui::MenuSpec> Menus();
  void ExplainControls();
  void ConnectControls();
  void LayOut();

  void AddByDialog();
  void AddFiles(const std::vector<std::string>& paths);
  void ReadDirectory();
  void Remove();
  void ChangeOutput();
  void SetAsOutput();
  void AddText(const char* prompt, const char* title,
               void (DataPrepList::*add)(const std::string&));
  void ShowList();
  void ShowRow();
  std::vector<std::string> Notes() const;

  std::vector<int> SelectedRows() const { return lstFactorsD.Selected(); }
  Rows ActedOn() const;
  bool MayWrite(const Rows& rows);

  void Scale();
  bool ScaleRows(const Rows& rows, bool asSet);
  std::vector<Outcome<ScalingRange>> RangesOf(const Rows& rows, ui::Run& run);
  Outcome<> ScaleRow(const DataPrepList::Row& row, const std::optional<ScalingRange>& set,
                     ProgressSink& progress);
  void TellFault(const std::string& output, const std::string& reason);
  void Trim();
  bool EnoughToTrim(const Rows& rows);
  bool TrimRows(const Rows& rows);

  AppContext& app_;
  DataPrepList list_;
  ListRows rows_{{&lstFactorsD, &lstOutputD, &lstNote}, ListRows::Selection::kOfRows};
};

}  // namespace ormel
