// The operator's most direct controls: transmitter, RF inhibit, fault reset
// and the heater and auto-restore menu entries, plus the transmitter state as
// the panel remembers it.
#pragma once

#include "control/panel_context.h"

namespace amp {

class TransmitControls {
 public:
  explicit TransmitControls(PanelContext& p) : p_(p) {}

  // Installs the handlers on chkPS, chkRFI, btnFaultReset, mnuHeaterState,
  // mnuHtrStby and mnuAutoHVDisable.
  void Wire();

  void chkPS_Click();
  void chkRFI_Click();
  void btnFaultReset_Click();
  void mnuHeaterState_Click();
  void mnuHtrStby_Click();
  void mnuAutoHVDisable_Click();

  // The panel's check box is the program's memory of the transmitter: true
  // when chkPS is checked. Nothing asks the unit.
  bool IsTxOn() const;
  // True only for a visible, checked mnuAutoHVDisable: a unit without the
  // feature has the entry hidden, whatever its mark.
  bool IsAutoXmitDisabled() const;
  // chkConstPwr and txtConstLvl follow the transmitter together.
  void EnableConstPwrInput();
  void DisableConstPwrInput();

 private:
  PanelContext& p_;
};

}  // namespace amp
