// How the controls of a window lie to each other: rows, columns, tables and frames, never
// positions.
//
//   SetLayout(Column{Row{"&DEM:", txtDEM, cmdLoadDEM},
//                    Frame{"Slope Method", optSlope},
//                    Table{{"Slope:", txtSlopeOut, cmdSlopeOut}, {"Aspect:", txtAspectOut,
//                    cmdAspectOut}}, Row{Stretch{}, cmdGenerate, cmdExit}});
//
// A text is a label; its ampersand leads the keyboard to the control behind it. Text boxes and
// combo boxes take the width of their row, lists and pictures the room in both directions.
#pragma once

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "ui/control.h"
#include "ui/control_array.h"
#include "ui/text_controls.h"

namespace ormel::ui {

struct LayoutItem {
  enum class Kind { kControl, kText, kStretch, kRow, kColumn, kTable, kFrame };

  LayoutItem(Control& control) : kind(Kind::kControl), control(&control) {}
  LayoutItem(const char* text) : kind(Kind::kText), text(text) {}
  LayoutItem(std::string text) : kind(Kind::kText), text(std::move(text)) {}
  // The controls of an array stand below each other.
  template <class T>
  LayoutItem(const ControlArray<T>& array) : kind(Kind::kColumn) {
    for (const auto& element : array) items.emplace_back(*element);
  }

  Kind kind;
  Control* control = nullptr;  // of kControl; of kFrame when the frame is a control itself
  std::string text;            // of kText; the title of kFrame
  std::vector<LayoutItem> items;
  int weight = 0;  // share of the room that is left; 0: as the kind of control asks

 protected:
  explicit LayoutItem(Kind kind) : kind(kind) {}
  template <class... Items>
  void Add(Items&&... more) {
    (items.push_back(LayoutItem(std::forward<Items>(more))), ...);
  }
};

struct Row : LayoutItem {
  template <class... Items>
  explicit Row(Items&&... more) : LayoutItem(Kind::kRow) {
    Add(std::forward<Items>(more)...);
  }
};

struct Column : LayoutItem {
  template <class... Items>
  explicit Column(Items&&... more) : LayoutItem(Kind::kColumn) {
    Add(std::forward<Items>(more)...);
  }
};

// Rows whose cells line up. "" leaves a cell empty.
struct Table : LayoutItem {
  Table(std::initializer_list<std::initializer_list<LayoutItem>> rows) : LayoutItem(Kind::kTable) {
    for (const auto& cells : rows) {
      Row row;
      row.items.assign(cells);
      items.push_back(row);
    }
  }
};

// A titled box; its items stand below each other.
struct Frame : LayoutItem {
  template <class... Items>
  explicit Frame(const char* title, Items&&... more) : LayoutItem(Kind::kFrame) {
    text = title;
    Add(std::forward<Items>(more)...);
  }
  // The box is a control, which the window hides, disables or renames.
  template <class... Items>
  explicit Frame(FrameControl& frame, Items&&... more) : LayoutItem(Kind::kFrame) {
    control = &frame;
    Add(std::forward<Items>(more)...);
  }
};

// Takes the room that nothing else wants.
struct Stretch : LayoutItem {
  Stretch() : LayoutItem(Kind::kStretch) {}
};

// The item gets `weight` shares of the room that is left.
inline LayoutItem Share(int weight, LayoutItem item) {
  item.weight = weight;
  return item;
}

}  // namespace ormel::ui
