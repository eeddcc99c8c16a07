#include "mce/linear/composite_output.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <vector>

#include "base/file_writer.h"
#include "mapdata/raster_writer.h"

namespace ormel {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

// Letters of a UTF-8 text, so that columns line up for names in any language.
std::size_t LetterCount(const std::string& text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char letter) {
    return (static_cast<unsigned char>(letter) & 0xC0) != 0x80;
  }));
}

std::string Blanks(std::size_t count) { return std::string(count, ' '); }

// "11/22/2026 at 9:05:00 PM"
std::string MomentText(const std::tm& when) {
  const int hour = when.tm_hour % 12 == 0 ? 12 : when.tm_hour % 12;
  std::array<char, 96> text{};
  std::snprintf(text.data(), text.size(), "%d/%d/%04d at %d:%02d:%02d %s", when.tm_mon + 1,
                when.tm_mday, when.tm_year + 1900, hour, when.tm_min, when.tm_sec,
                when.tm_hour < 12 ? "AM" : "PM");
  return text.data();
}

void AddFactorLines(const std::vector<LinearFactor>& factors, std::vector<std::string>& lines) {
  if (factors.empty()) {
    lines.emplace_back("No Factors Used");
    return;
  }
  std::size_t longest = 0;
  for (const LinearFactor& factor : factors) {
    longest = std::max(longest, LetterCount(factor.name));
  }
  lines.push_back("Factor:" + Blanks(longest + 1) + "Weight:");
  for (const LinearFactor& factor : factors) {
    lines.push_back(Blanks(5) + factor.name + Blanks(6 + longest - LetterCount(factor.name)) +
                    std::to_string(factor.weight) +
                    (factor.highValuesGood ? "  (High Values Good)" : "  (Low Values Good)"));
  }
}

std::tm Now() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return local;
}

}  // namespace

Outcome<> ScaleComposite(const CompositeMap& map, ProgressSink& progress,
                         const std::function<void(int, std::span<double>)>& useRow) {
  const CompositeMap::Limits limits = map.ScaleLimits();
  const int nrows = map.Frame().nrows;
  std::vector<double> values(static_cast<std::size_t>(map.Frame().ncols));
  for (int row = 1; row <= nrows; ++row) {
    map.ScaledRow(row, limits, values);
    useRow(row, values);
    if (row % 5 == 0 && !progress.Report(100.0 * row / nrows)) return Cancelled{};
  }
  return Done{};
}

Outcome<> WriteComposite(const CompositeMap& map, const LinearModel& model, const std::string& path,
                         int decimalPlaces, ProgressSink& progress,
                         const std::function<void(int, std::span<double>)>& watcher) {
  const std::string infoPath = InfoFilePath(path);
  if (infoPath == path) {
    return Failure{FailureKind::kRefused,
                   path + ": the information file would overwrite the map; choose another name"};
  }
  Outcome<FileWriter> opened = FileWriter::Open(path);
  if (!opened.Ok()) return opened.Stop();
  FileWriter& writer = opened.Value();
  writer.Write(HeaderText(HeaderStyle::kWide14, map.Frame().texts));
  RowText text;
  const Outcome<> scaled = ScaleComposite(map, progress, [&](int row, std::span<double> values) {
    for (const double value : values) text.AddRounded(value, decimalPlaces);
    writer.Write(text.Finish());
    if (watcher) watcher(row, values);
  });
  if (!scaled.Ok()) return scaled.Stop();
  Outcome<> written = writer.Commit();
  if (!written.Ok()) return written;
  return WriteFile(infoPath, InfoFileText(model, Now()));
}

std::string InfoFilePath(const std::string& path) {
  return path.substr(0, path.size() - std::min<std::size_t>(path.size(), 3)) + "inf";
}

std::string InfoFileText(const LinearModel& model, const std::tm& when) {
  std::vector<std::string> lines{model.title, "Created on " + MomentText(when), ""};
  AddFactorLines(model.factors, lines);
  lines.emplace_back();
  lines.emplace_back(model.constraints.empty() ? "No Constraints Used" : "Constraints:");
  for (const std::string& constraint : model.constraints) lines.push_back(Blanks(4) + constraint);
  std::string text;
  for (const std::string& line : lines) text.append(line).append(kLineEnd);
  return text;
}

}  // namespace ormel
