#include "control/enet_cfg_controls.h"

#include "basic/numbers.h"
#include "basic/text.h"
#include "commands/port_network_cmds.h"
#include "control/dialog_hold.h"

namespace amp {

namespace {

constexpr int kBackspace = 8;
constexpr int kEscape = 27;
constexpr int32_t kDefaultPort = 2000;
// Ports above this are not shown for editing: the field stays at the
// default, disabled.
constexpr int32_t kHighestEditablePort = 4096;
constexpr float kDialogMsgTimeout = 2.0f;

bool IsDigitKey(int key) { return key >= '0' && key <= '9'; }

std::array<int16_t, 4>& OctetsOf(SessionValues& v, int group) {
  return group == 0 ? v.gIPOctets : group == 1 ? v.gMaskOctets : v.gGatewayOctets;
}

}  // namespace

EnetCfgControls::EnetCfgControls(PanelContext& p) : p_(p) {}

ui::TextBox& EnetCfgControls::Field(int id) {
  if (id < kOctets) return *frmEnetCfg.Octet(id / 4, id % 4);
  if (id == kPort) return frmEnetCfg.txtPort;
  return id == kHost ? frmEnetCfg.txtHostName : frmEnetCfg.txtDomainName;
}

void EnetCfgControls::Wire() {
  p_.frm.mnuEnetCfg.Click = [this] { mnuEnetCfg_Click(); };
  ui::FrmEnetCfg& f = frmEnetCfg;
  f.Load = [this] { frmEnetCfg_Load(); };
  f.QueryUnload = [this] { frmEnetCfg.Unload(); };
  f.cmdOK.Click = [this] { cmdOK_Click(); };
  f.cmdCancel.Click = [this] { frmEnetCfg.Unload(); };
  f.optDhcp.Click = [this] { Mode_Click(); };
  f.optStaticIP.Click = [this] { Mode_Click(); };
  for (int id = 0; id < kFields; ++id) {
    ui::TextBox& box = Field(id);
    box.Change = [this, id] { Field_Change(id); };
  }
  for (int id = 0; id < kOctets; ++id) {
    ui::TextBox& box = Field(id);
    box.KeyPress = [this, id](int& key) { Octet_KeyPress(id, key); };
    box.LostFocus = [this, id] { Octet_LostFocus(id); };
    box.Validate = [this, id](bool& cancel) { cancel = IsRangeError(Val(Field(id).Text())); };
  }
  f.txtPort.KeyPress = [this](int& key) { Port_KeyPress(key); };
  f.txtPort.LostFocus = [this] {
    mEditing = false;
    if (changed_[kPort])
      p_.values.gEthPort = CLng(Val(frmEnetCfg.txtPort.Text())).value_or(p_.values.gEthPort);
  };
  for (int id : {kHost, kDomain}) {
    Field(id).KeyPress = [this, id](int& key) { Name_KeyPress(id, key); };
    Field(id).LostFocus = [this] { mEditing = false; };
  }
}

void EnetCfgControls::mnuEnetCfg_Click() {
  AmpLink& link = p_.comms.Link;
  const float savedTimeout = link.MsgTimeout();
  link.SetMsgTimeout(kDialogMsgTimeout);
  {
    TimerHold hold(p_);
    gEnetChanged = false;
    p_.dialogs.ShowModal(frmEnetCfg);
    if (gEnetChanged) p_.setup.InitEnetParams();
    link.SetMsgTimeout(savedTimeout);
  }
}

void EnetCfgControls::frmEnetCfg_Load() {
  PanelUpdateHold hold(p_);
  ui::FrmEnetCfg& f = frmEnetCfg;
  SessionValues& v = p_.values;
  f.lblMac.SetCaption(v.gMACAddress);
  const bool editable = v.gEthPort >= 1 && v.gEthPort <= kHighestEditablePort;
  f.txtPort.SetText(std::to_string(editable ? v.gEthPort : kDefaultPort));
  f.txtPort.SetEnabled(editable && v.gEthPort != kDefaultPort);
  for (int id = 0; id < kOctets; ++id)
    Field(id).SetText(std::to_string(OctetsOf(v, id / 4)[static_cast<size_t>(id % 4)]));
  f.txtHostName.SetText(gEnetHostName);
  f.txtDomainName.SetText(gEnetDomainName);
  // Both cleared first, so that the chosen one's Click always runs and sets
  // the octet fields' state, also on a second opening.
  f.optDhcp.SetValue(false);
  f.optStaticIP.SetValue(false);
  (v.gDhcpOn ? f.optDhcp : f.optStaticIP).SetValue(true);
  changed_.fill(false);
  modeChanged_ = false;
  mEditing = false;
}

void EnetCfgControls::Mode_Click() {
  modeChanged_ = true;
  const bool dhcp = frmEnetCfg.optDhcp.Value();
  for (int id = 0; id < kOctets; ++id) Field(id).SetEnabled(!dhcp);
}

void EnetCfgControls::Field_Change(int id) { changed_[static_cast<size_t>(id)] = true; }

void EnetCfgControls::NoteFirstKey(int id) {
  if (mEditing) return;
  mEditing = true;
  mSavedValues[static_cast<size_t>(id)] = Field(id).Text();
}

void EnetCfgControls::Restore(int id) {
  Field(id).SetText(mSavedValues[static_cast<size_t>(id)]);
  changed_[static_cast<size_t>(id)] = false;
}

void EnetCfgControls::Octet_KeyPress(int id, int& key) {
  NoteFirstKey(id);
  if (key == kBackspace || IsDigitKey(key)) return;
  if (key == '.') {
    key = 0;
    // The last gateway octet keeps the focus; the others hand it on, the
    // last of a group to the first of the next.
    if (id + 1 < kOctets) MoveFocus(frmEnetCfg, Field(id), Field(id + 1));
    return;
  }
  if (key == kEscape) Restore(id);
  key = 0;
}

void EnetCfgControls::Octet_LostFocus(int id) {
  mEditing = false;
  if (!changed_[static_cast<size_t>(id)]) return;
  int16_t& octet = OctetsOf(p_.values, id / 4)[static_cast<size_t>(id % 4)];
  octet = CInt(Val(Field(id).Text())).value_or(octet);
}

void EnetCfgControls::Port_KeyPress(int& key) {
  NoteFirstKey(kPort);
  if (key == kBackspace || IsDigitKey(key)) return;
  if (key == kEscape) Restore(kPort);
  key = 0;
}

void EnetCfgControls::Name_KeyPress(int id, int& key) {
  NoteFirstKey(id);
  if (key == kBackspace || (key >= 32 && key <= 57) || (key >= 'A' && key <= 'Z') ||
      (key >= 'a' && key <= 'z'))
    return;
  if (key == kEscape) Restore(id);
  key = 0;
}

bool EnetCfgControls::IsRangeError(double /*value*/) {
  // Only the address's second octet is ever checked, whichever field is
  // being left; the unit receives the other octets as typed.
  if (Val(frmEnetCfg.txtIP2b.Text()) > 255) {
    p_.dialogs.MsgBox("Value out of Range (0 - 255)", MsgButtons::OK, MsgIcon::Exclamation,
                      "Range Error");
    return true;
  }
  return false;
}

bool EnetCfgControls::AnyChanged(int first, int count) const {
  for (int i = first; i < first + count; ++i)
    if (changed_[static_cast<size_t>(i)]) return true;
  return false;
}

void EnetCfgControls::cmdOK_Click() {
  if (p_.panel.gInPanelUpdate) return;
  SendData();
  frmEnetCfg.Unload();
}

void EnetCfgControls::SendData() {
  Comms& c = p_.comms;
  SessionValues& v = p_.values;
  const bool address = AnyChanged(0, 4);
  const bool mask = AnyChanged(4, 4);
  const bool gateway = AnyChanged(8, 4);
  const bool dhcp = frmEnetCfg.optDhcp.Value();
  if (modeChanged_) {
    gEnetSent = true;
    c.ExchangeCommand(CmdDhcpMode(dhcp), true);
  }
  if (changed_[kHost] || changed_[kDomain] || address || mask || gateway || modeChanged_ ||
      gEnetSent)
    gEnetChanged = true;
  if (!dhcp && address) {
    gEnetSent = true;
    c.ExchangeCommand(CmdIPAddress(DottedOctets(v.gIPOctets)), true);
  }
  // The mask goes whatever the mode.
  if (mask) {
    gEnetSent = true;
    c.ExchangeCommand(CmdNetMask(DottedOctets(v.gMaskOctets)), true);
  }
  if (gateway) {
    gEnetSent = true;
    c.ExchangeCommand(CmdRouterAddress(DottedOctets(v.gGatewayOctets)), true);
  }
  if (changed_[kPort]) {
    gEnetSent = true;
    c.ExchangeCommand(CmdEnetPort(v.gEthPort), true);
  }
  if (!gEnetSent || p_.unit.gNetburnerProcessor) return;
  if (!c.gUseEnet) {
    c.ExchangeCommand(kCmdSaveEnet, true);
    return;
  }
  // Over TCP the box has a single OK, so the reset below is never sent from
  // here: the operator resets the unit another way.
  const MsgResult answer = p_.dialogs.MsgBox(
      "Unit must be reset for new \r\nparameters to take effect!\r\n\r\nReset Now?", MsgButtons::OK,
      MsgIcon::Information, "Ethernet Configuration");
  if (answer == MsgResult::Yes) c.ExchangeCommand("~", true);
}

}  // namespace amp
