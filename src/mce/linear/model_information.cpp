#include "mce/linear/model_information.h"

#include <algorithm>
#include <cctype>

#include "mapdata/factor_set.h"
#include "mapdata/numbers.h"
#include "mapdata/raster.h"

namespace ormel {
namespace {

constexpr int kLargestWeight = 32767;

// Done when the header of `path` says the same as `reference`; the first map sets the reference.
Outcome<> CheckFrame(const std::string& path, ReferenceHeader& reference) {
  const Outcome<HeaderTexts> header = ReadHeaderTexts(path);
  if (!header.Ok()) return header.Stop();
  const std::vector<std::string>& values = header.Value().values;
  if (!reference.IsSet()) std::copy(values.begin(), values.end(), reference.texts.begin());
  const std::string differences = HeaderDifferences(path, values, reference.texts);
  if (differences.empty()) return Done{};
  return Failure{FailureKind::kRefused, differences};
}

}  // namespace

int WeightOf(const std::string& text) {
  const double rounded = HalfEvenRound(TextToNumber(text));
  return static_cast<int>(std::clamp<double>(rounded, -kLargestWeight, kLargestWeight));
}

const char* TruthText(bool value) { return value ? "True" : "False"; }

bool IsFalse(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  return text == "false" || (IsNumeric(text) && TextToNumber(text) == 0);
}

LinearModel LinearModelOf(const ModelText& text) {
  LinearModel model;
  for (const ModelTextFactor& factor : text.factors) {
    model.factors.push_back({FolderPart(factor.path), FileNamePart(factor.path, true),
                             WeightOf(factor.fields[0]), !IsFalse(factor.fields[1])});
  }
  model.constraints = text.constraints;
  model.title = text.title;
  return model;
}

Outcome<LinearModel> ReadRunnableModel(const std::filesystem::path& path) {
  const Outcome<ModelText> text = ReadModelText(path);
  if (!text.Ok()) return text.Stop();
  LinearModel model = LinearModelOf(text.Value());
  std::erase_if(model.factors, [](const LinearFactor& factor) { return factor.name.empty(); });
  if (model.factors.empty()) {
    return Failure{FailureKind::kDamaged, path.string() + ": names no factor"};
  }
  ReferenceHeader reference;
  for (const LinearFactor& factor : model.factors) {
    const Outcome<> fits = CheckFrame(factor.Path(), reference);
    if (!fits.Ok()) return fits.Stop();
  }
  for (const std::string& constraint : model.constraints) {
    const Outcome<> fits = CheckFrame(constraint, reference);
    if (!fits.Ok()) return fits.Stop();
  }
  return model;
}

}  // namespace ormel
