// Block upconverter and float supply commands, and the model configuration
// part number.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "link/comms.h"

namespace amp {

// The float supply set value ("YC?" or "YC?:" + sub-band).
struct PSVsetRecord {
  int16_t status = -1;  // 0 good, -1 failed
  int16_t spare = 0;
  int32_t value = 0;
};
// "YC?" (or "YC?:" + n for n above -1) -> "YC" + value [+ ":" + index].
PSVsetRecord ReadPSVset(Comms& c, int n = -1);

// Set commands of the upconverter, values in dB or dBm.
std::string CmdBucMode(int16_t mode);    // "PBCM" + mode (0 fixed, 1 variable, 2 optimized)
std::string CmdBucSetPoint(double dBm);  // "PBCS" + "#0.0"
std::string CmdBucOffset(double dB);     // "PBCO" + "#0.0"; the dialog keeps it in -31.5..31.5
std::string CmdBucAtten(double dB);      // "PBCA" + "#0.0"
std::string CmdBucMaxAtten(double dB);   // "PBCN" + "#0.0"
// Float supply settings. The set numbers differ from the read order of
// ReadAmcSettings (heater voltage, focus off, focus on, heater current).
std::string CmdAmcHeaterVoltage(double volts);  // "YCD0 " + "##0.0#"
std::string CmdAmcHeaterCurrent(double amps);   // "YCD1 " + "##0.0#"
std::string CmdAmcFocusOffVoltage(double kV);   // "YCD2 " + "#####0.0"
std::string CmdAmcFocusOnVoltage(double kV);    // "YCD3 " + "#####0.0"
std::string CmdPSVset(int32_t value);           // "YC" + value

// "PBC<x>?" -> "PBC<x>" + number. The defaults tell "not read":
// attenuation -1 (no upconverter), power, set point and temperature -60,
// maximum attenuation 31.5, offset and ideal level 0, mode -1.
float ReadBucAtten(Comms& c);
float ReadBucPower(Comms& c);
float ReadBucSetPoint(Comms& c);
float ReadBucTemperature(Comms& c);
float ReadBucMaxAtten(Comms& c);
float ReadBucOffset(Comms& c);
int16_t ReadBucMode(Comms& c);
float ReadBucIdeal(Comms& c);

// "YCA?" -> "YCA" + 8 to 12 values separated by ";". Each value goes to
// gRespFields from index 0, the index after the last is set to "" (as far as
// the 11 entries reach). False, and gRespFields untouched, otherwise.
bool ReadAmcAnalogs(Comms& c);
// "YCD?" -> "YCD" + at least 4 values: heater voltage, focus off voltage,
// focus on voltage, heater current. As ReadAmcAnalogs.
bool ReadAmcSettings(Comms& c);
// "YCI?" -> "YCI" + status. -1 means no float supply.
int16_t ReadAmcStatus(Comms& c);

// "YJ?" -> "YJ" + text. "" when not read (callers show "NOT SET").
std::string ReadModelCfgPN(Comms& c);

}  // namespace amp
