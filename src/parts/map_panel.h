// The part of a window that shows a map: its picture in the palette of the settings with the colour
// scale beneath, and the cell under the pointer.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "mapdata/palette.h"
#include "mapdata/previewed_map.h"
#include "parts/app_context.h"
#include "ui/window.h"

namespace ormel {

class MapPanel {
 public:
  // Both outlive the part. `name` is that of the picture in scripts, "picPrev"; the other controls
  // have it in theirs.
  MapPanel(ui::Window& window, AppContext& app, const std::string& name);

  // Reads and shows a map; the window shows how far it is. A map that cannot be shown is told in a
  // message, and the panel is empty then. False in that case, and when the reading was stopped.
  bool Show(const std::string& path);
  void Clear();
  const std::string& Path() const { return path_; }  // empty: nothing is shown

  // A person clicks a cell.
  std::function<void(const PreviewedMap::Cell&)> onCell;

  ui::LayoutItem Area();

  ui::Picture picture;
  ui::Picture scale;
  ui::Label lblLow;
  ui::Label lblHigh;
  ui::Label lblCell;  // the cell under the pointer; what is wrong with a map that ends early

 private:
  void Paint();
  void ReadOut(const ui::MouseEvent& event);

  ui::Window& window_;
  AppContext& app_;
  std::string path_;
  std::optional<PreviewedMap> map_;
};

}  // namespace ormel
