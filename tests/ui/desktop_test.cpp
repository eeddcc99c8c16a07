// Opening and closing windows, handlers that fail, and long commands.
#include "ui/desktop.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

#include "support/ui_test_window.h"
#include "ui/run.h"

namespace ormel::ui::testing {
namespace {

using namespace std::chrono_literals;

using LongRun = Run;  // a test fixture has a Run of its own

// One window, with long commands on cmdOk, and a person who acts at every pump.
class DesktopTest : public ::testing::Test, protected TestDesktop {
 protected:
  DesktopTest() : TestDesktop(true) {}

  // Reports until it is stopped or `length` is over; true: it was stopped.
  static bool Work(LongRun& run, std::chrono::milliseconds length) {
    const auto end = std::chrono::steady_clock::now() + length;
    while (std::chrono::steady_clock::now() < end) {
      if (!run.Report(50)) return true;
      std::this_thread::sleep_for(2ms);
    }
    return false;
  }
  // Whether a person's acts stop a long command, and the next one of the same handler.
  std::pair<bool, bool> StoppedOfTwo() {
    std::pair<bool, bool> stopped;
    window.cmdOk.onClick = [&] {
      stopped.first = Work(*std::make_unique<LongRun>(window), 5000ms);
      stopped.second = !LongRun(window).Report(0);
      EXPECT_TRUE(desktop.IsOpen(window));
    };
    EXPECT_TRUE(window.cmdOk.Click().Ok());
    return stopped;
  }

