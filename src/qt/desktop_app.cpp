#include "qt/desktop_app.h"

#include <QApplication>
#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <map>

#include "basic/numbers.h"
#include "qt/forms.h"
#include "qt/ini_settings_store.h"
#include "qt/qt_com_slots.h"
#include "qt/qt_settings_store.h"

namespace amp {

// The unit named on the command line, laid over the stored settings: the
// panel reads the target from the settings as always, and nothing of the
// connection of such a run is stored (the session itself may change those
// values: the first read takes the unit's own network settings), so the
// operator's stored connection stays as it was.
class DesktopApp::TargetSettings final : public SettingsStore {
 public:
  explicit TargetSettings(SettingsStore& stored) : stored_(stored) {}

  void Override(const std::string& key, const std::string& value) { overrides_[key] = value; }

  std::string GetSetting(const std::string& app, const std::string& section, const std::string& key,
                         const std::string& fallback) override {
    if (IsPanels(app, section))
      if (auto it = overrides_.find(key); it != overrides_.end()) return it->second;
    return stored_.GetSetting(app, section, key, fallback);
  }

  void SaveSetting(const std::string& app, const std::string& section, const std::string& key,
                   const std::string& value) override {
    if (IsPanels(app, section) && overrides_.count(key)) return;
    stored_.SaveSetting(app, section, key, value);
  }

