#include "control/transmit_controls.h"

#include "commands/transmitter_cmds.h"
#include "control/panel_rules.h"
#include "link/waits.h"

namespace amp {

void TransmitControls::Wire() {
  ui::FrmMain& f = p_.frm;
  f.chkPS.Click = [this] { chkPS_Click(); };
  f.chkRFI.Click = [this] { chkRFI_Click(); };
  f.btnFaultReset.Click = [this] { btnFaultReset_Click(); };
  f.mnuHeaterState.Click = [this] { mnuHeaterState_Click(); };
  f.mnuHtrStby.Click = [this] { mnuHtrStby_Click(); };
  f.mnuAutoHVDisable.Click = [this] { mnuAutoHVDisable_Click(); };
}

bool TransmitControls::IsTxOn() const { return p_.frm.chkPS.Value() == 1; }

bool TransmitControls::IsAutoXmitDisabled() const {
  const ui::MenuItem& m = p_.frm.mnuAutoHVDisable;
  return m.Visible() && m.Checked();
}

void TransmitControls::EnableConstPwrInput() {
  p_.frm.chkConstPwr.SetEnabled(true);
  p_.frm.txtConstLvl.SetEnabled(true);
}

void TransmitControls::DisableConstPwrInput() {
  p_.frm.chkConstPwr.SetEnabled(false);
  p_.frm.txtConstLvl.SetEnabled(false);
}

void TransmitControls::chkPS_Click() {
  ui::FrmMain& f = p_.frm;
  if (!CheckBoxGuard(p_, f.chkPS)) return;
  // A refused command leaves the box as the operator left it; the next poll
  // puts it right from the unit's summary status.
  if (f.chkPS.Value() == 1) {
    if (p_.comms.ExchangeCommand(kCmdTransmitterOn)) EnableConstPwrInput();
  } else {
    if (p_.comms.ExchangeCommand(kCmdTransmitterOff)) DisableConstPwrInput();
  }
  // The readouts that follow the transmitter settle within a second. The
  // poll stays off meanwhile so it cannot interleave with the refresh.
  PollPause pause(p_);
  LinkHost& host = p_.comms.host();
  DelaySeconds(host.pump, host.clock, 1.0);
  if (p_.unit.gIsTWTA)
    p_.display.UpdateHelixHeater();
  else
    p_.display.UpdateCurrentSense();
  p_.display.UpdateRFPower();
  // Outside any panel update on purpose: if the inhibit changed with the
  // transmitter, chkRFI's Click sends "I" or "J" once to keep them in step.
  p_.display.UpdateRFIStatus();
}

void TransmitControls::chkRFI_Click() {
  ui::FrmMain& f = p_.frm;
  if (!CheckBoxGuard(p_, f.chkRFI)) return;
  p_.comms.ExchangeCommand(f.chkRFI.Value() == 1 ? kCmdRfInhibitOn : kCmdRfInhibitOff);
}

void TransmitControls::btnFaultReset_Click() {
  // A button has no echo to guard against: code never presses it.
  if (!RemoteGuard(p_)) return;
  PollPause pause(p_);
  p_.comms.ExchangeCommand(kCmdFaultReset);
}

void TransmitControls::mnuHeaterState_Click() {
  if (!RemoteGuard(p_)) return;
  // The click re-asserts the state shown; the mark changes only with the
  // unit's own "PBH?" answer at the first read.
  ui::MenuItem& m = p_.frm.mnuHeaterState;
  if (m.Checked()) {
    p_.comms.ExchangeCommand(kCmdHeaterOn);
    m.SetChecked(true);
  } else {
    p_.comms.ExchangeCommand(kCmdHeaterOff);
    m.SetChecked(false);
  }
}

void TransmitControls::mnuHtrStby_Click() {
  if (!RemoteGuard(p_)) return;
  ui::MenuItem& m = p_.frm.mnuHtrStby;
  if (m.Checked()) {
    p_.comms.ExchangeCommand(kCmdHeaterStandbyOff);
    m.SetChecked(false);
  } else {
    p_.comms.ExchangeCommand(kCmdHeaterStandbyOn);
    m.SetChecked(true);
  }
}

void TransmitControls::mnuAutoHVDisable_Click() {
  // No remote guard: a unit in local mode refuses in silence, and the mark
  // has changed all the same. The mark means what the caption says, so the
  // digit sent is its inverse ("PBA0" disables the restore).
  ui::MenuItem& m = p_.frm.mnuAutoHVDisable;
  if (m.Checked()) {
    m.SetChecked(false);
    p_.comms.ExchangeCommand(kCmdAutoXmitRestoreEnable);
  } else {
    m.SetChecked(true);
    p_.comms.ExchangeCommand(kCmdAutoXmitRestoreDisable);
  }
}

}  // namespace amp
