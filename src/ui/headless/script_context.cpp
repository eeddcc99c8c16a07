#include "ui/headless/script_context.h"

#include "ui/headless/headless_desktop.h"
#include "ui/window.h"

namespace ormel::ui {

Window& OpenWindow(const ScriptContext& context, const std::string& word) {
  const WindowName name = SplitWindowName(word);
  Window* window = context.desktop.FindWindow(name.name, name.number);
  if (window == nullptr) throw ScriptError(word + " is not open");
  return *window;
}

Window& ReachableWindow(const ScriptContext& context, const std::string& word) {
  Window& window = OpenWindow(context, word);
  if (context.desktop.IsHidden(window)) throw ScriptError(word + " is hidden");
  if (context.desktop.IsBehindModal(window)) {
    throw ScriptError(word + " waits behind " + context.desktop.ModalWindow()->Name());
  }
  return window;
}

Control& ControlOf(Window& window, const ControlName& name) {
  Control* control = window.Find(name.control);
  if (control != nullptr) return *control;
  throw ScriptError(name.control.empty() ? name.window + ": a control is missing (WIN.CTL)"
                                         : name.window + " has no control " + name.control);
}

Screen& ScreenOf(const ScriptContext& context) {
  Screen* screen = context.desktop.ItsScreen();
  if (screen == nullptr) throw ScriptError("there is no screen");
  return *screen;
}

}  // namespace ormel::ui
