#include "mce/timestep/time_step_text.h"

#include <gtest/gtest.h>

#include "mce/timestep/time_step_model.h"
#include "support/temporary_folder.h"

namespace ormel {
namespace {

constexpr char kCalendar[] = "TS1$2000 January 1 0 0 0 2000 March 1 0 0 0 1 Month 0 #";
constexpr char kFactors[] =
    "TS2S$FRD$maps#FF$*.asc#CRD$limits#CF$*.grd#FAC$a b.asc#5#True#FAC$c.asc#-2#False#CST$x.asc#";
constexpr char kBehaviours[] = "TSNS$CI#1#1.asc#2.asc#3.asc#CI#3#t.csv#water#";
constexpr char kGraphs[] = "TS3$2#* 2*#* 3*#";
constexpr char kOutput[] = "TS4$out#p#Default#255#1#0#1#True#";

std::string Whole(int stage) {
  const char* records[] = {kCalendar, kFactors, kBehaviours, kGraphs, kOutput};
  std::string text = std::to_string(stage);
  for (int i = 0; i < std::min(stage, 5); ++i) text += records[i];
  return stage == 6 ? text + "WF" : text;
}

TEST(TimeStepText, ReadsAndWritesTheSameAtEveryStage) {
  for (int stage = 1; stage <= 6; ++stage) {
    const TimeStepText model = ParseTimeStepText(Whole(stage));
    EXPECT_EQ(static_cast<int>(model.stage), stage);
    EXPECT_EQ(TimeStepTextOf(model).Value(), Whole(stage));
  }
  const TimeStepText model = ParseTimeStepText(Whole(5));
  EXPECT_EQ(model.calendar.end.month, "March");
  EXPECT_EQ(model.factors.factors[1].fields[0], "-2");
  EXPECT_EQ(model.behaviours[0].files, (std::vector<std::string>{"1.asc", "2.asc", "3.asc"}));
  EXPECT_EQ(model.behaviours[1].row, "water");
  EXPECT_TRUE(model.output.group);
  EXPECT_FALSE(model.output.bitmap);
}

TEST(TimeStepText, KnowsModelsWithoutFactorsAndConstraints) {
  const std::string text =
      std::string("2") + kCalendar + "TS2C$FRD$#FF$*.asc#CRD$#CF$*.asc#FAC$NULLCST$NULL";
  const TimeStepText model = ParseTimeStepText(text);
  EXPECT_TRUE(model.factors.nonlinear);
  EXPECT_TRUE(model.factors.factors.empty());
  EXPECT_TRUE(model.factors.constraints.empty());
  EXPECT_EQ(TimeStepTextOf(model).Value(), text);
}

TEST(TimeStepText, RefusesWhatItCannotHold) {
  TimeStepText model = ParseTimeStepText(Whole(5));
  model.output.folder = "no#1";
  EXPECT_EQ(TimeStepTextOf(model).Text(), "A model file cannot hold # or a line end, as in: no#1");
}

TEST(TimeStepText, ReadsAFileWhateverItsLines) {
  const testing::TemporaryFolder folder;
  std::string text = Whole(5);
  text.insert(40, "\r\n");
  text.insert(9, "\n");
  const TimeStepText model = ReadTimeStepText(folder.Write("m.tsi", text + "\r\n")).Value();
  EXPECT_EQ(TimeStepTextOf(model).Value(), Whole(5));
  EXPECT_FALSE(ReadTimeStepText(folder.Path() / "none.tsi").Ok());
}

// Whatever becomes of a file, it is read as far as it goes, and running it tells what is wrong.
TEST(TimeStepText, SurvivesAnyDamage) {
  const std::string whole = Whole(6);
  for (std::size_t i = 0; i < whole.size(); ++i) {
    std::string flipped = whole;
    flipped[i] = static_cast<char>(flipped[i] ^ 0x15);
    for (const std::string& text : {whole.substr(0, i), flipped}) {
      const Outcome<TimeStepModel> model = TimeStepModelOf(ParseTimeStepText(text));
      ASSERT_FALSE(model.Ok());
      ASSERT_FALSE(model.Text().empty());
    }
  }
}

}  // namespace
}  // namespace ormel
