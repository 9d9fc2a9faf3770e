#include "cli/cli_session.h"

#include "basic/text.h"
#include "qt/qt_com_slots.h"

namespace amp::cli {

void StatusPanel::FirstTimeRead() {
  // The full first read fits the panel to the unit; what the poll needs of
  // it now is whether the unit knows the four-character alarm word.
  if (!comms) return;
  comms->gOneCharAlarm = !comms->ExchangeCommand("?(");
  comms->gFirstReadDone = true;
}

CliSession::CliSession(ConsoleDialogs& dialogs)
    : dialogs_(dialogs),
      slots_(DefaultComSlots()),
      comms_(LinkHost{sock_, timer_, pump_, clock_, dialogs_}, panel_) {
  panel_.comms = &comms_;
  // Start-up values of the link for the whole run: replies are not
  // address-checked and the serial time-out is 2 s.
  comms_.Link.SetCommControl(&port_);
  comms_.Link.SetCheckAddress(false);
  comms_.Link.SetMsgTimeout(2.0f);
  comms_.Link.SetDeviceAddress("A");
}

bool CliSession::OpenTrace(const std::string& path, std::string* error) {
  if (!trace_.Open(path, error)) return false;
  comms_.Link.trace = [this](char d, std::string_view bytes) { trace_.Write(d, bytes); };
  return true;
}

bool CliSession::Connect(const Target& target) {
  return target.tcpHost.empty() ? ConnectSerial(target) : ConnectTcp(target);
}

bool CliSession::ConnectTcp(const Target& target) {
  comms_.gUseEnet = true;
  sock_.Close();
  sock_.SetRemoteHost(target.tcpHost);
  sock_.SetRemotePort(target.tcpPort);
  sock_.Connect();
  // One second for the connection; the connect event then runs the first read.
  for (int i = 0; i < 20 && sock_.State() != TcpSocket::sckConnected; ++i) {
    for (int k = 0; k < 3; ++k) {
      pump_.Sleep(20);
      pump_.DoEvents();
    }
  }
  if (sock_.State() != TcpSocket::sckConnected) {
    dialogs_.MsgBox("Unable to Connect to Unit", MsgButtons::OK, MsgIcon::Exclamation,
                    "Ethernet Communication Error");
    sock_.Close();
    return false;
  }
  // The connect event may still be queued: let it run the first read.
  for (int i = 0; i < 200 && !comms_.gFirstReadDone && sock_.State() == TcpSocket::sckConnected; ++i)
    pump_.WaitForEvents(50);
  return comms_.gFirstReadDone;
}

int CliSession::ReadUnitIDWord() {
  if (!comms_.ExchangeCommand("1")) return -1;
  const std::string& msg = comms_.Link.RxMessage;
  const long p = InStr(msg, "1");
  if (p == 0 || Len(msg) < p + 2) return -1;
  return (Asc(Mid(msg, p + 1, 1)) & 63) * 256 | (Asc(Mid(msg, p + 2, 1)) & 63);
}

bool CliSession::ConnectSerial(const Target& target) {
  comms_.gUseEnet = false;
  int slot = 1;
  if (target.device.size() >= 4 && target.device.rfind("COM", 0) == 0) {
    slot = std::atoi(target.device.c_str() + 3);
  } else {
    slots_.Bind(slot, target.device);
  }
  comms_.Link.SetCommSettings(target.settings);
  comms_.Link.SetDeviceAddress(target.address);
  if (!comms_.Link.SetPortNumber(static_cast<int16_t>(slot))) {
    dialogs_.MsgBox(comms_.Link.ErrString(), MsgButtons::OK, MsgIcon::Exclamation, "Connect");
    return false;
  }
  comms_.Link.OpenPort(false);
  if (ReadUnitIDWord() < 0) {
    const std::string why = comms_.Link.ErrNumber() == AmpLink::PortError
                                ? comms_.Link.ErrString()
                                : "Unit Not Found";
    dialogs_.MsgBox(why, MsgButtons::OK, MsgIcon::Exclamation, "Connect");
    return false;
  }
  panel_.FirstTimeRead();
  panel_.SetConnectCaption("Disconnect");
  comms_.gMissedPolls = 2;
  timer_.SetEnabled(true);
  return true;
}

void CliSession::Disconnect() {
  timer_.SetEnabled(false);
  panel_.SetConnectCaption("Connect");
  if (comms_.gUseEnet) {
    sock_.Close();
  } else {
    comms_.Link.OpenPort(false);
  }
}

}  // namespace amp::cli
