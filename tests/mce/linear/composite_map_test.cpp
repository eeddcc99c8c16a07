#include "mce/composite_map.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "support/model_folder.h"

namespace ormel {
namespace {

using testing::Cells;
using testing::ModelFolder;
using enum testing::Good;

struct Factor {
  Cells cells;
  int weight = 1;
  testing::Good good = kHigh;
  std::optional<double> nodata{};
};

const struct {
  const char* why;
  std::vector<Factor> factors;
  std::vector<Cells> constraints;
  const char* rows;
  int decimalPlaces = 2;
} kCases[] = {
    {"sums 0, 30, 60", {{{{0, 10, 20}}, 3}}, {}, " 0 127.5 255\r\n"},
    {"sums 765, 735, 705", {{{{0, 10, 20}}, 3, kLow}}, {}, " 255 127.5 0\r\n"},
    {"ties go to the even number", {{{{0, 126.5, 127.5, 255}}}}, {}, " 0 126 128 255\r\n", 0},
    {"255 * 100 / 300 has no end", {{{{0, 10, 30}}}}, {}, " 0 85 255\r\n", 9},
    {"255 * 1 / 7", {{{{0, 1, 7}}}}, {}, " 0 36.4286 255\r\n", 4},
    {"flat", {{{{7, 7}, {7, 7}}, 2}}, {}, " 0 0\r\n 0 0\r\n"},
    {"all masked", {{{{1, 2}}}}, {{{0, 0}}}, " 0 0\r\n"},
    {"weight 0", {{{{10, 20}}, 0}}, {}, " 0 0\r\n"},
    {"low NODATA: 255, 155, 55", {{{{-9, 100, 200}}, 1, kLow, -9}}, {}, " 255 127.5 0\r\n"},
    {"high NODATA adds nothing", {{{{-9, 100, 200}}, 1, kHigh, -9}}, {}, " 0 127.5 255\r\n"},
    {"even within the range", {{{{255, 100, 200}}, 1, kHigh, 255}}, {}, " 0 127.5 255\r\n"},
    {"outside the range: 0", {{{{300, -1, 50, 100}}}}, {}, " 0 0 127.5 255\r\n"},
    {"a masked 255 sets no limit", {{{{0, 255, 20}}}}, {{{1, 0, 1}}}, " 0 0 255\r\n"},
    {"both masks count", {{{{0, 9, 5, 7}}}}, {{{1, 1, 0, 1}}, {{1, 1, 1, 0}}}, " 0 255 0 0\r\n"},
    {"with a negative weight the largest partial sum (200) stays the top: sums 0, 100, 100",
     {{{{0, 100, 200}}, 1}, {{{0, 0, 100}}, -1}},
     {},
     " 0 127.5 127.5\r\n"},
    {"no division by the weights: 2*10+3*20 = 80, 2*20+3*0 = 40, 0",
     {{{{10, 20, 0}}, 2}, {{{20, 0, 0}}, 3}},
     {},
     " 255 127.5 0\r\n"},
};

TEST(CompositeMap, ScalesTheWeightedSumUnderTheMask) {
  for (const auto& test : kCases) {
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
  map.ScaledRow(1, map.Limits(), values);
  EXPECT_EQ(values[1], values[2]);
  EXPECT_EQ(map.Limits().max, 8355257.5 + 0.01);  // the extremes are taken before the store
}

TEST(CompositeMap, OnlyTheLastAllowedCellOfTheLastFactorWarns) {
  const struct {
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
    folder.AddFactor(test.last, 1, kHigh, test.nodata);
    folder.AddConstraint(test.constraint);
    EXPECT_EQ(folder.Accumulate().OutOfRange(), test.warns) << test.why;
  }
}

const std::string kHeader = "c 2\r\nr 2\r\nx 100.5\r\ny 200\r\ns 30\r\n";

TEST(CompositeMap, TakesWhatFilesHoldAndSaysWhatTheyDoNot) {
  const std::pair<std::string, const char*> cases[] = {
      {"0,10\r\n20 , 10 99 99\r\n 99", " 0 127.5\r\n 255 127.5\r\n"},  // more than the header says
      {"20 abc 7\r\n10 10\r\n", " 255 0\r\n 127.5 127.5\r\n"},  // a word is 0 and takes its line
      {" 10 20 30", " 0 127.5\r\n 255 -127.5\r\n"},  // the missing cell adds nothing: 0 is too low
  };
  for (const auto& [cells, rows] : cases) {
    ModelFolder folder;
    folder.AddFactorText(kHeader + cells, 1);
    EXPECT_EQ(folder.Rows(), rows) << cells;
  }
  ModelFolder folder;
  folder.AddFactorText(kHeader + " 10 20 30", 1);
  folder.AddFactor({{1, 2}, {3, 4}}, 1);
  std::filesystem::remove(folder.Path("f2.asc"));
  NoProgress quiet;
  CompositeMap map = std::move(CompositeMap::Begin(folder.model).Value());
  EXPECT_EQ(map.AccumulateFactor(folder.model, 1, {}, quiet).Value(),
            folder.Path("f1.asc") + ": ends in row 2 of 2");
  EXPECT_NE(map.AccumulateFactor(folder.model, 2, {}, quiet).Value().find(folder.Path("f2.asc")),
            std::string::npos);
  EXPECT_EQ(map.Limits().min, 0);  // the last factor had no cell
  EXPECT_EQ(map.Limits().max, 30);
}

TEST(CompositeMap, RefusesSizesThatNoMapHas) {
  const auto fault = [](const std::string& columns, const std::string& rows) {
    ModelFolder folder;
    folder.AddFactorText("c " + columns + "\r\nr " + rows + "\r\nx 0\r\ny 0\r\ns 1\r\n 1 2 3\r\n",
                         1);
    const std::string text = CompositeMap::Begin(folder.model).Text();
    return text.substr(std::min(text.size(), folder.Folder().Path().string().size() + 1));
  };
  for (const std::string size : {"0", "-5", "40000", "1e9", "abc", "", "99999999999999999999"}) {
    const std::string start = "f1.asc: the header gives \"" + size + "\" ";
    EXPECT_EQ(fault(size, "2"), start + "columns; a map has 1 to 32767");
    EXPECT_EQ(fault("2", size), start + "rows; a map has 1 to 32767");
  }
  EXPECT_EQ(fault("30000", "30000"), "f1.asc: is too short for 30000 columns and 30000 rows");
  EXPECT_EQ(fault("\xFF\x01" + std::string("abcdefghijklmnopqrstuvwxyz"), "1"),
            "f1.asc: the header gives \"??abcdefghijklmnopqr...\" columns; a map has 1 to 32767");
  ModelFolder folder;
  folder.model.factors.push_back({{"/dev/", "zero"}, 1, true});
  EXPECT_EQ(CompositeMap::Begin(folder.model).Text(), "/dev/zero: is no plain file");
}

TEST(CompositeMap, UnusableConstraintsAllowEverything) {
  ModelFolder folder;
  folder.AddFactor({{0, 10, 20}}, 1);
  folder.AddConstraint({{0, 1, 1, 1}});  // one column too many
  EXPECT_FALSE(folder.Accumulate().MaskFailure().empty());
  EXPECT_EQ(folder.Rows(), " 0 127.5 255\r\n");
}

TEST(CompositeMap, AnyBytesInAFileGiveAMapOrAFailure) {
  const std::string whole = ModelFolder::MapText({{0, 1, 12.5}, {255, 1, 0}, {1, 0, 7}}, -9999);
  // Digits in the size would only make large maps, so the header's first lines stay.
  const std::size_t firstByte = whole.find("xll");
  std::mt19937 random(2);
  for (int round = 0; round < 1500; ++round) {
    std::string text = whole;
    if (random() % 2 == 0) text.resize(firstByte + random() % (text.size() - firstByte));
    for (auto changes = random() % 6; changes > 0 && text.size() > firstByte; --changes) {
      text[firstByte + random() % (text.size() - firstByte)] =
          "0 9-.,\r\n\"e\t\0x\xFF"[random() % 14];  // bytes that change what a map means
    }
    ModelFolder folder;
    folder.AddFactorText(round % 2 == 0 ? text : whole, 2, kLow);
    folder.AddFactorText(text, -1);
    folder.model.constraints.push_back(folder.Folder().Write("c.asc", text).string());
    const CompositeMap map = folder.Accumulate();
    std::vector<double> values(3);
    for (int row = 1; row <= 3; ++row) {
      map.ScaledRow(row, map.Limits(), values);
      for (const double value : values) ASSERT_TRUE(std::isfinite(value)) << text;
    }
  }
}

}  // namespace
}  // namespace ormel
