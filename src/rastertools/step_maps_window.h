// The window "Create Time Step Factor Files": a table of values makes a factor map for each time
// step. The files that will be written are on show before they are.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "parts/app_context.h"
#include "parts/folder_choice.h"
#include "parts/list_rows.h"
#include "rastertools/step_maps.h"
#include "ui/window.h"

namespace ormel {

class FrmGenTSMaps final : public ui::Window {
 public:
  explicit FrmGenTSMaps(AppContext& app);

  ui::TextBox txtFactor{*this, "txtFactor"};
  ui::Button cmdLoadFactor{*this, "cmdLoadFactor", "..."};
  ui::TextBox txtCSV{*this, "txtCSV"};
  ui::Button cmdLoadCSV{*this, "cmdLoadCSV", "..."};
  ui::CheckBox ckClassData{*this, "ckClassData", "&Class Data"};
  ui::ListBox lstRows{*this, "lstRows"};  // of the table, by their first field

  ui::OptionGroup OptIncludeFname{*this, "OptIncludeFname", 0};
  ui::OptionGroup optSuffix{*this, "optSuffix", 0};
  FolderChoice folder;

  ui::ListBox lstOutput{*this, "lstOutput"};
  ui::ListBox lstNote{*this, "lstNote"};
  ui::Label lblState{*this, "lblState"};
  ui::Label lblFault{*this, "lblFault"};  // why the table cannot be used, or files were not written

  ui::Button cmdWrite{*this, "cmdWrite", "&Write Files"};
  ui::Button cmdExit{*this, "cmdExit", "E&xit"};

 private:
  void ConnectControls();
  void LayOut();

  void PickFactor();
  void PickTable();
  void ReadTable();
  void ShowRows();
  void ShowOutputs();
  StepNames Names() const;

  bool InputsAreThere();
  std::optional<StepDates> AskDates();
  std::optional<double> AskStart();
  std::optional<DateUnit> AskUnit();
  void Write();
  Outcome<> WriteAll(const StepNames& names, ProgressSink& progress);

  AppContext& app_;
  std::optional<StepTable> table_;  // of txtCSV, when it can be used
  ListRows rows_{{&lstOutput, &lstNote}, ListRows::Selection::kOfRows};
};

}  // namespace ormel
