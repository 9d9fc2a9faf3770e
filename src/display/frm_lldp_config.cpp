#include "display/frm_lldp_config.h"

namespace amp::ui {

FrmLLDPConfig::FrmLLDPConfig() : Form("frmLLDPConfig") {
  SetCaption("Link Layer Discovery Protocol");
  fraUser.SetCaption("User Set LLDP Parameters");
  chkEnable.SetCaption("Enable");
  lblTxTimer.SetCaption("TX Timer:");
  // The unit takes 30 and up; the hint stays as the unit's documents give it.
  lblTxTimerHint.SetCaption("5 - 65534");
  lblHoldtime.SetCaption("Holdtime:");
  lblReinitDelay.SetCaption("Reinit Delay:");
  lblHostname.SetCaption("Hostname::");
  btnUserDefaults.SetCaption("Set Defaults");
  fraFactory.SetCaption("Factory Set LLDP Parameters");
  lblMED.SetCaption("MED:");
  lblHWRev.SetCaption("Hardware Rev:");
  lblUUID.SetCaption("Unique Device ID:");
  btnFactDefaults.SetCaption("Set Defaults");
  btnOK.SetCaption("OK");
  btnClose.SetCaption("Close");
}

}  // namespace amp::ui
