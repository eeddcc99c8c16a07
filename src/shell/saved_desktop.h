// What the program remembers of a person's desktop, in Desktop.inf in the program's folder: a line
// for each thing, which a person may read, change or delete.
//
//   folder,KIND,PATH            where files of that kind were chosen last; KIND is maps, models,
//                               palettes, points or outputs
//   window,NAME,WIDTH,HEIGHT    the size of windows of that name, in pixels
//   file,PATH                   a model or map, the one used last first; ten at most
//
// It is a comfort and never in the way: what cannot be read counts as absent, a line that cannot be
// used is passed over, and where nothing can be written the program forgets.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "mapdata/settings.h"
#include "ui/control.h"
#include "ui/desktop_memory.h"

namespace ormel {

class SavedDesktop final : public ui::DesktopMemory {
 public:
  static constexpr std::size_t kMostFiles = 10;

  // Reads the file in settings.programFolder. Dialogs of a kind that was not used yet open in the
  // palette folder or the working directory of the settings as they are then. `settings` outlives
  // this.
  explicit SavedDesktop(const Settings& settings);

  std::string FolderOf(ui::FileKind kind) const override;
  void NoteChosen(ui::FileKind kind, const std::string& path) override;
  std::optional<ui::WindowSize> SizeOf(const std::string& window) const override;
  void NoteSize(const std::string& window, ui::WindowSize size) override;

  // Full paths of the models and maps that were used last, the latest first.
  const std::vector<std::string>& Files() const { return files_; }
  void NoteFile(const std::string& path);
  void ForgetFiles();
  ui::Handler onFiles = [] {};  // they have changed

 private:
  void Read();
  void TakeLine(std::string_view line);
  void Write() const;
  void FilesChanged();

  const Settings& settings_;
  std::map<std::string, std::string, std::less<>> folders_;  // by the word for their kind
  std::map<std::string, ui::WindowSize, std::less<>> sizes_;
  std::vector<std::string> files_;
};

}  // namespace ormel
