// Opening and closing windows, handlers that fail, and long commands.
#include "ui/desktop.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

#include "support/ui_test_window.h"
#include "ui/run.h"
#include "ui/timer.h"

namespace ormel::ui::testing {
namespace {

using namespace std::chrono_literals;

TEST(Desktop, FindsWindowsByNameAndNumber) {
  TestDesktop test;
  FrmTest& first = test.ShowTest("frmView");
  FrmTest& second = test.ShowTest("frmView");
  EXPECT_EQ(test.desktop.FindWindow("frmView"), &first);
  EXPECT_EQ(test.desktop.FindWindow("frmView", 2), &second);
  EXPECT_EQ(test.desktop.FindWindow("frmView", 3), nullptr);
  test.desktop.Close(first);
  EXPECT_EQ(test.desktop.FindWindow("frmView"), &second);
}

TEST(Desktop, AWindowClosedByItsOwnHandlerLivesUntilTheHandlerIsOver) {
  TestDesktop test;
  FrmTest& window = test.ShowTest();
  bool destroyed = false;
  window.onDestroyed = [&] { destroyed = true; };
  std::string seen;
  window.cmdOk.onClick = [&] {
    test.desktop.Close(window);
    test.desktop.Close(window);  // once is enough
    test.desktop.Sweep();
    seen = window.TakeEvents() + (destroyed ? "destroyed" : "alive");
  };
  EXPECT_TRUE(window.cmdOk.Click().Ok());
  EXPECT_EQ(seen, "closed alive");
  EXPECT_FALSE(destroyed);
  test.desktop.Sweep();
  EXPECT_TRUE(destroyed);
}

TEST(Desktop, AsksBeforeItClosesByTheFrame) {
  TestDesktop test;
  FrmTest& window = test.ShowTest();
  window.mayClose = false;
  test.desktop.CloseByFrame(window);
  EXPECT_TRUE(test.desktop.IsOpen(window));
  window.onQueryClose = []() -> bool { throw std::runtime_error("disk full"); };
  window.mayClose = true;
  test.desktop.CloseByFrame(window);
  EXPECT_TRUE(test.desktop.IsOpen(window));
  EXPECT_EQ(test.desktop.TakeMessage(), "disk full");
}

TEST(Desktop, ClosesAllNewestFirstUntilOneRefuses) {
  TestDesktop test;
  std::string order;
  FrmTest* windows[3];
  for (int i = 0; i < 3; ++i) {
    windows[i] = &test.ShowTest();
    windows[i]->onQueryClose = [&order, i] {
      order += std::to_string(i);
      return true;
    };
  }
  windows[1]->mayClose = false;
  test.desktop.CloseAll();
  EXPECT_EQ(order, "2");
  EXPECT_EQ(test.desktop.OpenWindows().size(), 2U);
  windows[1]->mayClose = true;
  test.desktop.CloseAll();
  EXPECT_TRUE(test.desktop.OpenWindows().empty());
  EXPECT_EQ(order, "210");
}

TEST(Desktop, ARefusalThatOpensAWindowEndsClosingAll) {
  TestDesktop test;
  FrmTest& window = test.ShowTest();
  window.onQueryClose = [&] {
    test.ShowTest("frmWhy");
    return false;
  };
  test.desktop.CloseAll();
  EXPECT_EQ(test.desktop.OpenWindows().size(), 2U);
}

TEST(Desktop, AModalWindowIsAloneUntilItIsClosed) {
  TestDesktop test;
  FrmTest modal("frmModal");
  test.desktop.SetModalLoop([&](Window& window) {
    EXPECT_EQ(test.desktop.ModalWindow(), &window);
    modal.cmdOk.onClick = [&] { test.desktop.Close(modal); };
    EXPECT_TRUE(modal.cmdOk.Click().Ok());
  });
  test.desktop.ShowModal(modal);
  EXPECT_EQ(test.desktop.ModalWindow(), nullptr);
  EXPECT_EQ(modal.TakeEvents(), "closed ");
}

TEST(Desktop, AModalWindowWhoseLoopFailsIsNotLeftOpen) {
  TestDesktop test;
  {
    FrmTest modal("frmModal");
    EXPECT_THROW(test.desktop.ShowModal(modal), ScriptError);
  }
  EXPECT_EQ(test.desktop.ModalWindow(), nullptr);
  EXPECT_TRUE(test.desktop.OpenWindows().empty());
}

TEST(Desktop, WindowsStopTheirTimersWhenTheProgramEnds) {
  struct FrmClock : Window {
    explicit FrmClock(Desktop& desktop) : Window("frmClock", ""), timer(desktop, 1000ms, [] {}) {}
    Timer timer;
  };
  TestDesktop test;
  test.desktop.Show(std::make_unique<FrmClock>(test.desktop));
}

TEST(Dispatch, AnErrorInAHandlerEndsInAMessage) {
  TestDesktop test;
  FrmTest& window = test.ShowTest();
  window.cmdOk.onClick = [] { throw std::out_of_range("row 7 is missing"); };
  EXPECT_TRUE(window.cmdOk.Click().Ok());
  EXPECT_EQ(test.log.str(), "message \"row 7 is missing\" title \"ORMEL\" buttons ok -> ok\n");
  FrmTest unseen;
  unseen.cmdOk.onClick = window.cmdOk.onClick;
  EXPECT_THROW((void)unseen.cmdOk.Click(), std::out_of_range);
}

using LongRun = Run;  // a test fixture has a Run of its own

// A long command on cmdOk, and a person who acts at every pump.
class LongCommand : public ::testing::Test {
 protected:
  // Reports until it is stopped or `length` is over; true: it was stopped.
  static bool Work(LongRun& run, std::chrono::milliseconds length) {
    const auto end = std::chrono::steady_clock::now() + length;
    while (std::chrono::steady_clock::now() < end) {
      if (!run.Report(50)) return true;
      std::this_thread::sleep_for(2ms);
    }
    return false;
  }

