#include "mce/linear/pairwise_window.h"

#include <algorithm>
#include <utility>

#include "mce/linear/pairwise_weights.h"
#include "text/numbers.h"
#include "ui/desktop.h"

namespace ormel {
namespace {

constexpr int kCellsShown = 12;  // each way; the scroll bars move them
constexpr std::size_t kEnding = 4;
constexpr char kHelp[] =
    "Type below the diagonal how much more important the left factor is: 3 or 3/2.";

std::string LegendName(const std::string& file, int number) {
  return file.size() > kEnding ? file.substr(0, file.size() - kEnding)
                               : "Factor " + std::to_string(number);
}

}  // namespace

FrmEigen::FrmEigen(ui::Desktop& desktop, const std::vector<std::string>& names,
                   std::vector<std::string> weights, int decimalPlaces, TakeWeights take)
    : Window("frmEigen", "Derive Factor Weights"),
      desktop_(desktop),
      n_(static_cast<int>(names.size())),
      weights_(std::move(weights)),
      decimalPlaces_(decimalPlaces),
      take_(std::move(take)) {
  for (int i = 1; i <= n_; ++i) {
    names_.push_back(LegendName(names[static_cast<std::size_t>(i - 1)], i));
    lstLegend.Add(std::to_string(i) + ": " + names_.back());
  }
  MakeCells();
  for (ui::ScrollBar* bar : {&HScrl, &VScrl}) {
    bar->SetRange(0, std::max(0, n_ - kCellsShown));
    bar->SetVisible(n_ > kCellsShown);
    bar->onChange = [this] { LayOut(); };
  }
  lblHint.SetCaption(kHelp);
  cmdAutoFill.SetToolTip("Fill the matrix from the present weights");
  cmdReset.SetToolTip("All factors equally important");
  cmdCompute.SetDefault();
  cmdExit.SetCancel();
  cmdAutoFill.onClick = [this] { AutoFill(); };
  cmdReset.onClick = [this] { Reset(); };
  cmdCompute.onClick = [this] { Compute(); };
  cmdExit.onClick = [this] { desktop_.Close(*this); };
  LayOut();
}

void FrmEigen::MakeCells() {
  lblLeft.Resize(n_);
  lblTop.Resize(n_);
  txtCompare.Resize(n_ * n_);
  for (int i = 1; i <= n_; ++i) {
    lblLeft(i).SetCaption(std::to_string(i));
    lblTop(i).SetCaption(std::to_string(i));
    for (int j = 1; j <= n_; ++j) {
      const int index = CellIndex(i, j);
      ui::TextBox& cell = txtCompare(index);
      cell.SetText(i == j ? "1" : RatioText(i, j));
      cell.SetReadOnly(j >= i);
      cell.onEnter = [this, index] { CellEntered(index); };
      if (j >= i) continue;
      cell.onChange = [this, index] { CellChanged(index); };
      cell.onLeave = [this, index] { CellLeft(index); };
    }
  }
}

void FrmEigen::LayOut() {
  const int firstRow = VScrl.Value() + 1;
  const int lastRow = std::min(n_, VScrl.Value() + kCellsShown);
  const int firstColumn = HScrl.Value() + 1;
  const int lastColumn = std::min(n_, HScrl.Value() + kCellsShown);
  ui::Table matrix{};
  ui::Row top{""};
  for (int j = firstColumn; j <= lastColumn; ++j) top.items.emplace_back(lblTop(j));
  matrix.items.push_back(top);
  for (int i = firstRow; i <= lastRow; ++i) {
    ui::Row cells{lblLeft(i)};
    for (int j = firstColumn; j <= lastColumn; ++j) {
      cells.items.emplace_back(txtCompare(CellIndex(i, j)));
    }
    matrix.items.push_back(cells);
  }
  SetLayout(ui::Column{ui::Share(1, ui::Row{ui::Share(3, ui::Column{matrix, HScrl, ui::Stretch{}}),
                                            VScrl, ui::Share(1, ui::Frame{"Factors", lstLegend})}),
                       lblHint,
                       ui::Row{cmdAutoFill, cmdReset, ui::Stretch{}, cmdCompute, cmdExit}});
}

std::string FrmEigen::RatioText(int row, int column) const {
  return weights_[static_cast<std::size_t>(row - 1)] + "/" +
         weights_[static_cast<std::size_t>(column - 1)];
}

void FrmEigen::CellEntered(int index) {
  textBefore_ = txtCompare(index).Text();
  const auto row = static_cast<std::size_t>((index - 1) / n_);
  const auto column = static_cast<std::size_t>((index - 1) % n_);
  lblHint.SetCaption("Relative Importance of " + names_[row] + " to " + names_[column]);
}

// A value without a reciprocal leaves the mirror alone.
void FrmEigen::CellChanged(int index) {
  const int row = (index - 1) / n_ + 1;
  const int column = (index - 1) % n_ + 1;
  const std::string mirrored = ReciprocalText(txtCompare(index).Text(), decimalPlaces_);
  if (!mirrored.empty()) txtCompare(CellIndex(column, row)).SetText(mirrored);
}

void FrmEigen::CellLeft(int index) {
  const std::string& text = txtCompare(index).Text();
  const bool number = IsComparison(text);
  if (number && ComparisonValue(text) != 0) return;
  desktop_.Message(number ? "Zero is not a valid weight!" : "Not A Valid Number!");
  txtCompare(index).SetText(textBefore_);
  CellChanged(index);
}

void FrmEigen::AutoFill() {
  for (int i = 2; i <= n_; ++i) {
    for (int j = 1; j < i; ++j) {
      txtCompare(CellIndex(i, j)).SetText(RatioText(i, j));
      CellChanged(CellIndex(i, j));
    }
  }
}

void FrmEigen::Reset() {
  for (const auto& cell : txtCompare) cell->SetText("1");
}

void FrmEigen::Compute() {
  std::vector<double> values;
  for (const auto& cell : txtCompare) values.push_back(ComparisonValue(cell->Text()));
  std::vector<std::string> texts;
  for (const double weight : DeriveWeights(values, n_)) {
    texts.push_back(NumberText(HalfEvenRound(weight, decimalPlaces_)));
  }
  take_(texts);
  desktop_.Close(*this);
}

}  // namespace ormel
