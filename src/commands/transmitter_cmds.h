// Transmitter commands: transmitter and RF inhibit switches, fault reset,
// start-up mode, the single status words, and the tube's heater, helix,
// cathode monitor, hours timers and end-of-life figures.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "link/comms.h"

namespace amp {

// Actions and fixed set texts.
inline constexpr std::string_view kCmdTransmitterOn = "@";
inline constexpr std::string_view kCmdTransmitterOff = "A";
inline constexpr std::string_view kCmdRfInhibitOn = "I";
inline constexpr std::string_view kCmdRfInhibitOff = "J";
inline constexpr std::string_view kCmdFaultReset = "B";
inline constexpr std::string_view kCmdStartupNormal = "PX0";
inline constexpr std::string_view kCmdStartupOff = "PX1";
inline constexpr std::string_view kCmdStartupOn = "PX2";
// "PBA0" disables the automatic restore of the transmitter, "PBA1" enables
// it (the configuration file deliberately writes the opposite digit).
inline constexpr std::string_view kCmdAutoXmitRestoreEnable = "PBA1";
inline constexpr std::string_view kCmdAutoXmitRestoreDisable = "PBA0";
inline constexpr std::string_view kCmdRfInhibitPolarityInverted = "PTI0";
inline constexpr std::string_view kCmdRfInhibitPolarityNormal = "PTI1";
inline constexpr std::string_view kCmdHeaterStandbyOn = ":1";
inline constexpr std::string_view kCmdHeaterStandbyOff = ":0";
inline constexpr std::string_view kCmdHeaterOn = "PBH1";
inline constexpr std::string_view kCmdHeaterOff = "PBH0";
inline constexpr std::string_view kCmdNegativeAnodeOn = "PBFE1";
inline constexpr std::string_view kCmdNegativeAnodeOff = "PBFE0";

// Set commands with a value.
// "YH" + heater hours + beam hours, each "000000".
std::string CmdHours(double heaterHours, double beamHours);
std::string CmdHelixCurrentRatio(int ratio);           // "YGHI" + ratio
std::string CmdHelixCurrentTrip(std::string_view mA);  // "YFTH" + text
std::string CmdCathodeMonitorState(int state);         // "PBFS" + state
std::string CmdAnodeScale(double volts);               // "PBFT" + "###0"
std::string CmdNegativeAnodeStart(int volts);          // "PBFF" + value
std::string CmdAnodeVoltage(double volts);             // "PBFA" + "###0"
std::string CmdCathodeScalar(double scalar);           // "PBFO" + "###0"
std::string CmdIdealCathodeCurrent(double mA);         // "PBFI" + "##0"

// Status word k alone: 1 "?!", 2 "?(", 3 "?#"; reply "?" + four characters.
// Any other k sends nothing. The word, or "".
std::string ReadStatusWord(Comms& c, int k);

// ".?P54" -> ".P54 " + digit. 0 when RF is not inhibited, -1 otherwise
// (also when not read).
int16_t ReadRFInhibitState(Comms& c);

// "PTI?" -> "PTI" + digit. 0 inverted, 1 normal, -1 not read.
int16_t ReadRFPolarity(Comms& c);

// "PBA?" -> "PBA" + digit. 0 means the restore is disabled; -1 not read.
int16_t ReadAutoXmitRestore(Comms& c);

// "PX?" -> "PX" + digit. 0 normal, 1 off, 2 on, -1 not read.
int16_t ReadStartupMode(Comms& c);

// ":?" -> ":" + digit, and "PBH?" -> "PBH" + digit. -1 not read.
int16_t ReadHeaterStandby(Comms& c);
int16_t ReadHeaterState(Comms& c);

// "?M" / "?N" -> "?" + six digits. Hours, -1 not read.
int32_t ReadHeaterHours(Comms& c);
int32_t ReadXmitHours(Comms& c);

// "?VI" (or "?VIvi" for two tubes) -> "?" + four-character fields: helix
// voltage and current into gRespFields[0], [1] (second tube [2], [3]).
// True when the last field of the request was read.
bool ReadHelixValues(Comms& c, bool dual);

// "YGHI?" -> "YGHI" + ratio. -1 not read. Not guarded: a ratio beyond a
// 16-bit integer throws ConversionFailure.
int16_t ReadHelixCurrentRatio(Comms& c);

// "YFTH?" -> "YFTH" + trip level text in mA, or "".
std::string ReadHelixCurrentTrip(Comms& c);

// "PHV?" -> "PHV" + four characters, or on refusal "?J" -> "?" + four
// characters. Volts, 0 when not read.
float ReadHeaterVoltage(Comms& c);

// "PHI?" -> "PHI" + four characters. Amperes, 0 when not read.
float ReadHeaterCurrent(Comms& c);

// "?C" -> "?" + four characters, or on refusal "PBFC?" -> "PBFC" + number.
// mA, -1 when not read or negative.
int16_t ReadCathodeCurrent(Comms& c);

// Cathode monitor settings, each "PBF<x>?" -> "PBF<x>" + number.
int16_t ReadCathodeSense(Comms& c);         // "PBFS?": 1 above 0, else 0; -1 not read
int16_t ReadCathodeMode(Comms& c);          // "PBFM?": -1 unless above 0
int16_t ReadIdealCathodeCurrent(Comms& c);  // "PBFI?": mA, -1 unless above 0
int16_t ReadAnodeVoltage(Comms& c);         // "PBFA?": V, -1 unless above 0
int16_t ReadCathodeScalar(Comms& c);        // "PBFO?": 0 unless 0 or more
int16_t ReadAnodeScale(Comms& c);           // "PBFT?": V full scale, 0 not read
bool ReadNegativeAnodeEnable(Comms& c);     // "PBFE?"
int16_t ReadNegativeAnodeStart(Comms& c);   // "PBFF?": V, 0 not read

// "QEP?" -> "QEP" + a;b;c. gRespFields[0], [1] the first two texts, [2] the
// third as a whole number in "###0". True when all three were located.
bool ReadTwtEolParams(Comms& c);

// "QEC" -> "QEC" + estimate + ";". The estimate text, or "".
std::string ReadTwtEolEstimate(Comms& c);
// The estimate as shown: two characters are years, three are months (only
// the first character is kept), anything else "???".
std::string TwtEolEstimateText(std::string_view estimate);

}  // namespace amp
