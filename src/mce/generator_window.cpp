#include "mce/generator_window.h"

#include <algorithm>
#include <cctype>
#include <cmath>

#include "mapdata/map_header.h"
#include "mapdata/map_legend.h"
#include "mce/composite_output.h"
#include "mce/composite_picture.h"
#include "mce/shown_values.h"
#include "movies/bitmap.h"
#include "text/numbers.h"
#include "text/paths.h"
#include "ui/desktop.h"
#include "ui/run.h"
#include "ui/save_dialog.h"

namespace ormel {
namespace {

using ui::Column;
using ui::Frame;
using ui::Row;
using ui::Share;
using ui::Stretch;
using ui::Table;

// Pictures are known by number, in scripts and in the files of testers: the composite by 102, the
// factors by their own numbers, their second layers by 102 more.
constexpr int kCompositeNumber = 102;

constexpr char kRasterFilter[] = "ASCII Raster (*.asc)|*.asc";
constexpr char kExportFilter[] = "ASCII Raster (.asc)|*.asc|Bitmap (.bmp)|*.bmp";
constexpr char kBitmapFilter[] = "Bitmap (.bmp)|*.bmp";
constexpr char kPaletteFilter[] = "Palette Files (.ptf)|*.ptf";
constexpr int kBitmapChosen = 2;  // entry of the export filter

void ReplaceEnding(std::string& path, const char* ending) {
  path.replace(path.size() - std::min<std::size_t>(path.size(), 3), std::string::npos, ending);
}

}  // namespace

GeneratorWindow::GeneratorWindow(AppContext& app, std::string name,
                                 std::shared_ptr<const CompositeModel> model, int layers)
    : Window(std::move(name), "Factor and MCE Viewer"),
      output(*this, app, [this] { return ShownWithLegend(); }),
      app_(app),
      model_(*model),
      modelHeld_(std::move(model)),
      layers_(layers) {
  CV.SetColour(app_.settings.constraintColor);
  CV.SetToolTip("Colour of cells that the constraints forbid; click to change it");
  cmdExpBmp.SetEnabled(false);
  cmdExpBmp.SetToolTip("Save the suitability map as a raster or a picture");
  cmdGenerate.SetDefault();
  PSclP.SetStripHeight(kColourScaleHeight);
  for (ui::Label* label : {&lblScaleMin, &lblScaleMax}) label->SetVisible(false);
  output.onDone = [this](const std::string& text) { status.SetText(1, text); };
  ConnectHandlers();
}

GeneratorWindow::~GeneratorWindow() = default;

void GeneratorWindow::ConnectHandlers() {
  cmdGenerate.onClick = [this] { Generate(); };
  cmdExpBmp.onClick = [this] { ExportComposite(); };
  cmdCGP.onClick = [this] { ChangeCompositePalette(); };
  cmdDispSel.onClick = [this] { DisplaySelected(); };
  PList.onDoubleClick = [this] { DisplaySelected(); };
  cmdExport.onClick = [this] { ExportFactors(); };
  cmdCP.onClick = [this] { ChangeFactorPalettes(); };
  ckLoadData.onClick = [this] { LoadShownData(); };
  CV.onClick = [this] { ChangeConstraintColour(); };
  cmdReturn.onClick = [this] {
    app_.desktop.Close(*this);
    if (onReturnToBuilder) onReturnToBuilder();
  };
  cmdExit.onClick = [this] { app_.desktop.CloseByFrame(*this); };
}

bool GeneratorWindow::QueryClose() {
  if (onExitToMain) onExitToMain();
  return true;
}

void GeneratorWindow::LayOut() {
  Column map;
  for (Shown& shown : pictures_) map.items.push_back(Share(1, *shown.picture));
  map.items.push_back(Row{lblScaleMin, Share(1, PSclP), lblScaleMax});
  map.items.push_back(
      Frame{"Under the mouse",
            Row{Share(1, Table{{"X:", lblX}, {"Y:", lblY}}),
                Share(1, Table{{"Value:", lblValue}, {"Weighted Value:", lblWeightedValue}}),
                ckLoadData}});
  map.items.push_back(Row{Stretch{}, pictureButtons.cmdCopy, pictureButtons.cmdSave});
  const Table shown{{"File:", lblFile},          {"Weight:", lblWeight},
                    {"Palette:", lblPalette},    {"Size:", Row{lblColumns, lblRows, Stretch{}}},
                    {"Cell size:", lblCellSize}, {"Lower left:", lblCorner}};
  SetLayout(Row{Share(3, map),
                Share(1, Column{Frame{"On show", shown},
                                Frame{"Suitability map", cmdGenerate, Row{cmdExpBmp, cmdCGP}},
                                Frame{"Factors", PList, FactorCommands()},
                                Frame{"Constraints", CList, Row{"Colour:", CV, Stretch{}}},
                                Row{Stretch{}, cmdReturn, cmdExit}})});
}

// ---- Start ----------------------------------------------------------------------------------

Outcome<> GeneratorWindow::Start(ProgressSink& progress) {
  const std::string palettePath =
      model_.palette.empty() ? app_.settings.defaultPalette : model_.palette;
  Palette palette;
  const Outcome<int> colours = ReadPalette(palettePath, palette);
  if (!colours.Ok()) return colours.Stop();
  Outcome<CompositeMap> map = CompositeMap::Begin(model_);
  if (!map.Ok()) return map.Stop();
  map_ = std::move(map.Value());
  Outcome<Grid<float>> display = MakeGrid<float>(map_->Frame().ncols, map_->Frame().nrows);
  if (!display.Ok()) return display.Stop();
  display_ = std::move(display.Value());

  MakePictures(palettePath, palette);
  LayOut();
  ShowModelLabels();
  if (!map_->MaskFailure().empty()) app_.desktop.Message("Bad Constraint!");
  PutOnShow(1);
  Outcome<> drawn = DrawFactors(progress);
  if (!drawn.Ok()) return drawn;

  ProgressSpan end(progress, 100, 100);
  Outcome<> loaded = LoadDisplayGrid(map_->RowsOf(model_, 1), 1, end);
  if (!loaded.Ok()) return loaded;
  if (map_->OutOfRange()) {
    app_.desktop.Message(
        "Some of the Data Had Values Outside of the Acceptable 0-255 Range. These values were "
        "evaluated as 0's.");
  }
  return Done{};
}

void GeneratorWindow::MakePictures(const std::string& palettePath, const Palette& palette) {
  preview_.emplace(map_->Frame().ncols, map_->Frame().nrows);
  for (int layer = kComposite; layer <= FactorCount() * layers_; ++layer) {
    auto picture = std::make_unique<ui::Picture>(*this, PictureName(layer));
    picture->SetImage(preview_->Blank());
    picture->SetVisible(false);
    picture->onMouse = [this](const ui::MouseEvent& event) { ReadOut(event); };
    pictures_.push_back({std::move(picture), palettePath, palette});
  }
}

// The numbers of the composite and of second layers are taken: the pictures of factors in models of
// more than a hundred go behind them.
std::string GeneratorWindow::PictureName(int layer) const {
  int number = layer == kComposite ? kCompositeNumber : FactorOf(layer);
  if (layer > FactorCount()) {
    number += kCompositeNumber;
  } else if (layer >= kCompositeNumber) {
    number += layers_ == 1 ? 1 : FactorCount() + 1;
  }
  return "PreviewPicture(" + std::to_string(number) + ")";
}

void GeneratorWindow::ShowModelLabels() {
  const MapFrame& frame = map_->Frame();
  const int places = app_.settings.decimalPlaces;
  lblColumns.SetCaption(std::to_string(frame.ncols) + " columns,");
  lblRows.SetCaption(std::to_string(frame.nrows) + " rows");
  lblCellSize.SetCaption(frame.texts.cellsize);
  lblCorner.SetCaption(NumberText(HalfEvenRound(frame.xllcorner, places)) + ", " +
                       NumberText(HalfEvenRound(frame.yllcorner, places)));
  std::vector<std::string> names;
  for (int i = 1; i <= FactorCount(); ++i) names.push_back(model_.Factor(i).name);
  PList.SetItems(std::move(names));
  CList.SetItems(model_.constraints);
}

Outcome<> GeneratorWindow::DrawFactors(ProgressSink& progress) {
  for (int i = 1; i <= FactorCount(); ++i) {
    ProgressSpan span(progress, 100.0 * (i - 1) / FactorCount(), 100.0 * i / FactorCount());
    const Outcome<std::string> read = map_->AccumulateFactor(model_, i, FactorPainter(i), span);
    if (!read.Ok()) return read.Stop();
    FactorDrawn(i);
    // What a file does not hold adds nothing and stops nothing, but the user shall know.
    if (!read.Value().empty()) status.SetText(1, read.Value());
  }
  return Done{};
}

RowWatcher GeneratorWindow::FactorPainter(int factor) {
  return [this, factor](int row, std::span<const double> values, double /*nodata*/) {
    Shown& shown = PictureOf(factor);
    DrawModelRow(shown.picture->Drawing(), *preview_, map_->Mask(), {shown.palette, CV.Value()},
                 row, values);
  };
}

void GeneratorWindow::FactorDrawn(int factor) {
  for (int layer = factor; layer <= FactorCount() * layers_; layer += FactorCount()) {
    PictureOf(layer).picture->Repaint();
  }
}

ui::LayoutItem GeneratorWindow::FactorCommands() { return Row{cmdDispSel, cmdExport, cmdCP}; }

void GeneratorWindow::PaintComposite() {
  Shown& shown = PictureOf(kComposite);
  DrawComposite(shown.picture->Drawing(), *preview_, *map_, {shown.palette, CV.Value()},
                app_.settings.decimalPlaces);
  shown.picture->Repaint();
}

// ---- The suitability map ----------------------------------------------------------------------

void GeneratorWindow::Generate() {
  if (!generated_) {
    std::string path;
    switch (app_.desktop.Ask("Generate Output File?", "Generate Weighted Map",
                             ui::Buttons::kYesNoCancel)) {
      case ui::Answer::kYes: {
        const auto choice = ui::AskSaveFile(
            app_.desktop,
            {"Select Output Image", kRasterFilter, "asc", "", "*.asc", ui::FileKind::kOutputs},
            {.title = "Set Output File"});
        if (!choice) return;
        path = choice->Path();
        break;
      }
      case ui::Answer::kNo:
        break;
      default:
        return;
    }
    if (!ScaleTo(path)) return;
  }
  DisplayComposite();
}

// Scales into the file at `path`, or into memory when it is empty.
bool GeneratorWindow::ScaleTo(const std::string& path) {
  ui::Run run(*this);
  displayHolds_ = kNothing;
  const auto keep = [this](int row, std::span<const double> values) {
    KeepRow(values, app_.settings.decimalPlaces, display_.Row(row));
  };
  const Outcome<> scaled =
      path.empty() ? ScaleComposite(*map_, run, keep)
                   : WriteComposite(*map_, model_, path, app_.settings.decimalPlaces, run, keep);
  if (!run.Report(scaled)) return false;
  if (path.empty()) retained_ = display_;
  displayHolds_ = kComposite;
  outputPath_ = path;
  generated_ = true;
  cmdExpBmp.SetEnabled(true);
  cmdGenerate.SetCaption(path.empty() ? "Display Generated"
                                      : "Display " + FileNamePart(path, true));
  return true;
}

void GeneratorWindow::DisplayComposite() {
  Shown& composite = PictureOf(kComposite);
  if (!ReadPalette(composite.palettePath, composite.palette).Ok()) {
    status.SetText(1, "The palette " + composite.palettePath + " cannot be read any more.");
  }
  if (shown_ == kComposite) return;
  PaintComposite();
  PutOnShow(kComposite);
  LoadShownData();
}

void GeneratorWindow::DisplaySelected() {
  const int selected = PList.FirstSelected();
  if (selected == 0 || LayerToShow(selected) == shown_) return;
  PutOnShow(LayerToShow(selected));
  LoadShownData();
}

void GeneratorWindow::PutOnShow(int layer) {
  if (shown_ != kNothing) PictureOf(shown_).picture->SetVisible(false);
  shown_ = layer;
  PictureOf(layer).picture->SetVisible(true);
  PictureOf(layer).picture->Repaint();
  for (ui::Label* label : {&lblScaleMin, &lblScaleMax}) label->SetVisible(true);
  for (ui::Label* label : {&lblValue, &lblWeightedValue}) label->SetCaption("");  // of another map
  ShowPictureLabels();
}

// What depends on the picture on show: its colour scale, file, weight and palette.
void GeneratorWindow::ShowPictureLabels() {
  const Shown& shown = PictureOf(shown_);
  PSclP.SetImage(ColourScale(shown.palette));
  lblPalette.SetCaption(FileNamePart(shown.palettePath, true));
  const int factor = FactorOf(shown_);
  const Extremes ends = ScaleEnds(shown_);
  lblScaleMin.SetCaption(Rounded(ends.smallest));
  lblScaleMax.SetCaption(Rounded(ends.largest));
  lblFile.SetCaption(factor == kComposite ? CompositeName() : model_.Factor(factor).name);
  lblWeight.SetCaption(factor == kComposite ? "" : model_.WeightText(factor));
}

// The picture on show as it leaves the program.
Canvas GeneratorWindow::ShownWithLegend() {
  const Shown& shown = PictureOf(shown_);
  const std::string name =
      shown_ == kComposite && !model_.title.empty() ? model_.title : lblFile.Caption();
  return WithLegend(shown.picture->Image(),
                    {name, MapLegend::Scale{shown.palette, lblScaleMin.Caption(),
                                            lblScaleMax.Caption(), CV.Value()}});
}

std::string GeneratorWindow::Rounded(double value) const {
  return NumberText(HalfEvenRound(value, app_.settings.decimalPlaces));
}

std::string GeneratorWindow::CompositeName() const {
  return outputPath_.empty() ? "(not saved)" : FileNamePart(outputPath_, true);
}

// ---- Values under the mouse -------------------------------------------------------------------

void GeneratorWindow::LoadShownData() {
  const int wanted = FactorOf(shown_);
  if (!ckLoadData.Checked() || wanted == kNothing || displayHolds_ == wanted) return;
  if (wanted == kComposite && outputPath_.empty()) {
    display_ = retained_;
    displayHolds_ = kComposite;
    return;
  }
  ui::Run run(*this);
  run.Report(LoadDisplayGrid(wanted == kComposite ? CompositeRows() : map_->RowsOf(model_, wanted),
                             wanted, run));
}

RowsToRead GeneratorWindow::CompositeRows() const {
  return {outputPath_, CountHeaderLines(outputPath_), map_->Frame().ncols, map_->Frame().nrows};
}

Outcome<> GeneratorWindow::LoadDisplayGrid(const RowsToRead& rows, int index,
                                           ProgressSink& progress) {
  displayHolds_ = kNothing;
  const Outcome<double> nodata =
      ReadShownValues(rows, *map_, app_.settings.decimalPlaces, display_, progress);
  if (!nodata.Ok()) return nodata.Stop();
  displayNoData_ = nodata.Value();
  displayHolds_ = index;
  return Done{};
}

void GeneratorWindow::ReadOut(const ui::MouseEvent& event) {
  const MapFrame& frame = map_->Frame();
  const double x = preview_->CellX(event.x);
  const double y = preview_->CellY(event.y);
  const int column = static_cast<int>(std::floor(x)) + 1;
  const int row = static_cast<int>(std::floor(y)) + 1;
  lblX.SetCaption(Rounded(frame.xllcorner + frame.cellsize * x));
  lblY.SetCaption(Rounded(frame.yllcorner + frame.cellsize * (frame.nrows - y)));
  // Without the map's own data a value would be that of another map.
  const int factor = FactorOf(shown_);
  const bool known = displayHolds_ == factor && display_.Holds(column, row);
  lblValue.SetCaption(known ? NumberText(display_(column, row)) : "");
  lblWeightedValue.SetCaption(
      !known ? ""
      : factor == kComposite
          ? lblValue.Caption()
          : Rounded(model_.WeightedValue(factor, display_(column, row), displayNoData_)));
}

// ---- Exports ------------------------------------------------------------------------------------

void GeneratorWindow::ExportComposite() {
  ui::FileDialog dialog{"Export Composite Map", kExportFilter, "bmp", "", "*.bmp",
                        ui::FileKind::kOutputs};
  if (!outputPath_.empty()) {
    dialog.folder = FolderPart(outputPath_);
    dialog.name = model_.title.empty() ? "Composite" : model_.title;
  }
  const auto choice = ui::AskSaveFile(app_.desktop, dialog, {.title = "Save As Bitmap"},
                                      [](ui::FileChoice& chosen) {
                                        if (chosen.filterIndex == kBitmapChosen)
                                          ReplaceEnding(chosen.paths.front(), "bmp");
                                      });
  if (!choice) return;
  ui::Run run(*this);
  if (choice->filterIndex == kBitmapChosen) {
    run.Report(WriteBitmap(PictureOf(kComposite).picture->Image(), choice->Path()));
    return;
  }
  if (!run.Report(WriteCompositeRaster(choice->Path(), run))) return;
  retained_ = {};
  outputPath_ = choice->Path();
  if (shown_ == kComposite) ShowPictureLabels();
}

Outcome<> GeneratorWindow::WriteCompositeRaster(const std::string& path, ProgressSink& progress) {
  const RowForm form = model_.ItsRules().rows;
  if (outputPath_.empty()) return WriteShownValues(retained_, map_->Frame(), path, form, progress);
  if (shown_ != kComposite || !ckLoadData.Checked()) {
    Outcome<> loaded = LoadDisplayGrid(CompositeRows(), kComposite, progress);
    if (!loaded.Ok()) return loaded;
  }
  return WriteShownValues(display_, map_->Frame(), path, form, progress);
}

std::optional<ui::FileChoice> GeneratorWindow::AskExportFile(int factor, const std::string& filter,
                                                             const std::string& extension) {
  const std::string& entry = PList.Item(factor);
  auto choice = ui::AskSaveFile(app_.desktop,
                                {"Export " + entry, filter, extension, exportFolder_,
                                 ChangeExtension(entry, extension), ui::FileKind::kOutputs},
                                {.title = "Save As Bitmap"});
  if (choice) exportFolder_ = FolderPart(choice->Path());
  return choice;
}

void GeneratorWindow::ExportFactors() {
  for (const int index : PList.Selected()) {
    const auto choice = AskExportFile(index, kBitmapFilter, "bmp");
    if (!choice) return;
    ui::Run run(*this);
    if (!run.Report(WriteBitmap(PictureOf(index).picture->Image(), choice->Path()))) return;
  }
}

// ---- Palettes and the constraint colour ---------------------------------------------------------

std::optional<std::string> GeneratorWindow::AskPalette(Palette& palette) {
  const std::string folder = PaletteFolder(app_.settings.programFolder);
  while (true) {
    const auto choice = app_.desktop.OpenFile(
        {"Select Palette", kPaletteFilter, "", folder, "*.ptf", ui::FileKind::kPalettes});
    if (!choice) return std::nullopt;
    if (CheckPaletteFile(choice->Path()) == "GOOD" && ReadPalette(choice->Path(), palette).Ok()) {
      return choice->Path();
    }
    app_.desktop.Message("Not a valid palette file, please choose another.");
  }
}

void GeneratorWindow::ChangeFactorPalettes() {
  const std::vector<int> selected = PList.Selected();
  if (selected.empty()) {
    app_.desktop.Message("No factors selected");
    return;
  }
  Palette palette;
  const std::optional<std::string> path = AskPalette(palette);
  if (!path) return;
  ui::Run run(*this);
  const double share = 100.0 / static_cast<double>(selected.size());
  double done = 0;
  for (const int index : selected) {
    for (int layer = index; layer <= FactorCount() * layers_; layer += FactorCount()) {
      Shown& shown = PictureOf(layer);
      shown.palettePath = *path;
      shown.palette = palette;
      shown.picture->SetImage(preview_->Blank());
    }
    ProgressSpan span(run, done, done + share);
    const bool drawn = run.Report(map_->ReadFactor(model_, index, FactorPainter(index), span));
    FactorDrawn(index);
    if (!drawn) break;
    done += share;
  }
  ShowPictureLabels();
}

void GeneratorWindow::ChangeCompositePalette() {
  Shown& composite = PictureOf(kComposite);
  const std::optional<std::string> path = AskPalette(composite.palette);
  if (!path) return;
  composite.palettePath = *path;
  if (generated_) PaintComposite();
  ShowPictureLabels();
}

void GeneratorWindow::ChangeConstraintColour() {
  const auto colour = app_.desktop.PickColour("Select New Constraint Color", CV.Value());
  if (!colour) return;
  CV.SetColour(*colour);
  if (generated_) PaintComposite();
}

}  // namespace ormel
