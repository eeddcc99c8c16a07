// Writes a factor of a non-linear model as a map of its own: its values as they are, or their
// weights.
#pragma once

#include <string>

#include "base/outcome.h"
#include "base/progress_sink.h"
#include "mapdata/map_stream.h"
#include "mapdata/raster_writer.h"
#include "mce/nonlinear/weight_graph.h"

namespace ormel {

struct FactorExport {
  RowsToRead source;
  HeaderValues header;                 // NODATA is taken from the source
  const WeightGraph* graph = nullptr;  // null: the values as they are
  int decimalPlaces = 2;               // of weights
  std::string target;
};

// NODATA stays what it is; values outside 0 to 255 weigh what 0 weighs. The map has a NODATA line
// when its source has one. An old file at the target is replaced only by the finished one, so that
// the target may be the source. Fails when the source ends early.
[[nodiscard]] Outcome<> ExportFactor(const FactorExport& job, ProgressSink& progress);

}  // namespace ormel
