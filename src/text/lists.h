// Entries of lists as texts.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ormel {

// Sorts ascending by the numbers that the entries begin with; equal numbers keep their order.
void SortNumericList(std::vector<std::string>& entries);

// Whether `text`, without the blanks around it, is empty or one of the entries.
bool InListOrBlank(std::string_view text, std::span<const std::string> entries);

// Whether the path is one of those in a list of constraints.
bool IsListedConstraint(std::string_view text, std::span<const std::string> constraints);

}  // namespace ormel
