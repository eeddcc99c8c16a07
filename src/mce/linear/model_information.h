// Model information files (.mif): the model file of a linear model. The two fields of a factor are
// its weight, as entered, and "True" when high values are good, else "False".
#pragma once

#include <string>

#include "mce/linear/linear_model.h"
#include "mce/model_text.h"

namespace ormel {

// The whole number with which a factor of that weight text counts: rounded half to even, from
// -32767 to 32767. 0 when the text is no number.
int WeightOf(const std::string& text);

// How model files write a truth value, and what counts as false when they are read.
const char* TruthText(bool value);
bool IsFalse(const std::string& text);

// The model that the file's text means, rows without a file included.
LinearModel LinearModelOf(const ModelText& text);

}  // namespace ormel
