// Runs a command script, the same for `ormel-batch` and `ormel`.
#pragma once

#include <string>

#include "ui/desktop.h"

namespace ormel {

// Shows the main window, opens `opened` by its extension (empty: nothing), then runs the script at
// `file` (-: standard input). Prints go to standard output, faults to standard error. Returns the
// exit status. `screen` may be null.
int RunScript(const std::string& file, const std::string& opened, ui::Screen* screen);

}  // namespace ormel
