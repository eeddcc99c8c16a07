// The windows on the user's screen. It draws every window and control of ui/ with the desktop's own
// widgets and hands what a person does to the controls. It needs a QtProgram (ui/qt/qt_desktop.h)
// that lives longer, and works under any Desktop.
#pragma once

#include <memory>
#include <string>

#include "ui/desktop.h"

namespace ormel::ui {

class QtScreen final : public Screen {
 public:
  // `iconFolder` holds the pictures of toolbars. A button whose picture is not there shows its
  // text.
  explicit QtScreen(std::string iconFolder = "");
  ~QtScreen() override;

  void Open(Window& window, Window* owner, bool modal, std::optional<WindowSize> size) override;
  void Show(Window& window, bool visible) override;
  void BringAbove(Window& window) override;
  void Close(Window& window) override;
  WindowBox Room() const override;
  WindowBox BoxOf(const Window& window) const override;
  std::optional<WindowSize> SizeGiven(const Window& window) const override;
  void Resize(Window& window, WindowSize size) override;
  void ProcessEvents() override;
  bool Snapshot(Window& window, const std::string& file) override;

 private:
  struct Windows;
  std::unique_ptr<Windows> windows_;
};

}  // namespace ormel::ui
