#include "viewer/image_conversion.h"

#include <gtest/gtest.h>

#include "support/temporary_folder.h"

namespace ormel {
namespace {

TEST(PixelValue, IsTheFirstOfTheNearestColoursTheBlueOrTheWholeColour) {
  const std::pair<Colour, int> cases[] = {
      {Rgb(255, 255, 255), 1},
      {Rgb(1, 150, 165), 2},
      {Rgb(250, 240, 10), 7},
      {Rgb(209, 209, 209), 11},
      {kBlack, 3},              // |203| + |0| + |23| = 226; black itself is not
                                // compared
      {Rgb(255, 222, 222), 1},  // 66 from white, 72 from the grey of 11
      {Rgb(232, 232, 232), 1},  // 69 from white and from the grey of 11
  };
  for (const auto& [colour, number] : cases) {
    EXPECT_EQ(PixelValue(kTopographicMap, colour), number) << colour;
  }
  EXPECT_EQ(PixelValue(kAerialPhotograph, Rgb(1, 2, 77)), 77);
  EXPECT_EQ(PixelValue("Sketch", Rgb(1, 2, 3)), 1 + 2 * 256 + 3 * 65536);
}

TEST(ConvertImage, WritesACellForEachPixelOrAsManyRowsAsMakeThemSquare) {
  Canvas image(2, 2);
  for (int i = 0; i < 4; ++i) image.SetPixel(i % 2, i / 2, static_cast<Colour>(i + 1));
  const testing::TemporaryFolder folder;
  const auto converted = [&](bool unaltered, MapPoint upperRight) {
    NoProgress quiet;
    const std::string path = (folder / "out.asc").string();
    const Outcome<> done =
        ConvertImage({image, "Sketch", {10, 20}, upperRight, unaltered, path}, quiet);
    return done.Ok() ? testing::ReadText(path) : done.Text();
  };
  const std::string header = "\r\nxllcorner     10\r\nyllcorner     20\r\ncellsize      2.5\r\n";
  EXPECT_EQ(converted(true, {15, 40}),
            "ncols         2\r\nnrows         2" + header + " 1 2\r\n 3 4\r\n");
  EXPECT_EQ(converted(false, {15, 30}),
            "ncols         2\r\nnrows         4" + header + " 1 2\r\n 1 2\r\n 3 4\r\n 3 4\r\n");
  EXPECT_EQ(converted(true, {10, 40}), "The image covers no part of a map.");
}

}  // namespace
}  // namespace ormel
