#include "rastertools/trim_window.h"

#include <algorithm>
#include <utility>

#include "text/numbers.h"
#include "text/paths.h"
#include "ui/desktop.h"

namespace ormel {

FrmTrim::FrmTrim(ui::Desktop& desktop, std::vector<MapBounds> maps)
    : Window("frmTrim", "Trim Information"), desktop_(desktop), maps_(std::move(maps)) {
  for (const MapBounds& map : maps_) cboFactors.Add(FileNamePart(map.path, true));
  cboFactors.SelectIndex(1);
  optLargest.Choose();
  optSingle.SetToolTip("What one of the maps covers: the others are cut or filled up to it");
  optLargest.SetToolTip("What all of the maps cover");
  optSmallest.SetToolTip("What any of the maps covers: what a map does not have becomes NODATA");
  for (ui::OptionButton* option : {&optSingle, &optLargest, &optSmallest}) {
    option->onClick = [this] { ShowExtent(); };
  }
  cboFactors.onSelect = [this] {
    optSingle.Choose();
    ShowExtent();
  };
  cmdOK.SetDefault();
  cmdOK.onClick = [this] {
    agreed_ = true;
    desktop_.Close(*this);
  };
  cmdCancel.SetCancel();
  cmdCancel.onClick = [this] { desktop_.Close(*this); };
  SetLayout(ui::Column{
      ui::Frame{"Trim To:", ui::Row{optSingle, ui::Share(1, cboFactors)}, optLargest, optSmallest},
      lblExtent, ui::Stretch{}, ui::Row{ui::Stretch{}, cmdOK, cmdCancel}});
  ShowExtent();
}

std::optional<MapRectangle> FrmTrim::Ask(ui::Window& owner) {
  agreed_ = false;
  desktop_.ShowModal(*this, &owner);
  return agreed_ ? std::optional(Chosen()) : std::nullopt;
}

MapRectangle FrmTrim::Chosen() const {
  if (optLargest.Chosen()) return Intersection(maps_);
  if (optSmallest.Chosen()) return Union(maps_);
  const auto index = static_cast<std::size_t>(std::max(cboFactors.SelectedIndex(), 1));
  return maps_[index - 1].rectangle;
}

void FrmTrim::ShowExtent() {
  const auto broken = std::find_if(maps_.begin(), maps_.end(),
                                   [](const MapBounds& map) { return !map.fault.empty(); });
  if (broken != maps_.end()) return lblExtent.SetCaption(broken->fault);
  const MapRectangle rectangle = Chosen();
  if (rectangle.IsEmpty()) return lblExtent.SetCaption("The maps do not meet.");
  const TrimmedCells cells = CellsInside(maps_.front(), rectangle);
  lblExtent.SetCaption(NumberText(cells.ncols) + " columns, " + NumberText(cells.nrows) +
                       " rows, from X " + NumberText(rectangle.west) + " to " +
                       NumberText(rectangle.east) + " and Y " + NumberText(rectangle.south) +
                       " to " + NumberText(rectangle.north));
}

}  // namespace ormel
