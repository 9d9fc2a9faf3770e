#include "control/amp_com_controls.h"

#include "basic/numbers.h"
#include "basic/text.h"
#include "commands/port_network_cmds.h"
#include "control/dialog_hold.h"
#include "control/panel_rules.h"

namespace amp {

namespace {

int IndexOfText(const ui::ComboBox& box, const std::string& text) {
  for (int i = 0; i < box.ListCount(); ++i)
    if (box.List(i) == text) return i;
  return -1;
}

int ParityIndex(const std::string& parity) {
  return parity == "N" ? 0 : parity == "O" ? 1 : parity == "E" ? 2 : -1;
}

int TwoWayIndex(int value, int first, int second) {
  return value == first ? 0 : value == second ? 1 : -1;
}

// The data bits list as a fresh dialog has it.
void ResetDataBits(ui::ComboBox& box) {
  box.Clear();
  box.AddItem("7");
  box.AddItem("8");
}

void FillPort(ui::ComboBox& baud, ui::ComboBox& parity, ui::ComboBox& data, ui::ComboBox& stop,
              int32_t baudValue, const std::string& parityValue, int dataValue, int stopValue) {
  ResetDataBits(data);
  baud.SetListIndex(IndexOfText(baud, std::to_string(baudValue)));
  parity.SetListIndex(ParityIndex(parityValue));
  data.SetListIndex(TwoWayIndex(dataValue, 7, 8));
  if (data.ListCount() < 2) data.AddItem("8");
  stop.SetListIndex(TwoWayIndex(stopValue, 1, 2));
}

bool AllChosen(std::initializer_list<const ui::ComboBox*> boxes) {
  for (const ui::ComboBox* b : boxes)
    if (b->ListIndex() < 0) return false;
  return true;
}

std::string SerialPortCommand(int port, const ui::ComboBox& baud, const ui::ComboBox& parity,
                              const ui::ComboBox& data, const ui::ComboBox& stop) {
  return CmdSerialPort(port, CLng(Val(baud.Text())).value_or(0), parity.Text(),
                       CInt(Val(data.Text())).value_or(0), CInt(Val(stop.Text())).value_or(0));
}

}  // namespace

AmpComControls::AmpComControls(PanelContext& p) : p_(p) {}

void AmpComControls::Wire() {
  p_.frm.mnuAmpCom.Click = [this] { mnuAmpCom_Click(); };
  ui::FrmAmpCom& f = frmAmpCom;
  f.Load = [this] { frmAmpCom_Load(); };
  f.QueryUnload = [this] { frmAmpCom.Unload(); };
  f.Command1.Click = [this] { frmAmpCom.Unload(); };
  f.cmb232Parity.Click = [this] { cmb232Parity_Click(); };
  f.cmb485Parity.Click = [this] { cmb485Parity_Click(); };
  f.btnSet232.Click = [this] { btnSet232_Click(); };
  f.btnSet485.Click = [this] { btnSet485_Click(); };
}

void AmpComControls::mnuAmpCom_Click() {
  TimerHold hold(p_);
  p_.dialogs.ShowModal(frmAmpCom);
  p_.setup.InitCom1Settings();
  p_.setup.InitCom2Settings();
}

void AmpComControls::frmAmpCom_Load() {
  PanelUpdateHold hold(p_);
  InitCom1Settings();
  InitCom2Settings();
}

void AmpComControls::InitCom1Settings() {
  const SessionValues& v = p_.values;
  ui::FrmAmpCom& f = frmAmpCom;
  FillPort(f.cmb232Baud, f.cmb232Parity, f.cmb232Data, f.cmb232Stop, v.gCom1Baud, v.gCom1Parity,
           v.gCom1Data, v.gCom1Stop);
}

void AmpComControls::InitCom2Settings() {
  const SessionValues& v = p_.values;
  ui::FrmAmpCom& f = frmAmpCom;
  FillPort(f.cmb485Baud, f.cmb485Parity, f.cmb485Data, f.cmb485Stop, v.gCom2Baud, v.gCom2Parity,
           v.gCom2Data, v.gCom2Stop);
  f.cmb485Wire.SetListIndex(TwoWayIndex(v.gCom2Wire, 2, 4));
  f.cmb485Term.SetListIndex(v.gCom2Term == "T" ? 0 : v.gCom2Term == "U" ? 1 : -1);
}

void AmpComControls::ParityRule(const std::string& parity, ui::ComboBox& data) {
  if (parity == "None") {
    if (data.ListCount() < 2) data.AddItem("8");
  } else if (data.ListCount() == 2) {
    data.SetListIndex(0);
    data.RemoveItem(1);
  }
}

void AmpComControls::cmb232Parity_Click() {
  if (p_.panel.gInPanelUpdate) return;
  ParityRule(frmAmpCom.cmb232Parity.Text(), frmAmpCom.cmb232Data);
}

void AmpComControls::cmb485Parity_Click() {
  if (p_.panel.gInPanelUpdate) return;
  const int index = frmAmpCom.cmb232Parity.ListIndex();
  const std::string parity = index >= 0 ? frmAmpCom.cmb485Parity.List(index) : std::string();
  ParityRule(parity, frmAmpCom.cmb485Data);
}

void AmpComControls::SettingsIncomplete() {
  p_.dialogs.MsgBox("Settings Incomplete.", MsgButtons::OK, MsgIcon::None, "Port Setting Error");
}

void AmpComControls::btnSet232_Click() {
  if (p_.panel.gInPanelUpdate) return;
  if (!RemoteGuard(p_)) return;
  ui::FrmAmpCom& f = frmAmpCom;
  if (!AllChosen({&f.cmb232Baud, &f.cmb232Parity, &f.cmb232Data, &f.cmb232Stop})) {
    SettingsIncomplete();
    return;
  }
  p_.comms.ExchangeCommand(
      SerialPortCommand(1, f.cmb232Baud, f.cmb232Parity, f.cmb232Data, f.cmb232Stop), false);
}

void AmpComControls::btnSet485_Click() {
  if (p_.panel.gInPanelUpdate) return;
  if (!RemoteGuard(p_)) return;
  ui::FrmAmpCom& f = frmAmpCom;
  if (!AllChosen({&f.cmb485Baud, &f.cmb485Parity, &f.cmb485Data, &f.cmb485Stop, &f.cmb485Wire,
                  &f.cmb485Term})) {
    SettingsIncomplete();
    return;
  }
  // The line settings follow only when the unit took the wiring.
  const std::string rs485 =
      CmdRS485(Left(f.cmb485Wire.Text(), 1), Left(f.cmb485Term.Text(), 1), p_.frm.txtAdr.Text());
  if (!p_.comms.ExchangeCommand(rs485, true)) return;
  p_.comms.ExchangeCommand(
      SerialPortCommand(2, f.cmb485Baud, f.cmb485Parity, f.cmb485Data, f.cmb485Stop), true);
}

}  // namespace amp
