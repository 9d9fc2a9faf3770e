// FormBinder: the one bridge between a panel-model form and a widget tree.
//
// Widgets are found by objectName: a control's objectName is its name, and an
// element of a control array is "Base_N" (FaultAbit(3) is the widget
// "FaultAbit_3", mnuComPort(0) the action "mnuComPort_0"). Menu entries are
// QActions, or QMenus when they open a submenu.
//
// Model -> widget: every property change the form reports is copied onto the
// control's widget at once. Widget -> model: user actions call the control's
// event hooks (Click, KeyPress, GotFocus, Validate, LostFocus, DblClick,
// UpClick, DownClick, Change). Writes the binder makes to widgets never reach
// the model again: the model alone raises the events its own changes cause.
//
// Conventions a .ui file can use:
// - A container whose dynamic property "rowsByTop" is true holds a status list:
//   its QVBoxLayout keeps the bound labels in the order of their Top row.
// - A QStatusBar's dynamic property "panels" gives its number of panels (1 when
//   absent); the binder adds one label per panel.
// - Colours set in the design stand for the model's default colours (black
//   text of a label, white field of a text box); any other model colour is
//   painted over them. A line edit made read-only in the design stays so.
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "display/form.h"

class QWidget;
class QLabel;

namespace amp {

class FormBinder : public QObject {
 public:
  // Binds every control of `form` that has a widget under `root` and copies
  // the whole model onto the widgets. The binder must not outlive the form;
  // widgets may go away before it.
  FormBinder(ui::Form& form, QWidget* root, QObject* parent = nullptr);
  ~FormBinder() override;
  FormBinder(const FormBinder&) = delete;
  FormBinder& operator=(const FormBinder&) = delete;

  // "FaultAbit_3" for FaultAbit(3), "txtFdBm" for txtFdBm.
  static QString ObjectNameFor(const ui::Control& c);

  // Names of the controls that found no widget (timers never have one).
  std::vector<std::string> Unbound() const;
  // The widget or action bound to the control `name`, or nullptr.
  QObject* Bound(const std::string& name) const;
  // Panel `i` of a bound status bar, for tests and screenshots.
  QLabel* StatusPanel(const std::string& statusBarName, int i) const;

  // Copies every control onto its widget again.
  void SyncAll();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Binding;

  void Bind(ui::Control* c, QObject* target);
  void Connect(Binding& b);
  void Mirror(Binding& b);
  void MirrorCaption();
  void OrderRows(QWidget* container);
  Binding* Find(QObject* o);
  Binding* Find(ui::Control* c);

  bool OnKeyPress(Binding& b, QObject* watched, QEvent* e);
  void PasteThroughFilter(Binding& b);
  bool OnSpinInput(Binding& b, QEvent* e);
  static bool WheelIsStray(const QWidget* w);
  void OnFocusIn(Binding& b, QEvent* e);
  void OnFocusOut(Binding& b, QEvent* e);

  ui::Form& form_;
  QPointer<QWidget> root_;
  int observer_ = 0;
  int updating_ = 0;            // > 0 while the binder writes to widgets
  bool forwardingKey_ = false;  // a key the binder itself re-sends
  // A Validate that cancelled the leaving: focus goes back to `keep`, and the
  // focus events of the round trip are not reported.
  QPointer<QWidget> bounceKeep_;
  std::vector<std::unique_ptr<Binding>> bindings_;
  std::vector<QPointer<QObject>> filtered_;  // objects carrying this event filter
  // Keys are only looked up for objects that carry the filter, so a key of a
  // destroyed object is never matched.
  std::map<QObject*, Binding*> byObject_;
  std::map<ui::Control*, Binding*> byControl_;
};

}  // namespace amp
