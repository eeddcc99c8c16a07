#include "mce/timestep/step_weights_window.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "mce/nonlinear/graph_text.h"
#include "mce/timestep/step_weights.h"
#include "ui/desktop.h"

namespace ormel {
namespace {

constexpr int kMostTicks = 60;  // of which the plot shows as many as have room

}  // namespace

FrmTS3::FrmTS3(AppContext& app, StepWizard& wizard)
    : Window("frmTS3", "Time Step Information - Step 4/5"),
      app_(app),
      wizard_(wizard),
      none_(NewStepGraph(2)),
      editor(*this, app, Spec(), none_) {
  lstFactors.onSelect = [this] { SelectFactor(); };
  cmdShowAll.SetToolTip("Draw the weights of all factors in one scale");
  cmdShowAll.onClick = [this] { ShowAll(); };
  cmdReset.SetToolTip("Let this factor weigh the same at every step");
  cmdReset.onClick = [this] { Reset(); };
  parts_.cmdNext.onClick = [this] { Next(); };
  using ui::Column, ui::Frame, ui::Row, ui::Share, ui::Stretch;
  SetLayout(Column{
      Share(1,
            Row{Share(1, Frame{"Factors", Share(1, lstFactors), Row{cmdShowAll, cmdReset}}),
                Share(5, Column{Share(1, editor.Area()), Row{"First step:", lblStartDate, Stretch{},
                                                             "Last step:", lblEndDate}})}),
      Row{editor.cmdLoad, editor.cmdSave, editor.plot.buttons.cmdCopy, editor.plot.buttons.cmdSave,
          Stretch{}, parts_.Buttons()}});
}

GraphEditorSpec FrmTS3::Spec() const {
  GraphEditorSpec spec;
  spec.axis.title = "Date";
  const std::vector<std::string> dates = dates_;
  const int last = std::max(Steps() - 1, 1);
  const int stride = last / kMostTicks + 1;
  for (int i = 0; i < Steps(); i += stride) {
    spec.axis.ticks.push_back(
        {static_cast<double>(i) / last, dates[static_cast<std::size_t>(i)], {}});
  }
  spec.axis.textAt = [dates, last](double place) {
    if (dates.empty()) return std::string();
    return dates[static_cast<std::size_t>(std::lround(place * last))];
  };
  spec.placeLabel = "lblCurDate";
  spec.mostPoints = Steps();
  spec.mostPointsText = "Number of points must be between 2 and your number of time steps!";
  spec.pointsWord = "time steps";
  return spec;
}

// ---- Factors and dates --------------------------------------------------------------------------

FrmTS3::Item* FrmTS3::Selected() {
  const int index = lstFactors.FirstSelected();
  return index == 0 ? nullptr : &items_[static_cast<std::size_t>(index - 1)];
}

void FrmTS3::Fit(const std::vector<ListedFactor>& factors, const std::vector<std::string>& dates) {
  const int selected = std::max(lstFactors.FirstSelected(), 1);
  const int steps = static_cast<int>(dates.size());
  std::deque<Item> items;
  for (const ListedFactor& factor : factors) {
    const auto known = std::find_if(items_.begin(), items_.end(), [&](const Item& item) {
      return item.factor.path == factor.path;
    });
    items.push_back({factor, known == items_.end() ? NewStepGraph(steps) : known->graph});
    FitToSteps(items.back().graph, steps);
  }
  editor.Show(none_);
  items_ = std::move(items);
  dates_ = dates;
  lblStartDate.SetCaption(dates.front());
  lblEndDate.SetCaption(dates.back());
  editor.SetSpec(Spec());
  std::vector<std::string> names;
  for (const Item& item : items_) names.push_back(item.factor.name);
  lstFactors.SetItems(std::move(names));
  lstFactors.SetSelected({std::min(selected, lstFactors.Count())});
  SelectFactor();
}

void FrmTS3::Put(const std::vector<ModelTextFactor>& factors,
                 const std::vector<std::string>& graphs, int steps) {
  items_.clear();
  for (std::size_t i = 0; i < std::min(factors.size(), graphs.size()); ++i) {
    items_.push_back({{factors[i].path, ""}, NewStepGraph(steps)});
    (void)graphFromText(graphs[i], items_.back().graph);
  }
}

std::vector<std::string> FrmTS3::Text() const {
  std::vector<std::string> texts;
  for (const Item& item : items_)
    texts.push_back(Wri(item.graph, StepWeights(item.graph, Steps())));
  return texts;
}

std::vector<WeightGraph> FrmTS3::Graphs() const {
  std::vector<WeightGraph> graphs;
  for (const Item& item : items_) graphs.push_back(item.graph);
  return graphs;
}

// ---- The plot -----------------------------------------------------------------------------------

// What is edited takes effect at once: the graph of the factor that is left needs nothing more.
void FrmTS3::SelectFactor() {
  if (Item* item = Selected()) editor.Show(item->graph);
}

void FrmTS3::ShowAll() {
  const ui::Answer answer =
      app_.desktop.Ask("Do you wish to scale time steps weights by individual factor weights",
                       ui::kProgramTitle, ui::Buttons::kYesNoCancel);
  if (answer == ui::Answer::kCancel) return;
  Extremes limits;
  std::vector<PlotCurve> curves;
  for (const Item& item : items_) {
    const double by = answer == ui::Answer::kYes ? item.factor.weight : 1;
    limits.Add(by * item.graph.topValue);
    limits.Add(by * item.graph.bottomValue);
    PlotCurve curve{item.graph.samples, item.factor.colour, item.factor.name};
    for (double& sample : curve.samples) sample *= by;
    curves.push_back(std::move(curve));
  }
  editor.ShowCurves({limits.largest, limits.smallest}, std::move(curves));
}

void FrmTS3::Reset() {
  Item* item = Selected();
  if (item == nullptr) return;
  item->graph = NewStepGraph(Steps());
  editor.Show(item->graph);
}

bool FrmTS3::Next() {
  wizard_.WeightsDone();
  return true;
}

}  // namespace ormel
