#include "mce/model_text.h"

#include <algorithm>

#include "base/file_writer.h"
#include "text/token_reader.h"

namespace ormel {
namespace {

// Walks through the fields of a model's text.
class FieldReader {
 public:
  explicit FieldReader(std::string_view text) : text_(text) {}

  // Moves behind the next `key`. False, without a move, when there is none.
  bool Find(std::string_view key) {
    const std::size_t found = text_.find(key, place_);
    if (found == std::string_view::npos) return false;
    place_ = found + key.size();
    return true;
  }

  // The text up to the next "#", and moves behind it.
  std::string Field() {
    const std::size_t end = std::min(text_.find('#', place_), text_.size());
    std::string field(text_.substr(place_, end - place_));
    place_ = std::min(end + 1, text_.size());
    return field;
  }

  // The field behind the next `key`; empty when there is none.
  std::string FieldBehind(std::string_view key) { return Find(key) ? Field() : std::string(); }

 private:
  std::string_view text_;
  std::size_t place_ = 0;
};

// Joins the fields, and keeps the first that a model file cannot hold.
class FieldWriter {
 public:
  FieldWriter& Key(std::string_view key) {
    text_ += key;
    return *this;
  }
  FieldWriter& Field(const std::string& value) {
    if (bad_.empty() && value.find_first_of("#\"") != std::string::npos) bad_ = value;
    text_ += value;
    text_ += '#';
    return *this;
  }
  const std::string& Bad() const { return bad_; }
  std::string Record() const { return '"' + text_ + "\"\r\n"; }

 private:
  std::string text_;
  std::string bad_;
};

}  // namespace

ModelText ParseModelText(std::string_view text) {
  ModelText model;
  FieldReader fields(text);
  model.root = fields.FieldBehind("FRD$");
  model.pattern = fields.FieldBehind("FF$");
  if (!fields.Find("FAC$NULL")) {
    while (fields.Find("FAC$")) {
      ModelTextFactor& factor = model.factors.emplace_back();
      factor.path = fields.Field();
      for (std::string& field : factor.fields) field = fields.Field();
    }
  }
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
  FieldWriter fields;
  fields.Key("FRD$").Field(model.root).Key("FF$").Field(model.pattern);
  for (const ModelTextFactor& factor : model.factors) {
    fields.Key("FAC$").Field(factor.path);
    for (const std::string& field : factor.fields) fields.Field(field);
  }
  if (model.factors.empty()) fields.Key("FAC$NULL");
  for (const std::string& constraint : model.constraints) fields.Key("CST$").Field(constraint);
  if (model.constraints.empty()) fields.Key("CST$NULL");
  fields.Key("TITLE$").Field(model.title);
  if (!fields.Bad().empty()) {
    return Failure{FailureKind::kRefused,
                   "A model file cannot hold # or a double quote, as in: " + fields.Bad()};
  }
  return WriteFile(path, fields.Record());
}

}  // namespace ormel
