// The picture that greets at the start of the program.
#pragma once

#include <optional>

#include "ui/timer.h"
#include "ui/window.h"

namespace ormel {

// Shows one picture, then the other, and goes by itself after two and a half seconds; at once when
// a person clicks it, presses a key or turns to another window.
class FrmStartUp final : public ui::Window {
 public:
  // `whenGone` runs once, behind the closing.
  FrmStartUp(ui::Desktop& desktop, Canvas first, Canvas second, ui::Handler whenGone);

  void OnDeactivated() override;
  void OnClosed() override;

  ui::Picture picSS1{*this, "picSS1"};
  ui::Picture picSS2{*this, "picSS2"};
  ui::Label lblProgram{*this, "lblProgram", "ORMEL " ORMEL_VERSION};

 private:
  void Tick();
  void Leave();

  ui::Desktop& desktop_;
  ui::Handler whenGone_;
  int ticks_ = 0;
  std::optional<ui::Timer> timer_;
};

}  // namespace ormel
