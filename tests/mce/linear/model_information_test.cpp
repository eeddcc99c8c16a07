#include "mce/linear/model_information.h"

#include <gtest/gtest.h>

#include <random>

#include "support/model_folder.h"

namespace ormel {
namespace {

using testing::ModelFolder;
using testing::ReadText;
using testing::TemporaryFolder;

constexpr char kModel[] =
    "FRD$D:\\data#FF$*.asc#FAC$D:\\data\\soil.asc#5#True#FAC$maps/slope.asc#-3#False#"
    "CST$D:\\data\\roads.asc#CST$maps/parks.asc#TITLE$Winter range, north#";

TEST(ModelInformation, ReadsEveryFieldAndWritesItBack) {
  TemporaryFolder folder;
  const std::string record = std::string("\"") + kModel + "\"\r\n";
  const ModelText text = ReadModelText(folder.Write("m.mif", record)).Value();
  EXPECT_EQ(text.root, "D:\\data");
  EXPECT_EQ(text.pattern, "*.asc");
  const LinearModel model = LinearModelOf(text);
  EXPECT_EQ(model.title, "Winter range, north");
  ASSERT_EQ(model.factors.size(), 2u);
  EXPECT_EQ(model.factors[0].folder, "D:\\data\\");
  EXPECT_EQ(model.factors[0].name, "soil.asc");
  EXPECT_EQ(model.factors[0].weight, 5);
  EXPECT_TRUE(model.factors[0].highValuesGood);
  EXPECT_EQ(model.factors[1].Path(), "maps/slope.asc");
  EXPECT_EQ(model.factors[1].weight, -3);
  EXPECT_FALSE(model.factors[1].highValuesGood);
  EXPECT_EQ(model.constraints, (std::vector<std::string>{"D:\\data\\roads.asc", "maps/parks.asc"}));

  ASSERT_TRUE(WriteModelText(folder / "again.mif", text).Ok());
  EXPECT_EQ(ReadText(folder / "again.mif"), record);
}

TEST(ModelInformation, WritesThatThereIsNone) {
  TemporaryFolder folder;
  ASSERT_TRUE(WriteModelText(folder / "m.mif", {"maps", "*.asc", {}, {}, ""}).Ok());
  EXPECT_EQ(ReadText(folder / "m.mif"), "\"FRD$maps#FF$*.asc#FAC$NULLCST$NULLTITLE$#\"\r\n");
}

TEST(ModelInformation, RefusesWhatCannotBeHeldAndKeepsTheOldFile) {
  TemporaryFolder folder;
  const auto path = folder.Write("m.mif", "old");
  for (const char* title : {"north # 2", "the \"core\""}) {
    const Outcome<> written = WriteModelText(path, {"maps", "*.asc", {}, {}, title});
    EXPECT_NE(written.Text().find(title), std::string::npos);
    EXPECT_EQ(ReadText(path), "old");
  }
}

TEST(ModelInformation, TakesWhatADamagedTextHolds) {
  const struct {
    const char* text;
    std::size_t factors;
    std::size_t constraints;
    const char* title;
  } cases[] = {
      {"", 0, 0, ""},
      {"no model at all", 0, 0, ""},
      {"FRD$a#FF$*#FAC$NULLCST$NULLTITLE$t#", 0, 0, "t"},
      {"FRD$a#FF$*#FAC$NULLCST$c.asc#TITLE$t#", 0, 1, "t"},
      {"FAC$a.asc#1#True#", 1, 0, ""},
      {"FRD$a#FF$*#FAC$a.asc", 1, 0, ""},
      {"FRD$a#FF$*#FAC$a.asc#1#True#FAC$b.asc#1#True#TITLE$no end", 2, 0, "no end"},
  };
  for (const auto& test : cases) {
    const LinearModel model = LinearModelOf(ParseModelText(test.text));
    EXPECT_EQ(model.factors.size(), test.factors) << test.text;
    EXPECT_EQ(model.constraints.size(), test.constraints) << test.text;
    EXPECT_EQ(model.title, test.title);
  }
}

TEST(ModelInformation, WeightsAreWholeNumbersOf16Bits) {
  const std::pair<const char*, int> cases[] = {{"2.5", 2},       {"3.5", 4},         {"-3", -3},
                                               {"40000", 32767}, {"-99999", -32767}, {"", 0},
                                               {"seven", 0},     {"1e400", 32767}};
  for (const auto& [text, weight] : cases) {
    const std::string model = std::string("FAC$a.asc#") + text + "#True#";
    EXPECT_EQ(LinearModelOf(ParseModelText(model)).factors[0].weight, weight) << text;
  }
}

TEST(ModelInformation, AnyBytesGiveSomeModel) {
  std::mt19937 random(1);
  for (int round = 0; round < 3000; ++round) {
    std::string text = kModel;
    text.resize(random() % (text.size() + 1));
    for (unsigned flips = random() % 8; flips > 0 && !text.empty(); --flips) {
      text[random() % text.size()] = "#$\"FACST0\n\0\xFF"[random() % 12];
    }
    EXPECT_LE(ParseModelText(text).factors.size(), text.size());
  }
}

class RunnableModel : public ::testing::Test {
 protected:
  RunnableModel() {
    folder_.AddFactor({{1, 2}}, 1);
    folder_.AddFactor({{1, 2}}, 1);
    folder_.AddConstraint({{1, 1}});
  }
  std::string Fault(const std::string& text) {
    const auto path = folder_.Folder().Write("m.mif", "\"" + text + "\"\r\n");
    return ReadRunnableModel(path).Text();
  }
  std::string Factor(const std::string& name) { return "FAC$" + folder_.Path(name) + "#1#True#"; }
  ModelFolder folder_;
};

TEST_F(RunnableModel, LeavesOutRowsWithoutAFile) {
  const auto path = folder_.Folder().Write("m.mif", "\"" + Factor("f1.asc") + "FAC$#1#True#\"");
  EXPECT_EQ(ReadRunnableModel(path).Value().factors.size(), 1u);
}

TEST_F(RunnableModel, NamesWhatCannotBeRun) {
  const std::string wider =
      folder_.Folder()
          .Write("wide.asc", "ncols 3\r\nnrows 1\r\nx 100.5\r\ny 0\r\ns 30\r\n 1 1 1\r\n")
          .string();
  EXPECT_NE(Fault("FRD$x#TITLE$t#").find("m.mif: names no factor"), std::string::npos);
  EXPECT_NE(Fault(Factor("f1.asc") + Factor("gone.asc")).find("gone.asc"), std::string::npos);
  EXPECT_NE(Fault(Factor("f1.asc") + "CST$" + folder_.Path("gone.asc") + "#").find("gone.asc"),
            std::string::npos);
  EXPECT_EQ(Fault(Factor("f1.asc") + "CST$" + wider + "#"),
            "The following parameters in wide were not the same as the rest of the data: number of "
            "columns, Y lower-left corner.");
  EXPECT_EQ(Fault(Factor("f1.asc") + Factor("f2.asc") + "CST$" + folder_.Path("c1.asc") + "#"), "");
  EXPECT_NE(ReadRunnableModel(folder_.Path("none.mif")).Text().find("none.mif"), std::string::npos);
}

}  // namespace
}  // namespace ormel
