// Fault configuration commands: fault and alarm enable masks, latching,
// temperature and DC input limits, temperatures and current sense values.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "link/comms.h"

namespace amp {

// Actions.
inline constexpr std::string_view kCmdArcTest = "PCT";
inline constexpr std::string_view kCmdSummaryFaultTest = "PCS";

// Set commands.
std::string CmdFaultEnable(int32_t mask);                  // "YIF" + mask
std::string CmdFaultEnable(int32_t mask, int32_t second);  // "YIF" + mask + "," + second
std::string CmdAlarmEnable(int32_t mask);                  // "YIA" + mask
std::string CmdLowLineLatch(int value);                    // ".P151 " + value (1 latching)
std::string CmdExtIlokLatch(int value);                    // ".P212 " + value (1 latching)
// k = 1 "PBDAL" alarm low, 2 "PBDAH" alarm high, 3 "PBDFL" fault low,
// 4 "PBDFH" fault high, + volts as text; any other k gives "".
std::string CmdDCVLimit(int k, std::string_view volts);
std::string CmdDCVRatio(std::string_view ratio);  // "PBDR" + ratio
// Temperature fault level: ".P4 " + text on units with the old trip
// parameters, else "PBKF" + text. ".P136 " + text is what to send when the
// unit refuses "PBKF".
std::string CmdTempFaultLevel(std::string_view degrees, bool oldTempTrips);
std::string CmdTempFaultParam(std::string_view degrees);
// Temperature alarm level: "PBKA" + text; ".P179 " + text when refused.
std::string CmdTempAlarmLevel(std::string_view degrees);
std::string CmdTempAlarmParam(std::string_view degrees);
std::string CmdInletDiffAlarmLevel(std::string_view degrees);  // "PBKI" + text
std::string CmdLatchTempFaults(bool latch);                    // "PBKL1" / "PBKL0"
std::string CmdFanTemperature(int degrees);                    // "PBG" + value
std::string CmdMaxCalTemp(std::string_view degrees);           // ".P332 " + text
std::string CmdMinCalTemp(std::string_view degrees);           // ".P333 " + text
std::string CmdCurrentSenseGain(double gain);                  // "YIG" + "##0.0"
std::string CmdCurrentSenseResistor(double ohms);              // "YIR" + "0.0##"
std::string CmdWGArcDetectorType(int type);                    // 0 "PTW0", other "PTW1"

// "YIF?" -> "YIF" + mask [+ "," + second mask]. True when the mask was read
// into `enableWord`; a second word after a comma goes to `enableWord2`, which
// otherwise keeps its value. Not guarded: a mask beyond a 32-bit integer
// throws ConversionFailure.
bool ReadFaultEnable(Comms& c, int32_t& enableWord, int32_t& enableWord2);

// "YIA?" -> "YIA" + mask. As above, one word only. Not guarded.
bool ReadAlarmEnable(Comms& c, int32_t& enableWord);

// ".?P151" / ".?P212" -> ".P151 " / ".P212 " + number; above 0 is latched.
// -1 when not read.
int16_t ReadLowLineLatch(Comms& c);
int16_t ReadExtIlokLatch(Comms& c);

// Temperature fault level in degrees C as text, "" when not read. With
// `oldTempTrips` ".?P4" -> ".P4 " + value; otherwise "PBKF?" (sent twice)
// -> "PBKF" + value, and ".?P136" only when both of those were refused.
std::string ReadTempFaultLevel(Comms& c, bool oldTempTrips);
// "PBKA?" twice, then ".?P179".
std::string ReadTempAlarmLevel(Comms& c);
// "PBKI?" once.
std::string ReadInletDiffAlarmLevel(Comms& c);
// "PBKL?" twice -> "PBKL" + digit. 1 is latching, -1 not read.
int16_t ReadLatchTempFaults(Comms& c);

// "?T" (or "?TT" with `second`) -> "?" + four-character fields. The first
// field's text goes to gRespFields[0], the second's (when numeric) to [1].
// Degrees C from -40 to 120; -125 for anything else or when not read.
int16_t ReadTemperature(Comms& c, bool second = false);

// "?t" -> "?" + degrees. gRespFields[0] gets it in "##0". -50 when not read.
float ReadInletTemperature(Comms& c);

// ".?P332" / ".?P333" -> ".P332 " / ".P333 " + degrees, as "##0"; "".
std::string ReadMaxCalTemp(Comms& c);
std::string ReadMinCalTemp(Comms& c);

// "PBG?" -> "PBG" + degrees. -1 when not read.
int16_t ReadFanTemperature(Comms& c);

// "PBDV?" -> "PBDV" + volts, "PBDR?" -> "PBDR" + ratio: the text into
// gRespFields[0] (cleared first). True when it is a number.
bool ReadDCVInput(Comms& c);
bool ReadDCVRatio(Comms& c);
// k = 1 "PBDAL?", 2 "PBDAH?", 3 "PBDFL?", 4 "PBDFH?" -> echo + volts into
// gRespFields[0]. True when it is a number. Any other k sends nothing.
bool ReadDCVLimit(Comms& c, int k);

// "?IiJj" -> "?" + four four-character fields into gRespFields[0] to [3].
bool ReadCurrentSense(Comms& c);
// ".?P92" -> ".P92 " + gain: the text as sent ("" when not read; callers
// take a text that is not a number as 0).
std::string ReadCurrentSenseGain(Comms& c);
// ".?P93" -> ".P93 " + ohms. 0 when not read or not a number.
float ReadCurrentSenseResistor(Comms& c);

// "PTW?" -> "PTW" + digit: 0 "Apollo", 1 "Fiber", -1 not read. Not guarded.
int16_t ReadWGArcDetectorType(Comms& c);

}  // namespace amp
