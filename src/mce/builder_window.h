// What all builders of models share: rows of factor maps, constraint maps, title, palette and
// constraint colour, the model file, reading a whole directory, and the way to the viewer that
// makes the map. What a row holds besides its file is the affair of each kind of builder.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "mapdata/app_context.h"
#include "mapdata/factor_set.h"
#include "mce/model_session.h"
#include "mce/model_text.h"
#include "ui/desktop.h"
#include "ui/window.h"

namespace ormel {

struct DirectoryChoice;

class BuilderWindow : public ui::Window, public RunningModel {
 public:
  // Saves the model: into the session's file when that says so, else into one that is asked for.
  void cmdSave_Click() override;
  bool Unload() override;
  void BringForward() override;

  // Asks what becomes of unsaved changes. False: the builder stays.
  bool QueryClose() override;
  void OnClosed() override;

  ui::TextBox txtTitle{*this, "txtTitle"};
  ui::Label lblfnum{*this, "lblfnum"};
  ui::SpinButton fchng{*this, "fchng", 0, 32767};
  ui::Button cmdReadAll{*this, "cmdReadAll", "Read All From Directory"};
  ui::Button cmdDelFac{*this, "cmdDelFac", "Delete Checked"};
  ui::ControlArray<ui::CheckBox> FCkBox{*this, "FCkBox"};
  ui::ControlArray<ui::ComboBox> FList{*this, "FList"};
  ui::ControlArray<ui::Button> FileOpen{*this, "FileOpen"};
  ui::ScrollBar FScrl{*this, "FScrl"};
  ui::ListBox CFL{*this, "CFL", ui::ListBox::Choice::kMultiple};
  ui::Button CmdSrchC{*this, "CmdSrchC", "&Add..."};
  ui::Button CmdRemoveC{*this, "CmdRemoveC", "Remove"};
  ui::ColourSwatch DCC{*this, "DCC"};
  ui::TextBox txtPal{*this, "txtPal"};
  ui::Button cmdLP{*this, "cmdLP", "&Browse..."};
  ui::Picture PicPP{*this, "PicPP"};
  ui::Button cmdLoad{*this, "cmdLoad", "&Load"};
  ui::Button cmdSave{*this, "cmdSave", "&Save"};
  ui::Button cmdClear{*this, "cmdClear", "&Clear"};
  ui::Button cmdOk{*this, "cmdOk", "OK"};
  ui::Button cmdClose{*this, "cmdClose", "E&xit"};
  // Root folder and filter of new rows, and the files of the folder that was looked at last.
  ui::FileList filelist{*this, "filelist", ui::ListBox::Choice::kSingle, "*.asc"};
  ui::FileList filelistt{*this, "filelistt", ui::ListBox::Choice::kSingle, "*.asc"};
  ui::MenuBar menu;

 protected:
  // `extension` is that of the model files; `tools` come first in the menu "Tools".
  BuilderWindow(AppContext& app, const std::string& name, std::string extension,
                std::vector<ui::MenuSpec> tools);

  // The end of every builder's constructor: one empty row, and the model runs.
  void Begin();

  // ---- What the kinds of builders add. Rows count from 1. ----
  virtual void ResizeRows(int count) = 0;
  virtual void SetRowDefaults(int row) = 0;
  virtual void CopyRow(int from, int to) = 0;
  virtual std::vector<ui::LayoutItem> RowHeadings() const = 0;
  virtual std::vector<ui::LayoutItem> RowCells(int row) = 0;
  // Buttons that act on all rows.
  virtual std::vector<ui::LayoutItem> RowTools() = 0;
  // The fields of a factor in the model file.
  virtual std::array<std::string, 2> RowFields(int row) const = 0;
  virtual void SetRowFields(int row, const std::array<std::string, 2>& fields) = 0;
  // Every row has a file that exists. Ends with ShowViewer(), or without a viewer.
  virtual void OpenViewer() = 0;

  int RowCount() const { return FList.Count(); }
  std::string FactorFolder(int row) const {
    return FactorFolders_[static_cast<std::size_t>(row - 1)];
  }
  std::string PaletteName() const { return palettePath_.empty() ? "default" : palettePath_; }
  void MarkChanged() { changed_ = true; }
  void LoadModel(std::string path);

  // Shows the viewer in place of the builder, as long as the builder is open.
  template <class Viewer>
  void ShowViewer(std::unique_ptr<Viewer> viewer) {
    if (!app_.desktop.IsOpen(*this)) return;
    viewer->onReturnToBuilder = [this] { ReturnFromViewer(); };
    viewer->onExitToMain = [this] {
      viewer_ = nullptr;
      if (!Unload()) ReturnFromViewer();
    };
    viewer_ = &app_.desktop.Show(std::move(viewer), app_.desktop.FindWindow("frmMain"));
    app_.desktop.Hide(*this);
  }

  AppContext& app_;

 private:
  void ConnectHandlers();
  void LayOut();
  ui::LayoutItem FactorArea();

  // Rows.
  void SetRowCount(int count);
  void StartRow(int row);
  void DeleteRows(const std::vector<bool>& marked);
  void DeleteChecked();
  void SpinRows();
  std::vector<std::string> FilesOf(const std::string& folder);
  void RefillLists();
  std::string RowPath(int row) const;
  bool IsFree(int row) const { return FList(row).Text().empty(); }
  void PutFile(int row, const std::string& path);
  void AddFactorRow(const std::string& path);

  // Maps that join.
  LoadedData Loaded() const;
  Registration Register(const std::string& path, CheckMode mode, int row = 0);
  bool TakeFactor(int row, const std::string& path);
  void PickFactor(int row);
  void ChooseFromList(int row);
  void DropFactor(const std::string& path);
  void AddConstraint();
  void RemoveConstraints();

  // The rest of the form.
  void ShowPalette();
  void PickPalette();
  void TypePalette();
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

  bool PaletteUsable();
  void Accept();
  void ReturnFromViewer();

  const std::string extension_;
  std::vector<std::string> FactorFolders_;  // of row 1 first; grows with the rows, never shrinks
  ReferenceHeader reference_;
  std::string palettePath_;  // empty: the default palette
  bool changed_ = false;     // since the model was saved
  ui::Window* viewer_ = nullptr;
};

}  // namespace ormel
