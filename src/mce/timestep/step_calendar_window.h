// The first page of a time-step model: from when to when its steps run, and how far apart they are.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "mce/timestep/step_calendar.h"
#include "mce/timestep/step_wizard_window.h"
#include "parts/app_context.h"
#include "ui/window.h"

namespace ormel {

class FrmTS1 final : public ui::Window {
 public:
  // Shown by its owner; the model runs from now on until the window closes.
  explicit FrmTS1(AppContext& app);

  StepWizard& Wizard() { return wizard_; }

  CalendarEntries Entries() const;
  void Put(const CalendarEntries& entries);
  // Builds the dates; a message tells why they cannot be. None in that case.
  std::optional<StepCalendar> Build();
  // Goes on to the factors. False: the dates cannot be built.
  bool Next();

  bool QueryClose() override;
  void OnClosed() override;

 private:
  // A day and a time. Scripts know the fields by the first letters of their units and an ending.
  struct Moment {
    Moment(ui::Window& window, const std::string& days, const std::string& month,
           const std::string& times)
        : year(window, "Y" + days),
          month(window, month),
          day(window, "D" + days),
          hour(window, "h" + times),
          minute(window, "n" + times),
          second(window, "s" + times) {}

    ui::TextBox year;
    ui::ComboBox month;
    ui::ComboBox day;
    ui::TextBox hour;
    ui::TextBox minute;
    ui::TextBox second;
  };

  void Connect(Moment& moment, const char* badYear);
  static CalendarMoment EntriesOf(const Moment& moment);
  static void PutMoment(Moment& moment, const CalendarMoment& entries);
  ui::LayoutItem Line(Moment& moment);
  void FillDays(Moment& moment, const char* badYear);
  void ShowExtended();
  void NormaliseIncrement();
  void ShowSteps();

  AppContext& app_;
  StepWizard wizard_;

 public:
  Moment start{*this, "S", "MS", "s"};
  Moment end{*this, "E", "MEe", "e"};
  ui::TextBox txtTSI{*this, "txtTSI", "1"};
  ui::ComboBox UnitTSI{*this, "UnitTSI"};
  ui::CheckBox Check1{*this, "Check1", "E&xtended"};
  ui::Label lblSteps{*this, "lblSteps"};  // how many there will be
  ui::Label lblFirst{*this, "lblFirst"};  // and their first and last dates
  ui::Label lblLast{*this, "lblLast"};

 private:
  StepPageParts parts_{*this, wizard_, "cmdOK", "&Next >", true};
  ui::MenuBar menu_{*this, {{"mFile", "&File", "", {}, StepPageParts::SaveMenu(wizard_)}}};
};

}  // namespace ormel
