#include "mce/builder_window.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "base/progress_sink.h"
#include "mce/generator_window.h"
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

// A model file holds its root without a separator at the end.
std::string WithoutSeparator(std::string folder) {
  while (folder.size() > 1 && (folder.back() == '/' || folder.back() == '\\')) folder.pop_back();
  return folder;
}

std::vector<ui::MenuSpec> Joined(std::vector<ui::MenuSpec> first,
                                 std::vector<ui::MenuSpec> second) {
  first.insert(first.end(), std::make_move_iterator(second.begin()),
               std::make_move_iterator(second.end()));
  return first;
}

ChosenFilesSpec ConstraintsSpec(const Settings& settings) {
  ChosenFilesSpec spec;
  spec.list = "CFL";
  spec.add = "CmdSrchC";
  spec.remove = "CmdRemoveC";
  spec.dialog = [&settings] {
    return ui::FileDialog{"Load Constraint",
                          "ASCII Raster (.asc, .grd)|*.asc;*.grd",
                          "",
                          settings.workingDirectory,
                          kAnyMap,
                          ui::FileKind::kMaps};
  };
  spec.removeQuestion = "Are You Sure You Want to Remove the Selected Constraints?";
  spec.removeAllQuestion = "No Constraints Selected, Clear All?";
  spec.removeTitle = "Remove Constraints";
  return spec;
}

}  // namespace

BuilderWindow::BuilderWindow(AppContext& app, const std::string& name, const std::string& caption,
                             std::string extension, std::vector<ui::MenuSpec> tools)
    : Window(name, caption),
      constraints(*this, app.desktop, ConstraintsSpec(app.settings)),
      palette(*this, app),
      menu(*this, {{"mFile",
                    "&File",
                    "",
                    {},
                    {{"mNew", "&New", "Ctrl+N", [this] { AskAndClear(); }, {}},
                     {"mOpen", "&Open", "Ctrl+O", [this] { LoadModel(""); }, {}},
                     {"mSave", "&Save", "Ctrl+S", [this] { cmdSave_Click(); }, {}},
                     ui::MenuSpec::Separator(),
                     {"mExit", "E&xit", "", [this] { app_.desktop.CloseByFrame(*this); }, {}}}},
                   {"mTools",
                    "&Tools",
                    "",
                    {},
                    Joined(std::move(tools),
                           {{"mReadAll", "Read All from Directory", "", [this] { ReadAll(); }, {}},
                            {"mRoot", "Set Root Directory", "", [this] { AskRoot(); }, {}},
                            {"mFilter", "Set Filter", "", [this] { AskFilter(); }, {}}})}}),
      app_(app),
      extension_(std::move(extension)) {
  rows.SetRoot(app.settings.workingDirectory);
  cmdOk.SetDefault();
  cmdOk.SetToolTip("Read the maps and go on to the suitability map");
  cmdReadAll.SetToolTip("Take the maps of a whole folder");
  cmdDelFac.SetToolTip("Remove the factors that are checked");
  DCC.SetToolTip("Colour of cells that a constraint forbids; click to change it");
  ConnectHandlers();
}

void BuilderWindow::Begin() {
  app_.session.Begin(*this);
  DCC.SetColour(app_.settings.constraintColor);
  SetRowCount(1);
}

void BuilderWindow::ConnectHandlers() {
  const auto changed = [this] { MarkChanged(); };
  txtTitle.onChange = changed;
  rows.fchng.onChange = [this] { SpinRows(); };
  rows.onLayout = [this] { LayOut(); };
  rows.onBrowse = [this](int row) { PickFactor(row); };
  rows.onChoose = [this](int row) { ChooseFromList(row); };
  cmdReadAll.onClick = [this] { ReadAll(); };
  cmdDelFac.onClick = [this] { DeleteChecked(); };
  constraints.onAdd = [this](const std::string& path) { AddConstraint(path); };
  constraints.onRemoved = changed;
  DCC.onClick = [this] { PickConstraintColour(); };
  palette.onChange = changed;
  cmdLoad.onClick = [this] { LoadModel(""); };
  cmdSave.onClick = [this] { cmdSave_Click(); };
  cmdClear.onClick = [this] { AskAndClear(); };
  cmdOk.onClick = [this] { Accept(); };
  cmdClose.onClick = [this] { app_.desktop.CloseByFrame(*this); };
  onDrop = [this](const std::string& path) { DropFactor(path); };
}

