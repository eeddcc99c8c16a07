// The screen's side of one control: a widget (or an action of a menu) that shows the control's
// state, and turns what a person does into calls of the control.
//
// A change of the control only marks its view; the window brings all marked views up to date before
// the next event, so that a thousand changes of a list in one handler cost as much as one, and no
// widget changes under the hands of its own event. A view belongs to its widget and goes with it,
// later than the control that it shows: between the two it has no control and does nothing.
#pragma once

#include <QObject>
#include <QPointer>
#include <QSignalBlocker>
#include <QWidget>
#include <functional>

#include "ui/control.h"
#include "ui/qt/qt_text.h"

namespace ormel::ui {

class QtWindow;

class View : public QObject, public ControlView {
 public:
  // `thing` is a widget or an action; it owns the view.
  View(QtWindow& window, Control& control, QObject* thing);
  ~View() override;

  void Refresh() override;  // marks
  void Gone() override;
  // The window is closed: lets go of the control.
  void Release();

  // Brings the widget up to date. Fires nothing.
  void Sync();

  Control* Subject() const { return control_; }
  QWidget* Widget() const { return widget_; }
  // A widget that the layout does not name is not shown.
  void SetPlaced(bool placed);

 protected:
  // The rest of Sync(): what this kind of control has beside enabled, visible and the tool tip.
  virtual void Show() = 0;
  // A person went on to another field.
  virtual void Left() {}
  virtual void Entered() {}
  // The control has gone; nothing that belongs to it may be used from here on.
  virtual void Parted() {}
  // Keys and focus of `part`, a widget inside this one, count as the control's as well.
  void Watch(QWidget* part) { part->installEventFilter(this); }
  // While the view itself changes its widget, what the widget reports is not a person's doing.
  bool IsSyncing() const { return syncing_; }
  QtWindow& Owner() const { return window_; }

  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  bool Detach();  // false: it had parted before
  void ShowCommon();
  bool PassKey(QObject* object, QEvent* event);
  bool IsLeft(const QObject& object, const QEvent& event) const;

  QtWindow& window_;
  Control* control_;
  QWidget* widget_;  // null for an action
  bool placed_ = false;
  bool syncing_ = false;
  bool marked_ = false;
};

// A view of a `C` through a `W`.
template <class C, class W>
class ViewOfKind : public View {
 protected:
  ViewOfKind(QtWindow& window, C& control, W* thing)
      : View(window, control, thing), thing_(thing) {}

  C& TheControl() const { return static_cast<C&>(*Subject()); }
  W& The() const { return *thing_; }

  // Hands on what a person does. A refusal needs no answer: the widget was disabled meanwhile.
  template <class Action>
  void Tell(Action action) {
    if (Subject() != nullptr && !IsSyncing()) (void)std::invoke(action, TheControl());
  }
  // The same where the widget has changed already: whatever the control made of it, the widget
  // shows the outcome.
  template <class Action>
  void Act(Action action) {
    const QPointer<View> alive(this);
    Tell(action);
    if (alive != nullptr && Subject() != nullptr) Refresh();
  }

 private:
  W* thing_;
};

// Makes the view of a control that stands in a layout, its widget inside `parent`.
View* MakeView(QtWindow& window, Control& control, QWidget* parent);

// The makers of the kinds: null when `control` is of another kind.
View* MakeTextView(QtWindow& window, Control& control, QWidget* parent);
View* MakeButtonView(QtWindow& window, Control& control, QWidget* parent);
View* MakeListView(QtWindow& window, Control& control, QWidget* parent);
View* MakeFolderView(QtWindow& window, Control& control, QWidget* parent);
View* MakeRangeView(QtWindow& window, Control& control, QWidget* parent);
View* MakePictureView(QtWindow& window, Control& control, QWidget* parent);
View* MakeRichTextView(QtWindow& window, Control& control, QWidget* parent);

// One kind of control: its view when `control` is one.
template <class C, class V>
View* TryKind(QtWindow& window, Control& control, QWidget* parent) {
  auto* kind = dynamic_cast<C*>(&control);
  return kind == nullptr ? nullptr : new V(window, *kind, parent);
}

// The first of the `Kinds` (TryKind<C, V>...) that fits.
using Maker = View* (*)(QtWindow&, Control&, QWidget*);
View* MakeFirst(std::initializer_list<Maker> makers, QtWindow& window, Control& control,
                QWidget* parent);

}  // namespace ormel::ui
