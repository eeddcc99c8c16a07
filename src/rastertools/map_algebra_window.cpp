#include "rastertools/map_algebra_window.h"

#include <filesystem>
#include <unordered_set>
#include <utility>

#include "parts/output_note.h"
#include "text/paths.h"
#include "ui/desktop.h"
#include "ui/run.h"

namespace ormel {
namespace {

constexpr int kMostSpins = 1'000'000;

ChosenFilesSpec SideSpec(int number) {
  const std::string index = "(" + std::to_string(number) + ")";
  ChosenFilesSpec spec;
  spec.list = "lstFiles" + index;
  spec.add = "cmdAdd" + index;
  spec.remove = "cmdRemove" + index;
  spec.addCaption = number == 0 ? "&Add..." : "A&dd...";
  spec.dialog = [] {
    return ui::FileDialog{"Add Maps", "ASCII Raster (.asc)|*.asc", "",  "",
                          "",         ui::FileKind::kMaps,         true};
  };
  return spec;
}

}  // namespace

FrmMapAlgebra::FrmMapAlgebra(AppContext& app)
    : Window("frmMapAlgebra", "Map Algebra"),
      left(*this, app.desktop, SideSpec(0)),
      right(*this, app.desktop, SideSpec(1)),
      folder(*this, app.desktop, NewFolders::kOffered),
      app_(app) {
  optOP.SetCaptions({"+", "-", "\u00d7", "\u00f7", "^"});
  optRFN.SetCaptions({"First Input", "Second Input"});
  ckAppend(0).SetCaption("Append Prefix");
  ckAppend(1).SetCaption("Append Suffix");
  folder.SetFolder(app.settings.workingDirectory);
  ConnectLists();
  ConnectNames();
  cmdProcess.SetToolTip("Make the maps of all lines, from the first to the last");
  cmdProcess.onClick = [this] { Process(); };
  cmdExit.onClick = [this] { app_.desktop.Close(*this); };
  LayOut();
  ShowPairs();
}

void FrmMapAlgebra::ConnectLists() {
  int number = 0;
  for (ChosenFiles* files : {&left, &right}) {
    files->onAdded = [this] { ShowPairs(); };
    files->onRemoved = [this] { ShowPairs(); };
    cmdClear(number).SetCaption("Clear");
    cmdClear(number).SetToolTip("Take all files out of this list");
    cmdClear(number).onClick = [this, files] { Clear(*files); };
    spSHP(number).SetRange(-kMostSpins, kMostSpins);
    spSHP(number).SetValue(0);
    spSHP(number).SetToolTip("Move the selected files up or down: the pairs go by position");
    spSHP(number).onChange = [this, files, number] { Spin(*files, number); };
    ++number;
  }
  lstOutput.onSelect = [this] { ShowPath(); };
  onDrop = [this](const std::string& path) {
    (left.list.Count() <= right.list.Count() ? left : right).AddFile(path);
    ShowPairs();
  };
}

void FrmMapAlgebra::ConnectNames() {
  folder.onChange = [this] { ShowPairs(); };
  optOP.OnChange([this] { ShowPairs(); });
  optRFN.OnChange([this] { ShowPairs(); });
  for (const int number : {0, 1}) {
    ckAppend(number).onClick = [this] { ShowPairs(); };
    txtAppend(number).onChange = [this] { ShowPairs(); };
  }
}

ui::LayoutItem FrmMapAlgebra::ListButtons(const char* title, ChosenFiles& files, int number) {
  return ui::Row{title,    files.cmdAdd,  files.cmdRemove, cmdClear(number),
                 "Order:", spSHP(number), ui::Stretch{}};
}

// The lists are of one height, so that they are read across wherever they are scrolled to.
void FrmMapAlgebra::LayOut() {
  using ui::Column, ui::Frame, ui::Row, ui::Share, ui::Stretch;
  Row operators;
  for (const auto& option : optOP) operators.items.emplace_back(*option);
  operators.items.push_back(Stretch{});
  SetLayout(Column{
      Share(3, Row{Share(4, Column{"First input", Share(1, left.list)}),
                   Column{Stretch{}, lblOperator, Stretch{}},
                   Share(4, Column{"Second input", Share(1, right.list)}),
                   Column{Stretch{}, "\u2192", Stretch{}},
                   Share(4, Column{"Output", Share(1, lstOutput)}),
                   Share(2, Column{"Will be", Share(1, lstNote)})}),
      Row{ListButtons("&First:", left, 0), ListButtons("&Second:", right, 1)}, lblPairs,
      Share(2, Row{Share(1, Column{Frame{"Operation", operators},
                                   Frame{"Root File Name", Row{optRFN(0), optRFN(1), Stretch{}}},
                                   Frame{"Before and Behind It", Row{ckAppend(0), txtAppend(0)},
                                         Row{ckAppend(1), txtAppend(1)}},
                                   Stretch{}}),
                   Share(1, Frame{"Output Folder", folder.Area()})}),
      Row{Stretch{}, cmdProcess, cmdExit}});
}

// ---- The lists ----------------------------------------------------------------------------------

void FrmMapAlgebra::Clear(ChosenFiles& files) {
  if (app_.desktop.AskBeforeLoss("Are you sure you want to clear the file list?", "Clear Files?",
                                 ui::Buttons::kYesNo) != ui::Answer::kYes) {
    return;
  }
  files.list.Clear();
  ShowPairs();
}

void FrmMapAlgebra::Spin(ChosenFiles& files, int number) {
  int& done = spun_[static_cast<std::size_t>(number)];
  const int up = spSHP(number).Value() - done;
  done += up;
  files.MoveSelected(-up);
  ShowPairs();
}

bool FrmMapAlgebra::MayBeOneToMany() const {
  return right.list.Count() == 1 && left.list.Count() > 1;
}

std::vector<MapPair> FrmMapAlgebra::Pairs(bool oneToMany) const {
  const auto appended = [this](int number) {
    return ckAppend(number).Checked() ? txtAppend(number).Text() : std::string();
  };
  return PairsOf(left.Paths(), right.Paths(), oneToMany,
                 {folder.Folder(), optRFN.Chosen() == 1, appended(0), appended(1)});
}

// Which maps make which file. Those that come to nothing are told before the run is.
void FrmMapAlgebra::ShowPairs() {
  lblOperator.SetCaption(optOP(optOP.Chosen()).Caption());
  shown_ = Pairs(MayBeOneToMany());
  std::vector<std::string> names, notes;
  std::unordered_set<std::string> written;
  for (const MapPair& pair : shown_) {
    names.push_back(FileNamePart(pair.output, true));
    notes.push_back(written.insert(pair.output).second
                        ? OutputNote(pair.output, "there: the run stops")
                        : "named twice: the run stops");
  }
  lstOutput.SetItems(std::move(names));
  lstNote.SetItems(std::move(notes));
  const int first = left.list.Count();
  const int second = right.list.Count();
  if (MayBeOneToMany()) {
    lblPairs.SetCaption("The one map at the right goes with each at the left.");
  } else if (first != second) {
    lblPairs.SetCaption(std::to_string(first) + " and " + std::to_string(second) +
                        " maps: both lists need as many.");
  } else {
    lblPairs.SetCaption(first == 0 ? "Add maps to both lists." : "");
  }
}

void FrmMapAlgebra::ShowPath() {
  const int row = lstOutput.FirstSelected();
  if (row > 0) lblPairs.SetCaption(shown_[static_cast<std::size_t>(row - 1)].output);
}

// ---- The run ------------------------------------------------------------------------------------

void FrmMapAlgebra::Process() {
  const bool oneToMany =
      MayBeOneToMany() &&
      app_.desktop.Ask("Operate on each left side map with the single map on the right?",
                       "Map Algebra", ui::Buttons::kYesNo) == ui::Answer::kYes;
  if (!oneToMany && left.list.Count() != right.list.Count()) {
    return app_.desktop.Message(
        "You must have the same number of files on each side of the operation!");
  }
  const bool finished = ProcessPairs(Pairs(oneToMany));
  ShowPairs();
  if (finished) app_.desktop.Message("Finished");
}

// False: it came to an end before. What was finished stays.
bool FrmMapAlgebra::ProcessPairs(const std::vector<MapPair>& pairs) {
  ui::Run run(*this);
  const double share = 100.0 / static_cast<double>(pairs.size());
  double done = 0;
  for (const MapPair& pair : pairs) {
    std::error_code error;
    if (std::filesystem::exists(pair.output, error)) {
      app_.desktop.Message("You Cannot Overwrite Existing Files such as " + pair.output + "!");
      return false;
    }
    ProgressSpan span(run, done, done + share);
    done += share;
    const auto op = static_cast<MapOperator>(optOP.Chosen());
    if (!run.Report(OperateOnMaps(pair, op, span))) return false;
  }
  return true;
}

}  // namespace ormel
