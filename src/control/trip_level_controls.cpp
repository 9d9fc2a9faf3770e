#include "control/trip_level_controls.h"

#include <string>

#include "basic/numbers.h"
#include "control/panel_rules.h"
#include "control/power_units.h"

namespace amp {

namespace {

constexpr int kBackspace = 8;
constexpr int kEnter = 13;
constexpr int kPoint = 46;

// The one title all three lines show: the operator reads the range, not the
// line, from this box.
constexpr const char* kTripRangeTitle = "Range Error - Forward High RF Trip";

TripType TypeOf(const ui::ComboBox& box) {
  if (box.Text() == "Fault") return TripType::Fault;
  if (box.Text() == "Alarm") return TripType::Alarm;
  return TripType::Disabled;
}

}  // namespace

TripLevelControls::Line TripLevelControls::FwdHi() {
  return {p_.frm.txtFhiLvl, p_.frm.cmbFhiTripType, p_.values.mFhiHasFocus, RfTrip::FwdHigh};
}
TripLevelControls::Line TripLevelControls::FwdLo() {
  return {p_.frm.txtFloLvl, p_.frm.cmbFloTripType, p_.values.mFloHasFocus, RfTrip::FwdLow};
}
TripLevelControls::Line TripLevelControls::RevHi() {
  return {p_.frm.txtRhiLvl, p_.frm.cmbRhiTripType, p_.values.mRhiHasFocus, RfTrip::RevHigh};
}

void TripLevelControls::Wire() {
  ui::FrmMain& f = p_.frm;
  f.txtFhiLvl.KeyPress = [this](int& k) { txtFhiLvl_KeyPress(k); };
  f.txtFloLvl.KeyPress = [this](int& k) { txtFloLvl_KeyPress(k); };
  f.txtRhiLvl.KeyPress = [this](int& k) { txtRhiLvl_KeyPress(k); };
  f.cmbFhiTripType.Click = [this] { cmbFhiTripType_Click(); };
  f.cmbFloTripType.Click = [this] { cmbFloTripType_Click(); };
  f.cmbRhiTripType.Click = [this] { cmbRhiTripType_Click(); };
  WireFocus(FwdHi());
  WireFocus(FwdLo());
  WireFocus(RevHi());
}

void TripLevelControls::WireFocus(const Line& line) {
  bool* flag = &line.hasFocus;
  for (ui::Control* c :
       {static_cast<ui::Control*>(&line.level), static_cast<ui::Control*>(&line.type)}) {
    c->GotFocus = [flag] { *flag = true; };
    c->LostFocus = [flag] { *flag = false; };
  }
}

void TripLevelControls::SetFwdHiTrip() { SetTrip(FwdHi()); }
void TripLevelControls::SetFwdLoTrip() { SetTrip(FwdLo()); }
void TripLevelControls::SetRevHiTrip() { SetTrip(RevHi()); }

void TripLevelControls::ShowTripRangeError() {
  const SessionValues& v = p_.values;
  // The floor shown is the band's own; the one unit of margin that
  // ConvertTripPower adds is not in this box.
  std::string text;
  if (p_.panel.gDisplayWatts) {
    text = PowerRangeText(Format(WattsFromdBm(v.gFwdMindBm), "###0.0"),
                          Format(WattsFromdBm(v.gFwdMaxdBm), "####0.0"), " Watts");
  } else {
    text = PowerRangeText(Format(v.gFwdMindBm, "#0.0"), Format(v.gFwdMaxdBm, "#0.0"), " dBm");
  }
  p_.dialogs.MsgBox(text, MsgButtons::OK, MsgIcon::Exclamation, kTripRangeTitle);
}

void TripLevelControls::SetTrip(const Line& line) {
  if (line.level.Text().empty()) return;
  const float value = ConvertTripPower(p_, static_cast<float>(Val(line.level.Text())));
  if (value == kPowerRefused) {
    ShowTripRangeError();
    return;
  }
  // The "M" form carries dBm; a panel showing Watts always sends Watts.
  const bool inDbm = p_.values.gUsedBmTripLevels && !p_.panel.gDisplayWatts;
  // A refusal is silent: the read-back below puts the unit's line back.
  p_.comms.ExchangeCommand(CmdTripLevel(line.trip, TypeOf(line.type), value, inDbm), false);
  p_.setup.InitRFTripLevels();
}

void TripLevelControls::txtFhiLvl_KeyPress(int& KeyAscii) { KeyPress(FwdHi(), KeyAscii); }
void TripLevelControls::txtFloLvl_KeyPress(int& KeyAscii) { KeyPress(FwdLo(), KeyAscii); }
void TripLevelControls::txtRhiLvl_KeyPress(int& KeyAscii) { KeyPress(RevHi(), KeyAscii); }

void TripLevelControls::KeyPress(const Line& line, int& KeyAscii) {
  // Outside remote mode the key still reaches the field; only the set is
  // refused.
  if (!RemoteGuard(p_)) return;
  if (KeyAscii == kBackspace || KeyAscii == kPoint || (KeyAscii >= '0' && KeyAscii <= '9')) return;
  if (KeyAscii == kEnter) {
    if (!line.level.Text().empty()) SetTrip(line);
    p_.values.mEnterHandled = true;
  }
  // Enter has done its work; it and every other key are swallowed.
  KeyAscii = 0;
}

void TripLevelControls::cmbFhiTripType_Click() { TypeClick(FwdHi()); }
void TripLevelControls::cmbFloTripType_Click() { TypeClick(FwdLo()); }
void TripLevelControls::cmbRhiTripType_Click() { TypeClick(RevHi()); }

void TripLevelControls::TypeClick(const Line& line) {
  if (p_.panel.gInPanelUpdate) return;
  // Outside remote mode the combo shows the operator's choice until the next
  // InitRFTripLevels writes the unit's type back.
  if (!RemoteGuard(p_)) return;
  if (!line.level.Text().empty()) SetTrip(line);
}

}  // namespace amp
