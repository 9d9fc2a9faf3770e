// The switches of the Configuration menu that act at once: bits of the
// unit's configuration word, the status LED and RF inhibit polarity, the two
// self tests, the return-loss and reverse-offset input boxes, and the
// entries whose dialogs this build does not have.
#pragma once

#include <cstdint>

#include "control/panel_context.h"

namespace amp {

class ConfigSwitches {
 public:
  explicit ConfigSwitches(PanelContext& ctx) : p_(ctx) {}
  ConfigSwitches(const ConfigSwitches&) = delete;
  ConfigSwitches& operator=(const ConfigSwitches&) = delete;

  void Wire();

  // The three configuration-word entries. Their senses differ on purpose:
  // a checked "Rack Unit" sets its bit and loses its mark, while a checked
  // "Dual Umbilical Brd" or "Auto Clear UpConverter Fault" clears its bit.
  void mnuRack_Click();
  void mnu2ndUmbilical_Click();
  void mnuAutoClrBUC_Click();
  void mnuLEDMode_Click();
  void mnuRfiInvert_Click();
  // The self tests go out whatever the mode: the unit only reports a fault.
  void mnuWgArcTest_Click();
  void mnuSumFltTest_Click();
  void mnuReturnLoss_Click();
  void mnuRRfOffset_Click();
  void mnuFltAlm_Click();
  void mnuISense_Click();
  void mnuPsVset_Click();

 private:
  // Sets or clears `bit` of the word, sends it and marks the entry.
  void ToggleCfgBit(ui::MenuItem& entry, int bit, bool setWhenChecked);
  PanelContext& p_;
};

}  // namespace amp
