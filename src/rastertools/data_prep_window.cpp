#include "rastertools/data_prep_window.h"

#include "ui/desktop.h"

namespace ormel {

FrmDataPrep::FrmDataPrep(AppContext& app) : Window("frmDataPrep", "Data Preparation"), app_(app) {}

}  // namespace ormel
