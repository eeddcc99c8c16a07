#include "mce/builder_window.h"

#include <utility>

#include "mce/generator_window.h"
#include "ui/run.h"

namespace ormel {

BuilderWindow::BuilderWindow(AppContext& app, const std::string& name, const std::string& caption,
                             MakeFactorKind makeKind)
    : FactorForm(app, name, caption, makeKind), palette(*this, app) {
  cmdOk.SetDefault();
  cmdOk.SetToolTip("Read the maps and go on to the suitability map");
  DCC.SetToolTip("Colour of cells that a constraint forbids; click to change it");
  const auto changed = [this] { MarkChanged(); };
  txtTitle.onChange = changed;
  DCC.onClick = [this] { PickConstraintColour(); };
  palette.onChange = changed;
  cmdSave.onClick = [this] { cmdSave_Click(); };
  cmdOk.onClick = [this] { Accept(); };
  cmdClose.onClick = [this] { app_.desktop.CloseByFrame(*this); };
  app_.session.Begin(*this);
  DCC.SetColour(app_.settings.constraintColor);
  SetRowCount(1);
  Kind().RowsChanged();
}

void BuilderWindow::LayOut() {
  ui::Row frames{ui::Share(3, ui::Frame{"Constraints", constraints.list,
                                        ui::Row{constraints.cmdAdd, constraints.cmdRemove,
                                                ui::Stretch{}, "Colour:", DCC}}),
                 ui::Share(2, ui::Frame{"Palette", ui::Row{palette.txtPal, palette.cmdLP},
                                        palette.PicPP, ui::Stretch{}})};
  for (ui::LayoutItem& frame : Kind().FurtherFrames()) frames.items.push_back(std::move(frame));
  ui::Row buttons;
  buttons.items = Buttons();
  for (ui::LayoutItem item :
       {ui::LayoutItem(ui::Stretch{}), ui::LayoutItem(cmdOk), ui::LayoutItem(cmdClose)}) {
    buttons.items.push_back(std::move(item));
  }
  SetLayout(ui::Column{ui::Row{"&Title:", txtTitle}, ToolsRow(), rows.Area(), ui::Share(3, frames),
                       buttons});
}

void BuilderWindow::FormCleared() { DCC.SetColour(app_.settings.constraintColor); }

void BuilderWindow::PickConstraintColour() {
  const auto colour = app_.desktop.PickColour("Select New Constraint Color", DCC.Value());
  if (!colour) return;
  DCC.SetColour(*colour);
  MarkChanged();
}

void BuilderWindow::cmdSave_Click() {
  const std::optional<std::string> path =
      app_.session.saveInPlace ? std::optional(app_.session.modelFile) : AskSaveTarget();
  if (path) (void)WriteModel(*path);
}

// ---- On to the viewer, and the end --------------------------------------------------------------

void BuilderWindow::Accept() {
  if (palette.Usable() && DropFreeRows() && MapsAreThere()) OpenViewer();
}

// The viewer takes the place of the builder, when it is still open behind the reading.
void BuilderWindow::OpenViewer() {
  std::unique_ptr<GeneratorWindow> viewer = MakeViewer();
  viewer->CV.SetColour(DCC.Value());
  {
    ui::Run run(*this);
    if (!run.Report(viewer->Start(run))) return;
  }
  if (!app_.desktop.IsOpen(*this)) return;
  viewer->onReturnToBuilder = [this] { ReturnFromViewer(); };
  viewer->onExitToMain = [this] {
    viewer_ = nullptr;
    if (!Unload()) ReturnFromViewer();
  };
  viewer_ = &app_.desktop.Show(std::move(viewer), app_.desktop.FindWindow("frmMain"));
  app_.desktop.Hide(*this);
}

void BuilderWindow::ReturnFromViewer() {
  viewer_ = nullptr;
  app_.desktop.ShowAgain(*this);
}

bool BuilderWindow::QueryClose() {
  if (!Changed()) return true;
  switch (app_.desktop.Ask("Save Changes?", "Close Model", ui::Buttons::kYesNoCancel)) {
    case ui::Answer::kYes:
      cmdSave_Click();
      return !Changed();  // a save that was given up or failed loses nothing
    case ui::Answer::kNo:
      return true;
    default:
      return false;
  }
}

bool BuilderWindow::Unload() {
  if (app_.desktop.IsOpen(*this) && QueryClose()) app_.desktop.Close(*this);
  return !app_.desktop.IsOpen(*this);
}

void BuilderWindow::OnClosed() {
  if (viewer_ != nullptr) app_.desktop.Close(*std::exchange(viewer_, nullptr));
  app_.session.End(*this);
}

void BuilderWindow::BringForward() {
  app_.desktop.ShowAgain(viewer_ != nullptr ? *viewer_ : static_cast<ui::Window&>(*this));
}

}  // namespace ormel
