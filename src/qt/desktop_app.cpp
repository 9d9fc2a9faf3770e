#include "qt/desktop_app.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPushButton>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <optional>

#include <CLI/CLI.hpp>

#include "basic/numbers.h"
#include "frontend/state_json.h"
#include "qt/data_places.h"
#include "qt/forms.h"
#include "qt/ini_settings_store.h"
#include "qt/qt_com_slots.h"
#include "qt/qt_settings_store.h"

namespace amp {

namespace {

// How long the script waits for the session before it gives up.
constexpr int kScriptConnectWaitMs = 30000;

void AddDesktopTable(CLI::App& app, DesktopOptions& o) {
  frontend::AddUnitOptions(app, o);
  frontend::AddDesktopOptions(app, o);
  frontend::AddFileOptions(app, o);
}

}  // namespace

std::string DesktopUsage() {
  CLI::App app;
  DesktopOptions unused;
  AddDesktopTable(app, unused);
  return "Usage: ampdesk [--demo [PROFILE] | --tcp HOST[:PORT] | --serial DEVICE] [options]\n"
         "\n"
         "The desktop panel that monitors and controls one amplifier over TCP or a\n"
         "serial line. With a unit named it connects at once; without one it starts\n"
         "with the stored settings and waits for Connect.\n" +
         frontend::OptionsHelp(app) +
         "  --help                   show this text\n"
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
         "Examples:\n"
         "  ampdesk --demo twta127\n"
         "  ampdesk --tcp 192.0.2.10:2000\n"
         "  ampdesk --serial /dev/ttyUSB0 --settings 19200,N,8,1 --address B\n"
         "  ampdesk --demo --sim-arg=--local --script run.txt --screenshot s.png\n"
         "\n"
         "Exit codes: 0 done; 1 the program could not start, the screenshot could\n"
         "not be saved, or the script could not run to its end; 2 bad arguments\n"
         "or a bad script.\n";
}

std::string ParseDesktopOptions(const std::vector<std::string>& args, DesktopOptions& o) {
  CLI::App app;
  AddDesktopTable(app, o);
  if (std::string err = frontend::ParseArgs(app, args); !err.empty()) return err;
  if (std::string err = frontend::CheckUnitOptions(o, false); !err.empty()) return err;
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
  settings_ = std::make_unique<frontend::RunSettings>(*storedSettings_);
  // The panel reads its settings when it loads, below; the target is laid
  // over them before that.
  host_.MakeDesk(timer1_, dialogs_, *settings_);
  // The demo's unit search stays on this machine unless told otherwise.
  frontend::Options udpOptions = options_;
  if (options_.demo && udpOptions.udpTarget.empty()) udpOptions.udpTarget = "127.0.0.1";
  host_.desk->network.locateIp.target = frontend::DiscoveryTargetOf(udpOptions);
  // Where files go: the options, else the host-only keys, else the defaults.
  const auto stored = [this](const char* key) {
    return storedSettings_->GetSetting(setting_key::kAppTitle, setting_key::kHostSection, key, "");
  };
  const frontend::DataPlaces places =
      frontend::ChooseDataPlaces(options_, stored(setting_key::kDataDirectory),
                                 stored(setting_key::kCalibrationRoot), DefaultDataDirectory());
  host_.desk->values.gDataDirectory = places.dataDir;
  host_.desk->values.gCalRoot = places.calRoot;
  host_.desk->configFiles.shell = &shell_;
  host_.desk->EndProgram = [this] {
    ReportSettingsSaveFailure();
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

  frontend::RunTarget target = options_.Target(
      options_.serialDevice.empty() ? 0 : SlotForDevice(host_.slots, options_.serialDevice));
  if (!host.empty()) {
    target.tcpHost = host;
    target.tcpPort = tcpPort;
  }
  settings_->LayTarget(target);

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
    if (!host_.desk->comms.session.Connected() || timer1_.Running() ||
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
    frontend::StateView state;
    state.connected = host_.desk->comms.session.Connected();
    state.form = &host_.desk->frmMain;
    state.dialog = dialog;
    std::printf("%s\n", frontend::StateJson(state).c_str());
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
  // A script that ends with a dialog open is showing that dialog.
  QWidget* shown = QApplication::activeModalWidget();
  if (!shown) shown = window_.get();
  const QString path = QString::fromStdString(options_.screenshot);
  if (!shown->grab().save(path, "PNG")) {
    std::fprintf(stderr, "ampdesk: cannot save the screenshot to %s\n",
                 options_.screenshot.c_str());
    screenshotFailed_ = true;
  }
  window_->close();
}

// The settings were saved as the panel unloaded; a store that could not
// take them is the operator's to know, not lost without a word.
void DesktopApp::ReportSettingsSaveFailure() {
  const std::string& error = settings_->SaveError();
  if (error.empty()) return;
  std::fprintf(stderr, "ampdesk: %s\n", error.c_str());
  std::fflush(stderr);
  // A run that closes itself after its screenshot has nobody to answer a
  // box; stderr has told it.
  if (options_.screenshot.empty())
    dialogs_.MsgBox(error, MsgButtons::OK, MsgIcon::Exclamation, AmpDesk::kAppTitle);
}

int DesktopApp::Exec() {
  const int rc = QApplication::exec();
  return screenshotFailed_ || scriptFailed_ ? 1 : rc;
}

}  // namespace amp
