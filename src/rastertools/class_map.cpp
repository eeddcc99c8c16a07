#include "rastertools/class_map.h"

#include <algorithm>
#include <cstddef>
#include <span>

#include "mapdata/map_stream.h"

namespace ormel {
namespace {

constexpr int kRowsBetweenReports = 16;

// The values that were met, in that order.
class MetValues {
 public:
  explicit MetValues(double nodata) : nodata_(nodata) {}

  // Neighbours are often of one class.
  void Add(std::span<const double> cells) {
    double last = nodata_;
    for (const double cell : cells) {
      if (cell == last || cell == nodata_) continue;
      last = cell;
      if (lookup_.Add(cell) == static_cast<int>(values_.size())) values_.push_back(cell + 0.0);
    }
  }

  std::vector<double>& Values() { return values_; }

 private:
  const double nodata_;
  ValueLookup lookup_;
  std::vector<double> values_;
};

}  // namespace

Outcome<std::vector<double>> FindClasses(const std::string& path, ProgressSink& progress) {
  Outcome<WholeMap> map = OpenWholeMap(path);
  if (!map.Ok()) return map.Stop();
  auto& [frame, rows] = map.Value();
  MetValues met(rows.NoData());
  std::vector<double> cells(static_cast<std::size_t>(frame.ncols));
  for (int row = 1; row <= frame.nrows; ++row) {
    const Outcome<> read = rows.ReadRow(cells);
    if (!read.Ok()) return read.Stop();
    met.Add(cells);
    if (met.Values().size() > kMostClasses) {
      return Failure{FailureKind::kRefused, path + ": has more than " +
                                                std::to_string(kMostClasses) +
                                                " different values; it is no map of classes"};
    }
    if (row % kRowsBetweenReports == 0 && !progress.Report(100.0 * row / frame.nrows)) {
      return Cancelled{};
    }
  }
  std::sort(met.Values().begin(), met.Values().end());
  return std::move(met.Values());
}

Outcome<> WriteClassMap(const ClassMapJob& job, ProgressSink& progress) {
  Outcome<WholeMap> source = OpenWholeMap(job.source);
  if (!source.Ok()) return source.Stop();
  auto& [frame, rows] = source.Value();
  const ClassOutputs outputs(job.table);
  RowSteps steps;
  steps.read = [&rows = rows](int, std::span<double> cells) { return rows.ReadRow(cells); };
  steps.make = [&, nodata = rows.NoData()](int, std::span<double> cells, RowText& text) {
    for (const double cell : cells) {
      const std::string* output = cell == nodata ? nullptr : outputs.Of(cell);
      if (output == nullptr) {
        text.Add(cell);
      } else {
        text.AddText(*output);
      }
    }
  };
  return WriteMap({job.target, CopiedHeader(rows.HeaderLines()), frame.nrows,
                   static_cast<std::size_t>(frame.ncols), RowForm::kBlankBefore, job.working},
                  steps, progress);
}

}  // namespace ormel
