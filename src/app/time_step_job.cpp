#include "app/time_step_job.h"

#include <filesystem>
#include <ostream>

#include "mapdata/palette.h"
#include "mce/timestep/step_output.h"
#include "text/paths.h"

namespace ormel {
namespace {

Outcome<> MakeFolder(const std::string& folder) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (!error) return Done{};
  return Failure{FailureKind::kDisk, folder + ": cannot be made: " + error.message()};
}

}  // namespace

bool IsTimeStepModel(const std::string& model) {
  return std::filesystem::path(model).extension() == ".tsi";
}

Outcome<> RunTimeStepJob(const TimeStepJob& job, const Settings& settings, ProgressSink& progress,
                         std::ostream& warnings) {
  const Outcome<TimeStepText> text = ReadTimeStepText(job.model);
  if (!text.Ok()) return text.Stop();
  Outcome<TimeStepModel> read = TimeStepModelOf(text.Value());
  if (!read.Ok()) return Failure{read.Why().kind, job.model + ": " + read.Text()};
  TimeStepModel& model = read.Value();
  model.output.folder = job.folder;
  StepRunSettings run;
  run.decimalPlaces = settings.decimalPlaces;
  run.temporaryFolder = TemporaryFolder(settings);
  if (model.output.bitmap) {
    const std::string palette = FindPalette(text.Value().output.palette, settings.programFolder);
    const Outcome<int> colours =
        ReadPalette(palette.empty() ? settings.defaultPalette : palette, run.palette);
    if (!colours.Ok()) return colours.Stop();
  }
  Outcome<> made = MakeFolder(job.folder);
  if (!made.Ok()) return made;
  Outcome<StepGenerator> generator = StepGenerator::Begin(model, {run.temporaryFolder});
  if (!generator.Ok()) return generator.Stop();
  if (!generator.Value().MaskFailure().empty()) {
    warnings << "Bad Constraint! " << generator.Value().MaskFailure() << '\n';
  }
  WrittenSteps files;
  return GenerateSteps(model, generator.Value(), run, files, progress, {});
}

}  // namespace ormel
