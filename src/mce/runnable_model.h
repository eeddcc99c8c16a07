// Models that are run without a builder.
#pragma once

#include <filesystem>
#include <memory>
#include <span>

#include "base/outcome.h"
#include "mce/composite_model.h"
#include "mce/model_text.h"

namespace ormel {

// A kind of model, known by the extension of its files.
struct ModelKind {
  const char* extension;  // with its point
  std::unique_ptr<CompositeModel> (*make)(const ModelText& text);
};

// The entry of such a table for models that a routine makes of their text.
template <auto ModelOf>
constexpr ModelKind KindOf(const char* extension) {
  return {extension, [](const ModelText& text) -> std::unique_ptr<CompositeModel> {
            return std::make_unique<decltype(ModelOf(text))>(ModelOf(text));
          }};
}

// The model of a file: of the kind that has its extension, of the first kind when none has. A
// factor without a map is left out. Fails with one sentence when the file cannot be read, names no
// factor, or names a map that is missing, cannot be read or does not lie on the grid of the first
// factor.
[[nodiscard]] Outcome<std::unique_ptr<CompositeModel>> ReadRunnable(
    const std::filesystem::path& path, std::span<const ModelKind> kinds);

}  // namespace ormel
