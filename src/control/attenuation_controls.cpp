#include "control/attenuation_controls.h"

#include <string>

#include "basic/numbers.h"
#include "commands/rf_power_cmds.h"
#include "control/panel_rules.h"

namespace amp {

namespace {
constexpr int kBackspace = 8;
constexpr int kEnter = 13;
constexpr int kPoint = 46;
// The attenuator DAC and the linearizer settings are 12-bit values.
constexpr double kCountLimit = 4096.0;

bool IsDigitKey(int k) { return k >= '0' && k <= '9'; }

// A 12-bit value as typed: under 4096 and over -1.
bool InCountRange(double v) { return v < kCountLimit && v > -1.0; }

void ShowValueOutOfRange(PanelContext& p) {
  p.dialogs.MsgBox("Value out of range.", MsgButtons::OK, MsgIcon::Exclamation,
                   "Parameter Range Error");
}
}  // namespace

void AttenuationControls::Wire() {
  ui::FrmMain& f = p_.frm;
  f.txtAtnDB.KeyPress = [this](int& k) { txtAtnDB_KeyPress(k); };
  f.txtAtnDB.LostFocus = [this] { txtAtnDB_LostFocus(); };
  f.UpDown1.UpClick = [this] { UpDown1_UpClick(); };
  f.UpDown1.DownClick = [this] { UpDown1_DownClick(); };
  f.txtAtnCnt.KeyPress = [this](int& k) { txtAtnCnt_KeyPress(k); };
  f.txtAtnCnt.LostFocus = [this] { txtAtnCnt_LostFocus(); };
  f.UpDown2.UpClick = [this] { UpDown2_UpClick(); };
  f.UpDown2.DownClick = [this] { UpDown2_DownClick(); };
  f.txtLinAmp.KeyPress = [this](int& k) { txtLinAmp_KeyPress(k); };
  f.txtLinAmp.LostFocus = [this] { txtLinAmp_LostFocus(); };
  f.txtLinPhase.KeyPress = [this](int& k) { txtLinPhase_KeyPress(k); };
  f.txtLinPhase.LostFocus = [this] { txtLinPhase_LostFocus(); };
  f.UpDown3.UpClick = [this] { UpDown3_UpClick(); };
  f.UpDown3.DownClick = [this] { UpDown3_DownClick(); };
  f.UpDown4.UpClick = [this] { UpDown4_UpClick(); };
  f.UpDown4.DownClick = [this] { UpDown4_DownClick(); };
}

// ------------------------------------------------------------ Attenuation

void AttenuationControls::SetAtndB() {
  ui::TextBox& field = p_.frm.txtAtnDB;
  const float value = static_cast<float>(Val(field.Text()));
  if (value >= 0.0f) {
    // No upper limit here: the unit knows its own range and refuses beyond
    // it, so "K30.5" goes out as typed.
    p_.comms.ExchangeCommand(CmdAtndB(field.Text()));
    return;
  }
  const std::string unitValue = ReadAttenuation(p_.comms);
  if (!unitValue.empty()) field.SetText(Format(Val(unitValue), "#0.0"));
}

void AttenuationControls::txtAtnDB_KeyPress(int& KeyAscii) {
  if (!RemoteGuard(p_)) return;
  if (KeyAscii == kBackspace || KeyAscii == kPoint || IsDigitKey(KeyAscii)) return;
  if (KeyAscii == kEnter) {
    SetAtndB();
    p_.values.mEnterHandled = true;
  }
  KeyAscii = 0;
}

void AttenuationControls::txtAtnDB_LostFocus() {
  if (!p_.values.mEnterHandled) SetAtndB();
}

void AttenuationControls::StepAtten(float step) {
  if (!RemoteGuard(p_)) return;
  ui::FrmMain& f = p_.frm;
  if (f.chkConstPwr.Value() == 1) {
    // With constant power on, the arrows move the held level instead. An
    // empty level field gives 0, which SetConstPwr refuses by dropping the
    // box.
    float level = 0.0f;
    if (!f.txtConstLvl.Text().empty()) level = static_cast<float>(Val(f.txtConstLvl.Text()) + step);
    constPwr_.SetConstPwr(level);
    return;
  }
  const float value = static_cast<float>(static_cast<float>(Val(f.txtAtnDB.Text())) + step);
  // The arrows stay within 0 and the unit's maximum and say nothing at the
  // ends; only typing can ask the unit for more.
  if (step < 0 ? value < 0.0f : value > p_.values.gMaxAttendB) return;
  f.txtAtnDB.SetText(Format(value, "#0.0"));
  SetAtndB();
}

void AttenuationControls::UpDown1_UpClick() { StepAtten(0.1f); }
void AttenuationControls::UpDown1_DownClick() { StepAtten(-0.1f); }

// ------------------------------------------------------- Attenuator count

bool AttenuationControls::SetAttenCount(int16_t count) {
  const UnitDescriptor& u = p_.unit;
  return p_.comms.ExchangeCommand(u.gCommandCSupport ? CmdAtnCountC(count)
                                                     : CmdAtnCount(u.gAtnCountCommand, count));
}

bool AttenuationControls::SetAtnCount() {
  ui::TextBox& field = p_.frm.txtAtnCnt;
  const std::optional<int16_t> count = CInt(Val(field.Text()));
  if (count && *count >= p_.values.gMinAtnCount && *count < kCountLimit && SetAttenCount(*count))
    return true;
  // A count out of range or refused snaps back to the unit's own, without a
  // message.
  const int16_t unitCount = ReadAtnCount(p_.comms);
  if (unitCount > -1) field.SetText(std::to_string(unitCount));
  return false;
}

void AttenuationControls::txtAtnCnt_KeyPress(int& KeyAscii) {
  if (!RemoteGuard(p_)) return;
  // Only the block downconverter takes a value here; on other units the
  // field is the calibration's scratch and stays read-only to the operator.
  if (!p_.values.gIsFBDCUnit) {
    KeyAscii = 0;
    return;
  }
  if (KeyAscii == kBackspace || KeyAscii == kPoint || IsDigitKey(KeyAscii)) return;
  if (KeyAscii == kEnter) {
    ui::TextBox& field = p_.frm.txtAtnCnt;
    const double value = Val(field.Text());
    if (InCountRange(value)) {
      p_.comms.ExchangeCommand(CmdAtnSlopeText(field.Text()));
      p_.values.mEnterHandled = true;
      field.SetText(Format(value, "#0.0"));
    } else {
      ShowValueOutOfRange(p_);
    }
  }
  KeyAscii = 0;
}

void AttenuationControls::txtAtnCnt_LostFocus() {
  // The field is hidden on other units; leaving it there must not send "P/".
  if (p_.values.mEnterHandled || !p_.values.gIsFBDCUnit) return;
  const std::string& text = p_.frm.txtAtnCnt.Text();
  if (InCountRange(Val(text))) p_.comms.ExchangeCommand(CmdAtnSlopeText(text));
}

void AttenuationControls::StepCount(float step) {
  if (!p_.values.gIsFBDCUnit) return;
  if (!RemoteGuard(p_)) return;
  ui::TextBox& field = p_.frm.txtAtnCnt;
  // No range test on the arrows, unlike the field: the unit refuses what it
  // cannot take.
  const float value = static_cast<float>(static_cast<float>(Val(field.Text())) + step);
  field.SetText(Format(value, "#0.0"));
  p_.comms.ExchangeCommand(CmdAtnSlopeText(field.Text()));
}

void AttenuationControls::UpDown2_UpClick() { StepCount(0.1f); }
void AttenuationControls::UpDown2_DownClick() { StepCount(-0.1f); }

// ------------------------------------------------------------- Linearizer

bool AttenuationControls::SendLin(Lin which, bool showRangeBox) {
  ui::TextBox& field = which == Lin::Amplitude ? p_.frm.txtLinAmp : p_.frm.txtLinPhase;
  const double value = Val(field.Text());
  if (!InCountRange(value)) {
    if (showRangeBox) ShowValueOutOfRange(p_);
    return false;
  }
  // The amplitude goes out as typed, leading zeros and all; the phase goes
  // out as its number, so "007" becomes "Pz7".
  p_.comms.ExchangeCommand(which == Lin::Amplitude ? CmdLinAmplitude(field.Text())
                                                   : CmdLinPhase(NumText(value)));
  return true;
}

void AttenuationControls::LinKeyPress(Lin which, int& KeyAscii) {
  if (!RemoteGuard(p_)) return;
  if (KeyAscii == kBackspace || IsDigitKey(KeyAscii)) return;
  if (KeyAscii == kEnter && SendLin(which, true)) p_.values.mEnterHandled = true;
  KeyAscii = 0;
}

void AttenuationControls::LinLostFocus(Lin which) {
  if (!p_.values.mEnterHandled) SendLin(which, false);
}

void AttenuationControls::StepLin(Lin which, int step) {
  if (!RemoteGuard(p_)) return;
  ui::TextBox& field = which == Lin::Amplitude ? p_.frm.txtLinAmp : p_.frm.txtLinPhase;
  const std::optional<int16_t> current = CInt(Val(field.Text()));
  if (!current) return;  // a pasted number beyond any setting: nothing to step
  const int value = *current + step;
  // The arrows stop at 0 and at 4096; the top is one more than the field
  // accepts, and the unit has the last word on it.
  if (step < 0 ? value < 0 : value > kCountLimit) return;
  field.SetText(std::to_string(value));
  p_.comms.ExchangeCommand(which == Lin::Amplitude ? CmdLinAmplitude(field.Text())
                                                   : CmdLinPhase(field.Text()));
}

void AttenuationControls::txtLinAmp_KeyPress(int& KeyAscii) {
  LinKeyPress(Lin::Amplitude, KeyAscii);
}
void AttenuationControls::txtLinAmp_LostFocus() { LinLostFocus(Lin::Amplitude); }
void AttenuationControls::txtLinPhase_KeyPress(int& KeyAscii) { LinKeyPress(Lin::Phase, KeyAscii); }
void AttenuationControls::txtLinPhase_LostFocus() { LinLostFocus(Lin::Phase); }
void AttenuationControls::UpDown3_UpClick() { StepLin(Lin::Amplitude, 1); }
void AttenuationControls::UpDown3_DownClick() { StepLin(Lin::Amplitude, -1); }
void AttenuationControls::UpDown4_UpClick() { StepLin(Lin::Phase, 1); }
void AttenuationControls::UpDown4_DownClick() { StepLin(Lin::Phase, -1); }

}  // namespace amp
