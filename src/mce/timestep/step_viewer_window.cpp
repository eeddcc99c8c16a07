#include "mce/timestep/step_viewer_window.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "charts/ink.h"
#include "mapdata/map_legend.h"
#include "mce/nonlinear/graph_plot.h"
#include "mce/timestep/step_wizard_window.h"
#include "movies/write_movie_window.h"
#include "text/numbers.h"
#include "ui/desktop.h"

namespace ormel {
namespace {

using ui::Column;
using ui::Frame;
using ui::Row;
using ui::Share;
using ui::Stretch;
using ui::Table;

constexpr int kWeightsShown = 6;
constexpr int kBarWidth = 200;
constexpr int kBarHeight = 14;
constexpr int kButtonSize = 28;
constexpr int kZoomSide = 180;    // pixels
constexpr double kZoomCells = 9;  // across the magnified area, of a small map
constexpr int kPlay = 1;
constexpr int kStop = 2;
constexpr int kPause = 3;

constexpr Colour kBarColour = Rgb(24, 90, 168);
constexpr Colour kBarGround = Rgb(232, 240, 250);
constexpr Colour kSignColour = Rgb(40, 52, 66);
constexpr Colour kActiveColour = Rgb(208, 92, 24);
constexpr Colour kButtonGround = Rgb(244, 246, 249);

}  // namespace

StepViewerWindow::StepViewerWindow(AppContext& app, StepWizard& wizard, const std::string& name,
                                   StepSeries series)
    : Window(name, "Time Step Viewing Utility"),
      chart(*this, app, "picPoints", 640, 150),
      output(*this, app, [this] { return ShownWithLegend(); }),
      app_(app),
      wizard_(wizard),
      series_(std::move(series)),
      preview_(series_.generator.Frame().ncols, series_.generator.Frame().nrows) {
  pscrl.SetRange(1, Steps());
  pscrl.SetValue(1);
  txtEF.SetText(std::to_string(Steps()));
  picScale.SetStripHeight(kColourScaleHeight);
  picScale.SetImage(ColourScale(series_.settings.palette));
  lblFW.Resize(FactorCount());
  FWDisp.Resize(FactorCount());
  scrlFWT.SetRange(0, std::max(0, FactorCount() - kWeightsShown));
  scrlFWT.SetEnabled(FactorCount() > kWeightsShown);
  for (int factor = 1; factor <= FactorCount(); ++factor) {
    lblFW(factor).SetCaption(series_.model->Maps().Factor(factor).name);
    FWDisp(factor).SetStripHeight(kBarHeight);
    FWDisp(factor).SetPainter(kBarWidth, kBarHeight,
                              [this, factor](Canvas& canvas) { PaintWeight(factor, canvas); });
  }
  PicZoom.SetPainter(kZoomSide, kZoomSide, [this](Canvas& canvas) { PaintZoom(canvas); });
  MakeButtons();
  ConnectControls();
  LayOut();
  ShowStep();
  ShowChart();
}

void StepViewerWindow::ConnectControls() {
  pscrl.SetToolTip("The step on show");
  pscrl.onChange = [this] { ShowStep(); };
  txtSF.SetToolTip("The first frame that plays");
  txtEF.SetToolTip("The last frame that plays");
  txtFPS.SetToolTip("Frames a second, of the film here and of the movie");
  picFrame.SetToolTip("A click locks the place: its value is followed over all steps");
  picFrame.onMouse = [this](const ui::MouseEvent& event) { UseMouse(event); };
  ckLoadData.onClick = [this] { ReadOut(); };
  ckActive.SetToolTip("Keep the magnified area up to date while the frames play");
  ckActive.onClick = [this] { PicZoom.Repaint(); };
  scrlFWT.onChange = [this] { LayOut(); };
  List1.onKey = [this](const std::string& key) { UseListKey(key); };
  cmdUnlock.SetToolTip("Let go of the selected place, or of all");
  cmdUnlock.onClick = [this] { Unlock(); };
  cmdExpAVI.SetToolTip("Write the frames of the range as a movie");
  cmdExpAVI.onClick = [this] { ExportMovie(); };
  output.onDone = [this](const std::string& text) { status.SetText(1, text); };
  cmdReturn.SetToolTip("Back to the pages of the model; these maps are discarded");
  cmdReturn.onClick = [this] { wizard_.ReturnToPages(); };
  cmdExit.onClick = [this] { app_.desktop.CloseByFrame(*this); };
}

std::vector<ui::MenuSpec> StepViewerWindow::Menus() {
  return {{"mFile", "&File", "", {}, StepPageParts::SaveMenu(wizard_)},
          {"mShow",
           "&Play",
           "",
           {},
           {{"mPlay", "&Play", "Ctrl+P", [this] { Play(); }, {}},
            {"mPause", "P&ause", "Ctrl+Shift+P", [this] { Pause(); }, {}},
            {"mStop", "&Stop", "Ctrl+.", [this] { StopPlaying(); }, {}}}}};
}

void StepViewerWindow::LayOut() {
  Table weights{};
  const int first = scrlFWT.Value() + 1;
  for (int i = first; i < first + kWeightsShown && i <= FactorCount(); ++i) {
    Row row{lblFW(i), Share(1, FWDisp(i))};
    weights.items.push_back(row);
  }
  const Frame play{"Play", Row{MVC(kPlay), MVC(kStop), MVC(kPause), Stretch{}, "Frames:", txtSF,
                               "to", txtEF, "Frames/Second:", txtFPS}};
  const Column map{Share(1, picFrame), Row{lblScaleMin, Share(1, picScale), lblScaleMax},
                   Row{lblFrame, Share(1, pscrl)}, play,
                   Row{cmdExpAVI, pictureButtons.cmdCopy, pictureButtons.cmdSave, Stretch{},
                       cmdReturn, cmdExit}};
  const Column beside{
      Share(1, Frame{"Zoom Window", Share(1, PicZoom), ckActive}),
      Frame{"Under the mouse", Table{{"X:", lblX}, {"Y:", lblY}, {"Value:", lblvalue}}, ckLoadData},
      Frame{"Factor Weights:", Row{Share(1, Column{weights}), scrlFWT},
            Row{lblWeightLow, Stretch{}, lblWeightHigh}}};
  const Frame points{
      "Locked Points",
      Row{Share(1, Column{Share(1, List1), Row{cmdUnlock, Stretch{}}}), Share(3, chart.Area())}};
  SetLayout(Column{Share(3, Row{Share(5, map), Share(2, beside)}), Share(1, points)});
}

// ---- The step on show ---------------------------------------------------------------------------

void StepViewerWindow::ShowStep() {
  picFrame.SetImage(DrawStep(*series_.model, series_.generator, series_.settings, Step()));
  lblFrame.SetCaption("Step " + std::to_string(Step()) + " of " + std::to_string(Steps()) + ": " +
                      series_.model->dates[static_cast<std::size_t>(Step() - 1)]);
  ShowWeights();
  ShowPoints();
  ReadOut();
  if (ckActive.Checked() || timer_ == nullptr) PicZoom.Repaint();
}

// The picture on show as it leaves the program.
Canvas StepViewerWindow::ShownWithLegend() const {
  return WithLegend(
      picFrame.Image(),
      {lblFrame.Caption(),
       MapLegend::Scale{series_.settings.palette, lblScaleMin.Caption(), lblScaleMax.Caption(),
                        series_.model->output.constraintColour}});
}

// ---- Play ---------------------------------------------------------------------------------------

void StepViewerWindow::MakeButtons() {
  MVC.Resize(kPause);
  const struct {
    int button;
    const char* toolTip;
    ui::Handler run;
  } buttons[] = {{kPlay, "Play", [this] { Play(); }},
                 {kStop, "Stop, and go back to the first frame", [this] { StopPlaying(); }},
                 {kPause, "Pause", [this] { Pause(); }}};
  for (const auto& [button, toolTip, run] : buttons) {
    MVC(button).SetStripHeight(kButtonSize);
    MVC(button).SetToolTip(toolTip);
    MVC(button).onClick = run;
  }
  DrawMVC();
}

// The sign of what goes on is in another colour.
void StepViewerWindow::DrawMVC() {
  const int active = timer_ != nullptr ? kPlay : kStop;
  for (int button = kPlay; button <= kPause; ++button) {
    const Colour colour = button == active ? kActiveColour : kSignColour;
    MVC(button).SetPainter(kButtonSize, kButtonSize, [button, colour](Canvas& canvas) {
      canvas.Clear(kButtonGround);
      Ink ink(canvas, canvas.Height() / static_cast<double>(kButtonSize));
      const double middle = ink.Width() / 2;
      if (button == kPlay) {
        for (int line = 0; line <= 32; ++line) {
          const double y = 6 + line / 2.0;
          const double reach = 16 - std::abs(y - 14) * 2;
          ink.Block(middle - 7, y, middle - 7 + reach, y + 0.6, colour);
        }
      } else if (button == kStop) {
        ink.Block(middle - 7, 7, middle + 7, 21, colour);
      } else {
        ink.Block(middle - 7, 7, middle - 2, 21, colour);
        ink.Block(middle + 2, 7, middle + 7, 21, colour);
      }
    });
  }
}

int StepViewerWindow::FirstFrame() const {
  return static_cast<int>(
      std::clamp(HalfEvenRound(TextToNumber(txtSF.Text())), 1.0, static_cast<double>(LastFrame())));
}

int StepViewerWindow::LastFrame() const {
  const double typed = HalfEvenRound(TextToNumber(txtEF.Text()));
  return static_cast<int>(std::clamp(typed, 1.0, static_cast<double>(Steps())));
}

std::optional<double> StepViewerWindow::FramesPerSecond() {
  const double rate = TextToNumber(txtFPS.Text());
  if (IsNumeric(txtFPS.Text()) && rate > 0) return rate;
  app_.desktop.Message("You must enter a valid number of frames/second!");
  return std::nullopt;
}

void StepViewerWindow::Play() {
  const auto rate = FramesPerSecond();
  if (!rate) return;
  if (Step() < FirstFrame() || Step() >= LastFrame()) pscrl.SetValue(FirstFrame());
  constexpr double kLongest = 3600e3;
  const double interval = std::clamp(HalfEvenRound(1000 / *rate), 1.0, kLongest);
  timer_ = std::make_unique<ui::Timer>(
      app_.desktop, std::chrono::milliseconds(static_cast<int>(interval)), [this] { Tick(); });
  ShowStep();
  DrawMVC();
}

void StepViewerWindow::Tick() {
  pscrl.SetValue(Step() + 1);
  ShowStep();
  if (Step() >= LastFrame()) Pause();
}

void StepViewerWindow::Pause() {
  timer_.reset();
  DrawMVC();
  PicZoom.Repaint();
}

void StepViewerWindow::StopPlaying() {
  Pause();
  pscrl.SetValue(FirstFrame());
  ShowStep();
}

// ---- The factors' weights -----------------------------------------------------------------------

void StepViewerWindow::ShowWeights() {
  const Extremes& all = series_.generator.EffectiveWeights();
  lblWeightLow.SetCaption(NumberText(HalfEvenRound(all.smallest, app_.settings.decimalPlaces)));
  lblWeightHigh.SetCaption(NumberText(HalfEvenRound(all.largest, app_.settings.decimalPlaces)));
  for (int factor = 1; factor <= FactorCount(); ++factor) FWDisp(factor).Repaint();
}

void StepViewerWindow::PaintWeight(int factor, Canvas& canvas) const {
  const Extremes& all = series_.generator.EffectiveWeights();
  const double weight =
      series_.model->kind->EffectiveWeight(factor, series_.model->NumbersOf(factor, Step()));
  const double range = all.largest - all.smallest;
  const double part = range > 0 ? (weight - all.smallest) / range : 1;
  canvas.Clear(kBarGround);
  canvas.FillPixels(0, 0, static_cast<int>(std::lround(part * canvas.Width())), canvas.Height(),
                    kBarColour);
}

// ---- Values -------------------------------------------------------------------------------------

void StepViewerWindow::UseMouse(const ui::MouseEvent& event) {
  pointerX_ = preview_.CellX(event.x);
  pointerY_ = preview_.CellY(event.y);
  pointed_ = true;
  ReadOut();
  PicZoom.Repaint();
  if (event.action != ui::MouseAction::kDown) return;
  const LockedPoint point{static_cast<int>(std::floor(pointerX_)) + 1,
                          static_cast<int>(std::floor(pointerY_)) + 1};
  if (series_.generator.Mask().Holds(point.column, point.row)) Lock(point);
}

void StepViewerWindow::ReadOut() {
  if (!pointed_) return;
  const MapFrame& frame = series_.generator.Frame();
  const auto rounded = [this](double value) {
    return NumberText(HalfEvenRound(value, app_.settings.decimalPlaces));
  };
  lblX.SetCaption(rounded(frame.xllcorner + frame.cellsize * pointerX_));
  lblY.SetCaption(rounded(frame.yllcorner + frame.cellsize * (frame.nrows - pointerY_)));
  const int column = static_cast<int>(std::floor(pointerX_)) + 1;
  const int row = static_cast<int>(std::floor(pointerY_)) + 1;
  const bool known = ckLoadData.Checked() && series_.generator.Mask().Holds(column, row);
  lblvalue.SetCaption(known ? NumberText(ValueAt(Step(), column, row)) : "");
}

double StepViewerWindow::ValueAt(int step, int column, int row) const {
  return HalfEvenRound(series_.generator.ScaledValue(step, column, row),
                       series_.settings.decimalPlaces);
}

void StepViewerWindow::PaintZoom(Canvas& canvas) const {
  const Canvas& map = picFrame.Image();
  if (!pointed_ || map.Empty()) return canvas.Clear(kButtonGround);
  const double across = std::max(kZoomCells, preview_.CellX(preview_.Width()) / 12);
  const double width = across * preview_.Width() / preview_.CellX(preview_.Width());
  const double x = pointerX_ * preview_.Width() / preview_.CellX(preview_.Width());
  const double y = pointerY_ * preview_.Height() / preview_.CellY(preview_.Height());
  canvas.StretchRegion(map, x - width / 2, y - width / 2, width, width);
}

// ---- Locked points ------------------------------------------------------------------------------

void StepViewerWindow::Lock(const LockedPoint& point) {
  const auto same = [&](const LockedPoint& known) {
    return known.column == point.column && known.row == point.row;
  };
  if (std::none_of(locked_.begin(), locked_.end(), same)) locked_.push_back(point);
  ShowPoints();
  ShowChart();
}

void StepViewerWindow::Unlock() {
  const int selected = List1.FirstSelected();
  if (selected == 0) {
    locked_.clear();
  } else {
    locked_.erase(locked_.begin() + selected - 1);
  }
  ShowPoints();
  ShowChart();
}

void StepViewerWindow::UseListKey(const std::string& key) {
  if (key == "Delete" && List1.FirstSelected() != 0) Unlock();
}

std::string StepViewerWindow::PointText(const LockedPoint& point) const {
  const MapPlace place = CentreOf(series_.generator.Frame(), point.column, point.row);
  const int places = app_.settings.decimalPlaces;
  return NumberText(HalfEvenRound(place.x, places)) + ", " +
         NumberText(HalfEvenRound(place.y, places));
}

void StepViewerWindow::ShowPoints() {
  const std::vector<int> selected = List1.Selected();
  std::vector<std::string> entries;
  for (const LockedPoint& point : locked_) {
    entries.push_back(PointText(point) + ":  " +
                      NumberText(ValueAt(Step(), point.column, point.row)));
  }
  const bool kept = entries.size() == static_cast<std::size_t>(List1.Count());
  List1.SetItems(std::move(entries));
  if (kept) List1.SetSelected(selected);
  cmdUnlock.SetEnabled(!locked_.empty());
}

// The values of all places over the steps.
void StepViewerWindow::ShowChart() {
  Chart shown;
  shown.x.title = "Step";
  shown.x.range = Range{1, static_cast<double>(Steps())};
  for (const double step : RoundMarks(1, Steps())) {
    shown.x.marks.push_back({step, NumberText(step), {}});
  }
  shown.x.numberText = [model = series_.model](double step) {
    const auto index = static_cast<std::size_t>(HalfEvenRound(step)) - 1;
    return index < model->dates.size() ? NumberText(step) + ", " + model->dates[index] : "";
  };
  shown.y = NumberAxis("Value");
  shown.y.range = Range{0, kTopValue};
  for (const LockedPoint& point : locked_) {
    Series series;
    series.name = PointText(point);
    series.start = 1;
    for (int step = 1; step <= Steps(); ++step) {
      series.y.push_back(ValueAt(step, point.column, point.row));
    }
    shown.series.push_back(std::move(series));
  }
  chart.Show(std::move(shown));
}

// ---- The movie, and the ways out ----------------------------------------------------------------

void StepViewerWindow::ExportMovie() {
  const auto rate = FramesPerSecond();
  if (!rate) return;
  const auto path = AskMovieFile(app_);
  if (!path) return;
  const int first = FirstFrame();
  const MovieFrames frames{LastFrame() - first + 1, [this, first](int index) -> Outcome<cDIB> {
                             return cDIB::OfCanvas(DrawStep(*series_.model, series_.generator,
                                                            series_.settings, first + index));
                           }};
  if (WriteMovie(*this, app_, *path, frames, static_cast<int>(HalfEvenRound(*rate)))) {
    status.SetText(1, "The movie is written.");
  }
}

bool StepViewerWindow::QueryClose() { return wizard_.Leave(); }

}  // namespace ormel
