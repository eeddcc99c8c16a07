// What the commands of a script work on, and the windows and controls that they name.
#pragma once

#include <ostream>
#include <span>
#include <string>

#include "ui/headless/script_words.h"

namespace ormel::ui {

class Control;
class HeadlessDesktop;
class Screen;
class Window;

struct ScriptContext {
  HeadlessDesktop& desktop;
  std::ostream& out;  // of `print`
};

using ScriptWords = std::span<const std::string>;

// What `expect` throws. Like ScriptError it passes through the handlers of windows.
struct ExpectationFailed {
  std::string text;
};

// The window of that name, whether a person sees it or not; throws ScriptError when it is not open.
Window& OpenWindow(const ScriptContext& context, const std::string& word);

// The window, when a person could act in it: not hidden, and not waiting behind a modal one. Throws
// ScriptError otherwise.
Window& ReachableWindow(const ScriptContext& context, const std::string& word);

// Throws ScriptError when the window has no such control.
Control& ControlOf(Window& window, const ControlName& name);

// Throws ScriptError when the script runs without a screen.
Screen& ScreenOf(const ScriptContext& context);

}  // namespace ormel::ui
