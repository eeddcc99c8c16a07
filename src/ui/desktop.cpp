#include "ui/desktop.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "ui/file_controls.h"
#include "ui/window.h"

namespace ormel::ui {

Desktop::Desktop(Screen* screen) : screen_(screen) {}

Desktop::~Desktop() = default;

Answer Desktop::Ask(const std::string& text, const std::string& title, Buttons buttons) {
  const bool hasYes = buttons == Buttons::kYesNo || buttons == Buttons::kYesNoCancel;
  return Pose({text, title, buttons, hasYes ? Answer::kYes : Answer::kOk});
}

void Desktop::Add(Window& window, Window* owner, bool modal) {
  window.desktop_ = this;
  open_.push_back(&window);
  if (modal) modal_.push_back(&window);
  if (screen_ != nullptr) {
    screen_->Open(window, owner, modal,
                  memory_ == nullptr ? std::nullopt : memory_->SizeOf(window.Name()));
  }
  WindowsChanged();
}

void Desktop::Keep(std::unique_ptr<Window> window, Window* owner) {
  Window& shown = *window;
  kept_.push_back(std::move(window));
  Add(shown, owner, false);
}

void Desktop::ShowModal(Window& window, Window* owner) {
  const Nesting nesting(this);
  Add(window, owner, true);
  try {
    RunModal(window);
  } catch (...) {
    Close(window);  // the caller is about to destroy it
    throw;
  }
  Close(window);
}

std::optional<FileChoice> Desktop::ChooseFile(FileDialog dialog, bool save) {
  if (dialog.folder.empty() && memory_ != nullptr) dialog.folder = memory_->FolderOf(dialog.kind);
  std::optional<FileChoice> choice = PickFile(dialog, save);
  if (choice && memory_ != nullptr) memory_->NoteChosen(dialog.kind, choice->Path());
  return choice;
}

void Desktop::Hide(Window& window) {
  if (!IsHidden(window)) hidden_.push_back(&window);
  if (screen_ != nullptr) screen_->Show(window, false);
  WindowsChanged();
}

void Desktop::ShowAgain(Window& window) {
  std::erase(hidden_, &window);
  if (screen_ != nullptr) screen_->Show(window, true);
  WindowsChanged();
}

void Desktop::BringAbove(Window& window) {
  std::erase(hidden_, &window);
  std::erase(open_, &window);
  open_.push_back(&window);
  if (screen_ != nullptr) screen_->BringAbove(window);
}

bool Desktop::IsBehindModal(const Window& window) const {
  const Window* modal = ModalWindow();
  if (modal == nullptr || modal == &window) return false;
  return std::find(std::find(open_.begin(), open_.end(), modal), open_.end(), &window) ==
         open_.end();
}

bool Desktop::ShowHelp(const Window& window) {
  if (!help_) return false;
  Dispatch([&] { help_(window); });
  return true;
}

std::vector<Window*> Desktop::WindowsToGoTo() const {
  std::vector<Window*> windows = open_;
  std::erase_if(windows, [this](const Window* window) {
    return IsHidden(*window) || IsBehindModal(*window) || window->Bare();
  });
  return windows;
}

void Desktop::GoOn(const Window& from, bool back) {
  const std::vector<Window*> windows = WindowsToGoTo();
  const auto here = std::find(windows.begin(), windows.end(), &from);
  if (here == windows.end()) return;
  const auto count = windows.size();
  const auto place = static_cast<std::size_t>(here - windows.begin());
  ShowAgain(*windows[(place + (back ? count - 1 : 1)) % count]);
}

bool Desktop::UseKey(Window& window, const std::string& key) {
  if (key == "F1") return ShowHelp(window);
  if (key == "Ctrl+Tab" || key == "Ctrl+Shift+Tab") {
    GoOn(window, key == "Ctrl+Shift+Tab");
    return true;
  }
  if (key != "Ctrl+W" || window.IsMain()) return false;
  CloseByFrame(window);
  return true;
}

void Desktop::Close(Window& window) {
  if (!IsOpen(window)) return;
  const Nesting nesting(this);
  window.StopRun();
  std::erase(open_, &window);
  std::erase(hidden_, &window);
  std::erase(modal_, &window);
  if (screen_ != nullptr) {
    const std::optional<WindowSize> size = screen_->SizeGiven(window);
    if (size && memory_ != nullptr) memory_->NoteSize(window.Name(), *size);
    screen_->Close(window);
  }
  window.OnClosed();
  WindowsChanged();
  const auto kept = std::find_if(kept_.begin(), kept_.end(),
                                 [&](const auto& one) { return one.get() == &window; });
  if (kept == kept_.end()) return;
  closed_.push_back(std::move(*kept));
  kept_.erase(kept);
}

void Desktop::CloseByFrame(Window& window) {
  if (!IsOpen(window)) return;
  if (window.Running()) {
    window.StopRun();
    window.closeWhenIdle_ = true;
    return;
  }
  window.Dispatch([&] {
    if (window.QueryClose()) Close(window);
  });
}

void Desktop::CloseAll() {
  closingAll_ = true;
  while (!open_.empty()) {
    Window& newest = *open_.back();
    CloseByFrame(newest);
    if (IsOpen(newest)) {
      closingAll_ = newest.closeWhenIdle_;
      return;
    }
  }
}

bool Desktop::IsOpen(const Window& window) const {
  return std::find(open_.begin(), open_.end(), &window) != open_.end();
}

bool Desktop::IsHidden(const Window& window) const {
  return std::find(hidden_.begin(), hidden_.end(), &window) != hidden_.end();
}

Window* Desktop::FindWindow(const std::string& name, int number) const {
  for (Window* window : open_) {
    if (window->Name() == name && --number == 0) return window;
  }
  return nullptr;
}

void Desktop::Dispatch(const Handler& handler) {
  const Nesting nesting(this);
  try {
    handler();
  } catch (const std::exception& error) {
    Message(error.what());
  }
  CloseWaiting();
}

// Not left to the end of the run itself: the window may ask whether to close, and that question
// must be free to fail.
void Desktop::CloseWaiting() {
  while (true) {
    const auto waiting = std::find_if(open_.begin(), open_.end(), [](const Window* window) {
      return window->closeWhenIdle_ && !window->Running();
    });
    if (waiting == open_.end()) return;
    Window& window = **waiting;
    window.closeWhenIdle_ = false;
    CloseByFrame(window);
    if (std::exchange(closingAll_, false) && !IsOpen(window)) CloseAll();
  }
}

void Desktop::Sweep() {
  if (nesting_ != 0) return;
  for (Window* window : open_) window->DestroyRetired();
  // A window that goes may close others.
  const auto gone = std::exchange(closed_, {});
}

void Desktop::DestroyWindows() {
  while (!open_.empty()) Close(*open_.back());
  while (!closed_.empty()) {
    const auto gone = std::exchange(closed_, {});
  }
}

std::vector<FilterEntry> ParseFilter(const std::string& filter) {
  std::vector<std::string> parts(1);
  for (const char letter : filter) {
    if (letter == '|') {
      parts.emplace_back();
    } else {
      parts.back() += letter;
    }
  }
  std::vector<FilterEntry> entries;
  for (std::size_t i = 0; i + 1 < parts.size(); i += 2) {
    entries.push_back({parts[i], parts[i + 1]});
  }
  return entries;
}

int FilterIndexOf(const std::string& path, const std::string& filter) {
  const std::string name = path.substr(path.find_last_of("/\\") + 1);
  const std::vector<FilterEntry> entries = ParseFilter(filter);
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (FitsPattern(name, entries[i].patterns)) return static_cast<int>(i) + 1;
  }
  return 1;
}

}  // namespace ormel::ui
