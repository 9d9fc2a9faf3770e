// Connecting: the one button that shows the state of the session, the
// search menus, single-address polling and the TCP target menus.
#include "app/amp_desk.h"
#include "app/module1.h"
#include "basic/numbers.h"
#include "basic/text.h"
#include "commands/identity_cmds.h"
#include "control/dialog_hold.h"

namespace amp {

void AmpDesk::ShowSession(SessionPhase phase) {
  comms.session.phase = phase;
  switch (phase) {
    case SessionPhase::Idle:
      frmMain.btnConnect.SetCaption("Connect");
      break;
    case SessionPhase::Searching:
      frmMain.btnConnect.SetCaption("Terminate");
      break;
    case SessionPhase::Up:
      frmMain.btnConnect.SetCaption("Disconnect");
      break;
  }
}

void AmpDesk::btnConnect_Click() {
  gAdvancedSearch = false;
  gExtendedSearch = false;
  switch (comms.session.phase) {
    case SessionPhase::Searching:
      gTerminateSearch = true;
      break;
    case SessionPhase::Idle:
      Connect();
      break;
    case SessionPhase::Up:
      Disconnect();
      break;
  }
}

void AmpDesk::mnuConnect_Click() { Connect(); }

void AmpDesk::mnuExtSrch_Click() {
  gExtendedSearch = true;
  gAdvancedSearch = false;
  Connect();
}

void AmpDesk::mnuAdvSrch_Click() {
  gAdvancedSearch = true;
  gExtendedSearch = false;
  Connect();
}

void AmpDesk::SetSearchMenusEnabled(bool enabled) {
  frmMain.mnuConnect.SetEnabled(enabled);
  frmMain.mnuAdvSrch.SetEnabled(enabled);
  frmMain.mnuExtSrch.SetEnabled(enabled);
}

void AmpDesk::Disconnect() {
  frmMain.Timer1.SetTimerEnabled(false);
  ClearForm();
  DisableForm();
  ShowSession(SessionPhase::Idle);
  frmMain.mnuConnect.SetEnabled(true);
  if (comms.gUseEnet) {
    CloseConnection(comms);
  } else if (!frmMain.mnuPollEn.Checked()) {
    frmMain.mnuExtSrch.SetEnabled(true);
    frmMain.mnuAdvSrch.SetEnabled(true);
  }
}

void AmpDesk::Connect() {
  const SessionPhase keptPhase = comms.session.phase;
  SetSearchMenusEnabled(false);
  if (comms.gUseEnet) {
    ConnectTcp();
    return;
  }
  bool found = false;
  if (frmMain.mnuPollEn.Checked()) {
    found = PollSingleAddress();
    gAdvancedSearch = false;
    gExtendedSearch = false;
  } else {
    found = UnitFoundOnSerialPort();
  }
  if (unloaded_) return;  // the program closed while the line was tried
  if (found) {
    StartSerialSession();
  } else {
    SearchFailed(keptPhase);
  }
}

// The socket's connect event runs the first read from the timer's handler
// (Comms::sckTcp_Connect); here only the connection itself is made.
void AmpDesk::ConnectTcp() {
  frmMain.btnConnect.SetEnabled(false);
  if (!OpenConnection(comms)) {
    host_.dialogs.MsgBox("Unable to Connect to Unit", MsgButtons::OK, MsgIcon::Exclamation,
                         "Ethernet Communication Error");
    CloseConnection(comms);
    frmMain.mnuConnect.SetEnabled(true);
  }
  frmMain.btnConnect.SetEnabled(true);
  gAdvancedSearch = false;
  gExtendedSearch = false;
}

void AmpDesk::StartSerialSession() {
  FirstTimeRead();
  if (unloaded_) return;  // closed during the first read: no session to start
  ShowSession(SessionPhase::Up);
  comms.session.PollAnswered();
  frmMain.mnuAtnCal.SetEnabled(true);
  EnableForm();
  if (IsTxOn()) {
    EnableConstPwrInput();
  } else {
    DisableConstPwrInput();
  }
  host_.pump.Refresh();  // the filled panel shows before the first poll
  frmMain.Timer1.SetTimerEnabled(true);
}

void AmpDesk::SearchFailed(SessionPhase keptPhase) {
  host_.dialogs.MsgBox("Unit Not Found", MsgButtons::OK, MsgIcon::None, "Connect");
  ShowSession(keptPhase);
  SetSearchMenusEnabled(true);
}

bool AmpDesk::PollSingleAddress() {
  comms.Link.SetDeviceAddress(Chr(gPollAddress));
  return ReadUnitIDWord(comms) >= 0;
}

SearchContext AmpDesk::MakeSearchContext() {
  return SearchContext{comms, [this] { return ReadUnitIDWord(comms); },
                       [this](const std::string& text) { display.DisplayStatusMsg(text); },
                       gTerminateSearch};
}

bool AmpDesk::UnitFoundOnSerialPort() {
  // The session stays "Searching" during the first read after a find; a
  // press there must not cancel the next search before it starts.
  gTerminateSearch = false;
  ShowSession(SessionPhase::Searching);
  host_.pump.Refresh();  // the button must read "Terminate" before the first probe blocks
  const auto [first, last] = SearchAddressRange(gExtendedSearch, gAdvancedSearch);
  SearchContext search = MakeSearchContext();
  settingsBeforeSearch_ = comms.Link.CommSettings();
  const bool found = amp::UnitFoundOnSerialPort(search, gSearchSettings, first, last);
  settingsBeforeSearch_.reset();
  return found;
}

// ------------------------------------------------------------ Poll menus

void AmpDesk::ShowPollAddressCaption() {
  frmMain.mnuPollAdrs.SetCaption("Poll Address " + Chr(gPollAddress));
}

void AmpDesk::mnuPollAdrs_Click() {
  const auto answer =
      host_.dialogs.InputBox("Enter Unit Address (A-Z)", "Unit Address", Chr(gPollAddress));
  if (!answer || answer->empty()) return;
  const int code = Asc(*answer);
  if (answer->size() > 1 || code < 63 || code > 90) {
    host_.dialogs.MsgBox("Address Error", MsgButtons::OK, MsgIcon::None, kAppTitle);
    return;
  }
  gPollAddress = static_cast<int16_t>(code);
  ShowPollAddressCaption();
}

void AmpDesk::mnuPollEn_Click() {
  const bool on = !frmMain.mnuPollEn.Checked();
  frmMain.mnuPollEn.SetChecked(on);
  frmMain.mnuAdvSrch.SetEnabled(!on);
}

// ------------------------------------------------------------- TCP menus

void AmpDesk::ShowTcpCaptions() {
  frmMain.mnuEnterIP.SetCaption("IP Address:    " + host_.sckTcp.RemoteHost());
  frmMain.mnuEthPort.SetCaption("Ethernet Port: " + std::to_string(host_.sckTcp.RemotePort()));
}

void AmpDesk::mnuUseEnet_Click() {
  comms.gUseEnet = !frmMain.mnuUseEnet.Checked();
  frmMain.mnuUseEnet.SetChecked(comms.gUseEnet);
  if (comms.gUseEnet) {
    frmMain.mnuAdvSrch.SetEnabled(false);
  } else if (comms.session.phase == SessionPhase::Idle) {
    frmMain.mnuAdvSrch.SetEnabled(true);
  }
}

void AmpDesk::mnuEnterIP_Click() {
  const auto answer = host_.dialogs.InputBox("Enter IP Address (xxx.xxx.xxx.xxx)", "IP Address",
                                             host_.sckTcp.RemoteHost());
  if (!answer || answer->empty()) return;
  if (!Like(*answer, "**#.**#.**#.**#") || answer->size() <= 6) {
    host_.dialogs.MsgBox("Invalid Address", MsgButtons::OK, MsgIcon::None, "Format Error");
    return;
  }
  host_.sckTcp.SetRemoteHost(*answer);
  values.gIPAddress = *answer;
  ShowTcpCaptions();
}

void AmpDesk::mnuEthPort_Click() {
  const auto answer =
      host_.dialogs.InputBox("Enter Ethernet Port Number (1-65535)", "Ethernet Port",
                             std::to_string(host_.sckTcp.RemotePort()));
  if (!answer || answer->empty()) return;
  const double value = IsNumeric(*answer) ? Val(*answer) : 0.0;
  const auto port = CLng(value);
  if (value <= 0 || value >= 65535 || !port || *port < 1) {
    host_.dialogs.MsgBox("Value out of range", MsgButtons::OK, MsgIcon::None,
                         "Ethernet Port Error");
    return;
  }
  host_.sckTcp.SetRemotePort(*port);
  values.gEthPort = *port;
  ShowTcpCaptions();
}

void AmpDesk::mnuLocateIP_Click() {
  host_.pump.Refresh();
  LocateIpControls& locate = network.locateIp;
  locate.gLocatedPort = 2000;
  locate.gLocatedIP.clear();
  {
    TimerHold hold(controls);
    host_.dialogs.ShowModal(locate.frmLocateIP);
    // Answers that come late have nobody to go to.
    if (host_.udp) host_.udp->Close();
  }
  if (locate.gLocatedIP.empty()) return;
  values.gIPAddress = locate.gLocatedIP;
  values.gEthPort = locate.gLocatedPort;
  frmMain.mnuEnterIP.SetCaption("IP Address:    " + values.gIPAddress);
  frmMain.mnuEthPort.SetCaption("Ethernet Port: " + std::to_string(values.gEthPort));
  TcpSocket& sock = host_.sckTcp;
  if (sock.State() == TcpSocket::sckConnected) {
    CloseConnection(comms);
    sock.SetRemoteHost(values.gIPAddress);
    sock.SetRemotePort(values.gEthPort);
    ClearForm();
    OpenConnection(comms);
    return;
  }
  sock.SetRemoteHost(values.gIPAddress);
  sock.SetRemotePort(values.gEthPort);
  if (frmMain.mnuUseEnet.Checked()) OpenConnection(comms);
}

void AmpDesk::mnuOpenWebpage_Click() {
  if (!Like(values.gIPAddress, "**#.**#.**#.**#")) {
    host_.dialogs.MsgBox("Invalid IP Address", MsgButtons::OK, MsgIcon::None, "IP Address Error");
    return;
  }
  if (configFiles.shell) configFiles.shell->OpenUrl("http://" + values.gIPAddress);
}

}  // namespace amp
