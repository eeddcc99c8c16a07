// Opens a saved model in its viewer.
#pragma once

#include <string>

#include "mapdata/app_context.h"

namespace ormel {

// Reads the model at `path`, opens the window "Factor and MCE Viewer" and runs the model in it.
// What goes wrong is told in a message, and no window stays open then. False in that case.
bool OpenModel(AppContext& app, const std::string& path);

// Asks for a model and opens it. False when none was opened.
bool AskAndOpenModel(AppContext& app);

}  // namespace ormel
