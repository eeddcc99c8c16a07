#include "ui/picture.h"

namespace ormel::ui {

void Picture::SetImage(Canvas canvas) {
  canvas_ = std::move(canvas);
  paint_ = {};
  Changed();
}

void Picture::SetPainter(int width, int height, Painter paint) {
  canvas_ = Canvas(width, height);
  paint_ = std::move(paint);
  Repaint();
}

void Picture::Repaint() {
  if (paint_) paint_(canvas_);
  Changed();
}

void Picture::SetStripHeight(int height) {
  stripHeight_ = height;
  Changed();
}

Outcome<> Picture::Mouse(const MouseEvent& event) {
  Outcome<> can = CanAct();
  if (!can.Ok()) return can;
  if (event.action == MouseAction::kClick) {
    for (const MouseAction part : {MouseAction::kDown, MouseAction::kUp}) {
      Outcome<> sent = Mouse({part, event.x, event.y});
      if (!sent.Ok()) return sent;
    }
    return Click();
  }
  if (onMouse) {
    Fire([this, event] { onMouse(event); });
  }
  return Done{};
}

Outcome<> Picture::Wheel(const WheelEvent& event) {
  Outcome<> can = CanAct();
  if (can.Ok() && onWheel) {
    Fire([this, event] { onWheel(event); });
  }
  return can;
}

Outcome<> Picture::MiddleButton(const MouseEvent& event) {
  Outcome<> can = CanAct();
  if (can.Ok() && onMiddleButton) {
    Fire([this, event] { onMiddleButton(event); });
  }
  return can;
}

std::string Picture::Printed() const {
  return std::to_string(canvas_.Width()) + " x " + std::to_string(canvas_.Height());
}

void ColourSwatch::SetColour(Colour colour) {
  colour_ = colour;
  Changed();
}

}  // namespace ormel::ui
