// What the rows of non-linear factors hold beside their maps: a weight graph and the colour of its
// curve. A preview shows the graph of a row, or all of them in one scale.
#pragma once

#include <array>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "mce/factor_form_window.h"
#include "mce/nonlinear/nonlinear_model.h"
#include "parts/chart_picture.h"

namespace ormel {

class GraphRows final : public FactorKind {
 public:
  // The form outlives the rows.
  explicit GraphRows(FactorForm& form);
  static std::unique_ptr<FactorKind> Make(FactorForm& form) {
    return std::make_unique<GraphRows>(form);
  }

  // The factors of all rows.
  std::vector<GraphFactor> Factors() const;

 private:
  FactorForm& form_;

 public:
  ui::ControlArray<ui::ColourSwatch> FColour{form_, "FColour"};
  ui::ControlArray<ui::Picture> PicCW{form_, "PicCW"};  // the curve of a row; a click selects it
  ui::ControlArray<ui::Button> cmdCW{form_, "cmdCW"};
  ui::Button cmdReset{form_, "cmdReset", "Reset Weights"};
  ui::Button cmdViewAll{form_, "cmdViewAll", "View All Weights"};
  ui::FrameControl fraPreview{form_, "fraPreview"};
  ChartPicture preview{form_, form_.App(), "picPreview", 480, 315};
  ui::Label lblYMax{form_, "lblYMax"};
  ui::Label lblYMin{form_, "lblYMin"};

 private:
  void ResizeRows(int count) override;
  void SetRowDefaults(int row) override;
  void CopyRow(int from, int to) override;
  std::vector<ui::LayoutItem> RowHeadings() const override;
  std::vector<ui::LayoutItem> RowCells(int row) override;

  const char* Extension() const override { return "cmf"; }
  std::vector<ui::MenuSpec> ToolMenu() override;
  std::vector<ui::LayoutItem> RowTools() override { return {cmdReset, cmdViewAll}; }
  std::vector<ui::LayoutItem> FurtherFrames() override;
  std::array<std::string, 2> RowFields(int row) const override;
  void SetRowFields(int row, const std::array<std::string, 2>& fields) override;
  // A model that is saved and loaded again has its constraints turned round.
  bool TurnsConstraints() const override { return true; }
  // Saved or not: graphs are much work.
  bool AsksBeforeLoading() const override;
  void FormCleared() override;
  void RowsChanged() override { ShowPreview(); }
  void ModelLoaded() override { SelectRow(1); }

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
