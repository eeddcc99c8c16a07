// What the windows of the program share. Every window is handed it; there are no globals.
#pragma once

#include <functional>
#include <string>

#include "base/outcome.h"
#include "mapdata/settings.h"

namespace ormel {

class Canvas;
class ModelSession;

namespace ui {
class Desktop;
}

// The files in which pictures are saved. Those who write them stand above the parts of windows.
struct PictureFiles {
  std::string filter;  // of the dialog; the first kind is PNG
  std::function<Outcome<>(const Canvas& picture, const std::string& path)> write;
};

struct AppContext {
  ui::Desktop& desktop;
  Settings& settings;
  ModelSession& session;
  PictureFiles pictures{};
  // Called with the path of every model and map that was opened or saved in a window.
  std::function<void(const std::string& path)> noteFile = [](const std::string&) {};
};

}  // namespace ormel
