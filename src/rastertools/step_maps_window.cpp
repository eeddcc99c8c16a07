#include "rastertools/step_maps_window.h"

#include <utility>

#include "parts/output_note.h"
#include "text/paths.h"
#include "ui/desktop.h"
#include "ui/run.h"

namespace ormel {
namespace {

constexpr char kDatesTitle[] = "Give Date Suffixes";

}  // namespace

FrmGenTSMaps::FrmGenTSMaps(AppContext& app)
    : Window("frmGenTSMaps", "Create Time Step Factor Files"),
      folder(*this, app.desktop, NewFolders::kOffered),
      app_(app) {
  OptIncludeFname.SetCaptions({"Don't Include", "Include Factor Name in Output"});
  optSuffix.SetCaptions(
      {"Step Number Fixed Length", "Step Number Variable Length", "Date", "Column Header"});
  folder.SetFolder(app.settings.workingDirectory);
  ConnectControls();
  LayOut();
  ShowRows();
  ShowOutputs();
}

void FrmGenTSMaps::ConnectControls() {
  txtFactor.SetToolTip("The map that is changed from step to step");
  txtFactor.onChange = [this] { ShowOutputs(); };
  cmdLoadFactor.SetToolTip("Look for the map");
  cmdLoadFactor.onClick = [this] { PickFactor(); };
  txtCSV.SetToolTip("A table: a class and its value in each step on a line, headings on the first");
  txtCSV.onLeave = [this] { ReadTable(); };
  cmdLoadCSV.SetToolTip("Look for the table");
  cmdLoadCSV.onClick = [this] { PickTable(); };
  ckClassData.SetToolTip(
      "Cells become the values of their classes; without it, they are multiplied by the numbers of "
      "one row");
  ckClassData.onClick = [this] { ShowRows(); };
  lstRows.SetToolTip("The row whose numbers multiply the map");
  OptIncludeFname.OnChange([this] { ShowOutputs(); });
  optSuffix.OnChange([this] { ShowOutputs(); });
  folder.onChange = [this] { ShowOutputs(); };
  cmdWrite.SetToolTip("Write a map for each step; files of these names are replaced");
  cmdWrite.onClick = [this] { Write(); };
  cmdExit.onClick = [this] { app_.desktop.Close(*this); };
}

void FrmGenTSMaps::LayOut() {
  using ui::Column, ui::Frame, ui::Row, ui::Share, ui::Stretch;
  SetLayout(Column{
      ui::Table{{"&Factor:", txtFactor, cmdLoadFactor}, {"&Table:", txtCSV, cmdLoadCSV}},
      Share(1, Row{Share(2, Column{Frame{"Factor Name", OptIncludeFname},
                                   Frame{"Suffix Options", optSuffix},
                                   Share(1, Frame{"Values", ckClassData,
                                                  "&Row of the table:", Share(1, lstRows)})}),
                   Share(3, Frame{"Output Folder", folder.Area()}),
                   Share(4, Frame{"Files",
                                  Share(1, Row{Share(2, Column{"Output", Share(1, lstOutput)}),
                                               Share(1, Column{"Will be", Share(1, lstNote)})}),
                                  lblState})}),
      lblFault, Row{Stretch{}, cmdWrite, cmdExit}});
}

// ---- Factor and table ---------------------------------------------------------------------------

void FrmGenTSMaps::PickFactor() {
  const auto choice = app_.desktop.OpenFile(
      {"Load Factor", "ASCII Raster (.asc, .grd)|*.asc;*.grd", "", "", "", ui::FileKind::kMaps});
  if (!choice) return;
  txtFactor.SetText(choice->Path());
  ShowOutputs();
}

void FrmGenTSMaps::PickTable() {
  const auto choice = app_.desktop.OpenFile(
      {"Load CSV", "CSV Files|*.csv;*.txt", "", "", "", ui::FileKind::kPoints});
  if (!choice) return;
  txtCSV.SetText(choice->Path());
  ReadTable();
}

void FrmGenTSMaps::ReadTable() {
  table_.reset();
  lblFault.SetCaption("");
  if (!txtCSV.Text().empty()) {
    Outcome<StepTable> table = StepTable::Read(txtCSV.Text());
    if (table.Ok()) table_ = std::move(table.Value());
    if (table.Failed()) lblFault.SetCaption(table.Text());
  }
  std::vector<std::string> rows;
  for (int row = 1; table_ && row <= table_->Rows(); ++row) rows.push_back(table_->ClassOf(row));
  lstRows.SetItems(std::move(rows));
  ShowOutputs();
}

// A row is needed when cells are multiplied.
void FrmGenTSMaps::ShowRows() { lstRows.SetEnabled(!ckClassData.Checked()); }

StepNames FrmGenTSMaps::Names() const {
  StepNames names;
  names.folder = folder.Folder();
  if (OptIncludeFname.Chosen() == 1) names.factorName = FileNamePart(txtFactor.Text());
  names.suffix = static_cast<StepSuffix>(optSuffix.Chosen());
  return names;
}

void FrmGenTSMaps::ShowOutputs() {
  std::vector<std::string> outputs, notes;
  const bool dated = Names().suffix == StepSuffix::kDate;
  if (table_ && dated) {
    outputs.assign(static_cast<std::size_t>(table_->Steps()), Names().factorName + "(date).asc");
    notes.assign(outputs.size(), "asked for");
  } else if (table_) {
    const Outcome<std::vector<std::string>> paths = StepPaths(*table_, Names());
    for (const std::string& path : paths.Value()) {
      outputs.push_back(FileNamePart(path, true));
      notes.push_back(OutputNote(path, "replaced"));
    }
  }
  lblState.SetCaption(std::to_string(outputs.size()) + " steps.");
  lstOutput.SetItems(std::move(outputs));
  lstNote.SetItems(std::move(notes));
}

// ---- The run ------------------------------------------------------------------------------------

bool FrmGenTSMaps::InputsAreThere() {
  const struct {
    bool missing;
    const char* message;
  } checks[] = {{txtFactor.Text().empty(), "No Map Specified!"},
                {txtCSV.Text().empty(), "No CSV Defined!"},
                {!ckClassData.Checked() && lstRows.FirstSelected() == 0, "No Row Selected!"}};
  for (const auto& [missing, message] : checks) {
    if (!missing) continue;
    app_.desktop.Message(message);
    return false;
  }
  return true;
}

std::optional<double> FrmGenTSMaps::AskStart() {
  for (;;) {
    const auto text = app_.desktop.Prompt("Starting Date", kDatesTitle, "");
    if (!text) return std::nullopt;
    if (const auto date = ReadDate(*text)) return date;
    app_.desktop.Message("Not a valid date! Please Choose Another");
  }
}

std::optional<DateUnit> FrmGenTSMaps::AskUnit() {
  for (;;) {
    const auto word = app_.desktop.Prompt(
        "Increment? (Year, Month, Week, Day, Hour, Minute, Second)", kDatesTitle, "Day");
    if (!word) return std::nullopt;
    if (const auto unit = DateUnitNamed(*word)) return unit;
    app_.desktop.Message("Not a valid increment!");
  }
}

std::optional<StepDates> FrmGenTSMaps::AskDates() {
  const auto start = AskStart();
  if (!start) return std::nullopt;
  const auto unit = AskUnit();
  if (!unit) return std::nullopt;
  return StepDates{*start, *unit};
}

void FrmGenTSMaps::Write() {
  if (!InputsAreThere()) return;
  StepNames names = Names();
  if (names.suffix == StepSuffix::kDate) {
    const auto dates = AskDates();
    if (!dates) return;
    names.dates = *dates;
  }
  lblFault.SetCaption("");
  Outcome<> written = Done{};
  {
    ui::Run run(*this);
    written = WriteAll(names, run);
  }
  ShowOutputs();
  if (written.WasCancelled()) return;
  // The message is the same for every reason, which is told beside it.
  lblFault.SetCaption(written.Text());
  app_.desktop.Message(written.Ok() ? "Finished Generating Time Step Maps!"
                                    : "Error Writing Files!");
}

// The table is read again: it may have been saved meanwhile.
Outcome<> FrmGenTSMaps::WriteAll(const StepNames& names, ProgressSink& progress) {
  Outcome<StepTable> table = StepTable::Read(txtCSV.Text());
  if (!table.Ok()) return table.Stop();
  const Outcome<std::vector<std::string>> paths = StepPaths(table.Value(), names);
  if (!paths.Ok()) return paths.Stop();
  StepMapsJob job{txtFactor.Text(), std::move(table.Value()), txtCSV.Text(), paths.Value()};
  job.decimalPlaces = app_.settings.decimalPlaces;
  if (!ckClassData.Checked()) job.row = lstRows.FirstSelected();
  if (job.row.value_or(0) > job.table.Rows()) {
    return Failure{FailureKind::kDamaged, job.tablePath + ": the chosen row is gone"};
  }
  return WriteStepMaps(job, progress);
}

}  // namespace ormel
