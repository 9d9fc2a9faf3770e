#include "qt/desktop_app.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <map>
#include <optional>

#include "basic/json.h"
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
    if (IsPortDevice(app, section, key)) return fallback;
    return stored_.GetSetting(app, section, key, fallback);
  }

  void SaveSetting(const std::string& app, const std::string& section, const std::string& key,
                   const std::string& value) override {
    if (IsPanels(app, section) && overrides_.count(key)) return;
    if (IsPortDevice(app, section, key)) return;
    stored_.SaveSetting(app, section, key, value);
  }

 private:
  // The stored port's device goes with the stored port: a port named on the
  // command line stands for its own device.
  bool IsPortDevice(const std::string& app, const std::string& section,
                    const std::string& key) const {
    return app == AmpDesk::kAppTitle && section == AmpDesk::kHostSection &&
           key == AmpDesk::kPortDeviceKey && overrides_.count("CurrentPort");
  }
  static bool IsPanels(const std::string& app, const std::string& section) {
    return app == AmpDesk::kAppTitle && section == AmpDesk::kSettingsSection;
  }
  SettingsStore& stored_;
  std::map<std::string, std::string> overrides_;
};

namespace {

bool StartsWith(const std::string& s, const char* prefix) { return s.rfind(prefix, 0) == 0; }

constexpr const char* kDisconnectCaption = "Disconnect";
// How long the script waits for the session before it gives up.
constexpr int kScriptConnectWaitMs = 30000;

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
         "  --sim-arg ARG          pass ARG to the simulated amplifier of --demo\n"
         "                         (repeatable), e.g. --sim-arg=--local or\n"
         "                         --sim-arg=--status=T@E@,H@@@,@@@@ for a fault\n"
         "  --script FILE          once connected, run the panel actions of FILE\n"
         "                         (- for standard input) as the operator would\n"
         "  --screenshot FILE      save a PNG picture of the window, then exit\n"
         "  --after MS             take the screenshot MS milliseconds after start,\n"
         "                         or with --script after the script ends\n"
         "                         (default 0)\n"
         "  --help                 show this text\n"
         "Options that take a value also take it as --option=VALUE.\n"
         "\n"
         "The unit given by --demo, --tcp or --serial is for this run only: the\n"
         "stored connection settings (Ethernet on or off, IP address and port,\n"
         "serial port, line settings, poll address) stay as they were.\n"
         "\n"
         "Panel script (--script), one action per line; # starts a comment line:\n"
         "  click CONTROL              a button, menu entry or option button; a check\n"
         "                             box toggles\n"
         "  type CONTROL TEXT          each character through the field's key handler\n"
         "  key CONTROL KEY            one key: Enter, Esc, Backspace, or a character\n"
         "  set CONTROL TEXT           replace the field's text without key handling\n"
         "  leave CONTROL              the focus leaves the field (Validate, LostFocus)\n"
         "  focus CONTROL              the focus enters the field (GotFocus)\n"
         "  select CONTROL INDEX|TEXT  choose an item of a combo or list\n"
         "  up CONTROL / down CONTROL  up-down clicks\n"
         "  dblclick CONTROL\n"
         "  poll [N]                   N ticks of the poll timer now (default 1)\n"
         "  wait MS                    let the panel run (and poll) for MS ms\n"
         "  dump                       print the state as JSON on standard output\n"
         "CONTROL is a name of the main panel (chkPS, txtAtnDB, FaultAbit(3)) or\n"
         "frmName.control in a dialog (frmCom.cbBaud). The language and the check\n"
         "are those of ampdesk-cli script: the whole script is checked before\n"
         "anything is connected, and a bad line is reported with its number (exit\n"
         "2). Once the session is up the actions run in order while the window\n"
         "shows their effect; the poll timer keeps running as usual. A dialog an\n"
         "action opens is shown and answered by the lines that follow; a dialog\n"
         "left open at the end stays open for the operator, and so does the panel.\n"
         "Message boxes wait for the operator.\n"
         "\n"
         "Exit codes: 0 done; 1 the program could not start, the screenshot could\n"
         "not be saved, or the script could not run to its end; 2 bad arguments\n"
         "or a bad script.\n";
}

