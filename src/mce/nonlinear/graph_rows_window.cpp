#include "mce/nonlinear/graph_rows_window.h"

#include <algorithm>
#include <utility>

#include "mce/nonlinear/graph_plot.h"
#include "mce/nonlinear/weight_window.h"
#include "text/numbers.h"
#include "ui/desktop.h"

namespace ormel {
namespace {

constexpr int kPictureWidth = 90;
constexpr int kPictureHeight = 26;
constexpr int kLimitPlaces = 2;  // of the labels

Extremes LimitsOf(const WeightGraph& graph) {
  const auto [low, high] = std::minmax_element(graph.samples.begin(), graph.samples.end());
  return {*high, *low};
}

}  // namespace

GraphRows::GraphRows(FactorForm& form) : form_(form) {
  cmdReset.SetToolTip("Let every value of every factor weigh itself");
  cmdViewAll.SetToolTip("Draw the graphs of all factors in one scale");
  cmdReset.onClick = [this] { ResetWeights(); };
  cmdViewAll.onClick = [this] { ViewAllWeights(); };
}

std::vector<ui::MenuSpec> GraphRows::ToolMenu() {
  return {{"mReset", "Reset Weights", "", [this] { ResetWeights(); }, {}},
          {"mViewAll", "View All Weights", "", [this] { ViewAllWeights(); }, {}}};
}

std::vector<GraphFactor> GraphRows::Factors() const {
  std::vector<GraphFactor> factors;
  const FactorRows& rows = form_.rows;
  for (int row = 1; row <= rows.Count(); ++row) {
    factors.push_back({{rows.Folder(row), rows.FList(row).Text()}, Weight(row)});
  }
  return factors;
}

// ---- Rows ---------------------------------------------------------------------------------------

void GraphRows::ResizeRows(int count) {
  FColour.Resize(count);
  PicCW.Resize(count);
  cmdCW.Resize(count);
  weights_.resize(static_cast<std::size_t>(count));
}

// A new factor weighs all values alike, but the first one of a cleared form begins as itself.
void GraphRows::SetRowDefaults(int row) {
  Weight(row) = {FactorColour(row), {}};
  if (row == 1 && wasCleared_) ResetToIdentity(Weight(row).graph);
  FColour(row).SetToolTip("Colour of the factor's curve; click to change it");
  FColour(row).onClick = [this, row] { PickColour(row); };
  PicCW(row).SetStripHeight(kPictureHeight);
  PicCW(row).SetToolTip("The factor's weight graph; click to see it below");
  PicCW(row).SetPainter(kPictureWidth, kPictureHeight, [this, row](Canvas& canvas) {
    DrawCurvePicture(canvas, Weight(row).graph, row == selected_ && !viewsAll_);
  });
  PicCW(row).onClick = [this, row] { SelectRow(row); };
  PicCW(row).onDoubleClick = [this, row] { CustomizeWeight(row); };
  cmdCW(row).SetCaption("Customize Weight");
  cmdCW(row).onClick = [this, row] { CustomizeWeight(row); };
  FColour(row).SetColour(Weight(row).colour);
}

void GraphRows::CopyRow(int from, int to) {
  Weight(to) = Weight(from);
  FColour(to).SetColour(Weight(to).colour);
}

std::vector<ui::LayoutItem> GraphRows::RowHeadings() const { return {"", "Weight graph", ""}; }

std::vector<ui::LayoutItem> GraphRows::RowCells(int row) {
  return {FColour(row), ui::Share(1, PicCW(row)), cmdCW(row)};
}

std::vector<ui::LayoutItem> GraphRows::FurtherFrames() {
  return {ui::Share(
      4, ui::Frame{fraPreview, preview.picture, preview.lblRead,
                   ui::Row{"Lowest:", lblYMin, ui::Stretch{}, "Highest:", lblYMax, ui::Stretch{},
                           preview.buttons.cmdCopy, preview.buttons.cmdSave}})};
}

std::array<std::string, 2> GraphRows::RowFields(int row) const { return FieldsOf(Weight(row)); }

void GraphRows::SetRowFields(int row, const std::array<std::string, 2>& fields) {
  TakeFields(fields, Weight(row));
  FColour(row).SetColour(Weight(row).colour);
}

bool GraphRows::AsksBeforeLoading() const {
  const std::vector<bool> free = form_.rows.Free();
  return form_.Changed() || form_.constraints.list.Count() > 0 ||
         std::find(free.begin(), free.end(), false) != free.end();
}

void GraphRows::FormCleared() {
  wasCleared_ = true;
  viewsAll_ = false;
  selected_ = 1;
}

std::string GraphRows::RowName(int row) const {
  return form_.rows.IsFree(row) ? "Factor " + std::to_string(row) : form_.rows.FList(row).Text();
}

void GraphRows::PickColour(int row) {
  const auto colour = form_.App().desktop.PickColour("Select Factor Color", Weight(row).colour);
  if (!colour) return;
  Weight(row).colour = *colour;
  FColour(row).SetColour(*colour);
  form_.MarkChanged();
  ShowPreview();
}

// ---- Graphs -------------------------------------------------------------------------------------

void GraphRows::SelectRow(int row) {
  selected_ = row;
  viewsAll_ = false;
  ShowPreview();
}

void GraphRows::CustomizeWeight(int row) {
  SelectRow(row);
  FrmWeight editor(form_.App(), RowName(row), Weight(row).graph, [this] { GraphsChanged(); });
  form_.App().desktop.ShowModal(editor, &form_);
}

void GraphRows::GraphsChanged() {
  form_.MarkChanged();
  ShowPreview();
}

void GraphRows::ResetWeights() {
  for (GraphWeight& weight : weights_) ResetToIdentity(weight.graph);
  viewsAll_ = false;
  GraphsChanged();
}

void GraphRows::ViewAllWeights() {
  viewsAll_ = true;
  ShowPreview();
}

// The selected row, or all that have a map; those without one take no part in the model.
std::vector<int> GraphRows::RowsOnShow() const {
  std::vector<int> shown;
  for (int row = 1; viewsAll_ && row <= form_.rows.Count(); ++row) {
    if (!form_.rows.IsFree(row)) shown.push_back(row);
  }
  if (shown.empty() && selected_ <= form_.rows.Count()) shown.push_back(selected_);
  return shown;
}

void GraphRows::ShowPreview() {
  selected_ = std::clamp(selected_, 1, std::max(form_.rows.Count(), 1));
  Extremes limits;
  for (const int row : RowsOnShow()) limits.Add(LimitsOf(Weight(row).graph));
  if (!limits.Any()) limits = {kTopValue, 0};
  lblYMax.SetCaption(NumberText(HalfEvenRound(limits.largest, kLimitPlaces)));
  lblYMin.SetCaption(NumberText(HalfEvenRound(limits.smallest, kLimitPlaces)));
  fraPreview.SetCaption(viewsAll_ ? "All weight graphs" : "Weight graph of " + RowName(selected_));
  GraphPlot plot{FactorValueAxis()};
  for (const int row : RowsOnShow()) {
    plot.curves.push_back({Weight(row).graph.samples, Weight(row).colour, RowName(row)});
  }
  Chart chart = WeightChart({limits.largest, limits.smallest}, plot);
  chart.frame.reset();
  preview.Show(std::move(chart));
  for (const auto& picture : PicCW) picture->Repaint();
}

}  // namespace ormel
