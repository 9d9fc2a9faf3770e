#include "commands/port_network_cmds.h"

#include <vector>

#include "basic/numbers.h"
#include "basic/text.h"
#include "commands/reader_support.h"

namespace amp {
namespace {

// "PEI?", "PEN?", "PER?": a dotted address after the two-letter tail. Each
// of the first four parts goes through Val, so padded parts lose their
// leading zeros and a part that is not a number becomes 0.
std::string ReadDotted(Comms& c, std::string_view request, std::string_view tail) {
  std::string rx, text;
  if (!rd::Exchange(c, request, rx)) return "";
  const long p = InStr(rx, tail);
  if (!(Len(rx) > 4 && p > 1)) return "";
  if (!rd::TextToEtx(rx, p + 2, &text)) return "";
  const std::vector<std::string> parts = rd::Split(text, '.');
  if (parts.size() < 4) return "";
  return Format(Val(parts[0]), "##0") + "." + Format(Val(parts[1]), "##0") + "." +
         Format(Val(parts[2]), "##0") + "." + Format(Val(parts[3]), "##0");
}

// "QlldpFactorySetup?" / "QlldpSetupConfig?": the fields follow the last
// letters of the echo and its blank.
std::string ReadLldpText(Comms& c, std::string_view request, std::string_view tail, long minLen) {
  std::string rx, text;
  if (!rd::Exchange(c, request, rx)) return "";
  const long p = InStr(rx, tail);
  if (!(Len(rx) > minLen && p > 1)) return "";
  if (!rd::TextToEtx(rx, p + 3, &text)) return "";
  return text;
}

// "N?" / "NP?": one digit right behind an echo that starts the body.
int16_t ReadPowerSave(Comms& c, std::string_view request, std::string_view tail) {
  std::string rx;
  if (!rd::Exchange(c, request, rx)) return -1;
  if (InStr(rx, tail) != 3) return -1;
  return ToInt16(Val(Mid(rx, 3 + Len(tail), 1)));
}

}  // namespace

std::string CmdSerialPort(int port, int32_t baud, std::string_view parity, int data, int stop) {
  if (port != 1 && port != 2) return "";
  return (port == 1 ? "X1" : "X2") + Format(baud, "000000") + Left(parity, 1) +
         std::to_string(data) + std::to_string(stop);
}

std::string CmdRS485(std::string_view wire, std::string_view termination,
                     std::string_view address) {
  return "XR" + std::string(wire) + std::string(termination) + std::string(address);
}
std::string CmdUnitAddress(std::string_view address) { return "XA" + std::string(address); }
std::string CmdDhcpMode(bool dhcp) { return dhcp ? "PEO1" : "PEO0"; }
std::string CmdIPAddress(std::string_view dotted) { return "PEI" + std::string(dotted); }
std::string CmdNetMask(std::string_view dotted) { return "PEN" + std::string(dotted); }
std::string CmdRouterAddress(std::string_view dotted) { return "PER" + std::string(dotted); }

std::string DottedOctets(const std::array<int16_t, 4>& octets) {
  return std::to_string(octets[0]) + "." + std::to_string(octets[1]) + "." +
         std::to_string(octets[2]) + "." + std::to_string(octets[3]);
}

std::string CmdEnetPort(int32_t port) { return "PEP" + std::to_string(port); }

std::string CmdLldpUser(bool enabled, int32_t txTimer, int32_t holdtime, int32_t reinitDelay,
                        std::string_view hostname) {
  return "QlldpSetupConfig " + std::string(enabled ? "1" : "0") + ";" + std::to_string(txTimer) +
         ";" + std::to_string(holdtime) + ";" + std::to_string(reinitDelay) + ";" +
         std::string(hostname);
}

std::string CmdLldpFactory(int32_t med, std::string_view hwRev, std::string_view uuid) {
  return "QlldpFactorySetup " + std::to_string(med) + ";" + std::string(hwRev) + ";" +
         std::string(uuid);
}

std::string CmdPowerSaveMode(int mode) { return "N" + std::to_string(mode); }
std::string CmdPowerSaveDelay(int delay) { return "NP" + std::to_string(delay); }

// "X1?" / "X2?": the reply is read only when its body starts with "X"; the
// fields then stand at fixed places from 5 on.
bool ReadSerialPortCfg(Comms& c, int k) {
  if (k != 1 && k != 2) return false;
  c.Link.Clear();
  std::string rx;
  if (!rd::Exchange(c, k == 1 ? "X1?" : "X2?", rx)) return false;
  const long pos = Mid(rx, 3, 1) == "X" ? 5 : 0;
  if (!(Len(rx) > 10 && pos > 2)) return false;
  c.gRespFields[0] = Mid(rx, pos, 6);
  c.gRespFields[1] = Mid(rx, pos + 6, 1);
  c.gRespFields[2] = Mid(rx, pos + 7, 1);
  c.gRespFields[3] = Mid(rx, pos + 8, 1);
  return true;
}

// "XR?": with the echo "XR" at the body start the three characters stand at
// 5; without it they are taken from 4.
bool ReadRS485Cfg(Comms& c) {
  for (size_t i = 0; i < 3; ++i) c.gRespFields[i].clear();
  std::string rx;
  if (!rd::Exchange(c, "XR?", rx)) return false;
  const long pos = Mid(rx, 3, 2) == "XR" ? 5 : 4;
  if (!(Len(rx) > 4)) return false;
  c.gRespFields[0] = Mid(rx, pos, 1);
  c.gRespFields[1] = Mid(rx, pos + 1, 1);
  c.gRespFields[2] = Mid(rx, pos + 2, 1);
  return true;
}

std::string ReadIPAddress(Comms& c) { return ReadDotted(c, "PEI?", "EI"); }
std::string ReadNetMask(Comms& c) { return ReadDotted(c, "PEN?", "EN"); }
std::string ReadRouterAddress(Comms& c) { return ReadDotted(c, "PER?", "ER"); }

std::string ReadMACAddress(Comms& c) {
  std::string rx, text;
  if (!rd::Exchange(c, "PEM?", rx)) return "";
  const long p = InStr(rx, "EM");
  if (!(Len(rx) > 17 && p > 3)) return "";
  if (!rd::TextToEtx(rx, p + 2, &text)) return "";
  return text;
}

// "PEP?": a port the unit cannot mean falls back to the default 2000.
int32_t ReadEnetPort(Comms& c) {
  int32_t result = 0;
  std::string rx;
  if (!rd::Exchange(c, "PEP?", rx)) return result;
  const long p = InStr(rx, "EP");
  if (!(Len(rx) > 6 && p > 3)) return result;
  Guarded([&] {
    const int32_t port = ToInt32(Val(rd::OpenEnd(rx, p + 2)));
    result = (port >= 1 && port <= 65535) ? port : 2000;
  });
  return result;
}

// "PEO?": one digit after the tail, which must be wholly a number.
bool ReadDHCPMode(Comms& c) {
  bool result = false;
  std::string rx;
  if (!rd::Exchange(c, "PEO?", rx)) return result;
  const long data = InStr(rx, "EO") + 2;
  if (!(Len(rx) > 4 && data > 2)) return result;
  Guarded([&] { result = TextToInt16(Mid(rx, data, 1)) != 0; });
  return result;
}

std::string ReadLldpFactory(Comms& c) { return ReadLldpText(c, "QlldpFactorySetup?", "up ", 24); }
std::string ReadLldpUser(Comms& c) { return ReadLldpText(c, "QlldpSetupConfig?", "ig ", 30); }

void ParseLldpFactory(std::string_view text, LldpFactoryParams& p) {
  if (text.empty()) return;
  const std::vector<std::string> f = rd::Split(text, ';');
  if (f.size() != 3) return;
  Guarded([&] { p.gLldpMED = ToInt32(Val(f[0])); });
  p.gLldpHWRev = f[1];
  p.gLldpUUID = f[2];
}

void ParseLldpUser(std::string_view text, LldpUserParams& p) {
  const std::vector<std::string> f = rd::Split(text, ';');
  if (f.size() != 5) return;
  const double enabled = Val(f[0]);
  if (enabled == 1)
    p.gLldpEnabled = true;
  else if (enabled == 0)
    p.gLldpEnabled = false;
  const double txTimer = Val(f[1]);
  if (txTimer >= 5 && txTimer < 65535) p.gLldpTxTimer = ToInt32(txTimer);
  const double holdtime = Val(f[2]);
  if (holdtime >= 0 && holdtime <= 65535) p.gLldpHoldtime = ToInt32(holdtime);
  const double reinit = Val(f[3]);
  if (reinit >= 2 && reinit <= 5) p.gLldpReinitDelay = ToInt32(reinit);
  p.gLldpHostname = f[4];
}

int16_t ReadPowerSaveMode(Comms& c) { return ReadPowerSave(c, "N?", "N"); }
int16_t ReadPowerSaveDelay(Comms& c) { return ReadPowerSave(c, "NP?", "NP"); }

}  // namespace amp
