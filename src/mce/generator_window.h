// The window "Factor and MCE Viewer": pictures of every factor and of the composite, the making of
// the suitability map, palettes, exports, and the values under the mouse. What a kind of model has
// besides, further layers of its factors for instance, its own window adds.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/grid.h"
#include "mapdata/map_preview.h"
#include "mapdata/map_stream.h"
#include "mapdata/palette.h"
#include "mce/composite_map.h"
#include "mce/composite_model.h"
#include "parts/app_context.h"
#include "parts/picture_output.h"
#include "ui/desktop.h"
#include "ui/window.h"

namespace ormel {

class GeneratorWindow : public ui::Window {
 public:
  ~GeneratorWindow() override;

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
  PictureOutput output;
  PictureButtons pictureButtons{*this, output, "cmdCopyPicture", "cmdSavePicture"};
  ui::StatusStrip status{*this, "status"};
  ui::Button cmdReturn{*this, "cmdReturn", "Exit to &Builder"};
  ui::Button cmdExit{*this, "cmdExit", "E&xit to Main"};

 protected:
  // Every factor has `layers` pictures.
  GeneratorWindow(AppContext& app, std::string name, std::shared_ptr<const CompositeModel> model,
                  int layers = 1);

  // What can be on show besides the layers: those of factor 1 to n, then the second ones of factor
  // 1 to n.
  static constexpr int kNothing = -1;
  static constexpr int kComposite = 0;

  // A picture with the palette it is drawn in.
  struct Shown {
    std::unique_ptr<ui::Picture> picture;
    std::string palettePath;
    Palette palette{};
  };

  // ---- What the kinds of windows add. ----
  // The layer of a factor that is to be displayed.
  virtual int LayerToShow(int factor) const { return factor; }
  // Paints the layers of a factor while it is read: the first time, and again in another palette.
  virtual RowWatcher FactorPainter(int factor);
  // The factor has been read, whole or up to where it was stopped.
  virtual void FactorDrawn(int factor);
  // The values at the ends of the colour scale.
  virtual Extremes ScaleEnds(int /*layer*/) const { return {kTopValue, 0}; }
  virtual ui::LayoutItem FactorCommands();
  virtual void ExportFactors();

  int FactorCount() const { return model_.FactorCount(); }
  int FactorOf(int layer) const { return layer < 1 ? layer : (layer - 1) % FactorCount() + 1; }
  Shown& PictureOf(int layer) { return pictures_[static_cast<std::size_t>(layer)]; }
  // The file that an export of a factor goes to, asked for in the folder of the one before; none:
  // the person gave up.
  std::optional<ui::FileChoice> AskExportFile(int factor, const std::string& filter,
                                              const std::string& extension);

  AppContext& app_;
  const CompositeModel& model_;
  std::optional<CompositeMap> map_;
  std::optional<MapPreview> preview_;

 private:
  void LayOut();
  void ConnectHandlers();
  void MakePictures(const std::string& palettePath, const Palette& palette);
  void ShowModelLabels();
  std::string PictureName(int layer) const;

  [[nodiscard]] Outcome<> DrawFactors(ProgressSink& progress);
  void PaintComposite();

  void Generate();
  [[nodiscard]] bool ScaleTo(const std::string& path);
  void DisplayComposite();
  void DisplaySelected();
  void PutOnShow(int layer);
  void ShowPictureLabels();
  Canvas ShownWithLegend();
  std::string CompositeName() const;

  std::string Rounded(double value) const;
  void LoadShownData();
  [[nodiscard]] Outcome<> LoadDisplayGrid(const RowsToRead& rows, int index,
                                          ProgressSink& progress);
  RowsToRead CompositeRows() const;
  void ReadOut(const ui::MouseEvent& event);

  void ExportComposite();
  [[nodiscard]] Outcome<> WriteCompositeRaster(const std::string& path, ProgressSink& progress);
  void ChangeFactorPalettes();
  void ChangeCompositePalette();
  std::optional<std::string> AskPalette(Palette& palette);
  void ChangeConstraintColour();

  std::shared_ptr<const CompositeModel> modelHeld_;
  const int layers_;             // of each factor
  std::vector<Shown> pictures_;  // the composite, then the layers
  int shown_ = kNothing;

  bool generated_ = false;
  std::string outputPath_;       // empty: the composite is kept in memory, or not made yet
  Grid<float> retained_;         // the scaled composite while it has no file
  Grid<float> display_;          // the values behind the read-out
  int displayHolds_ = kNothing;  // the map they belong to: the composite or a factor
  double displayNoData_ = kNoNoData;
  std::string exportFolder_;
};

}  // namespace ormel
