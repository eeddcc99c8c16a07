// The window "Data Preparation": factor maps are scaled to 0 to 255 and trimmed to one extent.
#pragma once

#include "parts/app_context.h"
#include "ui/window.h"

namespace ormel {

class FrmDataPrep final : public ui::Window {
 public:
  explicit FrmDataPrep(AppContext& app);

 private:
  AppContext& app_;
};

}  // namespace ormel
