// What a time-step model leaves on disk: a map for every step, its picture, and an information
// file.
#pragma once

#include <ctime>
#include <functional>
#include <string>
#include <vector>

#include "base/canvas.h"
#include "base/outcome.h"
#include "base/progress_sink.h"
#include "mapdata/palette.h"
#include "mce/timestep/step_generator.h"
#include "mce/timestep/time_step_model.h"

namespace ormel {

struct StepRunSettings {
  Palette palette;
  int decimalPlaces = 2;
  std::string temporaryFolder;  // for the maps that are not exported
};

// What a run has written so far, in the order of the steps.
struct WrittenSteps {
  std::vector<std::string> rasters;  // exported or temporary
  std::vector<std::string> bitmaps;

  void Delete();  // those that exist
};

// Computes and writes all steps: each on its own scale one after the other, all on one scale by
// computing them before the first is written. Then the information file. `written` is told of every
// step whose scale is known, and may be empty. `files` grows while it runs, so that the caller can
// do away with them when the run fails. A map that is not exported goes to the temporary folder
// under the name it would have had, in place of those of the run before.
[[nodiscard]] Outcome<> GenerateSteps(const TimeStepModel& model, StepGenerator& generator,
                                      const StepRunSettings& settings, WrittenSteps& files,
                                      ProgressSink& progress,
                                      const std::function<void(int step)>& written);

// The picture of a step whose scale has been kept.
Canvas DrawStep(const TimeStepModel& model, const StepGenerator& generator,
                const StepRunSettings& settings, int step);

// The paths of the files that the output options ask for.
std::string StepPath(const StepOutput& output, const std::string& folder, int step, int steps,
                     const std::string& extension);
std::string StepInfoPath(const StepOutput& output);

// The text of the information file of a model that was run at `when` (local time).
std::string StepInfoText(const TimeStepModel& model, const std::tm& when);

}  // namespace ormel
