// The unit type and the first read through the real host parts against each
// kind of simulated unit, over loopback TCP for all of them and over the
// simulator's pseudo-terminal for two (the default SSPA's first read starts
// the operator and unplug flows). After FirstTimeRead the panel model and the
// session values are compared field by field with what each profile holds.
//
// The expectations were worked out by hand from the .profile files and the
// rules of the first read; they are not read back from the profiles, so a
// change of a profile or a regression of a rule both show up here. Notes
// beside a value say which rule produced it where that is not obvious.
// Readings that wander in the simulator are checked against their value plus
// or minus the wander and half a last digit.
#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>
#include <string>
#include <vector>

#include "basic/numbers.h"
#include "commands/rf_power_cmds.h"
#include "display/frm_main.h"
#include "display/panel_state.h"
#include "display/session_values.h"
#include "display/status_display.h"
#include "e2e/profile_host.h"
#include "model/unit_descriptor.h"
#include "unit/first_read.h"

namespace amp {
namespace {

struct Reading {
  double value;
  double wander;  // 0 for a fixed reading
};

struct Expected {
  const char* profile;
  char address;
  // Unit type: the project, firmware revision, fault options, the long
  // attenuator count form and the "C" count command.
  int project, fwVersion;
  bool faultOptions;
  const char* atnCount;
  bool commandC;
  // Identity and state on the panel.
  const char *pn, *sn, *rev, *date, *unitType, *title, *label31;
  bool oneCharAlarm;
  // Readouts; fwdBelowRange is the text shown when the unit is not
  // transmitting, else "".
  const char *dateTime, *atnDB, *psHours, *xmtHours, *rfFreq, *constLvl, *fwdBelowRange;
  Reading fwd, temp;
  // RF trip lines: combo index (0 disabled, 1 fault, 2 alarm) and level.
  int tripTypes[3];
  const char* tripLevels[3];
  // Bands and sub-bands.
  std::vector<std::string> bands;
  int bandIndex;
  bool bandSelectable;
  float fwdMax, fwdMin;
  int subBands, currentSubBand;
  const char* subBandCaption;
  // Configuration word.
  int cfgWord;
  bool rack, dualTWT, autoClrBUC;
  // Session values. The factory trip reader may carry a digit of the
  // checksum behind its value.
  const char* oem;
  float maxAttendB;
  bool attenRange;
  int32_t faultMask, alarmMask;
  int lowLineLatch, extIlokLatch, startup;
  bool usedBm;
  const char* modelCfg;
  float returnLoss;
  const char* maxPower;
  bool maxPowerOn;
  const char *maxPowerFault, *factoryFwd, *factoryRev;
  float revOffset;
  const char *tempFault, *tempAlarm, *inletDiff;
  bool tempLatched;
  int32_t com1Baud;
  const char* com1Parity;
  int com2Wire;
  const char *com2Term, *ip;
  int ethPort;
  bool dhcp;
  int ledMode;
  const char* productSerial;
  bool trendLog, paramLog;
  int faultLogSize, minAtnCount;
  const char *fwdCount, *revCount;
  // Options found.
  bool cathode, inlet, floatSupply, dcvInput;
};

const char* kClock = "2024/03/28,09:30";
const char* kTitle = "AmpDesk Control Utility";
const char* kSSPATitle = "AmpDesk Control Utility - SSPA";

// clang-format off
const std::vector<Expected> kUnits = {
  // Project 102 at address B, in standby with a summary fault: no RF (the
  // reading is below range), no constant power frame, no band frame, no OEM
  // name and no network.
  {.profile = "sspa102", .address = 'B', .project = 102, .fwVersion = 205, .faultOptions = false,
   .atnCount = ".D9", .commandC = true, .pn = "426-3102-004", .sn = "S10877", .rev = "2.05",
   .date = "2012-09-03", .unitType = "SSPA", .title = kSSPATitle, .label31 = "Standby",
   .oneCharAlarm = false, .dateTime = kClock, .atnDB = "10.0", .psHours = "12345",
   .xmtHours = "9876", .rfFreq = "6175 MHz", .constLvl = "50.0", .fwdBelowRange = "< 0.1",
   .fwd = {0, 0}, .temp = {45, 1}, .tripTypes = {1, 2, 2}, .tripLevels = {"52.0", "40.0", "47.0"},
   .bands = {"C"}, .bandIndex = 0, .bandSelectable = false, .fwdMax = 52.0f, .fwdMin = 15.0f,
   .subBands = 0, .currentSubBand = 0, .subBandCaption = "", .cfgWord = 8, .rack = false,
   .dualTWT = false, .autoClrBUC = false, .oem = "", .maxAttendB = 30.0f, .attenRange = true,
   .faultMask = 65535, .alarmMask = 4095, .lowLineLatch = 0, .extIlokLatch = 1, .startup = 0,
   .usedBm = true, .modelCfg = "820-3102-004", .returnLoss = 14.0f, .maxPower = "51.5",
   .maxPowerOn = false, .maxPowerFault = "3.0", .factoryFwd = "53.0", .factoryRev = "48.0",
   .revOffset = 0.0f, .tempFault = "85", .tempAlarm = "75", .inletDiff = "20", .tempLatched = false,
   .com1Baud = 9600, .com1Parity = "N", .com2Wire = 2, .com2Term = "U", .ip = "", .ethPort = 2000,
   .dhcp = false, .ledMode = 0, .productSerial = "S10877", .trendLog = false, .paramLog = true,
   .faultLogSize = 100, .minAtnCount = 0, .fwdCount = ".?A1", .revCount = ".?A3", .cathode = false,
   .inlet = false, .floatSupply = false, .dcvInput = false},

  // Block upconverter of project 50 (PIC board): older numbered temperature
  // trip parameters (".?P4" 85, ".?P179" 75), DC input, upconverter, four
  // sub-bands with the second one current, no band frame.
  {.profile = "bucsspa", .address = 'A', .project = 50, .fwVersion = 231, .faultOptions = true,
   .atnCount = ".D9", .commandC = true, .pn = "426-3050-011", .sn = "B20417", .rev = "2.31",
   .date = "2019-02-20", .unitType = "SSPA", .title = kSSPATitle, .label31 = "Vdd On",
   .oneCharAlarm = false, .dateTime = kClock, .atnDB = "10.0", .psHours = "12345",
   .xmtHours = "9876", .rfFreq = "14125 MHz", .constLvl = "53.0", .fwdBelowRange = "",
   .fwd = {53.0, 0.3}, .temp = {45, 2}, .tripTypes = {1, 2, 2},
   .tripLevels = {"55.0", "40.0", "47.0"}, .bands = {"Ku"}, .bandIndex = 0, .bandSelectable = false,
   .fwdMax = 57.0f, .fwdMin = 20.0f, .subBands = 4, .currentSubBand = 2,
   .subBandCaption = "#2   14.00 GHz", .cfgWord = 8, .rack = false, .dualTWT = false,
   .autoClrBUC = false, .oem = "KU 200W BUC SSPA ORV", .maxAttendB = 30.0f, .attenRange = true,
   .faultMask = 65535, .alarmMask = 4095, .lowLineLatch = 0, .extIlokLatch = 1, .startup = 0,
   .usedBm = true, .modelCfg = "820-3050-011", .returnLoss = 14.0f, .maxPower = "54.5",
   .maxPowerOn = false, .maxPowerFault = "3.0", .factoryFwd = "56.0", .factoryRev = "48.0",
   .revOffset = 0.0f, .tempFault = "85", .tempAlarm = "75", .inletDiff = "", .tempLatched = false,
   .com1Baud = 9600, .com1Parity = "N", .com2Wire = 4, .com2Term = "T", .ip = "192.168.10.60",
   .ethPort = 2000, .dhcp = false, .ledMode = 0, .productSerial = "B20417", .trendLog = true,
   .paramLog = true, .faultLogSize = 100, .minAtnCount = 0, .fwdCount = ".?A1", .revCount = ".?A3",
   .cathode = false, .inlet = false, .floatSupply = false, .dcvInput = true},

  // The downconverter 715-2295-001 (project 139): configuration word 1 taken
  // without asking (rack), revision 1.14 so the count base is 2048 and the
  // band's high limit ".?P71" 570 is not divided; its low limit comes from
  // "PBRF?". Five sub-bands, the first current; LLDP; Netburner port 2000.
  {.profile = "fbdc2295", .address = 'A', .project = 139, .fwVersion = 114, .faultOptions = false,
   .atnCount = ".D9", .commandC = true, .pn = "426-2295-101", .sn = "F31009", .rev = "1.14",
   .date = "2021-07-08", .unitType = "SSPA", .title = kSSPATitle, .label31 = "Vdd On",
   .oneCharAlarm = false, .dateTime = kClock, .atnDB = "10.0", .psHours = "12345",
   .xmtHours = "9876", .rfFreq = "14000 MHz", .constLvl = "47.0", .fwdBelowRange = "",
   .fwd = {47.0, 0.2}, .temp = {45, 1}, .tripTypes = {1, 2, 2},
   .tripLevels = {"49.0", "40.0", "47.0"}, .bands = {"Ku"}, .bandIndex = 0, .bandSelectable = false,
   .fwdMax = 570.0f, .fwdMin = 10.0f, .subBands = 5, .currentSubBand = 1,
   .subBandCaption = "#1   13.75 GHz", .cfgWord = 1, .rack = true, .dualTWT = false,
   .autoClrBUC = false, .oem = "FBDC KU 50W     ORV0", .maxAttendB = 30.0f, .attenRange = true,
   .faultMask = 65535, .alarmMask = 4095, .lowLineLatch = 0, .extIlokLatch = 1, .startup = 0,
   .usedBm = false, .modelCfg = "820-2295-101", .returnLoss = 14.0f, .maxPower = "48.5",
   .maxPowerOn = false, .maxPowerFault = "3.0", .factoryFwd = "50.0", .factoryRev = "48.0",
   .revOffset = 0.0f, .tempFault = "85", .tempAlarm = "75", .inletDiff = "20", .tempLatched = false,
   .com1Baud = 9600, .com1Parity = "N", .com2Wire = 4, .com2Term = "T", .ip = "192.168.10.70",
   .ethPort = 2000, .dhcp = false, .ledMode = 0, .productSerial = "F31009", .trendLog = true,
   .paramLog = true, .faultLogSize = 100, .minAtnCount = 2048, .fwdCount = ".?A1",
   .revCount = ".?A2", .cathode = false, .inlet = false, .floatSupply = false, .dcvInput = false},

  // Tube of project 127: band limits by "PBRC?"/"PBRF?", inlet temperature,
  // cathode monitor (mode 1), float supply, long fault log, its own
  // parameter log (no column-log menu), heater menus; configuration word 513
  // (rack, auto clear).
  {.profile = "twta127", .address = 'A', .project = 127, .fwVersion = 540, .faultOptions = true,
   .atnCount = ".D1", .commandC = true, .pn = "426-4127-020", .sn = "T40188", .rev = "5.40",
   .date = "2018-10-15", .unitType = "TWTA", .title = kTitle, .label31 = "HV On",
   .oneCharAlarm = false, .dateTime = kClock, .atnDB = "10.0", .psHours = "23456",
   .xmtHours = "18765", .rfFreq = "14250 MHz", .constLvl = "58.8", .fwdBelowRange = "",
   .fwd = {58.8, 0.3}, .temp = {52, 2}, .tripTypes = {1, 2, 2},
   .tripLevels = {"59.8", "45.0", "50.0"}, .bands = {"Ku"}, .bandIndex = 0, .bandSelectable = false,
   .fwdMax = 59.5f, .fwdMin = 30.0f, .subBands = 0, .currentSubBand = 0, .subBandCaption = "",
   .cfgWord = 513, .rack = true, .dualTWT = false, .autoClrBUC = true,
   .oem = "KU 750W TWTA    ORV1", .maxAttendB = 30.0f, .attenRange = true, .faultMask = 268435455,
   .alarmMask = 7167, .lowLineLatch = 0, .extIlokLatch = 0, .startup = 0, .usedBm = true,
   .modelCfg = "820-4127-020", .returnLoss = 15.0f, .maxPower = "59.3", .maxPowerOn = true,
   .maxPowerFault = "2.0", .factoryFwd = "60.8", .factoryRev = "51.0", .revOffset = 0.0f,
   .tempFault = "70", .tempAlarm = "60", .inletDiff = "25", .tempLatched = true, .com1Baud = 9600,
   .com1Parity = "N", .com2Wire = 4, .com2Term = "T", .ip = "192.168.10.80", .ethPort = 2000,
   .dhcp = false, .ledMode = 0, .productSerial = "T40188", .trendLog = true, .paramLog = false,
   .faultLogSize = 1000, .minAtnCount = 0, .fwdCount = ".?A4", .revCount = ".?A5", .cathode = true,
   .inlet = true, .floatSupply = true, .dcvInput = false},

  // Dual tube 715-2251-004: configuration word 6 (dual tube, multi-band),
  // so the band can be chosen; two bands; two temperatures; DHCP; the
  // fault log of 500 entries since it has column parameter logs.
  {.profile = "dualtwt108", .address = 'A', .project = 108, .fwVersion = 602, .faultOptions = true,
   .atnCount = ".D1", .commandC = true, .pn = "426-2251-004", .sn = "D50321", .rev = "6.02",
   .date = "2019-11-21", .unitType = "TWTA", .title = kTitle, .label31 = "HV On",
   .oneCharAlarm = false, .dateTime = kClock, .atnDB = "10.0", .psHours = "23456",
   .xmtHours = "18765", .rfFreq = "14250 MHz", .constLvl = "61.8", .fwdBelowRange = "",
   .fwd = {61.8, 0.3}, .temp = {52, 2}, .tripTypes = {1, 2, 2},
   .tripLevels = {"62.8", "45.0", "50.0"}, .bands = {"Ku", "Ka"}, .bandIndex = 0,
   .bandSelectable = true, .fwdMax = 60.0f, .fwdMin = 30.0f, .subBands = 0, .currentSubBand = 0,
   .subBandCaption = "", .cfgWord = 6, .rack = false, .dualTWT = true, .autoClrBUC = false,
   .oem = "DUAL KU 1.5KW TWTA  ", .maxAttendB = 30.0f, .attenRange = true, .faultMask = 268435455,
   .alarmMask = 7167, .lowLineLatch = 0, .extIlokLatch = 0, .startup = 0, .usedBm = true,
   .modelCfg = "820-2251-004", .returnLoss = 15.0f, .maxPower = "62.3", .maxPowerOn = true,
   .maxPowerFault = "2.0", .factoryFwd = "63.8", .factoryRev = "51.0", .revOffset = 0.0f,
   .tempFault = "70", .tempAlarm = "60", .inletDiff = "25", .tempLatched = true, .com1Baud = 9600,
   .com1Parity = "N", .com2Wire = 4, .com2Term = "T", .ip = "192.168.10.90", .ethPort = 2000,
   .dhcp = true, .ledMode = 0, .productSerial = "D50321", .trendLog = true, .paramLog = true,
   .faultLogSize = 500, .minAtnCount = 0, .fwdCount = ".?A1", .revCount = ".?A3", .cathode = true,
   .inlet = false, .floatSupply = true, .dcvInput = false},

  // Old tube firmware: no identity (project -1, no constant level read), no
  // configuration word (taken as 1), no "?(" (one-character alarms), the
  // numbered temperature parameters as fall-back (".?P136" 75, ".?P179" 65),
  // compiled in 2006 (no auto restore entry, short fault log only).
  {.profile = "oldunit", .address = 'A', .project = -1, .fwVersion = 412, .faultOptions = false,
   .atnCount = ".D9", .commandC = false, .pn = "426-1044-003", .sn = "0977", .rev = "4.12",
   .date = "2006-03-17", .unitType = "TWTA", .title = kTitle, .label31 = "HV On",
   .oneCharAlarm = true, .dateTime = kClock, .atnDB = "12.5", .psHours = "61234",
   .xmtHours = "48777", .rfFreq = "14125 MHz", .constLvl = "", .fwdBelowRange = "",
   .fwd = {53.0, 0.4}, .temp = {48, 3}, .tripTypes = {1, 2, 0},
   .tripLevels = {"55.0", "40.0", "45.0"}, .bands = {"Ku"}, .bandIndex = 0, .bandSelectable = false,
   .fwdMax = 55.0f, .fwdMin = 25.0f, .subBands = 0, .currentSubBand = 0, .subBandCaption = "",
   .cfgWord = 1, .rack = false, .dualTWT = false, .autoClrBUC = false, .oem = "",
   .maxAttendB = 25.0f, .attenRange = false, .faultMask = 2097151, .alarmMask = 1023,
   .lowLineLatch = 1, .extIlokLatch = 0, .startup = 0, .usedBm = false, .modelCfg = "NOT SET",
   .returnLoss = -1.0f, .maxPower = "54.0", .maxPowerOn = false, .maxPowerFault = "3.0",
   .factoryFwd = "56.0", .factoryRev = "46.0", .revOffset = -1.5f, .tempFault = "75",
   .tempAlarm = "65", .inletDiff = "", .tempLatched = false, .com1Baud = 9600, .com1Parity = "N",
   .com2Wire = 2, .com2Term = "T", .ip = "", .ethPort = 2000, .dhcp = false, .ledMode = -1,
   .productSerial = "", .trendLog = false, .paramLog = false, .faultLogSize = 100, .minAtnCount = 0,
   .fwdCount = ".?A1", .revCount = ".?A3", .cathode = false, .inlet = false, .floatSupply = false,
   .dcvInput = false},
};
// clang-format on

const Expected& Unit(const std::string& profile) {
  for (const Expected& e : kUnits)
    if (profile == e.profile) return e;
  throw std::invalid_argument("no expectation for " + profile);
}

// The host's parts around one simulated unit, and the panel the first read
// fills, as the application wires them.
class Host : public test::ProfileHost {
 public:
  using ProfileHost::ProfileHost;
  UnitDescriptor u;
  ui::FrmMain f;
  PanelState ps;
  SessionValues v;
  StatusDisplay d{comms, u, f, ps};
  FirstRead first{comms, u, f, ps, d, v};
};

// A reading that wanders: its number is the value within the wander and
// half a last digit.
void ExpectReading(const std::string& text, Reading r, const char* what) {
  ASSERT_FALSE(text.empty()) << what;
  EXPECT_NEAR(Val(text), r.value, r.wander + 0.05) << what << " reads \"" << text << "\"";
}

void CheckPanel(const Expected& e, Host& h) {
  ui::FrmMain& f = h.f;
  EXPECT_EQ(f.txtPN.Text(), e.pn);
  EXPECT_EQ(f.txtSN.Text(), e.sn);
  EXPECT_EQ(f.txtFrmRev.Text(), e.rev);
  EXPECT_EQ(f.txtCplDate.Text(), e.date);
  EXPECT_EQ(f.txtAdr.Text(), std::string(1, e.address));
  EXPECT_EQ(f.lblUnitTempType.Caption(), e.unitType);
  EXPECT_EQ(f.Caption(), e.title);
  EXPECT_EQ(f.Label31.Caption(), e.label31);
  EXPECT_EQ(f.Label19.Caption(), std::string(e.unitType) == "TWTA" ? "Htr:" : "PS:");
  EXPECT_EQ(h.comms.gOneCharAlarm, e.oneCharAlarm);

  EXPECT_EQ(f.txtDateTime.Text(), e.dateTime);
  EXPECT_EQ(f.txtAtnDB.Text(), e.atnDB);
  EXPECT_EQ(f.txtPSHours.Text(), e.psHours);
  EXPECT_EQ(f.txtXmtHours.Text(), e.xmtHours);
  EXPECT_EQ(f.lblRFFrqVal.Caption(), e.rfFreq);
  EXPECT_TRUE(f.lblRFFrqVal.Visible());
  EXPECT_EQ(f.txtConstLvl.Text(), e.constLvl);
  if (*e.fwdBelowRange) {
    EXPECT_EQ(f.txtFdBm.Text(), e.fwdBelowRange);
  } else {
    ExpectReading(f.txtFdBm.Text(), e.fwd, "txtFdBm");
  }
  ExpectReading(f.txtTemp.Text(), e.temp, "txtTemp");
  // A dual tube shows both temperatures in the one field.
  EXPECT_EQ(f.txtTemp.Text().find(", ") != std::string::npos, e.dualTWT) << f.txtTemp.Text();
  EXPECT_EQ(f.chkRFI.Value(), 0);

  const ui::ComboBox* types[3] = {&f.cmbFhiTripType, &f.cmbFloTripType, &f.cmbRhiTripType};
  const ui::TextBox* levels[3] = {&f.txtFhiLvl, &f.txtFloLvl, &f.txtRhiLvl};
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(types[i]->ListIndex(), e.tripTypes[i]) << types[i]->Name();
    EXPECT_EQ(levels[i]->Text(), e.tripLevels[i]) << levels[i]->Name();
  }