 private:
  static bool IsPanels(const std::string& app, const std::string& section) {
    return app == AmpDesk::kAppTitle && section == AmpDesk::kSettingsSection;
  }
  SettingsStore& stored_;
  std::map<std::string, std::string> overrides_;
};

namespace {

// COMn for a slot number, or the slot of a device path (binding a free slot,
// or the last one when all are taken). 0 when the name is not usable.
int SlotForDevice(ComSlots& slots, const std::string& device) {
  if (device.size() > 3 && (device[0] == 'C' || device[0] == 'c') && (device[1] == 'O' || device[1] == 'o') &&
      (device[2] == 'M' || device[2] == 'm')) {
    const auto n = CLngText(device.substr(3));
    if (n && *n >= 1 && *n <= ComSlots::kCount) return *n;
    return 0;
  }
  if (int slot = slots.SlotOf(device)) return slot;
  for (int n = 1; n <= ComSlots::kCount; ++n) {
    if (slots.Path(n).empty()) {
      slots.Bind(n, device);
      return n;
    }
  }
  slots.Bind(ComSlots::kCount, device);
  return ComSlots::kCount;
}

bool StartsWith(const std::string& s, const char* prefix) { return s.rfind(prefix, 0) == 0; }

}  // namespace

std::string DesktopUsage() {
  return "Usage: ampdesk [--demo [PROFILE] | --tcp HOST[:PORT] | --serial DEVICE] [options]\n"
         "\n"
         "The desktop panel that monitors and controls one amplifier over TCP or a\n"
         "serial line. With a unit named it connects at once; without one it starts\n"
         "with the stored settings and waits for Connect.\n"
         "\n"
         "  --demo [PROFILE]       start the simulated amplifier on 127.0.0.1 (a free\n"
         "                         port) and connect to it; PROFILE names the unit\n"
         "                         (twta127, sspa120, ...; ampsim --list-profiles).\n"
         "                         Settings go to a throw-away file unless\n"
         "                         --settings-file is given\n"
         "  --tcp HOST[:PORT]      connect over TCP (port 2000 when omitted)\n"
         "  --serial DEVICE        connect on a serial device path or COM1..COM10\n"
         "  --settings TEXT        the serial line's settings, such as 19200,N,8,1\n"
         "                         (default: the stored ones, then a search)\n"
         "  --address C            poll the unit at address C (A-Z) on the serial\n"
         "                         line instead of searching the addresses\n"
         "  --settings-file PATH   read and write the settings in this ini file\n"
         "                         instead of the user's\n"
         "  --trace FILE           log every frame both ways (time, hex, text) to\n"
         "                         FILE, - for stderr\n"
         "  --screenshot FILE      save a PNG picture of the window, then exit\n"
         "  --after MS             take the screenshot MS milliseconds after start\n"
         "                         (default 0)\n"
         "  --help                 show this text\n"
         "\n"
         "The unit given by --demo, --tcp or --serial is for this run only: the\n"
         "stored connection settings (Ethernet on or off, IP address and port,\n"
         "serial port, line settings, poll address) stay as they were.\n"
         "\n"
         "Exit codes: 0 done; 1 the program could not start or the screenshot\n"
         "could not be saved; 2 bad arguments.\n";
}

std::string ParseDesktopOptions(const std::vector<std::string>& args, DesktopOptions& o) {
  bool haveAfter = false;
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    auto value = [&](std::string* out) -> std::string {
      if (i + 1 >= args.size() || args[i + 1].empty()) return a + " needs a value";
      *out = args[++i];
      return {};
    };
    std::string v;
    if (a == "--help" || a == "-h") {
      o.help = true;
    } else if (a == "--demo") {
      o.demo = true;
      if (i + 1 < args.size() && !StartsWith(args[i + 1], "-")) o.demoProfile = args[++i];
    } else if (a == "--tcp") {
      if (auto err = value(&v); !err.empty()) return err;
      const auto colon = v.rfind(':');
      o.tcpHost = v.substr(0, colon);
      if (colon != std::string::npos) {
        const auto port = CLngText(v.substr(colon + 1));
        if (!port || *port < 1 || *port > 65535) return "bad TCP port in '" + v + "' (1..65535)";
        o.tcpPort = *port;
      }
      if (o.tcpHost.empty()) return "--tcp needs a host, such as 192.0.2.10 or 127.0.0.1:2000";
    } else if (a == "--serial") {
      if (auto err = value(&o.serialDevice); !err.empty()) return err;
    } else if (a == "--settings") {
      if (auto err = value(&o.lineSettings); !err.empty()) return err;
      if (std::count(o.lineSettings.begin(), o.lineSettings.end(), ',') != 3)
        return "bad line settings '" + o.lineSettings + "' (baud,parity,data,stop such as 9600,N,8,1)";
    } else if (a == "--address") {
      if (auto err = value(&o.address); !err.empty()) return err;
      if (o.address.size() != 1 || o.address[0] < 'A' || o.address[0] > 'Z')
        return "bad address '" + o.address + "' (one letter A-Z)";
    } else if (a == "--settings-file") {
      if (auto err = value(&o.settingsFile); !err.empty()) return err;
    } else if (a == "--trace") {
      if (auto err = value(&o.trace); !err.empty()) return err;
    } else if (a == "--screenshot") {
      if (auto err = value(&o.screenshot); !err.empty()) return err;
    } else if (a == "--after") {
      if (auto err = value(&v); !err.empty()) return err;
      const auto ms = CLngText(v);
      if (!ms || *ms < 0) return "--after needs a number of milliseconds, not '" + v + "'";
      o.screenshotAfterMs = *ms;
      haveAfter = true;
    } else {
      return "unknown argument '" + a + "'";
    }
  }
  const int sources = int(o.demo) + int(!o.tcpHost.empty()) + int(!o.serialDevice.empty());
  if (sources > 1) return "give at most one of --demo, --tcp and --serial";
  if (haveAfter && o.screenshot.empty()) return "--after goes with --screenshot FILE";
  if ((!o.lineSettings.empty() || !o.address.empty()) && o.serialDevice.empty())
    return "--settings and --address go with --serial";
  if (!o.serialDevice.empty()) {
    ComSlots probe;
    if (SlotForDevice(probe, o.serialDevice) == 0) return "bad serial port '" + o.serialDevice + "' (COM1..COM10 or a device path)";
  }
  return {};
}

DesktopApp::DesktopApp(DesktopOptions options)
    : onEnd([] { QCoreApplication::quit(); }), options_(std::move(options)), slots_(DefaultComSlots()) {}

DesktopApp::~DesktopApp() {
  // The binder and the window go before the panel they show.
  binder_.reset();
  window_.reset();
  desk_.reset();
}

SettingsStore& DesktopApp::settings() { return *settings_; }

