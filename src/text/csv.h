// Rows of comma-separated tables. A line is split at its commas; there is no quoting.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "base/outcome.h"

namespace ormel {

// What a field that a row does not have reads as.
inline constexpr std::string_view kMissingField = "-1";

// The position, from 1, of the first field that is exactly `name`; -1 when none is.
int CsvFieldIndex(std::string_view header, std::string_view name);

// The field at `position`, from 1, as it stands; kMissingField when the row has fewer.
std::string_view CsvField(std::string_view line, int position);

// The text without the blanks around it.
std::string_view WithoutBlanks(std::string_view text);

// The lines of a table, whatever their ends, without the marks of an encoding that spreadsheets put
// in front of some. Fails when the file cannot be read.
[[nodiscard]] Outcome<std::vector<std::string>> ReadCsvLines(const std::filesystem::path& path);

}  // namespace ormel
