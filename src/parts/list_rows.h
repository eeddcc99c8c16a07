// Lists that stand side by side and are read across: entry 3 of each belongs to row 3. They scroll
// together, and where a row is chosen as a whole, together they are selected.
#pragma once

#include <initializer_list>
#include <vector>

#include "ui/list_controls.h"

namespace ormel {

class ListRows {
 public:
  enum class Selection { kOfRows, kOfEachList };

  // The lists outlive the part. With kOfRows all of them allow the same choices.
  ListRows(std::initializer_list<ui::ListBox*> lists, Selection selection);

  ui::Handler onSelect;  // a person chose other rows; only with kOfRows

 private:
  void FollowSelection(const ui::ListBox& chosen);
  void FollowScroll(const ui::ListBox& scrolled);

  const std::vector<ui::ListBox*> lists_;
};

}  // namespace ormel
