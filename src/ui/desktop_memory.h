// What a desktop knows from one start of the program to the next. The program has it in a file.
#pragma once

#include <optional>
#include <string>

#include "ui/window_place.h"

namespace ormel::ui {

// What the files of a dialog are, so that the next dialog for such files opens beside them.
enum class FileKind { kOther, kMaps, kModels, kPalettes, kPoints, kOutputs };

class DesktopMemory {
 public:
  virtual ~DesktopMemory() = default;

  // Where a dialog for files of that kind opens; empty: in the current folder.
  virtual std::string FolderOf(FileKind kind) const = 0;
  // A person chose that file in such a dialog.
  virtual void NoteChosen(FileKind kind, const std::string& path) = 0;

  // The size that a person gave the last window of that name; none: it never was changed. Without
  // title and borders.
  virtual std::optional<WindowSize> SizeOf(const std::string& window) const = 0;
  virtual void NoteSize(const std::string& window, WindowSize size) = 0;
};

}  // namespace ormel::ui
