#include "viewer/region_export.h"

#include <gtest/gtest.h>

#include "support/map_text.h"
#include "support/small_disk.h"
#include "support/temporary_folder.h"

namespace ormel {
namespace {

using testing::ReadText;

// Ten columns and eight rows; a cell is its row and column, 307 in the third row and seventh
// column.
std::string Numbered() {
  testing::Rows rows(8, std::vector<double>(10));
  for (int i = 0; i < 80; ++i) {
    const int row = i / 10;
    rows[row][i % 10] = 100 * (row + 1) + i % 10 + 1;
  }
  return testing::MapText(rows, -9999);
}

class RegionExportTest : public ::testing::Test {
 protected:
  // What is written, or the failure.
  std::string Exported(const ViewRegion& view, const std::string& name = "out.asc") {
    NoProgress quiet;
    const std::string target = (folder / name).string();
    const Outcome<> done = ExportRegion({source, target, specs, view}, quiet);
    return done.Ok() ? ReadText(target) : done.Text();
  }

  testing::TemporaryFolder folder;
  const std::string text = Numbered();
  const std::string source = folder.Write("map.asc", text);
  ViewSpecs specs = ReadViewSpecs(source).Value();
};

TEST_F(RegionExportTest, WritesTheWholeMapOrTheWholeCellsOfAPart) {
  EXPECT_EQ(Exported({}), text);
  // 0.25 * 10 and 0.37 * 8 are cut down: two columns behind the third, two rows behind the fifth.
  EXPECT_EQ(Exported({0.35, 0.63, 0.25, 0.37}),
            "ncols  2\r\nnrows  2\r\nxllcorner  190\r\nyllcorner  230\r\ncellsize  30\r\n"
            "NODATA_value  -9999\r\n 604 605\r\n 704 705\r\n");
}

TEST_F(RegionExportTest, OddHeadersKeepTheirKeys) {
  const std::string rest =
      "\nx0 1.50\ny0 -1e3\nzelle 2.50\nNODATA -9\nsource survey\n1,2\n3.500,1e20\n";
  // A line that ends in a blank gives the map no rows.
  folder.Write("map.asc", "Breite\t2\nnrows   2 " + rest);
  EXPECT_EQ(ReadViewSpecs(source).Value().nrows, 0);
  folder.Write("map.asc", "Breite\t2\nnrows   2" + rest);
  specs = ReadViewSpecs(source).Value();
  EXPECT_EQ(Exported({}),
            "Breite\t2\r\nnrows   2\r\nx0 1.5\r\ny0 -1000\r\nzelle 2.50\r\nNODATA -9\r\n"
            "source survey\r\n 1 2\r\n 3.5 1E+20\r\n");
}

TEST_F(RegionExportTest, AMapMayBeReplacedByItsPart) {
  EXPECT_EQ(Exported({0, 0, 0.1, 0.125}, "map.asc"),
            "ncols  1\r\nnrows  1\r\nxllcorner  100\r\nyllcorner  410\r\ncellsize  30\r\n"
            "NODATA_value  -9999\r\n 101\r\n");
  EXPECT_EQ(folder.Entries(), 1);
  // The picture still shows the old one.
  EXPECT_EQ(Exported({}), source + ": has changed since it was loaded; open it again");
}

TEST_F(RegionExportTest, FailuresLeaveTheOldFile) {
  folder.Write("out.asc", "old");
  EXPECT_EQ(Exported({0, 0, 0.05, 0.05}), "The view is smaller than a cell of the map.");
  {
    const testing::SmallDisk full(100);
    EXPECT_NE(Exported({}), text);
  }
  folder.Write("map.asc", text.substr(0, text.size() - 6));
  EXPECT_EQ(Exported({}), source + ": ends in row 8 of 8");
  std::filesystem::remove(source);
  EXPECT_NE(Exported({}).find("map.asc"), std::string::npos);
  EXPECT_EQ(ReadText(folder / "out.asc"), "old");
  EXPECT_EQ(folder.Entries(), 1);
}

}  // namespace
}  // namespace ormel
