#include "rastertools/map_stats_window.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/file_writer.h"
#include "mapdata/map_header.h"
#include "mapdata/raster.h"
#include "text/numbers.h"
#include "text/paths.h"
#include "ui/desktop.h"
#include "ui/run.h"

namespace ormel {
namespace {

ChosenFilesSpec MapsSpec() {
  ChosenFilesSpec spec;
  spec.dialog = [] {
    return ui::FileDialog{
        "Add Maps", "ASCII Raster Files (.asc)|*.asc", "", "", "", ui::FileKind::kMaps, true};
  };
  return spec;
}

}  // namespace

FrmMapStats::FrmMapStats(AppContext& app)
    : Window("frmMapStats", "Map Statistics"),
      files(*this, app.desktop, MapsSpec()),
      chart(*this, app, "picHist"),
      app_(app) {
  files.list.SetShortened(true);
  files.list.onSelect = [this] { ShowSelected(); };
  files.onRemoved = [this] { ShowSelected(); };
  txtConstraint.SetToolTip("Only cells where this map of 0 and 1 has 1 are counted");
  txtConstraint.onLeave = [this] { UseConstraint(txtConstraint.Text()); };
  cmdLoadConstraint.SetToolTip("Look for the constraint");
  cmdLoadConstraint.onClick = [this] { PickConstraint(); };
  cmdClearConstraint.SetToolTip("Count all cells");
  cmdClearConstraint.onClick = [this] { UseConstraint(""); };
  chart.onRead = [this](const ChartHit& bar) { ReadCategory(bar); };
  cmdExportCurrentStats.SetToolTip("Write the figures of the map on show, in full precision");
  cmdExportCurrentStats.onClick = [this] { ExportCurrent(); };
  cmdExportCumulativeStats.SetToolTip("Write a table with the figures of all maps in the list");
  cmdExportCumulativeStats.onClick = [this] { ExportCumulative(); };
  cmdExportFH.SetToolTip("Write the counts of all categories of the map on show");
  cmdExportFH.onClick = [this] { ExportHistogram(); };
  cmdExit.onClick = [this] { app_.desktop.Close(*this); };
  onDrop = [this](const std::string& path) { AddByDrop(path); };
  LayOut();
  ShowSelected();
}

void FrmMapStats::LayOut() {
  using ui::Column, ui::Frame, ui::Row, ui::Share, ui::Stretch;
  const auto header = Frame{"Map", lblColumns, lblRows, lblX, lblY, lblCellSize, lblNoData};
  const auto figures = Frame{"Values", lblMinimum, lblMaximum, lblMean, lblSD, lblCount, lblSum};
  SetLayout(Column{
      Share(1, Row{Share(2, Column{Share(1, Frame{"Maps", files.list,
                                                  Row{files.cmdAdd, files.cmdRemove, Stretch{}}}),
                                   Frame{"Constraint",
                                         Row{txtConstraint, cmdLoadConstraint, cmdClearConstraint}},
                                   Row{header, Share(1, figures)}}),
                   Share(3, Frame{"Frequency Histogram", Share(1, chart.Area()),
                                  Row{"Values from", lblXMin, "to", lblXMax, Stretch{},
                                      "Largest count:", lblYMax}})}),
      lblFault,
      Row{Stretch{}, cmdExportCurrentStats, cmdExportCumulativeStats, cmdExportFH, cmdExit}});
}

// A map that is dropped is shown.
void FrmMapStats::AddByDrop(const std::string& path) {
  files.AddFile(path);
  files.list.SetSelected({files.list.Count()});
  ShowSelected();
}

// ---- The constraint -----------------------------------------------------------------------------

void FrmMapStats::PickConstraint() {
  const auto choice =
      app_.desktop.OpenFile({"Load Constraint", "ASCII Raster (.asc, .grd)|*.asc;*.grd", "", "", "",
                             ui::FileKind::kMaps});
  if (choice) UseConstraint(choice->Path());
}

// A bad one leaves the one before in use.
void FrmMapStats::UseConstraint(std::string path) {
  txtConstraint.SetText(constraint_);
  if (path == constraint_) return;
  if (!path.empty()) {
    ui::Run run(*this);
    const Outcome<bool> valid = IsValidConstraintFile(path, run);
    if (valid.WasCancelled()) return;
    if (!valid.Ok() || !valid.Value()) return app_.desktop.Message("Bad Constraint!");
  }
  constraint_ = std::move(path);
  txtConstraint.SetText(constraint_);
  ShowSelected();
}

// ---- The map on show ----------------------------------------------------------------------------

// A map that cannot be read has the figures of one without cells, and its fault is told beside
// them: maps are often looked at one after the other, and nothing is in the way of the next.
void FrmMapStats::ShowSelected() {
  const std::string path = Selected();
  figures_ = {};
  lblFault.SetCaption("");
  ShowHeader(path);
  if (!path.empty()) {
    ui::Run run(*this);
    const Outcome<MapFigures> figures = FiguresOf({path, constraint_}, run);
    if (figures.Ok()) figures_ = figures.Value();
    if (figures.Failed()) lblFault.SetCaption(figures.Text());
    if (figures.WasCancelled()) lblFault.SetCaption("Stopped: choose the map again to count it.");
  }
  ShowFigures();
  ShowHistogram();
}

void FrmMapStats::ShowHeader(const std::string& path) {
  std::vector<std::string> values(kNoDataLine);
  if (const Outcome<HeaderTexts> header = ReadHeaderTexts(path); header.Ok()) {
    std::copy_n(header.Value().values.begin(), kNoDataLine - 1, values.begin());
    values.back() = ReadNoDataText(path);
  }
  const struct {
    ui::Label& label;
    const char* name;
  } lines[] = {{lblColumns, "Columns: "},    {lblRows, "Rows: "},
               {lblX, "X Lower-Left: "},     {lblY, "Y Lower-Left: "},
               {lblCellSize, "Cell Size: "}, {lblNoData, "NODATA Value: "}};
  std::size_t i = 0;
  for (const auto& [label, name] : lines) label.SetCaption(name + values[i++]);
}

void FrmMapStats::ShowFigures() {
  const auto& [summary, distribution] = figures_;
  const bool counted = !Selected().empty();
  lblMinimum.SetCaption("Minimum: " + ShownFigure(summary.minimum));
  lblMaximum.SetCaption("Maximum: " + ShownFigure(summary.maximum));
  lblMean.SetCaption("Mean: " + ShownFigure(summary.mean));
  lblSD.SetCaption("Standard Deviation: " + ShownFigure(distribution.standardDeviation));
  lblCount.SetCaption("Cell Count: " + (counted ? std::to_string(summary.cellCount) : ""));
  lblSum.SetCaption("Cell Sum: " + (counted ? ShownFigure(summary.cellSum) : ""));
}

void FrmMapStats::ShowHistogram() {
  const auto& [summary, distribution] = figures_;
  const auto& histogram = distribution.histogram;
  const auto largest = *std::max_element(histogram.begin(), histogram.end());
  lblXMin.SetCaption(FigureText(summary.minimum));
  lblXMax.SetCaption(FigureText(summary.maximum));
  lblYMax.SetCaption(summary.cellCount > 0 ? std::to_string(largest) : "");
  Chart shown;
  if (largest > 0) {
    shown.x = NumberAxis("Cell value");
    shown.y = NumberAxis("Cells");
    Series bars = Bars("", std::vector<double>(histogram.begin(), histogram.end()));
    bars.start = *summary.minimum;
    bars.step = (*summary.maximum - *summary.minimum) / static_cast<double>(histogram.size() - 1);
    bars.barWidth = bars.step;
    shown.series = {std::move(bars)};
  }
  chart.Show(std::move(shown));
}

void FrmMapStats::ReadCategory(const ChartHit& bar) {
  const auto category = static_cast<int>(bar.sample);
  const auto [low, high] = RangeOfCategory(figures_.summary, category);
  chart.lblRead.SetCaption(
      "Category " + std::to_string(category) + ": " + NumberText(low) + " to " + NumberText(high) +
      "    Cells: " + std::to_string(figures_.distribution.histogram[bar.sample]));
}

// ---- Exports ------------------------------------------------------------------------------------

std::optional<std::string> FrmMapStats::AskReport(bool thereIsAMap, const std::string& refusal,
                                                  const ui::FileDialog& dialog) {
  if (!thereIsAMap) {
    app_.desktop.Message(refusal);
    return std::nullopt;
  }
  const auto choice = app_.desktop.SaveFile(dialog);
  return choice ? std::optional(choice->Path()) : std::nullopt;
}

void FrmMapStats::Write(const std::string& path, const std::string& report) {
  const Outcome<> written = WriteFile(path, report);
  if (written.Failed()) app_.desktop.Message(written.Text());
}

void FrmMapStats::ExportCurrent() {
  const auto target = AskReport(!Selected().empty(), "No Map Selected!",
                                {"Export Statistics of " + FileNamePart(Selected(), true),
                                 "Text Files (.txt)|*.txt", "txt", "", "", ui::FileKind::kOutputs});
  if (target) Write(*target, FiguresReport({Selected(), constraint_}, figures_));
}

void FrmMapStats::ExportCumulative() {
  const auto target =
      AskReport(files.list.Count() > 0, "No Maps Loaded!",
                {"Export Cumulative Statistics", "Comma Separated Values File (.csv)|*.csv", "csv",
                 "", "", ui::FileKind::kOutputs});
  if (!target) return;
  std::string table = FiguresTableHeading();
  {
    ui::Run run(*this);
    double done = 0;
    for (const std::string& path : files.Paths()) {
      const double share = 100.0 / files.list.Count();
      ProgressSpan span(run, done, done + share);
      done += share;
      const Outcome<MapFigures> figures = FiguresOf({path, constraint_}, span);
      if (figures.WasCancelled()) return;
      if (figures.Failed()) lblFault.SetCaption(figures.Text());
      table += FiguresTableLine(path, figures.Ok() ? figures.Value() : MapFigures{});
    }
  }
  Write(*target, table);
}

void FrmMapStats::ExportHistogram() {
  const auto target = AskReport(!Selected().empty(), "No Map Selected!",
                                {"Export Frequency Histogram", "Comma Separated Files (.csv)|*.csv",
                                 "csv", "", "", ui::FileKind::kOutputs});
  if (target) Write(*target, HistogramTable(figures_));
}

}  // namespace ormel
