#include "control/limit_dialogs.h"

#include "basic/numbers.h"
#include "commands/fault_config_cmds.h"
#include "commands/port_network_cmds.h"
#include "commands/rf_power_cmds.h"
#include "commands/transmitter_cmds.h"
#include "control/dialog_rules.h"
#include "control/panel_rules.h"

namespace amp {

namespace {

constexpr int kBackspace = 8;

bool IsDigitKey(int k) { return k >= '0' && k <= '9'; }

// A number field without a sign: digits, the point and Backspace.
void PositiveNumberKey(int& KeyAscii) {
  if (KeyAscii == kBackspace || KeyAscii == '.' || IsDigitKey(KeyAscii)) return;
  KeyAscii = 0;
}

}  // namespace

void LimitDialogs::Wire() {
  ui::FrmMain& f = p_.frm;
  f.mnuMaxPwrLvl.Click = [this] { mnuMaxPwrLvl_Click(); };
  f.mnuTempTripLevels.Click = [this] { mnuTempTripLevels_Click(); };
  f.mnuPowerSave.Click = [this] { mnuPowerSave_Click(); };
  f.mnuGainBal.Click = [this] { mnuGainBal_Click(); };
  f.mnuStartupCfg.Click = [this] { mnuStartupCfg_Click(); };

  // Every close box and Cancel leaves what the dialog edits as it was.
  for (ui::Form* form : std::initializer_list<ui::Form*>{&frmPwrLimit, &frmTempLimits,
                                                         &frmPowerSave, &frmGainBal, &frmStartup})
    form->QueryUnload = [form] { form->Unload(); };

  frmPwrLimit.Load = [this] { frmPwrLimit_Load(); };
  frmPwrLimit.Text1.KeyPress = PositiveNumberKey;
  frmPwrLimit.Text2.KeyPress = PositiveNumberKey;
  frmPwrLimit.cmdOK.Click = [this] { frmPwrLimit_cmdOK_Click(); };
  frmPwrLimit.cmdCancel.Click = [this] { frmPwrLimit.Unload(); };

  frmTempLimits.Load = [this] { frmTempLimits_Load(); };
  frmTempLimits.txtFltTripLvl.KeyPress = [this](int& k) { TripLevelKeyPress(k); };
  frmTempLimits.txtAlrmTripLvl.KeyPress = [this](int& k) { TripLevelKeyPress(k); };
  frmTempLimits.btnOK.Click = [this] { frmTempLimits_btnOK_Click(); };
  frmTempLimits.btnCancel.Click = [this] { frmTempLimits.Unload(); };
  frmTempLimits.chkLatchFlts.Click = [this] { chkLatchFlts_Click(); };

  frmPowerSave.Load = [this] { frmPowerSave_Load(); };
  frmPowerSave.cmdOK.Click = [this] { frmPowerSave_cmdOK_Click(); };
  frmPowerSave.cmdCancel.Click = [this] { frmPowerSave.Unload(); };

  frmGainBal.Load = [this] { frmGainBal_Load(); };
  frmGainBal.Text1.KeyPress = [this](int& k) { frmGainBal_Text1_KeyPress(k); };
  frmGainBal.cmdOK.Click = [this] { frmGainBal_cmdOK_Click(); };
  frmGainBal.cmdCancel.Click = [this] { frmGainBal.Unload(); };

  frmStartup.Load = [this] { frmStartup_Load(); };
  frmStartup.optNorm.Click = [this] { StartupOption_Click(0); };
  frmStartup.optOff.Click = [this] { StartupOption_Click(1); };
  frmStartup.optOn.Click = [this] { StartupOption_Click(2); };
  frmStartup.Command1.Click = [this] { frmStartup.Unload(); };
}

void LimitDialogs::Show(ui::Form& form, bool shortTimeout) {
  ModalPause pause(p_, shortTimeout);
  p_.dialogs.ShowModal(form);
}

// ------------------------------------------------------------ power limit

void LimitDialogs::mnuMaxPwrLvl_Click() { Show(frmPwrLimit, true); }

std::string LimitDialogs::ShownPowerLevel(const std::string& dBm) const {
  if (!p_.panel.gDisplayWatts) return dBm;
  return Format(WattsFromdBm(Val(dBm)), "###0.0");
}

void LimitDialogs::frmPwrLimit_Load() {
  ui::FrmPwrLimit& d = frmPwrLimit;
  const SessionValues& v = p_.values;
  PanelUpdateHold hold(p_.panel);
  d.Text1.SetText(ShownPowerLevel(v.gMaxPowerLevel));
  d.Label1.SetCaption(p_.panel.gDisplayWatts ? "Watts" : "dBm");
  const bool hasFault = Val(v.gMaxPowerFault) > 0;
  d.Text2.SetText(hasFault ? v.gMaxPowerFault : "");
  d.Text2.SetEnabled(hasFault);
  d.Check1.SetValue(v.gMaxPowerOn ? 1 : 0);
}

void LimitDialogs::frmPwrLimit_cmdOK_Click() {
  ui::FrmPwrLimit& d = frmPwrLimit;
  SessionValues& v = p_.values;
  Comms& c = p_.comms;
  // The typed level is compared with the stored one as Load showed it, so a
  // field left alone sends nothing even after the round trip through Watts.
  const double level = Val(d.Text1.Text());
  if (!d.Text1.Text().empty() && level != Val(ShownPowerLevel(v.gMaxPowerLevel)) && level > 0) {
    const double dBm = p_.panel.gDisplayWatts ? dBmFromWatts(level) : level;
    v.gMaxPowerLevel = Format(dBm, "#0.0");
    c.ExchangeCommand(CmdPowerLimit(Val(v.gMaxPowerLevel)), false);
  }
  const double fault = Val(d.Text2.Text());
  if (!d.Text2.Text().empty() && fault != Val(v.gMaxPowerFault) && fault > 0) {
    v.gMaxPowerFault = Format(fault, "#0.0");
    c.ExchangeCommand(CmdPowerLimitFaultLevel(fault), false);
  }
  const bool on = d.Check1.Value() == 1;
  if (on != v.gMaxPowerOn) {
    v.gMaxPowerOn = on;
    c.ExchangeCommand(CmdPowerLimitEnable(on), false);
  }
  d.Unload();
}

// ------------------------------------------------------ temperature trips

void LimitDialogs::mnuTempTripLevels_Click() { Show(frmTempLimits, false); }

void LimitDialogs::frmTempLimits_Load() {
  ui::FrmTempLimits& d = frmTempLimits;
  PanelUpdateHold hold(p_.panel);
  d.txtFltTripLvl.SetText(p_.values.gTempFaultLevel);
  d.txtAlrmTripLvl.SetText(p_.values.gTempAlarmLevel);
  d.chkLatchFlts.SetValue(p_.values.gTempFaultsLatched ? 1 : 0);
  d.chkLatchFlts.SetVisible(!p_.unit.gPICProcessor);
}

// Whole degrees only. Enter is dropped with the rest: the levels go out
// through OK alone.
void LimitDialogs::TripLevelKeyPress(int& KeyAscii) {
  if (!p_.panel.gRemoteMode) {
    ShowNotInRemoteMode(p_);
    KeyAscii = 0;
    return;
  }
  if (KeyAscii == kBackspace || IsDigitKey(KeyAscii)) return;
  KeyAscii = 0;
}

void LimitDialogs::SendTempFaultLevel(const std::string& text) {
  Comms& c = p_.comms;
  const bool pic = p_.unit.gPICProcessor;
  // Units that predate the trip commands keep the level as a parameter.
  if (!c.ExchangeCommand(CmdTempFaultLevel(text, pic), false) && !pic)
    c.ExchangeCommand(CmdTempFaultParam(text), false);
  p_.values.gTempFaultLevel = text;
}

void LimitDialogs::SendTempAlarmLevel(const std::string& text) {
  Comms& c = p_.comms;
  if (!c.ExchangeCommand(CmdTempAlarmLevel(text), false))
    c.ExchangeCommand(CmdTempAlarmParam(text), false);
  p_.values.gTempAlarmLevel = text;
}

void LimitDialogs::frmTempLimits_btnOK_Click() {
  const std::string fault = frmTempLimits.txtFltTripLvl.Text();
  const std::string alarm = frmTempLimits.txtAlrmTripLvl.Text();
  if (!fault.empty() && fault != p_.values.gTempFaultLevel) SendTempFaultLevel(fault);
  if (!alarm.empty() && alarm != p_.values.gTempAlarmLevel) SendTempAlarmLevel(alarm);
  frmTempLimits.Unload();
}

void LimitDialogs::chkLatchFlts_Click() {
  ui::CheckBox& box = frmTempLimits.chkLatchFlts;
  if (!CheckBoxGuard(p_, box)) return;
  const bool latch = box.Value() == 1;
  p_.comms.ExchangeCommand(CmdLatchTempFaults(latch), false);
  p_.values.gTempFaultsLatched = latch;
}

// ------------------------------------------------------------- power save

void LimitDialogs::mnuPowerSave_Click() { Show(frmPowerSave, false); }

void LimitDialogs::frmPowerSave_Load() {
  ui::FrmPowerSave& d = frmPowerSave;
  const int16_t level = p_.values.gPowerSaveLevel;
  PanelUpdateHold hold(p_.panel);
  d.chkPowerMode.SetValue(p_.values.gPowerSaveOn == 1 ? 1 : 0);
  const bool hasLevel = level >= 0 && level <= 7;
  d.cmbPowerLevel.SetListIndex(hasLevel ? level : -1);
  d.cmbPowerLevel.SetVisible(hasLevel);
  d.Label1.SetVisible(hasLevel);
}

void LimitDialogs::frmPowerSave_cmdOK_Click() {
  ui::FrmPowerSave& d = frmPowerSave;
  SessionValues& v = p_.values;
  if (!p_.panel.gRemoteMode) {
    p_.dialogs.MsgBox("Not in Remote Mode!", MsgButtons::OK, MsgIcon::Exclamation,
                      "NOT REMOTE MODE");
    d.Unload();
    return;
  }
  const int level = d.cmbPowerLevel.ListIndex();
  if (d.cmbPowerLevel.Visible() && level >= 0 && level <= 7 && level != v.gPowerSaveLevel) {
    p_.comms.ExchangeCommand(CmdPowerSaveDelay(level), false);
    v.gPowerSaveLevel = static_cast<int16_t>(level);
  }
  const int16_t on = d.chkPowerMode.Value() == 1 ? 1 : 0;
  if (on != v.gPowerSaveOn) {
    p_.comms.ExchangeCommand(CmdPowerSaveMode(on), false);
    v.gPowerSaveOn = on;
  }
  d.Unload();
}

// ----------------------------------------------------------- gain balance

void LimitDialogs::mnuGainBal_Click() { Show(frmGainBal, false); }

void LimitDialogs::frmGainBal_Load() {
  PanelUpdateHold hold(p_.panel);
  frmGainBal.Text1.SetText(p_.values.gGainBalance);
  frmGainBal.Check1.SetValue(p_.values.gGainBalanceOn ? 1 : 0);
}

void LimitDialogs::frmGainBal_Text1_KeyPress(int& KeyAscii) {
  if (!RemoteGuard(p_)) {
    KeyAscii = 0;
    return;
  }
  PositiveNumberKey(KeyAscii);
}

void LimitDialogs::frmGainBal_cmdOK_Click() {
  SessionValues& v = p_.values;
  const double value = Val(frmGainBal.Text1.Text());
  const bool on = frmGainBal.Check1.Value() == 1;
  if (value != Val(v.gGainBalance)) {
    v.gGainBalance = Format(value, "#0.0");
    p_.comms.ExchangeCommand(CmdGainBalance(value), false);
  }
  if (on != v.gGainBalanceOn) {
    v.gGainBalanceOn = on;
    p_.comms.ExchangeCommand(CmdGainBalanceEnable(on), false);
  }
  frmGainBal.Unload();
}

// --------------------------------------------------------------- start-up

void LimitDialogs::mnuStartupCfg_Click() { Show(frmStartup, false); }

void LimitDialogs::ShowStartupMode() {
  ui::FrmStartup& d = frmStartup;
  PanelUpdateHold hold(p_.panel);
  const int16_t mode = p_.values.gStartupMode;
  d.optOff.SetEnabled(mode >= 0);
  d.optOn.SetEnabled(mode >= 0);
  if (mode == 1) {
    d.optOff.SetValue(true);
  } else if (mode == 2) {
    d.optOn.SetValue(true);
  } else {
    d.optNorm.SetValue(true);
  }
}

void LimitDialogs::frmStartup_Load() { ShowStartupMode(); }

void LimitDialogs::StartupOption_Click(int16_t mode) {
  if (p_.panel.gInPanelUpdate) return;
  if (!RemoteGuard(p_)) {
    // The buttons go back to the unit's mode.
    ShowStartupMode();
    return;
  }
  static constexpr std::string_view kCommands[] = {kCmdStartupNormal, kCmdStartupOff,
                                                   kCmdStartupOn};
  p_.comms.ExchangeCommand(kCommands[mode], false);
  p_.values.gStartupMode = mode;
}

}  // namespace amp
