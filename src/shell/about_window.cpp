#include "shell/about_window.h"

#include <sys/utsname.h>

#include <string>
#include <thread>

#include "ui/desktop.h"

namespace ormel {
namespace {

// What a report about a fault should tell of the machine.
std::string SystemFacts() {
  utsname system{};
  if (uname(&system) != 0) return "ORMEL " ORMEL_VERSION;
  return "ORMEL " ORMEL_VERSION "\n" + std::string(system.sysname) + " " + system.release + ", " +
         system.machine + "\n" + std::to_string(std::thread::hardware_concurrency()) +
         " processor cores";
}

}  // namespace

FrmAbout::FrmAbout(ui::Desktop& desktop) : Window("frmAbout", "About ORMEL"), desktop_(desktop) {
  lblDescription.SetCaption(
      "Suitability maps and animal-habitat studies:\n"
      "raster maps, multi-criteria evaluation, dated locations.");
  cmdOK.SetDefault();
  cmdOK.SetCancel();
  cmdOK.onClick = [this] { desktop_.Close(*this); };
  cmdSysInfo.onClick = [this] { ShowSystemInformation(); };
  SetLayout(ui::Column{lblTitle, lblVersion, lblDescription, ui::Stretch{},
                       ui::Row{cmdSysInfo, ui::Stretch{}, cmdOK}});
}

void FrmAbout::ShowSystemInformation() {
  if (!desktop_.ShowSystemInformation()) desktop_.Message(SystemFacts(), "System Information");
}

}  // namespace ormel
