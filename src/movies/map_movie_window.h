// The window "Generate .AVI Files": a movie of scaled maps, up to four series of them side by side.
#pragma once

#include <string>
#include <vector>

#include "movies/map_movie.h"
#include "parts/app_context.h"
#include "parts/step_files.h"
#include "ui/window.h"

namespace ormel {

class FrmAVI final : public ui::Window {
 public:
  explicit FrmAVI(AppContext& app);

  ui::TextBox txtNF{*this, "txtNF", "10"};
  ui::TextBox txtFPS{*this, "txtFPS", "5"};
  ui::TextBox txtFW{*this, "txtFW", "0"};
  ui::ControlArray<ui::TextBox> txtPFC{*this, "txtPFC", 0, 0};
  ui::ColourSwatch picBC{*this, "picBC", kWhite};
  ui::ColourSwatch picNDC{*this, "picNDC"};
  ui::ListBox lstF{*this, "lstF"};
  ui::Button cmdAdd{*this, "cmdAdd", "A&dd"};
  ui::Button cmdRemove{*this, "cmdRemove", "Re&move"};
  ui::TextBox txtPal{*this, "txtPal"};
  ui::Button cmdChngP{*this, "cmdChngP", "&Change Palette"};
  StepFiles files;
  ui::Label lblProgress{*this, "lblProgress"};
  ui::Button cmdWriteAVI{*this, "cmdWriteAVI", "&Write AVI"};
  ui::Button cmdExit{*this, "cmdExit", "E&xit"};

 private:
  // A series of maps, as it stands in the list.
  struct ConcurrentFrame {
    std::string palette = "Default";  // or a path
    bool good = true;                 // the palette can be read
    std::vector<std::string> steps;
  };
  // A number field with the last value that was good.
  struct NumberField {
    ui::TextBox* box;
    int low;
    int high;
    const char* noNumber;
    const char* outside;
    int value;
  };

  void ConnectControls();
  void LayOut();
  ConcurrentFrame* Selected();
  std::string PathOf(const ConcurrentFrame& frame) const;

  void AddFrame();
  void RemoveFrame();
  void ListFrames(int selected);
  void SelectFrame();
  void ShowSteps();

  void LeaveNumber(NumberField& field);
  void TakeStepCount();
  void TakeCell(int cell);
  void TypePalette();
  void PickPalette();
  void SetPalette(const std::string& palette);
  bool Fits(const std::string& path);
  void PickColour(ui::ColourSwatch& swatch, const char* title);

  // Whether everything is there; a message tells what is not.
  bool IsReady();
  bool FillMovie(MapMovie& movie);
  int CellOf(int frame) const;
  void Write();

  AppContext& app_;
  std::vector<ConcurrentFrame> frames_;
  std::vector<NumberField> numbers_;
};

}  // namespace ormel
