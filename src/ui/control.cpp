#include "ui/control.h"

#include <utility>

#include "ui/window.h"

namespace ormel::ui {

Control::Control(Window& window, std::string name) : window_(window), name_(std::move(name)) {
  window_.Join(*this);
}

Control::~Control() { LeaveWindow(); }

void Control::Retire(std::unique_ptr<Control> control) {
  control->LeaveWindow();
  control->window_.retired_.push_back(std::move(control));
}

void Control::LeaveWindow() {
  if (view_ != nullptr) std::exchange(view_, nullptr)->Gone();
  window_.Leave(*this);
}

void Control::SetEnabled(bool enabled) {
  if (enabled_ == enabled) return;
  enabled_ = enabled;
  Changed();
}

void Control::SetVisible(bool visible) {
  if (visible_ == visible) return;
  visible_ = visible;
  Changed();
}

void Control::SetToolTip(std::string text) {
  toolTip_ = std::move(text);
  Changed();
}

bool Control::Shown() const { return visible_ && (frame_ == nullptr || frame_->Shown()); }

bool Control::Usable() const {
  return enabled_ && (frame_ == nullptr ? window_.Enabled() : frame_->Usable());
}

void Control::Changed() {
  if (view_ != nullptr) view_->Refresh();
}

void Control::Fire(const Handler& handler) {
  if (!handler) return;
  const Handler running = handler;  // it may replace itself
  window_.Dispatch(running);
}

Failure Control::Refusal(const std::string& why) const {
  return {FailureKind::kRefused, window_.Name() + "." + name_ + " " + why};
}

Outcome<> Control::CanAct() const {
  if (!Shown()) return Refusal("is hidden");
  if (!Usable()) return Refusal("is disabled");
  return Done{};
}

Outcome<> Control::Click() {
  Outcome<> can = CanAct();
  if (can.Ok()) Fire(onClick);
  return can;
}

Outcome<> Control::DoubleClick() {
  Outcome<> can = CanAct();
  if (can.Ok()) Fire(onDoubleClick);
  return can;
}

Outcome<> Control::Set(const std::string& /*value*/) { return Refusal("takes no value"); }

Outcome<> Control::Select(std::span<const std::string> /*entries*/) {
  return Refusal("has no entries to select");
}

Outcome<> Control::Mouse(const MouseEvent& /*event*/) { return Refusal("is no picture"); }

Outcome<> Control::Key(const std::string& key) {
  Outcome<> can = CanAct();
  if (can.Ok() && onKey) {
    Fire([this, key] { onKey(key); });
  }
  return can;
}

void CaptionedControl::SetCaption(std::string caption) {
  caption_ = std::move(caption);
  Changed();
}

bool CaptionedControl::Shows(const std::string& value) const {
  return value == caption_ || value == PlainCaption(caption_);
}

std::string PlainCaption(const std::string& caption) {
  std::string plain;
  for (std::size_t i = 0; i < caption.size(); ++i) {
    if (caption[i] == '&' && i + 1 < caption.size()) ++i;
    plain += caption[i];
  }
  return plain;
}

std::string JoinLines(std::span<const std::string> texts) {
  std::string lines;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (i > 0) lines += '\n';
    lines += texts[i];
  }
  return lines;
}

}  // namespace ormel::ui
