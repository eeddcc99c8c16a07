#include "ui/menu.h"

#include <stdexcept>

#include "ui/window.h"

namespace ormel::ui {
namespace {

using Items = std::vector<std::unique_ptr<MenuItem>>;

// Entries without a name of their own are known by the place they have: PARENT.1, PARENT.2.
Items MakeItems(Window& window, const std::string& parent, const std::vector<MenuSpec>& specs) {
  Items items;
  for (const MenuSpec& spec : specs) {
    const std::string place = parent + "." + std::to_string(items.size() + 1);
    items.push_back(
        std::make_unique<MenuItem>(window, spec.name.empty() ? place : spec.name, spec));
  }
  return items;
}

template <class Wanted>
MenuItem* FindItem(const Items& items, Wanted wanted) {
  for (const auto& item : items) {
    if (wanted(*item)) return item.get();
    if (MenuItem* found = FindItem(item->Children(), wanted)) return found;
  }
  return nullptr;
}

}  // namespace

std::string NumberedCaption(int number, const std::string& text) {
  std::string caption = std::to_string(number);
  caption.insert(caption.size() - 1, "&");
  caption += ' ';
  for (const char letter : text) caption.append(letter == '&' ? 2 : 1, letter);
  return caption;
}

MenuItem::MenuItem(Window& window, std::string name, const MenuSpec& spec)
    : CaptionedControl(window, std::move(name), spec.caption),
      shortcut_(spec.shortcut),
      children_(MakeItems(window, Name(), spec.children)) {
  onClick = spec.run;
  for (const auto& child : children_) child->SetFrame(this);
}

void MenuItem::SetChildren(const std::vector<MenuSpec>& specs) {
  for (auto& child : children_) Retire(std::move(child));
  children_ = MakeItems(Owner(), Name(), specs);
  for (const auto& child : children_) child->SetFrame(this);
  ++childrenVersion_;
  Changed();
}

void MenuItem::SetChecked(bool checked) {
  checked_ = checked;
  Changed();
}

bool MenuItem::Shows(const std::string& value) const {
  if (value == "on" || value == "off") return (value == "on") == checked_;
  return CaptionedControl::Shows(value);
}

MenuBar::MenuBar(Window& window, const std::vector<MenuSpec>& menus)
    : menus_(MakeItems(window, "menu", menus)) {
  window.Attach(*this);
}

MenuItem& MenuBar::operator[](const std::string& name) const {
  MenuItem* item = FindItem(menus_, [&](const MenuItem& one) { return one.Name() == name; });
  if (item == nullptr) throw std::logic_error("no menu entry " + name);
  return *item;
}

MenuItem* MenuBar::FindShortcut(const std::string& key) const {
  return FindItem(menus_, [&](const MenuItem& one) {
    return !one.Shortcut().empty() && one.Shortcut() == key && one.Shown() && one.Usable();
  });
}

ToolButton::ToolButton(Window& window, std::string name, const ToolSpec& spec)
    : CaptionedControl(window, std::move(name), spec.toolTip), icon_(spec.icon) {
  SetToolTip(spec.toolTip);
  onClick = spec.run;
  const std::string stem = Name().substr(0, Name().size() - 1);
  for (const MenuSpec& entry : spec.menu) {
    const std::string place = stem + "," + std::to_string(menu_.size() + 1) + ")";
    menu_.push_back(
        std::make_unique<MenuItem>(window, entry.name.empty() ? place : entry.name, entry));
    menu_.back()->SetFrame(this);
  }
}

ToolBar::ToolBar(Window& window, const std::string& name, const std::vector<ToolSpec>& buttons) {
  for (const ToolSpec& spec : buttons) {
    const std::string number = std::to_string(spec.number);
    buttons_.push_back(std::make_unique<ToolButton>(window, name + "(" + number + ")", spec));
  }
  window.Attach(*this);
}

StatusStrip::StatusStrip(Window& window, std::string name, int panels)
    : Control(window, std::move(name)), texts_(static_cast<std::size_t>(panels)) {
  window.Attach(*this);
}

void StatusStrip::SetText(int panel, std::string text) {
  texts_[static_cast<std::size_t>(panel - 1)] = std::move(text);
  Changed();
}

std::string StatusStrip::Printed() const { return JoinLines(texts_); }

}  // namespace ormel::ui
