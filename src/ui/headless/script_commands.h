// What the commands of a script do, from one table.
#pragma once

#include "ui/headless/script_context.h"

namespace ormel::ui {

// Runs the command in `words` (at least one). Throws ScriptError when it cannot be done and
// ExpectationFailed when it is an `expect` that does not hold.
void RunCommand(const ScriptContext& context, ScriptWords words);

}  // namespace ormel::ui
