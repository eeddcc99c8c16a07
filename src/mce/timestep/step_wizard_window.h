// The five pages of a time-step model and its viewer: which of them is on show, what has been
// reached, and how the model is saved, loaded and left. Pages are made when they are first reached
// and keep what was entered, whichever way a person goes.
#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "mce/model_session.h"
#include "mce/timestep/time_step_model.h"
#include "mce/timestep/time_step_text.h"
#include "parts/app_context.h"
#include "ui/window.h"

namespace ormel {

class FrmTS1;
class FrmTS3;
class FrmTS4;
class FrmTSClass;
class StepFactorsWindow;
class StepViewerWindow;
struct WrittenSteps;

class StepWizard final : public RunningModel {
 public:
  // `first` owns the wizard; the model runs until it is closed.
  StepWizard(AppContext& app, FrmTS1& first);
  ~StepWizard() override;

  // Fills the pages from a file and goes on to the one it had reached, as far as the pages let it.
  void Load(const std::string& path);

  // The pages, when a person leaves them forwards. What they hold has been checked.
  void TakeCalendar(StepCalendar calendar);
  void FactorsDone();
  void BehaviourDone();
  void WeightsDone();
  // False: the maps were not made.
  bool Finish();

  void Back();
  // Back from the viewer; its maps are discarded.
  void ReturnToPages();
  // A person leaves the model. False: it stays.
  bool Leave();
  // The first page has been closed.
  void End();

  const StepCalendar& Calendar() const { return calendar_; }

  // Saves the model in its file, or in one that is asked for when it has none.
  void Save();
  void cmdSave_Click() override;
  bool Unload() override;
  void BringForward() override;

 private:
  void GoTo(ui::Window& page);
  template <class Page, class... Arguments>
  Page& Open(Page*& page, Arguments&... arguments);
  void OpenBehaviour();
  void OpenWeights();
  void OpenOutput();
  void Reach(StepStage stage) { stage_ = std::max(stage_, stage); }
  std::vector<ui::Window*> Pages() const;

  void FitPages(const CalendarEntries& entries) const;
  TimeStepText CurrentText() const;
  std::shared_ptr<const TimeStepModel> CurrentModel() const;
  bool WriteTo(const std::string& path);
  void TellFailure(const Failure& why, const TimeStepModel& model, WrittenSteps& files);

  AppContext& app_;
  FrmTS1& first_;
  StepFactorsWindow* factors_ = nullptr;
  FrmTSClass* behaviour_ = nullptr;
  FrmTS3* weights_ = nullptr;
  FrmTS4* output_ = nullptr;
  StepViewerWindow* viewer_ = nullptr;
  ui::Window* shown_;

  StepStage stage_ = StepStage::kCalendar;  // the furthest that was reached
  StepCalendar calendar_;
  TimeStepText loaded_;  // what the pages that are made later begin with
  bool saved_ = true;    // the last save was not given up
};

// The buttons that every page has at its foot, and its menu.
class StepPageParts {
 public:
  // `next` is the name of the button that leads on. The first page has no way back.
  StepPageParts(ui::Window& window, StepWizard& wizard, const std::string& next,
                const std::string& nextCaption, bool first = false);

  ui::LayoutItem Buttons();
  static std::vector<ui::MenuSpec> SaveMenu(StepWizard& wizard);

  ui::Button cmdBack;
  ui::Button cmdNext;
  ui::Button cmdExit;
};

}  // namespace ormel
