#include "mce/runnable_model.h"

#include <algorithm>
#include <string>
#include <vector>

#include "text/paths.h"

namespace ormel {

Outcome<std::unique_ptr<CompositeModel>> ReadRunnable(const std::filesystem::path& path,
                                                      std::span<const ModelKind> kinds) {
  Outcome<ModelText> read = ReadModelText(path);
  if (!read.Ok()) return read.Stop();
  ModelText& text = read.Value();
  std::erase_if(text.factors, [](const ModelTextFactor& factor) {
    return FileNamePart(factor.path, true).empty();
  });
  if (text.factors.empty()) {
    return Failure{FailureKind::kDamaged, path.string() + ": names no factor"};
  }
  const auto known = std::find_if(kinds.begin(), kinds.end(), [&](const ModelKind& kind) {
    return path.extension() == kind.extension;
  });
  std::unique_ptr<CompositeModel> model =
      (known == kinds.end() ? kinds.front() : *known).make(text);
  const Outcome<> fits = CheckMaps(*model);
  if (!fits.Ok()) return fits.Stop();
  return model;
}

}  // namespace ormel
