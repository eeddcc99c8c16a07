// The language of command scripts: every command, every fault with its place and exit status.
#include "ui/headless/script.h"

#include <gtest/gtest.h>

#include "support/temporary_folder.h"
#include "support/ui_test_window.h"

namespace ormel::ui::testing {
namespace {

using ormel::testing::TemporaryFolder;

class Script : public ::testing::Test, protected TestDesktop {
 protected:
  explicit Script(bool seen = false) : TestDesktop(seen) {
    window.lstOne.SetItems({"north", "south pole", "west"});
    window.cmdCancel.onClick = [this] { AskAll(); };
  }

  // Raises every kind of dialog and shows the answers in txtName.
  void AskAll() {
    const bool sure = desktop.Ask("Sure?", "T", Buttons::kYesNo) == Answer::kYes;
    const auto files = desktop.OpenFile({"Open", "All|*", "", "", "", FileKind::kOther, true});
    const auto text = desktop.Prompt("Name:", "T", "");
    const auto colour = desktop.PickColour("C", 0);
    window.txtName.SetText(std::string(sure ? "yes" : "no") + "|" +
                           (files ? std::to_string(files->paths.size()) : "-") + "|" +
                           text.value_or("-") + "|" + (colour ? std::to_string(*colour) : "-"));
  }

  // Runs a script from its beginning: its exit status, what it printed and what was wrong.
  std::string Run(const std::string& text, const std::function<void()>& before = {}) {
    std::istringstream script(text);
    std::ostringstream out;
    ScriptRunner runner(desktop, script, "t.script", out, out);
    const int status = runner.Run(before);
    return std::to_string(status) + " " + out.str();
  }

