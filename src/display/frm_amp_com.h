// The unit's own two serial ports (not this computer's): the RS-232 group
// and the RS-485 group with its wiring and termination. Its logic lives
// with the network controls.
#pragma once

#include "display/form.h"

namespace amp::ui {

struct FrmAmpCom : Form {
  FrmAmpCom();

  static constexpr const char* kBauds[] = {"4800", "9600", "19200", "38400", "57600", "115200"};
  static constexpr const char* kParities[] = {"None", "Odd", "Even"};

  Frame fra232{this, "fra232"};
  ComboBox cmb232Baud{this, "cmb232Baud"};
  ComboBox cmb232Parity{this, "cmb232Parity"};
  ComboBox cmb232Data{this, "cmb232Data"};
  ComboBox cmb232Stop{this, "cmb232Stop"};
  CommandButton btnSet232{this, "btnSet232"};
  Frame fra485{this, "fra485"};
  ComboBox cmb485Baud{this, "cmb485Baud"};
  ComboBox cmb485Parity{this, "cmb485Parity"};
  ComboBox cmb485Data{this, "cmb485Data"};
  ComboBox cmb485Stop{this, "cmb485Stop"};
  ComboBox cmb485Wire{this, "cmb485Wire"};
  ComboBox cmb485Term{this, "cmb485Term"};
  CommandButton btnSet485{this, "btnSet485"};
  CommandButton Command1{this, "Command1"};
};

}  // namespace amp::ui
