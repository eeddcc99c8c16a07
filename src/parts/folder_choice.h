// The part of a window in which a person goes to a folder: the places where folders begin, the
// folders inside, and where new ones are of use, a button that makes them.
#pragma once

#include <string>

#include "ui/desktop.h"
#include "ui/window.h"

namespace ormel {

enum class NewFolders { kNotOffered, kOffered };

class FolderChoice {
 public:
  // Both outlive the part.
  FolderChoice(ui::Window& window, ui::Desktop& desktop,
               NewFolders newFolders = NewFolders::kNotOffered);

  const std::string& Folder() const { return Dir.Folder(); }
  void SetFolder(const std::string& folder);

  ui::Handler onChange;  // a person went to another folder

  ui::LayoutItem Area();

  ui::DriveList Drive;
  ui::FolderList Dir;
  ui::Button cmdCreateFold;

 private:
  void Create();
  void GoToDrive();
  void Tell();

  ui::Desktop& desktop_;
  std::string drive_;  // the last one that could be read
};

}  // namespace ormel
