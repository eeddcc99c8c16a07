#include "mce/timestep/step_wizard_window.h"

#include <algorithm>

#include "mce/save_model_window.h"
#include "mce/timestep/behaviour_window.h"
#include "mce/timestep/step_calendar_window.h"
#include "mce/timestep/step_factors_window.h"
#include "mce/timestep/step_output.h"
#include "mce/timestep/step_output_window.h"
#include "mce/timestep/step_viewer_window.h"
#include "mce/timestep/step_weights.h"
#include "mce/timestep/step_weights_window.h"
#include "ui/desktop.h"
#include "ui/run.h"
#include "ui/save_dialog.h"

namespace ormel {

// ---- Parts of the pages -------------------------------------------------------------------------

StepPageParts::StepPageParts(ui::Window& window, StepWizard& wizard, const std::string& next,
                             const std::string& nextCaption, bool first)
    : cmdBack(window, "cmdBack", "< &Back"),
      cmdNext(window, next, nextCaption),
      cmdExit(window, "cmdExit", "E&xit") {
  cmdBack.SetVisible(!first);
  cmdBack.SetToolTip("To the page before; what is entered here stays");
  cmdBack.onClick = [&wizard] { wizard.Back(); };
  cmdNext.SetDefault();
  cmdExit.SetToolTip("Leave the time-step model");
  cmdExit.onClick = [&window] { window.OnDesktop()->CloseByFrame(window); };
}

ui::LayoutItem StepPageParts::Buttons() {
  return ui::Row{ui::Stretch{}, cmdBack, cmdNext, cmdExit};
}

std::vector<ui::MenuSpec> StepPageParts::SaveMenu(StepWizard& wizard) {
  return {{"mSaveSteps", "&Save Time-Step Model", "Ctrl+S", [&wizard] { wizard.Save(); }, {}},
          {"mSaveStepsAs",
           "Save Time-Step Model &As...",
           "",
           [&wizard] { wizard.cmdSave_Click(); },
           {}}};
}

// ---- Going from page to page --------------------------------------------------------------------

StepWizard::StepWizard(AppContext& app, FrmTS1& first) : app_(app), first_(first), shown_(&first) {
  app_.session.Begin(*this);
}

StepWizard::~StepWizard() = default;

void StepWizard::GoTo(ui::Window& page) {
  if (shown_ == &page) return;
  app_.desktop.Hide(*shown_);
  shown_ = &page;
  app_.desktop.ShowAgain(page);
}

// Makes the page when it is reached for the first time.
template <class Page, class... Arguments>
Page& StepWizard::Open(Page*& page, Arguments&... arguments) {
  if (page == nullptr) {
    page = &app_.desktop.Show(std::make_unique<Page>(app_, *this, arguments...),
                              app_.desktop.FindWindow("frmMain"));
    app_.desktop.Hide(*page);
  }
  return *page;
}

void StepWizard::TakeCalendar(StepCalendar calendar) {
  calendar_ = std::move(calendar);
  if (factors_ == nullptr) {
    ui::Window* const main = app_.desktop.FindWindow("frmMain");
    const bool loaded = loaded_.stage >= StepStage::kFactors;
    const bool nonlinear = loaded ? loaded_.factors.nonlinear : app_.session.nonLinearSteps;
    if (nonlinear) {
      factors_ = &app_.desktop.Show(std::make_unique<FrmTS2C>(app_, *this), main);
    } else {
      factors_ = &app_.desktop.Show(std::make_unique<FrmTS2>(app_, *this), main);
    }
    app_.desktop.Hide(*factors_);
    if (loaded) factors_->Put(loaded_.factors);
  }
  Reach(StepStage::kFactors);
  GoTo(*factors_);
}

void StepWizard::FactorsDone() {
  const bool isNew = behaviour_ == nullptr;
  FrmTSClass& page = Open(behaviour_);
  if (isNew) page.Put(loaded_.factors.factors, loaded_.behaviours);
  page.Fit(factors_->Listed(), calendar_.dates);
  Reach(StepStage::kBehaviour);
  GoTo(page);
}

void StepWizard::BehaviourDone() {
  const bool isNew = weights_ == nullptr;
  FrmTS3& page = Open(weights_);
  if (isNew) page.Put(loaded_.factors.factors, loaded_.stepGraphs, calendar_.Steps());
  page.Fit(factors_->Listed(), calendar_.dates);
  Reach(StepStage::kWeights);
  GoTo(page);
}

void StepWizard::WeightsDone() {
  const bool isNew = output_ == nullptr;
  FrmTS4& page = Open(output_);
  if (isNew && loaded_.stage >= StepStage::kOutput) page.Put(loaded_.output);
  page.ShowFiles();
  Reach(StepStage::kOutput);
  GoTo(page);
}

void StepWizard::Back() {
  const std::vector<ui::Window*> pages = Pages();
  const auto here = std::find(pages.begin(), pages.end(), shown_);
  if (here != pages.begin() && here != pages.end()) GoTo(**std::prev(here));
}

std::vector<ui::Window*> StepWizard::Pages() const {
  std::vector<ui::Window*> pages;
  for (ui::Window* page : std::initializer_list<ui::Window*>{&first_, factors_, behaviour_,
                                                             weights_, output_, viewer_}) {
    if (page != nullptr) pages.push_back(page);
  }
  return pages;
}

// ---- The maps -----------------------------------------------------------------------------------

std::shared_ptr<const TimeStepModel> StepWizard::CurrentModel() const {
  auto model = std::make_shared<TimeStepModel>();
  model->kind = factors_->Steps(output_->palette.Path());
  const std::vector<FactorBehaviour> behaviours = behaviour_->Behaviours();
  std::vector<WeightGraph> graphs = weights_->Graphs();
  for (std::size_t i = 0; i < behaviours.size(); ++i) {
    std::vector<float> weights = StepWeights(graphs[i], calendar_.Steps());
    model->factors.push_back({behaviours[i], std::move(graphs[i]), std::move(weights)});
  }
  model->dates = calendar_.dates;
  model->output = output_->Output();
  return model;
}

bool StepWizard::Finish() {
  const std::shared_ptr<const TimeStepModel> model = CurrentModel();
  StepRunSettings settings;
  settings.decimalPlaces = app_.settings.decimalPlaces;
  settings.temporaryFolder = TemporaryFolder(app_.settings);
  const std::string& palette = model->Maps().palette;
  ui::Run run(*output_);
  if (!run.Report(ReadPalette(palette.empty() ? app_.settings.defaultPalette : palette,
                              settings.palette))) {
    return false;
  }
  Outcome<StepGenerator> generator = StepGenerator::Begin(*model, {settings.temporaryFolder});
  if (!run.Report(generator)) return false;
  if (!generator.Value().MaskFailure().empty()) app_.desktop.Message("Bad Constraint!");
  WrittenSteps files;
  const Outcome<> made = GenerateSteps(*model, generator.Value(), settings, files, run, {});
  if (made.Failed()) TellFailure(made.Why(), *model, files);
  if (!made.Ok() || !app_.desktop.IsOpen(*output_)) return false;
  StepSeries series{model, std::move(generator.Value()), std::move(settings)};
  ui::Window* const main = app_.desktop.FindWindow("frmMain");
  if (dynamic_cast<FrmTS2C*>(factors_) != nullptr) {
    viewer_ = &app_.desktop.Show(std::make_unique<FrmTSFC>(app_, *this, std::move(series)), main);
  } else {
    viewer_ = &app_.desktop.Show(std::make_unique<FrmTSF>(app_, *this, std::move(series)), main);
  }
  stage_ = StepStage::kGenerated;
  app_.desktop.Hide(*shown_);
  shown_ = viewer_;
  return true;
}

// A full disk has its own words, and what was written may go.
void StepWizard::TellFailure(const Failure& why, const TimeStepModel& model, WrittenSteps& files) {
  if (why.kind != FailureKind::kDiskFull) return app_.desktop.Message(why.text);
  if (!model.output.raster && !model.output.bitmap) {
    app_.desktop.Message("Out of Disk Space!", "Out of Space");
    files.Delete();
  } else if (app_.desktop.AskBeforeLoss("Out of Disk Space! Delete Created Files?",
                                        "Delete Created Files?",
                                        ui::Buttons::kYesNo) == ui::Answer::kYes) {
    files.Delete();
  }
}

void StepWizard::ReturnToPages() {
  StepViewerWindow* const viewer = std::exchange(viewer_, nullptr);
  stage_ = StepStage::kOutput;
  shown_ = output_;
  output_->ShowFiles();
  app_.desktop.ShowAgain(*output_);
  app_.desktop.Close(*viewer);
}

// ---- Files --------------------------------------------------------------------------------------

// The records of a file belong together: what was changed on the pages in front takes effect on
// those behind, as Next would have it.
void StepWizard::FitPages(const CalendarEntries& entries) const {
  if (behaviour_ == nullptr) return;
  const Outcome<StepCalendar> calendar = BuildCalendar(entries);
  const std::vector<std::string>& dates = calendar.Ok() ? calendar.Value().dates : calendar_.dates;
  std::vector<ListedFactor> listed = factors_->Listed();
  std::erase_if(listed, [](const ListedFactor& factor) { return factor.name.empty(); });
  behaviour_->Fit(listed, dates);
  if (weights_ != nullptr) weights_->Fit(listed, dates);
}

TimeStepText StepWizard::CurrentText() const {
  TimeStepText text;
  text.stage = stage_;
  text.calendar = first_.Entries();
  if (factors_ != nullptr) text.factors = factors_->Text();
  FitPages(text.calendar);
  if (behaviour_ != nullptr) text.behaviours = behaviour_->Text();
  if (weights_ != nullptr) text.stepGraphs = weights_->Text();
  if (output_ != nullptr) text.output = output_->Text();
  return text;
}

bool StepWizard::WriteTo(const std::string& path) {
  const Outcome<> written = WriteTimeStepText(path, CurrentText());
  if (!written.Ok()) {
    app_.desktop.Message(written.Text());
    return false;
  }
  app_.noteFile(path);
  return true;
}

void StepWizard::Save() { SaveRunningModel(app_); }

void StepWizard::cmdSave_Click() {
  saved_ = false;
  ModelSession& session = app_.session;
  if (session.saveInPlace) {
    saved_ = WriteTo(session.modelFile);
    return;
  }
  const auto choice =
      ui::AskSaveFile(app_.desktop,
                      {"Save Time Step Information", "Time-Step Information Files (.tsi)|*.tsi",
                       "tsi", app_.settings.workingDirectory, "*.tsi", ui::FileKind::kModels},
                      {.text = "Overwrite existing file?", .title = "Save Model Information"});
  if (!choice) return;
  session.modelFile = choice->Path();
  saved_ = WriteTo(session.modelFile);
}

void StepWizard::Load(const std::string& path) {
  Outcome<TimeStepText> text = ReadTimeStepText(path);
  if (!text.Ok()) return;
  loaded_ = std::move(text.Value());
  app_.noteFile(path);
  if (!loaded_.calendar.start.year.empty()) first_.Put(loaded_.calendar);
  if (loaded_.stage == StepStage::kCalendar) {
    (void)first_.Build();
    return;
  }
  bool on = first_.Next();
  if (on && loaded_.stage > StepStage::kFactors) on = factors_->Next();
  if (on && loaded_.stage > StepStage::kBehaviour) on = behaviour_->Next();
  if (on && loaded_.stage > StepStage::kWeights) on = weights_->Next();
  if (on && loaded_.stage > StepStage::kOutput) (void)output_->Finish();
}

// ---- The end ------------------------------------------------------------------------------------

bool StepWizard::Leave() {
  switch (app_.desktop.Ask("Save Time-Step Information?", "Exit Time-Step",
                           ui::Buttons::kYesNoCancel)) {
    case ui::Answer::kYes:
      Save();
      if (!saved_) return false;  // a save that was given up or failed loses nothing
      break;
    case ui::Answer::kNo:
      break;
    default:
      return false;
  }
  for (ui::Window* page : Pages()) app_.desktop.Close(*page);
  return true;
}

void StepWizard::End() { app_.session.End(*this); }

bool StepWizard::Unload() { return Leave(); }

void StepWizard::BringForward() { app_.desktop.ShowAgain(*shown_); }

}  // namespace ormel
