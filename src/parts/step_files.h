// The part of a window in which the maps of a time series are chosen: the file of each step, beside
// its name, and a folder whose files are filled in, all at once or one by one.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "parts/folder_choice.h"
#include "parts/list_rows.h"
#include "ui/desktop.h"
#include "ui/window.h"

namespace ormel {

// What the window says when there are more files than steps left.
struct StepFilesTexts {
  std::string selectedTooMany;
  std::string folderTooMany;
  std::string fileTitle;  // of the dialog for a step's file, before the step's name
};

class StepFiles {
 public:
  // Both outlive the part.
  StepFiles(ui::Window& window, ui::Desktop& desktop, StepFilesTexts texts);

  ui::Handler onChange;  // a person gave steps other files
  // Whether a file may join; it tells the person why not. Without it every file may.
  std::function<bool(const std::string& path)> accepts;

  // As many entries as steps. `names` are those of the steps, and `blanks` what an entry shows that
  // has no file yet.
  void Show(std::vector<std::string> entries, std::vector<std::string> names,
            std::vector<std::string> blanks);
  const std::vector<std::string>& Entries() const { return lstTSFF.Items(); }

  // The steps with their buttons, and the folder.
  ui::LayoutItem Steps();
  ui::LayoutItem Folder();

  ui::ListBox lstSteps;   // their names
  ui::ListBox lstTSFF;    // their files
  ui::TextBox txtAddPos;  // where the next file goes
  ui::Button cmdAddSelected;
  ui::Button cmdReadDir;
  ui::SpinButton SpMove;
  ui::Button cmdFlip;
  ui::Button cmdReset;
  FolderChoice folder;
  ui::FileList File;

 private:
  void Fill(const std::vector<std::string>& names, const std::string& tooMany);
  void Move();
  void Flip();
  void PickFile();
  void Change();

  ui::Desktop& desktop_;
  const StepFilesTexts texts_;
  std::vector<std::string> blanks_;
  ListRows rows_;
};

}  // namespace ormel
