#include "text/numbers.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

namespace ormel {
namespace {

constexpr double kLargest = std::numeric_limits<double>::max();

TEST(TextToNumber, ReadsTheLongestNumberAtTheHead) {
  const std::string zeros(500, '0');
  const std::pair<double, std::vector<std::string>> cases[] = {
      {0, {"", "abc", ".", "-", "- 5", "--5", "nan", "inf", "0x10", "0e99999999999999999999"}},
      {0, {"1e-400", "1e-99999999999999999999", "0." + zeros + "1"}},  // too small for a double
      {kLargest, {"1e400", "1e99999999999999999999", "1.7976931348623159e308", "1" + zeros}},
      {kLargest, {"0." + zeros + "1e2000"}},
      {-kLargest, {"-1e400"}},
      {12.5, {"12.5"}},
      {-3, {" \t-3"}},
      {7, {"+7"}},
      {0.5, {".5"}},
      {5, {"5."}},
      {1.2, {"1.2.3"}},
      {1, {"1,5", "1-2", "0." + zeros + "1e501", "1" + zeros + "e-500"}},
      {12, {"12abc"}},
      {1000, {"1e3", "1E+3"}},
      {2.5, {"25d-1", "25D-1"}},
      {2, {"2e", "2e+", "2e 5", "2 e5"}},  // an exponent that is not complete is no part of it
      {1234567890123456789.0, {"1234567890123456789"}},
      {0.1234567890123456789, {"0.1234567890123456789"}},
      {4.9e-324, {"4.9e-324"}}};
  for (const auto& [value, texts] : cases) {
    for (const std::string& text : texts) EXPECT_EQ(TextToNumber(text), value) << text;
  }
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
  // 2.675 * 100 is 267.5 as a double, 1.005 * 100 is just below 100.5.
  const std::tuple<double, int, double> cases[] = {
      {0.5, 0, 0},     {1.5, 0, 2},      {2.5, 0, 2},        {-2.5, 0, -2},
      {126.5, 0, 126}, {0.125, 2, 0.12}, {0.375, 2, 0.38},   {2.675, 2, 2.68},
      {1.005, 2, 1},   {12.34, -1, 12},  {1e300, 22, 1e300}, {3, 400, 3}};
  for (const auto& [value, places, rounded] : cases) {
    EXPECT_EQ(HalfEvenRound(value, places), rounded) << value;
  }
}

// The texts of all values, each with a blank behind it.
template <class T>
std::string TextsOf(std::initializer_list<T> values) {
  std::string texts;
  for (const T value : values) texts += NumberText(value) + ' ';
  return texts;
}

TEST(NumberText, WritesDoublesWithFifteenDigitsAndFloatsWithSeven) {
  EXPECT_EQ(TextsOf<double>({0, -0.0, 255, -9999, 0.5, -0.25, 100, 123456.789}),
            "0 0 255 -9999 0.5 -0.25 100 123456.789 ");
  EXPECT_EQ(TextsOf({0.1 + 0.2, 1 / 3.0, 2 / 3.0}), "0.3 0.333333333333333 0.666666666666667 ");
  EXPECT_EQ(TextsOf<double>(
                {999999999999999, 1e15, 1234567890123456, 999999999999999.9, 1e100, kLargest}),
            "999999999999999 1E+15 1.23456789012346E+15 1E+15 1E+100 1.79769313486232E+308 ");
  EXPECT_EQ(TextsOf({0.0001, 0.00012345, 0.00001, -0.000015, 0.00009999999999999999}),
            "0.0001 0.00012345 1E-05 -1.5E-05 0.0001 ");
  EXPECT_EQ(TextsOf({4.9406564584124654e-324, std::numeric_limits<double>::infinity(),
                     std::numeric_limits<double>::quiet_NaN()}),
            "4.94065645841247E-324 1.79769313486232E+308 0 ");
  EXPECT_EQ(TextsOf({0.1F, 127.5F, 1 / 3.0F, 9999999.F, 1e7F, 16777216.F, -0.0F}),
            "0.1 127.5 0.3333333 9999999 1E+07 1.677722E+07 0 ");
  EXPECT_EQ(TextsOf({0.0001F, 0.00001F, 3.4028235e38F}), "0.0001 1E-05 3.402823E+38 ");
}

// The same by the C library.
std::string ReferenceText(double value, int digits) {
  char text[40];
  std::snprintf(text, sizeof text, "%.*G", digits, value);
  return std::string(text) == "-0" ? "0" : text;
}

// The road of the cells must give the bytes of the plain one, whatever the value.
TEST(NumberText, AndWriteRoundedAgreeWithTheLibraryOnNumbersOfAllSizes) {
  std::mt19937_64 random(3);
  std::uniform_real_distribution<double> cell(-1, 256);
  std::uniform_real_distribution<double> exponent(-12, 20);
  const auto check = [](double value) {
    ASSERT_EQ(NumberText(value), ReferenceText(value, 15));
    if (const auto single = static_cast<float>(value); std::isfinite(single)) {
      ASSERT_EQ(NumberText(single), ReferenceText(static_cast<double>(single), 7));
    }
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
    const double any = std::pow(10, exponent(random)) * (i % 2 == 0 ? 1 : -1);
    check(i % 3 == 0 ? HalfEvenRound(any, static_cast<int>(random() % 9)) : any);
    check(std::bit_cast<double>(random() & 0x7FDFFFFFFFFFFFFF));
  }
  for (const double value : {0.0, -0.0, -0.001, 99999999.0, 1e8, 999999999999999.0, 1e15, kLargest,
                             0.0001, 0.00001, 5e-324}) {
    check(value);
  }
}

}  // namespace
}  // namespace ormel
