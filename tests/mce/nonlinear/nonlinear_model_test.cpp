// Figures of maps: by hand, and again by a reckoning apart from this program.
#include "mce/nonlinear/nonlinear_model.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>

#include "mapdata/palette.h"
#include "mce/model_session.h"
#include "mce/nonlinear/graph_rows_window.h"
#include "mce/nonlinear/graph_text.h"
#include "mce/nonlinear/nonlinear_builder_window.h"
#include "mce/nonlinear/nonlinear_map_window.h"
#include "mce/runnable_model.h"
#include "support/model_folder.h"
#include "ui/headless/headless_desktop.h"

namespace ormel {
namespace {

using testing::Cells;

WeightGraph Line(const char* initial, const char* final) {
  WeightGraph graph;
  EXPECT_TRUE(computeLinear(graph, {initial, final}));
  return graph;
}
WeightGraph Bent(const char* start, const char* vertex, const char* end) {
  WeightGraph graph;
  EXPECT_TRUE(computeBentLine(graph, {start, vertex, end}));
  return graph;
}
// Every value weighs itself; falling: 255 less its value; raised: 10 more.
const WeightGraph kItself = Line("0", "255");
const WeightGraph kFalling = Line("255", "0");
const WeightGraph kRaised = Line("10", "265");
const WeightGraph kFlat;

struct TestFactor {
  Cells cells;
  WeightGraph graph = kItself;
  std::optional<double> nodata{};
};

class GraphFolder : public testing::MapFolder<NonlinearModel> {
 public:
  explicit GraphFolder(const std::vector<TestFactor>& factors,
                       const std::vector<Cells>& constraints = {}) {
    for (const TestFactor& factor : factors) {
      model.factors.push_back(
          {WriteFactor(MapText(factor.cells, factor.nodata)), {kBlack, factor.graph}});
    }
    for (const Cells& constraint : constraints) AddConstraint(constraint);
  }
};

const struct {
  const char* why;
  std::vector<TestFactor> factors;
  const char* rows;
  std::vector<Cells> constraints{};
} kCases[] = {
    {"one blank behind each value", {{{{0, 85}, {170, 255}}}}, "0 85 \r\n170 255 \r\n"},
    {"values that weigh themselves are stretched", {{{{20, 30, 40}}}}, "0 127.5 255 \r\n"},
    {"NODATA weighs what 0 weighs: 255, 255, 100, 0",
     {{{{-9999, 0, 155, 255}}, kFalling, -9999}},
     "255 255 100 0 \r\n"},
    {"NODATA within the range: 10, 10, 210", {{{{100, 0, 200}}, kRaised, 100}}, "0 0 255 \r\n"},
    {"without a NODATA line -9999 lies outside the range",
     {{{{-9999, 300, 0, 255}}, kFalling}},
     "255 255 255 0 \r\n"},
    // The sums are 10, 20, 40 + 100 and 30 + 0, of which only the last two count for the lowest.
    {"where 0 is NODATA, cells of 0 and outside the range add nothing and set no limit",
     {{{{10, 20, 40, 30}}}, {{{0, -5, 155, 255}}, kFalling, 0}},
     "-46.36 -23.18 255 0 \r\n"},
    {"without any value in the last factor the lowest sum is 0",
     {{{{10, 20}}}, {{{0, 0}}, kFalling, 0}},
     "127.5 255 \r\n"},
    {"the largest partial sum, 200, stays the top when a graph goes below 0: sums 0, 100, 100",
     {{{{0, 100, 200}}}, {{{0, 0, 100}}, Line("0", "-255")}},
     "0 127.5 127.5 \r\n"},
    {"two flat graphs: each sum is 2", {{{{1, 2}}, kFlat}, {{{3, 4}}, kFlat}}, "0 0 \r\n"},
    {"equal sums that no float can hold", {{{{1, 2}}, Line("0.1", "0.1")}}, "0 0 \r\n"},
    {"all masked", {{{{1, 2}}}}, "0 0 \r\n", {{{0, 0}}}},
    {"127.5 weighs 254, the mean of 254 at 127 and at 128; 64 weighs 128",
     {{{{0, 127.5, 64}}, Bent("0", "255", "0")}},
     "0 255 128.5 \r\n"},
    {"between the samples at the ends", {{{{0, 0.25, 254.5, 255}}}}, "0 0.25 254.5 255 \r\n"},
    {"16777217 is kept as 16777216 and 16777471 as 16777472, the limits are taken before",
     {{{{0, 0, 0}}, Line("16777217", "16777217")}, {{{0, 1, 255}}}},
     "0 0 256 \r\n"},
};

TEST(NonlinearModel, ScalesTheSumOfTheWeightsUnderTheMask) {
  for (const auto& test : kCases) {
    EXPECT_EQ(GraphFolder(test.factors, test.constraints).Rows(), test.rows) << test.why;
  }
}

TEST(NonlinearModel, InformationFileTellsGraphsAndConstraints) {
  NonlinearModel model;
  model.title = "Winter, by curves";
  model.factors.push_back({{"maps/", "soil.asc"}, {kBlack, Line("5", "-.50")}});
  std::tm when{};
  strptime("2026-01-31 13:00", "%Y-%m-%d %H:%M", &when);
  const std::string start =
      "Winter, by curves\r\nCreated on 1/31/2026 at 1:00:00 PM\r\n\r\n"
      "Factor: soil.asc       ";  // 7 blanks behind the longest name
  const std::string line = describeGraph(model.factors[0].graph) + "\r\n\r\n\r\n";
  EXPECT_EQ(InfoFileText(model, when), start + line + "No Constraints Used\r\n");
  model.factors.push_back({{"maps/", "végétation.asc"}, {kBlack, kFlat}});
  model.constraints = {"maps/roads.asc", "/data/parks.asc"};
  EXPECT_EQ(InfoFileText(model, when),
            start + "      " + line + "Factor: végétation.asc       " + describeGraph(kFlat) +
                "\r\n\r\n\r\nConstraints:\r\n    maps/roads.asc\r\n    /data/parks.asc\r\n");
}

TEST(NonlinearModel, FieldsThatAreDamagedLeaveWhatIsThere) {
  const std::string good = graphToText(kFalling);
  const struct {
    const char* colour;
    std::string graph;
    Colour taken;
    bool takesGraph;
  } cases[] = {
      {"255", good, 255, true}, {" 16777215", good, 16777215, true},
      {"-1", good, 77, true},   {"16777216", good, 77, true},
      {"red", good, 77, true},  {"", good, 77, true},
      {"255", "*", 255, false}, {"255", good.substr(0, good.size() - 1), 255, false},
  };
  for (const auto& test : cases) {
    GraphWeight weight{77, kRaised};
    TakeFields({test.colour, test.graph}, weight);
    EXPECT_EQ(weight.colour, test.taken) << test.colour;
    EXPECT_EQ(weight.graph.samples, (test.takesGraph ? kFalling : kRaised).samples) << test.graph;
  }
}

// Without its whole graph the first factor weighs values by themselves, as in a cleared form, and a
// later one weighs all alike.
TEST(NonlinearModel, CutModelFilesGiveWholeGraphsOrThoseOfNewFactors) {
  const std::string graph = FieldsOf({255, kFalling})[1];
  const std::string whole = "FRD$maps#FF$*.asc#FAC$maps/a.asc#255#" + graph +
                            "#FAC$maps/b.asc#255#" + graph + "#CST$maps/c.asc#TITLE$t#";
  const std::size_t graphEnds[] = {whole.find(graph) + graph.size(),
                                   whole.rfind(graph) + graph.size()};
  const WeightGraph* const news[] = {&kItself, &kFlat};
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    const NonlinearModel model = NonlinearModelOf(ParseModelText(whole.substr(0, length)));
    ASSERT_LE(model.factors.size(), 2U);
    for (std::size_t i = 0; i < model.factors.size(); ++i) {
      const WeightGraph& expected = length >= graphEnds[i] ? kFalling : *news[i];
      EXPECT_EQ(model.factors[i].graph.samples, expected.samples) << length;
    }
  }
}

TEST(NonlinearModel, ModelsThatAreRunLeaveOutRowsWithoutAFile) {
  const GraphFolder folder({{{{1, 2}}}, {{{1, 2, 3}}}});
  const ModelKind kinds[] = {KindOf<NonlinearModelOf>(".cmf")};
  const auto read = [&](const std::string& path) {
    const std::string fields = "#0#" + graphToText(kFalling) + "#";
    return ReadRunnable(folder.Folder().Write("m.cmf", "FAC$" + fields + "FAC$" +
                                                           folder.Path("f1.asc") + fields + path),
                        kinds);
  };
  EXPECT_EQ(read("").Value()->FactorCount(), 1);
  EXPECT_EQ(read("").Value()->WeightedValue(1, 100, -9999), lookup(kFalling, 100));
  EXPECT_EQ(read("CST$" + folder.Path("f2.asc")).Text(),
            "The following parameters in f2 were not the same as the rest of the data: number of "
            "columns.");
}

// ---- What is shown ------------------------------------------------------------------------------

class NonlinearWindows : public ::testing::Test {
 protected:
  NonlinearWindows() {
    settings.defaultPalette = std::string(ORMEL_SOURCE_DIR) + "/assets/palettes/default.ptf";
    settings.constraintColor = kForbidden;
  }
  std::vector<std::string> Messages() {
    std::vector<std::string> messages;
    while (auto message = desktop.TakeMessage()) messages.push_back(*message);
    return messages;
  }

