#include "viewer/measure.h"

#include <cmath>

#include "text/numbers.h"

namespace ormel {
namespace {

constexpr double kSquareMetresPerHectare = 10000;
constexpr double kFeetPerMetre = 3.280839895;
constexpr int kPlaces = 4;

std::string Text(double value, const char* unit) {
  return NumberText(HalfEvenRound(value, kPlaces)) + unit;
}

}  // namespace

Measures MeasuresOf(const std::vector<MapPoint>& points) {
  Measures measures;
  double twiceArea = 0;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const MapPoint& here = points[i];
    const MapPoint& next = points[(i + 1) % points.size()];
    twiceArea += here.x * next.y - next.x * here.y;
    if (i + 1 == points.size()) break;
    measures.segment = std::hypot(next.x - here.x, next.y - here.y);
    measures.total += measures.segment;
  }
  measures.area = std::abs(twiceArea) / 2 / kSquareMetresPerHectare;
  return measures;
}

std::string LengthText(double metres, LengthUnits units) {
  return units == LengthUnits::kMetres ? Text(metres, " m") : Text(metres * kFeetPerMetre, " ft");
}

std::string AreaText(double hectares, LengthUnits units) {
  if (units == LengthUnits::kMetres) return Text(hectares, " ha");
  return Text(hectares * kSquareMetresPerHectare * (kFeetPerMetre * kFeetPerMetre), " ft^2");
}

}  // namespace ormel
