// What a person does in the pictures of a viewer with mouse and keyboard: zooming, panning, the
// pending tools of the menu, the read-out of the cell under the mouse, and the metric tool.
#pragma once

#include <optional>
#include <string>

#include "ui/window.h"
#include "viewer/map_panes_window.h"
#include "viewer/map_view.h"

namespace ormel {

class FrmMetric;

// What the next press of the mouse in a picture does. Each is used once.
enum class MouseTool { kNone, kCenter, kZoomBox };

class ViewTools {
 public:
  // All outlive the tools. The read-out goes to the first three panels of `strip`.
  ViewTools(ui::Window& window, ui::Desktop& desktop, MapView& view, MapPanes& panes,
            ui::StatusStrip& strip);

  // Another picture was selected, or a tool taken or put down.
  ui::Handler onChange;

  MouseTool Pending() const { return tool_; }
  void Take(MouseTool tool);

  // The metric tool is in use as long as its window is open. Starting it again begins a new line.
  bool Measuring() const { return metric_ != nullptr; }
  void StartMeasuring();
  void CloseMetric();

  // Pictures have come or gone: what was begun in one of them ends.
  void PutDown();

 private:
  void Select(int picture);
  void UseMouse(int picture, const ui::MouseEvent& event);
  void Press(int picture, MapFraction place);
  void Release(int picture, MapFraction place);
  void Drag(int picture, const ui::MouseEvent& event);
  void Turn(int picture, const ui::WheelEvent& event);
  void UseKey(int picture, const std::string& key);
  void ReadOut(int picture, MapFraction place);
  void ShowMeasures();
  MapFraction PlaceInPicture(int picture, double x, double y) const;

  // The view that was dragged with the middle button, as it was at the press.
  struct DraggedView {
    double x;
    double y;
    ViewRegion view;
  };

  ui::Window& window_;
  ui::Desktop& desktop_;
  MapView& view_;
  MapPanes& panes_;
  ui::StatusStrip& strip_;
  MouseTool tool_ = MouseTool::kNone;
  std::optional<DraggedView> dragged_;
  FrmMetric* metric_ = nullptr;
};

}  // namespace ormel
