#include "viewer/image_conversion.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>

#include "mapdata/map_stream.h"
#include "mapdata/raster_writer.h"
#include "text/numbers.h"

namespace ormel {
namespace {

// Black stands in the table, but is never compared: a black pixel is the nearest of the others.
constexpr Colour kTopographicColours[] = {
    kBlack,
    Rgb(255, 255, 255),
    Rgb(0, 151, 164),
    Rgb(203, 0, 23),
    Rgb(131, 66, 37),
    Rgb(201, 234, 157),
    Rgb(137, 51, 128),
    Rgb(255, 234, 0),
    Rgb(167, 226, 226),
    Rgb(255, 184, 184),
    Rgb(218, 179, 214),
    Rgb(209, 209, 209),
    Rgb(207, 164, 142),
};

int Distance(Colour a, Colour b) {
  return std::abs(Red(a) - Red(b)) + std::abs(Green(a) - Green(b)) + std::abs(Blue(a) - Blue(b));
}

// The pixels as they are to be written: with other proportions, one row for each side of a cell.
int RowsOf(const ImageConversion& job, double cellsize) {
  if (job.unalteredProportions) return job.image.Height();
  constexpr double kMostRows = 100'000;
  const double rows = std::round((job.upperRight.y - job.lowerLeft.y) / cellsize);
  return static_cast<int>(std::clamp(rows, 1.0, kMostRows));
}

}  // namespace

int NearestColor(Colour colour) {
  int best = 1000;
  int nearest = 0;
  for (int i = 1; i < static_cast<int>(std::size(kTopographicColours)); ++i) {
    const int distance = Distance(colour, kTopographicColours[i]);
    if (distance >= best) continue;
    best = distance;
    nearest = i;
  }
  return nearest;
}

double PixelValue(std::string_view name, Colour colour) {
  if (name == kAerialPhotograph) return Blue(colour);
  return name == kTopographicMap ? NearestColor(colour) : colour;
}

Outcome<> ConvertImage(const ImageConversion& job, ProgressSink& progress) {
  if (job.image.Empty() || !(job.upperRight.x > job.lowerLeft.x) ||
      !(job.upperRight.y > job.lowerLeft.y)) {
    return Failure{FailureKind::kRefused, "The image covers no part of a map."};
  }
  const int columns = job.image.Width();
  const double cellsize = (job.upperRight.x - job.lowerLeft.x) / columns;
  const int rows = RowsOf(job, cellsize);
  const HeaderValues header{NumberText(static_cast<double>(columns)),
                            NumberText(static_cast<double>(rows)),
                            NumberText(job.lowerLeft.x),
                            NumberText(job.lowerLeft.y),
                            NumberText(cellsize),
                            {}};
  RowSteps steps;
  steps.make = [&](int row, std::span<double> /*none*/, RowText& text) {
    const auto y = static_cast<int>((row - 1LL) * job.image.Height() / rows);
    for (int x = 0; x < columns; ++x) text.Add(PixelValue(job.name, job.image.Pixel(x, y)));
  };
  return WriteMap({job.target, HeaderText(HeaderStyle::kWide14, header), rows}, steps, progress);
}

}  // namespace ormel
