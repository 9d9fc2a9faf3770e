// One run of the command line: the host's parts, the application object with
// its settings kept in memory, and the steps every command shares (connect
// as the panel does, poll, let the program run, shut down).
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "app/amp_desk.h"
#include "cli/console_dialogs.h"
#include "frontend/run_settings.h"
#include "platform/com_slots.h"
#include "qt/desk_host.h"
#include "qt/qt_timer.h"

namespace amp::cli {

// The unit as the command line names it.
struct Target {
  std::string tcpHost;  // TCP when not empty
  int tcpPort = 2000;
  std::string device;    // serial device path, or COM1..COM10
  std::string settings;  // "" : search over the settings texts
  std::string address;   // "" : search over the addresses
  std::string search;    // "", "extended" (A-F) or "advanced" (A-Z)
};

// The poll timer on a Qt timer, with a hold: while held its ticks are
// dropped, so a script's actions and the poll never interleave on the line
// unless the script waits. Fire runs one tick now.
class ConsoleTimer final : public Timer {
 public:
  ConsoleTimer();
  void SetInterval(int ms) override { inner_.SetInterval(ms); }
  int Interval() const override { return inner_.Interval(); }
  void SetEnabled(bool on) override { inner_.SetEnabled(on); }
  bool Enabled() const override { return inner_.Enabled(); }

  void Hold(bool held) { held_ = held; }
  void Fire();
  // Told after each tick, from the timer or from Fire.
  std::function<void()> afterTick;

 private:
  QtTimer inner_;
  bool held_ = true;
  bool firing_ = false;
};

// Settings for one run only: the command line neither reads nor changes
// what the desktop program has stored.
class MemorySettings final : public SettingsStore {
 public:
  std::string GetSetting(const std::string& app, const std::string& section, const std::string& key,
                         const std::string& fallback) override;
  void SaveSetting(const std::string& app, const std::string& section, const std::string& key,
                   const std::string& value) override;
  void Set(const std::string& key, const std::string& value);

 private:
  std::map<std::string, std::string> values_;
};

class CliSession {
 public:
  CliSession(ConsoleDialogs& dialogs, ComSlots slots);
  ~CliSession();
  CliSession(const CliSession&) = delete;
  CliSession& operator=(const CliSession&) = delete;

  bool OpenTrace(const std::string& path, std::string* error);
  // Loads the panel with the target's settings and connects as the panel
  // does (button, search menus, single address). True when a session stands.
  bool Connect(const Target& target, const std::string& dataDirectory, bool watts);
  // Loads the panel without connecting, as the program stands before the
  // operator presses Connect.
  void LoadPanel(const std::string& dataDirectory, bool watts);
  // Lets a TCP connect started by the panel settle (its first read runs
  // from the socket's connect event).
  void WaitWhileConnecting(int ms);
  bool Connected() const;
  // Waits for a connect that the panel started (a reconnect) to settle.
  bool AwaitSession();
  // The session ended without the operator asking for it.
  bool Lost() const { return lost_; }
  // The next end of the session is the operator's own (Disconnect).
  void ExpectDisconnect() { expectDisconnect_ = true; }

  // One tick of the poll timer now, when it runs; and whether the last
  // tick's poll was good.
  void PollNow();
  bool PollRunning() const { return timer_.Enabled(); }
  bool LastPollOk() const;
  // Lets the program run, polling, for `ms` or until `stop` says so.
  void RunFor(int ms, const std::function<bool()>& stop = {});
  // Shuts the panel down as the program's exit does.
  void Close();

  AmpDesk& desk() { return *host_.desk; }
  ConsoleTimer& timer() { return timer_; }
  ComSlots& slots() { return host_.slots; }

 private:
  bool ConnectTcp();
  bool ConnectSerial(const Target& target);
  bool SearchThenConnect(const Target& target);

  ConsoleDialogs& dialogs_;
  ConsoleTimer timer_;
  MemorySettings settings_;
  frontend::RunSettings runSettings_{settings_};
  DeskHost host_;
  int observer_ = 0;
  bool wasConnected_ = false;
  bool lost_ = false;
  bool expectDisconnect_ = false;
};

// Ctrl-C, SIGTERM or a closed terminal (see StopSignals) ends a run at the
// next safe point; a second one ends the program at once.
bool Interrupted();

}  // namespace amp::cli
