#include "viewer/metric_window.h"

#include "ui/desktop.h"

namespace ormel {
namespace {

constexpr int kFeetOption = 2;  // of optUnits

}  // namespace

FrmMetric::FrmMetric(ui::Desktop& desktop) : Window("frmMetric", "Metric Information") {
  optUnits.SetCaptions({"&Metres and hectares", "&Feet and square feet"});
  optUnits.OnChange([this] { Update(); });
  cmdClear.SetToolTip("Take the points away and begin again");
  cmdClear.onClick = [this] {
    if (onStartAgain) onStartAgain();
  };
  cmdExit.SetCancel();
  cmdExit.onClick = [this, &desktop] { desktop.CloseByFrame(*this); };
  SetLayout(ui::Column{"Click in the map to draw a line.",
                       ui::Table{{"Segment Length:", lblSegment},
                                 {"Total  Length:", lblTotal},
                                 {"Polygon Area:", lblArea}},
                       ui::Frame{"Units", optUnits}, ui::Row{ui::Stretch{}, cmdClear, cmdExit}});
  Update();
}

void FrmMetric::Show(const Measures& measures) {
  measures_ = measures;
  Update();
}

void FrmMetric::OnClosed() {
  if (onEnd) onEnd();
}

void FrmMetric::Update() {
  const LengthUnits units =
      optUnits.Chosen() == kFeetOption ? LengthUnits::kFeet : LengthUnits::kMetres;
  lblSegment.SetCaption(LengthText(measures_.segment, units));
  lblTotal.SetCaption(LengthText(measures_.total, units));
  lblArea.SetCaption(AreaText(measures_.area, units));
}

}  // namespace ormel
