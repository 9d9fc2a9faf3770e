// The unit identity group of the main panel: part and serial number, the
// unit's bus address, its clock with the "Now" button, the two hour counters,
// and the small menu entries that belong with them (Clear Hours, Model
// Config, OEM Name, Manufacturing Info).
#pragma once

#include <functional>
#include <string>

#include "basic/dates.h"
#include "control/panel_context.h"

namespace amp {

class IdentityControls {
 public:
  explicit IdentityControls(PanelContext& ctx);
  IdentityControls(const IdentityControls&) = delete;
  IdentityControls& operator=(const IdentityControls&) = delete;

  // Installs the handlers below on the controls' hooks.
  void Wire();

  // The host's local date and time, read by "Now". Tests replace it.
  std::function<DateTime()> LocalNow;

  // Text written to txtDateTime for a date and time: "yyyy/mm/dd,hh:mm".
  static std::string ClockText(const DateTime& t);

  // ---- Set actions
  // "YK" + txtPN (at least 4 characters, else a box). No control calls it;
  // it completes the command set for scripts and the console.
  void SetUnitPartNumber();
  // "YL" + txtSN, the same rule.
  void SetUnitSerialNumber();
  // A one-character txtAdr becomes the unit's address: "XR" with the unit's
  // RS-485 wiring kept when it reports it, else "XA"; the link follows.
  void SetUnitAddress();
  // "%" + txtDateTime, then the reset most units need for the clock to take.
  void SetDateTime();

  // ---- Handlers
  void txtPN_KeyPress(int& KeyAscii);
  void txtSN_KeyPress(int& KeyAscii);
  void txtDateTime_KeyPress(int& KeyAscii);
  void txtDateTime_Validate(bool& Cancel);
  void txtAdr_KeyPress(int& KeyAscii);
  void txtAdr_LostFocus();
  void Command7_Click();
  void txtPSHours_KeyPress(int& KeyAscii);
  void txtXmtHours_KeyPress(int& KeyAscii);
  void mnuClrHrs_Click();
  void mnuModelCfgPN_Click();
  void mnuOemName_Click();
  void mnuMfgInfo_Click();

 private:
  // Key filter shared by both hour counters: Enter sends both.
  void HoursKeyPress(int& KeyAscii);
  // "YH" + supply hours + transmit hours, each "000000".
  void SendHours();
  // "YK"/"YL" + text when it has 4 characters or more.
  void SetNumber(const std::string& text, std::string (*command)(std::string_view));
  // FBDC units and project 127 take the new clock without a reset.
  bool ClockNeedsNoReset() const;

  PanelContext& p_;
};

}  // namespace amp
