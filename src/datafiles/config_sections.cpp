#include "datafiles/config_sections.h"

#include "basic/text.h"
#include "datafiles/config_writers.h"

namespace amp {

namespace {

using namespace cfg;

// 1: the firmware the unit reported, and its CPLD when it has one.
void SaveFWPartNumber(ConfigContext& c, FileIO& f) {
  // The "#" rides in the same write as the firmware line, as the file format
  // has always had it.
  f.AddToFile("#Reported Firmware: " + c.unit.gFWPartNumber + ", v" + c.frm.txtFrmRev.Text() +
              "\r\n#");
  if (!c.unit.gBootVersion.empty()) f.AddToFile("#Reported CPLD: v" + c.unit.gBootVersion);
  f.AddToFile("#");
}

// 2: the unit's part number, commented: replaying it would re-label a unit.
void SavePartNumber(ConfigContext& c, FileIO& f) {
  f.AddToFile("#Part Number: " + c.frm.txtPN.Text());
  f.AddToFile("#YK" + NormalizePartNumber(c.frm.txtPN.Text()));
}

// 3: the serial number, commented for the same reason.
void SaveSerialNumber(ConfigContext& c, FileIO& f) {
  f.AddToFile("#Serial Number: " + c.frm.txtSN.Text());
  f.AddToFile("#YL" + c.frm.txtSN.Text());
}

// 4: the model configuration, a label only.
void SaveModelCfgPN(ConfigContext& c, FileIO& f) {
  f.AddToFile("#ModelCfg: " + c.values.gModelCfgPN);
}

bool HasPartNumber(ConfigContext& c) { return !c.frm.txtPN.Text().empty(); }

// Conditions of the later sections, by the unit kinds and options they need.
bool Panel(ConfigContext& c) { return !TS(c); }
bool PanelNotKPA(ConfigContext& c) { return !TS(c) && !KPA(c); }
bool TempComp(ConfigContext& c) { return !TS(c) && (c.frm.mnulcBucSetup.Visible() || !TWTA(c)); }
bool Waveguide(ConfigContext& c) {
  return !P(c, {129, 126, 135}) && c.frm.cmbWgCfg.ListIndex() >= 0;
}
bool Redundant(ConfigContext& c) { return !P(c, {129, 126, 135}); }
bool UnitGain(ConfigContext& c) { return c.values.gHasUnitGain; }
bool Linearizer(ConfigContext& c) { return PanelNotKPA(c) && c.values.gSubBandCount == 0; }
bool AutoXmit(ConfigContext& c) { return c.values.gAutoXmitRestore >= 0; }
bool Polarity(ConfigContext& c) { return c.frm.mnuRfiInvert.Enabled(); }
bool RevTrip(ConfigContext& c) { return !c.frm.txtRhiLvl.Text().empty(); }
// Sections whose value the unit did not report are left out: replaying a
// supply set value or configuration word the host never read would set the
// unit to a default it never had.
bool PSVset(ConfigContext& c) {
  return !P(c, {129, 126, 135}) && !TWTA(c) && !KPA(c) && c.values.gHasPSVset;
}
bool UnitCfg(ConfigContext& c) {
  return PanelNotKPA(c) && (c.unit.gIsProject127 || c.unit.gUnitCfgFlags >= 0);
}
bool LowCostBuc(ConfigContext& c) {
  return !c.unit.gIsProject127 && !P(c, {129, 126}) && CfgBit(c, 10);
}
bool CurrentSense(ConfigContext& c) { return c.values.gHasCurrentSense; }
bool Masks(ConfigContext& c) { return PanelNotKPA(c) && !P(c, {127, 126}); }
bool Latches(ConfigContext& c) { return PanelNotKPA(c) && !P(c, {127, 126, 129}); }
bool RevOffset(ConfigContext& c) { return c.values.gRevRFOffset > -50.0f; }
bool PowerLimit(ConfigContext& c) {
  return PanelNotKPA(c) && !P(c, {102}) && c.values.gMaxPowerLevel != "-1";
}
bool Heater(ConfigContext& c) { return PanelNotKPA(c) && TWTA(c); }
bool HelixRatio(ConfigContext& c) {
  return Heater(c) && !P(c, {127}) && c.values.gHelixCurrentRatio >= 0;
}
bool HelixTrip(ConfigContext& c) {
  return Heater(c) && !P(c, {127}) && !c.values.gHelixCurrentTrip.empty();
}
bool DCVInput(ConfigContext& c) { return !TWTA(c) && PanelNotKPA(c) && c.values.gHasDCVInput; }
bool FanTemp(ConfigContext& c) { return PanelNotKPA(c) && c.values.gFanTemperature >= 0; }
bool Cathode(ConfigContext& c) { return !TS(c) && TWTA(c) && c.frm.txtCathI.Visible(); }
bool LEDMode(ConfigContext& c) { return c.frm.mnuLEDMode.Visible(); }
bool Project127(ConfigContext& c) { return P(c, {127}); }
bool FloatSupply(ConfigContext& c) { return c.values.gHasFloatSupply; }
bool ProductId(ConfigContext& c) { return !c.values.gProductID.partNumber.empty(); }

}  // namespace

std::string NormalizePartNumber(const std::string& text) { return Trim(text); }

const std::vector<ConfigSection>& ConfigSections() {
  static const std::vector<ConfigSection> sections = {
      {1, "SaveFWPartNumber", nullptr, SaveFWPartNumber},
      {2, "SavePartNumber", HasPartNumber, SavePartNumber},
      {3, "SaveSerialNumber", nullptr, SaveSerialNumber},
      {4, "SaveModelCfgPN", nullptr, SaveModelCfgPN},
      {5, "SaveBandInfo", Panel, SaveBandInfo},
      {6, "SaveSubBandInfo", PanelNotKPA, SaveSubBandInfo},
      {7, "SaveTempCompParams", TempComp, SaveTempCompParams},
      {8, "SaveWaveguideCfg", Waveguide, SaveWaveguideCfg},
      {9, "SaveRedundantModeCfg", Redundant, SaveRedundantModeCfg},
      {10, "SaveAttenuation", nullptr, SaveAttenuation},
      {11, "SaveGainBalance", nullptr, SaveGainBalance},
      {12, "SaveUnitGain", UnitGain, SaveUnitGain},
      {13, "SaveLinearizerParams", Linearizer, SaveLinearizerParams},
      {14, "SaveStartUpCfg", nullptr, SaveStartUpCfg},
      {15, "SaveXmitState", nullptr, SaveXmitState},
      {16, "SaveAutoXmitRestore", AutoXmit, SaveAutoXmitRestore},
      {17, "SaveRFInhibitState", nullptr, SaveRFInhibitState},
      {18, "SaveRFPolarity", Polarity, SaveRFPolarity},
      {19, "SaveConstantPower", nullptr, SaveConstantPower},
      {20, "SaveWGArcDetectorType", nullptr, SaveWGArcDetectorType},
      {21, "SaveFwdRFTripLevels", nullptr, SaveFwdRFTripLevels},
      {22, "SaveRevRFTripLevel", RevTrip, SaveRevRFTripLevel},
      {23, "SaveFactoryTripLevels", nullptr, SaveFactoryTripLevels},
      {24, "SavePSVset", PSVset, SavePSVset},
      {25, "SaveUnitCfg", UnitCfg, SaveUnitCfg},
      {26, "SaveLowCostBucCfg", LowCostBuc, SaveLowCostBucCfg},
      {27, "SaveCurrentSenseCfg", CurrentSense, SaveCurrentSenseCfg},
      {28, "SaveFaultEnableCfg", Masks, SaveFaultEnableCfg},
      {29, "SaveLatchedFaults", Latches, SaveLatchedFaults},
      {30, "SaveAlarmEnableCfg", Masks, SaveAlarmEnableCfg},
      {31, "SaveRevRFOffset", RevOffset, SaveRevRFOffset},
      {32, "SaveMaxPowerLimit", PowerLimit, SaveMaxPowerLimit},
      {33, "SaveHeaterStandby", Heater, SaveHeaterStandby},
      {34, "SaveHelixCurrentRatio", HelixRatio, SaveHelixCurrentRatio},
      {35, "SaveHelixCurrentTrip", HelixTrip, SaveHelixCurrentTrip},
      {36, "SaveDCVInputLimits", DCVInput, SaveDCVInputLimits},
      {37, "SaveTemperatureTripLevels", PanelNotKPA, SaveTemperatureTripLevels},
      {38, "SaveFanTemperature", FanTemp, SaveFanTemperature},
      {39, "SaveCathodeMonitor", Cathode, SaveCathodeMonitor},
      {40, "SaveUnitHours", nullptr, SaveUnitHours},
      {41, "SaveSerialPortParameters", nullptr, SaveSerialPortParameters},
      {42, "SaveEnetParameters", nullptr, SaveEnetParameters},
      {43, "SaveLEDMode", LEDMode, SaveLEDMode},
      {44, "SaveADCScalers", Project127, SaveADCScalers},
      {45, "SaveDigitalPots", Project127, SaveDigitalPots},
      {46, "SaveFloatSupplyParams", FloatSupply, SaveFloatSupplyParams},
      {47, "SaveProductID", ProductId, SaveProductID},
  };
  return sections;
}

void WriteConfigSections(ConfigContext& c, FileIO& file) {
  for (const ConfigSection& s : ConfigSections())
    if (s.when == nullptr || s.when(c)) s.write(c, file);
}

}  // namespace amp
