// The one service that windows ask for everything outside themselves: message boxes, prompts, file,
// colour and font dialogs, other windows, timers, the clipboard and the web. There is one behind a
// screen and one without; windows do not know which.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/canvas.h"
#include "base/colour.h"
#include "base/outcome.h"
#include "base/progress_sink.h"
#include "ui/control.h"
#include "ui/desktop_memory.h"

namespace ormel::ui {

inline constexpr char kProgramTitle[] = "ORMEL";

enum class Buttons { kOk, kOkCancel, kYesNo, kYesNoCancel };
enum class Answer { kOk, kCancel, kYes, kNo };

struct Question {
  std::string text;
  std::string title;
  Buttons buttons = Buttons::kOk;
  Answer onReturn = Answer::kOk;  // what the Return key answers
};

struct FileDialog {
  std::string title;
  std::string filter;            // "ASCII Raster (.asc)|*.asc|Bitmap (.bmp)|*.bmp"
  std::string defaultExtension;  // put behind a name without one; empty: nothing is
  std::string folder;            // where it opens; empty: where its kind was used last
  std::string name;              // proposed name, or a pattern
  FileKind kind = FileKind::kOther;
  bool multiple = false;  // several files may be opened at once
};

struct FileChoice {
  std::vector<std::string> paths;  // at least one
  int filterIndex = 1;             // the chosen entry of the filter, from 1
  const std::string& Path() const { return paths.front(); }
};

struct Font {
  std::string family;
  int size = 10;  // points
  bool bold = false;
  bool italic = false;
};

using TimerId = int;

// What draws the windows and lets a person act on them.
class Screen {
 public:
  virtual ~Screen() = default;
  // Without a `size` the window has the one that its controls ask for.
  virtual void Open(Window& window, Window* owner, bool modal, std::optional<WindowSize> size) = 0;
  virtual void Show(Window& window, bool visible) = 0;
  // To the front, and usable although a modal window is open.
  virtual void BringAbove(Window& window) { Show(window, true); }
  virtual void Close(Window& window) = 0;
  // What windows may use of the screen.
  virtual WindowBox Room() const = 0;
  // Where the window lies, with its title and borders.
  virtual WindowBox BoxOf(const Window& window) const = 0;
  // The size that a person gave an open window; none: it has the one it opened with.
  virtual std::optional<WindowSize> SizeGiven(const Window& window) const = 0;
  // A person gives the window another size.
  virtual void Resize(Window& window, WindowSize size) = 0;
  virtual void ProcessEvents() = 0;
  // A picture of the window as a PNG file. False: it could not be written.
  virtual bool Snapshot(Window& window, const std::string& file) = 0;
};

class Desktop {
 public:
  // `screen` may be null, and outlives the desktop.
  explicit Desktop(Screen* screen);
  virtual ~Desktop();
  Desktop(const Desktop&) = delete;
  Desktop& operator=(const Desktop&) = delete;

  // Message boxes and dialogs. An empty optional is a cancelled dialog.
  virtual Answer Pose(const Question& question) = 0;
  void Message(const std::string& text, const std::string& title = kProgramTitle) {
    Pose({text, title, Buttons::kOk, Answer::kOk});
  }
  // Return gives the first button.
  Answer Ask(const std::string& text, const std::string& title, Buttons buttons);
  // For a question whose Yes destroys what somebody has entered or written: Return gives No.
  Answer AskBeforeLoss(const std::string& text, const std::string& title, Buttons buttons) {
    return Pose({text, title, buttons, Answer::kNo});
  }
  virtual std::optional<std::string> Prompt(const std::string& text, const std::string& title,
                                            const std::string& proposal) = 0;
  std::optional<FileChoice> OpenFile(const FileDialog& dialog) { return ChooseFile(dialog, false); }
  std::optional<FileChoice> SaveFile(const FileDialog& dialog) { return ChooseFile(dialog, true); }
  virtual std::optional<Colour> PickColour(const std::string& title, Colour start) = 0;
  virtual std::optional<Font> PickFont(const std::string& title, const Font& start) = 0;
  // One of several entries, from 0; the first is proposed. Without a person at a screen nothing is
  // asked, and the first is taken.
  virtual std::optional<std::size_t> PickEntry(const std::string& /*text*/,
                                               const std::string& /*title*/,
                                               const std::vector<std::string>& /*entries*/) {
    return 0;
  }
  // The picture as a JPEG file by the desktop's own encoder; none: it has no encoder.
  virtual std::optional<std::string> Jpeg(const Canvas& /*picture*/) { return std::nullopt; }

  // Calls `tick` again and again. See ui/timer.h for a timer that stops itself.
  virtual TimerId StartTimer(std::chrono::milliseconds interval, Handler tick) = 0;
  virtual void StopTimer(TimerId timer) = 0;

  virtual void SetClipboardText(const std::string& text) = 0;
  virtual std::string ClipboardText() = 0;
  virtual void SetClipboardPicture(const Canvas& picture) = 0;

  // The bytes behind a URL. `progress` can stop it.
  [[nodiscard]] virtual Outcome<std::string> Fetch(const std::string& url,
                                                   ProgressSink& progress) = 0;

  // Lets a person act in the middle of a long loop. Run (ui/run.h) calls it often enough.
  void Pump() {
    if (screen_ != nullptr) screen_->ProcessEvents();
  }

