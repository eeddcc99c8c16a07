// Movies of scaled maps: up to four series of maps, drawn side by side into one picture for each
// step.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "base/canvas.h"
#include "base/outcome.h"
#include "mapdata/palette.h"

namespace ormel {

inline constexpr int kMovieCells = 4;  // of the picture: two columns, two rows

// A series of maps, and where in the picture it is shown.
struct MovieSeries {
  std::vector<std::string> maps;  // of all steps
  Palette palette;
  int cell = 0;  // from 0: in column cell mod 2 and row cell / 2
};

struct MapMovie {
  std::vector<MovieSeries> series;  // at least one
  int gap = 0;                      // between the maps, in pixels
  Colour background = kWhite;
  Colour noData = kBlack;  // of cells without a colour: NODATA, and values outside 0 to 255
};

// The picture of a step (from 1): a pixel for each cell. Rows and columns of the picture that no
// series is in take no room. Fails when a map cannot be read, ends early, or has another size than
// that of the first series.
[[nodiscard]] Outcome<Canvas> DrawMovieStep(const MapMovie& movie, int step);

}  // namespace ormel
