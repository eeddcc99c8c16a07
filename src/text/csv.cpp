#include "text/csv.h"

#include <utility>

#include "text/numbers.h"
#include "text/token_reader.h"

namespace ormel {

int CsvFieldIndex(std::string_view header, std::string_view name) {
  for (int position = 1;; ++position) {
    const std::size_t comma = header.find(',');
    if (header.substr(0, comma) == name) return position;
    if (comma == std::string_view::npos) return -1;
    header.remove_prefix(comma + 1);
  }
}

std::string_view CsvField(std::string_view line, int position) {
  for (; position > 1; --position) {
    const std::size_t comma = line.find(',');
    if (comma == std::string_view::npos) return kMissingField;
    line.remove_prefix(comma + 1);
  }
  return position == 1 ? line.substr(0, line.find(',')) : kMissingField;
}

std::string_view WithoutBlanks(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

Outcome<std::vector<std::string>> ReadCsvLines(const std::filesystem::path& path) {
  Outcome<TokenReader> file = TokenReader::Open(path);
  if (!file.Ok()) return file.Stop();
  std::vector<std::string> lines;
  for (std::string line; file.Value().ReadLine(line);) {
    if (line.starts_with("\xEF\xBB\xBF")) line.erase(0, 3);
    lines.push_back(std::move(line));
  }
  if (!file.Value().Error().empty()) return Failure{FailureKind::kDisk, file.Value().Error()};
  return lines;
}

}  // namespace ormel
