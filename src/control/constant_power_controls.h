// The "Constant Pwr" group: hold the forward power at a level (chkConstPwr
// with txtConstLvl) or send the unit to a level once (btnGoToPwr). The
// program only validates the level and sends one command; the unit's own
// loop does the regulating.
#pragma once

#include "control/panel_context.h"

namespace amp {

class ConstantPowerControls {
 public:
  explicit ConstantPowerControls(PanelContext& p) : p_(p) {}

  // Installs the handlers on chkConstPwr, txtConstLvl and btnGoToPwr.
  void Wire();

  // `level` in the unit the panel shows. False when the level was refused:
  // then chkConstPwr drops back to 0 without sending "H". With the box
  // checked the level is sent and the unit's own level read back into
  // txtConstLvl; with it unchecked nothing is sent.
  bool SetConstPwr(float level);
  // `level` in the unit the panel shows. True when a command was sent.
  bool GoToPower(float level);

  void chkConstPwr_Click();
  void txtConstLvl_KeyPress(int& KeyAscii);
  void txtConstLvl_LostFocus();
  void btnGoToPwr_Click();

 private:
  PanelContext& p_;
};

}  // namespace amp
