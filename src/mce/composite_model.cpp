#include "mce/composite_model.h"

#include <utility>

#include "mapdata/factor_set.h"
#include "mapdata/map_header.h"

namespace ormel {
namespace {

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

std::size_t LetterCount(const std::string& text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char letter) {
    return (static_cast<unsigned char>(letter) & 0xC0) != 0x80;  // the first byte of a letter
  }));
}

}  // namespace

std::size_t LongestName(const CompositeModel& model) {
  std::size_t longest = 0;
  for (int i = 1; i <= model.FactorCount(); ++i) {
    longest = std::max(longest, LetterCount(model.Factor(i).name));
  }
  return longest;
}

std::string Padded(std::string name, std::size_t letters) {
  const std::size_t count = LetterCount(name);
  return std::move(name) + std::string(letters > count ? letters - count : 0, ' ');
}

Outcome<> CheckMaps(const CompositeModel& model) {
  ReferenceHeader reference;
  for (int i = 1; i <= model.FactorCount(); ++i) {
    Outcome<> fits = CheckFrame(model.Factor(i).Path(), reference);
    if (!fits.Ok()) return fits;
  }
  for (const std::string& constraint : model.constraints) {
    Outcome<> fits = CheckFrame(constraint, reference);
    if (!fits.Ok()) return fits;
  }
  return Done{};
}

}  // namespace ormel
