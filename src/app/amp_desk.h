// AmpDesk: the application object. It owns the main panel, the link, the
// unit descriptor and every other piece of state for the run, wires the
// panel's events to their handlers, and is the panel the poll loop talks to.
// Front ends (the desktop window, the command line, tests) build one from
// the host's parts and drive it through the panel model.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/panel_timer.h"
#include "app/settings_keys.h"
#include "control/control_panel.h"
#include "control/network_dialogs.h"
#include "control/panel_context.h"
#include "datafiles/config_files.h"
#include "display/frm_about.h"
#include "display/frm_com.h"
#include "display/frm_main.h"
#include "display/panel_state.h"
#include "display/session_values.h"
#include "display/status_display.h"
#include "link/comms.h"
#include "link/link_panel.h"
#include "link/unit_search.h"
#include "model/unit_descriptor.h"
#include "platform/com_slots.h"
#include "platform/comm_port.h"
#include "platform/dialogs.h"
#include "platform/event_pump.h"
#include "platform/settings_store.h"
#include "platform/shell.h"
#include "platform/tcp_socket.h"
#include "platform/udp_socket.h"
#include "unit/first_read.h"

namespace amp {

// The host's parts, all owned by the caller and outliving the AmpDesk.
struct AmpDeskHost {
  CommPort& port;
  ComSlots& slots;
  TcpSocket& sckTcp;
  Timer& Timer1;
  EventPump& pump;
  Clock& clock;
  Dialogs& dialogs;
  SettingsStore& settings;
  // The unit search; a host without one finds no unit by UDP.
  UdpSocket* udp = nullptr;
};

class AmpDesk : public LinkPanel {
 public:
  // Where the persisted settings live: application title and section.
  static constexpr const char* kAppTitle = setting_key::kAppTitle;
  static constexpr const char* kSettingsSection = setting_key::kSection;
  static constexpr const char* kHostSection = setting_key::kHostSection;
  static constexpr const char* kPortDeviceKey = setting_key::kCurrentPortDevice;

  explicit AmpDesk(AmpDeskHost host);
  ~AmpDesk() override;
  AmpDesk(const AmpDesk&) = delete;
  AmpDesk& operator=(const AmpDesk&) = delete;

  // ---- State for the run (declaration order is construction order) ----
  ui::FrmMain frmMain;

 private:
  PanelTimer panelTimer_;  // the host's Timer1 seen through frmMain.Timer1

 public:
  Comms comms;
  UnitDescriptor unit;
  PanelState panel;
  SessionValues values;
  StatusDisplay display;
  FirstRead firstRead;
  // What the main panel's handlers work on.
  PanelContext controls;
  ControlPanel handlers{controls};
  NetworkDialogs network{controls};
  ui::FrmCom frmCom;
  ui::FrmAbout frmAbout;

  // ---- Connection globals ----
  bool gAdvancedSearch = false;   // the next connect searches addresses A to Z
  bool gExtendedSearch = false;   // the next connect searches addresses A to F
  bool gTerminateSearch = false;  // set by the button while a search runs
  SearchSettingsList gSearchSettings{};
  int16_t gPollAddress = 'A';    // character code of the single poll address
  int16_t gPortToConfigure = 0;  // the port frmCom edits
  std::string gPortSettings;     // settings into and out of frmCom; "" after Cancel
  std::string gLastDir;          // last folder of a file dialog, kept across runs
  // Load Cfg File... and Save Unit Cfg...; the front end sets its shell.
  ConfigFiles configFiles{controls, gLastDir};
  // The TCP target lives in values.gIPAddress and values.gEthPort, beside the
  // unit's own network settings that the first read may put there.

  // ---- Start-up and shutdown ----
  // Loads the persisted settings and leaves the panel empty and disabled.
  void Form_Load();
  // Stops the poll, closes the dialogs, saves the settings and releases the
  // port and the socket; then runs EndProgram. Runs once.
  void Form_Unload();
  // Told when the program should end (after Form_Unload).
  std::function<void()> EndProgram;
  bool Unloaded() const { return unloaded_; }

  void mnuFileExit_Click();
  void mnuHelpAbout_Click();

  // Dialogs that Form_Unload closes if they are still open, in the order they
  // were registered; frmMain is the first.
  void RegisterForm(ui::Form& form);
  // Every registered form, frmMain first: what front ends address by name.
  const std::vector<ui::Form*>& Forms() const { return forms_; }

