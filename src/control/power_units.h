// Power levels typed by the operator, checked against the current band and
// turned into what the unit takes. Constant power, go-to-power and the RF trip
// lines share the one rule, so a level refused by one is refused by all.
#pragma once

#include <string>

#include "control/panel_context.h"

namespace amp {

// The level the operator typed, in the unit the panel shows (dBm, or Watts
// while gDisplayWatts), checked against the band's limits. Gives the value to
// send, in dBm when the unit takes dBm levels and the panel shows dBm, in
// Watts otherwise, or kPowerRefused. A level of 0 or less is refused in
// silence; any other refusal shows the "Range Error" box with the valid range.
inline constexpr float kPowerRefused = -1.0f;
float ConvertTripPower(PanelContext& p, float level);

// "Value out of Range", two line ends, "Valid Range: <low> to <high><unit>":
// the body every power range box of the panel shows.
std::string PowerRangeText(const std::string& low, const std::string& high,
                           const std::string& unit);

}  // namespace amp
