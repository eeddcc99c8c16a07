#include "mce/linear/linear_rows_window.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "mce/linear/model_information.h"
#include "mce/linear/pairwise_window.h"
#include "text/numbers.h"
#include "ui/desktop.h"

namespace ormel {
namespace {

constexpr int kLargestWeight = 32767;
constexpr int kFewestFactorsToCompare = 3;

int Rounded(double value) {
  return static_cast<int>(
      std::clamp<double>(HalfEvenRound(value), -kLargestWeight, kLargestWeight));
}

}  // namespace

LinearRows::LinearRows(FactorForm& form) : form_(form) {
  cmdEigen.SetToolTip("Compare the factors in pairs");
  cmdScale.SetToolTip("Let the sliders run from the smallest weight to the largest");
  cmdEigen.onClick = [this] { DeriveWeights(); };
  cmdScale.onClick = [this] { ScaleWeights(); };
}

std::vector<ui::MenuSpec> LinearRows::ToolMenu() {
  return {{"mEigen", "Derive Weights", "", [this] { DeriveWeights(); }, {}},
          {"mScale", "Scale Weights", "", [this] { ScaleWeights(); }, {}}};
}

std::vector<LinearFactor> LinearRows::Factors() const {
  std::vector<LinearFactor> factors;
  const FactorRows& rows = form_.rows;
  for (int row = 1; row <= rows.Count(); ++row) {
    factors.push_back({{rows.Folder(row), rows.FList(row).Text()},
                       WeightOf(ScrlVal(row).Text()),
                       OptValHigh(row).Chosen()});
  }
  return factors;
}

// ---- Rows ---------------------------------------------------------------------------------------

void LinearRows::ResizeRows(int count) {
  const auto size = static_cast<std::size_t>(count);
  if (directions_.size() > size) directions_.resize(size);
  FWt.Resize(count);
  ScrlVal.Resize(count);
  OptValHigh.Resize(count);
  OptValLow.Resize(count);
  residues_.resize(size);
}

void LinearRows::SetRowDefaults(int row) {
  directions_.push_back(std::make_unique<ui::OptionSet>());
  for (ui::OptionButton* option : {&OptValHigh(row), &OptValLow(row)}) {
    directions_.back()->Add(*option);
    option->onChange = [this] { form_.MarkChanged(); };
  }
  OptValHigh(row).SetCaption("High");
  OptValLow(row).SetCaption("Low");
  OptValHigh(row).Choose();
  OptValHigh(row).SetToolTip("A cell counts with its value");
  OptValLow(row).SetToolTip("A cell counts with 255 less its value");
  FWt(row).SetRange(sliderMinimum_, sliderMaximum_);
  FWt(row).SetSteps(1, 10);
  FWt(row).SetValue(1);
  ScrlVal(row).SetText("1");
  FWt(row).onChange = [this, row] { WeightMoved(row); };
  ScrlVal(row).onChange = [this, row] { WeightTyped(row); };
  ScrlVal(row).onLeave = [this, row] { WeightLeft(row); };
}

void LinearRows::CopyRow(int from, int to) {
  ScrlVal(to).SetText(ScrlVal(from).Text());
  FWt(to).SetValue(FWt(from).Value());
  Residue(to) = Residue(from);
  (OptValHigh(from).Chosen() ? OptValHigh : OptValLow)(to).Choose();
}

std::vector<ui::LayoutItem> LinearRows::RowHeadings() const {
  return {"Weight", "", "Good values", ""};
}

std::vector<ui::LayoutItem> LinearRows::RowCells(int row) {
  return {ui::Share(2, FWt(row)), ScrlVal(row), OptValHigh(row), OptValLow(row)};
}

std::array<std::string, 2> LinearRows::RowFields(int row) const {
  return {ScrlVal(row).Text(), TruthText(OptValHigh(row).Chosen())};
}

void LinearRows::SetRowFields(int row, const std::array<std::string, 2>& fields) {
  SetWeight(row, fields[0]);
  (IsFalse(fields[1]) ? OptValLow : OptValHigh)(row).Choose();
}

// ---- Weights ------------------------------------------------------------------------------------

// The program gives a weight; the slider follows as behind a typed one.
void LinearRows::SetWeight(int row, const std::string& text) {
  ScrlVal(row).SetText(text);
  WeightTyped(row);
}

void LinearRows::WeightTyped(int row) {
  const std::string& text = ScrlVal(row).Text();
  if (!IsNumeric(text)) return;
  double weight = TextToNumber(text);
  if (std::abs(weight) > kLargestWeight) {
    weight = std::copysign(kLargestWeight, weight);
    ScrlVal(row).SetText(NumberText(weight));
    WidenSliders(static_cast<int>(weight));
  }
  const double whole = std::trunc(weight);
  if (weight != FWt(row).Value() + Residue(row)) form_.MarkChanged();
  if (weight >= 0) WidenSliders(static_cast<int>(whole));
  FWt(row).SetValue(Rounded(weight));
  Residue(row) = weight - whole;
}

void LinearRows::WeightLeft(int row) {
  if (IsNumeric(ScrlVal(row).Text())) return;
  ScrlVal(row).SetText(std::to_string(FWt(row).Value()));
  Residue(row) = 0;
}

void LinearRows::WeightMoved(int row) {
  if (Rounded(TextToNumber(ScrlVal(row).Text())) == FWt(row).Value()) return;
  ScrlVal(row).SetText(NumberText(FWt(row).Value() + Residue(row)));
  form_.MarkChanged();
}

void LinearRows::SetSliderRange(int minimum, int maximum) {
  sliderMinimum_ = minimum;
  sliderMaximum_ = maximum;
  for (const auto& slider : FWt) slider->SetRange(minimum, maximum);
}

void LinearRows::WidenSliders(int value) {
  if (value >= sliderMinimum_ && value <= sliderMaximum_) return;
  SetSliderRange(std::min(sliderMinimum_, value), std::max(sliderMaximum_, value));
}

void LinearRows::ScaleWeights() {
  std::vector<int> weights;
  for (const auto& text : ScrlVal) weights.push_back(Rounded(TextToNumber(text->Text())));
  if (weights.empty()) return;
  const auto [smallest, largest] = std::minmax_element(weights.begin(), weights.end());
  SetSliderRange(*smallest, *largest);
}

void LinearRows::DeriveWeights() {
  if (form_.rows.Count() < kFewestFactorsToCompare) {
    form_.App().desktop.Message("You must have at least three factors!");
    return;
  }
  std::vector<std::string> names;
  std::vector<std::string> weights;
  for (int row = 1; row <= form_.rows.Count(); ++row) {
    names.push_back(form_.rows.FList(row).Text());
    weights.push_back(ScrlVal(row).Text());
  }
  FrmEigen comparison(form_.App().desktop, names, weights, form_.App().settings.decimalPlaces,
                      [this](const std::vector<std::string>& derived) {
                        int row = 0;
                        for (const std::string& weight : derived) SetWeight(++row, weight);
                      });
  form_.App().desktop.ShowModal(comparison, &form_);
}

}  // namespace ormel
