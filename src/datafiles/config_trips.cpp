// Configuration file sections for the transmitter's start-up and state, the
// RF trips and limits, temperatures, the DC input and the tube's settings.
#include "basic/text.h"
#include "commands/fault_config_cmds.h"
#include "commands/reader_support.h"
#include "commands/rf_power_cmds.h"
#include "commands/transmitter_cmds.h"
#include "commands/upconverter_cmds.h"
#include "datafiles/config_writers.h"

namespace amp::cfg {

namespace {

// One RF trip line as the panel shows it. The level field is in Watts when
// the panel displays Watts, else in dBm; the label tells dBm and the command
// carries Watts, which every firmware takes.
void TripLine(ConfigContext& c, FileIO& f, const char* label, RfTrip trip, const ui::TextBox& level,
              const ui::ComboBox& type) {
  if (level.Text().empty()) return;
  const double shown = Val(level.Text());
  const double dBm = c.panel.gDisplayWatts ? dBmFromWatts(shown) : shown;
  const double watts = c.panel.gDisplayWatts ? shown : WattsFromdBm(shown);
  const std::string& kind = type.Text();
  const TripType t = kind == "Fault"   ? TripType::Fault
                     : kind == "Alarm" ? TripType::Alarm
                                       : TripType::Disabled;
  f.AddToFile(std::string(label) + kind + " (" + Format(dBm, "#0.0") + " dBm)");
  f.AddToFile(CmdTripLevelFileLine(trip, t, watts));
}

}  // namespace

void SaveStartUpCfg(ConfigContext& c, FileIO& f) {
  switch (c.values.gStartupMode) {
    case 1:
      f.AddToFile("#Startup Config: Off");
      f.AddToFile("PX1");
      break;
    case 2:
      f.AddToFile("#Startup Config: On");
      f.AddToFile("PX2");
      break;
    default:
      f.AddToFile("#Startup Config: Normal");
      f.AddToFile("PX0");
  }
}

void SaveXmitState(ConfigContext& c, FileIO& f) {
  const bool on = c.frm.chkPS.Value() == 1;
  f.AddToFile(on ? "#Transmitter: On" : "#Transmitter: Off");
  f.AddToFile(on ? "@" : "A");
}

void SaveAutoXmitRestore(ConfigContext& c, FileIO& f) {
  const bool off = c.values.gAutoXmitDisabled;
  f.AddToFile(off ? "#Xmit Restore: Disabled" : "#Xmit Restore: Enabled");
  f.AddToFile(off ? "PBA1" : "PBA0");
}

void SaveRFInhibitState(ConfigContext& c, FileIO& f) {
  const bool on = c.frm.chkRFI.Value() == 1;
  f.AddToFile(on ? "#RF Inhibit: On" : "#RF Inhibit: Off");
  f.AddToFile(on ? "I" : "J");
}

void SaveRFPolarity(ConfigContext& c, FileIO& f) {
  const bool inverted = c.frm.mnuRfiInvert.Checked();
  f.AddToFile(inverted ? "#RF Inhibit Polarity: Inverted" : "#RF Inhibit Polarity: Normal");
  f.AddToFile(inverted ? "PTI0" : "PTI1");
}

void SaveConstantPower(ConfigContext& c, FileIO& f) {
  // The level is kept for the reader only; the file always turns constant
  // power off, so a replay never starts a power loop on its own.
  const std::string& level = c.frm.txtConstLvl.Text();
  if (!level.empty()) {
    const std::string watts = Format(WattsFromdBm(Val(level)), "#0.0");
    f.AddToFile("#Constant Power Level: " + level + " dBm (" + watts + "W)");
    f.AddToFile("#G" + watts);
  }
  f.AddToFile("#Constant Power: Disabled");
  f.AddToFile(std::string(kConstPowerOff));
}

void SaveWGArcDetectorType(ConfigContext& c, FileIO& f) {
  int16_t type = -1;
  Guarded([&] { type = ReadWGArcDetectorType(c.comms); });
  if (type < 0) return;
  f.AddToFile(type == 0 ? "#W/G Arc Detector Type: Apollo" : "#W/G Arc Detector Type: Fiber");
  f.AddToFile(CmdWGArcDetectorType(type));
}

void SaveFwdRFTripLevels(ConfigContext& c, FileIO& f) {
  TripLine(c, f, "#RF Power High: ", RfTrip::FwdHigh, c.frm.txtFhiLvl, c.frm.cmbFhiTripType);
  TripLine(c, f, "#RF Low Power: ", RfTrip::FwdLow, c.frm.txtFloLvl, c.frm.cmbFloTripType);
}

void SaveRevRFTripLevel(ConfigContext& c, FileIO& f) {
  TripLine(c, f, "#Reflected RF Power: ", RfTrip::RevHigh, c.frm.txtRhiLvl, c.frm.cmbRhiTripType);
}

void SaveFactoryTripLevels(ConfigContext& c, FileIO& f) {
  const SessionValues& v = c.values;
  const double fwd = Val(v.gFactoryFwdTrip), rev = Val(v.gFactoryRevTrip);
  f.AddToFile("#Factory Set Fwd Trip Level: " + Format(fwd, "##0.0") + " dBm");
  f.AddToFile(CmdFactoryFwdTrip(fwd));
  const double margin = Val(v.gFactoryTripMargin);
  if (FactoryTripMarginApplies(c.unit.gProjectID) && !v.gFactoryTripMargin.empty() && margin != 0) {
    f.AddToFile("#Fwd Trip Margin: " + Format(margin, "#0") + " %");
    f.AddToFile(CmdFactoryTripMargin(margin));
  }
  f.AddToFile("#Factory Set Rev Trip Level: " + Format(rev, "##0.0") + " dBm");
  f.AddToFile(CmdFactoryRevTrip(rev));
}

void SavePSVset(ConfigContext& c, FileIO& f) {
  f.AddToFile("#PS Vset value: " + std::to_string(c.values.gPSVset));
  f.AddToFile(CmdPSVset(c.values.gPSVset));
}

void SaveCurrentSenseCfg(ConfigContext& c, FileIO& f) {
  const double gain = Val(c.values.gCurrentSenseGain);
  const double ohms = c.values.gCurrentSenseResistor;
  f.AddToFile("#Current Sense Gain: " + Format(gain, "##0.0"));
  f.AddToFile(CmdCurrentSenseGain(gain));
  f.AddToFile("#Current Sense Resistor: " + Format(ohms, "0.0##") + " Ohms");
  f.AddToFile(CmdCurrentSenseResistor(ohms));
}

void SaveLatchedFaults(ConfigContext& c, FileIO& f) {
  // A setting the unit did not report is left out rather than replayed as -1.
  const int16_t ilok = c.values.gExtIlokLatch, lowLine = c.values.gLowLineLatch;
  if (ilok >= 0) {
    f.AddToFile("#Ext Ilok Latched: " + Enabled(ilok > 0));
    f.AddToFile(CmdExtIlokLatch(ilok));
  }
  if (lowLine >= 0) {
    f.AddToFile("#Low Line Latched: " + Enabled(lowLine > 0));
    f.AddToFile(CmdLowLineLatch(lowLine));
  }
}

void SaveRevRFOffset(ConfigContext& c, FileIO& f) {
  const double offset = c.values.gRevRFOffset;
  f.AddToFile("#Reverse RF Offset: " + Format(offset, "##0.0") + " dB");
  f.AddToFile("#" + CmdRevRFOffset(offset));
}

void SaveMaxPowerLimit(ConfigContext& c, FileIO& f) {
  const SessionValues& v = c.values;
  const std::string limit = Format(Val(v.gMaxPowerLevel), "##0.0");
  if (v.gMaxPowerLevel2.empty()) {
    f.AddToFile("#Max RF Power Limit: " + limit + " dBm");
    f.AddToFile(CmdPowerLimit(Val(v.gMaxPowerLevel)));
  } else {
    f.AddToFile("#Max RF Power Limit: " + limit + " dBm," + v.gMaxPowerLevel2 + " dBm");
    f.AddToFile(CmdPowerLimitTwoLevel(limit, v.gMaxPowerLevel2));
  }
  const double fault = Val(v.gMaxPowerFault);
  f.AddToFile("#Max RF Power Fault Level: " + Format(fault, "#0.0") + " dB");
  f.AddToFile(CmdPowerLimitFaultLevel(fault));
  f.AddToFile("#Max RF Power Limit Status: " + Enabled(v.gMaxPowerOn));
  f.AddToFile(CmdPowerLimitEnable(v.gMaxPowerOn));
}

void SaveHeaterStandby(ConfigContext& c, FileIO& f) {
  if (c.frm.mnuHeaterState.Visible())
    f.AddToFile(c.frm.mnuHeaterState.Checked() ? "#Heater State:    On" : "#Heater State:    Off");
  f.AddToFile(c.frm.mnuHtrStby.Checked() ? "#Heater Standby:  On" : "#Heater Standby:  Off");
}

void SaveHelixCurrentRatio(ConfigContext& c, FileIO& f) {
  const int ratio = c.values.gHelixCurrentRatio;
  f.AddToFile("#Helix Current Ratio:  " + std::to_string(ratio));
  f.AddToFile(CmdHelixCurrentRatio(ratio));
}

void SaveHelixCurrentTrip(ConfigContext& c, FileIO& f) {
  const std::string& trip = c.values.gHelixCurrentTrip;
  f.AddToFile("#Helix Current Trip Level:  " + trip + " mA");
  f.AddToFile("#YFTH" + trip);
}

void SaveDCVInputLimits(ConfigContext& c, FileIO& f) {
  static constexpr const char* kLabels[] = {"#  Alarm Low Limit: ", "#  Alarm High Limit: ",
                                            "#  Fault Low Limit: ", "#  Fault High Limit: "};
  f.AddToFile("#DC Input Voltage Limits: ");
  for (int k = 1; k <= 4; ++k) {
    const std::string& volts = c.values.gDCVLimits[k - 1];
    if (volts.empty()) continue;
    f.AddToFile(kLabels[k - 1] + volts + " V");
    f.AddToFile(CmdDCVLimit(k, volts));
  }
  if (c.values.gDCVRatio.empty()) return;
  f.AddToFile("#  DCV Input Ratio: " + c.values.gDCVRatio);
  f.AddToFile(CmdDCVRatio(c.values.gDCVRatio));
}

void SaveTemperatureTripLevels(ConfigContext& c, FileIO& f) {
  const SessionValues& v = c.values;
  const bool pic = c.unit.gPICProcessor;
  if (!v.gTempFaultLevel.empty()) {
    f.AddToFile("#Temperature Fault Level: " + v.gTempFaultLevel + " C");
    f.AddToFile(CmdTempFaultLevel(v.gTempFaultLevel, pic));
  }
  if (!v.gTempAlarmLevel.empty()) {
    f.AddToFile("#Temperature Alarm Level: " + v.gTempAlarmLevel + " C");
    f.AddToFile(pic ? CmdTempAlarmParam(v.gTempAlarmLevel) : CmdTempAlarmLevel(v.gTempAlarmLevel));
  }
  if (!P(c, {129, 126, 135}) && !pic && !v.gInletDiffAlarmLevel.empty()) {
    f.AddToFile("#Inlet Temperature Difference Alarm Level: " + v.gInletDiffAlarmLevel + " C");
    f.AddToFile(CmdInletDiffAlarmLevel(v.gInletDiffAlarmLevel));
  }
  f.AddToFile("#Latch Temperature Faults: " + Enabled(v.gTempFaultsLatched));
  f.AddToFile(CmdLatchTempFaults(v.gTempFaultsLatched));
}

void SaveFanTemperature(ConfigContext& c, FileIO& f) {
  f.AddToFile("#Fan Control Temperature: " + std::to_string(c.values.gFanTemperature) + " C");
  f.AddToFile(CmdFanTemperature(c.values.gFanTemperature));
}

void SaveCathodeMonitor(ConfigContext& c, FileIO& f) {
  const SessionValues& v = c.values;
  static constexpr const char* kModes[] = {"Disabled", "Monitor", "Enabled"};
  const int mode = v.gCathodeMode >= 0 && v.gCathodeMode <= 2 ? v.gCathodeMode : 0;
  f.AddToFile(std::string("#Cathode Current Monitoring: ") + kModes[mode]);
  f.AddToFile("PBFS" + std::to_string(mode));

  const double scale = v.gAnodeScale;
  f.AddToFile("#Anode Voltage Scale Factor: " + Format(scale, "###0") + " V (" +
              Format(scale / 4096.0, "##0.0###") + "V/Count)");
  f.AddToFile("PBFT" + Format(scale, "###0"));

  if (v.gNegAnodeEnabled) {
    f.AddToFile("#Negative Anode: Enabled");
    f.AddToFile("PBFE1");
    f.AddToFile("#Negative Anode Starting Voltage: " + std::to_string(v.gNegAnodeStart));
    f.AddToFile("PBFF" + std::to_string(v.gNegAnodeStart));
  } else {
    f.AddToFile("#Negative Anode: Disabled");
    f.AddToFile("PBFE0");
  }

  f.AddToFile("#Anode Voltage: " + Format(v.gAnodeVoltage, "###0") + " V");
  f.AddToFile("PBFA" + std::to_string(v.gAnodeVoltage));

  // Firmware with a counted scalar shows the count; older firmware a share
  // of full scale.
  const double scalar = v.gCathodeScalar;
  if (c.unit.gHasCathodeScalar)
    f.AddToFile("#Cathode Current Scalar: " + Format(scalar, "###0"));
  else
    f.AddToFile("#Cathode Current Scalar: " + Format(scalar / 4095.0 * 100, "##0.0") + " %");
  f.AddToFile("PBFO" + Format(scalar, "###0"));

  f.AddToFile("#Ideal Cathode Current: " + Format(v.gIdealCathodeCurrent, "##0") + " ma");
  f.AddToFile("PBFI" + std::to_string(v.gIdealCathodeCurrent));
}

}  // namespace amp::cfg
