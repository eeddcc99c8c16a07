// The window "Create Factor from Class Data Set": a value for each class of a map makes a factor.
#pragma once

#include <string>

#include "parts/app_context.h"
#include "parts/map_panel.h"
#include "rastertools/class_table.h"
#include "ui/window.h"

namespace ormel {

class FrmClass final : public ui::Window {
 public:
  explicit FrmClass(AppContext& app);

  ui::TextBox txtClassFile{*this, "txtClassFile"};
  ui::Button cmdLoadClass{*this, "cmdLoadClass", "..."};
  ui::Button cmdLoad{*this, "cmdLoad", "&Load Class"};

  // The rows of the table; some of them are on show.
  ui::ControlArray<ui::TextBox> txtClass{*this, "txtClass"};
  ui::ControlArray<ui::TextBox> txtOut{*this, "txtOut"};
  ui::ScrollBar Scrl{*this, "Scrl"};
  ui::Label lblState{*this, "lblState"};

  ui::Button cmdCopy{*this, "cmdCopy", "&AutoFill"};
  ui::Button cmdScale{*this, "cmdScale", "&Scale"};
  ui::Button cmdClear{*this, "cmdClear", "&Clear"};
  ui::Button cmdImport{*this, "cmdImport", "&Import CSV..."};
  ui::Button cmdExport{*this, "cmdExport", "&Export CSV..."};

  MapPanel preview;
  ui::Button cmdGen{*this, "cmdGen", "Export .AS&C..."};
  ui::Button cmdExit{*this, "cmdExit", "E&xit"};

 private:
  void ConnectControls();
  void LayOut();
  ui::LayoutItem RowsArea();

  void PickClassFile();
  bool ClassFileIsThere();
  void LoadClass();
  void ShowTable();
  void ConnectRow(int row);
  void UseKey(int row, const std::string& key);
  void GoToRow(int row);
  void GoToClass(double value);
  void ShowState();

  void Import();
  void Export();
  void Generate();

  AppContext& app_;
  ClassTable table_;
};

}  // namespace ormel
