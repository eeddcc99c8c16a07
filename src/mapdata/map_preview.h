// The picture of a map: which cells are drawn, and which pixels each of them fills. Of a large map
// only every ColumnStep()th column and every RowStep()th row is drawn, so that drawing costs the
// same for maps of all sizes.
#pragma once

#include "base/canvas.h"

namespace ormel {

class MapPreview {
 public:
  // A picture of `ncols` by `nrows` square cells (at least 1 each) in the map's own proportions: a
  // small map has whole blocks of pixels for its cells, of a large one some cells are drawn.
  MapPreview(int ncols, int nrows);

  int Width() const { return width_; }
  int Height() const { return height_; }
  int ColumnStep() const { return columnStep_; }
  int RowStep() const { return rowStep_; }

  // An empty picture, on which one unit is one cell.
  Canvas Blank() const;

  bool DrawsRow(int row) const { return (row - 1) % rowStep_ == 0; }

  // Draws the cells of one row, from its first up to `columns` of them. `colourOf` takes a column
  // (from 1) and returns a Colour; it is asked for the drawn columns only.
  template <class ColourOf>
  void DrawRow(Canvas& picture, int row, int columns, ColourOf colourOf) const {
    if (!DrawsRow(row)) return;
    for (int column = 1; column <= columns; column += columnStep_) {
      DrawCell(picture, column, row, colourOf(column));
    }
  }

  // A place on the picture, in its pixels, as a distance in cells from the map's upper left corner.
  double CellX(double pixelX) const { return pixelX * ncols_ / width_; }
  double CellY(double pixelY) const { return pixelY * nrows_ / height_; }

 private:
  // Fills the pixels of the cell, and of the cells up to the next one that is drawn.
  void DrawCell(Canvas& picture, int column, int row, Colour colour) const {
    picture.FillBlock(column - 1, row - 1, column - 1 + columnStep_, row - 1 + rowStep_, colour);
  }

  int ncols_;
  int nrows_;
  int width_;
  int height_;
  int columnStep_;
  int rowStep_;
};

}  // namespace ormel
