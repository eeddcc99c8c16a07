#include "mapdata/factor_set.h"

#include <algorithm>
#include <filesystem>

#include "mapdata/map_header.h"
#include "mapdata/raster.h"
#include "text/numbers.h"
#include "text/paths.h"

namespace ormel {
namespace {

constexpr char kNotUseable[] = "The Data Specified is not of a useable type!";
constexpr char kBadConstraintFile[] =
    "Bad Constraint File (has values other than 0, 1, and NODATA or other internal problems)";

constexpr std::array<const char*, 5> kHeaderNames = {"number of columns", "number of rows",
                                                     "X lower-left corner", "Y lower-left corner",
                                                     "cell size"};

using Result = Registration::Result;

bool IsFactor(CheckMode mode) {
  return mode == CheckMode::kFactor || mode == CheckMode::kFactorSilent;
}

bool IsConstraint(CheckMode mode) {
  return mode == CheckMode::kConstraint || mode == CheckMode::kConstraintSilent;
}

bool Tells(CheckMode mode) { return static_cast<int>(mode) % 2 == 0; }

class Check {
 public:
  Check(std::string path, CheckMode mode, int row, const LoadedData& loaded)
      : mode_(mode), row_(row), loaded_(loaded) {
    if (IsFactor(mode) || IsConstraint(mode)) RepairPath(path);
    registration_.path = std::move(path);
  }

  Registration Run(ReferenceHeader& reference, ProgressSink& progress) {
    if (IsFactor(mode_) && IsLoadedFactor()) return AlreadyEntered("Factor already loaded!");
    if (IsConstraint(mode_)) {
      const Outcome<bool> valid = IsValidConstraintFile(registration_.path, progress);
      if (valid.WasCancelled()) return registration_;
      if (!valid.Ok()) return NotUseable();
      if (!valid.Value()) return Refuse(kBadConstraintFile);
      if (Holds(loaded_.constraints)) return AlreadyEntered("Constraint Already Loaded!");
    }
    return CompareHeader(reference);
  }

 private:
  bool Holds(const std::vector<std::string>& paths) const {
    return std::find(paths.begin(), paths.end(), registration_.path) != paths.end();
  }

  bool IsLoadedFactor() const {
    for (std::size_t i = 0; i < loaded_.factors.size(); ++i) {
      if (static_cast<int>(i) + 1 != row_ && loaded_.factors[i] == registration_.path) return true;
    }
    return false;
  }

  Registration CompareHeader(ReferenceHeader& reference) {
    std::error_code error;
    const std::string& path = registration_.path;
    if (!std::filesystem::exists(path, error)) return Refuse(path + " Does Not Exist!");
    const Outcome<HeaderTexts> header = ReadHeaderTexts(path);
    if (!header.Ok() || !header.Value().complete) return NotUseable();
    const std::vector<std::string>& values = header.Value().values;
    registration_.result = Result::kAccepted;
    if (CountLoadedData(loaded_, row_) == 0 || !reference.IsSet()) {
      std::copy(values.begin(), values.end(), reference.texts.begin());
      return registration_;
    }
    const std::string differences = HeaderDifferences(path, values, reference.texts);
    return differences.empty() ? registration_ : Refuse(differences, "Non-Uniform Data!");
  }

  // The person hears of it in the modes that tell.
  Registration Refuse(const std::string& message, const std::string& title = "") {
    registration_.result = Result::kRefused;
    if (Tells(mode_)) {
      registration_.message = message;
      registration_.title = title;
    }
    return registration_;
  }

  Registration AlreadyEntered(const std::string& message) {
    Refuse(message);
    registration_.result = Result::kAlreadyEntered;
    return registration_;
  }

  // In every mode: a file that is no map at all is worth a word even among hundreds.
  Registration NotUseable() {
    registration_.result = Result::kRefused;
    registration_.message = kNotUseable;
    return registration_;
  }

  const CheckMode mode_;
  const int row_;
  const LoadedData& loaded_;
  Registration registration_;
};

}  // namespace

int CountLoadedData(const LoadedData& loaded, int row) {
  int count = static_cast<int>(loaded.constraints.size());
  for (std::size_t i = 0; i < loaded.factors.size(); ++i) {
    if (static_cast<int>(i) + 1 != row && !loaded.factors[i].empty()) ++count;
  }
  return count;
}

Registration CheckAndRegister(std::string path, CheckMode mode, int row, const LoadedData& loaded,
                              ReferenceHeader& reference, ProgressSink& progress) {
  return Check(std::move(path), mode, row, loaded).Run(reference, progress);
}

std::string HeaderDifferences(std::string_view name, const std::vector<std::string>& values,
                              const std::array<std::string, 5>& reference) {
  std::string differing;
  for (std::size_t i = 0; i < kHeaderNames.size(); ++i) {
    if (TextToNumber(values[i]) == TextToNumber(reference[i])) continue;
    differing += (differing.empty() ? "" : ", ") + std::string(kHeaderNames[i]);
  }
  if (differing.empty()) return {};
  return "The following parameters in " + FileNamePart(name) +
         " were not the same as the rest of the data: " + differing + ".";
}

}  // namespace ormel