// ---- Layout -------------------------------------------------------------------------------------

void BuilderWindow::LayOut() {
  ui::Row tools{"Factors:", rows.lblfnum, rows.fchng, ui::Stretch{}};
  for (ui::LayoutItem& tool : RowTools()) tools.items.push_back(std::move(tool));
  tools.items.emplace_back(cmdReadAll);
  tools.items.emplace_back(cmdDelFac);
  ui::Row frames{ui::Share(3, ui::Frame{"Constraints", constraints.list,
                                        ui::Row{constraints.cmdAdd, constraints.cmdRemove,
                                                ui::Stretch{}, "Colour:", DCC}}),
                 ui::Share(2, ui::Frame{"Palette", ui::Row{palette.txtPal, palette.cmdLP},
                                        palette.PicPP, ui::Stretch{}})};
  for (ui::LayoutItem& frame : FurtherFrames()) frames.items.push_back(std::move(frame));
  SetLayout(ui::Column{ui::Row{"&Title:", txtTitle}, tools, rows.Area(), ui::Share(3, frames),
                       ui::Row{cmdLoad, cmdSave, cmdClear, ui::Stretch{}, cmdOk, cmdClose}});
}

// ---- Rows ---------------------------------------------------------------------------------------

void BuilderWindow::SetRowCount(int count) {
  rows.SetCount(count);
  if (count == 0 && constraints.list.Count() == 0) reference_.Clear();
}

void BuilderWindow::DeleteChecked() {
  const std::vector<bool> marked = rows.Checked();
  if (std::find(marked.begin(), marked.end(), true) == marked.end()) return;
  DeleteRows(marked);
  MarkChanged();
  RowsChanged();
}

void BuilderWindow::DeleteRows(const std::vector<bool>& marked) {
  const bool all = std::find(marked.begin(), marked.end(), false) == marked.end();
  rows.Delete(marked);
  if (all && constraints.list.Count() == 0) reference_.Clear();
}

void BuilderWindow::SpinRows() {
  const int count = rows.fchng.Value();
  for (int row = count + 1; row <= rows.Count(); ++row) {
    if (!rows.IsFree(row)) MarkChanged();  // a free row is no part of the model
  }
  SetRowCount(count);
  RowsChanged();
}

// ---- Maps that join -----------------------------------------------------------------------------

LoadedData BuilderWindow::Loaded() const {
  LoadedData loaded;
  for (int row = 1; row <= rows.Count(); ++row) loaded.factors.push_back(rows.Path(row));
  loaded.constraints = constraints.Paths();
  return loaded;
}

