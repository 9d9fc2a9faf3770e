// Unit profiles: a text file describing one unit (identity, starting state,
// the values its commands read and write, logs and calibration tables), so a
// test or a demo can stand up "that particular unit". The format is described
// in full in sim/profiles/README.md; in short:
//
//   # comment                     (a '#' at the start or after a blank)
//   address = B                   unit keys at the top (or under [unit])
//   unit_id = 0x0203
//   summary = T@@@                four status characters each for summary,
//   fault   = @@@@                fault, alarm and the fault bits a reset
//   alarm   = @@@@                cannot clear (fault_hold)
//   mode    = remote              (or local)
//   lacks   = buc, lldp           command families the unit refuses
//   value.forward_power = 1200    (same as forward_power under [values])
//
//   [values]                      key = value, "quotes" keep blanks
//   [wander]                      key = largest deviation of a readout
//   [faultlog] [log.10min] ...    one record per line, as the unit sends it
//   [cal.forward] ...             first = 0.0 / last = 60.0 / counts = A .. B
//
// Keys are case-sensitive; blanks around keys and values are ignored.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sim/unit_state.h"

namespace amp::sim {

// The profile ampsim runs when none is named: a typical SSPA.
inline constexpr std::string_view kDefaultProfile = "sspa120";

// Applies the profile text to `unit`. On error leaves `unit` unchanged and
// names the offending line in `error`.
bool ApplyProfile(std::string_view text, UnitState& unit, std::string* error);
bool LoadProfile(const std::string& path, UnitState& unit, std::string* error);

// A profile named by file path or by name. A name ("twta127") is looked up
// as NAME.profile in $AMPSIM_PROFILE_DIR, then in the profiles directory of
// the source tree; anything holding a '/' or naming an existing file is a
// path. Empty when a name is not found.
std::string ResolveProfile(const std::string& nameOrPath);
// The names of the profiles in the directories ResolveProfile searches.
std::vector<std::string> ProfileNames();
// The directory searched after $AMPSIM_PROFILE_DIR.
std::string BuiltInProfileDir();

// Parses a unit id as written on the command line or in a profile:
// decimal or 0x-hex, representable in two 6-bit characters.
bool ParseUnitId(std::string_view text, uint16_t* out, std::string* error);

}  // namespace amp::sim
