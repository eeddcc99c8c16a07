#include "mapdata/raster_writer.h"

#include <gtest/gtest.h>

#include <vector>

namespace ormel {
namespace {

const HeaderValues kValues = {"3", "2", "10.5", "-20", "30", "-1"};

TEST(HeaderText, HasTheKeysOfItsStyle) {
  const struct {
    HeaderStyle style;
    const char* text;
  } cases[] = {
      {HeaderStyle::kWide14,
       "ncols         3\r\nnrows         2\r\nxllcorner     10.5\r\nyllcorner     -20\r\n"
       "cellsize      30\r\n"},
      {HeaderStyle::kWide14NoData,
       "ncols         3\r\nnrows         2\r\nxllcorner     10.5\r\nyllcorner     -20\r\n"
       "cellsize      30\r\nNODATA_value  -1\r\n"},
      {HeaderStyle::kWide14NoDataSpaced,
       "ncols         3\r\nnrows         2\r\nxllcorner     10.5\r\nyllcorner     -20\r\n"
       "cellsize      30\r\nNO_DATA value  -1\r\n"},
      {HeaderStyle::kWide12,
       "ncols       3\r\nnrows       2\r\nxllcorner   10.5\r\nyllcorner   -20\r\n"
       "cellsize    30\r\nNODATA    -1\r\n"},
      {HeaderStyle::kWide16,
       "ncols           3\r\nnrows           2\r\nxllcorner       10.5\r\n"
       "yllcorner       -20\r\ncellsize        30\r\nnodata          -1\r\n"},
      {HeaderStyle::kBlank1,
       "ncols 3\r\nnrows 2\r\nxllcorner 10.5\r\nyllcorner -20\r\ncellsize 30\r\n"
       "NODATA_value -1\r\n"},
  };
  for (const auto& c : cases) EXPECT_EQ(HeaderText(c.style, kValues), c.text);
}

TEST(HeaderText, WithoutNoDataTheStyleDecides) {
  HeaderValues values = kValues;
  values.nodata.reset();
  const struct {
    HeaderStyle style;
    const char* end;
  } cases[] = {
      {HeaderStyle::kWide14, "cellsize      30\r\n"},
      {HeaderStyle::kWide14NoData, "cellsize      30\r\n"},
      {HeaderStyle::kWide14NoDataSpaced, "cellsize      30\r\nNO_DATA value  0\r\n"},
      {HeaderStyle::kWide12, "cellsize    30\r\n"},
      {HeaderStyle::kWide16, "cellsize        30\r\n"},
      {HeaderStyle::kBlank1, "cellsize 30\r\nNODATA_value -9999\r\n"},
  };
  for (const auto& c : cases) {
    const std::string text = HeaderText(c.style, values);
    EXPECT_EQ(text.substr(text.find("cellsize")), c.end);
  }
}

TEST(RowText, PutsABlankBeforeEachValue) {
  RowText row;
  row.AddRounded(127.456, 2);
  row.AddRounded(126.5, 0);
  row.Add(0.1F);
  row.Add(-0.1);
  EXPECT_EQ(row.Finish(), " 127.46 126 0.1 -0.1\r\n");
  EXPECT_EQ(row.Finish(), "\r\n");
  row.Add(5.0);
  EXPECT_EQ(row.Finish(), " 5\r\n");
}

TEST(RowText, GrowsWithTheLongestRows) {
  RowText row;
  std::string expected;
  for (int i = 0; i < 32767; ++i) {
    row.Add(-1.23456789012345e-300);
    expected += " -1.23456789012345E-300";
  }
  EXPECT_EQ(row.Finish(), expected + "\r\n");
}

}  // namespace
}  // namespace ormel
