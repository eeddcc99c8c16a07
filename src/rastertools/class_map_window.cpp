#include "rastertools/class_map_window.h"

#include "ui/desktop.h"

namespace ormel {

FrmClass::FrmClass(AppContext& app)
    : Window("frmClass", "Create Factor from Class Data Set"), app_(app) {}

}  // namespace ormel
