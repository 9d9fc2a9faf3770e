#include "qt/qt_event_pump.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QThread>
#include <QTimer>

namespace amp {

void QtEventPump::DoEvents() {
  if (QCoreApplication::instance()) QCoreApplication::processEvents();
}

void QtEventPump::WaitForEvents(int ms) {
  if (ms <= 0) {
    DoEvents();
    return;
  }
  if (!QCoreApplication::instance()) {
    Sleep(ms);
    return;
  }
  // The timer only wakes the dispatcher; it is destroyed (and so stopped)
  // on return, whatever ended the wait.
  QTimer wake;
  wake.setSingleShot(true);
  wake.setTimerType(Qt::PreciseTimer);
  wake.start(ms);
  QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void QtEventPump::Sleep(int ms) {
  if (ms > 0) QThread::msleep(static_cast<unsigned long>(ms));
}

int64_t QtClock::NowMs() {
  QElapsedTimer timer;
  timer.start();
  return timer.msecsSinceReference();
}

}  // namespace amp
