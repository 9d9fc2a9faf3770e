// The main panel's window, built from ui/frm_main.ui. Its widgets carry the
// control names of the panel model; FormBinder connects the two.
#pragma once

#include <QMainWindow>
#include <functional>
#include <memory>

namespace Ui {
class frmMain;
}

namespace amp {

class MainWindow : public QMainWindow {
 public:
  explicit MainWindow(QWidget* parent = nullptr);
  ~MainWindow() override;

  // Runs when the operator closes the window (the title bar's close button,
  // or close() from code); the window closes after it.
  std::function<void()> onClose;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  std::unique_ptr<Ui::frmMain> ui_;
};

}  // namespace amp
