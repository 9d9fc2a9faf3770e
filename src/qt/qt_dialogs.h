// Dialogs on Qt Widgets: message boxes, input boxes and modal forms.
//
// A modal form is shown from the widget tree its factory builds (a .ui
// file's class), bound to the form's model by FormBinder. The call runs the
// form's Load, shows the window and runs a nested event loop until something
// unloads the form; closing the window asks the form to unload
// (QueryUnload, then Unload).
#pragma once

#include <QPointer>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "display/form.h"
#include "platform/dialogs.h"

class QWidget;

namespace amp {

class QtDialogs : public Dialogs {
 public:
  // Builds the window of one form; `parent` is the main window (or null).
  using FormFactory = std::function<std::unique_ptr<QWidget>(QWidget* parent)>;

  // Boxes and forms stand over this window.
  void SetParentWindow(QWidget* w) { parent_ = w; }
  QWidget* ParentWindow() const { return parent_; }
  // The window of the form named `formName` ("frmAbout").
  void RegisterForm(const std::string& formName, FormFactory factory);
  // A new window of that form, or null when none is registered.
  std::unique_ptr<QWidget> BuildWindow(const std::string& formName, QWidget* parent) const;

  MsgResult MsgBox(const std::string& text, MsgButtons buttons, MsgIcon icon,
                   const std::string& title, MsgDefault def = MsgDefault::First) override;
  std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                      const std::string& defaultText) override;
  // Returns when the form is unloaded (at once when its Load unloads it, or
  // when no window is registered for it: then a box says so).
  void ShowModal(ui::Form& form) override;
  std::optional<std::string> ShowOpen(const std::string& fileName, const std::string& filter,
                                      const std::string& initDir) override;
  std::optional<std::string> ShowSave(const std::string& fileName, const std::string& filter,
                                      const std::string& initDir) override;

  // When set, runs once the window of a modal form is up (a panel script
  // answering the dialog); the operator has the window when it returns with
  // the form still loaded.
  std::function<void(ui::Form& form)> modalDriver;

  // The window of the modal form on top, or null; for tests.
  QWidget* ActiveFormWindow() const { return active_; }

 private:
  QPointer<QWidget> parent_;
  QPointer<QWidget> active_;
  std::map<std::string, FormFactory> factories_;
};

}  // namespace amp
