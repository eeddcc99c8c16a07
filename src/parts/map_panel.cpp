#include "parts/map_panel.h"

#include <utility>

#include "text/numbers.h"
#include "ui/desktop.h"
#include "ui/run.h"

namespace ormel {

MapPanel::MapPanel(ui::Window& window, AppContext& app, const std::string& name)
    : picture(window, name),
      scale(window, name + "Scale"),
      lblLow(window, name + "Low"),
      lblHigh(window, name + "High"),
      lblCell(window, name + "Cell"),
      window_(window),
      app_(app) {
  scale.SetStripHeight(kColourScaleHeight);
  picture.onMouse = [this](const ui::MouseEvent& event) { ReadOut(event); };
  Clear();
}

ui::LayoutItem MapPanel::Area() {
  return ui::Column{ui::Share(1, picture), ui::Row{lblLow, ui::Share(1, scale), lblHigh}, lblCell};
}

void MapPanel::Clear() {
  path_.clear();
  map_.reset();
  picture.SetImage({});
  scale.SetImage({});
  for (ui::Label* label : {&lblLow, &lblHigh, &lblCell}) label->SetCaption("");
}

bool MapPanel::Show(const std::string& path) {
  Clear();
  ui::Run run(window_);
  Outcome<PreviewedMap> read = PreviewedMap::Read(path, run);
  if (!run.Report(read)) return false;
  map_ = std::move(read.Value());
  path_ = path;
  Paint();
  return true;
}

void MapPanel::Paint() {
  Palette palette;
  if (!ReadPalette(app_.settings.defaultPalette, palette).Ok()) palette = GreyPalette();
  picture.SetImage(
      map_->Picture(palette, app_.settings.constraintColor, PreviewedMap::Unscaled::kStretched));
  scale.SetImage(ColourScale(palette));
  lblLow.SetCaption(NumberText(map_->Range().min));
  lblHigh.SetCaption(NumberText(map_->Range().max));
  lblCell.SetCaption(map_->Fault());
}

void MapPanel::ReadOut(const ui::MouseEvent& event) {
  const auto cell = map_ ? map_->CellAt(event.x, event.y) : std::nullopt;
  if (!cell) return;
  const MapPlace place = CentreOf(map_->Frame(), cell->column, cell->row);
  lblCell.SetCaption("X: " + NumberText(place.x) + "   Y: " + NumberText(place.y) +
                     "   Value: " + NumberText(cell->value));
  if (event.action == ui::MouseAction::kDown && onCell) onCell(*cell);
}

}  // namespace ormel
