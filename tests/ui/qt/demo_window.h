// A window with every kind of control and of layout, as a tool of the program would have them.
#pragma once

#include "base/canvas.h"
#include "ui/window.h"

namespace ormel::ui {

// `width` by `height` pixels: a map with a lake, and a grey scale of one row.
inline Canvas DemoMap(int width, int height) {
  Canvas map(width, height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const int dx = x - width / 3;
      const int dy = y - height / 2;
      const bool lake = dx * dx + dy * dy < width * height / 30;
      map.SetPixel(x, y,
                   lake ? Rgb(60, 110, 190) : Rgb(200 - 90 * x / width, 190 - 60 * y / height, 90));
    }
  }
  return map;
}

inline Canvas DemoScale() {
  Canvas scale(256, 1);
  for (int x = 0; x < 256; ++x) scale.SetPixel(x, 0, Rgb(x, 255 - x / 2, 80));
  return scale;
}

class DemoWindow : public Window {
 public:
  DemoWindow() : Window("frmDemo", "Habitat Suitability") {
    optMethod.SetCaptions({"&Weighted sum", "&Product", "Mi&nimum"});
    File.SetItems({"distance_to_water.asc", "elevation.asc", "forest_cover.asc", "slope.asc"});
    File.SetSelected({2, 3});
    cboPalette.SetItems({"Default", "Elevation", "Heat"});
    cboPalette.SetText("Elevation");
    cboUnit.SetItems({"metres", "feet"});
    cboUnit.SetText("metres");
    txtNotes.SetMultiLine(true);
    txtNotes.SetText("Nesting sites were mapped in the dry season.\nWeights by three experts.");
    sldWeight.SetValue(35);
    txtWeight.SetMaximumLength(3);
    ckMask.SetChecked(true);
    Dir.SetFolder("/usr/share");
    pbDone.SetPercent(62.5);
    picMap.SetImage(DemoMap(60, 45));
    picScale.SetImage(DemoScale());
    picScale.SetStripHeight(14);
    cmdRun.SetDefault();
    cmdClose.SetCancel();
    cmdRun.SetToolTip("Combine the factors into a suitability map");
    status.SetText(1, "3 factors, 1 constraint");
    status.SetText(2, "120 x 95 cells");
    SetLayout(Column{
        Row{Column{
                Frame{"Factors", Table{{"&DEM:", txtDem, cmdDem}, {"&Slope:", txtSlope, cmdSlope}},
                      Row{"&Weight:", sldWeight, txtWeight, spnWeight}, ckMask},
                Row{Frame{"Method", optMethod}, Frame{fraLook, Table{{"&Palette:", cboPalette},
                                                                     {"&Units:", cboUnit},
                                                                     {"No data:", swNoData}}}},
                "&Notes:", txtNotes, Row{Column{drvPlace, Dir}, File}},
            Share(1, Column{Row{picMap, scrRow}, scrColumn, picScale, lblCount})},
        Row{"Last run:", pbDone}, Row{Stretch{}, cmdRun, cmdClose}});
    cmdClose.onClick = [] {};
  }

  MenuBar menu{*this,
               {{"",
                 "&File",
                 "",
                 {},
                 {{"mOpen", "&Open...", "Ctrl+O", [this] { ++opened; }, {}},
                  MenuSpec::Separator(),
                  {"mExit", "E&xit", "", {}, {}}}},
                {"",
                 "&Tools",
                 "",
                 {},
                 {{"mGrid", "&Grid", "", {}, {}},
                  {"",
                   "&Interpolate",
                   "",
                   {},
                   {{"mSingle", "&Single", "F12", [this] { ++singles; }, {}},
                    {"mSeries", "S&eries", "", {}, {}}}}}}}};
  ToolBar tools{*this,
                "TBMain",
                {{1, "Viewer", "", [this] { ++views; }, {}},
                 {2,
                  "Raster Tools",
                  "",
                  [this] { ++views; },
                  {{"", "Map Statistics", "", [this] { ++statistics; }, {}},
                   {"", "Map Algebra", "", {}, {}}}}}};
  StatusStrip status{*this, "StatusBar", 2};
  TextBox txtDem{*this, "txtDem", "/home/ranger/maps/elevation.asc"};
  TextBox txtSlope{*this, "txtSlope"};
  TextBox txtWeight{*this, "txtWeight", "35"};
  TextBox txtNotes{*this, "txtNotes"};
  Button cmdDem{*this, "cmdDem", "..."};
  Button cmdSlope{*this, "cmdSlope", "..."};
  Button cmdRun{*this, "cmdRun", "&Run"};
  Button cmdClose{*this, "cmdClose", "Close"};
  Slider sldWeight{*this, "sldWeight"};
  SpinButton spnWeight{*this, "spnWeight"};
  CheckBox ckMask{*this, "ckMask", "Use the &constraint mask"};
  OptionGroup optMethod{*this, "optMethod"};
  FrameControl fraLook{*this, "fraLook", "Picture"};
  ComboBox cboPalette{*this, "cboPalette"};
  ComboBox cboUnit{*this, "cboUnit", ComboBox::Kind::kTyped};
  ColourSwatch swNoData{*this, "swNoData", Rgb(200, 40, 40)};
  DriveList drvPlace{*this, "Drive"};
  FolderList Dir{*this, "Dir"};
  FileList File{*this, "File", ListBox::Choice::kMultiple};
  Picture picMap{*this, "picMap"};
  Picture picScale{*this, "picScale"};
  ScrollBar scrRow{*this, "scrRow"};
  ScrollBar scrColumn{*this, "scrColumn", false};
  ProgressBar pbDone{*this, "pbDone"};
  Label lblCount{*this, "lblCount", "Suitable: 1,204 of 11,400 cells"};

  int opened = 0;
  int singles = 0;
  int views = 0;
  int statistics = 0;
};

}  // namespace ormel::ui
