#include "qt/main_window.h"

#include <QCloseEvent>

#include "ui_frm_main.h"

namespace amp {

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent), ui_(std::make_unique<Ui::frmMain>()) {
  ui_->setupUi(this);
  // The status lists are display panels: the field colour of the desktop's
  // palette behind them, so they read as one surface in light and dark themes.
  for (QWidget* w : findChildren<QWidget*>()) {
    if (!w->property("displayPanel").toBool()) continue;
    w->setAutoFillBackground(true);
    w->setBackgroundRole(QPalette::Base);
  }
}

MainWindow::~MainWindow() = default;

void MainWindow::closeEvent(QCloseEvent* event) {
  if (onClose) {
    // Once only: what onClose runs may close the window again.
    auto run = std::move(onClose);
    onClose = nullptr;
    run();
  }
  event->accept();
}

}  // namespace amp
