// The window "Metric Information": lengths and area of the line that a person draws on a map with
// the metric tool.
#pragma once

#include "ui/window.h"
#include "viewer/measure.h"

namespace ormel {

class FrmMetric final : public ui::Window {
 public:
  explicit FrmMetric(ui::Desktop& desktop);

  // Shows these figures, in the units that are chosen.
  void Show(const Measures& measures);

  ui::Handler onStartAgain;  // a person wants to begin a new line
  ui::Handler onEnd;         // the window is closed

  void OnClosed() override;

  ui::Label lblSegment{*this, "lblSegment"};
  ui::Label lblTotal{*this, "lblTotal"};
  ui::Label lblArea{*this, "lblArea"};
  ui::OptionGroup optUnits{*this, "optUnits"};
  ui::Button cmdClear{*this, "cmdClear", "&New Line"};
  ui::Button cmdExit{*this, "cmdExit", "&Close"};

 private:
  void Update();

  Measures measures_;
};

}  // namespace ormel
