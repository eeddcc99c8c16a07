// Every kind of control in both directions: the program changes it and the screen shows it without
// an event; a person changes it and the program hears of it exactly once.
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QStatusBar>
#include <QToolButton>
#include <functional>

#include "ui/qt/screen_fixture.h"

namespace ormel::ui {
namespace {

class ControlsTest : public ScreenTest {
 protected:
  void SetUp() override { LogEvents(window, log); }

  std::string LineText(const Control& control) {
    return On<QLineEdit>(control).text().toStdString();
  }
  QListView& List(const Control& control) {
    auto* list = qobject_cast<QListView*>(&On(control));
    return list != nullptr ? *list : *On(control).findChild<QListView*>();
  }
  std::vector<int> Rows(const Control& control) {
    std::vector<int> rows;
    for (const QModelIndex& index : List(control).selectionModel()->selectedIndexes()) {
      rows.push_back(index.row() + 1);
    }
    return rows;
  }
  QPoint RowPlace(const Control& control, int row) {
    QListView& list = List(control);
    return list.visualRect(list.model()->index(row - 1, 0)).center();
  }
  void ClickRow(const Control& control, int row, Qt::KeyboardModifiers modifiers = {}) {
    QTest::mouseClick(List(control).viewport(), Qt::LeftButton, modifiers, RowPlace(control, row));
  }

