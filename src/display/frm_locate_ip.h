// The unit search by UDP: the units that answered, one per line, and the
// TCP port to reach the chosen one on. Its logic lives with the network
// controls.
#pragma once

#include "display/form.h"

namespace amp::ui {

struct FrmLocateIP : Form {
  FrmLocateIP();

  Label lblUnits{this, "lblUnits"};
  ListBox lstIPAdrs{this, "lstIPAdrs"};
  Label lblPortNum{this, "lblPortNum"};
  TextBox txtPortNum{this, "txtPortNum"};
  CommandButton btnSearch{this, "btnSearch"};
  CommandButton btnClose{this, "btnClose"};
};

}  // namespace amp::ui
