// The ways out of a picture: a copy in the clipboard, and a file.
#pragma once

#include <functional>
#include <string>

#include "base/canvas.h"
#include "parts/app_context.h"
#include "ui/window.h"

namespace ormel {

class PictureOutput {
 public:
  // `picture` makes the picture when it is wanted. Window and program outlive the part.
  PictureOutput(ui::Window& window, AppContext& app, std::function<Canvas()> picture);

  void Copy();
  // Asks for a file, of the kinds that the program writes.
  void Save();

  // Tells a person that it is done.
  std::function<void(const std::string& text)> onDone;

 private:
  ui::Window& window_;
  AppContext& app_;
  const std::function<Canvas()> picture_;
};

// Buttons for both, which scripts know by these names.
class PictureButtons {
 public:
  PictureButtons(ui::Window& window, PictureOutput& output, const std::string& copyName,
                 const std::string& saveName);

  void SetEnabled(bool enabled);

  ui::Button cmdCopy;
  ui::Button cmdSave;
};

}  // namespace ormel
