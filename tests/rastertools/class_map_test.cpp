#include "rastertools/class_map.h"

#include <gtest/gtest.h>

#include "support/map_text.h"
#include "support/temporary_folder.h"

namespace ormel {
namespace {

using testing::MapText;
using testing::ReadText;

std::string TextOf(const ClassTable& table) {
  std::string text;
  for (const ClassRow& row : table.Rows()) text += row.classText + "=" + row.output + " ";
  return text;
}

class ClassMap : public ::testing::Test {
 protected:
  std::string Map(const testing::Rows& rows, std::optional<double> nodata = std::nullopt) {
    return folder_.Write("classes.asc", MapText(rows, nodata)).string();
  }

  NoProgress quiet_;
  testing::TemporaryFolder folder_;
};

TEST_F(ClassMap, FindsEachValueOnceAndAscending) {
  using Values = std::vector<double>;
  const std::string map = Map({{7, 7, -9}, {2.5, -9, -0.0}, {7, 0, 2.5}}, -9);
  EXPECT_EQ(FindClasses(map, quiet_).Value(), (Values{0, 2.5, 7}));
  EXPECT_EQ(FindClasses(Map({{-9, 1}}), quiet_).Value(), (Values{-9, 1}));
  testing::Rows many(183, std::vector<double>(180));
  for (std::size_t i = 0; i < many.size(); ++i) {
    for (std::size_t j = 0; j < many[i].size(); ++j) {
      many[i][j] = static_cast<double>(i * many[i].size() + j);
    }
  }
  EXPECT_EQ(FindClasses(Map(many), quiet_).Text(),
            (folder_ / "classes.asc").string() +
                ": has more than 32767 different values; it is no map of classes");
  many.resize(182);
  EXPECT_EQ(FindClasses(Map(many), quiet_).Value().size(), 182U * 180U);
  folder_.Write("classes.asc", MapText({{1, 2}, {3}}));
  EXPECT_TRUE(FindClasses(map, quiet_).Text().ends_with(": ends in row 2 of 2"));
}

TEST_F(ClassMap, ReplacesClassesAndLeavesTheRest) {
  const std::string map = Map({{1, 2, -9}, {3, 0, 5.5}}, -9);
  const std::string header = ReadText(map).substr(0, ReadText(map).find("\r\n "));
  const std::string target = (folder_ / "out.asc").string();
  const std::vector<ClassRow> table{{"1.0", " 40"}, {"2", "x"},     {"2", "y"}, {"3", "  "},
                                    {"-9", "0"},    {"5.5", "255"}, {"", "8"}};
  ASSERT_TRUE(WriteClassMap({map, target, table}, quiet_).Ok());
  EXPECT_EQ(ReadText(target), header + "\r\n 40 x -9\r\n 3 0 255\r\n");
  // Onto itself, through a working file.
  ASSERT_TRUE(WriteClassMap({map, map, table, (folder_ / "w.asc").string()}, quiet_).Ok());
  EXPECT_EQ(ReadText(map), ReadText(target));
  EXPECT_EQ(folder_.Entries(), 2);
  EXPECT_TRUE(WriteClassMap({map, "no/such/out.asc", table}, quiet_).Failed());
}

TEST(ClassTables, AreScaledFilledAndKeptAsText) {
  ClassTable table;
  table.SetClasses({1, 2, 3.5});
  table.At(1).output = "10";
  table.At(3).output = "60";
  table.ScaleOutputs();
  EXPECT_EQ(TextOf(table), "1=0 2= 3.5=255 ");
  table.At(2).output = "bog";
  table.FillOutputs();
  table.ScaleOutputs();
  EXPECT_EQ(TextOf(table), "1=0 2=bog 3.5=255 ");
  EXPECT_EQ(table.OutputsWithoutNumber(), 1);
  EXPECT_EQ(table.Csv(), "1, 0\r\n2, bog\r\n3.5, 255\r\n");
  table.TakeCsv(
      std::vector<std::string>{"class, value", "3.50,7", "2", "-1 , 4,5", "2.5,", "1,1", "1,2"});
  EXPECT_EQ(TextOf(table), "-1=4 1=2 2= 2.5= 3.5=7 ");
  EXPECT_EQ(table.RowsWithoutOutput(), 2);
  table.ClearOutputs();
  table.FillOutputs();
  EXPECT_EQ(TextOf(table), "-1=-1 1=1 2=2 2.5=2.5 3.5=3.5 ");
  // A single number is the lowest.
  table.SetClasses({4});
  table.FillOutputs();
  table.ScaleOutputs();
  EXPECT_EQ(TextOf(table), "4=0 ");
}

}  // namespace
}  // namespace ormel
