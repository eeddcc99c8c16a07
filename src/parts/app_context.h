// What the windows of the program share. Every window is handed it; there are no globals.
#pragma once

#include "mapdata/settings.h"

namespace ormel {

class ModelSession;

namespace ui {
class Desktop;
}

struct AppContext {
  ui::Desktop& desktop;
  Settings& settings;
  ModelSession& session;
};

}  // namespace ormel
