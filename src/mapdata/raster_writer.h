// The text of ASCII raster maps as they are written: headers in the styles of the tools, and rows
// of cells. All lines end in CR LF.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "text/numbers.h"

namespace ormel {

// The padding of the keys differs from tool to tool. The keys are part of each tool's file format:
// other programs cut values out by column, so they are never made uniform.
enum class HeaderStyle {
  kWide14,              // without a NODATA line
  kWide14NoData,        // "NODATA_value  " when there is a value
  kWide14NoDataSpaced,  // "NO_DATA value  ", 0 when there is no value
  kWide12,              // "NODATA    " when there is a value
  kWide16,              // "nodata          " when there is a value
  kBlank1,              // "NODATA_value ", -9999 when there is no value
};

// Values as they are to be written.
struct HeaderValues {
  std::string ncols;
  std::string nrows;
  std::string xllcorner;
  std::string yllcorner;
  std::string cellsize;
  std::optional<std::string> nodata;
};

std::string HeaderText(HeaderStyle style, const HeaderValues& values);

// Where the blank of each value of a row stands. Each tool keeps to one of them, as its readers do.
enum class RowForm { kBlankBefore, kBlankBehind };

// Builds rows of cells, one after the other, in a buffer that is used again: a blank before or
// behind each value, CR LF at the end.
class RowText {
 public:
  explicit RowText(RowForm form = RowForm::kBlankBefore) : form_(form) {}

  void Add(double value);
  void Add(float value);
  void AddRounded(double value, int places);  // the text of HalfEvenRound(value, places)
  void AddText(std::string_view text);        // as it stands

  // Ends the row. The text is valid until the next Add; the row after it begins empty.
  std::string_view Finish();

 private:
  // Where the next value goes, behind a blank, with so many bytes to use.
  char* Room(std::size_t bytes = kNumberTextLimit);
  void Keep(const char* end);  // the row now ends there

  RowForm form_;
  std::string buffer_;
  std::size_t used_ = 0;
};

}  // namespace ormel
