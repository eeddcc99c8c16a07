#include "ui/text_controls.h"

namespace ormel::ui {

void TextBox::SetText(std::string text) {
  if (text_ == text) return;
  text_ = std::move(text);
  Changed();
}

void TextBox::SetMaximumLength(int length) {
  maximumLength_ = length;
  Changed();
}

void TextBox::SetMultiLine(bool multiLine) {
  multiLine_ = multiLine;
  Changed();
}

void TextBox::SetReadOnly(bool readOnly) {
  readOnly_ = readOnly;
  Changed();
}

Outcome<> TextBox::Type(const std::string& text) {
  Outcome<> can = CanAct();
  if (!can.Ok()) return can;
  if (readOnly_) return Refusal("is read only");
  std::string typed = text;
  if (maximumLength_ > 0 && typed.size() > static_cast<std::size_t>(maximumLength_)) {
    typed.resize(static_cast<std::size_t>(maximumLength_));
  }
  if (typed == text_) return Done{};
  SetText(std::move(typed));
  Fire(onChange);
  return Done{};
}

Outcome<> TextBox::Set(const std::string& value) {
  Outcome<> typed = Type(value);
  if (typed.Ok()) Leave();
  return typed;
}

Outcome<> TextBox::Key(const std::string& key) {
  Outcome<> pressed = CanAct();
  if (key.size() == 1) pressed = Type(text_ + key);
  if (key == "BackSpace" && !text_.empty()) pressed = Type(text_.substr(0, text_.size() - 1));
  return pressed.Ok() ? Control::Key(key) : pressed;
}

}  // namespace ormel::ui