  FakeScreen screen;
  TestDesktop test{&screen};
  FrmTest& window = test.ShowTest();
};

TEST_F(LongCommand, DisablesItsWindowAndShowsTheStripAfterHalfASecond) {
  bool stripEarly = false;
  bool stripLate = false;
  bool enabled = false;
  window.cmdOk.onClick = [&] {
    LongRun run(window);
    Work(run, 200ms);
    stripEarly = window.StripShown();
    Work(run, 400ms);
    stripLate = window.StripShown() && window.StripPercent() == 50;
    enabled = window.Enabled();
  };
  EXPECT_TRUE(window.cmdOk.Click().Ok());
  EXPECT_FALSE(stripEarly);
  EXPECT_TRUE(stripLate);
  EXPECT_FALSE(enabled);
  EXPECT_TRUE(window.Enabled() && !window.StripShown() && !window.Running());
  EXPECT_GE(screen.pumps, 5);
  EXPECT_LE(screen.pumps, 600 / 33 + 1) << "about 30 a second, however often it reports";
}

TEST_F(LongCommand, EnablesItsWindowOnEveryWayOut) {
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

TEST_F(LongCommand, EndsWhenAPersonPressesStop) {
  screen.onPump = [&] { window.StopRun(); };
  bool stopped = false;
  bool again = true;
  window.cmdOk.onClick = [&] {
    {
      LongRun run(window);
      stopped = Work(run, 5000ms);
    }
    LongRun next(window);
    again = !next.Report(0);
  };
  EXPECT_TRUE(window.cmdOk.Click().Ok());
  EXPECT_TRUE(stopped);
  EXPECT_FALSE(again) << "Stop ends one command";
  EXPECT_TRUE(test.desktop.IsOpen(window));
}

TEST_F(LongCommand, EndsWhenAPersonClosesTheWindowWhichThenCloses) {
  screen.onPump = [&] { test.desktop.CloseByFrame(window); };
  bool stopped = false;
  bool next = false;
  window.onQueryClose = [&] {
    return test.desktop.Ask("Sure?", "", Buttons::kYesNo) == Answer::kYes;
  };
  window.cmdOk.onClick = [&] {
    {
      LongRun run(window);
      stopped = Work(run, 5000ms);
    }
    LongRun second(window);
    next = !second.Report(0);
    EXPECT_TRUE(test.desktop.IsOpen(window));
  };
  test.desktop.AnswerBoxes(Answer::kYes);
  EXPECT_TRUE(window.cmdOk.Click().Ok());
  EXPECT_TRUE(stopped && next) << "the rest of the handler is stopped as well";
  EXPECT_FALSE(test.desktop.IsOpen(window));

  // A question that nobody answers ends the script, not the program.
  FrmTest& second = test.ShowTest();
  second.onQueryClose = [&] {
    return test.desktop.Ask("Sure?", "", Buttons::kYesNo) == Answer::kYes;
  };
  second.cmdOk.onClick = [&] {
    LongRun run(second);
    test.desktop.CloseByFrame(second);
  };
  EXPECT_THROW((void)second.cmdOk.Click(), ScriptError);
}

TEST_F(LongCommand, TellsAFailureButNotACancellation) {
  LongRun run(window);
  EXPECT_TRUE(run.Report(Outcome<>(Done{})));
  EXPECT_FALSE(run.Report(Outcome<>(Cancelled{})));
  EXPECT_FALSE(run.Report(Outcome<>(Failure{FailureKind::kDisk, "disk full"})));
  EXPECT_EQ(test.desktop.TakeMessage(), "disk full");
  EXPECT_EQ(test.desktop.TakeMessage(), std::nullopt);
}

}  // namespace
}  // namespace ormel::ui::testing
