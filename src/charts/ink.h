// Smooth lines, areas, dots and letters on a canvas, for charts: their edges are mixed with what
// lies beneath. Places and sizes are in units of which the caller says how many pixels they have,
// so that a chart looks alike in every size. Places may lie anywhere, and what is not a number lies
// far outside.
#pragma once

#include <span>
#include <string_view>
#include <vector>

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
  double PixelsPerUnit() const { return scale_; }

  // Nothing is drawn outside the rectangle until Unclip().
  void Clip(double left, double top, double right, double bottom);
  void Unclip();

  // A rectangle without smooth edges. One without width or height is a line of one pixel.
  void Block(double left, double top, double right, double bottom, Colour colour);
  // Level and upright lines of whole pixels, about a unit thick: grids and axes. The line's pixels
  // begin where the place given lies.
  void LevelLine(double left, double right, double y, Colour colour);
  void UprightLine(double x, double top, double bottom, Colour colour);
  // A level line of dashes that are as long as the gaps between them.
  void LevelDashes(double left, double right, double y, double dash, Colour colour);

  // A line through all points with round ends, `pen` wide.
  void Stroke(std::span<const InkPoint> path, double pen, Colour colour);
  // The same in dashes. A dash is measured along the line without its round ends, a gap between
  // them.
  void Dashes(std::span<const InkPoint> path, double pen, double dash, double gap, Colour colour);
  void Dot(InkPoint centre, double radius, Colour colour) {
    Stroke({&centre, 1}, 2 * radius, colour);
  }
  // The inside of the polygon whose last corner is joined to the first. Its outline may cross
  // itself: then both sides of the crossing are inside.
  void Area(std::span<const InkPoint> outline, Colour colour);

  // A line of text in UTF-8, in the letters of stroke_font.h; `height` is that of a capital, and
  // (x, y) the left end of the line's foot. Upright text runs upward: (x, y) is the lower end of
  // the foot, which lies at its right.
  void Text(double x, double y, std::string_view text, double height, Colour colour);
  void UprightText(double x, double y, std::string_view text, double height, Colour colour);
  // The length of a text of that height.
  static double TextWidth(std::string_view text, double height);

 private:
  struct Box {
    int left = 0;
    int top = 0;
    int right = 0;  // the first column and row outside
    int bottom = 0;
    bool Empty() const { return left >= right || top >= bottom; }
  };
  // Where a text goes on the canvas: its origin and directions, in pixels.
  struct Writing {
    InkPoint origin;
    InkPoint along;
    InkPoint down;
  };
  class Cover;

  Box Clipped(Box box) const;
  // The pixels within `reach` pixels of the path, as far as they may be drawn on.
  Box BoxAround(std::span<const InkPoint> path, double reach) const;
  std::vector<InkPoint> ToPixels(std::span<const InkPoint> path) const;
  int LineThickness() const;
  // In pixels.
  void StrokePixels(std::span<const InkPoint> corners, double radius, Colour colour);
  void Mix(const Cover& cover, Colour colour);
  void Write(const Writing& writing, std::string_view text, double height, Colour colour);

  Canvas& canvas_;
  double scale_;
  Box clip_;
};

}  // namespace ormel
