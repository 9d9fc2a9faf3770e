#include "app/amp_desk.h"

#include "app/module1.h"
#include "basic/numbers.h"
#include "basic/text.h"

// The program's version as the build gives it.
#ifndef AMPDESK_VERSION_MAJOR
#define AMPDESK_VERSION_MAJOR 0
#define AMPDESK_VERSION_MINOR 0
#define AMPDESK_VERSION_PATCH 0
#endif

namespace amp {

namespace {

constexpr const char* kCopyright = "Copyright (C) the AmpDesk developers. All rights reserved.";

}  // namespace

AmpDesk::AmpDesk(AmpDeskHost host)
    : panelTimer_(host.Timer1, frmMain.Timer1),
      comms(LinkHost{host.sckTcp, panelTimer_, host.pump, host.clock, host.dialogs}, *this),
      display(comms, unit, frmMain, panel),
      firstRead(comms, unit, frmMain, panel, display, values),
      controls{comms, unit, frmMain, panel, values, display, firstRead.setup(), host.dialogs},
      host_(host) {
  RegisterForm(frmMain);
  RegisterForm(frmCom);
  RegisterForm(frmAbout);
  RegisterForm(handlers.bands.frmSetSubBand);
  for (ui::Form* form : network.Forms()) RegisterForm(*form);
  network.locateIp.udpSock = host.udp;
  for (ui::Form* dialog : handlers.DialogForms()) RegisterForm(*dialog);
  WireMainPanel();
  WireComDialog();
  WireAboutDialog();
}

AmpDesk::~AmpDesk() {
  // Neither a poll nor a socket event may reach a half-destroyed object; the
  // host's parts outlive it.
  host_.Timer1.SetEnabled(false);
  host_.sckTcp.SetEvents({});
}

void AmpDesk::RegisterForm(ui::Form& form) { forms_.push_back(&form); }

void AmpDesk::WireMainPanel() {
  ui::FrmMain& f = frmMain;
  f.Load = [this] { Form_Load(); };
  f.QueryUnload = [this] { Form_Unload(); };
  handlers.Wire();
  network.Wire();
  f.mnuLocateIP.Click = [this] { mnuLocateIP_Click(); };
  f.mnuOpenWebpage.Click = [this] { mnuOpenWebpage_Click(); };
  f.btnConnect.Click = [this] { btnConnect_Click(); };
  f.mnuConnect.Click = [this] { mnuConnect_Click(); };
  f.mnuExtSrch.Click = [this] { mnuExtSrch_Click(); };
  f.mnuAdvSrch.Click = [this] { mnuAdvSrch_Click(); };
  f.mnuPollEn.Click = [this] { mnuPollEn_Click(); };
  f.mnuPollAdrs.Click = [this] { mnuPollAdrs_Click(); };
  f.mnuUseEnet.Click = [this] { mnuUseEnet_Click(); };
  f.mnuEnterIP.Click = [this] { mnuEnterIP_Click(); };
  f.mnuEthPort.Click = [this] { mnuEthPort_Click(); };
  f.mnuPortScan.Click = [this] { mnuPortScan_Click(); };
  for (int i = 0; i < f.mnuComPort.size(); ++i)
    f.mnuComPort[i].Click = [this, i] { mnuComPort_Click(i); };
  f.mnuFileExit.Click = [this] { mnuFileExit_Click(); };
  f.mnuHelpAbout.Click = [this] { mnuHelpAbout_Click(); };
  f.mnuWatts.Click = [this] { mnuWatts_Click(); };
  f.mnuLoadFile.Click = [this] { configFiles.mnuLoadFile_Click(); };
  f.mnuSaveAs.Click = [this] { configFiles.mnuSaveAs_Click(); };
}

void AmpDesk::WireAboutDialog() {
  frmAbout.Load = [this] { frmAbout_Load(); };
  frmAbout.QueryUnload = [this] { frmAbout.Unload(); };
  frmAbout.cmdOK.Click = [this] { frmAbout.Unload(); };
  frmAbout.cmdSysInfo.Click = [this] { StartSysInfo(); };
}

// ------------------------------------------------------------ LinkPanel

void AmpDesk::SetSummaryStatus(const std::string& word) { display.SetSummaryStatus(word); }
void AmpDesk::SetFaultStatus(const std::string& word) { display.SetFaultStatus(word); }
void AmpDesk::SetAlarmStatus(const std::string& word) { display.SetAlarmStatus(word); }
void AmpDesk::UpdateFwdRF() { display.UpdateFwdRF(); }
void AmpDesk::UpdateRevRF() { display.UpdateRevRF(); }
void AmpDesk::UpdateAtn() { display.UpdateAtn(); }
void AmpDesk::UpdateTemperature() { display.UpdateTemperature(); }
void AmpDesk::UpdateHelixHeater() { display.UpdateHelixHeater(); }
void AmpDesk::UpdateCathodeCurrent() { display.UpdateCathodeCurrent(); }
void AmpDesk::UpdateCurrentSense() { display.UpdateCurrentSense(); }
void AmpDesk::UpdateDCVIn() { display.UpdateDCVIn(); }
void AmpDesk::InitRFTripLevels() { firstRead.setup().InitRFTripLevels(); }
void AmpDesk::UpdateRFFrequency() { display.UpdateRFFrequency(); }
void AmpDesk::UpdateDateTime() { display.UpdateDateTime(); }
void AmpDesk::UpdateHours() { display.UpdateHours(); }
bool AmpDesk::IsTWTA() const { return unit.gIsTWTA; }
void AmpDesk::FirstTimeRead() { firstRead.FirstTimeRead(); }
void AmpDesk::ClearForm() { firstRead.ClearForm(); }
void AmpDesk::DisableForm() { firstRead.DisableForm(); }
void AmpDesk::EnableForm() { firstRead.EnableForm(); }

void AmpDesk::SetConnectCaption(std::string_view caption) {
  frmMain.btnConnect.SetCaption(caption);
}

void AmpDesk::SetControlEnabled(std::string_view control, bool enabled) {
  if (ui::Control* c = frmMain.Find(control)) c->SetEnabled(enabled);
}

// ------------------------------------------------------------- Settings

std::string AmpDesk::GetSetting(const std::string& key, const std::string& fallback) {
  return host_.settings.GetSetting(kAppTitle, kSettingsSection, key, fallback);
}

void AmpDesk::SaveSetting(const std::string& key, const std::string& value) {
  host_.settings.SaveSetting(kAppTitle, kSettingsSection, key, value);
}

// The TCP port, the reverse RF floor and the display unit: what the panel
// itself keeps.
void AmpDesk::LoadPanelSettings() {
  const std::string port = GetSetting(setting_key::kEthPort, "2000");
  if (IsNumeric(port)) values.gEthPort = static_cast<int32_t>(Val(port));
  const std::string floor = GetSetting(setting_key::kRRFFloor, "27.0");
  if (IsNumeric(floor)) panel.gRRFFloor = static_cast<float>(Val(floor));
  panel.gDisplayWatts = CBoolText(GetSetting(setting_key::kUnitsSetting, "False")).value_or(false);
  if (panel.gDisplayWatts) {
    display.DisplayToWatts();
    frmMain.mnuWatts.SetCaption("Display dBm");
  }
}

void AmpDesk::SaveSettings() {
  AmpLink& link = comms.Link;
  SaveSetting(setting_key::kCurrentPort, std::to_string(link.PortNumber()));
  host_.settings.SaveSetting(kAppTitle, kHostSection, kPortDeviceKey,
                             host_.slots.Path(link.PortNumber()));
  // A search only tries settings; the ones in use are those it started from.
  SaveSetting(setting_key::kComSettings, settingsBeforeSearch_.value_or(link.CommSettings()));
  SaveSetting(setting_key::kUnitsSetting, panel.gDisplayWatts ? "True" : "False");
  SaveSetting(setting_key::kRRFFloor, NumText(panel.gRRFFloor));
  SaveSetting(setting_key::kPollAddress, std::to_string(gPollAddress));
  SaveSetting(setting_key::kUseEnet, comms.gUseEnet ? "True" : "False");
  SaveSetting(setting_key::kUseIP, values.gIPAddress);
  SaveSetting(setting_key::kEthPort, std::to_string(host_.sckTcp.RemotePort()));
  SaveSetting(setting_key::kFilePath, gLastDir);
  SaveSetting(setting_key::kPollStatus, frmMain.mnuPollEn.Checked() ? "1" : "0");
}

// ------------------------------------------------- Start-up and shutdown

void AmpDesk::Form_Load() {
  frmMain.SetLoaded(true);
  frmMain.SetCaption(ui::FrmMain::kTitle);
  frmMain.Frame30.SetVisible(false);
  comms.gUseEnet = false;
  BuildComPortList();
  InitDefaultComPort();
  LoadPanelSettings();
  display.InitFaultsAlarms();
  ClearForm();
  DisableForm();
}

void AmpDesk::Form_Unload() {
  if (unloaded_) return;
  unloaded_ = true;
  frmMain.Timer1.SetTimerEnabled(false);
  gTerminateSearch = true;  // a search running below this call stops at its next address
  // An open dialog is closed as by its close box, so what it edits is left
  // as it stood before it opened.
  for (size_t i = forms_.size(); i-- > 1;) {
    ui::Form& form = *forms_[i];
    if (form.Loaded() && form.QueryUnload) form.QueryUnload();
    if (form.Loaded()) form.Unload();
  }
  SaveSettings();
  comms.Link.OpenPort(false);
  host_.sckTcp.Close();
  host_.pump.DoEvents();
  frmMain.Unload();
  if (EndProgram) EndProgram();
}

void AmpDesk::mnuFileExit_Click() { Form_Unload(); }

// ----------------------------------------------------------------- About

void AmpDesk::mnuHelpAbout_Click() { host_.dialogs.ShowModal(frmAbout); }

void AmpDesk::frmAbout_Load() {
  frmAbout.lblVersion.SetCaption("Version " + std::to_string(AMPDESK_VERSION_MAJOR) + "." +
                                 std::to_string(AMPDESK_VERSION_MINOR) + "." +
                                 std::to_string(AMPDESK_VERSION_PATCH));
  frmAbout.lblTitle.SetCaption(std::string(ui::FrmMain::kTitle) + " (" + kAppTitle + ")\r\n\r\n" +
                               kCopyright);
}

// The host has no system information tool to start, so the operator is
// told so, as when the tool cannot be found.
void AmpDesk::StartSysInfo() {
  host_.dialogs.MsgBox("System Information Is Unavailable At This Time", MsgButtons::OK,
                       MsgIcon::None, kAppTitle);
}

// ------------------------------------------------ Transmitter state

void AmpDesk::UpdateCurrentSubBand() { handlers.bands.UpdateCurrentSubBand(); }

bool AmpDesk::IsTxOn() const { return handlers.transmit.IsTxOn(); }

void AmpDesk::EnableConstPwrInput() { handlers.transmit.EnableConstPwrInput(); }

void AmpDesk::DisableConstPwrInput() { handlers.transmit.DisableConstPwrInput(); }

}  // namespace amp
