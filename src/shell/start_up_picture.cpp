#include "shell/start_up_picture.h"

#include "mapdata/map_preview.h"
#include "mapdata/palette.h"
#include "mapdata/raster.h"

namespace ormel {

Canvas DrawStartUpPicture(const std::filesystem::path& map, const std::filesystem::path& palette) {
  Palette colours;
  const RasterRead read = ReadRaster(map);
  const Grid<double>& cells = read.map.cells;
  if (!read.skipped.empty() || !ReadPalette(palette, colours).Ok()) return {};
  const MapPreview preview(cells.Columns(), cells.Rows());
  Canvas picture = preview.Blank();
  for (int row = 1; row <= cells.Rows(); ++row) {
    preview.DrawRow(picture, row, cells.Columns(), [&](int column) {
      const std::optional<int> number = ColourNumberAsItStands(cells(column, row));
      return number ? colours.colours[static_cast<std::size_t>(*number)] : kWhite;
    });
  }
  return picture;
}

}  // namespace ormel
