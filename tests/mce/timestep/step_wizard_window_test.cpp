#include "mce/timestep/step_wizard_window.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "mapdata/palette.h"
#include "mce/timestep/behaviour_window.h"
#include "mce/timestep/step_calendar_window.h"
#include "mce/timestep/step_factors_window.h"
#include "mce/timestep/step_output_window.h"
#include "mce/timestep/step_viewer_window.h"
#include "mce/timestep/step_weights_window.h"
#include "support/map_text.h"
#include "support/small_disk.h"
#include "support/temporary_folder.h"
#include "ui/headless/headless_desktop.h"

namespace ormel {
namespace {

using testing::MapText;
using testing::ReadText;
using testing::SmallDisk;
using testing::TemporaryFolder;

class StepPages : public ::testing::Test {
 protected:
  StepPages() {
    settings_.programFolder = folder_.Path().string() + "/home/";
    settings_.workingDirectory = folder_.Path().string() + "/";
    std::filesystem::create_directory(folder_ / "home");
    std::string palette;
    for (int i = 0; i < kPaletteColours; ++i) palette += std::to_string(i) + "\r\n";
    settings_.defaultPalette = folder_.Write("home/default.ptf", palette).string();
    calendar_ = &desktop_.Show(std::make_unique<FrmTS1>(app_));
    calendar_->Put({{"2000"}, {"2001", "January", "1"}, "3", "Month", false});  // 5 steps
  }

  template <class Page>
  Page& At(const char* name) {
    auto* page = dynamic_cast<Page*>(desktop_.FindWindow(name));
    if (page == nullptr) throw std::runtime_error(std::string("no window ") + name);
    return *page;
  }
  void Click(const char* window, const char* button) {
    ui::Control* control = desktop_.FindWindow(window)->Find(button);
    ASSERT_NE(control, nullptr);
    const Outcome<> clicked = control->Click();
    ASSERT_TRUE(clicked.Ok()) << clicked.Text();
  }

  // From the first page to that of the factors' behaviour, with one factor.
  FrmTSClass& ToBehaviour() {
    Click("frmTS1", "cmdOK");
    folder_.Write("f.asc", MapText({{1, 2}, {3, 4}}));
    At<StepFactorsWindow>("frmTS2").onDrop((folder_ / "f.asc").string());
    Click("frmTS2", "cmdOK");
    return At<FrmTSClass>("frmTSClass");
  }
  FrmTS4& ToOutput() {
    ToBehaviour();
    Click("frmTSClass", "cmdNext");
    Click("frmTS3", "cmdNext");
    auto& page = At<FrmTS4>("frmTS4");
    std::filesystem::create_directory(folder_ / "out");
    page.folder.SetFolder((folder_ / "out").string());
    return page;
  }

