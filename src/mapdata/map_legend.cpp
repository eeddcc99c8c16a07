#include "mapdata/map_legend.h"

#include <algorithm>

#include "charts/ink.h"

namespace ormel {
namespace {

constexpr Colour kTextColour = Rgb(40, 46, 56);
constexpr Colour kEdgeColour = Rgb(150, 158, 170);

// Pixels of a picture that is as wide as kWidth; larger ones have larger letters.
constexpr int kWidth = 600;
constexpr double kMargin = 16;
constexpr double kTitleHeight = 13;
constexpr double kLetterHeight = 10;
constexpr double kScaleHeight = 16;
constexpr double kGap = 10;
constexpr char kWithout[] = "no data or forbidden";

// Lays the parts out from the top in units, of which the picture has `unit` pixels each.
struct Places {
  double unit;
  double mapTop;
  double scaleTop;
  double withoutTop;
  double height;
};

Places PlacesOf(const Canvas& map, const MapLegend& legend) {
  Places places{};
  places.unit = std::max(1.0, static_cast<double>(map.Width()) / kWidth);
  places.mapTop = legend.title.empty() ? kMargin : kMargin + kTitleHeight + kGap;
  places.scaleTop = places.mapTop + map.Height() / places.unit + kGap;
  places.withoutTop = places.scaleTop + kScaleHeight + kGap;
  places.height =
      legend.scale ? places.withoutTop + kScaleHeight + kMargin : places.scaleTop - kGap + kMargin;
  return places;
}

// A text beside a box of the height of the scale, on its middle line.
void WriteBeside(Ink& ink, double x, double top, const std::string& text) {
  ink.Text(x, top + (kScaleHeight + kLetterHeight) / 2, text, kLetterHeight, kTextColour);
}

void DrawScale(Canvas& picture, Ink& ink, const Places& places, const MapLegend::Scale& scale) {
  const double lowWidth = Ink::TextWidth(scale.low, kLetterHeight);
  const double highWidth = Ink::TextWidth(scale.high, kLetterHeight);
  const double left = kMargin + lowWidth + kGap;
  const double right = std::max(ink.Width() - kMargin - highWidth - kGap, left + kGap);
  const auto pixel = [&](double place) { return static_cast<int>(place * places.unit); };
  Canvas strip(pixel(right) - pixel(left), pixel(kScaleHeight));
  DrawColourScale(strip, scale.palette);
  picture.Paste(strip, pixel(left), pixel(places.scaleTop));
  WriteBeside(ink, kMargin, places.scaleTop, scale.low);
  WriteBeside(ink, right + kGap, places.scaleTop, scale.high);
  const double box = 2 * kScaleHeight;
  ink.Block(left, places.withoutTop, left + box, places.withoutTop + kScaleHeight, kEdgeColour);
  ink.Block(left + 1, places.withoutTop + 1, left + box - 1, places.withoutTop + kScaleHeight - 1,
            scale.without);
  WriteBeside(ink, left + box + kGap, places.withoutTop, kWithout);
}

Canvas Enlarged(const Canvas& map) {
  constexpr int kSmallest = 400;
  const int factor = std::max((kSmallest + map.Width() - 1) / std::max(map.Width(), 1), 1);
  Canvas larger(map.Width() * factor, map.Height() * factor);
  larger.Stretch(map);
  return larger;
}

}  // namespace

Canvas WithLegend(const Canvas& map, const MapLegend& legend) {
  if (map.Empty()) return {};
  const Canvas shown = Enlarged(map);
  const Places places = PlacesOf(shown, legend);
  const auto margin = static_cast<int>(kMargin * places.unit);
  Canvas picture(shown.Width() + 2 * margin, static_cast<int>(places.height * places.unit));
  picture.Paste(shown, margin, static_cast<int>(places.mapTop * places.unit));
  Ink ink(picture, places.unit);
  ink.Text(kMargin, kMargin + kTitleHeight, legend.title, kTitleHeight, kTextColour);
  if (legend.scale) DrawScale(picture, ink, places, *legend.scale);
  return picture;
}

}  // namespace ormel
