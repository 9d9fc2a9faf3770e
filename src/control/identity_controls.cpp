#include "control/identity_controls.h"

#include <cstdio>
#include <ctime>

#include "basic/numbers.h"
#include "commands/identity_cmds.h"
#include "commands/port_network_cmds.h"
#include "commands/transmitter_cmds.h"
#include "control/panel_rules.h"
#include "link/waits.h"

namespace amp {

namespace {

constexpr int kBackspace = 8;
constexpr int kEnter = 13;

bool IsDigitKey(int k) { return k >= '0' && k <= '9'; }

DateTime HostLocalTime() {
  const std::time_t now = std::time(nullptr);
  std::tm tm{};
  localtime_r(&now, &tm);
  DateTime t;
  t.year = tm.tm_year + 1900;
  t.month = tm.tm_mon + 1;
  t.day = tm.tm_mday;
  t.hour = tm.tm_hour;
  t.minute = tm.tm_min;
  t.second = tm.tm_sec;
  return t;
}

}  // namespace

IdentityControls::IdentityControls(PanelContext& ctx) : LocalNow(HostLocalTime), p_(ctx) {}

std::string IdentityControls::ClockText(const DateTime& t) {
  char buf[40];
  std::snprintf(buf, sizeof buf, "%04d/%02d/%02d,%02d:%02d", t.year, t.month, t.day, t.hour,
                t.minute);
  return buf;
}

void IdentityControls::Wire() {
  ui::FrmMain& f = p_.frm;
  f.txtPN.KeyPress = [this](int& k) { txtPN_KeyPress(k); };
  f.txtSN.KeyPress = [this](int& k) { txtSN_KeyPress(k); };
  f.txtDateTime.KeyPress = [this](int& k) { txtDateTime_KeyPress(k); };
  f.txtDateTime.Validate = [this](bool& cancel) { txtDateTime_Validate(cancel); };
  f.txtAdr.KeyPress = [this](int& k) { txtAdr_KeyPress(k); };
  f.txtAdr.LostFocus = [this] { txtAdr_LostFocus(); };
  f.Command7.Click = [this] { Command7_Click(); };
  f.txtPSHours.KeyPress = [this](int& k) { txtPSHours_KeyPress(k); };
  f.txtXmtHours.KeyPress = [this](int& k) { txtXmtHours_KeyPress(k); };
  f.mnuClrHrs.Click = [this] { mnuClrHrs_Click(); };
  f.mnuModelCfgPN.Click = [this] { mnuModelCfgPN_Click(); };
  f.mnuOemName.Click = [this] { mnuOemName_Click(); };
  f.mnuMfgInfo.Click = [this] { mnuMfgInfo_Click(); };
}

// ------------------------------------------------------ part and serial number

void IdentityControls::SetNumber(const std::string& text,
                                 std::string (*command)(std::string_view)) {
  if (!RemoteGuard(p_)) return;
  if (text.size() > 3) {
    p_.comms.ExchangeCommand(command(text), false);
    p_.values.mEnterHandled = true;
  } else {
    p_.dialogs.MsgBox("Must have at least 4 digits", MsgButtons::OK, MsgIcon::Exclamation,
                      "Parameter Length Error");
  }
}

void IdentityControls::SetUnitPartNumber() { SetNumber(p_.frm.txtPN.Text(), CmdUnitPartNumber); }

void IdentityControls::SetUnitSerialNumber() {
  SetNumber(p_.frm.txtSN.Text(), CmdUnitSerialNumber);
}

// The identity texts come from the unit; the panel only shows them.
void IdentityControls::txtPN_KeyPress(int& KeyAscii) { KeyAscii = 0; }
void IdentityControls::txtSN_KeyPress(int& KeyAscii) { KeyAscii = 0; }

// ---------------------------------------------------------------- address

void IdentityControls::txtAdr_KeyPress(int& KeyAscii) {
  if (KeyAscii >= 'a' && KeyAscii <= 'z') KeyAscii -= 'a' - 'A';
  if (KeyAscii == kBackspace || (KeyAscii >= 'A' && KeyAscii <= 'Z')) return;
  if (KeyAscii == kEnter) SetUnitAddress();
  KeyAscii = 0;
}

void IdentityControls::txtAdr_LostFocus() {
  if (!p_.values.mEnterHandled) SetUnitAddress();
}

void IdentityControls::SetUnitAddress() {
  if (!RemoteGuard(p_)) return;
  const std::string address = p_.frm.txtAdr.Text();
  if (address.size() != 1) return;
  // A unit that reports its RS-485 wiring gets it back unchanged with the new
  // address; older units know only the address command.
  Comms& c = p_.comms;
  const std::string command = ReadRS485Cfg(c)
                                  ? CmdRS485(c.gRespFields[0], c.gRespFields[1], address)
                                  : CmdUnitAddress(address);
  c.ExchangeCommand(command, false);
  // Whether or not the unit acknowledged, the next frames go to the new
  // address: a unit that took it answers only there, and one that did not
  // shows up as a failed poll rather than silently on the old address.
  c.Link.SetDeviceAddress(address);
  p_.values.mEnterHandled = true;
}

// ---------------------------------------------------------------- clock

void IdentityControls::txtDateTime_KeyPress(int& KeyAscii) { KeyAscii = 0; }

void IdentityControls::txtDateTime_Validate(bool& Cancel) {
  const std::string& text = p_.frm.txtDateTime.Text();
  if (text.empty() || IsDate(text)) return;
  Cancel = true;
  p_.dialogs.MsgBox("Invalid Date & Time.", MsgButtons::OK, MsgIcon::Exclamation, "Data Error");
}

bool IdentityControls::ClockNeedsNoReset() const {
  return p_.values.gIsFBDCUnit || p_.unit.gProjectID == 127;
}

void IdentityControls::Command7_Click() {
  if (!RemoteGuard(p_)) return;
  // Setting the clock resets most units: with the transmitter radiating, the
  // operator confirms first. Cancel is the safe answer.
  if (p_.frm.chkPS.Value() == 1 && p_.frm.chkRFI.Value() == 0 && !ClockNeedsNoReset()) {
    const MsgResult answer =
        p_.dialogs.MsgBox("This will reset the unit and \r\ntake it offline", MsgButtons::OKCancel,
                          MsgIcon::Exclamation, "Reset Unit?", MsgDefault::Second);
    if (answer != MsgResult::OK) return;
  }
  p_.frm.txtDateTime.SetText(ClockText(LocalNow()));
  SetDateTime();
}

void IdentityControls::SetDateTime() {
  if (!RemoteGuard(p_)) return;
  const std::string text = p_.frm.txtDateTime.Text();
  if (text.empty()) return;
  Comms& c = p_.comms;
  LinkHost& host = c.host();
  ui::TimerControl& timer = p_.frm.Timer1;

  c.ExchangeCommand(CmdDateTime(text), false);
  Delay(host.pump, 100);
  if (ClockNeedsNoReset()) {
    timer.SetTimerEnabled(true);
    return;
  }
  // The others read the new clock only after a restart. The poll stays off
  // while the unit restarts; nothing probes whether it is back, so the first
  // poll after the pause may still find it busy.
  c.ExchangeCommand(kCmdUnitReset, false);
  timer.SetTimerEnabled(false);
  DelaySeconds(host.pump, host.clock, 3.0);
  // Drop whatever the unit sent while restarting so the next exchange does
  // not read it as its reply. Over the socket each exchange starts afresh,
  // and the serial port must not be opened behind the operator's back.
  if (!c.gUseEnet) c.Link.Receive();
  timer.SetTimerEnabled(true);
}

// ---------------------------------------------------------------- hours

void IdentityControls::SendHours() {
  const double supply = Val(p_.frm.txtPSHours.Text());
  const double transmit = Val(p_.frm.txtXmtHours.Text());
  p_.comms.ExchangeCommand(CmdHours(supply, transmit), false);
}

void IdentityControls::HoursKeyPress(int& KeyAscii) {
  // Refused outside remote mode; the key itself still reaches the field.
  if (!RemoteGuard(p_)) return;
  if (KeyAscii == kBackspace || IsDigitKey(KeyAscii)) return;
  if (KeyAscii == kEnter) SendHours();
  KeyAscii = 0;
}

void IdentityControls::txtPSHours_KeyPress(int& KeyAscii) { HoursKeyPress(KeyAscii); }
void IdentityControls::txtXmtHours_KeyPress(int& KeyAscii) { HoursKeyPress(KeyAscii); }

void IdentityControls::mnuClrHrs_Click() {
  if (!RemoteGuard(p_)) return;
  p_.frm.txtPSHours.SetText("0");
  p_.frm.txtXmtHours.SetText("0");
  SendHours();
}

// ---------------------------------------------------------------- menu entries

void IdentityControls::mnuModelCfgPN_Click() {
  p_.dialogs.MsgBox("Model Config Part Number and Revision: \r\n\r\n" + p_.values.gModelCfgPN,
                    MsgButtons::OK, MsgIcon::None, "Model Config File");
}

// The OEM name is kept in gOemName for the configuration file; the entry
// itself has nothing to show.
void IdentityControls::mnuOemName_Click() { RemoteGuard(p_); }

// Manufacturing information has no content yet: the entry keeps its place
// and leaves the link's time-out and the poll exactly as it found them.
void IdentityControls::mnuMfgInfo_Click() {
  AmpLink& link = p_.comms.Link;
  ui::TimerControl& timer = p_.frm.Timer1;
  const float savedTimeout = link.MsgTimeout();
  const bool savedTimer = timer.TimerEnabled();
  link.SetMsgTimeout(2.0f);
  timer.SetTimerEnabled(false);
  timer.SetTimerEnabled(savedTimer);
  link.SetMsgTimeout(savedTimeout);
}

}  // namespace amp
