// The window "Trim Information": the rectangle to which maps are trimmed.
#pragma once

#include <optional>
#include <vector>

#include "rastertools/map_trim.h"
#include "ui/window.h"

namespace ormel {

class FrmTrim final : public ui::Window {
 public:
  // At least one map. The desktop outlives the window.
  FrmTrim(ui::Desktop& desktop, std::vector<MapBounds> maps);

  // Shows the window. The rectangle that a person chose, which may be empty; none: it was
  // cancelled.
  std::optional<MapRectangle> Ask(ui::Window& owner);

  ui::OptionButton optSingle{*this, "optSingle", "&Single Factor"};
  ui::ComboBox cboFactors{*this, "cboFactors"};
  ui::OptionButton optLargest{*this, "optLargest", "&Intersection"};
  ui::OptionButton optSmallest{*this, "optSmallest", "&Union"};
  ui::Label lblExtent{*this, "lblExtent"};
  ui::Button cmdOK{*this, "cmdOK", "&OK"};
  ui::Button cmdCancel{*this, "cmdCancel", "Cancel"};

 private:
  MapRectangle Chosen() const;
  void ShowExtent();

  ui::Desktop& desktop_;
  const std::vector<MapBounds> maps_;
  ui::OptionSet target_{&optSingle, &optLargest, &optSmallest};
  bool agreed_ = false;
};

}  // namespace ormel
