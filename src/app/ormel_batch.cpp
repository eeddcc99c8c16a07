// `ormel-batch`: the program without a screen.

#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <exception>
#include <iostream>

#include "app/command_line.h"
#include "app/main_job.h"
#include "app/script_run.h"
#include "app/time_step_job.h"
#include "base/file_writer.h"
#include "shell/program_folder.h"
#include "shell/settings_file.h"

namespace ormel {
namespace {

constexpr char kHelp[] =
    "ormel-batch: suitability maps without a screen\n"
    "\n"
    "  ormel-batch MODEL -o OUT.asc [--picture OUT.bmp]\n"
    "      runs a saved model (.mif or .cmf) and writes its suitability map, the information\n"
    "      file beside it (OUT.inf) and, if asked, its picture (a bitmap, or OUT.png)\n"
    "  ormel-batch MODEL.tsi -o FOLDER\n"
    "      runs a saved time-step model and writes the maps of all steps, with the output options\n"
    "      of the model, into the folder\n"
    "  ormel-batch --script FILE [MODEL]\n"
    "      runs a script of window commands (- reads it from standard input)\n"
    "  ormel-batch --version | --help\n"
    "\n"
    "Exit status: 0 done, 1 failed, 2 wrong use, 130 stopped by Ctrl-C.\n";

constexpr int kFailed = 1;
constexpr int kWrongUse = 2;
constexpr int kStopped = 130;

volatile std::sig_atomic_t stopWanted = 0;

// Shows a percentage on a terminal and stops at Ctrl-C, so that no half-written file stays behind.
class TerminalProgress final : public ProgressSink {
 public:
  ~TerminalProgress() override {
    if (shown_ >= 0) std::cerr << "\r     \r" << std::flush;
  }
  bool Report(double percent) override {
    const int whole = static_cast<int>(percent);
    if (onTerminal_ && whole != shown_) {
      std::cerr << '\r' << whole << " %" << std::flush;
      shown_ = whole;
    }
    return stopWanted == 0;
  }

 private:
  const bool onTerminal_ = isatty(STDERR_FILENO) != 0;
  int shown_ = -1;
};

int Complain(const std::string& text, int status) {
  std::cerr << "ormel-batch: " << text << '\n';
  return status;
}

Outcome<> RunSavedModel(const CommandLine& line, ProgressSink& progress) {
  const Settings settings = ReadSettings(ProgramFolder()).settings;
  if (!IsTimeStepModel(line.model)) {
    return RunMainJob({line.model, line.output, line.picture}, settings, progress, std::cerr);
  }
  return RunTimeStepJob({line.model, line.output}, settings, progress, std::cerr);
}

int RunModel(const CommandLine& line) {
  std::signal(SIGINT, [](int) { stopWanted = 1; });
  Outcome<> outcome = Cancelled{};
  {
    TerminalProgress progress;
    outcome = RunSavedModel(line, progress);
  }
  if (outcome.WasCancelled()) return Complain("stopped", kStopped);
  return outcome.Ok() ? 0 : Complain(outcome.Text(), kFailed);
}

int Main(std::span<const char* const> words) {
  const Outcome<CommandLine> read = ReadCommandLine(words);
  if (!read.Ok()) return Complain(read.Text() + " (--help tells more)", kWrongUse);
  const CommandLine& line = read.Value();
  if (line.help) return std::fputs(kHelp, stdout) < 0 ? kFailed : 0;
  if (line.version) return std::puts("ormel-batch " ORMEL_VERSION) < 0 ? kFailed : 0;
  if (!line.script.empty()) return RunScript(line.script, line.model, nullptr);
  if (line.model.empty()) return Complain("no model given (--help tells more)", kWrongUse);
  if (line.output.empty()) return Complain("no output given: -o OUT.asc", kWrongUse);
  if (IsTimeStepModel(line.model) && !line.picture.empty()) {
    return Complain("--picture is for single maps; a time-step model says itself what it writes",
                    kWrongUse);
  }
  return RunModel(line);
}

}  // namespace
}  // namespace ormel

int main(int argc, char** argv) {
  ormel::LetFileSizeLimitFail();
  try {
    return ormel::Main({argv + 1, static_cast<std::size_t>(argc > 0 ? argc - 1 : 0)});
  } catch (const std::exception& error) {
    return ormel::Complain(error.what(), ormel::kFailed);
  }
}
