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

class PaletteFiles : public ::testing::Test {
 protected:
  fs::path Write(const std::string& text) const { return folder_.Write("test.ptf", text); }

  const testing::TemporaryFolder folder_;
};

std::string Repeated(int count, const std::string& text) {
  std::string all;
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

TEST_F(PaletteFiles, AreGoodWith256NumbersInRange) {
  struct Case {
    std::string why;
    std::string text;
    std::string verdict;
  };
  std::string binary;
  for (int i = 0; i < 4096; ++i) binary.push_back(static_cast<char>(i * 7));
  const Case cases[] = {
      {"256 of the largest colour", Repeated(256, "16777215\r\n"), "GOOD"},
      {"no line end behind the last", Repeated(255, "1\n") + "2", "GOOD"},
      {"commas", Repeated(255, "7,") + "7", "GOOD"},
      {"a word counts as 0", Repeated(255, "7\n") + "black\n", "GOOD"},
      {"beyond the largest colour", Repeated(255, "0\r\n") + "16777216\r\n", "BAD"},
      {"one missing", Repeated(255, "5\r\n"), "BAD"},
      {"one too many", Repeated(257, "5\r\n"), "BAD"},
      {"below 0", "-1\r\n" + Repeated(255, "5\r\n"), "BAD"},
      {"empty", "", "BAD"},
      {"binary", binary, "BAD"},
  };
  for (const Case& c : cases) EXPECT_EQ(CheckPaletteFile(Write(c.text)), c.verdict) << c.why;
  EXPECT_EQ(CheckPaletteFile(folder_ / "missing.ptf"), "BAD");
  EXPECT_EQ(CheckPaletteFile(folder_.Path()), "BAD");
}

TEST_F(PaletteFiles, AreReadAsFarAsTheyGo) {
  Palette palette;
  palette.colours.fill(Rgb(1, 2, 3));
  const Outcome<int> few = ReadPalette(Write("255\r\n0.5,1.5\r\n16777216\r\n-1\r\n1e300"), palette);
  ASSERT_TRUE(few.Ok());
  EXPECT_EQ(few.Value(), 6);
  // Halves go to the even number; of 2^24, -1 and 2^31 - 1 the low 24 bits are left.
  const std::vector<Colour> expected = {255, 0, 2, 0, 0xFFFFFF, 0xFFFFFF, Rgb(1, 2, 3)};
  EXPECT_TRUE(std::equal(expected.begin(), expected.end(), palette.colours.begin()));

  const Outcome<int> many = ReadPalette(Write(Repeated(300, "8 ")), palette);
  ASSERT_TRUE(many.Ok());
  EXPECT_EQ(many.Value(), 256);
  EXPECT_EQ(palette[255], 8U);
}

TEST_F(PaletteFiles, ThatCannotBeReadAreNamed) {
  Palette palette;
  for (const fs::path& path : {folder_ / "missing.ptf", folder_.Path()}) {
    const Outcome<int> read = ReadPalette(path, palette);
    ASSERT_TRUE(read.Failed());
    EXPECT_NE(read.Text().find(path.string()), std::string::npos) << read.Text();
  }
}

TEST(Palettes, LieInOneFolderOfTheProgram) {
  EXPECT_EQ(PaletteFolder("/home/eve/ormel"), "/home/eve/ormel/Palettes/");
  EXPECT_EQ(PaletteFolder("/home/eve/ormel/"), "/home/eve/ormel/Palettes/");
}

TEST(ColourNumbers, AreTheNearestWholeNumberTiesToEven) {
  struct Case {
    double value;
    int number;
  };
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const Case cases[] = {{0, 0},     {0.5, 0},     {126.5, 126}, {127.5, 128},     {254.5, 254},
                        {255, 255}, {-9999, 0},   {300, 255},   {1e300, 255},     {-kInfinity, 0},
                        {2.51, 3},  {-0.0001, 0}, {255.4, 255}, {std::nan(""), 0}};
  for (const Case& c : cases) EXPECT_EQ(ColourNumber(c.value), c.number) << c.value;
}

TEST(ColourNumbers, OfAnUnscaledMapAsItStandsEndOutside0To255) {
  EXPECT_EQ(ColourNumberAsItStands(127.5), 128);
  EXPECT_EQ(ColourNumberAsItStands(0), 0);
  EXPECT_EQ(ColourNumberAsItStands(255), 255);
  for (const double value : {-0.25, 255.25, -9999.0, 1e300, std::nan("")}) {
    EXPECT_FALSE(ColourNumberAsItStands(value)) << value;
  }
}

TEST(ColourNumbers, OfAnUnscaledMapInAScaledVersionRunFromMinToMax) {
  const UnscaledColours colours(RasterRange{false, 100, 610});
  EXPECT_EQ(colours.Number(100), 0);
  EXPECT_EQ(colours.Number(610), 255);
  EXPECT_EQ(colours.Number(353), 126);  // 255 * 253 / 510 = 126.5
  EXPECT_EQ(colours.Number(355), 128);  // 255 * 255 / 510 = 127.5

  // A map of one value has a range of 0.1, or of 0 where doubles cannot tell 0.1 apart.
  EXPECT_EQ(UnscaledColours(RasterRange{false, 42, 42.1}).Number(42), 0);
  EXPECT_EQ(UnscaledColours(RasterRange{false, 42, 42}).Number(42), 0);
  EXPECT_EQ(UnscaledColours(RasterRange{false, 1e300, 1e300}).Number(1e300), 0);
}

Palette Numbered() {
  Palette palette;
  for (int i = 0; i < kPaletteColours; ++i)
    palette.colours[static_cast<std::size_t>(i)] = Rgb(i, 9, 9);
  return palette;
}

TEST(ColourScale, ShowsColours1To255AndNever0) {
  // With 256 pixels the pen is 2: a stroke reaches one pixel on, and the next one covers that.
  Canvas canvas(256, 3);
  DrawColourScale(canvas, Numbered());
  for (int x = 0; x < 256; ++x) {
    for (int y = 0; y < 3; ++y) ASSERT_EQ(Red(canvas.Pixel(x, y)), std::min(x + 1, 255)) << x;
  }
}

TEST(ColourScale, IsStretchedToTheWidthOfThePicture) {
  // With 1024 pixels a unit is 4 of them and the pen is 5, of which 2 lie before.
  Canvas wide(1024, 1);
  DrawColourScale(wide, Numbered());
  EXPECT_EQ(Red(wide.Pixel(0, 0)), 1);
  EXPECT_EQ(Red(wide.Pixel(4 * 99 - 3, 0)), 99);
  EXPECT_EQ(Red(wide.Pixel(4 * 99 - 2, 0)), 100);
  EXPECT_EQ(Red(wide.Pixel(4 * 255 + 2, 0)), 255);
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

const fs::path kShipped = fs::path(ORMEL_SOURCE_DIR) / "assets" / "palettes";

TEST(ShippedPalettes, AreGoodAndNeverNearBlack) {
  int count = 0;
  for (const fs::directory_entry& entry : fs::directory_iterator(kShipped)) {
    ++count;
    EXPECT_EQ(CheckPaletteFile(entry.path()), "GOOD") << entry.path();
    Palette palette;
    ASSERT_TRUE(ReadPalette(entry.path(), palette).Ok());
    // Masked cells are black.
    for (const Colour colour : palette.colours) EXPECT_GT(Lightness(colour), 15) << entry.path();
  }
  EXPECT_GE(count, 8);
}

TEST(ShippedPalettes, DefaultRisesInEvenStepsOfLightness) {
  Palette palette;
  ASSERT_TRUE(ReadPalette(kShipped / "default.ptf", palette).Ok());
  const double lowest = Lightness(palette[0]);
  const double perColour = (Lightness(palette[255]) - lowest) / 255;
  EXPECT_GT(lowest, 30);
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
