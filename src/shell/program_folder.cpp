#include "shell/program_folder.h"

#include <cstdlib>
#include <filesystem>

namespace ormel {
namespace {

namespace fs = std::filesystem;

constexpr char kPalettes[] = "Palettes";
constexpr char kDefaultPalette[] = "default.ptf";

std::string AsFolder(const fs::path& path) { return (path / "").string(); }

// The value of an environment variable; empty when it is unset.
std::string Environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string() : std::string(value);
}

}  // namespace

std::string ProgramFolder() {
  if (const std::string home = Environment("ORMEL_HOME"); !home.empty()) return AsFolder(home);
  if (const std::string data = Environment("XDG_DATA_HOME"); !data.empty()) {
    return AsFolder(fs::path(data) / "ormel");
  }
  return AsFolder(fs::path(Environment("HOME")) / ".local" / "share" / "ormel");
}

std::string AssetsFolder() {
  std::error_code error;
  const fs::path binary = fs::read_symlink("/proc/self/exe", error);
  const fs::path installed = binary.parent_path().parent_path() / "share" / "ormel";
  if (!error && fs::is_directory(installed, error)) return AsFolder(installed);
  return AsFolder(ORMEL_ASSETS_DIR);
}

std::string GuideFolder() {
  std::error_code error;
  const fs::path installed = fs::path(AssetsFolder()) / "guide";
  return AsFolder(fs::is_directory(installed, error) ? installed : fs::path(ORMEL_GUIDE_DIR));
}

Outcome<> FillProgramFolder(const std::string& programFolder) {
  const fs::path source = fs::path(AssetsFolder()) / "palettes";
  const fs::path target = fs::path(programFolder) / kPalettes;
  std::error_code error;
  fs::create_directories(target, error);
  for (fs::directory_iterator entry(source, error), end; !error && entry != end;
       entry.increment(error)) {
    const fs::path copy = target / entry->path().filename();
    if (!fs::exists(copy, error)) fs::copy_file(entry->path(), copy, error);
  }
  if (!error) return Done{};
  return Failure{FailureKind::kDisk, programFolder + ": cannot be prepared: " + error.message()};
}

Settings DefaultSettings(const std::string& programFolder) {
  Settings settings;
  settings.programFolder = programFolder;
  settings.workingDirectory = settings.programFolder;
  const fs::path own = fs::path(settings.programFolder) / kPalettes / kDefaultPalette;
  const fs::path installed = fs::path(AssetsFolder()) / "palettes" / kDefaultPalette;
  std::error_code error;
  settings.defaultPalette = (fs::exists(own, error) ? own : installed).string();
  return settings;
}

}  // namespace ormel
