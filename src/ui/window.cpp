#include "ui/window.h"

#include <algorithm>
#include <stdexcept>

#include "ui/desktop.h"

namespace ormel::ui {
namespace {

// Tells every control in `items` which frame it stands in.
void SetFrames(const std::vector<LayoutItem>& items, FrameControl* frame) {
  for (const LayoutItem& item : items) {
    if (item.control != nullptr) item.control->SetFrame(frame);
    auto* inner =
        item.kind == LayoutItem::Kind::kFrame ? dynamic_cast<FrameControl*>(item.control) : nullptr;
    SetFrames(item.items, inner != nullptr ? inner : frame);
  }
}

}  // namespace

Window::Window(std::string name, std::string caption)
    : name_(std::move(name)), caption_(std::move(caption)) {}

// The controls are members of the derived window and destroyed before this; the removed ones are
// the last that are left.
Window::~Window() { DestroyRetired(); }

void Window::SetCaption(std::string caption) {
  caption_ = std::move(caption);
  Refresh();
  if (desktop_ != nullptr) desktop_->WindowsChanged();
}

void Window::SetEnabled(bool enabled) {
  enabled_ = enabled;
  Refresh();
}

void Window::Refresh() {
  if (view_ != nullptr) view_->Refresh();
}

void Window::SetLayout(LayoutItem layout) {
  layout_ = std::move(layout);
  SetFrames({layout_}, nullptr);
  if (view_ != nullptr) view_->LayoutChanged();
}

void Window::FocusOn(Control& control) {
  firstFocus_ = &control;
  if (view_ != nullptr) view_->Focus(control);
}

Control* Window::Find(std::string_view name) const {
  const auto found = byName_.find(name);
  return found == byName_.end() ? nullptr : found->second;
}

void Window::Join(Control& control) {
  if (!byName_.emplace(control.Name(), &control).second) {
    throw std::logic_error(name_ + " has two controls named " + control.Name());
  }
  controls_.push_back(&control);
}

void Window::Leave(Control& control) {
  // A removed control may have a successor of the same name.
  const auto found = byName_.find(control.Name());
  if (found != byName_.end() && found->second == &control) byName_.erase(found);
  // The last ones leave first, as a rule.
  const auto last = std::find(controls_.rbegin(), controls_.rend(), &control);
  if (last != controls_.rend()) controls_.erase(std::next(last).base());
  if (firstFocus_ == &control) firstFocus_ = nullptr;
}

bool Window::PressKey(const std::string& key) {
  if (Enabled() && UseKey(key)) return true;
  return desktop_ != nullptr && desktop_->UseKey(*this, key);
}

bool Window::UseKey(const std::string& key) {
  if (menu_ != nullptr) {
    if (MenuItem* item = menu_->FindShortcut(key)) return item->Click().Ok();
  }
  for (Control* control : controls_) {
    auto* button = dynamic_cast<Button*>(control);
    if (button == nullptr || !button->Shown() || !button->Usable()) continue;
    if ((key == "Return" && button->IsDefault()) || (key == "Escape" && button->IsCancel())) {
      return button->Click().Ok();
    }
  }
  return false;
}

void Window::Dispatch(const Handler& handler) {
  if (desktop_ != nullptr) {
    desktop_->Dispatch(handler);
  } else {
    handler();
  }
}

}  // namespace ormel::ui
