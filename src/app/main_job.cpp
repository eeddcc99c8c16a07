#include "app/main_job.h"

#include <filesystem>
#include <memory>
#include <ostream>
#include <utility>

#include "mapdata/palette.h"
#include "mce/composite_map.h"
#include "mce/composite_output.h"
#include "mce/composite_picture.h"
#include "mce/linear/model_information.h"
#include "mce/nonlinear/nonlinear_model.h"
#include "mce/runnable_model.h"
#include "movies/picture_file.h"

namespace ormel {
namespace {

constexpr ModelKind kKinds[] = {KindOf<LinearModelOf>(".mif"), KindOf<NonlinearModelOf>(".cmf")};

Outcome<> AccumulateAll(CompositeMap& map, const CompositeModel& model, ProgressSink& progress,
                        std::ostream& warnings) {
  const int count = model.FactorCount();
  for (int i = 1; i <= count; ++i) {
    ProgressSpan span(progress, 100.0 * (i - 1) / count, 100.0 * i / count);
    const Outcome<std::string> read = map.AccumulateFactor(model, i, {}, span);
    if (!read.Ok()) return read.Stop();
    if (!read.Value().empty()) warnings << read.Value() << '\n';
  }
  return Done{};
}

Outcome<> WriteMapPicture(const CompositeMap& map, const std::string& path, const Palette& palette,
                          const Settings& settings) {
  const MapPreview preview(map.Frame().ncols, map.Frame().nrows);
  Canvas picture = preview.Blank();
  DrawComposite(picture, preview, map, {palette, settings.constraintColor}, settings.decimalPlaces);
  return WritePicture(picture, path);
}

}  // namespace

Outcome<> RunMainJob(const MainJob& job, const Settings& settings, ProgressSink& progress,
                     std::ostream& warnings) {
  Palette palette;
  if (!job.picture.empty()) {
    const Outcome<int> colours = ReadPalette(settings.defaultPalette, palette);
    if (!colours.Ok()) return colours.Stop();
  }
  const Outcome<std::unique_ptr<CompositeModel>> read = ReadRunnable(job.model, kKinds);
  if (!read.Ok()) return read.Stop();
  const CompositeModel& model = *read.Value();
  Outcome<CompositeMap> begun = CompositeMap::Begin(model);
  if (!begun.Ok()) return begun.Stop();
  CompositeMap& map = begun.Value();
  if (!map.MaskFailure().empty()) warnings << "Bad Constraint! " << map.MaskFailure() << '\n';

  // Reading takes most of the time, and more the more factors there are.
  const double reading = 100.0 - 100.0 / (model.FactorCount() + 1);
  ProgressSpan readingSpan(progress, 0, reading);
  Outcome<> accumulated = AccumulateAll(map, model, readingSpan, warnings);
  if (!accumulated.Ok()) return accumulated;
  ProgressSpan writingSpan(progress, reading, 100);
  Outcome<> written =
      WriteComposite(map, model, job.output, settings.decimalPlaces, writingSpan, {});
  if (!written.Ok() || job.picture.empty()) return written;
  return WriteMapPicture(map, job.picture, palette, settings);
}

}  // namespace ormel
