#include "ui/range_controls.h"

#include <algorithm>
#include <charconv>

namespace ormel::ui {

void RangeControl::SetRange(int minimum, int maximum) {
  minimum_ = std::min(minimum, maximum);
  maximum_ = std::max(minimum, maximum);
  value_ = std::clamp(value_, minimum_, maximum_);
  Changed();
}

void RangeControl::SetValue(int value) {
  value_ = std::clamp(value, minimum_, maximum_);
  Changed();
}

void RangeControl::SetSteps(int smallStep, int largeStep) {
  smallStep_ = smallStep;
  largeStep_ = largeStep;
  Changed();
}

Outcome<> RangeControl::MoveTo(long long value) {
  Outcome<> can = CanAct();
  if (!can.Ok()) return can;
  const int before = value_;
  SetValue(static_cast<int>(std::clamp<long long>(value, minimum_, maximum_)));
  if (value_ != before) Fire(onChange);
  return Done{};
}

Outcome<> RangeControl::Set(const std::string& value) {
  long long number = 0;
  const char* end = value.data() + value.size();
  const auto [stop, error] = std::from_chars(value.data(), end, number);
  if (error != std::errc() || stop != end) return Refusal("takes a whole number, not " + value);
  return MoveTo(number);
}

Outcome<> RangeControl::Key(const std::string& key) {
  long long next = value_;
  const long long up = RaisesUpwards() ? 1 : -1;
  if (key == "Left") next -= smallStep_;
  if (key == "Right") next += smallStep_;
  if (key == "Down") next -= up * smallStep_;
  if (key == "Up") next += up * smallStep_;
  if (key == "PageDown") next -= up * largeStep_;
  if (key == "PageUp") next += up * largeStep_;
  if (key == "Home") next = minimum_;
  if (key == "End") next = maximum_;
  Outcome<> moved = MoveTo(next);
  return moved.Ok() ? Control::Key(key) : moved;
}

void ProgressBar::SetPercent(double percent) {
  percent_ = std::clamp(percent, 0.0, 100.0);
  Changed();
}

}  // namespace ormel::ui
