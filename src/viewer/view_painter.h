// Paints what a picture of the viewer shows: the visible part of its map with sharp cells, and what
// tools have put on it.
#pragma once

#include <optional>
#include <vector>

#include "base/canvas.h"
#include "viewer/map_picture.h"

namespace ormel {

// A box that is being drawn, between two places of the map.
struct RubberBand {
  MapFraction from;
  MapFraction to;
};

// Fills a canvas of whatever size, in the map's proportions or not. The `measured` points are
// joined by a line.
void PaintView(Canvas& canvas, const MapPicture& picture, const ViewSpecs& specs,
               const std::vector<MapPoint>& measured, const std::optional<RubberBand>& band);

// The size of a picture in its own pixels: the map's proportions in 600 by 450, with whole blocks
// of pixels for the cells of a small map. No side is so short that it could not be pointed at.
struct PictureSize {
  int width = 0;
  int height = 0;
};
PictureSize PictureSizeOf(const ViewSpecs& specs);

}  // namespace ormel
