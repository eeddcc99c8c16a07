// The window "Derive Factor Weights": the factors of a model compared in pairs.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "ui/window.h"

namespace ormel {

// Rows and columns count from 1. The cell of row i and column j, txtCompare((i - 1) * n + j), says
// how much more important factor i is than factor j. Cells below the diagonal can be typed into;
// each changes its mirror.
class FrmEigen final : public ui::Window {
 public:
  using TakeWeights = std::function<void(const std::vector<std::string>&)>;

  // `names` are the files of the factors (empty: none yet) and `weights` the texts of their
  // weights, one each. `take` gets the texts of the derived weights, before the window closes.
  FrmEigen(ui::Desktop& desktop, const std::vector<std::string>& names,
           std::vector<std::string> weights, int decimalPlaces, TakeWeights take);

  ui::ControlArray<ui::Label> lblLeft{*this, "lblLeft"};
  ui::ControlArray<ui::Label> lblTop{*this, "lblTop"};
  ui::ControlArray<ui::TextBox> txtCompare{*this, "txtCompare"};
  ui::ScrollBar HScrl{*this, "HScrl", false};
  ui::ScrollBar VScrl{*this, "VScrl"};
  ui::ListBox lstLegend{*this, "lstLegend"};
  ui::Label lblHint{*this, "lblHint"};
  ui::Button cmdAutoFill{*this, "cmdAutoFill", "&AutoFill"};
  ui::Button cmdReset{*this, "cmdReset", "&Reset"};
  ui::Button cmdCompute{*this, "cmdCompute", "&Calculate"};
  ui::Button cmdExit{*this, "cmdExit", "E&xit"};

 private:
  void LayOut();
  void MakeCells();
  int CellIndex(int row, int column) const { return (row - 1) * n_ + column; }
  std::string RatioText(int row, int column) const;

  void CellEntered(int index);
  void CellChanged(int index);
  void CellLeft(int index);
  void AutoFill();
  void Reset();
  void Compute();

  ui::Desktop& desktop_;
  const int n_;
  std::vector<std::string> names_;  // as the legend calls them
  const std::vector<std::string> weights_;
  const int decimalPlaces_;
  const TakeWeights take_;
  std::string textBefore_;  // of the cell in which the person is, when it was entered
};

}  // namespace ormel
