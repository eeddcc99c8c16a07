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
      app_{desktop, settings_, session_, {kPictureFilter, WritePicture}},
      main_(desktop.Show(std::make_unique<FrmMain>(app_))) {}

Program::~Program() { app_.desktop.DestroyWindows(); }

}  // namespace ormel
