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

namespace {

// A box that an event opens meanwhile (a socket error) runs its own loop and
// must take the operator's answer: input is swallowed only at the level the
// refresh started on.
class InputSwallower : public QObject {
 public:
  InputSwallower() : level_(QThread::currentThread()->loopLevel()) {}

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (QThread::currentThread()->loopLevel() != level_)
      return QObject::eventFilter(watched, event);
    switch (event->type()) {
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonRelease:
      case QEvent::MouseButtonDblClick:
      case QEvent::Wheel:
      case QEvent::KeyPress:
      case QEvent::KeyRelease:
      case QEvent::Shortcut:
      case QEvent::ShortcutOverride:
      case QEvent::ContextMenu:
      case QEvent::TouchBegin:
      case QEvent::TouchUpdate:
      case QEvent::TouchEnd:
      case QEvent::TabletPress:
      case QEvent::TabletRelease:
        return true;
      default:
        return QObject::eventFilter(watched, event);
    }
  }

 private:
  const int level_;
};

}  // namespace

void QtEventPump::Refresh() {
  QCoreApplication* app = QCoreApplication::instance();
  if (!app) return;
  InputSwallower swallow;
  app->installEventFilter(&swallow);
  QCoreApplication::processEvents();
  app->removeEventFilter(&swallow);
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
