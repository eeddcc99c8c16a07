#include "base/canvas.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace ormel {
namespace {

constexpr std::size_t kBytesPerPixel = 3;

// Far outside every canvas, and still far from the limits of int.
constexpr double kFarAway = 1e8;

int FloorToInt(double value) {
  return static_cast<int>(std::floor(std::clamp(value, -kFarAway, kFarAway)));
}

}  // namespace

Canvas::Canvas(int width, int height, Colour ground)
    : width_(width > 0 && height > 0 ? width : 0), height_(width > 0 && height > 0 ? height : 0) {
  pixels_.resize(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_) *
                 kBytesPerPixel);
  Clear(ground);
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

Colour Canvas::Pixel(int x, int y) const {
  if (x < 0 || x >= width_ || y < 0 || y >= height_) return kWhite;
  const std::uint8_t* pixel =
      pixels_.data() + (static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
                        static_cast<std::size_t>(x)) *
                           kBytesPerPixel;
  return Rgb(pixel[0], pixel[1], pixel[2]);
}

void Canvas::FillPixels(int left, int top, int right, int bottom, Colour colour) {
  left = std::max(left, 0);
  top = std::max(top, 0);
  right = std::min(right, width_);
  bottom = std::min(bottom, height_);
  for (int y = top; y < bottom; ++y) {
    std::uint8_t* pixel =
        pixels_.data() + (static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
                          static_cast<std::size_t>(left)) *
                             kBytesPerPixel;
    for (int x = left; x < right; ++x) {
      *pixel++ = Red(colour);
      *pixel++ = Green(colour);
      *pixel++ = Blue(colour);
    }
  }
}

void Canvas::Plot(double x, double y, Colour colour) {
  SetPixel(FloorToInt(PixelX(x)), FloorToInt(PixelY(y)), colour);
}

void Canvas::Line(double x1, double y1, double x2, double y2, Colour colour, int pen) {
  const double fromX = std::clamp(PixelX(x1), -kFarAway, kFarAway);
  const double fromY = std::clamp(PixelY(y1), -kFarAway, kFarAway);
  const double acrossX = std::clamp(PixelX(x2), -kFarAway, kFarAway) - fromX;
  const double acrossY = std::clamp(PixelY(y2), -kFarAway, kFarAway) - fromY;
  const int before = (std::max(pen, 1) - 1) / 2;
  const int after = std::max(pen, 1) - before;

  // Only the part of the line from which the pen can reach the canvas is walked.
  double begin = 0;
  double end = 1;
  const auto clip = [&](double from, double across, double size) {
    const double low = -static_cast<double>(after) - 1;
    const double high = size + before + 1;
    if (across == 0) {
      if (from < low || from > high) end = -1;
      return;
    }
    const double a = (low - from) / across;
    const double b = (high - from) / across;
    begin = std::max(begin, std::min(a, b));
    end = std::min(end, std::max(a, b));
  };
  clip(fromX, acrossX, width_);
  clip(fromY, acrossY, height_);
  if (begin > end) return;

  const double length = std::max(std::abs(acrossX), std::abs(acrossY)) * (end - begin);
  const int steps = std::max(static_cast<int>(std::ceil(length)), 1);
  for (int i = 0; i <= steps; ++i) {
    const double part = begin + (end - begin) * i / steps;
    const int x = FloorToInt(fromX + acrossX * part);
    const int y = FloorToInt(fromY + acrossY * part);
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
  if (source.Empty()) return;
  for (int y = 0; y < height_; ++y) {
    const int fromY = static_cast<int>(static_cast<long long>(y) * source.height_ / height_);
    for (int x = 0; x < width_; ++x) {
      const int fromX = static_cast<int>(static_cast<long long>(x) * source.width_ / width_);
      SetPixel(x, y, source.Pixel(fromX, fromY));
    }
  }
}

}  // namespace ormel
