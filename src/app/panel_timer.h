// The poll timer as the link layer drives it, kept in step with the panel's
// Timer1 control: every change made by the logic (here or in Comms) goes
// through the control, so front ends see it, and on to the host's timer,
// which stays the truth about whether the timer runs.
#pragma once

#include "display/controls.h"
#include "platform/event_pump.h"

namespace amp {

class PanelTimer final : public Timer {
 public:
  PanelTimer(Timer& host, ui::TimerControl& control) : host_(host), control_(control) {
    control_.Attach(
        [this](bool enabled, int ms) {
          // Only real changes reach the host: restarting a running timer
          // would push its next tick back.
          if (host_.Interval() != ms) host_.SetInterval(ms);
          if (host_.Enabled() != enabled) host_.SetEnabled(enabled);
        },
        [this] { return host_.Enabled(); });
    host_.SetHandler([this] {
      if (handler_) handler_();
    });
  }
  ~PanelTimer() override {
    host_.SetHandler(nullptr);
    control_.Attach(nullptr, nullptr);
  }
  PanelTimer(const PanelTimer&) = delete;
  PanelTimer& operator=(const PanelTimer&) = delete;

  void SetInterval(int ms) override { control_.SetInterval(ms); }
  int Interval() const override { return host_.Interval(); }
  void SetEnabled(bool on) override { control_.SetTimerEnabled(on); }
  bool Enabled() const override { return host_.Enabled(); }

 private:
  Timer& host_;
  ui::TimerControl& control_;
};

}  // namespace amp
