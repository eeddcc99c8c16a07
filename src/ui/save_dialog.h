// The save dialog that asks before it overwrites, as most commands use it.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "ui/desktop.h"

namespace ormel::ui {

struct OverwriteQuestion {
  std::string text = "File already exists! Overwrite?";
  std::string title;
};

// Asks for a file until the answer holds. `adjust` may change the chosen file first, its ending for
// instance. When the file exists the question follows: Yes takes the file, No shows the dialog
// again, Cancel gives up. Nothing is deleted here: writers replace old files when the new ones are
// complete.
std::optional<FileChoice> AskSaveFile(Desktop& desktop, const FileDialog& dialog,
                                      const OverwriteQuestion& question,
                                      const std::function<void(FileChoice&)>& adjust = {});

}  // namespace ormel::ui
