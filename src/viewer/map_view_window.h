// The window "Map Viewer": up to four maps on one grid side by side, zoomed and panned,
// with a read-out of the cell under the mouse, a palette for each, a measuring tool and the export
// of what is on show. It works on files and knows nothing of the running model.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "parts/app_context.h"
#include "parts/picture_output.h"
#include "ui/window.h"
#include "viewer/map_panes_window.h"
#include "viewer/map_view.h"
#include "viewer/view_tools_window.h"

namespace ormel {

class FrmView final : public ui::Window {
 public:
  explicit FrmView(AppContext& app);

  // Loads a map into the next picture; only the question about unscaled maps is asked. A map that
  // cannot be shown is told in a message. False: the window shows what it did before.
  bool OpenMapFile(const std::string& path);

  // Shows an image as a picture without cells; `specs` lays it on the map. False: the window is
  // full, or its maps lie on another grid.
  bool ShowImage(const std::string& name, Canvas image, const ViewSpecs& specs);

  // What tools that draw on a viewer need. Pictures count from 1.
  int NumPictures() const { return view_.NumPictures(); }
  const struct PictureSpecs& PicSpecs(int picture) const { return view_(picture).specs; }
  const ViewRegion& View(int picture) const { return view_(picture).view; }  // x1, y1, ZW, ZH
  void SetView(int picture, const ViewRegion& view) { panes_.SetView(picture, view); }
  bool LockedZoom() const { return view_.LockedZoom(); }
  void LockZoom(bool locked);
  // Puts a mark on a place in map units. It stays there in every zoom, until its picture is closed.
  void DrawMark(int picture, double x, double y, Colour colour);

  void OnClosed() override;

  ui::MenuBar menu{*this, Menus()};
  ui::ToolBar tbView{*this, "tbView", Tools()};
  ui::StatusStrip sbView{*this, "sbView", 4};

 private:
  enum class Loading { kDone, kRefused, kStopped };
  enum class Place { kBehindOthers, kInsteadOfAll };

  std::vector<ui::MenuSpec> Menus();
  std::vector<ui::ToolSpec> Tools();
  ui::Handler Zoom(double factor);
  ui::Handler Take(MouseTool tool);
  MapPicture& Selected() { return view_(view_.Selected()); }

  // An empty `folder`: where a map was chosen last.
  void AddByDialog(const std::string& title, const std::string& folder, const std::string& pattern,
                   Place place);
  Loading Refuse(const std::string& why);
  Loading LoadMap(const std::string& path, Place place);
  std::optional<Viewing> AskViewing(bool isScaled);
  Palette DefaultPalette();
  [[nodiscard]] bool Draw(MapPicture& picture);
  void CloseSelected();
  void CloseAll();
  void PicturesChanged();
  void ShowState();

  void ShowWholeMap();
  void ChangePalette();
  std::optional<std::string> AskTarget(const std::string& title);
  Canvas SelectedWithLegend();
  void ExportCurrentRegion();
  void ConvertToRaster();
  void ShowStatistics();

  AppContext& app_;
  MapView view_;
  MapPanes panes_{*this, view_};
  PictureOutput output_{*this, app_, [this] { return SelectedWithLegend(); }};
  ViewTools tools_{*this, app_.desktop, view_, panes_, sbView};
};

}  // namespace ormel
