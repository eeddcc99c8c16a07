#include "viewer/map_view_window.h"

#include <gtest/gtest.h>

#include <sstream>

#include "mce/model_session.h"
#include "support/temporary_folder.h"
#include "ui/headless/headless_desktop.h"
#include "viewer/viewer_maps.h"

namespace ormel {
namespace {

using testing::MapText;
using testing::TemporaryFolder;
using ui::MouseAction;

constexpr char kRefused[] =
    "This Map is Corrupt or Does Not Conform to the Existing Map Specifications! Please Choose "
    "Another.";

std::string PaletteText(int first) {
  std::string text;
  for (int i = 0; i < kPaletteColours; ++i) text += std::to_string(first + i) + "\r\n";
  return text;
}

// A person who presses Stop as soon as the strip tells how far a command is.
class Impatient final : public ui::ControlView {
 public:
  explicit Impatient(FrmView& window) : window_(window) { window_.sbView.AttachView(this); }
  ~Impatient() override { window_.sbView.AttachView(nullptr); }
  void Refresh() override {
    if (window_.sbView.Printed().ends_with("%")) window_.StopRun();
  }
  void Gone() override {}

 private:
  FrmView& window_;
};

class FrmViewTest : public ::testing::Test {
 protected:
  FrmViewTest() {
    settings.defaultPalette = folder.Write("default.ptf", PaletteText(0));
    window = &desktop.Show(std::make_unique<FrmView>(app));
  }
  ~FrmViewTest() override { desktop.DestroyWindows(); }

  std::string Map(const std::string& name, const testing::Rows& rows) {
    return folder.Write(name, MapText(rows)).string();
  }
  // A map of 20 by 10 cells from 0 to 255, its picture 600 by 300.
  std::string ScaledMap(const std::string& name = "scaled.asc") {
    testing::Rows rows(10, std::vector<double>(20, 100));
    rows[0] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 255};
    rows[9][0] = 91;
    rows[9][19] = 92;
    return Map(name, rows);
  }

  ui::Picture& Picture(int number) {
    return dynamic_cast<ui::Picture&>(*window->Find("picMap(" + std::to_string(number) + ")"));
  }
  void Click(const char* entry) {
    const Outcome<> done = window->menu[entry].Click();
    EXPECT_TRUE(done.Ok()) << done.Text();
  }
  void Mouse(int picture, MouseAction action, double x, double y) {
    EXPECT_TRUE(Picture(picture).Mouse({action, x, y}).Ok());
  }
  void Files(const std::vector<std::string>& paths) {
    for (const std::string& path : paths) desktop.AnswerFiles({{path}});
  }
  std::string Label(const std::string& name) { return window->Find(name)->Printed(); }
  std::string ReadOut() {
    return window->sbView.Text(1) + " " + window->sbView.Text(2) + " " + window->sbView.Text(3);
  }
  ui::Window* Metric() { return desktop.FindWindow("frmMetric"); }

