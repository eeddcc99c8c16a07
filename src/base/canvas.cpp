#include "base/canvas.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <utility>

namespace ormel {
namespace {

constexpr std::size_t kBytesPerPixel = 3;

// Far outside every canvas, and still far from the limits of int.
constexpr double kFarAway = 1e8;

// What is not a number lies far outside, too.
int FloorToInt(double value) {
  return static_cast<int>(std::floor(std::min(kFarAway, std::max(-kFarAway, value))));
}

// For each of `count` pixels the one of `limit` pixels in which it begins, when `size` of them from
// `start` on are stretched over all.
std::vector<int> SourcePixels(int count, double start, double size, int limit) {
  std::vector<int> pixels(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    pixels[static_cast<std::size_t>(i)] =
        std::clamp(FloorToInt(start + i * size / count), 0, limit - 1);
  }
  return pixels;
}

std::uint8_t* PutPixel(std::uint8_t* pixel, Colour colour) {
  pixel[0] = Red(colour);
  pixel[1] = Green(colour);
  pixel[2] = Blue(colour);
  return pixel + kBytesPerPixel;
}

// The pixels of a line: one in each column, or each row when it is steep, both ends included.
class Stroke {
 public:
  Stroke(int x1, int y1, int x2, int y2)
      : x_(x1),
        y_(y1),
        acrossX_(std::int64_t{x2} - x1),
        acrossY_(std::int64_t{y2} - y1),
        steps_(std::max(std::abs(acrossX_), std::abs(acrossY_))) {}

  int X(std::int64_t step) const { return x_ + Part(acrossX_, step); }
  int Y(std::int64_t step) const { return y_ + Part(acrossY_, step); }

  // The first and last of the steps 0, 1, ... that can lie in the rectangle.
  std::pair<std::int64_t, std::int64_t> StepsWithin(int left, int top, int right,
                                                    int bottom) const {
    double first = 0;
    auto last = static_cast<double>(steps_);
    Narrow(x_, acrossX_, left, right, first, last);
    Narrow(y_, acrossY_, top, bottom, first, last);
    return {static_cast<std::int64_t>(std::floor(first)),
            static_cast<std::int64_t>(std::ceil(last))};
  }

 private:
  // The way after `step` of the steps, to the nearest pixel.
  int Part(std::int64_t across, std::int64_t step) const {
    if (steps_ == 0) return 0;
    const std::int64_t twice = 2 * across * step + steps_;
    const std::int64_t floor = twice / (2 * steps_) - (twice % (2 * steps_) < 0 ? 1 : 0);
    return static_cast<int>(floor);
  }

  void Narrow(int from, std::int64_t across, int low, int high, double& first, double& last) const {
    if (across == 0) {
      if (from < low || from > high) last = first - 1;
      return;
    }
    const double perStep = static_cast<double>(across) / static_cast<double>(steps_);
    // One step more each way makes up for the rounding.
    first = std::max(first, std::min((low - from) / perStep, (high - from) / perStep) - 1);
    last = std::min(last, std::max((low - from) / perStep, (high - from) / perStep) + 1);
  }

  int x_;
  int y_;
  std::int64_t acrossX_;
  std::int64_t acrossY_;
  std::int64_t steps_;
};

}  // namespace

Canvas::Canvas(int width, int height, Colour ground)
    : width_(width > 0 && height > 0 ? width : 0), height_(width > 0 && height > 0 ? height : 0) {
  const std::size_t pixels = static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_);
  pixels_.assign(pixels * kBytesPerPixel, Red(ground));
  if (ground != Rgb(Red(ground), Red(ground), Red(ground))) Clear(ground);
}

void Canvas::SetScale(double left, double top, double right, double bottom) {
  if (left == right || top == bottom) return;
  left_ = left;
  top_ = top;
  scaleX_ = width_ / (right - left);
  scaleY_ = height_ / (bottom - top);
}

void Canvas::Clear(Colour colour) { FillPixels(0, 0, width_, height_, colour); }

void Canvas::SetPixel(int x, int y, Colour colour) { FillPixels(x, y, x + 1, y + 1, colour); }

const std::uint8_t* Canvas::RowBytes(int y) const {
  return pixels_.data() +
         static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) * kBytesPerPixel;
}

std::uint8_t* Canvas::RowBytes(int y) {
  return pixels_.data() +
         static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) * kBytesPerPixel;
}

