#include "mce/nonlinear/factor_export.h"

#include "mapdata/map_header.h"
#include "mce/composite_model.h"
#include "text/numbers.h"

namespace ormel {
namespace {

HeaderValues HeaderOf(const FactorExport& job) {
  HeaderValues header = job.header;
  const std::string nodata = ReadNoDataText(job.source.path);
  header.nodata.reset();
  if (!nodata.empty()) header.nodata = NumberText(TextToNumber(nodata));
  return header;
}

void AddCell(RowText& text, const FactorExport& job, double value, double nodata) {
  if (job.graph == nullptr || value == nodata) {
    text.Add(value);
  } else {
    text.AddRounded(lookup(*job.graph, CountedValue(value, nodata)), job.decimalPlaces);
  }
}

}  // namespace

Outcome<> ExportFactor(const FactorExport& job, ProgressSink& progress) {
  Outcome<RowSource> source = RowSource::Open(job.source);
  if (!source.Ok()) return source.Stop();
  RowSteps steps;
  steps.read = [&](int, std::span<double> cells) { return source.Value().ReadRow(cells); };
  steps.make = [&, nodata = source.Value().NoData()](int, std::span<double> cells, RowText& text) {
    for (const double cell : cells) AddCell(text, job, cell, nodata);
  };
  return WriteMap({job.target, HeaderText(HeaderStyle::kWide14NoData, HeaderOf(job)),
                   job.source.nrows, static_cast<std::size_t>(job.source.ncols)},
                  steps, progress);
}

}  // namespace ormel
