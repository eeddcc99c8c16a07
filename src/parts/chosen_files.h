// The part of a window that holds the files a tool works on: a list of their paths with the buttons
// that add and remove them. The order of the list is the order in which they are worked on.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "ui/desktop.h"
#include "ui/window.h"

namespace ormel {

// What differs from window to window. The names are those of scripts.
struct ChosenFilesSpec {
  std::string list = "lstFiles";
  std::string add = "cmdAdd";
  std::string remove = "cmdRemove";
  std::string addCaption = "&Add...";
  // Of Add; may choose several files at once. Asked for each time: its folder may have changed.
  std::function<ui::FileDialog()> dialog;
  std::string removeQuestion;  // before selected files go; empty: they go at once
  std::string removeAllQuestion = "No Files Selected. Remove all files?";
  std::string removeTitle = ui::kProgramTitle;
};

class ChosenFiles {
 public:
  // Both outlive the part.
  ChosenFiles(ui::Window& window, ui::Desktop& desktop, ChosenFilesSpec spec);

  // Decides what becomes of a file that a person adds, with AddFile() or a message. Without it
  // every file joins.
  std::function<void(const std::string& path)> onAdd;
  ui::Handler onAdded;    // a person added some, and all of them were decided on
  ui::Handler onRemoved;  // a person removed some

  const std::vector<std::string>& Paths() const { return list.Items(); }
  bool Holds(const std::string& path) const;
  void AddFile(const std::string& path) { list.Add(path); }
  // All files that a file list shows, in its order.
  void AddAll(const ui::FileList& folder);
  // The selected files go `places` down, or up below 0, as far as the list reaches, and stay
  // selected.
  void MoveSelected(int places);
  // The selected files go, or all of them; a question may come first.
  void Remove();

  ui::ListBox list;
  ui::Button cmdAdd;
  ui::Button cmdRemove;

 private:
  void Add();
  void Offer(const std::string& path);

  ui::Desktop& desktop_;
  const ChosenFilesSpec spec_;
};

}  // namespace ormel
