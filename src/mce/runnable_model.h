// Models that are to be run without a builder.
#pragma once

#include <filesystem>

#include "base/outcome.h"
#include "mce/composite_model.h"
#include "mce/model_text.h"

namespace ormel {

// The model of a file, as `modelOf` makes it from the text: a factor without a map is left out.
// Fails with one sentence when the file cannot be read, names no factor, or names a map that is
// missing, cannot be read or does not lie on the grid of the first factor.
template <class Model>
[[nodiscard]] Outcome<Model> ReadRunnable(const std::filesystem::path& path,
                                          Model (*modelOf)(const ModelText& text)) {
  const Outcome<ModelText> text = ReadRunnableText(path);
  if (!text.Ok()) return text.Stop();
  Model model = modelOf(text.Value());
  const Outcome<> fits = CheckMaps(model);
  if (!fits.Ok()) return fits.Stop();
  return model;
}

}  // namespace ormel
