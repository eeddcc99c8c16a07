// Windows: layouts, pictures, the strip of a long command, closing, modal windows and drops.
#include <QCheckBox>
#include <QCloseEvent>
#include <QDropEvent>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QUrl>
#include <QWindow>
#include <algorithm>
#include <chrono>
#include <thread>

#include "ui/qt/qt_picture.h"
#include "ui/qt/screen_fixture.h"
#include "ui/run.h"

namespace ormel::ui {
namespace {

using testing::ShortMemory;
using WindowsTest = ScreenTest;

// Rows that come and go below a text box; a click on one removes the last.
void ArrangeRows(FrmTest& w, int count) {
  w.ckRow.Resize(count);
  Column rows{w.txtName};
  for (const auto& row : w.ckRow) {
    row->onClick = [&w] { ArrangeRows(w, w.ckRow.Count() - 1); };
    rows.items.push_back(Frame{"Factor", Row{"&Use:", *row}});
  }
  w.SetLayout(rows);
}

TEST_F(WindowsTest, RowsComeAndGoUnderTheHandsOfAPerson) {
  auto& w = Shown<FrmTest>();
  ArrangeRows(w, 3);
  Settle();
  QWidget& text = On(w.txtName);
  text.setFocus();
  QTest::keyClicks(&text, "dem");
  const auto boxes = TopLevel(w)->findChildren<QGroupBox*>().size();
  w.TakeEvents();
  ArrangeRows(w, 5);
  Settle();
  EXPECT_TRUE(On(w.ckRow(5)).isVisible() && text.hasFocus());
  EXPECT_EQ(w.TakeEvents(), "") << "nothing was left";
  QTest::keyClick(&On(w.ckRow(5)), Qt::Key_Space);
  Settle();
  EXPECT_EQ(w.ckRow.Count(), 4);
  EXPECT_EQ(TopLevel(w)->findChildren<QCheckBox*>().size(), 4 + 1);  // the fifth is ckSmart's
  EXPECT_EQ(TopLevel(w)->findChildren<QGroupBox*>().size(), boxes + 1);
  QTest::keyClick(&text, Qt::Key_Tab);
  EXPECT_TRUE(On(w.ckRow(1)).hasFocus());
}

TEST_F(WindowsTest, ANewLayoutShowsAtOnceAndWhatIsHiddenStaysHidden) {
  auto window = std::make_unique<FrmTest>();
  window->ckRow(2).SetVisible(false);
  ArrangeRows(*window, 3);
  auto& w = desktop.Show(std::move(window));
  EXPECT_FALSE(On(w.ckRow(2)).isVisible());
  ArrangeRows(w, 4);
  w.ckRow(4).SetVisible(false);
  EXPECT_TRUE(desktop.Snapshot(w, ::testing::TempDir() + "rows.png"));  // draws without waiting
  EXPECT_TRUE(On(w.ckRow(3)).isVisible());
  Settle();
  EXPECT_FALSE(On(w.ckRow(2)).isVisible() || On(w.ckRow(4)).isVisible());
}

class PlacesTest : public ScreenTest {
 protected:
  static std::unique_ptr<FrmTest> Arranged() {
    auto arranged = std::make_unique<FrmTest>();
    FrmTest& w = *arranged;
    w.picMap.SetImage(Canvas(40, 20));
    w.picStrip.SetImage(Canvas(256, 1));
    w.picStrip.SetStripHeight(12);
    w.SetLayout(Column{Table{{"&A:", w.txtName}, {"A longer text:", w.txtInside}},
                       Row{"C:", w.cmbFixed, w.cmbTyped}, w.picMap, w.picStrip});
    return arranged;
  }

