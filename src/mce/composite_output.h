// What a model leaves on disk: the composite as an ASCII raster, and the information file
// beside it.
#pragma once

#include <ctime>
#include <functional>
#include <span>
#include <string>

#include "base/outcome.h"
#include "base/progress_sink.h"
#include "mce/composite_map.h"
#include "mce/composite_model.h"

namespace ormel {

// Sees the scaled rows from the north, each with its number (from 1). The values are not rounded:
// the text writers round, and so does everything that keeps or draws a value, by
// HalfEvenRound(value, decimalPlaces).
using ScaledRowWatcher = std::function<void(int row, std::span<const double> values)>;

// Scales all rows.
[[nodiscard]] Outcome<> ScaleComposite(const CompositeMap& map, ProgressSink& progress,
                                       const ScaledRowWatcher& useRow);

// Writes the composite to `path` with cells rounded to `decimalPlaces` (five header lines, rows
// in the form of the model's rules, 0 where the mask forbids), and then its information file, dated
// now. `watcher` sees the rows as ScaleComposite() hands them out, and may be empty. Old files stay
// when the writing fails or is stopped. Refuses a name that ends in "inf": the information file
// would overwrite the map.
[[nodiscard]] Outcome<> WriteComposite(const CompositeMap& map, const CompositeModel& model,
                                       const std::string& path, int decimalPlaces,
                                       ProgressSink& progress, const ScaledRowWatcher& watcher);

// The information file that belongs to the map at `path`: its last three characters become "inf".
std::string InfoFilePath(const std::string& path);

// Pieces of information files: when the maps were made (local time), with an empty line behind it,
// and which constraints they keep.
std::string CreationText(const std::tm& when);
std::string ConstraintsText(const CompositeModel& model);

// The local time.
std::tm Now();

// The text of the information file of a model that was run at `when` (local time).
std::string InfoFileText(const CompositeModel& model, const std::tm& when);

}  // namespace ormel