  Log log;
  DemoWindow& window = Shown<DemoWindow>();
};

TEST_F(ControlsTest, TheScreenShowsWhatTheProgramChanges) {
  DemoWindow& w = window;
  struct Case {
    const char* name;
    std::function<void()> change;
    std::function<bool()> shows;
  };
  const Case cases[] = {
      {"disabled", [&] { w.cmdDem.SetEnabled(false); }, [&] { return !On(w.cmdDem).isEnabled(); }},
      {"hidden", [&] { w.cmdSlope.SetVisible(false); }, [&] { return On(w.cmdSlope).isHidden(); }},
      {"tool tip", [&] { w.File.SetToolTip("Maps"); },
       [&] { return On(w.File).toolTip() == "Maps"; }},
      {"label", [&] { w.lblCount.SetCaption("R && D"); },
       [&] { return On<QLabel>(w.lblCount).text() == "R & D"; }},
      {"button", [&] { w.cmdRun.SetCaption("&Again"); },
       [&] { return On<QPushButton>(w.cmdRun).text() == "&Again"; }},
      {"check box", [&] { w.ckMask.SetChecked(false); },
       [&] { return !On<QCheckBox>(w.ckMask).isChecked(); }},
      {"option", [&] { w.optMethod.Choose(3); },
       [&] {
         return On<QRadioButton>(w.optMethod(3)).isChecked() &&
                !On<QRadioButton>(w.optMethod(1)).isChecked();
       }},
      {"text", [&] { w.txtSlope.SetText("slöpe.asc"); },
       [&] { return LineText(w.txtSlope) == "slöpe.asc"; }},
      {"read only", [&] { w.txtDem.SetReadOnly(true); },
       [&] { return On<QLineEdit>(w.txtDem).isReadOnly(); }},
      {"lines", [&] { w.txtNotes.SetText("a\nb"); },
       [&] { return On<QPlainTextEdit>(w.txtNotes).toPlainText() == "a\nb"; }},
      {"entries",
       [&] {
         w.File.SetItems({"one", "two"});
       },
       [&] { return List(w.File).model()->rowCount() == 2; }},
      {"selection", [&] { w.File.SetSelected({2}); },
       [&] { return Rows(w.File) == std::vector<int>{2}; }},
      {"combo", [&] { w.cboPalette.SelectIndex(3); },
       [&] { return On<QComboBox>(w.cboPalette).currentText() == "Heat"; }},
      {"combo without that entry", [&] { w.cboPalette.SetText("mine.ptf"); },
       [&] { return On<QComboBox>(w.cboPalette).placeholderText() == "mine.ptf"; }},
      {"typed combo", [&] { w.cboUnit.SetText("yards"); },
       [&] { return On<QComboBox>(w.cboUnit).currentText() == "yards"; }},
      {"slider", [&] { w.sldWeight.SetRange(200, 500), w.sldWeight.SetValue(400); },
       [&] { return On<QSlider>(w.sldWeight).value() == 400; }},
      {"scroll bar", [&] { w.scrRow.SetValue(7); },
       [&] { return On<QAbstractSlider>(w.scrRow).value() == 7; }},
      {"progress", [&] { w.pbDone.SetPercent(12.5); },
       [&] { return On<QProgressBar>(w.pbDone).text() == "12%"; }},
      {"frame's title", [&] { w.fraLook.SetCaption("Look"); },
       [&] { return On<QGroupBox>(w.fraLook).title() == "Look"; }},
      {"frame hides its controls", [&] { w.fraLook.SetVisible(false); },
       [&] { return !On(w.cboPalette).isVisible(); }},
      {"picture", [&] { w.picMap.SetImage(Canvas(4, 4, Rgb(1, 2, 3))); },
       [&] {
         const QImage grab = On(w.picMap).grab().toImage();
         return grab.pixel(grab.width() / 2, grab.height() / 2) == qRgb(1, 2, 3);
       }},
      {"swatch", [&] { w.swNoData.SetColour(Rgb(0, 9, 0)); },
       [&] { return On(w.swNoData).grab().toImage().pixel(10, 10) == qRgb(0, 9, 0); }},
      {"folder", [&] { w.Dir.SetFolder("/"); },
       [&] { return On(w.Dir).findChild<QLineEdit*>()->text() == "/"; }},
      {"menu entry", [&] { w.menu["mGrid"].SetChecked(true); },
       [&] { return On<QAction>(w.menu["mGrid"]).isChecked(); }},
      {"disabled menu entry", [&] { w.menu["mSeries"].SetEnabled(false); },
       [&] { return !On<QAction>(w.menu["mSeries"]).isEnabled(); }},
      {"status", [&] { w.status.SetText(2, "Ready"); },
       [&] { return On(w.status).findChildren<QLabel*>()[1]->text() == "Ready"; }},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.name);
    EXPECT_FALSE(one.shows());
    one.change();
    Settle();
    EXPECT_TRUE(one.shows());
  }
  EXPECT_EQ(log, Log{});
}

TEST_F(ControlsTest, TheProgramHearsOnceWhatAPersonDoes) {
  DemoWindow& w = window;
  struct Case {
    const char* name;
    std::function<void()> act;
    Log events;
    std::function<std::string()> state;
    std::string expected;
  };
  const auto none = [] { return std::string(); };
  const Case cases[] = {
      {"button",
       [&] { QTest::mouseClick(&On(w.cmdDem), Qt::LeftButton); },
       {"txtDem leave", "cmdDem click"},
       none,
       ""},
      {"button by Return",
       [&] { QTest::keyClick(&On(w.cmdDem), Qt::Key_Return); },
       {"cmdDem click"},
       none,
       ""},
      {"typing",
       [&] { QTest::keyClicks(&On(w.txtSlope), "e"); },
       {"txtSlope change"},
       [&] { return w.txtSlope.Text(); },
       "e"},
      {"maximum length",
       [&] { QTest::keyClicks(&On(w.txtWeight), "78"); },
       {"txtWeight change"},
       [&] { return w.txtWeight.Text(); },
       "357"},
      {"lines",
       [&] {
         On<QPlainTextEdit>(w.txtNotes).selectAll();
         QTest::keyClick(&On(w.txtNotes), Qt::Key_Delete);
       },
       {"txtNotes change"},
       [&] { return w.txtNotes.Text(); },
       ""},
      {"check box",
       [&] { QTest::keyClick(&On(w.ckMask), Qt::Key_Space); },
       {"ckMask change", "ckMask click"},
       [&] { return w.ckMask.Printed(); },
       "off"},
      {"option",
       [&] { QTest::keyClick(&On(w.optMethod(2)), Qt::Key_Space); },
       {"optMethod(2) change", "optMethod(2) click"},
       [&] { return std::to_string(w.optMethod.Chosen()); },
       "2"},
      {"the chosen option again",
       [&] { QTest::keyClick(&On(w.optMethod(2)), Qt::Key_Space); },
       {"optMethod(2) click"},
       [&] { return On<QRadioButton>(w.optMethod(2)).isChecked() ? "on" : "off"; },
       "on"},
      {"option by arrow key",
       [&] { QTest::keyClick(&On(w.optMethod(2)), Qt::Key_Down); },
       {"optMethod(3) change", "optMethod(3) click"},
       [&] { return std::to_string(w.optMethod.Chosen()); },
       "3"},
      {"list",
       [&] { ClickRow(w.File, 4); },
       {"File select", "File click"},
       [&] { return w.File.SelectedText(); },
       "slope.asc"},
      {"list with Shift",
       [&] { ClickRow(w.File, 2, Qt::ShiftModifier); },
       {"File select", "File click"},
       [&] { return std::to_string(w.File.Selected().size()); },
       "3"},
      {"list with Ctrl",
       [&] { ClickRow(w.File, 3, Qt::ControlModifier); },
       {"File select", "File click"},
       [&] { return std::to_string(w.File.Selected().size()); },
       "2"},
      {"Return in a list",
       [&] { QTest::keyClick(&On(w.File), Qt::Key_Return); },
       {"File double click"},
       none,
       ""},
      {"combo",
       [&] { QTest::keyClick(&On(w.cboPalette), Qt::Key_Down); },
       {"cboPalette change", "cboPalette select"},
       [&] { return w.cboPalette.Text(); },
       "Heat"},
      {"typed combo",
       [&] {
         On<QComboBox>(w.cboUnit).lineEdit()->setCursorPosition(99);
         QTest::keyClicks(&On(w.cboUnit), "2");
       },
       {"cboUnit change"},
       [&] { return w.cboUnit.Text(); },
       "metres2"},
      {"slider by page",
       [&] { QTest::keyClick(&On(w.sldWeight), Qt::Key_PageUp); },
       {"sldWeight change"},
       [&] { return w.sldWeight.Printed(); },
       "45"},
      {"scroll bar",
       [&] { QTest::keyClick(&On(w.scrColumn), Qt::Key_Right); },
       {"scrColumn change"},
       [&] { return w.scrColumn.Printed(); },
       "1"},
      {"spin button by mouse",
       [&] {
         QTest::mouseClick(&On(w.spnWeight), Qt::LeftButton, {},
                           QPoint(On(w.spnWeight).width() / 2, 5));
       },
       {"spnWeight change"},
       [&] { return w.spnWeight.Printed(); },
       "1"},
      {"spin button below its end",
       [&] {
         QTest::keyClick(&On(w.spnWeight), Qt::Key_Down);
         QTest::keyClick(&On(w.spnWeight), Qt::Key_Down);
       },
       {"spnWeight change"},
       [&] { return w.spnWeight.Printed(); },
       "0"},
      {"swatch by mouse",
       [&] { QTest::mouseClick(&On(w.swNoData), Qt::LeftButton); },
       {"swNoData click"},
       none,
       ""},
      {"swatch by Return",
       [&] { QTest::keyClick(&On(w.swNoData), Qt::Key_Return); },
       {"swNoData click"},
       none,
       ""},
      {"the way up",
       [&] { QTest::keyClick(&List(w.Dir), Qt::Key_Return); },
       {"Dir change"},
       [&] { return w.Dir.Folder(); },
       "/usr"},
      {"menu entry",
       [&] { On<QAction>(w.menu["mSeries"]).trigger(); },
       {"mSeries click"},
       none,
       ""},
      {"short-cut",
       [&] { QTest::keyClick(TopLevel(w), Qt::Key_F12); },
       {"mSingle click"},
       none,
       ""},
      {"short-cut in a text box",
       [&] { QTest::keyClick(&On(w.txtDem), Qt::Key_O, Qt::ControlModifier); },
       {"mOpen click"},
       none,
       ""},
      {"tool",
       [&] { QTest::mouseClick(&On(*w.tools.Buttons()[0]), Qt::LeftButton); },
       {"TBMain(1) click"},
       none,
       ""},
      {"menu of a tool",
       [&] { On<QAction>(*w.tools.Buttons()[1]->Menu()[0]).trigger(); },
       {"TBMain(2,1) click"},
       none,
       ""},
      {"default button",
       [&] { QTest::keyClick(&On(w.txtDem), Qt::Key_Return); },
       {"cmdRun click"},
       none,
       ""},
      {"cancel button",
       [&] { QTest::keyClick(&On(w.txtDem), Qt::Key_Escape); },
       {"cmdClose click"},
       none,
       ""},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.name);
    log.clear();
    one.act();
    Settle();
    EXPECT_EQ(log, one.events);
    EXPECT_EQ(one.state(), one.expected);
  }
}

