#include <gtest/gtest.h>

#include "mapdata/arithmetic.h"
#include "mapdata/csv.h"
#include "mapdata/list_text.h"
#include "mapdata/numbers.h"
#include "mapdata/path_text.h"

namespace ormel {
namespace {

TEST(TextRoutines, NamesAreMadeFitForFiles) {
  std::string text = "C:\\maps\\a?b:c*.asc";
  CleanFileName(text);
  EXPECT_EQ(text, "C:\\maps\\a_b_c_.asc");
  text = "<1|2>\"/";
  CleanFileName(text, true);
  EXPECT_EQ(text, "_1_2___");
  text = "?";
  CleanFileName(text);
  EXPECT_EQ(text, "?");
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
  EXPECT_EQ(ArcCos(1.5), 0);
  EXPECT_EQ(ArcCos(-1), 0);
  EXPECT_EQ(ArcCos(-7), 0);
  EXPECT_NEAR(ArcCos(0), 1.5707963267948966, 1e-15);
  EXPECT_NEAR(ArcCos(-0.5), 2.0943951023931957, 1e-15);
  EXPECT_EQ(Distance(1, 2, 4, 6), 5);
  EXPECT_EQ(ZeroPad(7), "0");
  EXPECT_EQ(ZeroPad(120), "000");
  EXPECT_TRUE(NotFlag(0));
  EXPECT_FALSE(NotFlag(-1));
  const struct {
    double value;
    int length;
    double rounded;
  } cases[] = {{12.5, 4, 12.5},       {12.3456, 4, 12.3},      {123456.789, 4, 123457},
               {0.012345, 4, 0.0123}, {-12.3456, 4, -12.3456}, {0, 0, 0}};
  for (const auto& test : cases) {
    EXPECT_DOUBLE_EQ(RoundToLength(test.value, test.length), test.rounded) << test.value;
  }
  for (const char* text : {"5", "-3", "2.9", "1e3", " 7"}) EXPECT_TRUE(IsInteger(text)) << text;
  for (const char* text : {"", "x", "5x", "1e10", "5 "}) EXPECT_FALSE(IsInteger(text)) << text;
}

TEST(TextRoutines, Lists) {
  std::vector<std::string> entries = {"10 b", "9", "x", "-1", "1E1 a", "0"};
  SortNumericList(entries);
  EXPECT_EQ(entries, (std::vector<std::string>{"-1", "x", "0", "9", "10 b", "1E1 a"}));
  EXPECT_TRUE(InListOrBlank("  ", entries));
  EXPECT_TRUE(InListOrBlank(" 9 ", entries));
  EXPECT_FALSE(InListOrBlank("8", entries));
  EXPECT_FALSE(IsListedConstraint(" 9", entries));
}

TEST(TextRoutines, FieldsOfATable) {
  EXPECT_EQ(CsvField("a,b,", 1), "a");
  EXPECT_EQ(CsvField("a,b,", 3), "");
  EXPECT_EQ(CsvField("a,b,", 4), kMissingField);
  EXPECT_EQ(CsvField("", 1), "");
  EXPECT_EQ(CsvField("a", 0), kMissingField);
  EXPECT_EQ(CsvFieldIndex("Date,X,Y", "Y"), 3);
  EXPECT_EQ(CsvFieldIndex("Date,X,Y", "y"), -1);
  EXPECT_EQ(CsvFieldIndex("Date,,X", ""), 2);
  EXPECT_EQ(CsvFieldIndex("Date, X", "X"), -1);
}

}  // namespace
}  // namespace ormel
