// The unit's own serial ports: the "Serial Communication" dialog
// (frmAmpCom) and its menu entry. A change acts on the unit at once; the
// program does not follow it on its own port, so changing the port in use
// ends the session through the poll.
#pragma once

#include "control/panel_context.h"
#include "display/frm_amp_com.h"

namespace amp {

class AmpComControls {
 public:
  explicit AmpComControls(PanelContext& p);
  AmpComControls(const AmpComControls&) = delete;
  AmpComControls& operator=(const AmpComControls&) = delete;

  ui::FrmAmpCom frmAmpCom;

  void Wire();
  void mnuAmpCom_Click();
  void frmAmpCom_Load();
  void InitCom1Settings();
  void InitCom2Settings();
  // 8 data bits are offered only without parity.
  void cmb232Parity_Click();
  // Reads the RS-232 parity's index to pick its own text, as the unit's
  // older tool did.
  void cmb485Parity_Click();
  void btnSet232_Click();
  void btnSet485_Click();

 private:
  void ParityRule(const std::string& parity, ui::ComboBox& data);
  void SettingsIncomplete();

  PanelContext& p_;
};

}  // namespace amp
