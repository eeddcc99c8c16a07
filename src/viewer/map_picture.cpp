#include "viewer/map_picture.h"

#include <algorithm>
#include <array>
#include <limits>
#include <span>
#include <utility>

#include "base/parallel_rows.h"
#include "mapdata/cell_source.h"
#include "mapdata/map_header.h"
#include "text/numbers.h"

namespace ormel {
namespace {

constexpr int kSpecsLines = 5;
constexpr int kRowsBetweenReports = 10;
constexpr std::size_t kCellsBehindMap = 4096;  // read at once

// The header of a map, and how many lines it has.
struct MapHeader {
  ViewSpecs specs;
  std::optional<double> nodata;
  int lines = 0;
};

Outcome<MapHeader> ReadMapHeader(const std::string& path) {
  MapHeader header;
  header.lines = CountHeaderLines(path);
  const Outcome<HeaderTexts> texts = ReadHeaderTexts(path, kNoDataLine);
  if (!texts.Ok()) return texts.Stop();
  const std::array<double*, kSpecsLines> places = {&header.specs.ncols, &header.specs.nrows,
                                                   &header.specs.xllcorner, &header.specs.yllcorner,
                                                   &header.specs.cellsize};
  for (int line = 1; line <= std::min(header.lines, kNoDataLine); ++line) {
    const auto index = static_cast<std::size_t>(line - 1);
    const double value = TextToNumber(texts.Value().values[index]);
    if (line == kNoDataLine) {
      header.nodata = value;
    } else {
      *places[index] = line <= 2 ? HalfEvenRound(value) : value;
    }
  }
  return header;
}

// Why a map of this header cannot be held; empty: it can.
std::string FaultOf(const std::string& path, const ViewSpecs& specs) {
  constexpr double kMostCells = std::numeric_limits<int>::max();
  if (!(specs.ncols >= 1 && specs.nrows >= 1)) return "its header gives it no cells";
  if (specs.ncols > kMostCells || specs.nrows > kMostCells ||
      ClaimsTooMuch(path, static_cast<int>(specs.ncols), static_cast<int>(specs.nrows))) {
    return "it is too short for its number of columns and rows";
  }
  return {};
}

// Room for the cells; whatever is in the way becomes the fault.
void MakeRoom(const std::string& path, const std::optional<ViewSpecs>& wanted, MapValues& map) {
  map.fault = wanted && *wanted != map.specs
                  ? "its columns, rows, corner or cell size are not those of the maps on show"
                  : FaultOf(path, map.specs);
  if (!map.fault.empty()) return;
  Outcome<Grid<double>> cells =
      MakeGrid<double>(static_cast<int>(map.specs.ncols), static_cast<int>(map.specs.nrows));
  if (!cells.Ok()) {
    map.fault = cells.Text();
  } else {
    map.cells = std::move(cells.Value());
  }
}

// Fills the grid row by row.
Outcome<> ReadCells(CellSource& source, MapValues& map, ValueRange& range, ProgressSink& progress) {
  const int rows = map.cells.Rows();
  for (int row = 1; row <= rows; ++row) {
    const std::span<double> cells = map.cells.Row(row);
    const std::size_t count = source.Read(cells);
    range.Add(cells.first(count));
    if (count < cells.size()) {
      map.fault = "it ends in row " + std::to_string(row) + " of " + std::to_string(rows);
      return Done{};
    }
    if (row % kRowsBetweenReports == 0 && !progress.Report(100.0 * row / rows)) return Cancelled{};
  }
  return Done{};
}

// What stands behind the last cell belongs to the range, too: so maps are judged everywhere.
Outcome<> ReadRest(CellSource& source, ValueRange& range, ProgressSink& progress) {
  std::array<double, kCellsBehindMap> values;
  for (;;) {
    const std::size_t count = source.Read(values);
    range.Add(std::span<const double>(values).first(count));
    if (count < values.size()) return Done{};
    if (!progress.Report(source.Percent())) return Cancelled{};
  }
}

// The colours of a map's values.
class CellColours {
 public:
  CellColours(const MapPicture& picture, Colour without)
      : picture_(picture),
        without_(without),
        scaled_({false, picture.specs.Min, picture.specs.Max}),
        nodata_(picture.specs.NODATA.value_or(kNoNoData)) {}

