#include "mce/timestep/step_generator.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "base/parallel_rows.h"
#include "mapdata/constraint_mask.h"
#include "mapdata/map_header.h"
#include "mapdata/map_stream.h"
#include "text/arithmetic.h"
#include "text/numbers.h"

namespace ormel {
namespace {

// Rows of all sources that are in work at once stay in the cache of a core.
constexpr std::size_t kCellsInBand = 64 * 1024;
constexpr int kMostRowsInBand = 64;

// The map at `path` as rows of the frame. Only its size has to agree: where a step's map lies,
// nothing depends on.
Outcome<RowSource> OpenOnFrame(const std::string& path, const MapFrame& frame) {
  const Outcome<HeaderTexts> header = ReadHeaderTexts(path, 2);
  if (!header.Ok()) return header.Stop();
  const std::vector<std::string>& size = header.Value().values;
  if (TextToNumber(size[0]) != frame.ncols || TextToNumber(size[1]) != frame.nrows) {
    return Failure{FailureKind::kRefused, path + ": has " + size[0] + " columns and " + size[1] +
                                              " rows, and the first factor has " +
                                              std::to_string(frame.ncols) + " and " +
                                              std::to_string(frame.nrows)};
  }
  return RowSource::Open({path, CountHeaderLines(path), frame.ncols, frame.nrows});
}

}  // namespace

// One step.
class StepGenerator::Pass {
 public:
  Pass(StepGenerator& owner, int step) : owner_(owner), step_(step) {}

  Outcome<> Run(ProgressSink& progress) {
    Outcome<> opened = OpenSources();
    if (!opened.Ok()) return opened;
    const auto width = static_cast<std::size_t>(owner_.frame_.ncols);
    const int rowsInBand = std::clamp(
        static_cast<int>(kCellsInBand / (width * (streams_.size() + 1))), 1, kMostRowsInBand);
    rooms_.resize(static_cast<std::size_t>(OrderedPieces::SlotsFor(ThreadCount())));
    for (Room& room : rooms_) {
      room.cells.resize(width * static_cast<std::size_t>(rowsInBand) * streams_.size());
      room.sums.resize(width);
    }
    Outcome<> run = RunBands(owner_.frame_.nrows, rowsInBand,
                             {[this](const Band& band) { return Read(band); },
                              [this](const Band& band) { Compute(band); },
                              [this](const Band& band) { sums_.Add(RoomOf(band).extremes); }},
                             progress);
    if (!run.Ok()) return run;
    for (Stream& stream : streams_) {
      if (stream.keep) owner_.kept_[stream.index] = std::move(stream.kept);
    }
    owner_.sums_.Add(sums_);
    return run;
  }

 private:
  // A factor whose map is read in this step.
  struct Stream {
    std::size_t index;  // of the factor, from 0
    RowSource rows;
    double nodata;
    bool keep;
    Grid<double> kept{};  // its prepared cells, when they are to be kept
  };

  // What belongs to a band while it is in work.
  struct Room {
    std::vector<double> cells;  // of all streams, row after row
    std::vector<double> sums;   // of a row
    Extremes extremes;
  };

  Room& RoomOf(const Band& band) { return rooms_[static_cast<std::size_t>(band.slot)]; }

  std::span<double> CellsOf(const Band& band, std::size_t stream, int row) {
    const auto width = static_cast<std::size_t>(owner_.frame_.ncols);
    const auto place = static_cast<std::size_t>(row - band.first) * streams_.size() + stream;
    return std::span(RoomOf(band).cells).subspan(place * width, width);
  }

  Outcome<> OpenSources() {
    const MapFrame& frame = owner_.frame_;
    for (std::size_t i = 0; i < owner_.kept_.size(); ++i) {
      if (!owner_.kept_[i].Empty()) continue;
      Outcome<RowSource> rows =
          OpenOnFrame(owner_.model_->PathAt(static_cast<int>(i) + 1, step_), frame);
      if (!rows.Ok()) return rows.Stop();
      const double nodata = rows.Value().NoData();
      streams_.push_back({i, std::move(rows.Value()), nodata, owner_.isKept_[i]});
      if (!owner_.isKept_[i]) continue;
      Outcome<Grid<double>> kept = MakeGrid<double>(frame.ncols, frame.nrows);
      streams_.back().keep = kept.Ok();
      if (kept.Ok()) streams_.back().kept = std::move(kept.Value());
    }
    return Done{};
  }

