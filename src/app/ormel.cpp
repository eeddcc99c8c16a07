// `ormel`: the desktop program.

#include <cstdio>
#include <deque>
#include <exception>
#include <iostream>
#include <optional>

#include "app/command_line.h"
#include "app/program.h"
#include "app/script_run.h"
#include "base/file_writer.h"
#include "shell/main_window.h"
#include "shell/program_folder.h"
#include "shell/single_instance.h"
#include "shell/start_up_picture.h"
#include "shell/start_up_window.h"
#include "text/paths.h"
#include "ui/qt/qt_desktop.h"
#include "ui/qt/qt_screen.h"

namespace ormel {
namespace {

constexpr char kHelp[] =
    "ormel: suitability maps and habitat studies\n"
    "\n"
    "  ormel [FILE]                 opens a saved model or a map\n"
    "  ormel --script FILE [FILE]   runs a script of window commands before your eyes\n"
    "  ormel --version | --help\n";

constexpr int kFailed = 1;
constexpr int kWrongUse = 2;

int Complain(const std::string& text, int status) {
  std::cerr << "ormel: " << text << '\n';
  return status;
}

void Greet(Program& program, ui::Desktop& desktop, const std::string& file) {
  const std::string pictures = AssetsFolder() + "start-up/";
  const std::string palettes = AssetsFolder() + "palettes/";
  FrmMain& main = program.Main();
  desktop.Show(std::make_unique<FrmStartUp>(
      desktop, DrawStartUpPicture(pictures + "relief.asc", palettes + "terrain.ptf"),
      DrawStartUpPicture(pictures + "suitability.asc", palettes + "default.ptf"),
      [&desktop, &main, file] {
        desktop.ShowAgain(main);
        if (!file.empty()) main.OpenFileByExtension(file);
        desktop.ShowAgain(main);
      }));
}

// Opens what other starts of the program hand over, one file after the other however long a person
// takes to answer.
class HandOvers {
 public:
  HandOvers(SingleInstance& instance, ui::Desktop& desktop, FrmMain& main)
      : instance_(instance), desktop_(desktop), main_(main) {}

  void Take() {
    for (std::string& text : instance_.Receive()) waiting_.push_back(std::move(text));
    if (taking_) return;
    taking_ = true;
    while (!waiting_.empty() && desktop_.IsOpen(main_)) {
      const std::string text = std::move(waiting_.front());
      waiting_.pop_front();
      desktop_.Dispatch([&] { main_.TakeOver(text); });
    }
    taking_ = false;
  }

 private:
  SingleInstance& instance_;
  ui::Desktop& desktop_;
  FrmMain& main_;
  std::deque<std::string> waiting_;
  bool taking_ = false;
};

int RunDesktop(ui::QtProgram& loop, ui::Screen& screen, const std::string& file) {
  ui::QtDesktop desktop(&screen);
  const auto instance = SingleInstance::ClaimOrHandOver(ProgramFolder(), file);
  if (instance.Ok() && instance.Value() == nullptr) {
    if (file.empty()) desktop.Message("ORMEL is Already Running!");
    return 0;
  }
  if (instance.Failed() && instance.Why().kind == FailureKind::kNotFound) {
    desktop.Message(instance.Text());
    return kFailed;
  }
  Program program(desktop);
  std::optional<HandOvers> handOvers;
  if (instance.Ok()) {
    handOvers.emplace(*instance.Value(), desktop, program.Main());
    loop.WatchInput(instance.Value()->Descriptor(), [&handOvers] { handOvers->Take(); });
  } else {
    Complain("other starts cannot hand files over: " + instance.Text(), 0);
  }
  Greet(program, desktop, file);
  loop.Run(desktop);
  loop.WatchNothing();
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
  return RunDesktop(program, screen, AbsolutePath(line.model));
}

}  // namespace
}  // namespace ormel

int main(int argc, char** argv) {
  ormel::LetFileSizeLimitFail();
  try {
    return ormel::Main(argc, argv);
  } catch (const std::exception& error) {
    return ormel::Complain(error.what(), ormel::kFailed);
  }
}
