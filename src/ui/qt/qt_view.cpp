#include "ui/qt/qt_view.h"

#include <QApplication>
#include <QEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <stdexcept>

#include "ui/qt/qt_windows.h"

namespace ormel::ui {

View::View(QtWindow& window, Control& control, QObject* thing)
    : QObject(thing), window_(window), control_(&control), widget_(qobject_cast<QWidget*>(thing)) {
  thing->setObjectName(ToQt(control.Name()));
  control.AttachView(this);
  window.Know(control, this);
  if (widget_ != nullptr) Watch(widget_);
  View::Refresh();
}

View::~View() { Detach(); }

void View::Refresh() {
  if (marked_) return;
  marked_ = true;
  window_.Mark(this);
}

void View::Gone() {
  window_.Forget(*control_);
  control_ = nullptr;
  Parted();
  if (widget_ != nullptr) widget_->hide();
  parent()->deleteLater();
}

void View::Release() {
  if (Detach()) Parted();
}

bool View::Detach() {
  if (control_ == nullptr) return false;
  control_->AttachView(nullptr);
  control_ = nullptr;
  return true;
}

void View::Sync() {
  marked_ = false;
  if (control_ == nullptr) return;
  syncing_ = true;
  if (widget_ != nullptr) ShowCommon();
  Show();
  syncing_ = false;
}

void View::SetPlaced(bool placed) {
  placed_ = placed;
  Refresh();
}

// Frames and the window hide and disable what they hold by themselves.
void View::ShowCommon() {
  widget_->setEnabled(control_->Enabled());
  widget_->setVisible(placed_ && control_->Visible());
  widget_->setToolTip(ToQt(control_->ToolTip()));
}

bool View::eventFilter(QObject* object, QEvent* event) {
  if (control_ == nullptr) return QObject::eventFilter(object, event);
  switch (event->type()) {
    case QEvent::KeyPress:
      return PassKey(object, event);
    case QEvent::FocusIn:
      Entered();
      break;
    case QEvent::FocusOut:
      if (IsLeft(*object, *event)) Left();
      break;
    case QEvent::Wheel:
      // Turning the wheel to scroll a window must not change the values that pass by.
      if (widget_->focusPolicy() != Qt::NoFocus && !widget_->hasFocus() && !control_->Grows()) {
        event->ignore();
        return true;
      }
      break;
    default:
      break;
  }
  return QObject::eventFilter(object, event);
}

// The widget takes the key first (it types, moves the selection, ...), then the program hears of
// it.
bool View::PassKey(QObject* object, QEvent* event) {
  if (!control_->onKey) return false;
  const std::string key = KeyName(static_cast<const QKeyEvent&>(*event));
  const QPointer<View> alive(this);
  object->event(event);
  if (alive != nullptr && control_ != nullptr && !key.empty()) {
    (void)control_->Control::Key(key);  // not the kind's own Key(): the widget has done that part
  }
  return true;
}

// Another window in front, an open menu, a disabled or rebuilt window: a person comes back from
// these.
bool View::IsLeft(const QObject& object, const QEvent& event) const {
  switch (static_cast<const QFocusEvent&>(event).reason()) {
    case Qt::ActiveWindowFocusReason:
    case Qt::PopupFocusReason:
    case Qt::MenuBarFocusReason:
      return false;
    default:
      break;
  }
  const auto& part = static_cast<const QWidget&>(object);
  return part.isEnabled() && part.isVisible() && !window_.IsRebuilding();
}

View* MakeFirst(std::initializer_list<Maker> makers, QtWindow& window, Control& control,
                QWidget* parent) {
  for (const Maker maker : makers) {
    if (View* view = maker(window, control, parent)) return view;
  }
  return nullptr;
}

View* MakeView(QtWindow& window, Control& control, QWidget* parent) {
  View* view = MakeFirst({MakeTextView, MakeButtonView, MakeListView, MakeFolderView, MakeRangeView,
                          MakePictureView, MakeRichTextView},
                         window, control, parent);
  if (view == nullptr) throw std::logic_error("no widget can show the control " + control.Name());
  return view;
}

}  // namespace ormel::ui