  FrmTest& window = ShowTest();
};

TEST_F(Script, ActsAsAPersonWouldPrintsAndExpects) {
  window.lblState.SetCaption("two\r\nlines");
  window.fraBox.SetVisible(false);
  window.fraBox.SetEnabled(false);
  EXPECT_EQ(Run("\xEF\xBB\xBF# a comment\r\n\r\n  # another\nclick frmTest.cmdOk\r\n"
                "doubleclick frmTest.lstOne\nset frmTest.txtName \"a b\"\n"
                "set frmTest.ckRow(2) on\nselect frmTest.lstOne \"south pole\"\n"
                "select frmTest.lstMany 1 c\nmouse frmTest.picMap down 1.5 2\n"
                "mouse frmTest.picMap click 3 0\nkey frmTest.txtName {Home}\n"
                "key frmTest.txtName {F12}\nkey frmTest Ctrl+S\nclick frmTest.TBMain(1,1)\n"
                "key frmTest.txtName =\nprint frmTest.lstOne\nprint frmTest.ckSmart\n"
                "expect frmTest.cmdOk OK\nexpect frmTest.cmdOk &OK\nexpect frmTest.cmdOk enabled\n"
                "expect frmTest.lblState two\\nlines\nexpect frmTest.lblState visible\n"
                "expect frmTest.txtInside hidden\nexpect frmTest.txtInside disabled"),
            "0 north\nsouth pole\nwest\noff\n");
  EXPECT_EQ(window.TakeEvents(),
            "cmdOk:click lstOne:double txtName:change txtName:leave ckRow(2):change ckRow(2):click "
            "lstOne:select lstMany:select picMap:down picMap:down picMap:up picMap:click "
            "txtName:Home mRun:click mSave:click TBMain(1,1):click txtName:change txtName:= ");
}

TEST_F(Script, QueuesAnswersAheadOfTheDialogs) {
  EXPECT_EQ(Run("answer yes\nfile a b\ninput \"x y\"\ncolour 16777215\n"
                "click frmTest.cmdCancel\nexpect frmTest.txtName \"yes|2|x y|16777215\"\n"
                "answer no\nnofile\nnoinput\nnocolour\nclick frmTest.cmdCancel\n"
                "expect frmTest.txtName no|-|-|-\n"
                "expect message Sure?\nexpect message Sure?\nexpect no message\n"),
            "0 ");
  EXPECT_EQ(Run("snapshot frmTest c.png"), "0 ") << "no effect without a screen";
  EXPECT_EQ(Run("file a.asc\ninput x\n"),
            "2 t.script:2: no dialog took file \"a.asc\", input \"x\"\n");
}

TEST_F(Script, TellsEveryFaultWithItsPlace) {
  window.ckRow(1).SetEnabled(false);
  window.ckRow(2).SetVisible(false);
  FrmTest& hidden = ShowTest("frmHidden");
  desktop.Hide(hidden);
  const std::tuple<std::string, int, std::string> cases[] = {
      {"press x", 2, "unknown command press"},
      {"click", 2, "click takes WIN.CTL"},
      {"click frmTest.cmdOk twice", 2, "click takes WIN.CTL"},
      {"nofile x", 2, "nofile takes nothing"},
      {"set frmTest.txtName \"a", 2, "a double quote is not closed"},
      {"click frmOther.cmdOk", 2, "frmOther is not open"},
      {"click frmTest(2).cmdOk", 2, "frmTest(2) is not open"},
      {"click frmTest(0).cmdOk", 2, "frmTest(0) is not open"},
      {"click frmTest", 2, "frmTest: a control is missing (WIN.CTL)"},
      {"click frmTest.cmdNone", 2, "frmTest has no control cmdNone"},
      {"click frmHidden.cmdOk", 2, "frmHidden is hidden"},
      {"click frmTest.ckRow(1)", 2, "frmTest.ckRow(1) is disabled"},
      {"key frmTest.ckRow(1) F12", 2, "frmTest.ckRow(1) is disabled"},
      {"set frmTest.ckRow(2) on", 2, "frmTest.ckRow(2) is hidden"},
      {"select frmTest.lstOne east", 2, "frmTest.lstOne has no entry east"},
      {"key frmTest F11", 2, "frmTest has no use for the key F11"},
      {"mouse frmTest.picMap drag 1 1", 2, "the mouse cannot drag"},
      {"mouse frmTest.picMap click nan 1", 2, "nan is no coordinate"},
      {"mouse frmTest.picMap click 1 1e9", 2, "1e9 is no coordinate"},
      {"answer yes maybe", 2, "maybe is no answer: ok, cancel, yes or no"},
      {"colour 16777216", 2, "16777216 is no whole number from 0 to 16777215"},
      {"advance -1", 2, "-1 is no whole number from 0 to 1000000000"},
      {"expect no way", 2, "no is not open"},
      {"expect same a", 2, "expect takes same FILE FILE"},
      {"expect frmTest.cmdOk Close", 1, R"(expected frmTest.cmdOk "Close", it shows "&OK")"},
      {"expect frmTest.lstOne east", 1,
       R"(expected frmTest.lstOne "east", it shows "north\nsouth pole\nwest")"},
      {"expect frmTest.cmdOk disabled", 1, "frmTest.cmdOk is not disabled"},
      {"expect frmTest.ckRow(2) visible", 1, "frmTest.ckRow(2) is not visible"},
      {"expect message Done", 1, R"(expected message "Done", there is none)"},
      {"expect window frmHidden", 1, "expected window frmHidden, open are: frmTest"},
      {"expect no window frmTest", 1, "expected no window frmTest, it is open"},
      {"expect same no.asc no.asc", 1, "no.asc cannot be opened"},
      {"expect absent /", 1, "expected no file /, it is there"},
      {"click frmTest.cmdCancel", 2,
       R"(no answer is queued for message "Sure?" title "T" buttons yesno)"}};
  for (const auto& [script, status, reason] : cases) {
    // It ends at its first fault.
    EXPECT_EQ(Run("\n\n" + script + "\nprint frmTest.cmdOk\n"),
              std::to_string(status) + " t.script:3: " + reason + "\n");
    if (!desktop.UnusedAnswers().empty()) (void)desktop.Ask("", "", Buttons::kYesNo);
    (void)desktop.TakeMessage();
  }
  // What comes before it may fail as well.
  EXPECT_EQ(Run("print frmTest.cmdOk\n", [this] { AskAll(); }),
            "2 t.script:0: no answer is queued for message \"Sure?\" title \"T\" buttons yesno\n");
}

TEST_F(Script, DamagedScriptsEndWithAFaultAtWorst) {
  const std::string whole =
      "answer yes no\nfile \"a \\\" b\"\ninput x\ncolour 5\nclick frmTest.cmdCancel\n"
      "select frmTest.lstMany 1 c\nkey frmTest(1).txtName {Home}\nadvance 5\n"
      "mouse frmTest.picMap click 1 2\nexpect message Sure?\nprint frmTest.TBMain(1,1)\n"
      "set frmTest.sldWeight 7\nexpect no window frmX(2)\nclose frmTest\n";
  window.mayClose = false;
  for (std::size_t i = 0; i < whole.size(); ++i) {
    (void)Run(whole.substr(0, i));
    for (const char byte : {'\0', '"', '\\', '(', '\n', '9', '\xFF'}) {
      std::string damaged = whole;
      damaged[i] = byte;
      const std::string ran = Run(damaged);
      EXPECT_EQ(ran.find("t.script:") == std::string::npos, ran[0] == '0') << damaged;
    }
  }
}

TEST_F(Script, MessagesAreExpectedOldestFirstInTheirWrittenForm) {
  window.cmdOk.onClick = [this] {
    desktop.Message("C:\\new\r\nis \"full\"");
    desktop.Message("Done");
  };
  EXPECT_EQ(Run("click frmTest.cmdOk\nexpect message \"C:\\\\new\\nis \\\"full\\\"\"\n"), "0 ");
  EXPECT_EQ(Run("expect no message"), "1 t.script:1: expected no message, there is \"Done\"\n");
  EXPECT_EQ(Run("click frmTest.cmdOk\nexpect message Done\n"),
            "1 t.script:2: expected message \"Done\", it is \"C:\\\\new\\nis \\\"full\\\"\"\n");
}

TEST_F(Script, ComparesFilesToTheFirstByteThatDiffers) {
  const TemporaryFolder folder;
  const std::string text(100'000, 'x');  // more than one block
  const std::string a = folder.Write("a b", text + "\n12\n").string();
  const std::string b = folder.Write("b", text + "\n13\n").string();
  const std::string shorter = folder.Write("c", text).string();
  const auto same = [](const std::string& first, const std::string& second) {
    return "expect same \"" + first + "\" \"" + second + "\"\n";
  };
  EXPECT_EQ(Run(same(a, a) + "expect absent " + folder.Path().string() + "/x"), "0 ");
  EXPECT_EQ(Run(same(a, b)),
            "1 t.script:1: " + a + " and " + b + " differ from byte 100003 on (line 2)\n");
  EXPECT_EQ(Run(same(shorter, b)),
            "1 t.script:1: " + shorter + " and " + b + " differ from byte 100001 on (line 1)\n");
}

TEST_F(Script, WindowsCloseByFrameOrThemselvesAndAreCountedByName) {
  ShowTest().lblState.SetCaption("second");
  window.mayClose = false;
  EXPECT_EQ(Run("expect window frmTest(2)\nclose frmTest\nexpect frmTest(2).lblState second\n"
                "close frmTest(2)\nexpect window frmTest\nexpect no window frmTest(2)\n"),
            "0 ");
  window.ckSmart.onChange = [this] { desktop.Close(window); };
  window.ckSmart.onClick = [this] { window.events += "still there"; };
  EXPECT_EQ(Run("click frmTest.ckSmart\nclick frmTest.ckSmart\n"),
            "2 t.script:2: frmTest is not open\n");
}

// cmdOk shows a modal window, and in it cmdOk a second one; the label says what came back.
class ModalScript : public Script {
 protected:
  ModalScript() {
    window.cmdOk.onClick = [this] {
      FrmTest outer("frmOuter");
      outer.cmdOk.onClick = [this, &outer] {
        FrmTest inner("frmInner");
        inner.cmdOk.onClick = [this, &inner] { desktop.Close(inner); };
        desktop.ShowModal(inner, &outer);
        outer.lblState.SetCaption("back with " + inner.txtName.Text());
      };
      outer.cmdCancel.onClick = [this, &outer] { desktop.Close(outer); };
      desktop.ShowModal(outer, &window);
      window.lblState.SetCaption("back");
    };
  }
};

TEST_F(ModalScript, CommandsActInsideTheNewestModalWindow) {
  EXPECT_EQ(Run("click frmTest.cmdOk\nexpect window frmOuter\nclick frmOuter.cmdOk\n"
                "set frmInner.txtName x\nexpect frmOuter.lblState Ready\nclick frmInner.cmdOk\n"
                "expect no window frmInner\nexpect frmOuter.lblState \"back with x\"\n"
                "expect frmTest.lblState Ready\nclose frmOuter\n"
                "expect frmTest.lblState back\n"),
            "0 ");
}

TEST_F(ModalScript, OtherWindowsWaitBehindItAndItIsClosedAtTheEnd) {
  EXPECT_EQ(Run("click frmTest.cmdOk\nclick frmTest.cmdOk\n"),
            "2 t.script:2: frmTest waits behind frmOuter\n");
  EXPECT_EQ(desktop.OpenWindows().size(), 1U) << "the fault leaves no modal window behind";
  EXPECT_EQ(Run("click frmTest.cmdOk\nexpect message x\n")[0], '1');
  EXPECT_EQ(desktop.ModalWindow(), nullptr);
  EXPECT_EQ(Run("click frmTest.cmdOk\nclick frmOuter.cmdOk\n"), "0 ");
  EXPECT_EQ(window.lblState.Caption(), "back");
  window.cmdOk.onClick = [this] {
    for (int tries = 0; tries < 100; ++tries) {  // stands for a loop that asks until all is well
      FrmTest ask("frmAsk");
      desktop.ShowModal(ask);
    }
  };
  EXPECT_EQ(Run("click frmTest.cmdOk"),
            "2 t.script:1: frmAsk opens behind the end of the script\n");
}

TEST_F(ModalScript, TimeGoesOnInsideAModalWindowThatATimerOpened) {
  int ticks = 0;
  int others = 0;
  desktop.StartTimer(std::chrono::milliseconds(10), [&] { ++others; });
  desktop.StartTimer(std::chrono::milliseconds(10), [&] {
    if (++ticks == 1) window.cmdOk.onClick();
  });
  EXPECT_EQ(Run("advance 15\nexpect window frmOuter\nadvance 20\nclick frmOuter.cmdCancel\n"
                "expect frmTest.lblState back\nadvance 10\n"),
            "0 ");
  EXPECT_EQ(others, 4);  // 10; 20 and 30 inside; the clock stands at 30 then, and runs to 40
  EXPECT_EQ(ticks, 2) << "the tick was not over at 20 and 30";
}

struct ScriptOnAScreen : Script {
  ScriptOnAScreen() : Script(true) {}
};

TEST_F(ScriptOnAScreen, LetsItLiveBetweenCommandsAndTakesPictures) {
  EXPECT_EQ(Run("click frmTest.cmdOk\nsnapshot frmTest a.png\n"), "0 ");
  EXPECT_EQ(screen.pumps, 2);
  EXPECT_EQ(screen.pictures, std::vector<std::string>{"a.png"});
  screen.canWrite = false;
  EXPECT_EQ(Run("snapshot frmTest b.png"), "2 t.script:1: cannot write b.png\n");
}

}  // namespace
}  // namespace ormel::ui::testing
