// Saving the running model in its file.
#pragma once

#include "parts/app_context.h"

namespace ormel {

// Saves the model that runs into the session's file, behind a question when that is there already;
// asks for a file when it has none, or when the person wants another.
void SaveRunningModel(AppContext& app);

}  // namespace ormel
