// The About dialog: program version, title and copyright, and a button for
// the host's system information tool. Its logic lives with the application.
#pragma once

#include "display/form.h"

namespace amp::ui {

struct FrmAbout : Form {
  FrmAbout();

  Label lblTitle{this, "lblTitle"};
  Label lblVersion{this, "lblVersion"};
  CommandButton cmdOK{this, "cmdOK"};
  CommandButton cmdSysInfo{this, "cmdSysInfo"};
};

}  // namespace amp::ui
