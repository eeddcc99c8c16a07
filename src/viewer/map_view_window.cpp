#include "viewer/map_view_window.h"

#include <algorithm>
#include <filesystem>
#include <new>
#include <system_error>
#include <utility>

#include "mapdata/map_legend.h"
#include "mapdata/map_statistics.h"
#include "text/numbers.h"
#include "text/paths.h"
#include "ui/desktop.h"
#include "ui/run.h"
#include "ui/save_dialog.h"
#include "viewer/image_conversion.h"
#include "viewer/region_export.h"

namespace ormel {
namespace {

constexpr char kCaption[] = "Map Viewer";
constexpr char kRasterFilter[] = "ASCII Raster (.asc, .grd)|*.asc;*.grd";
constexpr char kExportFilter[] = "ASCII Raster Data File (.asc)|*.asc";
constexpr char kPaletteFilter[] = "Palette Files (.ptf)|*.ptf";
constexpr char kRefused[] =
    "This Map is Corrupt or Does Not Conform to the Existing Map Specifications! Please Choose "
    "Another.";
constexpr char kRefusedTitle[] = "Error Loading Map!";
constexpr char kConvertTitle[] = "Convert to Raster Data";

constexpr int kSavedWidth = 1200;  // pixels, or nearly so many, of a picture that is saved

constexpr int kPanelDone = 4;  // of the status strip; the read-out has the others

// Shows how far a command is in the last panel, too.
class PanelProgress final : public ProgressSink {
 public:
  PanelProgress(ui::Window& window, ui::StatusStrip& strip) : run_(window), strip_(strip) {}

  bool Report(double percent) override {
    strip_.SetText(kPanelDone, NumberText(HalfEvenRound(percent, 1)) + "%");
    return run_.Report(percent);
  }

  // The command is over: its failure is told. True when it is done.
  template <class T>
  bool Finish(const Outcome<T>& outcome) {
    strip_.SetText(kPanelDone, outcome.Ok() ? "Done" : "Stopped");
    return run_.Report(outcome);
  }

