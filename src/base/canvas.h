// A block of 24-bit pixels with the drawing operations of the maps and graphs. It is portable code
// without a toolkit: a picture has the same pixels on the desktop, in a batch run and in a test.
//
// Pixels are addressed (x, y) from 0, y 0 at the top. The drawing operations take units of the
// scale, which is one unit a pixel until SetScale() says otherwise. What lies outside is clipped.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "base/colour.h"

namespace ormel {

class Canvas {
 public:
  Canvas() = default;
  // Sizes below 1 make an empty canvas, on which every operation does nothing.
  Canvas(int width, int height, Colour ground = kWhite);

  int Width() const { return width_; }
  int Height() const { return height_; }
  bool Empty() const { return pixels_.empty(); }

  // Red, green, blue of each pixel, row after row from the top, without padding.
  std::span<const std::uint8_t> Bytes() const { return pixels_; }

  // Lays the rectangle (left, top) to (right, bottom) over the whole canvas. The axes may run
  // either way: (0, 255) to (255, 0) has its origin at the bottom left. Nothing happens when a side
  // is 0.
  void SetScale(double left, double top, double right, double bottom);

  void Clear(Colour colour);

  // Pixels, without the scale. A pixel outside reads as white.
  void SetPixel(int x, int y, Colour colour);
  Colour Pixel(int x, int y) const;
  // The pixels from (left, top) up to, not including, (right, bottom).
  void FillPixels(int left, int top, int right, int bottom, Colour colour);
  // The pixels of row `y` from the left on, as many as there are colours.
  void SetRow(int y, std::span<const Colour> colours);

  // The pixels of `source`, its corner at (left, top), as far as they lie on this canvas.
  void Paste(const Canvas& source, int left, int top);

  // Units of the scale.
  void Plot(double x, double y, Colour colour);
  // A stroke with both ends, `pen` pixels thick (at least 1) and centred on the line.
  void Line(double x1, double y1, double x2, double y2, Colour colour, int pen = 1);
  // All pixels whose top left corner lies in the rectangle; at least one pixel each way. Blocks
  // that share an edge in units share no pixel and leave none out.
  void FillBlock(double left, double top, double right, double bottom, Colour colour);

  // `source` as large as this canvas, each pixel taken from the nearest one.
  void Stretch(const Canvas& source);
  // The same with a part of `source`, in its pixels: a corner and a size, which may be fractions.
  // What the part holds beyond the edges repeats the pixels at the edge. Nothing happens when a
  // side is not above 0.
  void StretchRegion(const Canvas& source, double left, double top, double width, double height);

 private:
  std::uint8_t* RowBytes(int y);
  const std::uint8_t* RowBytes(int y) const;
  double PixelX(double x) const { return (x - left_) * scaleX_; }
  double PixelY(double y) const { return (y - top_) * scaleY_; }

  int width_ = 0;
  int height_ = 0;
  double left_ = 0;
  double top_ = 0;
  double scaleX_ = 1;
  double scaleY_ = 1;
  std::vector<std::uint8_t> pixels_;
};

}  // namespace ormel
