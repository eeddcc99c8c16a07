#include "charts/ink.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "charts/stroke_font.h"

namespace ormel {
namespace {

// Far outside every canvas, and still far from the limits of int.
constexpr double kFarAway = 1e6;

// What is not a number lies far outside, too.
double Limited(double place) { return std::min(kFarAway, std::max(-kFarAway, place)); }

int ToPixel(double place) { return static_cast<int>(std::floor(Limited(place))); }

double Distance(InkPoint a, InkPoint b) { return std::hypot(b.x - a.x, b.y - a.y); }

InkPoint Between(InkPoint a, InkPoint b, double part) {
  return {a.x + part * (b.x - a.x), a.y + part * (b.y - a.y)};
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

// The ends of that part of the line from `a` to `b` which lies between two heights, from left to
// right; all of a level line.
std::pair<double, double> SpanBetween(InkPoint a, InkPoint b, double top, double bottom) {
  const double dy = b.y - a.y;
  double first = 0;
  double last = 1;
  if (dy != 0) {
    first = std::clamp((top - a.y) / dy, 0.0, 1.0);
    last = std::clamp((bottom - a.y) / dy, 0.0, 1.0);
  }
  const double x1 = Between(a, b, first).x;
  const double x2 = Between(a, b, last).x;
  return {std::min(x1, x2), std::max(x1, x2)};
}

Colour Mixed(Colour ground, Colour ink, double part) {
  const auto mix = [part](std::uint8_t from, std::uint8_t to) {
    return static_cast<int>(std::lround(from + part * (to - from)));
  };
  return Rgb(mix(Red(ground), Red(ink)), mix(Green(ground), Green(ink)),
             mix(Blue(ground), Blue(ink)));
}

// The lines of a letter in pixels, from the left end of its foot. Level and upright strokes are
// moved to whole pixels, where they are sharp; slanted ones stay.
std::vector<InkPoint> Hinted(std::span<const InkPoint> line, double pixelsPerPart) {
  std::vector<InkPoint> pixels;
  for (const InkPoint& corner : line) {
    pixels.push_back({corner.x * pixelsPerPart, (corner.y - kCapitalParts) * pixelsPerPart});
  }
  for (std::size_t i = 0; i + 1 < line.size(); ++i) {
    for (const std::size_t end : {i, i + 1}) {
      if (line[i].x == line[i + 1].x) pixels[end].x = std::round(pixels[end].x);
      if (line[i].y == line[i + 1].y) pixels[end].y = std::round(pixels[end].y);
    }
  }
  return pixels;
}

}  // namespace

// How much of each pixel is covered, 0 to 1. It is collected before anything is mixed: where parts
// of a line meet, the edge would otherwise be mixed twice.
class Ink::Cover {
 public:
  explicit Cover(const Box& box)
      : box_(box),
        // Two more columns take what an edge in the last one hands on to its right.
        width_(static_cast<std::size_t>(box.right - box.left) + 2),
        parts_(width_ * static_cast<std::size_t>(box.bottom - box.top)) {}

  const Box& Place() const { return box_; }
  float& At(int x, int y) {
    return parts_[static_cast<std::size_t>(y - box_.top) * width_ +
                  static_cast<std::size_t>(x - box_.left)];
  }
  float At(int x, int y) const { return const_cast<Cover&>(*this).At(x, y); }

  void AddLine(InkPoint a, InkPoint b, const Box& around, double radius);
  void AddEdge(InkPoint a, InkPoint b);
  void SumEdges();

 private:
  void AddEdgeInRow(int y, double left, double right, double height);

