#include "parts/folder_choice.h"

#include <filesystem>

#include "text/paths.h"

namespace ormel {

FolderChoice::FolderChoice(ui::Window& window, ui::Desktop& desktop, NewFolders newFolders)
    : Drive(window, "Drive"),
      Dir(window, "Dir"),
      cmdCreateFold(window, "cmdCreateFold", "Create Folder"),
      desktop_(desktop),
      drive_(Drive.Drive()) {
  cmdCreateFold.SetVisible(newFolders == NewFolders::kOffered);
  cmdCreateFold.SetToolTip("Make a new folder in this one");
  cmdCreateFold.onClick = [this] { Create(); };
  Drive.onChange = [this] { GoToDrive(); };
  Dir.onChange = [this] { Tell(); };
}

void FolderChoice::SetFolder(const std::string& folder) {
  // The drive or root on which it lies: the text up to its first separator.
  drive_ = folder.substr(0, folder.find_first_of("/\\") + 1);
  Drive.SetDrive(drive_);
  Dir.SetFolder(folder);
}

ui::LayoutItem FolderChoice::Area() {
  return ui::Column{Drive, Dir, ui::Row{ui::Stretch{}, cmdCreateFold}};
}

void FolderChoice::Tell() {
  if (onChange) onChange();
}

// A place may be gone, or may not be read: a stick that was pulled out, another person's folder.
void FolderChoice::GoToDrive() {
  std::error_code error;
  const std::filesystem::directory_iterator inside(Drive.Drive(), error);
  if (error) {
    Drive.SetDrive(drive_);
    desktop_.Message("Drive not Available!");
    return;
  }
  drive_ = Drive.Drive();
  Dir.SetFolder(drive_);
  Tell();
}

// The new folder is in sight, and the person stays in the old one.
void FolderChoice::Create() {
  const auto name = desktop_.Prompt("Folder Name:", "Create a New Folder", "");
  if (!name || name->empty()) return;
  const std::string path = JoinPath(Folder(), *name);
  std::error_code error;
  const bool isNew = std::filesystem::create_directory(path, error);
  if (!isNew) {
    desktop_.Message(path + ": " +
                     (error ? "cannot be made: " + error.message() : "is there already"));
  }
  Dir.SetFolder(Folder());
}

}  // namespace ormel
