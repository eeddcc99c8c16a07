#include "rastertools/data_prep_window.h"

#include <filesystem>
#include <unordered_map>
#include <utility>

#include "parts/output_note.h"
#include "rastertools/map_trim.h"
#include "rastertools/trim_window.h"
#include "text/paths.h"
#include "ui/desktop.h"
#include "ui/save_dialog.h"

namespace ormel {
namespace {

// Of the whole work, where the range of the set has to be found first.
constexpr double kPercentForRanges = 20;

constexpr char kScalingFile[] = "temp999";
constexpr char kTrimFile[] = "tempfile.tmp";

bool IsThere(const std::string& path) {
  std::error_code error;
  return std::filesystem::exists(path, error);
}

std::string NameOf(const std::string& path) { return FileNamePart(path, true); }

}  // namespace

FrmDataPrep::FrmDataPrep(AppContext& app)
    : Window("frmDataPrep", "Data Preparation"),
      folder(*this, app.desktop, NewFolders::kOffered),
      app_(app) {
  list_.SetOutputFolder(app.settings.workingDirectory);
  folder.SetFolder(app.settings.workingDirectory);
  File.SetFolder(app.settings.workingDirectory);
  lstFactors.SetVisible(false);
  lstOutput.SetVisible(false);
  ckAll.SetChecked(true);
  ExplainControls();
  ConnectControls();
  LayOut();
  ShowList();
}

std::vector<ui::MenuSpec> FrmDataPrep::Menus() {
  return {{"mTools",
           "&Tools",
           "",
           {},
           {{"mScale", "Scale from 0-255", "", [this] { Scale(); }, {}},
            {"mTrim", "Trim Data", "", [this] { Trim(); }, {}},
            ui::MenuSpec::Separator(),
            {"mExit", "E&xit", "", [this] { app_.desktop.Close(*this); }, {}}}}};
}

void FrmDataPrep::ExplainControls() {
  cmdDirRead.SetToolTip("Add all maps of the folder");
  cmdSetasOut.SetToolTip("Write all outputs into the folder above; they keep their names");
  cmdRemove.SetToolTip("Take the selected factors out of the list; the files stay");
  cmdClear.SetToolTip("Take all factors out of the list; the files stay");
  cmdChngOut.SetToolTip("Choose another file for the output of the selected factor");
  cmdPrefix.SetToolTip("Put a text in front of the names of all outputs");
  cmdSuffix.SetToolTip("Put a text behind the names of all outputs");
  cmdResetOut.SetToolTip("Give all outputs the names of their factors, in the output directory");
  cmdScale.SetToolTip("Stretch the values of each map, or of all together, to 0 to 255");
  cmdTrim.SetToolTip("Cut the maps to one rectangle of cells, or fill them up to it");
}

void FrmDataPrep::ConnectControls() {
  folder.onChange = [this] { File.SetFolder(folder.Folder()); };
  File.onDoubleClick = [this] {
    if (File.FirstSelected() != 0) AddFiles({JoinPath(File.Folder(), File.SelectedText())});
  };
  rows_.onSelect = [this] { ShowRow(); };
  for (ui::ListBox* list : {&lstFactorsD, &lstOutputD, &lstNote}) {
    list->onKey = [this](const std::string& key) {
      if (key == "Delete") Remove();
    };
  }
  lstOutputD.onDoubleClick = [this] { ChangeOutput(); };
  // Each switches the other off.
  ckAll.onClick = [this] { ckSelected.SetChecked(ckSelected.Checked() && !ckAll.Checked()); };
  ckSelected.onClick = [this] { ckAll.SetChecked(ckAll.Checked() && !ckSelected.Checked()); };
  cmdAdd.onClick = [this] { AddByDialog(); };
  cmdDirRead.onClick = [this] { ReadDirectory(); };
  cmdRemove.onClick = [this] { Remove(); };
  cmdClear.onClick = [this] {
    list_.Clear();
    ShowList();
  };
  cmdChngOut.onClick = [this] { ChangeOutput(); };
  cmdSetasOut.onClick = [this] { SetAsOutput(); };
  cmdResetOut.onClick = [this] {
    list_.ResetOutputs();
    ShowList();
  };
  cmdPrefix.onClick = [this] { AddText("Prefix to Add:", "Add Prefix", &DataPrepList::AddPrefix); };
  cmdSuffix.onClick = [this] { AddText("Suffix to Add:", "Add Suffix", &DataPrepList::AddSuffix); };
  cmdScale.onClick = [this] { Scale(); };
  cmdTrim.onClick = [this] { Trim(); };
  cmdExit.onClick = [this] { app_.desktop.Close(*this); };
  onDrop = [this](const std::string& path) { AddFiles({path}); };
}

void FrmDataPrep::LayOut() {
  using ui::Column, ui::Row, ui::Share, ui::Stretch;
  SetLayout(Column{
      Share(1, Row{Share(2, ui::Frame{"Folder", Share(1, folder.Area()), Share(1, File), cmdDirRead,
                                      cmdSetasOut}),
                   Share(5, Column{Share(1, Row{Share(3, Column{"&Factors", lstFactorsD}),
                                                Share(3, Column{"Outputs", lstOutputD}),
                                                Share(2, Column{"Will be", lstNote})}),
                                   lblRow,
                                   Row{cmdAdd, cmdRemove, cmdClear, Stretch{}, cmdChngOut,
                                       cmdPrefix, cmdSuffix, cmdResetOut}})}),
      lblFault, Row{"Perform on:", ckAll, ckSelected, Stretch{}, cmdScale, cmdTrim, cmdExit}});
}

// ---- The list -----------------------------------------------------------------------------------

void FrmDataPrep::AddByDialog() {
  const auto choice =
      app_.desktop.OpenFile({"Load a Factor", "ASCII Raster (.asc, .grd)|*.asc;*.grd", "", "", "",
                             ui::FileKind::kMaps, true});
  if (choice) AddFiles(choice->paths);
}

void FrmDataPrep::AddFiles(const std::vector<std::string>& paths) {
  for (const std::string& path : paths) {
    if (IsThere(path)) {
      list_.Add(path);
    } else {
      app_.desktop.Message("File Doesn't Exist", "Load Model Information");
    }
  }
  ShowList();
}

void FrmDataPrep::ReadDirectory() {
  File.Reread();
  std::vector<std::string> paths;
  for (const std::string& name : File.Items()) paths.push_back(JoinPath(File.Folder(), name));
  AddFiles(paths);
}

void FrmDataPrep::Remove() {
  list_.Remove(SelectedRows());
  ShowList();
}

void FrmDataPrep::ChangeOutput() {
  const std::vector<int> selected = SelectedRows();
  if (selected.size() != 1) return lblRow.SetCaption("Select one factor to change its output.");
  const DataPrepList::Row row = list_.At(selected.front());
  const auto choice =
      ui::AskSaveFile(app_.desktop,
                      {"New Output File for " + NameOf(row.input), "Ascii Raster (.asc)|*.asc",
                       "asc", FolderPart(row.output), NameOf(row.output), ui::FileKind::kMaps},
                      {"Overwrite Existing File?", "Set Output File"});
  if (!choice) return;
  list_.SetOutput(selected.front(), choice->Path());
  ShowList();
}

void FrmDataPrep::SetAsOutput() {
  list_.SetOutputFolder(folder.Folder());
  list_.MoveOutputs();
  ShowList();
}

void FrmDataPrep::AddText(const char* prompt, const char* title,
                          void (DataPrepList::*add)(const std::string&)) {
  const auto text = app_.desktop.Prompt(prompt, title, "");
  if (!text || text->empty()) return;
  (list_.*add)(*text);
  ShowList();
}

void FrmDataPrep::ShowList() {
  const std::vector<int> selected = SelectedRows();
  const bool sameRows = lstFactors.Count() == list_.Count();
  std::vector<std::string> inputs, outputs, inputNames, outputNames;
  for (int row = 1; row <= list_.Count(); ++row) {
    const auto& [input, output] = list_.At(row);
    inputs.push_back(input);
    outputs.push_back(output);
    inputNames.push_back(NameOf(input));
    outputNames.push_back(NameOf(output));
  }
  lstFactors.SetItems(std::move(inputs));
  lstOutput.SetItems(std::move(outputs));
  lstFactorsD.SetItems(std::move(inputNames));
  lstOutputD.SetItems(std::move(outputNames));
  lstNote.SetItems(Notes());
  if (sameRows) {
    for (ui::ListBox* list : {&lstFactorsD, &lstOutputD, &lstNote}) list->SetSelected(selected);
  }
  ShowRow();
}

// What becomes of the outputs' files in a run.
std::vector<std::string> FrmDataPrep::Notes() const {
  std::vector<std::string> notes;
  std::unordered_map<std::string, int> written;
  for (int row = 1; row <= list_.Count(); ++row) {
    const auto& [input, output] = list_.At(row);
    const auto [first, isNew] = written.emplace(output, row);
    notes.push_back(isNew
                        ? OutputNote(output, output == input ? "the original, changed" : "replaced")
                        : "written in row " + std::to_string(first->second) + " already");
  }
  return notes;
}

void FrmDataPrep::ShowRow() {
  const std::vector<int> selected = SelectedRows();
  if (selected.empty()) {
    lblRow.SetCaption("Output directory: " + list_.OutputFolder());
  } else {
    const auto& [input, output] = list_.At(selected.front());
    lblRow.SetCaption(input + "  \u2192  " + output);
  }
}

// ---- What both commands share -------------------------------------------------------------------

FrmDataPrep::Rows FrmDataPrep::ActedOn() const {
  Rows rows;
  for (int row = 1; row <= list_.Count(); ++row) {
    if (ckAll.Checked() || (ckSelected.Checked() && lstFactorsD.IsSelected(row))) {
      rows.push_back(list_.At(row));
    }
  }
  return rows;
}

bool FrmDataPrep::MayWrite(const Rows& rows) {
  lblFault.SetCaption("");
  const std::string question = OverwriteQuestion(rows);
  return question.empty() || app_.desktop.AskBeforeLoss(question, ui::kProgramTitle,
                                                        ui::Buttons::kYesNo) == ui::Answer::kYes;
}

// ---- Scaling ------------------------------------------------------------------------------------

void FrmDataPrep::Scale() {
  const Rows rows = ActedOn();
  if (!MayWrite(rows)) return;
  if (rows.empty()) return app_.desktop.Message("No Files to Scale");
  ui::Answer asSet = ui::Answer::kNo;
  if (rows.size() > 1) {
    asSet = app_.desktop.Ask(
        "Would you like to scale the factors between the minimum and maximum values of the set "
        "rather than the individual files?",
        "Scale to Full Data Set?", ui::Buttons::kYesNoCancel);
  }
  if (asSet == ui::Answer::kCancel) return;
  const bool finished = ScaleRows(rows, asSet == ui::Answer::kYes);
  ShowList();
  if (finished) app_.desktop.Message("Finished Scaling Files");
}

// The message is the same for every reason, which is told beside it.
void FrmDataPrep::TellFault(const std::string& output, const std::string& reason) {
  lblFault.SetCaption(reason);
  app_.desktop.Message(output + " is not a valid output file!");
}

std::vector<Outcome<ScalingRange>> FrmDataPrep::RangesOf(const Rows& rows, ui::Run& run) {
  std::vector<Outcome<ScalingRange>> ranges;
  for (const DataPrepList::Row& row : rows) {
    const auto done = static_cast<double>(ranges.size());
    const auto all = static_cast<double>(rows.size());
    ProgressSpan span(run, kPercentForRanges * done / all, kPercentForRanges * (done + 1) / all);
    ranges.push_back(RangeToScale(row.input, span));
    if (ranges.back().WasCancelled()) break;
  }
  return ranges;
}

// False: a person stopped it. A map that fails is told, and the others go on.
bool FrmDataPrep::ScaleRows(const Rows& rows, bool asSet) {
  ui::Run run(*this);
  std::vector<Outcome<ScalingRange>> ranges;
  std::optional<ScalingRange> set;
  if (asSet) ranges = RangesOf(rows, run);
  for (const Outcome<ScalingRange>& range : ranges) {
    if (range.WasCancelled()) return false;
    if (range.Ok()) set = set ? Joined(*set, range.Value()) : range.Value();
  }
  const double start = asSet ? kPercentForRanges : 0;
  const double share = (100 - start) / static_cast<double>(rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    ProgressSpan span(run, start + share * static_cast<double>(i),
                      start + share * static_cast<double>(i + 1));
    const bool isReadable = !asSet || ranges[i].Ok();
    const Outcome<> scaled =
        isReadable ? ScaleRow(rows[i], set, span) : Outcome<>(ranges[i].Stop());
    if (scaled.WasCancelled()) return false;
    if (scaled.Failed()) TellFault(rows[i].output, scaled.Text());
  }
  return true;
}

// From its own range when there is none of a set.
Outcome<> FrmDataPrep::ScaleRow(const DataPrepList::Row& row,
                                const std::optional<ScalingRange>& set, ProgressSink& progress) {
  ProgressSpan reading(progress, 0, 50);
  ProgressSpan writing(progress, set ? 0 : 50, 100);
  const Outcome<ScalingRange> range = set ? *set : RangeToScale(row.input, reading);
  if (!range.Ok()) return range.Stop();
  return ScaleMap({row.input, row.output, range.Value(), app_.settings.decimalPlaces, kScalingFile},
                  writing);
}

// ---- Trimming -----------------------------------------------------------------------------------

void FrmDataPrep::Trim() {
  const Rows rows = ActedOn();
  if (!MayWrite(rows) || !EnoughToTrim(rows)) return;
  const bool finished = TrimRows(rows);
  ShowList();
  if (finished) app_.desktop.Message("Done Trimming Data");
}

bool FrmDataPrep::EnoughToTrim(const Rows& rows) {
  if (rows.size() >= 2) return true;
  if (list_.Count() <= 1) {
    app_.desktop.Message("You have only entered one factor!");
  } else if (ckSelected.Checked()) {
    app_.desktop.Message("You must select at least two factors to trim!");
  } else {
    app_.desktop.Message("You must enter at least 2 factors to trim data", "Too few factors");
  }
  return false;
}

// False: it was cancelled or stopped, or came to an end with a message.
bool FrmDataPrep::TrimRows(const Rows& rows) {
  std::vector<MapBounds> maps;
  for (const DataPrepList::Row& row : rows) maps.push_back(BoundsOf(row.input));
  FrmTrim trim(app_.desktop, maps);
  const std::optional<MapRectangle> rectangle = trim.Ask(*this);
  if (!rectangle) return false;
  for (const MapBounds& map : maps) {
    if (!map.fault.empty()) lblFault.SetCaption(map.fault);
  }
  if (rectangle->IsEmpty()) {
    app_.desktop.Message("Factors have no common overlap");
    return false;
  }
  // The rectangle is none when a map in it could not be read.
  if (!lblFault.Caption().empty()) {
    app_.desktop.Message(lblFault.Caption());
    return false;
  }
  ui::Run run(*this);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const double share = 100.0 / static_cast<double>(rows.size());
    ProgressSpan span(run, share * static_cast<double>(i), share * static_cast<double>(i + 1));
    const Outcome<> trimmed = TrimMap({maps[i], rows[i].output, *rectangle, kTrimFile}, span);
    if (!run.Report(trimmed)) return false;
  }
  return true;
}

}  // namespace ormel
