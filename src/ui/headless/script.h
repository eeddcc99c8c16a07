// Runs a command script: one command a line, such as `click frmMain.cmdOk`, `set frmMain.txtName
// "a b"` or `expect message Done`. A script acts as a person would: it cannot use what is hidden or
// disabled, nor a window that waits behind another. While a modal window is open, the commands that
// follow act inside it.
//
// A script ends at its first fault, told as FILE:LINE: REASON. The faults are in two kinds: what
// was expected did not happen, or the script asks for something that cannot be done.
#pragma once

#include <functional>
#include <istream>
#include <memory>
#include <ostream>
#include <string>

namespace ormel::ui {

class HeadlessDesktop;

inline constexpr int kScriptDone = 0;
inline constexpr int kExpectationFailed = 1;
inline constexpr int kScriptFault = 2;

class ScriptRunner {
 public:
  // Reads commands from `script`, which errors call `fileName`. `print` writes to `out`, the fault
  // goes to `errors`. All outlive the runner.
  ScriptRunner(HeadlessDesktop& desktop, std::istream& script, std::string fileName,
               std::ostream& out, std::ostream& errors);
  ~ScriptRunner();
  ScriptRunner(const ScriptRunner&) = delete;
  ScriptRunner& operator=(const ScriptRunner&) = delete;

  // Does what comes before the script, the opening of a model for instance, then runs the script to
  // its end, once. Faults in `before` are told with line 0. Returns kScriptDone, kExpectationFailed
  // or kScriptFault; an answer that no dialog took is a fault as well. A modal window that is open
  // at the end is closed.
  [[nodiscard]] int Run(const std::function<void()>& before = {});

 private:
  // Runs commands as long as `wanted` holds and there are any.
  void RunCommands(const std::function<bool()>& wanted);
  bool ReadLine(std::string& line);
  int Fault(int status, const std::string& reason);

  HeadlessDesktop& desktop_;
  std::istream& script_;
  const std::string fileName_;
  std::ostream& out_;
  std::ostream& errors_;
  int line_ = 0;  // from 1
  bool ended_ = false;
};

}  // namespace ormel::ui
