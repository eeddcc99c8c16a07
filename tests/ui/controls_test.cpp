// What a person and a program can do with each kind of control.
#include <gtest/gtest.h>

#include "support/ui_test_window.h"
#include "ui/headless/script_words.h"

namespace ormel::ui::testing {
namespace {

// One act of a person on a control: the refusal ("" for none), the events it fires and what the
// control shows behind it.
struct Act {
  const char* control;
  const char* verb;
  std::string word;  // of select: one or more
  const char* refusal;
  const char* events;
  const char* shows;
};

Outcome<> Do(Control& control, const Act& act) {
  const std::string verb = act.verb;
  if (verb == "click") return control.Click();
  if (verb == "double") return control.DoubleClick();
  if (verb == "set") return control.Set(act.word);
  if (verb == "select") return control.Select(SplitWords(act.word));
  if (verb == "key") return control.Key(act.word);
  return control.Mouse({MouseAction::kClick, 1, 1});
}

TEST(Controls, APersonsActsFireTheirEventsOnceAndAreRefusedWithAReason) {
  const Act acts[] = {
      {"cmdOk", "click", "", "", "cmdOk:click ", "OK"},
      {"cmdOk", "double", "", "", "cmdOk:double ", "&OK"},
      {"cmdOk", "set", "x", "frmTest.cmdOk takes no value", "", "OK"},
      {"cmdOk", "select", "x", "frmTest.cmdOk has no entries to select", "", "OK"},
      {"cmdOk", "mouse", "", "frmTest.cmdOk is no picture", "", "OK"},
      {"ckSmart", "click", "", "", "ckSmart:change ckSmart:click ", "on"},
      {"ckSmart", "set", "on", "", "", "on"},
      {"ckSmart", "set", "off", "", "ckSmart:change ckSmart:click ", "off"},
      {"ckSmart", "set", "1", "frmTest.ckSmart takes on or off", "", "Filter Data"},
      {"optSlope(0)", "click", "", "", "optSlope(0):click ", "on"},
      {"optSlope(2)", "set", "on", "", "optSlope(2):change optSlope(2):click ", "on"},
      {"optSlope(0)", "set", "off", "", "", "off"},
      {"optSlope(2)", "set", "off",
       "frmTest.optSlope(2) is switched off by choosing another option", "", "Queen"},
      {"txtName", "set", "map", "", "txtName:change txtName:leave ", "map"},
      {"txtName", "set", "map", "", "txtName:leave ", "map"},
      {"txtName", "set", "long name", "", "txtName:change txtName:leave ", "long n"},
      // Six bytes would cut the last letter in two.
      {"txtName", "set", "abcde\xC3\xA9", "", "txtName:change txtName:leave ", "abcde"},
      {"txtName", "key", "BackSpace", "", "txtName:change txtName:BackSpace ", "abcd"},
      {"txtName", "key", "\xC3\xA9", "", "txtName:change txtName:\xC3\xA9 ", "abcd\xC3\xA9"},
      {"txtName", "key", "BackSpace", "", "txtName:change txtName:BackSpace ", "abcd"},
      {"txtName", "key", "=", "", "txtName:change txtName:= ", "abcd="},
      {"txtName", "key", "Home", "", "txtName:Home ", "abcd="},
      {"lstOne", "select", "south", "", "lstOne:select ", "south"},
      {"lstOne", "select", "2", "", "", "south"},
      {"lstOne", "select", "7", "frmTest.lstOne has no entry 7", "", "south"},
      {"lstOne", "select", "1 2", "frmTest.lstOne takes one entry only", "", "south"},
      {"lstOne", "key", "End", "", "lstOne:select lstOne:End ", "7"},
      {"lstOne", "key", "Down", "", "lstOne:Down ", "7"},
      {"lstOne", "select", "none", "", "lstOne:select ", ""},
      {"lstMany", "select", "all", "", "lstMany:select ", "a"},
      {"lstMany", "select", "3 b", "", "lstMany:select ", "b"},
      {"cmbFixed", "select", "2", "", "cmbFixed:change cmbFixed:select ", "hour"},
      {"cmbFixed", "set", "day", "", "cmbFixed:change cmbFixed:select ", "day"},
      {"cmbFixed", "set", "week", "frmTest.cmbFixed has no entry week", "", "day"},
      {"cmbTyped", "set", "three", "", "cmbTyped:change cmbTyped:leave ", "three"},
      {"cmbTyped", "select", "two", "", "cmbTyped:change cmbTyped:select ", "two"},
      {"cmbTyped", "select", "none", "", "cmbTyped:change cmbTyped:select ", ""},
      {"sldWeight", "set", "1000", "", "sldWeight:change ", "100"},
      {"sldWeight", "set", "9999999999", "", "", "100"},
      {"sldWeight", "set", "5.5", "frmTest.sldWeight takes a whole number, not 5.5", "", "100"},
      {"sldWeight", "key", "PageDown", "", "sldWeight:change sldWeight:PageDown ", "90"},
      {"sldWeight", "key", "Home", "", "sldWeight:change sldWeight:Home ", "1"},
      {"sldWeight", "key", "Left", "", "sldWeight:Left ", "1"},
      {"spnWhole", "set", "2147483647", "", "spnWhole:change ", "2147483647"},
      {"spnWhole", "key", "Up", "", "spnWhole:Up ", "2147483647"},
      {"picMap", "mouse", "", "", "picMap:down picMap:up picMap:click ", "4 x 3"},
      {"picMap", "click", "", "", "picMap:click ", "4 x 3"},
      {"swGround", "click", "", "", "swGround:click ", "255"},
      {"Dir", "set", "/no/such", "frmTest.Dir cannot go to /no/such: no such folder", "", ""},
      {"Dir", "set", "/", "", "Dir:change ", "/"},
      {"mSave", "click", "", "", "mSave:click ", "Save"},
      {"TBMain(1,1)", "click", "", "", "TBMain(1,1):click ", "First"},
  };
  TestDesktop test;
  FrmTest& window = test.ShowTest();
  for (const Act& act : acts) {
    SCOPED_TRACE(std::string(act.verb) + " " + act.control + " " + act.word);
    Control* control = window.Find(act.control);
    ASSERT_NE(control, nullptr);
    EXPECT_EQ(Do(*control, act).Text(), act.refusal);
    EXPECT_EQ(window.TakeEvents(), act.events);
    EXPECT_TRUE(control->Shows(act.shows)) << control->Printed();
  }
}

TEST(Controls, ChangesByTheProgramFireNothing) {
  FrmTest window;
  window.ckSmart.SetChecked(true);
  window.optSlope.Choose(2);
  window.txtName.SetText("longer than six");
  window.lstMany.SetSelected({1, 3, 99});
  window.cmbFixed.SetText("week");
  window.sldWeight.SetValue(500);
  window.sldWeight.SetRange(50, 10);
  window.swGround.SetColour(7);
  EXPECT_EQ(window.TakeEvents(), "");
  EXPECT_EQ(window.txtName.Text(), "longer than six") << "the limit is for those who type";
  EXPECT_EQ(window.lstMany.Selected(), (std::vector<int>{1, 3}));
  EXPECT_EQ(window.sldWeight.Value(), 50);
  EXPECT_EQ(window.cmbFixed.SelectedIndex(), 0);
}

TEST(Controls, HiddenAndDisabledOnesRefuseEveryAct) {
  const std::pair<std::string, std::function<void(FrmTest&, bool)>> ways[] = {
      {"is hidden", [](FrmTest& w, bool on) { w.txtInside.SetVisible(on); }},
      {"is disabled", [](FrmTest& w, bool on) { w.txtInside.SetEnabled(on); }},
      {"is hidden", [](FrmTest& w, bool on) { w.fraBox.SetVisible(on); }},
      {"is disabled", [](FrmTest& w, bool on) { w.fraBox.SetEnabled(on); }},
      {"is disabled", [](FrmTest& w, bool on) { w.SetEnabled(on); }}};
  FrmTest window;
  for (const auto& [why, set] : ways) {
    set(window, false);
    const std::string refusal = "frmTest.txtInside " + why;
    EXPECT_EQ(window.txtInside.Set("x").Text(), refusal);
    EXPECT_EQ(window.txtInside.Click().Text(), refusal);
    EXPECT_EQ(window.txtInside.Key("Home").Text(), refusal);
    set(window, true);
    EXPECT_TRUE(window.txtInside.Key("Home").Ok());
    EXPECT_EQ(window.TakeEvents(), "txtInside:Home ");
  }
  window.menu["mFile"].SetEnabled(false);
  EXPECT_EQ(window.menu["mSave"].Click().Text(), "frmTest.mSave is disabled");
  EXPECT_FALSE(window.PressKey("Ctrl+S"));
  window.txtName.SetReadOnly(true);
  EXPECT_EQ(window.txtName.Set("x").Text(), "frmTest.txtName is read only");
}

TEST(Controls, OptionSetsExcludeEachOtherWhateverTheirNames) {
  Window window("frmOptions", "");
  OptionButton high{window, "OptValHigh"};
  OptionButton low{window, "OptValLow"};
  OptionButton other{window, "optOther"};
  {
    OptionSet set{&high, &low};
    high.Choose();
    other.Choose();
    EXPECT_TRUE(high.Chosen() && other.Chosen());
    EXPECT_TRUE(low.Click().Ok());
    EXPECT_TRUE(!high.Chosen() && other.Chosen());
  }
  high.Choose();  // the set is gone, its options are not
  EXPECT_TRUE(high.Chosen() && low.Chosen());
}

TEST(Controls, ArraysGrowShrinkAndListsAreWholeWhenPrinted) {
  FrmTest window;
  window.lstOne.SetItems({"", "x", ""});
  EXPECT_EQ(window.lstOne.Printed(), "\nx\n");
  window.status.SetText(2, "ready");
  EXPECT_EQ(window.status.Printed(), "\nready");
  EXPECT_EQ(window.Find("ckRow(3)"), &window.ckRow(3));
  window.ckRow.Resize(1);
  EXPECT_EQ(window.Find("ckRow(2)"), nullptr);
  window.ckRow.Resize(2);
  EXPECT_EQ(window.Find("ckRow(2)"), &window.ckRow(2));
  window.ckRow.Resize(-1);
  EXPECT_EQ(window.ckRow.Count(), 0);
  window.optSlope.SetCaptions({"a"});
  EXPECT_EQ(window.optSlope.Chosen(), 0);
  EXPECT_THROW(Button(window, "cmdOk"), std::logic_error);
}

TEST(Controls, RichTextFollowsLinksAndCountsItsMarks) {
  Window window("frmPage", "");
  RichText page{window, "docPage"};
  std::vector<std::string> links;
  page.onLink = [&](const std::string& target) { links.push_back(target); };
  page.SetPage(ReadMarkdown("# Maps\n\nSee [**this**](a.md), [that](b.md#c).\n\n## A map\n\nend"),
               "");
  const std::string acts[] = {"this", "b.md#c", "end"};
  for (const std::string& link : acts) {
    EXPECT_EQ(page.Select({&link, 1}).Text(),
              link == "end" ? "frmPage.docPage has no link end" : "");
  }
  EXPECT_EQ(links, (std::vector<std::string>{"a.md", "b.md#c"}));
  EXPECT_FALSE(page.ScrollToHeading("map"));
  EXPECT_TRUE(page.ScrollToHeading("a-map") && page.Shows("A map"));
  page.Mark({"MAP"});
  EXPECT_EQ(page.MarkedCount(), 2);
  for (const int number : {1, 3, 0}) page.ShowMark(number);
  EXPECT_TRUE(page.CurrentMark() == 1 && page.Shows("Maps"));
  int scrolls = 0;
  page.onChange = [&] { ++scrolls; };
  for (const std::size_t place : {0U, 1000U, 1000U}) EXPECT_TRUE(page.Scroll(place).Ok());
  EXPECT_TRUE(scrolls == 1 && page.Shows("end"));
  page.SetPage(ReadMarkdown(""), "");
  EXPECT_TRUE(page.Shows("") && page.MarkedCount() == 0 && page.CurrentMark() == 0);
}

TEST(Controls, AControlMayRemoveItselfInItsOwnHandler) {
  TestDesktop test;
  FrmTest& window = test.ShowTest();
  window.ckRow(3).onChange = [&] {
    window.ckRow.Resize(2);
    window.ckRow.Resize(3);  // a new one of the same name, while the old one still acts
  };
  CheckBox* old = &window.ckRow(3);
  EXPECT_TRUE(old->Click().Ok());
  EXPECT_EQ(window.TakeEvents(), "ckRow(3):click ");
  test.desktop.Sweep();
  EXPECT_NE(&window.ckRow(3), old);
  EXPECT_EQ(window.Find("ckRow(3)"), &window.ckRow(3));
  window.cmdOk.onClick = [&] { window.cmdOk.onClick = [&] { window.events += "second "; }; };
  EXPECT_TRUE(window.cmdOk.Click().Ok() && window.cmdOk.Click().Ok());
  EXPECT_EQ(window.TakeEvents(), "second ");
}

TEST(Controls, KeysOfTheWindowReachMenusAndDefaultButtons) {
  FrmTest window;
  EXPECT_TRUE(window.PressKey("Ctrl+S") && window.PressKey("F12"));
  EXPECT_TRUE(window.PressKey("Return") && window.PressKey("Escape"));
  EXPECT_EQ(window.TakeEvents(), "mSave:click mRun:click cmdOk:click cmdCancel:click ");
  window.cmdOk.SetEnabled(false);
  EXPECT_FALSE(window.PressKey("Return") || window.PressKey("F1"));
  window.SetEnabled(false);
  EXPECT_FALSE(window.PressKey("F12"));
}

TEST(Patterns, FitNamesInAnyCase) {
  const std::tuple<std::string, std::string, bool> cases[] = {{"dem.ASC", "*.asc", true},
                                                              {"dem.asc", "*.grd;*.asc", true},
                                                              {"a.txt", "*.csv,*.txt", true},
                                                              {"dem.asc2", "*.asc", false},
                                                              {"asc", "*.asc", false},
                                                              {"f12.asc", "f?2*.a*c", true},
                                                              {"f2.asc", "f?2.asc", false},
                                                              {"", "*", true},
                                                              {"x", "", false},
                                                              {"aXbXc", "a*X*d", false}};
  for (const auto& [name, patterns, fits] : cases) {
    EXPECT_EQ(FitsPattern(name, patterns), fits) << name << " " << patterns;
  }
  const std::string filter = "ASCII Raster (.asc)|*.asc;*.grd|Bitmap (.bmp)|*.bmp";
  EXPECT_EQ(FilterIndexOf("a.b/OUT.BMP", filter), 2);
  EXPECT_EQ(FilterIndexOf("out.grd", filter), 1);
  EXPECT_EQ(FilterIndexOf("out.txt", filter), 1);
}

}  // namespace
}  // namespace ormel::ui::testing
