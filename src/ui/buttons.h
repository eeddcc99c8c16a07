// Buttons, options and check boxes.
#pragma once

#include <initializer_list>
#include <vector>

#include "ui/control.h"
#include "ui/control_array.h"

namespace ormel::ui {

class Button final : public CaptionedControl {
 public:
  using CaptionedControl::CaptionedControl;

  // Return presses the default button of a window, Escape its cancel button.
  bool IsDefault() const { return isDefault_; }
  void SetDefault();
  bool IsCancel() const { return isCancel_; }
  void SetCancel();

 private:
  bool isDefault_ = false;
  bool isCancel_ = false;
};

class CheckBox final : public CaptionedControl {
 public:
  using CaptionedControl::CaptionedControl;

  bool Checked() const { return checked_; }
  void SetChecked(bool checked);

  Outcome<> Click() override;  // toggles; onChange, then onClick
  Outcome<> Set(const std::string& value) override;
  std::string Printed() const override { return checked_ ? "on" : "off"; }
  bool Shows(const std::string& value) const override;

 private:
  bool checked_ = false;
};

// One of several choices. Exactly the options of one OptionSet exclude each other.
class OptionButton final : public CaptionedControl {
 public:
  using CaptionedControl::CaptionedControl;
  ~OptionButton() override;

  bool Chosen() const { return chosen_; }
  void Choose();  // and no other of its set
  // Whether both stand in one set.
  bool Excludes(const OptionButton& other) const { return set_ != nullptr && set_ == other.set_; }

  Outcome<> Click() override;  // onChange when it was not chosen, then onClick
  Outcome<> Set(const std::string& value) override;
  std::string Printed() const override { return chosen_ ? "on" : "off"; }
  bool Shows(const std::string& value) const override;

 private:
  friend class OptionSet;
  void SetChosen(bool chosen);

  bool chosen_ = false;
  class OptionSet* set_ = nullptr;
};

// Options that exclude each other, whatever their names: OptionSet direction{OptValHigh,
// OptValLow}.
class OptionSet {
 public:
  OptionSet() = default;
  OptionSet(std::initializer_list<OptionButton*> options);
  ~OptionSet();
  OptionSet(const OptionSet&) = delete;
  OptionSet& operator=(const OptionSet&) = delete;

  void Add(OptionButton& option);
  void Remove(OptionButton& option);
  void Choose(OptionButton& option);

 private:
  std::vector<OptionButton*> options_;
};

// A control array of options that exclude each other: optSlope(0), optSlope(1), ...
class OptionGroup final : public ControlArray<OptionButton> {
 public:
  OptionGroup(Window& window, std::string name, int first = 1)
      : ControlArray(window, std::move(name), 0, first) {}

  // As many options as captions; the first is chosen, when none was.
  void SetCaptions(const std::vector<std::string>& captions);
  int Chosen() const;  // the index of the chosen option; First() - 1 when none is
  void Choose(int index);
  // A person chose another option of the group.
  void OnChange(const Handler& handler);

 private:
  OptionSet set_;
};

}  // namespace ormel::ui
