// Every kind of control in both directions: the program changes it and the screen shows it without
// an event; a person changes it and the program hears of it exactly once.
#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QRadioButton>
#include <QScrollBar>
#include <functional>

#include "ui/qt/screen_fixture.h"

namespace ormel::ui {
namespace {

class ControlsTest : public ScreenTest {
 protected:
  using Act = std::function<void()>;

  // Keys and the mouse have tests of their own.
  void SetUp() override {
    for (Control* control : w.Controls()) {
      control->onKey = {};
      control->onMouse = {};
    }
    w.Dir.SetFolder("/usr/share");
    w.txtName.SetText("slope");
    Settle();
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

  // What a person does with the widget of a control.
  Act Click(const Control& control, QPoint place = {}) {
    return [=, this, &control] { QTest::mouseClick(&On(control), Qt::LeftButton, {}, place); };
  }
  Act ClickRow(const Control& control, int row, Qt::KeyboardModifiers modifiers = {}) {
    return [=, this, &control] {
      QListView& list = List(control);
      const QPoint place = list.visualRect(list.model()->index(row - 1, 0)).center();
      QTest::mouseClick(list.viewport(), Qt::LeftButton, modifiers, place);
    };
  }
  Act Press(const Control& control, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    return [=, this, &control] { QTest::keyClick(&On(control), key, modifiers); };
  }
  Act Type(const Control& control, const char* text) {
    return [=, this, &control] { QTest::keyClicks(&On(control), text); };
  }

  FrmTest& w = Shown<FrmTest>();
};

TEST_F(ControlsTest, TheScreenShowsWhatTheProgramChanges) {
  const auto on = [&](const Control& control) { return &On<QObject>(control); };
  auto* folder = On(w.Dir).findChild<QLineEdit*>();
  QLabel* panel = On(w.status).findChildren<QLabel*>()[1];
  // A change, and what a property of a widget is behind it, but not before.
  const std::tuple<Act, QObject*, const char*, QString> cases[] = {
      {[&] { w.cmdOk.SetEnabled(false); }, on(w.cmdOk), "enabled", "false"},
      {[&] { w.cmdOk.SetVisible(false); }, on(w.cmdOk), "visible", "false"},
      {[&] { w.lstMany.SetToolTip("Maps"); }, on(w.lstMany), "toolTip", "Maps"},
      {[&] { w.lblState.SetCaption("R && D"); }, on(w.lblState), "text", "R & D"},
      {[&] { w.cmdCancel.SetCaption("&Again"); }, on(w.cmdCancel), "text", "&Again"},
      {[&] { w.ckSmart.SetChecked(true); }, on(w.ckSmart), "checked", "true"},
      {[&] { w.optSlope.Choose(1); }, on(w.optSlope(0)), "checked", "false"},
      {[&] { w.optSlope.Choose(2); }, on(w.optSlope(2)), "checked", "true"},
      {[&] { w.txtInside.SetText("slöpe.asc"); }, on(w.txtInside), "text", "slöpe.asc"},
      {[&] { w.txtName.SetReadOnly(true); }, on(w.txtName), "readOnly", "true"},
      {[&] { w.txtNotes.SetText("a\nb"); }, on(w.txtNotes), "plainText", "a\nb"},
      {[&] { w.cmbFixed.SelectIndex(2); }, on(w.cmbFixed), "currentText", "hour"},
      {[&] { w.cmbFixed.SetText("week"); }, on(w.cmbFixed), "placeholderText", "week"},
      {[&] { w.cmbTyped.SetText("yards"); }, on(w.cmbTyped), "currentText", "yards"},
      {[&] { w.sldWeight.SetRange(200, 500), w.sldWeight.SetValue(400); }, on(w.sldWeight), "value",
       "400"},
      {[&] { w.scrRow.SetValue(7); }, on(w.scrRow), "value", "7"},
      {[&] { w.pbDone.SetPercent(12.5); }, on(w.pbDone), "text", "12%"},
      {[&] { w.fraBox.SetCaption("Look"); }, on(w.fraBox), "title", "Look"},
      {[&] { w.fraBox.SetVisible(false); }, on(w.txtInside), "visible", "false"},
      {[&] { w.Dir.SetFolder("/"); }, folder, "text", "/"},
      {[&] { w.menu["mRun"].SetChecked(true); }, on(w.menu["mRun"]), "checked", "true"},
      {[&] { w.menu["mSave"].SetEnabled(false); }, on(w.menu["mSave"]), "enabled", "false"},
      {[&] { w.status.SetText(2, "Ready"); }, panel, "text", "Ready"}};
  for (const auto& [change, widget, property, expected] : cases) {
    SCOPED_TRACE(widget->objectName().toStdString() + " " + property);
    EXPECT_NE(widget->property(property).toString(), expected);
    change();
    Settle();
    EXPECT_EQ(widget->property(property).toString(), expected);
  }
  w.lstMany.SetItems({"one", "two"});
  w.lstMany.SetSelected({2});
  w.picMap.SetImage(Canvas(4, 4, Rgb(1, 2, 3)));
  w.swGround.SetColour(Rgb(0, 9, 0));
  Settle();
  EXPECT_EQ(List(w.lstMany).model()->rowCount(), 2);
  EXPECT_EQ(Rows(w.lstMany), std::vector<int>{2});
  const QImage picture = On(w.picMap).grab().toImage();
  EXPECT_EQ(picture.pixel(picture.width() / 2, picture.height() / 2), qRgb(1, 2, 3));
  EXPECT_EQ(On(w.swGround).grab().toImage().pixel(10, 10), qRgb(0, 9, 0));
  EXPECT_EQ(w.TakeEvents(), "");
}

TEST_F(ControlsTest, TheProgramHearsOnceWhatAPersonDoes) {
  struct Case {
    const char* name;
    Act act;
    std::string events;
    const Control* control = nullptr;
    std::string state = {};  // of the control behind it; of a list the entries chosen
  };
  const auto stateOf = [](const Control& control) {
    const auto* list = dynamic_cast<const ListBox*>(&control);
    if (list == nullptr) return control.Printed();
    std::string chosen;
    for (const int row : list->Selected()) chosen += std::to_string(row);
    return chosen;
  };
  const QPoint arrow(On(w.spnWhole).width() / 2, 5);
  const auto isMarked = [&] { EXPECT_TRUE(On<QRadioButton>(w.optSlope(1)).isChecked()); };
  const Case cases[] = {
      {"button", Click(w.cmdOk), "txtInside:leave cmdOk:click "},
      {"button by Return", Press(w.cmdOk, Qt::Key_Return), "cmdOk:click "},
      {"typing", Type(w.txtInside, "e"), "txtInside:change ", &w.txtInside, "e"},
      {"maximum length", Type(w.txtName, "78"), "txtName:change ", &w.txtName, "slope7"},
      {"all lines", Press(w.txtNotes, Qt::Key_A, Qt::ControlModifier), ""},
      {"their end", Press(w.txtNotes, Qt::Key_Delete), "txtNotes:change ", &w.txtNotes, ""},
      {"box", Press(w.ckSmart, Qt::Key_Space), "ckSmart:change ckSmart:click ", &w.ckSmart, "on"},
      {"option", Press(w.optSlope(1), Qt::Key_Space), "optSlope(1):change optSlope(1):click ",
       &w.optSlope(1), "on"},
      {"again", Press(w.optSlope(1), Qt::Key_Space), "optSlope(1):click ", &w.optSlope(1), "on"},
      {"it is marked still", isMarked, ""},
      {"option by arrow key", Press(w.optSlope(1), Qt::Key_Down),
       "optSlope(2):change optSlope(2):click ", &w.optSlope(2), "on"},
      {"list", ClickRow(w.lstMany, 3), "lstMany:select lstMany:click ", &w.lstMany, "3"},
      {"with Shift", ClickRow(w.lstMany, 1, Qt::ShiftModifier), "lstMany:select lstMany:click ",
       &w.lstMany, "123"},
      {"with Ctrl", ClickRow(w.lstMany, 2, Qt::ControlModifier), "lstMany:select lstMany:click ",
       &w.lstMany, "13"},
      {"Return in a list", Press(w.lstMany, Qt::Key_Return), "lstMany:double "},
      {"combo", Press(w.cmbFixed, Qt::Key_Down), "cmbFixed:change cmbFixed:select ", &w.cmbFixed,
       "day"},
      {"typed combo", Type(w.cmbTyped, "2"), "cmbTyped:change ", &w.cmbTyped, "2"},
      {"page", Press(w.sldWeight, Qt::Key_PageUp), "sldWeight:change ", &w.sldWeight, "11"},
      {"scroll bar", Press(w.scrColumn, Qt::Key_Right), "scrColumn:change ", &w.scrColumn, "1"},
      {"spin by mouse", Click(w.spnWhole, arrow), "spnWhole:change ", &w.spnWhole, "1"},
      {"spin", Press(w.spnWhole, Qt::Key_Down), "spnWhole:change ", &w.spnWhole, "0"},
      {"spin below its end", Press(w.spnWhole, Qt::Key_Down), "", &w.spnWhole, "0"},
      {"swatch by mouse", Click(w.swGround), "swGround:click "},
      {"swatch by Return", Press(w.swGround, Qt::Key_Return), "swGround:click "},
      {"the way up", [&] { QTest::keyClick(&List(w.Dir), Qt::Key_Return); }, "Dir:change ", &w.Dir,
       "/usr"},
      {"menu entry", [&] { On<QAction>(w.menu["mSave"]).trigger(); }, "mSave:click "},
      {"short-cut", [&] { QTest::keyClick(TopLevel(w), Qt::Key_F12); }, "mRun:click "},
      {"short-cut in a text", Press(w.txtName, Qt::Key_S, Qt::ControlModifier), "mSave:click "},
      {"tool", Click(*w.tools.Buttons()[1]), "TBMain(2):click "},
      {"menu of a tool", [&] { On<QAction>(*w.tools.Buttons()[0]->Menu()[0]).trigger(); },
       "TBMain(1,1):click "},
      {"default button", Press(w.txtName, Qt::Key_Return), "cmdOk:click "},
      {"cancel button", Press(w.txtName, Qt::Key_Escape), "cmdCancel:click "}};
  for (const Case& one : cases) {
    SCOPED_TRACE(one.name);
    one.act();
    Settle();
    EXPECT_EQ(w.TakeEvents(), one.events);
    EXPECT_TRUE(one.control == nullptr || stateOf(*one.control) == one.state);
  }
}

TEST_F(ControlsTest, KeysReachTheProgramOnceAndAfterTheWidget) {
  Log keys;
  w.txtInside.onKey = [&](const std::string& key) { keys.push_back(key + w.txtInside.Text()); };
  w.picMap.onKey = [&](const std::string& key) { keys.push_back(key); };
  Type(w.txtInside, "a")();
  Press(w.txtInside, Qt::Key_Backspace)();
  for (const Qt::Key key : {Qt::Key_Home, Qt::Key_Delete, Qt::Key_Equal, Qt::Key_PageDown}) {
    Press(w.picMap, key)();
  }
  EXPECT_EQ(keys, (Log{"aa", "BackSpace", "Home", "Delete", "=", "PageDown"}));
  Log helped;
  desktop.SetHelp([&](const Window& window) { helped.push_back(window.Name()); });
  for (const Control* control : {static_cast<Control*>(&w.picMap), static_cast<Control*>(&w.lstOne),
                                 static_cast<Control*>(&w.txtInside)}) {
    Press(*control, Qt::Key_F1)();
  }
  EXPECT_EQ(helped, Log(3, "frmTest"));
}

TEST_F(ControlsTest, ATextBoxIsLeftOnlyForAnotherField) {
  On(w.txtInside).setFocus(Qt::TabFocusReason);
  w.TakeEvents();
  InDialog<QWidget>([](QWidget& box) { box.close(); });
  desktop.Message("in between");
  TopLevel(w)->activateWindow();
  Settle();
  ASSERT_TRUE(On(w.txtInside).hasFocus());
  for (const bool enabled : {false, true}) {  // a command runs
    w.SetEnabled(enabled);
    Settle();
  }
  EXPECT_TRUE(On(w.txtInside).hasFocus());
  EXPECT_EQ(w.TakeEvents(), "");
  Press(w.txtInside, Qt::Key_Tab)();
  EXPECT_EQ(w.TakeEvents(), "txtInside:leave ");
}

TEST_F(ControlsTest, TypingGoesOnWhereTheProgramTidiesTheText) {
  w.txtInside.onChange = [&] { w.txtInside.SetText("00" + w.txtInside.Text()); };
  On(w.txtInside).setFocus();
  Type(w.txtInside, "7")();
  Settle();
  EXPECT_EQ(On<QLineEdit>(w.txtInside).text(), "007");
  EXPECT_EQ(On<QLineEdit>(w.txtInside).cursorPosition(), 1);
}

TEST_F(ControlsTest, ALongListKeepsItsPlaceAndFillsInOneGo) {
  w.lstMany.SetItems(Log(100000, "map"));
  for (int i = 0; i < 1000; ++i) w.lstMany.Add("more");
  Settle();
  QListView& list = List(w.lstMany);
  list.scrollTo(list.model()->index(50000, 0), QListView::PositionAtTop);
  w.lstMany.SetSelected({50002});
  w.lstMany.Add("last");
  w.lstMany.SetItem(7, "renamed");
  Settle();
  EXPECT_EQ(list.model()->rowCount(), 101001);
  EXPECT_EQ(list.indexAt({5, 5}).row(), 50000);
  EXPECT_EQ(Rows(w.lstMany), std::vector<int>{50002});
  // Other entries, and another number of them: as when a folder is read again.
  w.lstMany.SetItems(Log(90000, "new"));
  Settle();
  EXPECT_EQ(list.indexAt({5, 5}).row(), 50000);
}

TEST_F(ControlsTest, ListsThatAreReadAcrossScrollTogether) {
  for (ListBox* list : {&w.lstOne, &w.lstMany}) list->SetItems(Log(100, "map"));
  w.lstOne.onScroll = [this] { w.lstMany.SetFirstShown(w.lstOne.FirstShown()); };
  w.lstMany.onScroll = [this] { w.lstOne.SetFirstShown(w.lstMany.FirstShown()); };
  Settle();
  List(w.lstOne).verticalScrollBar()->setValue(30);
  Settle();
  EXPECT_EQ(List(w.lstMany).indexAt({5, 5}).row(), 30);
  List(w.lstMany).verticalScrollBar()->setValue(20);
  w.lstMany.SetItem(7, "renamed");
  Settle();
  EXPECT_EQ(List(w.lstOne).indexAt({5, 5}).row(), 20);
  EXPECT_EQ(List(w.lstMany).indexAt({5, 5}).row(), 20);
  // A choice out of sight comes into sight, in both.
  w.lstOne.SetSelected({90});
  Settle();
  EXPECT_TRUE(List(w.lstOne).viewport()->rect().intersects(
      List(w.lstOne).visualRect(List(w.lstOne).model()->index(89, 0))));
  EXPECT_EQ(List(w.lstOne).indexAt({5, 5}).row(), List(w.lstMany).indexAt({5, 5}).row());
}

}  // namespace
}  // namespace ormel::ui
