#include "display/frm_enet_cfg.h"

namespace amp::ui {

FrmEnetCfg::FrmEnetCfg() : Form("frmEnetCfg") {
  SetCaption("Ethernet Configuration");
  fraMode.SetCaption("Address Mode");
  optDhcp.SetCaption("DHCP");
  optStaticIP.SetCaption("Static IP");
  optDhcp.SetGroup("Mode");
  optStaticIP.SetGroup("Mode");
  lblIP.SetCaption("IP Address:");
  lblNM.SetCaption("Subnet Mask:");
  lblGW.SetCaption("Gateway:");
  lblPort.SetCaption("Port:");
  lblHostName.SetCaption("Host Name:");
  lblDomainName.SetCaption("Domain Name:");
  lblMacTitle.SetCaption("MAC Address:");
  cmdOK.SetCaption("OK");
  cmdCancel.SetCaption("Cancel");
}

TextBox* FrmEnetCfg::Octet(int group, int i) {
  TextBox* fields[3][4] = {{&txtIP1b, &txtIP2b, &txtIP3b, &txtIP4b},
                           {&txtNM1b, &txtNM2b, &txtNM3b, &txtNM4b},
                           {&txtGW1b, &txtGW2b, &txtGW3b, &txtGW4b}};
  return (group >= 0 && group < 3 && i >= 0 && i < 4) ? fields[group][i] : nullptr;
}

}  // namespace amp::ui
