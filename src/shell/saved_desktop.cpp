#include "shell/saved_desktop.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <utility>

#include "base/file_writer.h"
#include "base/input_file.h"
#include "mapdata/palette.h"
#include "text/paths.h"

namespace ormel {
namespace {

constexpr std::size_t kMostBytes = 64 * 1024;  // more than that is no file of ours
constexpr int kLargestSide = 32767;            // pixels
constexpr std::string_view kKinds[] = {"", "maps", "models", "palettes", "points", "outputs"};

std::string_view WordFor(ui::FileKind kind) { return kKinds[static_cast<std::size_t>(kind)]; }

std::string FilePath(const Settings& settings) {
  return JoinPath(settings.programFolder, "Desktop.inf");
}

// A path with a line end in it would be read as two lines.
bool FitsALine(std::string_view path) {
  return !path.empty() && path.find_first_of("\r\n") == std::string_view::npos;
}

// The text up to the next comma, which goes with it.
std::string_view TakeWord(std::string_view& line) {
  const std::string_view word = line.substr(0, line.find(','));
  line.remove_prefix(std::min(word.size() + 1, line.size()));
  return word;
}

// 0: it is none.
int SideOf(std::string_view text) {
  int side = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), side);
  const bool holds = error == std::errc() && end == text.data() + text.size() && side > 0;
  return holds && side <= kLargestSide ? side : 0;
}

}  // namespace

SavedDesktop::SavedDesktop(const Settings& settings) : settings_(settings) { Read(); }

// ---- Folders and sizes --------------------------------------------------------------------------

std::string SavedDesktop::FolderOf(ui::FileKind kind) const {
  std::error_code error;
  const auto found = folders_.find(WordFor(kind));
  if (found != folders_.end() && std::filesystem::is_directory(found->second, error)) {
    return found->second;
  }
  return kind == ui::FileKind::kPalettes ? PaletteFolder(settings_.programFolder)
                                         : settings_.workingDirectory;
}

void SavedDesktop::NoteChosen(ui::FileKind kind, const std::string& path) {
  const std::string folder = FolderPart(AbsolutePath(path));
  if (kind == ui::FileKind::kOther || !FitsALine(folder)) return;
  std::string& known = folders_[std::string(WordFor(kind))];
  if (std::exchange(known, folder) != folder) Write();
}

std::optional<ui::WindowSize> SavedDesktop::SizeOf(const std::string& window) const {
  const auto found = sizes_.find(window);
  if (found == sizes_.end()) return std::nullopt;
  return found->second;
}

void SavedDesktop::NoteSize(const std::string& window, ui::WindowSize size) {
  if (std::exchange(sizes_[window], size) != size) Write();
}

// ---- Files --------------------------------------------------------------------------------------

void SavedDesktop::NoteFile(const std::string& path) {
  std::string file = AbsolutePath(path);
  if (!FitsALine(file) || (!files_.empty() && files_.front() == file)) return;
  std::erase(files_, file);
  files_.insert(files_.begin(), std::move(file));
  if (files_.size() > kMostFiles) files_.pop_back();
  FilesChanged();
}

void SavedDesktop::ForgetFiles() {
  files_.clear();
  FilesChanged();
}

void SavedDesktop::FilesChanged() {
  Write();
  onFiles();
}

// ---- The file -----------------------------------------------------------------------------------

void SavedDesktop::Read() {
  const Outcome<InputFile> file = InputFile::Open(FilePath(settings_));
  if (!file.Ok() || file.Value().Size() > kMostBytes) return;
  std::string bytes(static_cast<std::size_t>(file.Value().Size()), '\0');
  std::string error;
  bytes.resize(file.Value().ReadAt(0, bytes, error));
  std::string_view rest = bytes;
  while (!rest.empty()) {
    const std::string_view line = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(line.size() + 1, rest.size()));
    TakeLine(line.substr(0, line.find('\r')));
  }
}

void SavedDesktop::TakeLine(std::string_view line) {
  const std::string_view what = TakeWord(line);
  if (what == "file") {
    if (!line.empty() && files_.size() < kMostFiles) files_.emplace_back(line);
  } else if (what == "folder") {
    const std::string_view kind = TakeWord(line);
    const bool isKnown =
        std::find(std::begin(kKinds) + 1, std::end(kKinds), kind) != std::end(kKinds);
    if (isKnown && !line.empty()) folders_[std::string(kind)] = line;
  } else if (what == "window") {
    const std::string_view name = TakeWord(line);
    const int width = SideOf(TakeWord(line));
    const int height = SideOf(line);
    if (width > 0 && height > 0) sizes_[std::string(name)] = {width, height};
  }
}

void SavedDesktop::Write() const {
  std::string text;
  for (const auto& [kind, folder] : folders_) text += "folder," + kind + "," + folder + "\r\n";
  for (const auto& [name, size] : sizes_) {
    text += "window," + name + "," + std::to_string(size.width) + "," +
            std::to_string(size.height) + "\r\n";
  }
  for (const std::string& file : files_) text += "file," + file + "\r\n";
  (void)WriteFile(FilePath(settings_), text);
}

}  // namespace ormel
