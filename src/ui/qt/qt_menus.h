// Menu bars, toolbars and status strips of a window.
#pragma once

#include <string>

namespace ormel::ui {

class QtWindow;
class Window;

// Puts those that `window` has around `screen`. Once, before the window is shown.
void AddMenus(QtWindow& screen, Window& window, const std::string& iconFolder);

}  // namespace ormel::ui