  FrmTest& w = desktop.Show(Arranged());
  QWidget& frame = *TopLevel(w);
};

TEST_F(ScreenTest, AWindowBeginsWithTheControlThatItWants) {
  auto made = std::make_unique<FrmTest>();
  FrmTest& w = *made;
  w.SetLayout(Row{w.txtName, w.txtInside});
  w.FocusOn(w.txtInside);
  desktop.Show(std::move(made));
  Settle();
  EXPECT_TRUE(On(w.txtInside).hasFocus());
}

TEST_F(PlacesTest, TablesLineUpAndHiddenControlsTakeNoRoom) {
  Settle();
  const auto placeOf = [&](const Control& control) { return On(control).mapTo(&frame, QPoint()); };
  EXPECT_EQ(placeOf(w.txtName).x(), placeOf(w.txtInside).x());
  QTest::keyClick(&frame, Qt::Key_A, Qt::AltModifier);
  EXPECT_TRUE(On(w.txtName).hasFocus());
  const auto hide = [&](Control& control) {
    control.SetVisible(false);
    Settle();
  };
  const int before = placeOf(w.cmbFixed).y();
  hide(w.txtInside);
  EXPECT_LE(placeOf(w.cmbFixed).y(), before - On(w.txtName).height());
  // A text goes with the last of the controls that it names.
  const auto isShown = [&](const QString& text) {
    const auto texts = frame.findChildren<QLabel*>();
    return std::any_of(texts.begin(), texts.end(),
                       [&](QLabel* label) { return label->text() == text && label->isVisible(); });
  };
  EXPECT_FALSE(isShown("A longer text:"));
  hide(w.cmbFixed);
  EXPECT_TRUE(isShown("C:"));
  hide(w.cmbTyped);
  EXPECT_FALSE(isShown("C:"));
}

TEST_F(PlacesTest, PicturesKeepTheirProportionsAndStripsSpanTheWidth) {
  for (const QSize size : {QSize(780, 500), QSize(400, 700)}) {
    frame.resize(size);
    Settle();
    const auto& picture = dynamic_cast<PictureWidget&>(On(w.picMap));
    const QRectF covered = picture.Covered();
    EXPECT_NEAR(covered.width() / covered.height(), 40.0 / 20.0, 0.05);
    EXPECT_TRUE(covered.width() > picture.width() - 2 || covered.height() > picture.height() - 2);
    EXPECT_EQ(On(w.picStrip).height(), 12);
    EXPECT_GT(On(w.picStrip).width(), size.width() - 60);
  }
}

TEST_F(PlacesTest, TheMouseSpeaksInPixelsOfThePicture) {
  std::vector<int> places;
  w.picMap.onMouse = [&, note = w.picMap.onMouse](const MouseEvent& event) {
    note(event);
    places.push_back(static_cast<int>(std::floor(event.x)));
    places.push_back(static_cast<int>(std::floor(event.y)));
  };
  frame.resize(780, 500);
  Settle();
  auto& widget = dynamic_cast<PictureWidget&>(On(w.picMap));
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
  EXPECT_EQ(places, (std::vector{10, 5, 39, 19, 39, 19}));
  EXPECT_EQ(w.TakeEvents(), "txtName:leave picMap:down picMap:move picMap:up picMap:click ");
}

TEST_F(PlacesTest, AWindowGrowsWithItsContentsUntilAPersonSizesIt) {
  Settle();
  const int before = frame.height();
  w.picMap.SetImage(Canvas(20, 20));  // asks for more height than 40 by 20
  Settle();
  EXPECT_GT(frame.height(), before);
  frame.resize(frame.width(), before);
  w.picMap.SetImage(Canvas(21, 20));
  Settle();
  EXPECT_EQ(frame.height(), before);
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
  auto& window = Shown<FrmTest>();
  QPushButton* stop = nullptr;
  for (auto* button : TopLevel(window)->findChildren<QPushButton*>()) {
    if (button->text() == "Stop") stop = button;
  }
  ASSERT_TRUE(stop != nullptr && !stop->isVisible());
  bool goesOn = true;
  window.cmdOk.onClick = [&] {
    ui::Run run(window);
    std::this_thread::sleep_for(std::chrono::milliseconds(510));
    EXPECT_TRUE(run.Report(40));
    EXPECT_FALSE(On(window.cmdCancel).isEnabled());
    EXPECT_EQ(stop->parentWidget()->findChild<QProgressBar*>()->text(), "40%");
    EXPECT_TRUE(stop->isVisible());
    stop->click();
    std::this_thread::sleep_for(std::chrono::milliseconds(40));
    goesOn = run.Report(50);
  };
  QTest::mouseClick(&On(window.cmdOk), Qt::LeftButton);
  EXPECT_FALSE(goesOn);
  Settle();
  EXPECT_TRUE(On(window.cmdCancel).isEnabled() && !stop->isVisible());
}

TEST_F(WindowsTest, ClosingDuringARunEndsTheRunFirst) {
  auto& window = Shown<FrmTest>();
  bool stopped = false;
  window.cmdOk.onClick = [&] {
    ui::Run run(window);
    TopLevel(window)->close();
    EXPECT_TRUE(desktop.IsOpen(window));
    stopped = !run.Report(1);
  };
  QTest::mouseClick(&On(window.cmdOk), Qt::LeftButton);
  EXPECT_TRUE(stopped && desktop.OpenWindows().empty());
  Settle();
}

TEST_F(WindowsTest, AWindowMayRefuseToCloseAndComesBackWhenItWasHidden) {
  auto& window = Shown<FrmTest>();
  window.mayClose = false;
  QWidget* frame = TopLevel(window);
  EXPECT_FALSE(frame->close());
  EXPECT_TRUE(desktop.IsOpen(window) && frame->isVisible());
  desktop.Hide(window);
  EXPECT_EQ(TopLevel(window), nullptr);
  window.SetCaption("Other rows");
  desktop.ShowAgain(window);
  Settle();
  EXPECT_EQ(TopLevel(window), frame);
  window.mayClose = true;
  frame->close();
  EXPECT_TRUE(desktop.OpenWindows().empty());
  Settle();
}

TEST_F(WindowsTest, AModalWindowHoldsItsCallerAndBlocksTheOthers) {
  auto& main = Shown<FrmTest>();
  FrmTest modal;
  modal.SetCaption("Modal");
  InDialog<QWidget>([&](QWidget& widget) {
    EXPECT_EQ(&widget, TopLevel(modal));
    desktop.Close(modal);
  });
  desktop.ShowModal(modal, &main);
  EXPECT_EQ(TopLevel(modal), nullptr);
  EXPECT_TRUE(desktop.IsOpen(main));
}

TEST_F(WindowsTest, AWindowBroughtAboveAModalOneCanBeUsedAndOutlivesIt) {
  auto& help = Shown<FrmTest>();
  help.SetCaption("Help");
  Settle();
  FrmTest modal;
  InDialog<QWidget>([&](QWidget& widget) {
    desktop.BringAbove(help);
    EXPECT_EQ(TopLevel(help)->windowHandle()->transientParent(), widget.windowHandle());
    desktop.Close(modal);
  });
  desktop.ShowModal(modal);
  Settle();
  EXPECT_NE(TopLevel(help), nullptr);
}

TEST_F(WindowsTest, DroppedFilesReachTheWindow) {
  Log dropped;
  auto window = std::make_unique<FrmTest>();
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

TEST_F(WindowsTest, ASnapshotIsAPictureFile) {
  auto& window = Shown<FrmTest>();
  const std::string file = ::testing::TempDir() + "demo.png";
  EXPECT_TRUE(desktop.Snapshot(window, file));
  EXPECT_EQ(QImage(QString::fromStdString(file)).size(), TopLevel(window)->size());
  EXPECT_FALSE(desktop.Snapshot(window, "/no/such/folder/demo.png"));
}

// A window whose menu lists what there is.
struct FrmList final : Window {
  FrmList() : Window("frmList", "List") { SetLayout(Row{txtFirst, txtSecond}); }
  void List(const std::vector<std::string>& names) {
    std::vector<MenuSpec> entries;
    for (const std::string& name : names) {
      const int number = static_cast<int>(entries.size()) + 1;
      entries.push_back({"mEntry" + std::to_string(number),
                         NumberedCaption(number, name),
                         "Ctrl+" + std::to_string(number),
                         [this, name] { Choose(name); },
                         {}});
    }
    menu["mList"].SetChildren(entries);
  }
  void Choose(const std::string& name) {
    chosen += name + " ";
    List({"after " + name});
  }

  std::string chosen;
  TextBox txtFirst{*this, "txtFirst"};
  TextBox txtSecond{*this, "txtSecond"};
  MenuBar menu{*this,
               {{"mList", "&List", "", [this] { List({"late"}); }, {MenuSpec::Separator()}}}};
};

TEST_F(WindowsTest, AMenuShowsItsNewEntriesAndForgetsTheOldOnesOnceTheirCommandIsOver) {
  auto& w = Shown<FrmList>();
  w.List({"sand & clay", "loam"});
  Settle();
  const auto texts = [&] {
    QStringList shown;
    for (const QAction* action : On<QAction>(w.menu["mList"]).menu()->actions()) {
      if (action->isVisible()) shown += action->text();
    }
    return shown.join("|").toStdString();
  };
  EXPECT_EQ(texts(), "&1 sand && clay|&2 loam");
  QTest::keyClick(TopLevel(w), Qt::Key_2, Qt::ControlModifier);
  Settle();
  EXPECT_EQ(w.chosen, "loam ");
  EXPECT_EQ(texts(), "&1 after loam");
  QTest::keyClick(TopLevel(w), Qt::Key_2, Qt::ControlModifier);
  QTest::keyClick(TopLevel(w), Qt::Key_1, Qt::ControlModifier);
  Settle();
  EXPECT_EQ(w.chosen, "loam after loam ");
  emit On<QAction>(w.menu["mList"]).menu()->aboutToShow();
  EXPECT_EQ(texts(), "&1 late");
}

TEST_F(WindowsTest, KeysGoToTheNextWindowAndCloseOneFromWithinAnyControl) {
  auto& first = Shown<FrmTest>();
  auto& second = Shown<FrmList>();
  const auto press = [&](QWidget& from, Qt::Key key, Qt::KeyboardModifiers more = {}) {
    QTest::keyClick(&from, key, Qt::ControlModifier | more);
    Settle();
  };
  On(second.txtFirst).setFocus();
  press(On(second.txtFirst), Qt::Key_Tab);
  EXPECT_EQ(QApplication::activeWindow(), TopLevel(first));
  for (Control* control : std::vector<Control*>{&first.txtNotes, &first.lstOne, &first.cmdOk}) {
    press(On(*control), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::activeWindow(), TopLevel(second)) << control->Name();
    press(On(second.txtFirst), Qt::Key_Tab);
    EXPECT_EQ(QApplication::activeWindow(), TopLevel(first)) << control->Name();
  }
  EXPECT_EQ(first.txtNotes.Text(), "two\nlines");
  press(On(first.txtNotes), Qt::Key_W);
  EXPECT_FALSE(desktop.IsOpen(first));
  EXPECT_TRUE(desktop.IsOpen(second));
}

// The main window in small.
struct FrmStrip final : Window {
  FrmStrip() : Window("frmStrip", "Strip") {}
  ToolBar tools{*this, "TBMain", {{1, "Load", "", {}, {}}}};
};

TEST_F(WindowsTest, OpenBelowTheStripAndOneBehindTheOther) {
  auto& strip = Shown<FrmStrip>();
  const auto inside = [&](Window& window) {
    return OnScreen(screen.Room(), screen.BoxOf(window)) == screen.BoxOf(window);
  };
  WindowBox before;
  for (int i = 0; i < 30; ++i) {
    auto& window = Shown<FrmList>();
    const WindowBox box = screen.BoxOf(window);
    EXPECT_TRUE(box.top >= screen.BoxOf(strip).Bottom() && inside(window)) << i;
    EXPECT_TRUE(i != 1 || (box.left > before.left && box.top > before.top));
    before = box;
  }
}

TEST_F(WindowsTest, ComeBackInTheSizeThatAPersonGaveThem) {
  ShortMemory memory;
  desktop.SetMemory(&memory);
  const auto sizeOf = [&](const Window& window) { return TopLevel(window)->size(); };
  auto& first = Shown<FrmList>();
  const QSize own = sizeOf(first);
  desktop.Close(first);
  EXPECT_EQ(memory.notes, "") << "nobody changed it";
  auto& second = Shown<FrmList>();
  EXPECT_EQ(sizeOf(second), own);
  screen.Resize(second, {own.width() + 70, own.height() + 50});
  Settle();
  desktop.Close(second);
  auto& third = Shown<FrmList>();
  EXPECT_EQ(sizeOf(third), own + QSize(70, 50));
  // The screen is smaller than the one that it had, and keeps its size for the larger one.
  desktop.Close(third);
  memory = {};
  memory.size = WindowSize{5000, 4000};
  auto& fourth = Shown<FrmList>();
  EXPECT_EQ(OnScreen(screen.Room(), screen.BoxOf(fourth)), screen.BoxOf(fourth));
  desktop.Close(fourth);
  EXPECT_EQ(memory.size, (WindowSize{5000, 4000}));
  // Never smaller than its controls need.
  memory.size = WindowSize{1, 1};
  auto& fifth = Shown<FrmList>();
  QWidget& last = On(fifth.txtSecond);
  EXPECT_TRUE(last.window()->rect().contains({last.mapTo(last.window(), QPoint()), last.size()}));
  EXPECT_GE(last.width(), last.minimumSizeHint().width());
  desktop.SetMemory(nullptr);
}

TEST_F(WindowsTest, TheFiguresOfAStatusStripAreWholeAndStayWhereTheyAre) {
  struct FrmFigures final : Window {
    FrmFigures() : Window("frmFigures", "Figures") { SetLayout(Row{txtFirst}); }
    void Show(const std::vector<std::string>& texts) {
      for (int i = 0; i < 4; ++i) strip.SetText(i + 1, texts[static_cast<std::size_t>(i)]);
    }
    TextBox txtFirst{*this, "txtFirst"};
    StatusStrip strip{*this, "strip", 4};
  };
  auto& w = Shown<FrmFigures>();
  screen.Resize(w, {500, 200});
  const QList<QLabel*> panels = On(w.strip).findChildren<QLabel*>();
  const auto show = [&](const std::vector<std::string>& texts) {
    w.Show(texts);
    Settle();
    std::string cut;  // the panels whose text is not there as a whole
    for (int i = 0; i < 4; ++i) {
      const QLabel& panel = *panels[i];
      const bool isWhole = panel.text().toStdString() == texts[static_cast<std::size_t>(i)] &&
                           panel.width() >= panel.sizeHint().width();
      const bool isTold = panel.toolTip().toStdString() == texts[static_cast<std::size_t>(i)];
      if (!isWhole) cut += std::to_string(i + 1) + (isTold ? " " : "? ");
    }
    return cut;
  };
  EXPECT_EQ(show({"X: 523456.789", "Y: 6123456.789", "Value: 255.123456", "Done"}), "");
  const int valueAt = panels[2]->x();
  EXPECT_EQ(show({"X: 1", "Y: 2", "Value: 3", ""}), "");
  EXPECT_EQ(panels[2]->x(), valueAt);
  const std::string why(200, 'w');
  EXPECT_EQ(show({"X: 523456.789", "Y: 6123456.789", "Value: 255.123456", why}), "4 ");
  EXPECT_EQ(TopLevel(w)->width(), 500);
  screen.Resize(w, {2400, 200});
  EXPECT_EQ(show({"X: 523456.789", "Y: 6123456.789", "Value: 255.123456", why}), "");
}

}  // namespace
}  // namespace ormel::ui
