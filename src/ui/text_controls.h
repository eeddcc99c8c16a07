// Labels, frames and text boxes.
#pragma once

#include "ui/control.h"

namespace ormel::ui {

class Label final : public CaptionedControl {
 public:
  using CaptionedControl::CaptionedControl;
};

// A titled box around other controls. Hiding or disabling it hides or disables what is inside.
class FrameControl final : public CaptionedControl {
 public:
  using CaptionedControl::CaptionedControl;
};

class TextBox final : public Control {
 public:
  explicit TextBox(Window& window, std::string name, std::string text = "")
      : Control(window, std::move(name)), text_(std::move(text)) {}

  const std::string& Text() const { return text_; }
  void SetText(std::string text);

  int MaximumLength() const { return maximumLength_; }  // in bytes; 0: no limit
  void SetMaximumLength(int length);
  bool MultiLine() const { return multiLine_; }
  void SetMultiLine(bool multiLine);
  bool ReadOnly() const { return readOnly_; }
  void SetReadOnly(bool readOnly);

  // A person types: the text becomes `text`, cut to the maximum length; onChange when it differs.
  [[nodiscard]] Outcome<> Type(const std::string& text);
  // A person comes to the field.
  void Enter() { Fire(onEnter); }
  // A person goes on to another field.
  void Leave() { Fire(onLeave); }

  Outcome<> Set(const std::string& value) override;  // enters, types and leaves
  // Letters are added at the end, BackSpace takes the last one away; then onKey.
  Outcome<> Key(const std::string& key) override;
  std::string Printed() const override { return text_; }
  bool Grows() const override { return multiLine_; }

 private:
  std::string text_;
  int maximumLength_ = 0;
  bool multiLine_ = false;
  bool readOnly_ = false;
};

}  // namespace ormel::ui
