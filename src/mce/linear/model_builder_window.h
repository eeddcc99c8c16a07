// The builder of linear models, "Build a Model": every factor has a weight, and high or low values
// are good.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "mce/builder_window.h"
#include "mce/linear/linear_model.h"

namespace ormel {

class FrmBuild final : public BuilderWindow {
 public:
  // Shown by its owner; the model runs from now on until the window closes.
  explicit FrmBuild(AppContext& app);

  // Loads the model file at `path`; asks for one when it is empty.
  void loadmif(const std::string& path) { LoadModel(path); }

  ui::ControlArray<ui::Slider> FWt{*this, "FWt"};
  ui::ControlArray<ui::TextBox> ScrlVal{*this, "ScrlVal"};
  ui::ControlArray<ui::OptionButton> OptValHigh{*this, "OptValHigh"};
  ui::ControlArray<ui::OptionButton> OptValLow{*this, "OptValLow"};
  ui::Button cmdEigen{*this, "cmdEigen", "Derive Weights"};
  ui::Button cmdScale{*this, "cmdScale", "Scale Weights"};

 private:
  void ResizeRows(int count) override;
  void SetRowDefaults(int row) override;
  void CopyRow(int from, int to) override;
  std::vector<ui::LayoutItem> RowHeadings() const override;
  std::vector<ui::LayoutItem> RowCells(int row) override;
  std::vector<ui::LayoutItem> RowTools() override;
  std::array<std::string, 2> RowFields(int row) const override;
  void SetRowFields(int row, const std::array<std::string, 2>& fields) override;
  std::unique_ptr<GeneratorWindow> MakeViewer() override;

  double& Residue(int row) { return residues_[static_cast<std::size_t>(row - 1)]; }
  void SetWeight(int row, const std::string& text);
  void WeightTyped(int row);
  void WeightLeft(int row);
  void WeightMoved(int row);
  void SetSliderRange(int minimum, int maximum);
  void WidenSliders(int value);
  void ScaleWeights();
  void DeriveWeights();
  LinearModel Model() const;

  std::vector<std::unique_ptr<ui::OptionSet>> directions_;
  // What a slider leaves out of its row's weight text, which may have decimals.
  std::vector<double> residues_;
  int sliderMinimum_ = 1;
  int sliderMaximum_ = 100;
};

}  // namespace ormel
