// Controls of one kind under one name, addressed by number: FList(2), optSlope(0).
#pragma once

#include <algorithm>
#include <cassert>
#include <memory>
#include <string>
#include <vector>

#include "ui/control.h"

namespace ormel::ui {

template <class T>
class ControlArray {
 public:
  // `count` controls with the numbers `first`, `first` + 1, ... Each is known to scripts as
  // NAME(NUMBER).
  ControlArray(Window& window, std::string name, int count = 0, int first = 1)
      : window_(window), name_(std::move(name)), first_(first) {
    Resize(count);
  }

  ControlArray(const ControlArray&) = delete;
  ControlArray& operator=(const ControlArray&) = delete;
  // From the back, where a window finds them at once.
  ~ControlArray() {
    while (!controls_.empty()) controls_.pop_back();
  }

  int First() const { return first_; }
  int Count() const { return static_cast<int>(controls_.size()); }
  int Last() const { return first_ + Count() - 1; }

  T& operator()(int index) const {
    assert(index >= first_ && index <= Last());
    return *controls_[static_cast<std::size_t>(index - first_)];
  }

  // Adds or removes controls at the end; a control may remove itself in its own handler. The
  // window's layout must be set anew afterwards.
  void Resize(int count) {
    while (Count() > std::max(count, 0)) {
      Control::Retire(std::move(controls_.back()));
      controls_.pop_back();
    }
    while (Count() < count) {
      controls_.push_back(
          std::make_unique<T>(window_, name_ + "(" + std::to_string(first_ + Count()) + ")"));
    }
  }

  auto begin() const { return controls_.begin(); }
  auto end() const { return controls_.end(); }

 private:
  Window& window_;
  const std::string name_;
  const int first_;
  std::vector<std::unique_ptr<T>> controls_;
};

}  // namespace ormel::ui
