#include "control/constant_power_controls.h"

#include "basic/numbers.h"
#include "basic/text.h"
#include "commands/rf_power_cmds.h"
#include "control/panel_rules.h"
#include "control/power_units.h"

namespace amp {

namespace {
constexpr int kBackspace = 8;
constexpr int kEnter = 13;
constexpr int kPoint = 46;

bool IsDigitKey(int k) { return k >= '0' && k <= '9'; }
}  // namespace

void ConstantPowerControls::Wire() {
  ui::FrmMain& f = p_.frm;
  f.chkConstPwr.Click = [this] { chkConstPwr_Click(); };
  f.txtConstLvl.KeyPress = [this](int& k) { txtConstLvl_KeyPress(k); };
  f.txtConstLvl.LostFocus = [this] { txtConstLvl_LostFocus(); };
  f.btnGoToPwr.Click = [this] { btnGoToPwr_Click(); };
}

bool ConstantPowerControls::SetConstPwr(float level) {
  ui::FrmMain& f = p_.frm;
  const float value = ConvertTripPower(p_, level);
  if (value == kPowerRefused) {
    if (f.chkConstPwr.Value() == 1) {
      // Dropping the box must not reach the unit as "H": the unit keeps the
      // level it held, and only the panel forgets the refused one.
      const bool held = p_.panel.gInPanelUpdate;
      p_.panel.gInPanelUpdate = true;
      f.chkConstPwr.SetValue(0);
      p_.panel.gInPanelUpdate = held;
    }
    return false;
  }
  if (f.chkConstPwr.Value() == 1) {
    const bool inDbm = p_.values.gUsedBmTripLevels && !p_.panel.gDisplayWatts;
    p_.comms.ExchangeCommand(CmdConstPower(value, inDbm));
    // The field shows what the unit took, not what was typed.
    const std::string held = ReadConstPowerLevel(p_.comms);
    const double dBm = held.empty() ? 0.0 : Val(held);
    f.txtConstLvl.SetText(p_.panel.gDisplayWatts ? Format(WattsFromdBm(dBm), "####0.0")
                                                 : Format(dBm, "#0.0"));
  }
  return true;
}

bool ConstantPowerControls::GoToPower(float level) {
  const float value = ConvertTripPower(p_, level);
  if (value == kPowerRefused) {
    const SessionValues& v = p_.values;
    p_.dialogs.MsgBox(PowerRangeText(Format(static_cast<double>(v.gFwdMindBm) + 1.0, "#0.0"),
                                     Format(v.gFwdMaxdBm, "#0.0"), " dBm"),
                      MsgButtons::OK, MsgIcon::Exclamation, "Range Error - GoTo Power");
    return false;
  }
  // Only the unit's dBm ability picks the "M" form here, whatever the panel
  // shows: with Watts on display such a unit is sent "EM" and a Watt value.
  p_.comms.ExchangeCommand(CmdGoToPower(value, p_.values.gUsedBmTripLevels));
  return true;
}

void ConstantPowerControls::chkConstPwr_Click() {
  ui::FrmMain& f = p_.frm;
  if (!CheckBoxGuard(p_, f.chkConstPwr)) return;
  if (f.chkConstPwr.Value() == 1) {
    // Switching on holds the power present now; with the reading below the
    // detector's range ("<") the level in the field is the best guess.
    float level = 0.0f;
    if (InStr(f.txtFdBm.Text(), "<") == 0)
      level = static_cast<float>(Val(f.txtFdBm.Text()));
    else if (!f.txtConstLvl.Text().empty())
      level = static_cast<float>(Val(f.txtConstLvl.Text()));
    SetConstPwr(level);
  } else {
    p_.comms.ExchangeCommand(kConstPowerOff);
  }
}

void ConstantPowerControls::txtConstLvl_KeyPress(int& KeyAscii) {
  if (!RemoteGuard(p_)) return;
  if (KeyAscii == kBackspace || KeyAscii == kPoint || IsDigitKey(KeyAscii)) return;
  if (KeyAscii == kEnter) {
    const std::string text = p_.frm.txtConstLvl.Text();
    if (!text.empty()) {
      SetConstPwr(static_cast<float>(Val(text)));
      p_.values.mEnterHandled = true;
    }
  }
  KeyAscii = 0;
}

void ConstantPowerControls::txtConstLvl_LostFocus() {
  ui::FrmMain& f = p_.frm;
  if (p_.values.mEnterHandled) return;
  if (f.txtConstLvl.Text().empty() || f.chkConstPwr.Value() != 1) return;
  SetConstPwr(static_cast<float>(Val(f.txtConstLvl.Text())));
}

void ConstantPowerControls::btnGoToPwr_Click() {
  ui::FrmMain& f = p_.frm;
  if (p_.panel.gInPanelUpdate) return;
  if (!RemoteGuard(p_)) return;
  // The unit reaches a power only with the transmitter up and unfaulted; in
  // any other state the button stays quiet rather than send a lost command.
  if (!f.Label31.Visible()) return;
  const std::string& state = f.Label31.Caption();
  if (state == "Standby" || state == "FTD" || state == "Warmup") return;
  if (f.Label36.Visible() || f.Label35.Visible()) return;
  GoToPower(static_cast<float>(Val(f.txtConstLvl.Text())));
}

}  // namespace amp
