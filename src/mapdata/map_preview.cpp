#include "mapdata/map_preview.h"

#include <algorithm>

namespace ormel {
namespace {

// Pictures fit into this many pixels.
constexpr int kLargestWidth = 840;
constexpr int kLargestHeight = 640;

// Pixels for `cells` cells when each has a block of `block` pixels, or one pixel stands for `step`
// cells. In the second case one pixel more than needed keeps the sampling, Int(cells / pixels) + 1,
// at `step`.
int PictureSide(int cells, int block, int step) {
  return block > 1 ? cells * block : cells / step + 1;
}

}  // namespace

MapPreview::MapPreview(int ncols, int nrows) : ncols_(ncols), nrows_(nrows) {
  const int block = std::min(kLargestWidth / ncols, kLargestHeight / nrows);
  const int step = std::max((ncols - 1) / kLargestWidth, (nrows - 1) / kLargestHeight) + 1;
  width_ = PictureSide(ncols, block, step);
  height_ = PictureSide(nrows, block, step);
  columnStep_ = ncols / width_ + 1;
  rowStep_ = nrows / height_ + 1;
}

Canvas MapPreview::Blank() const {
  Canvas picture(width_, height_);
  picture.SetScale(0, 0, ncols_, nrows_);
  return picture;
}

}  // namespace ormel
