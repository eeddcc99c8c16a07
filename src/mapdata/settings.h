// The settings that maps and tools share. They are loaded once at the start of the program.
#pragma once

#include <string>

#include "base/colour.h"

namespace ormel {

struct Settings {
  std::string programFolder;        // holds Settings.inf, Palettes/ and Temp/; ends in a separator
  std::string workingDirectory;     // where file dialogs start; ends in a separator
  std::string defaultPalette;       // path of the palette of new models and views
  int decimalPlaces = 2;            // kept in written cells and shown values, 0 to 9
  Colour constraintColor = kBlack;  // of masked and NODATA cells
  int datum = 23;                   // index of the geodetic datum, 1 to 23; 23 is WGS-84
};

// Where files go that only this program reads. It may be missing.
inline std::string TemporaryFolder(const Settings& settings) {
  return settings.programFolder + "Temp";
}

}  // namespace ormel
