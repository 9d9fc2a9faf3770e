// Serial ports: the menu of COM1..COM10, the start-up values of the link,
// and the dialog that sets a port's speed and character format.
#include <filesystem>
#include <system_error>

#include "app/amp_desk.h"
#include "app/module1.h"
#include "basic/numbers.h"
#include "basic/text.h"

namespace amp {

namespace {

constexpr const char* kDefaultSettings = "9600,N,8,1";

// Index of `part`'s first character in `choices`, or 0 (the first choice)
// when it is not one of them.
template <size_t N>
int ChoiceIndex(const std::string& part, const char (&choices)[N]) {
  for (size_t i = 0; i < N; ++i)
    if (!part.empty() && part[0] == choices[i]) return static_cast<int>(i);
  return 0;
}

template <typename Group, size_t N>
char SelectedChoice(const Group& group, const char (&choices)[N]) {
  for (size_t i = 0; i < N; ++i)
    if (group[static_cast<int>(i)].Value()) return choices[i];
  return choices[0];
}

}  // namespace

bool AmpDesk::IsPortPresent(int port) const {
  const std::string& path = host_.slots.Path(port);
  std::error_code ec;
  return !path.empty() && std::filesystem::exists(path, ec);
}

void AmpDesk::BuildComPortList() {
  for (int i = 0; i < frmMain.mnuComPort.size(); ++i) {
    ui::MenuItem& entry = frmMain.mnuComPort[i];
    entry.SetVisible(true);
    // Each slot shows the device it stands for.
    const std::string& path = host_.slots.Path(i + 1);
    entry.SetCaption("Com" + std::to_string(i + 1) + (path.empty() ? "" : " (" + path + ")"));
  }
  for (int port = ComSlots::kCount; port >= 1; --port)
    if (!IsPortPresent(port)) frmMain.mnuComPort[port - 1].SetVisible(false);
}

void AmpDesk::mnuPortScan_Click() { BuildComPortList(); }

void AmpDesk::ShowComPortCaption() {
  frmMain.mnuCom.SetCaption("Serial Port:   COM" + std::to_string(comms.Link.PortNumber()));
}

void AmpDesk::InitDefaultComPort() {
  AmpLink& link = comms.Link;
  // These replace the link's own defaults for the whole run: replies are not
  // address-checked, and a unit has 2 s to answer.
  link.SetCommControl(&host_.port);
  link.SetCheckAddress(false);
  link.SetMsgTimeout(2.0f);
  link.SetDeviceAddress("A");

  // A stored port that is not a number or not 1..10 leaves port 1.
  if (const auto port = CIntText(GetSetting(setting_key::kCurrentPort, "1")))
    link.SetPortNumber(*port);
  link.SetCommSettings(GetSetting(setting_key::kComSettings, kDefaultSettings));
  // Setting the number opened the port; it stays closed until the first send.
  link.OpenPort(false);
  ShowComPortCaption();
  frmMain.mnuComPort[link.PortNumber() - 1].SetChecked(true);

  // Only an address the poll-address box would accept is taken.
  const auto address = CIntText(GetSetting(setting_key::kPollAddress, "65"));
  if (address && *address >= 63 && *address <= 90) gPollAddress = *address;
  ShowPollAddressCaption();
  if (Val(GetSetting(setting_key::kPollStatus, "0")) > 0) {
    frmMain.mnuPollEn.SetChecked(true);
    frmMain.mnuAdvSrch.SetEnabled(false);
  }

  values.gIPAddress = GetSetting(setting_key::kUseIP, "10.0.0.254");
  host_.sckTcp.SetRemoteHost(values.gIPAddress);
  const auto ethPort = CLngText(GetSetting(setting_key::kEthPort, "2000"));
  host_.sckTcp.SetRemotePort(ethPort ? *ethPort : 2000);
  ShowTcpCaptions();

  comms.gUseEnet = CBoolText(GetSetting(setting_key::kUseEnet, "False")).value_or(false);
  if (comms.gUseEnet) frmMain.mnuUseEnet.SetChecked(true);
}

void AmpDesk::ClearComChecks() {
  for (int i = 0; i < frmMain.mnuComPort.size(); ++i) frmMain.mnuComPort[i].SetChecked(false);
}

void AmpDesk::mnuComPort_Click(int index) {
  SetupSerialPort(index + 1);
  ShowComPortCaption();
}

bool AmpDesk::SetupSerialPort(int port) {
  if (port < 1 || port > ComSlots::kCount) return false;
  if (!ConfigPort(port)) return false;
  ClearComChecks();
  frmMain.mnuComPort[port - 1].SetChecked(true);
  return true;
}

bool AmpDesk::ConfigPort(int port) {
  if (port < 1 || port > ComSlots::kCount) return false;
  AmpLink& link = comms.Link;
  gPortToConfigure = static_cast<int16_t>(port);
  // Another port starts from the usual settings, not from the current port's.
  gPortSettings = port == link.PortNumber() ? link.CommSettings() : kDefaultSettings;
  host_.dialogs.ShowModal(frmCom);
  if (gPortSettings.empty()) return false;  // cancelled
  if (gPortSettings == link.CommSettings() && port == link.PortNumber()) return false;
  link.SetPortNumber(static_cast<int16_t>(port));
  link.SetCommSettings(gPortSettings);
  return true;
}

// ------------------------------------------------------------------ frmCom

void AmpDesk::WireComDialog() {
  frmCom.Load = [this] { frmCom_Load(); };
  frmCom.QueryUnload = [this] { frmCom_cmdCancel_Click(); };
  frmCom.cmdOK.Click = [this] { frmCom_cmdOK_Click(); };
  frmCom.cmdCancel.Click = [this] { frmCom_cmdCancel_Click(); };
}

void AmpDesk::frmCom_Load() {
  frmCom.SetCaption("Com" + std::to_string(gPortToConfigure) + " Port Settings");
  const std::string& s = gPortSettings;
  SelectBaud(s.empty() ? "" : ParseBaud(s));
  SelectDataBits(s.empty() ? "" : ParseDataBits(s));
  SelectParity(s.empty() ? "" : ParseParity(s));
  SelectStopBits(s.empty() ? "" : ParseStopBits(s));
}

void AmpDesk::SelectBaud(const std::string& baud) {
  ui::ComboBox& list = frmCom.cbBaud;
  for (int i = 0; i < list.ListCount(); ++i) {
    if (list.List(i) == baud) {
      list.SetListIndex(i);
      return;
    }
  }
  list.SetListIndex(ui::FrmCom::kDefaultBaudIndex);
}

// A part that is missing or unknown selects the first button of its group,
// so the dialog never offers a settings text without one.
void AmpDesk::SelectParity(const std::string& parity) {
  frmCom.optParity[ChoiceIndex(parity, ui::FrmCom::kParities)].SetValue(true);
}

void AmpDesk::SelectDataBits(const std::string& dataBits) {
  frmCom.optDataBits[ChoiceIndex(dataBits, ui::FrmCom::kDataBits)].SetValue(true);
}

void AmpDesk::SelectStopBits(const std::string& stopBits) {
  frmCom.optStopBits[ChoiceIndex(stopBits, ui::FrmCom::kStopBits)].SetValue(true);
}

std::string AmpDesk::SelectedSettings() const {
  std::string baud = Trim(frmCom.cbBaud.Text());
  if (baud.empty()) baud = ui::FrmCom::kBauds[ui::FrmCom::kDefaultBaudIndex];
  return baud + "," + SelectedChoice(frmCom.optParity, ui::FrmCom::kParities) + "," +
         SelectedChoice(frmCom.optDataBits, ui::FrmCom::kDataBits) + "," +
         SelectedChoice(frmCom.optStopBits, ui::FrmCom::kStopBits);
}

void AmpDesk::frmCom_cmdOK_Click() {
  gPortSettings = SelectedSettings();
  frmCom.Unload();
}

void AmpDesk::frmCom_cmdCancel_Click() {
  gPortSettings.clear();
  frmCom.Unload();
}

}  // namespace amp
