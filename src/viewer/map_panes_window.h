// The part of the viewer's window that shows its pictures: for each one its file's name, the map,
// and the colour scale with the values at its ends. One picture fills the window, two stand side by
// side, more of them in two rows.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "ui/window.h"
#include "viewer/map_view.h"
#include "viewer/view_painter.h"

namespace ormel {

class MapPanes {
 public:
  // Both outlive the panes.
  MapPanes(ui::Window& window, MapView& view);

  // What a person does in a picture.
  std::function<void(int picture, const ui::MouseEvent&)> onMouse;
  std::function<void(int picture, const ui::MouseEvent&)> onMiddleButton;
  std::function<void(int picture, const ui::WheelEvent&)> onWheel;
  std::function<void(int picture, const std::string& key)> onKey;

  // Lays out as many pictures as the view has now.
  void Fit();
  // The picture's palette or values have changed.
  void ShowColours(int picture);
  // Another picture is selected.
  void ShowTitles();
  void Repaint(int picture) { picMap(picture).Repaint(); }
  void RepaintAll();

  // Moves a picture, or all of them with a locked zoom.
  void SetView(int picture, const ViewRegion& view);

  // A line through these points is drawn in every picture, a rubber band in one.
  std::vector<MapPoint> measured;
  std::optional<RubberBand> band;
  int bandPicture = 0;

  ui::ControlArray<ui::FrameControl> fraMap;
  ui::ControlArray<ui::Picture> picMap;
  ui::ControlArray<ui::Picture> picScale;
  ui::ControlArray<ui::Label> lblMin;
  ui::ControlArray<ui::Label> lblMax;
  ui::Picture picEmpty;

 private:
  void Connect(int picture);
  void Paint(int picture, Canvas& canvas) const;
  ui::LayoutItem Pane(int picture);
  void LayOut();

  ui::Window& window_;
  MapView& view_;
};

}  // namespace ormel
