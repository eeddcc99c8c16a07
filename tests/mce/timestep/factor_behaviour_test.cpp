#include "mce/timestep/factor_behaviour.h"

#include <gtest/gtest.h>

#include "support/temporary_folder.h"

namespace ormel {
namespace {

using testing::ReadText;
using testing::TemporaryFolder;

class ProductTables : public ::testing::Test {
 protected:
  std::string Write(const std::string& text) const { return folder_.Write("t.csv", text).string(); }

  TemporaryFolder folder_;
};

TEST_F(ProductTables, ListRowsWhoseSecondFieldBeginsWithANumber) {
  const std::string path =
      Write("Row,Jan,Feb\r\nwater, .5,1\r\n\r\n# note\r\nrain,-2x,3\r\nwind,\r\nsun,+7\nwater,9,9");
  EXPECT_EQ(ReadProductTitles(path).Value(),
            (std::vector<std::string>{"water", "rain", "sun", "water"}));
  EXPECT_EQ(ReadProductRow(path, "water").Value(), (std::vector<float>{0.5F, 1}));
  EXPECT_EQ(ReadProductRow(path, "rain").Text(), "Bad Data File");
  EXPECT_EQ(ReadProductRow(path, "wind").Text(), "Bad Data File");
  EXPECT_EQ(ReadProductRow(path, "snow").Text(), path + ": has no row \"snow\"");
  EXPECT_FALSE(ReadProductTitles(path + "x").Ok());
}

TEST_F(ProductTables, AreStretchedAndShrunk) {
  EXPECT_EQ(SpreadProducts({1, 3}, 5), (std::vector<float>{1, 1.5F, 2, 2.5F, 3}));
  EXPECT_EQ(SpreadProducts({1, 2, 4, 8, 16, 32, 64}, 3), (std::vector<float>{1, 8, 64}));
  EXPECT_EQ(SpreadProducts({7}, 3), (std::vector<float>{7, 7, 7}));
  std::vector<float> twenty(20);
  for (std::size_t i = 0; i < 20; ++i) twenty[i] = 0.1F * static_cast<float>(i) + 0.3F;
  const std::vector<float> five = SpreadProducts(twenty, 5);
  EXPECT_EQ(five.front(), twenty.front());
  EXPECT_EQ(five.back(), twenty.back());
  EXPECT_FLOAT_EQ(five[1], 0.3F + 0.475F);
}

TEST_F(ProductTables, TakeTheSpreadRowAsANewLine) {
  const std::string path = Write("water,1,2");  // without a line end
  ASSERT_TRUE(AppendExpandedRow(path, "water", {1, 1.5F, 1.0F / 3}).Ok());
  EXPECT_EQ(ReadText(path), "water,1,2\r\nExpanded,water,1,1.5,0.3333333\r\n");
  EXPECT_EQ(ReadProductTitles(path).Value(), (std::vector<std::string>{"water"}));
  EXPECT_EQ(ReadProductRow(path, ExpandedTitle("water")).Value(),
            (std::vector<float>{1, 1.5F, 0.3333333F}));
}

TEST(FactorBehaviour, IsToldInTheInformationFile) {
  FactorBehaviour behaviour;
  EXPECT_EQ(describeBehaviour(behaviour), "Method of Change: \tStatic");
  behaviour.method = StepMethod::kFunctional;
  EXPECT_EQ(describeBehaviour(behaviour), "Method of Change: \tStatic");
  behaviour.method = StepMethod::kExistingFiles;
  behaviour.stepFiles = {"a.asc", "b.asc"};
  EXPECT_EQ(describeBehaviour(behaviour), "Method of Change: \tExisting Files:\r\na.asc\r\nb.asc");
  behaviour.method = StepMethod::kProducts;
  behaviour.productCsv = "t.csv";
  behaviour.productRow = "water";
  EXPECT_EQ(describeBehaviour(behaviour),
            "Method of Change: \tProduct Database: t.csv, Row: water");
}

}  // namespace
}  // namespace ormel
