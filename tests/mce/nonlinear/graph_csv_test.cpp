#include "mce/nonlinear/graph_csv.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/temporary_folder.h"

namespace ormel {
namespace {

using testing::ReadText;
using testing::TemporaryFolder;

using Numbers = std::vector<double>;

WeightGraph Points(const Numbers& points) {
  WeightGraph graph;
  graph.pointCount = static_cast<int>(points.size());
  std::copy(points.begin(), points.end(), graph.points.begin());
  return graph;
}

Numbers PointsOf(const WeightGraph& graph) {
  return {graph.points.begin(), graph.points.begin() + graph.pointCount};
}

TEST(GraphCsv, ReadsWhatIsANumberInItsWholeLength) {
  const std::pair<std::string, Numbers> cases[] = {
      {"1,2,3", {1, 2, 3}},
      {"1, 2 ,\t3\r\n4\n5\r6", {1, 2, 3, 4, 5, 6}},
      {"step,weight\r\n1,0.5\r\n2,-1.5E2\r\n", {1, 0.5, 2, -150}},
      {"\"7\",\"eight\",\"\",9", {7, 9}},
      {",,1,,\r\n\r\n,2,", {1, 2}},
      {"5 m,1 2,1.2.3,-,.,12:30,0x1F,nan,inf", {}},
      {"", {}},
      {std::string("1,\0,2,\xFF,3", 9), {1, 2, 3}},
  };
  TemporaryFolder folder;
  for (const auto& [text, numbers] : cases) {
    EXPECT_EQ(ReadCsvNumbers(folder.Write("p.csv", text)).Value(), numbers) << text;
  }
  const Outcome<Numbers> missing = ReadCsvNumbers(folder / "none.csv");
  ASSERT_TRUE(missing.Failed());
  EXPECT_NE(missing.Text().find("none.csv"), std::string::npos);
}

constexpr CsvFill kFill = CsvFill::kOneToOne;
constexpr CsvFill kSpread = CsvFill::kInterpolate;

const struct {
  Numbers points;
  Numbers values;
  CsvFill fill;
  Numbers filled;
  double top;
  double bottom;
} kFills[] = {
    // As many: one to one, in double precision.
    {{1, 1, 1}, {0.1, 7, -2}, kFill, {0.1, 7, -2}, 7, -2},
    {{1, 1, 1}, {0.1, 7, -2}, kSpread, {0.1, 7, -2}, 7, -2},
    // Fewer: the points left over stay, and are not among the limits.
    {{90, 91, 92, 93}, {5, 3}, kFill, {5, 3, 92, 93}, 5, 3},
    // More: the values left over count for nothing.
    {{0, 0}, {5, 3, 900, -900}, kFill, {5, 3}, 5, 3},
    // Spread to places 1, 4/3, 5/3, 2: those between values are in single precision.
    {{0, 0, 0, 0},
     {0.1, 0.3},
     kSpread,
     {0.1, 0.1666666716337204, 0.23333333432674408, 0.3},
     0.3,
     0.1},
    // Places 1, 3, 5, then 1, 2.5, 4.
    {{0, 0, 0}, {1.5, 0.1, 7, -2, 3}, kSpread, {1.5, 7, 3}, 7, 1.5},
    {{0, 0, 0}, {0.1, 0.2, 0.7, 0.4}, kSpread, {0.1, 0.44999998807907104, 0.4}, 0.45, 0.1},
    {{0, 0, 0}, {4.2}, kSpread, {4.2, 4.2, 4.2}, 4.2, 4.2},
    // Limits have 3 decimals, ties to even.
    {{0, 0}, {2.0625, -0.12349}, kFill, {2.0625, -0.12349}, 2.062, -0.123},
    // Beyond single precision.
    {{0, 0, 0},
     {1e39, 3e39},
     kSpread,
     {1e39, 3.4028234663852886e38, 3e39},
     3e39,
     3.4028234663852886e38},
};

TEST(GraphCsv, FillsPointsAndLimits) {
  for (const auto& test : kFills) {
    SCOPED_TRACE(::testing::PrintToString(test.values));
    WeightGraph graph = Points(test.points);
    FillPoints(graph, test.values, test.fill);
    EXPECT_EQ(PointsOf(graph), test.filled);
    EXPECT_EQ(graph.topValue, test.top);
    EXPECT_EQ(graph.bottomValue, test.bottom);
    EXPECT_EQ(graph.samples, WeightGraph().samples);
    EXPECT_EQ(graph.type, WeightGraph().type);
  }
}

TEST(GraphCsv, WritesThePointsInUseOnOneLine) {
  TemporaryFolder folder;
  WeightGraph graph = Points({0.5, -0.125, 255, 1e20, 0});
  graph.Point(6) = 77;
  ASSERT_TRUE(WriteCsvPoints(folder / "p.csv", graph).Ok());
  EXPECT_EQ(ReadText(folder / "p.csv"), "0.5, -0.125, 255, 1E+20, 0\r\n");
  EXPECT_EQ(ReadCsvNumbers(folder / "p.csv").Value(), PointsOf(graph));
  EXPECT_TRUE(WriteCsvPoints(folder / "none" / "p.csv", graph).Failed());
}

}  // namespace
}  // namespace ormel
