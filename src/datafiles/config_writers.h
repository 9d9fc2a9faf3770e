// The configuration file's section writers, shared by the theme files that
// hold them and the ordered table in config_sections.cpp. Internal to the
// data file layer.
#pragma once

#include <initializer_list>
#include <string>

#include "basic/numbers.h"
#include "datafiles/config_sections.h"

namespace amp::cfg {

// The unit kinds that most sections are conditioned on.
inline bool TS(const ConfigContext& c) { return c.unit.gTouchScreen; }
inline bool KPA(const ConfigContext& c) { return c.unit.gIsKPA; }
inline bool TWTA(const ConfigContext& c) { return c.unit.gIsTWTA; }
inline bool P(const ConfigContext& c, std::initializer_list<int> projects) {
  for (int p : projects)
    if (c.unit.gProjectID == p) return true;
  return false;
}
// Bit `n` of the unit configuration word; nothing is set while it is unread.
inline bool CfgBit(const ConfigContext& c, int n) {
  return c.unit.gUnitCfgFlags >= 0 && (c.unit.gUnitCfgFlags >> n & 1) != 0;
}

// The host's plain number-to-text conversion, which puts a blank ahead of a
// value that is not negative: "YP1 40" is the file's own spelling.
inline std::string Str(double v) { return (v >= 0 ? " " : "") + NumText(v); }
inline std::string Enabled(bool on) { return on ? "Enabled" : "Disabled"; }

// Bands, sub-bands, temperature compensation, waveguide, attenuation, gain
// and linearizer (sections 5 to 13).
void SaveBandInfo(ConfigContext& c, FileIO& f);
void SaveSubBandInfo(ConfigContext& c, FileIO& f);
void SaveTempCompParams(ConfigContext& c, FileIO& f);
void SaveWaveguideCfg(ConfigContext& c, FileIO& f);
void SaveRedundantModeCfg(ConfigContext& c, FileIO& f);
void SaveAttenuation(ConfigContext& c, FileIO& f);
void SaveGainBalance(ConfigContext& c, FileIO& f);
void SaveUnitGain(ConfigContext& c, FileIO& f);
void SaveLinearizerParams(ConfigContext& c, FileIO& f);

// Transmitter state, RF trips and limits, temperatures and tube settings.
void SaveStartUpCfg(ConfigContext& c, FileIO& f);
void SaveXmitState(ConfigContext& c, FileIO& f);
void SaveAutoXmitRestore(ConfigContext& c, FileIO& f);
void SaveRFInhibitState(ConfigContext& c, FileIO& f);
void SaveRFPolarity(ConfigContext& c, FileIO& f);
void SaveConstantPower(ConfigContext& c, FileIO& f);
void SaveWGArcDetectorType(ConfigContext& c, FileIO& f);
void SaveFwdRFTripLevels(ConfigContext& c, FileIO& f);
void SaveRevRFTripLevel(ConfigContext& c, FileIO& f);
void SaveFactoryTripLevels(ConfigContext& c, FileIO& f);
void SavePSVset(ConfigContext& c, FileIO& f);
void SaveCurrentSenseCfg(ConfigContext& c, FileIO& f);
void SaveLatchedFaults(ConfigContext& c, FileIO& f);
void SaveRevRFOffset(ConfigContext& c, FileIO& f);
void SaveMaxPowerLimit(ConfigContext& c, FileIO& f);
void SaveHeaterStandby(ConfigContext& c, FileIO& f);
void SaveHelixCurrentRatio(ConfigContext& c, FileIO& f);
void SaveHelixCurrentTrip(ConfigContext& c, FileIO& f);
void SaveDCVInputLimits(ConfigContext& c, FileIO& f);
void SaveTemperatureTripLevels(ConfigContext& c, FileIO& f);
void SaveFanTemperature(ConfigContext& c, FileIO& f);
void SaveCathodeMonitor(ConfigContext& c, FileIO& f);

// Unit configuration word, upconverter, fault and alarm masks.
void SaveUnitCfg(ConfigContext& c, FileIO& f);
void SaveLowCostBucCfg(ConfigContext& c, FileIO& f);
void SaveFaultEnableCfg(ConfigContext& c, FileIO& f);
void SaveAlarmEnableCfg(ConfigContext& c, FileIO& f);

// Hours, ports and network, and the factory-only settings of the end.
void SaveUnitHours(ConfigContext& c, FileIO& f);
void SaveSerialPortParameters(ConfigContext& c, FileIO& f);
void SaveEnetParameters(ConfigContext& c, FileIO& f);
void SaveLEDMode(ConfigContext& c, FileIO& f);
void SaveADCScalers(ConfigContext& c, FileIO& f);
void SaveDigitalPots(ConfigContext& c, FileIO& f);
void SaveFloatSupplyParams(ConfigContext& c, FileIO& f);
void SaveProductID(ConfigContext& c, FileIO& f);

}  // namespace amp::cfg
