// Small map files.
#pragma once

#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace ormel::testing {

using Rows = std::vector<std::vector<double>>;

// A map whose lower left corner is (100, 200) with cells of 30.
inline std::string MapText(const Rows& rows, std::optional<double> nodata = std::nullopt) {
  std::ostringstream text;
  text << "ncols  " << rows[0].size() << "\r\nnrows  " << rows.size()
       << "\r\nxllcorner  100\r\nyllcorner  200\r\ncellsize  30\r\n";
  if (nodata) text << "NODATA_value  " << *nodata << "\r\n";
  for (const std::vector<double>& row : rows) {
    for (const double cell : row) text << ' ' << cell;
    text << "\r\n";
  }
  return text.str();
}

}  // namespace ormel::testing
