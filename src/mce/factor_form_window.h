// The form of factors and constraints, which single-pass builders and the second page of time-step
// models share: rows of factor maps, constraint maps, model files, and reading a whole directory.
// What a row holds besides its map is the affair of the kind of factors.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "mapdata/factor_set.h"
#include "mce/factor_rows_window.h"
#include "mce/model_text.h"
#include "parts/app_context.h"
#include "parts/chosen_files.h"
#include "ui/desktop.h"
#include "ui/window.h"

namespace ormel {

class FactorForm;
struct DirectoryChoice;

// What a kind of model adds to the rows and to the form around them.
class FactorKind : public FactorRowKind {
 public:
  virtual ~FactorKind() = default;

  virtual const char* Extension() const = 0;  // of the model files
  // Commands that act on all rows: in the menu "Tools", and as buttons above the rows.
  virtual std::vector<ui::MenuSpec> ToolMenu() = 0;
  virtual std::vector<ui::LayoutItem> RowTools() = 0;
  // Frames beside that of the constraints.
  virtual std::vector<ui::LayoutItem> FurtherFrames() { return {}; }
  // The fields of a factor in the model file.
  virtual std::array<std::string, 2> RowFields(int row) const = 0;
  virtual void SetRowFields(int row, const std::array<std::string, 2>& fields) = 0;
  // Whether model files have the constraints from the last to the first.
  virtual bool TurnsConstraints() const { return false; }
  // Whether a person who loads another model is asked first.
  virtual bool AsksBeforeLoading() const = 0;
  virtual void FormCleared() {}
  // A person gave rows other maps, or took some away.
  virtual void RowsChanged() {}
  virtual void ModelLoaded() {}
};

using MakeFactorKind = std::unique_ptr<FactorKind> (*)(FactorForm& form);

class FactorForm : public ui::Window {
 public:
  // For the kind of factors.
  AppContext& App() const { return app_; }
  bool Changed() const { return changed_; }
  void MarkChanged() { changed_ = true; }

 protected:
  AppContext& app_;

 private:
  std::unique_ptr<FactorKind> kind_;  // before the rows, which ask it

 public:
  FactorRows rows;
  ui::Button cmdReadAll{*this, "cmdReadAll", "Read All From Directory"};
  ui::Button cmdDelFac{*this, "cmdDelFac", "Delete Checked"};
  ChosenFiles constraints;  // the list CFL
  ui::Button cmdLoad{*this, "cmdLoad", "&Load"};
  ui::Button cmdSave{*this, "cmdSave", "&Save"};
  ui::Button cmdClear{*this, "cmdClear", "&Clear"};

 protected:
  FactorForm(AppContext& app, const std::string& name, const std::string& caption,
             MakeFactorKind makeKind);

  FactorKind& Kind() const { return *kind_; }

  // ---- What the windows add. ----
  virtual void LayOut() = 0;
  // The title in a model file.
  virtual std::string Title() const = 0;
  virtual void SetTitle(const std::string& title) = 0;
  // The form has been emptied.
  virtual void FormCleared() {}
  // Where "Add Constraint" looks, and for which files.
  virtual ui::FileDialog ConstraintDialog() const;

  std::vector<ui::MenuSpec> FileMenu(ui::Handler save);
  std::vector<ui::MenuSpec> ToolMenu();
  ui::LayoutItem ToolsRow();
  std::vector<ui::LayoutItem> Buttons();  // Load, Save, Clear

  void SetRowCount(int count);
  // Takes away the rows without a map. False, with a message, when none is left.
  bool DropFreeRows();
  // Whether all maps of the rows are there; a message tells of the first that is not.
  bool MapsAreThere();

  // Asks for a model file when `path` is empty.
  void LoadModel(std::string path);
  // What stands on the form, in place of what stood there. Maps that are refused are left out; a
  // message has told so.
  void TakeModel(const ModelText& model);
  ModelText CurrentModel() const;
  // The file that a model is to be saved in, which is asked for; none: the person gave up.
  std::optional<std::string> AskSaveTarget();
  // False: a message has told why it could not be written.
  bool WriteModel(const std::string& path);
  void ClearForm();
  void SetUnchanged() { changed_ = false; }

 private:
  void ConnectHandlers();
  ChosenFilesSpec ConstraintsSpec();
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

  void AskFilter();
  void AskRoot();
  void AskAndClear();

  // A whole directory.
  void ReadAll();
  void RA(const DirectoryChoice& choice);
  bool TakeReference(const DirectoryChoice& choice);
  bool EnterReference(const DirectoryChoice& choice);
  bool TakeListed(const DirectoryChoice& choice);

  ReferenceHeader reference_;
  bool changed_ = false;  // since the model was saved
};

// A folder as model files hold it: without a separator at its end.
std::string WithoutSeparator(std::string folder);

}  // namespace ormel
