// What scripts cannot reach: pixels, the wheel, the Stop button, images that tools show.
#include "viewer/map_view_window.h"

#include <gtest/gtest.h>

#include <sstream>

#include "mce/model_session.h"
#include "support/map_text.h"
#include "support/temporary_folder.h"
#include "ui/headless/headless_desktop.h"

namespace ormel {
namespace {

using testing::MapText;
using ui::MouseAction;

constexpr Colour kRed = Rgb(255, 0, 0);

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

  // A map of 20 by 10 cells, its picture 600 by 300.
  std::string Map(const std::string& name = "map.asc", double smallest = 0) {
    testing::Rows rows(10, std::vector<double>(20, 100));
    rows[0][0] = smallest;
    rows[0][19] = 255;
    return folder.Write(name, MapText(rows)).string();
  }
  ui::Picture& Picture(int number) {
    return dynamic_cast<ui::Picture&>(*window->Find("picMap(" + std::to_string(number) + ")"));
  }
  Colour Corner(int picture) { return Picture(picture).Image().Pixel(599, 0); }
  void Click(const char* entry) { EXPECT_TRUE(window->menu[entry].Click().Ok()); }
  void Mouse(int picture, MouseAction action, double x, double y) {
    EXPECT_TRUE(Picture(picture).Mouse({action, x, y}).Ok());
  }

