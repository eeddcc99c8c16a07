#include "ui/picture.h"

namespace ormel::ui {

void Picture::SetImage(Canvas canvas) {
  canvas_ = std::move(canvas);
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

std::string Picture::Printed() const {
  return std::to_string(canvas_.Width()) + " x " + std::to_string(canvas_.Height());
}

void ColourSwatch::SetColour(Colour colour) {
  colour_ = colour;
  Changed();
}

}  // namespace ormel::ui
