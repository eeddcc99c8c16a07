#include "mce/linear/model_builder_window.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "mce/linear/composite_map_window.h"
#include "mce/linear/model_information.h"
#include "mce/linear/pairwise_window.h"
#include "text/numbers.h"

namespace ormel {
namespace {

constexpr int kLargestWeight = 32767;
constexpr int kFewestFactorsToCompare = 3;

int Rounded(double value) {
  return static_cast<int>(
      std::clamp<double>(HalfEvenRound(value), -kLargestWeight, kLargestWeight));
}

}  // namespace

FrmBuild::FrmBuild(AppContext& app)
    : BuilderWindow(app, "frmBuild", "Build a Model", "mif",
                    {{"mEigen", "Derive Weights", "", [this] { DeriveWeights(); }, {}},
                     {"mScale", "Scale Weights", "", [this] { ScaleWeights(); }, {}}}) {
  cmdEigen.SetToolTip("Compare the factors in pairs");
  cmdScale.SetToolTip("Let the sliders run from the smallest weight to the largest");
  cmdEigen.onClick = [this] { DeriveWeights(); };
  cmdScale.onClick = [this] { ScaleWeights(); };
  Begin();
}

// ---- Rows ---------------------------------------------------------------------------------------

void FrmBuild::ResizeRows(int count) {
  const auto size = static_cast<std::size_t>(count);
  if (directions_.size() > size) directions_.resize(size);
  FWt.Resize(count);
  ScrlVal.Resize(count);
  OptValHigh.Resize(count);
  OptValLow.Resize(count);
  residues_.resize(size);
}

void FrmBuild::SetRowDefaults(int row) {
  directions_.push_back(std::make_unique<ui::OptionSet>());
  for (ui::OptionButton* option : {&OptValHigh(row), &OptValLow(row)}) {
    directions_.back()->Add(*option);
    option->onChange = [this] { MarkChanged(); };
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

void FrmBuild::CopyRow(int from, int to) {
  ScrlVal(to).SetText(ScrlVal(from).Text());
  FWt(to).SetValue(FWt(from).Value());
  Residue(to) = Residue(from);
  (OptValHigh(from).Chosen() ? OptValHigh : OptValLow)(to).Choose();
}

std::vector<ui::LayoutItem> FrmBuild::RowHeadings() const {
  return {"Weight", "", "Good values", ""};
}

std::vector<ui::LayoutItem> FrmBuild::RowCells(int row) {
  return {ui::Share(2, FWt(row)), ScrlVal(row), OptValHigh(row), OptValLow(row)};
}

std::vector<ui::LayoutItem> FrmBuild::RowTools() { return {cmdEigen, cmdScale}; }

std::array<std::string, 2> FrmBuild::RowFields(int row) const {
  return {ScrlVal(row).Text(), TruthText(OptValHigh(row).Chosen())};
}

void FrmBuild::SetRowFields(int row, const std::array<std::string, 2>& fields) {
  SetWeight(row, fields[0]);
  (IsFalse(fields[1]) ? OptValLow : OptValHigh)(row).Choose();
}

// ---- Weights ------------------------------------------------------------------------------------

// The program gives a weight; the slider follows as behind a typed one.
void FrmBuild::SetWeight(int row, const std::string& text) {
  ScrlVal(row).SetText(text);
  WeightTyped(row);
}

void FrmBuild::WeightTyped(int row) {
  const std::string& text = ScrlVal(row).Text();
  if (!IsNumeric(text)) return;
  double weight = TextToNumber(text);
  if (std::abs(weight) > kLargestWeight) {
    weight = std::copysign(kLargestWeight, weight);
    ScrlVal(row).SetText(NumberText(weight));
    WidenSliders(static_cast<int>(weight));
  }
  const double whole = std::trunc(weight);
  if (weight != FWt(row).Value() + Residue(row)) MarkChanged();
  if (weight >= 0) WidenSliders(static_cast<int>(whole));
  FWt(row).SetValue(Rounded(weight));
  Residue(row) = weight - whole;
}

void FrmBuild::WeightLeft(int row) {
  if (IsNumeric(ScrlVal(row).Text())) return;
  ScrlVal(row).SetText(std::to_string(FWt(row).Value()));
  Residue(row) = 0;
}

void FrmBuild::WeightMoved(int row) {
  if (Rounded(TextToNumber(ScrlVal(row).Text())) == FWt(row).Value()) return;
  ScrlVal(row).SetText(NumberText(FWt(row).Value() + Residue(row)));
  MarkChanged();
}

void FrmBuild::SetSliderRange(int minimum, int maximum) {
  sliderMinimum_ = minimum;
  sliderMaximum_ = maximum;
  for (const auto& slider : FWt) slider->SetRange(minimum, maximum);
}

void FrmBuild::WidenSliders(int value) {
  if (value >= sliderMinimum_ && value <= sliderMaximum_) return;
  SetSliderRange(std::min(sliderMinimum_, value), std::max(sliderMaximum_, value));
}

void FrmBuild::ScaleWeights() {
  std::vector<int> weights;
  for (const auto& text : ScrlVal) weights.push_back(Rounded(TextToNumber(text->Text())));
  if (weights.empty()) return;
  const auto [smallest, largest] = std::minmax_element(weights.begin(), weights.end());
  SetSliderRange(*smallest, *largest);
}

void FrmBuild::DeriveWeights() {
  if (rows.Count() < kFewestFactorsToCompare) {
    app_.desktop.Message("You must have at least three factors!");
    return;
  }
  std::vector<std::string> names;
  std::vector<std::string> weights;
  for (int row = 1; row <= rows.Count(); ++row) {
    names.push_back(rows.FList(row).Text());
    weights.push_back(ScrlVal(row).Text());
  }
  FrmEigen comparison(app_.desktop, names, weights, app_.settings.decimalPlaces,
                      [this](const std::vector<std::string>& derived) {
                        int row = 0;
                        for (const std::string& weight : derived) SetWeight(++row, weight);
                      });
  app_.desktop.ShowModal(comparison, this);
}

// ---- On to the viewer ---------------------------------------------------------------------------

LinearModel FrmBuild::Model() const {
  LinearModel model;
  for (int row = 1; row <= rows.Count(); ++row) {
    model.factors.push_back({{rows.Folder(row), rows.FList(row).Text()},
                             WeightOf(ScrlVal(row).Text()),
                             OptValHigh(row).Chosen()});
  }
  model.constraints = constraints.Paths();
  model.title = txtTitle.Text();
  model.palette = palette.Path();
  return model;
}

std::unique_ptr<GeneratorWindow> FrmBuild::MakeViewer() {
  return std::make_unique<FrmDraw>(app_, std::make_shared<const LinearModel>(Model()));
}

}  // namespace ormel
