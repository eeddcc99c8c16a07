// How the map of a factor changes from step to step: it stays, its cells are multiplied by a number
// of a table, or another map takes its place.
#pragma once

#include <string>
#include <vector>

#include "base/outcome.h"

namespace ormel {

// Part of the model files; never renumber.
enum class StepMethod { kStatic = 0, kExistingFiles = 1, kFunctional = 2, kProducts = 3 };
inline constexpr int kStepMethods = 4;

struct FactorBehaviour {
  StepMethod method = StepMethod::kStatic;
  // kExistingFiles: the map of each step. A step whose entry is its own date has none yet.
  std::vector<std::string> stepFiles{};
  // kProducts: a table, the title of its row, and the numbers of that row, one for each step.
  std::string productCsv{};
  std::string productRow{};
  std::vector<float> product{};

  // Of step `step`, from 1.
  double Product(int step) const {
    return method == StepMethod::kProducts ? product[static_cast<std::size_t>(step - 1)] : 1.0;
  }
};

// NOLINTBEGIN(readability-identifier-naming): the name by which model builders know it

// What the information file says of it, without a line end behind the last line.
std::string describeBehaviour(const FactorBehaviour& behaviour);

// NOLINTEND(readability-identifier-naming)

// The titles of the rows of a product table: the first fields of the lines whose second field
// begins with a number. Fails when the file cannot be read.
[[nodiscard]] Outcome<std::vector<std::string>> ReadProductTitles(const std::string& path);

// The numbers of the first row with that title. ExpandedTitle(TITLE) finds the row that
// AppendExpandedRow() has written for TITLE. Fails when the file cannot be read or has no such row,
// and with "Bad Data File" when a field is no number.
[[nodiscard]] Outcome<std::vector<float>> ReadProductRow(const std::string& path,
                                                         const std::string& title);

// As many numbers as there are steps (at least 2), spread over the row's (at least 1): the first
// and the last stay, the others lie on the straight lines between them.
std::vector<float> SpreadProducts(const std::vector<float>& row, int steps);

// How the lists show the row that is written for `title`.
std::string ExpandedTitle(const std::string& title);

// Appends the line "Expanded," title, and the numbers. The table is replaced as a whole, when it is
// complete.
[[nodiscard]] Outcome<> AppendExpandedRow(const std::string& path, const std::string& title,
                                          const std::vector<float>& row);

}  // namespace ormel
