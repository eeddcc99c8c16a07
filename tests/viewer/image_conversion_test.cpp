#include "viewer/image_conversion.h"

#include <gtest/gtest.h>

#include "support/temporary_folder.h"

namespace ormel {
namespace {

using testing::ReadText;
using testing::TemporaryFolder;

TEST(NearestColor, TheFirstOfEqualsWins) {
  const struct {
    Colour colour;
    int number;
  } cases[] = {
      {Rgb(255, 255, 255), 1},
      {Rgb(0, 151, 164), 2},
      {Rgb(250, 240, 10), 7},
      {Rgb(209, 209, 209), 11},
      {Rgb(203, 10, 23), 3},
      {kBlack, 3},              // |203| + |0| + |23| = 226; black itself is not compared
      {Rgb(255, 222, 222), 1},  // 66 from white, 72 from the grey of 11
      {Rgb(232, 232, 232), 1},  // 69 from white and from the grey of 11
  };
  for (const auto& one : cases) EXPECT_EQ(NearestColor(one.colour), one.number) << one.colour;
}

TEST(PixelValue, DependsOnTheKindOfImage) {
  EXPECT_EQ(PixelValue(kAerialPhotograph, Rgb(1, 2, 77)), 77);
  EXPECT_EQ(PixelValue(kTopographicMap, Rgb(1, 150, 165)), 2);
  EXPECT_EQ(PixelValue("Sketch", Rgb(1, 2, 3)), 1 + 2 * 256 + 3 * 65536);
}

class ConvertImageTest : public ::testing::Test {
 protected:
  ConvertImageTest() {
    image.SetPixel(0, 0, 1);
    image.SetPixel(1, 0, 2);
    image.SetPixel(0, 1, 3);
    image.SetPixel(1, 1, 4);
  }
  std::string Converted(bool unaltered, MapPoint upperRight) {
    NoProgress quiet;
    const std::string path = (folder / "out.asc").string();
    const Outcome<> done =
        ConvertImage({image, "Sketch", {10, 20}, upperRight, unaltered, path}, quiet);
    return done.Ok() ? ReadText(path) : done.Text();
  }

  Canvas image{2, 2};
  TemporaryFolder folder;
};

TEST_F(ConvertImageTest, AFileHasACellForEachPixel) {
  EXPECT_EQ(Converted(true, {15, 40}),
            "ncols         2\r\nnrows         2\r\nxllcorner     10\r\nyllcorner     20\r\n"
            "cellsize      2.5\r\n 1 2\r\n 3 4\r\n");
}

TEST_F(ConvertImageTest, OrAsManyRowsAsMakeThemSquare) {
  EXPECT_EQ(Converted(false, {15, 30}),
            "ncols         2\r\nnrows         4\r\nxllcorner     10\r\nyllcorner     20\r\n"
            "cellsize      2.5\r\n 1 2\r\n 1 2\r\n 3 4\r\n 3 4\r\n");
}

TEST_F(ConvertImageTest, CornersTheWrongWayRoundAreRefused) {
  EXPECT_EQ(Converted(true, {10, 40}), "The image covers no part of a map.");
}

}  // namespace
}  // namespace ormel
