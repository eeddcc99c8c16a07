// Model information files (.mif): a linear model as one quoted text of keyed fields.
//
//   FRD$folder#FF$pattern#FAC$folder/name#weight#True#CST$path#TITLE$title#
//
// FAC$ and CST$ stand once for each factor and constraint; FAC$NULL and CST$NULL say that there is
// none. There is no escape: a folder that holds a key misleads the reader.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "base/outcome.h"
#include "mce/linear/linear_model.h"

namespace ormel {

struct ModelInformation {
  std::string root;     // folder of the builder's file list
  std::string pattern;  // its filter
  LinearModel model;    // weights are rounded half to even and end at -32767 and 32767
};

// As much of a model as the text holds: fields that are missing stay empty.
ModelInformation ParseModelInformation(std::string_view text);

// Reads the first record of the file. Fails when it cannot be read.
[[nodiscard]] Outcome<ModelInformation> ReadModelInformation(const std::filesystem::path& path);

// The model of a file that is to be run: a factor row without a file is left out. Fails with one
// sentence when the file cannot be read, names no factor, or names a map that is missing, cannot be
// read or does not lie on the grid of the first factor.
[[nodiscard]] Outcome<LinearModel> ReadRunnableModel(const std::filesystem::path& path);

}  // namespace ormel