  TemporaryFolder folder_;
  std::ostringstream log_;
  ui::HeadlessDesktop desktop_{log_};
  Settings settings_;
  ModelSession session_;
  AppContext app_{desktop_, settings_, session_};
  FrmTS1* calendar_ = nullptr;
};

TEST_F(StepPages, StretchAndShrinkARowThatDoesNotFit) {
  FrmTSClass& page = ToBehaviour();
  const std::string table =
      folder_.Write("t.csv", "rain,1,3\r\nsun,1,2,3,4,5,6,7,8,9\r\n").string();
  ASSERT_TRUE(page.optMethod(3).Click().Ok());
  ASSERT_TRUE(page.txtCSV.Set(table).Ok());
  const struct {
    const char* row;
    const char* word;
    const char* title;
    const char* line;
  } cases[] = {{"rain", "stretch", "Expandedrain", "Expanded,rain,1,1.5,2,2.5,3\r\n"},
               {"sun", "shrink", "Expandedsun", "Expanded,sun,1,3,5,7,9\r\n"}};
  for (const auto& one : cases) {
    desktop_.AnswerBoxes(ui::Answer::kYes);
    ASSERT_TRUE(page.RoW.Set(one.row).Ok());
    EXPECT_NE(desktop_.TakeMessage()->find(one.word), std::string::npos);
    EXPECT_EQ(*desktop_.TakeMessage(),
              std::string("The Data Used Will Be Written To the Same File With the Title ") +
                  one.row + " Expanded");
    EXPECT_EQ(page.RoW.SelectedText(), one.title);
    EXPECT_TRUE(ReadText(table).ends_with(one.line)) << ReadText(table);
  }
  EXPECT_EQ(page.Behaviours()[0].product, (std::vector<float>{1, 3, 5, 7, 9}));
  // With other dates the row does not fit any more: the person is asked again on the way on.
  Click("frmTSClass", "cmdBack");
  Click("frmTS2", "cmdBack");
  ASSERT_TRUE(calendar_->txtTSI.Set("6").Ok());
  Click("frmTS1", "cmdOK");
  Click("frmTS2", "cmdOK");
  desktop_.AnswerBoxes(ui::Answer::kYes);
  Click("frmTSClass", "cmdNext");
  EXPECT_EQ(page.Behaviours()[0].product, (std::vector<float>{1, 5, 9}));
}

TEST_F(StepPages, FollowTheirFactors) {
  ToOutput();
  auto& weights = At<FrmTS3>("frmTS3");
  Click("frmTS4", "cmdBack");
  ASSERT_TRUE(weights.Find("txtLinEnd")->Set("5").Ok());
  Click("frmTS3", "cmdBack");
  Click("frmTSClass", "cmdBack");
  // Another factor goes in front; the graph stays with its own.
  auto& factors = At<FrmTS2>("frmTS2");
  folder_.Write("g.asc", MapText({{1, 2}, {3, 4}}));
  factors.Put({false,
               "",
               "*.asc",
               "",
               "*.asc",
               {{(folder_ / "g.asc").string(), {"1", "True"}},
                {(folder_ / "f.asc").string(), {"1", "True"}}},
               {}});
  Click("frmTS2", "cmdOK");
  Click("frmTSClass", "cmdNext");
  EXPECT_EQ(weights.Graphs()[0].topValue, 1);
  EXPECT_EQ(weights.Graphs()[1].topValue, 5);
}

// Whatever is changed on the pages in front, the records of a saved file fit each other.
TEST_F(StepPages, SaveWhatBelongsTogether) {
  ToOutput();
  auto& behaviour = At<FrmTSClass>("frmTSClass");
  for (const char* page : {"frmTS4", "frmTS3"}) Click(page, "cmdBack");
  ASSERT_TRUE(behaviour.optMethod(1).Click().Ok());
  for (const char* page : {"frmTSClass", "frmTS2"}) Click(page, "cmdBack");
  ASSERT_TRUE(calendar_->txtTSI.Set("6").Ok());
  folder_.Write("g.asc", MapText({{1, 2}, {3, 4}}));
  At<FrmTS2>("frmTS2").Put({false,
                            "",
                            "*.asc",
                            "",
                            "*.asc",
                            {{(folder_ / "g.asc").string(), {"1", "True"}},
                             {(folder_ / "f.asc").string(), {"1", "True"}}},
                            {}});
  const std::string path = (folder_ / "m.tsi").string();
  desktop_.AnswerFiles({{path}});
  session_.Running()->cmdSave_Click();
  const TimeStepText text = ReadTimeStepText(path).Value();
  ASSERT_EQ(text.behaviours.size(), 2U);
  EXPECT_EQ(text.behaviours[0].method, 0);
  EXPECT_EQ(text.behaviours[1].files,
            (std::vector<std::string>{"1/1/2000", "7/1/2000", "1/1/2001"}));
  EXPECT_EQ(text.stepGraphs.size(), 2U);
  EXPECT_EQ(TimeStepTextOf(text).Value() + "\r\n", ReadText(path));
}

TEST_F(StepPages, AskWhatBecomesOfFilesWhenTheDiskIsFull) {
  FrmTS4& page = ToOutput();
  const auto files = [&] {
    return std::distance(std::filesystem::directory_iterator(folder_ / "out"), {});
  };
  ASSERT_TRUE(page.ckBMP.Click().Ok());
  for (const ui::Answer answer : {ui::Answer::kNo, ui::Answer::kYes}) {
    desktop_.AnswerBoxes(answer);
    {
      SmallDisk disk(200);  // a map has room, its picture has none
      EXPECT_FALSE(page.Finish());
    }
    EXPECT_EQ(*desktop_.TakeMessage(), "Out of Disk Space! Delete Created Files?");
    EXPECT_EQ(desktop_.LastQuestion().title, "Delete Created Files?");
    EXPECT_EQ(files(), answer == ui::Answer::kYes ? 0 : 1);
  }
  ASSERT_TRUE(page.ckBMP.Click().Ok());
  ASSERT_TRUE(page.ckRaster.Click().Ok());
  {
    SmallDisk disk(60);
    EXPECT_FALSE(page.Finish());
  }
  EXPECT_EQ(*desktop_.TakeMessage(), "Out of Disk Space!");
  EXPECT_EQ(desktop_.LastQuestion().title, "Out of Space");
  EXPECT_TRUE(page.Finish());
}

TEST_F(StepPages, FillNoMemoryWithoutAPlace) {
  FrmTS4& page = ToOutput();
  folder_.Write("f.asc", "ncols 40000\r\nnrows 2\r\nxllcorner 0\r\nyllcorner 0\r\ncellsize 1\r\n");
  EXPECT_FALSE(page.Finish());
  EXPECT_TRUE(desktop_.TakeMessage().has_value());
}

TEST_F(StepPages, LockPlacesAndFollowThemOverTheSteps) {
  FrmTS4& page = ToOutput();
  ASSERT_TRUE(page.Finish());
  auto& viewer = At<StepViewerWindow>("frmTSF");
  const auto lock = [&](double x, double y) {
    ASSERT_TRUE(viewer.picFrame.Mouse({ui::MouseAction::kClick, x, y}).Ok());
  };
  lock(10, 10);
  lock(10, 600);
  lock(12, 12);  // the same cell
  EXPECT_EQ(viewer.List1.Items(), (std::vector<std::string>{"115, 245:  0", "115, 215:  170"}));
  EXPECT_EQ(viewer.chart.Shown().series[1].y, std::vector<double>(5, 170));
  viewer.List1.SetSelected({1});
  ASSERT_TRUE(viewer.List1.Key("Delete").Ok());
  EXPECT_EQ(viewer.List1.Count(), 1);
  ASSERT_TRUE(viewer.cmdUnlock.Click().Ok());
  EXPECT_TRUE(viewer.chart.Shown().series.empty());
}

TEST_F(StepPages, StayWhenSavingIsGivenUp) {
  ToOutput();
  desktop_.AnswerBoxes(ui::Answer::kYes);
  desktop_.AnswerFiles(std::nullopt);
  EXPECT_FALSE(session_.Running()->Unload());
  EXPECT_TRUE(desktop_.IsOpen(*calendar_));
  desktop_.AnswerBoxes(ui::Answer::kYes);
  desktop_.AnswerFiles({{(folder_ / "m.tsi").string()}});
  EXPECT_TRUE(session_.Running()->Unload());
  EXPECT_EQ(session_.Running(), nullptr);
  EXPECT_EQ(session_.modelFile, (folder_ / "m.tsi").string());
  EXPECT_TRUE(ReadText(folder_ / "m.tsi").starts_with("5TS1$2000 January 1 "));
}

}  // namespace
}  // namespace ormel
