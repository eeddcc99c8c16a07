#include "text/lists.h"

#include <algorithm>
#include <utility>

#include "text/numbers.h"

namespace ormel {

void SortNumericList(std::vector<std::string>& entries) {
  std::vector<std::pair<double, std::string>> keyed;
  keyed.reserve(entries.size());
  for (std::string& entry : entries) keyed.emplace_back(TextToNumber(entry), std::move(entry));
  std::stable_sort(keyed.begin(), keyed.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  for (std::size_t i = 0; i < keyed.size(); ++i) entries[i] = std::move(keyed[i].second);
}

bool InListOrBlank(std::string_view text, std::span<const std::string> entries) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return true;
  text = text.substr(first, text.find_last_not_of(' ') - first + 1);
  return std::find(entries.begin(), entries.end(), text) != entries.end();
}

bool IsListedConstraint(std::string_view text, std::span<const std::string> constraints) {
  return std::find(constraints.begin(), constraints.end(), text) != constraints.end();
}

}  // namespace ormel