bool DesktopApp::Start(std::string* error) {
  std::string host;
  int tcpPort = 0;
  if (options_.demo) {
    std::vector<std::string> args = {"--tcp", "127.0.0.1:0"};
    if (!options_.demoProfile.empty()) args.insert(args.end(), {"--profile", options_.demoProfile});
    if (!sim_.Start(SimProcess::Locate(QCoreApplication::applicationDirPath().toStdString()), args, error))
      return false;
    host = sim_.TcpHost();
    tcpPort = sim_.TcpPort();
    std::fprintf(stderr, "ampdesk: simulated amplifier on %s:%d\n", host.c_str(), tcpPort);
  } else if (!options_.tcpHost.empty()) {
    host = options_.tcpHost;
    tcpPort = options_.tcpPort;
  }

  if (!options_.settingsFile.empty()) {
    storedSettings_ = std::make_unique<IniSettingsStore>(options_.settingsFile);
  } else if (options_.demo) {
    if (!demoDir_.isValid()) {
      *error = "cannot create a folder for the demo's settings: " + demoDir_.errorString().toStdString();
      return false;
    }
    storedSettings_ = std::make_unique<IniSettingsStore>(demoDir_.filePath("AmpDesk.ini").toStdString());
  } else {
    storedSettings_ = std::make_unique<QtSettingsStore>();
  }
  settings_ = std::make_unique<TargetSettings>(*storedSettings_);
  if (!host.empty()) {
    settings_->Override("UseEnet", "True");
    settings_->Override("UseIP", host);
    settings_->Override("EthPort", std::to_string(tcpPort));
  } else if (!options_.serialDevice.empty()) {
    settings_->Override("UseEnet", "False");
    settings_->Override("CurrentPort", std::to_string(SlotForDevice(slots_, options_.serialDevice)));
    if (!options_.lineSettings.empty()) settings_->Override("ComSettings", options_.lineSettings);
    if (!options_.address.empty()) {
      // One address: the connect polls it instead of searching.
      settings_->Override("PollAddress", std::to_string(static_cast<int>(options_.address[0])));
      settings_->Override("PollStatus", "1");
    }
  }

  desk_ = std::make_unique<AmpDesk>(
      AmpDeskHost{port_, slots_, sckTcp_, timer1_, pump_, clock_, dialogs_, *settings_});
  desk_->EndProgram = [this] {
    if (onEnd) onEnd();
  };
  if (!options_.trace.empty()) {
    if (!trace_.Open(options_.trace, error)) return false;
    desk_->comms.Link.trace = [this](char d, std::string_view bytes) { trace_.Write(d, bytes); };
  }

  window_ = std::make_unique<MainWindow>();
  binder_ = std::make_unique<FormBinder>(desk_->frmMain, window_.get());
  dialogs_.SetParentWindow(window_.get());
  RegisterDialogWindows(dialogs_);
  window_->onClose = [this] {
    if (desk_->Unloaded()) return;
    if (desk_->frmMain.QueryUnload) {
      desk_->frmMain.QueryUnload();
    } else {
      desk_->Form_Unload();
    }
  };

  ui::FrmMain& f = desk_->frmMain;
  if (f.Load) f.Load();
  window_->show();

  if (options_.demo || !options_.tcpHost.empty() || !options_.serialDevice.empty()) {
    // As the operator would: the button, once the window is up.
    QTimer::singleShot(0, window_.get(), [this] {
      if (auto* button = window_->findChild<QPushButton*>("btnConnect")) button->click();
    });
  }
  if (!options_.screenshot.empty())
    QTimer::singleShot(options_.screenshotAfterMs, window_.get(), [this] { TakeScreenshot(); });
  return true;
}

void DesktopApp::TakeScreenshot() {
  if (QWidget* modal = QApplication::activeModalWidget())
    std::fprintf(stderr, "ampdesk: a dialog was open when the screenshot was taken: %s\n",
                 modal->windowTitle().toStdString().c_str());
  const QString path = QString::fromStdString(options_.screenshot);
  if (!window_->grab().save(path, "PNG")) {
    std::fprintf(stderr, "ampdesk: cannot save the screenshot to %s\n", options_.screenshot.c_str());
    screenshotFailed_ = true;
  }
  window_->close();
}

int DesktopApp::Exec() {
  const int rc = QApplication::exec();
  return screenshotFailed_ ? 1 : rc;
}

}  // namespace amp
