#include "viewer/view_tools_window.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <memory>
#include <utility>

#include "text/numbers.h"
#include "ui/desktop.h"
#include "viewer/metric_window.h"

namespace ormel {
namespace {

constexpr int kPanelX = 1;
constexpr int kPanelY = 2;
constexpr int kPanelValue = 3;

// A band of fewer pixels is a click that slipped.
constexpr double kSmallestBand = 3;

MapFraction OnMap(MapFraction place) {
  return {std::clamp(place.x, 0.0, 1.0), std::clamp(place.y, 0.0, 1.0)};
}

}  // namespace

ViewTools::ViewTools(ui::Window& window, ui::Desktop& desktop, MapView& view, MapPanes& panes,
                     ui::StatusStrip& strip)
    : window_(window), desktop_(desktop), view_(view), panes_(panes), strip_(strip) {
  panes_.onMouse = [this](int picture, const ui::MouseEvent& event) { UseMouse(picture, event); };
  panes_.onMiddleButton = [this](int picture, const ui::MouseEvent& event) {
    Drag(picture, event);
  };
  panes_.onWheel = [this](int picture, const ui::WheelEvent& event) { Turn(picture, event); };
  panes_.onKey = [this](int picture, const std::string& key) { UseKey(picture, key); };
}

void ViewTools::Take(MouseTool tool) {
  tool_ = tool;
  if (panes_.band) {
    panes_.band.reset();
    panes_.RepaintAll();
  }
  onChange();
}

void ViewTools::PutDown() {
  dragged_.reset();
  if (view_.NumPictures() == 0) CloseMetric();
  Take(view_.NumPictures() == 0 ? MouseTool::kNone : tool_);
}

void ViewTools::Select(int picture) {
  if (picture == view_.Selected()) return;
  view_.Select(picture);
  panes_.ShowTitles();
  onChange();
}

MapFraction ViewTools::PlaceInPicture(int picture, double x, double y) const {
  const Canvas& canvas = panes_.picMap(picture).Image();
  return {x / canvas.Width(), y / canvas.Height()};
}

void ViewTools::UseMouse(int picture, const ui::MouseEvent& event) {
  const MapFraction place =
      PlaceOnMap(view_(picture).view, PlaceInPicture(picture, event.x, event.y));
  ReadOut(picture, place);
  switch (event.action) {
    case ui::MouseAction::kDown:
      return Press(picture, place);
    case ui::MouseAction::kUp:
      return Release(picture, place);
    default:
      break;
  }
  if (!panes_.band || panes_.bandPicture != picture) return;
  panes_.band->to = place;
  panes_.Repaint(picture);
}

void ViewTools::Press(int picture, MapFraction place) {
  Select(picture);
  switch (tool_) {
    case MouseTool::kCenter:
      Take(MouseTool::kNone);
      panes_.SetView(picture, CentredOn(view_(picture).view, place));
      break;
    case MouseTool::kZoomBox:
      panes_.bandPicture = picture;
      panes_.band = {place, place};
      break;
    case MouseTool::kNone:
      if (metric_ == nullptr) break;
      panes_.measured.push_back(PointAt(*view_.Specs(), place));
      ShowMeasures();
      break;
  }
}

void ViewTools::Release(int picture, MapFraction place) {
  if (!panes_.band || panes_.bandPicture != picture) return;
  const MapFraction from = panes_.band->from;
  const ViewRegion view = view_(picture).view;
  const Canvas& canvas = panes_.picMap(picture).Image();
  Take(MouseTool::kNone);
  if (std::abs(place.x - from.x) * canvas.Width() >= kSmallestBand * view.ZW &&
      std::abs(place.y - from.y) * canvas.Height() >= kSmallestBand * view.ZH) {
    panes_.SetView(picture, ZoomedToBox(view, OnMap(from), OnMap(place)));
  }
}

// The place that was pressed stays under the mouse.
void ViewTools::Drag(int picture, const ui::MouseEvent& event) {
  if (event.action == ui::MouseAction::kDown) {
    Select(picture);
    dragged_ = {event.x, event.y, view_(picture).view};
    return;
  }
  if (!dragged_) return;
  const ViewRegion& view = dragged_->view;
  const MapFraction way = PlaceInPicture(picture, event.x - dragged_->x, event.y - dragged_->y);
  panes_.SetView(picture, MovedBy(view, -way.x * view.ZW, -way.y * view.ZH));
  if (event.action == ui::MouseAction::kUp) dragged_.reset();
}

void ViewTools::Turn(int picture, const ui::WheelEvent& event) {
  const MapFraction place = PlaceInPicture(picture, event.x, event.y);
  const double factor =
      std::pow(event.notches > 0 ? kZoomInFactor : kZoomOutFactor, std::abs(event.notches));
  panes_.SetView(picture, ZoomAt(view_(picture).view, factor, place));
}

void ViewTools::UseKey(int picture, const std::string& key) {
  Select(picture);
  if (key == "Escape" && tool_ != MouseTool::kNone) return Take(MouseTool::kNone);
  const ViewRegion view = view_(picture).view;
  const auto pan = [&](PanDirection direction) {
    return PanBy(view, direction, view_.Specs()->ncols, view_.Specs()->nrows);
  };
  const struct {
    const char* key;
    ViewRegion view;
  } keys[] = {{"-", ZoomBy(view, kZoomOutFactor)}, {"=", ZoomBy(view, kZoomInFactor)},
              {"+", ZoomBy(view, kZoomInFactor)},  {"Home", ViewRegion{}},
              {"Left", pan(PanDirection::kLeft)},  {"Right", pan(PanDirection::kRight)},
              {"Up", pan(PanDirection::kUp)},      {"Down", pan(PanDirection::kDown)}};
  const auto* found = std::find_if(std::begin(keys), std::end(keys),
                                   [&](const auto& one) { return one.key == key; });
  if (found != std::end(keys)) panes_.SetView(picture, found->view);
}

// Beside the map the last cell stays.
void ViewTools::ReadOut(int picture, MapFraction place) {
  const ViewSpecs& specs = *view_.Specs();
  const double column = std::floor(place.x * specs.ncols) + 1;
  const double row = std::floor(place.y * specs.nrows) + 1;
  if (!(column >= 1 && column <= specs.ncols && row >= 1 && row <= specs.nrows)) return;
  const double half = specs.cellsize / 2;
  const double x = specs.xllcorner + specs.cellsize * column - half;
  const double y = specs.yllcorner + specs.cellsize * (specs.nrows - row) + half;
  const MapPicture& map = view_(picture);
  strip_.SetText(kPanelX, "X: " + NumberText(x));
  strip_.SetText(kPanelY, "Y: " + NumberText(y));
  strip_.SetText(kPanelValue, map.isImage
                                  ? "Value:"
                                  : "Value: " + NumberText(map.cells(static_cast<int>(column),
                                                                     static_cast<int>(row))));
}

// ---- The metric tool ----------------------------------------------------------------------------

void ViewTools::StartMeasuring() {
  panes_.measured.clear();
  if (metric_ == nullptr) {
    metric_ = &desktop_.Show(std::make_unique<FrmMetric>(desktop_), &window_);
    metric_->onStartAgain = [this] { StartMeasuring(); };
    metric_->onEnd = [this] {
      metric_ = nullptr;
      panes_.measured.clear();
      panes_.RepaintAll();
      onChange();
    };
  }
  Take(MouseTool::kNone);
  ShowMeasures();
}

void ViewTools::ShowMeasures() {
  metric_->Show(MeasuresOf(panes_.measured));
  panes_.RepaintAll();
}

void ViewTools::CloseMetric() {
  if (metric_ != nullptr) desktop_.Close(*metric_);
}

}  // namespace ormel
