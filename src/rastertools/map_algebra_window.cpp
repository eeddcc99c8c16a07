#include "rastertools/map_algebra_window.h"

#include "ui/desktop.h"

namespace ormel {

FrmMapAlgebra::FrmMapAlgebra(AppContext& app) : Window("frmMapAlgebra", "Map Algebra"), app_(app) {}

}  // namespace ormel
