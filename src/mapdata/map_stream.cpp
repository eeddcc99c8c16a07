#include "mapdata/map_stream.h"

#include <algorithm>
#include <utility>

#include "base/file_writer.h"
#include "base/parallel_rows.h"
#include "text/numbers.h"

namespace ormel {
namespace {

constexpr int kRowsBetweenReports = 5;

// A band is as large as its text stays in the cache of a core.
constexpr std::size_t kCellsInBand = 16 * 1024;

// What belongs to a band while it is in work.
struct BandRoom {
  std::vector<double> cells;
  RowText text;
  std::string bytes;
};

class MapWriting {
 public:
  MapWriting(const MapToWrite& map, const RowSteps& steps, FileWriter& file)
      : map_(map), steps_(steps), file_(file) {}

  Outcome<> Run(ProgressSink& progress) {
    const auto rows = static_cast<int>(kCellsInBand / std::max<std::size_t>(map_.width, 1));
    const int rowsInBand = std::clamp(rows, 1, 64);
    rooms_.resize(static_cast<std::size_t>(OrderedPieces::SlotsFor(ThreadCount())));
    for (BandRoom& room : rooms_) {
      room.cells.resize(map_.width * static_cast<std::size_t>(rowsInBand));
      room.text = RowText(map_.form);
    }
    file_.Write(map_.header);
    return RunBands(
        map_.nrows, rowsInBand,
        {[this](const Band& band) { return Read(band); }, [this](const Band& band) { Make(band); },
         [this](const Band& band) { Use(band); }},
        progress);
  }

 private:
  BandRoom& RoomOf(const Band& band) { return rooms_[static_cast<std::size_t>(band.slot)]; }

  std::span<double> CellsOf(const Band& band, int row) {
    const std::size_t before = static_cast<std::size_t>(row - band.first) * map_.width;
    return std::span(RoomOf(band).cells).subspan(before, map_.width);
  }

  Outcome<> Read(const Band& band) {
    Outcome<> read = Done{};
    if (!steps_.read) return read;
    for (int row = band.first; row <= band.last && read.Ok(); ++row) {
      read = steps_.read(row, CellsOf(band, row));
    }
    return read;
  }

  void Make(const Band& band) {
    BandRoom& room = RoomOf(band);
    room.bytes.clear();
    for (int row = band.first; row <= band.last; ++row) {
      steps_.make(row, CellsOf(band, row), room.text);
      room.bytes += room.text.Finish();
    }
  }

  void Use(const Band& band) {
    file_.Write(RoomOf(band).bytes);
    if (!steps_.use) return;
    for (int row = band.first; row <= band.last; ++row) steps_.use(row, CellsOf(band, row));
  }

  const MapToWrite& map_;
  const RowSteps& steps_;
  FileWriter& file_;
  std::vector<BandRoom> rooms_;  // by slot
};

}  // namespace

Outcome<RowSource> RowSource::Open(RowsToRead rows) {
  Outcome<CellSource> cells = CellSource::Open(rows.path, rows.headerLines);
  if (!cells.Ok()) return cells.Stop();
  return RowSource(std::move(rows), std::move(cells.Value()));
}

double RowSource::NoData() const {
  if (HeaderLines().size() < kNoDataLine) return kNoNoData;
  return TextToNumber(HeaderValue(HeaderLines(), kNoDataLine));
}

std::size_t RowSource::ReadPart(std::span<double> cells) {
  ++row_;
  const std::size_t count = cells_.Read(cells);
  if (count < cells.size()) {
    fault_ = cells_.Error().empty() ? rows_.path + ": ends in row " + std::to_string(row_) +
                                          " of " + std::to_string(rows_.nrows)
                                    : cells_.Error();
  }
  return count;
}

Outcome<> RowSource::ReadRow(std::span<double> cells) {
  ReadPart(cells);
  if (fault_.empty()) return Done{};
  return Failure{FailureKind::kDamaged, fault_};
}

Outcome<> RowSource::SkipRows(int count) {
  std::vector<double> cells(static_cast<std::size_t>(rows_.ncols));
  Outcome<> read = Done{};
  while (count-- > 0 && read.Ok()) read = ReadRow(cells);
  return read;
}

Outcome<std::string> ReadRows(const RowsToRead& rows, ProgressSink& progress,
                              const UseRow& useRow) {
  Outcome<RowSource> opened = RowSource::Open(rows);
  if (!opened.Ok()) return opened.Text();
  RowSource& source = opened.Value();
  const double nodata = source.NoData();
  std::vector<double> cells(static_cast<std::size_t>(rows.ncols));
  for (int row = 1; row <= rows.nrows; ++row) {
    const std::size_t count = source.ReadPart(cells);
    useRow(row, std::span(cells).first(count), nodata);
    if (!source.Fault().empty()) return source.Fault();
    if (row % kRowsBetweenReports == 0 && !progress.Report(100.0 * row / rows.nrows)) {
      return Cancelled{};
    }
  }
  return std::string();
}

Outcome<> WriteMap(const MapToWrite& map, const RowSteps& steps, ProgressSink& progress) {
  Outcome<FileWriter> file = FileWriter::Open(map.path);
  if (!file.Ok()) return file.Stop();
  const Outcome<> written = MapWriting(map, steps, file.Value()).Run(progress);
  return written.Ok() ? file.Value().Commit() : written;
}

}  // namespace ormel
