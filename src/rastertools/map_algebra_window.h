// The window "Map Algebra": one operation, cell by cell, on pairs of maps.
#pragma once

#include "parts/app_context.h"
#include "ui/window.h"

namespace ormel {

class FrmMapAlgebra final : public ui::Window {
 public:
  explicit FrmMapAlgebra(AppContext& app);

 private:
  AppContext& app_;
};

}  // namespace ormel
