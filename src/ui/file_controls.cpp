#include "ui/file_controls.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <string_view>

namespace ormel::ui {
namespace {

namespace fs = std::filesystem;

bool SameLetter(char a, char b) {
  return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
}

// Goes back to the last "*" when the letters behind it do not fit: linear in all but odd patterns.
bool FitsOne(std::string_view name, std::string_view pattern) {
  std::size_t n = 0;
  std::size_t p = 0;
  std::size_t star = std::string_view::npos;
  std::size_t starName = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      starName = n;
    } else if (p < pattern.size() && (pattern[p] == '?' || SameLetter(pattern[p], name[n]))) {
      ++p;
      ++n;
    } else if (star != std::string_view::npos) {
      p = star + 1;
      n = ++starName;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  return p == pattern.size();
}

// The names in a folder for which `wanted` holds, sorted; none when it cannot be read.
template <class Wanted>
std::vector<std::string> NamesIn(const std::string& folder, Wanted wanted) {
  std::vector<std::string> names;
  std::error_code error;
  for (fs::directory_iterator entry(folder.empty() ? "." : folder, error), end;
       !error && entry != end; entry.increment(error)) {
    if (wanted(*entry)) names.push_back(entry->path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

bool IsFolder(const std::string& path) {
  std::error_code error;
  return fs::is_directory(path, error);
}

}  // namespace

bool FitsPattern(const std::string& name, const std::string& patterns) {
  std::string_view rest = patterns;
  while (!rest.empty()) {
    const std::size_t end = rest.find_first_of(";,");
    if (FitsOne(name, rest.substr(0, end))) return true;
    rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
  }
  return false;
}

void FileList::SetFolder(std::string folder) {
  folder_ = std::move(folder);
  Reread();
}

void FileList::SetPattern(std::string pattern) {
  pattern_ = std::move(pattern);
  Reread();
}

void FileList::Reread() {
  SetItems(NamesIn(folder_, [this](const fs::directory_entry& entry) {
    std::error_code error;
    return entry.is_regular_file(error) && FitsPattern(entry.path().filename().string(), pattern_);
  }));
}

void FolderList::SetFolder(std::string folder) {
  folder_ = std::move(folder);
  Changed();
}

std::vector<std::string> FolderList::Inside() const {
  return NamesIn(folder_, [](const fs::directory_entry& entry) {
    std::error_code error;
    return entry.is_directory(error) && entry.path().filename().string()[0] != '.';
  });
}

Outcome<> FolderList::GoTo(const std::string& folder) {
  Outcome<> can = CanAct();
  if (!can.Ok()) return can;
  if (!IsFolder(folder)) return Refusal("cannot go to " + folder + ": no such folder");
  SetFolder(folder);
  Fire(onChange);
  return Done{};
}

DriveList::DriveList(Window& window, std::string name)
    : Control(window, std::move(name)), drive_("/") {}

std::vector<std::string> DriveList::Drives() {
  std::vector<std::string> drives{"/"};
  if (const char* home = std::getenv("HOME"); home != nullptr && IsFolder(home)) {
    drives.emplace_back(home);
  }
  for (const std::string media : {"/media", "/mnt"}) {
    for (const std::string& name : NamesIn(media, [](const fs::directory_entry& entry) {
           std::error_code error;
           return entry.is_directory(error);
         })) {
      drives.push_back(media + "/" + name);
    }
  }
  return drives;
}

void DriveList::SetDrive(std::string drive) {
  drive_ = std::move(drive);
  Changed();
}

Outcome<> DriveList::GoTo(const std::string& drive) {
  Outcome<> can = CanAct();
  if (!can.Ok()) return can;
  SetDrive(drive);
  Fire(onChange);
  return Done{};
}

}  // namespace ormel::ui
