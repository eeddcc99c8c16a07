// Dates of point files as time steps see them: with the larger parts left out, so that a season or
// a time of day can be compared over years.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "text/dates.h"

namespace ormel {

// Which parts of a date count. Each leaves out one more.
enum class IgnoredParts {
  kNone = -1,
  kYear = 0,
  kMonth = 1,
  kDay = 2,
  kHour = 3,
  kMinute = 4,
};

// A text that can be read and compared as a date: fractions of a second fall away, and the parts
// that are ignored become those of January 2000 or 0. A text that is no date keeps its letters.
std::string NormaliseDateText(std::string text, IgnoredParts ignored);

// The parts of the date that count, as lists show them. A text that is no date stays as it is.
std::string FormatStepDate(std::string_view text, IgnoredParts ignored);

// The place of `value` in a list of texts, from 0; -1 when it is not there.
int FindStepIndex(std::string_view value, std::span<const std::string> steps);

// Where a search for a step begins: the first step's start, and the length of a step.
struct StepEstimate {
  double start = 0;
  DateUnit unit = DateUnit::kDay;
  double size = 1;
};

// The place, from 0, of the step in which the date `value` lies: the last one whose start is not
// behind it, in whole seconds. -1 when it is before the first step, or no date. `starts` ascend.
// The estimate only shortens the search; by it a value before `start` is before the first step.
int FindStepIndex(std::string_view value, std::span<const double> starts,
                  const std::optional<StepEstimate>& estimate = std::nullopt);

}  // namespace ormel
