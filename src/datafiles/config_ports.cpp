// Configuration file sections for the hour counters, the serial ports and
// Ethernet, the status LED, and the factory settings that close the file:
// analog scalers, digital pots, the float supply and the product id.
#include "basic/text.h"
#include "commands/identity_cmds.h"
#include "commands/port_network_cmds.h"
#include "commands/upconverter_cmds.h"
#include "datafiles/config_writers.h"

namespace amp::cfg {

namespace {

void PortLines(FileIO& f, int32_t baud, const std::string& parity, int data, int stop) {
  f.AddToFile("#  baud:   " + std::to_string(baud));
  f.AddToFile("#  Parity: " + parity);
  f.AddToFile("#  Data:   " + std::to_string(data));
  f.AddToFile("#  Stop:   " + std::to_string(stop));
}

}  // namespace

void SaveUnitHours(ConfigContext& c, FileIO& f) {
  f.AddToFile("#Hours timers: ");
  const std::string& ps = c.frm.txtPSHours.Text();
  const std::string& xmit = c.frm.txtXmtHours.Text();
  if (TWTA(c)) {
    f.AddToFile("#  Heater: " + ps);
    f.AddToFile("#  Beam:   " + xmit);
  } else {
    f.AddToFile("#  Power Supply: " + ps);
    f.AddToFile("#  Transmitter:  " + xmit);
  }
}

void SaveSerialPortParameters(ConfigContext& c, FileIO& f) {
  // Commented: replaying a port setting could cut the line the file is
  // being replayed over.
  const SessionValues& v = c.values;
  f.AddToFile("#COM1 (RS232): ");
  PortLines(f, v.gCom1Baud, v.gCom1Parity, v.gCom1Data, v.gCom1Stop);
  f.AddToFile("#" + CmdSerialPort(1, v.gCom1Baud, v.gCom1Parity, v.gCom1Data, v.gCom1Stop));
  f.AddToFile("#");
  f.AddToFile("#COM2 (RS485): ");
  PortLines(f, v.gCom2Baud, v.gCom2Parity, v.gCom2Data, v.gCom2Stop);
  const std::string wire = std::to_string(v.gCom2Wire);
  f.AddToFile("#  Wire:   " + wire);
  f.AddToFile("#  Term:   " + v.gCom2Term);
  f.AddToFile("#  Addr:   " + v.gCom2Address);
  f.AddToFile("#" + CmdSerialPort(2, v.gCom2Baud, v.gCom2Parity, v.gCom2Data, v.gCom2Stop));
  f.AddToFile("#" + CmdRS485(wire, v.gCom2Term, v.gCom2Address));
}

void SaveEnetParameters(ConfigContext& c, FileIO& f) {
  // Asked afresh: the session's address is the one the host dialled, which
  // over a forwarded or local link is not the unit's own.
  const std::string ip = ReadIPAddress(c.comms);
  if (Len(ip) < 7) {
    f.AddToFile("#No Ethernet");
    return;
  }
  const SessionValues& v = c.values;
  f.AddToFile(std::string("#Ethernet Mode: ") + (v.gDhcpOn ? "DHCP" : "Static IP"));
  f.AddToFile("#" + CmdDhcpMode(v.gDhcpOn));
  if (!v.gDhcpOn) {
    f.AddToFile("#Static IP Address: " + ip);
    f.AddToFile(CmdIPAddress(ip));
    f.AddToFile("#Net Mask: " + v.gNetMask);
    f.AddToFile(CmdNetMask(v.gNetMask));
    f.AddToFile("#Gateway (Router) IP Address: " + v.gGateway);
    f.AddToFile(CmdRouterAddress(v.gGateway));
  }
  f.AddToFile("#Ethernet Port No.: " + std::to_string(v.gEthPort));
}

void SaveLEDMode(ConfigContext& c, FileIO& f) {
  const bool off = c.frm.mnuLEDMode.Checked();
  f.AddToFile(off ? "#Status LED Mode: Disabled" : "#Status LED Mode: Enabled");
  f.AddToFile(std::string(off ? kCmdStatusLedDisabled : kCmdStatusLedEnabled));
}

void SaveADCScalers(ConfigContext& c, FileIO& f) {
  struct Scaler {
    int n;
    const char* tube;   // null: not on tube units
    const char* other;  // null: tube units only
  };
  static constexpr Scaler kScalers[] = {
      {0, "#Helix Voltage Scaler: ", nullptr},
      {1, "#Helix Current Scaler: ", "#Input Drive Scaler: "},
      {2, "#Cathode Current Scaler: ", nullptr},
      {3, "#Heater Voltage Scaler: ", "#Fan 1 Tach Scaler: "},
      {4, "#Heater Current Scaler: ", "#Power Supply Temperature Scaler: "},
      {5, "#TWT Temperature Scaler: ", "#Baseplate Temperature Scaler: "},
      {8, "#UPC Beacon Voltage Scaler: ", "#Fan 2 Tach Scaler: "},
      {9, "#Battery Sense Voltage Scaler: ", nullptr},
      {10, "#Inlet Temperature Scaler: ", "#Inlet Temperature Scaler: "},
  };
  f.AddToFile("#");
  f.AddToFile("#Analog Scalers");
  f.AddToFile("#");
  for (const Scaler& s : kScalers) {
    const char* label = TWTA(c) ? s.tube : s.other;
    if (label == nullptr) continue;
    const int32_t value = c.values.gAdcScalers[s.n];
    f.AddToFile(label + std::to_string(value));
    f.AddToFile(CmdAdcScaler(s.n, value));
  }
}

void SaveDigitalPots(ConfigContext& c, FileIO& f) {
  const int16_t vswr = ReadDigitalPot(c.comms, 1);
  const float overdrive = ReadOverdriveTripLevel(c.comms);
  const int16_t sensitivity = ReadDigitalPot(c.comms, 4);
  const int16_t alarm = ReadDigitalPot(c.comms, 5);
  const int16_t vtune = ReadDigitalPot(c.comms, 6);
  f.AddToFile("#");
  f.AddToFile("#Digital Pots");
  f.AddToFile("#");
  f.AddToFile("#Fast VSWR Digial Pot:" + Str(vswr) + " counts");
  f.AddToFile(CmdDigitalPot(1, vswr));
  f.AddToFile("#Overdrive Fault Trip Level: " + Format(overdrive, "#0.0") + " dB");
  f.AddToFile(CmdOverdriveTripLevel(overdrive));
  f.AddToFile("#Overdrive Sensitivity:" + Str(sensitivity) + " counts");
  f.AddToFile(CmdDigitalPot(4, sensitivity));
  f.AddToFile("#Overdrive Alarm Limit:" + Str(alarm) + " counts");
  f.AddToFile(CmdDigitalPot(5, alarm));
  f.AddToFile("#VTune Level:" + Str(vtune) + " counts");
  f.AddToFile(CmdDigitalPot(6, vtune));
  if (!TWTA(c)) return;
  const bool upc = c.values.gUpcAvailability == 1;
  f.AddToFile(std::string("#Uplink-Power-Control Availability:  ") + Enabled(upc));
  f.AddToFile(std::string(upc ? kCmdUpcAvailable : kCmdUpcUnavailable));
}

void SaveFloatSupplyParams(ConfigContext& c, FileIO& f) {
  // Settings are held in the read order: heater volts, focus off and on
  // (kV), heater amps.
  const auto& s = c.values.gAmcSettings;
  const double heaterV = Val(s[0]), focusOff = Val(s[1]), focusOn = Val(s[2]), heaterA = Val(s[3]);
  f.AddToFile("#");
  f.AddToFile("#Float Supply");
  f.AddToFile("#");
  f.AddToFile("#Heater Voltage Set: " + Format(heaterV, "##0.0#") + " V");
  f.AddToFile(CmdAmcHeaterVoltage(heaterV));
  f.AddToFile("#Heater Current Set: " + Format(heaterA, "##0.0#") + " A");
  f.AddToFile(CmdAmcHeaterCurrent(heaterA));
  f.AddToFile("#FE Off Voltage Set: " + Format(focusOff, "#####0.0") + " kV");
  f.AddToFile(CmdAmcFocusOffVoltage(focusOff));
  f.AddToFile("#FE On Voltage Set: " + Format(focusOn, "#####0.0") + " kV");
  f.AddToFile(CmdAmcFocusOnVoltage(focusOn));
}

void SaveProductID(ConfigContext& c, FileIO& f) {
  const ProductID& p = c.values.gProductID;
  f.AddToFile("#Product ID");
  f.AddToFile("#  PID Part Number:   " + p.partNumber);
  f.AddToFile("#  PID Mfg ID:        " + p.manufacturerID);
  f.AddToFile("#  PID Serial Number: " + p.serialNumber);
  f.AddToFile("#  PID Functional ID: " + p.functionalID);
  f.AddToFile("#PBO" + p.partNumber + ";" + p.manufacturerID + ";" + p.serialNumber + ";" +
              p.functionalID);
}

}  // namespace amp::cfg
