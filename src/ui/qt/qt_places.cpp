// Where windows open on the screen.
#include <QScreen>
#include <QTimer>

#include "ui/qt/qt_windows.h"

namespace ormel::ui {
namespace {

// Window managers give a window its title some time after it is shown, and some place it by
// themselves. By then it is looked at again.
constexpr int kLooks[] = {0, 150, 600};  // milliseconds

}  // namespace

WindowBox BoxOfRect(const QRect& rect) { return {rect.x(), rect.y(), rect.width(), rect.height()}; }

// What the strip along the upper edge leaves of the screen.
QRect QtWindow::RoomBelow(const QtWindow* bar) const {
  QRect room = screen()->availableGeometry();
  if (bar != nullptr && bar != this && bar->isVisible()) {
    room.setTop(std::clamp(bar->frameGeometry().bottom() + 1, room.top(), room.bottom()));
  }
  return room;
}

void QtWindow::Place(QSize wanted, const QWidget* owner, bool modal, const QtWindow* bar,
                     int number) {
  const QRect room = RoomBelow(bar);
  const int title = 2 * fontMetrics().height();  // nearly; KeepInView() looks at the real one
  const WindowSize size{wanted.width(), wanted.height() + title};
  WindowBox box;
  if (isBar_) {
    box = {room.x(), room.y(), room.width(), wanted.height() + title};
  } else if (modal || window_->Bare()) {
    const bool hasOwner = owner != nullptr && owner != bar && !window_->Bare();
    box = PlaceOver(BoxOfRect(room), BoxOfRect(hasOwner ? owner->frameGeometry() : room), size);
  } else if (owner != nullptr && owner != bar) {
    // Beside the window that it helps.
    box = OnScreen(BoxOfRect(room), {owner->frameGeometry().right() + 1,
                                     owner->frameGeometry().top(), size.width, size.height});
  } else {
    box = PlaceBelow(BoxOfRect(room), size, title, number);
  }
  move(box.left, box.top);
  resize(box.width, box.height - title);
  for (const int wait : kLooks) {
    QTimer::singleShot(wait, this, [this, strip = QPointer(bar)] { KeepInView(strip); });
  }
}

// The title is never under the strip, and no part of the window beyond the screen.
void QtWindow::KeepInView(const QtWindow* bar) {
  if (window_ == nullptr || !isVisible() || isMaximized() || window_->Bare()) return;
  const QRect frame = frameGeometry();
  const WindowBox box = OnScreen(BoxOfRect(RoomBelow(bar)), BoxOfRect(frame));
  if (box == BoxOfRect(frame)) return;
  move(box.left, box.top);
  const QSize now = size() - QSize(frame.width() - box.width, frame.height() - box.height);
  if (now == size()) return;
  const bool own = size() == ownSize_;
  resize(now);
  if (own) ownSize_ = now;
}

}  // namespace ormel::ui
