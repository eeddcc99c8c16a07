#include "ui/buttons.h"

#include <algorithm>

#include "ui/window.h"

namespace ormel::ui {
namespace {

// "on" and "off" speak of the state, everything else of the caption.
bool ShowsState(const CaptionedControl& control, bool on, const std::string& value) {
  if (value == "on" || value == "off") return (value == "on") == on;
  return control.CaptionedControl::Shows(value);
}

}  // namespace

void Button::SetDefault() {
  isDefault_ = true;
  Changed();
}

void Button::SetCancel() {
  isCancel_ = true;
  Changed();
}

void CheckBox::SetChecked(bool checked) {
  if (checked_ == checked) return;
  checked_ = checked;
  Changed();
}

Outcome<> CheckBox::Click() {
  Outcome<> can = CanAct();
  if (!can.Ok()) return can;
  SetChecked(!checked_);
  Fire(onChange);
  Fire(onClick);
  return Done{};
}

Outcome<> CheckBox::Set(const std::string& value) {
  if (value != "on" && value != "off") return Refusal("takes on or off");
  return (value == "on") == checked_ ? CanAct() : Click();
}

bool CheckBox::Shows(const std::string& value) const { return ShowsState(*this, checked_, value); }

OptionButton::~OptionButton() {
  if (set_ != nullptr) set_->Remove(*this);
}

void OptionButton::Choose() {
  if (set_ != nullptr) set_->Choose(*this);
  SetChosen(true);
}

void OptionButton::SetChosen(bool chosen) {
  if (chosen_ == chosen) return;
  chosen_ = chosen;
  Changed();
}

Outcome<> OptionButton::Click() {
  Outcome<> can = CanAct();
  if (!can.Ok()) return can;
  const bool wasChosen = chosen_;
  Choose();
  if (!wasChosen) Fire(onChange);
  Fire(onClick);
  return Done{};
}

Outcome<> OptionButton::Set(const std::string& value) {
  if (value != "on" && value != "off") return Refusal("takes on or off");
  if (value == "off" && chosen_) return Refusal("is switched off by choosing another option");
  return (value == "on") == chosen_ ? CanAct() : Click();
}

bool OptionButton::Shows(const std::string& value) const {
  return ShowsState(*this, chosen_, value);
}

OptionSet::OptionSet(std::initializer_list<OptionButton*> options) {
  for (OptionButton* option : options) Add(*option);
}

OptionSet::~OptionSet() {
  for (OptionButton* option : options_) option->set_ = nullptr;
}

void OptionSet::Add(OptionButton& option) {
  options_.push_back(&option);
  option.set_ = this;
}

void OptionSet::Remove(OptionButton& option) { std::erase(options_, &option); }

void OptionSet::Choose(OptionButton& option) {
  for (OptionButton* other : options_) other->SetChosen(other == &option);
}

void OptionGroup::SetCaptions(const std::vector<std::string>& captions) {
  const int before = Count();
  Resize(static_cast<int>(captions.size()));
  for (int i = 0; i < Count(); ++i) {
    OptionButton& option = (*this)(First() + i);
    if (i >= before) set_.Add(option);
    option.SetCaption(captions[static_cast<std::size_t>(i)]);
  }
  if (Chosen() < First() && Count() > 0) Choose(First());
}

int OptionGroup::Chosen() const {
  for (int i = First(); i <= Last(); ++i) {
    if ((*this)(i).Chosen()) return i;
  }
  return First() - 1;
}

void OptionGroup::Choose(int index) { (*this)(index).Choose(); }

void OptionGroup::OnChange(const Handler& handler) {
  for (const auto& option : *this) option->onChange = handler;
}

}  // namespace ormel::ui
