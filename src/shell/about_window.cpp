#include "shell/about_window.h"

#include <sys/utsname.h>

#include <string>
#include <thread>

#include "shell/program_folder.h"
#include "shell/start_up_picture.h"
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
  lblDescription.SetCaption("Suitability maps and animal-habitat studies");
  picMap.SetImage(DrawStartUpPicture(AssetsFolder() + "start-up/suitability.asc",
                                     AssetsFolder() + "palettes/default.ptf"));
  cmdOK.SetDefault();
  cmdOK.SetCancel();
  cmdOK.onClick = [this] { desktop_.Close(*this); };
  cmdSysInfo.onClick = [this] { ShowSystemInformation(); };
  SetLayout(ui::Column{ui::Share(1, picMap), lblTitle, lblVersion, lblDescription,
                       ui::Row{cmdSysInfo, ui::Stretch{}, cmdOK}});
}

void FrmAbout::ShowSystemInformation() {
  if (!desktop_.ShowSystemInformation()) desktop_.Message(SystemFacts(), "System Information");
}

}  // namespace ormel
