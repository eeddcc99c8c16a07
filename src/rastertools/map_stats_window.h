// The window "Map Statistics": the figures and the histogram of maps.
#pragma once

#include "parts/app_context.h"
#include "ui/window.h"

namespace ormel {

class FrmMapStats final : public ui::Window {
 public:
  explicit FrmMapStats(AppContext& app);

 private:
  AppContext& app_;
};

}  // namespace ormel
