#include "viewer/view_painter.h"

#include <algorithm>
#include <cmath>

namespace ormel {
namespace {

constexpr int kWidth = 600;
constexpr int kHeight = 450;
constexpr int kShortestSide = 16;

constexpr Colour kLineColour = Rgb(190, 20, 20);
constexpr int kPixelsPerPen = 1200;  // large pictures have thicker lines

int Pen(const Canvas& canvas) { return 1 + canvas.Width() / kPixelsPerPen; }

// A line that is seen on every ground: light edges around a dark core.
void DrawLine(Canvas& canvas, MapFraction from, MapFraction to) {
  canvas.Line(from.x, from.y, to.x, to.y, kWhite, Pen(canvas) + 2);
  canvas.Line(from.x, from.y, to.x, to.y, kLineColour, Pen(canvas));
}

void DrawBand(Canvas& canvas, const RubberBand& band) {
  const MapFraction corners[] = {
      band.from, {band.to.x, band.from.y}, band.to, {band.from.x, band.to.y}, band.from};
  for (int i = 0; i < 4; ++i) DrawLine(canvas, corners[i], corners[i + 1]);
}

// A square around a place, as large in every zoom.
void DrawSpot(Canvas& canvas, const ViewRegion& view, MapFraction place, Colour colour) {
  const double x = (place.x - view.x1) / view.ZW * canvas.Width();
  const double y = (place.y - view.y1) / view.ZH * canvas.Height();
  const int reach = 2 + 2 * Pen(canvas);
  if (!(std::abs(x) < 2.0 * canvas.Width() && std::abs(y) < 2.0 * canvas.Height())) return;
  const auto left = static_cast<int>(std::floor(x)) - reach / 2;
  const auto top = static_cast<int>(std::floor(y)) - reach / 2;
  canvas.FillPixels(left - 2, top - 2, left + reach + 3, top + reach + 3, kWhite);
  canvas.FillPixels(left - 1, top - 1, left + reach + 2, top + reach + 2, kBlack);
  canvas.FillPixels(left, top, left + reach + 1, top + reach + 1, colour);
}

int Side(double pixels) { return std::max(static_cast<int>(std::lround(pixels)), kShortestSide); }

}  // namespace

void PaintView(Canvas& canvas, const MapPicture& picture, const ViewSpecs& specs,
               const std::vector<MapPoint>& measured, const std::optional<RubberBand>& band) {
  const ViewRegion& view = picture.view;
  const Canvas& image = picture.image;
  canvas.StretchRegion(image, view.x1 * image.Width(), view.y1 * image.Height(),
                       view.ZW * image.Width(), view.ZH * image.Height());
  canvas.SetScale(view.x1, view.y1, view.x1 + view.ZW, view.y1 + view.ZH);
  for (std::size_t i = 1; i < measured.size(); ++i) {
    DrawLine(canvas, FractionAt(specs, measured[i - 1]), FractionAt(specs, measured[i]));
  }
  for (const MapPoint& point : measured) {
    DrawSpot(canvas, view, FractionAt(specs, point), kLineColour);
  }
  for (const Mark& mark : picture.marks) {
    DrawSpot(canvas, view, FractionAt(specs, mark.place), mark.colour);
  }
  if (band) DrawBand(canvas, *band);
}

PictureSize PictureSizeOf(const ViewSpecs& specs) {
  double scale = std::min(kWidth / specs.ncols, kHeight / specs.nrows);
  if (scale > 1) scale = std::floor(scale);
  return {Side(specs.ncols * scale), Side(specs.nrows * scale)};
}

}  // namespace ormel
