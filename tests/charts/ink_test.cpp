#include "charts/ink.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <set>
#include <string>

#include "charts/stroke_font.h"

namespace ormel {
namespace {

constexpr Colour kPale = Rgb(232, 240, 250);

// Darkness of a pixel, 0 to 255.
int Dark(const Canvas& canvas, int x, int y) { return 255 - Red(canvas.Pixel(x, y)); }

TEST(Ink, EdgesAreMixedOnceAndBlocksHaveAPixelInsideTheClip) {
  Canvas mixed(10, 10);
  const InkPoint path[] = {{1, 5}, {5, 5}, {9, 5}, {3, 5}};
  Ink(mixed, 1).Stroke(path, 1, kBlack);  // covers half of the rows 4 and 5
  for (int x = 2; x < 8; ++x) {
    EXPECT_EQ(mixed.Pixel(x, 3), kWhite) << x;
    EXPECT_EQ(mixed.Pixel(x, 4), Rgb(128, 128, 128)) << x;
    EXPECT_EQ(mixed.Pixel(x, 5), Rgb(128, 128, 128)) << x;
  }
  Canvas canvas(10, 10);
  Ink ink(canvas, 2);
  ink.Clip(0, 0, 5, 4);
  ink.Block(1, 1, 2, 3, kBlack);
  ink.Block(4, -9, 4, 9, kPale);
  const InkPoint far[] = {{-1e300, 3.75}, {1e300, 3.75}, {1e300, 4.25}, {-1e300, 4.25}};
  ink.Stroke(far, 0.5, kBlack);  // rows 7 and 8, of which 8 lies outside
  const char* rows[] = {"........H.", "........H.", "..BB....H.", "..BB....H.", "..BB....H.",
                        "..BB....H.", "........H.", "BBBBBBBBBB", "..........", ".........."};
  for (int i = 0; i < 100; ++i) {
    const char pixel = rows[i / 10][i % 10];
    const Colour expected = pixel == 'B' ? kBlack : pixel == 'H' ? kPale : kWhite;
    EXPECT_EQ(canvas.Pixel(i % 10, i / 10), expected) << i;
  }
}

// Every outline is told in pixels; the parts of pixels it covers are worked out by hand.
TEST(Ink, AreasCoverPartsOfPixelsOnBothSidesOfACrossing) {
  Canvas canvas(12, 8);
  Ink ink(canvas, 1);
  const InkPoint box[] = {{1.5, 1}, {4.25, 1}, {4.25, 3.5}, {1.5, 3.5}};
  ink.Area(box, kBlack);
  EXPECT_EQ(Dark(canvas, 1, 1), 127);  // half
  EXPECT_EQ(Dark(canvas, 2, 2), 255);
  EXPECT_EQ(Dark(canvas, 4, 2), 64);  // a quarter
  EXPECT_EQ(Dark(canvas, 2, 3), 127);
  EXPECT_EQ(Dark(canvas, 4, 3), 32);  // an eighth
  EXPECT_EQ(Dark(canvas, 5, 2), 0);
  canvas.Clear(kWhite);
  const InkPoint crossed[] = {{2, 1}, {10, 7}, {10, 1}, {2, 7}};  // two triangles that meet at 6, 4
  ink.Area(crossed, kBlack);
  EXPECT_EQ(Dark(canvas, 2, 4), 255);
  EXPECT_EQ(Dark(canvas, 9, 4), 255);
  EXPECT_EQ(Dark(canvas, 6, 2), 0);
  EXPECT_EQ(Dark(canvas, 6, 6), 0);
  canvas.Clear(kWhite);
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const InkPoint nowhere[] = {{nan, nan}, {nan, 3}, {3, nan}};
  ink.Area(nowhere, kBlack);
  ink.Dashes(nowhere, 1, 900, 900, kBlack);
  const InkPoint far[] = {{-1e300, 2}, {1e300, 2}, {1e300, 1e300}, {-1e300, 1e300}};
  ink.Area(far, kBlack);
  EXPECT_EQ(Dark(canvas, 5, 0), 0);
  EXPECT_EQ(Dark(canvas, 5, 7), 255);
}

TEST(Ink, DashesHaveGapsAndGoRoundCorners) {
  Canvas canvas(60, 40);
  const InkPoint path[] = {{5, 10}, {45, 10}, {45, 35}};
  Ink(canvas, 1).Dashes(path, 1, 6, 3, kBlack);  // 6 drawn, 4 left out
  for (int step = 0; step < 60; step += 10) {
    const auto at = [&](int way) {
      return way < 40 ? Dark(canvas, 5 + way, 10) : Dark(canvas, 45, 10 + way - 40);
    };
    EXPECT_GT(at(step + 3), 100) << step;
    EXPECT_EQ(at(step + 8), 0) << step;
  }
}

// The pixels of a text, as a string that can be compared.
std::string Drawn(std::string_view text, double height, int scale = 1) {
  Canvas canvas(40 * scale, 40 * scale);
  Ink(canvas, scale).Text(10, 25, text, height, kBlack);
  return {canvas.Bytes().begin(), canvas.Bytes().end()};
}

TEST(InkText, AllLettersOfAsciiCanBeToldApart) {
  for (const double height : {9.0, 14.0}) {
    std::set<std::string> pictures;
    for (char letter = ' '; letter <= '~'; ++letter) pictures.insert(Drawn({&letter, 1}, height));
    EXPECT_EQ(pictures.size(), 95U) << height;
    EXPECT_EQ(pictures.count(Drawn("\x7f", height)), 0U);  // the box of what is no letter
  }
}

TEST(InkText, WhatIsNoLetterIsOneBoxAndAccentsAreParts) {
  const std::string box = Drawn("\xEF\xBF\xBD", 9);  // U+FFFD
  const char* broken[] = {"\xFF", "\xC3", "\xC0\x80" /* two */, "\xED", "\xF0\x9F"};
  EXPECT_EQ(Drawn(broken[0], 9), box);
  EXPECT_EQ(Drawn(broken[1], 9), box);
  EXPECT_EQ(Drawn("\xE6\xBC\xA2", 9), box);  // a letter the font has not got
  const double boxes = Ink::TextWidth("\xFF\xFF", 12);
  for (const int i : {2, 4}) EXPECT_EQ(Ink::TextWidth(broken[i], 12), boxes) << i;
  EXPECT_EQ(Drawn("\t", 9), Drawn(" ", 9));
  // An accent adds ink and no width, and is not taken for two letters.
  for (const auto& [plain, accented] :
       {std::pair("e", "é"), std::pair("O", "Ö"), std::pair("c", "ç"), std::pair("u", "ú")}) {
    EXPECT_EQ(Ink::TextWidth(accented, 9), Ink::TextWidth(plain, 9)) << accented;
    EXPECT_NE(Drawn(accented, 9), Drawn(plain, 9));
    EXPECT_NE(Drawn(accented, 9), box);
  }
  std::string_view mixed =
      "a\xC3\xA9\xC3"
      "b";
  std::u32string codes;
  while (!mixed.empty()) codes += TakeCodePoint(mixed);
  EXPECT_EQ(codes, (std::u32string{U'a', 0xE9, 0xFFFD, U'b'}));
}

// A figure is 8 parts of 12 wide, the gap behind it 4; a point and the sides of an I have no width.
TEST(InkText, WidthsAddUpAndInkStaysWithinThem) {
  EXPECT_EQ(Ink::TextWidth("", 9), 0);
  EXPECT_EQ(Ink::TextWidth("2", 9), 6);
  EXPECT_EQ(Ink::TextWidth("255", 9), 6 + 9 + 9);
  EXPECT_EQ(Ink::TextWidth("0.5", 12), 8 + 4 + 0 + 4 + 8);
  for (const int scale : {1, 2}) {
    Canvas canvas(140 * scale, 40 * scale);
    Ink(canvas, scale).Text(20, 25, "Weight (kg)", 10, kBlack);
    const double end = 20 + Ink::TextWidth("Weight (kg)", 10);
    for (int y = 0; y < canvas.Height(); ++y) {
      for (int x = 0; x < canvas.Width(); ++x) {
        const bool inside =
            x >= 18 * scale && x <= (end + 2) * scale && y >= 13 * scale && y <= 30 * scale;
        ASSERT_TRUE(inside || canvas.Pixel(x, y) == kWhite) << x << " " << y;
      }
    }
  }
}

TEST(InkText, UprightTextIsLevelTextTurned) {
  Canvas level(80, 80);
  Canvas upright(80, 80);
  Ink(level, 1).Text(10, 30, "Hgj7%", 9, kBlack);
  Ink(upright, 1).UprightText(30, 69, "Hgj7%", 9, kBlack);
  int ink = 0;
  for (int along = -5; along < 60; ++along) {
    for (int down = -20; down < 15; ++down) {
      const int dark = Dark(level, 10 + along, 30 + down);
      ink += dark;
      ASSERT_NEAR(Dark(upright, 30 + down, 69 - along), dark, 1) << along << " " << down;
    }
  }
  EXPECT_GT(ink, 255 * 50);
}

}  // namespace
}  // namespace ormel
