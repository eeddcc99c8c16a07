#include "mapdata/numbers.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>

namespace ormel {
namespace {

constexpr double kLargest = std::numeric_limits<double>::max();

TEST(TextToNumber, ReadsTheLongestNumberAtTheHead) {
  const struct {
    const char* text;
    double value;
  } cases[] = {
      {"12.5", 12.5},
      {" \t-3", -3},
      {"+7", 7},
      {".5", 0.5},
      {"5.", 5},
      {"1.2.3", 1.2},
      {"1,5", 1},
      {"1-2", 1},
      {"12abc", 12},
      {"", 0},
      {"abc", 0},
      {".", 0},
      {"-", 0},
      {"- 5", 0},
      {"--5", 0},
      {"nan", 0},
      {"inf", 0},
      {"0x10", 0},
      {"1e3", 1000},
      {"1E+3", 1000},
      {"25d-1", 2.5},
      {"25D-1", 2.5},
      {"2e", 2},  // an exponent that is not complete is no part of the number
      {"2e+", 2},
      {"2e 5", 2},
      {"2 e5", 2},
      {"1234567890123456789", 1234567890123456789.0},
      {"0.1234567890123456789", 0.1234567890123456789},
      {"1e400", kLargest},
      {"-1e400", -kLargest},
      {"1e99999999999999999999", kLargest},
      {"1e-99999999999999999999", 0},
      {"0e99999999999999999999", 0},
      {"4.9e-324", 4.9e-324},
      {"1e-400", 0},
      {"1.7976931348623159e308", kLargest},
  };
  for (const auto& c : cases) EXPECT_EQ(TextToNumber(c.text), c.value) << c.text;
}

TEST(TextToNumber, WeighsLongMantissasAgainstTheirExponents) {
  const std::string zeros(500, '0');
  EXPECT_EQ(TextToNumber("0." + zeros + "1e501"), 1);
  EXPECT_EQ(TextToNumber("1" + zeros + "e-500"), 1);
  EXPECT_EQ(TextToNumber("1" + zeros), kLargest);
  EXPECT_EQ(TextToNumber("0." + zeros + "1"), 0);
  EXPECT_EQ(TextToNumber("0." + zeros + "1e2000"), kLargest);
}

TEST(TextToNumber, GivesTheNearestDouble) {
  std::mt19937_64 random(1);
  for (int i = 0; i < 200'000; ++i) {
    const auto value = std::bit_cast<double>(random());
    if (!std::isfinite(value)) continue;
    char text[40];
    const int digits = static_cast<int>(random() % 20);
    std::snprintf(text, sizeof text, i % 2 == 0 ? "%.*e" : "%.*g", digits, value);
    const double expected = std::strtod(text, nullptr);
    if (std::isfinite(expected)) {
      ASSERT_EQ(TextToNumber(text), expected) << text;
    }
    std::snprintf(text, sizeof text, "%.*f", digits % 10, std::fmod(value, 1e12));
    ASSERT_EQ(TextToNumber(text), std::strtod(text, nullptr)) << text;
  }
}

TEST(IsNumeric, HoldsForWholeNumbersOnly) {
  for (const char* text : {"1", " 1", "-1.5", "+.5", "5.", "1e5", "1D-05"}) {
    EXPECT_TRUE(IsNumeric(text)) << text;
  }
  for (const char* text : {"", " ", "1 ", "1x", "1e", "-", ".", "1 2", "1,2", "nan", "ncols 5"}) {
    EXPECT_FALSE(IsNumeric(text)) << text;
  }
}

TEST(HalfEvenRound, TakesTheEvenNeighbourOfATie) {
  const struct {
    double value;
    int places;
    double rounded;
  } cases[] = {
      {0.5, 0, 0},      {1.5, 0, 2},        {2.5, 0, 2},      {-2.5, 0, -2}, {126.5, 0, 126},
      {0.125, 2, 0.12}, {0.375, 2, 0.38},   {2.675, 2, 2.68},  // 2.675 * 100 is 267.5 as a double
      {1.005, 2, 1},  // and 1.005 * 100 is just below 100.5
      {12.34, -1, 12},  {1e300, 22, 1e300}, {3, 400, 3},
  };
  for (const auto& c : cases) EXPECT_EQ(HalfEvenRound(c.value, c.places), c.rounded) << c.value;
}

TEST(NumberText, WritesDoublesWithFifteenDigits) {
  const struct {
    double value;
    const char* text;
  } cases[] = {
      {0, "0"},
      {-0.0, "0"},
      {255, "255"},
      {-9999, "-9999"},
      {0.5, "0.5"},
      {-0.25, "-0.25"},
      {100, "100"},
      {0.1 + 0.2, "0.3"},
      {1 / 3.0, "0.333333333333333"},
      {2 / 3.0, "0.666666666666667"},
      {123456.789, "123456.789"},
      {999999999999999, "999999999999999"},
      {1e15, "1E+15"},
      {1234567890123456, "1.23456789012346E+15"},
      {999999999999999.9, "1E+15"},
      {0.0001, "0.0001"},
      {0.00012345, "0.00012345"},
      {0.00001, "1E-05"},
      {-0.000015, "-1.5E-05"},
      {0.00009999999999999999, "0.0001"},
      {1e100, "1E+100"},
      {kLargest, "1.79769313486232E+308"},
      {4.9406564584124654e-324, "4.94065645841247E-324"},
      {std::numeric_limits<double>::infinity(), "1.79769313486232E+308"},
      {std::numeric_limits<double>::quiet_NaN(), "0"},
  };
  for (const auto& c : cases) EXPECT_EQ(NumberText(c.value), c.text);
}

TEST(NumberText, WritesFloatsWithSevenDigits) {
  const struct {
    float value;
    const char* text;
  } cases[] = {
      {0.1F, "0.1"},
      {127.5F, "127.5"},
      {1 / 3.0F, "0.3333333"},
      {9999999.F, "9999999"},
      {1e7F, "1E+07"},
      {16777216.F, "1.677722E+07"},
      {0.0001F, "0.0001"},
      {0.00001F, "1E-05"},
      {-0.0F, "0"},
      {3.4028235e38F, "3.402823E+38"},
  };
  for (const auto& c : cases) EXPECT_EQ(NumberText(c.value), c.text);
}

// What the C library rounds to `digits` digits, laid out without its help.
std::string ReferenceText(double value, int digits) {
  char text[40];
  std::snprintf(text, sizeof text, "%.*e", digits - 1, value);
  const int exponent = std::atoi(std::strchr(text, 'e') + 1);
  if (exponent < -4 || exponent >= digits) {
    std::string mantissa(text, std::strchr(text, 'e'));
    mantissa.erase(mantissa.find_last_not_of('0') + 1);
    if (mantissa.back() == '.') mantissa.pop_back();
    std::snprintf(text, sizeof text, "E%+03d", exponent);
    return mantissa + text;
  }
  std::snprintf(text, sizeof text, "%.*f", digits - 1 - exponent, value);
  std::string plain = text;
  if (plain.find('.') != std::string::npos) {
    plain.erase(plain.find_last_not_of('0') + 1);
    if (plain.back() == '.') plain.pop_back();
  }
  return plain == "-0" ? "0" : plain;
}

TEST(NumberText, AgreesWithTheLibraryOnNumbersOfAllSizes) {
  std::mt19937_64 random(2);
  std::uniform_real_distribution<double> exponent(-9, 18);
  for (int i = 0; i < 300'000; ++i) {
    double value = std::pow(10, exponent(random)) * (i % 2 == 0 ? 1 : -1);
    if (i % 3 == 0) value = HalfEvenRound(value, static_cast<int>(random() % 9));
    ASSERT_EQ(NumberText(value), ReferenceText(value, 15));
    const auto single = static_cast<float>(value);
    ASSERT_EQ(NumberText(single), ReferenceText(static_cast<double>(single), 7));
  }
}

// The road of the cells must give the bytes of the plain one, whatever the value.
TEST(WriteRounded, IsNumberTextOfTheRoundedValue) {
  std::mt19937_64 random(3);
  std::uniform_real_distribution<double> cell(-1, 256);
  std::uniform_real_distribution<double> exponent(-12, 20);
  const auto check = [](double value) {
    for (int places = 0; places <= 10; ++places) {
      char text[kNumberTextLimit];
      char* const end = WriteRounded(text, value, places);
      ASSERT_LE(end, text + sizeof text);
      ASSERT_EQ(std::string(text, end), ReferenceText(HalfEvenRound(value, places), 15))
          << value << " with places " << places;
    }
  };
  for (int i = 0; i < 40'000; ++i) {
    check(cell(random));
    check(static_cast<double>(i) / 100);  // every whole cell of two decimals
    check((2 * i + 1) / 16.0);            // ties
    check(std::pow(10, exponent(random)) * (i % 2 == 0 ? 1 : -1));
    check(std::bit_cast<double>(random() & 0x7FDFFFFFFFFFFFFF));
  }
  for (const double value : {0.0, -0.0, -0.001, 99999999.0, 1e8, 999999999999999.0, 1e15, kLargest,
                             0.0001, 0.00001, 5e-324}) {
    check(value);
  }
}

}  // namespace
}  // namespace ormel