TEST_F(ControlsTest, KeysReachTheProgramOnceAndAfterTheWidget) {
  Log keys;
  window.txtSlope.onKey = [&](const std::string& key) {
    keys.push_back(key + window.txtSlope.Text());
  };
  window.picMap.onKey = [&](const std::string& key) { keys.push_back(key); };
  QTest::keyClick(&On(window.txtSlope), 'a');
  QTest::keyClick(&On(window.txtSlope), Qt::Key_Backspace);
  for (const Qt::Key key : {Qt::Key_Home, Qt::Key_Delete, Qt::Key_Equal, Qt::Key_PageDown}) {
    QTest::keyClick(&On(window.picMap), key);
  }
  EXPECT_EQ(keys, (Log{"aa", "BackSpace", "Home", "Delete", "=", "PageDown"}));
}

TEST_F(ControlsTest, ATextBoxIsLeftOnlyForAnotherField) {
  On(window.txtDem).setFocus(Qt::TabFocusReason);
  log.clear();
  InDialog<QWidget>([](QWidget& box) { box.close(); });
  desktop.Message("in between");
  TopLevel(window)->activateWindow();
  Settle();
  ASSERT_TRUE(On(window.txtDem).hasFocus());
  window.SetEnabled(false);  // a command runs
  Settle();
  window.SetEnabled(true);
  Settle();
  EXPECT_EQ(log, Log{});
  EXPECT_TRUE(On(window.txtDem).hasFocus());
  QTest::keyClick(&On(window.txtDem), Qt::Key_Tab);
  EXPECT_EQ(log, Log{"txtDem leave"});
}

