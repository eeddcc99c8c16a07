// The window "Factor and MCE Viewer": pictures of every factor and of the composite, the making of
// the suitability map, palettes, exports, and the values under the mouse.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/grid.h"
#include "mapdata/app_context.h"
#include "mapdata/map_preview.h"
#include "mapdata/palette.h"
#include "mapdata/raster_rows.h"
#include "mce/linear/composite_map.h"
#include "mce/linear/linear_model.h"
#include "ui/window.h"

namespace ormel {

class FrmDraw final : public ui::Window {
 public:
  // Directions and weights are read from `model` as they stand at the time.
  FrmDraw(AppContext& app, std::shared_ptr<const LinearModel> model);
  ~FrmDraw() override;

  // Reads the palette and all factors, draws their pictures and puts the first on show. Once,
  // before anything else. A failure is told by the caller; the window is of no use then.
  [[nodiscard]] Outcome<> Start(ProgressSink& progress);

  // Where the two ways out lead. Closing the window by its frame is the way to the main window.
  ui::Handler onReturnToBuilder;
  ui::Handler onExitToMain;

  bool QueryClose() override;

  ui::Label lblColumns{*this, "lblColumns"};
  ui::Label lblRows{*this, "lblRows"};
  ui::Label lblCellSize{*this, "lblCellSize"};
  ui::Label lblCorner{*this, "lblCorner"};
  ui::Label lblFile{*this, "lblFile"};
  ui::Label lblWeight{*this, "lblWeight"};
  ui::Label lblPalette{*this, "lblPalette"};
  ui::Label lblX{*this, "lblX"};
  ui::Label lblY{*this, "lblY"};
  ui::Label lblValue{*this, "lblValue"};
  ui::Label lblWeightedValue{*this, "lblWeightedValue"};
  ui::Label lblScaleMin{*this, "lblScaleMin", "0"};
  ui::Label lblScaleMax{*this, "lblScaleMax", "255"};
  ui::Picture PSclP{*this, "PSclP"};
  ui::ListBox PList{*this, "PList", ui::ListBox::Choice::kMultiple};
  ui::ListBox CList{*this, "CList"};
  ui::ColourSwatch CV{*this, "CV"};
  ui::Button cmdGenerate{*this, "cmdGenerate", "Generate Suitability Map"};
  ui::Button cmdExpBmp{*this, "cmdExpBmp", "Export"};
  ui::Button cmdCGP{*this, "cmdCGP", "Change Palette"};
  ui::Button cmdDispSel{*this, "cmdDispSel", "Display"};
  ui::Button cmdExport{*this, "cmdExport", "Export"};
  ui::Button cmdCP{*this, "cmdCP", "Change Palette"};
  ui::CheckBox ckLoadData{*this, "ckLoadData", "Load Map Data (Slower)"};
  ui::StatusStrip status{*this, "status"};
  ui::Button cmdReturn{*this, "cmdReturn", "Exit to &Builder"};
  ui::Button cmdExit{*this, "cmdExit", "E&xit to Main"};

 private:
  // What can be on show, besides the factors 1, 2, ...
  static constexpr int kNothing = -1;
  static constexpr int kComposite = 0;

  // A picture with the palette it is drawn in.
  struct Shown {
    std::unique_ptr<ui::Picture> picture;
    std::string palettePath;
    Palette palette{};
  };

  void LayOut();
  void ConnectHandlers();
  void MakePictures(const std::string& palettePath, const Palette& palette);
  void ShowModelLabels();
  int FactorCount() const { return static_cast<int>(model_.factors.size()); }
  const LinearFactor& Factor(int index) const {
    return model_.factors[static_cast<std::size_t>(index - 1)];
  }
  Shown& PictureOf(int index) { return pictures_[static_cast<std::size_t>(index)]; }

  [[nodiscard]] Outcome<> DrawFactors(ProgressSink& progress);
  RowWatcher FactorPainter(int index);
  void PaintComposite();

  void Generate();
  [[nodiscard]] bool ScaleTo(const std::string& path);
  void DisplayComposite();
  void DisplaySelected();
  void PutOnShow(int index);
  void ShowPictureLabels();
  std::string CompositeName() const;

  void LoadShownData();
  [[nodiscard]] Outcome<> LoadDisplayGrid(const RowsToRead& rows, int index,
                                          ProgressSink& progress);
  RowsToRead CompositeRows() const;
  void ReadOut(const ui::MouseEvent& event);

  void ExportComposite();
  [[nodiscard]] Outcome<> WriteCompositeRaster(const std::string& path, ProgressSink& progress);
  void ExportFactors();
  void ChangeFactorPalettes();
  void ChangeCompositePalette();
  std::optional<std::string> AskPalette(Palette& palette);
  void ChangeConstraintColour();

  AppContext& app_;
  std::shared_ptr<const LinearModel> modelHeld_;
  const LinearModel& model_;
  std::optional<CompositeMap> map_;
  std::optional<MapPreview> preview_;
  std::vector<Shown> pictures_;  // the composite, then the factors
  int shown_ = kNothing;

  bool generated_ = false;
  std::string outputPath_;  // empty: the composite is kept in memory, or not made yet
  Grid<float> retained_;    // the scaled composite while it has no file
  Grid<float> display_;     // the values behind the read-out
  int displayHolds_ = 0;    // the picture they belong to; 0: none
  double displayNoData_ = kNoNoData;
  std::string exportFolder_;
};

}  // namespace ormel