  // ---- Connecting ----
  void btnConnect_Click();
  void mnuConnect_Click();
  void mnuExtSrch_Click();
  void mnuAdvSrch_Click();
  // The connect action shared by the button and the three menu entries.
  void Connect();
  bool UnitFoundOnSerialPort();
  bool PollSingleAddress();
  void mnuPollAdrs_Click();
  void mnuPollEn_Click();
  void mnuUseEnet_Click();
  void mnuEnterIP_Click();
  void mnuEthPort_Click();
  // Searches by UDP; a unit chosen becomes the TCP target, connected to at
  // once when a TCP session stands or TCP is chosen.
  void mnuLocateIP_Click();
  void mnuOpenWebpage_Click();

  // ---- Serial ports ----
  // A port is present when its slot is bound to a device that exists.
  bool IsPortPresent(int port) const;
  // The port to open at start-up: the stored number, as long as it still
  // stands for the device it stood for when it was stored.
  int StoredPort();
  void BuildComPortList();
  void InitDefaultComPort();
  void ClearComChecks();
  bool SetupSerialPort(int port);
  bool ConfigPort(int port);
  void mnuComPort_Click(int index);
  void mnuPortScan_Click();

  // ---- Display units ----
  // Switches every power field between dBm and Watts; the entry's caption
  // names the unit it switches to.
  void mnuWatts_Click();

  // ---- Transmitter state as the panel shows it ----
  bool IsTxOn() const;
  void EnableConstPwrInput();
  void DisableConstPwrInput();

  // ---- LinkPanel: what the poll loop asks of the panel ----
  void SetSummaryStatus(const std::string& word) override;
  void SetFaultStatus(const std::string& word) override;
  void SetAlarmStatus(const std::string& word) override;
  void UpdateFwdRF() override;
  void UpdateRevRF() override;
  void UpdateAtn() override;
  void UpdateTemperature() override;
  void UpdateHelixHeater() override;
  void UpdateCathodeCurrent() override;
  void UpdateCurrentSense() override;
  void UpdateDCVIn() override;
  void InitRFTripLevels() override;
  void UpdateRFFrequency() override;
  void UpdateCurrentSubBand() override;
  void UpdateDateTime() override;
  void UpdateHours() override;
  bool IsTWTA() const override;
  void FirstTimeRead() override;
  void ClearForm() override;
  void DisableForm() override;
  void EnableForm() override;
  void SetConnectCaption(std::string_view caption) override;
  void SetControlEnabled(std::string_view control, bool enabled) override;

  AmpDeskHost& host() { return host_; }
  // The host timer the dialogs' own timers run on (the upconverter's live
  // readings); the poll's Timer1 is stopped while they run.
  void AttachDialogTimer(Timer& timer) { handlers.upconverter.AttachTimer(timer); }

 private:
  // Wiring of the panel model's events to the handlers.
  void WireMainPanel();
  void WireComDialog();
  void WireAboutDialog();

  // Connecting, in steps.
  void ConnectTcp();
  void StartSerialSession();
  void SearchFailed(SessionPhase keptPhase);
  // Sets the session's phase and the button caption that shows it.
  void ShowSession(SessionPhase phase);
  void Disconnect();
  void SetSearchMenusEnabled(bool enabled);
  SearchContext MakeSearchContext();

  // Captions of the communication menus.
  void ShowComPortCaption();
  void ShowPollAddressCaption();
  void ShowTcpCaptions();

  // Settings.
  std::string GetSetting(const std::string& key, const std::string& fallback);
  void SaveSetting(const std::string& key, const std::string& value);
  void LoadPanelSettings();
  void SaveSettings();

  // The dialogs' logic.
  void frmCom_Load();
  void frmCom_cmdOK_Click();
  void frmCom_cmdCancel_Click();
  void SelectBaud(const std::string& baud);
  void SelectParity(const std::string& parity);
  void SelectDataBits(const std::string& dataBits);
  void SelectStopBits(const std::string& stopBits);
  std::string SelectedSettings() const;
  void frmAbout_Load();
  void StartSysInfo();

  AmpDeskHost host_;
  std::vector<ui::Form*> forms_;
  bool unloaded_ = false;
  std::optional<std::string> settingsBeforeSearch_;  // set while a search runs
};

}  // namespace amp