TEST_F(ControlsTest, TypingGoesOnWhereTheProgramTidiesTheText) {
  window.txtSlope.onChange = [&] { window.txtSlope.SetText("00" + window.txtSlope.Text()); };
  On(window.txtSlope).setFocus();
  QTest::keyClicks(&On(window.txtSlope), "7");
  Settle();
  EXPECT_EQ(LineText(window.txtSlope), "007");
  EXPECT_EQ(On<QLineEdit>(window.txtSlope).cursorPosition(), 1);
}

TEST_F(ControlsTest, ALongListKeepsItsPlaceAndFillsInOneGo) {
  std::vector<std::string> names;
  names.reserve(100000);
  for (int i = 0; i < 100000; ++i) names.push_back("map" + std::to_string(i));
  window.File.SetItems(names);
  for (int i = 0; i < 1000; ++i) window.File.Add("more");
  Settle();
  QListView& list = List(window.File);
  list.scrollTo(list.model()->index(50000, 0), QListView::PositionAtTop);
  window.File.SetSelected({50002});
  window.File.Add("last");
  window.File.SetItem(7, "renamed");
  Settle();
  EXPECT_EQ(list.model()->rowCount(), 101001);
  EXPECT_EQ(list.indexAt({5, 5}).row(), 50000);
  EXPECT_EQ(Rows(window.File), std::vector<int>{50002});
}

}  // namespace
}  // namespace ormel::ui
