// The viewer of non-linear models: every factor is shown with its values or with their weights, and
// can be written as a map either way.
#pragma once

#include <memory>
#include <vector>

#include "base/grid.h"
#include "mce/generator_window.h"
#include "mce/nonlinear/nonlinear_model.h"

namespace ormel {

class FrmDrawC final : public GeneratorWindow {
 public:
  FrmDrawC(AppContext& app, const std::shared_ptr<const NonlinearModel>& model);

  // Display shows, and Export writes, weights in place of values.
  ui::CheckBox ckWeighted{*this, "ckWeighted", "&Weighted"};

 private:
  int LayerToShow(int factor) const override {
    return ckWeighted.Checked() ? WeightedLayer(factor) : factor;
  }
  RowWatcher FactorPainter(int factor) override;
  void FactorDrawn(int factor) override;
  Extremes ScaleEnds(int layer) const override;
  ui::LayoutItem FactorCommands() override;
  void ExportFactors() override;

  int WeightedLayer(int factor) const { return FactorCount() + factor; }
  Extremes WeightScale(int factor) const;
  void KeepDrawnWeights(int factor, int row, std::span<const double> values, double nodata);
  void PaintWeights(int factor);

  const NonlinearModel& graphs_;
  // The weights of the cells that a picture draws, of the factor that was read last. A weight that
  // is NODATA is that of a cell which adds nothing.
  Grid<double> drawn_;
  double drawnNoData_ = kNoNoData;
  int factorsRead_ = 0;
};

}  // namespace ormel
