// A linear model: weighted factor maps, constraint maps and what belongs to their picture.
#pragma once

#include <string>
#include <vector>

#include "mapdata/path_text.h"

namespace ormel {

struct LinearFactor {
  std::string folder;  // ends in a separator, or is empty
  std::string name;    // of the file, with its extension
  int weight = 1;      // -32767 to 32767
  // True: a cell counts with its value v. False (low values are good): with 255 - v.
  bool highValuesGood = true;

  std::string Path() const { return JoinPath(folder, name); }
};

struct LinearModel {
  std::vector<LinearFactor> factors;
  std::vector<std::string> constraints;  // full paths
  std::string title;
  std::string palette;  // a path; empty: that of the settings
};

}  // namespace ormel
