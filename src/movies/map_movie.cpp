#include "movies/map_movie.h"

#include <algorithm>
#include <utility>

#include "mapdata/map_stream.h"

namespace ormel {
namespace {

// Of the picture, as far as series are in it.
struct UsedCells {
  int left = 1;
  int top = 1;
  int right = 0;
  int bottom = 0;
};

int ColumnOf(const MovieSeries& series) { return series.cell % 2; }
int RowOf(const MovieSeries& series) { return series.cell / 2; }

UsedCells CellsOf(const MapMovie& movie) {
  UsedCells used;
  for (const MovieSeries& series : movie.series) {
    used.left = std::min(used.left, ColumnOf(series));
    used.top = std::min(used.top, RowOf(series));
    used.right = std::max(used.right, ColumnOf(series));
    used.bottom = std::max(used.bottom, RowOf(series));
  }
  return used;
}

// A map as it stands: its values are the numbers of colours.
Outcome<Canvas> DrawMap(const std::string& path, const Palette& palette, Colour noData) {
  Outcome<WholeMap> opened = OpenWholeMap(path);
  if (!opened.Ok()) return opened.Stop();
  WholeMap& map = opened.Value();
  Canvas picture(map.frame.ncols, map.frame.nrows);
  std::vector<double> cells(static_cast<std::size_t>(map.frame.ncols));
  std::vector<Colour> colours(cells.size());
  const double nodata = map.rows.NoData();
  for (int row = 0; row < map.frame.nrows; ++row) {
    const Outcome<> read = map.rows.ReadRow(cells);
    if (!read.Ok()) return read.Stop();
    std::transform(cells.begin(), cells.end(), colours.begin(), [&](double cell) {
      return cell != nodata && HasColourNumber(cell) ? palette[ColourNumber(cell)] : noData;
    });
    picture.SetRow(row, colours);
  }
  return picture;
}

}  // namespace

Outcome<Canvas> DrawMovieStep(const MapMovie& movie, int step) {
  const UsedCells used = CellsOf(movie);
  Canvas picture;
  int width = 0;
  int height = 0;
  for (const MovieSeries& series : movie.series) {
    const std::string& path = series.maps[static_cast<std::size_t>(step - 1)];
    const Outcome<Canvas> map = DrawMap(path, series.palette, movie.noData);
    if (!map.Ok()) return map.Stop();
    if (picture.Empty()) {
      width = map.Value().Width() + movie.gap;
      height = map.Value().Height() + movie.gap;
      picture = Canvas(width * (used.right - used.left + 1) - movie.gap,
                       height * (used.bottom - used.top + 1) - movie.gap, movie.background);
    }
    if (map.Value().Width() + movie.gap != width || map.Value().Height() + movie.gap != height) {
      return Failure{FailureKind::kRefused, path + ": has another size than the first map"};
    }
    picture.Paste(map.Value(), (ColumnOf(series) - used.left) * width,
                  (RowOf(series) - used.top) * height);
  }
  return picture;
}

}  // namespace ormel
