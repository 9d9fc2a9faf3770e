// Port and network commands: the unit's own serial ports and RS-485
// address, Ethernet, LLDP and power save.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "link/comms.h"

namespace amp {

// Stores the Ethernet settings in the unit.
inline constexpr std::string_view kCmdSaveEnet = "PES";

// Set commands.
// "X1" (port 1, RS-232) or "X2" (port 2, RS-485) + baud "000000" + first
// letter of the parity + data bits + stop bits: "X1009600N81". Any other
// port gives "".
std::string CmdSerialPort(int port, int32_t baud, std::string_view parity, int data, int stop);
// "XR" + wire count + termination ("T" / "U") + address, each as given.
std::string CmdRS485(std::string_view wire, std::string_view termination, std::string_view address);
std::string CmdUnitAddress(std::string_view address);  // "XA" + address
std::string CmdDhcpMode(bool dhcp);                    // "PEO1" / "PEO0"
// "PEI" / "PEN" / "PER" + the dotted address.
std::string CmdIPAddress(std::string_view dotted);
std::string CmdNetMask(std::string_view dotted);
std::string CmdRouterAddress(std::string_view dotted);
// Four octets joined by "." in plain digits.
std::string DottedOctets(const std::array<int16_t, 4>& octets);
std::string CmdEnetPort(int32_t port);  // "PEP" + port
// "QlldpSetupConfig " + 1/0 + ";" + TX timer + ";" + hold time + ";" +
// reinit delay + ";" + host name.
std::string CmdLldpUser(bool enabled, int32_t txTimer, int32_t holdtime, int32_t reinitDelay,
                        std::string_view hostname);
// "QlldpFactorySetup " + MED + ";" + hardware revision + ";" + UUID.
std::string CmdLldpFactory(int32_t med, std::string_view hwRev, std::string_view uuid);
std::string CmdPowerSaveMode(int mode);    // "N" + 0 or 1
std::string CmdPowerSaveDelay(int delay);  // "NP" + value

// "X1?" (k = 1) or "X2?" (k = 2) -> "X1" + baud (6) + parity (1) + data (1)
// + stop (1), into gRespFields[0] to [3]. Any other k sends nothing.
bool ReadSerialPortCfg(Comms& c, int k);

// "XR?" -> "XR" + wire (1) + termination (1) + address (1), into
// gRespFields[0] to [2] (cleared first).
bool ReadRS485Cfg(Comms& c);

// "PEI?", "PEN?", "PER?" -> echo + dotted address. Each part is rewritten
// without padding ("010" -> "10"). "" when not read.
std::string ReadIPAddress(Comms& c);
std::string ReadNetMask(Comms& c);
std::string ReadRouterAddress(Comms& c);

// "PEM?" -> "PEM" + MAC address text. "" when not read.
std::string ReadMACAddress(Comms& c);

// "PEP?" -> "PEP" + port. A port outside 1 to 65535 gives 2000; 0 when not
// read.
int32_t ReadEnetPort(Comms& c);

// "PEO?" -> "PEO" + digit. True for DHCP.
bool ReadDHCPMode(Comms& c);

// "QlldpFactorySetup?" / "QlldpSetupConfig?" -> the echo, a blank and the
// ";"-separated fields as text. "" when not read.
std::string ReadLldpFactory(Comms& c);
std::string ReadLldpUser(Comms& c);

// The LLDP parameters as the panel keeps them.
struct LldpFactoryParams {
  int32_t gLldpMED = 0;
  std::string gLldpHWRev;
  std::string gLldpUUID;
};
struct LldpUserParams {
  bool gLldpEnabled = false;
  int32_t gLldpTxTimer = 0;
  int32_t gLldpHoldtime = 0;
  int32_t gLldpReinitDelay = 0;
  std::string gLldpHostname;
};
// "MED;revision;UUID": exactly three fields, else nothing changes.
void ParseLldpFactory(std::string_view text, LldpFactoryParams& p);
// "enable;TX timer;hold time;reinit delay;host name": exactly five fields,
// else nothing changes. Numbers outside their ranges keep the old value.
void ParseLldpUser(std::string_view text, LldpUserParams& p);

// "N?" -> "N" + digit; "NP?" -> "NP" + digit. -1 when not read. Not guarded.
int16_t ReadPowerSaveMode(Comms& c);
int16_t ReadPowerSaveDelay(Comms& c);

}  // namespace amp
