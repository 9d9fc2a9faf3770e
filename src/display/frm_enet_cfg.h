// The unit's own network settings: DHCP or a static address, the mask, the
// gateway and the TCP port, in twelve octet fields and a port field. Its
// logic lives with the network controls.
#pragma once

#include "display/form.h"

namespace amp::ui {

struct FrmEnetCfg : Form {
  FrmEnetCfg();

  Frame fraMode{this, "fraMode"};
  OptionButton optDhcp{this, "optDhcp"};
  OptionButton optStaticIP{this, "optStaticIP"};
  Label lblIP{this, "lblIP"};
  TextBox txtIP1b{this, "txtIP1b"};
  TextBox txtIP2b{this, "txtIP2b"};
  TextBox txtIP3b{this, "txtIP3b"};
  TextBox txtIP4b{this, "txtIP4b"};
  Label lblNM{this, "lblNM"};
  TextBox txtNM1b{this, "txtNM1b"};
  TextBox txtNM2b{this, "txtNM2b"};
  TextBox txtNM3b{this, "txtNM3b"};
  TextBox txtNM4b{this, "txtNM4b"};
  Label lblGW{this, "lblGW"};
  TextBox txtGW1b{this, "txtGW1b"};
  TextBox txtGW2b{this, "txtGW2b"};
  TextBox txtGW3b{this, "txtGW3b"};
  TextBox txtGW4b{this, "txtGW4b"};
  Label lblPort{this, "lblPort"};
  TextBox txtPort{this, "txtPort"};
  Label lblHostName{this, "lblHostName"};
  TextBox txtHostName{this, "txtHostName"};
  Label lblDomainName{this, "lblDomainName"};
  TextBox txtDomainName{this, "txtDomainName"};
  Label lblMacTitle{this, "lblMacTitle"};
  Label lblMac{this, "lblMac"};
  CommandButton cmdOK{this, "cmdOK"};
  CommandButton cmdCancel{this, "cmdCancel"};

  // The twelve octet fields: address, mask, gateway, each from the left.
  TextBox* Octet(int group, int i);
};

}  // namespace amp::ui
