#include "ui/text_controls.h"

namespace ormel::ui {
namespace {

bool Continues(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

// The first `size` bytes, or fewer, so that no letter of several bytes is cut.
std::string Cut(const std::string& text, std::size_t size) {
  if (size >= text.size()) return text;
  while (size > 0 && Continues(text[size])) --size;
  return text.substr(0, size);
}

// One letter of any alphabet; names of keys ("Home") are longer and plain ASCII.
bool IsLetter(const std::string& key) {
  return key.size() == 1 || (!key.empty() && static_cast<unsigned char>(key[0]) >= 0x80);
}

}  // namespace

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
  std::string typed =
      maximumLength_ > 0 ? Cut(text, static_cast<std::size_t>(maximumLength_)) : text;
  if (typed == text_) return Done{};
  SetText(std::move(typed));
  Fire(onChange);
  return Done{};
}

Outcome<> TextBox::Set(const std::string& value) {
  Outcome<> typed = CanAct();
  if (typed.Ok()) Enter();
  if (typed.Ok()) typed = Type(value);
  if (typed.Ok()) Leave();
  return typed;
}

Outcome<> TextBox::Key(const std::string& key) {
  Outcome<> pressed = CanAct();
  if (IsLetter(key)) pressed = Type(text_ + key);
  if (key == "BackSpace" && !text_.empty()) pressed = Type(Cut(text_, text_.size() - 1));
  return pressed.Ok() ? Control::Key(key) : pressed;
}

}  // namespace ormel::ui
