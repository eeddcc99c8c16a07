#include "app/program.h"

#include <memory>

#include "movies/picture_file.h"
#include "shell/main_window.h"
#include "shell/program_folder.h"
#include "ui/desktop.h"

namespace ormel {
namespace {

Settings FirstSettings(ui::Desktop& desktop) {
  const std::string folder = ProgramFolder();
  const Outcome<> filled = FillProgramFolder(folder);
  if (filled.Failed()) desktop.Message(filled.Text());
  return DefaultSettings(folder);
}

}  // namespace

Program::Program(ui::Desktop& desktop)
    : settings_(FirstSettings(desktop)),
      saved_(settings_),
      app_{desktop,
           settings_,
           session_,
           {kPictureFilter, WritePicture},
           [this](const std::string& path) { saved_.NoteFile(path); }},
      main_(ShowMain()) {}

Program::~Program() {
  app_.desktop.DestroyWindows();
  app_.desktop.SetMemory(nullptr);
}

FrmMain& Program::ShowMain() {
  app_.desktop.SetMemory(&saved_);
  return app_.desktop.Show(std::make_unique<FrmMain>(app_, saved_));
}

}  // namespace ormel
