#include "mce/nonlinear/nonlinear_map_window.h"

#include <limits>
#include <utility>

#include "mce/nonlinear/factor_export.h"
#include "movies/bitmap.h"
#include "ui/desktop.h"
#include "ui/run.h"

namespace ormel {
namespace {

constexpr char kExportFilter[] = "ASCII Raster (.asc)|*.asc|Bitmap (.bmp)|*.bmp";
constexpr int kBitmapChosen = 2;  // entry of the filter

}  // namespace

FrmDrawC::FrmDrawC(AppContext& app, const std::shared_ptr<const NonlinearModel>& model)
    : GeneratorWindow(app, "frmDrawC", model, 2), graphs_(*model) {
  ckWeighted.SetToolTip("Display and export the weights of a factor in place of its values");
}

ui::LayoutItem FrmDrawC::FactorCommands() {
  return ui::Column{ckWeighted, GeneratorWindow::FactorCommands()};
}

// ---- Weighted layers ----------------------------------------------------------------------------

RowWatcher FrmDrawC::FactorPainter(int factor) {
  const auto drawnOf = [](int cells, int step) { return (cells - 1) / step + 1; };
  drawn_ = Grid<double>(drawnOf(map_->Frame().ncols, preview_->ColumnStep()),
                        drawnOf(map_->Frame().nrows, preview_->RowStep()),
                        std::numeric_limits<double>::quiet_NaN());
  return [this, paint = GeneratorWindow::FactorPainter(factor), factor](
             int row, std::span<const double> values, double nodata) {
    paint(row, values, nodata);
    if (preview_->DrawsRow(row)) KeepDrawnWeights(factor, row, values, nodata);
  };
}

void FrmDrawC::KeepDrawnWeights(int factor, int row, std::span<const double> values,
                                double nodata) {
  const auto step = static_cast<std::size_t>(preview_->ColumnStep());
  const std::span<double> drawn = drawn_.Row((row - 1) / preview_->RowStep() + 1);
  drawnNoData_ = nodata;
  for (std::size_t i = 0; i < values.size(); i += step) {
    drawn[i / step] = model_.WeightedValue(factor, values[i], nodata);
  }
}

// What the colours of a weighted layer run from and to.
Extremes FrmDrawC::WeightScale(int factor) const {
  Extremes weights = map_->WeightsOf(factor);
  if (!weights.Any()) return {1, 0};
  if (weights.largest == weights.smallest) ++weights.largest;
  return weights;
}

void FrmDrawC::PaintWeights(int factor) {
  Shown& shown = PictureOf(WeightedLayer(factor));
  const Extremes scale = WeightScale(factor);
  const double range = scale.largest - scale.smallest;
  for (int row = 1; row <= map_->Frame().nrows; row += preview_->RowStep()) {
    const std::span<const double> drawn = drawn_.Row((row - 1) / preview_->RowStep() + 1);
    preview_->DrawRow(shown.picture->Drawing(), row, map_->Frame().ncols, [&](int column) {
      const double weight = drawn[static_cast<std::size_t>((column - 1) / preview_->ColumnStep())];
      if (weight != weight) return kWhite;  // the file ends before this cell
      if (!map_->Allowed(column, row) || weight == drawnNoData_) return CV.Value();
      return shown.palette[ColourNumber(kTopValue * (weight - scale.smallest) / range)];
    });
  }
}

void FrmDrawC::FactorDrawn(int factor) {
  const Extremes& weights = map_->WeightsOf(factor);
  if (factor > factorsRead_ && weights.Any() && weights.largest == weights.smallest) {
    app_.desktop.Message(model_.Factor(factor).name + " has only one value!");
  }
  factorsRead_ = std::max(factorsRead_, factor);
  PaintWeights(factor);
  GeneratorWindow::FactorDrawn(factor);
}

Extremes FrmDrawC::ScaleEnds(int layer) const {
  return layer > FactorCount() ? WeightScale(FactorOf(layer)) : GeneratorWindow::ScaleEnds(layer);
}

// ---- Exports ------------------------------------------------------------------------------------

void FrmDrawC::ExportFactors() {
  for (const int index : PList.Selected()) {
    const auto choice = AskExportFile(index, kExportFilter, "asc");
    if (!choice) return;
    ui::Run run(*this);
    const Outcome<> written =
        choice->filterIndex == kBitmapChosen
            ? WriteBitmap(PictureOf(LayerToShow(index)).picture->Image(), choice->Path())
            : ExportFactor({map_->RowsOf(model_, index), map_->Frame().texts,
                            ckWeighted.Checked() ? &graphs_.Factor(index).graph : nullptr,
                            app_.settings.decimalPlaces, choice->Path()},
                           run);
    if (!run.Report(written)) return;
  }
}

}  // namespace ormel
