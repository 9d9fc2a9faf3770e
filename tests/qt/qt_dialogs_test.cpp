// QtDialogs: message and input boxes, and modal forms run in a nested event
// loop until the form is unloaded.
#include <QAbstractButton>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "qt/qt_dialogs.h"
#include "qt/qt_event_pump.h"
#include "ui_test_support.h"

namespace amp {
namespace {

using test::WhenModalAppears;

struct FrmTest : ui::Form {
  FrmTest() : Form("frmTest") {
    SetCaption("Unit Address");
    cmdOK.SetCaption("OK");
  }
  ui::TextBox txtValue{this, "txtValue"};
  ui::CommandButton cmdOK{this, "cmdOK"};
  ui::Label lblInfo{this, "lblInfo"};
};

std::unique_ptr<QWidget> BuildTestWindow(QWidget* parent) {
  auto w = std::make_unique<QWidget>(parent);
  auto* layout = new QVBoxLayout(w.get());
  auto* info = new QLabel(w.get());
  info->setObjectName("lblInfo");
  auto* value = new QLineEdit(w.get());
  value->setObjectName("txtValue");
  auto* ok = new QPushButton(w.get());
  ok->setObjectName("cmdOK");
  layout->addWidget(info);
  layout->addWidget(value);
  layout->addWidget(ok);
  return w;
}

bool IsMessageBox(QWidget* w) { return qobject_cast<QMessageBox*>(w) != nullptr; }

void Press(QWidget* box, QMessageBox::StandardButton which) {
  auto* mb = qobject_cast<QMessageBox*>(box);
  ASSERT_NE(mb, nullptr);
  ASSERT_NE(mb->button(which), nullptr);
  mb->button(which)->click();
}

TEST(QtDialogsModalForm, RunsLoadShowsTheBoundWindowAndReturnsWhenUnloaded) {
  QtDialogs dialogs;
  dialogs.RegisterForm("frmTest", BuildTestWindow);
  FrmTest form;
  std::vector<std::string> events;
  form.Load = [&] {
    events.push_back(std::string("load, shown=") +
                     (dialogs.ActiveFormWindow()->isVisible() ? "yes" : "no"));
    form.lblInfo.SetCaption("Enter the new address");
  };
  form.cmdOK.Click = [&] {
    events.push_back("ok with " + form.txtValue.Text());
    form.Unload();
  };
  std::string title, info;
  auto acted = WhenModalAppears([&](QWidget* w) {
    title = w->windowTitle().toStdString();
    info = w->findChild<QLabel*>("lblInfo")->text().toStdString();
    QTest::keyClicks(w->findChild<QLineEdit*>("txtValue"), "B");
    w->findChild<QPushButton*>("cmdOK")->click();
  });
  dialogs.ShowModal(form);
  EXPECT_TRUE(*acted);
  EXPECT_EQ(events, (std::vector<std::string>{"load, shown=no", "ok with B"}));
  EXPECT_EQ(title, "Unit Address");
  EXPECT_EQ(info, "Enter the new address");
  EXPECT_FALSE(form.Loaded());
  EXPECT_EQ(dialogs.ActiveFormWindow(), nullptr);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST(QtDialogsModalForm, ClosingTheWindowAsksTheFormToUnloadAndALoadThatUnloadsShowsNothing) {
  QtDialogs dialogs;
  dialogs.RegisterForm("frmTest", BuildTestWindow);
  FrmTest form;
  int queries = 0;
  form.QueryUnload = [&] { ++queries; };
  auto acted = WhenModalAppears([](QWidget* w) { w->close(); });
  dialogs.ShowModal(form);
  EXPECT_TRUE(*acted);
  EXPECT_EQ(queries, 1);
  EXPECT_FALSE(form.Loaded());

  form.Load = [&] { form.Unload(); };
  dialogs.ShowModal(form);  // would wait for ever if it ran its loop
  EXPECT_FALSE(form.Loaded());
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST(QtDialogsModalForm, AFormWithoutAWindowIsReportedNotWaitedFor) {
  QtDialogs dialogs;
  FrmTest form;
  bool loaded = false;
  form.Load = [&] { loaded = true; };
  std::string text;
  auto acted = WhenModalAppears(
      [&](QWidget* w) {
        text = qobject_cast<QMessageBox*>(w)->text().toStdString();
        Press(w, QMessageBox::Ok);
      },
      5000, IsMessageBox);
  dialogs.ShowModal(form);
  EXPECT_TRUE(*acted);
  EXPECT_NE(text.find("frmTest"), std::string::npos);
  EXPECT_FALSE(loaded);
}

TEST(QtDialogsModalForm, ABoxFromAHandlerOfTheFormStacksOverIt) {
  QtDialogs dialogs;
  dialogs.RegisterForm("frmTest", BuildTestWindow);
  FrmTest form;
  MsgResult answer = MsgResult::OK;
  form.cmdOK.Click = [&] {
    answer = dialogs.MsgBox("Value out of range.", MsgButtons::YesNo, MsgIcon::Exclamation,
                            "Parameter Range Error");
    if (answer == MsgResult::Yes) form.Unload();
  };
  auto first = WhenModalAppears([](QWidget* w) { w->findChild<QPushButton*>("cmdOK")->click(); });
  auto box = WhenModalAppears([](QWidget* w) { Press(w, QMessageBox::Yes); }, 5000, IsMessageBox);
  dialogs.ShowModal(form);
  EXPECT_TRUE(*first);
  EXPECT_TRUE(*box);
  EXPECT_EQ(answer, MsgResult::Yes);
  EXPECT_FALSE(form.Loaded());
}

// Enter goes where the operator's would: to the widget with the focus.
void Key(QWidget* box, Qt::Key key) {
  QTest::keyClick(box->focusWidget() ? box->focusWidget() : box, key);
}

TEST(QtDialogsBoxes, BoxesShowTheirTextAndIconEnterTakesTheNamedDefaultEscapeTheSafeAnswer) {
  QtDialogs dialogs;
  struct Case {
    MsgButtons buttons;
    MsgIcon icon;
    MsgDefault def;
    int key;  // a key, or a button to click when not a key
    MsgResult expected;
    QMessageBox::Icon qicon;
  };
  constexpr int kEnter = Qt::Key_Return, kEscape = Qt::Key_Escape;
  const Case cases[] = {
      {MsgButtons::OK, MsgIcon::Critical, MsgDefault::First, kEnter, MsgResult::OK,
       QMessageBox::Critical},
      {MsgButtons::OKCancel, MsgIcon::Exclamation, MsgDefault::Second, kEnter, MsgResult::Cancel,
       QMessageBox::Warning},
      {MsgButtons::YesNo, MsgIcon::Question, MsgDefault::First, kEscape, MsgResult::No,
       QMessageBox::Question},
      {MsgButtons::YesNoCancel, MsgIcon::Information, MsgDefault::First, kEscape, MsgResult::Cancel,
       QMessageBox::Information},
      {MsgButtons::YesNoCancel, MsgIcon::None, MsgDefault::Second, QMessageBox::Cancel,
       MsgResult::Cancel, QMessageBox::NoIcon},
      {MsgButtons::RetryCancel, MsgIcon::None, MsgDefault::First, kEnter, MsgResult::Retry,
       QMessageBox::NoIcon},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(static_cast<int>(&c - cases));
    QString title, text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    auto acted = WhenModalAppears(
        [&](QWidget* w) {
          auto* mb = qobject_cast<QMessageBox*>(w);
          title = mb->windowTitle();
          text = mb->text();
          icon = mb->icon();
          if (c.key == kEnter || c.key == kEscape)
            Key(w, static_cast<Qt::Key>(c.key));
          else
            Press(w, static_cast<QMessageBox::StandardButton>(c.key));
        },
        5000, IsMessageBox);
    const MsgResult r =
        dialogs.MsgBox("Not in Remote Mode", c.buttons, c.icon, "Communication Error", c.def);
    EXPECT_TRUE(*acted);
    EXPECT_EQ(r, c.expected);
    EXPECT_EQ(title, "Communication Error");
    EXPECT_EQ(text, "Not in Remote Mode");
    EXPECT_EQ(icon, c.qicon);
  }
}

TEST(QtDialogsBoxes, InputBoxReturnsTheTextOrNothingWhenCancelled) {
  QtDialogs dialogs;
  QString prompt, shownDefault;
  auto accept = WhenModalAppears([&](QWidget* w) {
    auto* dlg = qobject_cast<QInputDialog*>(w);
    prompt = dlg->labelText();
    shownDefault = dlg->textValue();
    dlg->setTextValue("10.0.0.7");
    dlg->accept();
  });
  EXPECT_EQ(dialogs.InputBox("Enter IP Address", "IP Address", "10.0.0.254"), "10.0.0.7");
  EXPECT_TRUE(*accept);
  EXPECT_EQ(prompt, "Enter IP Address");
  EXPECT_EQ(shownDefault, "10.0.0.254");

  auto cancel = WhenModalAppears([](QWidget* w) { qobject_cast<QDialog*>(w)->reject(); });
  EXPECT_EQ(dialogs.InputBox("Enter IP Address", "IP Address", "10.0.0.254"), std::nullopt);
  EXPECT_TRUE(*cancel);
}

// A click that arrives while an exchange waits for the unit's reply must not
// start a second exchange inside that wait: it is held and runs once the wait
// has returned.
TEST(QtEventPumpInput, AClickDuringAReplyWaitRunsOnceTheWaitIsOver) {
  QPushButton button("Transmit");
  button.resize(80, 30);
  button.show();
  int clicks = 0;
  QObject::connect(&button, &QPushButton::clicked, [&] { ++clicks; });
  const QPoint at = button.rect().center();
  for (auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease})
    QCoreApplication::postEvent(
        &button, new QMouseEvent(type, at, button.mapToGlobal(at), Qt::LeftButton,
                                 type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton,
                                 Qt::NoModifier));
  QtEventPump pump;
  for (int i = 0; i < 5; ++i) pump.WaitForReply(20);
  EXPECT_EQ(clicks, 0);
  pump.DoEvents();
  EXPECT_EQ(clicks, 1);
}

}  // namespace
}  // namespace amp
