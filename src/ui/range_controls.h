// Controls that hold a whole number between two ends, and the progress bar.
#pragma once

#include "ui/control.h"

namespace ormel::ui {

class RangeControl : public Control {
 public:
  explicit RangeControl(Window& window, std::string name, int minimum = 0, int maximum = 100)
      : Control(window, std::move(name)), minimum_(minimum), maximum_(maximum), value_(minimum) {}

  int Minimum() const { return minimum_; }
  int Maximum() const { return maximum_; }
  void SetRange(int minimum, int maximum);  // the value stops at the nearer end
  int Value() const { return value_; }
  void SetValue(int value);  // stops at the nearer end
  int SmallStep() const { return smallStep_; }
  int LargeStep() const { return largeStep_; }
  void SetSteps(int smallStep, int largeStep);

  // A person moves it; it stops at the ends. onChange when the value differs.
  [[nodiscard]] Outcome<> MoveTo(long long value);

  Outcome<> Set(const std::string& value) override;
  // Left, Right, Up, Down, PageUp, PageDown, Home and End move it; then onKey.
  Outcome<> Key(const std::string& key) override;
  std::string Printed() const override { return std::to_string(value_); }

 protected:
  // Whether Up and PageUp lead to larger values.
  virtual bool RaisesUpwards() const { return true; }

 private:
  int minimum_;
  int maximum_;
  int value_;
  int smallStep_ = 1;
  int largeStep_ = 10;
};

class Slider final : public RangeControl {
 public:
  using RangeControl::RangeControl;
};

class ScrollBar final : public RangeControl {
 public:
  explicit ScrollBar(Window& window, std::string name, bool vertical = true)
      : RangeControl(window, std::move(name)), vertical_(vertical) {}
  bool Vertical() const { return vertical_; }

 protected:
  bool RaisesUpwards() const override { return false; }  // its first value is at the top

 private:
  const bool vertical_;
};

// Two arrows that count up and down.
class SpinButton final : public RangeControl {
 public:
  using RangeControl::RangeControl;
  [[nodiscard]] Outcome<> Up() { return MoveTo(0LL + Value() + SmallStep()); }
  [[nodiscard]] Outcome<> Down() { return MoveTo(0LL + Value() - SmallStep()); }
};

class ProgressBar final : public Control {
 public:
  using Control::Control;

  double Percent() const { return percent_; }  // 0 to 100
  void SetPercent(double percent);
  std::string Printed() const override { return std::to_string(static_cast<int>(percent_)); }

 private:
  double percent_ = 0;
};

}  // namespace ormel::ui
