#include "rastertools/class_map_window.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "base/file_writer.h"
#include "rastertools/class_map.h"
#include "text/csv.h"
#include "text/paths.h"
#include "ui/desktop.h"
#include "ui/run.h"
#include "ui/save_dialog.h"

namespace ormel {
namespace {

constexpr int kRowsShown = 12;
constexpr char kWorkingFile[] = "tempclasswrite.asc";

const ui::OverwriteQuestion kOverwrite{"File already exists! Overwrite?", "Save Model Information"};

std::string Counted(int count, const char* one, const char* several) {
  return std::to_string(count) + " " + (count == 1 ? one : several);
}

}  // namespace

FrmClass::FrmClass(AppContext& app)
    : Window("frmClass", "Create Factor from Class Data Set"),
      preview(*this, app, "picPrev"),
      app_(app) {
  ConnectControls();
  ShowTable();
}

void FrmClass::ConnectControls() {
  txtClassFile.SetToolTip("The map of classes");
  cmdLoadClass.SetToolTip("Look for the map of classes");
  cmdLoadClass.onClick = [this] { PickClassFile(); };
  cmdLoad.SetToolTip("Find the classes of the map: a row for each of its values");
  cmdLoad.onClick = [this] { LoadClass(); };
  Scrl.onChange = [this] { LayOut(); };
  cmdCopy.SetToolTip("Give every row without a value the number of its class");
  cmdCopy.onClick = [this] {
    table_.FillOutputs();
    ShowTable();
  };
  cmdScale.SetToolTip("Stretch the values to 0 to 255");
  cmdScale.onClick = [this] {
    table_.ScaleOutputs();
    ShowTable();
  };
  cmdClear.SetToolTip("Empty all values; the classes stay");
  cmdClear.onClick = [this] {
    table_.ClearOutputs();
    ShowTable();
  };
  cmdImport.SetToolTip("Take the values from a table: a class and its value on each line");
  cmdImport.onClick = [this] { Import(); };
  cmdExport.SetToolTip("Save classes and values as a table");
  cmdExport.onClick = [this] { Export(); };
  cmdGen.SetToolTip("Write the map with the values in place of the classes");
  cmdGen.onClick = [this] { Generate(); };
  cmdExit.onClick = [this] { app_.desktop.Close(*this); };
  preview.onCell = [this](const PreviewedMap::Cell& cell) { GoToClass(cell.value); };
  onDrop = [this](const std::string& path) { txtClassFile.SetText(path); };
}

void FrmClass::LayOut() {
  using ui::Column, ui::Frame, ui::Row, ui::Share, ui::Stretch;
  SetLayout(Column{Row{"Class &data:", txtClassFile, cmdLoadClass, cmdLoad},
                   Share(1, Row{Share(2, Frame{"Values", Share(1, RowsArea()), lblState,
                                               Row{cmdCopy, cmdScale, cmdClear, Stretch{}},
                                               Row{cmdImport, cmdExport, Stretch{}}}),
                                Share(3, Frame{"Preview", Share(1, preview.Area())})}),
                   Row{Stretch{}, cmdGen, cmdExit}});
}

ui::LayoutItem FrmClass::RowsArea() {
  ui::Table table{{"Class", "Value"}};
  const int first = Scrl.Value() + 1;
  for (int row = first; row < first + kRowsShown && row <= txtClass.Count(); ++row) {
    table.items.push_back(ui::Row{txtClass(row), ui::Share(1, txtOut(row))});
  }
  return ui::Row{ui::Share(1, ui::Column{table, ui::Stretch{}}), Scrl};
}

// ---- The class map ------------------------------------------------------------------------------

void FrmClass::PickClassFile() {
  const auto choice =
      app_.desktop.OpenFile({"Load Class Data", "ASCII Raster (.asc, .grd)|*.asc;*.grd",
                             "*.asc;*.grd", "", "", ui::FileKind::kMaps});
  if (choice) txtClassFile.SetText(choice->Path());
}

bool FrmClass::ClassFileIsThere() {
  std::error_code error;
  if (std::filesystem::exists(txtClassFile.Text(), error)) return true;
  app_.desktop.Message("Class File Does not Exist!");
  return false;
}

void FrmClass::LoadClass() {
  if (!ClassFileIsThere()) return;
  const std::string path = txtClassFile.Text();
  {
    ui::Run run(*this);
    const Outcome<std::vector<double>> classes = FindClasses(path, run);
    if (!run.Report(classes)) return;
    table_.SetClasses(classes.Value());
  }
  Scrl.SetValue(0);
  ShowTable();
  app_.noteFile(path);
  const bool shown = app_.desktop.Ask("Would You Like to Load a Preview of the Map?",
                                      "Load Preview?", ui::Buttons::kYesNo) == ui::Answer::kYes;
  if (shown) {
    preview.Show(path);
  } else {
    preview.Clear();
  }
}

// ---- The rows -----------------------------------------------------------------------------------

void FrmClass::ShowTable() {
  const int before = txtClass.Count();
  txtClass.Resize(table_.Count());
  txtOut.Resize(table_.Count());
  for (int row = 1; row <= table_.Count(); ++row) {
    txtClass(row).SetText(table_.At(row).classText);
    txtOut(row).SetText(table_.At(row).output);
    if (row > before) ConnectRow(row);
  }
  Scrl.SetRange(0, std::max(0, table_.Count() - kRowsShown));
  Scrl.SetSteps(1, kRowsShown);
  Scrl.SetEnabled(Scrl.Maximum() > 0);
  LayOut();
  ShowState();
}

void FrmClass::ConnectRow(int row) {
  txtClass(row).onChange = [this, row] {
    table_.At(row).classText = txtClass(row).Text();
    ShowState();
  };
  txtOut(row).onChange = [this, row] {
    table_.At(row).output = txtOut(row).Text();
    ShowState();
  };
  txtOut(row).onKey = [this, row](const std::string& key) { UseKey(row, key); };
}

void FrmClass::UseKey(int row, const std::string& key) {
  const std::pair<const char*, int> steps[] = {
      {"Up", -1}, {"Down", 1}, {"Return", 1}, {"PageUp", -kRowsShown}, {"PageDown", kRowsShown}};
  for (const auto& [name, rows] : steps) {
    if (key == name) GoToRow(std::clamp(row + rows, 1, table_.Count()));
  }
}

void FrmClass::GoToRow(int row) {
  const int first = Scrl.Value() + 1;
  if (row < first) Scrl.SetValue(row - 1);
  if (row >= first + kRowsShown) Scrl.SetValue(row - kRowsShown);
  if (Scrl.Value() + 1 != first) LayOut();
  FocusOn(txtOut(row));
}

void FrmClass::GoToClass(double value) {
  if (const int row = table_.RowOf(value)) GoToRow(row);
}

void FrmClass::ShowState() {
  const int empty = table_.RowsWithoutOutput();
  const int words = table_.OutputsWithoutNumber();
  std::string state = Counted(table_.Count(), "class", "classes") + ".";
  if (table_.Count() == 0) state = "Load a map of classes, or import a table.";
  if (empty > 0) state += " " + std::to_string(empty) + " without a value, written as found.";
  if (words > 0) state += " " + Counted(words, "value is", "values are") + " no number.";
  lblState.SetCaption(state);
}

// ---- Tables -------------------------------------------------------------------------------------

void FrmClass::Import() {
  const auto choice = app_.desktop.OpenFile({"Import CSV for Class Values",
                                             "Comma Separated Values (.txt, .csv)|*.txt;*.csv", "",
                                             "", "", ui::FileKind::kPoints});
  if (!choice) return;
  const Outcome<std::vector<std::string>> lines = ReadCsvLines(choice->Path());
  if (!lines.Ok()) return app_.desktop.Message(lines.Text());
  table_.TakeCsv(lines.Value());
  ShowTable();
}

void FrmClass::Export() {
  const auto choice = ui::AskSaveFile(
      app_.desktop,
      {"Export CSV", "Comma Separated Values (.csv)|*.csv", "txt", "", "", ui::FileKind::kPoints},
      kOverwrite);
  if (!choice) return;
  const Outcome<> written = WriteFile(choice->Path(), table_.Csv());
  if (written.Failed()) app_.desktop.Message(written.Text());
}

// ---- The map ------------------------------------------------------------------------------------

void FrmClass::Generate() {
  if (!ClassFileIsThere()) return;
  const auto choice = ui::AskSaveFile(app_.desktop,
                                      {"Export .asc From Class Data", "ASCII Raster (.asc)|*.asc",
                                       "asc", "", "", ui::FileKind::kMaps},
                                      kOverwrite);
  if (!choice) return;
  ClassMapJob job{txtClassFile.Text(), choice->Path(), table_.Rows()};
  if (job.target == job.source) {
    job.working = JoinPath(app_.settings.programFolder, kWorkingFile);
  }
  bool written = false;
  {
    ui::Run run(*this);
    written = run.Report(WriteClassMap(job, run));
  }
  if (!written) return;
  app_.noteFile(job.target);
  app_.desktop.Message("Finished!");
}

}  // namespace ormel
