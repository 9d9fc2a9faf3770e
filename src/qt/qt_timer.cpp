#include "qt/qt_timer.h"

#include <QCoreApplication>
#include <QTimer>
#include <algorithm>

namespace amp {

QtTimer::QtTimer() : timer_(std::make_unique<QTimer>()) {
  QObject::connect(timer_.get(), &QTimer::timeout, timer_.get(), [this] { Tick(); });
}

QtTimer::~QtTimer() {
  *alive_ = false;
  timer_->stop();
  QObject::disconnect(timer_.get(), nullptr, nullptr, nullptr);
  // The handler may destroy this timer while its tick is on the stack; the
  // QTimer is inside its own signal then and must not be deleted directly.
  // It is deleted from the next pass of the loop instead (not deleteLater,
  // which waits for a loop run by exec()).
  if (running_) {
    QTimer* timer = timer_.release();
    if (QCoreApplication* app = QCoreApplication::instance())
      QMetaObject::invokeMethod(
          app, [timer] { delete timer; }, Qt::QueuedConnection);
  }
}

void QtTimer::SetInterval(int ms) {
  interval_ = std::max(0, ms);
  Restart();
}

void QtTimer::SetEnabled(bool on) {
  enabled_ = on;
  Restart();
}

void QtTimer::Fire() {
  if (enabled_) Tick();
}

void QtTimer::Restart() {
  // Setting the interval or enabling starts a fresh period.
  if (enabled_ && interval_ > 0) {
    timer_->start(interval_);
  } else {
    timer_->stop();
  }
}

void QtTimer::Tick() {
  // The handler pumps events while it waits for the amplifier, so the next
  // tick can fall due inside it. Running it nested would interleave two
  // exchanges on one link; that tick is dropped instead. (Qt does not
  // re-activate a QTimer whose timeout is still running either; the flag
  // keeps the rule from resting on that.)
  if (running_ || !handler_) return;
  running_ = true;
  auto alive = alive_;
  handler_();
  if (*alive) running_ = false;
}

}  // namespace amp
