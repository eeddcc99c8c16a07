// Model information files (.mif): the model file of a linear model. The two fields of a factor are
// its weight, as entered, and "True" when high values are good, else "False".
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "base/outcome.h"
#include "mce/linear/linear_model.h"
#include "mce/model_text.h"

namespace ormel {

// The whole number with which a factor of that weight text counts: rounded half to even, from
// -32767 to 32767. 0 when the text is no number.
int WeightOf(const std::string& text);

// How model files write a truth value, and what counts as false when they are read.
const char* TruthText(bool value);
bool IsFalse(std::string text);

// The model that the file's text means, rows without a file included.
LinearModel LinearModelOf(const ModelText& text);

// The model of a file that is to be run: a factor row without a file is left out. Fails with one
// sentence when the file cannot be read, names no factor, or names a map that is missing, cannot be
// read or does not lie on the grid of the first factor.
[[nodiscard]] Outcome<LinearModel> ReadRunnableModel(const std::filesystem::path& path);

}  // namespace ormel
