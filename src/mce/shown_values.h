// The values behind the pictures: what the read-out under the mouse shows, and what an export of
// the composite writes. They are kept in single precision, in a grid on the model's frame.
#pragma once

#include <span>
#include <string>

#include "base/grid.h"
#include "base/outcome.h"
#include "base/progress_sink.h"
#include "mapdata/map_stream.h"
#include "mce/composite_map.h"

namespace ormel {

// Keeps a row of scaled values, rounded to `decimalPlaces`.
void KeepRow(std::span<const double> values, int decimalPlaces, std::span<float> cells);

// Reads a map of the model into `cells`: its values rounded to `decimalPlaces`, NODATA as it
// stands, 0 where the mask forbids and where the file holds nothing. Returns NODATA (kNoNoData:
// none).
[[nodiscard]] Outcome<double> ReadShownValues(const RowsToRead& rows, const CompositeMap& map,
                                              int decimalPlaces, Grid<float>& cells,
                                              ProgressSink& progress);

// Writes the cells as they stand under the header of the composite: a second rounding could change
// them. An old file stays when the writing fails or is stopped.
[[nodiscard]] Outcome<> WriteShownValues(const Grid<float>& cells, const MapFrame& frame,
                                         const std::string& path, RowForm form,
                                         ProgressSink& progress);

}  // namespace ormel
