// Lengths and areas between points on a map, whose units are taken as metres.
#pragma once

#include <string>
#include <vector>

#include "viewer/map_picture.h"

namespace ormel {

struct Measures {
  double segment = 0;  // metres, between the last two points
  double total = 0;    // metres, along all points
  double area = 0;     // hectares, inside the points, closed from the last to the first
};

// Less than two points have no length, less than three no area. A line that crosses itself counts
// the parts it turns round the other way against the rest.
Measures MeasuresOf(const std::vector<MapPoint>& points);

enum class LengthUnits { kMetres, kFeet };

// Texts to show, rounded to four decimals: "12.5 m" or feet, "0.25 ha" or square feet.
std::string LengthText(double metres, LengthUnits units);
std::string AreaText(double hectares, LengthUnits units);

}  // namespace ormel
