// The main job without windows: a saved model to its suitability map.
#pragma once

#include <iosfwd>
#include <string>

#include "base/outcome.h"
#include "base/progress_sink.h"
#include "mapdata/settings.h"

namespace ormel {

struct MainJob {
  std::string model;    // model information file, linear (.mif) or not (.cmf)
  std::string output;   // suitability map; its information file goes beside it
  std::string picture;  // a bitmap, or a PNG file by its name; empty: none
};

// Runs the model as the viewer does, with the palette and the decimal places of `settings`. What
// does not stop the run (constraints that cannot be used, a factor that ends early) is told on
// `warnings`, one line each.
[[nodiscard]] Outcome<> RunMainJob(const MainJob& job, const Settings& settings,
                                   ProgressSink& progress, std::ostream& warnings);

}  // namespace ormel
