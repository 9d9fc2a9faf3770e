#include "qt/qt_dialogs.h"

#include <QDir>
#include <QFileDialog>

#include <QCloseEvent>
#include <QCoreApplication>
#include <QEventLoop>
#include <QInputDialog>
#include <QMessageBox>
#include <QWidget>
#include <algorithm>
#include <vector>

#include "qt/binder.h"

namespace amp {
namespace {

QString Q(const std::string& s) { return QString::fromStdString(s); }

// Closing a form's window is the operator's request to unload the form; the
// window goes away when the form is unloaded, not before.
class CloseToUnload : public QObject {
 public:
  explicit CloseToUnload(ui::Form& form) : form_(form) {}

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Close || !form_.Loaded())
      return QObject::eventFilter(watched, event);
    event->ignore();
    if (form_.QueryUnload) form_.QueryUnload();
    if (form_.Loaded()) form_.Unload();
    return true;
  }

 private:
  ui::Form& form_;
};

}  // namespace

void QtDialogs::RegisterForm(const std::string& formName, FormFactory factory) {
  factories_[formName] = std::move(factory);
}

std::unique_ptr<QWidget> QtDialogs::BuildWindow(const std::string& formName,
                                                QWidget* parent) const {
  auto it = factories_.find(formName);
  return it == factories_.end() ? nullptr : it->second(parent);
}

MsgResult QtDialogs::MsgBox(const std::string& text, MsgButtons buttons, MsgIcon icon,
                            const std::string& title, MsgDefault def) {
  QMessageBox box(parent_);
  box.setWindowTitle(Q(title));
  box.setText(Q(text));
  switch (icon) {
    case MsgIcon::Critical:
      box.setIcon(QMessageBox::Critical);
      break;
    case MsgIcon::Question:
      box.setIcon(QMessageBox::Question);
      break;
    case MsgIcon::Exclamation:
      box.setIcon(QMessageBox::Warning);
      break;
    case MsgIcon::Information:
      box.setIcon(QMessageBox::Information);
      break;
    case MsgIcon::None:
      box.setIcon(QMessageBox::NoIcon);
      break;
  }
  // The buttons in the order MsgDefault counts them; Escape takes the last,
  // which is Cancel or No on every box with a choice.
  std::vector<QMessageBox::StandardButton> order;
  switch (buttons) {
    case MsgButtons::OK:
      order = {QMessageBox::Ok};
      break;
    case MsgButtons::OKCancel:
      order = {QMessageBox::Ok, QMessageBox::Cancel};
      break;
    case MsgButtons::YesNo:
      order = {QMessageBox::Yes, QMessageBox::No};
      break;
    case MsgButtons::YesNoCancel:
      order = {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel};
      break;
    case MsgButtons::RetryCancel:
      order = {QMessageBox::Retry, QMessageBox::Cancel};
      break;
  }
  QMessageBox::StandardButtons set;
  for (QMessageBox::StandardButton b : order) set |= b;
  box.setStandardButtons(set);
  const size_t index = std::min(static_cast<size_t>(def), order.size() - 1);
  box.setDefaultButton(order[index]);
  box.setEscapeButton(order.back());
  const int r = box.exec();
  switch (r) {
    case QMessageBox::Ok:
      return MsgResult::OK;
    case QMessageBox::Yes:
      return MsgResult::Yes;
    case QMessageBox::No:
      return MsgResult::No;
    case QMessageBox::Retry:
      return MsgResult::Retry;
    case QMessageBox::Cancel:
      return MsgResult::Cancel;
    default:
      break;
  }
  // Closed some other way (the application is quitting): the safe answer.
  return SafeAnswer(buttons);
}

std::optional<std::string> QtDialogs::InputBox(const std::string& prompt, const std::string& title,
                                               const std::string& defaultText) {
  QInputDialog dlg(parent_);
  dlg.setInputMode(QInputDialog::TextInput);
  dlg.setWindowTitle(Q(title));
  dlg.setLabelText(Q(prompt));
  dlg.setTextValue(Q(defaultText));
  if (dlg.exec() != QDialog::Accepted) return std::nullopt;
  return dlg.textValue().toStdString();
}

void QtDialogs::ShowModal(ui::Form& form) {
  std::unique_ptr<QWidget> window = BuildWindow(form.Name(), parent_);
  if (!window) {
    MsgBox("The window of " + form.Name() + " is not part of this program.", MsgButtons::OK,
           MsgIcon::Critical, "AmpDesk");
    return;
  }
  window->setWindowFlag(Qt::Dialog, true);
  window->setWindowModality(Qt::ApplicationModal);
  window->setAttribute(Qt::WA_DeleteOnClose, false);
  CloseToUnload closer(form);
  window->installEventFilter(&closer);
  QPointer<QWidget> previous = active_;
  active_ = window.get();
  {
    FormBinder binder(form, window.get());
    form.SetLoaded(true);
    if (form.Load) form.Load();
    if (form.Loaded()) {
      QEventLoop loop;
      const int id = form.AddObserver([&](ui::Control* c) {
        if (!c && !form.Loaded()) loop.quit();
      });
      // A plain widget is not placed as a dialog is: centre it on the panel.
      window->adjustSize();
      if (parent_) {
        const QRect frame = parent_->frameGeometry();
        window->move(frame.center() - QPoint(window->width() / 2, window->height() / 2));
      }
      window->show();
      window->raise();
      window->activateWindow();
      if (modalDriver) {
        // The window is drawn before the driver acts on it.
        QCoreApplication::processEvents();
        modalDriver(form);
      }
      // The application quitting ends every loop; the form is then unloaded
      // here so that nothing waits for it.
      if (form.Loaded()) loop.exec();
      form.RemoveObserver(id);
      if (form.Loaded()) form.Unload();
    }
    window->hide();
  }
  active_ = previous;
  if (previous)
    previous->activateWindow();
  else if (parent_)
    parent_->activateWindow();
}

namespace {

// Where the dialog starts: the proposed name inside the first folder.
QString StartPath(const std::string& fileName, const std::string& initDir) {
  if (fileName.empty()) return QString::fromStdString(initDir);
  if (initDir.empty()) return QString::fromStdString(fileName);
  return QDir(QString::fromStdString(initDir)).filePath(QString::fromStdString(fileName));
}

std::optional<std::string> Chosen(const QString& path) {
  if (path.isEmpty()) return std::nullopt;
  return QDir::toNativeSeparators(path).toStdString();
}

}  // namespace

std::optional<std::string> QtDialogs::ShowOpen(const std::string& fileName,
                                               const std::string& filter,
                                               const std::string& initDir) {
  return Chosen(QFileDialog::getOpenFileName(parent_, QStringLiteral("Open"),
                                             StartPath(fileName, initDir),
                                             QString::fromStdString(filter)));
}

std::optional<std::string> QtDialogs::ShowSave(const std::string& fileName,
                                               const std::string& filter,
                                               const std::string& initDir) {
  return Chosen(QFileDialog::getSaveFileName(parent_, QStringLiteral("Save As"),
                                             StartPath(fileName, initDir),
                                             QString::fromStdString(filter)));
}

}  // namespace amp
