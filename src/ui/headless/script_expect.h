// The `expect` command: compares controls, messages, windows and files.
#pragma once

#include "ui/headless/script_context.h"

namespace ormel::ui {

// Runs what stands behind `expect` (two words or three). Throws ExpectationFailed when it does not
// hold, with what was expected and what is there; ScriptError when it cannot be looked at.
void Expect(const ScriptContext& context, ScriptWords words);

}  // namespace ormel::ui
