#include "cli/cli_session.h"

#include <filesystem>

#include "basic/text.h"
#include "commands/identity_cmds.h"
#include "link/unit_search.h"
#include "qt/qt_com_slots.h"
#include "qt/stop_signals.h"

namespace amp::cli {

namespace {

// The first read of a large unit over a slow line takes a while; a connect
// that has not settled by then is given up.
constexpr int kConnectWaitMs = 120000;

}  // namespace

bool Interrupted() { return StopSignals::Requested(); }

// ---------------------------------------------------------------- timer

ConsoleTimer::ConsoleTimer() {
  inner_.SetHandler([this] {
    if (!held_) Fire();
  });
}

void ConsoleTimer::Fire() {
  // A tick whose poll is still waiting for its reply is not run again.
  if (firing_) return;
  firing_ = true;
  if (handler_) handler_();
  firing_ = false;
  if (afterTick) afterTick();
}

// ------------------------------------------------------------- settings

std::string MemorySettings::GetSetting(const std::string& app, const std::string& section,
                                       const std::string& key, const std::string& fallback) {
  auto it = values_.find(app + "\n" + section + "\n" + key);
  return it == values_.end() ? fallback : it->second;
}

void MemorySettings::SaveSetting(const std::string& app, const std::string& section,
                                 const std::string& key, const std::string& value) {
  values_[app + "\n" + section + "\n" + key] = value;
}

void MemorySettings::Set(const std::string& key, const std::string& value) {
  SaveSetting(AmpDesk::kAppTitle, AmpDesk::kSettingsSection, key, value);
}

// -------------------------------------------------------------- session

CliSession::CliSession(ConsoleDialogs& dialogs, ComSlots slots)
    : dialogs_(dialogs), host_(std::move(slots)) {
  host_.MakeDesk(timer_, dialogs_, runSettings_);
  ui::FrmMain& f = host_.desk->frmMain;
  // The button's caption changes with every change of the session's phase,
  // so its change is when to look at the session.
  observer_ = f.AddObserver([this, &f](ui::Control* c) {
    if (c != &f.btnConnect) return;
    const bool now = Connected();
    if (wasConnected_ && !now) {
      if (!expectDisconnect_) lost_ = true;
      expectDisconnect_ = false;
    }
    wasConnected_ = now;
  });
}

CliSession::~CliSession() {
  Close();
  host_.desk->frmMain.RemoveObserver(observer_);
  host_.desk.reset();
}

bool CliSession::OpenTrace(const std::string& path, std::string* error) {
  return host_.OpenTrace(path, error);
}

bool CliSession::Connected() const { return host_.desk->comms.session.Connected(); }

bool CliSession::LastPollOk() const {
  return host_.desk->comms.session.Health() == LinkHealth::Good;
}

void CliSession::PollNow() {
  if (timer_.Enabled()) timer_.Fire();
}

void CliSession::RunFor(int ms, const std::function<bool()>& stop) {
  timer_.Hold(false);
  const int64_t end = host_.clock.NowMs() + ms;
  for (int64_t left = ms; left > 0 && !Interrupted(); left = end - host_.clock.NowMs()) {
    if (stop && stop()) break;
    host_.pump.WaitForEvents(static_cast<int>(std::min<int64_t>(left, 100)));
  }
  timer_.Hold(true);
}

void CliSession::Close() {
  if (!host_.desk || host_.desk->Unloaded()) return;
  timer_.Hold(true);
  expectDisconnect_ = true;
  if (host_.desk->frmMain.Loaded()) host_.desk->Form_Unload();
}

bool CliSession::Connect(const Target& target, const std::string& dataDirectory, bool watts) {
  AmpDesk& d = *host_.desk;
  d.values.gDataDirectory = dataDirectory;
  settings_.Set(setting_key::kUnitsSetting, watts ? "True" : "False");
  frontend::RunTarget run;
  if (!target.tcpHost.empty()) {
    run.tcpHost = target.tcpHost;
    run.tcpPort = target.tcpPort;
  } else {
    run.serialSlot = SlotForDevice(host_.slots, target.device);
    run.lineSettings = target.settings;
    run.address = target.address.empty() ? 0 : target.address[0];
  }
  runSettings_.LayTarget(run);
  if (d.frmMain.Load) d.frmMain.Load();
  if (!target.tcpHost.empty()) return ConnectTcp();
  return ConnectSerial(target);
}

void CliSession::LoadPanel(const std::string& dataDirectory, bool watts) {
  AmpDesk& d = *host_.desk;
  d.values.gDataDirectory = dataDirectory;
  settings_.Set(setting_key::kUnitsSetting, watts ? "True" : "False");
  if (d.frmMain.Load) d.frmMain.Load();
}

bool CliSession::AwaitSession() {
  WaitWhileConnecting(kConnectWaitMs);
  return Connected();
}

void CliSession::WaitWhileConnecting(int ms) {
  const int64_t end = host_.clock.NowMs() + ms;
  while (!Connected() && !Interrupted() && host_.clock.NowMs() < end &&
         host_.sock.State() != TcpSocket::sckClosed && host_.sock.State() != TcpSocket::sckError)
    host_.pump.WaitForEvents(50);
}

bool CliSession::ConnectTcp() {
  host_.desk->frmMain.btnConnect.RaiseClick();
  // The socket's connect event runs the first read; it may still be queued.
  WaitWhileConnecting(kConnectWaitMs);
  return Connected();
}

bool CliSession::ConnectSerial(const Target& target) {
  AmpDesk& d = *host_.desk;
  const bool partial = target.settings.empty() != target.address.empty();
  if (partial) return SearchThenConnect(target);
  if (target.search == "extended") {
    d.frmMain.mnuExtSrch.RaiseClick();
  } else if (target.search == "advanced") {
    d.frmMain.mnuAdvSrch.RaiseClick();
  } else {
    d.frmMain.btnConnect.RaiseClick();
  }
  return Connected();
}

// One of settings and address is known: the other is searched for with the
// panel's own search step, and the unit found is then connected as a single
// address, so the session starts exactly as the panel starts it.
bool CliSession::SearchThenConnect(const Target& target) {
  AmpDesk& d = *host_.desk;
  SearchSettingsList list{};
  if (target.settings.empty()) {
    BuildSearchSettings(list);
  } else {
    list[0] = target.settings;
  }
  int first = 'A', last = 'C';
  if (!target.address.empty()) {
    first = last = static_cast<unsigned char>(target.address[0]);
  } else {
    bool extended = target.search == "extended", advanced = target.search == "advanced";
    std::tie(first, last) = SearchAddressRange(extended, advanced);
  }
  d.gTerminateSearch = false;
  SearchContext search{d.comms, [&d] { return ReadUnitIDWord(d.comms); },
                       [&d](const std::string& text) { d.display.DisplayStatusMsg(text); },
                       d.gTerminateSearch};
  std::string found;
  for (const std::string& settings : list) {
    if (settings.empty() || Interrupted()) break;
    found = SearchAddresses(search, settings, first, last);
    if (!found.empty()) break;
  }
  if (found.empty()) {
    dialogs_.MsgBox("Unit Not Found", MsgButtons::OK, MsgIcon::None, "Connect");
    return false;
  }
  d.gPollAddress = static_cast<int16_t>(static_cast<unsigned char>(found[0]));
  if (!d.frmMain.mnuPollEn.Checked()) d.frmMain.mnuPollEn.RaiseClick();
  d.frmMain.btnConnect.RaiseClick();
  return Connected();
}

}  // namespace amp::cli
