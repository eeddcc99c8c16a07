#include "mce/linear/model_information.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "mapdata/numbers.h"
#include "mapdata/raster.h"
#include "mapdata/token_reader.h"

namespace ormel {
namespace {

constexpr int kLargestWeight = 32767;

constexpr std::array<const char*, 5> kHeaderNames = {"number of columns", "number of rows",
                                                     "X lower-left corner", "Y lower-left corner",
                                                     "cell size"};

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

int WeightOf(const std::string& text) {
  const double rounded = HalfEvenRound(TextToNumber(text));
  return static_cast<int>(std::clamp<double>(rounded, -kLargestWeight, kLargestWeight));
}

bool IsFalse(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  return text == "false" || (IsNumeric(text) && TextToNumber(text) == 0);
}

LinearFactor ReadFactor(FieldReader& fields) {
  LinearFactor factor;
  const std::string path = fields.Field();
  factor.folder = FolderPart(path);
  factor.name = FileNamePart(path, true);
  factor.weight = WeightOf(fields.Field());
  factor.highValuesGood = !IsFalse(fields.Field());
  return factor;
}

// Done when the header of `path` says the same as `reference`; the first map sets the reference.
Outcome<> CheckFrame(const std::string& path, std::vector<std::string>& reference) {
  const Outcome<HeaderTexts> header = ReadHeaderTexts(path);
  if (!header.Ok()) return header.Stop();
  const std::vector<std::string>& values = header.Value().values;
  if (reference.empty()) reference = values;
  std::string differing;
  for (std::size_t i = 0; i < kHeaderNames.size(); ++i) {
    if (TextToNumber(values[i]) == TextToNumber(reference[i])) continue;
    differing += (differing.empty() ? "" : ", ") + std::string(kHeaderNames[i]);
  }
  if (differing.empty()) return Done{};
  return Failure{FailureKind::kRefused,
                 "The following parameters in " + FileNamePart(path) +
                     " were not the same as the rest of the data: " + differing + "."};
}

}  // namespace

ModelInformation ParseModelInformation(std::string_view text) {
  ModelInformation information;
  LinearModel& model = information.model;
  FieldReader fields(text);
  information.root = fields.FieldBehind("FRD$");
  information.pattern = fields.FieldBehind("FF$");
  if (!fields.Find("FAC$NULL")) {
    while (fields.Find("FAC$")) model.factors.push_back(ReadFactor(fields));
  }
  if (text.find("CST$NULL") == std::string_view::npos) {
    while (fields.Find("CST$")) model.constraints.push_back(fields.Field());
  }
  model.title = FieldReader(text).FieldBehind("TITLE$");
  return information;
}

Outcome<ModelInformation> ReadModelInformation(const std::filesystem::path& path) {
  Outcome<TokenReader> reader = TokenReader::Open(path);
  if (!reader.Ok()) return reader.Stop();
  std::string_view record;
  if (!reader.Value().Next(record)) record = {};
  if (!reader.Value().Error().empty()) return Failure{FailureKind::kDisk, reader.Value().Error()};
  return ParseModelInformation(record);
}

Outcome<LinearModel> ReadRunnableModel(const std::filesystem::path& path) {
  Outcome<ModelInformation> information = ReadModelInformation(path);
  if (!information.Ok()) return information.Stop();
  LinearModel model = std::move(information.Value().model);
  std::erase_if(model.factors, [](const LinearFactor& factor) { return factor.name.empty(); });
  if (model.factors.empty()) {
    return Failure{FailureKind::kDamaged, path.string() + ": names no factor"};
  }
  std::vector<std::string> reference;
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
