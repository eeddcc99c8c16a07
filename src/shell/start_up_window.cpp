#include "shell/start_up_window.h"

#include <chrono>
#include <utility>

#include "ui/desktop.h"

namespace ormel {
namespace {

constexpr std::chrono::milliseconds kTick{500};
constexpr int kSecondPicture = 2;  // the tick at which it comes
constexpr int kLastTick = 5;

}  // namespace

FrmStartUp::FrmStartUp(ui::Desktop& desktop, Canvas first, Canvas second, ui::Handler whenGone)
    : Window("frmStartUp", "ORMEL"), desktop_(desktop), whenGone_(std::move(whenGone)) {
  SetBare();
  picSS1.SetImage(std::move(first));
  picSS2.SetImage(std::move(second));
  picSS2.SetVisible(false);
  for (ui::Picture* picture : {&picSS1, &picSS2}) {
    picture->onClick = [this] { Leave(); };
    picture->onKey = [this](const std::string&) { Leave(); };
  }
  SetLayout(ui::Column{picSS1, picSS2, lblProgram});
  timer_.emplace(desktop_, kTick, [this] { Tick(); });
}

void FrmStartUp::Tick() {
  ++ticks_;
  if (ticks_ == kSecondPicture) {
    picSS1.SetVisible(false);
    picSS2.SetVisible(true);
    FocusOn(picSS2);
  }
  if (ticks_ == kLastTick) Leave();
}

void FrmStartUp::Leave() { desktop_.Close(*this); }

void FrmStartUp::OnDeactivated() { Leave(); }

void FrmStartUp::OnClosed() {
  timer_.reset();
  if (const ui::Handler run = std::exchange(whenGone_, {})) run();
}

}  // namespace ormel
