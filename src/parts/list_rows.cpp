#include "parts/list_rows.h"

namespace ormel {

ListRows::ListRows(std::initializer_list<ui::ListBox*> lists, Selection selection) : lists_(lists) {
  for (ui::ListBox* list : lists_) {
    list->SetShortened(true);
    list->onScroll = [this, list] { FollowScroll(*list); };
    if (selection == Selection::kOfRows) list->onSelect = [this, list] { FollowSelection(*list); };
  }
}

void ListRows::FollowSelection(const ui::ListBox& chosen) {
  const std::vector<int> rows = chosen.Selected();
  for (ui::ListBox* list : lists_) {
    if (list != &chosen) list->SetSelected(rows);
  }
  if (onSelect) onSelect();
}

void ListRows::FollowScroll(const ui::ListBox& scrolled) {
  for (ui::ListBox* list : lists_) list->SetFirstShown(scrolled.FirstShown());
}

}  // namespace ormel
