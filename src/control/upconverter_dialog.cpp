#include "control/upconverter_dialog.h"

#include "basic/numbers.h"
#include "commands/identity_cmds.h"
#include "commands/upconverter_cmds.h"
#include "control/dialog_rules.h"
#include "control/panel_rules.h"

namespace amp {

namespace {

constexpr int kBackspace = 8;
constexpr int kEnter = 13;
constexpr double kAttenStop = 31.5;    // top of the up-down's travel, dB
constexpr double kOffsetLimit = 31.5;  // the offset stays within plus and minus this
constexpr int kCfgProgrammableBUC = 1024;

}  // namespace

UpconverterDialog::~UpconverterDialog() {
  if (!timer_) return;
  timer_->SetEnabled(false);
  timer_->SetHandler(nullptr);
  frmlcBucSetup.Timer1.Attach(nullptr, nullptr);
}

void UpconverterDialog::Wire() {
  ui::FrmLcBucSetup& d = frmlcBucSetup;
  p_.frm.mnulcBucSetup.Click = [this] { mnulcBucSetup_Click(); };
  p_.frm.lbllcBucDrive.DblClick = [this] {
    if (p_.values.gBucAttenuation >= 0) mnulcBucSetup_Click();
  };
  d.Load = [this] { frmlcBucSetup_Load(); };
  d.QueryUnload = [this] { Close(); };
  d.btnOK.Click = [this] { Close(); };
  d.txtlcBucA.KeyPress = [this](int& k) { txtlcBucA_KeyPress(k); };
  d.txtlcBucS.KeyPress = [this](int& k) { txtlcBucS_KeyPress(k); };
  d.txtlcBucO.KeyPress = [this](int& k) { txtlcBucO_KeyPress(k); };
  d.txtlcBucA.LostFocus = [this] { txtlcBucA_LostFocus(); };
  d.txtlcBucS.LostFocus = [this] { txtlcBucS_LostFocus(); };
  d.txtlcBucO.LostFocus = [this] { txtlcBucO_LostFocus(); };
  // The readings are the unit's: nothing typed reaches them.
  for (ui::TextBox* t : {&d.txtlcBucPwr, &d.txtlcBucIdeal, &d.txtlcBucTemp})
    t->KeyPress = [](int& k) { k = 0; };
  d.UpDown1.UpClick = [this] { UpDown1_UpClick(); };
  d.UpDown1.DownClick = [this] { UpDown1_DownClick(); };
  d.btnadjAtn.Click = [this] { btnadjAtn_Click(); };
  d.optLcbFixed.Click = [this] { optLcbFixed_Click(); };
  d.optlcbVar.Click = [this] { optlcbVar_Click(); };
  d.optlcbClosed.Click = [this] { optlcbClosed_Click(); };
  d.chklcBucEn.Click = [this] { chklcBucEn_Click(); };
}

void UpconverterDialog::AttachTimer(Timer& timer) {
  timer_ = &timer;
  frmlcBucSetup.Timer1.Attach(
      [&timer](bool on, int ms) {
        if (timer.Interval() != ms) timer.SetInterval(ms);
        if (timer.Enabled() != on) timer.SetEnabled(on);
      },
      [&timer] { return timer.Enabled(); });
  timer.SetHandler([this] { Timer1_Timer(); });
}

double UpconverterDialog::AdjustResult(double value) {
  const int tenths = CInt(value * 10).value_or(0);
  return (tenths - tenths % 5) / 10.0;
}

bool UpconverterDialog::MaySend() {
  if (p_.panel.gInPanelUpdate) return false;
  return RemoteGuard(p_);
}

bool UpconverterDialog::Send(const std::string& command) {
  ++busy_;
  const bool ok = p_.comms.ExchangeCommand(command, false);
  Release();
  return ok;
}

bool UpconverterDialog::Deferred(void (UpconverterDialog::*action)()) {
  if (busy_ == 0) return false;
  pending_.push_back(action);
  return true;
}

void UpconverterDialog::Release() {
  if (--busy_ > 0) return;
  std::vector<void (UpconverterDialog::*)()> actions;
  actions.swap(pending_);
  for (auto action : actions) (this->*action)();
}

// ------------------------------------------------------------ open, close

void UpconverterDialog::mnulcBucSetup_Click() {
  ModalPause pause(p_, true);
  p_.dialogs.ShowModal(frmlcBucSetup);
  frmlcBucSetup.Timer1.SetTimerEnabled(false);
  p_.setup.InitLCBuc();
}

void UpconverterDialog::frmlcBucSetup_Load() {
  ui::FrmLcBucSetup& d = frmlcBucSetup;
  const SessionValues& v = p_.values;
  PanelUpdateHold hold(p_.panel);
  dirtyA_ = dirtyS_ = dirtyO_ = false;
  d.txtlcBucA.SetText(Format(v.gBucAttenuation, "#0.0"));
  d.txtlcBucS.SetText(Format(v.gBucAttenuation + v.gBucSetPoint, "##0.0"));
  d.txtlcBucO.SetText(Format(v.gBucOffset, "##0.0"));
  d.txtlcBucIdeal.SetText(Format(v.gBucIdeal, "##0.0"));
  d.chklcBucEn.SetValue(v.gBucEnabled ? 1 : 0);
  ShowMode(v.gBucMode);
  d.Timer1.SetTimerEnabled(true);
}

// Sets the button of `mode` from scratch, so its Click runs even when the
// same button was set the last time the dialog was open.
void UpconverterDialog::ShowMode(int16_t mode) {
  ui::FrmLcBucSetup& d = frmlcBucSetup;
  PanelUpdateHold hold(p_.panel);
  for (ui::OptionButton* o : {&d.optLcbFixed, &d.optlcbVar, &d.optlcbClosed}) o->SetValue(false);
  if (mode == 0) d.optLcbFixed.SetValue(true);
  if (mode == 1) d.optlcbVar.SetValue(true);
  if (mode == 2) d.optlcbClosed.SetValue(true);
}

void UpconverterDialog::Close() {
  frmlcBucSetup.Timer1.SetTimerEnabled(false);
  frmlcBucSetup.Unload();
}

// ---------------------------------------------------------------- fields

bool UpconverterDialog::FilterKey(int& KeyAscii, bool& dirty) {
  if (!RemoteGuard(p_)) {
    KeyAscii = 0;
    return false;
  }
  const int k = KeyAscii;
  if (k == kBackspace || k == '-' || k == '.' || (k >= '0' && k <= '9')) {
    dirty = true;
    return false;
  }
  KeyAscii = 0;
  return k == kEnter;
}

void UpconverterDialog::txtlcBucA_KeyPress(int& KeyAscii) {
  // The attenuation is never negative.
  if (KeyAscii == '-') KeyAscii = 0;
  if (KeyAscii != 0 && FilterKey(KeyAscii, dirtyA_)) SetAttenuation();
}

void UpconverterDialog::txtlcBucS_KeyPress(int& KeyAscii) {
  if (FilterKey(KeyAscii, dirtyS_)) SetSetPoint();
}

void UpconverterDialog::txtlcBucO_KeyPress(int& KeyAscii) {
  if (FilterKey(KeyAscii, dirtyO_)) SetOffset();
}

void UpconverterDialog::txtlcBucA_LostFocus() {
  if (dirtyA_) SetAttenuation();
}
void UpconverterDialog::txtlcBucS_LostFocus() {
  if (dirtyS_) SetSetPoint();
}
void UpconverterDialog::txtlcBucO_LostFocus() {
  if (dirtyO_) SetOffset();
}

void UpconverterDialog::SetAttenuation() {
  if (Deferred(&UpconverterDialog::SetAttenuation)) return;
  if (!MaySend()) return;
  dirtyA_ = false;
  const double typed = Val(frmlcBucSetup.txtlcBucA.Text());
  double atten = AdjustResult(typed);
  if (typed < 0) atten = 0.0;
  if (typed > p_.values.gBucMaxAtten) atten = AdjustResult(p_.values.gBucMaxAtten);
  frmlcBucSetup.txtlcBucA.SetText(Format(atten, "#0.0"));
  Send(CmdBucAtten(atten));
  p_.values.gBucAttenuation = static_cast<float>(atten);
}

void UpconverterDialog::SetSetPoint() {
  if (Deferred(&UpconverterDialog::SetSetPoint)) return;
  if (!MaySend()) return;
  dirtyS_ = false;
  const double value = Val(frmlcBucSetup.txtlcBucS.Text());
  frmlcBucSetup.txtlcBucS.SetText(Format(value, "#0.0"));
  Send(CmdBucSetPoint(value));
  p_.values.gBucSetPoint = static_cast<float>(value);
}

void UpconverterDialog::SetOffset() {
  if (Deferred(&UpconverterDialog::SetOffset)) return;
  if (!MaySend()) return;
  dirtyO_ = false;
  double value = Val(frmlcBucSetup.txtlcBucO.Text());
  if (value > kOffsetLimit) value = kOffsetLimit;
  if (value < -kOffsetLimit) value = -kOffsetLimit;
  frmlcBucSetup.txtlcBucO.SetText(Format(value, "#0.0"));
  Send(CmdBucOffset(value));
  p_.values.gBucOffset = static_cast<float>(value);
}

void UpconverterDialog::StepAtten(double step) {
  if (Deferred(step > 0 ? &UpconverterDialog::UpDown1_UpClick
                        : &UpconverterDialog::UpDown1_DownClick))
    return;
  if (!MaySend()) return;
  double atten = p_.values.gBucAttenuation + step;
  if (atten < 0) atten = 0.0;
  if (atten > kAttenStop) atten = kAttenStop;
  p_.values.gBucAttenuation = static_cast<float>(atten);
  frmlcBucSetup.txtlcBucA.SetText(Format(atten, "#0.0"));
  dirtyA_ = false;
  Send(CmdBucAtten(atten));
}

void UpconverterDialog::btnadjAtn_Click() {
  if (Deferred(&UpconverterDialog::btnadjAtn_Click)) return;
  if (!MaySend()) return;
  ui::FrmLcBucSetup& d = frmlcBucSetup;
  double atten = AdjustResult(Val(d.txtlcBucA.Text()) + Val(d.txtlcBucIdeal.Text()));
  if (atten < 0) atten = 0.0;
  if (atten > p_.values.gBucMaxAtten) atten = AdjustResult(p_.values.gBucMaxAtten);
  if (!Send(CmdBucAtten(atten))) return;
  ++busy_;
  const float unitValue = ReadBucAtten(p_.comms);
  Release();
  if (unitValue < 0) return;
  p_.values.gBucAttenuation = unitValue;
  d.txtlcBucA.SetText(Format(unitValue, "#0.0"));
  dirtyA_ = false;
}

// ------------------------------------------------------------------ mode

void UpconverterDialog::SetFrameToAtn() {
  frmlcBucSetup.Frame1.SetCaption("BUC Attenuation");
  frmlcBucSetup.lblUnits.SetCaption("dB");
}

void UpconverterDialog::SetFrameToSetPoint() {
  frmlcBucSetup.Frame1.SetCaption("BUC Set Point");
  frmlcBucSetup.lblUnits.SetCaption("dBm");
}

void UpconverterDialog::optLcbFixed_Click() {
  ui::FrmLcBucSetup& d = frmlcBucSetup;
  d.Frame6.SetVisible(false);
  d.txtlcBucA.SetText("0.0");
  d.txtlcBucA.SetEnabled(false);
  d.UpDown1.SetEnabled(false);
  d.btnadjAtn.SetEnabled(false);
  SetFrameToAtn();
  SetlcBucMode();
}

void UpconverterDialog::optlcbVar_Click() {
  ui::FrmLcBucSetup& d = frmlcBucSetup;
  d.Frame6.SetVisible(true);
  d.txtlcBucA.SetText(Format(p_.values.gBucAttenuation, "#0.0"));
  for (ui::Control* c :
       {static_cast<ui::Control*>(&d.txtlcBucA), static_cast<ui::Control*>(&d.UpDown1),
        static_cast<ui::Control*>(&d.btnadjAtn)})
    c->SetEnabled(true);
  SetFrameToAtn();
  SetlcBucMode();
}

void UpconverterDialog::optlcbClosed_Click() {
  frmlcBucSetup.Frame6.SetVisible(true);
  SetFrameToSetPoint();
  SetlcBucMode();
}

void UpconverterDialog::SetlcBucMode() {
  if (Deferred(&UpconverterDialog::SetlcBucMode)) return;
  const ui::FrmLcBucSetup& d = frmlcBucSetup;
  const int16_t mode = d.optLcbFixed.Value() ? 0 : d.optlcbVar.Value() ? 1 : 2;
  if (p_.panel.gInPanelUpdate || mode == p_.values.gBucMode) return;
  if (!RemoteGuard(p_)) {
    // The buttons go back to the unit's mode.
    ShowMode(p_.values.gBucMode);
    return;
  }
  Send(CmdBucMode(mode));
  p_.values.gBucMode = mode;
}

void UpconverterDialog::chklcBucEn_Click() {
  if (Deferred(&UpconverterDialog::chklcBucEn_Click)) return;
  ui::CheckBox& box = frmlcBucSetup.chklcBucEn;
  if (!CheckBoxGuard(p_, box)) return;
  int16_t& flags = p_.unit.gUnitCfgFlags;
  if (flags < 0) return;  // a word never read is not written back
  const bool on = box.Value() == 1;
  flags = static_cast<int16_t>(on ? flags | kCfgProgrammableBUC : flags & ~kCfgProgrammableBUC);
  p_.values.gBucEnabled = on;
  Send(CmdUnitCfgWord(flags));
}

// -------------------------------------------------------------- readings

void UpconverterDialog::Timer1_Timer() {
  ui::FrmLcBucSetup& d = frmlcBucSetup;
  // A tick that falls while one of the dialog's own exchanges waits for its
  // reply is skipped: the line carries one exchange at a time.
  if (!d.Loaded() || busy_ > 0 || d.chklcBucEn.Value() != 1) return;
  ++busy_;
  if (p_.comms.ExchangeCommand("1", false)) {
    d.txtlcBucPwr.SetText(Format(ReadBucPower(p_.comms), "##0.0"));
    if (p_.values.gBucMode == 1) {
      const float ideal = ReadBucIdeal(p_.comms);
      d.txtlcBucIdeal.SetText(Format(ideal, "##0.0"));
      // Above the ideal level the input overdrives the upconverter.
      d.txtlcBucIdeal.SetBackColor(ideal > 0 ? ui::QBColor(12) : ui::QBColor(10));
    }
    d.txtlcBucTemp.SetText(Format(ReadBucTemperature(p_.comms), "##0.0"));
  }
  Release();
}

}  // namespace amp
