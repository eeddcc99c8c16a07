// The fourth page of a time-step model: the weight of each factor over the steps.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "mce/nonlinear/graph_editor_window.h"
#include "mce/timestep/step_factors_window.h"
#include "mce/timestep/step_wizard_window.h"
#include "parts/app_context.h"
#include "ui/window.h"

namespace ormel {

class FrmTS3 final : public ui::Window {
 public:
  FrmTS3(AppContext& app, StepWizard& wizard);

  // Lays the page over these factors and dates. Factors that were there before keep their graphs,
  // whose curves are sampled anew.
  void Fit(const std::vector<ListedFactor>& factors, const std::vector<std::string>& dates);
  // The graphs that a file has for the factors at these paths, before Fit().
  void Put(const std::vector<ModelTextFactor>& factors, const std::vector<std::string>& graphs,
           int steps);
  std::vector<std::string> Text() const;
  bool Next();

  // Of all factors, in their order.
  std::vector<WeightGraph> Graphs() const;

  bool QueryClose() override { return wizard_.Leave(); }

  ui::ListBox lstFactors{*this, "lstFactors"};
  ui::Label lblStartDate{*this, "lblStartDate"};
  ui::Label lblEndDate{*this, "lblEndDate"};
  ui::Button cmdShowAll{*this, "cmdShowAll", "Show &All"};
  ui::Button cmdReset{*this, "cmdReset", "&Reset"};

 private:
  struct Item {
    ListedFactor factor;
    WeightGraph graph;
  };

  Item* Selected();
  int Steps() const { return static_cast<int>(dates_.size()); }
  GraphEditorSpec Spec() const;
  void SelectFactor();
  void ShowAll();
  void Reset();

  AppContext& app_;
  StepWizard& wizard_;
  std::vector<std::string> dates_;
  std::deque<Item> items_;
  WeightGraph none_;  // on show while there is no factor

 public:
  GraphEditor editor;

 private:
  StepPageParts parts_{*this, wizard_, "cmdNext", "&Next >"};
  ui::MenuBar menu_{*this, {{"mFile", "&File", "", {}, StepPageParts::SaveMenu(wizard_)}}};
};

}  // namespace ormel
