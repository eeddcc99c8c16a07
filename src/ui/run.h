// The length of a command that may take long. It disables the window, shows progress and Stop in
// the window's strip once half a second has gone, and enables the window again on every way out:
//
//   Run run(*this);
//   if (run.Report(GenerateSlopeAspect(job, run))) app_.desktop.Message("Done");
#pragma once

#include <chrono>

#include "base/outcome.h"
#include "base/progress_sink.h"

namespace ormel::ui {

class Window;

class Run final : public ProgressSink {
 public:
  explicit Run(Window& window);
  ~Run() override;  // the window closes behind the handler, when a person asked for that meanwhile
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;

  // Shows the figure and lets a person act, about 30 times a second however often it is called.
  [[nodiscard]] bool Report(double percent) override;

  // True when the work is done. A failure is told in a message; a cancelled one needs none.
  template <class T>
  bool Report(const Outcome<T>& outcome) {
    if (outcome.Failed()) Tell(outcome.Why().text);
    return outcome.Ok();
  }

 private:
  using Clock = std::chrono::steady_clock;
  void Tell(const std::string& text);

  Window& window_;
  const bool wasEnabled_;
  const Clock::time_point start_ = Clock::now();
  Clock::time_point lastPump_ = start_;
};

}  // namespace ormel::ui
