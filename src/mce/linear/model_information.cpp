#include "mce/linear/model_information.h"

#include <algorithm>

#include "text/numbers.h"
#include "text/text_search.h"

namespace ormel {
namespace {

constexpr int kLargestWeight = 32767;

}  // namespace

int WeightOf(const std::string& text) {
  const double rounded = HalfEvenRound(TextToNumber(text));
  return static_cast<int>(std::clamp<double>(rounded, -kLargestWeight, kLargestWeight));
}

const char* TruthText(bool value) { return value ? "True" : "False"; }

bool IsFalse(const std::string& text) {
  return InSmallLetters(text) == "false" || (IsNumeric(text) && TextToNumber(text) == 0);
}

LinearModel LinearModelOf(const ModelText& text) {
  LinearModel model;
  for (const ModelTextFactor& factor : text.factors) {
    model.factors.push_back({{FolderPart(factor.path), FileNamePart(factor.path, true)},
                             WeightOf(factor.fields[0]),
                             !IsFalse(factor.fields[1])});
  }
  model.constraints = text.constraints;
  model.title = text.title;
  return model;
}

}  // namespace ormel