  testing::TemporaryFolder folder;
  std::ostringstream log;
  ui::HeadlessDesktop desktop{log, nullptr};
  Settings settings;
  ModelSession session;
  AppContext app{desktop, settings, session};
  FrmView* window = nullptr;
};

TEST_F(FrmViewTest, RefusalsHaveTheirTitleAndStopHasNoMessage) {
  ASSERT_TRUE(window->OpenMapFile(Map()));
  desktop.AnswerFiles({{(folder / "gone.asc").string()}});
  desktop.AnswerBoxes(ui::Answer::kCancel);
  Click("mInsert");
  EXPECT_NE(log.str().find("title \"Error Loading Map!\" buttons okcancel -> cancel"),
            std::string::npos);
  (void)desktop.TakeMessage();
  const Impatient person(*window);
  EXPECT_FALSE(window->OpenMapFile(Map("unscaled.asc", 7)));
  EXPECT_EQ(window->NumPictures(), 1);
  EXPECT_EQ(desktop.TakeMessage(), std::nullopt);
  EXPECT_TRUE(window->Enabled());
}

TEST_F(FrmViewTest, APaletteGoesWithItsMapWhenTheOneBeforeIsClosed) {
  for (const char* name : {"a.asc", "b.asc", "c.asc"}) ASSERT_TRUE(window->OpenMapFile(Map(name)));
  Mouse(2, MouseAction::kDown, 5, 5);
  desktop.AnswerFiles({{folder.Write("high.ptf", PaletteText(1000)).string()}});
  Click("mChngPal");
  EXPECT_EQ(Corner(1), 255U);
  EXPECT_EQ(Corner(2), 1255U);
  EXPECT_EQ(Corner(3), 255U);
  Mouse(1, MouseAction::kDown, 5, 5);
  Click("mCloseSelected");
  EXPECT_EQ(window->NumPictures(), 2);
  EXPECT_EQ(window->Find("fraMap(1)")->Printed(), "\u25B6 b.asc");
  EXPECT_EQ(Corner(1), 1255U);
  EXPECT_EQ(Corner(2), 255U);
}

TEST_F(FrmViewTest, ADamagedDefaultPaletteIsTold) {
  folder.Write("default.ptf", "1\r\n");
  EXPECT_TRUE(window->OpenMapFile(Map()));
  EXPECT_EQ(desktop.TakeMessage(), "The default palette " + settings.defaultPalette +
                                       " cannot be used; the map is shown in greys.");
  EXPECT_EQ(Corner(1), kWhite);
}

TEST_F(FrmViewTest, WheelAndMiddleButton) {
  ASSERT_TRUE(window->OpenMapFile(Map()));
  EXPECT_TRUE(Picture(1).Wheel({0, 300, 1}).Ok());
  EXPECT_DOUBLE_EQ(window->View(1).x1, 0);
  EXPECT_DOUBLE_EQ(window->View(1).y1, 0.2);
  EXPECT_TRUE(Picture(1).Wheel({0, 300, -1}).Ok());
  EXPECT_EQ(window->View(1), ViewRegion{});

  window->SetView(1, {0.4, 0.4, 0.5, 0.5});
  const struct {
    MouseAction action;
    double x, y, viewX, viewY;
  } steps[] = {{MouseAction::kMove, 0, 0, 0.4, 0.4},  // not pressed
               {MouseAction::kDown, 300, 150, 0.4, 0.4},
               {MouseAction::kMove, 360, 150, 0.4 - 0.1 * 0.5, 0.4},
               {MouseAction::kUp, 300, 120, 0.4, 0.4 + 0.1 * 0.5},
               {MouseAction::kMove, 0, 0, 0.4, 0.4 + 0.1 * 0.5}};
  for (const auto& [action, x, y, viewX, viewY] : steps) {
    EXPECT_TRUE(Picture(1).MiddleButton({action, x, y}).Ok());
    EXPECT_DOUBLE_EQ(window->View(1).x1, viewX);
    EXPECT_DOUBLE_EQ(window->View(1).y1, viewY);
  }
}

TEST_F(FrmViewTest, MarksSurviveZoomAndGoWithTheirPicture) {
  ASSERT_TRUE(window->OpenMapFile(Map()));
  window->DrawMark(1, 100 + 450, 200 + 150, kRed);
  EXPECT_EQ(Picture(1).Image().Pixel(450, 150), kRed);
  window->SetView(1, {0.7, 0.45, 0.1, 0.1});
  EXPECT_EQ(Picture(1).Image().Pixel(300, 150), kRed);
  window->DrawMark(2, 0, 0, kRed);  // there is no such picture
  Click("mCloseAll");
  ASSERT_TRUE(window->OpenMapFile(Map()));
  EXPECT_NE(Picture(1).Image().Pixel(450, 150), kRed);
}

TEST_F(FrmViewTest, WhatNeedsAMapIsEnabledWithOne) {
  const char* const entries[] = {"mCloseSelected", "mCloseAll", "mHome",   "mZoomIn",
                                 "mZoomOut",       "mZoomBox",  "mCenter", "mAutoZoom",
                                 "mMetric",        "mChngPal",  "mExpCur", "mMapStats"};
  for (const char* entry : entries) EXPECT_FALSE(window->menu[entry].Enabled()) << entry;
  for (int i = 1; i <= 4; ++i) ASSERT_TRUE(window->OpenMapFile(Map()));
  for (const char* entry : entries) EXPECT_TRUE(window->menu[entry].Enabled()) << entry;
  EXPECT_FALSE(window->menu["mConvertASC"].Enabled());
  EXPECT_FALSE(window->OpenMapFile(Map()));
  EXPECT_EQ(window->NumPictures(), 4);
}

TEST_F(FrmViewTest, AnImageIsConverted) {
  Canvas image(2, 1, Rgb(1, 0, 0));
  image.SetPixel(1, 0, Rgb(0, 1, 0));
  ASSERT_TRUE(window->ShowImage("Sketch", image, {2, 1, 100, 200, 30}));
  EXPECT_FALSE(window->menu["mExpCur"].Enabled());
  Mouse(1, MouseAction::kMove, 0, 0);
  EXPECT_EQ(window->sbView.Printed(), "X: 115\nY: 215\nValue:\nDone:");
  desktop.AnswerBoxes(ui::Answer::kYes);
  desktop.AnswerFiles({{(folder / "sketch.asc").string()}});
  Click("mConvertASC");
  EXPECT_TRUE(testing::ReadText(folder / "sketch.asc").ends_with("      30\r\n 1 256\r\n"));
  EXPECT_TRUE(window->OpenMapFile(folder.Write("same.asc", MapText({{0, 255}}))));
  EXPECT_FALSE(window->ShowImage("Sketch", image, {2, 1, 0, 0, 30}));
}

}  // namespace
}  // namespace ormel
