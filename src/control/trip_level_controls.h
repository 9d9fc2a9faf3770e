// The three RF trip lines of the main panel (forward high, forward low,
// reverse high): a level field and a combo of "Disabled", "Fault", "Alarm"
// each. A line is set from both its controls at once, and while either of
// them has the focus the line is the operator's: InitRFTripLevels, run by
// the poll, leaves it alone.
#pragma once

#include "commands/rf_power_cmds.h"
#include "control/panel_context.h"

namespace amp {

class TripLevelControls {
 public:
  explicit TripLevelControls(PanelContext& ctx) : p_(ctx) {}
  TripLevelControls(const TripLevelControls&) = delete;
  TripLevelControls& operator=(const TripLevelControls&) = delete;

  // Installs the handlers below on the six controls' hooks.
  void Wire();

  // Send the line's level and type from its controls, then read all three
  // lines back. An empty level field sends nothing; a level out of the
  // band's range shows the range boxes and sends nothing.
  void SetFwdHiTrip();
  void SetFwdLoTrip();
  void SetRevHiTrip();

  // Level fields: digits, "." and Backspace pass; Enter sets the line.
  void txtFhiLvl_KeyPress(int& KeyAscii);
  void txtFloLvl_KeyPress(int& KeyAscii);
  void txtRhiLvl_KeyPress(int& KeyAscii);

  // The type combos: a new type is sent with the level standing in the field.
  void cmbFhiTripType_Click();
  void cmbFloTripType_Click();
  void cmbRhiTripType_Click();

 private:
  struct Line {
    ui::TextBox& level;
    ui::ComboBox& type;
    bool& hasFocus;
    RfTrip trip;
  };
  Line FwdHi();
  Line FwdLo();
  Line RevHi();

  void SetTrip(const Line& line);
  void KeyPress(const Line& line, int& KeyAscii);
  void TypeClick(const Line& line);
  // Both controls of a line set its focus flag on entry and clear it on
  // leaving. Leaving a level field sends nothing.
  void WireFocus(const Line& line);
  void ShowTripRangeError();

  PanelContext& p_;
};

}  // namespace amp
