#include "mce/timestep/step_factors_window.h"

#include <algorithm>
#include <utility>

#include "mce/linear/linear_rows_window.h"
#include "mce/nonlinear/graph_plot.h"
#include "mce/nonlinear/graph_rows_window.h"

namespace ormel {
namespace {

constexpr char kCaption[] = "Time Step Information - Step 2/5";

}  // namespace

StepFactorsWindow::StepFactorsWindow(AppContext& app, StepWizard& wizard, const std::string& name,
                                     MakeFactorKind makeKind)
    : FactorForm(app, name, kCaption, makeKind),
      wizard_(wizard),
      constraintRoot_(app.settings.workingDirectory),
      parts_(*this, wizard, "cmdOK", "&Next >"),
      menu_(*this, Menu()) {
  parts_.cmdNext.onClick = [this] { Next(); };
  cmdSave.onClick = [this] { SaveFactors(); };
  cmdLoad.SetToolTip("Take the factors and constraints of a single-pass model");
  cmdSave.SetToolTip("Keep factors and constraints as a single-pass model");
  SetRowCount(1);
  Kind().RowsChanged();
}

std::vector<ui::MenuSpec> StepFactorsWindow::Menu() {
  std::vector<ui::MenuSpec> file = FileMenu([this] { SaveFactors(); });
  for (ui::MenuSpec& entry : file) {
    if (entry.name == "mSave") entry.shortcut.clear();  // it saves the whole model here
  }
  std::vector<ui::MenuSpec> steps = StepPageParts::SaveMenu(wizard_);
  steps.push_back(ui::MenuSpec::Separator());
  file.insert(file.begin(), steps.begin(), steps.end());
  return {{"mFile", "&File", "", {}, std::move(file)}, {"mTools", "&Tools", "", {}, ToolMenu()}};
}

void StepFactorsWindow::LayOut() {
  ui::Row frames{
      ui::Share(3, ui::Frame{"Constraints", constraints.list,
                             ui::Row{constraints.cmdAdd, constraints.cmdRemove, ui::Stretch{}}})};
  for (ui::LayoutItem& frame : Kind().FurtherFrames()) frames.items.push_back(std::move(frame));
  ui::Row files;
  files.items = Buttons();
  files.items.emplace_back(ui::Stretch{});
  files.items.push_back(parts_.Buttons());
  SetLayout(ui::Column{ToolsRow(), rows.Area(), ui::Share(3, frames), files});
}

ui::FileDialog StepFactorsWindow::ConstraintDialog() const {
  ui::FileDialog dialog = FactorForm::ConstraintDialog();
  dialog.folder = constraintRoot_;
  dialog.name = constraintPattern_;
  return dialog;
}

void StepFactorsWindow::SaveFactors() {
  if (const auto path = AskSaveTarget()) (void)WriteModel(*path);
}

// Constraints stand in the file from the last to the first.
StepFactorsText StepFactorsWindow::Text() const {
  const ModelText model = CurrentModel();
  StepFactorsText text;
  text.nonlinear = IsNonlinear();
  text.root = model.root;
  text.pattern = model.pattern;
  text.constraintRoot = WithoutSeparator(constraintRoot_);
  text.constraintPattern = constraintPattern_;
  text.factors = model.factors;
  text.constraints = {constraints.Paths().rbegin(), constraints.Paths().rend()};
  return text;
}

void StepFactorsWindow::Put(const StepFactorsText& text) {
  constraintRoot_ = text.constraintRoot;
  constraintPattern_ = text.constraintPattern;
  TakeModel({text.root, text.pattern, text.factors, text.constraints, title_});
}

bool StepFactorsWindow::Next() {
  if (!DropFreeRows() || !MapsAreThere()) return false;
  wizard_.FactorsDone();
  return true;
}

// ---- Linear -------------------------------------------------------------------------------------

FrmTS2::FrmTS2(AppContext& app, StepWizard& wizard)
    : StepFactorsWindow(app, wizard, "frmTS2", LinearRows::Make) {}

std::vector<ListedFactor> FrmTS2::Listed() const {
  std::vector<ListedFactor> listed;
  for (const LinearFactor& factor : static_cast<const LinearRows&>(Kind()).Factors()) {
    const Colour colour = FactorColour(static_cast<int>(listed.size()) + 1);
    listed.push_back({factor.Path(), factor.name, colour, static_cast<double>(factor.weight)});
  }
  return listed;
}

std::unique_ptr<StepKind> FrmTS2::Steps(const std::string& palette) const {
  LinearModel model;
  model.factors = static_cast<const LinearRows&>(Kind()).Factors();
  model.constraints = constraints.Paths();
  model.palette = palette;
  return LinearSteps(std::move(model));
}

// ---- Non-linear ---------------------------------------------------------------------------------

FrmTS2C::FrmTS2C(AppContext& app, StepWizard& wizard)
    : StepFactorsWindow(app, wizard, "frmTS2C", GraphRows::Make) {}

std::vector<ListedFactor> FrmTS2C::Listed() const {
  std::vector<ListedFactor> listed;
  for (const GraphFactor& factor : static_cast<const GraphRows&>(Kind()).Factors()) {
    listed.push_back({factor.Path(), factor.name, factor.colour});
  }
  return listed;
}

std::unique_ptr<StepKind> FrmTS2C::Steps(const std::string& palette) const {
  NonlinearModel model;
  model.factors = static_cast<const GraphRows&>(Kind()).Factors();
  model.constraints = constraints.Paths();
  model.palette = palette;
  return NonlinearSteps(std::move(model));
}

}  // namespace ormel
