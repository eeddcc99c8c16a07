#include "mce/nonlinear/factor_export.h"

#include <gtest/gtest.h>

#include "mapdata/raster.h"
#include "support/temporary_folder.h"

namespace ormel {
namespace {

using testing::ReadText;

constexpr char kHeader[] =
    "ncols 3\r\nnrows 2\r\nxllcorner 7.50\r\nyllcorner 1e3\r\ncellsize 30.70\r\n";
constexpr char kWritten[] =
    "ncols         3\r\nnrows         2\r\nxllcorner     7.5\r\n"
    "yllcorner     1000\r\ncellsize      30.70\r\n";

class FactorExports : public ::testing::Test {
 protected:
  FactorExports() {
    EXPECT_TRUE(computeLinear(falling, {"255", "0"}));
    EXPECT_TRUE(computeLinear(thirds, {"0", "85"}));
  }
  // Exports a map of the text to another file.
  Outcome<> Export(const std::string& text, const WeightGraph* graph, int decimalPlaces = 2,
                   const std::string& target = "out.asc") {
    const std::string source = folder.Write("in.asc", kHeader + text).string();
    NoProgress quiet;
    return ExportFactor({{source, CountHeaderLines(source), 3, 2},
                         {"3", "2", "7.5", "1000", "30.70", std::nullopt},
                         graph,
                         decimalPlaces,
                         (folder / target).string()},
                        quiet);
  }
  testing::TemporaryFolder folder;
  WeightGraph falling;
  WeightGraph thirds;  // a third of each value
};

TEST_F(FactorExports, WriteValuesOrWeights) {
  const struct {
    const char* why;
    const char* cells;  // from the NODATA line on
    const WeightGraph* graph;
    int decimalPlaces;
    const char* written;
  } cases[] = {
      {"values as they are, outside the range as well",
       "NODATA_value -9999.0\r\n -9999 300 -1\r\n 0.12345 255 1e20\r\n", nullptr, 2,
       "NODATA_value  -9999\r\n -9999 300 -1\r\n 0.12345 255 1E+20\r\n"},
      {"no NODATA line without one", " -9999 300 -1\r\n 0 7 255\r\n", nullptr, 2,
       " -9999 300 -1\r\n 0 7 255\r\n"},
      {"NODATA stays, what lies outside weighs as 0",
       "NODATA_value -9999\r\n -9999 300 -1\r\n 0 155 255\r\n", &falling, 2,
       "NODATA_value  -9999\r\n -9999 255 255\r\n 255 100 0\r\n"},
      {"weights without a NODATA line", " -9999 300 -1\r\n 0 155 255\r\n", &falling, 2,
       " 255 255 255\r\n 255 100 0\r\n"},
      {"NODATA within the range", "NODATA_value 155\r\n 0 155 255\r\n 155 1 -5\r\n", &falling, 2,
       "NODATA_value  155\r\n 255 155 0\r\n 155 254 255\r\n"},
      {"NODATA of 0: what lies outside has a weight still", "nd 0\r\n 0 -5 255\r\n 155 1 0\r\n",
       &falling, 2, "NODATA_value  0\r\n 0 255 0\r\n 100 254 0\r\n"},
      {"decimals of the settings", " 1 2 3\r\n 4.5 20 255\r\n", &thirds, 4,
       " 0.3333 0.6667 1\r\n 1.5 6.6667 85\r\n"},
      {"ties go to the even number", " 1 2 3\r\n 4.5 7.5 255\r\n", &thirds, 0,
       " 0 1 1\r\n 2 2 85\r\n"},
  };
  for (const auto& test : cases) {
    EXPECT_TRUE(Export(test.cells, test.graph, test.decimalPlaces).Ok()) << test.why;
    EXPECT_EQ(ReadText(folder / "out.asc"), std::string(kWritten) + test.written) << test.why;
  }
}

TEST_F(FactorExports, MayReplaceTheMapItselfButNotByAPartOfIt) {
  ASSERT_TRUE(Export(" 0 1 2\r\n 3 4 5\r\n", &falling, 2, "in.asc").Ok());
  EXPECT_EQ(ReadText(folder / "in.asc"),
            std::string(kWritten) + " 255 254 253\r\n 252 251 250\r\n");
  folder.Write("out.asc", "old");
  const std::string cut = Export(" 0 1 2\r\n 3", nullptr).Text();
  EXPECT_NE(cut.find("in.asc: ends in row 2 of 2"), std::string::npos) << cut;
  EXPECT_EQ(ReadText(folder / "out.asc"), "old");
  EXPECT_EQ(folder.Entries(), 2);
}

}  // namespace
}  // namespace ormel