  Box box_;
  std::size_t width_;
  std::vector<float> parts_;
};

void Ink::Cover::AddLine(InkPoint a, InkPoint b, const Box& around, double radius) {
  const double reach = radius + 0.5;
  for (int y = around.top; y < around.bottom; ++y) {
    const auto [left, right] = SpanBetween(a, b, y + 0.5 - reach, y + 0.5 + reach);
    const int end = std::min(ToPixel(right + reach) + 1, around.right);
    for (int x = std::max(ToPixel(left - reach), around.left); x < end; ++x) {
      const double inside = reach - DistanceToLine({x + 0.5, y + 0.5}, a, b);
      At(x, y) = std::max(At(x, y), static_cast<float>(std::clamp(inside, 0.0, 1.0)));
    }
  }
}

// Adds to each pixel the change of cover that an edge makes there on the way from left to right:
// edges that run down begin the inside, those that run up end it. SumEdges() makes cover of it.
void Ink::Cover::AddEdge(InkPoint a, InkPoint b) {
  if (a.y == b.y) return;
  const double direction = a.y < b.y ? 1 : -1;
  if (a.y > b.y) std::swap(a, b);
  const int last = std::min(ToPixel(b.y), box_.bottom - 1);
  for (int y = std::max(ToPixel(a.y), box_.top); y <= last; ++y) {
    const double top = std::max<double>(a.y, y);
    const double bottom = std::min<double>(b.y, y + 1);
    auto [left, right] = SpanBetween(a, b, top, bottom);
    left = std::clamp<double>(left, box_.left, box_.right);
    right = std::clamp<double>(right, box_.left, box_.right);
    AddEdgeInRow(y, left, right, direction * (bottom - top));
  }
}

void Ink::Cover::AddEdgeInRow(int y, double left, double right, double height) {
  const int last = ToPixel(right);
  for (int x = ToPixel(left); x <= last; ++x) {
    const double from = std::max<double>(left, x);
    const double to = std::min<double>(right, x + 1);
    const double part = right > left ? height * (to - from) / (right - left) : height;
    const double beyond = part * ((from + to) / 2 - x);
    At(x, y) += static_cast<float>(part - beyond);
    At(x + 1, y) += static_cast<float>(beyond);
  }
}

void Ink::Cover::SumEdges() {
  for (int y = box_.top; y < box_.bottom; ++y) {
    float sum = 0;
    for (int x = box_.left; x < box_.right; ++x) {
      sum += At(x, y);
      At(x, y) = std::min(std::abs(sum), 1.0F);
    }
  }
}

// ---- Blocks and lines of whole pixels -----------------------------------------------------------

void Ink::Clip(double left, double top, double right, double bottom) {
  Unclip();
  clip_ = Clipped({ToPixel(left * scale_), ToPixel(top * scale_), ToPixel(right * scale_),
                   ToPixel(bottom * scale_)});
}

void Ink::Unclip() { clip_ = {0, 0, canvas_.Width(), canvas_.Height()}; }

Ink::Box Ink::Clipped(Box box) const {
  return {std::max(box.left, clip_.left), std::max(box.top, clip_.top),
          std::min(box.right, clip_.right), std::min(box.bottom, clip_.bottom)};
}

void Ink::Block(double left, double top, double right, double bottom, Colour colour) {
  const int x = ToPixel(left * scale_);
  const int y = ToPixel(top * scale_);
  const Box box = Clipped(
      {x, y, std::max(ToPixel(right * scale_), x + 1), std::max(ToPixel(bottom * scale_), y + 1)});
  canvas_.FillPixels(box.left, box.top, box.right, box.bottom, colour);
}

int Ink::LineThickness() const { return std::max(ToPixel(scale_ + 0.5), 1); }

void Ink::LevelLine(double left, double right, double y, Colour colour) {
  const int top = ToPixel(y * scale_);
  const Box box =
      Clipped({ToPixel(left * scale_), top, ToPixel(right * scale_), top + LineThickness()});
  canvas_.FillPixels(box.left, box.top, box.right, box.bottom, colour);
}

void Ink::UprightLine(double x, double top, double bottom, Colour colour) {
  const int left = ToPixel(x * scale_);
  const Box box =
      Clipped({left, ToPixel(top * scale_), left + LineThickness(), ToPixel(bottom * scale_)});
  canvas_.FillPixels(box.left, box.top, box.right, box.bottom, colour);
}

void Ink::LevelDashes(double left, double right, double y, double dash, Colour colour) {
  const int count = ToPixel((right - left) / (2 * dash));
  for (int i = 0; i <= count; ++i) {
    const double begin = left + i * 2 * dash;
    LevelLine(begin, std::min(begin + dash, right), y, colour);
  }
}

// ---- Smooth lines and areas ---------------------------------------------------------------------

std::vector<InkPoint> Ink::ToPixels(std::span<const InkPoint> path) const {
  std::vector<InkPoint> corners;
  corners.reserve(path.size());
  for (const InkPoint& point : path) {
    corners.push_back({Limited(point.x * scale_), Limited(point.y * scale_)});
  }
  return corners;
}

Ink::Box Ink::BoxAround(std::span<const InkPoint> path, double reach) const {
  const auto [left, right] = std::minmax_element(
      path.begin(), path.end(), [](const InkPoint& a, const InkPoint& b) { return a.x < b.x; });
  const auto [top, bottom] = std::minmax_element(
      path.begin(), path.end(), [](const InkPoint& a, const InkPoint& b) { return a.y < b.y; });
  return Clipped({ToPixel(left->x - reach), ToPixel(top->y - reach), ToPixel(right->x + reach) + 1,
                  ToPixel(bottom->y + reach) + 1});
}

void Ink::Mix(const Cover& cover, Colour colour) {
  const Box& box = cover.Place();
  for (int y = box.top; y < box.bottom; ++y) {
    for (int x = box.left; x < box.right; ++x) {
      const float part = cover.At(x, y);
      if (part > 0) canvas_.SetPixel(x, y, Mixed(canvas_.Pixel(x, y), colour, part));
    }
  }
}

void Ink::Stroke(std::span<const InkPoint> path, double pen, Colour colour) {
  StrokePixels(ToPixels(path), std::max(pen * scale_, 1.0) / 2, colour);
}

void Ink::StrokePixels(std::span<const InkPoint> corners, double radius, Colour colour) {
  if (corners.empty()) return;
  const Box all = BoxAround(corners, radius + 1);
  if (all.Empty()) return;
  Cover cover(all);
  const std::size_t lines = std::max<std::size_t>(corners.size() - 1, 1);
  for (std::size_t i = 0; i < lines; ++i) {
    const auto line = corners.subspan(i, std::min<std::size_t>(2, corners.size()));
    cover.AddLine(line.front(), line.back(), BoxAround(line, radius + 1), radius);
  }
  Mix(cover, colour);
}

void Ink::Dashes(std::span<const InkPoint> path, double pen, double dash, double gap,
                 Colour colour) {
  const double radius = std::max(pen * scale_, 1.0) / 2;
  const double lengths[] = {std::max(dash * scale_, 1.0), std::max((gap + pen) * scale_, 1.0)};
  const std::vector<InkPoint> corners = ToPixels(path);
  if (corners.empty()) return;
  std::vector<InkPoint> line{corners.front()};
  std::size_t isGap = 0;
  double left = lengths[0];  // of the dash or gap that is walked
  for (const InkPoint& corner : corners) {
    while (Distance(line.back(), corner) > left) {
      line.push_back(Between(line.back(), corner, left / Distance(line.back(), corner)));
      if (isGap == 0) StrokePixels(line, radius, colour);
      line.erase(line.begin(), line.end() - 1);
      isGap = 1 - isGap;
      left = lengths[isGap];
    }
    left -= Distance(line.back(), corner);
    line.push_back(corner);
  }
  if (isGap == 0) StrokePixels(line, radius, colour);
}

void Ink::Area(std::span<const InkPoint> outline, Colour colour) {
  if (outline.empty()) return;
  const std::vector<InkPoint> corners = ToPixels(outline);
  const Box box = BoxAround(corners, 1);
  if (box.Empty()) return;
  Cover cover(box);
  for (std::size_t i = 0; i < corners.size(); ++i) {
    cover.AddEdge(corners[i], corners[i + 1 < corners.size() ? i + 1 : 0]);
  }
  cover.SumEdges();
  Mix(cover, colour);
}

// ---- Text ---------------------------------------------------------------------------------------

void Ink::Text(double x, double y, std::string_view text, double height, Colour colour) {
  Write({{x * scale_, y * scale_}, {1, 0}, {0, 1}}, text, height, colour);
}

void Ink::UprightText(double x, double y, std::string_view text, double height, Colour colour) {
  Write({{x * scale_, y * scale_}, {0, -1}, {1, 0}}, text, height, colour);
}

void Ink::Write(const Writing& writing, std::string_view text, double height, Colour colour) {
  const double part = height * scale_ / kCapitalParts;
  const double pen = std::max(kLetterPenParts * part, 1.0);
  // The middle of a pen of 1, 3, ... pixels is the middle of a pixel, of others the edge of one.
  const double middle = std::fmod(std::round(pen), 2) == 1 ? 0.5 : 0;
  const InkPoint origin{std::round(Limited(writing.origin.x) - middle) + middle,
                        std::round(Limited(writing.origin.y) - middle) + middle};
  double parts = 0;
  while (!text.empty()) {
    const StrokeLetter letter = TakeLetter(text);
    const double begin = std::round(parts * part);
    for (const std::vector<InkPoint>& line : letter.lines) {
      std::vector<InkPoint> corners = Hinted(line, part);
      for (InkPoint& corner : corners) {
        const InkPoint local{begin + corner.x, corner.y};
        corner = {origin.x + local.x * writing.along.x + local.y * writing.down.x,
                  origin.y + local.x * writing.along.y + local.y * writing.down.y};
      }
      StrokePixels(corners, pen / 2, colour);
    }
    parts += letter.width + kLetterGapParts;
  }
}

double Ink::TextWidth(std::string_view text, double height) {
  int parts = -kLetterGapParts;
  while (!text.empty()) parts += TakeLetterWidth(text) + kLetterGapParts;
  return std::max(parts, 0) * height / kCapitalParts;
}

}  // namespace ormel
