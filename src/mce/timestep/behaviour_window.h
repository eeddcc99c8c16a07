// The third page of a time-step model: how the map of each factor changes from step to step.
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "mce/timestep/factor_behaviour.h"
#include "mce/timestep/step_factors_window.h"
#include "mce/timestep/step_wizard_window.h"
#include "mce/timestep/time_step_text.h"
#include "parts/app_context.h"
#include "parts/list_rows.h"
#include "parts/step_files.h"
#include "ui/window.h"

namespace ormel {

class FrmTSClass final : public ui::Window {
 public:
  FrmTSClass(AppContext& app, StepWizard& wizard);

  // Lays the page over these factors and dates. Factors that were there before keep what was
  // entered for them.
  void Fit(const std::vector<ListedFactor>& factors, const std::vector<std::string>& dates);
  // What a file says of the factors at these paths, before Fit().
  void Put(const std::vector<ModelTextFactor>& factors, const std::vector<BehaviourText>& texts);
  std::vector<BehaviourText> Text() const;
  // Goes on to the weights of the steps. False: a message has told what is missing.
  bool Next();

  // Of all factors, in their order; complete behind Next().
  std::vector<FactorBehaviour> Behaviours() const;

  bool QueryClose() override { return wizard_.Leave(); }

  ui::ListBox lstFactors{*this, "lstFactors"};
  ui::ListBox lstState{*this, "lstState"};  // what each of them does, and whether it is complete
  ui::OptionGroup optMethod{*this, "optMethod", 0};  // by the number of the method
  ui::FrameControl FrTSList{*this, "FrTSList", "Maps of the Steps"};
  ui::FrameControl frTSDir{*this, "frTSDir", "Folder"};
  StepFiles files;
  ui::FrameControl frProducts{*this, "frProducts", "Product Database"};
  ui::TextBox txtCSV{*this, "txtCSV"};
  ui::Button cmdLoadCSV{*this, "cmdLoadCSV", "&Load CSV..."};
  ui::ListBox RoW{*this, "RoW"};
  ui::Label lblProducts{*this, "lblProducts"};
  ui::FrameControl frAlgorithm{*this, "frAlgorithm", "Functional Changes"};
  ui::Button cmdAlgorithm{*this, "cmdAlgorithm", "Use Algorithm"};
  ui::FrameControl frStatic{*this, "frStatic", "Static"};

 private:
  struct Item {
    std::string path;
    std::string name;
    FactorBehaviour behaviour;
  };

  void ConnectControls();
  void LayOut();
  Item* Selected();
  int Steps() const { return static_cast<int>(dates_.size()); }

  void SelectFactor();
  void ShowMethod();
  void ChooseMethod();
  void ShowProducts(const Item& item);
  void ShowStates();
  // How many steps have one.
  std::size_t CountFiles(const FactorBehaviour& behaviour) const;
  std::string StateOf(const Item& item) const;
  std::string Fault(const Item& item) const;
  void FitFiles(FactorBehaviour& behaviour, const std::vector<std::string>& dates) const;

  static void ReadAgain(FactorBehaviour& behaviour, std::size_t steps);
  void PickTable();
  void TakeTable();
  void ReadRow();
  [[nodiscard]] bool TakeRow(Item& item);
  [[nodiscard]] bool Expand(Item& item, const std::vector<float>& row);

  AppContext& app_;
  StepWizard& wizard_;
  std::vector<Item> items_;
  std::vector<std::string> dates_;
  std::unordered_set<std::string> dateTexts_;  // the same, to be looked up
  ListRows rows_{{&lstFactors, &lstState}, ListRows::Selection::kOfRows};
  StepPageParts parts_{*this, wizard_, "cmdNext", "&Next >"};
  ui::MenuBar menu_{*this, {{"mFile", "&File", "", {}, StepPageParts::SaveMenu(wizard_)}}};
};

}  // namespace ormel
