// The window "Read all From Directory": chooses the maps of a folder for a model, and sorts them
// into factors and constraints when it is asked to.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "parts/folder_choice.h"
#include "ui/window.h"

namespace ormel {

// What a person chose. All are paths.
struct DirectoryChoice {
  std::string reference;                 // the map that decides the header; empty: none
  bool sorted = false;                   // factors and constraints hold the whole folder
  std::vector<std::string> factors;      // without `sorted` the chosen maps
  std::vector<std::string> constraints;  // the maps of 0, 1 and NODATA
};

class FrmRA final : public ui::Window {
 public:
  // `take` runs with the choice while the window is still open.
  FrmRA(ui::Desktop& desktop, const std::string& startFolder,
        std::function<void(const DirectoryChoice&)> take);

  FolderChoice folder;
  ui::FileList File{*this, "File", ui::ListBox::Choice::kMultiple, "*.asc"};
  ui::CheckBox ckSmart{*this, "ckSmart", "&Filter Data"};
  // Where the sorted maps are gathered: names of factors, paths of constraints.
  ui::ListBox lstF{*this, "lstF"};
  ui::ListBox LSTC{*this, "LSTC"};
  ui::Button cmdGo{*this, "cmdGo", "&Done"};
  ui::Button cmdCancel{*this, "cmdCancel", "Cancel"};

 private:
  void Go();
  bool Sort();

  ui::Desktop& desktop_;
  std::function<void(const DirectoryChoice&)> take_;
};

}  // namespace ormel
