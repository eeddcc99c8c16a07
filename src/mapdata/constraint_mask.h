// The mask of a model: which cells its constraint maps allow.
//
// Constraint maps are read by character position, as rows stand when this program has written them:
// a blank and one digit for each cell. Two files thus combine at the speed of reading, and existing
// models rely on what becomes of other files: a value of several characters (NODATA) shifts what
// follows in its row, and a row without its leading blank reads as 0. This is kept on purpose.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/grid.h"
#include "base/outcome.h"

namespace ormel {

struct ConstraintMaskBuild {
  Grid<std::uint8_t> mask;  // 1 allowed, 0 forbidden
  std::string failure;      // which file and row failed; the mask then allows everything
};

// A cell is allowed when every file has a digit from 1 to 9 at its place. Without files everything
// is allowed. Rows behind the end of the first file are forbidden. A file that is missing or ends
// before the first one, and cells outside `ncols` by `nrows`, make the build fail, which allows
// everything. Fails as an outcome only when the memory does not hold the mask.
[[nodiscard]] Outcome<ConstraintMaskBuild> BuildConstraintMask(
    const std::vector<std::string>& files, int ncols, int nrows);

}  // namespace ormel
