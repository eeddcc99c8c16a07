#include "viewer/measure.h"

#include <gtest/gtest.h>

namespace ormel {
namespace {

TEST(Measure, LengthsAndAreaOfATriangle) {
  const std::vector<MapPoint> points = {{0, 0}, {300, 0}, {300, 400}};
  const Measures measures = MeasuresOf(points);
  EXPECT_EQ(measures.segment, 400);
  EXPECT_EQ(measures.total, 300 + 400);
  EXPECT_EQ(measures.area, 300 * 400 / 2 / 10000.0);
  // The other way round it has the same area.
  EXPECT_EQ(MeasuresOf({points.rbegin(), points.rend()}).area, measures.area);
}

TEST(Measure, FewPointsMeasureNothing) {
  EXPECT_EQ(MeasuresOf({}).total, 0);
  EXPECT_EQ(MeasuresOf({{5, 5}}).segment, 0);
  EXPECT_EQ(MeasuresOf({{5, 5}, {8, 9}}).total, 5);
  EXPECT_EQ(MeasuresOf({{5, 5}, {8, 9}}).area, 0);
}

TEST(Measure, TextsHaveFourDecimals) {
  EXPECT_EQ(LengthText(12.34565, LengthUnits::kMetres), "12.3456 m");  // a tie, to the even one
  EXPECT_EQ(LengthText(100, LengthUnits::kFeet), "328.084 ft");
  EXPECT_EQ(AreaText(6, LengthUnits::kMetres), "6 ha");
  // 10000 * 3.280839895 * 3.280839895 = 107639.10416...
  EXPECT_EQ(AreaText(1, LengthUnits::kFeet), "107639.1042 ft^2");
}

}  // namespace
}  // namespace ormel
