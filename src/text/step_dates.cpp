#include "text/step_dates.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace ormel {
namespace {

struct StepForm {
  std::string_view comparable;  // how a comparable text begins
  std::string_view shown;
};

// Of IgnoredParts from kYear on.
constexpr std::array<StepForm, 5> kForms = {{{"hh:nn:ss mmm/dd", "mmm/dd hh:nn:ss"},
                                             {"hh:nn:ss dd", "dd hh:nn:ss"},
                                             {"hh:nn:ss", "hh:nn:ss"},
                                             {"nn:ss", "nn:ss"},
                                             {"ss", "ss"}}};

std::string Formatted(std::string_view text, std::string_view pattern) {
  const std::optional<double> date = ReadDate(text);
  return date ? FormatDate(*date, pattern) : std::string(text);
}

// Behind the first point only what belongs to a time stays: the M of AM and PM goes as well, and
// "A" and "P" are read as they are.
void DropFractions(std::string& text) {
  const std::size_t point = text.find('.');
  if (point == std::string::npos) return;
  const auto goes = [](char letter) {
    return std::string_view(": AP").find(letter) == std::string_view::npos;
  };
  text.erase(std::remove_if(text.begin() + static_cast<std::ptrdiff_t>(point), text.end(), goes),
             text.end());
}

}  // namespace

std::string NormaliseDateText(std::string text, IgnoredParts ignored) {
  DropFractions(text);
  if (ignored == IgnoredParts::kNone) return text;
  text = Formatted(text, kForms[static_cast<std::size_t>(ignored)].comparable);
  switch (ignored) {
    case IgnoredParts::kYear:
      return text + "/2000";
    case IgnoredParts::kMonth: {
      const std::size_t dayAt = text.size() < 2 ? 0 : text.size() - 2;
      return text.substr(0, dayAt) + "01/" + text.substr(dayAt) + "/2000";
    }
    case IgnoredParts::kHour:
      return "00:" + text;
    case IgnoredParts::kMinute:
      return "00:00:" + text;
    default:
      return text;
  }
}

std::string FormatStepDate(std::string_view text, IgnoredParts ignored) {
  if (ignored == IgnoredParts::kNone) return std::string(text);
  return Formatted(text, kForms[static_cast<std::size_t>(ignored)].shown);
}

int FindStepIndex(std::string_view value, std::span<const std::string> steps) {
  const auto found = std::find(steps.begin(), steps.end(), value);
  return found == steps.end() ? -1 : static_cast<int>(found - steps.begin());
}

int FindStepIndex(std::string_view value, std::span<const double> starts,
                  const std::optional<StepEstimate>& estimate) {
  const std::optional<double> date = ReadDate(value);
  if (!date || starts.empty()) return -1;
  const auto reached = [&](std::size_t step) {
    return DateDifference(DateUnit::kSecond, starts[step], *date) >= 0;
  };
  std::size_t step = 0;
  if (estimate) {
    const auto units = static_cast<double>(DateDifference(estimate->unit, estimate->start, *date));
    const double guess = std::floor(units / estimate->size);
    if (!(guess >= 0)) return -1;
    const std::size_t last = starts.size() - 1;
    step = guess < static_cast<double>(last) ? static_cast<std::size_t>(guess) : last;
    if (step == last) return reached(last) ? static_cast<int>(last) : -1;
  }
  while (step + 1 < starts.size() && reached(step + 1)) ++step;
  while (!reached(step)) {
    if (step == 0) return -1;
    --step;
  }
  return static_cast<int>(step);
}

}  // namespace ormel
