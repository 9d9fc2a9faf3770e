#include "link/waits.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace amp {

void Delay(EventPump& pump, int ms) {
  ms = std::max(ms, 50);
  for (int turn = 0; turn < ms / 20; ++turn) {
    pump.Sleep(20);
    pump.DoEvents();
  }
}

void PauseMs(EventPump& pump, int ms) {
  const int turns = std::max(ms, 50) / 50;
  for (int i = 0; i < turns; ++i) {
    pump.Sleep(20);
    pump.DoEvents();
  }
}

void DelaySeconds(EventPump& pump, Clock& clock, double seconds) {
  const int64_t deadline = clock.NowMs() + static_cast<int64_t>(std::llround(seconds * 1000.0));
  // Each wait returns after an event or its time; the clock bounds the loop.
  for (int64_t left = deadline - clock.NowMs(); left > 0; left = deadline - clock.NowMs())
    pump.WaitForEvents(static_cast<int>(std::min<int64_t>(left, 100)));
}

}  // namespace amp
