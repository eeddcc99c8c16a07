#include "mce/nonlinear/graph_editor_window.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <utility>

#include "mce/nonlinear/graph_csv.h"
#include "mce/nonlinear/graph_text.h"
#include "text/numbers.h"
#include "ui/desktop.h"
#include "ui/save_dialog.h"

namespace ormel {
namespace {

constexpr char kCsvFilter[] = "Comma Separated Values File (.csv)|*.csv";
constexpr char kGraphFilter[] = "Graph Information (.gri)|*.gri";
// Graph files have always asked under the title of model files.
constexpr char kOverwriteTitle[] = "Save Model Information";
constexpr int kWeightPlaces = 3;  // of points that are moved
constexpr double kSmallestMove = 0.001;

// What helps with each type, and why one of its curves cannot be computed.
constexpr struct {
  const char* help;
  const char* fault;
} kHints[kGraphTypes] = {
    {"A straight line from the first to the last weight.", "These weights are too large."},
    {"The vertex lies in the middle of the axis.", "These weights are too large."},
    {"Center and deviation are parts of the axis: 0.5 is its middle.",
     "A deviation of 0 has no curve; the last one stays."},
    {"The period is a part of twice the axis, the phase in radians.",
     "A period of 0 has no curve; the last one stays."},
    {"Larger rates bend the curve more.", "This growth rate has no curve; the last one stays."},
    {"Drag a point, or use the arrow keys in the plot.", "These weights are too large."},
};

}  // namespace

GraphEditor::GraphEditor(ui::Window& window, AppContext& app, GraphEditorSpec spec,
                         WeightGraph& graph)
    : plot(window, app, "picPlot", PlotFrame::kWidth, PlotFrame::kHeight),
      lblYMax(window, "lblYMax"),
      lblYavg(window, "lblYavg"),
      lblYMin(window, "lblYMin"),
      lblPlace(window, spec.placeLabel),
      lblWeight(window, "lblWeight"),
      lblHint(window, "lblHint"),
      txtPointMax(window, "txtPointMax"),
      txtPointMin(window, "txtPointMin"),
      updPoint(window, "updPoint", 1, kMostGraphPoints),
      lblPoint(window, "lblPoint"),
      txtPointWeight(window, "txtPointWeight"),
      cmdPoints(window, "cmdPoints", "&Number of Points..."),
      cmdLoadCSV(window, "cmdLoadCSV", "Load &CSV..."),
      cmdSaveCSV(window, "cmdSaveCSV", "Save CS&V..."),
      cmdLoad(window, "cmdLoad", "&Load..."),
      cmdSave(window, "cmdSave", "&Save..."),
      app_(app),
      window_(window),
      spec_(std::move(spec)),
      graph_(&graph),
      forms_(window) {
  ConnectHandlers();
  Show(graph);
}

void GraphEditor::ConnectHandlers() {
  forms_.onType = [this](GraphType type) { TakeType(type); };
  forms_.onParameters = [this](const GraphParameters& parameters) { TakeParameters(parameters); };
  plot.picture.onMouse = [this](const ui::MouseEvent& event) { UseMouse(event); };
  plot.picture.onKey = [this](const std::string& key) { UseKey(key); };
  for (ui::TextBox* limit : {&txtPointMax, &txtPointMin}) {
    limit->onChange = [this] { ComputePoints(); };
  }
  updPoint.onChange = [this] { SelectPoint(updPoint.Value()); };
  txtPointWeight.onChange = [this] {
    if (IsNumeric(txtPointWeight.Text())) MovePoint(TextToNumber(txtPointWeight.Text()));
  };
  txtPointWeight.onLeave = [this] { ShowPoint(); };
  cmdPoints.onClick = [this] { AskPointCount(); };
  cmdLoadCSV.onClick = [this] { LoadCsv(); };
  cmdSaveCSV.onClick = [this] { SaveCsv(); };
  cmdLoad.onClick = [this] { LoadGraph(); };
  cmdSave.onClick = [this] { SaveGraph(); };
  cmdLoad.SetToolTip("Take a graph from a file");
  cmdSave.SetToolTip("Keep this graph in a file, for other factors and models");
}

ui::LayoutItem GraphEditor::Area() {
  std::vector<ui::LayoutItem> points;
  points.push_back(ui::Table{{"Ma&ximum:", txtPointMax},
                             {"Mi&nimum:", txtPointMin},
                             {"P&oint:", ui::Row{lblPoint, updPoint, ui::Stretch{}}},
                             {"&Weight:", txtPointWeight}});
  points.push_back(ui::Column{cmdPoints, cmdLoadCSV, cmdSaveCSV});
  return ui::Column{
      forms_.Types(),
      ui::Share(1,
                ui::Row{ui::Share(5, plot.picture),
                        ui::Share(2, ui::Column{forms_.Frames(std::move(points)), ui::Stretch{}})}),
      ui::Row{ui::Share(1, ui::Frame{"Under the mouse",
                                     ui::Row{spec_.axis.title + ":", ui::Share(1, lblPlace),
                                             "Weight:", ui::Share(2, lblWeight)}}),
              ui::Share(
                  1, ui::Frame{"Limits of the plot", ui::Row{"Lowest:", ui::Share(1, lblYMin),
                                                             "Mean:", ui::Share(1, lblYavg),
                                                             "Highest:", ui::Share(1, lblYMax)}})},
      lblHint};
}

// ---- The plot -----------------------------------------------------------------------------------

void GraphEditor::ShowCurves(const PlotFrame& frame, std::vector<PlotCurve> curves) {
  curvesFrame_ = frame;
  curves_ = std::move(curves);
  ShowPlotLimits(frame);
  Draw();
}

void GraphEditor::ShowPlotLimits(const PlotFrame& frame) {
  lblYMax.SetCaption(NumberText(frame.High()));
  lblYavg.SetCaption(NumberText((frame.High() + frame.Low()) / 2));
  lblYMin.SetCaption(NumberText(frame.Low()));
}

PlotFrame GraphEditor::Frame() const {
  return dragFrame_ ? *dragFrame_ : PlotFrame(graph_->topValue, graph_->bottomValue);
}

void GraphEditor::Draw() {
  GraphPlot shown{spec_.axis};
  if (curvesFrame_) {
    shown.curves = curves_;
    Chart chart = WeightChart(*curvesFrame_, shown);
    chart.frame.reset();  // the legend needs room
    return plot.Show(std::move(chart));
  }
  shown.curves.push_back({graph_->samples, kCurveColour});
  shown.pointer = pointer_;
  if (ShowsPoints()) {
    shown.points = std::span(graph_->points).first(static_cast<std::size_t>(graph_->pointCount));
    shown.selected = selected_;
  }
  plot.Show(WeightChart(Frame(), shown));
}

// Everything that depends on the curve. `computed` says whether it is that of the parameters.
void GraphEditor::Refresh(bool computed) {
  curvesFrame_.reset();
  ShowPlotLimits(Frame());
  const auto& hint = kHints[static_cast<std::size_t>(forms_.Shown()) - 1];
  lblHint.SetCaption(computed ? hint.help : hint.fault);
  forms_.DrawTypes(*graph_);
  if (pointer_ >= 0) ReadOut(pointer_);
  Draw();
}

void GraphEditor::ReadOut(double place) {
  const double sample = HalfEvenRound(place * graph_->LastSample());
  lblPlace.SetCaption(spec_.axis.textAt(place));
  lblWeight.SetCaption(NumberText(graph_->samples[static_cast<std::size_t>(sample)]));
}

// ---- Types and parameters -----------------------------------------------------------------------

void GraphEditor::Show(WeightGraph& graph) {
  graph_ = &graph;
  const auto points = std::span(graph.points).first(static_cast<std::size_t>(graph.pointCount));
  const auto [low, high] = std::minmax_element(points.begin(), points.end());
  const bool custom = graph.type == GraphType::kCustom;
  ShowLimits(custom ? graph.topValue : *high, custom ? graph.bottomValue : *low);
  selected_ = 1;
  TakeType(graph.type);
}

// Each type has kept its own parameters.
void GraphEditor::TakeType(GraphType type) {
  dragFrame_.reset();
  forms_.Show(*graph_, type);
  const bool computed = type == GraphType::kCustom
                            ? computeCustom(*graph_, TopTyped(), BottomTyped())
                            : ComputeCurve(*graph_, type, forms_.Entered());
  ShowPoint();
  Refresh(computed);
}

void GraphEditor::TakeParameters(const GraphParameters& parameters) {
  Refresh(ComputeCurve(*graph_, forms_.Shown(), parameters));
}

// ---- Control points -----------------------------------------------------------------------------

double GraphEditor::TopTyped() const { return TextToNumber(txtPointMax.Text()); }
double GraphEditor::BottomTyped() const { return TextToNumber(txtPointMin.Text()); }

void GraphEditor::ShowLimits(double top, double bottom) {
  txtPointMax.SetText(NumberText(top));
  txtPointMin.SetText(NumberText(bottom));
}

void GraphEditor::ComputePoints() { Refresh(computeCustom(*graph_, TopTyped(), BottomTyped())); }

void GraphEditor::SelectPoint(int index) {
  selected_ = std::clamp(index, 1, graph_->pointCount);
  ShowPoint();
  Draw();
}

void GraphEditor::ShowPoint() {
  selected_ = std::min(selected_, graph_->pointCount);
  updPoint.SetRange(1, graph_->pointCount);
  updPoint.SetValue(selected_);
  lblPoint.SetCaption(std::to_string(selected_) + " of " + std::to_string(graph_->pointCount));
  txtPointWeight.SetText(NumberText(graph_->Point(selected_)));
}

// Limits that a point leaves follow it.
void GraphEditor::MovePoint(double weight) {
  const double before = std::exchange(graph_->Point(selected_), weight);
  const double top = std::max(TopTyped(), weight);
  const double bottom = std::min(BottomTyped(), weight);
  const bool computed = computeCustom(*graph_, top, bottom);
  if (!computed) graph_->Point(selected_) = before;
  if (computed && top > TopTyped()) txtPointMax.SetText(NumberText(top));
  if (computed && bottom < BottomTyped()) txtPointMin.SetText(NumberText(bottom));
  Refresh(computed);
}

void GraphEditor::AskPointCount() {
  ComputePoints();
  const auto answer = app_.desktop.Prompt("New Number of Points", "Change number of points",
                                          std::to_string(graph_->pointCount));
  if (!answer || answer->empty()) return;
  const double count = TextToNumber(*answer);
  if (!spec_.mostPointsText.empty() && (count < kFewestGraphPoints || count > spec_.mostPoints)) {
    app_.desktop.Message(spec_.mostPointsText);
    Draw();
    return;
  }
  if (count < kFewestGraphPoints || count > kMostGraphPoints) {
    app_.desktop.Message("Number of points must be between 2 and 500");
    return;
  }
  graph_->pointCount = static_cast<int>(HalfEvenRound(count));
  ShowPoint();
  ComputePoints();
}

// ---- Mouse and keyboard -------------------------------------------------------------------------

void GraphEditor::UseMouse(const ui::MouseEvent& event) {
  if (curvesFrame_) return;
  const PlotFrame frame = Frame();
  pointer_ = frame.PlaceAt(event.x);
  ReadOut(pointer_);
  const bool drops = event.action == ui::MouseAction::kUp && dragFrame_.has_value();
  if (event.action == ui::MouseAction::kDown && ShowsPoints()) {
    const int index = frame.PointAt(event.x, graph_->pointCount);
    if (index > 0) {
      SelectPoint(index);
      dragFrame_ = frame;
    }
  } else if (event.action == ui::MouseAction::kMove && dragFrame_) {
    MovePoint(HalfEvenRound(frame.WeightAt(event.y), kWeightPlaces));
    ShowPoint();
  }
  if (drops) {
    dragFrame_.reset();
    Refresh(true);
  }
  Draw();
}

void GraphEditor::UseKey(const std::string& key) {
  if (key == "Ctrl+C") return plot.output.Copy();
  if (!ShowsPoints()) return;
  const PlotFrame frame = Frame();
  const double step = std::max((frame.High() - frame.Low()) / 100, kSmallestMove);
  const struct {
    const char* key;
    int toPoint;
    double move;
  } keys[] = {{"Left", selected_ - 1, 0},
              {"Right", selected_ + 1, 0},
              {"Home", 1, 0},
              {"End", graph_->pointCount, 0},
              {"Up", 0, step},
              {"Down", 0, -step},
              {"PageUp", 0, 10 * step},
              {"PageDown", 0, -10 * step}};
  for (const auto& known : keys) {
    if (known.key != key) continue;
    if (known.move == 0) return SelectPoint(known.toPoint);
    MovePoint(HalfEvenRound(graph_->Point(selected_) + known.move, kWeightPlaces));
    return ShowPoint();
  }
}

// ---- Files --------------------------------------------------------------------------------------

void GraphEditor::LoadCsv() {
  const auto choice =
      app_.desktop.OpenFile({"Load CSV", kCsvFilter, "csv", "", "*.csv", ui::FileKind::kPoints});
  if (!choice) return;
  const Outcome<std::vector<double>> read = ReadCsvNumbers(choice->Path());
  if (!read.Ok()) return app_.desktop.Message(read.Text());
  const std::vector<double>& values = read.Value();
  if (values.empty()) return app_.desktop.Message(choice->Path() + ": holds no number");
  CsvFill fill = CsvFill::kOneToOne;
  if (values.size() != static_cast<std::size_t>(graph_->pointCount)) {
    const ui::Answer answer = app_.desktop.Ask(
        "The number of data points in your file is " + std::to_string(values.size()) +
            " while the number of " + spec_.pointsWord + " is " +
            std::to_string(graph_->pointCount) +
            ". Would you like the program to interpolate to fill the graph with your range of data "
            "rather than filling as much as possible?",
        ui::kProgramTitle, ui::Buttons::kYesNoCancel);
    if (answer == ui::Answer::kYes) fill = CsvFill::kInterpolate;
  }
  WeightGraph filled = *graph_;
  FillPoints(filled, values, fill);
  const bool computed = computeCustom(filled, filled.topValue, filled.bottomValue);
  if (computed) {
    *graph_ = std::move(filled);
    ShowLimits(graph_->topValue, graph_->bottomValue);
    ShowPoint();
  }
  Refresh(computed);
}

void GraphEditor::SaveCsv() {
  const auto choice = ui::AskSaveFile(
      app_.desktop, {"Export CSV", kCsvFilter, "csv", "", "*.csv", ui::FileKind::kPoints},
      {.title = kOverwriteTitle});
  if (!choice) return;
  const Outcome<> written = WriteCsvPoints(choice->Path(), *graph_);
  if (written.Failed()) app_.desktop.Message(written.Text());
}

void GraphEditor::LoadGraph() {
  const auto choice = app_.desktop.OpenFile(
      {"Load Graph Information", kGraphFilter, "gri", "", "*.gri", ui::FileKind::kModels});
  if (!choice) return;
  std::error_code error;
  if (!std::filesystem::exists(choice->Path(), error)) {
    return app_.desktop.Message("File Doesn't Exist", "Load Model Information");
  }
  const Outcome<bool> read = ReadGraphFile(choice->Path(), *graph_);
  if (!read.Ok()) return app_.desktop.Message(read.Text());
  if (read.Value()) Show(*graph_);
}

void GraphEditor::SaveGraph() {
  const auto choice = ui::AskSaveFile(
      app_.desktop,
      {"Save Graph Information", kGraphFilter, "gri", "", "*.gri", ui::FileKind::kModels},
      {.title = kOverwriteTitle});
  if (!choice) return;
  const Outcome<> written = WriteGraphFile(choice->Path(), *graph_);
  if (written.Failed()) app_.desktop.Message(written.Text());
}

}  // namespace ormel
