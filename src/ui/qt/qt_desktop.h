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
  std::optional<Colour> PickColour(const std::string& title, Colour start) override;
  std::optional<Font> PickFont(const std::string& title, const Font& start) override;
  std::optional<std::size_t> PickEntry(const std::string& text, const std::string& title,
                                       const std::vector<std::string>& entries) override;
  std::optional<std::string> Jpeg(const Canvas& picture) override;

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
  // Does not ask about files that exist: the program does, in its own words.
  std::optional<FileChoice> PickFile(const FileDialog& dialog, bool save) override;
  void RunModal(Window& window) override;
  void Idle() override;

 private:
  struct Services;
  void Tick(TimerId timer);

  std::unique_ptr<Services> services_;
};

}  // namespace ormel::ui
