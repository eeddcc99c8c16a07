#include "app/script_run.h"

#include <fstream>
#include <iostream>

#include "mce/model_session.h"
#include "shell/model_opener_window.h"
#include "shell/program_folder.h"
#include "ui/headless/headless_desktop.h"
#include "ui/headless/script.h"

namespace ormel {
namespace {

constexpr int kWrongUse = 2;

}  // namespace

int RunScript(const std::string& file, const std::string& model, ui::Screen* screen) {
  std::ifstream opened;
  if (file != "-") {
    opened.open(file, std::ios::binary);
    if (!opened) {
      std::cerr << file << ": cannot be read\n";
      return kWrongUse;
    }
  }
  const Outcome<> filled = FillProgramFolder(ProgramFolder());
  if (filled.Failed()) std::cerr << filled.Text() << '\n';
  Settings settings = DefaultSettings(ProgramFolder());
  ModelSession session;
  ui::HeadlessDesktop desktop(std::cout, screen);
  AppContext app{desktop, settings, session};
  ui::ScriptRunner script(desktop, file == "-" ? std::cin : opened, file, std::cout, std::cerr);
  const int status = script.Run([&] {
    if (!model.empty()) OpenModel(app, model);
  });
  desktop.DestroyWindows();  // they refer to the context
  return status;
}

}  // namespace ormel
