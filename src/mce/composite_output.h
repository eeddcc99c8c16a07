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

// Scales all rows, from the north, and hands each to `useRow` with its number (from 1). The values
// are not rounded. The text writers round, and so does everything that keeps or draws a value:
// HalfEvenRound(value, decimalPlaces).
[[nodiscard]] Outcome<> ScaleComposite(const CompositeMap& map, ProgressSink& progress,
                                       const std::function<void(int, std::span<double>)>& useRow);

// Writes the composite to `path` with cells rounded to `decimalPlaces` (five header lines, rows
// in the form of the model's rules, 0 where the mask forbids), and then its information file, dated
// now. `watcher` sees the rows as ScaleComposite() hands them out, and may be empty. Old files stay
// when the writing fails or is stopped. Refuses a name that ends in "inf": the information file
// would overwrite the map.
[[nodiscard]] Outcome<> WriteComposite(const CompositeMap& map, const CompositeModel& model,
                                       const std::string& path, int decimalPlaces,
                                       ProgressSink& progress,
                                       const std::function<void(int, std::span<double>)>& watcher);

// The information file that belongs to the map at `path`: its last three characters become "inf".
std::string InfoFilePath(const std::string& path);

// The text of the information file of a model that was run at `when` (local time).
std::string InfoFileText(const CompositeModel& model, const std::tm& when);

}  // namespace ormel
