#include "viewer/map_panes_window.h"

#include "mapdata/palette.h"
#include "text/numbers.h"
#include "text/paths.h"

namespace ormel {
namespace {

using ui::Column;
using ui::Row;
using ui::Share;
using ui::Stretch;

constexpr Colour kEmptyGround = Rgb(236, 238, 240);
constexpr char kSelectedSign[] = "\u25B6 ";

// The name of a map's file as a caption, where an ampersand of its own stands twice.
std::string TitleOf(const MapPicture& picture) {
  std::string title;
  for (const char letter : FileNamePart(picture.path, true)) {
    title.append(letter == '&' ? 2 : 1, letter);
  }
  return title;
}

}  // namespace

MapPanes::MapPanes(ui::Window& window, MapView& view)
    : fraMap(window, "fraMap"),
      picMap(window, "picMap"),
      picScale(window, "picScale"),
      lblMin(window, "lblMin"),
      lblMax(window, "lblMax"),
      picEmpty(window, "picEmpty"),
      window_(window),
      view_(view) {
  const PictureSize size = PictureSizeOf({4, 3});
  picEmpty.SetImage(Canvas(size.width, size.height, kEmptyGround));
}

void MapPanes::Fit() {
  const int count = view_.NumPictures();
  band.reset();
  fraMap.Resize(count);
  for (auto* labels : {&lblMin, &lblMax}) labels->Resize(count);
  picMap.Resize(count);
  picScale.Resize(count);
  for (int picture = 1; picture <= count; ++picture) {
    Connect(picture);
    ShowColours(picture);
  }
  ShowTitles();
  LayOut();
}

void MapPanes::Connect(int picture) {
  ui::Picture& shown = picMap(picture);
  shown.onMouse = [this, picture](const ui::MouseEvent& event) { onMouse(picture, event); };
  shown.onMiddleButton = [this, picture](const ui::MouseEvent& event) {
    onMiddleButton(picture, event);
  };
  shown.onWheel = [this, picture](const ui::WheelEvent& event) { onWheel(picture, event); };
  shown.onKey = [this, picture](const std::string& key) { onKey(picture, key); };
  const PictureSize size = PictureSizeOf(*view_.Specs());
  shown.SetPainter(size.width, size.height,
                   [this, picture](Canvas& canvas) { Paint(picture, canvas); });
}

void MapPanes::Paint(int picture, Canvas& canvas) const {
  PaintView(canvas, view_(picture), *view_.Specs(), measured,
            bandPicture == picture ? band : std::nullopt);
}

void MapPanes::ShowColours(int picture) {
  const MapPicture& map = view_(picture);
  const ScaleEnds ends = EndsOfScale(map);
  picScale(picture).SetStripHeight(kColourScaleHeight);
  picScale(picture).SetImage(ColourScale(map.palette));
  lblMin(picture).SetCaption(NumberText(ends.low));
  lblMax(picture).SetCaption(NumberText(ends.high));
  picScale(picture).SetVisible(!map.isImage);
  lblMin(picture).SetVisible(!map.isImage);
  lblMax(picture).SetVisible(!map.isImage);
}

void MapPanes::ShowTitles() {
  for (int picture = 1; picture <= view_.NumPictures(); ++picture) {
    const bool marked = picture == view_.Selected() && view_.NumPictures() > 1;
    fraMap(picture).SetCaption((marked ? kSelectedSign : "") + TitleOf(view_(picture)));
  }
}

void MapPanes::RepaintAll() {
  for (const auto& picture : picMap) picture->Repaint();
}

void MapPanes::SetView(int picture, const ViewRegion& view) {
  if (!view_.Holds(picture)) return;
  view_.SetView(picture, view);
  if (view_.LockedZoom()) {
    RepaintAll();
  } else {
    Repaint(picture);
  }
}

ui::LayoutItem MapPanes::Pane(int picture) {
  return Share(1, ui::Frame{fraMap(picture), Share(1, picMap(picture)),
                            Row{lblMin(picture), Share(1, picScale(picture)), lblMax(picture)}});
}

void MapPanes::LayOut() {
  const int count = view_.NumPictures();
  picEmpty.SetVisible(count == 0);
  Column rows;
  if (count == 0) {
    rows.items.emplace_back("No map is open. Open one from the File menu, or drop it here.");
    rows.items.push_back(Share(1, picEmpty));
  }
  if (count == 1) rows.items.push_back(Pane(1));
  for (int left = 1; count > 1 && left <= count; left += 2) {
    const ui::LayoutItem right = left < count ? Pane(left + 1) : Share(1, Stretch{});
    rows.items.push_back(Share(1, Row{Pane(left), right}));
  }
  window_.SetLayout(rows);
}

}  // namespace ormel
