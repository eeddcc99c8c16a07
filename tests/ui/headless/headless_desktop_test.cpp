// Queued answers, the log of dialogs, virtual time, fetching.
#include "ui/headless/headless_desktop.h"

#include <gtest/gtest.h>

#include "support/temporary_folder.h"
#include "support/ui_test_window.h"
#include "ui/headless/script_words.h"
#include "ui/timer.h"

namespace ormel::ui::testing {
namespace {

using namespace std::chrono_literals;
using ormel::testing::TemporaryFolder;
using Paths = std::vector<std::string>;

class Headless : public ::testing::Test, protected TestDesktop {
 protected:
  // The text of the ScriptError that `act` throws; empty: none.
  static std::string ErrorOf(const std::function<void()>& act) {
    try {
      act();
    } catch (const ScriptError& error) {
      return error.Text();
    }
    return "";
  }
};

TEST_F(Headless, LogsEveryDialogOnOneLine) {
  const FileDialog csv{"Add", "CSV (.csv)|*.csv", "csv", "", "", FileKind::kOther, true};
  const FileDialog out{"Export", "ASCII (.asc)|*.asc|Bitmap (.bmp)|*.bmp", "asc", "", ""};
  desktop.Message("Done");
  desktop.AnswerBoxes(Answer::kNo);
  desktop.AnswerBoxes(Answer::kCancel);
  EXPECT_EQ(desktop.Ask("Say \"yes\"\r\nor\nno\\", "T", Buttons::kYesNoCancel), Answer::kNo);
  EXPECT_EQ(desktop.Ask("Go on?", "T", Buttons::kOkCancel), Answer::kCancel);
  desktop.AnswerPrompt("*.grd");
  desktop.AnswerPrompt(std::nullopt);
  desktop.AnswerPrompt("Arial, 12, bold");
  EXPECT_EQ(desktop.Prompt("Filter:", "ORMEL", "*.asc"), "*.grd");
  EXPECT_EQ(desktop.Prompt("Filter:", "ORMEL", ""), std::nullopt);
  const Font font = desktop.PickFont("Legend", {}).value_or(Font{});
  EXPECT_TRUE(font.family == "Arial" && font.size == 12 && font.bold && !font.italic);
  desktop.AnswerFiles(Paths{"a b.csv", "c\\\"d.csv"});
  desktop.AnswerFiles(Paths{"sub/OUT.BMP"});
  desktop.AnswerFiles(std::nullopt);
  EXPECT_EQ(desktop.OpenFile(csv)->paths, (Paths{"a b.csv", "c\\\"d.csv"}));
  const std::optional<FileChoice> save = desktop.SaveFile(out);
  EXPECT_TRUE(save && save->Path() == "sub/OUT.BMP" && save->filterIndex == 2);
  EXPECT_FALSE(desktop.SaveFile(out));
  desktop.AnswerColour(255);
  desktop.AnswerColour(std::nullopt);
  EXPECT_EQ(desktop.PickColour("Ground", 0), 255U);
  EXPECT_EQ(desktop.PickColour("Ground", 0), std::nullopt);
  EXPECT_EQ(desktop.UnusedAnswers(), "");

  EXPECT_EQ(log.str(), R"(message "Done" title "ORMEL" buttons ok -> ok
message "Say \"yes\"\nor\nno\\" title "T" buttons yesnocancel -> no
message "Go on?" title "T" buttons okcancel -> cancel
prompt "Filter:" title "ORMEL" default "*.asc" -> "*.grd"
prompt "Filter:" title "ORMEL" default "" -> cancel
font title "Legend" -> "Arial, 12, bold"
open title "Add" filter "CSV (.csv)|*.csv" -> "a b.csv" "c\\\"d.csv"
save title "Export" filter "ASCII (.asc)|*.asc|Bitmap (.bmp)|*.bmp" -> "sub/OUT.BMP"
save title "Export" filter "ASCII (.asc)|*.asc|Bitmap (.bmp)|*.bmp" -> cancel
colour title "Ground" -> 255
colour title "Ground" -> cancel
)");
}

TEST_F(Headless, ADialogWithoutAFittingAnswerEndsTheScript) {
  const FileDialog load{"Load", "All|*", "", "", ""};
  const std::function<void()> ask = [&] { desktop.Ask("Q?", "T", Buttons::kYesNo); };
  EXPECT_EQ(ErrorOf(ask), R"(no answer is queued for message "Q?" title "T" buttons yesno)");
  desktop.AnswerBoxes(Answer::kOk);
  EXPECT_EQ(ErrorOf(ask),
            R"(the queued answer ok is no button of message "Q?" title "T" buttons yesno)");
  EXPECT_EQ(ErrorOf([&] { (void)desktop.Prompt("P", "T", "x"); }),
            R"(no input is queued for prompt "P" title "T" default "x")");
  EXPECT_EQ(ErrorOf([&] { (void)desktop.OpenFile(load); }),
            R"(no file is queued for open title "Load" filter "All|*")");
  desktop.AnswerFiles(Paths{"a", "b"});
  EXPECT_EQ(ErrorOf([&] { (void)desktop.SaveFile(load); }),
            R"(several files are queued for save title "Load" filter "All|*")");
  EXPECT_EQ(ErrorOf([&] { (void)desktop.PickColour("C", 0); }),
            R"(no colour is queued for colour title "C")");
  desktop.AnswerPrompt("Arial, big");
  EXPECT_EQ(ErrorOf([&] { (void)desktop.PickFont("F", {}); }),
            R"(the queued input "Arial, big" is no font for font title "F")");
  EXPECT_EQ(log.str(), "") << "what was not answered did not happen";
  desktop.AnswerBoxes(Answer::kYes);
  desktop.AnswerFiles(std::nullopt);
  desktop.AnswerPrompt("a\nb");
  desktop.AnswerColour(7);
  EXPECT_EQ(desktop.UnusedAnswers(), R"(answer yes, nofile, input "a\nb", colour 7)");
}

TEST_F(Headless, TimersTickInTheOrderOfTheirTimes) {
  std::string ticks;
  const auto advance = [&](std::chrono::milliseconds time) {
    desktop.Advance(time);
    return std::exchange(ticks, "");
  };
  desktop.StartTimer(30ms, [&] { ticks += "c"; });
  const TimerId fast = desktop.StartTimer(10ms, [&] { ticks += "a"; });
  EXPECT_EQ(advance(9ms), "");
  EXPECT_EQ(advance(1ms), "a");
  EXPECT_EQ(advance(50ms), "acaaaca");  // 20, 30 (c was set first), 40, 50, 60
  desktop.StopTimer(fast);
  desktop.StopTimer(fast);
  EXPECT_EQ(advance(30ms), "c");
}

TEST_F(Headless, ATickMayStopAndStartTimersFailAndCloseItsWindow) {
  int ticks = 0;
  std::unique_ptr<Timer> timer;
  timer = std::make_unique<Timer>(desktop, 0ms, [&] {  // below 1 ms counts as 1
    if (++ticks < 3) return;
    timer = nullptr;
    ++ticks;  // what the tick holds lives on
    desktop.StartTimer(5ms, [] { throw std::runtime_error("no more frames"); });
  });
  desktop.Advance(9ms);
  EXPECT_EQ(ticks, 4);
  EXPECT_EQ(desktop.TakeMessage(), "no more frames");  // at 3 + 5
  EXPECT_EQ(desktop.TakeMessage(), std::nullopt);

  struct FrmClock : Window {
    explicit FrmClock(Desktop& desktop)
        : Window("frmClock", ""), timer(desktop, 1ms, [this, &desktop] { desktop.Close(*this); }) {}
    Timer timer;
  };
  desktop.Show(std::make_unique<FrmClock>(desktop));
  desktop.Advance(1ms);
  EXPECT_EQ(desktop.FindWindow("frmClock"), nullptr);
  desktop.Show(std::make_unique<FrmClock>(desktop));  // this one is open when the program ends
}

TEST_F(Headless, FetchesFilesAndRefusesTheNetworkUnlessGivenOne) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a b%.txt", "tile").string();
  NoProgress progress;
  const std::string url = "file://" + folder.Path().string() + "/a%20b%.txt";
  EXPECT_EQ(desktop.Fetch(url, progress).Value(), "tile");
  EXPECT_EQ(desktop.Fetch("file:" + path, progress).Value(), "tile");
  EXPECT_EQ(desktop.Fetch("file:" + folder.Path().string(), progress).Text(),
            folder.Path().string() + ": cannot be opened");
  EXPECT_EQ(desktop.Fetch("http://tiles/1.png", progress).Text(),
            "http://tiles/1.png: there is no network here");
  desktop.SetNetwork([](const std::string& asked, ProgressSink&) { return asked + "!"; });
  EXPECT_EQ(desktop.Fetch("http://x", progress).Value(), "http://x!");
}

TEST(ScriptWordsTest, SplitAndQuote) {
  const std::pair<const char*, Paths> cases[] = {
      {"  set\tfrm.txt  a ", {"set", "frm.txt", "a"}},
      {R"("a b" "" "say \"x\" \\ C:\new")", {"a b", "", R"(say "x" \ C:\new)"}},
      {R"(C:\dir\ a"b)", {R"(C:\dir\)", R"(a"b)"}}};
  for (const auto& [line, words] : cases) EXPECT_EQ(SplitWords(line), words) << line;
  for (const char* line : {R"(set "a)", R"(set "a\")", R"(set "a"b)"}) {
    EXPECT_THROW(SplitWords(line), ScriptError) << line;
  }
  for (const std::string text : {R"(a "b" \ c)", "", R"(ends\)", R"(\\"\")"}) {
    EXPECT_EQ(SplitWords(Quoted(text)), Paths{text});
  }
  EXPECT_EQ(Quoted("a\r\nb\rc\nd"), R"("a\nb\nc\nd")");
}

}  // namespace
}  // namespace ormel::ui::testing
