// What the rows of linear factors hold beside their maps: a weight with its slider, and whether
// high or low values are good.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "mce/factor_form_window.h"
#include "mce/linear/linear_model.h"

namespace ormel {

class LinearRows final : public FactorKind {
 public:
  // The form outlives the rows.
  explicit LinearRows(FactorForm& form);
  static std::unique_ptr<FactorKind> Make(FactorForm& form) {
    return std::make_unique<LinearRows>(form);
  }

  // The factors of all rows.
  std::vector<LinearFactor> Factors() const;

 private:
  FactorForm& form_;

 public:
  ui::ControlArray<ui::Slider> FWt{form_, "FWt"};
  ui::ControlArray<ui::TextBox> ScrlVal{form_, "ScrlVal"};
  ui::ControlArray<ui::OptionButton> OptValHigh{form_, "OptValHigh"};
  ui::ControlArray<ui::OptionButton> OptValLow{form_, "OptValLow"};
  ui::Button cmdEigen{form_, "cmdEigen", "Derive Weights"};
  ui::Button cmdScale{form_, "cmdScale", "Scale Weights"};

 private:
  void ResizeRows(int count) override;
  void SetRowDefaults(int row) override;
  void CopyRow(int from, int to) override;
  std::vector<ui::LayoutItem> RowHeadings() const override;
  std::vector<ui::LayoutItem> RowCells(int row) override;

  const char* Extension() const override { return "mif"; }
  std::vector<ui::MenuSpec> ToolMenu() override;
  std::vector<ui::LayoutItem> RowTools() override { return {cmdEigen, cmdScale}; }
  std::array<std::string, 2> RowFields(int row) const override;
  void SetRowFields(int row, const std::array<std::string, 2>& fields) override;
  bool AsksBeforeLoading() const override { return form_.Changed(); }

  double& Residue(int row) { return residues_[static_cast<std::size_t>(row - 1)]; }
  void SetWeight(int row, const std::string& text);
  void WeightTyped(int row);
  void WeightLeft(int row);
  void WeightMoved(int row);
  void SetSliderRange(int minimum, int maximum);
  void WidenSliders(int value);
  void ScaleWeights();
  void DeriveWeights();

  std::vector<std::unique_ptr<ui::OptionSet>> directions_;
  // What a slider leaves out of its row's weight text, which may have decimals.
  std::vector<double> residues_;
  int sliderMinimum_ = 1;
  int sliderMaximum_ = 100;
};

}  // namespace ormel
