#include "text/csv.h"

#include <algorithm>

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

}  // namespace ormel
