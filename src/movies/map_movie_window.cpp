#include "movies/map_movie_window.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "mapdata/factor_set.h"
#include "mapdata/map_header.h"
#include "movies/write_movie_window.h"
#include "text/numbers.h"
#include "text/paths.h"
#include "ui/desktop.h"

namespace ormel {
namespace {

constexpr char kSelectedTooMany[] =
    "Filling in the selected files has exceeded the number of steps!";
constexpr char kFolderTooMany[] =
    "Filling in the directory's files has exceeded the number of steps!";

bool Exists(const std::string& path) {
  std::error_code error;
  return std::filesystem::exists(path, error);
}

}  // namespace

FrmAVI::FrmAVI(AppContext& app)
    : Window("frmAVI", "Generate .AVI Files"),
      files(*this, app.desktop, {kSelectedTooMany, kFolderTooMany, "Step File for "}),
      app_(app),
      numbers_{{&txtNF, 1, 30, "Not a valid number of frames!",
                "Please specify a number of frames/second between 1 and 30", 10},
               {&txtFPS, 0, 30, "Not a valid number of frames per second!",
                "Please specify a number of frames/second between 0 and 30", 5},
               {&txtFW, 0, 20, "Not a valid frame width",
                "Please specify a frame witdth between 0 and 20", 0}} {
  picNDC.SetColour(app.settings.constraintColor);
  txtPFC.Resize(kMovieCells);
  files.folder.SetFolder(app.settings.workingDirectory);
  files.File.SetFolder(files.folder.Folder());
  ConnectControls();
  LayOut();
  SelectFrame();
}

void FrmAVI::ConnectControls() {
  for (NumberField& field : numbers_) {
    field.box->onLeave = [this, &field] { LeaveNumber(field); };
  }
  txtNF.SetToolTip("The number of the movie's steps, 1 to 30");
  txtFPS.SetToolTip("Steps that are shown in a second, up to 30");
  txtFW.SetToolTip("The gap between maps that stand side by side, in pixels");
  for (int cell = 0; cell < kMovieCells; ++cell) {
    txtPFC(cell).SetToolTip("The number of the frame that is shown here; empty: none");
    txtPFC(cell).onChange = [this, cell] { TakeCell(cell); };
  }
  picBC.SetToolTip("Colour of the gaps; click to change it");
  picBC.onClick = [this] { PickColour(picBC, "Backcolor"); };
  picNDC.SetToolTip("Colour of cells without data; click to change it");
  picNDC.onClick = [this] { PickColour(picNDC, "NODATA Color"); };
  lstF.SetToolTip("Series of maps that are shown side by side");
  lstF.onSelect = [this] { SelectFrame(); };
  cmdAdd.onClick = [this] { AddFrame(); };
  cmdRemove.onClick = [this] { RemoveFrame(); };
  txtPal.SetToolTip("Palette of this frame's maps: a file, or Default");
  txtPal.onLeave = [this] { TypePalette(); };
  cmdChngP.onClick = [this] { PickPalette(); };
  files.accepts = [this](const std::string& path) { return Fits(path); };
  files.onChange = [this] {
    if (ConcurrentFrame* frame = Selected()) frame->steps = files.Entries();
  };
  cmdWriteAVI.SetDefault();
  cmdWriteAVI.onClick = [this] { Write(); };
  cmdExit.onClick = [this] { app_.desktop.Close(*this); };
}

void FrmAVI::LayOut() {
  using ui::Column, ui::Frame, ui::Row, ui::Share, ui::Stretch, ui::Table;
  const Column movie{
      Frame{"Movie", Table{{"Number of &Frames:", txtNF},
                           {"Frames/&Second:", txtFPS},
                           {"Frame W&idth:", txtFW},
                           {"Back Color:", Row{picBC, Stretch{}}},
                           {"NODATA Color:", Row{picNDC, Stretch{}}}}},
      Share(1, Frame{"Concurrent Frames", Share(1, lstF), Row{cmdAdd, cmdRemove, Stretch{}},
                     Row{"&Palette:", txtPal}, Row{cmdChngP, Stretch{}}}),
      Frame{"Picture/Frame Display Matrix", Row{txtPFC(0), txtPFC(1)}, Row{txtPFC(2), txtPFC(3)}}};
  SetLayout(Column{Share(1, Row{Share(2, movie), Share(3, Frame{"Steps", Share(1, files.Steps())}),
                                Share(2, Frame{"Folder", Share(1, files.Folder())})}),
                   Row{"Note: Maps Must be Scaled!", Share(1, lblProgress), cmdWriteAVI, cmdExit}});
}

// ---- Concurrent frames --------------------------------------------------------------------------

FrmAVI::ConcurrentFrame* FrmAVI::Selected() {
  const int index = lstF.FirstSelected();
  return index == 0 ? nullptr : &frames_[static_cast<std::size_t>(index - 1)];
}

void FrmAVI::AddFrame() {
  if (frames_.size() == kMovieCells) return;
  frames_.emplace_back();
  frames_.back().steps.resize(static_cast<std::size_t>(numbers_[0].value));
  ListFrames(static_cast<int>(frames_.size()));
}

void FrmAVI::RemoveFrame() {
  const int index = lstF.FirstSelected();
  if (index == 0) return;
  frames_.erase(frames_.begin() + index - 1);
  for (const auto& cell : txtPFC) {
    if (TextToNumber(cell->Text()) > static_cast<double>(frames_.size())) cell->SetText("");
  }
  ListFrames(std::min(index, static_cast<int>(frames_.size())));
}

void FrmAVI::ListFrames(int selected) {
  std::vector<std::string> names;
  for (std::size_t i = 0; i < frames_.size(); ++i)
    names.push_back("Frame " + std::to_string(i + 1));
  lstF.SetItems(std::move(names));
  if (selected > 0) lstF.SetSelected({selected});
  cmdAdd.SetEnabled(frames_.size() < kMovieCells);
  SelectFrame();
}

void FrmAVI::SelectFrame() {
  const ConcurrentFrame* frame = Selected();
  for (ui::Control* control : std::initializer_list<ui::Control*>{
           &cmdRemove, &txtPal, &cmdChngP, &files.lstTSFF, &files.cmdAddSelected, &files.cmdReadDir,
           &files.cmdFlip, &files.cmdReset, &files.SpMove}) {
    control->SetEnabled(frame != nullptr);
  }
  txtPal.SetText(frame == nullptr ? "" : frame->palette);
  ShowSteps();
}

void FrmAVI::ShowSteps() {
  const ConcurrentFrame* frame = Selected();
  std::vector<std::string> names;
  const std::size_t count = frame == nullptr ? 0 : frame->steps.size();
  for (std::size_t step = 1; step <= count; ++step) names.push_back(std::to_string(step));
  files.Show(frame == nullptr ? names : frame->steps, names, std::vector<std::string>(count));
}

// ---- Fields -------------------------------------------------------------------------------------

// A bad value gives way to the last good one.
void FrmAVI::LeaveNumber(NumberField& field) {
  const double typed = HalfEvenRound(TextToNumber(field.box->Text()));
  const bool isNumber = IsNumeric(field.box->Text());
  if (!isNumber) app_.desktop.Message(field.noNumber);
  const bool inside = typed >= field.low && typed <= field.high;
  if (isNumber && !inside) app_.desktop.Message(field.outside);
  if (isNumber && inside) field.value = static_cast<int>(typed);
  field.box->SetText(std::to_string(field.value));
  if (field.box == &txtNF) TakeStepCount();
}

void FrmAVI::TakeStepCount() {
  const auto count = static_cast<std::size_t>(numbers_[0].value);
  for (ConcurrentFrame& frame : frames_) frame.steps.resize(count);
  ShowSteps();
}

void FrmAVI::TakeCell(int cell) {
  const std::string& text = txtPFC(cell).Text();
  const bool good = text.empty() || (text.size() == 1 && text[0] >= '1' && text[0] <= '4');
  if (!good) txtPFC(cell).SetText("");
}

void FrmAVI::PickColour(ui::ColourSwatch& swatch, const char* title) {
  const auto colour = app_.desktop.PickColour(title, swatch.Value());
  if (colour) swatch.SetColour(*colour);
}

std::string FrmAVI::PathOf(const ConcurrentFrame& frame) const {
  const std::string path = FindPalette(frame.palette, app_.settings.programFolder);
  return path.empty() ? app_.settings.defaultPalette : path;
}

void FrmAVI::TypePalette() {
  const ConcurrentFrame* frame = Selected();
  if (frame != nullptr && frame->palette != txtPal.Text()) SetPalette(txtPal.Text());
}

void FrmAVI::PickPalette() {
  const auto choice = app_.desktop.OpenFile(
      {"Select Palette", "Palette Files (.ptf)|*.ptf", "", "", "*.ptf", ui::FileKind::kPalettes});
  if (!choice) return;
  txtPal.SetText(choice->Path());
  SetPalette(choice->Path());
}

void FrmAVI::SetPalette(const std::string& palette) {
  ConcurrentFrame* frame = Selected();
  if (frame == nullptr) return;
  frame->palette = palette;
  const std::string path = PathOf(*frame);
  frame->good = CheckPaletteFile(path) == "GOOD";
  if (!Exists(path)) {
    app_.desktop.Message("The palette file you specified does not exist! Please choose another.");
  } else if (!frame->good) {
    app_.desktop.Message("The specified palette file is corrupt! Please choose another.");
  }
}

// Whether a map lies on the cells of those that were chosen before.
bool FrmAVI::Fits(const std::string& path) {
  const Outcome<HeaderTexts> header = ReadHeaderTexts(path);
  if (!header.Ok()) {
    app_.desktop.Message(header.Text());
    return false;
  }
  ReferenceHeader reference;
  for (const ConcurrentFrame& frame : frames_) {
    const auto chosen = std::find_if(frame.steps.begin(), frame.steps.end(),
                                     [](const std::string& step) { return !step.empty(); });
    if (chosen == frame.steps.end()) continue;
    const Outcome<HeaderTexts> first = ReadHeaderTexts(*chosen);
    if (!first.Ok()) continue;
    std::copy_n(first.Value().values.begin(), reference.texts.size(), reference.texts.begin());
    break;
  }
  const bool fits =
      !reference.IsSet() || HeaderDifferences(path, header.Value().values, reference.texts).empty();
  if (!fits) {
    app_.desktop.Message(FileNamePart(path, true) +
                         " Does Not Fit the Current Map Specifications!");
  }
  return fits;
}

// ---- The movie ----------------------------------------------------------------------------------

// The cell, from 0, in which a frame (from 1) is shown; -1: in none.
int FrmAVI::CellOf(int frame) const {
  for (int cell = 0; cell < kMovieCells; ++cell) {
    if (txtPFC(cell).Text() == std::to_string(frame)) return cell;
  }
  return -1;
}

bool FrmAVI::IsReady() {
  if (frames_.empty()) {
    app_.desktop.Message("You Have No Frames!");
    return false;
  }
  if (numbers_[1].value <= 0) {
    app_.desktop.Message("You Must Specify a Valid Number of Frames/Second!");
    return false;
  }
  for (std::size_t i = 0; i < frames_.size(); ++i) {
    if (frames_[i].good) continue;
    app_.desktop.Message("You have not chosen a valid palette for frame " + std::to_string(i + 1));
    return false;
  }
  return true;
}

bool FrmAVI::FillMovie(MapMovie& movie) {
  movie.gap = numbers_[2].value;
  movie.background = picBC.Value();
  movie.noData = picNDC.Value();
  for (std::size_t i = 0; i < frames_.size(); ++i) {
    const int number = static_cast<int>(i) + 1;
    MovieSeries series{frames_[i].steps, {}, CellOf(number)};
    if (series.cell < 0) {
      app_.desktop.Message("You Have Not Specified the Picture/Frame Correspondence for Frame " +
                           std::to_string(number));
      return false;
    }
    for (std::size_t step = 0; step < series.maps.size(); ++step) {
      if (!series.maps[step].empty()) continue;
      app_.desktop.Message("Frame " + std::to_string(number) + " has no map for step " +
                           std::to_string(step + 1) + ".");
      return false;
    }
    const Outcome<int> read = ReadPalette(PathOf(frames_[i]), series.palette);
    if (!read.Ok()) {
      app_.desktop.Message(read.Text());
      return false;
    }
    movie.series.push_back(std::move(series));
  }
  return true;
}

// Pictures are drawn when their turn comes: nothing is left behind.
void FrmAVI::Write() {
  if (!IsReady()) return;
  const auto path = AskMovieFile(app_);
  MapMovie movie;
  if (!path || !FillMovie(movie)) return;
  const int steps = numbers_[0].value;
  std::string fault;
  const MovieFrames frames{steps, [&](int index) -> Outcome<cDIB> {
                             lblProgress.SetCaption("Drawing Frame " + std::to_string(index + 1) +
                                                    "/" + std::to_string(steps));
                             const Outcome<Canvas> picture = DrawMovieStep(movie, index + 1);
                             fault = picture.Text();
                             if (!picture.Ok()) return picture.Stop();
                             return cDIB::OfCanvas(picture.Value());
                           }};
  const bool written = WriteMovie(*this, app_, *path, frames, numbers_[1].value);
  lblProgress.SetCaption(written ? "Finished" : fault);
  if (written) app_.desktop.Message("Finished");
}

}  // namespace ormel
