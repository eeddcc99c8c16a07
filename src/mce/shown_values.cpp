#include "mce/shown_values.h"

#include "mapdata/raster_writer.h"
#include "text/numbers.h"

namespace ormel {

void KeepRow(std::span<const double> values, int decimalPlaces, std::span<float> cells) {
  for (std::size_t i = 0; i < values.size(); ++i) {
    cells[i] = static_cast<float>(HalfEvenRound(values[i], decimalPlaces));
  }
}

Outcome<double> ReadShownValues(const RowsToRead& rows, const CompositeMap& map, int decimalPlaces,
                                Grid<float>& cells, ProgressSink& progress) {
  double mapNoData = kNoNoData;
  cells.Fill(0);
  const Outcome<std::string> read =
      ReadRows(rows, progress, [&](int row, std::span<double> values, double nodata) {
        mapNoData = nodata;
        const std::span<float> kept = cells.Row(row);
        const std::span<const std::uint8_t> mask = map.Mask().Row(row);
        for (std::size_t i = 0; i < values.size(); ++i) {
          const double value = mask[i] != 0 ? HalfEvenRound(values[i], decimalPlaces) : 0.0;
          kept[i] = static_cast<float>(values[i] == nodata ? nodata : value);
        }
      });
  if (!read.Ok()) return read.Stop();
  return mapNoData;
}

Outcome<> WriteShownValues(const Grid<float>& cells, const MapFrame& frame, const std::string& path,
                           RowForm form, ProgressSink& progress) {
  RowSteps steps;
  steps.make = [&](int row, std::span<double> /*none*/, RowText& text) {
    for (const float value : cells.Row(row)) text.Add(value);
  };
  return WriteMap({path, HeaderText(HeaderStyle::kWide14, frame.texts), cells.Rows(), 0, form},
                  steps, progress);
}

}  // namespace ormel
