// Where the program keeps its own files, and the settings it starts with.
#pragma once

#include <string>

#include "base/outcome.h"
#include "mapdata/settings.h"

namespace ormel {

// The folder that holds Palettes/, Temp/ and the settings file: $ORMEL_HOME when set, else "ormel"
// in the user's data folder ($XDG_DATA_HOME, ~/.local/share). Ends in a separator.
std::string ProgramFolder();

// The folder of the installed palettes, icons and pictures: beside the program's binary when it is
// installed, else that of the source tree it was built from. Ends in a separator.
std::string AssetsFolder();

// The folder of the guide's pages: installed beside the assets, else that of the source tree.
// Ends in a separator.
std::string GuideFolder();

// Puts the installed palettes into the program folder, as far as it has no files of those names: a
// palette that the user has changed stays. Fails when the folder cannot be written.
[[nodiscard]] Outcome<> FillProgramFolder(const std::string& programFolder);

// The settings of a first start. A default palette that is missing in the program folder is taken
// from the installed ones, so that pictures can be drawn where nothing can be written.
Settings DefaultSettings(const std::string& programFolder);

}  // namespace ormel
