#include "rastertools/step_maps_window.h"

#include "ui/desktop.h"

namespace ormel {

FrmGenTSMaps::FrmGenTSMaps(AppContext& app)
    : Window("frmGenTSMaps", "Create Time Step Factor Files"), app_(app) {}

}  // namespace ormel
