#include "parts/picture_output.h"

#include <utility>

#include "ui/desktop.h"
#include "ui/run.h"
#include "ui/save_dialog.h"

namespace ormel {
namespace {

constexpr char kSaveTitle[] = "Save Picture";

}  // namespace

PictureOutput::PictureOutput(ui::Window& window, AppContext& app, std::function<Canvas()> picture)
    : window_(window), app_(app), picture_(std::move(picture)) {}

void PictureOutput::Copy() {
  app_.desktop.SetClipboardPicture(picture_());
  if (onDone) onDone("The picture is in the clipboard.");
}

void PictureOutput::Save() {
  const auto choice = ui::AskSaveFile(
      app_.desktop, {kSaveTitle, app_.pictures.filter, "png", "", "*.png", ui::FileKind::kOutputs},
      {.title = kSaveTitle});
  if (!choice) return;
  ui::Run run(window_);
  if (run.Report(app_.pictures.write(picture_(), choice->Path())) && onDone) {
    onDone("The picture is saved.");
  }
}

PictureButtons::PictureButtons(ui::Window& window, PictureOutput& output,
                               const std::string& copyName, const std::string& saveName)
    : cmdCopy(window, copyName, "Cop&y Picture"), cmdSave(window, saveName, "Save Pict&ure...") {
  cmdCopy.SetToolTip("Put the picture into the clipboard");
  cmdSave.SetToolTip("Write the picture to a file, for texts and talks");
  cmdCopy.onClick = [&output] { output.Copy(); };
  cmdSave.onClick = [&output] { output.Save(); };
}

void PictureButtons::SetEnabled(bool enabled) {
  for (ui::Button* button : {&cmdCopy, &cmdSave}) button->SetEnabled(enabled);
}

}  // namespace ormel
