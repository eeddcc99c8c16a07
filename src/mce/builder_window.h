// What all builders of models share: rows of factor maps, constraint maps, title, palette and
// constraint colour, the model file, reading a whole directory, and the way to the viewer that
// makes the map. What a row holds besides its file is the affair of each kind of builder.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "mapdata/factor_set.h"
#include "mce/factor_rows_window.h"
#include "mce/model_session.h"
#include "mce/model_text.h"
#include "parts/app_context.h"
#include "parts/chosen_files.h"
#include "parts/palette_choice.h"
#include "ui/desktop.h"
#include "ui/window.h"

namespace ormel {

class GeneratorWindow;
struct DirectoryChoice;

class BuilderWindow : public ui::Window, public RunningModel, protected FactorRowKind {
 public:
  // Saves the model: into the session's file when that says so, else into one that is asked for.
  void cmdSave_Click() override;
  bool Unload() override;
  void BringForward() override;

  // Asks what becomes of unsaved changes. False: the builder stays.
  bool QueryClose() override;
  void OnClosed() override;

  ui::TextBox txtTitle{*this, "txtTitle"};
  FactorRows rows{*this, *this};
  ui::Button cmdReadAll{*this, "cmdReadAll", "Read All From Directory"};
  ui::Button cmdDelFac{*this, "cmdDelFac", "Delete Checked"};
  ChosenFiles constraints;  // the list CFL
  ui::ColourSwatch DCC{*this, "DCC"};
  PaletteChoice palette;
  ui::Button cmdLoad{*this, "cmdLoad", "&Load"};
  ui::Button cmdSave{*this, "cmdSave", "&Save"};
  ui::Button cmdClear{*this, "cmdClear", "&Clear"};
  ui::Button cmdOk{*this, "cmdOk", "OK"};
  ui::Button cmdClose{*this, "cmdClose", "E&xit"};
  ui::MenuBar menu;

 protected:
  // `extension` is that of the model files; `tools` come first in the menu "Tools".
  BuilderWindow(AppContext& app, const std::string& name, const std::string& caption,
                std::string extension, std::vector<ui::MenuSpec> tools);

  // The end of every builder's constructor: one empty row, and the model runs.
  void Begin();

  // ---- What the kinds of builders add, besides what stands in their rows. ----
  // Buttons that act on all rows.
  virtual std::vector<ui::LayoutItem> RowTools() = 0;
  // Frames beside those of the constraints and the palette.
  virtual std::vector<ui::LayoutItem> FurtherFrames() { return {}; }
  // The fields of a factor in the model file.
  virtual std::array<std::string, 2> RowFields(int row) const = 0;
  virtual void SetRowFields(int row, const std::array<std::string, 2>& fields) = 0;
  // The constraints in the order in which the model file has them.
  virtual std::vector<std::string> ConstraintsToSave() const { return constraints.Paths(); }
  // Whether a person who loads another model is asked first.
  virtual bool AsksBeforeLoading() const { return changed_; }
  virtual void FormCleared() {}
  // A person gave rows other maps, or took some away.
  virtual void RowsChanged() {}
  virtual void ModelLoaded() {}
  // The viewer of the model on the form. Every row has a file that exists.
  virtual std::unique_ptr<GeneratorWindow> MakeViewer() = 0;

  bool Changed() const { return changed_; }
  void MarkChanged() { changed_ = true; }
  void LoadModel(std::string path);

  AppContext& app_;

 private:
  void ConnectHandlers();
  void LayOut();
  void SetRowCount(int count);
  void DeleteRows(const std::vector<bool>& marked);
  void DeleteChecked();
  void SpinRows();
  // Maps that join.
  LoadedData Loaded() const;
  Registration Register(const std::string& path, CheckMode mode, int row = 0);
  bool TakeFactor(int row, const std::string& path);
  void PickFactor(int row);
  void ChooseFromList(int row);
  void DropFactor(const std::string& path);
  void AddConstraint(const std::string& path);

  // The rest of the form.
  void PickConstraintColour();
  void AskFilter();
  void AskRoot();
  void ClearForm();
  void AskAndClear();

  // Model files.
  ModelText CurrentModel() const;
  std::optional<std::string> SaveTarget();
  void TakeModel(const ModelText& model);

  // A whole directory.
  void ReadAll();
  void RA(const DirectoryChoice& choice);
  bool TakeReference(const DirectoryChoice& choice);
  bool EnterReference(const DirectoryChoice& choice);
  bool TakeListed(const DirectoryChoice& choice);

  void Accept();
  void OpenViewer();
  void ReturnFromViewer();

  const std::string extension_;
  ReferenceHeader reference_;
  bool changed_ = false;  // since the model was saved
  ui::Window* viewer_ = nullptr;
};

}  // namespace ormel
