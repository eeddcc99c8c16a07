// The part of a window by which a palette is chosen: its name, a button to look for another, and a
// preview of its colours.
#pragma once

#include <string>

#include "parts/app_context.h"
#include "ui/window.h"

namespace ormel {

// Draws the colours of a palette file; nothing when it is none.
void ShowPalettePreview(ui::Picture& picture, const std::string& path);

class PaletteChoice {
 public:
  PaletteChoice(ui::Window& window, AppContext& app);

  // Empty: the default palette of the settings.
  const std::string& Path() const { return path_; }
  // Takes what a model's file says: a path, a name, or "Default".
  void Take(const std::string& word);
  // Tells what is wrong with the palette, when it cannot be used. False in that case.
  bool Usable() const;
  void ShowPreview();

  ui::Handler onChange;  // a person chose another palette

  ui::TextBox txtPal;  // the file's name, or "Default"; a path can be typed
  ui::Button cmdLP;
  ui::Picture PicPP;

 private:
  void Typed();
  void Pick();

  AppContext& app_;
  std::string path_;
};

}  // namespace ormel
