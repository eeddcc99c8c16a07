#include "mce/nonlinear/graph_presets.h"

#include <gtest/gtest.h>

namespace ormel {
namespace {

// Slots 1 and 2 of a preset that was given the levels 2 and 9.50, 9.50 and 2, or 5 and 5; its slots
// 3 and 4 when these were -10 and 0.2; and the weight of value 64 when the levels are 0 and 100.
using Levels = std::pair<const char*, const char*>;
struct Case {
  const char* name;
  Levels rising, falling, equal;
  const char* slot3;  // null: what slot 1 has become
  const char* slot4;
  double quarter;
};

const Case kCases[] = {
    {"imgLinUp", {"2", "9.50"}, {"2", "9.50"}, {"5", "6"}, "-10", "0.2", 25.098},
    {"imgLinDown", {"9.50", "2"}, {"9.50", "2"}, {"6", "5"}, "-10", "0.2", 74.902},
    {"imgLinFlat", {"2", "2"}, {"9.50", "9.50"}, {"5", "5"}, "-10", "0.2", 0},
    {"imgTriUp", {"2", "9.50"}, {"2", "9.50"}, {"5", "6"}, nullptr, "0.2", 50.1961},
    {"imgTriDown", {"9.50", "2"}, {"9.50", "2"}, {"5", "4"}, nullptr, "0.2", 49.8039},
    {"imgBellNormal", {"2", "9.50"}, {"2", "9.50"}, {"5", "6"}, "0.5", "0.2", 43.5855},
    {"imgBellInvert", {"9.50", "2"}, {"9.50", "2"}, {"5", "4"}, "0.5", "0.2", 56.4145},
    {"imgSine1", {"2", "9.50"}, {"2", "9.50"}, {"5", "6"}, "0.5", "1.570796325", 0.000948632},
    {"imgSine2", {"2", "9.50"}, {"2", "9.50"}, {"5", "6"}, "0.5", "4.712388975", 99.9991},
    {"imgSine3", {"2", "9.50"}, {"2", "9.50"}, {"5", "6"}, "0.5", "0", 49.692},
    {"imgSine4", {"2", "9.50"}, {"2", "9.50"}, {"5", "6"}, "0.5", "3.14159265", 50.308},
    {"imgExpGrow", {"2", "9.50"}, {"2", "9.50"}, {"5", "6"}, "10", "0", 8.6922},
    {"imgExpLevel", {"2", "9.50"}, {"2", "9.50"}, {"5", "6"}, "10", "1", 48.7696},
    {"imgExpDrop", {"9.50", "2"}, {"9.50", "2"}, {"5", "4"}, "10", "0", 91.3078},
    {"imgExpDecay", {"9.50", "2"}, {"9.50", "2"}, {"5", "4"}, "10", "1", 51.2304},
};

GraphParameters Applied(const GraphPreset& preset, const char* first, const char* second) {
  GraphParameters parameters = {first, second, "-10", "0.2"};
  ApplyPreset(preset, parameters);
  return parameters;
}

TEST(GraphPresets, PutTheLevelsInOrderAndMakeTheirShape) {
  ASSERT_EQ(GraphPresets().size(), std::size(kCases));
  for (std::size_t i = 0; i < std::size(kCases); ++i) {
    const Case& test = kCases[i];
    const GraphPreset& preset = GraphPresets()[i];
    SCOPED_TRACE(test.name);
    EXPECT_STREQ(preset.name, test.name);
    const auto wanted = [&](const Levels& levels) -> GraphParameters {
      const auto& [first, second] = levels;
      return {first, second, test.slot3 == nullptr ? first : test.slot3, test.slot4};
    };
    EXPECT_EQ(Applied(preset, "2", "9.50"), wanted(test.rising));
    EXPECT_EQ(Applied(preset, "9.50", "2"), wanted(test.falling));
    EXPECT_EQ(Applied(preset, "5", "5"), wanted(test.equal));
    WeightGraph graph;
    ASSERT_TRUE(ComputeCurve(graph, preset.type, Applied(preset, "0", "100")));
    EXPECT_NEAR(lookup(graph, 64), test.quarter, 1e-4);
  }
  // Levels are compared as numbers.
  const GraphPreset& rising = GraphPresets()[0];
  EXPECT_EQ(Applied(rising, "10", "9")[0], "9");
  EXPECT_EQ(Applied(rising, "0.5", ".50")[1], "1.5");
  EXPECT_EQ(Applied(rising, "", "0")[1], "1");
}

}  // namespace
}  // namespace ormel
