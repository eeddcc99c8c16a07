// Scales a map from its own range, or from that of a set of maps, to the range 0 to 255 that models
// expect of their factors.
#pragma once

#include <string>

#include "base/outcome.h"
#include "base/progress_sink.h"

namespace ormel {

// The values that become 0 and 255.
struct ScalingRange {
  double min = 0;
  double max = 1;
};

// The range of all values of the map but NODATA; 0 to 1 when it has none. Fails when the file
// cannot be read.
[[nodiscard]] Outcome<ScalingRange> RangeToScale(const std::string& path, ProgressSink& progress);

// From the lowest minimum to the highest maximum.
ScalingRange Joined(const ScalingRange& one, const ScalingRange& other);

struct ScalingJob {
  std::string source;
  std::string target;  // may be the source
  ScalingRange range;
  int decimalPlaces = 2;  // of the scaled values
  std::string working;    // the path of the working file
};

// Writes Round(255 * (v - min) / (max - min)) for every value but NODATA, behind the header as it
// stands. Fails when source or target cannot be used, when the source does not hold all its cells,
// and for a range of a single value. The old target stays then.
[[nodiscard]] Outcome<> ScaleMap(const ScalingJob& job, ProgressSink& progress);

}  // namespace ormel
