#include "mce/linear/model_builder_window.h"

#include "mce/linear/composite_map_window.h"
#include "mce/linear/linear_rows_window.h"

namespace ormel {

FrmBuild::FrmBuild(AppContext& app)
    : BuilderWindow(app, "frmBuild", "Build a Model", LinearRows::Make) {}

std::unique_ptr<GeneratorWindow> FrmBuild::MakeViewer() {
  auto model = std::make_shared<LinearModel>();
  model->factors = static_cast<const LinearRows&>(Kind()).Factors();
  model->constraints = constraints.Paths();
  model->title = txtTitle.Text();
  model->palette = palette.Path();
  return std::make_unique<FrmDraw>(app_, std::move(model));
}

}  // namespace ormel
