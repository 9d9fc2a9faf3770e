// RF power commands: attenuation and the attenuator DAC, the linearizer
// (whole unit and per sub-band), gain balance and unit gain, constant power
// and go-to-power, the forward and reverse RF readings, the RF trip levels,
// the reverse offset and return loss, the maximum power limit, the per-band
// RF limits and the attenuation limits. Also the few choices of command text
// that depend only on the unit's project number and firmware revision.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "link/comms.h"

namespace amp {

// ---- Readers -------------------------------------------------------------
// Every reader sends its query with the error box off and falls back to its
// default on a refused command, a failed position test or an empty field.

// "?A" -> "?" + attenuation in dB. The text behind the "?" up to the ETX, ""
// when not read.
std::string ReadAttenuation(Comms& c);

// "8" -> "8" + attenuator DAC count. The count, -1 when not read.
int16_t ReadAtnCount(Comms& c);

// "?/" -> "?" + DAC count. The count, -1 when not read.
int16_t ReadAtnDac(Comms& c);

// "?/" -> "?" + four characters: the down-link attenuator of a block
// downconverter, untrimmed; "" when not read.
std::string ReadDLAtten(Comms& c);

// "?Zz" -> "?" + amplitude (4) + phase (4); with `withSlope` also "?/" ->
// "?" + slope (4). gRespFields[0] amplitude, [1] phase, [2] slope ("" when
// the slope read fails). True when the linearizer reply was located.
bool ReadLinearizer(Comms& c, bool withSlope);

// The linearizer set of sub-band `n` (1..8): gRespFields[0] amplitude,
// [1] phase, [2] slope, [3] gain balance state, [4] gain balance value,
// [5] supply set value. True when the first read ("PZ?" + n) was located.
bool ReadSubBandLinearizer(Comms& c, int n);

// "PG?" -> "PG" + state (1) + value. The state (0 disabled, above 0 enabled,
// -1 absent); gRespFields[0] the value in "#0.0".
int16_t ReadGainBalance(Comms& c);

// "PBCG?" -> "PBCG" + value. gRespFields[0] the value in "#0.0" ("" when
// absent); true when present.
bool ReadIFGainBalance(Comms& c);

// "PBJ?" -> "PBJ" + mode (1, "1" enabled) + gain (4). gRespFields[0] the
// mode, [1] the trimmed gain in dB; true when read.
bool ReadUnitGain(Comms& c);

// "G?" -> "G" + level in dBm. "#0.0" text of the level, "" when not read or
// outside 0 <= level < 64.
std::string ReadConstPowerLevel(Comms& c);

// "?P" / "?Q" -> "?" + four characters. The trimmed reading; it may begin
// with "<" for a power below the detector's range. "" when not read.
std::string ReadFwdRF(Comms& c);
std::string ReadRevRF(Comms& c);

// "?HLR" -> "?" + three five-character fields (forward high, forward low,
// reverse high): type letter ("F" fault, "A" alarm, else disabled) and the
// level in dBm. gRespFields[0..2]; true only when the third was read.
bool ReadRFTripLevels(Comms& c);

// "YFTF?" then "YFTR?" -> "YFTF" / "YFTR" + level. gRespFields[0] forward,
// [1] reverse (digits and points only). 0 when both were answered, -1 when
// not: the reverse of the usual sense.
int16_t ReadFactoryTripLevels(Comms& c);

// "PR?" -> "PR" + offset. The offset as decimal text (a leading blank when
// not negative), "" when absent.
std::string ReadRevRFOffset(Comms& c);

// "PS?" -> "PS" + level. The return loss level, -1 when not read; 0 or less
// means the unit lacks the feature. Not guarded: a level beyond single
// precision reaches the caller as ConversionFailure.
float ReadReturnLoss(Comms& c);

// The maximum power limit and its fault level.
struct PowerLimitRecord {
  bool ok = false;
  std::string state;   // "PO?": "1" enabled; "POO?": the fault level in dB
  std::string limit;   // "##0.0##" (single-level form, or the first level)
  std::string limit2;  // "##0.0#", the second level of the two-level form
};
// "PO?" -> "PO" + state (1) + limit [+ ";" + second limit].
PowerLimitRecord ReadPowerLimit(Comms& c);
// "POO?" -> "POO" + fault level; the level text goes to `state`.
PowerLimitRecord ReadPowerLimitFaultLevel(Comms& c);

// The RF power limits of band 1..4 (any other band reads band 1's) in
// "#0.0" dBm, "" when not read. Whether the unit stores the limit in tenths
// of a dB depends on the project and the firmware revision `fw`.
std::string ReadBandMaxPower(Comms& c, int fw, int project, int band);
std::string ReadBandMinPower(Comms& c, int fw, int project, int band);

// ".?P203", ".?P320", ".?P321", ".?P322" -> maximum attenuation of bands 1
// to 4 in tenths of a dB. gRespFields[0..3] in dB, "" when not read. True
// when [0] is empty (the usual sense reversed; callers use only the fields).
bool ReadMaxAttenTable(Comms& c);

// ".?P203" -> the maximum attenuation in tenths of a dB, -1 when not read.
int16_t ReadMaxAtten(Comms& c);

// ".?P334" -> the attenuator range in tenths of a dB. "#0.0" dB text, ""
// when not read.
std::string ReadAttenRange(Comms& c);

// ---- Set commands --------------------------------------------------------

inline constexpr std::string_view kConstPowerOn = "<";
inline constexpr std::string_view kConstPowerOff = "H";

// "K" + the attenuation exactly as typed.
std::string CmdAtndB(std::string_view typed);
// `mnemonic` (".D9" or ".D1", see AtnCountCommandFor) + the count with its
// sign position: ".D9 1024".
std::string CmdAtnCount(std::string_view mnemonic, int count);
// "C" + the count in plain digits, for units that take the short form.
std::string CmdAtnCountC(int count);
// "P/" + slope or direct attenuator step: as typed, or reformatted "#0.0".
std::string CmdAtnSlopeText(std::string_view typed);
std::string CmdAtnSlope(double value);
// "PZ" / "Pz" + linearizer amplitude / phase text.
std::string CmdLinAmplitude(std::string_view text);
std::string CmdLinPhase(std::string_view text);
// Per sub-band n (1..8), value + ":" + n behind "PZ", "Pz", "P/", "P|", "PG".
std::string CmdSubBandLinAmplitude(std::string_view value, int n);
std::string CmdSubBandLinPhase(std::string_view value, int n);
std::string CmdSubBandSlope(std::string_view value, int n);
std::string CmdSubBandSupply(std::string_view value, int n);
std::string CmdSubBandGainBalance(std::string_view value, int n);
// "PG1" / "PG0", and "PG" + value in "#0.0".
std::string CmdGainBalanceEnable(bool on);
std::string CmdGainBalance(double dB);
// "PBJ" + mode or value (written only as configuration file comments).
std::string CmdUnitGain(std::string_view text);
// "G" (Watts) or "GM" (dBm) + level in "####0.0".
std::string CmdConstPower(double value, bool inDbm);
// "E" or "EM" + level in "#####0.0".
std::string CmdGoToPower(double value, bool inDbm);

// The three RF trip lines and their types: the letters of the command.
enum class RfTrip : char { FwdHigh = 'M', FwdLow = 'L', RevHigh = 'O' };
enum class TripType : char { Fault = 'F', Alarm = 'A', Disabled = 'D' };
// Line + type [+ "M" in dBm] + level in "#####0.0": "MFM45.0", "LD12.5".
std::string CmdTripLevel(RfTrip trip, TripType type, double value, bool inDbm);
// The configuration file form: Watts in "####0.0".
std::string CmdTripLevelFileLine(RfTrip trip, TripType type, double watts);

// "YFTF" / "YFTR" + factory trip in dBm, "##0.0".
std::string CmdFactoryFwdTrip(double dBm);
std::string CmdFactoryRevTrip(double dBm);
// "YFTM" + forward trip margin in percent, "#0"; only where
// FactoryTripMarginApplies.
std::string CmdFactoryTripMargin(double percent);
bool FactoryTripMarginApplies(int project);
// "PR" / "PS" + "##0.0".
std::string CmdRevRFOffset(double dB);
std::string CmdReturnLoss(double dB);
// "PO" + limit "#0.0" dBm; "PO1" / "PO0"; "PO" + first ";" + second as read;
// "POO" + fault level "#0.0" dB.
std::string CmdPowerLimit(double dBm);
std::string CmdPowerLimitEnable(bool on);
std::string CmdPowerLimitTwoLevel(std::string_view first, std::string_view second);
std::string CmdPowerLimitFaultLevel(double dB);
// "YAM" + maximum attenuation "#0.0".
std::string CmdMaxAtten(double dB);
// ".P320 " .. ".P322 " + the maximum attenuation of band 2..4 as read (in
// dB, not scaled back); "" for other bands, which have no such parameter.
std::string CmdBandMaxAtten(int band, std::string_view value);
// ".P334 " + attenuator range in tenths of a dB, "##0".
std::string CmdAttenRange(double dB);

// ---- Choices by unit -----------------------------------------------------

// Analog count reads of forward and reverse RF for the unit. Kept in the
// unit model; nothing sends them.
std::string ForwardAnalogCountCommand(int project, std::string_view bandName);
std::string ReverseAnalogCountCommand(int project, int fw, bool isTWTA);
// The older count command's mnemonic (gAtnCountCommand): ".D1" or ".D9".
std::string AtnCountCommandFor(int project, bool newDualTWT);
// The lowest attenuator count the panel accepts (gMinAtnCount).
int16_t MinAtnCountFor(int project, int fw, bool isTWTA, bool picProcessor);

}  // namespace amp