  static constexpr Colour kForbidden = Rgb(1, 2, 3);
  std::ostringstream log;
  ui::HeadlessDesktop desktop{log};
  Settings settings;
  ModelSession session;
  AppContext app{desktop, settings, session};
  NoProgress quiet;
};

TEST_F(NonlinearWindows, TellOfSingleWeightsAndOnceOfValuesOutsideTheRange) {
  const std::string outside =
      "Some of the Data Had Values Outside of the Acceptable 0-255 Range. These values were "
      "evaluated as 0's.";
  const std::string first = "f1.asc has only one value!";
  const std::string second = "f2.asc has only one value!";
  const Cells all = {{1, 1, 1}};
  const struct {
    const char* why;
    std::vector<TestFactor> factors;
    Cells constraint;
    std::vector<std::string> messages;
  } cases[] = {
      {"nothing to tell", {{{{0, 7, -9}}, kItself, -9}}, all, {}},
      {"flat", {{{{0, 7, 9}}, kFlat}}, all, {first}},
      {"one value", {{{{0, 7, 9}}}, {{{7, 7, 7}}}}, all, {second}},
      {"other values are masked", {{{{0, 7, 7}}}}, {{0, 1, 1}}, {first}},
      {"masked everywhere", {{{{7, 7, 7}}, kFlat}}, {{0, 0, 0}}, {}},
      {"NODATA of 0 everywhere", {{{{0, 0, 0}}, kFlat, 0}}, all, {}},
      {"each factor is outside", {{{{0, 256, 9}}}, {{{-0.5, 7, 9}}}}, all, {outside}},
      {"one cell of the first factor", {{{{300, 7, 9}}}, {{{0, 7, 9}}}}, all, {outside}},
      {"outside where 0 is NODATA", {{{{-5, 7, 9}}, kItself, 0}}, all, {outside}},
      {"masked", {{{{300, 7, 9}}}}, {{0, 1, 1}}, {}},
      {"after all factors",
       {{{{300, 7, 9}}, kFlat}, {{{0, 7, 9}}, kFlat}},
       all,
       {first, second, outside}},
  };
  for (const auto& test : cases) {
    const GraphFolder folder(test.factors, {test.constraint});
    FrmDrawC viewer(app, std::make_shared<NonlinearModel>(folder.model));
    EXPECT_TRUE(viewer.Start(quiet).Ok());
    EXPECT_EQ(Messages(), test.messages) << test.why;
  }
}

// Colours of five cells side by side; -1 is that of the constraint.
TEST_F(NonlinearWindows, LayersShowValuesAndWeights) {
  const GraphFolder folder({{{{0, 100, 255, 40, 30}}, Bent("0", "255", "0"), -9999},
                            {{{0, 300, 155, 255, 30}}, Line("265", "10"), 0},
                            {{{3, 4, 5, 6, 7}}, Line("9", "9")}},
                           {{{1, 1, 1, 1, 0}}});
  const std::pair<const char*, std::vector<int>> cases[] = {
      {"PreviewPicture(1)", {0, 100, 255, 40, -1}},
      {"PreviewPicture(103)", {0, 255, 0, 102, -1}},  // of the weights 0, 200, 0, 80
      {"PreviewPicture(2)", {0, 0, 155, 255, -1}},
      {"PreviewPicture(104)", {-1, -1, 255, 0, -1}},  // NODATA and 300 add nothing, then 110, 10
      {"PreviewPicture(105)", {0, 0, 0, 0, -1}},      // a single weight is the low end
  };
  FrmDrawC viewer(app, std::make_shared<NonlinearModel>(folder.model));
  ASSERT_TRUE(viewer.Start(quiet).Ok());
  Palette palette;
  ASSERT_TRUE(ReadPalette(settings.defaultPalette, palette).Ok());
  for (const auto& [name, colours] : cases) {
    const Canvas& image = dynamic_cast<ui::Picture&>(*viewer.Find(name)).Image();
    for (int i = 0; i < 5; ++i) {
      const int colour = colours[static_cast<std::size_t>(i)];
      EXPECT_EQ(image.Pixel(image.Width() * (2 * i + 1) / 10, image.Height() / 2),
                colour < 0 ? kForbidden : palette[colour])
          << name << " " << i;
    }
  }
}

// Pictures are known by their numbers, of which 102 and those above have other owners in models of
// a hundred factors or fewer.
TEST_F(NonlinearWindows, ModelsOfMoreThanAHundredFactorsOpen) {
  const GraphFolder folder(std::vector<TestFactor>(103, {{{1, 0}}}));
  FrmDrawC viewer(app, std::make_shared<NonlinearModel>(folder.model));
  ASSERT_TRUE(viewer.Start(quiet).Ok());
  const auto visible = [&] {
    std::string names;
    for (const ui::Control* control : viewer.Controls()) {
      const bool shows = control->Name().starts_with("PreviewPicture(") && control->Shown();
      if (shows) names += control->Name();
    }
    return names;
  };
  const auto display = [&](const std::string& item) {
    EXPECT_TRUE(viewer.PList.Select(std::vector<std::string>{item}).Ok());
    EXPECT_TRUE(viewer.cmdDispSel.Click().Ok());
    EXPECT_EQ(viewer.lblFile.Caption(), item);
    return visible();
  };
  EXPECT_EQ(display("f101.asc"), "PreviewPicture(101)");
  EXPECT_EQ(display("f103.asc"), "PreviewPicture(207)");
  ASSERT_TRUE(viewer.ckWeighted.Click().Ok());
  EXPECT_EQ(display("f101.asc"), "PreviewPicture(203)");
  EXPECT_EQ(display("f103.asc"), "PreviewPicture(205)");
  desktop.AnswerBoxes(ui::Answer::kNo);
  ASSERT_TRUE(viewer.cmdGenerate.Click().Ok());
  EXPECT_EQ(visible(), "PreviewPicture(102)");
}

TEST_F(NonlinearWindows, ForbiddenCellsTakeANewColour) {
  const GraphFolder folder({{{{1, 2, 3}}}}, {{{1, 1, 0}}});
  FrmDrawC viewer(app, std::make_shared<NonlinearModel>(folder.model));
  ASSERT_TRUE(viewer.Start(quiet).Ok());
  desktop.AnswerBoxes(ui::Answer::kNo);
  ASSERT_TRUE(viewer.cmdGenerate.Click().Ok());
  const Canvas& map = dynamic_cast<ui::Picture&>(*viewer.Find("PreviewPicture(102)")).Image();
  const auto forbidden = [&] { return map.Pixel(map.Width() - 1, 0); };
  EXPECT_EQ(forbidden(), kForbidden);
  desktop.AnswerColour(Rgb(9, 8, 7));
  ASSERT_TRUE(viewer.CV.Click().Ok());
  EXPECT_EQ(forbidden(), Rgb(9, 8, 7));
}

TEST_F(NonlinearWindows, AllGraphsAreThoseOfRowsWithAMap) {
  const GraphFolder folder({{{{1, 2}}}, {{{3, 4}}}});
  FrmBuildC& builder = desktop.Show(std::make_unique<FrmBuildC>(app));
  for (const char* map : {"f1.asc", "f2.asc"}) builder.onDrop(folder.Path(map));
  EXPECT_EQ(builder.rows.Count(), 3);  // the last one is free
  ASSERT_TRUE(builder.Graphs().cmdViewAll.Click().Ok());
  EXPECT_EQ(builder.Graphs().preview.Shown().series.size(), 2U);
}

TEST_F(NonlinearWindows, ReturnNeverDestroysWhatWasEntered) {
  const GraphFolder folder({{{{1, 2}}}}, {{{1, 1}}});
  folder.Folder().Write("old.cmf", "");
  FrmBuildC& builder = desktop.Show(std::make_unique<FrmBuildC>(app));
  builder.onDrop(folder.Path("f1.asc"));
  const auto onReturn = [&](ui::Button& button, ui::Answer answer) {
    desktop.AnswerBoxes(answer);
    EXPECT_TRUE(button.Click().Ok());
    return desktop.LastQuestion().onReturn;
  };
  for (ui::Button* button : {&builder.cmdClear, &builder.cmdLoad, &builder.constraints.cmdRemove}) {
    EXPECT_EQ(onReturn(*button, ui::Answer::kNo), ui::Answer::kNo) << button->Name();
  }
  desktop.AnswerFiles({{folder.Path("old.cmf")}});
  EXPECT_EQ(onReturn(builder.cmdSave, ui::Answer::kCancel), ui::Answer::kNo);
  desktop.AnswerBoxes(ui::Answer::kCancel);
  desktop.CloseByFrame(builder);
  EXPECT_EQ(desktop.LastQuestion().text, "Save Changes?");
  EXPECT_EQ(desktop.LastQuestion().onReturn, ui::Answer::kYes);
}

}  // namespace
}  // namespace ormel
