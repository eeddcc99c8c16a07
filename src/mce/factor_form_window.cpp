#include "mce/factor_form_window.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "base/progress_sink.h"
#include "mce/read_all_window.h"
#include "text/lists.h"
#include "text/paths.h"
#include "ui/run.h"
#include "ui/save_dialog.h"

namespace ormel {
namespace {

constexpr char kAnyMap[] = "*.asc";

bool Exists(const std::string& path) {
  std::error_code error;
  return std::filesystem::exists(path, error);
}

bool IsFolder(const std::string& path) {
  std::error_code error;
  return std::filesystem::is_directory(path, error);
}

}  // namespace

// A model file holds its root so.
std::string WithoutSeparator(std::string folder) {
  while (folder.size() > 1 && (folder.back() == '/' || folder.back() == '\\')) folder.pop_back();
  return folder;
}

FactorForm::FactorForm(AppContext& app, const std::string& name, const std::string& caption,
                       MakeFactorKind makeKind)
    : Window(name, caption),
      app_(app),
      kind_(makeKind(*this)),
      rows(*this, *kind_),
      constraints(*this, app.desktop, ConstraintsSpec()) {
  rows.SetRoot(app.settings.workingDirectory);
  cmdReadAll.SetToolTip("Take the maps of a whole folder");
  cmdDelFac.SetToolTip("Remove the factors that are checked");
  ConnectHandlers();
}

ChosenFilesSpec FactorForm::ConstraintsSpec() {
  ChosenFilesSpec spec;
  spec.list = "CFL";
  spec.add = "CmdSrchC";
  spec.remove = "CmdRemoveC";
  spec.dialog = [this] { return ConstraintDialog(); };
  spec.removeQuestion = "Are You Sure You Want to Remove the Selected Constraints?";
  spec.removeAllQuestion = "No Constraints Selected, Clear All?";
  spec.removeTitle = "Remove Constraints";
  return spec;
}

ui::FileDialog FactorForm::ConstraintDialog() const {
  return {"Load Constraint",
          "ASCII Raster (.asc, .grd)|*.asc;*.grd",
          "",
          app_.settings.workingDirectory,
          kAnyMap,
          ui::FileKind::kMaps};
}

void FactorForm::ConnectHandlers() {
  rows.fchng.onChange = [this] { SpinRows(); };
  rows.onLayout = [this] { LayOut(); };
  rows.onBrowse = [this](int row) { PickFactor(row); };
  rows.onChoose = [this](int row) { ChooseFromList(row); };
  cmdReadAll.onClick = [this] { ReadAll(); };
  cmdDelFac.onClick = [this] { DeleteChecked(); };
  constraints.onAdd = [this](const std::string& path) { AddConstraint(path); };
  constraints.onRemoved = [this] { MarkChanged(); };
  cmdLoad.onClick = [this] { LoadModel(""); };
  cmdClear.onClick = [this] { AskAndClear(); };
  onDrop = [this](const std::string& path) { DropFactor(path); };
}

std::vector<ui::MenuSpec> FactorForm::FileMenu(ui::Handler save) {
  return {{"mNew", "&New", "Ctrl+N", [this] { AskAndClear(); }, {}},
          {"mOpen", "&Open", "Ctrl+O", [this] { LoadModel(""); }, {}},
          {"mSave", "&Save", "Ctrl+S", std::move(save), {}},
          ui::MenuSpec::Separator(),
          {"mExit", "E&xit", "", [this] { app_.desktop.CloseByFrame(*this); }, {}}};
}

std::vector<ui::MenuSpec> FactorForm::ToolMenu() {
  std::vector<ui::MenuSpec> tools = kind_->ToolMenu();
  tools.push_back({"mReadAll", "Read All from Directory", "", [this] { ReadAll(); }, {}});
  tools.push_back({"mRoot", "Set Root Directory", "", [this] { AskRoot(); }, {}});
  tools.push_back({"mFilter", "Set Filter", "", [this] { AskFilter(); }, {}});
  return tools;
}

ui::LayoutItem FactorForm::ToolsRow() {
  ui::Row tools{"Factors:", rows.lblfnum, rows.fchng, ui::Stretch{}};
  for (ui::LayoutItem& tool : kind_->RowTools()) tools.items.push_back(std::move(tool));
  tools.items.emplace_back(cmdReadAll);
  tools.items.emplace_back(cmdDelFac);
  return tools;
}

std::vector<ui::LayoutItem> FactorForm::Buttons() { return {cmdLoad, cmdSave, cmdClear}; }

// ---- Rows ---------------------------------------------------------------------------------------

void FactorForm::SetRowCount(int count) {
  rows.SetCount(count);
  if (count == 0 && constraints.list.Count() == 0) reference_.Clear();
}

void FactorForm::DeleteChecked() {
  const std::vector<bool> marked = rows.Checked();
  if (std::find(marked.begin(), marked.end(), true) == marked.end()) return;
  DeleteRows(marked);
  MarkChanged();
  kind_->RowsChanged();
}

void FactorForm::DeleteRows(const std::vector<bool>& marked) {
  const bool all = std::find(marked.begin(), marked.end(), false) == marked.end();
  rows.Delete(marked);
  if (all && constraints.list.Count() == 0) reference_.Clear();
}

void FactorForm::SpinRows() {
  const int count = rows.fchng.Value();
  for (int row = count + 1; row <= rows.Count(); ++row) {
    if (!rows.IsFree(row)) MarkChanged();  // a free row is no part of the model
  }
  SetRowCount(count);
  kind_->RowsChanged();
}

// ---- Maps that join -----------------------------------------------------------------------------

LoadedData FactorForm::Loaded() const {
  LoadedData loaded;
  for (int row = 1; row <= rows.Count(); ++row) loaded.factors.push_back(rows.Path(row));
  loaded.constraints = constraints.Paths();
  return loaded;
}

Registration FactorForm::Register(const std::string& path, CheckMode mode, int row) {
  Registration registration;
  if (mode == CheckMode::kConstraint) {
    ui::Run run(*this);  // reads the whole map
    registration = CheckAndRegister(path, mode, row, Loaded(), reference_, run);
  } else {
    NoProgress quiet;
    registration = CheckAndRegister(path, mode, row, Loaded(), reference_, quiet);
  }
  const std::string& title = registration.title;
  if (!registration.message.empty()) {
    app_.desktop.Message(registration.message, title.empty() ? ui::kProgramTitle : title);
  }
  return registration;
}

bool FactorForm::TakeFactor(int row, const std::string& path) {
  const Registration registration = Register(path, CheckMode::kFactor, row);
  if (!registration.Accepted()) return false;
  rows.PutFile(row, registration.path);
  MarkChanged();
  if (!rows.IsFree(rows.Count())) SetRowCount(rows.Count() + 1);
  kind_->RowsChanged();
  return true;
}

void FactorForm::PickFactor(int row) {
  const std::string& pattern = rows.Pattern();
  const auto choice =
      app_.desktop.OpenFile({"Load Factor", pattern + "|" + pattern, "",
                             app_.settings.workingDirectory, kAnyMap, ui::FileKind::kMaps});
  if (choice) TakeFactor(row, choice->Path());
}

void FactorForm::ChooseFromList(int row) {
  MarkChanged();
  const std::string path = JoinPath(rows.Folder(row), rows.FList(row).Text());
  if (!Register(path, CheckMode::kFactor, row).Accepted()) rows.FList(row).SetText("");
  kind_->RowsChanged();
}

// Each file of a drop takes the first free row.
void FactorForm::DropFactor(const std::string& path) {
  int row = 1;
  while (row <= rows.Count() && !rows.IsFree(row)) ++row;
  if (row > rows.Count()) SetRowCount(row);
  TakeFactor(row, path);
}

void FactorForm::AddConstraint(const std::string& path) {
  MarkChanged();
  if (constraints.Holds(path)) return app_.desktop.Message("Constraint Already Added");
  const Registration registration = Register(path, CheckMode::kConstraint);
  if (registration.Accepted()) constraints.AddFile(registration.path);
}

// ---- The rest of the form -----------------------------------------------------------------------

void FactorForm::AskFilter() {
  const auto pattern =
      app_.desktop.Prompt("New Filter (Comma Delineated):", ui::kProgramTitle, rows.Pattern());
  if (!pattern || pattern->empty()) return;
  rows.SetPattern(*pattern);
  MarkChanged();
  rows.Refill();
}

void FactorForm::AskRoot() {
  const auto folder = app_.desktop.Prompt("New Root Directory:", ui::kProgramTitle, rows.Root());
  if (!folder || folder->empty()) return;
  if (!IsFolder(*folder)) return app_.desktop.Message("The Specified Path Does Not Exist");
  rows.SetRoot(*folder);
  MarkChanged();
  rows.Refill();
}

void FactorForm::ClearForm() {
  constraints.list.Clear();
  SetRowCount(0);
  SetTitle("");
  changed_ = false;
  kind_->FormCleared();
  FormCleared();
}

void FactorForm::AskAndClear() {
  const ui::Answer answer = app_.desktop.AskBeforeLoss("Are you sure you want to clear the form?",
                                                       "Clear Form", ui::Buttons::kYesNo);
  if (answer != ui::Answer::kYes) return;
  ClearForm();
  SetRowCount(1);
  kind_->RowsChanged();
}

// ---- Model files --------------------------------------------------------------------------------

ModelText FactorForm::CurrentModel() const {
  ModelText model;
  model.root = WithoutSeparator(rows.Root());
  model.pattern = rows.Pattern();
  for (int row = 1; row <= rows.Count(); ++row) {
    if (!rows.IsFree(row)) model.factors.push_back({rows.Path(row), kind_->RowFields(row)});
  }
  model.constraints = constraints.Paths();
  if (kind_->TurnsConstraints()) {
    std::reverse(model.constraints.begin(), model.constraints.end());
  }
  model.title = Title();
  return model;
}

std::optional<std::string> FactorForm::AskSaveTarget() {
  const std::string pattern = std::string("*.") + kind_->Extension();
  const auto choice = ui::AskSaveFile(
      app_.desktop,
      {"Save Model Information", "Model Information Files (" + pattern + ")|" + pattern,
       kind_->Extension(), app_.settings.workingDirectory, pattern, ui::FileKind::kModels},
      {.title = "Save Model Information"});
  if (!choice) return std::nullopt;
  return choice->Path();
}

bool FactorForm::WriteModel(const std::string& path) {
  const Outcome<> written = WriteModelText(path, CurrentModel());
  if (written.Failed()) app_.desktop.Message(written.Text());
  if (!written.Ok()) return false;
  changed_ = false;
  app_.noteFile(path);
  return true;
}

void FactorForm::LoadModel(std::string path) {
  const bool asked = path.empty();
  if (asked) {
    if (kind_->AsksBeforeLoading() &&
        app_.desktop.AskBeforeLoss("This will clear existing data! Do you still want to proceed?",
                                   "Load Saved Model File",
                                   ui::Buttons::kYesNoCancel) != ui::Answer::kYes) {
      return;
    }
    const std::string pattern = std::string("*.") + kind_->Extension();
    const auto choice = app_.desktop.OpenFile(
        {"Load Saved Model File", "Model Information Files (" + pattern + ")|" + pattern, "",
         app_.settings.workingDirectory, pattern, ui::FileKind::kModels});
    if (!choice) return;
    path = choice->Path();
  }
  const Outcome<ModelText> model = ReadModelText(path);
  if (model.Ok()) {
    TakeModel(model.Value());
    app_.noteFile(path);
  } else if (asked) {
    app_.desktop.Message(model.Text());
  }
}

void FactorForm::TakeModel(const ModelText& model) {
  ClearForm();
  rows.SetRoot(model.root);
  rows.SetPattern(model.pattern);
  for (const ModelTextFactor& factor : model.factors) {
    rows.Add(factor.path);
    const int row = rows.Count();
    kind_->SetRowFields(row, factor.fields);
    if (rows.IsFree(row)) continue;
    if (!Register(rows.Path(row), CheckMode::kFactor, row).Accepted()) SetRowCount(row - 1);
  }
  for (const std::string& constraint : model.constraints) {
    const Registration registration = Register(constraint, CheckMode::kConstraint);
    if (registration.Accepted()) constraints.AddFile(registration.path);
  }
  SetTitle(model.title);
  if (rows.Count() == 0) SetRowCount(1);
  rows.ShowFirst();
  LayOut();
  kind_->ModelLoaded();
  changed_ = false;
}

// ---- A whole directory --------------------------------------------------------------------------

void FactorForm::ReadAll() {
  FrmRA window(app_.desktop, rows.Root(), [this](const DirectoryChoice& choice) { RA(choice); });
  app_.desktop.ShowModal(window, this);
}

void FactorForm::RA(const DirectoryChoice& choice) {
  if (!changed_) ClearForm();
  bool uniform = true;
  if (choice.reference.empty() || TakeReference(choice)) {
    uniform = TakeListed(choice);
    MarkChanged();
  }
  if (rows.Count() == 0) SetRowCount(1);
  kind_->RowsChanged();
  if (uniform) return;
  app_.desktop.Message(
      "Some of the data in the specified directory was not uniform. Such data was excluded.");
}

// False: the person gave up.
bool FactorForm::TakeReference(const DirectoryChoice& choice) {
  if (EnterReference(choice)) return true;
  switch (app_.desktop.AskBeforeLoss(
      "Your reference data does not conform to the existing data! Clear form "
      "and use your reference data?",
      "Read all from a directory", ui::Buttons::kYesNoCancel)) {
    case ui::Answer::kYes:
      ClearForm();
      EnterReference(choice);
      return true;
    case ui::Answer::kNo:
      return true;
    default:
      return false;
  }
}

// False: it does not fit what is loaded. One that is loaded already is passed over.
bool FactorForm::EnterReference(const DirectoryChoice& choice) {
  const Registration registration = Register(choice.reference, CheckMode::kFactorSilent);
  if (registration.result == Registration::Result::kRefused) return false;
  const std::vector<std::string>& held = constraints.Paths();
  if (!registration.Accepted() || IsListedConstraint(registration.path, held)) return true;
  if (IsListedConstraint(registration.path, choice.constraints)) {
    constraints.AddFile(registration.path);
  } else {
    rows.Add(registration.path);
  }
  return true;
}

// False: some maps did not fit the others.
bool FactorForm::TakeListed(const DirectoryChoice& choice) {
  bool uniform = true;
  for (const std::string& path : choice.factors) {
    const Registration registration = Register(path, CheckMode::kFactorSilent);
    if (registration.Accepted()) rows.Add(registration.path);
    if (registration.result == Registration::Result::kRefused) uniform = false;
  }
  for (std::string path : choice.constraints) {
    RepairPath(path);
    if (IsListedConstraint(path, constraints.Paths())) continue;
    // That it is a constraint was found out when the directory was sorted.
    const Registration registration = Register(path, CheckMode::kUnlistedSilent);
    if (registration.Accepted()) constraints.AddFile(registration.path);
    if (!registration.Accepted()) uniform = false;
  }
  return uniform;
}

// ---- On to the maps -----------------------------------------------------------------------------

bool FactorForm::DropFreeRows() {
  const std::vector<bool> free = rows.Free();
  if (std::find(free.begin(), free.end(), false) == free.end()) {
    for (const auto& box : rows.FCkBox) box->SetChecked(false);
    app_.desktop.Message("You Must Enter at Least One Factor!");
    return false;
  }
  DeleteRows(free);
  kind_->RowsChanged();
  return true;
}

bool FactorForm::MapsAreThere() {
  for (int row = 1; row <= rows.Count(); ++row) {
    if (Exists(rows.Path(row))) continue;
    app_.desktop.Message(rows.Path(row) + " Does Not Exist!");
    return false;
  }
  return true;
}

}  // namespace ormel
