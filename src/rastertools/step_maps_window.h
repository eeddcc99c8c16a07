// The window "Create Time Step Factor Files": a table of values makes a factor map for each time
// step.
#pragma once

#include "parts/app_context.h"
#include "ui/window.h"

namespace ormel {

class FrmGenTSMaps final : public ui::Window {
 public:
  explicit FrmGenTSMaps(AppContext& app);

 private:
  AppContext& app_;
};

}  // namespace ormel
