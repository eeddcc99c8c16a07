#include "mce/nonlinear/weight_window.h"

#include <utility>

#include "ui/desktop.h"

namespace ormel {

FrmWeight::FrmWeight(AppContext& app, const std::string& caption, WeightGraph& graph,
                     ui::Handler modwt)
    : Window("frmWeight", caption),
      editor(*this, app, {.axis = FactorValueAxis()}, graph),
      modwt_(std::move(modwt)) {
  cmdDone.SetDefault();
  cmdDone.SetCancel();
  cmdDone.onClick = [this, &app] { app.desktop.Close(*this); };
  SetLayout(
      ui::Column{ui::Share(1, editor.Area()),
                 ui::Row{editor.cmdLoad, editor.cmdSave, ui::Stretch{}, editor.plot.buttons.cmdCopy,
                         editor.plot.buttons.cmdSave, ui::Stretch{}, cmdDone}});
  FocusOn(editor.FirstControl());
}

}  // namespace ormel
