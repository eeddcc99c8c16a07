// Lists of folders, files and drives.
#pragma once

#include <string>
#include <vector>

#include "ui/list_controls.h"

namespace ormel::ui {

// The files of one folder that fit a pattern ("*.asc;*.grd", any case), sorted by name.
class FileList final : public ListBox {
 public:
  explicit FileList(Window& window, std::string name, Choice choice = Choice::kSingle,
                    std::string pattern = "*")
      : ListBox(window, std::move(name), choice), pattern_(std::move(pattern)) {}

  const std::string& Folder() const { return folder_; }
  void SetFolder(std::string folder);  // a folder that cannot be read has no files
  const std::string& Pattern() const { return pattern_; }
  void SetPattern(std::string pattern);
  void Reread();

 private:
  std::string folder_;
  std::string pattern_;
};

// The folder a person is in, the folders above it and the folders inside. `set` goes to any folder.
class FolderList final : public Control {
 public:
  using Control::Control;

  const std::string& Folder() const { return folder_; }
  void SetFolder(std::string folder);
  // The names of the folders inside, sorted.
  std::vector<std::string> Inside() const;

  // A person goes to a folder that exists; onChange.
  [[nodiscard]] Outcome<> GoTo(const std::string& folder);

  Outcome<> Set(const std::string& value) override { return GoTo(value); }
  std::string Printed() const override { return folder_; }
  bool Grows() const override { return true; }

 private:
  std::string folder_;
};

// The places where folders begin: the root, the home folder and mounted media.
class DriveList final : public Control {
 public:
  explicit DriveList(Window& window, std::string name);

  static std::vector<std::string> Drives();
  const std::string& Drive() const { return drive_; }
  void SetDrive(std::string drive);

  // A person picks a place, which may be gone meanwhile; onChange.
  [[nodiscard]] Outcome<> GoTo(const std::string& drive);

  Outcome<> Set(const std::string& value) override { return GoTo(value); }
  std::string Printed() const override { return drive_; }

 private:
  std::string drive_;
};

// Whether a file's name fits one of the patterns, which are separated by ";" or ",". "*" stands
// for any text, "?" for any letter; upper and lower case are alike.
bool FitsPattern(const std::string& name, const std::string& patterns);

}  // namespace ormel::ui