  void Row(std::span<const double> cells, std::span<Colour> colours) const {
    const Palette& palette = picture_.palette;
    if (picture_.viewing == Viewing::kScaledVersion) {
      for (std::size_t i = 0; i < cells.size(); ++i) {
        colours[i] = cells[i] == nodata_ ? without_ : palette[scaled_.Number(cells[i])];
      }
      return;
    }
    for (std::size_t i = 0; i < cells.size(); ++i) {
      const bool has = HasColourNumber(cells[i]) && cells[i] != nodata_;
      colours[i] = has ? palette[ColourNumber(cells[i])] : without_;
    }
  }

 private:
  const MapPicture& picture_;
  Colour without_;
  UnscaledColours scaled_;
  double nodata_;  // not a number: no value equals it
};

// Hears how far the work is, and cannot stop it.
class Unstoppable final : public ProgressSink {
 public:
  explicit Unstoppable(ProgressSink& told) : told_(told) {}
  bool Report(double percent) override {
    (void)told_.Report(percent);
    return true;
  }

 private:
  ProgressSink& told_;
};

}  // namespace

MapPoint PointAt(const ViewSpecs& specs, MapFraction place) {
  return {specs.xllcorner + specs.cellsize * specs.ncols * place.x,
          specs.yllcorner + specs.cellsize * specs.nrows * (1 - place.y)};
}

MapFraction FractionAt(const ViewSpecs& specs, MapPoint point) {
  const double width = specs.cellsize * specs.ncols;
  const double height = specs.cellsize * specs.nrows;
  if (width == 0 || height == 0) return {};
  return {(point.x - specs.xllcorner) / width, 1 - (point.y - specs.yllcorner) / height};
}

Outcome<ViewSpecs> ReadViewSpecs(const std::string& path) {
  const Outcome<MapHeader> header = ReadMapHeader(path);
  if (!header.Ok()) return header.Stop();
  return header.Value().specs;
}

Outcome<MapValues> ReadMapValues(const std::string& path, const std::optional<ViewSpecs>& wanted,
                                 ProgressSink& progress) {
  const Outcome<MapHeader> header = ReadMapHeader(path);
  if (!header.Ok()) return header.Stop();
  Outcome<CellSource> opened = CellSource::Open(path, header.Value().lines);
  if (!opened.Ok()) return opened.Stop();
  CellSource& source = opened.Value();

  MapValues map;
  map.specs = header.Value().specs;
  map.nodata = header.Value().nodata;
  MakeRoom(path, wanted, map);
  ValueRange range(map.nodata.value_or(kNoNoData));
  Outcome<> read = ReadCells(source, map, range, progress);
  if (read.Ok()) read = ReadRest(source, range, progress);
  if (!read.Ok()) return read.Stop();
  if (!source.Error().empty()) return Failure{FailureKind::kDisk, source.Error()};
  if (!map.fault.empty()) map.cells = {};
  map.range = range.Range();
  return map;
}

void DrawPicture(MapPicture& picture, Colour constraintColor, ProgressSink& progress) {
  const int columns = picture.cells.Columns();
  const int rows = picture.cells.Rows();
  if (picture.image.Width() != columns || picture.image.Height() != rows) {
    picture.image = Canvas(columns, rows);
  }
  const CellColours colourOf(picture, constraintColor);
  std::vector<std::vector<Colour>> colours(
      static_cast<std::size_t>(OrderedPieces::SlotsFor(ThreadCount())),
      std::vector<Colour>(static_cast<std::size_t>(columns)));
  const auto draw = [&](const Band& band) {
    std::vector<Colour>& line = colours[static_cast<std::size_t>(band.slot)];
    for (int row = band.first; row <= band.last; ++row) {
      colourOf.Row(picture.cells.Row(row), line);
      picture.image.SetRow(row - 1, line);
    }
  };
  Unstoppable told(progress);
  (void)RunBands(rows, kRowsBetweenReports, {{}, draw, {}}, told);
}

ScaleEnds EndsOfScale(const MapPicture& picture) {
  if (picture.viewing != Viewing::kScaledVersion) return {};
  return {picture.specs.Min, picture.specs.Max};
}

}  // namespace ormel
