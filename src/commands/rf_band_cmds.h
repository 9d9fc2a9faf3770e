// RF band commands: the unit's named RF bands (up to four), its sub-bands
// (up to eight, frequencies in GHz), its free RF frequency in MHz and the
// table of calibration factors by frequency.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "link/comms.h"

namespace amp {

// What ReadBandInfo returns when the unit refuses (or never answers) the band
// read: the panel takes it as "this unit has no band command at all".
inline constexpr std::string_view kBandNotSupported = "NOT SUPPORTED";

// "T?" -> "T" + band name [+ "," + frequency]. The band name, or "" when the
// body does not start with "T"; gRespFields[0] gets the frequency text.
std::string ReadCurrentBand(Comms& c);

// ".?B" + n -> ".B" + n + name [+ "," + GHz]. The band name ("" for an
// unused band), gRespFields[0] the frequency in "#0.0#". kBandNotSupported
// when the exchange fails.
std::string ReadBandInfo(Comms& c, int n);

// "TF?" -> "TF" + MHz. The frequency as a whole number text, "" if absent.
std::string ReadRFFrequency(Comms& c);

// "PBS1?" .. "PBS8?" -> "PBS" + n + "dd.dd". gRespFields[0..7] get the eight
// sub-band frequencies ("" for none); true when any reply could be located.
bool ReadSubBandTable(Comms& c);

// "PBS?" -> "PBS" + digit + "dd.dd". The current sub-band (0 = none, -1 not
// read); gRespFields[0] its frequency.
int16_t ReadCurrentSubBand(Comms& c);

// "QS?" -> "QS" + "f,dB;f,dB;...". The list text; "0.0,0.0;" when the unit
// holds no factors, "" when not read.
std::string ReadCalFactors(Comms& c);

// Set commands.
std::string CmdCurrentBand(std::string_view name);  // "T" + name
// ".B" + n + name, plus "," + frequency when the band has one.
std::string CmdBandInfo(int n, std::string_view name, std::string_view frequency);
// ".P109 255" .. ".P111 255": bands 2 to 4 marked absent; "" for other bands,
// which cannot be marked so.
std::string CmdBandAbsent(int n);
std::string CmdRFFrequency(double mhz);  // "TF" + "####0"
// "PBS" + n for n 1..8; any other n gives the bare "PBS".
std::string CmdSelectSubBand(int n);
// "PBS" + n + frequency text ("dd.dd"); kClearedSubBandFrequency clears it.
inline constexpr std::string_view kClearedSubBandFrequency = "00.00";
std::string CmdSubBandFrequency(int n, std::string_view frequency);
// "QS" + ten "frequency,dB;" pairs exactly as typed, empty ones included.
std::string CmdCalFactors(const std::array<std::string, 10>& frequencies,
                          const std::array<std::string, 10>& factors);

}  // namespace amp
