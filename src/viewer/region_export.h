// Writes the part of a map that a view shows as a map of its own. The cells come from the map's
// file, not from the picture.
#pragma once

#include <string>

#include "base/outcome.h"
#include "base/progress_sink.h"
#include "viewer/map_picture.h"
#include "viewer/view_region.h"

namespace ormel {

struct RegionExport {
  std::string source;  // path of the map
  std::string target;  // may be the same file
  ViewSpecs specs;     // of the source
  ViewRegion view;
};

// The whole columns and rows of a view: those behind the first `startCol` and `startRow`.
struct RegionCells {
  double newCols = 0;
  double newRows = 0;
  double startCol = 0;
  double startRow = 0;
};
RegionCells CellsOf(const ViewSpecs& specs, const ViewRegion& view);

// The keys of the header are the source's own, and so are its lines from the fifth on; cells are
// written as NumberText(), each behind one blank. An old file at the target is replaced only by the
// finished one. Refuses a view of less than one cell, a source whose header has changed since, and
// one that ends early.
[[nodiscard]] Outcome<> ExportRegion(const RegionExport& job, ProgressSink& progress);

}  // namespace ormel
