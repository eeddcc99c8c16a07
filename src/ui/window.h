// A window: named controls, their layout, and the handlers of its class. It lives on a Desktop, and
// runs the same with a screen and without one.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "ui/buttons.h"
#include "ui/control.h"
#include "ui/file_controls.h"
#include "ui/layout.h"
#include "ui/list_controls.h"
#include "ui/menu.h"
#include "ui/picture.h"
#include "ui/range_controls.h"
#include "ui/rich_text.h"
#include "ui/text_controls.h"

namespace ormel::ui {

class Desktop;

// The screen's side of a window, when there is a screen.
class WindowView {
 public:
  virtual ~WindowView() = default;
  virtual void Refresh() = 0;        // caption, enabled state or the strip of a long command
  virtual void LayoutChanged() = 0;  // controls came or went
  virtual void Focus(Control& control) = 0;
};

class Window {
 public:
  // `name` is the window's name in scripts, `caption` stands in its title.
  Window(std::string name, std::string caption);
  virtual ~Window();
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  const std::string& Name() const { return name_; }
  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string caption);
  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled);

  void SetLayout(LayoutItem layout);
  const LayoutItem& Layout() const { return layout_; }
  // The keyboard goes to the control, as soon as it can be used: of a window that is not shown yet
  // when it is shown.
  void FocusOn(Control& control);
  // The control that was focused on last; null: the first one that takes keys.
  Control* FirstFocus() const { return firstFocus_; }
  // A picture to greet with: no title, in the middle of the screen. Before it is shown.
  bool Bare() const { return bare_; }
  void SetBare() { bare_ = true; }
  const MenuBar* Menu() const { return menu_; }
  const ToolBar* Tools() const { return tools_; }
  StatusStrip* Status() const { return status_; }

  // The control that scripts know by that name, such as "FList(2)"; null: none.
  Control* Find(std::string_view name) const;
  // In the order in which they were made.
  const std::vector<Control*>& Controls() const { return controls_; }

  // The desktop on which the window is or was shown; null before.
  Desktop* OnDesktop() const { return desktop_; }

  // The program's own window, with which it ends.
  bool IsMain() const { return main_; }
  void SetMain() { main_ = true; }

  // A person presses a key: a short-cut of the menu, the default or the cancel button (Return,
  // Escape), or what the key does in every window (Desktop::UseKey), even while this one is
  // disabled. False: the key means nothing to the window itself.
  bool PressKey(const std::string& key);

  // A file was dropped on the window.
  std::function<void(const std::string& path)> onDrop;

  // A person closes the window by its frame, or the program is to end. False keeps it open.
  virtual bool QueryClose() { return true; }
  // A person went on to another window or program.
  virtual void OnDeactivated() {}
  // It is closed now, in whatever way; it is destroyed soon.
  virtual void OnClosed() {}

  // Long commands. While one runs, the window is disabled but for its strip; see ui/run.h.
  bool Running() const { return runs_ > 0; }
  bool StripShown() const { return stripShown_; }
  double StripPercent() const { return stripPercent_; }
  // A person presses Stop, or closes the window: the command ends at its next report.
  void StopRun() { stopWanted_ = true; }

  // Runs a handler as Desktop::Dispatch does; before the window is shown, errors pass.
  void Dispatch(const Handler& handler);

  void AttachView(WindowView* view) { view_ = view; }

 private:
  friend class Control;
  friend class Desktop;
  friend class MenuBar;
  friend class ToolBar;
  friend class StatusStrip;
  friend class Run;

  bool UseKey(const std::string& key);
  void Join(Control& control);
  void Leave(Control& control);
  void Attach(MenuBar& menu) { menu_ = &menu; }
  void Attach(ToolBar& tools) { tools_ = &tools; }
  void Attach(StatusStrip& status) { status_ = &status; }
  void Refresh();
  void DestroyRetired() { retired_.clear(); }

  const std::string name_;
  std::string caption_;
  bool enabled_ = true;
  bool bare_ = false;
  bool main_ = false;
  LayoutItem layout_ = Column{};
  std::map<std::string, Control*, std::less<>> byName_;
  std::vector<Control*> controls_;
  Control* firstFocus_ = nullptr;
  const MenuBar* menu_ = nullptr;
  const ToolBar* tools_ = nullptr;
  StatusStrip* status_ = nullptr;
  Desktop* desktop_ = nullptr;
  WindowView* view_ = nullptr;

  int runs_ = 0;
  bool stopWanted_ = false;
  bool closeWhenIdle_ = false;
  bool stripShown_ = false;
  double stripPercent_ = 0;
  std::vector<std::unique_ptr<Control>> retired_;  // taken out, not yet destroyed
};

}  // namespace ormel::ui
