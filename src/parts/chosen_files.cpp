#include "parts/chosen_files.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "text/paths.h"

namespace ormel {

ChosenFiles::ChosenFiles(ui::Window& window, ui::Desktop& desktop, ChosenFilesSpec spec)
    : list(window, spec.list, ui::ListBox::Choice::kMultiple),
      cmdAdd(window, spec.add, spec.addCaption),
      cmdRemove(window, spec.remove, "Remove"),
      desktop_(desktop),
      spec_(std::move(spec)) {
  cmdAdd.onClick = [this] { Add(); };
  cmdRemove.onClick = [this] { Remove(); };
  cmdRemove.SetToolTip("Take the selected files out of the list, or all of them");
  list.onKey = [this](const std::string& key) {
    if (key == "Delete" && list.FirstSelected() != 0) Remove();
  };
}

bool ChosenFiles::Holds(const std::string& path) const {
  return std::find(Paths().begin(), Paths().end(), path) != Paths().end();
}

void ChosenFiles::Offer(const std::string& path) {
  if (onAdd) return onAdd(path);
  AddFile(path);
}

void ChosenFiles::Add() {
  const auto choice = desktop_.OpenFile(spec_.dialog());
  if (!choice) return;
  for (const std::string& path : choice->paths) Offer(path);
  if (onAdded) onAdded();
}

void ChosenFiles::AddAll(const ui::FileList& folder) {
  for (const std::string& name : folder.Items()) Offer(JoinPath(folder.Folder(), name));
  if (onAdded) onAdded();
}

void ChosenFiles::MoveSelected(int places) {
  std::vector<std::string> files = Paths();
  std::vector<int> moved = list.Selected();
  const int last = static_cast<int>(files.size());
  // The foremost goes first, so that selected neighbours keep their order.
  if (places > 0) std::reverse(moved.begin(), moved.end());
  const int step = places > 0 ? 1 : -1;
  for (int round = 0; round != places; round += step) {
    const bool blocked = std::any_of(moved.begin(), moved.end(), [=](int index) {
      return index + step < 1 || index + step > last;
    });
    if (blocked) break;
    for (int& index : moved) {
      std::swap(files[static_cast<std::size_t>(index - 1)],
                files[static_cast<std::size_t>(index + step - 1)]);
      index += step;
    }
  }
  list.SetItems(std::move(files));
  list.SetSelected(moved);
}

void ChosenFiles::Remove() {
  const std::vector<int> selected = list.Selected();
  const std::string& question = selected.empty() ? spec_.removeAllQuestion : spec_.removeQuestion;
  if (!question.empty() && desktop_.AskBeforeLoss(question, spec_.removeTitle,
                                                  ui::Buttons::kYesNo) != ui::Answer::kYes) {
    return;
  }
  if (selected.empty()) list.Clear();
  for (std::size_t i = selected.size(); i-- > 0;) list.Remove(selected[i]);
  if (onRemoved) onRemoved();
}

}  // namespace ormel
