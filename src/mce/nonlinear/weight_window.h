// The window in which the weight graph of one factor is edited.
#pragma once

#include <string>

#include "mce/nonlinear/graph_editor_window.h"
#include "ui/window.h"

namespace ormel {

class FrmWeight final : public ui::Window {
 public:
  // `caption` names the factor. Edits `graph` itself, which outlives the window; `modwt` is called
  // when the window closes, in whatever way.
  FrmWeight(AppContext& app, const std::string& caption, WeightGraph& graph, ui::Handler modwt);

  void OnClosed() override { modwt_(); }

  GraphEditor editor;
  ui::Button cmdDone{*this, "cmdDone", "&Done"};

 private:
  const ui::Handler modwt_;
};

}  // namespace ormel
