#include "control/config_switches.h"

#include <optional>
#include <string>

#include "basic/numbers.h"
#include "commands/fault_config_cmds.h"
#include "commands/identity_cmds.h"
#include "commands/rf_power_cmds.h"
#include "commands/transmitter_cmds.h"
#include "control/dialog_rules.h"
#include "control/panel_rules.h"

namespace amp {

namespace {

constexpr int kCfgRack = 1;
constexpr int kCfgSecondUmbilical = 2;
constexpr int kCfgAutoClrBUC = 512;
constexpr float kNoRevRFOffset = -50.0f;  // below this the unit has no offset

std::string CurrentValuePrompt(const std::string& prompt, float value) {
  return prompt + "\r\n\r\nCurrent Value: " + Format(value, "##0.0");
}

}  // namespace

void ConfigSwitches::Wire() {
  ui::FrmMain& f = p_.frm;
  f.mnuRack.Click = [this] { mnuRack_Click(); };
  f.mnu2ndUmbilical.Click = [this] { mnu2ndUmbilical_Click(); };
  f.mnuAutoClrBUC.Click = [this] { mnuAutoClrBUC_Click(); };
  f.mnuLEDMode.Click = [this] { mnuLEDMode_Click(); };
  f.mnuRfiInvert.Click = [this] { mnuRfiInvert_Click(); };
  f.mnuWgArcTest.Click = [this] { mnuWgArcTest_Click(); };
  f.mnuSumFltTest.Click = [this] { mnuSumFltTest_Click(); };
  f.mnuReturnLoss.Click = [this] { mnuReturnLoss_Click(); };
  f.mnuRRfOffset.Click = [this] { mnuRRfOffset_Click(); };
  f.mnuFltAlm.Click = [this] { mnuFltAlm_Click(); };
  f.mnuISense.Click = [this] { mnuISense_Click(); };
  f.mnuPsVset.Click = [this] { mnuPsVset_Click(); };
}

void ConfigSwitches::ToggleCfgBit(ui::MenuItem& entry, int bit, bool setWhenChecked) {
  if (!RemoteGuard(p_)) return;
  int16_t& flags = p_.unit.gUnitCfgFlags;
  if (flags < 0) return;
  const bool set = entry.Checked() == setWhenChecked;
  flags = static_cast<int16_t>(set ? flags | bit : flags & ~bit);
  p_.comms.ExchangeCommand(CmdUnitCfgWord(flags), false);
  entry.SetChecked(!entry.Checked());
}

void ConfigSwitches::mnuRack_Click() { ToggleCfgBit(p_.frm.mnuRack, kCfgRack, true); }

void ConfigSwitches::mnu2ndUmbilical_Click() {
  ToggleCfgBit(p_.frm.mnu2ndUmbilical, kCfgSecondUmbilical, false);
}

void ConfigSwitches::mnuAutoClrBUC_Click() {
  ToggleCfgBit(p_.frm.mnuAutoClrBUC, kCfgAutoClrBUC, false);
}

void ConfigSwitches::mnuLEDMode_Click() {
  if (!RemoteGuard(p_)) return;
  ui::MenuItem& entry = p_.frm.mnuLEDMode;
  const bool disable = !entry.Checked();
  entry.SetChecked(disable);
  p_.comms.ExchangeCommand(disable ? kCmdStatusLedDisabled : kCmdStatusLedEnabled, false);
}

void ConfigSwitches::mnuRfiInvert_Click() {
  if (!RemoteGuard(p_)) return;
  ui::MenuItem& entry = p_.frm.mnuRfiInvert;
  entry.SetChecked(!entry.Checked());
  p_.comms.ExchangeCommand(
      entry.Checked() ? kCmdRfInhibitPolarityInverted : kCmdRfInhibitPolarityNormal, false);
}

void ConfigSwitches::mnuWgArcTest_Click() { p_.comms.ExchangeCommand(kCmdArcTest, false); }

void ConfigSwitches::mnuSumFltTest_Click() {
  p_.comms.ExchangeCommand(kCmdSummaryFaultTest, false);
}

void ConfigSwitches::mnuReturnLoss_Click() {
  if (!RemoteGuard(p_)) return;
  float& level = p_.values.gReturnLoss;
  if (level < 0) {
    p_.dialogs.MsgBox("Feature Not Supported by Unit", MsgButtons::OK, MsgIcon::None,
                      "Return Loss");
    return;
  }
  ModalPause pause(p_, false);
  const std::optional<std::string> answer = p_.dialogs.InputBox(
      CurrentValuePrompt("Enter New Return Loss Value (dB)", level), "Return Loss Level (dB)", "");
  if (!answer || answer->empty() || !IsNumeric(*answer)) return;
  const double value = Val(*answer);
  p_.comms.ExchangeCommand(CmdReturnLoss(value), false);
  level = static_cast<float>(value);
}

void ConfigSwitches::mnuRRfOffset_Click() {
  ModalPause pause(p_, false);
  if (!RemoteGuard(p_)) return;
  float& offset = p_.values.gRevRFOffset;
  if (offset < kNoRevRFOffset) {
    p_.dialogs.MsgBox("Feature Not Supported by Unit", MsgButtons::OK, MsgIcon::None,
                      "Reverse RF Offset");
    return;
  }
  const std::optional<std::string> answer = p_.dialogs.InputBox(
      CurrentValuePrompt("Enter New Offset Value", offset), "Reverse RF Power Offset", "");
  if (!answer || answer->empty() || !IsNumeric(*answer)) return;
  const double value = Val(*answer);
  p_.comms.ExchangeCommand(CmdRevRFOffset(value), false);
  offset = static_cast<float>(value);
}

// These entries keep their place in the menu without a dialog behind them;
// the poll still pauses and resumes, as it does for any dialog.
void ConfigSwitches::mnuFltAlm_Click() { ModalPause pause(p_, true); }
void ConfigSwitches::mnuISense_Click() { ModalPause pause(p_, false); }
void ConfigSwitches::mnuPsVset_Click() { ModalPause pause(p_, false); }

}  // namespace amp
