#include "mapdata/map_statistics.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/map_text.h"
#include "support/temporary_folder.h"

namespace ormel {
namespace {

using testing::MapText;

class MapStatisticsTest : public ::testing::Test {
 protected:
  MapToCount Count(const std::string& map, const std::string& constraint = "") {
    return {folder.Write("map.asc", map).string(),
            constraint.empty() ? "" : folder.Write("mask.asc", constraint).string()};
  }
  MapStatsRecord Figures(const MapToCount& map) { return MapStatistics(map, quiet).Value(); }

  NoProgress quiet;
  testing::TemporaryFolder folder;
};

TEST_F(MapStatisticsTest, FiguresOfASmallMap) {
  const MapToCount map = Count(MapText({{2, 4, -1}, {4, 6, -1}}, -1));
  const MapStatsRecord figures = Figures(map);
  EXPECT_EQ(figures.cellCount, 4);
  EXPECT_EQ(figures.cellSum, 2 + 4 + 4 + 6);
  EXPECT_EQ(figures.minimum, 2);
  EXPECT_EQ(figures.maximum, 6);
  EXPECT_EQ(figures.mean, 16 / 4.0);
  const MapDistribution distribution = DistributionOf(map, figures, quiet).Value();
  EXPECT_EQ(distribution.standardDeviation, std::sqrt((4 + 0 + 0 + 4) / 4.0));
  EXPECT_EQ(distribution.histogram[0], 1);
  EXPECT_EQ(distribution.histogram[128], 2);  // 127.5, to the even number
  EXPECT_EQ(distribution.histogram[255], 1);
}

TEST_F(MapStatisticsTest, OnlyOnesOfTheConstraintCountAndWhatStandsBehindTheLastRow) {
  const auto sum = [&](const MapToCount& map) { return Figures(map).cellSum; };
  EXPECT_EQ(sum(Count(MapText({{1, 2, 4, 8}}), MapText({{1, 0, 2, 1}}))), 1 + 8);
  // A constraint that ends early goes on with its last value.
  EXPECT_EQ(sum(Count(MapText({{1, 2, 4, 8}}), MapText({{0, 1}}))), 2 + 4 + 8);
  EXPECT_EQ(sum(Count(MapText({{1, 2}}) + " 40\r\n")), 1 + 2 + 40);
}

TEST_F(MapStatisticsTest, MapsOfNoValueOfOneAndNoMap) {
  const MapToCount empty = Count(MapText({{9, 9}}, 9));
  const MapStatsRecord none = Figures(empty);
  EXPECT_TRUE(none.cellCount == 0 && none.cellSum == 0);
  EXPECT_FALSE(none.minimum || none.maximum || none.mean);
  EXPECT_FALSE(DistributionOf(empty, none, quiet).Value().standardDeviation);
  const MapToCount flat = Count(MapText({{7, 7}}));
  const MapDistribution distribution = DistributionOf(flat, Figures(flat), quiet).Value();
  EXPECT_EQ(distribution.standardDeviation, 0);
  for (const std::int64_t count : distribution.histogram) EXPECT_EQ(count, 0);
  EXPECT_TRUE(MapStatistics({"no/such.asc", ""}, quiet).Failed());
  EXPECT_TRUE(MapStatistics({flat.path, "no/such.asc"}, quiet).Failed());
}

}  // namespace
}  // namespace ormel
