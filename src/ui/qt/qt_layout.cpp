#include "ui/qt/qt_layout.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <algorithm>
#include <set>

#include "ui/qt/qt_text.h"

namespace ormel::ui {
namespace {

using Kind = LayoutItem::Kind;

bool IsBox(const LayoutItem& item) {
  return item.kind == Kind::kFrame || item.kind == Kind::kColumn || item.kind == Kind::kTable;
}

class Builder {
 public:
  Builder(QWidget* page, const std::function<QWidget*(Control&)>& widgetOf)
      : page_(page), widgetOf_(widgetOf), line_(page->fontMetrics().height()) {}

  void FillColumn(QVBoxLayout& column, const std::vector<LayoutItem>& items);
  int Margin() const { return line_ * 3 / 4; }

  BuiltLayout built;

 private:
  // A widget or a layout: what one item of the layout becomes.
  struct Part {
    QWidget* widget = nullptr;
    QLayout* layout = nullptr;
  };

  int Gap() const { return line_ / 2; }
  Qt::Orientations Wants(const LayoutItem& item) const;
  Qt::Orientations Wants(const std::vector<LayoutItem>& items) const;
  int Share(const LayoutItem& item, const std::vector<LayoutItem>& among,
            Qt::Orientation direction) const;

  Part Build(const LayoutItem& item);
  Part BuildText(const std::string& text);
  Part BuildFrame(const LayoutItem& item);
  Part BuildRow(const LayoutItem& item);
  Part BuildTable(const LayoutItem& item);
  void AddCells(QGridLayout& grid, int row, const std::vector<LayoutItem>& cells);
  static void Add(QBoxLayout& box, Part part, int share, Qt::Alignment alignment);
  void LinkTexts(const std::vector<LayoutItem>& items, const std::vector<Part>& parts, bool hide);
  void AddControlWidgets(const LayoutItem& item, std::vector<QPointer<QWidget>>& widgets) const;

