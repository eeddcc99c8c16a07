#include "rastertools/map_report.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/map_text.h"
#include "support/temporary_folder.h"

namespace ormel {
namespace {

// numpy 1.24: sum(), mean(), std() of the cells of the sample's slope that are not NODATA and lie
// where walkable.asc is 1, and bincount(rint(255 * (v - min) / (max - min))).
TEST(MapReport, FiguresOfTheSampleAreThoseOfNumpy) {
  const std::string folder = std::string(ORMEL_SOURCE_DIR) + "/examples/kagwene/";
  NoProgress quiet;
  const auto figures = FiguresOf({folder + "slope.asc", folder + "walkable.asc"}, quiet);
  ASSERT_TRUE(figures.Ok());
  const auto& [summary, distribution] = figures.Value();
  EXPECT_EQ(summary.cellCount, 20666);
  EXPECT_NEAR(summary.cellSum, 470966.48, 1e-6);
  EXPECT_EQ(summary.minimum, 0.33);
  EXPECT_EQ(summary.maximum, 45);
  EXPECT_NEAR(*summary.mean, 22.789435788251232, 1e-12);
  EXPECT_NEAR(*distribution.standardDeviation, 9.790784071018606, 1e-12);
  const auto& histogram = distribution.histogram;
  EXPECT_EQ(histogram[0], 3);
  EXPECT_EQ(histogram[1], 5);
  EXPECT_EQ(histogram[92], 143);
  EXPECT_EQ(histogram[200], 58);
  EXPECT_EQ(histogram[255], 8);
  EXPECT_EQ(std::max_element(histogram.begin(), histogram.end()) - histogram.begin(), 122);
}

TEST(MapReport, WritesFiguresInFullAndInTables) {
  const testing::TemporaryFolder folder;
  const std::string map =
      folder.Write("m.asc", testing::MapText({{-2, 1, 1}, {9, 9, 9}}, 9)).string();
  NoProgress quiet;
  const MapFigures figures = FiguresOf({map, ""}, quiet).Value();
  EXPECT_EQ(FiguresReport({map, "sea.asc"}, figures),
            "Filename: " + map +
                "\r\nConstraint: sea.asc\r\nMinimum: -2\r\nMaximum: 1\r\nMean: 0\r\n"
                "Standard Deviation: 1.4142135623731\r\nCell Count: 3\r\nCell Sum: 0\r\n");
  EXPECT_EQ(FiguresTableLine(map, figures), map + ",-2,1,0,1.41421,3,0\r\n");
  const std::string table = HistogramTable(figures);
  EXPECT_TRUE(
      table.starts_with("Category Number, Category Value Range, Cell "
                        "Count\r\n0,-2--1.988,1\r\n1,-1.988--1.976,0\r\n"));
  EXPECT_TRUE(table.ends_with("\r\n255,1-1.012,2\r\n"));
}

TEST(MapReport, AMapWithoutCountedCellsHasEmptyFigures) {
  const MapFigures none;
  EXPECT_EQ(FiguresTableLine("m.asc", none), "m.asc,,,,,0,0\r\n");
  EXPECT_TRUE(HistogramTable(none).ends_with("\r\n255,0-0,0\r\n"));
}

}  // namespace
}  // namespace ormel
