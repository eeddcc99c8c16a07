// Model files: a model as one quoted text of keyed fields, on one line.
//
//   FRD$folder#FF$pattern#FAC$folder/name#first#second#CST$path#TITLE$title#
//
// FAC$ and CST$ stand once for each factor and constraint; FAC$NULL and CST$NULL, without a "#",
// say that there is none. What the two fields of a factor mean is the kind of model's own affair.
// There is no escape: a folder that holds a key misleads the reader, and a value cannot hold "#" or
// a double quote.
#pragma once

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/colour.h"
#include "base/outcome.h"

namespace ormel {

struct ModelTextFactor {
  std::string path;
  std::array<std::string, 2> fields;
};

struct ModelText {
  std::string root;     // folder of the builder's file list
  std::string pattern;  // its filter
  std::vector<ModelTextFactor> factors;
  std::vector<std::string> constraints;
  std::string title;
};

class FieldReader;
class FieldWriter;

// The factors from here on, as they stand in all files of models.
std::vector<ModelTextFactor> ReadFactorFields(FieldReader& fields);
// Factors and constraints, or that there are none.
void WriteMapFields(const std::vector<ModelTextFactor>& factors,
                    const std::vector<std::string>& constraints, FieldWriter& fields);

// As much of a model as the text holds: fields that are missing stay empty.
ModelText ParseModelText(std::string_view text);

// Reads the first record of the file. Fails when it cannot be read.
[[nodiscard]] Outcome<ModelText> ReadModelText(const std::filesystem::path& path);

// Writes the model. Fails when a value cannot be held, or the file not written.
[[nodiscard]] Outcome<> WriteModelText(const std::filesystem::path& path, const ModelText& model);

// The colour that a field of a model file holds; none when it holds none.
std::optional<Colour> ColourOf(std::string_view field);

}  // namespace ormel
