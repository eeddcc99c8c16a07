#include "mapdata/palette.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

#include "support/temporary_folder.h"

namespace ormel {
namespace {

namespace fs = std::filesystem;

std::string Repeated(int count, const std::string& text) {
  std::string all;
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

TEST(PaletteFiles, AreGoodWith256NumbersInRange) {
  const testing::TemporaryFolder folder;
  std::string binary;
  for (int i = 0; i < 4096; ++i) binary.push_back(static_cast<char>(i * 7));
  const std::tuple<std::string, std::string, std::string> cases[] = {
      {"256 of the largest colour", Repeated(256, "16777215\r\n"), "GOOD"},
      {"no line end behind the last", Repeated(255, "1\n") + "2", "GOOD"},
      {"commas", Repeated(255, "7,") + "7", "GOOD"},
      {"a word counts as 0", Repeated(255, "7\n") + "black\n", "GOOD"},
      {"beyond the largest colour", Repeated(255, "0\r\n") + "16777216\r\n", "BAD"},
      {"one missing", Repeated(255, "5\r\n"), "BAD"},
      {"one too many", Repeated(257, "5\r\n"), "BAD"},
      {"below 0", "-1\r\n" + Repeated(255, "5\r\n"), "BAD"},
      {"empty", "", "BAD"},
      {"binary", binary, "BAD"}};
  for (const auto& [why, text, verdict] : cases) {
    EXPECT_EQ(CheckPaletteFile(folder.Write("test.ptf", text)), verdict) << why;
  }
  Palette palette;
  for (const fs::path& path : {folder / "missing.ptf", folder.Path()}) {
    EXPECT_EQ(CheckPaletteFile(path), "BAD");
    EXPECT_NE(ReadPalette(path, palette).Text().find(path.string()), std::string::npos);
  }
}

TEST(PaletteFiles, AreReadAsFarAsTheyGo) {
  const testing::TemporaryFolder folder;
  Palette palette;
  palette.colours.fill(Rgb(1, 2, 3));
  const fs::path some = folder.Write("some.ptf", "255\r\n0.5,1.5\r\n16777216\r\n-1\r\n1e300");
  EXPECT_EQ(ReadPalette(some, palette).Value(), 6);
  // Halves go to the even number; of 2^24, -1 and 2^31 - 1 the low 24 bits are left.
  const std::vector<Colour> expected = {255, 0, 2, 0, 0xFFFFFF, 0xFFFFFF, Rgb(1, 2, 3)};
  EXPECT_TRUE(std::equal(expected.begin(), expected.end(), palette.colours.begin()));
  EXPECT_EQ(ReadPalette(folder.Write("more.ptf", Repeated(300, "8 ")), palette).Value(), 256);
  EXPECT_EQ(palette[255], 8U);
  EXPECT_EQ(PaletteFolder("/home/eve/ormel"), "/home/eve/ormel/Palettes/");
  EXPECT_EQ(PaletteFolder("/home/eve/ormel/"), "/home/eve/ormel/Palettes/");
}

TEST(ColourNumbers, AreTheNearestWholeNumberTiesToEven) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const std::pair<double, int> cases[] = {
      {0, 0},     {0.5, 0},     {126.5, 126}, {127.5, 128}, {254.5, 254},
      {255, 255}, {-9999, 0},   {300, 255},   {1e300, 255}, {-kInfinity, 0},
      {2.51, 3},  {-0.0001, 0}, {255.4, 255}, {0.49, 0},    {std::nan(""), 0}};
  for (const auto& [value, number] : cases) EXPECT_EQ(ColourNumber(value), number) << value;
  // As they stand, values of an unscaled map end outside 0 to 255.
  for (const double value : {0.0, 127.5, 255.0}) EXPECT_TRUE(HasColourNumber(value)) << value;
  for (const double value : {-0.25, 255.25, -9999.0, 1e300, std::nan("")}) {
    EXPECT_FALSE(HasColourNumber(value)) << value;
  }
}

TEST(ColourNumbers, OfAnUnscaledMapInAScaledVersionRunFromMinToMax) {
  const UnscaledColours colours(RasterRange{false, 100, 610});
  EXPECT_EQ(colours.Number(100), 0);
  EXPECT_EQ(colours.Number(610), 255);
  EXPECT_EQ(colours.Number(353), 126);  // 255 * 253 / 510 = 126.5
  EXPECT_EQ(colours.Number(355), 128);  // 255 * 255 / 510 = 127.5
  // A map of one value has a range of 0.1, or of 0 where doubles cannot tell 0.1 apart.
  for (const double max : {42.1, 42.0}) {
    EXPECT_EQ(UnscaledColours(RasterRange{false, 42, max}).Number(42), 0);
  }
  EXPECT_EQ(UnscaledColours(RasterRange{false, 1e300, 1e300}).Number(1e300), 0);
}

Palette Numbered() {
  Palette palette;
  int red = 0;
  for (Colour& colour : palette.colours) colour = Rgb(red++, 9, 9);
  return palette;
}

TEST(ColourScale, ShowsColours1To255AndNever0InThePicturesWidth) {
  // With 256 pixels the pen is 2: a stroke reaches one pixel on, and the next one covers that.
  Canvas canvas(256, 3);
  DrawColourScale(canvas, Numbered());
  for (int i = 0; i < 3 * 256; ++i) {
    ASSERT_EQ(Red(canvas.Pixel(i % 256, i / 256)), std::min(i % 256 + 1, 255)) << i;
  }
  // With 1024 pixels a unit is 4 of them and the pen is 5, of which 2 lie before.
  Canvas wide(1024, 1);
  DrawColourScale(wide, Numbered());
  const std::pair<int, int> pixels[] = {
      {0, 1}, {4 * 99 - 3, 99}, {4 * 99 - 2, 100}, {4 * 255 + 2, 255}};
  for (const auto& [x, colour] : pixels) EXPECT_EQ(Red(wide.Pixel(x, 0)), colour) << x;
  EXPECT_EQ(wide.Pixel(4 * 255 + 3, 0), kWhite);  // no stroke from 255 to 256

  Canvas narrow(64, 1);
  DrawColourScale(narrow, Numbered());
  EXPECT_EQ(Red(narrow.Pixel(0, 0)), 4);  // the last of those that share the pixel
  EXPECT_EQ(Red(narrow.Pixel(63, 0)), 255);
  Canvas none;
  DrawColourScale(none, Numbered());
  EXPECT_TRUE(none.Empty());
}

// Lightness as the eye has it (CIE L*), 0 to 100.
double Lightness(Colour colour) {
  const auto light = [](std::uint8_t byte) {
    const double part = byte / 255.0;
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  const double y =
      0.2126 * light(Red(colour)) + 0.7152 * light(Green(colour)) + 0.0722 * light(Blue(colour));
  return y > 216.0 / 24389 ? 116 * std::cbrt(y) - 16 : y * 24389 / 27;
}

TEST(ShippedPalettes, AreGoodAndNeverNearBlackAndTheDefaultRisesInEvenSteps) {
  const fs::path shipped = fs::path(ORMEL_SOURCE_DIR) / "assets" / "palettes";
  int count = 0;
  Palette palette;
  for (const fs::directory_entry& entry : fs::directory_iterator(shipped)) {
    ++count;
    EXPECT_EQ(CheckPaletteFile(entry.path()), "GOOD") << entry.path();
    ASSERT_TRUE(ReadPalette(entry.path(), palette).Ok());
    // Masked cells are black.
    for (const Colour colour : palette.colours) EXPECT_GT(Lightness(colour), 15) << entry.path();
  }
  EXPECT_GE(count, 8);
  ASSERT_TRUE(ReadPalette(shipped / "default.ptf", palette).Ok());
  const double perColour = (Lightness(palette[255]) - Lightness(palette[0])) / 255;
  EXPECT_GT(Lightness(palette[0]), 30);
  EXPECT_GT(perColour * 255, 55);
  constexpr int kStep = 16;  // rounding to bytes is all that is left in shorter ones
  for (int i = 0; i + kStep < kPaletteColours; ++i) {
    const double step = Lightness(palette[i + kStep]) - Lightness(palette[i]);
    EXPECT_NEAR(step, kStep * perColour, 0.2 * kStep * perColour) << i;
    EXPECT_GT(Lightness(palette[i + 1]), Lightness(palette[i]) - 0.1) << i;
  }
}

}  // namespace
}  // namespace ormel
