// Shared helpers for the Qt platform tests.
#pragma once

#include <QElapsedTimer>
#include <functional>

#include "qt/qt_event_pump.h"

namespace amp::test {

// Runs the event loop until `done` holds or `ms` pass; bounded in time and
// in passes.
inline bool PumpUntil(const std::function<bool()>& done, int ms = 5000) {
  QtEventPump pump;
  QElapsedTimer clock;
  clock.start();
  for (int pass = 0; pass < 100000; ++pass) {
    if (done()) return true;
    if (clock.elapsed() > ms) return false;
    pump.WaitForEvents(20);
  }
  return done();
}

}  // namespace amp::test
