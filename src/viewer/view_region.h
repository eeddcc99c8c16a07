// Which part of a map a picture shows, and how zooming and panning move it. Everything is a
// fraction of the map: (0, 0) is its upper left corner, (1, 1) its lower right one. The part never
// leaves the map, and cells stay square as long as both sides are the same fraction.
#pragma once

namespace ormel {

struct ViewRegion {
  double x1 = 0;  // left
  double y1 = 0;  // top
  double ZW = 1;  // width
  double ZH = 1;  // height

  bool operator==(const ViewRegion&) const = default;
};

// A place on a map, as a fraction of it.
struct MapFraction {
  double x = 0;
  double y = 0;
};

enum class PanDirection { kLeft, kRight, kUp, kDown };

inline constexpr double kZoomInFactor = 0.8;
inline constexpr double kZoomOutFactor = 1.25;

// The view with `factor` times the width and height (below 1: nearer), around its middle. A view
// that would be wider than the map becomes the whole map; zooming in ends where a
// thousand-millionth of the map fills the view.
ViewRegion ZoomBy(ViewRegion view, double factor);
// The same around another place, a fraction of the view: what lies there stays there, unless the
// edge of the map is in the way.
ViewRegion ZoomAt(ViewRegion view, double factor, MapFraction placeInView);

// One key press: a tenth of the view, more where that is less than a cell of the `ncols` by `nrows`
// cells.
ViewRegion PanBy(ViewRegion view, PanDirection direction, double ncols, double nrows);
// The view moved by so much of the map, as far as the map reaches.
ViewRegion MovedBy(ViewRegion view, double dx, double dy);

// The view of the same size with that place in the middle, as far as the map reaches.
ViewRegion CentredOn(ViewRegion view, MapFraction place);

// The view of a box drawn between two corners, in any order. The shorter side is widened to the
// same fraction of the map as the longer one, around the middle of the box, so that cells keep
// their shape. A box without width or height leaves `view` as it is.
ViewRegion ZoomedToBox(ViewRegion view, MapFraction a, MapFraction b);

// `view` as far as it can be shown: sides from a thousand-millionth to 1, inside the map. What is
// not a number becomes the whole map's.
ViewRegion InsideMap(ViewRegion view);

// The place on the map of a place in the view, both fractions.
MapFraction PlaceOnMap(const ViewRegion& view, MapFraction placeInView);

}  // namespace ormel
