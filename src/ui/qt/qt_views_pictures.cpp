// Pictures: what a person does on them arrives in pixels of the canvas.
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

#include "ui/picture.h"
#include "ui/qt/qt_picture.h"
#include "ui/qt/qt_view.h"

namespace ormel::ui {
namespace {

class PictureView final : public ViewOfKind<Picture, PictureWidget> {
 public:
  PictureView(QtWindow& window, Picture& control, QWidget* parent)
      : ViewOfKind(window, control, new PictureWidget(parent)) {
    The().SetStripHeight(control.StripHeight());  // the layout asks before the first Show()
  }

 private:
  void Show() override {
    The().SetStripHeight(TheControl().StripHeight());
    The().SetCanvas(&TheControl().Image(), TheControl().Paint());
    const bool takesKeys = TheControl().onKey || TheControl().onClick;
    The().setFocusPolicy(takesKeys ? Qt::StrongFocus : Qt::NoFocus);
  }

  void Parted() override { The().SetCanvas(nullptr); }

  bool eventFilter(QObject* object, QEvent* event) override {
    if (Subject() == nullptr) return false;
    switch (event->type()) {
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonDblClick:
      case QEvent::MouseButtonRelease:
        return Press(static_cast<QMouseEvent&>(*event));
      case QEvent::MouseMove:
        return Move(static_cast<QMouseEvent&>(*event));
      case QEvent::Wheel:
        if (!TheControl().onWheel) break;
        Turn(static_cast<QWheelEvent&>(*event));
        return true;
      case QEvent::KeyPress:
        if (PressedByKey(static_cast<QKeyEvent&>(*event))) return true;
        break;
      default:
        break;
    }
    return View::eventFilter(object, event);
  }

  void Send(MouseAction action, const QMouseEvent& event) {
    const QPointF place = The().ToCanvas(event.position());
    Tell([&](Picture& picture) { return picture.Mouse({action, place.x(), place.y()}); });
  }

  void Turn(const QWheelEvent& event) {
    constexpr double kNotch = 120;
    const QPointF place = The().ToCanvas(event.position());
    if (!The().Covered().contains(event.position()) || event.angleDelta().y() == 0) return;
    Tell([&](Picture& picture) {
      return picture.Wheel({place.x(), place.y(), event.angleDelta().y() / kNotch});
    });
  }

  void SendMiddle(MouseAction action, const QMouseEvent& event) {
    const QPointF place = The().ToCanvas(event.position());
    Tell([&](Picture& picture) { return picture.MiddleButton({action, place.x(), place.y()}); });
  }

  bool PressMiddle(const QMouseEvent& event) {
    const bool wasPressed = middlePressed_;
    const bool isPress = event.type() != QEvent::MouseButtonRelease;
    middlePressed_ = isPress && The().Covered().contains(event.position());
    if (wasPressed || middlePressed_) {
      SendMiddle(isPress ? MouseAction::kDown : MouseAction::kUp, event);
    }
    return true;
  }

  // A press beside the picture is none; a release belongs to its press, wherever it happens.
  bool Press(const QMouseEvent& event) {
    if (event.button() == Qt::MiddleButton && TheControl().onMiddleButton) {
      return PressMiddle(event);
    }
    if (event.button() != Qt::LeftButton) return false;
    const bool inside = The().Covered().contains(event.position());
    if (event.type() == QEvent::MouseButtonRelease) {
      if (!pressed_) return true;
      pressed_ = false;
      Send(MouseAction::kUp, event);
      if (inside) Tell(&Picture::Click);
    } else if (inside) {
      pressed_ = true;
      Send(MouseAction::kDown, event);
      if (event.type() == QEvent::MouseButtonDblClick) Tell(&Picture::DoubleClick);
    }
    return false;
  }

  bool Move(const QMouseEvent& event) {
    if (middlePressed_) SendMiddle(MouseAction::kMove, event);
    if (pressed_ || The().Covered().contains(event.position())) Send(MouseAction::kMove, event);
    return false;
  }

  bool PressedByKey(const QKeyEvent& event) {
    if (!TheControl().onClick || (event.key() != Qt::Key_Space && event.key() != Qt::Key_Return)) {
      return false;
    }
    Tell(&Picture::Click);
    return true;
  }

  bool pressed_ = false;
  bool middlePressed_ = false;
};

}  // namespace

View* MakePictureView(QtWindow& window, Control& control, QWidget* parent) {
  return TryKind<Picture, PictureView>(window, control, parent);
}

}  // namespace ormel::ui
