// Pictures that are painted in the screen's own pixels, and what wheel and middle button do on
// them.
#include <QMouseEvent>
#include <QWheelEvent>

#include "ui/qt/screen_fixture.h"

namespace ormel::ui {
namespace {

constexpr int kSide = 300;  // pixels of the picture on the screen

class PicturesTest : public ScreenTest {
 protected:
  PicturesTest() {
    window.picMap.SetPainter(100, 100, [this](Canvas& canvas) {
      sizes.emplace_back(canvas.Width(), canvas.Height());
      canvas.Clear(ground);
      canvas.FillPixels(0, 0, 1, 1, kBlack);
    });
    window.picMap.onClick = {};  // nothing to do with keys: no frame that shows the focus
    window.picMap.onKey = {};
    window.SetLayout(Column{window.picMap});
    Settle();
    widget.window()->resize(widget.window()->size() + QSize(kSide, kSide) - widget.size());
    Settle();
  }

  // The picture's place on the widget that holds it in its middle.
  QPointF At(double x, double y) {
    const double side = std::min(widget.width(), widget.height());
    return {(widget.width() - side) / 2 + x * side, (widget.height() - side) / 2 + y * side};
  }
  void Turn(QPointF place, int angle) {
    QWheelEvent event(place, widget.mapToGlobal(place), {}, QPoint(0, angle), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &event);
  }
  // The colour of a pixel of the screen, from the picture's corner.
  QColor PixelAt(QPoint pixel) {
    return widget.grab().toImage().pixelColor(At(0, 0).toPoint() + pixel);
  }

  Colour ground = Rgb(10, 200, 30);
  std::vector<std::pair<int, int>> sizes;
  FrmTest& window = Shown<FrmTest>();
  QWidget& widget = On(window.picMap);
};

TEST_F(PicturesTest, APaintedPictureHasTheScreensOwnPixelsAndIsPaintedAgainWhenToldSo) {
  const int side = std::min(widget.width(), widget.height());
  ASSERT_GT(side, 2 * 100);
  EXPECT_EQ(window.picMap.Image().Width(), 100);
  EXPECT_EQ(PixelAt({0, 0}), QColor(0, 0, 0));  // one pixel of the screen, not an enlarged one
  EXPECT_EQ(PixelAt({1, 1}), QColor(10, 200, 30));
  EXPECT_EQ(sizes.back(), (std::pair{side, side}));
  const std::size_t before = sizes.size();
  (void)widget.grab();
  EXPECT_EQ(sizes.size(), before);
  ground = Rgb(1, 2, 3);
  window.picMap.Repaint();
  Settle();
  EXPECT_EQ(PixelAt({side / 2, side / 2}), QColor(1, 2, 3));
  EXPECT_EQ(window.picMap.Image().Pixel(50, 50), Rgb(1, 2, 3));

  window.picMap.SetImage(Canvas(10, 10, Rgb(7, 7, 7)));  // an ordinary one from now on
  Settle();
  EXPECT_EQ(PixelAt({side / 2, side / 2}), QColor(7, 7, 7));
}

TEST_F(PicturesTest, TheWheelIsToldInThePixelsOfThePicture) {
  std::vector<WheelEvent> turns;
  Turn(At(0.5, 0.5), 120);  // nobody has a use for it
  window.picMap.onWheel = [&](const WheelEvent& event) { turns.push_back(event); };
  Turn(At(0.25, 0.5), 120);
  Turn(At(0.25, 0.5), -60);
  Turn(At(0.5, 0.5), 0);
  Turn({-5, -5}, 120);
  ASSERT_EQ(turns.size(), 2U);
  EXPECT_NEAR(turns[0].x, 25, 0.5);
  EXPECT_NEAR(turns[0].y, 50, 0.5);
  EXPECT_EQ(turns[0].notches, 1);
  EXPECT_EQ(turns[1].notches, -0.5);
}

TEST_F(PicturesTest, TheMiddleButtonDragsApartFromTheLeftOne) {
  std::vector<MouseAction> left;
  std::vector<MouseAction> middle;
  window.picMap.onMouse = [&](const MouseEvent& event) { left.push_back(event.action); };
  const auto drag = [&](QPointF to) {
    QTest::mousePress(&widget, Qt::MiddleButton, {}, At(0.5, 0.5).toPoint());
    QMouseEvent move(QEvent::MouseMove, to, widget.mapToGlobal(to), Qt::NoButton, Qt::MiddleButton,
                     Qt::NoModifier);
    QApplication::sendEvent(&widget, &move);
    QTest::mouseRelease(&widget, Qt::MiddleButton, {}, to.toPoint());
  };
  drag(At(0.25, 0.25));
  EXPECT_TRUE(middle.empty());
  EXPECT_EQ(left, (std::vector{MouseAction::kMove}));

  double lastX = 0;
  window.picMap.onMiddleButton = [&](const MouseEvent& event) {
    middle.push_back(event.action);
    lastX = event.x;
  };
  left.clear();
  drag(At(-0.1, 0.5));  // a drag goes on beside the picture
  EXPECT_EQ(middle, (std::vector{MouseAction::kDown, MouseAction::kMove, MouseAction::kUp}));
  EXPECT_NEAR(lastX, -10, 1);
  EXPECT_TRUE(left.empty());
}

}  // namespace
}  // namespace ormel::ui
