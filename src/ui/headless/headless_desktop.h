// The desktop of a script: answers to dialogs are queued ahead, every dialog is written to a log as
// it happens, time passes only when the script says so, and the clipboard is this program's own.
// With a Screen the same desktop runs a script before a person's eyes.
//
// One line of the log for each dialog, with texts as script words (see script_words.h):
//
//   message "Overwrite?" title "Save" buttons yesnocancel -> no
//   prompt "New Filter:" title "ORMEL" default "*.asc" -> "*.grd"
//   open title "Load Factor" filter "ASCII Raster (.asc)|*.asc" -> "a.asc"
//   save title "Export" filter "Bitmap (.bmp)|*.bmp" -> cancel
//   colour title "Colour" -> 255
//   font title "Font" -> "Arial, 12, bold"
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "ui/desktop.h"

namespace ormel::ui {

// Ends a script. It is no std::exception, so that it passes through the handlers of windows, which
// turn those into messages.
class ScriptError {
 public:
  explicit ScriptError(std::string text) : text_(std::move(text)) {}
  const std::string& Text() const { return text_; }

 private:
  std::string text_;
};

class HeadlessDesktop final : public Desktop {
 public:
  // `log` and `screen` (may be null) outlive the desktop.
  explicit HeadlessDesktop(std::ostream& log, Screen* screen = nullptr);
  ~HeadlessDesktop() override;

  // Queues answers, first in, first out. A message box with OK alone takes none; every other dialog
  // takes one, and throws ScriptError when none is queued or the one that is does not suit it.
  void AnswerBoxes(Answer answer) { answers_.push_back(answer); }
  void AnswerPrompt(std::optional<std::string> text) { prompts_.push_back(std::move(text)); }
  // At least one path; they reach the program as they stand; the extension of the first picks the
  // filter entry.
  void AnswerFiles(std::optional<std::vector<std::string>> paths) {
    files_.push_back(std::move(paths));
  }
  void AnswerColour(std::optional<Colour> colour) { colours_.push_back(colour); }
  // What is still queued, in words; empty: nothing.
  std::string UnusedAnswers() const;

  // The oldest message, whatever its buttons, that was not taken yet.
  std::optional<std::string> TakeMessage();

  // Lets `time` pass: the timers that fall due tick in the order of their times;
  // a tick that is not over yet is left out.
  void Advance(std::chrono::milliseconds time);

  // What lets a modal window run: returns when it is closed, or leaves it to be closed at once.
  // Without it a modal window is a ScriptError.
  void SetModalLoop(std::function<void(Window&)> loop) { modalLoop_ = std::move(loop); }

  // The network; without it only file: URLs can be fetched.
  using Fetcher = std::function<Outcome<std::string>(const std::string& url, ProgressSink&)>;
  void SetNetwork(Fetcher network) { network_ = std::move(network); }

  // The message or question that was posed last.
  const Question& LastQuestion() const { return lastQuestion_; }

  const Canvas& ClipboardPicture() const { return clipboardPicture_; }

  Answer Pose(const Question& question) override;
  // A font's answer comes from the prompts: "Arial, 12, bold, italic".
  std::optional<std::string> Prompt(const std::string& text, const std::string& title,
                                    const std::string& proposal) override;
  std::optional<Colour> PickColour(const std::string& title, Colour start) override;
  std::optional<Font> PickFont(const std::string& title, const Font& start) override;

  // An interval below 1 ms counts as 1.
  TimerId StartTimer(std::chrono::milliseconds interval, Handler tick) override;
  void StopTimer(TimerId timer) override { timers_.erase(timer); }

  void SetClipboardText(const std::string& text) override { clipboardText_ = text; }
  std::string ClipboardText() override { return clipboardText_; }
  void SetClipboardPicture(const Canvas& picture) override { clipboardPicture_ = picture; }
  Outcome<std::string> Fetch(const std::string& url, ProgressSink& progress) override;

  bool ShowSystemInformation() override { return false; }

 protected:
  std::optional<FileChoice> PickFile(const FileDialog& dialog, bool save) override;
  void RunModal(Window& window) override;

 private:
  struct Tick {
    Handler run;
    bool running = false;
  };
  struct RunningTimer {
    std::int64_t interval = 1;  // milliseconds
    std::int64_t due = 0;       // on the clock of now_
    std::uint64_t turn = 0;     // of two that fall due together the one set earlier ticks first
    std::shared_ptr<Tick> tick;
  };

  RunningTimer* NextDue(std::int64_t end);

  std::ostream& log_;
  std::deque<Answer> answers_;
  std::deque<std::optional<std::string>> prompts_;
  std::deque<std::optional<std::vector<std::string>>> files_;
  std::deque<std::optional<Colour>> colours_;
  std::deque<std::string> messages_;
  Question lastQuestion_;
  std::function<void(Window&)> modalLoop_;
  Fetcher network_;
  std::map<TimerId, RunningTimer> timers_;
  TimerId lastTimer_ = 0;
  std::uint64_t lastTurn_ = 0;
  std::int64_t now_ = 0;  // milliseconds
  std::string clipboardText_;
  Canvas clipboardPicture_;
};

// "ok", "cancel", "yes", "no".
std::string AnswerName(Answer answer);
// The answer of that name; none: it is no such name.
std::optional<Answer> AnswerNamed(const std::string& name);

}  // namespace ormel::ui
