// The LLDP setup of a block downconverter: the user group with its enable
// box and the factory group. Its logic lives with the network controls.
#pragma once

#include "display/form.h"

namespace amp::ui {

struct FrmLLDPConfig : Form {
  FrmLLDPConfig();

  Frame fraUser{this, "fraUser"};
  CheckBox chkEnable{this, "chkEnable"};
  Label lblTxTimer{this, "lblTxTimer"};
  TextBox txtlldpTxTimer{this, "txtlldpTxTimer"};
  Label lblTxTimerHint{this, "lblTxTimerHint"};
  Label lblHoldtime{this, "lblHoldtime"};
  TextBox txtlldpHoldtime{this, "txtlldpHoldtime"};
  Label lblReinitDelay{this, "lblReinitDelay"};
  TextBox txtlldpReinitDelay{this, "txtlldpReinitDelay"};
  Label lblHostname{this, "lblHostname"};
  TextBox txtlldpHostname{this, "txtlldpHostname"};
  CommandButton btnUserDefaults{this, "btnUserDefaults"};
  Frame fraFactory{this, "fraFactory"};
  Label lblMED{this, "lblMED"};
  TextBox txtlldpMED{this, "txtlldpMED"};
  Label lblHWRev{this, "lblHWRev"};
  TextBox txtlldpHWRev{this, "txtlldpHWRev"};
  Label lblUUID{this, "lblUUID"};
  TextBox txtlldpUUID{this, "txtlldpUUID"};
  CommandButton btnFactDefaults{this, "btnFactDefaults"};
  CommandButton btnOK{this, "btnOK"};
  CommandButton btnClose{this, "btnClose"};
};

}  // namespace amp::ui
