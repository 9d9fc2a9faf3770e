// Identity and factory commands: what the unit is (firmware identity, part
// and serial numbers, versions, product id), its configuration word, clock,
// analog scalers, digital pots, temperature compensation, and the unit id
// word that the address search probes with.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "link/comms.h"

namespace amp {

// Actions and fixed set texts.
inline constexpr std::string_view kCmdUnitReset = "~";
inline constexpr std::string_view kCmdUpcAvailable = "PBUH1";
inline constexpr std::string_view kCmdUpcUnavailable = "PBUH0";
inline constexpr std::string_view kCmdStatusLedEnabled = "PBW0";
inline constexpr std::string_view kCmdStatusLedDisabled = "PBW1";
inline constexpr std::string_view kCmdGainTempCompOn = "PI1";
inline constexpr std::string_view kCmdGainTempCompOff = "PI0";
inline constexpr std::string_view kCmdSwitch1ToB = "U0";
inline constexpr std::string_view kCmdSwitch1ToA = "U1";
inline constexpr std::string_view kCmdSwitch2ToB = "U2";
inline constexpr std::string_view kCmdSwitch2ToA = "U3";
inline constexpr std::string_view kCmdRedundancyAuto = "UA";
inline constexpr std::string_view kCmdRedundancyManual = "UM";

// Set commands with a value.
std::string CmdUnitPartNumber(std::string_view number);    // "YK" + number
std::string CmdUnitSerialNumber(std::string_view number);  // "YL" + number
std::string CmdUnitCfgWord(int32_t word);                  // "YM" + word
std::string CmdDateTime(std::string_view text);            // "%" + text
// "YO" + n + " " + scaler.
std::string CmdAdcScaler(int n, int32_t scaler);
// "YP" + n + count, the count as the plain number text of the configuration
// files: a blank stands ahead of a count that is not negative ("YP1 40").
std::string CmdDigitalPot(int n, int32_t count);
std::string CmdOverdriveTripLevel(double dB);                  // "YP3 " + "#0.0"
std::string CmdTempCoefficient(std::string_view coefficient);  // "YB" + text
// "YB" + coefficient + "s" + sub-band.
std::string CmdSubBandTempCoefficient(std::string_view coefficient, int subBand);
std::string CmdTWTTempCoefficient(double dBPerDegree);      // "YBT" + "0.000"
std::string CmdAmbientTemperature(std::string_view value);  // "PJ" + value
std::string CmdTWTAmbientTemperature(double degrees);       // "PJT" + "0.000"
// "PC" + the first character of the waveguide configuration list entry;
// "" for an empty entry.
std::string CmdWaveguideConfig(std::string_view entry);

// "1" -> "1" + two characters of 6 useful bits each. (c1 AND 63) x 256 OR
// (c2 AND 63) of the two characters after the first "1" of the reply; -1 when
// the exchange fails, no "1" stands in the reply, or two characters do not
// follow it.
int16_t ReadUnitIDWord(Comms& c);

// "00" -> "00" + firmware number "/" serial "/" revision "/" compile date.
// gRespFields[0..3] get the four fields. The firmware number gets the family
// prefix ("418-" for firmware 715-2268-004, else "426-"): 7 characters are
// written "pppp-ppp", 8 are taken as they stand. A missing "/" ends the list
// and leaves the fields after it empty. False when the exchange fails or the
// reply holds no "0" past the status byte.
bool ReadUnitVersion(Comms& c, std::string_view fwPartNumber);

// "0S" -> "0S" + text. "S" and the text up to ETX, or "". Unguarded.
std::string ReadUnitSerialText(Comms& c);

// "0C" -> "0C" + text. The text after "C" up to ETX, or "". Unguarded.
std::string ReadCPLDVersion(Comms& c);

// "YT" -> "YT" + identity, e.g. "T 715-2251-004 Rev 2.5". The text after the
// echo, blanks trimmed, or "". Its first character "T" marks a tube unit.
std::string ReadUnitType(Comms& c);

// "YM?" -> "YM" + word. The configuration word; -1 when not read. Unguarded:
// a word beyond 16 bits raises ConversionFailure.
int16_t ReadUnitCfgWord(Comms& c);

// "?%" -> "?" + the unit's date and time text. The text, or "".
std::string ReadDateTime(Comms& c);

// ".?P131" -> ".P131 " + 20 characters. The 20 characters, or "".
std::string ReadPN20(Comms& c);

// "YO" + n + "?" -> "YO" + n + " " + scaler, for n from 0 to out.size() - 1.
// Each entry gets its scaler, or -1 when that read fails; a failure does not
// stop the loop. Always true.
bool ReadAdcScalers(Comms& c, std::span<int16_t> out);

// "YP" + n + "?" -> "YP" + n + " " + count. The count, or -1.
int16_t ReadDigitalPot(Comms& c, int n);

// "YP3?" -> "YP3 " + dB. The overdrive fault trip level in dB, or -1.
float ReadOverdriveTripLevel(Comms& c);

// "YB?" -> "YB" + coefficient. The coefficient text, or "". Short replies
// carry a 5-character coefficient ("0.075"); long ones the attenuation-to-
// temperature table form, up to ETX.
std::string ReadTempCoefficient(Comms& c);

// "YB" + n + "?" for n = 1 .. subBands -> "YB" + coefficient [+ "s" + n].
// gRespFields[n-1] get the coefficients ("" when not read). Nothing is asked
// when subBands is below 1 or above 7. True when any coefficient was read.
bool ReadSubBandTempCoefficients(Comms& c, int subBands);

// "PBUH?" -> "PBUH" + digit. 1 when uplink power control is available, -1
// when not read. Unguarded: a non-digit raises ConversionFailure.
int16_t ReadUpcAvailability(Comms& c);

// "PBW?" -> "PBW" + digit. 1 when the status LED is disabled, -1 when not
// read. Unguarded like ReadUpcAvailability.
int16_t ReadLEDMode(Comms& c);

// "PBO?" -> "PBO" + part number ";" manufacturer id ";" serial number ";"
// functional id. All texts empty unless exactly four fields came.
struct ProductID {
  std::string partNumber;
  std::string manufacturerID;
  std::string serialNumber;
  std::string functionalID;  // at most 6 characters
};
ProductID ReadProductID(Comms& c);

// ".?P349" -> ".P349 " + digit. The digit's value (code minus 48, so a
// non-digit gives whatever that yields), or -1. 1 enables parameter logs.
int16_t ReadParamLogEnable(Comms& c);

}  // namespace amp