  FrmTest& window = ShowTest();
};

TEST_F(DesktopTest, AWindowClosedByItsOwnHandlerLivesUntilTheHandlerIsOver) {
  bool destroyed = false;
  window.onDestroyed = [&] { destroyed = true; };
  window.cmdOk.onClick = [&] {
    desktop.Close(window);
    desktop.Close(window);  // once is enough
    desktop.Sweep();
    EXPECT_EQ(window.TakeEvents(), "closed ");
  };
  EXPECT_TRUE(window.cmdOk.Click().Ok() && !destroyed);
  desktop.Sweep();
  EXPECT_TRUE(destroyed);
}

TEST_F(DesktopTest, AsksBeforeItClosesByTheFrameAndAnErrorIsAMessage) {
  window.mayClose = false;
  desktop.CloseByFrame(window);
  EXPECT_TRUE(desktop.IsOpen(window));
  window.onQueryClose = []() -> bool { throw std::runtime_error("disk full"); };
  window.mayClose = true;
  desktop.CloseByFrame(window);
  EXPECT_TRUE(desktop.IsOpen(window));
  EXPECT_EQ(log.str(), "message \"disk full\" title \"ORMEL\" buttons ok -> ok\n");
}

TEST_F(DesktopTest, ClosesAllNewestFirstUntilOneRefuses) {
  std::string order;
  FrmTest* windows[] = {&window, &ShowTest(), &ShowTest()};
  for (int i = 0; i < 3; ++i) {
    windows[i]->onQueryClose = [&order, i] {
      order += std::to_string(i);
      return true;
    };
  }
  windows[1]->mayClose = false;
  desktop.CloseAll();
  EXPECT_EQ(order, "2");
  EXPECT_EQ(desktop.OpenWindows().size(), 2U);
  windows[1]->mayClose = true;
  desktop.CloseAll();
  EXPECT_TRUE(desktop.OpenWindows().empty());
  EXPECT_EQ(order, "210");
}

TEST_F(DesktopTest, ARefusalThatOpensAWindowEndsClosingAll) {
  window.onQueryClose = [&] { return ShowTest("frmWhy").Running(); };
  desktop.CloseAll();
  EXPECT_EQ(desktop.OpenWindows().size(), 2U);
}

TEST_F(DesktopTest, ALongCommandDisablesItsWindowAndShowsTheStripAfterHalfASecond) {
  window.cmdOk.onClick = [&] {
    LongRun run(window);
    Work(run, 200ms);
    EXPECT_FALSE(window.StripShown() || window.Enabled());
    Work(run, 400ms);
    EXPECT_TRUE(window.StripShown() && window.StripPercent() == 50);
  };
  EXPECT_TRUE(window.cmdOk.Click().Ok());
  EXPECT_TRUE(window.Enabled() && !window.StripShown() && !window.Running());
  EXPECT_GE(screen.pumps, 5);
  EXPECT_LE(screen.pumps, 600 / 33 + 1) << "about 30 a second, however often it reports";
}

TEST_F(DesktopTest, ALongCommandEnablesItsWindowOnEveryWayOut) {
  window.cmdOk.onClick = [&] {
    LongRun outer(window);
    { LongRun inner(window); }
    EXPECT_FALSE(window.Enabled());
    throw std::runtime_error("unreadable");
  };
  EXPECT_TRUE(window.cmdOk.Click().Ok());
  EXPECT_TRUE(window.Enabled() && !window.Running());
  window.SetEnabled(false);
  { const LongRun run(window); }
  EXPECT_FALSE(window.Enabled()) << "it was disabled before";
}

TEST_F(DesktopTest, StopEndsOneCommandAndClosingAllOfThemAndTheWindow) {
  screen.onPump = [&] { window.StopRun(); };
  EXPECT_EQ(StoppedOfTwo(), std::pair(true, false));
  EXPECT_TRUE(desktop.IsOpen(window));
  window.onQueryClose = [&] { return desktop.Ask("Sure?", "", Buttons::kYesNo) == Answer::kYes; };
  screen.onPump = [&] { desktop.CloseByFrame(window); };
  // A question that nobody answers ends the script, not the program.
  EXPECT_THROW(StoppedOfTwo(), ScriptError);
  desktop.AnswerBoxes(Answer::kYes);
  EXPECT_EQ(StoppedOfTwo(), std::pair(true, true));
  EXPECT_FALSE(desktop.IsOpen(window));
}

TEST_F(DesktopTest, ARunTellsAFailureButNotACancellation) {
  LongRun run(window);
  EXPECT_TRUE(run.Report(Outcome<>(Done{})));
  EXPECT_FALSE(run.Report(Outcome<>(Cancelled{})));
  EXPECT_FALSE(run.Report(Outcome<>(Failure{FailureKind::kDisk, "disk full"})));
  EXPECT_EQ(desktop.TakeMessage(), "disk full");
  EXPECT_EQ(desktop.TakeMessage(), std::nullopt);
}

TEST_F(DesktopTest, F1AsksForHelpWhereAWindowHasNoOtherUseForIt) {
  EXPECT_FALSE(window.PressKey("F1"));
  struct FrmOwn final : Window {
    FrmOwn() : Window("frmOwn", "") {}
    MenuBar menu{*this, {{"mKey", "Key", "F1", {}, {}}}};
  };
  auto& own = desktop.Show(std::make_unique<FrmOwn>());
  std::string asked;
  desktop.SetHelp([&](const Window& one) { asked += one.Name() + " "; });
  EXPECT_TRUE(own.PressKey("F1"));
  EXPECT_TRUE(window.PressKey("F1"));
  window.SetEnabled(false);  // a command runs
  EXPECT_TRUE(window.PressKey("F1"));
  EXPECT_EQ(asked, "frmTest frmTest ");
}

TEST_F(DesktopTest, KeysGoFromWindowToWindowAndCloseAllButTheProgramsOwn) {
  FrmTest& second = ShowTest("frmSecond");
  FrmTest& hidden = ShowTest("frmHidden");
  desktop.Hide(hidden);
  ShowTest("frmBare").SetBare();
  const auto shownBy = [&](Window& from, const std::string& key) {
    screen.shown.clear();
    EXPECT_TRUE(from.PressKey(key));
    return screen.shown;
  };
  EXPECT_EQ(shownBy(window, "Ctrl+Tab"), "frmSecond");
  EXPECT_EQ(shownBy(second, "Ctrl+Tab"), "frmTest");
  EXPECT_EQ(shownBy(window, "Ctrl+Shift+Tab"), "frmSecond");
  window.SetMain();
  EXPECT_FALSE(window.PressKey("Ctrl+W"));
  second.mayClose = false;
  EXPECT_TRUE(second.PressKey("Ctrl+W") && desktop.IsOpen(second)) << "it may refuse, as ever";
  second.mayClose = true;
  EXPECT_TRUE(second.PressKey("Ctrl+W"));
  EXPECT_FALSE(desktop.IsOpen(second));
}

TEST_F(DesktopTest, TellsWhenTheWindowsToGoToHaveChanged) {
  std::string seen;
  desktop.SetWindowsHandler([&] {
    for (const Window* one : desktop.WindowsToGoTo()) seen += one->Caption() + " ";
    seen += "| ";
  });
  FrmTest& other = ShowTest("frmOther");
  other.SetCaption("Renamed");
  desktop.Hide(other);
  desktop.ShowAgain(other);
  desktop.Close(other);
  desktop.SetWindowsHandler({});
  EXPECT_EQ(seen, "Test Test | Test Renamed | Test | Test Renamed | Test | ");
}

TEST_F(DesktopTest, WhatIsBroughtAboveAModalWindowDoesNotWaitForIt) {
  FrmTest& help = ShowTest("frmOther");
  FrmTest modal("frmModal");
  desktop.SetModalLoop([&](Window&) {
    EXPECT_TRUE(desktop.IsBehindModal(window) && desktop.IsBehindModal(help));
    desktop.BringAbove(help);
    EXPECT_TRUE(desktop.IsBehindModal(window));
    EXPECT_FALSE(desktop.IsBehindModal(help) || desktop.IsBehindModal(modal));
    EXPECT_FALSE(desktop.IsBehindModal(ShowTest("frmLater")));
  });
  desktop.ShowModal(modal, &window);
  EXPECT_FALSE(desktop.IsBehindModal(window));
}

TEST_F(DesktopTest, RemembersWhatAPersonChoseAndNothingElse) {
  ShortMemory memory;
  desktop.SetMemory(&memory);
  FrmTest& other = ShowTest("frmOther");
  EXPECT_EQ(screen.opened, std::nullopt);
  memory.size = WindowSize{300, 200};
  ShowTest();
  EXPECT_EQ(screen.opened, memory.size);
  screen.given = WindowSize{640, 480};
  desktop.Close(other);
  screen.given = std::nullopt;
  desktop.Close(window);
  desktop.AnswerFiles(std::vector<std::string>{"a.asc"});
  EXPECT_TRUE(desktop.OpenFile({"Open", "", "", "", "", FileKind::kMaps}));
  desktop.AnswerFiles(std::nullopt);
  EXPECT_FALSE(desktop.SaveFile({"Save", "", "", "", "", FileKind::kOutputs}));
  EXPECT_EQ(memory.notes, "frmOther 640 x 480, a.asc");
  desktop.SetMemory(nullptr);
}

}  // namespace
}  // namespace ormel::ui::testing
