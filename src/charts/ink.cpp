#include "charts/ink.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <vector>

namespace ormel {
namespace {

// Far outside every canvas, and still far from the limits of int.
constexpr double kFarAway = 1e6;

int ToPixel(double place) {
  return static_cast<int>(std::floor(std::clamp(place, -kFarAway, kFarAway)));
}

double DistanceToLine(InkPoint p, InkPoint a, InkPoint b) {
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  const double length = dx * dx + dy * dy;
  const double along =
      length > 0 ? std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / length, 0.0, 1.0) : 0;
  const double x = p.x - a.x - along * dx;
  const double y = p.y - a.y - along * dy;
  return std::sqrt(x * x + y * y);
}

Colour Mixed(Colour ground, Colour ink, double part) {
  const auto mix = [part](std::uint8_t from, std::uint8_t to) {
    return static_cast<int>(std::lround(from + part * (to - from)));
  };
  return Rgb(mix(Red(ground), Red(ink)), mix(Green(ground), Green(ink)),
             mix(Blue(ground), Blue(ink)));
}

// A figure is up to 4 units wide and 6 high. Its lines are separated by "|", their corners are
// pairs of digits, x and y from the top left.
struct Figure {
  char letter;
  int width;
  std::string_view lines;
};
constexpr int kFigureHeight = 6;
constexpr int kFigureGap = 2;
constexpr double kFigurePen = 0.85;
constexpr Figure kFigures[] = {
    {'0', 4, "10 30 41 45 36 16 05 01 10"},
    {'1', 4, "11 20 26"},
    {'2', 4, "01 10 30 41 42 06 46"},
    {'3', 4, "01 10 30 41 42 33 13|33 44 45 36 16 05"},
    {'4', 4, "36 30 04 44"},
    {'5', 4, "40 00 02 32 43 45 36 16 05"},
    {'6', 4, "41 30 10 01 05 16 36 45 44 33 13 04"},
    {'7', 4, "00 40 16"},
    {'8', 4, "13 02 01 10 30 41 42 33 13 04 05 16 36 45 44 33"},
    {'9', 4, "42 33 13 02 01 10 30 41 45 36 16 05"},
    {'+', 4, "03 43|21 25"},
    {'-', 3, "03 33"},
    {'.', 0, "06"},
    {':', 0, "02|05"},
    {'/', 4, "06 40"},
    {'E', 4, "40 00 06 46|03 33"},
};
constexpr Figure kBlank{' ', 2, ""};

const Figure& FigureOf(char letter) {
  const auto* found = std::find_if(std::begin(kFigures), std::end(kFigures),
                                   [letter](const Figure& one) { return one.letter == letter; });
  return found == std::end(kFigures) ? kBlank : *found;
}

}  // namespace

void Ink::Clip(double left, double top, double right, double bottom) {
  clip_ = {std::max(ToPixel(left * scale_), 0), std::max(ToPixel(top * scale_), 0),
           std::min(ToPixel(right * scale_), canvas_.Width()),
           std::min(ToPixel(bottom * scale_), canvas_.Height())};
}

void Ink::Unclip() { clip_ = {0, 0, canvas_.Width(), canvas_.Height()}; }

void Ink::Block(double left, double top, double right, double bottom, Colour colour) {
  const int x = ToPixel(left * scale_);
  const int y = ToPixel(top * scale_);
  canvas_.FillPixels(std::max(x, clip_.left), std::max(y, clip_.top),
                     std::min(std::max(ToPixel(right * scale_), x + 1), clip_.right),
                     std::min(std::max(ToPixel(bottom * scale_), y + 1), clip_.bottom), colour);
}

Ink::Box Ink::BoxAround(std::span<const InkPoint> path, double reach) const {
  const auto [left, right] = std::minmax_element(
      path.begin(), path.end(), [](const InkPoint& a, const InkPoint& b) { return a.x < b.x; });
  const auto [top, bottom] = std::minmax_element(
      path.begin(), path.end(), [](const InkPoint& a, const InkPoint& b) { return a.y < b.y; });
  return {std::max(ToPixel(left->x - reach), clip_.left),
          std::max(ToPixel(top->y - reach), clip_.top),
          std::min(ToPixel(right->x + reach) + 1, clip_.right),
          std::min(ToPixel(bottom->y + reach) + 1, clip_.bottom)};
}

void Ink::Stroke(std::span<const InkPoint> path, double pen, Colour colour) {
  const double radius = std::max(pen * scale_, 1.0) / 2;
  std::vector<InkPoint> corners;
  for (const InkPoint& point : path) {
    corners.push_back({std::clamp(point.x * scale_, -kFarAway, kFarAway),
                       std::clamp(point.y * scale_, -kFarAway, kFarAway)});
  }
  if (corners.empty()) return;
  if (corners.size() == 1) corners.push_back(corners.front());
  // How much of each pixel is covered is collected first: where parts of the line meet, the edge
  // would otherwise be mixed twice.
  const Box all = BoxAround(corners, radius + 1);
  if (all.left >= all.right || all.top >= all.bottom) return;
  const auto width = static_cast<std::size_t>(all.right - all.left);
  std::vector<float> covered(width * static_cast<std::size_t>(all.bottom - all.top));
  const auto cover = [&](int x, int y) -> float& {
    return covered[static_cast<std::size_t>(y - all.top) * width +
                   static_cast<std::size_t>(x - all.left)];
  };
  for (std::size_t i = 0; i + 1 < corners.size(); ++i) {
    const Box box = BoxAround(std::span(corners).subspan(i, 2), radius + 1);
    for (int y = box.top; y < box.bottom; ++y) {
      for (int x = box.left; x < box.right; ++x) {
        const double inside =
            radius + 0.5 - DistanceToLine({x + 0.5, y + 0.5}, corners[i], corners[i + 1]);
        cover(x, y) = std::max(cover(x, y), static_cast<float>(std::clamp(inside, 0.0, 1.0)));
      }
    }
  }
  for (int y = all.top; y < all.bottom; ++y) {
    for (int x = all.left; x < all.right; ++x) {
      if (cover(x, y) > 0) canvas_.SetPixel(x, y, Mixed(canvas_.Pixel(x, y), colour, cover(x, y)));
    }
  }
}

void Ink::Figures(double x, double y, std::string_view text, double height, Colour colour) {
  const double unit = height / kFigureHeight;
  std::vector<InkPoint> line;
  const auto draw = [&] {
    if (!line.empty()) Stroke(line, kFigurePen * unit, colour);
    line.clear();
  };
  for (const char letter : text) {
    const Figure& figure = FigureOf(letter);
    for (std::size_t i = 0; i < figure.lines.size(); i += 3) {
      line.push_back(
          {x + (figure.lines[i] - '0') * unit, y - height + (figure.lines[i + 1] - '0') * unit});
      if (i + 2 < figure.lines.size() && figure.lines[i + 2] == '|') draw();
    }
    draw();
    x += (figure.width + kFigureGap) * unit;
  }
}

double Ink::FiguresWidth(std::string_view text, double height) {
  int units = -kFigureGap;
  for (const char letter : text) units += FigureOf(letter).width + kFigureGap;
  return std::max(units, 0) * height / kFigureHeight;
}

}  // namespace ormel
