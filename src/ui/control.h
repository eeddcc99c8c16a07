// What all controls of a window share. A control holds its own state and fires events; it knows
// nothing of a screen. The program changes a control by its Set... routines, which fire nothing. A
// person changes it by the routines of the second group, which fire the events: a screen calls them
// for mouse and keyboard, a command script and a test call them directly.
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>

#include "base/outcome.h"

namespace ormel::ui {

class Window;

using Handler = std::function<void()>;

enum class MouseAction { kDown, kMove, kUp, kClick };

// A place on a picture, in pixels of its canvas from the top left; fractions when it is shown
// larger.
struct MouseEvent {
  MouseAction action = MouseAction::kMove;
  double x = 0;
  double y = 0;
};

// The screen's side of a control, when there is a screen.
class ControlView {
 public:
  virtual ~ControlView() = default;
  virtual void Refresh() = 0;  // the state of the control has changed
  virtual void Gone() = 0;     // the control is being destroyed, and must not be used again
};

class Control {
 public:
  // Joins the window under `name`, which scripts use as well. Throws std::logic_error when the
  // window has a control of that name. The control must live as long as its window, or be a member
  // of it.
  Control(Window& window, std::string name);
  virtual ~Control();
  // Takes a control out of its window at once, and destroys it when no handler runs: a button may
  // remove the row in which it stands.
  static void Retire(std::unique_ptr<Control> control);
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  const std::string& Name() const { return name_; }
  Window& Owner() const { return window_; }

  bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled);
  bool Visible() const { return visible_; }
  void SetVisible(bool visible);
  const std::string& ToolTip() const { return toolTip_; }
  void SetToolTip(std::string text);

  // Whether a person can see and use it: its frames and its window take part.
  bool Shown() const;
  bool Usable() const;

  Handler onClick;
  Handler onDoubleClick;
  Handler onChange;  // a person changed the text, value or state
  Handler onEnter;   // a person came to the field
  Handler onLeave;   // a person went on to another field
  Handler onSelect;  // a person chose entries
  std::function<void(const MouseEvent&)> onMouse;
  std::function<void(const std::string& key)> onKey;  // "Home", "Left", "Delete", "=", "F12"

  // What a person does. Each returns why when a person could not do it.
  [[nodiscard]] virtual Outcome<> Click();
  [[nodiscard]] virtual Outcome<> DoubleClick();
  [[nodiscard]] virtual Outcome<> Set(const std::string& value);
  [[nodiscard]] virtual Outcome<> Select(std::span<const std::string> entries);
  [[nodiscard]] virtual Outcome<> Mouse(const MouseEvent& event);
  [[nodiscard]] virtual Outcome<> Key(const std::string& key);

  // What a script prints: the text, the value, or the entries one a line.
  virtual std::string Printed() const = 0;
  // Whether it shows `value`: its text, caption or value; "on" and "off" for boxes and options.
  virtual bool Shows(const std::string& value) const { return Printed() == value; }

  // Lists and pictures take the room that other controls leave.
  virtual bool Grows() const { return false; }

  void AttachView(ControlView* view) { view_ = view; }
  // The control inside which this one stands: the frame around it, the menu above an entry.
  void SetFrame(Control* frame) { frame_ = frame; }

 protected:
  void Changed();
  void Fire(const Handler& handler);
  // The start of everything a person does: Done, or a refusal that names the control.
  [[nodiscard]] Outcome<> CanAct() const;
  Failure Refusal(const std::string& why) const;

 private:
  void LeaveWindow();

  Window& window_;
  const std::string name_;
  std::string toolTip_;
  bool enabled_ = true;
  bool visible_ = true;
  Control* frame_ = nullptr;
  ControlView* view_ = nullptr;
};

// A control with a caption. An ampersand stands before the letter that reaches it by keyboard.
class CaptionedControl : public Control {
 public:
  CaptionedControl(Window& window, std::string name, std::string caption = "")
      : Control(window, std::move(name)), caption_(std::move(caption)) {}

  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string caption);

  std::string Printed() const override { return caption_; }
  // With or without the ampersand.
  bool Shows(const std::string& value) const override;

 private:
  std::string caption_;
};

// The caption as it is read: without the ampersand of the keyboard.
std::string PlainCaption(const std::string& caption);

// The texts one a line, without a line end behind the last.
std::string JoinLines(std::span<const std::string> texts);

}  // namespace ormel::ui
