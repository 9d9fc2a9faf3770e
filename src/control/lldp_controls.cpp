#include "control/lldp_controls.h"

#include "basic/numbers.h"
#include "basic/text.h"
#include "commands/port_network_cmds.h"
#include "control/dialog_hold.h"
#include "control/panel_rules.h"

namespace amp {

namespace {

constexpr int kBackspace = 8;

// A whole number in [lo, hi]; anything else (empty, letters) is refused.
bool InRange(const ui::TextBox& box, double lo, double hi) {
  if (!IsNumeric(box.Text())) return false;
  const double v = Val(box.Text());
  return v >= lo && v <= hi;
}

// Paints the field by the verdict and passes the verdict on.
bool Mark(ui::TextBox& box, bool good) {
  box.SetBackColor(good ? LldpControls::kWindow : LldpControls::kRefused);
  return good;
}

int32_t Number(const ui::TextBox& box) { return CLng(Val(box.Text())).value_or(0); }

}  // namespace

LldpControls::LldpControls(PanelContext& p) : p_(p) {}

void LldpControls::Wire() {
  p_.frm.mnuLLDPCfg.Click = [this] { mnuLLDPCfg_Click(); };
  ui::FrmLLDPConfig& f = frmLLDPConfig;
  f.Load = [this] { frmLLDPConfig_Load(); };
  f.QueryUnload = [this] { frmLLDPConfig.Unload(); };
  f.btnClose.Click = [this] { frmLLDPConfig.Unload(); };
  f.btnOK.Click = [this] { btnOK_Click(); };
  f.btnUserDefaults.Click = [this] { SetUserDefaults(); };
  f.btnFactDefaults.Click = [this] { SetFactoryDefaults(); };
  for (ui::TextBox* box :
       {&f.txtlldpTxTimer, &f.txtlldpHoldtime, &f.txtlldpReinitDelay, &f.txtlldpMED})
    box->KeyPress = [](int& key) {
      if (key != kBackspace && (key < '0' || key > '9')) key = 0;
    };
}

void LldpControls::mnuLLDPCfg_Click() {
  if (!RemoteGuard(p_)) return;
  {
    TimerHold hold(p_);
    p_.dialogs.ShowModal(frmLLDPConfig);
  }
  p_.setup.InitLLDP();
}

void LldpControls::frmLLDPConfig_Load() {
  PanelUpdateHold hold(p_);
  for (ui::Control* c : frmLLDPConfig.Controls())
    if (auto* box = dynamic_cast<ui::TextBox*>(c)) box->SetBackColor(kWindow);
  LoadUserParams();
  LoadFactoryParams();
}

void LldpControls::LoadUserParams() {
  const LldpUserParams& u = p_.values.gLldpUser;
  ui::FrmLLDPConfig& f = frmLLDPConfig;
  f.chkEnable.SetValue(u.gLldpEnabled ? 1 : 0);
  f.txtlldpTxTimer.SetText(Format(u.gLldpTxTimer, "####0"));
  f.txtlldpHoldtime.SetText(Format(u.gLldpHoldtime, "####0"));
  f.txtlldpReinitDelay.SetText(Format(u.gLldpReinitDelay, "0"));
  f.txtlldpHostname.SetText(u.gLldpHostname);
}

void LldpControls::LoadFactoryParams() {
  const LldpFactoryParams& fp = p_.values.gLldpFactory;
  ui::FrmLLDPConfig& f = frmLLDPConfig;
  f.txtlldpMED.SetText(Format(fp.gLldpMED, "########0"));
  f.txtlldpHWRev.SetText(fp.gLldpHWRev);
  f.txtlldpUUID.SetText(fp.gLldpUUID);
}

void LldpControls::SetUserDefaults() {
  ui::FrmLLDPConfig& f = frmLLDPConfig;
  f.txtlldpTxTimer.SetText("30");
  f.txtlldpHoldtime.SetText("120");
  f.txtlldpReinitDelay.SetText("2");
  f.txtlldpHostname.SetText(kDefaultHostname);
}

void LldpControls::SetFactoryDefaults() {
  ui::FrmLLDPConfig& f = frmLLDPConfig;
  f.txtlldpMED.SetText("80008");
  f.txtlldpHWRev.SetText("A");
  f.txtlldpUUID.SetText("00000000-0000-0000-0000-000000000000");
}

bool LldpControls::ValidUserParams() {
  ui::FrmLLDPConfig& f = frmLLDPConfig;
  // The hint beside the field says 5, but the unit refuses anything under 30.
  bool ok = Mark(f.txtlldpTxTimer, InRange(f.txtlldpTxTimer, 30, 65534));
  ok = Mark(f.txtlldpHoldtime, InRange(f.txtlldpHoldtime, 0, 65535)) && ok;
  ok = Mark(f.txtlldpReinitDelay, InRange(f.txtlldpReinitDelay, 2, 5)) && ok;
  ok = Mark(f.txtlldpHostname, Len(f.txtlldpHostname.Text()) >= 5) && ok;
  return ok;
}

bool LldpControls::ValidFactoryParams() {
  ui::FrmLLDPConfig& f = frmLLDPConfig;
  bool ok = Mark(f.txtlldpMED, InRange(f.txtlldpMED, 0, 16777215));
  ok = Mark(f.txtlldpHWRev, !f.txtlldpHWRev.Text().empty()) && ok;
  ok = Mark(f.txtlldpUUID, Len(f.txtlldpUUID.Text()) >= 5) && ok;
  return ok;
}

bool LldpControls::UserParamsChanged() {
  const LldpUserParams& u = p_.values.gLldpUser;
  ui::FrmLLDPConfig& f = frmLLDPConfig;
  return (f.chkEnable.Value() == 1) != u.gLldpEnabled ||
         Number(f.txtlldpTxTimer) != u.gLldpTxTimer ||
         Number(f.txtlldpHoldtime) != u.gLldpHoldtime ||
         Number(f.txtlldpReinitDelay) != u.gLldpReinitDelay ||
         f.txtlldpHostname.Text() != u.gLldpHostname;
}

bool LldpControls::FactoryParmsChanged() {
  const LldpFactoryParams& fp = p_.values.gLldpFactory;
  ui::FrmLLDPConfig& f = frmLLDPConfig;
  return Number(f.txtlldpMED) != fp.gLldpMED || f.txtlldpHWRev.Text() != fp.gLldpHWRev ||
         f.txtlldpUUID.Text() != fp.gLldpUUID;
}

void LldpControls::SetUserParams() {
  ui::FrmLLDPConfig& f = frmLLDPConfig;
  p_.comms.ExchangeCommand(
      CmdLldpUser(f.chkEnable.Value() == 1, Number(f.txtlldpTxTimer), Number(f.txtlldpHoldtime),
                  Number(f.txtlldpReinitDelay), f.txtlldpHostname.Text()),
      false);
}

void LldpControls::SetFactoryParams() {
  ui::FrmLLDPConfig& f = frmLLDPConfig;
  p_.comms.ExchangeCommand(
      CmdLldpFactory(Number(f.txtlldpMED), f.txtlldpHWRev.Text(), f.txtlldpUUID.Text()), false);
}

void LldpControls::btnOK_Click() {
  if (p_.panel.gInPanelUpdate) return;
  // Both groups are judged, and painted, before either is sent.
  const bool user = ValidUserParams();
  const bool factory = ValidFactoryParams();
  if (!user || !factory) return;
  if (FactoryParmsChanged()) SetFactoryParams();
  if (UserParamsChanged()) SetUserParams();
  frmLLDPConfig.Unload();
}

}  // namespace amp
