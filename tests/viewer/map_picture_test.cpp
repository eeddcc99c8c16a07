#include "viewer/map_picture.h"

#include <gtest/gtest.h>

#include "support/map_text.h"
#include "support/temporary_folder.h"

namespace ormel {
namespace {

using testing::MapText;

class MapPictureTest : public ::testing::Test {
 protected:
  MapValues ReadText(const std::string& text, const std::optional<ViewSpecs>& wanted = {}) {
    return std::move(ReadMapValues(folder.Write("map.asc", text), wanted, quiet).Value());
  }

  // The numbers of the colours in the one row of a map as drawn, -1 for the constraint colour.
  std::vector<int> Drawn(const std::string& text, Viewing viewing) {
    MapValues map = ReadText(text);
    MapPicture picture;
    picture.cells = std::move(map.cells);
    picture.specs = {map.range.min, map.range.max, map.nodata};
    picture.viewing = viewing;
    picture.palette = GreyPalette();
    DrawPicture(picture, Rgb(255, 0, 0), quiet);
    std::vector<int> numbers;
    for (int x = 0; x < picture.image.Width(); ++x) {
      const Colour colour = picture.image.Pixel(x, 0);
      numbers.push_back(colour == Rgb(255, 0, 0) ? -1 : Red(colour));
    }
    return numbers;
  }

  testing::TemporaryFolder folder;
  NoProgress quiet;
};

// Whatever the viewer reads in its one pass, other tools read with ScanRasterRange().
TEST_F(MapPictureTest, OnePassGivesHeaderCellsAndTheRangeOfAllTools) {
  const MapValues map = ReadText(MapText({{0, 10, -9999}, {40, 50, 255}}, -9999));
  EXPECT_EQ(map.specs, (ViewSpecs{3, 2, 100, 200, 30}));
  EXPECT_EQ(map.cells(3, 2), 255);
  EXPECT_EQ(map.nodata, -9999);
  EXPECT_TRUE(map.range.isScaled);
  EXPECT_EQ(map.fault, "");
  const std::string texts[] = {
      MapText({{0, 255}}),
      MapText({{7, 7}}),
      MapText({{-9999, -9999}}, -9999),
      MapText({{-9999, 3}}),              // no NODATA line: it is a value
      MapText({{0, 1}}) + " 255 -4\r\n",  // more than the header says
      "ncols 3\r\nnrows 9\r\n 5 6\r\n",   // a short header and a short map
      "",
  };
  for (const std::string& text : texts) {
    const RasterRange range = ReadText(text).range;
    const RasterRange wanted = ScanRasterRange((folder / "map.asc").string(), quiet).Value();
    EXPECT_EQ(range.isScaled, wanted.isScaled) << text;
    EXPECT_EQ(range.min, wanted.min) << text;
    EXPECT_EQ(range.max, wanted.max) << text;
  }
}

TEST_F(MapPictureTest, MapsThatCannotBeShownHaveAFault) {
  EXPECT_EQ(ReadText(MapText({{1, 2}}), ViewSpecs{2, 1, 100, 200, 31}).fault,
            "its columns, rows, corner or cell size are not those of the maps on show");
  EXPECT_EQ(ReadText("ncols 2\r\nnrows 2\r\nx 0\r\ny 0\r\nc 1\r\n 1 2\r\n 3\r\n").fault,
            "it ends in row 2 of 2");
  for (const std::string count : {"0", "-3", "word", "1e300", "3000000000", "2000000000"}) {
    const MapValues map = ReadText("ncols " + count + "\r\nnrows 1\r\nx 0\r\ny 0\r\nc 1\r\n 1\r\n");
    EXPECT_NE(map.fault, "") << count;
    EXPECT_TRUE(map.cells.Empty()) << count;
  }
  EXPECT_EQ(ReadMapValues((folder / "gone.asc").string(), {}, quiet).Why().kind,
            FailureKind::kNotFound);
}

TEST_F(MapPictureTest, EveryWayOfViewingHasItsColours) {
  using Numbers = std::vector<int>;
  // Ties go to the even number.
  EXPECT_EQ(Drawn(MapText({{0, 126.5, 127.5, 255, 9}}, 9), Viewing::kScaledMap),
            (Numbers{0, 126, 128, 255, -1}));
  EXPECT_EQ(Drawn(MapText({{-1, 0, 255, 255.1, 256}}), Viewing::kAsItStands),
            (Numbers{-1, 0, 255, -1, -1}));
  // 255 * (v - 10) / 40
  EXPECT_EQ(Drawn(MapText({{10, 20, 30, 50, 0}}, 0), Viewing::kScaledVersion),
            (Numbers{0, 64, 128, 255, -1}));
  EXPECT_EQ(Drawn(MapText({{7, 7}}), Viewing::kScaledVersion), (Numbers{0, 0}));
}

}  // namespace
}  // namespace ormel