std::string ParseDesktopOptions(const std::vector<std::string>& args, DesktopOptions& o) {
  bool haveAfter = false;
  for (size_t i = 0; i < args.size(); ++i) {
    // --option=VALUE is --option VALUE.
    std::string a = args[i];
    std::optional<std::string> inlineValue;
    if (StartsWith(a, "--")) {
      if (const auto eq = a.find('='); eq != std::string::npos) {
        inlineValue = a.substr(eq + 1);
        a.resize(eq);
      }
    }
    auto value = [&](std::string* out) -> std::string {
      if (inlineValue) {
        if (inlineValue->empty()) return a + " needs a value";
        *out = *inlineValue;
        return {};
      }
      if (i + 1 >= args.size() || args[i + 1].empty()) return a + " needs a value";
      *out = args[++i];
      return {};
    };
    std::string v;
    if (inlineValue && a == "--help") return "--help takes no value";
    if (inlineValue && a == "--demo" && inlineValue->empty()) return "--demo= needs a profile name";
    if (a == "--help" || a == "-h") {
      o.help = true;
    } else if (a == "--demo") {
      o.demo = true;
      if (inlineValue)
        o.demoProfile = *inlineValue;
      else if (i + 1 < args.size() && !StartsWith(args[i + 1], "-"))
        o.demoProfile = args[++i];
    } else if (a == "--sim-arg") {
      if (auto err = value(&v); !err.empty()) return err;
      o.simArgs.push_back(v);
    } else if (a == "--script") {
      if (auto err = value(&o.script); !err.empty()) return err;
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
        return "bad line settings '" + o.lineSettings +
               "' (baud,parity,data,stop such as 9600,N,8,1)";
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
  if (!o.simArgs.empty() && !o.demo) return "--sim-arg goes with --demo";
  if (!o.script.empty() && sources == 0) return "--script needs a unit: --demo, --tcp or --serial";
  if ((!o.lineSettings.empty() || !o.address.empty()) && o.serialDevice.empty())
    return "--settings and --address go with --serial";
  if (!o.serialDevice.empty()) {
    ComSlots probe;
    if (SlotForDevice(probe, o.serialDevice) == 0)
      return "bad serial port '" + o.serialDevice + "' (COM1..COM10 or a device path)";
  }
  return {};
}

DesktopApp::DesktopApp(DesktopOptions options)
    : onEnd([] { QCoreApplication::quit(); }),
      options_(std::move(options)),
      host_(DefaultComSlots()) {}

DesktopApp::~DesktopApp() {
  // The binder and the window go before the panel they show.
  binder_.reset();
  window_.reset();
  host_.desk.reset();
}

SettingsStore& DesktopApp::settings() { return *settings_; }

bool DesktopApp::Start(std::string* error) {
  startFailureCode_ = 1;
  if (!options_.settingsFile.empty()) {
    storedSettings_ = std::make_unique<IniSettingsStore>(options_.settingsFile);
  } else if (options_.demo) {
    if (!demoDir_.isValid()) {
      *error =
          "cannot create a folder for the demo's settings: " + demoDir_.errorString().toStdString();
      return false;
    }
    storedSettings_ =
        std::make_unique<IniSettingsStore>(demoDir_.filePath("AmpDesk.ini").toStdString());
  } else {
    storedSettings_ = std::make_unique<QtSettingsStore>();
  }
  settings_ = std::make_unique<TargetSettings>(*storedSettings_);
  // The panel reads its settings when it loads, below; the target is laid
  // over them before that.
  host_.MakeDesk(timer1_, dialogs_, *settings_);
  host_.desk->EndProgram = [this] {
    if (onEnd) onEnd();
  };

  // The whole script is checked against the forms before anything starts.
  if (!options_.script.empty() && !LoadScript(error)) {
    startFailureCode_ = 2;
    return false;
  }

  std::string host;
  int tcpPort = 0;
  if (options_.demo) {
    std::vector<std::string> args = {"--tcp", "127.0.0.1:0"};
    if (!options_.demoProfile.empty()) args.insert(args.end(), {"--profile", options_.demoProfile});
    args.insert(args.end(), options_.simArgs.begin(), options_.simArgs.end());
    if (!sim_.Start(SimProcess::Locate(QCoreApplication::applicationDirPath().toStdString()), args,
                    error))
      return false;
    host = sim_.TcpHost();
    tcpPort = sim_.TcpPort();
    std::fprintf(stderr, "ampdesk: simulated amplifier on %s:%d\n", host.c_str(), tcpPort);
  } else if (!options_.tcpHost.empty()) {
    host = options_.tcpHost;
    tcpPort = options_.tcpPort;
  }

  if (!host.empty()) {
    settings_->Override("UseEnet", "True");
    settings_->Override("UseIP", host);
    settings_->Override("EthPort", std::to_string(tcpPort));
  } else if (!options_.serialDevice.empty()) {
    settings_->Override("UseEnet", "False");
    settings_->Override("CurrentPort",
                        std::to_string(SlotForDevice(host_.slots, options_.serialDevice)));
    if (!options_.lineSettings.empty()) settings_->Override("ComSettings", options_.lineSettings);
    if (!options_.address.empty()) {
      // One address: the connect polls it instead of searching.
      settings_->Override("PollAddress", std::to_string(static_cast<int>(options_.address[0])));
      settings_->Override("PollStatus", "1");
    }
  }

  if (!options_.trace.empty()) {
    if (!host_.OpenTrace(options_.trace, error)) return false;
  }

  window_ = std::make_unique<MainWindow>();
  binder_ = std::make_unique<FormBinder>(host_.desk->frmMain, window_.get());
  dialogs_.SetParentWindow(window_.get());
  RegisterDialogWindows(dialogs_);
  window_->onClose = [this] {
    if (host_.desk->Unloaded()) return;
    if (host_.desk->frmMain.QueryUnload) {
      host_.desk->frmMain.QueryUnload();
    } else {
      host_.desk->Form_Unload();
    }
  };

  ui::FrmMain& f = host_.desk->frmMain;
  if (f.Load) f.Load();
  window_->show();

  if (options_.demo || !options_.tcpHost.empty() || !options_.serialDevice.empty()) {
    // As the operator would: the button, once the window is up.
    QTimer::singleShot(0, window_.get(), [this] {
      if (auto* button = window_->findChild<QPushButton*>("btnConnect")) button->click();
    });
  }
  if (!options_.script.empty()) {
    RunScriptOnceConnected();
  } else {
    ScheduleScreenshot();
  }
  return true;
}

bool DesktopApp::LoadScript(std::string* error) {
  scriptName_ = ui::ScriptName(options_.script);
  return ui::LoadScript(options_.script, host_.desk->Forms(), scriptActions_, error);
}

void DesktopApp::RunScriptOnceConnected() {
  // Checked from the main loop: the script starts once the session is up,
  // and never inside a poll or under a box (whose loop would then hold it).
  auto* check = new QTimer(window_.get());
  auto clock = std::make_shared<QElapsedTimer>();
  clock->start();
  check->setInterval(50);
  QObject::connect(check, &QTimer::timeout, window_.get(), [this, check, clock] {
    if (host_.desk->Unloaded()) {
      check->stop();
      check->deleteLater();
      return;
    }
    if (clock->elapsed() > kScriptConnectWaitMs) {
      check->stop();
      check->deleteLater();
      std::fprintf(stderr,
                   "ampdesk: %s: no session with the unit after %d s; the script did not run\n",
                   scriptName_.c_str(), kScriptConnectWaitMs / 1000);
      scriptFailed_ = true;
      scriptEnded_ = true;
      ScheduleScreenshot();
      return;
    }
    if (host_.desk->frmMain.btnConnect.Caption() != kDisconnectCaption || timer1_.Running() ||
        QApplication::activeModalWidget())
      return;
    check->stop();
    check->deleteLater();
    RunScript();
  });
  check->start();
}

void DesktopApp::RunScript() {
  ui::PanelScript::Host host;
  host.forms = host_.desk->Forms();
  host.pollTick = [this] { timer1_.Fire(); };
  host.pollRunning = [this] { return timer1_.Enabled(); };
  host.wait = [this](int ms) { WaitMs(ms); };
  host.dump = [this](const ui::Form* dialog) {
    JsonWriter w;
    w.BeginObject();
    w.Key("connected").Bool(host_.desk->frmMain.btnConnect.Caption() == kDisconnectCaption);
    w.Key("form").Raw(host_.desk->frmMain.DumpJson());
    w.Key("dialog");
    if (dialog) {
      w.Raw(dialog->DumpJson());
    } else {
      w.Null();
    }
    w.EndObject();
    std::printf("%s\n", w.str().c_str());
    std::fflush(stdout);
  };
  host.beforeAction = [this](const ui::ScriptAction&) {
    // The operator closed the panel meanwhile: nothing more to act on.
    if (host_.desk->Unloaded() && script_) script_->Stop();
  };
  host.note = [this](const std::string& text) {
    std::fprintf(stderr, "ampdesk: %s: %s\n", scriptName_.c_str(), text.c_str());
  };
  script_ = std::make_unique<ui::PanelScript>(std::move(host), std::move(scriptActions_));
  script_->onEnd = [this](const ui::Form* dialog) { OnScriptEnd(dialog); };
  dialogs_.modalDriver = [this](ui::Form& form) { script_->RunModal(form); };
  script_->Run();
  dialogs_.modalDriver = nullptr;
}

void DesktopApp::OnScriptEnd(const ui::Form* dialog) {
  scriptEnded_ = true;
  if (const auto& failure = script_->Failure()) {
    std::fprintf(stderr, "ampdesk: %s: %s\n", scriptName_.c_str(), failure->Text().c_str());
    scriptFailed_ = true;
  }
  if (dialog)
    std::fprintf(stderr, "ampdesk: %s: the script ended with %s open; it is the operator's now\n",
                 scriptName_.c_str(), dialog->Name().c_str());
  std::fflush(stderr);
  ScheduleScreenshot();
}

void DesktopApp::WaitMs(int ms) {
  QElapsedTimer clock;
  clock.start();
  for (qint64 left = ms; left > 0; left = ms - clock.elapsed()) {
    if (host_.desk->Unloaded()) {
      if (script_) script_->Stop();
      return;
    }
    host_.pump.WaitForEvents(static_cast<int>(std::min<qint64>(left, 100)));
  }
}

void DesktopApp::ScheduleScreenshot() {
  if (options_.screenshot.empty()) return;
  QTimer::singleShot(options_.screenshotAfterMs, window_.get(), [this] { TakeScreenshot(); });
}

void DesktopApp::TakeScreenshot() {
  if (QWidget* modal = QApplication::activeModalWidget())
    std::fprintf(stderr, "ampdesk: a dialog was open when the screenshot was taken: %s\n",
                 modal->windowTitle().toStdString().c_str());
  const QString path = QString::fromStdString(options_.screenshot);
  if (!window_->grab().save(path, "PNG")) {
    std::fprintf(stderr, "ampdesk: cannot save the screenshot to %s\n",
                 options_.screenshot.c_str());
    screenshotFailed_ = true;
  }
  window_->close();
}

int DesktopApp::Exec() {
  const int rc = QApplication::exec();
  return screenshotFailed_ || scriptFailed_ ? 1 : rc;
}

}  // namespace amp
