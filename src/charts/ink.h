// Smooth lines, dots and figures on a canvas, for graphs: their edges are mixed with what lies
// beneath. Places and sizes are in units of which the caller says how many pixels they have, so
// that a graph looks alike in every size.
#pragma once

#include <span>
#include <string_view>

#include "base/canvas.h"

namespace ormel {

struct InkPoint {
  double x = 0;
  double y = 0;
};

class Ink {
 public:
  // The canvas outlives the ink.
  Ink(Canvas& canvas, double pixelsPerUnit) : canvas_(canvas), scale_(pixelsPerUnit) { Unclip(); }

  // The canvas in units.
  double Width() const { return canvas_.Width() / scale_; }
  double Height() const { return canvas_.Height() / scale_; }

  // Nothing is drawn outside the rectangle until Unclip().
  void Clip(double left, double top, double right, double bottom);
  void Unclip();

  // A rectangle without smooth edges. One without width or height is a line of one pixel.
  void Block(double left, double top, double right, double bottom, Colour colour);
  // A line through all points with round ends, `pen` wide. Points may lie anywhere.
  void Stroke(std::span<const InkPoint> path, double pen, Colour colour);
  void Dot(InkPoint centre, double radius, Colour colour) {
    Stroke({&centre, 1}, 2 * radius, colour);
  }

  // Figures: digits and + - . : / E and blanks, as numbers and dates need them; other letters leave
  // a gap. (x, y) is the left end of their foot.
  void Figures(double x, double y, std::string_view text, double height, Colour colour);
  static double FiguresWidth(std::string_view text, double height);

 private:
  struct Box {
    int left = 0;
    int top = 0;
    int right = 0;  // the first column and row outside
    int bottom = 0;
  };
  // The pixels within `reach` pixels of the path, as far as they may be drawn on.
  Box BoxAround(std::span<const InkPoint> path, double reach) const;

  Canvas& canvas_;
  double scale_;
  Box clip_;
};

}  // namespace ormel
