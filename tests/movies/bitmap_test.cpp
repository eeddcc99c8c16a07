#include "movies/bitmap.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/temporary_folder.h"

namespace ormel {
namespace {

namespace fs = std::filesystem;

class Bitmap : public ::testing::Test {
 protected:
  // The file of a picture, two hexadecimal digits a byte.
  std::string Written(const Canvas& canvas) const {
    EXPECT_TRUE(WriteBitmap(canvas, path_).Ok());
    std::string digits;
    for (const char byte : testing::ReadText(path_)) {
      for (const int digit : {byte >> 4 & 15, byte & 15}) digits += "0123456789ABCDEF"[digit];
    }
    return digits;
  }

  const testing::TemporaryFolder folder_;
  const fs::path path_ = folder_ / "map.bmp";
};

TEST_F(Bitmap, HasItsRowsFromTheBottomUpBlueFirstAndPaddedToFourBytes) {
  Canvas canvas(2, 2);
  canvas.SetPixel(0, 0, Rgb(1, 2, 3));
  canvas.SetPixel(1, 0, Rgb(255, 0, 0));
  canvas.SetPixel(0, 1, Rgb(0, 255, 0));
  canvas.SetPixel(1, 1, Rgb(0, 0, 255));
  EXPECT_EQ(Written(canvas),
            "424D460000000000000036000000"  // 70 bytes, pixels from 54
            "280000000200000002000000010018000000000010000000"
            "130B0000130B00000000000000000000"
            "00FF00FF00000000"
            "0302010000FF0000");
  EXPECT_EQ(Written(Canvas(3, 1, Rgb(16, 32, 48))),
            "424D420000000000000036000000"  // 66 bytes
            "28000000030000000100000001001800000000000C000000"
            "130B0000130B00000000000000000000"
            "302010302010302010000000");
}

TEST_F(Bitmap, WithoutPixelsOrAFolderIsAFailureAndLeavesTheOldFileAsItWas) {
  folder_.Write("map.bmp", "old");
  const Outcome<> written = WriteBitmap(Canvas(), path_);
  ASSERT_TRUE(written.Failed());
  EXPECT_EQ(written.Why().kind, FailureKind::kRefused);
  EXPECT_EQ(testing::ReadText(path_), "old");
  EXPECT_TRUE(WriteBitmap(Canvas(1, 1), folder_ / "no" / "map.bmp").Failed());
}

}  // namespace
}  // namespace ormel
