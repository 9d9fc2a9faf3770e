// The unit's own ports: power save, its two serial ports, Ethernet and LLDP.
#include <array>
#include <string>

#include "basic/numbers.h"
#include "basic/text.h"
#include "commands/port_network_cmds.h"
#include "commands/reader_support.h"
#include "display/panel_setup.h"

namespace amp {

namespace {

constexpr int32_t kDefaultEnetPort = 2000;
// A dotted address has at least 7 characters ("1.2.3.4").
constexpr long kShortestAddress = 7;

int16_t Int16Of(const std::string& text, int16_t fallback) {
  return CInt(Val(text)).value_or(fallback);
}

// Octets of a dotted text, from the left; a text that runs out of points
// stops there and leaves the later octets as they were.
void ParseOctets(const std::string& text, std::array<int16_t, 4>& octets) {
  if (text.empty()) return;
  long start = 1;
  for (size_t i = 0; i < octets.size(); ++i) {
    const long dot = i + 1 < octets.size() ? InStr(start, text, ".") : 0;
    const std::string part = dot > 0 ? Mid(text, start, dot - start) : Mid(text, start);
    octets[i] = Int16Of(part, octets[i]);
    if (i + 1 < octets.size() && dot == 0) return;
    start = dot + 1;
  }
}

// Serial port `port`'s line settings as the unit reports them; when they
// cannot be read, none is known and the parity shows "*".
void ReadComSettings(Comms& c, int port, int32_t& baud, std::string& parity, int16_t& data,
                     int16_t& stop) {
  if (ReadSerialPortCfg(c, port)) {
    const auto& r = c.gRespFields;
    baud = CLng(Val(r[0])).value_or(0);
    parity = r[1];
    data = Int16Of(r[2], 0);
    stop = Int16Of(r[3], 0);
    return;
  }
  baud = 0;
  parity = "*";
  data = 0;
  stop = 0;
}

}  // namespace

void PanelSetup::InitPowerSaveParameters() {
  v_.gPowerSaveOn = -1;
  v_.gPowerSaveLevel = -1;
  Guarded([&] { v_.gPowerSaveOn = ReadPowerSaveMode(c_); });
  Guarded([&] { v_.gPowerSaveLevel = ReadPowerSaveDelay(c_); });
  f_.mnuPowerSave.SetVisible(v_.gPowerSaveOn >= 0);
}

void PanelSetup::InitCom1Settings() {
  ReadComSettings(c_, 1, v_.gCom1Baud, v_.gCom1Parity, v_.gCom1Data, v_.gCom1Stop);
}

void PanelSetup::InitCom2Settings() {
  ReadComSettings(c_, 2, v_.gCom2Baud, v_.gCom2Parity, v_.gCom2Data, v_.gCom2Stop);
  if (ReadRS485Cfg(c_)) {
    const auto& r = c_.gRespFields;
    v_.gCom2Wire = Int16Of(r[0], 0);
    v_.gCom2Term = r[1];
    v_.gCom2Address = r[2];
    return;
  }
  // Nothing of the RS-485 line is known: the dialog shows it incomplete.
  v_.gCom2Wire = 0;
  v_.gCom2Term.clear();
  v_.gCom2Address.clear();
}

void PanelSetup::InitEnetParams() {
  TcpSocket& sock = c_.host().sckTcp;
  const std::string ip = ReadIPAddress(c_);
  if (Len(ip) >= kShortestAddress) {
    for (ui::MenuItem* m : {&f_.mnuUseEnet, &f_.mnuEnetCfg, &f_.mnuEthPort, &f_.mnuOpenWebpage})
      m->SetVisible(true);
    sock.SetRemoteHost(ip);
    v_.gIPAddress = ip;

    const std::string mask = ReadNetMask(c_);
    v_.gNetMask = Len(mask) >= kShortestAddress ? mask : "255.255.255.0";
    const std::string router = ReadRouterAddress(c_);
    v_.gGateway = Len(router) >= kShortestAddress ? router : "0";
    v_.gMACAddress = ReadMACAddress(c_);

    // The Netburner board always listens on the default port.
    int32_t port = kDefaultEnetPort;
    if (!u_.gNetburnerProcessor) {
      port = ReadEnetPort(c_);
      if (port < 1 || port > 65535) port = kDefaultEnetPort;
    }
    sock.SetRemotePort(port);
    v_.gEthPort = port;
    v_.gDhcpOn = ReadDHCPMode(c_);

    ParseEnetparams();
    if (u_.gProjectID == 139) f_.mnuOpenWebpage.SetEnabled(false);
  }
  f_.mnuEnterIP.SetCaption("IP Address:    " + sock.RemoteHost());
  f_.mnuEthPort.SetCaption("Ethernet Port: " + std::to_string(sock.RemotePort()));
}

void PanelSetup::ParseEnetparams() {
  ParseOctets(v_.gIPAddress, v_.gIPOctets);
  ParseOctets(v_.gNetMask, v_.gMaskOctets);
  ParseOctets(v_.gGateway, v_.gGatewayOctets);
}

void PanelSetup::InitLLDP() {
  // Only the block downconverter speaks LLDP.
  if (!v_.gIsFBDCUnit) return;
  const std::string factory = ReadLldpFactory(c_);
  if (!factory.empty()) ParseLldpFactory(factory, v_.gLldpFactory);
  const std::string user = ReadLldpUser(c_);
  if (!user.empty()) ParseLldpUser(user, v_.gLldpUser);
  f_.mnuLLDPCfg.SetVisible(true);
}

}  // namespace amp
