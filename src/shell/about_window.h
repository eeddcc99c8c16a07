// The about box: title, version, and the way to the machine's own facts.
#pragma once

#include "ui/window.h"

namespace ormel {

class FrmAbout final : public ui::Window {
 public:
  explicit FrmAbout(ui::Desktop& desktop);

  ui::Picture picMap{*this, "picMap"};
  ui::Label lblTitle{*this, "lblTitle", "ORMEL"};
  ui::Label lblVersion{*this, "lblVersion", "Version " ORMEL_VERSION};
  ui::Label lblDescription{*this, "lblDescription"};
  ui::Button cmdSysInfo{*this, "cmdSysInfo", "&System Info..."};
  ui::Button cmdOK{*this, "cmdOK", "OK"};

 private:
  void ShowSystemInformation();

  ui::Desktop& desktop_;
};

}  // namespace ormel
