// The window "Map Viewer": up to four maps of one specification side by side, zoomed and panned,
// with a read-out of the cell under the mouse, a palette for each, a measuring tool and the export
// of what is on show. It works on files and knows nothing of the running model.
#pragma once

#include <optional>
#include <string>

#include "mapdata/app_context.h"
#include "ui/window.h"
#include "viewer/map_view.h"
#include "viewer/view_painter.h"

namespace ormel {

class FrmMetric;

class FrmView final : public ui::Window {
 public:
  explicit FrmView(AppContext& app);

  // Loads a map into the next picture; only the question about unscaled maps is asked. A map that
  // cannot be shown is told in a message. False: the window shows what it did before.
  bool OpenMapFile(const std::string& path);

  // Shows an image as a picture without cells; `specs` lays it on the map. False: the window is
  // full, or its maps have another specification.
  bool ShowImage(const std::string& name, Canvas image, const ViewSpecs& specs);

  // What tools that draw on a viewer need. Pictures count from 1.
  int NumPictures() const { return view_.NumPictures(); }
  const struct PictureSpecs& PicSpecs(int picture) const { return view_(picture).specs; }
  const ViewRegion& View(int picture) const { return view_(picture).view; }  // x1, y1, ZW, ZH
  void SetView(int picture, const ViewRegion& view);
  bool LockedZoom() const { return view_.LockedZoom(); }
  void LockZoom(bool locked);
  // Puts a mark on a place in map units. It stays there in every zoom, until its picture is closed.
  void DrawMark(int picture, double x, double y, Colour colour);

  void OnClosed() override;

  ui::MenuBar menu{*this, Menus()};
  ui::ToolBar tbView{*this, "tbView", Tools()};
  ui::StatusStrip sbView{*this, "sbView", 4};
  ui::ControlArray<ui::Label> lblMap{*this, "lblMap"};
  ui::ControlArray<ui::Picture> picMap{*this, "picMap"};
  ui::ControlArray<ui::Picture> picScale{*this, "picScale"};
  ui::ControlArray<ui::Label> lblMin{*this, "lblMin"};
  ui::ControlArray<ui::Label> lblMax{*this, "lblMax"};
  ui::Picture picEmpty{*this, "picEmpty"};

 private:
  enum class Loading { kDone, kRefused, kStopped };
  enum class MouseTool { kNone, kCenter, kZoomBox };
  enum class Place { kBehindOthers, kInsteadOfAll };

  std::vector<ui::MenuSpec> Menus();
  std::vector<ui::ToolSpec> Tools();
  ui::Handler Zoom(double factor);

  // The commands of the menu.
  void AddByDialog(const std::string& title, const std::string& pattern, Place place);
  void CloseSelected();
  void CloseAll();
  void ChangePalette();
  void ShowWholeMap();
  void ToggleAutoZoom();
  void ExportCurrentRegion();
  void ConvertToRaster();
  void StartMeasuring();
  void ShowStatistics();
  void Take(MouseTool tool);

  // Loading.
  Loading LoadMap(const std::string& path, Place place);
  std::optional<Viewing> AskViewing(bool isScaled);
  Palette DefaultPalette();
  [[nodiscard]] bool Draw(MapPicture& picture);
  std::optional<std::string> AskTarget(const std::string& title);

  // The mouse and the keyboard in a picture.
  void ConnectPicture(int picture);
  void UseMouse(int picture, const ui::MouseEvent& event);
  void PressMouse(int picture, MapFraction place);
  void ReleaseMouse(int picture, MapFraction place);
  void DragView(int picture, const ui::MouseEvent& event);
  void UseKey(int picture, const std::string& key);
  void ReadOut(MapFraction place, int picture);
  MapFraction PlaceInPicture(int picture, double x, double y) const;
  MapFraction PlaceOf(int picture, double x, double y) const;

  // What is on show.
  void ShowPictures();
  void LayOut();
  ui::LayoutItem Pane(int picture);
  void ShowColours(int picture);
  void ShowState();
  void Select(int picture);
  void Repaint();
  void ShowMeasures();
  void EndMeasuring();

  AppContext& app_;
  MapView view_;
  MouseTool tool_ = MouseTool::kNone;
  int bandPicture_ = 0;                 // the picture in which the overlay's band is drawn
  std::optional<ui::MouseEvent> drag_;  // where the middle button was pressed, and
  ViewRegion dragged_;                  // the view at that time
  ViewOverlay overlay_;
  FrmMetric* metric_ = nullptr;  // open while the metric tool is in use
};

}  // namespace ormel
