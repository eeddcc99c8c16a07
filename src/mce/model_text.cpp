#include "mce/model_text.h"

#include "base/file_writer.h"
#include "mce/field_text.h"
#include "text/numbers.h"
#include "text/token_reader.h"

namespace ormel {

std::vector<ModelTextFactor> ReadFactorFields(FieldReader& fields) {
  std::vector<ModelTextFactor> factors;
  while (fields.Find("FAC$")) {
    ModelTextFactor& factor = factors.emplace_back();
    factor.path = fields.Field();
    for (std::string& field : factor.fields) field = fields.Field();
  }
  return factors;
}

void WriteMapFields(const std::vector<ModelTextFactor>& factors,
                    const std::vector<std::string>& constraints, FieldWriter& fields) {
  for (const ModelTextFactor& factor : factors) {
    fields.Key("FAC$").Field(factor.path);
    for (const std::string& field : factor.fields) fields.Field(field);
  }
  if (factors.empty()) fields.Key("FAC$NULL");
  for (const std::string& constraint : constraints) fields.Key("CST$").Field(constraint);
  if (constraints.empty()) fields.Key("CST$NULL");
}

ModelText ParseModelText(std::string_view text) {
  ModelText model;
  FieldReader fields(text);
  model.root = fields.FieldBehind("FRD$");
  model.pattern = fields.FieldBehind("FF$");
  if (!fields.Find("FAC$NULL")) model.factors = ReadFactorFields(fields);
  if (text.find("CST$NULL") == std::string_view::npos) {
    while (fields.Find("CST$")) model.constraints.push_back(fields.Field());
  }
  model.title = FieldReader(text).FieldBehind("TITLE$");
  return model;
}

Outcome<ModelText> ReadModelText(const std::filesystem::path& path) {
  Outcome<TokenReader> reader = TokenReader::Open(path);
  if (!reader.Ok()) return reader.Stop();
  std::string_view record;
  if (!reader.Value().Next(record)) record = {};
  if (!reader.Value().Error().empty()) return Failure{FailureKind::kDisk, reader.Value().Error()};
  return ParseModelText(record);
}

Outcome<> WriteModelText(const std::filesystem::path& path, const ModelText& model) {
  FieldWriter fields("#\"");
  fields.Key("FRD$").Field(model.root).Key("FF$").Field(model.pattern);
  WriteMapFields(model.factors, model.constraints, fields);
  fields.Key("TITLE$").Field(model.title);
  if (!fields.Bad().empty()) {
    return Failure{FailureKind::kRefused,
                   "A model file cannot hold # or a double quote, as in: " + fields.Bad()};
  }
  return WriteFile(path, '"' + fields.Text() + "\"\r\n");
}

std::optional<Colour> ColourOf(std::string_view field) {
  const double colour = HalfEvenRound(TextToNumber(field));
  if (!IsNumeric(field) || colour < 0 || colour > kLargestColour) return std::nullopt;
  return static_cast<Colour>(colour);
}

}  // namespace ormel
