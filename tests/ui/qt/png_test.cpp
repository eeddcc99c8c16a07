// The program's PNG files as another reader, the toolkit's, sees them.
#include "movies/png.h"

#include <gtest/gtest.h>

#include <QImage>
#include <random>

namespace ormel {
namespace {

Canvas ReadBack(const std::string& bytes) {
  const QImage image = QImage::fromData(reinterpret_cast<const uchar*>(bytes.data()),
                                        static_cast<int>(bytes.size()), "PNG");
  Canvas canvas(image.width(), image.height());
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QRgb pixel = image.pixel(x, y);
      canvas.SetPixel(x, y, Rgb(qRed(pixel), qGreen(pixel), qBlue(pixel)));
    }
  }
  return canvas;
}

void ExpectSame(const Canvas& canvas) {
  const Canvas read = ReadBack(PngBytes(canvas));
  ASSERT_EQ(read.Width(), canvas.Width());
  ASSERT_EQ(read.Height(), canvas.Height());
  EXPECT_TRUE(std::equal(read.Bytes().begin(), read.Bytes().end(), canvas.Bytes().begin()));
}

// Noise has no copies, a map many, near and far, and a plain ground the longest ones.
TEST(Png, IsReadPixelByPixel) {
  std::mt19937 random(3);
  const std::pair<int, int> sizes[] = {{1, 1}, {1, 300}, {300, 1}, {97, 61}, {640, 400}};
  for (const auto& [width, height] : sizes) {
    Canvas canvas(width, height, Rgb(250, 20, 30));
    ExpectSame(canvas);
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        canvas.SetPixel(x, y, Rgb(x / 5 % 4 * 60, y / 7 % 3 * 80, (x + y) / 9 % 5 * 50));
      }
    }
    ExpectSame(canvas);
    EXPECT_LT(PngBytes(canvas).size(), 200 + canvas.Bytes().size() / 8);
    for (int i = 0; i < width * height; ++i) {
      canvas.SetPixel(i % width, i / width, random() & kLargestColour);
    }
    ExpectSame(canvas);
  }
}

}  // namespace
}  // namespace ormel
