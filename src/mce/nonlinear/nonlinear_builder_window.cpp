#include "mce/nonlinear/nonlinear_builder_window.h"

#include "mce/nonlinear/graph_rows_window.h"
#include "mce/nonlinear/nonlinear_map_window.h"

namespace ormel {

FrmBuildC::FrmBuildC(AppContext& app)
    : BuilderWindow(app, "frmBuildC", "Build a Non-Linear Model", GraphRows::Make) {}

GraphRows& FrmBuildC::Graphs() const { return static_cast<GraphRows&>(Kind()); }

std::unique_ptr<GeneratorWindow> FrmBuildC::MakeViewer() {
  auto model = std::make_shared<NonlinearModel>();
  model->factors = Graphs().Factors();
  model->constraints = constraints.Paths();
  model->title = txtTitle.Text();
  model->palette = palette.Path();
  return std::make_unique<FrmDrawC>(app_, std::move(model));
}

}  // namespace ormel
