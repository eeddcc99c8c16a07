// Pictures and colour swatches.
#pragma once

#include <functional>
#include <utility>

#include "base/canvas.h"
#include "ui/control.h"

namespace ormel::ui {

// The wheel was turned over a picture, in notches: above 0 away from the person. The place is that
// of a MouseEvent.
struct WheelEvent {
  double x = 0;
  double y = 0;
  double notches = 0;
};

// Shows a canvas, as large as the room allows, in the canvas's own proportions.
class Picture final : public Control {
 public:
  using Control::Control;

  const Canvas& Image() const { return canvas_; }
  void SetImage(Canvas canvas);

  // A picture that is drawn anew in every size, so that it is as sharp as the screen: `paint` fills
  // a canvas of whatever size. `width` and `height` give its proportions, the size of Image() and
  // the pixels in which mouse events are told. Repaint() has it drawn again.
  using Painter = std::function<void(Canvas&)>;
  void SetPainter(int width, int height, Painter paint);
  const Painter& Paint() const { return paint_; }

  // For drawing: changes show after Repaint().
  Canvas& Drawing() { return canvas_; }
  void Repaint();

  // A fixed strip (a colour scale, say) is drawn across the whole room instead, this many pixels
  // high.
  int StripHeight() const { return stripHeight_; }
  void SetStripHeight(int height);

  // onMouse for every action; a click is a press, a release, and then onClick.
  Outcome<> Mouse(const MouseEvent& event) override;

  // The wheel, and presses, drags and releases of the middle button, for pictures that have a use
  // for them.
  std::function<void(const WheelEvent&)> onWheel;
  std::function<void(const MouseEvent&)> onMiddleButton;
  [[nodiscard]] Outcome<> Wheel(const WheelEvent& event);
  [[nodiscard]] Outcome<> MiddleButton(const MouseEvent& event);

  std::string Printed() const override;
  bool Grows() const override { return stripHeight_ == 0; }

 private:
  Canvas canvas_;
  Painter paint_;
  int stripHeight_ = 0;
};

class ColourSwatch final : public Control {
 public:
  explicit ColourSwatch(Window& window, std::string name, Colour colour = kBlack)
      : Control(window, std::move(name)), colour_(colour) {}

  Colour Value() const { return colour_; }
  void SetColour(Colour colour);
  std::string Printed() const override { return std::to_string(colour_); }

 private:
  Colour colour_;
};

}  // namespace ormel::ui
