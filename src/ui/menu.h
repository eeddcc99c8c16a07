// Menu bars, toolbars and status strips. A window has at most one of each; they attach themselves
// to it and take no part in its layout. Menus and toolbars are told as tables:
//
//   ui::MenuBar menu{*this, {{"", "&File", {}, {}, {
//       {"mSave", "&Save", "Ctrl+S", [this] { Save(); }},
//       ui::MenuSpec::Separator(),
//       {"mExit", "E&xit", "", [this] { Exit(); }}}}}};
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ui/control.h"

namespace ormel::ui {

// One entry as the window tells it. Without a name it gets one from its caption.
struct MenuSpec {
  std::string name;
  std::string caption;   // "-": a separator
  std::string shortcut;  // "F12", "Ctrl+S"; empty: none
  Handler run;           // of an entry with children: called before a person sees them
  std::vector<MenuSpec> children;

  static MenuSpec Separator() { return {"", "-", "", {}, {}}; }
};

// The caption of an entry in a numbered list: the last figure of its number reaches it by keyboard,
// "&1 Map View". Ampersands in the text stand for themselves.
std::string NumberedCaption(int number, const std::string& text);

class MenuItem final : public CaptionedControl {
 public:
  MenuItem(Window& window, std::string name, const MenuSpec& spec);

  bool IsSeparator() const { return Caption() == "-"; }
  const std::string& Shortcut() const { return shortcut_; }
  bool Checked() const { return checked_; }
  void SetChecked(bool checked);
  const std::vector<std::unique_ptr<MenuItem>>& Children() const { return children_; }
  // Other entries below this one, which has some already. The old ones go when no handler runs.
  void SetChildren(const std::vector<MenuSpec>& specs);
  // Grows with every SetChildren().
  int ChildrenVersion() const { return childrenVersion_; }

  bool Shows(const std::string& value) const override;

 private:
  std::string shortcut_;
  bool checked_ = false;
  std::vector<std::unique_ptr<MenuItem>> children_;
  int childrenVersion_ = 0;
};

class MenuBar {
 public:
  MenuBar(Window& window, const std::vector<MenuSpec>& menus);

  const std::vector<std::unique_ptr<MenuItem>>& Menus() const { return menus_; }
  // The entry of that name. Throws std::logic_error when there is none.
  MenuItem& operator[](const std::string& name) const;
  // The visible and enabled entry with that short-cut key; null: none.
  MenuItem* FindShortcut(const std::string& key) const;

 private:
  std::vector<std::unique_ptr<MenuItem>> menus_;
};

struct ToolSpec {
  int number = 1;  // by which scripts know it, whatever stands before it
  std::string toolTip;
  std::string icon;  // file name below the program's icons; empty: the tool tip is shown as text
  Handler run;
  std::vector<MenuSpec> menu;  // drop-down entries
};

// Button 4 of TBMain is known to scripts as TBMain(4), the second entry of its menu as TBMain(4,2)
// unless it has a name of its own.
class ToolButton final : public CaptionedControl {
 public:
  ToolButton(Window& window, std::string name, const ToolSpec& spec);

  const std::string& Icon() const { return icon_; }
  const std::vector<std::unique_ptr<MenuItem>>& Menu() const { return menu_; }

 private:
  std::string icon_;
  std::vector<std::unique_ptr<MenuItem>> menu_;
};

class ToolBar {
 public:
  ToolBar(Window& window, const std::string& name, const std::vector<ToolSpec>& buttons);

  const std::vector<std::unique_ptr<ToolButton>>& Buttons() const { return buttons_; }

 private:
  std::vector<std::unique_ptr<ToolButton>> buttons_;
};

// Panels along the lower edge, counted from 1.
class StatusStrip final : public Control {
 public:
  StatusStrip(Window& window, std::string name, int panels = 1);

  int Count() const { return static_cast<int>(texts_.size()); }
  const std::string& Text(int panel) const { return texts_[static_cast<std::size_t>(panel - 1)]; }
  void SetText(int panel, std::string text);

  std::string Printed() const override;

 private:
  std::vector<std::string> texts_;
};

}  // namespace ormel::ui
