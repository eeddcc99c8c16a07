// Turns a picture that has no cells, a web image for instance, into a raster map.
#pragma once

#include <string>
#include <string_view>

#include "base/canvas.h"
#include "base/outcome.h"
#include "base/progress_sink.h"
#include "viewer/map_picture.h"

namespace ormel {

inline constexpr char kAerialPhotograph[] = "Aerial Photograph";
inline constexpr char kTopographicMap[] = "Topographic Map";

// The number (1 to 12) of the colour of topographic maps that is nearest to `colour`, by the sum of
// the differences of red, green and blue. The first of equals wins.
int NearestColor(Colour colour);

// What a pixel of the image of that name is worth as a cell: the blue of an aerial photograph, the
// number of the nearest colour of a topographic map, the colour itself of any other image.
double PixelValue(std::string_view name, Colour colour);

struct ImageConversion {
  const Canvas& image;
  std::string name;
  MapPoint lowerLeft;  // the corners of the image in map units
  MapPoint upperRight;
  // True: a cell for each pixel. False: as many rows as make the cells square on the map.
  bool unalteredProportions = true;
  std::string target;
};

// The cell size is that of the columns. An old file is replaced only by the finished one. Refuses
// an empty image, and corners that do not lie to the right and above each other.
[[nodiscard]] Outcome<> ConvertImage(const ImageConversion& job, ProgressSink& progress);

}  // namespace ormel
