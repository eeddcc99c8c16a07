// The builder of non-linear models: every factor has a weight graph and the colour of its curve.
#pragma once

#include <array>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "mce/builder_window.h"
#include "mce/nonlinear/nonlinear_model.h"
#include "parts/chart_picture.h"

namespace ormel {

class FrmBuildC final : public BuilderWindow {
 public:
  // Shown by its owner; the model runs from now on until the window closes.
  explicit FrmBuildC(AppContext& app);

  // Loads the model file at `path`; asks for one when it is empty.
  void loadCMF(const std::string& path) { LoadModel(path); }

  ui::ControlArray<ui::ColourSwatch> FColour{*this, "FColour"};
  ui::ControlArray<ui::Picture> PicCW{*this, "PicCW"};  // the curve of a row; a click selects it
  ui::ControlArray<ui::Button> cmdCW{*this, "cmdCW"};
  ui::Button cmdReset{*this, "cmdReset", "Reset Weights"};
  ui::Button cmdViewAll{*this, "cmdViewAll", "View All Weights"};
  ui::FrameControl fraPreview{*this, "fraPreview"};
  ChartPicture preview{*this, app_, "picPreview", 480, 315};
  ui::Label lblYMax{*this, "lblYMax"};
  ui::Label lblYMin{*this, "lblYMin"};

 private:
  void ResizeRows(int count) override;
  void SetRowDefaults(int row) override;
  void CopyRow(int from, int to) override;
  std::vector<ui::LayoutItem> RowHeadings() const override;
  std::vector<ui::LayoutItem> RowCells(int row) override;
  std::vector<ui::LayoutItem> RowTools() override;
  std::vector<ui::LayoutItem> FurtherFrames() override;
  std::array<std::string, 2> RowFields(int row) const override;
  void SetRowFields(int row, const std::array<std::string, 2>& fields) override;
  std::vector<std::string> ConstraintsToSave() const override;
  // Saved or not: graphs are much work.
  bool AsksBeforeLoading() const override;
  void FormCleared() override;
  void RowsChanged() override { ShowPreview(); }
  void ModelLoaded() override { SelectRow(1); }
  std::unique_ptr<GeneratorWindow> MakeViewer() override;

  GraphWeight& Weight(int row) { return weights_[static_cast<std::size_t>(row - 1)]; }
  const GraphWeight& Weight(int row) const { return weights_[static_cast<std::size_t>(row - 1)]; }
  std::string RowName(int row) const;
  void SelectRow(int row);
  void PickColour(int row);
  void CustomizeWeight(int row);
  void ResetWeights();
  void ViewAllWeights();
  void GraphsChanged();
  std::vector<int> RowsOnShow() const;
  void ShowPreview();

  std::deque<GraphWeight> weights_;  // an open editor holds on to one while rows come and go
  int selected_ = 1;
  bool viewsAll_ = false;
  bool wasCleared_ = false;
};

}  // namespace ormel
