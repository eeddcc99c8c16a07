// The viewer of linear models.
#pragma once

#include <memory>
#include <utility>

#include "mce/generator_window.h"
#include "mce/linear/linear_model.h"

namespace ormel {

class FrmDraw final : public GeneratorWindow {
 public:
  FrmDraw(AppContext& app, std::shared_ptr<const LinearModel> model)
      : GeneratorWindow(app, "frmDraw", std::move(model)) {}
};

}  // namespace ormel
