#include "viewer/view_region.h"

#include <algorithm>
#include <cmath>

namespace ormel {
namespace {

// Beyond it the place of a view can no longer be told from its neighbour's.
constexpr double kSmallestSide = 1e-9;
// Zooming in and out again leaves a rounding error, which must not cost an exported map its last
// column.
constexpr double kNearlyWhole = 1 - 1e-12;

constexpr double kPanStep = 0.1;
constexpr double kPanGrowth = 1.5;

double Bounded(double start, double size) {
  if (size == 1) return 0;
  return start + size > 1 ? 1 - size : std::max(start, 0.0);
}

// How far one key press goes along a side of that size.
double PanDistance(double size, double cells) {
  double step = kPanStep;
  while (cells > 0 && step * size < 1 / cells) step *= kPanGrowth;
  return step * size;
}

double Side(double size) {
  return size > 0 && size < kNearlyWhole ? std::max(size, kSmallestSide) : 1;
}

double Number(double value) { return std::isnan(value) ? 0 : value; }

}  // namespace

ViewRegion ZoomBy(ViewRegion view, double factor) { return ZoomAt(view, factor, {0.5, 0.5}); }

ViewRegion ZoomAt(ViewRegion view, double factor, MapFraction placeInView) {
  if (factor * view.ZW > 1) factor = 1 / view.ZW;
  if (factor < 1 && std::min(view.ZW, view.ZH) * factor < kSmallestSide) return view;
  view.x1 = std::max(view.x1 + view.ZW * (1 - factor) * placeInView.x, 0.0);
  view.y1 = std::max(view.y1 + view.ZH * (1 - factor) * placeInView.y, 0.0);
  view.ZW *= factor;
  view.ZH *= factor;
  return InsideMap(view);
}

ViewRegion PanBy(ViewRegion view, PanDirection direction, double ncols, double nrows) {
  switch (direction) {
    case PanDirection::kLeft:
      return MovedBy(view, -PanDistance(view.ZW, ncols), 0);
    case PanDirection::kRight:
      return MovedBy(view, PanDistance(view.ZW, ncols), 0);
    case PanDirection::kUp:
      return MovedBy(view, 0, -PanDistance(view.ZH, nrows));
    case PanDirection::kDown:
      return MovedBy(view, 0, PanDistance(view.ZH, nrows));
  }
  return view;
}

ViewRegion MovedBy(ViewRegion view, double dx, double dy) {
  view.x1 += dx;
  view.y1 += dy;
  return InsideMap(view);
}

ViewRegion CentredOn(ViewRegion view, MapFraction place) {
  view.x1 = place.x - view.ZW / 2;
  view.y1 = place.y - view.ZH / 2;
  return InsideMap(view);
}

ViewRegion ZoomedToBox(ViewRegion view, MapFraction a, MapFraction b) {
  const double width = std::abs(a.x - b.x);
  const double height = std::abs(a.y - b.y);
  if (!(width > 0 && height > 0)) return view;
  view.ZW = view.ZH = Side(std::max(width, height));
  return CentredOn(view, {(a.x + b.x) / 2, (a.y + b.y) / 2});
}

ViewRegion InsideMap(ViewRegion view) {
  view.ZW = Side(view.ZW);
  view.ZH = Side(view.ZH);
  view.x1 = Bounded(Number(view.x1), view.ZW);
  view.y1 = Bounded(Number(view.y1), view.ZH);
  return view;
}

MapFraction PlaceOnMap(const ViewRegion& view, MapFraction placeInView) {
  return {view.x1 + placeInView.x * view.ZW, view.y1 + placeInView.y * view.ZH};
}

}  // namespace ormel
