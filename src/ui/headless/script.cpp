#include "ui/headless/script.h"

#include <exception>
#include <string_view>
#include <vector>

#include "ui/headless/headless_desktop.h"
#include "ui/headless/script_commands.h"
#include "ui/headless/script_words.h"
#include "ui/window.h"

namespace ormel::ui {

ScriptRunner::ScriptRunner(HeadlessDesktop& desktop, std::istream& script, std::string fileName,
                           std::ostream& out, std::ostream& errors)
    : desktop_(desktop),
      script_(script),
      fileName_(std::move(fileName)),
      out_(out),
      errors_(errors) {
  desktop_.SetModalLoop([this](Window& window) {
    // Closing a modal window at the end must not make its opener show it for ever.
    if (ended_) throw ScriptError(window.Name() + " opens behind the end of the script");
    RunCommands([&] { return desktop_.IsOpen(window); });
  });
}

ScriptRunner::~ScriptRunner() { desktop_.SetModalLoop({}); }

int ScriptRunner::Run(const std::function<void()>& before) {
  try {
    if (before) before();
    RunCommands([] { return true; });
    const std::string unused = desktop_.UnusedAnswers();
    if (!unused.empty()) throw ScriptError("no dialog took " + unused);
    return kScriptDone;
  } catch (const ExpectationFailed& failed) {
    return Fault(kExpectationFailed, failed.text);
  } catch (const ScriptError& error) {
    return Fault(kScriptFault, error.Text());
  } catch (const std::exception& error) {
    return Fault(kScriptFault, error.what());
  }
}

int ScriptRunner::Fault(int status, const std::string& reason) {
  errors_ << fileName_ << ':' << line_ << ": " << OneLine(reason) << '\n';
  return status;
}

void ScriptRunner::RunCommands(const std::function<bool()>& wanted) {
  std::string line;
  while (wanted() && ReadLine(line)) {
    const std::size_t start = line.find_first_not_of(" \t");
    if (start == std::string::npos || line[start] == '#') continue;
    RunCommand({desktop_, out_}, SplitWords(line));
    desktop_.Pump();
    desktop_.Sweep();
  }
}

bool ScriptRunner::ReadLine(std::string& line) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (!std::getline(script_, line)) {
    ended_ = true;
    return false;
  }
  if (++line_ == 1 && line.starts_with(kByteOrderMark)) line.erase(0, kByteOrderMark.size());
  if (line.ends_with('\r')) line.pop_back();
  return true;
}

}  // namespace ormel::ui
