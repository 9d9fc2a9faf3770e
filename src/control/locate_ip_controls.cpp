#include "control/locate_ip_controls.h"

#include "basic/numbers.h"
#include "basic/text.h"
#include "commands/discovery_reply.h"
#include "control/dialog_hold.h"

namespace amp {

namespace {

constexpr int kBackspace = 8;
constexpr int kListenRounds = 5;
constexpr int kRoundMs = 100;

// Answers to a probe sent to a loopback address come back on loopback, and
// nothing needs to listen beyond it.
std::string LocalHostFor(const std::string& target) {
  return target.rfind("127.", 0) == 0 ? "127.0.0.1" : "0.0.0.0";
}

}  // namespace

DiscoveryTarget DefaultDiscoveryTarget() {
  return {kDiscoveryBroadcast, kDiscoveryLocalPort, kDiscoveryRemotePort};
}

LocateIpControls::LocateIpControls(PanelContext& p) : p_(p) {}

void LocateIpControls::Wire() {
  ui::FrmLocateIP& f = frmLocateIP;
  f.Load = [this] { frmLocateIP_Load(); };
  f.QueryUnload = [this] { frmLocateIP.Unload(); };
  f.btnClose.Click = [this] { frmLocateIP.Unload(); };
  f.btnSearch.Click = [this] { btnSearch_Click(); };
  f.lstIPAdrs.Click = [this] { lstIPAdrs_Click(); };
  f.txtPortNum.KeyPress = [this](int& key) { txtPortNum_KeyPress(key); };
}

void LocateIpControls::frmLocateIP_Load() {
  {
    PanelUpdateHold hold(p_);
    frmLocateIP.lstIPAdrs.Clear();
    frmLocateIP.txtPortNum.SetText(std::to_string(gLocatedPort));
  }
  if (udpSock) {
    UdpSocket::Events events;
    events.DataArrival = [this](long n) { udpSock_DataArrival(n); };
    events.Error = [this](int number, const std::string& d) { udpSock_Error(number, d); };
    udpSock->SetEvents(std::move(events));
    udpSock->Bind(LocalHostFor(target.address), target.localPort);
  }
  // The first search runs as soon as the dialog is open, with the button
  // held off meanwhile.
  frmLocateIP.btnSearch.SetEnabled(false);
  Search();
  frmLocateIP.btnSearch.SetEnabled(true);
}

void LocateIpControls::btnSearch_Click() {
  frmLocateIP.btnSearch.SetEnabled(false);
  frmLocateIP.lstIPAdrs.Clear();
  Search();
  frmLocateIP.btnSearch.SetEnabled(true);
}

void LocateIpControls::Search() {
  mFoundUnits.fill({});
  mFoundCount = 0;
  if (udpSock) {
    udpSock->SetRemoteHost(target.address);
    udpSock->SetRemotePort(target.remotePort);
    udpSock->SendData(DiscoveryProbe());
  }
  EventPump& pump = p_.comms.host().pump;
  Clock& clock = p_.comms.host().clock;
  for (int round = 0; round < kListenRounds; ++round) {
    // A full 100 ms each round, however many answers come meanwhile.
    const int64_t end = clock.NowMs() + kRoundMs;
    for (int64_t now = clock.NowMs(); now < end; now = clock.NowMs())
      pump.WaitForEvents(static_cast<int>(end - now));
    pump.DoEvents();
    if (mFoundCount >= kEnough) break;
  }
  ListResults();
}

void LocateIpControls::udpSock_DataArrival(long /*bytesTotal*/) {
  if (!udpSock) return;
  const std::string data = udpSock->GetData();
  // A flood past the last record is not read into anything.
  if (mFoundCount >= kRecords - 1) return;
  FoundUnit& record = mFoundUnits[static_cast<size_t>(mFoundCount)];
  record.address = udpSock->RemoteHostIP();
  // A refused answer leaves its sender's address behind; the next answer
  // overwrites it.
  if (const auto description = ParseDiscoveryReply(data)) {
    record.description = *description;
    ++mFoundCount;
  }
}

void LocateIpControls::udpSock_Error(int number, const std::string& description) {
  p_.dialogs.MsgBox("UDP Error No: " + std::to_string(number) + "\r\nDescr: " + description,
                    MsgButtons::OK, MsgIcon::Exclamation, "Network Error");
}

void LocateIpControls::ListResults() {
  ui::ListBox& list = frmLocateIP.lstIPAdrs;
  for (const FoundUnit& unit : mFoundUnits)
    if (!unit.address.empty()) list.AddItem(FoundUnitLine(unit.address, unit.description));
  list.AddItem("Search Complete");
}

void LocateIpControls::lstIPAdrs_Click() {
  ui::ListBox& list = frmLocateIP.lstIPAdrs;
  if (list.ListIndex() < 0) return;  // the selection went, nothing was chosen
  const std::string line = list.Text();
  const std::string first = line.substr(0, line.find(' '));
  if (Like(first, "**#.**#.**#.**#")) {
    gLocatedIP = Trim(first);
    const double port = Val(frmLocateIP.txtPortNum.Text());
    if (port > 0 && port != gLocatedPort) gLocatedPort = CLng(port).value_or(gLocatedPort);
    frmLocateIP.Unload();
    return;
  }
  gLocatedIP.clear();
  p_.dialogs.MsgBox("Invalid Entry", MsgButtons::OK, MsgIcon::None, "ID Entry Error");
}

void LocateIpControls::txtPortNum_KeyPress(int& key) {
  if (key != kBackspace && (key < '0' || key > '9')) key = 0;
}

}  // namespace amp
