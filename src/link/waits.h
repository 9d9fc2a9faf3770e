// The program's waits. Each handles the host's events while it waits, so the
// panel stays painted and socket replies keep arriving.
#pragma once

#include "platform/event_pump.h"

namespace amp {

// Waits `ms` milliseconds (at least 50) in 20 ms sleeps, handling events
// after each.
void Delay(EventPump& pump, int ms);

// Waits about ms * 2 / 5: the whole number of fifties in `ms` (at least 50)
// times a 20 ms sleep followed by event handling. 200 waits 80 ms.
void PauseMs(EventPump& pump, int ms);

// Waits `seconds`, handling events meanwhile.
void DelaySeconds(EventPump& pump, Clock& clock, double seconds);

}  // namespace amp
