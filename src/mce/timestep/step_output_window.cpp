#include "mce/timestep/step_output_window.h"

#include <filesystem>

#include "mapdata/palette.h"
#include "mce/model_text.h"
#include "mce/timestep/step_output.h"
#include "text/arithmetic.h"
#include "text/paths.h"
#include "ui/desktop.h"

namespace ormel {

FrmTS4::FrmTS4(AppContext& app, StepWizard& wizard)
    : Window("frmTS4", "Time Step Information - Step 5/5"),
      folder(*this, app.desktop, NewFolders::kOffered),
      palette(*this, app),
      app_(app),
      wizard_(wizard) {
  folder.SetFolder(app.settings.workingDirectory);
  picCC.SetColour(app.settings.constraintColor);
  picCC.SetToolTip("Colour of cells that a constraint forbids; click to change it");
  picCC.onClick = [this] { PickColour(); };
  ckRaster.SetChecked(true);
  ckInf.SetChecked(true);
  optScaleInd.Choose();
  optScaletoSet.SetToolTip("All maps on one scale: values can be compared from step to step");
  optScaleInd.SetToolTip("Each map on its own scale, from 0 to 255");
  txtoutname.SetToolTip("What the names of the files begin with");
  ckRaster.SetToolTip("A map for each step, in the output folder");
  ckBMP.SetToolTip("A picture for each step, in the output folder");
  ckInf.SetToolTip("A text that tells how the maps were made");
  const auto changed = [this] { ShowFiles(); };
  txtoutname.onChange = changed;
  folder.onChange = changed;
  palette.onChange = [] {};
  for (ui::CheckBox* box : {&ckRaster, &ckBMP, &ckInf}) box->onChange = changed;
  parts_.cmdNext.onClick = [this] { Finish(); };
  LayOut();
}

void FrmTS4::LayOut() {
  using ui::Column, ui::Frame, ui::Row, ui::Share, ui::Stretch;
  SetLayout(Column{
      Share(1,
            Row{Share(1, Frame{"Output Folder", Share(1, folder.Area())}),
                Share(1, Column{Frame{"Files", Row{"Output File &Prefix:", txtoutname}, ckRaster,
                                      ckBMP, ckInf, lblFiles},
                                Frame{"Scale", optScaletoSet, optScaleInd},
                                Frame{"Palette", Row{palette.txtPal, palette.cmdLP}, palette.PicPP},
                                Frame{"Constraint Color", Row{picCC, Stretch{}}}, Stretch{}})}),
      parts_.Buttons()});
}

void FrmTS4::PickColour() {
  const auto colour = app_.desktop.PickColour("Select New Constraint Color", picCC.Value());
  if (colour) picCC.SetColour(*colour);
}

StepOutputText FrmTS4::Text() const {
  StepOutputText text;
  text.folder = folder.Folder();
  text.prefix = txtoutname.Text();
  text.palette = palette.txtPal.Text();
  text.constraintColour = std::to_string(picCC.Value());
  text.raster = ckRaster.Checked();
  text.bitmap = ckBMP.Checked();
  text.info = ckInf.Checked();
  text.group = optScaletoSet.Chosen();
  return text;
}

void FrmTS4::Put(const StepOutputText& text) {
  folder.SetFolder(text.folder);
  txtoutname.SetText(text.prefix);
  palette.Take(text.palette);
  picCC.SetColour(ColourOf(text.constraintColour).value_or(app_.settings.constraintColor));
  ckRaster.SetChecked(text.raster);
  ckBMP.SetChecked(text.bitmap);
  ckInf.SetChecked(text.info);
  (text.group ? optScaletoSet : optScaleInd).Choose();
}

StepOutput FrmTS4::Output() const {
  return {folder.Folder(), txtoutname.Text(),      ckRaster.Checked(), ckBMP.Checked(),
          ckInf.Checked(), optScaletoSet.Chosen(), picCC.Value()};
}

// What will be written, and how much of it is there already.
void FrmTS4::ShowFiles() {
  const StepOutput output = Output();
  const int steps = wizard_.Calendar().Steps();
  std::vector<std::string> paths;
  if (output.info) paths.push_back(StepInfoPath(output));
  for (const auto& [wanted, extension] :
       {std::pair(output.raster, ".asc"), std::pair(output.bitmap, ".bmp")}) {
    for (int step = 1; wanted && step <= steps; ++step) {
      paths.push_back(StepPath(output, output.folder, step, steps, extension));
    }
  }
  int replaced = 0;
  std::error_code error;
  for (const std::string& path : paths) replaced += std::filesystem::exists(path, error) ? 1 : 0;
  std::string text = paths.empty()
                         ? "No file will be written."
                         : std::to_string(paths.size()) + " files will be written, the last " +
                               FileNamePart(paths.back(), true) + ".";
  if (replaced > 0) text += " " + std::to_string(replaced) + " of them replace others.";
  lblFiles.SetCaption(text);
}

bool FrmTS4::Finish() { return palette.Usable() && wizard_.Finish(); }

}  // namespace ormel
