// The builder of linear models, "Build a Model": every factor has a weight, and high or low values
// are good.
#pragma once

#include <memory>
#include <string>

#include "mce/builder_window.h"

namespace ormel {

class FrmBuild final : public BuilderWindow {
 public:
  // Shown by its owner; the model runs from now on until the window closes.
  explicit FrmBuild(AppContext& app);

  // Loads the model file at `path`; asks for one when it is empty.
  void loadmif(const std::string& path) { LoadModel(path); }

 private:
  std::unique_ptr<GeneratorWindow> MakeViewer() override;
};

}  // namespace ormel
