#include "parts/palette_choice.h"

#include <filesystem>

#include "mapdata/palette.h"
#include "text/paths.h"
#include "ui/desktop.h"

namespace ormel {
namespace {

constexpr char kMissing[] = "The palette file you specified does not exist! Please choose another.";
constexpr char kCorrupt[] = "The specified palette file is corrupt! Please choose another.";

bool Exists(const std::string& path) {
  std::error_code error;
  return std::filesystem::exists(path, error);
}

}  // namespace

void ShowPalettePreview(ui::Picture& picture, const std::string& path) {
  Palette palette;
  const bool good = CheckPaletteFile(path) == "GOOD" && ReadPalette(path, palette).Ok();
  picture.SetImage(good ? ColourScale(palette) : Canvas());
}

PaletteChoice::PaletteChoice(ui::Window& window, AppContext& app)
    : txtPal(window, "txtPal", "Default"),
      cmdLP(window, "cmdLP", "&Browse..."),
      PicPP(window, "PicPP"),
      app_(app) {
  txtPal.SetToolTip("Palette of the pictures: a file, or Default");
  PicPP.SetStripHeight(kColourScaleHeight);
  txtPal.onChange = [this] { Typed(); };
  cmdLP.onClick = [this] { Pick(); };
  ShowPreview();
}

void PaletteChoice::ShowPreview() {
  ShowPalettePreview(PicPP, path_.empty() ? app_.settings.defaultPalette : path_);
}

void PaletteChoice::Typed() {
  path_ = MeansDefaultPalette(txtPal.Text()) ? "" : txtPal.Text();
  ShowPreview();
  onChange();
}

void PaletteChoice::Take(const std::string& word) {
  path_ = FindPalette(word, app_.settings.programFolder);
  txtPal.SetText(path_.empty() ? "Default" : word);
  ShowPreview();
}

void PaletteChoice::Pick() {
  const auto choice = app_.desktop.OpenFile(
      {"Select Palette", "Palette Files (.ptf)|*.ptf", "", "", "*.ptf", ui::FileKind::kPalettes});
  if (!choice) return;
  if (!Exists(choice->Path())) return app_.desktop.Message(kMissing);
  if (CheckPaletteFile(choice->Path()) == "BAD") return app_.desktop.Message(kCorrupt);
  path_ = choice->Path();
  txtPal.SetText(FileNamePart(path_, true));
  ShowPreview();
  onChange();
}

bool PaletteChoice::Usable() const {
  const std::string& path = path_.empty() ? app_.settings.defaultPalette : path_;
  const bool exists = Exists(path);
  if (exists && CheckPaletteFile(path) != "BAD") return true;
  if (!path_.empty()) {
    app_.desktop.Message(exists ? kCorrupt : kMissing);
  } else {
    app_.desktop.Message(exists
                             ? "The default palette file is corrupt. Please choose another."
                             : "The default palette file no longer exists. Please choose another.",
                         "Bad Default Palette");
  }
  return false;
}

}  // namespace ormel
