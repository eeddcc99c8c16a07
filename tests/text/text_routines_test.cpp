#include <gtest/gtest.h>

#include <array>

#include "text/arithmetic.h"
#include "text/csv.h"
#include "text/lists.h"
#include "text/numbers.h"
#include "text/paths.h"

namespace ormel {
namespace {

using Texts = std::vector<std::string>;

TEST(PathText, RepairsTheFirstDoubledSeparatorOnly) {
  Texts paths = {"C:\\maps\\\\a\\\\b", "/maps//a//b", "a/\\b", "///a", "a.asc", ""};
  for (std::string& path : paths) RepairPath(path);
  EXPECT_EQ(paths, (Texts{"C:\\maps\\a\\\\b", "/maps/a//b", "a/\\b", "//a", "a.asc", ""}));
}

TEST(PathText, TakesPathsApartAndJoinsThemWithOneSeparator) {
  const std::array<std::string, 4> cases[] = {
      {"/maps/dem.asc", "/maps/", "dem", "dem.asc"},
      {"C:\\maps\\dem.v2.asc", "C:\\maps\\", "dem.v2", "dem.v2.asc"},
      {"C:\\maps/dem", "C:\\maps/", "dem", "dem"},
      {"/maps.old/dem", "/maps.old/", "dem", "dem"},
      {"dem.asc", "", "dem", "dem.asc"},
      {"/maps/", "/maps/", "", ""},
      {"", "", "", ""}};
  for (const auto& [path, folder, name, full] : cases) {
    EXPECT_EQ((Texts{FolderPart(path), FileNamePart(path), FileNamePart(path, true)}),
              (Texts{folder, name, full}));
    EXPECT_EQ(JoinPath(folder, full), path);
  }
  EXPECT_EQ(JoinPath("/maps", "a.asc"), "/maps/a.asc");
  EXPECT_EQ(RemoveExtension("a.b.asc"), "a.b");
  EXPECT_EQ(ChangeExtension("a.b.asc", "bmp"), "a.b.bmp");
  EXPECT_EQ(ChangeExtension("a.", "bmp"), "a.bmp");
  EXPECT_EQ(ChangeExtension("a", "bmp"), "a.bmp");
}

TEST(TextRoutines, NamesAreMadeFitForFiles) {
  std::string text = "C:\\maps\\a?b:c*.asc";
  CleanFileName(text);
  EXPECT_EQ(text, "C:\\maps\\a_b_c_.asc");
  text = "<1|2>\"/";
  CleanFileName(text, true);
  EXPECT_EQ(text, "_1_2___");
  text = "my maps/north ridge 2.asc";
  BlanksToUnderscores(text);
  EXPECT_EQ(text, "my maps/north_ridge_2.asc");
  EXPECT_EQ(CsvDisplayName("3: C:\\data\\fixes.csv (412 rows)"), "fixes");
  EXPECT_EQ(CsvDisplayName("C:\\data\\fixes.csv"), "fixes");
  EXPECT_EQ(CsvDisplayName("a fixes.v2.csv"), "filename");
  EXPECT_EQ(CsvDisplayName("a "), "");
  EXPECT_EQ(SiblingShapeName("/out/g_", 7, 123), "/out/g_shp00700123");
  EXPECT_EQ(SiblingShapeName("g", 1234, 123456), "gshp1234123456");
}

TEST(TextRoutines, Arithmetic) {
  EXPECT_EQ(Ceiling(2.0), 2);
  EXPECT_EQ(Ceiling(2.1), 3);
  EXPECT_EQ(Ceiling(-2.5), -2);
  for (const double out : {1.5, -1.0, -7.0}) EXPECT_EQ(ArcCos(out), 0);
  EXPECT_NEAR(ArcCos(0), 1.5707963267948966, 1e-15);
  EXPECT_NEAR(ArcCos(-0.5), 2.0943951023931957, 1e-15);
  EXPECT_EQ(Distance(1, 2, 4, 6), 5);
  EXPECT_EQ(ZeroPad(7) + " " + ZeroPad(120), "0 000");
  EXPECT_TRUE(NotFlag(0) && !NotFlag(-1));
  const std::tuple<double, int, double> cases[] = {{12.5, 4, 12.5},         {12.3456, 4, 12.3},
                                                   {123456.789, 4, 123457}, {0.012345, 4, 0.0123},
                                                   {-12.3456, 4, -12.3456}, {0, 0, 0}};
  for (const auto& [value, length, rounded] : cases) {
    EXPECT_DOUBLE_EQ(RoundToLength(value, length), rounded) << value;
  }
  for (const char* text : {"5", "-3", "2.9", "1e3", " 7"}) EXPECT_TRUE(IsInteger(text)) << text;
  for (const char* text : {"", "x", "5x", "1e10", "5 "}) EXPECT_FALSE(IsInteger(text)) << text;
}

TEST(TextRoutines, Lists) {
  Texts entries = {"10 b", "9", "x", "-1", "1E1 a", "0"};
  SortNumericList(entries);
  EXPECT_EQ(entries, (Texts{"-1", "x", "0", "9", "10 b", "1E1 a"}));
  EXPECT_TRUE(InListOrBlank("  ", entries) && InListOrBlank(" 9 ", entries));
  EXPECT_FALSE(InListOrBlank("8", entries) || IsListedConstraint(" 9", entries));
}

TEST(TextRoutines, FieldsOfATable) {
  const std::tuple<const char*, int, std::string_view> fields[] = {{"a,b,", 1, "a"},
                                                                   {"a,b,", 3, ""},
                                                                   {"a,b,", 4, kMissingField},
                                                                   {"", 1, ""},
                                                                   {"a", 0, kMissingField}};
  for (const auto& [line, position, field] : fields) EXPECT_EQ(CsvField(line, position), field);
  const std::tuple<const char*, const char*, int> columns[] = {
      {"Date,X,Y", "Y", 3}, {"Date,X,Y", "y", -1}, {"Date,,X", "", 2}, {"Date, X", "X", -1}};
  for (const auto& [line, name, index] : columns) EXPECT_EQ(CsvFieldIndex(line, name), index);
}

}  // namespace
}  // namespace ormel
