// The Qt event loop and the monotonic clock as the logic sees them.
#pragma once

#include "platform/event_pump.h"

namespace amp {

class QtEventPump final : public EventPump {
 public:
  void DoEvents() override;
  // Runs pending events with the operator's input (mouse buttons, wheel,
  // keys, shortcuts, touch) swallowed on the way. Input posted by a test or
  // queued by the window system is dropped alike; moves still pass, so hover
  // feedback keeps up.
  void Refresh() override;
  // Blocks in the event dispatcher until something happens (socket data, a
  // timer, a posted event) or a wake-up timer of `ms` fires, then handles
  // what arrived and returns.
  void WaitForEvents(int ms) override;
  // WaitForEvents with the operator's input (as Refresh names it) taken out
  // of the way and posted again, in its order, to the same receivers when
  // the wait returns. A box opened meanwhile still takes its answer.
  void WaitForReply(int ms) override;
  void Sleep(int ms) override;
};

class QtClock final : public Clock {
 public:
  int64_t NowMs() override;  // milliseconds of the host's monotonic clock
};

}  // namespace amp