 private:
  ui::Run run_;
  ui::StatusStrip& strip_;
};

}  // namespace

FrmView::FrmView(AppContext& app) : Window("frmView", kCaption), app_(app) {
  const char* const texts[] = {"X:", "Y:", "Value:", "Done:"};
  for (int panel = 1; panel <= sbView.Count(); ++panel) sbView.SetText(panel, texts[panel - 1]);
  tools_.onChange = [this] { ShowState(); };
  output_.onDone = [this](const std::string& text) { sbView.SetText(kPanelDone, text); };
  onDrop = [this](const std::string& path) { OpenMapFile(path); };
  PicturesChanged();
}

// ---- Menu and toolbar ---------------------------------------------------------------------------

std::vector<ui::MenuSpec> FrmView::Menus() {
  using ui::MenuSpec;
  const auto close = [this] { app_.desktop.Close(*this); };
  const auto open = [this] {
    AddByDialog("Select Map to Add", "", "*.asc;*.grd", Place::kInsteadOfAll);
  };
  const auto insert = [this] {
    AddByDialog("Select Map", app_.settings.workingDirectory, "*.asc", Place::kBehindOthers);
  };
  return {{"",
           "&File",
           "",
           {},
           {{"mOpen", "&Open", "Ctrl+O", open, {}},
            {"mInsert", "&Insert Another", "Ctrl+I", insert, {}},
            MenuSpec::Separator(),
            {"mExpCur",
             "Export Current Region as New Map",
             "Ctrl+E",
             [this] { ExportCurrentRegion(); },
             {}},
            {"mConvertASC", kConvertTitle, "", [this] { ConvertToRaster(); }, {}},
            MenuSpec::Separator(),
            {"mCopyPicture", "Cop&y Picture", "Ctrl+C", [this] { output_.Copy(); }, {}},
            {"mSavePicture", "Save Pict&ure...", "", [this] { output_.Save(); }, {}},
            MenuSpec::Separator(),
            {"mClose", "Close", "Ctrl+W", close, {}},
            {"mCloseSelected", "Close Selected", "", [this] { CloseSelected(); }, {}},
            {"mCloseAll", "Close All", "", [this] { CloseAll(); }, {}},
            MenuSpec::Separator(),
            {"mExit", "&Exit", "", close, {}}}},
          {"",
           "&View",
           "",
           {},
           {{"mHome", "Whole Map", "", [this] { ShowWholeMap(); }, {}},
            {"mZoomIn", "Zoom In", "", Zoom(kZoomInFactor), {}},
            {"mZoomOut", "Zoom Out", "", Zoom(kZoomOutFactor), {}},
            {"mZoomBox", "Zoom Box", "", Take(MouseTool::kZoomBox), {}},
            {"mCenter", "Center View/Pan", "", Take(MouseTool::kCenter), {}},
            MenuSpec::Separator(),
            {"mAutoZoom", "Auto-Zoom All", "", [this] { LockZoom(!LockedZoom()); }, {}},
            MenuSpec::Separator(),
            {"mChngPal", "Change Palette", "Ctrl+P", [this] { ChangePalette(); }, {}}}},
          {"",
           "&Tools",
           "",
           {},
           {{"mMetric", "Metric Tool", "Ctrl+M", [this] { tools_.StartMeasuring(); }, {}},
            {"mMapStats", "Map Statistics", "", [this] { ShowStatistics(); }, {}}}}};
}

std::vector<ui::ToolSpec> FrmView::Tools() {
  return {{1, "Whole Map", "zoom-whole.svg", [this] { ShowWholeMap(); }, {}},
          {2, "Zoom In", "zoom-in.svg", Zoom(kZoomInFactor), {}},
          {3, "Zoom Out", "zoom-out.svg", Zoom(kZoomOutFactor), {}},
          {4, "Zoom Box", "zoom-box.svg", Take(MouseTool::kZoomBox), {}},
          {5, "Center", "center.svg", Take(MouseTool::kCenter), {}},
          {6, "Measure", "measure.svg", [this] { tools_.StartMeasuring(); }, {}}};
}

ui::Handler FrmView::Zoom(double factor) {
  return [this, factor] { SetView(view_.Selected(), ZoomBy(Selected().view, factor)); };
}

ui::Handler FrmView::Take(MouseTool tool) {
  return [this, tool] { tools_.Take(tool); };
}

// Which commands can be used, and which tool is in use.
void FrmView::ShowState() {
  const bool any = view_.NumPictures() > 0;
  const bool isMap = any && !Selected().isImage;
  const struct {
    const char* entry;
    bool enabled;
  } states[] = {{"mInsert", !view_.IsFull()},
                {"mCloseSelected", any},
                {"mCloseAll", any},
                {"mHome", any},
                {"mZoomIn", any},
                {"mZoomOut", any},
                {"mZoomBox", any},
                {"mCenter", any},
                {"mAutoZoom", any},
                {"mMetric", any},
                {"mCopyPicture", any},
                {"mSavePicture", any},
                {"mChngPal", isMap},
                {"mExpCur", isMap},
                {"mMapStats", isMap},
                {"mConvertASC", any && !isMap}};
  for (const auto& [entry, enabled] : states) menu[entry].SetEnabled(enabled);
  for (const auto& button : tbView.Buttons()) button->SetEnabled(any);
  SetCaption(any ? std::string(kCaption) + " - " + FileNamePart(Selected().path, true) : kCaption);
  menu["mCenter"].SetChecked(tools_.Pending() == MouseTool::kCenter);
  menu["mZoomBox"].SetChecked(tools_.Pending() == MouseTool::kZoomBox);
  menu["mMetric"].SetChecked(tools_.Measuring());
  menu["mAutoZoom"].SetChecked(view_.LockedZoom());
}

// ---- Loading ------------------------------------------------------------------------------------

void FrmView::AddByDialog(const std::string& title, const std::string& folder,
                          const std::string& pattern, Place place) {
  while (true) {
    const auto choice =
        app_.desktop.OpenFile({title, kRasterFilter, "", folder, pattern, ui::FileKind::kMaps});
    if (!choice || LoadMap(choice->Path(), place) != Loading::kRefused) return;
    if (app_.desktop.Ask(kRefused, kRefusedTitle, ui::Buttons::kOkCancel) != ui::Answer::kOk) {
      return;
    }
  }
}

bool FrmView::OpenMapFile(const std::string& path) {
  if (view_.IsFull()) {
    app_.desktop.Message("This viewer shows four maps already; close one of them first.");
    return false;
  }
  const Loading loading = LoadMap(path, Place::kBehindOthers);
  if (loading == Loading::kRefused) app_.desktop.Message(kRefused, kRefusedTitle);
  return loading == Loading::kDone;
}

// The maps on show stay until the new one is complete.
FrmView::Loading FrmView::LoadMap(const std::string& path, Place place) {
  const auto wanted = place == Place::kBehindOthers ? view_.Specs() : std::nullopt;
  Outcome<MapValues> read = Cancelled{};
  {
    PanelProgress progress(*this, sbView);
    read = ReadMapValues(path, wanted, progress);
    sbView.SetText(kPanelDone, read.Ok() ? "Done" : "Stopped");
    sbView.SetToolTip("");
  }
  if (read.Failed()) return Refuse(read.Text());
  if (!read.Ok()) return Loading::kStopped;
  MapValues& map = read.Value();
  const std::optional<Viewing> viewing = AskViewing(map.range.isScaled);
  if (!viewing) return Loading::kStopped;
  if (!map.fault.empty()) return Refuse(FileNamePart(path, true) + ": " + map.fault);
  MapPicture picture;
  picture.path = path;
  picture.cells = std::move(map.cells);
  picture.specs = {map.range.min, map.range.max, map.nodata};
  if (viewing == Viewing::kScaledVersion && map.range.min == map.range.max) ++picture.specs.Max;
  picture.viewing = *viewing;
  picture.palette = DefaultPalette();
  if (!Draw(picture)) {
    return Refuse(FileNamePart(path, true) + ": does not fit into the memory of this machine");
  }
  if (place == Place::kInsteadOfAll) CloseAll();
  view_.Add(std::move(picture), map.specs);
  PicturesChanged();
  app_.noteFile(path);
  FocusOn(panes_.picMap(view_.Selected()));
  return Loading::kDone;
}

// The message is the same for whatever is wrong: the strip tells what it was, its tool tip in full.
FrmView::Loading FrmView::Refuse(const std::string& why) {
  sbView.SetText(kPanelDone, why);
  sbView.SetToolTip(why);
  return Loading::kRefused;
}

std::optional<Viewing> FrmView::AskViewing(bool isScaled) {
  if (isScaled) return Viewing::kScaledMap;
  switch (app_.desktop.Ask("This Map is not Scaled! Would you like to view a scaled version?",
                           "Unscaled Map!", ui::Buttons::kYesNoCancel)) {
    case ui::Answer::kYes:
      return Viewing::kScaledVersion;
    case ui::Answer::kNo:
      return Viewing::kAsItStands;
    default:
      return std::nullopt;
  }
}

Palette FrmView::DefaultPalette() {
  const std::string& path = app_.settings.defaultPalette;
  Palette palette;
  if (CheckPaletteFile(path) == "GOOD" && ReadPalette(path, palette).Ok()) return palette;
  app_.desktop.Message("The default palette " + path +
                       " cannot be used; the map is shown in greys.");
  return GreyPalette();
}

bool FrmView::Draw(MapPicture& picture) {
  PanelProgress progress(*this, sbView);
  try {
    DrawPicture(picture, app_.settings.constraintColor, progress);
  } catch (const std::bad_alloc&) {
    return false;
  }
  sbView.SetText(kPanelDone, "Done");
  return true;
}

bool FrmView::ShowImage(const std::string& name, Canvas image, const ViewSpecs& specs) {
  if (view_.IsFull() || (view_.Specs() && *view_.Specs() != specs)) return false;
  MapPicture picture;
  picture.path = name;
  picture.isImage = true;
  picture.image = std::move(image);
  view_.Add(std::move(picture), specs);
  PicturesChanged();
  return true;
}

void FrmView::CloseSelected() {
  view_.Close(view_.Selected());
  PicturesChanged();
}

void FrmView::CloseAll() {
  view_.CloseAll();
  PicturesChanged();
}

void FrmView::PicturesChanged() {
  panes_.Fit();
  tools_.PutDown();
}

// ---- Views --------------------------------------------------------------------------------------

void FrmView::ShowWholeMap() { SetView(view_.Selected(), {}); }

void FrmView::LockZoom(bool locked) {
  view_.LockZoom(locked);
  ShowState();
  panes_.RepaintAll();
}

void FrmView::DrawMark(int picture, double x, double y, Colour colour) {
  if (!view_.Holds(picture)) return;
  view_(picture).marks.push_back({{x, y}, colour});
  panes_.Repaint(picture);
}

void FrmView::OnClosed() { tools_.CloseMetric(); }

// ---- Palettes, exports and figures --------------------------------------------------------------

void FrmView::ChangePalette() {
  while (true) {
    const auto choice = app_.desktop.OpenFile(
        {"Select Palette", kPaletteFilter, "", "", "*.ptf", ui::FileKind::kPalettes});
    if (!choice) return;
    MapPicture& map = Selected();
    std::error_code error;
    if (!std::filesystem::exists(choice->Path(), error)) {
      app_.desktop.Message("The palette file you specified does not exist! Please choose another.");
    } else if (CheckPaletteFile(choice->Path()) != "GOOD" ||
               !ReadPalette(choice->Path(), map.palette).Ok()) {
      app_.desktop.Message("The specified palette file is corrupt! Please choose another.");
    } else {
      (void)Draw(map);
      panes_.ShowColours(view_.Selected());
      panes_.Repaint(view_.Selected());
      return;
    }
  }
}

// What the selected picture shows, as it leaves the program.
Canvas FrmView::SelectedWithLegend() {
  const MapPicture& map = Selected();
  const PictureSize size = PictureSizeOf(*view_.Specs());
  const int larger = std::max(1, kSavedWidth / size.width);
  Canvas picture(size.width * larger, size.height * larger);
  PaintView(picture, map, *view_.Specs(), panes_.measured, std::nullopt);
  MapLegend legend{FileNamePart(map.path, true)};
  if (!map.isImage) {
    const ScaleEnds ends = EndsOfScale(map);
    legend.scale = MapLegend::Scale{map.palette, NumberText(ends.low), NumberText(ends.high),
                                    app_.settings.constraintColor};
  }
  return WithLegend(picture, legend);
}

std::optional<std::string> FrmView::AskTarget(const std::string& title) {
  const auto choice =
      ui::AskSaveFile(app_.desktop,
                      {title, kExportFilter, "asc", app_.settings.workingDirectory, "*.asc",
                       ui::FileKind::kOutputs},
                      {.text = "Overwrite Existing File?", .title = "Export Cropped Region"});
  if (!choice) return std::nullopt;
  return choice->Path();
}

void FrmView::ExportCurrentRegion() {
  const std::optional<std::string> target = AskTarget("Export Region");
  if (!target) return;
  const MapPicture& map = Selected();
  PanelProgress progress(*this, sbView);
  progress.Finish(ExportRegion({map.path, *target, *view_.Specs(), map.view}, progress));
}

void FrmView::ConvertToRaster() {
  const std::optional<std::string> target = AskTarget(kConvertTitle);
  if (!target) return;
  const bool unaltered =
      app_.desktop.Ask("Export Unaltered Proportions to Preserve Image Integrity?", kConvertTitle,
                       ui::Buttons::kYesNo) == ui::Answer::kYes;
  const MapPicture& map = Selected();
  PanelProgress progress(*this, sbView);
  progress.Finish(ConvertImage({map.image, map.path, PointAt(*view_.Specs(), {0, 1}),
                                PointAt(*view_.Specs(), {1, 0}), unaltered, *target},
                               progress));
}

void FrmView::ShowStatistics() {
  Outcome<MapStatsRecord> counted = Cancelled{};
  {
    PanelProgress progress(*this, sbView);
    counted = MapStatistics({Selected().path, ""}, progress);
    if (!progress.Finish(counted)) return;
  }
  const MapStatsRecord& figures = counted.Value();
  app_.desktop.Message("Maximum: " + FigureText(figures.maximum) + "\nMinimum: " +
                           FigureText(figures.minimum) + "\nMean: " + FigureText(figures.mean) +
                           "\nTotal Cells: " + std::to_string(figures.cellCount) +
                           "\nCumulative Cell Sum: " + NumberText(figures.cellSum),
                       "Map Statistics");
}

}  // namespace ormel
