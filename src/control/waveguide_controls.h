// The waveguide group of the main panel: the redundancy arrangement
// (cmbWgCfg), the two waveguide switches (cmbWgSw1, cmbWgSw2) and automatic
// redundancy (chkAutoMode). The poll writes the same controls from the
// status words, so every handler first checks gInPanelUpdate.
#pragma once

#include <string>
#include <string_view>

#include "control/panel_context.h"

namespace amp {

class WaveguideControls {
 public:
  explicit WaveguideControls(PanelContext& ctx) : p_(ctx) {}
  WaveguideControls(const WaveguideControls&) = delete;
  WaveguideControls& operator=(const WaveguideControls&) = delete;

  // Installs the handlers below on the controls' Click hooks.
  void Wire();

  // "PC" + the first character of the chosen entry: the entries carry the
  // unit's configuration number, which is not the list index for the last.
  void cmbWgCfg_Click();
  // "A" moves switch 1 to A ("U1"), "B" to B ("U0").
  void cmbWgSw1_Click();
  // "A" moves switch 2 to A ("U3"), "B" to B ("U2").
  void cmbWgSw2_Click();
  // Checked "UA" (automatic), unchecked "UM" (manual).
  void chkAutoMode_Click();

 private:
  // The combos' guard: nothing while the program writes the panel; outside
  // remote mode the box, and the combo stays where the operator put it until
  // the next status writes the unit's position back.
  bool ComboMaySend();
  // The selected entry's text, "" when nothing is selected.
  static std::string Selected(const ui::ComboBox& box);
  void SendSwitch(const ui::ComboBox& box, std::string_view toA, std::string_view toB);

  PanelContext& p_;
};

}  // namespace amp
