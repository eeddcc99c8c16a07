#include "rastertools/map_stats_window.h"

#include "ui/desktop.h"

namespace ormel {

FrmMapStats::FrmMapStats(AppContext& app) : Window("frmMapStats", "Map Statistics"), app_(app) {}

}  // namespace ormel
