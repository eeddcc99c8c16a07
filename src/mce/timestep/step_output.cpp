#include "mce/timestep/step_output.h"

#include <filesystem>

#include "base/file_writer.h"
#include "mapdata/map_preview.h"
#include "mapdata/map_stream.h"
#include "mce/composite_output.h"
#include "mce/composite_picture.h"
#include "mce/timestep/step_weights.h"
#include "movies/bitmap.h"
#include "text/arithmetic.h"
#include "text/paths.h"

namespace ormel {
namespace {

namespace fs = std::filesystem;

// Maps that are not exported stay until the next run.
void ClearTemporaryFolder(const std::string& folder) {
  std::error_code ignored;
  fs::create_directories(folder, ignored);
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, ignored)) {
    if (entry.path().extension() == ".asc") fs::remove(entry.path(), ignored);
  }
}

class StepWriter {
 public:
  StepWriter(const TimeStepModel& model, StepGenerator& generator, const StepRunSettings& settings,
             WrittenSteps& files)
      : model_(model), generator_(generator), settings_(settings), files_(files) {
    if (!model.output.raster) ClearTemporaryFolder(settings.temporaryFolder);
  }

  Outcome<> Write(int step, ProgressSink& progress) {
    generator_.KeepScale(step);
    Outcome<> written = WriteRaster(step, progress);
    if (!written.Ok() || !model_.output.bitmap) return written;
    return WritePicture(step);
  }

 private:
  Outcome<> WriteRaster(int step, ProgressSink& progress) {
    const StepOutput& output = model_.output;
    const std::string path =
        StepPath(output, output.raster ? output.folder : settings_.temporaryFolder, step,
                 model_.Steps(), ".asc");
    const MapFrame& frame = generator_.Frame();
    RowSteps rows;
    rows.make = [&](int row, std::span<double> values, RowText& text) {
      generator_.ScaledRow(step, row, values);
      for (const double value : values) text.AddRounded(value, settings_.decimalPlaces);
    };
    Outcome<> written = WriteMap({path, HeaderText(HeaderStyle::kWide14, frame.texts), frame.nrows,
                                  static_cast<std::size_t>(frame.ncols)},
                                 rows, progress);
    if (written.Ok()) files_.rasters.push_back(path);
    return written;
  }

  Outcome<> WritePicture(int step) {
    const StepOutput& output = model_.output;
    const std::string path = StepPath(output, output.folder, step, model_.Steps(), ".bmp");
    Outcome<> written = WriteBitmap(DrawStep(model_, generator_, settings_, step), path);
    if (written.Ok()) files_.bitmaps.push_back(path);
    return written;
  }

  const TimeStepModel& model_;
  StepGenerator& generator_;
  const StepRunSettings& settings_;
  WrittenSteps& files_;
};

using StepWork = std::function<Outcome<>(int step, ProgressSink& progress)>;

Outcome<> ForEachStep(int steps, ProgressSink& progress, const StepWork& work) {
  for (int step = 1; step <= steps; ++step) {
    ProgressSpan span(progress, 100.0 * (step - 1) / steps, 100.0 * step / steps);
    Outcome<> done = work(step, span);
    if (!done.Ok()) return done;
    if (!progress.Report(100.0 * step / steps)) return Cancelled{};
  }
  return Done{};
}

}  // namespace

void WrittenSteps::Delete() {
  std::error_code ignored;
  for (const auto* list : {&rasters, &bitmaps}) {
    for (const std::string& file : *list) fs::remove(file, ignored);
  }
  *this = {};
}

Outcome<> GenerateSteps(const TimeStepModel& model, StepGenerator& generator,
                        const StepRunSettings& settings, WrittenSteps& files,
                        ProgressSink& progress, const std::function<void(int step)>& written) {
  StepWriter writer(model, generator, settings, files);
  const StepWork compute = [&](int step, ProgressSink& span) {
    return generator.computeStep(step, span);
  };
  const StepWork write = [&](int step, ProgressSink& span) {
    Outcome<> done = writer.Write(step, span);
    if (done.Ok() && written) written(step);
    return done;
  };
  const StepWork both = [&](int step, ProgressSink& span) {
    ProgressSpan computing(span, 0, 50);
    ProgressSpan writing(span, 50, 100);
    Outcome<> done = compute(step, computing);
    if (done.Ok()) done = write(step, writing);
    generator.EmptyLimits();
    return done;
  };
  Outcome<> run = Done{};
  if (model.output.group) {
    ProgressSpan computing(progress, 0, 50);
    run = ForEachStep(model.Steps(), computing, compute);
    ProgressSpan writing(progress, 50, 100);
    if (run.Ok()) run = ForEachStep(model.Steps(), writing, write);
  } else {
    run = ForEachStep(model.Steps(), progress, both);
  }
  if (!run.Ok() || !model.output.info) return run;
  return WriteFile(StepInfoPath(model.output), StepInfoText(model, Now()));
}

Canvas DrawStep(const TimeStepModel& model, const StepGenerator& generator,
                const StepRunSettings& settings, int step) {
  const MapPreview preview(generator.Frame().ncols, generator.Frame().nrows);
  Canvas picture = preview.Blank();
  DrawScaledMap(picture, preview, generator.Mask(),
                {settings.palette, model.output.constraintColour}, settings.decimalPlaces,
                [&](int row, std::span<double> values) { generator.ScaledRow(step, row, values); });
  return picture;
}

std::string StepPath(const StepOutput& output, const std::string& folder, int step, int steps,
                     const std::string& extension) {
  return JoinPath(folder, output.prefix + NumberInSeries(step, steps) + extension);
}

std::string StepInfoPath(const StepOutput& output) {
  return JoinPath(output.folder, output.prefix + "Information.inf");
}

std::string StepInfoText(const TimeStepModel& model, const std::tm& when) {
  constexpr std::size_t kGap = 7;
  const CompositeModel& maps = model.Maps();
  const std::size_t column = LongestName(maps) + kGap;
  std::string text = CreationText(when);
  for (int i = 1; i <= maps.FactorCount(); ++i) {
    const FactorSteps& steps = model.Factor(i);
    text += "Factor: " + Padded(maps.Factor(i).name, column) + model.kind->FactorText(i) + "\r\n";
    text += describeBehaviour(steps.behaviour) + describeStepGraph(steps.graph) + "\r\n\r\n\r\n";
  }
  text += ConstraintsText(maps) + "\r\n\r\nFrame Numbers and Associated Dates:\r\n";
  for (int step = 1; step <= model.Steps(); ++step) {
    text += "\t" + std::to_string(step) + ": " + model.dates[static_cast<std::size_t>(step - 1)];
    text += "\r\n";
  }
  return text;
}

}  // namespace ormel
