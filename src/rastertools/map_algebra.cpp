#include "rastertools/map_algebra.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

#include "mapdata/map_stream.h"
#include "text/numbers.h"
#include "text/paths.h"

namespace ormel {
namespace {

constexpr char kNoDataLineAdded[] = "NODATA      -9999\r\n";
constexpr double kNoDataAdded = -9999;

// The rows of both maps, and what becomes of their cells.
class PairOfMaps {
 public:
  PairOfMaps(WholeMap first, RowSource second)
      : first_(std::move(first)), second_(std::move(second)) {
    header_ = CopiedHeader(first_.rows.HeaderLines());
    const bool hasNoData = first_.rows.HeaderLines().size() >= kNoDataLine;
    nodata_ = hasNoData ? firstNoData_ : kNoDataAdded;
    if (!hasNoData) header_ += kNoDataLineAdded;
  }

  const std::string& Header() const { return header_; }
  int Rows() const { return first_.frame.nrows; }
  std::size_t Columns() const { return static_cast<std::size_t>(first_.frame.ncols); }

  // The cells of the first map, then those of the second.
  Outcome<> ReadRow(std::span<double> cells) {
    const Outcome<> read = first_.rows.ReadRow(cells.first(Columns()));
    return read.Ok() ? second_.ReadRow(cells.subspan(Columns())) : read;
  }

  void MakeRow(MapOperator op, std::span<const double> cells, RowText& text) const {
    const std::span<const double> left = cells.first(Columns());
    const std::span<const double> right = cells.subspan(Columns());
    for (std::size_t i = 0; i < left.size(); ++i) {
      const bool isMissing = left[i] == firstNoData_ || right[i] == secondNoData_;
      const double value = isMissing ? nodata_ : Operate(op, left[i], right[i]);
      text.Add(std::isfinite(value) ? value : nodata_);
    }
  }

 private:
  WholeMap first_;
  RowSource second_;
  const double firstNoData_ = first_.rows.NoData();
  const double secondNoData_ = second_.NoData();
  double nodata_;  // of the output
  std::string header_;
};

}  // namespace

double Operate(MapOperator op, double left, double right) {
  switch (op) {
    case MapOperator::kAdd:
      return left + right;
    case MapOperator::kSubtract:
      return left - right;
    case MapOperator::kMultiply:
      return left * right;
    case MapOperator::kDivide:
      return left / right;
    case MapOperator::kPower:
      return std::pow(left, right);
  }
  return std::numeric_limits<double>::quiet_NaN();
}

Outcome<> OperateOnMaps(const MapPair& pair, MapOperator op, ProgressSink& progress) {
  Outcome<WholeMap> first = OpenWholeMap(pair.first);
  if (!first.Ok()) return first.Stop();
  const MapFrame& frame = first.Value().frame;
  Outcome<RowSource> second =
      RowSource::Open({pair.second, CountHeaderLines(pair.second), frame.ncols, frame.nrows});
  if (!second.Ok()) return second.Stop();
  PairOfMaps maps(std::move(first.Value()), std::move(second.Value()));
  RowSteps steps;
  steps.read = [&](int, std::span<double> cells) { return maps.ReadRow(cells); };
  steps.make = [&](int, std::span<double> cells, RowText& text) { maps.MakeRow(op, cells, text); };
  return WriteMap({pair.output, maps.Header(), maps.Rows(), 2 * maps.Columns()}, steps, progress);
}

std::vector<MapPair> PairsOf(std::span<const std::string> left, std::span<const std::string> right,
                             bool oneToMany, const AlgebraNames& names) {
  std::vector<MapPair> pairs;
  if (right.empty()) return pairs;
  const std::size_t count = oneToMany ? left.size() : std::min(left.size(), right.size());
  for (std::size_t i = 0; i < count; ++i) {
    MapPair pair{left[i], right[oneToMany ? 0 : i], ""};
    const std::string root = FileNamePart(names.afterSecond ? pair.second : pair.first);
    pair.output = JoinPath(names.folder, names.prefix + root + names.suffix + ".asc");
    pairs.push_back(std::move(pair));
  }
  return pairs;
}

}  // namespace ormel
