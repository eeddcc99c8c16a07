#include "mce/nonlinear/graph_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <span>

#include "support/temporary_folder.h"

namespace ormel {
namespace {

auto Everything(const WeightGraph& graph) {
  return std::tie(graph.samples, graph.points, graph.pointCount, graph.topValue, graph.bottomValue,
                  graph.type, graph.parameters);
}

constexpr char kDefaults[] =
    " 0* 255* 0* 0* 0* 255* 255* 0* 0* 255* .5* .2* 0* 255* .5* 0* 0* 255* 10* 0*";

// A custom graph of two points.
const std::string kText = std::string("* 2*") + kDefaults + " 1.25*-.5* 6*-.5* 1.25*";

WeightGraph Custom() {
  WeightGraph graph;
  graph.pointCount = 2;
  graph.Point(1) = -0.5;
  graph.Point(2) = 1.25;
  EXPECT_TRUE(computeCustom(graph, 1.25, -0.5));
  return graph;
}

std::string With(std::string text, std::string_view old, std::string_view by) {
  EXPECT_NE(text.find(old), std::string::npos) << old;
  return text.replace(text.find(old), old.size(), by);
}

class GraphText : public ::testing::Test {
 protected:
  // Whether a file of the text holds a graph, which `graph` becomes then.
  bool Reads(const std::string& text) {
    return ReadGraphFile(folder.Write("g.gri", text), graph).Value();
  }
  testing::TemporaryFolder folder;
  WeightGraph graph = Custom();
};

TEST_F(GraphText, GraphsAreOneLineOfNumbersWithABlankOrAMinusAndNoLeadingZero) {
  const std::pair<double, const char*> cases[] = {
      {0, " 0"},  {32, " 32"},       {0.5, " .5"},     {-0.5, "-.5"},     {-0.0, " 0"},
      {-7, "-7"}, {10.05, " 10.05"}, {1e20, " 1E+20"}, {-1e-7, "-1E-07"}, {100, " 100"}};
  for (const auto& [number, text] : cases) EXPECT_EQ(KeyedNumberText(number), text);
  std::string text = std::string("* 32*") + kDefaults + " 1* 1* 1*";
  for (int i = 1; i <= 32; ++i) text += " 1*";
  EXPECT_EQ(graphToText(WeightGraph()), text);
  EXPECT_EQ(graphToText(graph), kText);
  ASSERT_TRUE(computeExponential(graph, {"90", "-7.50", "ten", "1"}));
  EXPECT_EQ(graphToText(graph), With(With(kText, " 0* 255* 10* 0*", " 90*-7.5* 0* 1*"),
                                     " 1.25*-.5* 6*", "-7.5* 90* 5*"));
}

TEST_F(GraphText, FilesBringBackGraphsOfEveryType) {
  std::vector<WeightGraph> graphs = {Custom(), Custom()};
  graphs[1].pointCount = 500;
  for (int i = 1; i <= 500; ++i) graphs[1].Point(i) = i % 7 / 8.0;
  ASSERT_TRUE(computeCustom(graphs[1], 1, 0));
  for (int type = 1; type <= kCurveTypes; ++type) {
    const GraphParameters parameters = {"-2", "8.125", "0.3", "1"};
    ASSERT_TRUE(ComputeCurve(graphs.emplace_back(), static_cast<GraphType>(type), parameters));
  }
  for (const WeightGraph& written : graphs) {
    ASSERT_TRUE(WriteGraphFile(folder / "g.gri", written).Ok());
    EXPECT_EQ(testing::ReadText(folder / "g.gri"), graphToText(written) + "\r\n");
    WeightGraph read;
    ASSERT_TRUE(ReadGraphFile(folder / "g.gri", read).Value());
    EXPECT_EQ(read.samples, written.samples);
    EXPECT_EQ(graphToText(read), graphToText(written));
    // In model files the line is a field and has its "*" and its blank.
    WeightGraph field;
    ASSERT_TRUE(graphFromText(graphToText(written), field));
    EXPECT_EQ(Everything(field), Everything(read));
  }
}

TEST_F(GraphText, ReadsParametersAsNumbersAndPointsAboveTheCountAsNothing) {
  graph.Point(3) = 7;
  for (const char* end : {"", "\n", "\r", "\r\nmore\r\n", "behind the last field\r\n"}) {
    EXPECT_TRUE(Reads(kText + end)) << end;
    EXPECT_EQ(graphToText(graph), kText);
  }
  EXPECT_EQ(graph.Parameters(GraphType::kBell), (GraphParameters{"0", "255", "0.5", "0.2"}));
  EXPECT_EQ(graph.Parameters(GraphType::kLinear), (GraphParameters{"0", "255", "0", "0"}));
  EXPECT_EQ(graph.Parameters(GraphType::kExponential).back(), "0");  // was False
  for (int i = 3; i <= kMostGraphPoints; ++i) EXPECT_EQ(graph.Point(i), 0) << i;
  // A curve that cannot be computed keeps the samples.
  ASSERT_TRUE(graphFromText(With(With(kText, " .2*", " 0*"), " 6*", " 3*"), graph));
  EXPECT_EQ(graph.type, GraphType::kBell);
  EXPECT_EQ(graph.samples, Custom().samples);
}

TEST_F(GraphText, RefusedTextsLeaveTheGraph) {
  const std::string cases[] = {
      "",
      "*",
      "no graph at all",
      With(kText, "* 2*", "* 1*"),
      With(kText, "* 2*", "* 2.5*"),
      With(kText, "* 2*", "* 501*"),
      With(kText, "* 2*", "* 1E+300*"),
      With(kText, "* 2*", "* 3*"),  // one point too few
      With(kText, " 6*", " 0*"),
      With(kText, " 6*", " 7*"),
      With(kText, " 10* 0*", " 10* 2*"),
      With(kText, " 10* 0*", " 10* .5*"),
      With(kText, " 255*", ""),  // all that follows is one field off
  };
  ASSERT_TRUE(computeBell(graph, {"1", "2", "0.5", "0.2"}));
  const WeightGraph before = graph;
  for (const std::string& text : cases) {
    EXPECT_FALSE(graphFromText(text, graph) || Reads(text)) << text;
    EXPECT_EQ(Everything(graph), Everything(before)) << text;
  }
  for (std::size_t length = 0; length < kText.size(); ++length) {
    EXPECT_FALSE(Reads(kText.substr(0, length))) << length;
    EXPECT_EQ(Everything(graph), Everything(before)) << length;
  }
  EXPECT_NE(ReadGraphFile(folder / "none.gri", graph).Text().find("none.gri"), std::string::npos);
  EXPECT_TRUE(ReadGraphFile(folder.Path(), graph).Failed());
  // In a .gri file what stands for the blank of the count is passed over, be it a minus.
  const std::string minus = With(kText, "* 2*", "*-2*");
  EXPECT_FALSE(graphFromText(minus, graph));
  EXPECT_EQ(Everything(graph), Everything(before));
  EXPECT_TRUE(Reads(minus));
  EXPECT_EQ(graphToText(graph), kText);
}

bool AllFinite(std::span<const double> numbers) {
  return std::all_of(numbers.begin(), numbers.end(), [](double one) { return std::isfinite(one); });
}

TEST_F(GraphText, DamagedFilesGiveASoundGraphOrNone) {
  std::mt19937 random(1);
  static const std::string kTelling = "0123456789 .-+eED*,\r\n";
  const WeightGraph before = Custom();
  int taken = 0;
  for (int i = 0; i < 4000; ++i) {
    std::string text = kText + "\r\n";
    for (auto changes = 1 + random() % 4; changes > 0; --changes) {
      const char byte =
          random() % 2 == 0 ? kTelling[random() % kTelling.size()] : static_cast<char>(random());
      text[random() % text.size()] = byte;
    }
    graph = before;
    const bool read = Reads(text);
    taken += read ? 1 : 0;
    EXPECT_TRUE(read || Everything(graph) == Everything(before));
    EXPECT_TRUE(graph.samples.size() == 256 && AllFinite(graph.samples) && AllFinite(graph.points));
    EXPECT_TRUE(graph.pointCount >= 2 && graph.pointCount <= 500);
    EXPECT_TRUE(graph.type >= GraphType::kLinear && graph.type <= GraphType::kCustom);
    WeightGraph again;
    EXPECT_TRUE(graphFromText(graphToText(graph), again));
    EXPECT_EQ(graphToText(again), graphToText(graph));
    ASSERT_FALSE(HasFailure()) << ::testing::PrintToString(text);
  }
  EXPECT_TRUE(taken > 500 && taken < 3500) << taken;  // else nothing was tried
}

}  // namespace
}  // namespace ormel
