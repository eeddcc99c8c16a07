#include "mce/timestep/step_calendar_window.h"

#include <algorithm>
#include <ctime>

#include "mce/composite_output.h"
#include "text/numbers.h"
#include "ui/desktop.h"

namespace ormel {
namespace {

constexpr char kBadStart[] = "Bad Starting Year!";
constexpr char kBadEnd[] = "Bad Ending Year!";

std::vector<std::string> Units(std::size_t count) {
  return {kStepUnits.begin(), kStepUnits.begin() + static_cast<std::ptrdiff_t>(count)};
}

// The whole of this year, month by month.
CalendarEntries FirstEntries() {
  CalendarEntries entries;
  entries.start.year = entries.end.year = std::to_string(Now().tm_year + 1900);
  entries.end.month = kMonthNames.back();
  entries.end.day = "31";
  return entries;
}

}  // namespace

FrmTS1::FrmTS1(AppContext& app)
    : Window("frmTS1", "Time Step Information - Step 1/5"), app_(app), wizard_(app, *this) {
  Connect(start, kBadStart);
  Connect(end, kBadEnd);
  txtTSI.SetToolTip("How many units lie between two steps");
  txtTSI.onChange = [this] { ShowSteps(); };
  txtTSI.onLeave = [this] { NormaliseIncrement(); };
  UnitTSI.onChange = [this] { ShowSteps(); };
  Check1.SetToolTip("The times of day count; steps can be hours, minutes and seconds");
  Check1.onChange = [this] {
    ShowExtended();
    ShowSteps();
  };
  parts_.cmdNext.onClick = [this] { Next(); };
  SetLayout(ui::Column{
      ui::Frame{"First Step", Line(start)}, ui::Frame{"Last Step", Line(end)},
      ui::Frame{"Increment", ui::Row{"&Every:", txtTSI, UnitTSI, Check1, ui::Stretch{}}},
      ui::Frame{"Steps", ui::Table{{"Steps:", lblSteps}, {"First:", lblFirst}, {"Last:", lblLast}}},
      ui::Stretch{}, parts_.Buttons()});
  Put(FirstEntries());
}

void FrmTS1::Connect(Moment& moment, const char* badYear) {
  moment.month.SetItems({kMonthNames.begin(), kMonthNames.end()});
  for (ui::TextBox* box : {&moment.hour, &moment.minute, &moment.second}) {
    box->SetToolTip("Used when \"Extended\" is checked");
  }
  for (ui::TextBox* box : {&moment.year, &moment.hour, &moment.minute, &moment.second}) {
    box->onChange = [this] { ShowSteps(); };
  }
  moment.year.onLeave = [this, &moment, badYear] { FillDays(moment, badYear); };
  moment.month.onSelect = [this, &moment, badYear] { FillDays(moment, badYear); };
  moment.day.onChange = [this] { ShowSteps(); };
}

ui::LayoutItem FrmTS1::Line(Moment& moment) {
  return ui::Row{"Year:", moment.year,   "Month:", ui::Share(2, moment.month),
                 "Day:",  moment.day,    "Time:",  moment.hour,
                 ":",     moment.minute, ":",      moment.second};
}

CalendarMoment FrmTS1::EntriesOf(const Moment& moment) {
  return {moment.year.Text(), moment.month.Text(),  moment.day.Text(),
          moment.hour.Text(), moment.minute.Text(), moment.second.Text()};
}

void FrmTS1::PutMoment(Moment& moment, const CalendarMoment& entries) {
  moment.year.SetText(entries.year);
  moment.month.SetText(entries.month);
  moment.day.SetText(entries.day);
  moment.hour.SetText(entries.hour);
  moment.minute.SetText(entries.minute);
  moment.second.SetText(entries.second);
}

CalendarEntries FrmTS1::Entries() const {
  return {EntriesOf(start), EntriesOf(end), txtTSI.Text(), UnitTSI.Text(), Check1.Checked()};
}

// The units that there are depend on the box.
void FrmTS1::Put(const CalendarEntries& entries) {
  Check1.SetChecked(entries.extended);
  ShowExtended();
  PutMoment(start, entries.start);
  PutMoment(end, entries.end);
  txtTSI.SetText(entries.increment);
  UnitTSI.SetText(entries.unit);
  FillDays(start, kBadStart);
  FillDays(end, kBadEnd);
}

// The day stays when the month has it.
void FrmTS1::FillDays(Moment& moment, const char* badYear) {
  const auto count = DaysOfMonth(moment.month.Text(), moment.year.Text());
  if (!count) return app_.desktop.Message(badYear);
  std::vector<std::string> days;
  for (int day = 1; day <= *count; ++day) days.push_back(std::to_string(day));
  const bool kept = std::find(days.begin(), days.end(), moment.day.Text()) != days.end();
  if (!kept) moment.day.SetText(days.back());
  moment.day.SetItems(std::move(days));
  ShowSteps();
}

void FrmTS1::ShowExtended() {
  const bool extended = Check1.Checked();
  for (Moment* moment : {&start, &end}) {
    for (ui::TextBox* box : {&moment->hour, &moment->minute, &moment->second}) {
      box->SetEnabled(extended);
    }
  }
  const std::vector<std::string> units = Units(extended ? kStepUnits.size() : kUnitsOfDays);
  UnitTSI.SetItems(units);
  if (std::find(units.begin(), units.end(), UnitTSI.Text()) == units.end()) {
    UnitTSI.SetText(units.back());
  }
}

void FrmTS1::NormaliseIncrement() {
  const auto whole = WholeIncrement(txtTSI.Text());
  if (!whole) app_.desktop.Message("The increment must be an number!");
  txtTSI.SetText(whole.value_or("1"));
  ShowSteps();
}

void FrmTS1::ShowSteps() {
  const Outcome<StepCalendar> calendar = BuildCalendar(Entries());
  lblSteps.SetCaption(calendar.Ok() ? std::to_string(calendar.Value().Steps()) : calendar.Text());
  lblFirst.SetCaption(calendar.Ok() ? calendar.Value().dates.front() : "");
  lblLast.SetCaption(calendar.Ok() ? calendar.Value().dates.back() : "");
}

std::optional<StepCalendar> FrmTS1::Build() {
  Outcome<StepCalendar> calendar = BuildCalendar(Entries());
  if (calendar.Ok()) return std::move(calendar.Value());
  app_.desktop.Message(calendar.Text());
  return std::nullopt;
}

bool FrmTS1::Next() {
  std::optional<StepCalendar> calendar = Build();
  if (!calendar) return false;
  wizard_.TakeCalendar(std::move(*calendar));
  return true;
}

bool FrmTS1::QueryClose() { return wizard_.Leave(); }

void FrmTS1::OnClosed() { wizard_.End(); }

}  // namespace ormel
