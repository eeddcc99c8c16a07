#include "mce/nonlinear/factor_export.h"

#include "base/file_writer.h"
#include "mapdata/raster.h"
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
  Outcome<FileWriter> file = FileWriter::Open(job.target);
  if (!file.Ok()) return file.Stop();
  FileWriter& writer = file.Value();
  writer.Write(HeaderText(HeaderStyle::kWide14NoData, HeaderOf(job)));
  RowText text;
  const Outcome<std::string> read =
      ReadRows(job.source, progress, [&](int, std::span<const double> cells, double nodata) {
        for (const double cell : cells) AddCell(text, job, cell, nodata);
        writer.Write(text.Finish());
      });
  if (!read.Ok()) return read.Stop();
  if (!read.Value().empty()) return Failure{FailureKind::kDamaged, read.Value()};
  return writer.Commit();
}

}  // namespace ormel
