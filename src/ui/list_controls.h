// Lists and combo boxes. Entries count from 1.
#pragma once

#include <string>
#include <vector>

#include "ui/control.h"

namespace ormel::ui {

class ListBox : public Control {
 public:
  enum class Choice { kSingle, kMultiple };

  explicit ListBox(Window& window, std::string name, Choice choice = Choice::kSingle)
      : Control(window, std::move(name)), choice_(choice) {}

  bool Multiple() const { return choice_ == Choice::kMultiple; }
  // Of entries that are longer than the list the middle is left out, and their tool tips hold them
  // whole; else a list scrolls sideways. Before it is shown.
  bool Shortened() const { return shortened_; }
  void SetShortened(bool shortened) { shortened_ = shortened; }

  const std::vector<std::string>& Items() const { return items_; }
  int Count() const { return static_cast<int>(items_.size()); }
  const std::string& Item(int index) const { return items_[static_cast<std::size_t>(index - 1)]; }

  void SetItems(std::vector<std::string> items);  // nothing is selected then
  void Add(std::string item);
  void Remove(int index);
  void SetItem(int index, std::string item);
  void Clear() { SetItems({}); }

  bool IsSelected(int index) const { return selected_[static_cast<std::size_t>(index - 1)]; }
  std::vector<int> Selected() const;
  int FirstSelected() const;         // 0: none
  std::string SelectedText() const;  // of the first selected entry; empty: none
  void SetSelected(const std::vector<int>& indices);

  // The entry at the top of what is seen, from 1.
  int FirstShown() const { return firstShown_; }
  void SetFirstShown(int index);
  // A person scrolls.
  void ScrollTo(int index);
  Handler onScroll;

  // A person's choice; onSelect when it differs. Refuses several entries of a single-choice list.
  [[nodiscard]] Outcome<> Choose(const std::vector<int>& indices);

  Outcome<> Select(std::span<const std::string> entries) override;
  Outcome<> Set(const std::string& value) override { return Select({&value, 1}); }
  // Up, Down, Home and End move the selection; then onKey.
  Outcome<> Key(const std::string& key) override;
  std::string Printed() const override;
  bool Shows(const std::string& value) const override;
  bool Grows() const override { return true; }

 private:
  const Choice choice_;
  bool shortened_ = false;
  int firstShown_ = 1;
  std::vector<std::string> items_;
  std::vector<bool> selected_;
};

class ComboBox : public Control {
 public:
  enum class Kind { kTyped, kFixed };  // fixed: only an entry can be its text

  explicit ComboBox(Window& window, std::string name, Kind kind = Kind::kFixed)
      : Control(window, std::move(name)), kind_(kind) {}

  bool Fixed() const { return kind_ == Kind::kFixed; }
  const std::vector<std::string>& Items() const { return items_; }
  int Count() const { return static_cast<int>(items_.size()); }
  void SetItems(std::vector<std::string> items);  // the text stays
  void Add(std::string item);

  const std::string& Text() const { return text_; }
  void SetText(std::string text);
  int SelectedIndex() const;    // the first entry that equals the text; 0: none
  void SelectIndex(int index);  // 0: empties the text

  // A person picks an entry (onChange, then onSelect) or types into a typed one (onChange).
  [[nodiscard]] Outcome<> Choose(int index);
  [[nodiscard]] Outcome<> Type(const std::string& text);
  void Leave() { Fire(onLeave); }

  Outcome<> Select(std::span<const std::string> entries) override;
  Outcome<> Set(const std::string& value) override;
  std::string Printed() const override { return text_; }

 private:
  const Kind kind_;
  std::vector<std::string> items_;
  std::string text_;
};

// The entry that `wanted` means: a whole number is a position, everything else the text of an
// entry. 0 when there is none.
int FindEntry(const std::vector<std::string>& items, const std::string& wanted);

}  // namespace ormel::ui
