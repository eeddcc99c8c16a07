#include "shell/settings_file.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <iterator>
#include <limits>

#include "base/file_writer.h"
#include "shell/program_folder.h"
#include "text/numbers.h"
#include "text/paths.h"
#include "text/token_reader.h"

namespace ormel {
namespace {

// Two names end in a blank; lists have always shown them so.
constexpr std::string_view kDatums[] = {"Airy",
                                        "Australian National",
                                        "Bessel 1841",
                                        "Bessel 1841 (Nambia) ",
                                        "Clarke 1866",
                                        "Clarke 1880",
                                        "Everest",
                                        "Fischer 1960 (Mercury) ",
                                        "Fischer 1968",
                                        "GRS 1967",
                                        "GRS 1980",
                                        "Helmert 1906",
                                        "Hough",
                                        "International",
                                        "Krassovsky",
                                        "Modified Airy",
                                        "Modified Everest",
                                        "Modified Fischer 1960",
                                        "South American 1969",
                                        "WGS 60",
                                        "WGS 66",
                                        "WGS-72",
                                        "WGS-84"};
static_assert(std::size(kDatums) == kDatumCount);

std::string FilePath(const std::string& programFolder) {
  std::string path = programFolder + "/Settings.inf";
  RepairPath(path);
  return path;
}

// Each takes the text of its line into the settings; false when it cannot be used at all.

bool TakeWorkingDirectory(std::string_view text, Settings& settings) {
  settings.workingDirectory = AsSettingsFolder(std::string(text));
  return true;
}

bool TakeDecimalPlaces(std::string_view text, Settings& settings) {
  settings.decimalPlaces = DecimalPlacesOf(text);
  return true;
}

bool TakePalette(std::string_view text, Settings& settings) {
  std::error_code error;
  // Otherwise the default stays that the settings began with.
  if (std::filesystem::exists(text, error)) settings.defaultPalette = text;
  return true;
}

bool TakeConstraintColour(std::string_view text, Settings& settings) {
  const double number = HalfEvenRound(TextToNumber(text));
  if (number < std::numeric_limits<std::int32_t>::min() ||
      number > std::numeric_limits<std::int32_t>::max()) {
    return false;
  }
  settings.constraintColor =
      static_cast<Colour>(static_cast<std::int64_t>(number)) & kLargestColour;
  return true;
}

bool TakeDatum(std::string_view text, Settings& settings) {
  const double number = IsInteger(text) ? std::trunc(TextToNumber(text)) : 0;
  settings.datum = number >= 1 && number <= kDatumCount ? static_cast<int>(number) : kDatumCount;
  return true;
}

struct Line {
  const char* name;
  bool (*take)(std::string_view text, Settings& settings);
};

// The lines of the file, in its order.
constexpr Line kLines[] = {{"working directory", TakeWorkingDirectory},
                           {"decimal places", TakeDecimalPlaces},
                           {"default palette", TakePalette},
                           {"constraint colour", TakeConstraintColour},
                           {"datum", TakeDatum}};

SettingsRead ReadFrom(const std::string& path, const Settings& defaults) {
  SettingsRead read{defaults, false, ""};
  Outcome<TokenReader> opened = TokenReader::Open(path);
  if (!opened.Ok()) {
    read.failure = opened.Text();
    return read;
  }
  std::string_view token;
  for (const Line& line : kLines) {
    if (!opened.Value().Next(token) || !line.take(token, read.settings)) {
      read.failure = path + ": the " + line.name + " is missing or cannot be used";
      return read;
    }
  }
  return read;
}

std::string AsLine(const std::string& text) {
  return (text.find(',') == std::string::npos ? text : '"' + text + '"') + "\r\n";
}

}  // namespace

std::span<const std::string_view> DatumNames() { return kDatums; }

int DecimalPlacesOf(std::string_view text) {
  return static_cast<int>(std::clamp(TextToNumber(text), 0.0, double{kMostDecimalPlaces}));
}

std::string AsSettingsFolder(std::string folder) {
  folder += '/';
  RepairPath(folder);
  return folder;
}

SettingsRead ReadSettings(const std::string& programFolder) {
  Settings defaults = DefaultSettings(programFolder);
  const std::string path = FilePath(programFolder);
  std::error_code error;
  if (!std::filesystem::exists(path, error)) return {std::move(defaults), false, ""};
  return ReadFrom(path, defaults);
}

SettingsRead LoadSettings(const std::string& programFolder) {
  std::error_code error;
  if (std::filesystem::exists(FilePath(programFolder), error)) return ReadSettings(programFolder);
  Settings defaults = DefaultSettings(programFolder);
  const std::string failure = SaveSettings(defaults).Text();
  return {std::move(defaults), true, failure};
}

Outcome<> SaveSettings(const Settings& settings) {
  return WriteFile(
      FilePath(settings.programFolder),
      AsLine(settings.workingDirectory) + AsLine(std::to_string(settings.decimalPlaces)) +
          AsLine(settings.defaultPalette) + AsLine(std::to_string(settings.constraintColor)) +
          AsLine(std::to_string(settings.datum)));
}

}  // namespace ormel
