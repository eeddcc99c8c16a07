// What the builders of single-pass models have around the form of factors and constraints: title,
// palette and constraint colour, and the way to the viewer that makes the map.
#pragma once

#include <memory>
#include <string>

#include "mce/factor_form_window.h"
#include "mce/model_session.h"
#include "parts/palette_choice.h"

namespace ormel {

class GeneratorWindow;

class BuilderWindow : public FactorForm, public RunningModel {
 public:
  // Saves the model: into the session's file when that says so, else into one that is asked for.
  void cmdSave_Click() override;
  bool Unload() override;
  void BringForward() override;

  // Asks what becomes of unsaved changes. False: the builder stays.
  bool QueryClose() override;
  void OnClosed() override;

  ui::TextBox txtTitle{*this, "txtTitle"};
  ui::ColourSwatch DCC{*this, "DCC"};
  PaletteChoice palette;
  ui::Button cmdOk{*this, "cmdOk", "OK"};
  ui::Button cmdClose{*this, "cmdClose", "E&xit"};
  ui::MenuBar menu{*this,
                   {{"mFile", "&File", "", {}, FileMenu([this] { cmdSave_Click(); })},
                    {"mTools", "&Tools", "", {}, ToolMenu()}}};

 protected:
  // With one empty row; the model runs from now on.
  BuilderWindow(AppContext& app, const std::string& name, const std::string& caption,
                MakeFactorKind makeKind);

  // The viewer of the model on the form. Every row has a file that exists.
  virtual std::unique_ptr<GeneratorWindow> MakeViewer() = 0;

  std::string Title() const override { return txtTitle.Text(); }

 private:
  void LayOut() override;
  void SetTitle(const std::string& title) override { txtTitle.SetText(title); }
  void FormCleared() override;
  void PickConstraintColour();

  void Accept();
  void OpenViewer();
  void ReturnFromViewer();

  ui::Window* viewer_ = nullptr;
};

}  // namespace ormel