Colour Canvas::Pixel(int x, int y) const {
  if (x < 0 || x >= width_ || y < 0 || y >= height_) return kWhite;
  const std::uint8_t* pixel = RowBytes(y) + static_cast<std::size_t>(x) * kBytesPerPixel;
  return Rgb(pixel[0], pixel[1], pixel[2]);
}

void Canvas::FillPixels(int left, int top, int right, int bottom, Colour colour) {
  left = std::max(left, 0);
  top = std::max(top, 0);
  right = std::min(right, width_);
  bottom = std::min(bottom, height_);
  for (int y = top; y < bottom; ++y) {
    std::uint8_t* pixel = RowBytes(y) + static_cast<std::size_t>(left) * kBytesPerPixel;
    for (int x = left; x < right; ++x) pixel = PutPixel(pixel, colour);
  }
}

void Canvas::SetRow(int y, std::span<const Colour> colours) {
  if (y < 0 || y >= height_) return;
  std::uint8_t* pixel = RowBytes(y);
  for (const Colour colour :
       colours.first(std::min(colours.size(), static_cast<std::size_t>(width_)))) {
    pixel = PutPixel(pixel, colour);
  }
}

void Canvas::Paste(const Canvas& source, int left, int top) {
  const int first = std::max(-left, 0);
  const int count = std::min(source.width_, width_ - left) - first;
  if (count <= 0) return;
  for (int y = std::max(-top, 0); y < std::min(source.height_, height_ - top); ++y) {
    std::memcpy(RowBytes(top + y) + static_cast<std::size_t>(left + first) * kBytesPerPixel,
                source.RowBytes(y) + static_cast<std::size_t>(first) * kBytesPerPixel,
                static_cast<std::size_t>(count) * kBytesPerPixel);
  }
}

void Canvas::Plot(double x, double y, Colour colour) {
  SetPixel(FloorToInt(PixelX(x)), FloorToInt(PixelY(y)), colour);
}

void Canvas::Line(double x1, double y1, double x2, double y2, Colour colour, int pen) {
  const Stroke stroke{FloorToInt(PixelX(x1)), FloorToInt(PixelY(y1)), FloorToInt(PixelX(x2)),
                      FloorToInt(PixelY(y2))};
  const int before = (std::max(pen, 1) - 1) / 2;
  const int after = std::max(pen, 1) - before;
  // Only the part of the line from which the pen can reach the canvas is walked.
  const auto [first, last] = stroke.StepsWithin(-after, -after, width_ + before, height_ + before);
  for (std::int64_t step = first; step <= last; ++step) {
    const int x = stroke.X(step);
    const int y = stroke.Y(step);
    FillPixels(x - before, y - before, x + after, y + after, colour);
  }
}

void Canvas::FillBlock(double left, double top, double right, double bottom, Colour colour) {
  const int x1 = FloorToInt(std::min(PixelX(left), PixelX(right)));
  const int x2 = FloorToInt(std::max(PixelX(left), PixelX(right)));
  const int y1 = FloorToInt(std::min(PixelY(top), PixelY(bottom)));
  const int y2 = FloorToInt(std::max(PixelY(top), PixelY(bottom)));
  FillPixels(x1, y1, std::max(x2, x1 + 1), std::max(y2, y1 + 1), colour);
}

void Canvas::Stretch(const Canvas& source) {
  StretchRegion(source, 0, 0, source.width_, source.height_);
}

void Canvas::StretchRegion(const Canvas& source, double left, double top, double width,
                           double height) {
  if (source.Empty() || Empty() || !(width > 0 && height > 0)) return;
  const std::vector<int> columns = SourcePixels(width_, left, width, source.width_);
  const std::vector<int> rows = SourcePixels(height_, top, height, source.height_);
  const std::size_t rowBytes = static_cast<std::size_t>(width_) * kBytesPerPixel;
  for (int y = 0; y < height_; ++y) {
    const int row = rows[static_cast<std::size_t>(y)];
    std::uint8_t* pixel = RowBytes(y);
    // Enlarged cells are many equal rows high.
    if (y > 0 && row == rows[static_cast<std::size_t>(y - 1)]) {
      std::memcpy(pixel, RowBytes(y - 1), rowBytes);
      continue;
    }
    const std::uint8_t* from = source.RowBytes(row);
    for (const int column : columns) {
      std::memcpy(pixel, from + static_cast<std::size_t>(column) * kBytesPerPixel, kBytesPerPixel);
      pixel += kBytesPerPixel;
    }
  }
}

}  // namespace ormel
