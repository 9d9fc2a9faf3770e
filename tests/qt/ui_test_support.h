// Helpers of the widget tests: a bound main panel, and answering the modal
// boxes a test provokes.
#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>

#include "display/frm_main.h"
#include "qt/binder.h"
#include "qt/main_window.h"
#include "qt_test_support.h"

namespace amp::test {

// The main window bound to a bare panel model.
struct BoundPanel {
  ui::FrmMain f;
  MainWindow w;
  std::unique_ptr<FormBinder> binder = std::make_unique<FormBinder>(f, &w);

  template <typename T>
  T* Widget(const char* objectName) {
    return w.findChild<T*>(QString::fromLatin1(objectName));
  }
};

// Calls `act` once with the first modal window within `ms` that `which`
// accepts (any, when it is empty). The flag it returns tells whether it ran.
inline std::shared_ptr<bool> WhenModalAppears(std::function<void(QWidget*)> act, int ms = 5000,
                                              std::function<bool(QWidget*)> which = {}) {
  auto done = std::make_shared<bool>(false);
  auto clock = std::make_shared<QElapsedTimer>();
  clock->start();
  auto timer = new QTimer;
  timer->setInterval(20);
  QObject::connect(timer, &QTimer::timeout, [timer, act, which, done, clock, ms] {
    QWidget* modal = QApplication::activeModalWidget();
    if (modal && modal->isVisible() && (!which || which(modal))) {
      timer->stop();
      timer->deleteLater();
      *done = true;
      act(modal);
    } else if (clock->elapsed() > ms) {
      timer->stop();
      timer->deleteLater();
    }
  });
  timer->start();
  return done;
}

}  // namespace amp::test
