#include "mce/composite_map.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "support/model_folder.h"

namespace ormel {
namespace {

using testing::Cells;
using testing::Good;
using testing::ModelFolder;

struct Factor {
  Cells cells;
  int weight = 1;
  Good good = Good::kHigh;
  std::optional<double> nodata{};
};

struct Case {
  const char* why;
  std::vector<Factor> factors;
  std::vector<Cells> constraints;
  int decimalPlaces;
  const char* rows;
};

const Case kCases[] = {
    {"sums 0, 30, 60", {{{{0, 10, 20}}, 3}}, {}, 2, " 0 127.5 255\r\n"},
    {"sums 765, 735, 705", {{{{0, 10, 20}}, 3, Good::kLow}}, {}, 2, " 255 127.5 0\r\n"},
    {"ties go to the even number", {{{{0, 126.5, 127.5, 255}}}}, {}, 0, " 0 126 128 255\r\n"},
    {"255 * 100 / 300 has no end", {{{{0, 10, 30}}}}, {}, 9, " 0 85 255\r\n"},
    {"255 * 1 / 7", {{{{0, 1, 7}}}}, {}, 4, " 0 36.4286 255\r\n"},
    {"flat", {{{{7, 7}, {7, 7}}, 2}}, {}, 2, " 0 0\r\n 0 0\r\n"},
    {"all masked", {{{{1, 2}}}}, {{{0, 0}}}, 2, " 0 0\r\n"},
    {"NODATA adds 255 times the weight where low values are good: sums 255, 155, 55",
     {{{{-9999, 100, 200}}, 1, Good::kLow, -9999}},
     {},
     2,
     " 255 127.5 0\r\n"},
    {"NODATA adds nothing where high values are good",
     {{{{-9999, 100, 200}}, 1, Good::kHigh, -9999}},
     {},
     2,
     " 0 127.5 255\r\n"},
    {"a NODATA inside the range is no value",
     {{{{255, 100, 200}}, 1, Good::kHigh, 255}},
     {},
     2,
     " 0 127.5 255\r\n"},
    {"values outside the range count as 0", {{{{300, -1, 50, 100}}}}, {}, 2, " 0 0 127.5 255\r\n"},
    {"the masked 255 takes no part in the scale",
     {{{{0, 255, 20, 10}}}},
     {{{1, 0, 1, 1}}},
     2,
     " 0 0 255 127.5\r\n"},
    {"a cell needs every constraint",
     {{{{0, 10, 20, 10}}}},
     {{{1, 1, 1, 0}}, {{1, 0, 1, 1}}},
     2,
     " 0 0 255 0\r\n"},
    {"with a negative weight the largest partial sum (200) stays the top: sums 0, 100, 100",
     {{{{0, 100, 200}}, 1}, {{{0, 0, 100}}, -1}},
     {},
     2,
     " 0 127.5 127.5\r\n"},
    {"no division by the weights: 2*10+3*20 = 80, 2*20+3*0 = 40, 0",
     {{{{10, 20, 0}}, 2}, {{{20, 0, 0}}, 3}},
     {},
     2,
     " 255 127.5 0\r\n"},
    {"weight 0", {{{{10, 20}}, 0}}, {}, 2, " 0 0\r\n"},
};

TEST(CompositeMap, ScalesTheWeightedSumUnderTheMask) {
  for (const Case& test : kCases) {
    ModelFolder folder;
    for (const Factor& factor : test.factors) {
      folder.AddFactor(factor.cells, factor.weight, factor.good, factor.nodata);
    }
    for (const Cells& constraint : test.constraints) folder.AddConstraint(constraint);
    EXPECT_EQ(folder.Rows(test.decimalPlaces), test.rows) << test.why;
  }
}

TEST(CompositeMap, SumsAreKeptInSinglePrecisionAfterEachFactor) {
  // 32767 * 254.99 = 8355257.33 is kept as 8355257.5 (steps of a half), to which 0.01 adds nothing;
  // in double precision the last cell would be the largest.
  ModelFolder folder;
  folder.AddFactor({{0, 254.99, 254.99}}, 32767);
  folder.AddFactor({{0, 0.01, 0}}, 1);
  const CompositeMap map = folder.Accumulate();
  std::vector<double> values(3);
  map.ScaledRow(1, map.ScaleLimits(), values);
  EXPECT_EQ(values[1], values[2]);
  EXPECT_EQ(map.ScaleLimits().max, 8355257.5 + 0.01);  // the extremes are taken before the store
}

TEST(CompositeMap, OnlyTheLastAllowedCellOfTheLastFactorWarns) {
  struct {
    const char* why;
    Cells last;
    std::optional<double> nodata;
    Cells constraint;
    bool warns;
  } cases[] = {
      {"the last cell", {{0, 300}}, {}, {{1, 1}}, true},
      {"another cell", {{300, 0}}, {}, {{1, 1}}, false},
      {"the last allowed cell", {{300, 0}}, {}, {{1, 0}}, true},
      {"NODATA is no fault", {{0, -9999}}, -9999, {{1, 1}}, false},
      {"no allowed cell: the flag of the first factor stays", {{0, 300}}, {}, {{0, 0}}, false},
  };
  for (const auto& test : cases) {
    ModelFolder folder;
    folder.AddFactor({{0, 300}}, 1);
    folder.AddFactor(test.last, 1, Good::kHigh, test.nodata);
    folder.AddConstraint(test.constraint);
    EXPECT_EQ(folder.Accumulate().OutOfRange(), test.warns) << test.why;
  }
}

constexpr char kHeader[] = "c 2\r\nr 2\r\nx 100.5\r\ny 200\r\ns 30\r\n";

TEST(CompositeMap, ReadsCellsHoweverTheyAreLaidOut) {
  const struct {
    const char* why;
    std::string text;
    const char* rows;
  } cases[] = {
      {"commas", std::string(kHeader) + "0,10\r\n20 , 10\r\n", " 0 127.5\r\n 255 127.5\r\n"},
      {"one line", std::string(kHeader) + " 0 10 20 10", " 0 127.5\r\n 255 127.5\r\n"},
      {"more cells than the header says", std::string(kHeader) + " 0 10 20 10 99 99\r\n 99",
       " 0 127.5\r\n 255 127.5\r\n"},
      {"CR alone", "c 2\rr 2\rx 100.5\ry 200\rs 30\r 0 10\r 20 10\r", " 0 127.5\r\n 255 127.5\r\n"},
      {"LF alone", "c 2\nr 2\nx 100.5\ny 200\ns 30\n0 10\n20 10\n", " 0 127.5\r\n 255 127.5\r\n"},
      {"a word is worth 0 and takes its line", std::string(kHeader) + "20 abc 7\r\n10 10\r\n",
       " 255 0\r\n 127.5 127.5\r\n"},
      {"it ends early: the missing cell adds nothing, so that its 0 lies below the scale",
       std::string(kHeader) + " 10 20 30", " 0 127.5\r\n 255 -127.5\r\n"},
  };
  for (const auto& test : cases) {
    ModelFolder folder;
    folder.AddFactorText(test.text, 1);
    EXPECT_EQ(folder.Rows(), test.rows) << test.why;
  }
}

TEST(CompositeMap, SaysWhatAFileDidNotHold) {
  ModelFolder folder;
  folder.AddFactorText(std::string(kHeader) + " 10 20 30", 1);
  folder.AddFactor({{1, 2}, {3, 4}}, 1);
  std::filesystem::remove(folder.Path("f2.asc"));
  NoProgress quiet;
  CompositeMap map = std::move(CompositeMap::Begin(folder.model).Value());
  EXPECT_EQ(map.AccumulateFactor(folder.model, 1, {}, quiet).Value(),
            folder.Path("f1.asc") + ": ends in row 2 of 2");
  EXPECT_NE(map.AccumulateFactor(folder.model, 2, {}, quiet).Value().find(folder.Path("f2.asc")),
            std::string::npos);
  EXPECT_EQ(map.ScaleLimits().min, 0);  // the last factor had no cell
  EXPECT_EQ(map.ScaleLimits().max, 30);
}

TEST(CompositeMap, RefusesSizesThatNoMapHas) {
  for (const std::string size : {"0", "-5", "40000", "1e9", "abc", "", "99999999999999999999"}) {
    for (const bool columns : {true, false}) {
      ModelFolder folder;
      folder.AddFactorText("ncols " + (columns ? size : "2") + "\r\nnrows " +
                               (columns ? "2" : size) + "\r\nx 0\r\ny 0\r\ns 1\r\n 1 2\r\n 3 4\r\n",
                           1);
      const Outcome<CompositeMap> map = CompositeMap::Begin(folder.model);
      ASSERT_TRUE(map.Failed()) << size;
      EXPECT_NE(map.Text().find("f1.asc: the header gives \"" + size + "\""), std::string::npos)
          << map.Text();
    }
  }
}

TEST(CompositeMap, DoesNotBelieveWhatAFileCannotHold) {
  const struct {
    const char* header;
    const char* fault;
  } cases[] = {
      {"c 30000\r\nr 30000\r\n", "f1.asc: is too short for 30000 columns and 30000 rows"},
      {"c \xFF\x01"
       "abcdefghijklmnopqrstuvwxyz\r\nr 1\r\n",
       "f1.asc: the header gives \"??abcdefghijklmnopqr...\" columns; a map has 1 to 32767"},
  };
  for (const auto& test : cases) {
    ModelFolder folder;
    folder.AddFactorText(std::string(test.header) + "x 0\r\ny 0\r\ns 1\r\n 1 2 3\r\n", 1);
    const std::string fault = CompositeMap::Begin(folder.model).Text();
    EXPECT_NE(fault.find(test.fault), std::string::npos) << fault;
  }
  ModelFolder folder;
  folder.model.factors.push_back({"/dev/", "zero", 1, true});
  EXPECT_EQ(CompositeMap::Begin(folder.model).Text(), "/dev/zero: is no plain file");
}

TEST(CompositeMap, UnusableConstraintsAllowEverything) {
  ModelFolder folder;
  folder.AddFactor({{0, 10, 20}}, 1);
  folder.AddConstraint({{0, 1, 1, 1}});  // one column too many
  const CompositeMap map = folder.Accumulate();
  EXPECT_FALSE(map.MaskFailure().empty());
  EXPECT_EQ(folder.Rows(), " 0 127.5 255\r\n");
}

// Bytes that change what a map's text means.
char OddByte(std::mt19937& random) { return "0 9-.,\r\n\"e\t\0x\xFF"[random() % 14]; }

TEST(CompositeMap, AnyBytesInAFileGiveAMapOrAFailure) {
  const std::string whole = ModelFolder::MapText({{0, 1, 12.5}, {255, 1, 0}, {1, 0, 7}}, -9999);
  // Digits in the size would only make large maps, so the header's first lines stay.
  const std::size_t firstByte = whole.find("xll");
  std::mt19937 random(2);
  for (int round = 0; round < 1500; ++round) {
    std::string text = whole;
    if (random() % 2 == 0) text.resize(firstByte + random() % (text.size() - firstByte));
    for (auto changes = random() % 6; changes > 0 && text.size() > firstByte; --changes) {
      text[firstByte + random() % (text.size() - firstByte)] = OddByte(random);
    }
    ModelFolder folder;
    folder.AddFactorText(round % 2 == 0 ? text : whole, 2, Good::kLow);
    folder.AddFactorText(text, -1);
    folder.model.constraints.push_back(folder.Folder().Write("c.asc", text).string());
    const CompositeMap map = folder.Accumulate();
    std::vector<double> values(3);
    for (int row = 1; row <= 3; ++row) {
      map.ScaledRow(row, map.ScaleLimits(), values);
      for (const double value : values) ASSERT_TRUE(std::isfinite(value)) << text;
    }
  }
}

}  // namespace
}  // namespace ormel
