// List boxes and combo boxes.
#include <QComboBox>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "ui/list_controls.h"
#include "ui/qt/qt_list_view.h"
#include "ui/qt/qt_view.h"

namespace ormel::ui {
namespace {

class ListView final : public ViewOfKind<ListBox, ListWidget> {
 public:
  ListView(QtWindow& window, ListBox& control, QWidget* parent)
      : ViewOfKind(window, control, new ListWidget(parent)) {
    The().setSelectionMode(control.Multiple() ? QListView::ExtendedSelection
                                              : QListView::SingleSelection);
    if (control.Shortened()) {
      The().setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
      The().setTextElideMode(Qt::ElideMiddle);
    }
    The().setVerticalScrollMode(QListView::ScrollPerItem);
    connect(The().verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { TellTop(); });
    connect(The().selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { Act([&](ListBox& list) { return list.Choose(SelectedOnScreen()); }); });
    connect(&The(), &QListView::clicked, this, [this] { Act(&ListBox::Click); });
    connect(&The(), &QListView::doubleClicked, this, [this] { Act(&ListBox::DoubleClick); });
  }

 private:
  // The entries from 1, in ascending order.
  std::vector<int> SelectedOnScreen() const {
    std::vector<int> selected;
    for (const QItemSelectionRange& range : The().selectionModel()->selection()) {
      for (int row = range.top(); row <= range.bottom(); ++row) selected.push_back(row + 1);
    }
    std::sort(selected.begin(), selected.end());
    return selected;
  }

  void Show() override {
    The().Entries().Show(TheControl().Items());
    // The program scrolls, with another list for instance.
    if (std::exchange(top_, TheControl().FirstShown()) != TheControl().FirstShown()) {
      The().verticalScrollBar()->setValue(top_ - 1);
    }
    const std::vector<int> selected = TheControl().Selected();
    if (selected != SelectedOnScreen()) Select(selected);
  }

  void TellTop() {
    Tell([this](ListBox& list) {
      top_ = The().verticalScrollBar()->value() + 1;
      list.ScrollTo(top_);
    });
  }

  void Select(const std::vector<int>& selected) {
    const TextModel& entries = The().Entries();
    QItemSelection selection;
    for (std::size_t i = 0; i < selected.size();) {
      std::size_t end = i + 1;
      while (end < selected.size() && selected[end] == selected[end - 1] + 1) ++end;
      selection.append(QItemSelectionRange(entries.index(selected[i] - 1),
                                           entries.index(selected[end - 1] - 1)));
      i = end;
    }
    QItemSelectionModel& model = *The().selectionModel();
    model.select(selection, QItemSelectionModel::ClearAndSelect);
    if (selected.empty()) return;
    const QModelIndex first = entries.index(selected.front() - 1);
    model.setCurrentIndex(first, QItemSelectionModel::NoUpdate);
    The().scrollTo(first);
    // Behind this: what scrolls with the list follows the choice.
    QMetaObject::invokeMethod(
        this, [this] { TellTop(); }, Qt::QueuedConnection);
  }

  // Return acts as a double click, where that means something.
  bool eventFilter(QObject* object, QEvent* event) override {
    if (event->type() == QEvent::KeyPress && Subject() != nullptr && TheControl().onDoubleClick &&
        KeyName(static_cast<const QKeyEvent&>(*event)) == "Return") {
      Act(&ListBox::DoubleClick);
      return true;
    }
    return View::eventFilter(object, event);
  }

  int top_ = 1;  // the first entry that is seen, as the control knows it
};

class ComboView final : public ViewOfKind<ComboBox, QComboBox> {
 public:
  ComboView(QtWindow& window, ComboBox& control, QWidget* parent)
      : ViewOfKind(window, control, new QComboBox(parent)) {
    The().setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    The().setMinimumContentsLength(10);
    The().setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(&The(), &QComboBox::activated, this, [this](int index) { Pick(index); });
    if (!control.Fixed()) LetType();
  }

 private:
  void LetType() {
    The().setEditable(true);
    The().setInsertPolicy(QComboBox::NoInsert);
    The().setCompleter(nullptr);  // what is typed stays as it was typed
    The().lineEdit()->setAcceptDrops(false);
    connect(The().lineEdit(), &QLineEdit::textEdited, this, [this](const QString& text) {
      Act([&](ComboBox& combo) { return combo.Type(FromQt(text)); });
    });
  }

  // Return in a typed one names the last entry picked, whatever has been typed since.
  void Pick(int index) {
    if (The().itemText(index) != The().currentText()) return;
    Act([&](ComboBox& combo) { return combo.Choose(index + 1); });
  }

  void Show() override {
    const ComboBox& combo = TheControl();
    if (items_ != combo.Items()) ShowItems();
    const QString text = ToQt(combo.Text());
    if (combo.Fixed()) {
      The().setPlaceholderText(text);  // shown when it is none of the entries
      The().setCurrentIndex(combo.SelectedIndex() - 1);
    } else if (The().currentText() != text) {
      const int cursor = The().lineEdit()->cursorPosition();
      The().setCurrentIndex(combo.SelectedIndex() - 1);
      The().setEditText(text);
      if (The().hasFocus()) The().lineEdit()->setCursorPosition(cursor);
    }
  }

  void ShowItems() {
    items_ = TheControl().Items();
    QStringList texts;
    for (const std::string& item : items_) texts.append(ToQt(item));
    const QString typed = The().currentText();
    The().clear();
    The().addItems(texts);
    if (!TheControl().Fixed()) The().setEditText(typed);
  }

  void Left() override { TheControl().Leave(); }

  std::vector<std::string> items_;  // as they are on the screen
};

}  // namespace

View* MakeListView(QtWindow& window, Control& control, QWidget* parent) {
  return MakeFirst({TryKind<ListBox, ListView>, TryKind<ComboBox, ComboView>}, window, control,
                   parent);
}

}  // namespace ormel::ui