  Outcome<> Read(const Band& band) {
    for (int row = band.first; row <= band.last; ++row) {
      for (std::size_t i = 0; i < streams_.size(); ++i) {
        Outcome<> read = streams_[i].rows.ReadRow(CellsOf(band, i, row));
        if (!read.Ok()) return read;
      }
    }
    return Done{};
  }

  // The factors join the sums in their order.
  void Compute(const Band& band) {
    Room& room = RoomOf(band);
    room.extremes = {};
    for (int row = band.first; row <= band.last; ++row) {
      std::fill(room.sums.begin(), room.sums.end(), 0.0);
      std::size_t stream = 0;
      for (std::size_t i = 0; i < owner_.kept_.size(); ++i) {
        const int factor = static_cast<int>(i) + 1;
        const bool streamed = stream < streams_.size() && streams_[stream].index == i;
        const std::span<const double> cells =
            streamed ? Prepared(band, stream++, row) : owner_.kept_[i].Row(row);
        owner_.model_->kind->Add(factor, owner_.model_->NumbersOf(factor, step_), cells, room.sums);
      }
      StoreRow(row, room);
    }
  }

  std::span<const double> Prepared(const Band& band, std::size_t index, int row) {
    Stream& stream = streams_[index];
    const std::span<double> cells = CellsOf(band, index, row);
    owner_.model_->kind->Prepare(static_cast<int>(stream.index) + 1, stream.nodata, cells);
    if (stream.keep) std::copy(cells.begin(), cells.end(), stream.kept.Row(row).begin());
    return cells;
  }

  void StoreRow(int row, Room& room) {
    const std::span<const std::uint8_t> mask = owner_.mask_.Row(row);
    const std::span<float> frame = owner_.frames_.Row(step_, row);
    LaneExtremes extremes;
    ForEachInLanes(frame.size(), [&, mask, frame](std::size_t i, std::size_t lane) {
      const double sum = room.sums[i];
      frame[i] = mask[i] != 0 ? Single(sum) : 0.0F;
      extremes.Add(lane, sum, mask[i] != 0);
    });
    room.extremes.Add(extremes.All());
  }

  StepGenerator& owner_;
  const int step_;
  std::vector<Stream> streams_;  // in the order of the factors
  std::vector<Room> rooms_;      // by slot
  Extremes sums_;
};

Outcome<StepGenerator> StepGenerator::Begin(const TimeStepModel& model, const StepMemory& memory) {
  Outcome<MapFrame> frame = ReadMapFrame(model.Maps().Factor(1).Path());
  if (!frame.Ok()) return frame.Stop();
  StepGenerator generator(model, std::move(frame.Value()));
  const MapFrame& size = generator.frame_;
  Outcome<ConstraintMaskBuild> build =
      BuildConstraintMask(model.Maps().constraints, size.ncols, size.nrows);
  if (!build.Ok()) return build.Stop();
  generator.mask_ = std::move(build.Value().mask);
  generator.maskFailure_ = std::move(build.Value().failure);
  Outcome<FrameStore> frames =
      FrameStore::Make(size.ncols, size.nrows, model.Steps(), memory.frames, memory.folder);
  if (!frames.Ok()) return frames.Stop();
  generator.frames_ = std::move(frames.Value());
  generator.ChooseMapsToKeep(memory.maps);
  return generator;
}

void StepGenerator::ChooseMapsToKeep(std::uint64_t memory) {
  const std::uint64_t bytes = static_cast<std::uint64_t>(frame_.ncols) *
                              static_cast<std::uint64_t>(frame_.nrows) * sizeof(double);
  for (std::size_t i = 0; i < isKept_.size(); ++i) {
    const bool changes = model_->factors[i].behaviour.method == StepMethod::kExistingFiles;
    isKept_[i] = !changes && bytes <= memory;
    if (isKept_[i]) memory -= bytes;
  }
}

Outcome<> StepGenerator::computeStep(int step, ProgressSink& progress) {
  const int factors = static_cast<int>(model_->factors.size());
  for (int factor = 1; factor <= factors; ++factor) {
    weights_.Add(model_->kind->EffectiveWeight(factor, model_->NumbersOf(factor, step)));
  }
  return Pass(*this, step).Run(progress);
}

}  // namespace ormel
