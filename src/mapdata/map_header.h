// The header of a map file: lines in a fixed order (columns, rows, X and Y of the lower left
// corner, cell size, NODATA). Keys are never looked at: the value of a line is the text behind its
// last blank.
#pragma once

#include <filesystem>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/outcome.h"

namespace ormel {

inline constexpr int kNoDataLine = 6;

// The NODATA of a map that has none: no number equals it.
inline constexpr double kNoNoData = std::numeric_limits<double>::quiet_NaN();

// The text behind the last blank of a header line: empty when the line ends in a blank, the whole
// line when it has none.
std::string_view TextBehindLastBlank(std::string_view line);

// The value of line `line` (from 1) of a header; empty when the header has no such line.
std::string_view HeaderValue(std::span<const std::string> lines, int line);

// The number of tokens before the first numeric one, of which at most 100 are looked at; for a file
// with a header this is its number of lines. 0 for a file that cannot be read.
int CountHeaderLines(const std::filesystem::path& path);

// The header values of a file as texts, line 1 first. A line that is missing is an empty text.
struct HeaderTexts {
  std::vector<std::string> values;
  bool complete = false;  // no line is missing
};

// The values of the first `lines` header lines. Fails when the file cannot be opened or read.
[[nodiscard]] Outcome<HeaderTexts> ReadHeaderTexts(const std::filesystem::path& path,
                                                   int lines = 5);

// The NODATA value of a map as its header writes it; empty when it has no such line.
std::string ReadNoDataText(const std::filesystem::path& path);

// Whether a header's size cannot be believed: beyond 100 million cells the file must have at least
// a byte for each of them. Smaller maps may be shorter than their header says.
bool ClaimsTooMuch(const std::filesystem::path& path, int ncols, int nrows);

}  // namespace ormel
