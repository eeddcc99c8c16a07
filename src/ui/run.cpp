#include "ui/run.h"

#include "ui/desktop.h"
#include "ui/window.h"

namespace ormel::ui {
namespace {

constexpr std::chrono::milliseconds kBetweenPumps{33};
constexpr std::chrono::milliseconds kUntilStrip{500};

}  // namespace

Run::Run(Window& window) : window_(window), wasEnabled_(window.Enabled()) {
  // A window that was closed during one run of a handler stops the next one as well.
  const bool closed = window_.desktop_ != nullptr && !window_.desktop_->IsOpen(window_);
  if (window_.runs_++ == 0) window_.stopWanted_ = closed || window_.closeWhenIdle_;
  window_.SetEnabled(false);
}

Run::~Run() {
  if (--window_.runs_ == 0) window_.stripShown_ = false;
  window_.SetEnabled(wasEnabled_);
}

bool Run::Report(double percent) {
  const Clock::time_point now = Clock::now();
  if (now - lastPump_ < kBetweenPumps) return !window_.stopWanted_;
  lastPump_ = now;
  window_.stripPercent_ = percent;
  window_.stripShown_ = now - start_ >= kUntilStrip;
  window_.Refresh();
  if (window_.desktop_ != nullptr) window_.desktop_->Pump();
  return !window_.stopWanted_;
}

void Run::Tell(const std::string& text) {
  if (window_.desktop_ != nullptr) window_.desktop_->Message(text);
}

}  // namespace ormel::ui
