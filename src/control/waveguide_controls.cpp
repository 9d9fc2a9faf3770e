#include "control/waveguide_controls.h"

#include "commands/identity_cmds.h"
#include "control/panel_rules.h"

namespace amp {

void WaveguideControls::Wire() {
  p_.frm.cmbWgCfg.Click = [this] { cmbWgCfg_Click(); };
  p_.frm.cmbWgSw1.Click = [this] { cmbWgSw1_Click(); };
  p_.frm.cmbWgSw2.Click = [this] { cmbWgSw2_Click(); };
  p_.frm.chkAutoMode.Click = [this] { chkAutoMode_Click(); };
}

bool WaveguideControls::ComboMaySend() {
  if (p_.panel.gInPanelUpdate) return false;
  return RemoteGuard(p_);
}

std::string WaveguideControls::Selected(const ui::ComboBox& box) {
  const int i = box.ListIndex();
  return i >= 0 && i < box.ListCount() ? box.List(i) : std::string();
}

void WaveguideControls::cmbWgCfg_Click() {
  if (!ComboMaySend()) return;
  // An empty selection gives no command at all rather than a bare "PC".
  const std::string command = CmdWaveguideConfig(Selected(p_.frm.cmbWgCfg));
  if (!command.empty()) p_.comms.ExchangeCommand(command, false);
}

void WaveguideControls::SendSwitch(const ui::ComboBox& box, std::string_view toA,
                                   std::string_view toB) {
  if (!ComboMaySend()) return;
  // The unit alone decides whether a switch may move in its present mode; a
  // refusal is silent and the next status puts the combo back.
  const std::string item = Selected(box);
  if (item == "A") {
    p_.comms.ExchangeCommand(toA, false);
  } else if (item == "B") {
    p_.comms.ExchangeCommand(toB, false);
  }
}

void WaveguideControls::cmbWgSw1_Click() {
  SendSwitch(p_.frm.cmbWgSw1, kCmdSwitch1ToA, kCmdSwitch1ToB);
}

void WaveguideControls::cmbWgSw2_Click() {
  SendSwitch(p_.frm.cmbWgSw2, kCmdSwitch2ToA, kCmdSwitch2ToB);
}

void WaveguideControls::chkAutoMode_Click() {
  ui::CheckBox& box = p_.frm.chkAutoMode;
  if (!CheckBoxGuard(p_, box)) return;
  p_.comms.ExchangeCommand(box.Value() == 1 ? kCmdRedundancyAuto : kCmdRedundancyManual, false);
}

}  // namespace amp
