// The window "Map Statistics": header, figures and histogram of each map of a list, within a
// constraint when there is one.
#pragma once

#include <optional>
#include <string>

#include "parts/app_context.h"
#include "parts/chart_picture.h"
#include "parts/chosen_files.h"
#include "rastertools/map_report.h"
#include "ui/window.h"

namespace ormel {

class FrmMapStats final : public ui::Window {
 public:
  explicit FrmMapStats(AppContext& app);

  ChosenFiles files;
  ui::TextBox txtConstraint{*this, "txtConstraint"};
  ui::Button cmdLoadConstraint{*this, "cmdLoadConstraint", "..."};
  ui::Button cmdClearConstraint{*this, "cmdClearConstraint", "&None"};

  ui::Label lblColumns{*this, "lblColumns"};
  ui::Label lblRows{*this, "lblRows"};
  ui::Label lblX{*this, "lblX"};
  ui::Label lblY{*this, "lblY"};
  ui::Label lblCellSize{*this, "lblCellSize"};
  ui::Label lblNoData{*this, "lblNoData"};
  ui::Label lblMinimum{*this, "lblMinimum"};
  ui::Label lblMaximum{*this, "lblMaximum"};
  ui::Label lblMean{*this, "lblMean"};
  ui::Label lblSD{*this, "lblSD"};
  ui::Label lblCount{*this, "lblCount"};
  ui::Label lblSum{*this, "lblSum"};
  ui::Label lblFault{*this, "lblFault"};  // why the map could not be read

  ChartPicture chart;
  ui::Label lblYMax{*this, "lblYMax"};
  ui::Label lblXMin{*this, "lblXMin"};
  ui::Label lblXMax{*this, "lblXMax"};

  ui::Button cmdExportCurrentStats{*this, "cmdExportCurrentStats", "Export &Current..."};
  ui::Button cmdExportCumulativeStats{*this, "cmdExportCumulativeStats", "Export C&umulative..."};
  ui::Button cmdExportFH{*this, "cmdExportFH", "Export &Histogram..."};
  ui::Button cmdExit{*this, "cmdExit", "E&xit"};

 private:
  void LayOut();
  void AddByDrop(const std::string& path);
  void PickConstraint();
  void UseConstraint(std::string path);

  // The first selected map; empty: none.
  std::string Selected() const { return files.list.SelectedText(); }
  void ShowSelected();
  void ShowHeader(const std::string& path);
  void ShowFigures();
  void ShowHistogram();
  void ReadCategory(const ChartHit& bar);

  // The file that a report goes to; none: there is no map, or it was cancelled.
  std::optional<std::string> AskReport(bool thereIsAMap, const std::string& refusal,
                                       const ui::FileDialog& dialog);
  void Write(const std::string& path, const std::string& report);
  void ExportCurrent();
  void ExportCumulative();
  void ExportHistogram();

  AppContext& app_;
  std::string constraint_;  // the last good one
  MapFigures figures_;      // of the selected map
};

}  // namespace ormel
