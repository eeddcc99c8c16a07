// The builder of non-linear models: every factor has a weight graph and the colour of its curve.
#pragma once

#include <memory>
#include <string>

#include "mce/builder_window.h"

namespace ormel {

class GraphRows;

class FrmBuildC final : public BuilderWindow {
 public:
  // Shown by its owner; the model runs from now on until the window closes.
  explicit FrmBuildC(AppContext& app);

  // Loads the model file at `path`; asks for one when it is empty.
  void loadCMF(const std::string& path) { LoadModel(path); }

  GraphRows& Graphs() const;

 private:
  std::unique_ptr<GeneratorWindow> MakeViewer() override;
};

}  // namespace ormel