Registration BuilderWindow::Register(const std::string& path, CheckMode mode, int row) {
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

bool BuilderWindow::TakeFactor(int row, const std::string& path) {
  const Registration registration = Register(path, CheckMode::kFactor, row);
  if (!registration.Accepted()) return false;
  rows.PutFile(row, registration.path);
  MarkChanged();
  if (!rows.IsFree(rows.Count())) SetRowCount(rows.Count() + 1);
  RowsChanged();
  return true;
}

void BuilderWindow::PickFactor(int row) {
  const std::string& pattern = rows.Pattern();
  const auto choice =
      app_.desktop.OpenFile({"Load Factor", pattern + "|" + pattern, "",
                             app_.settings.workingDirectory, kAnyMap, ui::FileKind::kMaps});
  if (choice) TakeFactor(row, choice->Path());
}

void BuilderWindow::ChooseFromList(int row) {
  MarkChanged();
  const std::string path = JoinPath(rows.Folder(row), rows.FList(row).Text());
  if (!Register(path, CheckMode::kFactor, row).Accepted()) rows.FList(row).SetText("");
  RowsChanged();
}

// Each file of a drop takes the first free row.
void BuilderWindow::DropFactor(const std::string& path) {
  int row = 1;
  while (row <= rows.Count() && !rows.IsFree(row)) ++row;
  if (row > rows.Count()) SetRowCount(row);
  TakeFactor(row, path);
}

void BuilderWindow::AddConstraint(const std::string& path) {
  MarkChanged();
  if (constraints.Holds(path)) return app_.desktop.Message("Constraint Already Added");
  const Registration registration = Register(path, CheckMode::kConstraint);
  if (registration.Accepted()) constraints.AddFile(registration.path);
}

// ---- The rest of the form -----------------------------------------------------------------------

void BuilderWindow::PickConstraintColour() {
  const auto colour = app_.desktop.PickColour("Select New Constraint Color", DCC.Value());
  if (!colour) return;
  DCC.SetColour(*colour);
  MarkChanged();
}

void BuilderWindow::AskFilter() {
  const auto pattern =
      app_.desktop.Prompt("New Filter (Comma Delineated):", ui::kProgramTitle, rows.Pattern());
  if (!pattern || pattern->empty()) return;
  rows.SetPattern(*pattern);
  MarkChanged();
  rows.Refill();
}

void BuilderWindow::AskRoot() {
  const auto folder = app_.desktop.Prompt("New Root Directory:", ui::kProgramTitle, rows.Root());
  if (!folder || folder->empty()) return;
  if (!IsFolder(*folder)) return app_.desktop.Message("The Specified Path Does Not Exist");
  rows.SetRoot(*folder);
  MarkChanged();
  rows.Refill();
}

void BuilderWindow::ClearForm() {
  constraints.list.Clear();
  SetRowCount(0);
  txtTitle.SetText("");
  DCC.SetColour(app_.settings.constraintColor);
  changed_ = false;
  FormCleared();
}

void BuilderWindow::AskAndClear() {
  const ui::Answer answer = app_.desktop.AskBeforeLoss("Are you sure you want to clear the form?",
                                                       "Clear Form", ui::Buttons::kYesNo);
  if (answer != ui::Answer::kYes) return;
  ClearForm();
  SetRowCount(1);
  RowsChanged();
}

// ---- Model files --------------------------------------------------------------------------------

ModelText BuilderWindow::CurrentModel() const {
  ModelText model;
  model.root = WithoutSeparator(rows.Root());
  model.pattern = rows.Pattern();
  for (int row = 1; row <= rows.Count(); ++row) {
    if (!rows.IsFree(row)) model.factors.push_back({rows.Path(row), RowFields(row)});
  }
  model.constraints = ConstraintsToSave();
  model.title = txtTitle.Text();
  return model;
}

// None: the person gave up.
std::optional<std::string> BuilderWindow::SaveTarget() {
  if (app_.session.saveInPlace) return app_.session.modelFile;
  const std::string pattern = "*." + extension_;
  const auto choice = ui::AskSaveFile(
      app_.desktop,
      {"Save Model Information", "Model Information Files (" + pattern + ")|" + pattern, extension_,
       app_.settings.workingDirectory, pattern, ui::FileKind::kModels},
      {.title = "Save Model Information"});
  if (!choice) return std::nullopt;
  return choice->Path();
}

void BuilderWindow::cmdSave_Click() {
  const std::optional<std::string> path = SaveTarget();
  if (!path) return;
  const Outcome<> written = WriteModelText(*path, CurrentModel());
  if (written.Failed()) return app_.desktop.Message(written.Text());
  changed_ = false;
  app_.noteFile(*path);
}

void BuilderWindow::LoadModel(std::string path) {
  const bool asked = path.empty();
  if (asked) {
    if (AsksBeforeLoading() &&
        app_.desktop.AskBeforeLoss("This will clear existing data! Do you still want to proceed?",
                                   "Load Saved Model File",
                                   ui::Buttons::kYesNoCancel) != ui::Answer::kYes) {
      return;
    }
    const std::string pattern = "*." + extension_;
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

// Rows and constraints that are refused are left out; a message has told so.
void BuilderWindow::TakeModel(const ModelText& model) {
  ClearForm();
  rows.SetRoot(model.root);
  rows.SetPattern(model.pattern);
  for (const ModelTextFactor& factor : model.factors) {
    rows.Add(factor.path);
    const int row = rows.Count();
    SetRowFields(row, factor.fields);
    if (rows.IsFree(row)) continue;
    if (!Register(rows.Path(row), CheckMode::kFactor, row).Accepted()) SetRowCount(row - 1);
  }
  for (const std::string& constraint : model.constraints) {
    const Registration registration = Register(constraint, CheckMode::kConstraint);
    if (registration.Accepted()) constraints.AddFile(registration.path);
  }
  txtTitle.SetText(model.title);
  if (rows.Count() == 0) SetRowCount(1);
  rows.ShowFirst();
  LayOut();
  ModelLoaded();
  changed_ = false;
}

// ---- A whole directory --------------------------------------------------------------------------

void BuilderWindow::ReadAll() {
  FrmRA window(app_.desktop, rows.Root(), [this](const DirectoryChoice& choice) { RA(choice); });
  app_.desktop.ShowModal(window, this);
}

void BuilderWindow::RA(const DirectoryChoice& choice) {
  if (!changed_) ClearForm();
  bool uniform = true;
  if (choice.reference.empty() || TakeReference(choice)) {
    uniform = TakeListed(choice);
    MarkChanged();
  }
  if (rows.Count() == 0) SetRowCount(1);
  RowsChanged();
  if (uniform) return;
  app_.desktop.Message(
      "Some of the data in the specified directory was not uniform. Such data was excluded.");
}

// False: the person gave up.
bool BuilderWindow::TakeReference(const DirectoryChoice& choice) {
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
bool BuilderWindow::EnterReference(const DirectoryChoice& choice) {
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
bool BuilderWindow::TakeListed(const DirectoryChoice& choice) {
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

// ---- On to the viewer, and the end --------------------------------------------------------------

void BuilderWindow::Accept() {
  if (!palette.Usable()) return;
  const std::vector<bool> free = rows.Free();
  if (std::find(free.begin(), free.end(), false) == free.end()) {
    for (const auto& box : rows.FCkBox) box->SetChecked(false);
    app_.desktop.Message("You Must Enter at Least One Factor!");
    return;
  }
  DeleteRows(free);
  RowsChanged();
  for (int row = 1; row <= rows.Count(); ++row) {
    if (!Exists(rows.Path(row))) return app_.desktop.Message(rows.Path(row) + " Does Not Exist!");
  }
  OpenViewer();
}

// The viewer takes the place of the builder, when it is still open behind the reading.
void BuilderWindow::OpenViewer() {
  std::unique_ptr<GeneratorWindow> viewer = MakeViewer();
  viewer->CV.SetColour(DCC.Value());
  {
    ui::Run run(*this);
    if (!run.Report(viewer->Start(run))) return;
  }
  if (!app_.desktop.IsOpen(*this)) return;
  viewer->onReturnToBuilder = [this] { ReturnFromViewer(); };
  viewer->onExitToMain = [this] {
    viewer_ = nullptr;
    if (!Unload()) ReturnFromViewer();
  };
  viewer_ = &app_.desktop.Show(std::move(viewer), app_.desktop.FindWindow("frmMain"));
  app_.desktop.Hide(*this);
}

void BuilderWindow::ReturnFromViewer() {
  viewer_ = nullptr;
  app_.desktop.ShowAgain(*this);
}

bool BuilderWindow::QueryClose() {
  if (!changed_) return true;
  switch (app_.desktop.Ask("Save Changes?", "Close Model", ui::Buttons::kYesNoCancel)) {
    case ui::Answer::kYes:
      cmdSave_Click();
      return !changed_;  // a save that was given up or failed loses nothing
    case ui::Answer::kNo:
      return true;
    default:
      return false;
  }
}

bool BuilderWindow::Unload() {
  if (app_.desktop.IsOpen(*this) && QueryClose()) app_.desktop.Close(*this);
  return !app_.desktop.IsOpen(*this);
}

void BuilderWindow::OnClosed() {
  if (viewer_ != nullptr) app_.desktop.Close(*std::exchange(viewer_, nullptr));
  app_.session.End(*this);
}

void BuilderWindow::BringForward() {
  app_.desktop.ShowAgain(viewer_ != nullptr ? *viewer_ : static_cast<ui::Window&>(*this));
}

}  // namespace ormel
