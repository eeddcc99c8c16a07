// The program as it stands before its first command: settings, model session, main window.
#pragma once

#include "mce/model_session.h"
#include "parts/app_context.h"
#include "shell/saved_desktop.h"

namespace ormel {

class FrmMain;

class Program {
 public:
  // Fills the program's folder and shows the main window on `desktop`, which outlives the program.
  explicit Program(ui::Desktop& desktop);
  ~Program();  // closes all windows, asking nothing: they refer to what goes here
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  AppContext& Context() { return app_; }
  FrmMain& Main() { return main_; }

 private:
  FrmMain& ShowMain();

  Settings settings_;
  SavedDesktop saved_;
  ModelSession session_;
  AppContext app_;
  FrmMain& main_;
};

}  // namespace ormel
