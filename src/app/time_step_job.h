// A saved time-step model to its maps, without windows.
#pragma once

#include <iosfwd>
#include <string>

#include "base/outcome.h"
#include "base/progress_sink.h"
#include "mapdata/settings.h"

namespace ormel {

struct TimeStepJob {
  std::string model;   // time-step information file (.tsi), filled in to its last page
  std::string folder;  // of the maps, in place of the model's own; it is made when it is missing
};

// By the extension of its file.
bool IsTimeStepModel(const std::string& model);

// Runs the model as its viewer does, with the file's own output options. What does not stop the run
// (constraints that cannot be used) is told on `warnings`, one line each. When it fails or is
// stopped, the maps of the steps before stay.
[[nodiscard]] Outcome<> RunTimeStepJob(const TimeStepJob& job, const Settings& settings,
                                       ProgressSink& progress, std::ostream& warnings);

}  // namespace ormel
