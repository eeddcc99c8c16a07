#include "ui/list_controls.h"

#include <algorithm>
#include <charconv>

namespace ormel::ui {

int FindEntry(const std::vector<std::string>& items, const std::string& wanted) {
  int position = 0;
  const char* end = wanted.data() + wanted.size();
  const auto [stop, error] = std::from_chars(wanted.data(), end, position);
  if (error == std::errc() && stop == end) {
    return position >= 1 && position <= static_cast<int>(items.size()) ? position : 0;
  }
  const auto found = std::find(items.begin(), items.end(), wanted);
  return found == items.end() ? 0 : static_cast<int>(found - items.begin()) + 1;
}

void ListBox::SetItems(std::vector<std::string> items) {
  items_ = std::move(items);
  selected_.assign(items_.size(), false);
  Changed();
}

void ListBox::Add(std::string item) {
  items_.push_back(std::move(item));
  selected_.push_back(false);
  Changed();
}

void ListBox::Remove(int index) {
  items_.erase(items_.begin() + (index - 1));
  selected_.erase(selected_.begin() + (index - 1));
  Changed();
}

void ListBox::SetItem(int index, std::string item) {
  items_[static_cast<std::size_t>(index - 1)] = std::move(item);
  Changed();
}

std::vector<int> ListBox::Selected() const {
  std::vector<int> indices;
  for (int i = 1; i <= Count(); ++i) {
    if (IsSelected(i)) indices.push_back(i);
  }
  return indices;
}

int ListBox::FirstSelected() const {
  const auto found = std::find(selected_.begin(), selected_.end(), true);
  return found == selected_.end() ? 0 : static_cast<int>(found - selected_.begin()) + 1;
}

std::string ListBox::SelectedText() const {
  const int first = FirstSelected();
  return first == 0 ? std::string() : Item(first);
}

void ListBox::SetSelected(const std::vector<int>& indices) {
  selected_.assign(items_.size(), false);
  for (const int index : indices) {
    if (index >= 1 && index <= Count()) selected_[static_cast<std::size_t>(index - 1)] = true;
  }
  Changed();
}

void ListBox::SetFirstShown(int index) {
  if (index == firstShown_) return;
  firstShown_ = index;
  Changed();
}

void ListBox::ScrollTo(int index) {
  if (index == firstShown_) return;
  firstShown_ = index;
  Fire(onScroll);
}

Outcome<> ListBox::Choose(const std::vector<int>& indices) {
  Outcome<> can = CanAct();
  if (!can.Ok()) return can;
  if (!Multiple() && indices.size() > 1) return Refusal("takes one entry only");
  const std::vector<bool> before = selected_;
  SetSelected(indices);
  if (selected_ != before) Fire(onSelect);
  return Done{};
}

Outcome<> ListBox::Select(std::span<const std::string> entries) {
  std::vector<int> indices;
  for (const std::string& entry : entries) {
    if (entry == "none") continue;
    if (entry == "all") {
      for (int i = 1; i <= Count(); ++i) indices.push_back(i);
      continue;
    }
    const int index = FindEntry(items_, entry);
    if (index == 0) return Refusal("has no entry " + entry);
    indices.push_back(index);
  }
  return Choose(indices);
}

Outcome<> ListBox::Key(const std::string& key) {
  const int last = Count();
  const int now = FirstSelected();
  int next = now;
  if (key == "Up") next = std::max(now - 1, 1);
  if (key == "Down") next = now + 1;
  if (key == "Home") next = 1;
  if (key == "End") next = last;
  next = std::min(next, last);
  if (next != now && next > 0) {
    Outcome<> chosen = Choose({next});
    if (!chosen.Ok()) return chosen;
  }
  return Control::Key(key);
}

std::string ListBox::Printed() const { return JoinLines(items_); }

bool ListBox::Shows(const std::string& value) const { return SelectedText() == value; }

void ComboBox::SetItems(std::vector<std::string> items) {
  items_ = std::move(items);
  Changed();
}

void ComboBox::Add(std::string item) {
  items_.push_back(std::move(item));
  Changed();
}

void ComboBox::SetText(std::string text) {
  if (text_ == text) return;
  text_ = std::move(text);
  Changed();
}

int ComboBox::SelectedIndex() const {
  const auto found = std::find(items_.begin(), items_.end(), text_);
  return found == items_.end() ? 0 : static_cast<int>(found - items_.begin()) + 1;
}

void ComboBox::SelectIndex(int index) {
  SetText(index >= 1 && index <= Count() ? items_[static_cast<std::size_t>(index - 1)] : "");
}

Outcome<> ComboBox::Choose(int index) {
  Outcome<> can = CanAct();
  if (!can.Ok()) return can;
  const bool differs = SelectedIndex() != index;
  SelectIndex(index);
  if (differs) Fire(onChange);
  Fire(onSelect);
  return Done{};
}

Outcome<> ComboBox::Type(const std::string& text) {
  Outcome<> can = CanAct();
  if (!can.Ok()) return can;
  if (Fixed()) return Refusal("takes its own entries only");
  if (text == text_) return Done{};
  SetText(text);
  Fire(onChange);
  return Done{};
}

Outcome<> ComboBox::Select(std::span<const std::string> entries) {
  if (entries.size() != 1) return Refusal("takes one entry only");
  const int index = entries[0] == "none" ? 0 : FindEntry(items_, entries[0]);
  if (index == 0 && entries[0] != "none") return Refusal("has no entry " + entries[0]);
  return Choose(index);
}

Outcome<> ComboBox::Set(const std::string& value) {
  if (Fixed()) return Select({&value, 1});
  Outcome<> typed = Type(value);
  if (typed.Ok()) Leave();
  return typed;
}

}  // namespace ormel::ui
