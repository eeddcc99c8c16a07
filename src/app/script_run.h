// Runs a command script, the same for `ormel-batch` and `ormel`.
#pragma once

#include <string>

#include "ui/desktop.h"

namespace ormel {

// Opens `model` (empty: none), then runs the script file (- : standard input). Prints go to
// standard output, faults to standard error. Returns the exit status. `screen` may be null.
int RunScript(const std::string& file, const std::string& model, ui::Screen* screen);

}  // namespace ormel
