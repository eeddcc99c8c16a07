// The maps of a model: by which checks a file joins the factors or the constraints, and the header
// that all of them share. Every builder of models uses these.
//
// Headers are equal when their first five values are, as numbers and exactly. NODATA is no part of
// it: a set may mix NODATA values, and maps with and without one.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "base/outcome.h"
#include "base/progress_sink.h"

namespace ormel {

// What a builder holds when a file asks to join.
struct LoadedData {
  std::vector<std::string> factors;      // the path of each row, row 1 first; empty: a free row
  std::vector<std::string> constraints;  // full paths
};

// Columns, rows, X and Y of the lower left corner, cell size, as texts. All are empty until the
// first file of a model sets them.
struct ReferenceHeader {
  std::array<std::string, 5> texts;

  bool IsSet() const { return !texts[0].empty(); }
  void Clear() { texts = {}; }
};

// Even modes tell a person what is wrong, odd ones are silent.
enum class CheckMode {
  kFactor = 0,
  kFactorSilent = 1,
  kConstraint = 2,
  kConstraintSilent = 3,
  kUnlisted = 10,  // without a look at what is loaded
  kUnlistedSilent = 11,
};

struct Registration {
  enum class Result { kAccepted, kRefused, kAlreadyEntered };

  Result result = Result::kRefused;
  std::string path;     // as it is to be kept: the first doubled separator repaired
  std::string message;  // for the person; empty: nothing is to be told
  std::string title;    // empty: that of the program

  bool Accepted() const { return result == Result::kAccepted; }
};

// The rows with a file, other than `row` (from 1; 0: none is left out), and the constraints.
int CountLoadedData(const LoadedData& loaded, int row);

// Whether `path` may join as factor `row` (from 1; 0: as a new one) or as a constraint. The first
// file of a model sets `reference`, and so does a file for the only row in use. A file that cannot
// be read is told in every mode. A constraint is read to its end; stopping that refuses it.
Registration CheckAndRegister(std::string path, CheckMode mode, int row, const LoadedData& loaded,
                              ReferenceHeader& reference, ProgressSink& progress);

// One sentence that names the header values in which two maps differ; empty when they agree.
// `name` is the file's name.
std::string HeaderDifferences(std::string_view name, const std::vector<std::string>& values,
                              const std::array<std::string, 5>& reference);

}  // namespace ormel
