// A repeating Timer on QTimer. Interval 0 keeps the timer silent while it
// stays enabled, as the classic timer does.
#pragma once

#include <memory>

#include "platform/event_pump.h"

class QTimer;

namespace amp {

class QtTimer final : public Timer {
 public:
  QtTimer();
  ~QtTimer() override;
  QtTimer(const QtTimer&) = delete;
  QtTimer& operator=(const QtTimer&) = delete;

  void SetInterval(int ms) override;
  int Interval() const override { return interval_; }
  void SetEnabled(bool on) override;
  bool Enabled() const override { return enabled_; }
  // One tick now, as when the interval runs out (none while disabled or while
  // the handler is already on the stack).
  void Fire();
  // Whether the handler is on the stack (it pumps events while it waits).
  bool Running() const { return running_; }

 private:
  void Restart();
  void Tick();

  std::unique_ptr<QTimer> timer_;
  int interval_ = 0;
  bool enabled_ = false;
  bool running_ = false;  // the handler is on the stack
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace amp
