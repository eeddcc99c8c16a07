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
  std::vector<RowText> texts;      // of each map
  std::vector<std::string> bytes;  // of each map
};

// What is common to one map and to several.
struct RowsToMake {
  int nrows = 0;
  std::size_t width = 0;
  RowForm form = RowForm::kBlankBefore;
  std::function<Outcome<>(int row, std::span<double> cells)> read{};
  std::function<void(int row, std::span<double> cells, std::span<RowText> texts)> make{};
  std::function<void(int row, std::span<const double> cells)> use{};
};

class MapWriting {
 public:
  MapWriting(const RowsToMake& rows, std::vector<FileWriter>& files) : rows_(rows), files_(files) {}

  Outcome<> Run(ProgressSink& progress) {
    const std::size_t texts = std::max<std::size_t>(rows_.width * files_.size(), 1);
    const int rowsInBand = std::clamp(static_cast<int>(kCellsInBand / texts), 1, 64);
    rooms_.resize(static_cast<std::size_t>(OrderedPieces::SlotsFor(ThreadCount())));
    for (BandRoom& room : rooms_) {
      room.cells.resize(rows_.width * static_cast<std::size_t>(rowsInBand));
      room.texts.assign(files_.size(), RowText(rows_.form));
      room.bytes.resize(files_.size());
    }
    return RunBands(
        rows_.nrows, rowsInBand,
        {[this](const Band& band) { return Read(band); }, [this](const Band& band) { Make(band); },
         [this](const Band& band) { Use(band); }},
        progress);
  }

 private:
  BandRoom& RoomOf(const Band& band) { return rooms_[static_cast<std::size_t>(band.slot)]; }

  std::span<double> CellsOf(const Band& band, int row) {
    const std::size_t before = static_cast<std::size_t>(row - band.first) * rows_.width;
    return std::span(RoomOf(band).cells).subspan(before, rows_.width);
  }

  Outcome<> Read(const Band& band) {
    Outcome<> read = Done{};
    if (!rows_.read) return read;
    for (int row = band.first; row <= band.last && read.Ok(); ++row) {
      read = rows_.read(row, CellsOf(band, row));
    }
    return read;
  }

  void Make(const Band& band) {
    BandRoom& room = RoomOf(band);
    for (std::string& bytes : room.bytes) bytes.clear();
    for (int row = band.first; row <= band.last; ++row) {
      rows_.make(row, CellsOf(band, row), room.texts);
      for (std::size_t i = 0; i < files_.size(); ++i) room.bytes[i] += room.texts[i].Finish();
    }
  }

  void Use(const Band& band) {
    for (std::size_t i = 0; i < files_.size(); ++i) files_[i].Write(RoomOf(band).bytes[i]);
    if (!rows_.use) return;
    for (int row = band.first; row <= band.last; ++row) rows_.use(row, CellsOf(band, row));
  }

  const RowsToMake& rows_;
  std::vector<FileWriter>& files_;
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

Outcome<WholeMap> OpenWholeMap(const std::string& path) {
  Outcome<MapFrame> frame = ReadMapFrame(path);
  if (!frame.Ok()) return frame.Stop();
  const MapFrame& sides = frame.Value();
  Outcome<RowSource> rows =
      RowSource::Open({path, CountHeaderLines(path), sides.ncols, sides.nrows});
  if (!rows.Ok()) return rows.Stop();
  return WholeMap{std::move(frame.Value()), std::move(rows.Value())};
}

std::string CopiedHeader(const std::vector<std::string>& lines) {
  std::string header;
  for (const std::string& line : lines) header += line + "\r\n";
  return header;
}

Outcome<> WriteMap(const MapToWrite& map, const RowSteps& steps, ProgressSink& progress) {
  Outcome<FileWriter> file = map.working.empty() ? FileWriter::Open(map.path)
                                                 : FileWriter::OpenThrough(map.path, map.working);
  if (!file.Ok()) return file.Stop();
  std::vector<FileWriter> files;
  files.push_back(std::move(file.Value()));
  files.front().Write(map.header);
  const RowsToMake rows{map.nrows,
                        map.width,
                        map.form,
                        steps.read,
                        [&](int row, std::span<double> cells, std::span<RowText> texts) {
                          steps.make(row, cells, texts.front());
                        },
                        steps.use};
  const Outcome<> written = MapWriting(rows, files).Run(progress);
  return written.Ok() ? files.front().Commit() : written;
}

Outcome<> WriteMaps(const SeveralMaps& maps, const SeveralRowSteps& steps, ProgressSink& progress) {
  std::vector<FileWriter> files;
  for (const MapOfSeveral& map : maps.maps) {
    Outcome<FileWriter> file = FileWriter::Open(map.path);
    if (!file.Ok()) return file.Stop();
    files.push_back(std::move(file.Value()));
    files.back().Write(map.header);
  }
  const RowsToMake rows{maps.nrows, maps.width, RowForm::kBlankBefore, steps.read, steps.make, {}};
  Outcome<> written = MapWriting(rows, files).Run(progress);
  for (std::size_t i = 0; i < files.size() && written.Ok(); ++i) written = files[i].Commit();
  return written;
}

}  // namespace ormel
