#include "shell/main_window.h"

#include <filesystem>

#include "mce/linear/model_builder_window.h"
#include "mce/model_session.h"
#include "mce/nonlinear/nonlinear_builder_window.h"
#include "mce/save_model_window.h"
#include "mce/timestep/step_calendar_window.h"
#include "movies/map_movie_window.h"
#include "rastertools/class_map_window.h"
#include "rastertools/data_prep_window.h"
#include "rastertools/map_algebra_window.h"
#include "rastertools/map_stats_window.h"
#include "rastertools/step_maps_window.h"
#include "shell/about_window.h"
#include "shell/file_opening.h"
#include "shell/help_window.h"
#include "shell/saved_desktop.h"
#include "text/text_search.h"
#include "ui/desktop.h"
#include "viewer/map_view_window.h"

namespace ormel {
namespace {

constexpr char kLoadFilter[] = "MCE Infomation Files (.tsi)|*.tsi;*.mif;*.cmf";
constexpr char kFileEnd = '?';  // behind a path in the receive box

// Whether the text has come to its end, which goes.
bool TakeEnd(std::string& text) {
  if (text.size() < 2 || text.back() != kFileEnd) return false;
  text.pop_back();
  return true;
}

// The file and the folder that it is in: enough to tell two maps of the same name apart.
std::string ShortPath(const std::filesystem::path& path) {
  return (path.parent_path().filename() / path.filename()).string();
}

}  // namespace

FrmMain::FrmMain(AppContext& app, SavedDesktop& saved)
    : Window("frmMain", "ORMEL Model " ORMEL_VERSION), app_(app), saved_(saved) {
  txtReceive.SetVisible(false);
  txtReceive.SetToolTip("A file's path and a question mark open the file");
  txtReceive.onChange = [this] { TextReceived(); };
  onDrop = [this](const std::string& path) { OpenFileByExtension(path); };
  SetLayout(ui::Row{txtReceive});
  SetMain();
  options_.LoadAtStart();
  app_.session.onChange = [this] { ShowSession(); };
  app_.desktop.SetWindowsHandler([this] { ListWindows(); });
  saved_.onFiles = [this] { ListRecent(); };
  ListRecent();
  app_.desktop.SetHelp([desktop = &app_.desktop](const ui::Window& window) {
    OpenHelp(*desktop).ShowAbout(window.Name());
  });
  ShowSession();
  ShowChoices();
}

FrmMain::~FrmMain() {
  app_.session.onChange = {};
  app_.desktop.SetWindowsHandler({});
  saved_.onFiles = [] {};
}

// ---- Menu and toolbar ---------------------------------------------------------------------------

ui::Handler FrmMain::Run(Command command) {
  return [this, command] { (this->*command)(); };
}

std::vector<ui::MenuSpec> FrmMain::Menus() {
  using ui::MenuSpec;
  return {{"mFile",
           "&File",
           "",
           {},
           {{"mOptions", "Global Settings", "", Run(&FrmMain::mOptions), {}},
            {"mReceive", "&Receive File", "F12", Run(&FrmMain::mReceive), {}},
            MenuSpec::Separator(),
            {"mRecent", "R&ecent", "", Run(&FrmMain::ListRecent), {MenuSpec::Separator()}},
            MenuSpec::Separator(),
            {"mExit", "E&xit", "Ctrl+Q", Run(&FrmMain::mExit), {}}}},
          {"mMCE",
           "&MCE",
           "",
           {},
           {{"mSingle",
             "&Single MCE",
             "",
             {},
             {{"mBuild", "Linear", "", Run(&FrmMain::mBuild), {}},
              {"mBuildC", "Non-Linear", "", Run(&FrmMain::mBuildC), {}}}},
            {"mTimeSteps",
             "&Time Step MCE",
             "",
             {},
             {{"mTimeStep", "Linear", "", Run(&FrmMain::mTimeStep), {}},
              {"mTimeStepC", "Non-Linear", "", Run(&FrmMain::mTimeStepC), {}}}},
            MenuSpec::Separator(),
            {"mLoadMCE", "&Load", "Ctrl+O", Run(&FrmMain::mLoadMCE), {}},
            {"mSaveMCE", "&Save", "Ctrl+S", Run(&FrmMain::mSaveMCE), {}},
            {"mSaveAsMCE", "Save As", "", Run(&FrmMain::mSaveAsMCE), {}},
            {"mClose", "Close", "", Run(&FrmMain::mClose), {}}}},
          {"mTools",
           "&Tools",
           "",
           {},
           {{"mDPrep", "Data &Prep", "", Run(&FrmMain::mDPrep), {}},
            {"mMapStats", "Map Statistics", "", Run(&FrmMain::mMapStats), {}},
            {"mMapAlgebra", "Map Algebra", "", Run(&FrmMain::mMapAlgebra), {}},
            {"mClass", "Create Map from Class Data", "", Run(&FrmMain::mClass), {}},
            {"mGenFCSV", "Generate Time Step Maps from CSV", "", Run(&FrmMain::mGenFCSV), {}},
            ui::MenuSpec::Separator(),
            {"mAVI", "Write AVI", "", Run(&FrmMain::mAVI), {}}}},
          {"mViewer",
           "&Viewer",
           "",
           {},
           {{"mNewView", "New View", "Ctrl+N", Run(&FrmMain::mNewView), {}}}},
          {"mWindow", "&Window", "", {}, {MenuSpec::Separator()}},  // see ListWindows()
          {"mHelp",
           "&Help",
           "",
           {},
           {{"mContents", "&Contents", "F1", [this] { OpenHelp(app_.desktop).ShowContents(); }, {}},
            {"mIndex", "&Index", "", [this] { OpenHelp(app_.desktop).ShowIndex(); }, {}},
            {"mSearch", "&Search...", "", [this] { OpenHelp(app_.desktop).ShowSearch(); }, {}},
            MenuSpec::Separator(),
            {"mAbout", "About ORMEL", "", Run(&FrmMain::mAbout), {}}}}};
}

// Buttons are known by fixed numbers, whichever of them there are.
std::vector<ui::ToolSpec> FrmMain::Tools() {
  return {{1, "Viewer", "viewer.svg", Run(&FrmMain::mNewView), {}},
          {3, "Data Preparation", "data-preparation.svg", Run(&FrmMain::mDPrep), {}},
          {4, "Raster Tools", "raster-tools.svg", [this] { StartRasterTool(rasterTool_); },
           ChoiceMenu(RasterTools(), rasterTool_, &FrmMain::StartRasterTool)},
          {7, "Model Builder", "model-builder.svg", [this] { StartBuilder(builder_); },
           ChoiceMenu(Builders(), builder_, &FrmMain::StartBuilder)}};
}

std::vector<FrmMain::Choice> FrmMain::Builders() {
  return {{"Single Pass Linear", &FrmMain::mBuild},
          {"Single Pass Non-Linear", &FrmMain::mBuildC},
          {"Time Step Linear", &FrmMain::mTimeStep},
          {"Time Step Non-Linear", &FrmMain::TimeStepByToolbar}};
}

std::vector<FrmMain::Choice> FrmMain::RasterTools() {
  return {{"Map Statistics", &FrmMain::mMapStats},
          {"Map Algebra", &FrmMain::mMapAlgebra},
          {"Create Maps from Class Data", &FrmMain::mClass},
          {"Create Time-Step Maps from CSV", &FrmMain::mGenFCSV}};
}

std::vector<ui::MenuSpec> FrmMain::ChoiceMenu(const std::vector<Choice>& choices, int& chosen,
                                              void (FrmMain::*start)(int number)) {
  std::vector<ui::MenuSpec> menu;
  for (const Choice& choice : choices) {
    const int number = static_cast<int>(menu.size()) + 1;
    const auto choose = [this, number, start, &chosen] {
      chosen = number;
      ShowChoices();
      (this->*start)(number);
    };
    menu.push_back({"", choice.caption, "", choose, {}});
  }
  return menu;
}

// Looked at again whenever the menu opens: files come and go meanwhile.
void FrmMain::ListRecent() {
  const std::vector<std::string>& files = saved_.Files();
  std::vector<ui::MenuSpec> entries;
  for (const std::string& path : files) {
    const int number = static_cast<int>(entries.size()) + 1;
    entries.push_back({"mRecent" + std::to_string(number),
                       ui::NumberedCaption(number, ShortPath(path)),
                       "",
                       [this, path] { OpenRecent(path); },
                       {}});
  }
  entries.push_back(ui::MenuSpec::Separator());
  entries.push_back({"mRecentClear", "&Clear the List", "", [this] { saved_.ForgetFiles(); }, {}});
  menu["mRecent"].SetChildren(entries);
  menu["mRecent"].SetEnabled(!files.empty());
  for (std::size_t i = 0; i < files.size(); ++i) {
    ui::MenuItem& entry = menu[entries[i].name];
    std::error_code error;
    entry.SetEnabled(std::filesystem::exists(files[i], error));
    entry.SetToolTip(files[i]);
  }
}

// The windows that are open, beside this one.
void FrmMain::ListWindows() {
  std::vector<ui::MenuSpec> entries{
      {"mNextWindow", "&Next Window", "Ctrl+Tab", [this] { app_.desktop.GoOn(*this, false); }, {}},
      ui::MenuSpec::Separator()};
  for (const ui::Window* window : app_.desktop.WindowsToGoTo()) {
    if (window == this) continue;
    const int number = static_cast<int>(entries.size()) - 1;
    entries.push_back({"mWindow" + std::to_string(number),
                       ui::NumberedCaption(number, window->Caption()),
                       "",
                       [this, number] { GoToWindow(number); },
                       {}});
  }
  if (entries.size() == 2) entries.pop_back();
  menu["mWindow"].SetChildren(entries);
}

void FrmMain::GoToWindow(int number) {
  for (ui::Window* window : app_.desktop.WindowsToGoTo()) {
    if (window != this && --number == 0) return app_.desktop.ShowAgain(*window);
  }
}

// The button asks by itself before the command does: a model that the person then keeps after all
// is asked about once more.
void FrmMain::StartBuilder(int number) {
  if (!CloseCurMCE()) return;
  (this->*Builders()[static_cast<std::size_t>(number - 1)].start)();
}

void FrmMain::StartRasterTool(int number) {
  (this->*RasterTools()[static_cast<std::size_t>(number - 1)].start)();
}

void FrmMain::ShowChoices() {
  const struct {
    const char* button;
    int chosen;
  } choices[] = {{"TBMain(4)", rasterTool_}, {"TBMain(7)", builder_}};
  for (const auto& button : TBMain.Buttons()) {
    for (const auto& [name, chosen] : choices) {
      if (button->Name() != name) continue;
      for (std::size_t i = 0; i < button->Menu().size(); ++i) {
        button->Menu()[i]->SetChecked(static_cast<int>(i) + 1 == chosen);
      }
    }
  }
}

// The model's entries can be used while one runs.
void FrmMain::ShowSession() {
  const bool running = app_.session.Running() != nullptr;
  for (const char* entry : {"mSaveMCE", "mSaveAsMCE", "mClose"}) menu[entry].SetEnabled(running);
  if (!running && app_.desktop.IsOpen(*this)) app_.desktop.ShowAgain(*this);
}

void FrmMain::mOptions() { app_.desktop.ShowModal(options_, this); }

void FrmMain::mAbout() {
  FrmAbout about(app_.desktop);
  app_.desktop.ShowModal(about, this);
}

// ---- The end ------------------------------------------------------------------------------------

void FrmMain::mExit() {
  if (RunningModel* running = app_.session.Running()) (void)running->Unload();
  if (app_.session.Running() == nullptr) app_.desktop.CloseAll();
}

bool FrmMain::QueryClose() {
  const bool alone = app_.session.Running() == nullptr && app_.desktop.OpenWindows().size() == 1;
  if (!alone) mExit();
  return alone;
}

// ---- Tools --------------------------------------------------------------------------------------

template <class Tool>
void FrmMain::OpenTool() {
  for (ui::Window* window : app_.desktop.OpenWindows()) {
    if (dynamic_cast<Tool*>(window) != nullptr) return app_.desktop.ShowAgain(*window);
  }
  app_.desktop.Show(std::make_unique<Tool>(app_), this);
}

void FrmMain::mDPrep() { OpenTool<FrmDataPrep>(); }

void FrmMain::mMapStats() { OpenTool<FrmMapStats>(); }

void FrmMain::mMapAlgebra() { OpenTool<FrmMapAlgebra>(); }

void FrmMain::mClass() { OpenTool<FrmClass>(); }

void FrmMain::mGenFCSV() { OpenTool<FrmGenTSMaps>(); }

void FrmMain::mAVI() { OpenTool<FrmAVI>(); }

// ---- Viewers ------------------------------------------------------------------------------------

FrmView& FrmMain::NewView() { return app_.desktop.Show(std::make_unique<FrmView>(app_), this); }

void FrmMain::mNewView() { NewView(); }

// ---- Files from outside -------------------------------------------------------------------------

void FrmMain::OpenFileByExtension(const std::string& text) {
  const FileToOpen file = ReadFileText(text);
  OpenAs(file.path, file.extension);
}

// False: nothing opens such files.
bool FrmMain::OpenAs(const std::string& path, std::string_view extension) {
  struct Opener {
    const char* extension;
    void (FrmMain::*open)(const std::string& path);
  };
  static constexpr Opener kOpeners[] = {
      {"mif", &FrmMain::OpenLinearModel},   {"cmf", &FrmMain::OpenNonlinearModel},
      {"tsi", &FrmMain::OpenTimeStepModel}, {"asc", &FrmMain::OpenMap},
      {"grd", &FrmMain::OpenMap},           {"txt", &FrmMain::OpenMap}};
  for (const Opener& opener : kOpeners) {
    if (extension != opener.extension) continue;
    (this->*opener.open)(path);
    return true;
  }
  return false;
}

// A model from the list has its file from the start, as one from the Load dialog has.
void FrmMain::OpenRecent(const std::string& path) {
  const RunningModel* before = app_.session.Running();
  const std::string extension = InSmallLetters(std::filesystem::path(path).extension().string());
  if (extension.empty() || !OpenAs(path, extension.substr(1))) OpenMap(path);
  const RunningModel* running = app_.session.Running();
  if (running != nullptr && running != before) app_.session.modelFile = path;
}

// A builder of this kind with nothing in it yet; null when the person keeps the model that runs.
template <class Builder>
Builder* FrmMain::NewBuilder(Command start) {
  const RunningModel* before = app_.session.Running();
  (this->*start)();
  RunningModel* running = app_.session.Running();
  return running == before ? nullptr : dynamic_cast<Builder*>(running);
}

void FrmMain::OpenLinearModel(const std::string& path) {
  if (auto* builder = NewBuilder<FrmBuild>(&FrmMain::mBuild)) builder->loadmif(path);
}

void FrmMain::OpenNonlinearModel(const std::string& path) {
  if (auto* builder = NewBuilder<FrmBuildC>(&FrmMain::mBuildC)) builder->loadCMF(path);
}

// The model has its file from the start, however it is opened.
void FrmMain::OpenTimeStepModel(const std::string& path) {
  std::error_code error;
  if (!std::filesystem::exists(path, error)) return;
  FrmTS1* page = StartTimeSteps();
  if (page == nullptr) return;
  app_.session.modelFile = path;
  page->Wizard().Load(path);
}

void FrmMain::OpenMap(const std::string& path) { (void)NewView().OpenMapFile(path); }

// The empty message is what tells a person that a file comes from outside.
void FrmMain::mReceive() {
  app_.desktop.Message("");
  txtReceive.SetVisible(true);
  FocusOn(txtReceive);
}

void FrmMain::TextReceived() {
  std::string text = txtReceive.Text();
  if (!TakeEnd(text)) return;
  txtReceive.SetText("");
  OpenFileByExtension(text);
}

void FrmMain::TakeOver(const std::string& text) {
  std::string file = text;
  if (!TakeEnd(file)) return;
  app_.desktop.ShowAgain(*this);
  OpenFileByExtension(file);
}

// ---- The running model --------------------------------------------------------------------------

bool FrmMain::CloseCurMCE() {
  RunningModel* running = app_.session.Running();
  if (running == nullptr) return true;
  const ui::Answer answer = app_.desktop.Ask(
      "You are already running a MCE; you cannot run another! Would you like to close the current "
      "one?",
      "Close Current MCE?", ui::Buttons::kYesNo);
  if (answer != ui::Answer::kYes) return false;
  (void)running->Unload();
  return true;
}

template <class Builder>
void FrmMain::Build() {
  if (!CloseCurMCE()) return;
  if (RunningModel* kept = app_.session.Running()) return kept->BringForward();
  app_.desktop.Show(std::make_unique<Builder>(app_), this);
}

void FrmMain::mBuild() { Build<FrmBuild>(); }

void FrmMain::mBuildC() { Build<FrmBuildC>(); }

// Null when the person keeps the model that runs.
FrmTS1* FrmMain::StartTimeSteps() {
  const RunningModel* before = app_.session.Running();
  if (!CloseCurMCE()) return nullptr;
  if (RunningModel* kept = app_.session.Running(); kept != nullptr && kept == before) {
    kept->BringForward();
    return nullptr;
  }
  return &app_.desktop.Show(std::make_unique<FrmTS1>(app_), this);
}

void FrmMain::mTimeStep() {
  app_.session.nonLinearSteps = false;
  StartTimeSteps();
}

void FrmMain::mTimeStepC() {
  app_.session.nonLinearSteps = true;
  StartTimeSteps();
}

// Starts the linear one, which is made the other kind before its factors are asked for.
void FrmMain::TimeStepByToolbar() {
  mTimeStep();
  app_.session.nonLinearSteps = true;
}

void FrmMain::mLoadMCE() {
  if (app_.session.Running() != nullptr) {
    app_.desktop.Message(
        "You Already Have a MCE Running! To Begin Another You Must Close Your Current One.");
    return;
  }
  const auto choice = app_.desktop.OpenFile(
      {"Load MCE", kLoadFilter, "", app_.settings.workingDirectory, "", ui::FileKind::kModels});
  if (!choice) return;
  app_.session.modelFile = choice->Path();
  OpenFileByExtension(choice->Path());
}

void FrmMain::mSaveMCE() {
  if (app_.session.Running() == nullptr) return mSaveAsMCE();
  SaveRunningModel(app_);
}

void FrmMain::mSaveAsMCE() {
  if (RunningModel* running = app_.session.Running()) {
    running->cmdSave_Click();
  } else {
    app_.desktop.Message("No Multi-Criteria Analysis is Running!");
  }
}

void FrmMain::mClose() {
  if (RunningModel* running = app_.session.Running()) (void)running->Unload();
}

}  // namespace ormel