  TemporaryFolder folder;
  std::ostringstream log;
  ui::HeadlessDesktop desktop{log, nullptr};
  Settings settings;
  ModelSession session;
  AppContext app{desktop, settings, session};
  FrmView* window = nullptr;
};

TEST_F(FrmViewTest, TheReadOutFollowsTheMouseAndStaysBesideTheMap) {
  ASSERT_TRUE(window->OpenMapFile(ScaledMap()));
  const struct {
    double x, y;
    const char* shows;
  } cases[] = {
      {0, 0, "X: 115 Y: 485 Value: 0"},      {599, 0, "X: 685 Y: 485 Value: 255"},
      {0, 299, "X: 115 Y: 215 Value: 91"},   {599, 299, "X: 685 Y: 215 Value: 92"},
      {-0.5, 10, "X: 685 Y: 215 Value: 92"}, {600, 10, "X: 685 Y: 215 Value: 92"},
      {10, 300, "X: 685 Y: 215 Value: 92"},  {29.9, 29.9, "X: 115 Y: 485 Value: 0"},
      {30, 29.9, "X: 145 Y: 485 Value: 1"},
  };
  for (const auto& one : cases) {
    Mouse(1, MouseAction::kMove, one.x, one.y);
    EXPECT_EQ(ReadOut(), one.shows) << one.x << ", " << one.y;
  }
  window->SetView(1, {0.5, 0.5, 0.1, 0.1});
  Mouse(1, MouseAction::kMove, 0, 0);
  EXPECT_EQ(ReadOut(), "X: 415 Y: 335 Value: 100");
}

TEST_F(FrmViewTest, ARefusedSecondMapLeavesTheFirst) {
  const std::string other = Map("other.asc", {{0, 255}});
  ASSERT_TRUE(window->OpenMapFile(ScaledMap()));
  Files({other, (folder / "gone.asc").string(), ScaledMap("second.asc")});
  desktop.AnswerBoxes(ui::Answer::kOk);
  desktop.AnswerBoxes(ui::Answer::kOk);
  Click("mInsert");
  EXPECT_EQ(desktop.TakeMessage(), kRefused);
  EXPECT_EQ(desktop.TakeMessage(), kRefused);
  EXPECT_EQ(window->NumPictures(), 2);
  Files({other});
  desktop.AnswerBoxes(ui::Answer::kCancel);
  Click("mInsert");
  EXPECT_EQ(window->NumPictures(), 2);
  EXPECT_EQ(Label("fraMap(1)"), "scaled.asc");
  EXPECT_NE(log.str().find("title \"Error Loading Map!\" buttons okcancel -> cancel"),
            std::string::npos);
}

TEST_F(FrmViewTest, ReplacingKeepsTheOldMapsUntilTheNewOneIsThere) {
  ASSERT_TRUE(window->OpenMapFile(ScaledMap()));
  ASSERT_TRUE(window->OpenMapFile(ScaledMap("second.asc")));
  Files({(folder / "gone.asc").string()});
  desktop.AnswerBoxes(ui::Answer::kCancel);
  Click("mOpen");
  EXPECT_EQ(window->NumPictures(), 2);
  Files({Map("other.asc", {{0, 255}})});
  Click("mOpen");
  EXPECT_EQ(window->NumPictures(), 1);
  EXPECT_EQ(Label("fraMap(1)"), "other.asc");
}

TEST_F(FrmViewTest, UnscaledMapsAreAskedAbout) {
  const std::string map = Map("heights.asc", {{10, 30, 50}});
  desktop.AnswerBoxes(ui::Answer::kCancel);
  EXPECT_FALSE(window->OpenMapFile(map));
  (void)desktop.TakeMessage();
  EXPECT_EQ(desktop.TakeMessage(), std::nullopt);
  desktop.AnswerBoxes(ui::Answer::kYes);
  EXPECT_TRUE(window->OpenMapFile(map));
  desktop.AnswerBoxes(ui::Answer::kNo);
  EXPECT_TRUE(window->OpenMapFile(map));
  EXPECT_EQ(Label("lblMin(1)") + " " + Label("lblMax(1)"), "10 50");
  EXPECT_EQ(Label("lblMin(2)") + " " + Label("lblMax(2)"), "0 255");
  EXPECT_EQ(Picture(1).Image().Pixel(300, 0), 128U);
  EXPECT_EQ(Picture(2).Image().Pixel(300, 0), 30U);
  EXPECT_EQ(window->PicSpecs(2).Max, 50);
}

// The question comes before the headers are compared.
TEST_F(FrmViewTest, AnUnscaledMapOfAnotherSizeIsAskedAboutAndThenRefused) {
  ASSERT_TRUE(window->OpenMapFile(ScaledMap()));
  desktop.AnswerBoxes(ui::Answer::kYes);
  EXPECT_FALSE(window->OpenMapFile(Map("heights.asc", {{10, 30, 50}})));
  EXPECT_EQ(desktop.UnusedAnswers(), "");
}

TEST_F(FrmViewTest, StopLeavesTheViewerAsItWas) {
  ASSERT_TRUE(window->OpenMapFile(ScaledMap()));
  const testing::Rows rows(10, std::vector<double>(20, 7));
  const std::string path = folder.Write("large.asc", MapText(rows));
  const Impatient person(*window);
  EXPECT_FALSE(window->OpenMapFile(path));
  EXPECT_EQ(window->NumPictures(), 1);
  EXPECT_EQ(desktop.TakeMessage(), std::nullopt);
  EXPECT_TRUE(window->Enabled());
}

TEST_F(FrmViewTest, EveryPictureHasItsPalette) {
  for (const char* name : {"a.asc", "b.asc", "c.asc"}) {
    ASSERT_TRUE(window->OpenMapFile(ScaledMap(name)));
  }
  const auto change = [&](int picture, const std::vector<std::string>& paths) {
    Mouse(picture, MouseAction::kClick, 5, 5);
    Files(paths);
    Click("mChngPal");
  };
  change(2, {(folder / "gone.ptf").string(), folder.Write("bad.ptf", "1\r\n2\r\n"),
             folder.Write("high.ptf", PaletteText(1000))});
  EXPECT_EQ(desktop.TakeMessage(),
            "The palette file you specified does not exist! Please choose another.");
  EXPECT_EQ(desktop.TakeMessage(), "The specified palette file is corrupt! Please choose another.");
  EXPECT_EQ(desktop.TakeMessage(), std::nullopt);
  EXPECT_EQ(Picture(1).Image().Pixel(599, 0), 255U);
  EXPECT_EQ(Picture(2).Image().Pixel(599, 0), 1255U);
  EXPECT_EQ(Picture(3).Image().Pixel(599, 0), 255U);

  // It goes with its map when the one before is closed.
  Mouse(1, MouseAction::kClick, 5, 5);
  Click("mCloseSelected");
  EXPECT_EQ(window->NumPictures(), 2);
  EXPECT_EQ(Label("fraMap(1)"), "\u25B6 b.asc");
  EXPECT_EQ(Picture(1).Image().Pixel(599, 0), 1255U);
  EXPECT_EQ(Picture(2).Image().Pixel(599, 0), 255U);
}

TEST_F(FrmViewTest, ADamagedDefaultPaletteIsTold) {
  folder.Write("default.ptf", "1\r\n");
  EXPECT_TRUE(window->OpenMapFile(ScaledMap()));
  EXPECT_EQ(desktop.TakeMessage(), "The default palette " + settings.defaultPalette +
                                       " cannot be used; the map is shown in greys.");
  EXPECT_EQ(Picture(1).Image().Pixel(599, 0), kWhite);
}

TEST_F(FrmViewTest, KeysMoveTheirPicture) {
  ASSERT_TRUE(window->OpenMapFile(ScaledMap("a.asc")));
  ASSERT_TRUE(window->OpenMapFile(ScaledMap("b.asc")));
  const auto press = [&](const char* key) { EXPECT_TRUE(Picture(1).Key(key).Ok()); };
  press("=");
  EXPECT_EQ(window->View(1), ZoomBy({}, 0.8));
  EXPECT_EQ(window->View(2), ViewRegion{});
  press("Right");
  EXPECT_EQ(window->View(1), PanBy(ZoomBy({}, 0.8), PanDirection::kRight, 20, 10));
  press("Left");
  press("Down");
  EXPECT_DOUBLE_EQ(window->View(1).y1, 0.2);
  press("Up");
  press("-");
  EXPECT_EQ(window->View(1), ViewRegion{});
  press("=");
  press("Home");
  EXPECT_EQ(window->View(1), ViewRegion{});
  press("F7");  // means nothing
  EXPECT_EQ(window->View(1), ViewRegion{});
}

TEST_F(FrmViewTest, ALockedZoomMovesAllPictures) {
  ASSERT_TRUE(window->OpenMapFile(ScaledMap("a.asc")));
  ASSERT_TRUE(window->OpenMapFile(ScaledMap("b.asc")));
  Click("mZoomIn");
  EXPECT_EQ(window->View(1), ViewRegion{});
  Click("mAutoZoom");
  EXPECT_TRUE(window->menu["mAutoZoom"].Checked());
  EXPECT_EQ(window->View(1), window->View(2));
  EXPECT_TRUE(Picture(1).Key("Right").Ok());
  EXPECT_EQ(window->View(2), window->View(1));
  ASSERT_TRUE(window->OpenMapFile(ScaledMap("c.asc")));
  EXPECT_EQ(window->View(3), window->View(1));
  Click("mAutoZoom");
  Click("mHome");
  EXPECT_NE(window->View(2), window->View(3));
}

TEST_F(FrmViewTest, WheelAndMiddleButton) {
  ASSERT_TRUE(window->OpenMapFile(ScaledMap()));
  EXPECT_TRUE(Picture(1).Wheel({0, 300, 1}).Ok());
  EXPECT_DOUBLE_EQ(window->View(1).x1, 0);
  EXPECT_DOUBLE_EQ(window->View(1).y1, 0.2);
  EXPECT_TRUE(Picture(1).Wheel({0, 300, -1}).Ok());
  EXPECT_EQ(window->View(1), ViewRegion{});

  window->SetView(1, {0.4, 0.4, 0.5, 0.5});
  const auto middle = [&](MouseAction action, double x, double y) {
    EXPECT_TRUE(Picture(1).MiddleButton({action, x, y}).Ok());
  };
  middle(MouseAction::kMove, 0, 0);  // not pressed
  middle(MouseAction::kDown, 300, 150);
  middle(MouseAction::kMove, 360, 150);
  EXPECT_DOUBLE_EQ(window->View(1).x1, 0.4 - 0.1 * 0.5);
  middle(MouseAction::kUp, 300, 120);
  EXPECT_DOUBLE_EQ(window->View(1).x1, 0.4);
  EXPECT_DOUBLE_EQ(window->View(1).y1, 0.4 + 0.1 * 0.5);
  middle(MouseAction::kMove, 0, 0);
  EXPECT_DOUBLE_EQ(window->View(1).x1, 0.4);
}

TEST_F(FrmViewTest, BoxAndCentreAreUsedOnce) {
  ASSERT_TRUE(window->OpenMapFile(ScaledMap()));
  Click("mZoomBox");
  Click("mCenter");
  EXPECT_FALSE(window->menu["mZoomBox"].Checked());
  Click("mZoomBox");
  EXPECT_FALSE(window->menu["mCenter"].Checked());
  Mouse(1, MouseAction::kDown, 300, 150);
  Mouse(1, MouseAction::kMove, 200, 90);
  Mouse(1, MouseAction::kUp, 150, 75);
  EXPECT_EQ(window->View(1), (ViewRegion{0.25, 0.25, 0.25, 0.25}));
  EXPECT_FALSE(window->menu["mZoomBox"].Checked());
  Mouse(1, MouseAction::kClick, 10, 10);
  EXPECT_EQ(window->View(1).ZW, 0.25);

  Click("mCenter");
  Mouse(1, MouseAction::kClick, 600, 150);
  EXPECT_EQ(window->View(1), (ViewRegion{0.375, 0.25, 0.25, 0.25}));
  Click("mZoomBox");
  Mouse(1, MouseAction::kClick, 10, 10);  // a box without a size
  EXPECT_EQ(window->View(1).ZW, 0.25);
}

TEST_F(FrmViewTest, TheMetricToolMeasuresClicks) {
  ASSERT_TRUE(window->OpenMapFile(ScaledMap()));  // a pixel of the picture is a metre
  Click("mMetric");
  Mouse(1, MouseAction::kClick, 0, 0);
  Mouse(1, MouseAction::kClick, 300, 0);
  Mouse(1, MouseAction::kClick, 300, 100);
  ASSERT_NE(Metric(), nullptr);
  const auto shows = [&] {
    std::string text;
    for (const char* label : {"lblSegment", "lblTotal", "lblArea"}) {
      text += Metric()->Find(label)->Printed() + ", ";
    }
    return text;
  };
  EXPECT_EQ(shows(), "100 m, 400 m, 1.5 ha, ");
  EXPECT_TRUE(Metric()->Find("optUnits(2)")->Click().Ok());
  // 100 * 3.280839895, 400 * 3.280839895, 15000 * 3.280839895^2
  EXPECT_EQ(shows(), "328.084 ft, 1312.336 ft, 161458.6562 ft^2, ");

  // Clicks for another tool are no points.
  Click("mCenter");
  Mouse(1, MouseAction::kClick, 5, 5);
  EXPECT_EQ(Metric()->Find("lblSegment")->Printed(), "328.084 ft");
  EXPECT_TRUE(Metric()->Find("cmdClear")->Click().Ok());
  EXPECT_EQ(shows(), "0 ft, 0 ft, 0 ft^2, ");

  EXPECT_TRUE(window->menu["mMetric"].Checked());
  desktop.CloseByFrame(*Metric());
  EXPECT_FALSE(window->menu["mMetric"].Checked());
  Mouse(1, MouseAction::kClick, 100, 100);
  Click("mMetric");
  Click("mClose");
  EXPECT_EQ(Metric(), nullptr);
}

TEST_F(FrmViewTest, MarksAndLinesSurviveZoomAndGoWithTheirPicture) {
  ASSERT_TRUE(window->OpenMapFile(ScaledMap()));
  const Colour red = Rgb(255, 0, 0);
  window->DrawMark(1, 100 + 450, 200 + 150, red);
  EXPECT_EQ(Picture(1).Image().Pixel(450, 150), red);
  window->SetView(1, {0.7, 0.45, 0.1, 0.1});
  EXPECT_EQ(Picture(1).Image().Pixel(300, 150), red);
  window->DrawMark(2, 0, 0, red);  // there is no such picture
  Click("mCloseAll");
  EXPECT_EQ(window->NumPictures(), 0);
  ASSERT_TRUE(window->OpenMapFile(ScaledMap()));
  EXPECT_NE(Picture(1).Image().Pixel(450, 150), red);
}

TEST_F(FrmViewTest, WhatNeedsAMapIsEnabledWithOne) {
  const char* const entries[] = {"mCloseSelected", "mCloseAll", "mHome",   "mZoomIn",
                                 "mZoomOut",       "mZoomBox",  "mCenter", "mAutoZoom",
                                 "mMetric",        "mChngPal",  "mExpCur", "mMapStats"};
  for (const char* entry : entries) EXPECT_FALSE(window->menu[entry].Enabled()) << entry;
  for (int i = 1; i <= 4; ++i) {
    EXPECT_TRUE(window->menu["mInsert"].Enabled());
    ASSERT_TRUE(window->OpenMapFile(ScaledMap()));
  }
  for (const char* entry : entries) EXPECT_TRUE(window->menu[entry].Enabled()) << entry;
  EXPECT_FALSE(window->menu["mInsert"].Enabled());
  EXPECT_FALSE(window->menu["mConvertASC"].Enabled());
  EXPECT_FALSE(window->OpenMapFile(ScaledMap()));
  EXPECT_EQ(window->NumPictures(), 4);
}

TEST_F(FrmViewTest, AnImageIsConverted) {
  Canvas image(2, 1, Rgb(1, 0, 0));
  image.SetPixel(1, 0, Rgb(0, 1, 0));
  ASSERT_TRUE(window->ShowImage("Sketch", image, {2, 1, 100, 200, 30}));
  EXPECT_FALSE(window->menu["mExpCur"].Enabled());
  Mouse(1, MouseAction::kMove, 0, 0);
  EXPECT_EQ(ReadOut(), "X: 115 Y: 215 Value:");
  desktop.AnswerBoxes(ui::Answer::kYes);
  Files({(folder / "sketch.asc").string()});
  Click("mConvertASC");
  EXPECT_EQ(testing::ReadText(folder / "sketch.asc"),
            "ncols         2\r\nnrows         1\r\nxllcorner     100\r\nyllcorner     200\r\n"
            "cellsize      30\r\n 1 256\r\n");
  EXPECT_TRUE(window->OpenMapFile(Map("same.asc", {{0, 255}})));
  EXPECT_FALSE(window->ShowImage("Sketch", image, {2, 1, 0, 0, 30}));
}

}  // namespace
}  // namespace ormel
