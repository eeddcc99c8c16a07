#include "mce/linear/model_information.h"

#include <gtest/gtest.h>

#include <random>

#include "mce/runnable_model.h"
#include "support/model_folder.h"

namespace ormel {
namespace {

using testing::ReadText;

constexpr char kModel[] =
    "FRD$D:\\data#FF$*.asc#FAC$D:\\data\\soil.asc#5#True#FAC$maps/slope.asc#-3#False#"
    "CST$D:\\data\\roads.asc#CST$maps/parks.asc#TITLE$Winter range, north#";

TEST(ModelInformation, ReadsEveryFieldAndWritesItBack) {
  testing::TemporaryFolder folder;
  const std::string record = std::string("\"") + kModel + "\"\r\n";
  const ModelText text = ReadModelText(folder.Write("m.mif", record)).Value();
  const LinearModel model = LinearModelOf(text);
  EXPECT_EQ(model.title, "Winter range, north");
  ASSERT_EQ(model.factors.size(), 2u);
  EXPECT_EQ(model.factors[0].folder, "D:\\data\\");
  EXPECT_EQ(model.factors[0].name, "soil.asc");
  EXPECT_TRUE(model.factors[0].weight == 5 && model.factors[0].highValuesGood);
  EXPECT_TRUE(model.factors[1].weight == -3 && !model.factors[1].highValuesGood);
  ASSERT_TRUE(WriteModelText(folder / "m.mif", text).Ok());
  EXPECT_EQ(ReadText(folder / "m.mif"), record);

  // A text that the file cannot hold keeps the old one.
  for (const char* title : {"north # 2", "the \"core\""}) {
    const Outcome<> written = WriteModelText(folder / "m.mif", {"maps", "*.asc", {}, {}, title});
    EXPECT_NE(written.Text().find(title), std::string::npos);
    EXPECT_EQ(ReadText(folder / "m.mif"), record);
  }
  ASSERT_TRUE(WriteModelText(folder / "m.mif", {"maps", "*.asc", {}, {}, ""}).Ok());
  EXPECT_EQ(ReadText(folder / "m.mif"), "\"FRD$maps#FF$*.asc#FAC$NULLCST$NULLTITLE$#\"\r\n");
}

TEST(ModelInformation, TakesWhatADamagedTextHolds) {
  const struct {
    const char* text;
    std::size_t factors, constraints;
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

TEST(ModelInformation, WeightsAreWholeNumbersOf16Bits) {
  const std::pair<const char*, int> cases[] = {{"2.5", 2},       {"3.5", 4},         {"-3", -3},
                                               {"40000", 32767}, {"-99999", -32767}, {"", 0},
                                               {"seven", 0},     {"1e400", 32767}};
  for (const auto& [text, weight] : cases) EXPECT_EQ(WeightOf(text), weight) << text;
}

TEST(ModelInformation, ModelsThatAreRunNameWhatIsWrong) {
  testing::ModelFolder folder;
  for (int i = 0; i < 2; ++i) folder.AddFactor({{1, 2}}, 1);
  folder.AddConstraint({{1, 1}});
  folder.Folder().Write("wide.asc", "c 3\r\nr 1\r\nx 100.5\r\ny 0\r\ns 30\r\n 1 1 1\r\n");
  const auto fac = [&](const std::string& name) { return "FAC$" + folder.Path(name) + "#1#True#"; };
  const auto cst = [&](const std::string& name) { return "CST$" + folder.Path(name) + "#"; };
  const ModelKind kinds[] = {KindOf<LinearModelOf>(".mif")};
  const auto read = [&](const std::string& text) {
    return ReadRunnable(folder.Folder().Write("m.mif", "\"" + text + "\"\r\n"), kinds);
  };
  EXPECT_EQ(read(fac("f1.asc") + fac("f2.asc") + cst("c1.asc")).Value()->FactorCount(), 2);
  EXPECT_EQ(read(fac("f1.asc") + "FAC$#1#True#").Value()->FactorCount(), 1);  // a free row
  EXPECT_NE(read("FRD$x#TITLE$t#").Text().find("m.mif: names no factor"), std::string::npos);
  EXPECT_NE(read(fac("f1.asc") + fac("gone.asc")).Text().find("gone.asc"), std::string::npos);
  EXPECT_NE(read(fac("f1.asc") + cst("gone.asc")).Text().find("gone.asc"), std::string::npos);
  EXPECT_EQ(read(fac("f1.asc") + cst("wide.asc")).Text(),
            "The following parameters in wide were not the same as the rest of the data: number of "
            "columns, Y lower-left corner.");
  EXPECT_NE(ReadRunnable(folder.Path("none.mif"), kinds).Text().find("none.mif"),
            std::string::npos);
}

}  // namespace
}  // namespace ormel
