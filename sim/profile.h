// Unit profiles: a small text file describing one unit's identity and
// starting state, so a test or a demo can stand up "that particular unit".
//
//   # comment
//   address = B
//   unit_id = 0x0203          (or decimal; both halves below 64)
//   summary = P@@@            (four status characters each for
//   fault   = @@@@             summary, fault and alarm)
//   alarm   = @@@@
//   mode    = remote          (or local)
//   value.forward_power = 1200   (any named value handlers can read)
//
// Keys are case-sensitive; blanks around keys and values are ignored.
#pragma once

#include <string>
#include <string_view>

#include "sim/unit_state.h"

namespace amp::sim {

// Applies the profile text to `unit`. On error leaves `unit` unchanged and
// names the offending line in `error`.
bool ApplyProfile(std::string_view text, UnitState& unit, std::string* error);
bool LoadProfile(const std::string& path, UnitState& unit, std::string* error);

// Parses a unit id as written on the command line or in a profile:
// decimal or 0x-hex, representable in two 6-bit characters.
bool ParseUnitId(std::string_view text, uint16_t* out, std::string* error);

}  // namespace amp::sim
