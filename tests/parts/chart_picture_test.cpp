#include "parts/chart_picture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "mce/model_session.h"
#include "text/dates.h"
#include "ui/headless/headless_desktop.h"
#include "ui/layout.h"

namespace ormel {
namespace {

class FrmChart final : public ui::Window {
 public:
  explicit FrmChart(AppContext& app) : Window("frmChart", "Chart"), chart(*this, app, "picChart") {
    SetLayout(chart.Area());
  }
  ChartPicture chart;
};

class ChartPictureTest : public testing::Test {
 protected:
  ChartPictureTest() {
    Chart shown;
    shown.x = NumberAxis("Cell value");
    shown.y = NumberAxis("Cells");
    shown.series = {Bars("", {4, 0, 9, 6})};
    chart.onPick = [this](const ChartHit& hit) { picked.push_back(hit.sample); };
    chart.Show(shown);
  }

  // Where the middle of a bar is, at the height of a value.
  ui::MouseEvent At(ui::MouseAction action, double x, double y) const {
    const ChartLayout layout(chart.Shown(), 640, 420);
    return {action, layout.PlaceX({x, y}), layout.PlaceY({x, y})};
  }
  void Mouse(ui::MouseAction action, double x, double y) {
    EXPECT_TRUE(chart.picture.Mouse(At(action, x, y)).Ok());
  }
  std::string AfterKey(const char* key) {
    EXPECT_TRUE(chart.picture.Key(key).Ok());
    return chart.lblRead.Caption();
  }
  Colour Pixel(double x, double y) const {
    const ui::MouseEvent place = At(ui::MouseAction::kMove, x, y);
    return chart.picture.Image().Pixel(static_cast<int>(place.x), static_cast<int>(place.y));
  }

  std::ostringstream log;
  ui::HeadlessDesktop desktop{log};
  Settings settings;
  ModelSession session;
  AppContext app{desktop, settings, session};
  FrmChart& window = desktop.Show(std::make_unique<FrmChart>(app));
  ChartPicture& chart = window.chart;
  std::vector<std::size_t> picked;
};

TEST_F(ChartPictureTest, MouseAndKeysReadTheSamplesAlike) {
  EXPECT_EQ(chart.lblRead.Caption(), "Read values with the mouse or the arrow keys.");
  Mouse(ui::MouseAction::kMove, 2.3, 7);
  EXPECT_EQ(chart.lblRead.Caption(), "Cell value: 2    Cells: 9");
  EXPECT_EQ(Pixel(2, 9), kMarkedColour);
  EXPECT_EQ(AfterKey("Right"), "Cell value: 3    Cells: 6");
  EXPECT_NE(Pixel(2, 9), kMarkedColour);
  EXPECT_EQ(AfterKey("Right"), "Cell value: 3    Cells: 6");
  EXPECT_EQ(AfterKey("Home"), "Cell value: 0    Cells: 4");
  EXPECT_EQ(AfterKey("PageDown"), "Cell value: 3    Cells: 6");
  EXPECT_EQ(AfterKey("Left"), "Cell value: 2    Cells: 9");
  // Beside the plot nothing new is read.
  EXPECT_TRUE(chart.picture.Mouse({ui::MouseAction::kMove, 1, 1}).Ok());
  EXPECT_EQ(chart.lblRead.Caption(), "Cell value: 2    Cells: 9");

  Chart dated;
  dated.x = DateAxis("Date");
  dated.y = NumberAxis("Rain (mm)");
  const double day = *ReadDate("3/3/2021");
  dated.series = {Line("Ridge", {day, day + 1, day + 1.5}, {10, std::nan(""), 30}),
                  Band("", {day, day + 2}, {0, 0}, {9, 9}),
                  Line("Valley", {day, day + 1, day + 1.5}, {5, 6, 7.25})};
  chart.Show(dated);
  EXPECT_FALSE(chart.Read());
  EXPECT_EQ(AfterKey("Right"), "Date: Mar 3, 2021    Ridge: 10");
  EXPECT_EQ(AfterKey("Right"), "Date: Mar 4, 2021 12:00    Ridge: 30");    // over the gap
  EXPECT_EQ(AfterKey("Down"), "Date: Mar 4, 2021 12:00    Valley: 7.25");  // over the tint
  EXPECT_EQ(AfterKey("Left"), "Date: Mar 4, 2021    Valley: 6");
  EXPECT_EQ(AfterKey("Up"), "Date: Mar 4, 2021    Valley: 6");  // the other one has a gap there
  EXPECT_EQ(AfterKey("End"), "Date: Mar 4, 2021 12:00    Valley: 7.25");
  chart.Show({});
  EXPECT_EQ(AfterKey("Right"), "");
}

TEST_F(ChartPictureTest, BarsAreClickedAndSelected) {
  const Colour plain = Pixel(2, 5);
  Mouse(ui::MouseAction::kDown, 1, 8);  // a bar without height
  Mouse(ui::MouseAction::kUp, 1, 8);
  Mouse(ui::MouseAction::kDown, 2, 3);
  (void)AfterKey("Left");
  (void)AfterKey("Return");
  EXPECT_EQ(picked, (std::vector<std::size_t>{1, 2, 1}));
  chart.Select(0, {2});
  EXPECT_EQ(Pixel(2, 5), kMarkedColour);
  EXPECT_EQ(Pixel(3, 5), plain);
  chart.Select(0, {});
  EXPECT_EQ(Pixel(2, 5), plain);
}

TEST_F(ChartPictureTest, PicturesGoToTheClipboardAndToFilesWithoutThePointer) {
  const Canvas clean = chart.Print();
  EXPECT_EQ(clean.Width(), 1280);
  EXPECT_EQ(clean.Height(), 840);
  Mouse(ui::MouseAction::kMove, 2, 7);
  const auto same = [&](const Canvas& picture) {
    return std::equal(picture.Bytes().begin(), picture.Bytes().end(), clean.Bytes().begin(),
                      clean.Bytes().end());
  };
  (void)AfterKey("Ctrl+C");
  EXPECT_TRUE(same(desktop.ClipboardPicture()));

  std::string file;
  bool written = false;
  app.pictures = {"PNG Picture (.png)|*.png",
                  [&](const Canvas& picture, const std::string& path) -> Outcome<> {
                    file = path;
                    written = same(picture);
                    if (path != "full.png") return Done{};
                    return Failure{FailureKind::kDisk, "full.png: the disk is full"};
                  }};
  desktop.AnswerFiles({{"chart.png"}});
  EXPECT_TRUE(chart.buttons.cmdSave.Click().Ok());
  EXPECT_EQ(file, "chart.png");
  EXPECT_TRUE(written);
  EXPECT_EQ(chart.lblRead.Caption(), "The picture is saved.");
  desktop.AnswerFiles({{"full.png"}});
  EXPECT_TRUE(chart.buttons.cmdSave.Click().Ok());
  EXPECT_EQ(desktop.TakeMessage(), "full.png: the disk is full");
}

}  // namespace
}  // namespace ormel
