// The program on a desktop: the event loop, and the services of Desktop with the desktop's own
// dialogs, timers, clipboard and network.
//
//   QtProgram program(argc, argv);
//   QtScreen screen(icons);
//   QtDesktop desktop(&screen);
//   desktop.Show(std::make_unique<FrmMain>(...));
//   program.Run(desktop);
#pragma once

#include <memory>

#include "ui/desktop.h"

namespace ormel::ui {

// One a process; the first to be made and the last to go.
class QtProgram {
 public:
  QtProgram(int& argc, char** argv);
  ~QtProgram();
  QtProgram(const QtProgram&) = delete;
  QtProgram& operator=(const QtProgram&) = delete;

  // Returns when the last window of `desktop` is closed, or after Quit(); at once when none is
  // open.
  void Run(const Desktop& desktop);
  void Quit();

  // Calls `ready` whenever the descriptor can be read, until WatchNothing(). At most one.
  void WatchInput(int descriptor, Handler ready);
  void WatchNothing();

 private:
  struct Application;
  std::unique_ptr<Application> application_;
};

class QtDesktop final : public Desktop {
 public:
  // `screen` outlives the desktop.
  explicit QtDesktop(Screen* screen);
  ~QtDesktop() override;

  Answer Pose(const Question& question) override;
  std::optional<std::string> Prompt(const std::string& text, const std::string& title,
                                    const std::string& proposal) override;
  // A dialog without a folder opens where the last one of its title was left, in this session.
  std::optional<FileChoice> OpenFile(const FileDialog& dialog) override;
  // Does not ask about files that exist: the program does, in its own words.
  std::optional<FileChoice> SaveFile(const FileDialog& dialog) override;
  std::optional<Colour> PickColour(const std::string& title, Colour start) override;
  std::optional<Font> PickFont(const std::string& title, const Font& start) override;

  // A tick that shows a dialog is not called again before it returns: the toolkit sees to that.
  TimerId StartTimer(std::chrono::milliseconds interval, Handler tick) override;
  void StopTimer(TimerId timer) override;

  void SetClipboardText(const std::string& text) override;
  std::string ClipboardText() override;
  void SetClipboardPicture(const Canvas& picture) override;

  // Gives up when nothing has arrived for half a minute.
  Outcome<std::string> Fetch(const std::string& url, ProgressSink& progress) override;

  bool ShowSystemInformation() override;

 protected:
  void RunModal(Window& window) override;
  void Idle() override;

 private:
  struct Services;
  std::optional<FileChoice> AskForFile(const FileDialog& dialog, bool save);
  void Tick(TimerId timer);

  std::unique_ptr<Services> services_;
};

}  // namespace ormel::ui
