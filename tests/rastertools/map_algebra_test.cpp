#include "rastertools/map_algebra.h"

#include <gtest/gtest.h>

#include "support/map_text.h"
#include "support/temporary_folder.h"

namespace ormel {
namespace {

using testing::MapText;
using testing::ReadText;
using Texts = std::vector<std::string>;

class MapAlgebra : public ::testing::Test {
 protected:
  // The rows of the result, or why there are none.
  std::string Result(MapOperator op, const std::string& first, const std::string& second) {
    const MapPair pair{folder_.Write("a.asc", first).string(),
                       folder_.Write("b.asc", second).string(), (folder_ / "out.asc").string()};
    const Outcome<> done = OperateOnMaps(pair, op, quiet_);
    if (!done.Ok()) return done.Text();
    const std::string text = ReadText(pair.output);
    return text.substr(text.find("\r\n ") + 2);
  }

  NoProgress quiet_;
  testing::TemporaryFolder folder_;
};

TEST_F(MapAlgebra, ComputesCellByCellInFullPrecision) {
  const std::string a = MapText({{1, 0.1, -8}, {7, 0, 2}});
  const std::string b = MapText({{3, 0.2, 0.5}, {0, 0, -1}});
  EXPECT_EQ(Result(MapOperator::kAdd, a, b), " 4 0.3 -7.5\r\n 7 0 1\r\n");
  EXPECT_EQ(Result(MapOperator::kSubtract, a, b), " -2 -0.1 -8.5\r\n 7 0 3\r\n");
  EXPECT_EQ(Result(MapOperator::kMultiply, a, b), " 3 0.02 -4\r\n 0 0 -2\r\n");
  EXPECT_EQ(Result(MapOperator::kDivide, a, b),
            " 0.333333333333333 0.5 -16\r\n -9999 -9999 -2\r\n");
  EXPECT_EQ(Result(MapOperator::kPower, a, b),
            " 1 0.630957344480193 -9999\r\n 1 1 0.5\r\n");  // 0.1 ^ 0.2; no root of -8
  EXPECT_EQ(Result(MapOperator::kMultiply, MapText({{1e200}}), MapText({{1e200}})), " -9999\r\n");
  EXPECT_EQ(Result(MapOperator::kPower, MapText({{0}}), MapText({{-1}})), " -9999\r\n");
}

TEST_F(MapAlgebra, EachMapHasItsOwnNoDataAndTheFirstGivesTheHeader) {
  const std::string six = MapText({{-1, 5, 7}}, -1);
  EXPECT_EQ(Result(MapOperator::kAdd, six, MapText({{5, 5, -1}}, 5)), " -1 -1 6\r\n");
  EXPECT_EQ(ReadText(folder_ / "out.asc").find("NODATA      "), std::string::npos);
  EXPECT_EQ(Result(MapOperator::kAdd, MapText({{-1, 5, 7}}), six), " -9999 10 14\r\n");
  EXPECT_NE(ReadText(folder_ / "out.asc").find("\r\ncellsize  30\r\nNODATA      -9999\r\n -9999"),
            std::string::npos);
}

TEST_F(MapAlgebra, ASecondMapThatIsTooShortLeavesNothing) {
  const std::string a = MapText({{1, 2}, {3, 4}, {5, 6}});
  EXPECT_EQ(Result(MapOperator::kAdd, a, MapText({{1, 2}, {3, 4}})),
            (folder_ / "b.asc").string() + ": ends in row 3 of 3");
  EXPECT_EQ(folder_.Entries(), 2);
  // Of another shape, it is read on: headers are not compared.
  EXPECT_EQ(Result(MapOperator::kAdd, a, MapText({{1, 2, 3}, {4, 5, 6}})),
            " 2 4\r\n 6 8\r\n 10 12\r\n");
}

TEST(MapPairs, GoByPositionOrOneToMany) {
  const Texts left{"x/a.asc", "x/b.v1.grd"};
  const Texts right{"y/c.asc"};
  const auto outputs = [&](const std::vector<MapPair>& pairs) {
    Texts texts;
    for (const MapPair& pair : pairs) texts.push_back(pair.first + pair.second + pair.output);
    return texts;
  };
  EXPECT_EQ(outputs(PairsOf(left, right, true, {"out", false, "p_", "_s"})),
            (Texts{"x/a.ascy/c.ascout/p_a_s.asc", "x/b.v1.grdy/c.ascout/p_b.v1_s.asc"}));
  EXPECT_EQ(outputs(PairsOf(left, right, false, {"out", true, "", ""})),
            (Texts{"x/a.ascy/c.ascout/c.asc"}));
  EXPECT_TRUE(PairsOf(left, {}, true, {}).empty());
}

}  // namespace
}  // namespace ormel
