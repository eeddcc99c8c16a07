// The settings file, Settings.inf in the program's folder: five lines of text.
//
//   1  working directory     where file dialogs start
//   2  decimal places        0 to 9
//   3  default palette       full path
//   4  constraint colour     red + 256 * green + 65536 * blue
//   5  datum                 1 to 23, a place in DatumNames()
//
// A line that holds a comma is written between double quotes, so that it is read as one.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "base/outcome.h"
#include "mapdata/settings.h"

namespace ormel {

inline constexpr int kMostDecimalPlaces = 9;
inline constexpr int kDatumCount = 23;

// The names of the geodetic datums; element 0 is datum 1.
std::span<const std::string_view> DatumNames();

struct SettingsRead {
  Settings settings;
  bool created = false;  // there was no file; it has been written with the defaults
  std::string failure;   // the line at which reading ended; it and those behind have their defaults
};

// Reads the settings of the program folder (which ends in a separator). A file that is missing is
// written with the defaults. A number outside its range takes the nearer end, a datum that is none
// becomes 23, a palette that is missing is replaced by the default one.
SettingsRead LoadSettings(const std::string& programFolder);

// The same without writing anything: a missing file means the defaults.
SettingsRead ReadSettings(const std::string& programFolder);

// Writes the settings of settings.programFolder.
[[nodiscard]] Outcome<> SaveSettings(const Settings& settings);

// What a number means as decimal places: cut to a whole number, from 0 to 9.
int DecimalPlacesOf(std::string_view text);

// A folder as the settings hold it: a separator at its end, the first doubled one repaired.
std::string AsSettingsFolder(std::string folder);

}  // namespace ormel
