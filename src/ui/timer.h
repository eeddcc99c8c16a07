// A timer that stops when it goes out of life.
#pragma once

#include <chrono>
#include <utility>

#include "ui/desktop.h"

namespace ormel::ui {

class Timer {
 public:
  Timer(Desktop& desktop, std::chrono::milliseconds interval, Handler tick)
      : desktop_(desktop), id_(desktop.StartTimer(interval, std::move(tick))) {}
  ~Timer() { desktop_.StopTimer(id_); }
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

 private:
  Desktop& desktop_;
  const TimerId id_;
};

}  // namespace ormel::ui
