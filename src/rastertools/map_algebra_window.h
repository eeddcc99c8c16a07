// The window "Map Algebra": pairs of maps from two lists, an operator, and the maps that are made
// of them. Each line tells which two maps make which file.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "parts/app_context.h"
#include "parts/chosen_files.h"
#include "parts/folder_choice.h"
#include "parts/list_rows.h"
#include "rastertools/map_algebra.h"
#include "ui/window.h"

namespace ormel {

class FrmMapAlgebra final : public ui::Window {
 public:
  explicit FrmMapAlgebra(AppContext& app);

  ChosenFiles left;
  ChosenFiles right;
  ui::ControlArray<ui::Button> cmdClear{*this, "cmdClear", 2, 0};
  ui::ControlArray<ui::SpinButton> spSHP{*this, "spSHP", 2, 0};
  ui::Label lblOperator{*this, "lblOperator"};  // between the lists
  ui::ListBox lstOutput{*this, "lstOutput"};
  ui::ListBox lstNote{*this, "lstNote"};
  ui::Label lblPairs{*this, "lblPairs"};

  ui::OptionGroup optOP{*this, "optOP", 0};
  FolderChoice folder;
  ui::OptionGroup optRFN{*this, "optRFN", 0};
  ui::ControlArray<ui::CheckBox> ckAppend{*this, "ckAppend", 2, 0};
  ui::ControlArray<ui::TextBox> txtAppend{*this, "txtAppend", 2, 0};
  ui::Button cmdProcess{*this, "cmdProcess", "&Process Files"};
  ui::Button cmdExit{*this, "cmdExit", "E&xit"};

 private:
  void ConnectLists();
  void ConnectNames();
  void LayOut();
  ui::LayoutItem ListButtons(const char* title, ChosenFiles& files, int number);

  void Clear(ChosenFiles& files);
  void Spin(ChosenFiles& files, int number);
  // One map at the right, and several at the left.
  bool MayBeOneToMany() const;
  std::vector<MapPair> Pairs(bool oneToMany) const;
  void ShowPairs();
  void ShowPath();
  void Process();
  bool ProcessPairs(const std::vector<MapPair>& pairs);

  AppContext& app_;
  ListRows rows_{{&left.list, &right.list, &lstOutput, &lstNote}, ListRows::Selection::kOfEachList};
  std::vector<MapPair> shown_;
  std::array<int, 2> spun_{};  // values of the spin buttons that are done
};

}  // namespace ormel
