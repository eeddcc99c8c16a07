#include "mapdata/raster_writer.h"

#include <gtest/gtest.h>

namespace ormel {
namespace {

TEST(HeaderText, HasTheKeysOfItsStyleWhichDecidesOnMissingNoData) {
  const std::string wide14 =
      "ncols         3\r\nnrows         2\r\nxllcorner     10.5\r\nyllcorner     -20\r\n"
      "cellsize      30\r\n";
  const struct {
    HeaderStyle style;
    std::string head;
    std::string nodata;
    std::string without;
  } cases[] = {
      {HeaderStyle::kWide14, wide14, "", ""},
      {HeaderStyle::kWide14NoData, wide14, "NODATA_value  -1\r\n", ""},
      {HeaderStyle::kWide14NoDataSpaced, wide14, "NO_DATA value  -1\r\n", "NO_DATA value  0\r\n"},
      {HeaderStyle::kWide12,
       "ncols       3\r\nnrows       2\r\nxllcorner   10.5\r\nyllcorner   -20\r\n"
       "cellsize    30\r\n",
       "NODATA    -1\r\n", ""},
      {HeaderStyle::kWide16,
       "ncols           3\r\nnrows           2\r\nxllcorner       10.5\r\n"
       "yllcorner       -20\r\ncellsize        30\r\n",
       "nodata          -1\r\n", ""},
      {HeaderStyle::kBlank1,
       "ncols 3\r\nnrows 2\r\nxllcorner 10.5\r\nyllcorner -20\r\ncellsize 30\r\n",
       "NODATA_value -1\r\n", "NODATA_value -9999\r\n"}};
  for (const auto& c : cases) {
    EXPECT_EQ(HeaderText(c.style, {"3", "2", "10.5", "-20", "30", "-1"}), c.head + c.nodata);
    EXPECT_EQ(HeaderText(c.style, {"3", "2", "10.5", "-20", "30", std::nullopt}),
              c.head + c.without);
  }
}

TEST(RowText, PutsABlankBeforeEachValueAndGrowsWithTheLongestRows) {
  RowText row;
  row.AddRounded(127.456, 2);
  row.AddRounded(126.5, 0);
  row.Add(0.1F);
  row.Add(-0.1);
  EXPECT_EQ(row.Finish(), " 127.46 126 0.1 -0.1\r\n");
  EXPECT_EQ(row.Finish(), "\r\n");
  std::string expected;
  for (int i = 0; i < 32767; ++i) {
    row.Add(-1.23456789012345e-300);
    expected += " -1.23456789012345E-300";
  }
  EXPECT_EQ(row.Finish(), expected + "\r\n");
}

}  // namespace
}  // namespace ormel
