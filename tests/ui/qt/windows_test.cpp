// Windows: layouts, pictures, the strip of a long command, closing, modal windows and drops.
#include <QCloseEvent>
#include <QDropEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QUrl>
#include <chrono>
#include <thread>

#include "ui/qt/qt_picture.h"
#include "ui/qt/screen_fixture.h"
#include "ui/run.h"

namespace ormel::ui {
namespace {

using WindowsTest = ScreenTest;

QPoint PlaceIn(const QWidget& widget, const QWidget& window) {
  return widget.mapTo(&window, QPoint(0, 0));
}

// Rows that come and go, with a button that removes its own.
class RowsWindow : public Window {
 public:
  RowsWindow() : Window("frmRows", "Rows") { SetCount(3); }

  void SetCount(int count) {
    names.Resize(count);
    removers.Resize(count);
    Column rows;
    for (int i = 1; i <= count; ++i) {
      removers(i).SetCaption("Remove");
      removers(i).onClick = [this] { SetCount(names.Count() - 1); };
      rows.items.push_back(Frame{"Factor", Row{"&Name:", names(i), removers(i)}});
    }
    SetLayout(rows);
  }

  ControlArray<TextBox> names{*this, "names"};
  ControlArray<Button> removers{*this, "removers"};
};

TEST_F(WindowsTest, RowsComeAndGoUnderTheHandsOfAPerson) {
  auto& window = Shown<RowsWindow>();
  int left = 0;
  window.names(1).onLeave = [&] { ++left; };
  QWidget& first = On(window.names(1));
  first.setFocus();
  QTest::keyClicks(&first, "dem");
  window.SetCount(5);
  Settle();
  EXPECT_TRUE(On(window.names(5)).isVisible());
  EXPECT_TRUE(first.hasFocus());
  EXPECT_EQ(left, 0);
  QTest::mouseClick(&On(window.removers(5)), Qt::LeftButton);
  Settle();
  EXPECT_EQ(window.names.Count(), 4);
  EXPECT_EQ(TopLevel(window)->findChildren<QLineEdit*>().size(), 4);
  EXPECT_EQ(TopLevel(window)->findChildren<QGroupBox*>().size(), 4);
  QTest::keyClick(&first, Qt::Key_Tab);
  EXPECT_TRUE(On(window.removers(1)).hasFocus());
}

TEST_F(WindowsTest, ANewLayoutShowsAtOnceAndWhatIsHiddenStaysHidden) {
  auto window = std::make_unique<RowsWindow>();
  window->names(2).SetVisible(false);
  auto& shown = desktop.Show(std::move(window));
  EXPECT_FALSE(On(shown.names(2)).isVisible());
  shown.SetCount(4);
  shown.names(4).SetVisible(false);
  EXPECT_TRUE(desktop.Snapshot(shown, testing::TempDir() + "rows.png"));  // draws without waiting
  EXPECT_TRUE(On(shown.names(3)).isVisible());
  Settle();
  EXPECT_FALSE(On(shown.names(2)).isVisible());
  EXPECT_FALSE(On(shown.names(4)).isVisible());
}

class PlacesWindow : public Window {
 public:
  PlacesWindow() : Window("frmPlaces", "Places") {
    picture.SetImage(DemoMap(40, 20));
    strip.SetImage(DemoScale());
    strip.SetStripHeight(12);
    SetLayout(Column{Table{{"&A:", a}, {"A longer text:", b}}, Row{"C:", c, d}, picture, strip,
                     Row{Stretch{}, ok}});
  }
  TextBox a{*this, "a"};
  TextBox b{*this, "b"};
  TextBox c{*this, "c"};
  TextBox d{*this, "d"};
  Picture picture{*this, "picture"};
  Picture strip{*this, "strip"};
  Button ok{*this, "ok", "OK"};
};

TEST_F(WindowsTest, TablesLineUpAndHiddenControlsTakeNoRoom) {
  auto& window = Shown<PlacesWindow>();
  QWidget& frame = *TopLevel(window);
  EXPECT_EQ(PlaceIn(On(window.a), frame).x(), PlaceIn(On(window.b), frame).x());
  QTest::keyClick(&frame, Qt::Key_A, Qt::AltModifier);
  EXPECT_TRUE(On(window.a).hasFocus());

  const int before = PlaceIn(On(window.c), frame).y();
  window.b.SetVisible(false);
  Settle();
  EXPECT_LE(PlaceIn(On(window.c), frame).y(), before - On(window.a).height());
  // A text goes with the last of the controls that it names.
  const auto texts = frame.findChildren<QLabel*>();
  const auto isShown = [&](const char* text) {
    for (const QLabel* label : texts) {
      if (label->text() == text) return label->isVisible();
    }
    return false;
  };
  EXPECT_FALSE(isShown("A longer text:"));
  window.c.SetVisible(false);
  Settle();
  EXPECT_TRUE(isShown("C:"));
  window.d.SetVisible(false);
  Settle();
  EXPECT_FALSE(isShown("C:"));
}

TEST_F(WindowsTest, PicturesKeepTheirProportionsAndStripsSpanTheWidth) {
  auto& window = Shown<PlacesWindow>();
  for (const QSize size : {QSize(900, 500), QSize(400, 700)}) {
    TopLevel(window)->resize(size);
    Settle();
    const auto& picture = dynamic_cast<PictureWidget&>(On(window.picture));
    const QRectF covered = picture.Covered();
    EXPECT_NEAR(covered.width() / covered.height(), 40.0 / 20.0, 0.05);
    EXPECT_TRUE(covered.width() > picture.width() - 2 || covered.height() > picture.height() - 2);
    EXPECT_EQ(On(window.strip).height(), 12);
    EXPECT_GT(On(window.strip).width(), size.width() - 60);
  }
}

TEST_F(WindowsTest, TheMouseSpeaksInPixelsOfThePicture) {
  auto& window = Shown<PlacesWindow>();
  Log log;
  window.picture.onMouse = [&](const MouseEvent& event) {
    const char* const names[] = {"down", "move", "up", "click"};
    log.push_back(std::string(names[static_cast<int>(event.action)]) + " " +
                  std::to_string(static_cast<int>(std::floor(event.x))) + " " +
                  std::to_string(static_cast<int>(std::floor(event.y))));
  };
  window.picture.onClick = [&] { log.push_back("click"); };
  TopLevel(window)->resize(900, 500);
  Settle();
  auto& widget = dynamic_cast<PictureWidget&>(On(window.picture));
  const QRectF covered = widget.Covered();
  const auto at = [&](double x, double y) {
    return QPointF(covered.x() + covered.width() * x / 40, covered.y() + covered.height() * y / 20)
        .toPoint();
  };
  QTest::mousePress(&widget, Qt::LeftButton, {}, at(10.5, 5.5));
  QTest::mouseMove(&widget, at(39.5, 19.5));
  QTest::mouseRelease(&widget, Qt::LeftButton, {}, at(39.5, 19.5));
  QTest::mouseClick(&widget, Qt::LeftButton, {}, QPoint(1, widget.height() / 2));  // beside it
  QTest::mouseClick(&widget, Qt::RightButton, {}, at(1, 1));
  EXPECT_EQ(log, (Log{"down 10 5", "move 39 19", "up 39 19", "click"}));
}

TEST(PictureTest, EnlargedPixelsAreSquaresAndReducedOnesMeans) {
  Canvas source(2, 2, kBlack);
  source.SetPixel(1, 0, Rgb(200, 100, 40));
  const QImage large = ScalePicture(source, {5, 4});
  EXPECT_EQ(large.pixel(2, 1), qRgb(0, 0, 0));
  EXPECT_EQ(large.pixel(3, 1), qRgb(200, 100, 40));
  EXPECT_EQ(large.pixel(3, 2), qRgb(0, 0, 0));
  EXPECT_EQ(ScalePicture(source, {1, 1}).pixel(0, 0), qRgb(200 / 4, 100 / 4, 40 / 4));
}

TEST_F(WindowsTest, ARunShowsItsStripAndStopsByIt) {
  auto& window = Shown<DemoWindow>();
  bool goesOn = true;
  bool usable = true;
  window.cmdRun.onClick = [&] {
    ui::Run run(window);
    std::this_thread::sleep_for(std::chrono::milliseconds(510));
    goesOn = run.Report(40);
    QWidget& frame = *TopLevel(window);
    usable = On(window.cmdDem).isEnabled();
    for (auto* bar : frame.findChildren<QProgressBar*>()) {
      if (bar->isEnabled()) {
        EXPECT_EQ(bar->text(), "40%");
      }
    }
    for (auto* button : frame.findChildren<QPushButton*>()) {
      if (button->text() == "Stop" && button->isVisible()) button->click();
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(40));
    goesOn = run.Report(50);
  };
  QTest::mouseClick(&On(window.cmdRun), Qt::LeftButton);
  EXPECT_FALSE(goesOn);
  EXPECT_FALSE(usable);
  Settle();
  EXPECT_TRUE(On(window.cmdDem).isEnabled());
  for (auto* button : TopLevel(window)->findChildren<QPushButton*>()) {
    EXPECT_FALSE(button->text() == "Stop" && button->isVisible());
  }
}

TEST_F(WindowsTest, ClosingDuringARunEndsTheRunFirst) {
  auto& window = Shown<DemoWindow>();
  bool stopped = false;
  window.cmdRun.onClick = [&] {
    ui::Run run(window);
    TopLevel(window)->close();
    EXPECT_TRUE(desktop.IsOpen(window));
    stopped = !run.Report(1);
  };
  QTest::mouseClick(&On(window.cmdRun), Qt::LeftButton);
  EXPECT_TRUE(stopped);
  EXPECT_TRUE(desktop.OpenWindows().empty());
  Settle();
}

class StubbornWindow : public RowsWindow {
 public:
  bool QueryClose() override { return mayClose; }
  bool mayClose = false;
};

TEST_F(WindowsTest, AWindowMayRefuseToClose) {
  auto& window = Shown<StubbornWindow>();
  QWidget* frame = TopLevel(window);
  EXPECT_FALSE(frame->close());
  EXPECT_TRUE(desktop.IsOpen(window) && frame->isVisible());
  window.mayClose = true;
  frame->close();
  EXPECT_TRUE(desktop.OpenWindows().empty());
  Settle();
}

TEST_F(WindowsTest, AModalWindowHoldsItsCallerAndBlocksTheOthers) {
  auto& main = Shown<DemoWindow>();
  RowsWindow modal;
  bool blocked = false;
  modal.removers(1).onClick = [&] {
    blocked = QApplication::activeModalWidget() == TopLevel(modal);
    desktop.Close(modal);
  };
  InDialog<QWidget>([&](QWidget&) { QTest::mouseClick(&On(modal.removers(1)), Qt::LeftButton); });
  desktop.ShowModal(modal, &main);
  EXPECT_TRUE(blocked);
  EXPECT_EQ(TopLevel(modal), nullptr);
  EXPECT_TRUE(desktop.IsOpen(main));
}

TEST_F(WindowsTest, DroppedFilesReachTheWindow) {
  auto window = std::make_unique<RowsWindow>();
  Log dropped;
  window->onDrop = [&](const std::string& path) { dropped.push_back(path); };
  auto& shown = desktop.Show(std::move(window));
  QMimeData files;
  files.setUrls({QUrl::fromLocalFile("/maps/a b.asc"), QUrl("http://example.org/c.asc"),
                 QUrl::fromLocalFile("/maps/d.mif")});
  QDragEnterEvent enter({5, 5}, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(TopLevel(shown), &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop({5, 5}, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(TopLevel(shown), &drop);
  EXPECT_EQ(dropped, (Log{"/maps/a b.asc", "/maps/d.mif"}));
}

TEST_F(WindowsTest, HiddenWindowsComeBackAndCaptionsChange) {
  auto& window = Shown<RowsWindow>();
  desktop.Hide(window);
  EXPECT_EQ(TopLevel(window), nullptr);
  window.SetCaption("Other rows");
  desktop.ShowAgain(window);
  Settle();
  EXPECT_NE(TopLevel(window), nullptr);
}

TEST_F(WindowsTest, AWindowGrowsWithItsContentsUntilAPersonSizesIt) {
  auto& window = Shown<PlacesWindow>();
  QWidget& frame = *TopLevel(window);
  const int before = frame.height();
  window.picture.SetImage(DemoMap(20, 20));  // asks for more height than 40 by 20
  Settle();
  EXPECT_GT(frame.height(), before);
  frame.resize(frame.width(), before);
  window.picture.SetImage(DemoMap(21, 20));
  Settle();
  EXPECT_EQ(frame.height(), before);
}

TEST_F(WindowsTest, ASnapshotIsAPictureFile) {
  auto& window = Shown<DemoWindow>();
  const std::string file = testing::TempDir() + "demo.png";
  EXPECT_TRUE(desktop.Snapshot(window, file));
  EXPECT_EQ(QImage(QString::fromStdString(file)).size(), TopLevel(window)->size());
  EXPECT_FALSE(desktop.Snapshot(window, "/no/such/folder/demo.png"));
}

}  // namespace
}  // namespace ormel::ui
