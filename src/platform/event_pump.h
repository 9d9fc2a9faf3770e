// Time and the event loop, as the logic sees them.
#pragma once

#include <cstdint>
#include <functional>

namespace amp {

// Monotonic milliseconds: deadlines never roll over at midnight.
class Clock {
 public:
  virtual ~Clock() = default;
  virtual int64_t NowMs() = 0;
};

class EventPump {
 public:
  virtual ~EventPump() = default;
  // Run pending events once and return (DoEvents).
  virtual void DoEvents() = 0;
  // Let the panel repaint while the logic is busy, without acting on the
  // operator: a click, key or wheel that arrives meanwhile is dropped, never
  // run later on a control the busy step has since enabled.
  virtual void Refresh() = 0;
  // Process events, without spinning, for up to `ms` milliseconds or until an
  // event has been handled, whichever comes first. Loops that wait for a
  // socket reply call this between their checks.
  virtual void WaitForEvents(int ms) = 0;
  // The same wait while an exchange waits for the unit's reply: the
  // operator's clicks and keys are held back until it returns and then run
  // in order, so a handler can never start a second exchange inside this one
  // and nothing the operator did is lost.
  virtual void WaitForReply(int ms) { WaitForEvents(ms); }
  // Sleep without processing events.
  virtual void Sleep(int ms) = 0;
};

// A repeating timer whose tick runs a handler on the one thread. A tick that
// falls due while the previous one still runs is dropped.
class Timer {
 public:
  virtual ~Timer() = default;
  virtual void SetInterval(int ms) = 0;
  virtual int Interval() const = 0;
  virtual void SetEnabled(bool on) = 0;
  virtual bool Enabled() const = 0;
  void SetHandler(std::function<void()> handler) { handler_ = std::move(handler); }

 protected:
  std::function<void()> handler_;
};

}  // namespace amp
