#include "parts/step_files.h"

#include <algorithm>
#include <utility>

#include "text/numbers.h"
#include "text/paths.h"

namespace ormel {

StepFiles::StepFiles(ui::Window& window, ui::Desktop& desktop, StepFilesTexts texts)
    : lstSteps(window, "lstSteps"),
      lstTSFF(window, "lstTSFF"),
      txtAddPos(window, "txtAddPos", "1"),
      cmdAddSelected(window, "cmdAddSelected", "&Add Selected"),
      cmdReadDir(window, "cmdReadDir", "&Read Directory"),
      SpMove(window, "SpMove", -1, 1),
      cmdFlip(window, "cmdFlip", "&Flip"),
      cmdReset(window, "cmdReset", "R&eset"),
      folder(window, desktop),
      File(window, "File", ui::ListBox::Choice::kMultiple, "*.asc;*.grd"),
      desktop_(desktop),
      texts_(std::move(texts)),
      rows_({&lstSteps, &lstTSFF}, ListRows::Selection::kOfRows) {
  SpMove.SetValue(0);
  lstTSFF.SetToolTip("The map of each step; a double click looks for one");
  txtAddPos.SetToolTip("The step that the next file is filled in at");
  cmdAddSelected.SetToolTip("Fill the files that are selected into the steps, from this one on");
  cmdReadDir.SetToolTip("Fill all files of the folder into the steps, from this one on");
  SpMove.SetToolTip("Move the selected file to the step before or behind");
  cmdFlip.SetToolTip("Turn the order of the files round");
  cmdReset.SetToolTip("Take all files out");
  folder.onChange = [this] { File.SetFolder(folder.Folder()); };
  cmdAddSelected.onClick = [this] {
    std::vector<std::string> names;
    for (const int index : File.Selected()) names.push_back(File.Item(index));
    Fill(names, texts_.selectedTooMany);
  };
  cmdReadDir.onClick = [this] { Fill(File.Items(), texts_.folderTooMany); };
  File.onDoubleClick = [this] {
    if (File.FirstSelected() != 0) Fill({File.Item(File.FirstSelected())}, texts_.selectedTooMany);
  };
  for (ui::ListBox* list : {&lstSteps, &lstTSFF}) list->onDoubleClick = [this] { PickFile(); };
  SpMove.onChange = [this] { Move(); };
  cmdFlip.onClick = [this] { Flip(); };
  cmdReset.onClick = [this] {
    lstTSFF.SetItems(blanks_);
    Change();
  };
}

void StepFiles::Show(std::vector<std::string> entries, std::vector<std::string> names,
                     std::vector<std::string> blanks) {
  lstTSFF.SetItems(std::move(entries));
  lstSteps.SetItems(std::move(names));
  blanks_ = std::move(blanks);
  txtAddPos.SetText("1");
}

ui::LayoutItem StepFiles::Steps() {
  return ui::Column{ui::Share(1, ui::Row{ui::Share(1, ui::Column{"Step", ui::Share(1, lstSteps)}),
                                         ui::Share(3, ui::Column{"File", ui::Share(1, lstTSFF)})}),
                    ui::Row{"Move:", SpMove, cmdFlip, cmdReset, ui::Stretch{}}};
}

ui::LayoutItem StepFiles::Folder() {
  return ui::Column{ui::Share(2, folder.Area()), ui::Share(3, File),
                    ui::Row{"A&t step:", txtAddPos, cmdAddSelected, cmdReadDir}};
}

void StepFiles::Change() {
  if (onChange) onChange();
}

// All of them have room, or none is taken.
void StepFiles::Fill(const std::vector<std::string>& names, const std::string& tooMany) {
  const double typed = TextToNumber(txtAddPos.Text());
  const double first = std::max(1.0, std::min(HalfEvenRound(typed), 1e6));
  if (first - 1 + static_cast<double>(names.size()) > lstTSFF.Count()) {
    return desktop_.Message(tooMany);
  }
  int position = static_cast<int>(first);
  for (const std::string& name : names) {
    const std::string path = JoinPath(File.Folder(), name);
    if (accepts && !accepts(path)) continue;
    lstTSFF.SetItem(position++, path);
  }
  txtAddPos.SetText(std::to_string(position));
  Change();
}

// Up is towards the first step.
void StepFiles::Move() {
  const int from = lstTSFF.FirstSelected();
  const int to = from - SpMove.Value();
  SpMove.SetValue(0);
  if (from == 0 || to == from || to < 1 || to > lstTSFF.Count()) return;
  const std::string moved = lstTSFF.Item(from);
  lstTSFF.SetItem(from, lstTSFF.Item(to));
  lstTSFF.SetItem(to, moved);
  for (ui::ListBox* list : {&lstSteps, &lstTSFF}) list->SetSelected({to});
  Change();
}

void StepFiles::Flip() {
  std::vector<std::string> entries = lstTSFF.Items();
  std::reverse(entries.begin(), entries.end());
  lstTSFF.SetItems(std::move(entries));
  Change();
}

void StepFiles::PickFile() {
  const int step = lstTSFF.FirstSelected();
  if (step == 0) return;
  const auto choice = desktop_.OpenFile({texts_.fileTitle + lstSteps.Item(step),
                                         "ASCII Raster (.asc, .grd)|*.asc;*.grd", "",
                                         folder.Folder(), "", ui::FileKind::kMaps});
  if (!choice || (accepts && !accepts(choice->Path()))) return;
  lstTSFF.SetItem(step, choice->Path());
  Change();
}

}  // namespace ormel
