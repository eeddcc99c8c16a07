// The window "Time Step Viewing Utility": the maps of all steps one after the other, as a film,
// with the values under the mouse, the factors' weights at the step, and places whose values are
// followed over all steps.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "mapdata/map_preview.h"
#include "mce/timestep/step_generator.h"
#include "mce/timestep/step_output.h"
#include "mce/timestep/time_step_model.h"
#include "parts/app_context.h"
#include "parts/chart_picture.h"
#include "parts/picture_output.h"
#include "ui/timer.h"
#include "ui/window.h"

namespace ormel {

class StepWizard;

// The maps of a model that has run.
struct StepSeries {
  std::shared_ptr<const TimeStepModel> model;
  StepGenerator generator;
  StepRunSettings settings;
};

class StepViewerWindow : public ui::Window {
 public:
  bool QueryClose() override;

  ui::Picture picFrame{*this, "picFrame"};
  ui::Picture picScale{*this, "picScale"};
  ui::Label lblScaleMin{*this, "lblScaleMin", "0"};
  ui::Label lblScaleMax{*this, "lblScaleMax", "255"};
  ui::Label lblFrame{*this, "lblFrame"};  // the step and its date
  ui::Slider pscrl{*this, "pscrl", 1, 1};
  ui::ControlArray<ui::Picture> MVC{*this, "MVC"};  // play, stop, pause
  ui::TextBox txtSF{*this, "txtSF", "1"};
  ui::TextBox txtEF{*this, "txtEF"};
  ui::TextBox txtFPS{*this, "txtFPS", "5"};
  ui::Label lblX{*this, "lblX"};
  ui::Label lblY{*this, "lblY"};
  ui::Label lblvalue{*this, "lblvalue"};
  ui::CheckBox ckLoadData{*this, "ckLoadData", "&Load Map Data (slower)"};
  ui::Picture PicZoom{*this, "PicZoom"};
  ui::CheckBox ckActive{*this, "ckActive", "&Active (slower)"};
  ui::ControlArray<ui::Label> lblFW{*this, "lblFW"};
  ui::ControlArray<ui::Picture> FWDisp{*this, "FWDisp"};
  ui::Label lblWeightLow{*this, "lblWeightLow"};
  ui::Label lblWeightHigh{*this, "lblWeightHigh"};
  ui::ScrollBar scrlFWT{*this, "scrlFWT"};
  ui::ListBox List1{*this, "List1"};  // the locked points
  ui::Button cmdUnlock{*this, "cmdUnlock", "&Unlock"};
  ChartPicture chart;
  ui::Button cmdExpAVI{*this, "cmdExpAVI", "&Export AVI..."};
  PictureOutput output;
  PictureButtons pictureButtons{*this, output, "cmdCopyPicture", "cmdSavePicture"};
  ui::StatusStrip status{*this, "status"};
  ui::Button cmdReturn{*this, "cmdReturn", "&Return"};
  ui::Button cmdExit{*this, "cmdExit", "E&xit"};

 protected:
  StepViewerWindow(AppContext& app, StepWizard& wizard, const std::string& name, StepSeries series);

 private:
  // A cell that a person has locked, column and row from 1.
  struct LockedPoint {
    int column = 0;
    int row = 0;
  };

  void ConnectControls();
  std::vector<ui::MenuSpec> Menus();
  void MakeButtons();
  void LayOut();
  int Steps() const { return series_.model->Steps(); }
  int Step() const { return pscrl.Value(); }
  int FactorCount() const { return series_.model->Maps().FactorCount(); }
  // The first and the last frame that play, in order and within the series.
  int FirstFrame() const;
  int LastFrame() const;

  void ShowStep();
  void DrawMVC();

  void Play();
  void StopPlaying();
  void Pause();
  void Tick();
  std::optional<double> FramesPerSecond();

  void ShowWeights();
  void PaintWeight(int factor, Canvas& canvas) const;

  void UseMouse(const ui::MouseEvent& event);
  void ReadOut();
  void PaintZoom(Canvas& canvas) const;
  // The value of a cell at a step as its map holds it.
  double ValueAt(int step, int column, int row) const;
  std::string PointText(const LockedPoint& point) const;
  void Lock(const LockedPoint& point);
  void Unlock();
  void ShowPoints();
  void ShowChart();
  void UseListKey(const std::string& key);

  void ExportMovie();
  Canvas ShownWithLegend() const;

  AppContext& app_;
  StepWizard& wizard_;
  const StepSeries series_;
  const MapPreview preview_;
  std::unique_ptr<ui::Timer> timer_;  // while the frames play
  double pointerX_ = 0;               // on the map, in cells from its upper left corner
  double pointerY_ = 0;
  bool pointed_ = false;
  std::vector<LockedPoint> locked_;
  ui::MenuBar menu_{*this, Menus()};
};

class FrmTSF final : public StepViewerWindow {
 public:
  FrmTSF(AppContext& app, StepWizard& wizard, StepSeries series)
      : StepViewerWindow(app, wizard, "frmTSF", std::move(series)) {}
};

class FrmTSFC final : public StepViewerWindow {
 public:
  FrmTSFC(AppContext& app, StepWizard& wizard, StepSeries series)
      : StepViewerWindow(app, wizard, "frmTSFC", std::move(series)) {}
};

}  // namespace ormel
