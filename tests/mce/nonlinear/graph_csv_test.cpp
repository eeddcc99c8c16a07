#include "mce/nonlinear/graph_csv.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/temporary_folder.h"

namespace ormel {
namespace {

using Numbers = std::vector<double>;

WeightGraph Points(const Numbers& points) {
  WeightGraph graph;
  graph.pointCount = static_cast<int>(points.size());
  std::copy(points.begin(), points.end(), graph.points.begin());
  return graph;
}

TEST(GraphCsv, ReadsWhatIsANumberInItsWholeLength) {
  const std::pair<std::string, Numbers> cases[] = {
      {"1, 2 ,\t3\r\n4\n5\r6", {1, 2, 3, 4, 5, 6}},
      {"step,weight\r\n1,0.5\r\n2,-1.5E2\r\n", {1, 0.5, 2, -150}},
      {"\"7\",\"eight\",\"\",9", {7, 9}},
      {",,1,,\r\n\r\n,2,", {1, 2}},
      {"5 m,1 2,1.2.3,-,.,12:30,0x1F,nan,inf", {}},
      {"", {}},
      {std::string("1,\0,2,\xFF,3", 9), {1, 2, 3}},
      {"\xEF\xBB\xBF"
       "8,9",
       {8, 9}},  // as spreadsheets begin
  };
  testing::TemporaryFolder folder;
  for (const auto& [text, numbers] : cases) {
    EXPECT_EQ(ReadCsvNumbers(folder.Write("p.csv", text)).Value(), numbers) << text;
  }
  EXPECT_NE(ReadCsvNumbers(folder / "none.csv").Text().find("none.csv"), std::string::npos);
}

constexpr CsvFill kFill = CsvFill::kOneToOne;
constexpr CsvFill kSpread = CsvFill::kInterpolate;
constexpr double kThird = 0.1666666716337204;  // between points: in single precision
constexpr double kTwoThirds = 0.23333333432674408;
constexpr double kMiddle = 0.44999998807907104;
constexpr double kLargest = 3.4028234663852886e38;

const struct {
  const char* why;
  Numbers points, values;
  CsvFill fill;
  Numbers filled;
  double top, bottom;
} kFills[] = {
    {"as many", {1, 1, 1}, {0.1, 7, -2}, kFill, {0.1, 7, -2}, 7, -2},
    {"as many", {1, 1, 1}, {0.1, 7, -2}, kSpread, {0.1, 7, -2}, 7, -2},
    {"fewer: limits are those of the values", {90, 91, 92}, {5, 3}, kFill, {5, 3, 92}, 5, 3},
    {"more: the values left over count for nothing", {0, 0}, {5, 3, 900}, kFill, {5, 3}, 5, 3},
    {"places 1, 4/3, 5/3, 2", Numbers(4), {.1, .3}, kSpread, {.1, kThird, kTwoThirds, .3}, .3, .1},
    {"places 1, 3, 5", Numbers(3), {1.5, 0.1, 7, -2, 3}, kSpread, {1.5, 7, 3}, 7, 1.5},
    {"places 1, 2.5, 4", Numbers(3), {.1, .2, .7, .4}, kSpread, {.1, kMiddle, .4}, .45, .1},
    {"one value", Numbers(3), {4.2}, kSpread, {4.2, 4.2, 4.2}, 4.2, 4.2},
    {"3 decimals, ties to even", {0, 0}, {2.0625, -.12349}, kFill, {2.0625, -.12349}, 2.062, -.123},
    {"beyond a float", Numbers(3), {1e39, 3e39}, kSpread, {1e39, kLargest, 3e39}, 3e39, kLargest},
};

TEST(GraphCsv, FillsPointsAndLimits) {
  for (const auto& test : kFills) {
    SCOPED_TRACE(test.why);
    WeightGraph graph = Points(test.points);
    FillPoints(graph, test.values, test.fill);
    EXPECT_EQ(Numbers(graph.points.begin(), graph.points.begin() + graph.pointCount), test.filled);
    EXPECT_EQ(graph.topValue, test.top);
    EXPECT_EQ(graph.bottomValue, test.bottom);
  }
}

}  // namespace
}  // namespace ormel
