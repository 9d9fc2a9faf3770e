#include "control/power_units.h"

#include "basic/numbers.h"

namespace amp {

std::string PowerRangeText(const std::string& low, const std::string& high,
                           const std::string& unit) {
  return "Value out of Range\r\n\r\nValid Range: " + low + " to " + high + unit;
}

float ConvertTripPower(PanelContext& p, float level) {
  if (level <= 0.0f) return kPowerRefused;
  const SessionValues& v = p.values;
  // The limits are singles widened to double before the one-unit margin is
  // added, so a level typed as "1.1" meets a 0.1 dBm floor exactly.
  const double minDbm = static_cast<double>(v.gFwdMindBm) + 1.0;
  const double maxDbm = v.gFwdMaxdBm;
  if (v.gUsedBmTripLevels && !p.panel.gDisplayWatts) {
    if (minDbm <= level && level <= maxDbm) return level;
  } else {
    const double value = p.panel.gDisplayWatts ? static_cast<double>(level) : WattsFromdBm(level);
    // One Watt above the band's floor, not one dB: on a unit that takes
    // Watts, a dBm level must reach about 30.1 dBm before it passes.
    const double low = WattsFromdBm(v.gFwdMindBm) + 1.0;
    const double high = WattsFromdBm(v.gFwdMaxdBm);
    if (low <= value && value <= high) return static_cast<float>(value);
  }
  std::string text;
  if (p.panel.gDisplayWatts) {
    text = PowerRangeText(Format(WattsFromdBm(v.gFwdMindBm) + 1.0, "#0.0"),
                          Format(WattsFromdBm(v.gFwdMaxdBm), "###0.0"), " Watts");
  } else {
    text = PowerRangeText(Format(minDbm, "#0.0"), Format(maxDbm, "#0.0"), " dBm");
  }
  p.dialogs.MsgBox(text, MsgButtons::OK, MsgIcon::Exclamation, "Range Error");
  return kPowerRefused;
}

}  // namespace amp
