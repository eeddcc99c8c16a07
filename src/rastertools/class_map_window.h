// The window "Create Factor from Class Data Set": a value for each class of a map makes a factor.
#pragma once

#include "parts/app_context.h"
#include "ui/window.h"

namespace ormel {

class FrmClass final : public ui::Window {
 public:
  explicit FrmClass(AppContext& app);

 private:
  AppContext& app_;
};

}  // namespace ormel