  QWidget* page_;
  const std::function<QWidget*(Control&)>& widgetOf_;
  const int line_;  // everything is spaced by the height of a line: it fits any font
};

// The directions in which it takes the room that is left.
Qt::Orientations Builder::Wants(const LayoutItem& item) const {
  if (item.kind == Kind::kControl) {
    return widgetOf_(*item.control)->sizePolicy().expandingDirections();
  }
  return Wants(item.items);
}

Qt::Orientations Builder::Wants(const std::vector<LayoutItem>& items) const {
  Qt::Orientations wants;
  for (const LayoutItem& item : items) wants |= Wants(item);
  return wants;
}

// Shares are counted as soon as one of the items has one; those that grow by themselves get one
// then.
int Builder::Share(const LayoutItem& item, const std::vector<LayoutItem>& among,
                   Qt::Orientation direction) const {
  const bool counted =
      std::any_of(among.begin(), among.end(), [](const LayoutItem& one) { return one.weight > 0; });
  if (item.weight > 0 || !counted) return item.weight;
  return Wants(item).testFlag(direction) ? 1 : 0;
}

Builder::Part Builder::Build(const LayoutItem& item) {
  switch (item.kind) {
    case Kind::kControl: {
      QWidget* widget = widgetOf_(*item.control);
      built.order.push_back(widget);
      return {widget};
    }
    case Kind::kText:
      return BuildText(item.text);
    case Kind::kFrame:
      return BuildFrame(item);
    case Kind::kRow:
      return BuildRow(item);
    case Kind::kTable:
      return BuildTable(item);
    case Kind::kColumn: {
      auto* column = new QVBoxLayout;
      FillColumn(*column, item.items);
      return {nullptr, column};
    }
    case Kind::kStretch:
      break;
  }
  return {};
}

Builder::Part Builder::BuildText(const std::string& text) {
  auto* label = new QLabel(ToQt(PlainCaption(text)), page_);
  label->setTextFormat(Qt::PlainText);
  built.made.emplace_back(label);
  return {label};
}

Builder::Part Builder::BuildFrame(const LayoutItem& item) {
  auto* box =
      item.control != nullptr ? qobject_cast<QGroupBox*>(widgetOf_(*item.control)) : nullptr;
  if (box == nullptr) {
    box = new QGroupBox(ToQt(item.text), page_);
    built.made.emplace_back(box);
  }
  auto* column = new QVBoxLayout(box);
  column->setContentsMargins(Margin(), Gap(), Margin(), Margin());
  FillColumn(*column, item.items);
  return {box};
}

void Builder::Add(QBoxLayout& box, Part part, int share, Qt::Alignment alignment) {
  if (part.widget != nullptr) {
    box.addWidget(part.widget, share, alignment);
  } else if (part.layout != nullptr) {
    box.addLayout(part.layout, share);
  }
}

void Builder::FillColumn(QVBoxLayout& column, const std::vector<LayoutItem>& items) {
  column.setSpacing(Gap());
  const bool grows = Wants(items).testFlag(Qt::Vertical);
  bool stretches = false;
  std::vector<Part> parts;
  for (const LayoutItem& item : items) {
    parts.push_back(Build(item));
    if (item.kind == Kind::kStretch && (!grows || item.weight > 0)) {
      column.addStretch(std::max(item.weight, 1));
      stretches = true;
    }
    Add(column, parts.back(), Share(item, items, Qt::Vertical), {});
  }
  // Buttons above each other are equally wide; one among other things keeps its own width.
  const bool onlyButtons = std::all_of(parts.begin(), parts.end(), [](const Part& part) {
    return part.layout == nullptr &&
           (part.widget == nullptr || qobject_cast<QPushButton*>(part.widget) != nullptr);
  });
  for (const Part& part : parts) {
    if (part.widget == nullptr) continue;
    const bool isButton = qobject_cast<QPushButton*>(part.widget) != nullptr;
    const bool isFixed = part.widget->sizePolicy().horizontalPolicy() == QSizePolicy::Fixed;
    if ((isButton && !onlyButtons) || isFixed) column.setAlignment(part.widget, Qt::AlignLeft);
  }
  if (!grows && !stretches) column.setAlignment(Qt::AlignTop);
  LinkTexts(items, parts, false);
}

Builder::Part Builder::BuildRow(const LayoutItem& item) {
  auto* row = new QHBoxLayout;
  row->setSpacing(Gap());
  const Qt::Orientations wants = Wants(item);
  const bool grows = wants.testFlag(Qt::Horizontal);
  const bool boxes = std::any_of(item.items.begin(), item.items.end(), IsBox);
  const bool tall = boxes || wants.testFlag(Qt::Vertical);
  bool stretches = false;
  std::vector<Part> parts;
  for (const LayoutItem& cell : item.items) {
    parts.push_back(Build(cell));
    if (cell.kind == Kind::kStretch && (!grows || cell.weight > 0)) {
      row->addStretch(std::max(cell.weight, 1));
      stretches = true;
    }
    const bool low = !IsBox(cell) && !Wants(cell).testFlag(Qt::Vertical);
    Add(*row, parts.back(), Share(cell, item.items, Qt::Horizontal),
        tall && low ? Qt::AlignTop : Qt::Alignment());
  }
  if (!grows && !stretches && !boxes) row->setAlignment(Qt::AlignLeft);
  LinkTexts(item.items, parts, true);
  return {nullptr, row};
}

void Builder::AddCells(QGridLayout& grid, int row, const std::vector<LayoutItem>& cells) {
  const bool tall = Wants(cells).testFlag(Qt::Vertical);
  std::vector<Part> parts;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const bool isEmpty = cells[i].kind == Kind::kText && cells[i].text.empty();
    parts.push_back(isEmpty ? Part{} : Build(cells[i]));
    const auto column = static_cast<int>(i);
    const Part& part = parts.back();
    const Qt::Orientations wants = Wants(cells[i]);
    if (part.layout != nullptr) grid.addLayout(part.layout, row, column);
    if (part.widget != nullptr) {
      const bool isFixed = part.widget->sizePolicy().horizontalPolicy() == QSizePolicy::Fixed;
      grid.addWidget(part.widget, row, column,
                     (isFixed ? Qt::AlignLeft : Qt::Alignment()) |
                         (tall && !wants.testFlag(Qt::Vertical) ? Qt::AlignTop : Qt::Alignment()));
    }
    const int share = std::max(cells[i].weight, 1);
    if (wants.testFlag(Qt::Horizontal)) grid.setColumnStretch(column, share);
    if (wants.testFlag(Qt::Vertical)) grid.setRowStretch(row, share);
  }
  LinkTexts(cells, parts, true);
}

Builder::Part Builder::BuildTable(const LayoutItem& item) {
  auto* grid = new QGridLayout;
  grid->setHorizontalSpacing(Gap());
  grid->setVerticalSpacing(Gap());
  int row = 0;
  for (const LayoutItem& cells : item.items) AddCells(*grid, row++, cells.items);
  if (!Wants(item).testFlag(Qt::Horizontal)) grid->setAlignment(Qt::AlignLeft);
  return {nullptr, grid};
}

void Builder::AddControlWidgets(const LayoutItem& item,
                                std::vector<QPointer<QWidget>>& widgets) const {
  if (item.control != nullptr) widgets.emplace_back(widgetOf_(*item.control));
  for (const LayoutItem& inner : item.items) AddControlWidgets(inner, widgets);
}

// Every label leads the keyboard to the item behind it; in a row (`hide`) a text goes when all that
// it names has gone.
void Builder::LinkTexts(const std::vector<LayoutItem>& items, const std::vector<Part>& parts,
                        bool hide) {
  LayoutText* text = nullptr;
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (items[i].kind != Kind::kText) {
      if (text != nullptr && hide) AddControlWidgets(items[i], text->behind);
    } else if (parts[i].widget != nullptr) {
      text = &built.texts.emplace_back();
      text->label = static_cast<QLabel*>(parts[i].widget);
    }
    auto* label = qobject_cast<QLabel*>(parts[i].widget);
    if (label == nullptr || i + 1 == items.size()) continue;
    std::vector<QPointer<QWidget>> next;
    AddControlWidgets(items[i + 1], next);
    if (next.empty() || next.front()->focusPolicy() == Qt::NoFocus) continue;
    label->setBuddy(next.front());
    if (items[i].kind == Kind::kText) label->setText(ToQt(items[i].text));
  }
}

}  // namespace

BuiltLayout BuildLayout(const LayoutItem& layout, QWidget* page,
                        const std::function<QWidget*(Control&)>& widgetOf) {
  Builder builder(page, widgetOf);
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(builder.Margin(), builder.Margin(), builder.Margin(),
                             builder.Margin());
  const bool isColumn = layout.kind == Kind::kColumn;
  builder.FillColumn(*column, isColumn ? layout.items : std::vector<LayoutItem>{layout});
  return std::move(builder.built);
}

void ShowTexts(const std::vector<LayoutText>& texts) {
  for (const LayoutText& text : texts) {
    if (text.label == nullptr || text.behind.empty()) continue;
    const bool shown = std::any_of(text.behind.begin(), text.behind.end(), [](const auto& widget) {
      return widget != nullptr && !widget->isHidden();
    });
    text.label->setVisible(shown);
  }
}

}  // namespace ormel::ui
