#include "mce/composite_output.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <vector>

#include "base/file_writer.h"
#include "mapdata/map_stream.h"
#include "mapdata/raster_writer.h"

namespace ormel {
namespace {

// "11/22/2026 at 9:05:00 PM"
std::string MomentText(const std::tm& when) {
  const int hour = when.tm_hour % 12 == 0 ? 12 : when.tm_hour % 12;
  std::array<char, 96> text{};
  std::snprintf(text.data(), text.size(), "%d/%d/%04d at %d:%02d:%02d %s", when.tm_mon + 1,
                when.tm_mday, when.tm_year + 1900, hour, when.tm_min, when.tm_sec,
                when.tm_hour < 12 ? "AM" : "PM");
  return text.data();
}

}  // namespace

Outcome<> ScaleComposite(const CompositeMap& map, ProgressSink& progress,
                         const ScaledRowWatcher& useRow) {
  const ScaleLimits limits = map.Limits();
  const int nrows = map.Frame().nrows;
  std::vector<double> values(static_cast<std::size_t>(map.Frame().ncols));
  for (int row = 1; row <= nrows; ++row) {
    map.ScaledRow(row, limits, values);
    useRow(row, values);
    if (row % 5 == 0 && !progress.Report(100.0 * row / nrows)) return Cancelled{};
  }
  return Done{};
}

Outcome<> WriteComposite(const CompositeMap& map, const CompositeModel& model,
                         const std::string& path, int decimalPlaces, ProgressSink& progress,
                         const ScaledRowWatcher& watcher) {
  const std::string infoPath = InfoFilePath(path);
  if (infoPath == path) {
    return Failure{FailureKind::kRefused,
                   path + ": the information file would overwrite the map; choose another name"};
  }
  const ScaleLimits limits = map.Limits();
  const MapFrame& frame = map.Frame();
  RowSteps steps;
  steps.make = [&](int row, std::span<double> values, RowText& text) {
    map.ScaledRow(row, limits, values);
    for (const double value : values) text.AddRounded(value, decimalPlaces);
  };
  steps.use = watcher;
  Outcome<> written = WriteMap({path, HeaderText(HeaderStyle::kWide14, frame.texts), frame.nrows,
                                static_cast<std::size_t>(frame.ncols), model.ItsRules().rows},
                               steps, progress);
  if (!written.Ok()) return written;
  return WriteFile(infoPath, InfoFileText(model, Now()));
}

std::string InfoFilePath(const std::string& path) {
  return path.substr(0, path.size() - std::min<std::size_t>(path.size(), 3)) + "inf";
}

std::string CreationText(const std::tm& when) {
  return "Created on " + MomentText(when) + "\r\n\r\n";
}

std::string ConstraintsText(const CompositeModel& model) {
  std::string text = model.constraints.empty() ? "No Constraints Used\r\n" : "Constraints:\r\n";
  for (const std::string& constraint : model.constraints) text += "    " + constraint + "\r\n";
  return text;
}

std::tm Now() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return local;
}

std::string InfoFileText(const CompositeModel& model, const std::tm& when) {
  return model.title + "\r\n" + CreationText(when) + model.FactorsText() + ConstraintsText(model);
}

}  // namespace ormel
