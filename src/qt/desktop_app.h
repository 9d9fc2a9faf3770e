// The desktop program: its options, and the run that builds the host's parts,
// the application object and the main window, binds them and shows them.
// ampdesk's main() is a thin shell over this, and tests run it in-process.
#pragma once

#include <QTemporaryDir>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/amp_desk.h"
#include "display/panel_script.h"
#include "frontend/options.h"
#include "frontend/run_settings.h"
#include "qt/binder.h"
#include "qt/desk_host.h"
#include "qt/main_window.h"
#include "qt/qt_dialogs.h"
#include "qt/qt_shell.h"
#include "qt/qt_timer.h"
#include "qt/sim_process.h"

namespace amp {

// ampdesk takes the unit's options both programs share and its own.
using DesktopOptions = frontend::Options;

// "" when `args` (without the program name) are good, else the error.
std::string ParseDesktopOptions(const std::vector<std::string>& args, DesktopOptions& o);
std::string DesktopUsage();

class DesktopApp {
 public:
  explicit DesktopApp(DesktopOptions options);
  ~DesktopApp();
  DesktopApp(const DesktopApp&) = delete;
  DesktopApp& operator=(const DesktopApp&) = delete;

  // Checks the script (--script), starts the simulated unit (--demo), builds
  // and loads the panel, shows the window and, when a unit was named, clicks
  // Connect once the event loop runs; the script runs once the session is
  // up. False with the reason in `error` when it cannot start; then
  // StartFailureCode() is the exit code (2 for a bad script, else 1).
  bool Start(std::string* error);
  int StartFailureCode() const { return startFailureCode_; }
  // Runs the event loop until the program ends; the exit code.
  int Exec();

  // The script's progress, for tests.
  bool ScriptStarted() const { return script_ != nullptr; }
  bool ScriptEnded() const { return scriptEnded_; }
  bool ScriptFailed() const { return scriptFailed_; }

  // What ends the program (after the panel has unloaded); quits the event
  // loop unless replaced.
  std::function<void()> onEnd;

  AmpDesk& desk() { return *host_.desk; }
  MainWindow& window() { return *window_; }
  FormBinder& binder() { return *binder_; }
  QtDialogs& dialogs() { return dialogs_; }
  const SimProcess& sim() const { return sim_; }
  // The settings store the panel reads and writes, for tests.
  SettingsStore& settings();

 private:
  void ReportSettingsSaveFailure();
  bool LoadScript(std::string* error);
  void RunScriptOnceConnected();
  void RunScript();
  void OnScriptEnd(const ui::Form* dialog);
  void WaitMs(int ms);
  void ScheduleScreenshot();
  void TakeScreenshot();

  DesktopOptions options_;
  SimProcess sim_;
  QTemporaryDir demoDir_;
  std::unique_ptr<SettingsStore> storedSettings_;
  std::unique_ptr<frontend::RunSettings> settings_;
  QtTimer timer1_;
  QtDialogs dialogs_;
  QtShell shell_;
  DeskHost host_;
  std::unique_ptr<MainWindow> window_;
  std::unique_ptr<FormBinder> binder_;
  bool screenshotFailed_ = false;
  int startFailureCode_ = 1;
  std::string scriptName_;
  std::vector<ui::ScriptAction> scriptActions_;
  std::unique_ptr<ui::PanelScript> script_;
  bool scriptEnded_ = false;
  bool scriptFailed_ = false;
};

}  // namespace amp