  EXPECT_EQ(f.cmbRfBand.Items(), e.bands);
  EXPECT_EQ(f.cmbRfBand.ListIndex(), e.bandIndex);
  EXPECT_EQ(f.cmbRfBand.Enabled(), e.bandSelectable);
  EXPECT_EQ(f.lblSBandFrq.Visible(), e.currentSubBand > 0);
  if (e.currentSubBand > 0) {
    EXPECT_EQ(f.lblSBandFrq.Caption(), e.subBandCaption);
  }
  for (int n = 1; n <= 8; ++n)
    EXPECT_EQ(f.mnuSubB(n).Checked(), n == e.currentSubBand) << "mnuSubB" << n;

  EXPECT_EQ(f.mnuRack.Checked(), e.rack);
  EXPECT_EQ(f.mnuAutoClrBUC.Checked(), e.autoClrBUC);

  // Which menus and frames each kind of unit shows is the panel setup's
  // rule, tested there.
  // Nothing the first read does turns the fault and alarm entry back on.
  EXPECT_FALSE(f.mnuFltAlm.Enabled());

  EXPECT_TRUE(f.fraAtten.Visible());  // every unit keeps its attenuation
  EXPECT_EQ(f.txtCathI.Visible(), e.cathode);
  if (e.cathode) {
    EXPECT_FALSE(f.txtCathI.Text().empty());
  }
  EXPECT_EQ(f.txtTemp2.Visible(), e.inlet);
  EXPECT_EQ(f.Label12.Caption(), e.inlet ? "Inlet" : "Temp 2");
  if (f.Frame30.Visible()) {
    EXPECT_FALSE(f.txtHelixV.Text().empty());
    EXPECT_EQ(f.Frame30.Caption(), e.dualTWT ? "TWT 1 / TWT 2" : "TWT");
  }
}

// The numbered parameters whose reader ends the value at the frame's
// second-to-last character. A reply over TCP keeps the CR that ends it, so
// its checksum is not the last character: such a reader would keep the ETX
// in the value (".?P136" "75" read as "75<ETX>") or refuse it as not numeric
// (".?P203" falling back to 30.0). The same unit must give the same values on
// both links.
void CheckNumberedParameters(const Expected& e, const Host& h) {
  EXPECT_FLOAT_EQ(h.v.gMaxAttendB, e.maxAttendB);
  EXPECT_EQ(h.v.gTempFaultLevel, e.tempFault);
  EXPECT_EQ(h.v.gTempAlarmLevel, e.tempAlarm);
}

void CheckValues(const Expected& e, const Host& h) {
  const SessionValues& v = h.v;
  EXPECT_EQ(h.u.gProjectID, e.project);
  EXPECT_EQ(h.u.gFWVersion, e.fwVersion);
  EXPECT_EQ(h.u.gFaultOptions, e.faultOptions);
  EXPECT_EQ(h.u.gAtnCountCommand, e.atnCount);
  EXPECT_EQ(h.u.gCommandCSupport, e.commandC);
  EXPECT_EQ(h.u.gUnitCfgFlags, e.cfgWord);
  EXPECT_EQ(h.u.gIsDualTWT, e.dualTWT);
  EXPECT_EQ(v.gBandNames[1], e.bands[0]);
  EXPECT_EQ(v.gCurrentRFBand, e.bands[static_cast<size_t>(e.bandIndex)]);
  EXPECT_FLOAT_EQ(v.gFwdMaxdBm, e.fwdMax);
  EXPECT_FLOAT_EQ(v.gFwdMindBm, e.fwdMin);
  EXPECT_FLOAT_EQ(h.ps.gFwdRFMax, e.fwdMax);
  EXPECT_FLOAT_EQ(h.ps.gPowerFloor, e.fwdMin);
  EXPECT_EQ(v.gSubBandCount, e.subBands);
  EXPECT_EQ(v.gCurrentSubBand, e.currentSubBand);

  EXPECT_EQ(v.gOemName, e.oem);
  EXPECT_EQ(v.gHasAttenRange, e.attenRange);
  EXPECT_FLOAT_EQ(v.gAttenRange, 20.0f);  // ".?P334" 200 where present, the default otherwise
  EXPECT_EQ(v.gFaultMask, e.faultMask);
  EXPECT_EQ(v.gAlarmMask, e.alarmMask);
  EXPECT_EQ(v.gLowLineLatch, e.lowLineLatch);
  EXPECT_EQ(v.gExtIlokLatch, e.extIlokLatch);
  EXPECT_EQ(v.gStartupMode, e.startup);
  EXPECT_EQ(v.gUsedBmTripLevels, e.usedBm);
  EXPECT_EQ(v.gModelCfgPN, e.modelCfg);
  EXPECT_FLOAT_EQ(v.gReturnLoss, e.returnLoss);
  EXPECT_EQ(v.gMaxPowerLevel, e.maxPower);
  EXPECT_EQ(v.gMaxPowerOn, e.maxPowerOn);
  EXPECT_EQ(v.gMaxPowerFault, e.maxPowerFault);
  // The factory trip reader steps over the ETX and keeps a digit checksum.
  EXPECT_EQ(v.gFactoryFwdTrip.rfind(e.factoryFwd, 0), 0u) << v.gFactoryFwdTrip;
  EXPECT_LE(v.gFactoryFwdTrip.size(), std::string(e.factoryFwd).size() + 1) << v.gFactoryFwdTrip;
  EXPECT_EQ(v.gFactoryRevTrip.rfind(e.factoryRev, 0), 0u) << v.gFactoryRevTrip;
  EXPECT_FLOAT_EQ(v.gRevRFOffset, e.revOffset);
  EXPECT_EQ(v.gInletDiffAlarmLevel, e.inletDiff);
  EXPECT_EQ(v.gTempFaultsLatched, e.tempLatched);
  EXPECT_EQ(v.gCom1Baud, e.com1Baud);
  EXPECT_EQ(v.gCom1Parity, e.com1Parity);
  EXPECT_EQ(v.gCom1Data, 8);
  EXPECT_EQ(v.gCom1Stop, 1);
  EXPECT_EQ(v.gCom2Wire, e.com2Wire);
  EXPECT_EQ(v.gCom2Term, e.com2Term);
  EXPECT_EQ(v.gCom2Address, std::string(1, e.address));
  if (h.TcpPort() > 0 && *e.ip) {
    // The simulated unit reports the address it answers on, so the socket
    // taken over from the unit reaches it again. A Netburner board is
    // always addressed on the default port.
    EXPECT_EQ(v.gIPAddress, "127.0.0.1");
    EXPECT_EQ(v.gEthPort, h.u.gNetburnerProcessor ? e.ethPort : h.TcpPort());
  } else {
    EXPECT_EQ(v.gIPAddress, e.ip);
    EXPECT_EQ(v.gEthPort, e.ethPort);
  }
  EXPECT_EQ(v.gDhcpOn, e.dhcp);
  EXPECT_EQ(v.gLEDMode, e.ledMode);
  EXPECT_EQ(v.gProductID.serialNumber, e.productSerial);
  EXPECT_EQ(v.gHasTrendLog, e.trendLog);
  EXPECT_EQ(v.gParamLogCfg, e.paramLog);
  EXPECT_EQ(v.gFaultLogSize, e.faultLogSize);
  EXPECT_EQ(v.gMinAtnCount, e.minAtnCount);
  EXPECT_EQ(v.gFwdRFCountCommand, e.fwdCount);
  EXPECT_EQ(v.gRevRFCountCommand, e.revCount);
  EXPECT_EQ(h.ps.gCathodeDisplay, e.cathode);
  EXPECT_EQ(h.ps.gInletTemp, e.inlet);
  EXPECT_EQ(v.gHasFloatSupply, e.floatSupply);
  EXPECT_EQ(v.gHasDCVInput, e.dcvInput);
}

// Options only some units have, each checked on its own unit.
void CheckUnitSpecifics(const Expected& e, const Host& h) {
  const SessionValues& v = h.v;
  const std::string profile = e.profile;
  if (profile == "bucsspa") {
    EXPECT_EQ(v.gSubBandFreqs[4], "14.50");
    EXPECT_EQ(v.gSubBandTempCoefs[1], "0.071");
    EXPECT_TRUE(v.gBandTempCoef);
    EXPECT_FLOAT_EQ(v.gBucAttenuation, 8.0f);
    EXPECT_EQ(v.gBucMode, 2);
    EXPECT_FLOAT_EQ(v.gBucSetPoint, -25.0f);
    EXPECT_EQ(v.gDCVLimits[0], "44.0");
    EXPECT_EQ(v.gDCVLimits[3], "58.0");
    EXPECT_EQ(v.gDCVRatio, "1.000");
    ExpectReading(v.gDCVInput, {48.2, 0.3}, "gDCVInput");
    EXPECT_TRUE(h.f.lblSBUCWarmup.Visible());
  } else if (profile == "fbdc2295") {
    EXPECT_TRUE(v.gIsFBDCUnit);
    EXPECT_EQ(v.gLldpFactory.gLldpMED, 80008);
    EXPECT_EQ(v.gLldpFactory.gLldpUUID, "4f1c2a7e-0b9d-4c3e-9a51-7d2e8f6b1c30");
    EXPECT_EQ(v.gLldpUser.gLldpHostname, "fbdc-f31009");
    EXPECT_EQ(h.f.Label2.Caption(), "FBDC");
    EXPECT_TRUE(h.f.Label2.Visible() && h.f.txtAtnCnt.Visible());
    EXPECT_EQ(h.f.txtAtnCnt.Text(), "12.5");  // the down-link attenuator on "?/"
    EXPECT_EQ(h.f.txtCS3.Text(), " 4.8");     // current sense as the unit sends it
    EXPECT_FALSE(h.f.mnuOpenWebpage.Enabled());
  } else if (profile == "twta127") {
    EXPECT_EQ(v.gAdcScalers[0], 1000);
    EXPECT_EQ(v.gAdcScalers[6], -1);  // a scaler the unit does not keep
    EXPECT_EQ(v.gAdcScalers[10], 1001);
    EXPECT_EQ(v.gUpcAvailability, 1);
    EXPECT_EQ(v.gCathodeMode, 1);
    EXPECT_EQ(v.gCathodeScalar, 2048);
    EXPECT_EQ(v.gIdealCathodeCurrent, 180);
    EXPECT_EQ(h.f.txtAnodeV.Text(), "1200");
    EXPECT_EQ(h.f.lblTWTLife.Caption(), "12 Years");
    EXPECT_TRUE(h.f.lblTWTLife.Visible());
    EXPECT_EQ(v.gHelixCurrentRatio, 95);
    EXPECT_EQ(v.gHelixCurrentTrip, "10.0");
    EXPECT_EQ(v.gAmcAnalogs[7], "1");
    EXPECT_EQ(v.gAmcSettings[3], "1.20");
    ExpectReading(h.f.txtTemp2.Text(), {48, 1}, "txtTemp2");
  } else if (profile == "dualtwt108") {
    EXPECT_EQ(v.gBandNames[2], "Ka");
    EXPECT_EQ(v.gBandFrequencies[2], "29.50");
    EXPECT_TRUE(h.f.mnu2ndUmbilical.Checked());
    ExpectReading(h.f.txtHeaterV.Text(), {10.4, 0.1}, "second helix voltage");
  } else if (profile == "oldunit") {
    EXPECT_EQ(h.comms.StatusQuery(), "?!#9");
    EXPECT_EQ(h.f.txtHeaterV.Text(), "6.2");  // "PHV?" refused, "?J" answered
  } else if (profile == "sspa102") {
    EXPECT_TRUE(h.f.Label36.Visible());  // the latched summary fault
    EXPECT_EQ(h.f.chkPS.Value(), 0);
  }
}

bool StartAndRead(Host& h, const Expected& e, bool serial) {
  if (!h.Connect(serial, e.address)) return false;
  h.first.ClearForm();
  h.first.DisableForm();
  h.first.FirstTimeRead();
  return true;
}

void CheckUnit(const Expected& e, bool serial) {
  SCOPED_TRACE(std::string(e.profile) + (serial ? " over serial" : " over TCP"));
  Host h(e.profile, serial);
  ASSERT_TRUE(StartAndRead(h, e, serial));
  EXPECT_TRUE(h.comms.gFirstReadDone);
  EXPECT_FALSE(h.ps.gInPanelUpdate);
  CheckPanel(e, h);
  CheckValues(e, h);
  CheckUnitSpecifics(e, h);
  CheckNumberedParameters(e, h);

  h.first.EnableForm();
  EXPECT_EQ(h.f.mnuTrendLogs.Visible(), e.trendLog);
  EXPECT_TRUE(h.f.chkPS.Enabled());
  EXPECT_FALSE(h.f.mnuFltAlm.Enabled());
  // The long count form the host chose is the one this unit's firmware knows.
  EXPECT_TRUE(h.comms.ExchangeCommand(CmdAtnCount(h.u.gAtnCountCommand, 2048), false));
}

TEST(FirstReadEndToEnd, EveryProfileOverTcp) {
  for (const Expected& e : kUnits) CheckUnit(e, false);
}

TEST(FirstReadEndToEnd, SerialUnitsAtTheirAddresses) {
  // Address B with a fault standing, and the unit without identity or "?(".
  CheckUnit(Unit("sspa102"), true);
  CheckUnit(Unit("oldunit"), true);
}

}  // namespace
}  // namespace amp
