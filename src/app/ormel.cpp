// `ormel`: the desktop program.

#include <cstdio>
#include <exception>
#include <iostream>

#include "app/command_line.h"
#include "app/script_run.h"
#include "mce/model_session.h"
#include "shell/model_opener_window.h"
#include "shell/program_folder.h"
#include "ui/qt/qt_desktop.h"
#include "ui/qt/qt_screen.h"

namespace ormel {
namespace {

constexpr char kHelp[] =
    "ormel: suitability maps and habitat studies\n"
    "\n"
    "  ormel [MODEL.mif]                 opens a saved model\n"
    "  ormel --script FILE [MODEL.mif]   runs a script of window commands before your eyes\n"
    "  ormel --version | --help\n";

constexpr int kFailed = 1;
constexpr int kWrongUse = 2;

int Complain(const std::string& text, int status) {
  std::cerr << "ormel: " << text << '\n';
  return status;
}

int RunDesktop(ui::QtProgram& program, ui::Screen& screen, const std::string& model) {
  ui::QtDesktop desktop(&screen);
  const Outcome<> filled = FillProgramFolder(ProgramFolder());
  if (filled.Failed()) desktop.Message(filled.Text());
  Settings settings = DefaultSettings(ProgramFolder());
  ModelSession session;
  AppContext app{desktop, settings, session};
  const bool opened = model.empty() ? AskAndOpenModel(app) : OpenModel(app, model);
  if (!opened) return kFailed;
  program.Run(desktop);
  desktop.DestroyWindows();  // they refer to the context
  return 0;
}

int Main(int argc, char** argv) {
  const Outcome<CommandLine> read =
      ReadCommandLine({argv + 1, static_cast<std::size_t>(argc > 0 ? argc - 1 : 0)});
  if (!read.Ok()) return Complain(read.Text() + " (--help tells more)", kWrongUse);
  const CommandLine& line = read.Value();
  if (line.help) return std::fputs(kHelp, stdout) < 0 ? kFailed : 0;
  if (line.version) return std::puts("ormel " ORMEL_VERSION) < 0 ? kFailed : 0;
  if (!line.output.empty() || !line.picture.empty()) {
    return Complain("-o and --picture are options of ormel-batch", kWrongUse);
  }
  ui::QtProgram program(argc, argv);
  ui::QtScreen screen(AssetsFolder() + "icons");
  if (!line.script.empty()) return RunScript(line.script, line.model, &screen);
  return RunDesktop(program, screen, line.model);
}

}  // namespace
}  // namespace ormel

int main(int argc, char** argv) {
  try {
    return ormel::Main(argc, argv);
  } catch (const std::exception& error) {
    return ormel::Complain(error.what(), ormel::kFailed);
  }
}
