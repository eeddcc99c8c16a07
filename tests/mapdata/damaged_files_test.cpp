// Every reader on thousands of damaged copies of a map: cut at any length, with bytes flipped, put
// in and taken out. Nothing may crash or hang, and what comes out keeps the readers' promises.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "mapdata/constraint_mask.h"
#include "mapdata/map_header.h"
#include "mapdata/raster.h"
#include "support/temporary_folder.h"

namespace ormel {
namespace {

namespace fs = std::filesystem;
using testing::TemporaryFolder;

const std::string kMap =
    "ncols         4\r\nnrows         3\r\nxllcorner     512000.25\r\nyllcorner     -7e6\r\n"
    "cellsize      30\r\nNODATA_value  -9999\r\n"
    " 0 1 1 0\r\n 1 0.5 -9999 1\r\n 1E+02 1 \"0\", 1\r\n";

bool AllFinite(std::span<const double> cells) {
  return std::all_of(cells.begin(), cells.end(), [](double v) { return std::isfinite(v); });
}

void ReadEveryWay(const fs::path& path) {
  NoProgress quiet;
  EXPECT_LE(CountHeaderLines(path), 100);
  const RasterRead read = ReadRaster(path);
  const MapSpecs& specs = read.map.specs;
  const bool hasCells = specs.ncols > 0 && specs.nrows > 0;
  if (read.skipped.empty() && hasCells) {
    EXPECT_EQ(read.map.cells.Columns(), specs.ncols);
    EXPECT_EQ(read.map.cells.Rows(), specs.nrows);
  }
  EXPECT_TRUE(AllFinite(read.map.cells.Cells()));
  EXPECT_TRUE(std::isfinite(specs.xllcorner) && std::isfinite(specs.cellsize));

  const Outcome<RasterRange> range = ScanRasterRange(path, quiet);
  ASSERT_TRUE(range.Ok());
  // 0.1 vanishes beside a huge value: then the two stay equal.
  EXPECT_LE(range.Value().min, range.Value().max);
  EXPECT_FALSE(IsValidConstraintFile(path, quiet).WasCancelled());
  EXPECT_EQ(ReadHeaderTexts(path, 6).Value().values.size(), 6U);
  EXPECT_EQ(ReadNoDataText(path).find(' '), std::string::npos);

  Grid<double> cells(4, 3);
  EXPECT_FALSE(ReadRasterInto(path, cells, 4, 3, quiet).WasCancelled());
  const std::vector<std::string> files = {path, path};
  const Outcome<ConstraintMaskBuild> build = BuildConstraintMask(files, 4, 3);
  ASSERT_TRUE(build.Ok());
  for (const std::uint8_t cell : build.Value().mask.Cells()) {
    EXPECT_TRUE(cell == 1 || (cell == 0 && build.Value().failure.empty()));
  }
}

TEST(DamagedFiles, CutAtEveryLengthAndKeptForTheirFaults) {
  TemporaryFolder folder;
  for (std::size_t length = 0; length <= kMap.size(); ++length) {
    ReadEveryWay(folder.Write("map.asc", kMap.substr(0, length)));
  }
  for (const auto& entry : fs::directory_iterator(fs::path(ORMEL_SOURCE_DIR) / "tests/data")) {
    SCOPED_TRACE(entry.path());
    if (entry.path().extension() == ".asc") ReadEveryWay(entry.path());
  }
}

TEST(DamagedFiles, WithBytesChanged) {
  TemporaryFolder folder;
  std::mt19937 random(1);
  static const std::string kTelling = "0123456789 .,-+eE\"\r\n\t\x1A";
  for (int i = 0; i < 4000; ++i) {
    std::string text = kMap;
    for (auto changes = 1 + random() % 4; changes > 0; --changes) {
      const std::size_t place = random() % text.size();
      const char byte =
          random() % 2 == 0 ? kTelling[random() % kTelling.size()] : static_cast<char>(random());
      const auto way = random() % 3;  // another byte, one more, one less
      text.replace(place, way == 1 ? 0 : 1, way == 2 ? 0 : 1, byte);
    }
    SCOPED_TRACE(::testing::PrintToString(text));
    ReadEveryWay(folder.Write("map.asc", text));
    if (HasFailure()) return;
  }
}

}  // namespace
}  // namespace ormel
