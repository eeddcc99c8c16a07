#include <gtest/gtest.h>

#include <sstream>

#include "shell/start_up_picture.h"
#include "shell/start_up_window.h"
#include "support/temporary_folder.h"
#include "ui/headless/headless_desktop.h"

namespace ormel {
namespace {

using std::chrono::milliseconds;

class StartUp : public ::testing::Test {
 protected:
  FrmStartUp& Greet() {
    return desktop_.Show(
        std::make_unique<FrmStartUp>(desktop_, Canvas(2, 2), Canvas(2, 2), [this] { ++gone_; }));
  }
  bool IsOpen() const { return desktop_.FindWindow("frmStartUp") != nullptr; }

  std::ostringstream log_;
  ui::HeadlessDesktop desktop_{log_};
  int gone_ = 0;
};

TEST_F(StartUp, ShowsTwoPicturesAndGoes) {
  const FrmStartUp& window = Greet();
  desktop_.Advance(milliseconds(999));
  EXPECT_TRUE(window.picSS1.Visible() && !window.picSS2.Visible());
  desktop_.Advance(milliseconds(1));
  EXPECT_TRUE(!window.picSS1.Visible() && window.picSS2.Visible());
  desktop_.Advance(milliseconds(1499));
  EXPECT_TRUE(IsOpen() && gone_ == 0);
  desktop_.Advance(milliseconds(1));
  EXPECT_FALSE(IsOpen());
  desktop_.Advance(milliseconds(5000));
  EXPECT_EQ(gone_, 1);
}

TEST_F(StartUp, GoesAtOnceWhenAPersonActs) {
  EXPECT_TRUE(Greet().picSS1.Click().Ok());
  EXPECT_TRUE(!IsOpen() && gone_ == 1);
  EXPECT_TRUE(Greet().picSS1.Key("Space").Ok());
  EXPECT_TRUE(!IsOpen() && gone_ == 2);
  Greet().OnDeactivated();
  EXPECT_TRUE(!IsOpen() && gone_ == 3);
}

TEST_F(StartUp, ThePicturesOfTheProgramCanBeDrawn) {
  const std::string assets = ORMEL_SOURCE_DIR "/assets/";
  for (const char* map : {"relief.asc", "suitability.asc"}) {
    const Canvas picture =
        DrawStartUpPicture(assets + "start-up/" + map, assets + "palettes/terrain.ptf");
    EXPECT_GT(picture.Width(), 400) << map;
    EXPECT_NE(picture.Pixel(picture.Width() / 2, picture.Height() / 2), kWhite) << map;
  }
  EXPECT_TRUE(DrawStartUpPicture("gone.asc", assets + "palettes/terrain.ptf").Empty());
}

}  // namespace
}  // namespace ormel
