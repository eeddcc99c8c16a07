// The last page of a time-step model: which files the maps of the steps become.
#pragma once

#include <string>

#include "mce/timestep/step_wizard_window.h"
#include "mce/timestep/time_step_text.h"
#include "parts/app_context.h"
#include "parts/folder_choice.h"
#include "parts/palette_choice.h"
#include "ui/window.h"

namespace ormel {

class FrmTS4 final : public ui::Window {
 public:
  FrmTS4(AppContext& app, StepWizard& wizard);

  StepOutputText Text() const;
  void Put(const StepOutputText& text);
  StepOutput Output() const;
  // The number of the steps has changed, or the page comes into sight again.
  void ShowFiles();
  // Makes the maps and opens their viewer. False: a message has told why not.
  bool Finish();

  bool QueryClose() override { return wizard_.Leave(); }

  FolderChoice folder;
  ui::TextBox txtoutname{*this, "txtoutname"};
  PaletteChoice palette;
  ui::ColourSwatch picCC{*this, "picCC"};
  ui::CheckBox ckRaster{*this, "ckRaster", "Export Frames as &ASCII Raster"};
  ui::CheckBox ckBMP{*this, "ckBMP", "Export Frames as &Bitmaps"};
  ui::CheckBox ckInf{*this, "ckInf", "Write &Information File"};
  ui::OptionButton optScaletoSet{*this, "optScaletoSet", "&Group"};
  ui::OptionButton optScaleInd{*this, "optScaleInd", "I&ndividual"};
  ui::Label lblFiles{*this, "lblFiles"};  // what will be written

 private:
  void LayOut();
  void PickColour();

  AppContext& app_;
  StepWizard& wizard_;
  ui::OptionSet scale_{&optScaletoSet, &optScaleInd};
  StepPageParts parts_{*this, wizard_, "cmdFinish", "&Finish"};
  ui::MenuBar menu_{*this, {{"mFile", "&File", "", {}, StepPageParts::SaveMenu(wizard_)}}};
};

}  // namespace ormel
