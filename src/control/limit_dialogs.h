// The small dialogs of the Configuration menu: maximum RF power
// (frmPwrLimit), temperature trip levels (frmTempLimits), power save
// (FrmPowerSave), gain balance (frmGainBal) and the start-up mode
// (frmStartup). Each is shown with the poll stopped and put back on every
// way out; each Load writes its controls with gInPanelUpdate held, so
// opening one sends nothing. OK sends only what the operator changed.
#pragma once

#include "control/panel_context.h"
#include "display/frm_limits.h"

namespace amp {

class LimitDialogs {
 public:
  explicit LimitDialogs(PanelContext& ctx) : p_(ctx) {}
  LimitDialogs(const LimitDialogs&) = delete;
  LimitDialogs& operator=(const LimitDialogs&) = delete;

  ui::FrmPwrLimit frmPwrLimit;
  ui::FrmTempLimits frmTempLimits;
  ui::FrmPowerSave frmPowerSave;
  ui::FrmGainBal frmGainBal;
  ui::FrmStartup frmStartup;

  void Wire();

  void mnuMaxPwrLvl_Click();
  void frmPwrLimit_Load();
  void frmPwrLimit_cmdOK_Click();

  void mnuTempTripLevels_Click();
  void frmTempLimits_Load();
  void TripLevelKeyPress(int& KeyAscii);
  void frmTempLimits_btnOK_Click();
  void chkLatchFlts_Click();

  void mnuPowerSave_Click();
  void frmPowerSave_Load();
  void frmPowerSave_cmdOK_Click();

  void mnuGainBal_Click();
  void frmGainBal_Load();
  void frmGainBal_Text1_KeyPress(int& KeyAscii);
  void frmGainBal_cmdOK_Click();

  void mnuStartupCfg_Click();
  void frmStartup_Load();
  void StartupOption_Click(int16_t mode);

 private:
  // The text frmPwrLimit shows for a level in dBm: as stored, or in Watts.
  std::string ShownPowerLevel(const std::string& dBm) const;
  void SendTempFaultLevel(const std::string& text);
  void SendTempAlarmLevel(const std::string& text);
  void ShowStartupMode();
  void Show(ui::Form& form, bool shortTimeout);

  PanelContext& p_;
};

}  // namespace amp
