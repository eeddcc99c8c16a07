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
  std::string Bytes() const { return testing::ReadText(path_); }

  const testing::TemporaryFolder folder_;
  const fs::path path_ = folder_ / "map.bmp";
};

// The bytes that `digits`, two hexadecimal digits each, stand for; blanks are passed over.
std::string FromHex(const std::string& digits) {
  std::string bytes;
  std::string pair;
  for (const char digit : digits) {
    if (digit == ' ') continue;
    pair += digit;
    if (pair.size() < 2) continue;
    bytes.push_back(static_cast<char>(std::stoi(pair, nullptr, 16)));
    pair.clear();
  }
  return bytes;
}

TEST_F(Bitmap, HasItsRowsFromTheBottomUpAndBlueFirst) {
  Canvas canvas(2, 2);
  canvas.SetPixel(0, 0, Rgb(1, 2, 3));
  canvas.SetPixel(1, 0, Rgb(255, 0, 0));
  canvas.SetPixel(0, 1, Rgb(0, 255, 0));
  canvas.SetPixel(1, 1, Rgb(0, 0, 255));
  ASSERT_TRUE(WriteBitmap(canvas, path_).Ok());
  EXPECT_EQ(Bytes(), FromHex("42 4D 46000000 0000 0000 36000000"  // 70 bytes, pixels from 54
                             "28000000 02000000 02000000 0100 1800 00000000 10000000"
                             "130B0000 130B0000 00000000 00000000"
                             "00FF00 FF0000 0000"
                             "030201 0000FF 0000"));
}

TEST_F(Bitmap, PadsARowToAMultipleOfFourBytes) {
  Canvas canvas(3, 1, Rgb(16, 32, 48));
  ASSERT_TRUE(WriteBitmap(canvas, path_).Ok());
  EXPECT_EQ(Bytes(), FromHex("42 4D 42000000 0000 0000 36000000"  // 66 bytes
                             "28000000 03000000 01000000 0100 1800 00000000 0C000000"
                             "130B0000 130B0000 00000000 00000000"
                             "302010 302010 302010 000000"));
}

TEST_F(Bitmap, WithoutPixelsLeavesTheOldFileAsItWas) {
  folder_.Write("map.bmp", "old");
  const Outcome<> written = WriteBitmap(Canvas(), path_);
  ASSERT_TRUE(written.Failed());
  EXPECT_EQ(written.Why().kind, FailureKind::kRefused);
  EXPECT_EQ(Bytes(), "old");
}

TEST_F(Bitmap, InAFolderThatIsNotThereIsAFailure) {
  EXPECT_TRUE(WriteBitmap(Canvas(1, 1), folder_ / "no" / "map.bmp").Failed());
}

}  // namespace
}  // namespace ormel
