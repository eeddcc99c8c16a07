#include "mapdata/raster_writer.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace ormel {
namespace {

struct StyleKeys {
  std::array<std::string_view, 5> keys;
  std::string_view nodataKey;      // empty: never written
  std::string_view nodataDefault;  // written when there is no value; empty: then no line is
};

constexpr std::array<std::string_view, 5> kWide14Keys = {
    "ncols         ", "nrows         ", "xllcorner     ", "yllcorner     ", "cellsize      "};

// In the order of HeaderStyle. The NODATA keys do not line up with the others of their style: files
// have always been written so.
constexpr StyleKeys kStyles[] = {
    {kWide14Keys, "", ""},
    {kWide14Keys, "NODATA_value  ", ""},
    {kWide14Keys, "NO_DATA value  ", "0"},
    {{"ncols       ", "nrows       ", "xllcorner   ", "yllcorner   ", "cellsize    "},
     "NODATA    ",
     ""},
    {{"ncols           ", "nrows           ", "xllcorner       ", "yllcorner       ",
      "cellsize        "},
     "nodata          ",
     ""},
    {{"ncols ", "nrows ", "xllcorner ", "yllcorner ", "cellsize "}, "NODATA_value ", "-9999"},
};

constexpr std::string_view kLineEnd = "\r\n";

void AppendLine(std::string& text, std::string_view key, std::string_view value) {
  text.append(key).append(value).append(kLineEnd);
}

}  // namespace

std::string HeaderText(HeaderStyle style, const HeaderValues& values) {
  const StyleKeys& keys = kStyles[static_cast<std::size_t>(style)];
  const std::string* const texts[] = {&values.ncols, &values.nrows, &values.xllcorner,
                                      &values.yllcorner, &values.cellsize};
  std::string text;
  for (std::size_t i = 0; i < keys.keys.size(); ++i) AppendLine(text, keys.keys[i], *texts[i]);
  const std::string nodata = values.nodata.value_or(std::string(keys.nodataDefault));
  if (!keys.nodataKey.empty() && (values.nodata || !nodata.empty())) {
    AppendLine(text, keys.nodataKey, nodata);
  }
  return text;
}

char* RowText::Room(std::size_t bytes) {
  if (buffer_.size() - used_ < bytes + 1) {
    constexpr std::size_t kSmallestBuffer = 4096;
    buffer_.resize(std::max(2 * buffer_.size() + bytes, kSmallestBuffer));
  }
  char* place = buffer_.data() + used_;
  *place = ' ';
  return place + 1;
}

void RowText::Keep(const char* end) { used_ = static_cast<std::size_t>(end - buffer_.data()); }

void RowText::Add(double value) { Keep(WriteNumber(Room(), value)); }

void RowText::Add(float value) { Keep(WriteNumber(Room(), value)); }

void RowText::AddRounded(double value, int places) { Keep(WriteRounded(Room(), value, places)); }

void RowText::AddText(std::string_view text) {
  Keep(std::copy(text.begin(), text.end(), Room(text.size())));
}

// The row stands in the buffer with a blank before each value. Those of the other form are the same
// row without its first blank and with one more at the end.
std::string_view RowText::Finish() {
  const bool shifted = form_ == RowForm::kBlankBehind && used_ > 0;
  char* end = Room() - (shifted ? 0 : 1);
  end = std::copy(kLineEnd.begin(), kLineEnd.end(), end);
  const char* start = buffer_.data() + (shifted ? 1 : 0);
  used_ = 0;
  return {start, static_cast<std::size_t>(end - start)};
}

}  // namespace ormel
