#include "mapdata/raster.h"

#include <gtest/gtest.h>

#include "mapdata/map_header.h"
#include "support/temporary_folder.h"

namespace ormel {
namespace {

namespace fs = std::filesystem;
using testing::TemporaryFolder;

using Cells = std::vector<double>;

const std::string kHeader =
    "ncols 3\r\nnrows 2\r\nxllcorner 10.5\r\nyllcorner -20\r\ncellsize 30\r\n";

Cells CellsOf(const Grid<double>& grid) { return {grid.Cells().begin(), grid.Cells().end()}; }

fs::path Data(const std::string& name) { return fs::path(ORMEL_SOURCE_DIR) / "tests/data" / name; }

// Says stop at the first report.
class StopAtOnce final : public ProgressSink {
 public:
  bool Report(double /*percent*/) override { return false; }
};

TEST(Header, ValueIsTheTextBehindTheLastBlank) {
  EXPECT_EQ(TextBehindLastBlank("ncols         5"), "5");
  EXPECT_EQ(TextBehindLastBlank("NO_DATA value\t-9999"), "-9999");
  for (const char* none : {"ncols 5 ", ""}) EXPECT_EQ(TextBehindLastBlank(none), "");
  EXPECT_EQ(TextBehindLastBlank("alone"), "alone");
}

TEST(Header, LinesAreTheTokensBeforeTheFirstNumber) {
  const std::pair<const char*, int> cases[] = {{"cells_behind_commas.asc", 5},
                                               {"line_feeds_only.asc", 6},
                                               {"eight_header_lines.asc", 8},
                                               {"no_header.asc", 0},
                                               {"no_cells.asc", 5},
                                               {"words_only.asc", 100},
                                               {"not there", 0}};
  for (const auto& [name, lines] : cases) EXPECT_EQ(CountHeaderLines(Data(name)), lines) << name;
}

TEST(Header, TextsAreGivenAsTheyStandAndNoDataComesFromTheSixthLine) {
  TemporaryFolder folder;
  const fs::path path = folder.Write("map.asc", "ncols 03\r\nnrows 2 \r\nxllcorner 1.50");
  const Outcome<HeaderTexts> header = ReadHeaderTexts(path);
  ASSERT_TRUE(header.Ok());
  EXPECT_EQ(header.Value().values, (std::vector<std::string>{"03", "", "1.50", "", ""}));
  EXPECT_TRUE(ReadHeaderTexts(folder / "missing.asc").Failed());
  EXPECT_EQ(ReadNoDataText(folder.Write("a", kHeader + "NODATA_value  -9999.0\r\n 1")), "-9999.0");
  EXPECT_EQ(ReadNoDataText(folder.Write("b", kHeader + " 1")), "");
  EXPECT_EQ(ReadNoDataText(folder / "missing"), "");
}

// One row for each way in which a map may be odd.
TEST(ReadRaster, ReadsWhatAFileHolds) {
  const Cells all = {1, 2, 3, 4, 5, 6};
  const std::tuple<std::string, int, int, Cells, bool, std::size_t> cases[] = {
      {"line_feeds_only.asc", 3, 2, all, true, 0},
      {"carriage_returns_only.asc", 3, 2, all, true, 0},
      {"no_line_end_at_the_end.asc", 3, 2, {1, 2, 3, 4, -9999, 6}, true, 0},
      {"cells_behind_commas.asc", 3, 2, all, false, 0},
      {"rows_broken_anywhere.asc", 3, 2, all, false, 0},
      {"foreign_keys.asc", 3, 2, all, false, 0},
      {"eight_header_lines.asc", 3, 2, all, true, 0},
      {"words_in_the_cells.asc", 3, 2, {1, 0, 4, 0, 6, 6}, false, 1},  // "nodata 3" is one word
      {"cells_missing.asc", 3, 2, {1, 2, 3, 4, 4, 4}, false, 1},
      {"no_cells.asc", 3, 2, {0, 0, 0, 0, 0, 0}, false, 1},
      {"no_header.asc", 3, 6, {7, 8, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9}, false, 1},
      {"blank_behind_columns.asc", 0, 0, {}, false, 0},
      {"negative_columns.asc", 0, 0, {}, false, 0},
      {"too_many_columns.asc", 0, 0, {}, false, 1},
      {"largest_size_without_cells.asc", 0, 0, {}, false, 1},
      {"empty.asc", 0, 0, {}, false, 0},
      {"not there", 0, 0, {}, false, 1}};
  for (const auto& [name, columns, rows, cells, hasNoData, skipped] : cases) {
    SCOPED_TRACE(name);
    const RasterRead read = ReadRaster(Data(name));
    EXPECT_EQ(read.map.cells.Columns(), columns);
    EXPECT_EQ(read.map.cells.Rows(), rows);
    EXPECT_EQ(CellsOf(read.map.cells), cells);
    EXPECT_EQ(read.map.specs.nodata.has_value(), hasNoData);
    EXPECT_EQ(read.skipped.size(), skipped);
    for (const std::string& text : read.skipped) EXPECT_NE(text.find(name), std::string::npos);
  }
  const MapSpecs specs = ReadRaster(Data("eight_header_lines.asc")).map.specs;
  EXPECT_EQ((Cells{specs.xllcorner, specs.yllcorner, specs.cellsize, specs.nodata.value_or(0)}),
            (Cells{10.5, -20, 30, -9999}));
}

TEST(ReadRaster, RoundsSizesHalfToEvenAndKeepsTheFieldThatFails) {
  TemporaryFolder folder;
  const std::tuple<std::string, int, std::size_t> cases[] = {
      {"2.5", 2, 0},           {"3.5", 4, 0}, {"32767.4", 32767, 0}, {"32767.5", 0, 1},
      {"-32768.5", -32768, 0}, {"1e9", 0, 1}, {"-1e300", 0, 1},      {"abc", 0, 0}};
  for (const auto& [columns, ncols, skipped] : cases) {
    const RasterRead read = ReadRaster(
        folder.Write("map.asc", "ncols " + columns + "\r\nnrows 0\r\nx 1\r\ny 2\r\ncell 3\r\n 1"));
    EXPECT_EQ(read.map.specs.ncols, ncols) << columns;
    EXPECT_EQ(read.skipped.size(), skipped) << columns;
    EXPECT_EQ(read.map.specs.cellsize, 3) << columns;
  }
}

TEST(ReadRasterInto, FillsAGridAndSaysBadConstraintWhateverFails) {
  NoProgress quiet;
  Grid<double> cells(4, 3, 9);
  ASSERT_TRUE(ReadRasterInto(Data("line_feeds_only.asc"), cells, 3, 2, quiet).Ok());
  EXPECT_EQ(CellsOf(cells), (Cells{1, 2, 3, 9, 4, 5, 6, 9, 9, 9, 9, 9}));
  const std::pair<const char*, int> bad[] = {
      {"cells_missing.asc", 3}, {"not there", 3}, {"line_feeds_only.asc", 5}};
  for (const auto& [name, columns] : bad) {
    EXPECT_EQ(ReadRasterInto(Data(name), cells, columns, 2, quiet).Text(), "Bad Constraint!");
  }
  // The other one gives the grid the size of the map.
  EXPECT_EQ(ReadRasterCells(Data("line_feeds_only.asc"), cells, quiet).nodata, -9999);
  EXPECT_EQ(CellsOf(cells), (Cells{1, 2, 3, 4, 5, 6}));
  const RasterCellsRead missing = ReadRasterCells(Data("not there"), cells, quiet);
  EXPECT_TRUE(!missing.nodata && missing.skipped.size() == 1 && cells.Empty());
}

TEST(ScanRasterRange, LeavesNoDataOut) {
  TemporaryFolder folder;
  NoProgress quiet;
  const std::pair<std::string, RasterRange> cases[] = {
      {kHeader + "NODATA -9999\r\n 5 -9999 7\r\n", {false, 5, 7}},
      {kHeader + " 5 -9999 7\r\n", {false, -9999, 7}},  // without a NODATA line all cells count
      {kHeader + " 0 128 255\r\n", {true, 0, 255}},
      {kHeader + " 0 255.01\r\n", {false, 0, 255.01}},
      {kHeader + " 7 7 7\r\n", {false, 7, 7 + 0.1}},
      {kHeader + " 0 0\r\n", {false, 0, 0.1}},
      {kHeader + "NODATA 3\r\n 3 3\r\n", {false, 0, 0.1}},
      {kHeader + "NODATA 3\r\nkey 5\r\n 3 5 7\r\n", {false, 5, 7}},
      {kHeader + " -5 -3\r\n", {false, -5, -3}},
      {"", {false, 0, 0.1}},
      {kHeader + " 1 2 3 4 5 6 7 8 9\r\n", {false, 1, 9}}};  // all, whatever the header says
  for (const auto& [text, expected] : cases) {
    const RasterRange range = ScanRasterRange(folder.Write("map.asc", text), quiet).Value();
    EXPECT_EQ(range.isScaled, expected.isScaled) << text;
    EXPECT_EQ(range.min, expected.min) << text;
    EXPECT_EQ(range.max, expected.max) << text;
  }
  EXPECT_EQ(ScanRasterRange(folder / "missing", quiet).Why().kind, FailureKind::kNotFound);
}

TEST(IsValidConstraintFile, AllowsZeroOneAndNoData) {
  std::string words;  // the 1000th is taken for the first cell
  for (int i = 0; i < 999; ++i) words += "word\r\n";
  TemporaryFolder folder;
  NoProgress quiet;
  const std::pair<std::string, bool> cases[] = {
      {kHeader + " 0 1 1\r\n 0 1 0\r\n", true},
      {kHeader + " 0 1.0 1e0\r\n", true},
      {kHeader + " 0 1 2\r\n", false},
      {kHeader + " 0 1 -9999\r\n", false},
      {kHeader + "NODATA -9999\r\n 0 1 -9999\r\n", true},
      {kHeader + "NODATA -9999\r\n 0 1 -9998\r\n", false},
      {" 0 1 1\r\n", true},
      {" 1 0 7\r\n", false},
      {kHeader + " 0 word\r\n", true},  // a word counts as 0
      {words + "word, 1", true},
      {words + "word, 7", false},
      {kHeader + std::string(20'000, '0') + "\r\n" + " 1 1 2", false}};
  for (const auto& [text, valid] : cases) {
    EXPECT_EQ(IsValidConstraintFile(folder.Write("c.asc", text), quiet).Value(), valid)
        << text.substr(0, 100);
  }
  EXPECT_TRUE(IsValidConstraintFile(folder / "missing", quiet).Failed());
  EXPECT_TRUE(IsValidConstraintFile(Data("no_cells.asc"), quiet).Failed());
}

TEST(LongReads, CanBeStopped) {
  TemporaryFolder folder;
  StopAtOnce stop;
  std::string text = kHeader;
  for (int i = 0; i < 100'000; ++i) text += " 1";
  const fs::path path = folder.Write("map.asc", text);
  EXPECT_TRUE(ScanRasterRange(path, stop).WasCancelled());
  EXPECT_TRUE(IsValidConstraintFile(path, stop).WasCancelled());
  Grid<double> cells(100, 1000);
  EXPECT_TRUE(ReadRasterInto(path, cells, 100, 1000, stop).WasCancelled());
  EXPECT_TRUE(ReadRaster(Data("line_feeds_only.asc"), stop).wasCancelled);
}

}  // namespace
}  // namespace ormel