  // Starts the operating system's own tool that tells about the machine. False: there is none.
  virtual bool ShowSystemInformation() = 0;

  // Windows. The desktop keeps a window that it is given until it is closed.
  template <class W>
  W& Show(std::unique_ptr<W> window, Window* owner = nullptr) {
    W& shown = *window;
    Keep(std::move(window), owner);
    return shown;
  }
  // Shows a window alone and returns when it is closed. The caller keeps it.
  void ShowModal(Window& window, Window* owner = nullptr);
  void Hide(Window& window);
  void ShowAgain(Window& window);
  // Brings an open window to the front, above a modal one too: a person can use both then.
  void BringAbove(Window& window);
  // The program closes a window: nothing is asked.
  void Close(Window& window);
  // A person closes it by its frame: a running command is stopped first, and the window may refuse.
  void CloseByFrame(Window& window);
  // A person ends the program: every window, the newest first, is asked, until one refuses. Where a
  // command has to be stopped first, the rest follows behind it.
  void CloseAll();

  bool IsOpen(const Window& window) const;
  const std::vector<Window*>& OpenWindows() const { return open_; }  // the oldest first
  // The `number`th open window of that name, the oldest is 1; null: none.
  Window* FindWindow(const std::string& name, int number = 1) const;
  // The modal window that everything waits for; null: none.
  Window* ModalWindow() const { return modal_.empty() ? nullptr : modal_.back(); }
  // Whether it waits for the modal window. What is opened above that one does not.
  bool IsBehindModal(const Window& window) const;
  bool IsHidden(const Window& window) const;

  // What F1 does in a window that has no entry of its own for that key.
  using HelpHandler = std::function<void(const Window& window)>;
  void SetHelp(HelpHandler help) { help_ = std::move(help); }
  bool ShowHelp(const Window& window);  // false: there is no help

  // The windows that a person can go to now, the oldest first.
  std::vector<Window*> WindowsToGoTo() const;
  // Brings the window behind `from` to the front, or the one before it; around the end.
  void GoOn(const Window& from, bool back);
  // Keys that do the same in every window: F1 its help, Ctrl+W closes it as its frame does (the
  // program's own window stays), Ctrl+Tab and Ctrl+Shift+Tab go on to the next one. False: none of
  // them.
  bool UseKey(Window& window, const std::string& key);
  // Sizes of windows and folders of dialogs come from there and go there. Null: they are forgotten.
  // Outlives the desktop, or is taken away before it goes.
  void SetMemory(DesktopMemory* memory) { memory_ = memory; }

  // Called whenever a window was opened, closed, hidden, shown again or got another caption.
  void SetWindowsHandler(Handler handler) { onWindows_ = std::move(handler); }

  Screen* ItsScreen() const { return screen_; }  // null: there is none
  bool Snapshot(Window& window, const std::string& file) {
    return screen_ != nullptr && screen_->Snapshot(window, file);
  }

  // Counts the handlers that are running, so that a window closed by its own handler is destroyed
  // only when the handler is over.
  class Nesting {
   public:
    explicit Nesting(Desktop* desktop) : desktop_(desktop) {
      if (desktop_ != nullptr) ++desktop_->nesting_;
    }
    ~Nesting() {
      if (desktop_ != nullptr && --desktop_->nesting_ == 0) desktop_->Idle();
    }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

   private:
    Desktop* desktop_;
  };

  // Runs a handler or the tick of a timer. A run-time error in it ends in a message, and the
  // program goes on. A window that a person closed during its command closes behind the handler.
  void Dispatch(const Handler& handler);

  // Destroys the closed windows and the removed controls when no handler runs. Whoever sends a
  // person's actions calls it between them.
  void Sweep();

  // Closes and destroys all windows, asking nothing. The program calls it before it lets go of what
  // its windows refer to. So does the destructor of every derived desktop: windows stop their
  // timers as they go, and the base has none to stop.
  void DestroyWindows();

 protected:
  // Shows a dialog, to save or to open. Its folder is decided; empty: the current one.
  virtual std::optional<FileChoice> PickFile(const FileDialog& dialog, bool save) = 0;
  // Returns when `window` is no longer open.
  virtual void RunModal(Window& window) = 0;
  // The outermost handler is over, and Sweep() may be called soon.
  virtual void Idle() {}

 private:
  friend class Window;

  void WindowsChanged() {
    if (onWindows_) onWindows_();
  }
  std::optional<FileChoice> ChooseFile(FileDialog dialog, bool save);
  void Keep(std::unique_ptr<Window> window, Window* owner);
  void Add(Window& window, Window* owner, bool modal);
  void CloseWaiting();

  Screen* screen_;
  std::vector<Window*> open_;
  std::vector<Window*> hidden_;
  std::vector<Window*> modal_;
  std::vector<std::unique_ptr<Window>> kept_;
  std::vector<std::unique_ptr<Window>> closed_;
  HelpHandler help_;
  Handler onWindows_;
  DesktopMemory* memory_ = nullptr;
  int nesting_ = 0;
  bool closingAll_ = false;
};

// The entries of a file dialog's filter.
struct FilterEntry {
  std::string name;
  std::string patterns;  // "*.asc;*.grd"
};
std::vector<FilterEntry> ParseFilter(const std::string& filter);
// The first entry that fits the file's name, from 1; 1 when none does.
int FilterIndexOf(const std::string& path, const std::string& filter);

}  // namespace ormel::ui
