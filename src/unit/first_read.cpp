#include "unit/first_read.h"
#include "basic/one_of.h"

#include <initializer_list>
#include <limits>
#include <span>
#include <string>

#include "basic/dates.h"
#include "basic/numbers.h"
#include "basic/text.h"
#include "commands/fault_config_cmds.h"
#include "commands/identity_cmds.h"
#include "commands/reader_support.h"
#include "commands/rf_band_cmds.h"
#include "commands/rf_power_cmds.h"
#include "commands/transmitter_cmds.h"
#include "commands/upconverter_cmds.h"
#include "unit/unit_type.h"

namespace amp {

namespace {

// Firmware compiled after 2007-12-05 has the automatic transmitter restore
// and the full fault log.
constexpr int32_t kAutoHVDay = 39421;

bool CompiledAfter(const std::string& dateText, int32_t day) {
  const auto serial = DateDaySerial(dateText);
  return serial && *serial > day;
}

constexpr std::string_view kWattsShownCaption = "Display dBm";
constexpr long kOemNameLength = 20;
constexpr int32_t kArcTestBit = 1;  // fault enable bit 0: waveguide arc

// The unit configuration word, bit by bit.
constexpr int kCfgRack = 1;
constexpr int kCfgDualTube = 2;  // dual TWTA on a tube unit, second umbilical otherwise
constexpr int kCfgMultiBand = 4;
constexpr int kCfgRevPwrTemp = 16;
constexpr int kCfgDCVMonitor = 32;
constexpr int kCfgLinSlope = 256;
constexpr int kCfgAutoClrBUC = 512;
constexpr int kCfgProgrammableBUC = 1024;

}  // namespace

// The panel repaints between steps, but nothing the operator does acts while
// the unit is read: a click on a control the first read is about to enable
// would otherwise land on it.
void FirstRead::RefreshPanel() { c_.host().pump.Refresh(); }

void FirstRead::FirstTimeRead() {
  IdentifyUnit();
  ReadCountsAndConfig();
  RefreshPanel();
  ReadLimits();
  InitDisplay();
  RefreshPanel();
  ReadStartupAndNames();
  ReadEnableWords();
  RefreshPanel();
  ReadOptionsAndStatus();
  RefreshPanel();
  ReadPortsAndBands();
  RefreshPanel();
  ReadTemperatures();
  RefreshPanel();
  ReadPowerAndTube();
  RefreshPanel();
  ReadFinalOptions();
  c_.gFirstReadDone = true;
  s_.gInPanelUpdate = false;
}

// Steps 1 to 3.
void FirstRead::IdentifyUnit() {
  s_.gInPanelUpdate = true;
  setup_.InitDataDirectory();
  // The menu entry's caption names the other unit: "Display dBm" while Watts show.
  s_.gDisplayWatts = f_.mnuWatts.Caption() == kWattsShownCaption;
  DetermineUnitType(c_, u_);
  ShowIdentityFields();
  v_.gIsFBDCUnit = u_.gFWPartNumber == "715-2295-001";
  setup_.InitLLDP();
  RefreshPanel();
}

void FirstRead::ShowIdentityFields() {
  f_.txtPN.SetText(u_.txtPN);
  f_.txtSN.SetText(u_.txtSN);
  f_.txtFrmRev.SetText(u_.txtFrmRev);
  f_.txtCplDate.SetText(u_.txtCplDate);
}

// Steps 4 to 6. The processor flag still holds the last session's value
// here: the option rules run later, once the reads they need are done.
void FirstRead::ReadCountsAndConfig() {
  v_.gMinAtnCount = MinAtnCountFor(u_.gProjectID, u_.gFWVersion, u_.gIsTWTA, u_.gPICProcessor);
  // This unit's controller answers slowly.
  if (u_.gProjectID == 58) c_.Link.SetMsgTimeout(6.0f);
  setup_.UpdateSubBands();
  setup_.InitTempComp();
  setup_.SetRevRFCountCommand();
  setup_.SetFwdRFCountCommand();
  InitUnitCfg();
  if (u_.gProjectID == 127) ReadProject127Block();
}

void FirstRead::ReadProject127Block() {
  ReadAdcScalers(c_, std::span<int16_t>(v_.gAdcScalers));
  v_.gUpcAvailability = -1;
  Guarded([&] { v_.gUpcAvailability = ReadUpcAvailability(c_); });
}

// Steps 7 and 8.
void FirstRead::ReadLimits() {
  v_.gReturnLoss = -1.0f;
  Guarded([&] { v_.gReturnLoss = ReadReturnLoss(c_); });
  setup_.InitPowerLimit();
  setup_.InitFactoryTripLevels();
  ReadAttenRange();
}

void FirstRead::ReadAttenRange() {
  const std::string range = amp::ReadAttenRange(c_);
  v_.gHasAttenRange = !range.empty();
  if (!v_.gHasAttenRange) {
    v_.gAttenRange = 20.0f;
    v_.gMaxCalTemp.clear();
    v_.gMinCalTemp.clear();
    return;
  }
  v_.gAttenRange = static_cast<float>(Val(range));
  v_.gMaxCalTemp = ReadMaxCalTemp(c_);
  v_.gMinCalTemp = ReadMinCalTemp(c_);
}

// Steps 10 to 13.
void FirstRead::ReadStartupAndNames() {
  v_.gStartupMode = ReadStartupMode(c_);
  v_.gUsedBmTripLevels = setup_.CanUsedBmTripLevels();
  ReadOemName();
  const int16_t maxAtten = ReadMaxAtten(c_);
  v_.gMaxAttendB = maxAtten > 0 ? static_cast<float>(maxAtten / 10.0) : 30.0f;
  d_.UpdateRFFrequency();
}

void FirstRead::ReadOemName() {
  const std::string name = ReadPN20(c_);
  const bool valid = Len(name) == kOemNameLength;
  v_.gOemName = valid ? name : std::string();
  f_.mnuOemName.SetEnabled(valid);
}

// Steps 14 to 16.
void FirstRead::ReadEnableWords() {
  constexpr int32_t kNoSecondWord = std::numeric_limits<int32_t>::min();
  int32_t faults = 0;
  int32_t second = kNoSecondWord;
  bool read = false;
  Guarded([&] { read = ReadFaultEnable(c_, faults, second); });
  v_.gFaultMask = read ? faults : 0;
  v_.gExtendedFaults = read && second != kNoSecondWord;
  v_.gFaultMaskHigh = v_.gExtendedFaults ? second : 0;
  f_.mnuWgArcTest.SetVisible((v_.gFaultMask & kArcTestBit) != 0 || OneOf(u_.gProjectID, {127, 99}));

  int32_t alarms = 0;
  read = false;
  Guarded([&] { read = ReadAlarmEnable(c_, alarms); });
  v_.gAlarmMask = read ? alarms : 0;

  v_.gLowLineLatch = ReadLowLineLatch(c_);
  v_.gExtIlokLatch = ReadExtIlokLatch(c_);
}

// Steps 17 to 22.
void FirstRead::ReadOptionsAndStatus() {
  SetProjectSpecificValues(c_, u_);
  setup_.InitDCVInParameters();

  d_.UpdateDateTime();
  d_.UpdateAtn();
  setup_.UpdateUnitGain();

  const int16_t amc = ReadAmcStatus(c_);
  v_.gHasFloatSupply = amc > -1;
  v_.gAmcStatus = amc;

  setup_.UpdateAMCParameters();
  d_.UpdateCurrentSense();
  d_.UpdateFwdRF();
  d_.UpdateRevRF();

  const std::string summary = ReadStatusWord(c_, 1);
  if (!summary.empty()) d_.SetSummaryStatus(summary);
  // A unit without the second status word is polled for a one-character
  // alarm field.
  c_.gOneCharAlarm = ReadStatusWord(c_, 2).empty();
}

// Steps 23 and 24.
void FirstRead::ReadPortsAndBands() {
  d_.UpdateHours();
  setup_.InitPowerSaveParameters();
  setup_.InitCom1Settings();
  setup_.InitCom2Settings();
  f_.txtAdr.SetText(c_.Link.DeviceAddress());

  setup_.InitcmbRfBand();
  setup_.InitRFBand();
  setup_.InitBandParameters(f_.cmbRfBand.ListIndex() + 1);
}

// Steps 25 to 29.
void FirstRead::ReadTemperatures() {
  // PIC controllers keep the older numbered trip parameters.
  v_.gTempFaultLevel = ReadTempFaultLevel(c_, u_.gPICProcessor);
  v_.gTempAlarmLevel = ReadTempAlarmLevel(c_);
  v_.gInletDiffAlarmLevel = ReadInletDiffAlarmLevel(c_);
  if (u_.gProjectID == 127 && !v_.gInletDiffAlarmLevel.empty() && u_.gIsTWTA)
    ReadInletTemperature();
  v_.gTempFaultsLatched = ReadLatchTempFaults(c_) == 1;

  f_.lblUnitTempType.SetCaption(u_.gIsTWTA ? "TWTA" : (u_.gIsKPA ? "KPA" : "SSPA"));
  d_.UpdateTemperature();
  d_.UpdateRFIStatus();
}

void FirstRead::ReadInletTemperature() {
  const float inlet = amp::ReadInletTemperature(c_);
  if (!(inlet > -39.0f && inlet < 119.0f)) return;
  f_.Label12.SetCaption("Inlet");
  f_.Label12.SetVisible(true);
  f_.Label14.SetVisible(true);
  f_.txtTemp2.SetVisible(true);
  s_.gInletTemp = true;
}

// Steps 30 to 34.
void FirstRead::ReadPowerAndTube() {
  if (u_.gProjectID != -1) ReadConstantPowerLevel();
  setup_.InitRFTripLevels();
  setup_.InitReverseRFOffset();
  ReadPSVset();
  if (u_.gIsTWTA) d_.UpdateHelixHeater();
  setup_.InitLCBuc();
  setup_.InitCurrentSenseParams();
  setup_.InitEnetParams();
  d_.UpdateCathodeCurrent();
}

void FirstRead::ReadConstantPowerLevel() {
  // Asked twice; only the second answer counts.
  ReadConstPowerLevel(c_);
  const std::string level = ReadConstPowerLevel(c_);
  if (level.empty()) return;
  f_.txtConstLvl.SetText(s_.gDisplayWatts ? NumText(WattsFromdBm(Val(level))) : level);
}

void FirstRead::ReadPSVset() {
  const PSVsetRecord psv = amp::ReadPSVset(c_);
  v_.gHasPSVset = psv.status != -1;
  if (v_.gHasPSVset) v_.gPSVset = psv.value;
  f_.mnuPsVset.SetEnabled(v_.gHasPSVset);
  f_.mnuPsVset.SetVisible(v_.gHasPSVset);
}

// Steps 35 and 36, and whether the unit keeps trend logs.
void FirstRead::ReadFinalOptions() {
  v_.gLEDMode = -1;
  Guarded([&] { v_.gLEDMode = ReadLEDMode(c_); });
  if (v_.gLEDMode > -1) {
    f_.mnuLEDMode.SetVisible(true);
    f_.mnuLEDMode.SetChecked(v_.gLEDMode == 1);
  }
  v_.gProductID = ProductID{};
  Guarded([&] { v_.gProductID = ReadProductID(c_); });
  f_.btnGoToPwr.SetEnabled(true);
  setup_.InitTrendLogOption();
}

void FirstRead::InitDisplay() {
  bool autoHVTest = false;
  if (u_.gIsTWTA || u_.gIsKPA) {
    InitDisplayForTWTAUnit();
    autoHVTest = CompiledAfter(u_.txtCplDate, kAutoHVDay);
  } else {
    InitDisplayForSSPAUnit();
    f_.mnuCalFactor.SetVisible(!ReadCalFactors(c_).empty());
    autoHVTest = CompiledAfter(u_.txtCplDate, kAutoHVDay);
  }
  if (autoHVTest) {
    const int16_t restore = ReadAutoXmitRestore(c_);
    f_.mnuAutoHVDisable.SetVisible(restore > -1);
    if (restore > -1) f_.mnuAutoHVDisable.SetChecked(restore == 0);
  }

  v_.gRFPolarity = ReadRFPolarity(c_);
  f_.mnuRfiInvert.SetVisible(v_.gRFPolarity >= 0);
  if (v_.gRFPolarity >= 0) f_.mnuRfiInvert.SetChecked(v_.gRFPolarity == 0);

  f_.mnuReturnLoss.SetVisible(v_.gReturnLoss >= 0);

  const std::string model = ReadModelCfgPN(c_);
  v_.gModelCfgPN = model.empty() ? "NOT SET" : model;

  v_.gAutoXmitRestore = ReadAutoXmitRestore(c_);
  v_.gAutoXmitDisabled = v_.gAutoXmitRestore == 0;
  v_.gFanTemperature = ReadFanTemperature(c_);
  v_.gHasFanTemp = v_.gFanTemperature >= 0;

  if (u_.gFWFamilyD) setup_.InitDLAtten();
  d_.InitFaultNames();
  d_.InitAlarmNames();
}

void FirstRead::InitDisplayForTWTAUnit() {
  const int32_t p = u_.gProjectID;
  f_.Label19.SetCaption("Htr:");
  f_.Label20.SetCaption("Beam:");
  f_.Label31.SetCaption("HV On");
  f_.Frame30.SetVisible(true);
  f_.Frame14.SetVisible(false);
  setup_.SetupFrame20();
  setup_.SetupFrame27();
  v_.gDualHeater = OneOf(p, {25, 27, 10, 127, 62}) || u_.gNewDualTWT;
  f_.mnuAmpCom.SetVisible(p != 10);

  SetParamLog(OneOf(p, {500, 99, 510, 127}) || u_.gIsKPA);
  SetFaultLogSize();

  setup_.InitCathodeCurrentDisplay();
  setup_.InitTWTEOLParameters();
  ReadHeaterMenus();
  if (u_.gIsTWTA) {
    v_.gHelixCurrentRatio = -1;
    Guarded([&] { v_.gHelixCurrentRatio = ReadHelixCurrentRatio(c_); });
    v_.gHelixCurrentTrip = ReadHelixCurrentTrip(c_);
  }
  setup_.SetupHelixHeaterForNewDualTWT(u_.gIsDualTWT ? 2 : 0);
}

void FirstRead::SetParamLog(bool ownLog) {
  // A touch-screen unit keeps its own parameter log behind the screen: its
  // column-log switch is not asked and the download entry stays hidden as
  // the cleared panel left it. With no column logs its full fault log then
  // gets the long size.
  v_.gTouchScreenLog = ownLog;
  if (ownLog) {
    v_.gParamLogCfg = false;
    return;
  }
  v_.gParamLogCfg = ReadParamLogEnable(c_) == 1;
  f_.mnuPLog.SetVisible(v_.gParamLogCfg);
}

void FirstRead::SetFaultLogSize() {
  const int32_t p = u_.gProjectID;
  v_.gFaultLogSize = 100;
  if (u_.gIsKPA || p == 127) {
    v_.gFaultLogSize = 1000;
    f_.mnuFullFaultLog.SetVisible(true);
  } else if (OneOf(p, {126, 135})) {
    v_.gFaultLogSize = 100;
  } else if (CompiledAfter(u_.txtCplDate, kAutoHVDay)) {
    f_.mnuFullFaultLog.SetVisible(true);
    v_.gFaultLogSize = v_.gParamLogCfg ? 500 : 1000;
  } else {
    f_.mnuFullFaultLog.SetVisible(false);
  }
}

void FirstRead::ReadHeaterMenus() {
  v_.gHeaterStandby = ReadHeaterStandby(c_);
  if (v_.gHeaterStandby >= 0) {
    f_.mnuHtrStby.SetVisible(true);
    f_.mnuHtrStby.SetEnabled(true);
    f_.mnuHtrStby.SetChecked(v_.gHeaterStandby != 0);
  }
  v_.gHeaterState = ReadHeaterState(c_);
  f_.mnuHeaterState.SetVisible(v_.gHeaterState >= 0);
  if (v_.gHeaterState >= 0) f_.mnuHeaterState.SetChecked(v_.gHeaterState != 0);
}

void FirstRead::InitDisplayForSSPAUnit() {
  f_.Label19.SetCaption("PS:");
  f_.Label20.SetCaption("Xmtr:");
  f_.Label31.SetCaption("Tx On");
  f_.Frame30.SetVisible(false);
  // No tube: nothing of the cathode monitor or the heater applies.
  s_.gCathodeDisplay = false;
  f_.txtCathI.SetVisible(false);
  f_.txtAnodeV.SetVisible(false);
  f_.mnuHeaterState.SetVisible(false);
  setup_.SetupFrame14();
  setup_.SetupFrame20();
  setup_.SetupFrame27();
  if (u_.gFWFamilyD) {
    f_.Label2.SetCaption("FBDC");
    f_.Label2.SetVisible(true);
    f_.txtAtnCnt.SetVisible(true);
    f_.UpDown2.SetVisible(true);
  }
  // The touch-screen exception belongs to the tube panel; a solid-state
  // unit is always asked.
  SetParamLog(false);
  f_.SetCaption(std::string(ui::FrmMain::kTitle) + " - SSPA");
}

void FirstRead::InitUnitCfg() {
  int16_t word = -1;
  // These two projects have no configuration word to read.
  if (OneOf(u_.gProjectID, {139, 26})) {
    word = 1;
  } else {
    Guarded([&] { word = ReadUnitCfgWord(c_); });
  }
  if (word < 0) {
    f_.mnuRack.SetChecked(false);
    f_.mnu2ndUmbilical.SetChecked(false);
    u_.gUnitCfgFlags = 1;
    return;
  }
  u_.gUnitCfgFlags = word;
  f_.mnuRack.SetChecked((word & kCfgRack) != 0);
  u_.gIsDualTWT = u_.gIsTWTA && (word & kCfgDualTube) != 0;
  f_.mnu2ndUmbilical.SetChecked((word & kCfgDualTube) != 0);
  v_.gRfBandSelectable = (word & kCfgMultiBand) != 0;
  v_.gRevPwrTempOption = !u_.gIsTWTA && (word & kCfgRevPwrTemp) != 0;
  v_.gDCVMonitorOption = !u_.gIsTWTA && (word & kCfgDCVMonitor) != 0;
  v_.gLinSlopeOption = (word & kCfgLinSlope) != 0;
  f_.mnuAutoClrBUC.SetChecked((word & kCfgAutoClrBUC) != 0);
  v_.gBucEnabled = (word & kCfgProgrammableBUC) != 0;
}

}  // namespace amp
