// The part of a window in which a weight graph is edited: a plot, the six types with their
// parameters and ready-made shapes, control points that are dragged, typed or moved by keys, and
// graph files. Whatever is done takes effect on the graph at once.
//
// What the axis means the window says: the values of a factor's cells, or the steps of a time
// series.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "mce/nonlinear/graph_forms_window.h"
#include "mce/nonlinear/graph_plot.h"
#include "mce/nonlinear/weight_graph.h"
#include "parts/app_context.h"
#include "parts/chart_picture.h"
#include "ui/window.h"

namespace ormel {

// What differs between the axes.
struct GraphEditorSpec {
  GraphAxis axis;
  const char* placeLabel = "lblPlace";  // the name of the read-out of places
  // A count of points that is refused before the general limits are looked at; empty: none is.
  int mostPoints = kMostGraphPoints;
  std::string mostPointsText{};
  const char* pointsWord = "points";  // what the points of a table are set against
};

class GraphEditor {
 public:
  // Window, program and graph outlive the editor.
  GraphEditor(ui::Window& window, AppContext& app, GraphEditorSpec spec, WeightGraph& graph);

  // Another axis from now on; Show() follows.
  void SetSpec(GraphEditorSpec spec) { spec_ = std::move(spec); }

  // Edits this graph from now on. Its samples are computed anew.
  void Show(WeightGraph& graph);

  // Other curves in the plot, until the graph is edited or another one shown.
  void ShowCurves(const PlotFrame& frame, std::vector<PlotCurve> curves);

  // Everything but the buttons of graph files and of the plot's picture.
  ui::LayoutItem Area();

  // Where a person begins.
  ui::Control& FirstControl() { return ShowsPoints() ? plot.picture : forms_.FirstField(); }

  ChartPicture plot;
  ui::Label lblYMax;
  ui::Label lblYavg;
  ui::Label lblYMin;
  ui::Label lblPlace;   // under the mouse
  ui::Label lblWeight;  // of that place
  ui::Label lblHint;
  ui::TextBox txtPointMax;
  ui::TextBox txtPointMin;
  ui::SpinButton updPoint;     // the selected control point
  ui::Label lblPoint;          // its number
  ui::TextBox txtPointWeight;  // and its weight
  ui::Button cmdPoints;
  ui::Button cmdLoadCSV;
  ui::Button cmdSaveCSV;
  ui::Button cmdLoad;
  ui::Button cmdSave;

 private:
  void ConnectHandlers();
  PlotFrame Frame() const;
  void Draw();
  void ShowPlotLimits(const PlotFrame& frame);
  bool ShowsPoints() const { return forms_.Shown() == GraphType::kCustom; }

  void TakeType(GraphType type);
  void Refresh(bool computed);
  void TakeParameters(const GraphParameters& parameters);

  // Control points, from 1.
  double TopTyped() const;
  double BottomTyped() const;
  void ShowLimits(double top, double bottom);
  void ComputePoints();
  void SelectPoint(int index);
  void ShowPoint();
  void MovePoint(double weight);
  void AskPointCount();

  void UseMouse(const ui::MouseEvent& event);
  void ReadOut(double place);
  void UseKey(const std::string& key);

  void LoadCsv();
  void SaveCsv();
  void LoadGraph();
  void SaveGraph();

  AppContext& app_;
  ui::Window& window_;
  GraphEditorSpec spec_;
  WeightGraph* graph_;
  GraphForms forms_;
  int selected_ = 1;
  double pointer_ = -1;                   // place under the mouse; -1: none
  std::optional<PlotFrame> dragFrame_;    // stands still while a point is dragged
  std::optional<PlotFrame> curvesFrame_;  // while other curves are shown
  std::vector<PlotCurve> curves_;
};

}  // namespace ormel
