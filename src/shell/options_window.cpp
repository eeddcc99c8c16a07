#include "shell/options_window.h"

#include "mapdata/palette.h"
#include "parts/palette_choice.h"
#include "shell/program_folder.h"
#include "text/paths.h"
#include "ui/desktop.h"

namespace ormel {
namespace {

constexpr char kBadPalette[] = "Bad Palette File, Please Choose Another!";
constexpr char kBadPaletteTitle[] = "Bad Palette";

}  // namespace

FrmOptions::FrmOptions(AppContext& app)
    : Window("frmOptions", "Options"), folder(*this, app.desktop), app_(app) {
  std::vector<std::string> datums;
  for (const std::string_view name : DatumNames()) datums.emplace_back(name);
  cmbDatum.SetItems(std::move(datums));
  txtPal.SetReadOnly(true);
  PicPP.SetStripHeight(kColourScaleHeight);
  cmdOK.SetDefault();
  cmdCancel.SetCancel();
  folder.Dir.SetToolTip("Where file dialogs start");
  txtDecimal.SetToolTip("Digits kept in written cells and shown values, 0 to 9");
  txtPal.SetToolTip("Palette of new models and views");
  DCC.SetToolTip("Colour of masked and NODATA cells; click to change it");
  cmbDatum.SetToolTip("Reference ellipsoid of the coordinates");
  cmdReset.SetToolTip("Show the values of a first start");
  cmdSave.SetToolTip("Keep these values for future starts");
  ConnectHandlers();
  LayOut();
}

void FrmOptions::LayOut() {
  SetLayout(ui::Column{ui::Share(1, ui::Frame{"Working Directory", folder.Area()}),
                       ui::Table{{"&Decimal Places:", ui::Row{txtDecimal, spnSpin, ui::Stretch{}}},
                                 {"&Palette:", ui::Row{txtPal, cmdLoadPal}},
                                 {"", PicPP},
                                 {"Constraint Color:", ui::Row{DCC, ui::Stretch{}}},
                                 {"Da&tum:", cmbDatum}},
                       ui::Row{cmdReset, cmdSave, ui::Stretch{}, cmdOK, cmdCancel}});
}

void FrmOptions::ConnectHandlers() {
  folder.onChange = [this] { changed_ = true; };
  txtDecimal.onChange = [this] {
    spnSpin.SetValue(DecimalPlacesOf(txtDecimal.Text()));
    changed_ = true;
  };
  txtDecimal.onLeave = [this] { ShowDecimals(spnSpin.Value()); };
  spnSpin.onChange = [this] {
    ShowDecimals(spnSpin.Value());
    changed_ = true;
  };
  cmbDatum.onChange = [this] { changed_ = true; };
  DCC.onClick = [this] { ChooseColour(); };
  cmdLoadPal.onClick = [this] { ChoosePalette(); };
  cmdReset.onClick = [this] { Reset(); };
  cmdSave.onClick = [this] { Save(); };
  cmdOK.onClick = [this] { Accept(); };
  cmdCancel.onClick = [this] {
    Restore();
    app_.desktop.Close(*this);
  };
}

bool FrmOptions::QueryClose() {
  Restore();
  return true;
}

// ---- What the window shows ----------------------------------------------------------------------

void FrmOptions::LoadAtStart() { app_.settings = Load().settings; }

SettingsRead FrmOptions::Load() {
  SettingsRead read = LoadSettings(app_.settings.programFolder);
  if (!read.failure.empty()) app_.desktop.Message("Unexpected Error");
  Show(read.settings);
  changed_ = read.created;
  return read;
}

void FrmOptions::Show(const Settings& settings) {
  folder.SetFolder(settings.workingDirectory);
  ShowDecimals(settings.decimalPlaces);
  ShowPalette(settings.defaultPalette);
  DCC.SetColour(settings.constraintColor);
  cmbDatum.SelectIndex(settings.datum);
}

void FrmOptions::ShowDecimals(int places) {
  spnSpin.SetValue(places);
  txtDecimal.SetText(std::to_string(places));
}

void FrmOptions::ShowPalette(const std::string& path) {
  palettePath_ = path;
  txtPal.SetText(FileNamePart(path, true));
  ShowPalettePreview(PicPP, path);
}

Settings FrmOptions::Draft() const {
  Settings draft = app_.settings;
  draft.workingDirectory = AsSettingsFolder(folder.Folder());
  draft.decimalPlaces = spnSpin.Value();
  draft.defaultPalette = palettePath_;
  draft.constraintColor = DCC.Value();
  draft.datum = cmbDatum.SelectedIndex();
  return draft;
}

// ---- Commands -----------------------------------------------------------------------------------

void FrmOptions::Accept() {
  if (CheckPaletteFile(palettePath_) == "BAD" &&
      app_.desktop.Ask(kBadPalette, kBadPaletteTitle, ui::Buttons::kOkCancel) == ui::Answer::kOk) {
    return;
  }
  if (changed_) {
    const ui::Answer answer = app_.desktop.Ask("Make Changes Program Default for Future Use?",
                                               "Save as Default?", ui::Buttons::kYesNoCancel);
    if (answer == ui::Answer::kCancel) return;
    if (answer == ui::Answer::kYes && !Save()) return;
  }
  app_.settings = Draft();
  app_.desktop.Close(*this);
}

void FrmOptions::Restore() { (void)Load(); }

void FrmOptions::Reset() {
  Show(DefaultSettings(app_.settings.programFolder));
  changed_ = true;
}

bool FrmOptions::Save() {
  const Outcome<> saved = SaveSettings(Draft());
  if (saved.Failed()) app_.desktop.Message(saved.Text());
  if (saved.Ok()) changed_ = false;
  return saved.Ok();
}

void FrmOptions::ChoosePalette() {
  const auto choice = app_.desktop.OpenFile(
      {"Select the Default Palette", "Palette Files (.ptf)|*.ptf", "",
       PaletteFolder(app_.settings.programFolder), "*.ptf", ui::FileKind::kPalettes});
  if (!choice) return;
  if (CheckPaletteFile(choice->Path()) == "BAD") {
    app_.desktop.Message(kBadPalette, kBadPaletteTitle);
    return;
  }
  ShowPalette(choice->Path());
  changed_ = true;
}

void FrmOptions::ChooseColour() {
  const auto colour = app_.desktop.PickColour("Constraint Color", DCC.Value());
  if (!colour) return;
  DCC.SetColour(*colour);
  changed_ = true;
}

}  // namespace ormel
