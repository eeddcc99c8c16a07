// Rows of comma-separated tables. A line is split at its commas; there is no quoting.
#pragma once

#include <string_view>

namespace ormel {

// What a field that a row does not have reads as.
inline constexpr std::string_view kMissingField = "-1";

// The position, from 1, of the first field that is exactly `name`; -1 when none is.
int CsvFieldIndex(std::string_view header, std::string_view name);

// The field at `position`, from 1, as it stands; kMissingField when the row has fewer.
std::string_view CsvField(std::string_view line, int position);

}  // namespace ormel
