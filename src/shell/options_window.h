// The window "Options": the global settings, and what of them is kept for future starts.
#pragma once

#include <string>

#include "parts/app_context.h"
#include "parts/folder_choice.h"
#include "shell/settings_file.h"
#include "ui/window.h"

namespace ormel {

// Lives as long as the program and is shown modally, again and again. What it shows is a draft: the
// settings of the program take it by OK alone.
class FrmOptions final : public ui::Window {
 public:
  explicit FrmOptions(AppContext& app);

  // Reads Settings.inf into the window and into the settings of the program. A file that cannot be
  // read whole is told in a message.
  void LoadAtStart();

  // By its frame as by Cancel.
  bool QueryClose() override;

  FolderChoice folder;  // the working directory
  ui::TextBox txtDecimal{*this, "txtDecimal"};
  ui::SpinButton spnSpin{*this, "spnSpin", 0, kMostDecimalPlaces};
  ui::TextBox txtPal{*this, "txtPal"};
  ui::Button cmdLoadPal{*this, "cmdLoadPal", "&Browse..."};
  ui::Picture PicPP{*this, "PicPP"};
  ui::ColourSwatch DCC{*this, "DCC"};
  ui::ComboBox cmbDatum{*this, "cmbDatum"};
  ui::Button cmdReset{*this, "cmdReset", "&Reset"};
  ui::Button cmdSave{*this, "cmdSave", "&Save"};
  ui::Button cmdOK{*this, "cmdOK", "OK"};
  ui::Button cmdCancel{*this, "cmdCancel", "Cancel"};

 private:
  void LayOut();
  void ConnectHandlers();
  [[nodiscard]] SettingsRead Load();
  void Show(const Settings& settings);
  Settings Draft() const;
  void ShowDecimals(int places);
  void ShowPalette(const std::string& path);

  void Accept();
  void Restore();
  void Reset();
  bool Save();
  void ChoosePalette();
  void ChooseColour();

  AppContext& app_;
  std::string palettePath_;
  bool changed_ = false;  // since the file was read or written
};

}  // namespace ormel
