// Pictures and colour swatches.
#pragma once

#include <utility>

#include "base/canvas.h"
#include "ui/control.h"

namespace ormel::ui {

// Shows a canvas, as large as the room allows, in the canvas's own proportions.
class Picture final : public Control {
 public:
  using Control::Control;

  const Canvas& Image() const { return canvas_; }
  void SetImage(Canvas canvas);
  // For drawing: changes show after Repaint().
  Canvas& Drawing() { return canvas_; }
  void Repaint() { Changed(); }

  // A fixed strip (a colour scale, say) is drawn across the whole room instead, this many pixels
  // high.
  int StripHeight() const { return stripHeight_; }
  void SetStripHeight(int height);

  // onMouse for every action; a click is a press, a release, and then onClick.
  Outcome<> Mouse(const MouseEvent& event) override;
  std::string Printed() const override;
  bool Grows() const override { return stripHeight_ == 0; }

 private:
  Canvas canvas_;
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
