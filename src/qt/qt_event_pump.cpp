#include "qt/qt_event_pump.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QPointer>
#include <QThread>
#include <QTimer>

#include <memory>
#include <utility>
#include <vector>

namespace amp {

void QtEventPump::DoEvents() {
  if (QCoreApplication::instance()) QCoreApplication::processEvents();
}

namespace {

bool IsOperatorInput(QEvent::Type type) {
  switch (type) {
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
      return false;
  }
}

// Takes the operator's input out of the way while the logic is busy: drops
// it (a refresh) or keeps it to post again once the wait is over (a reply
// wait). A box that an event opens meanwhile runs its own loop and must take
// the operator's answer, so input is caught only at the level the wait
// started on.
class InputCatcher : public QObject {
 public:
  explicit InputCatcher(bool keep) : keep_(keep), level_(QThread::currentThread()->loopLevel()) {
    QCoreApplication::instance()->installEventFilter(this);
  }
  ~InputCatcher() override {
    QCoreApplication::instance()->removeEventFilter(this);
    for (auto& [receiver, event] : held_)
      if (receiver) QCoreApplication::postEvent(receiver, event.release());
  }
  InputCatcher(const InputCatcher&) = delete;
  InputCatcher& operator=(const InputCatcher&) = delete;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (QThread::currentThread()->loopLevel() != level_ || !IsOperatorInput(event->type()))
      return QObject::eventFilter(watched, event);
    if (keep_) held_.emplace_back(watched, std::unique_ptr<QEvent>(event->clone()));
    return true;
  }

 private:
  const bool keep_;
  const int level_;
  std::vector<std::pair<QPointer<QObject>, std::unique_ptr<QEvent>>> held_;
};

}  // namespace

void QtEventPump::Refresh() {
  if (!QCoreApplication::instance()) return;
  InputCatcher drop(false);
  QCoreApplication::processEvents();
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

void QtEventPump::WaitForReply(int ms) {
  if (!QCoreApplication::instance()) {
    WaitForEvents(ms);
    return;
  }
  InputCatcher hold(true);
  WaitForEvents(ms);
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
