// A clean stop on SIGINT (Ctrl-C), SIGTERM (a service manager, kill) and
// SIGHUP (the terminal closed): the signal is handed to the event loop, which
// runs `onStop` there, where anything may be done; the program then returns
// from main and its destructors stop the simulated unit it started. A second
// signal ends the program at once, for when the loop is stuck in a wait.
// A program without a running event loop (the command line) asks Requested()
// at its safe points instead.
#pragma once

#include <functional>
#include <memory>

class QSocketNotifier;

namespace amp {

class StopSignals {
 public:
  // One at a time; call once the application object exists.
  explicit StopSignals(std::function<void(int signal)> onStop);
  ~StopSignals();  // the signals' default actions come back
  // A stop signal has arrived since construction.
  static bool Requested();
  StopSignals(const StopSignals&) = delete;
  StopSignals& operator=(const StopSignals&) = delete;

 private:
  std::function<void(int)> onStop_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace amp
