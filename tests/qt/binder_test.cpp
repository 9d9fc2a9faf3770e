// FormBinder against the main window and a bare panel model: the .ui file
// covers the model, model changes show in the widgets, operator actions reach
// the model's hooks, and the binder's own widget writes never come back.
#include <QAction>
#include <QBoxLayout>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QStatusBar>
#include <QStyle>
#include <QStyleOptionSpinBox>
#include <QTest>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "display/frm_about.h"
#include "display/frm_cmd_line.h"
#include "display/frm_com.h"
#include "display/frm_lcbuc_setup.h"
#include "display/frm_limits.h"
#include "display/frm_set_sub_band.h"
#include "qt/forms.h"
#include "qt/qt_dialogs.h"
#include "ui_test_support.h"

namespace amp {
namespace {

using test::BoundPanel;
using test::PumpUntil;

QString Q(const std::string& s) { return QString::fromStdString(s); }

// Brings the window up and active so that focus and key events flow.
void ShowActive(QWidget& w) {
  w.show();
  w.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&w, 3000));
}

// The labels of a status list from top to bottom, as the layout holds them.
std::vector<std::string> ShownRows(QWidget* box) {
  std::vector<std::string> names;
  auto* layout = box->layout();
  for (int i = 0; i < layout->count(); ++i) {
    auto* l = qobject_cast<QLabel*>(layout->itemAt(i)->widget());
    if (l && !l->isHidden()) names.push_back(l->objectName().toStdString());
  }
  return names;
}

QPoint SpinArrow(QSpinBox* sb, QStyle::SubControl which) {
  QStyleOptionSpinBox opt;
  opt.initFrom(sb);
  opt.rect = sb->rect();
  opt.frame = sb->hasFrame();
  opt.subControls = QStyle::SC_All;
  opt.buttonSymbols = sb->buttonSymbols();
  opt.stepEnabled = QAbstractSpinBox::StepUpEnabled | QAbstractSpinBox::StepDownEnabled;
  return sb->style()->subControlRect(QStyle::CC_SpinBox, &opt, which, sb).center();
}

TEST(FormBinderMainWindow, EveryControlOfThePanelHasItsWidget) {
  BoundPanel p;
  EXPECT_EQ(p.binder->Unbound(), std::vector<std::string>{});
  // Arrays use Base_N; menus with entries are menus, the rest actions.
  EXPECT_EQ(p.binder->Bound("FaultAbit(3)"), p.Widget<QLabel>("FaultAbit_3"));
  EXPECT_EQ(p.binder->Bound("mnuComPort(9)"), p.Widget<QAction>("mnuComPort_9"));
  EXPECT_NE(p.Widget<QMenu>("mnuFaultLog"), nullptr);
  // Frames of the model are the group boxes that hold their controls.
  EXPECT_TRUE(p.Widget<QGroupBox>("Frame27")->isAncestorOf(p.Widget<QComboBox>("cmbRfBand")));
}

TEST(FormBinderDialogWindows, EveryControlOfEachDialogHasItsWidget) {
  QtDialogs dialogs;
  RegisterDialogWindows(dialogs);
  ui::FrmCom com;
  ui::FrmAbout about;
  ui::FrmSetSubBand subBand;
  ui::FrmLcBucSetup buc;
  ui::FrmPwrLimit pwrLimit;
  ui::FrmTempLimits tempLimits;
  ui::FrmPowerSave powerSave;
  ui::FrmGainBal gainBal;
  ui::FrmStartup startup;
  ui::FrmCmdLine cmdLine;
  for (ui::Form* form :
       std::initializer_list<ui::Form*>{&com, &about, &subBand, &buc, &pwrLimit, &tempLimits,
                                        &powerSave, &gainBal, &startup, &cmdLine}) {
    SCOPED_TRACE(form->Name());
    std::unique_ptr<QWidget> w = dialogs.BuildWindow(form->Name(), nullptr);
    ASSERT_NE(w, nullptr);
    FormBinder binder(*form, w.get());
    EXPECT_EQ(binder.Unbound(), std::vector<std::string>{});
    EXPECT_EQ(w->windowTitle(), Q(form->Caption()));
  }
  EXPECT_EQ(dialogs.BuildWindow("frmNoSuchDialog", nullptr), nullptr);
}

// A paste is keys through the field's filter: "12a" plus a line end gives
// "12" and no Enter; in the console's editable combo Enter reaches the logic.
TEST(FormBinderDialogWindows, PastedTextAndTheConsoleComboGoThroughTheKeyFilter) {
  QtDialogs dialogs;
  RegisterDialogWindows(dialogs);
  ui::FrmCmdLine console;
  std::vector<int> keys;
  console.cmbCmd.KeyPress = [&keys](int& k) {
    keys.push_back(k);
    if (k == 'a' || k == 13) k = 0;
  };
  std::unique_ptr<QWidget> w = dialogs.BuildWindow("frmCmdLine", nullptr);
  FormBinder binder(console, w.get());
  w->show();
  auto* combo = w->findChild<QComboBox*>("cmbCmd");
  combo->setFocus();
  QGuiApplication::clipboard()->setText("12a\n");
  QTest::keyClick(combo, Qt::Key_Insert, Qt::ShiftModifier);
  QTest::keyClick(combo, Qt::Key_Return);
  EXPECT_EQ(console.cmbCmd.Text(), "12");
  EXPECT_EQ(keys, (std::vector<int>{'1', '2', 'a', 13}));
  EXPECT_EQ(combo->count(), 0) << "the combo adds nothing itself";
}

TEST(FormBinderDialogWindows, OptionButtonsFollowTheirModelGroupsNotTheirParents) {
  QtDialogs dialogs;
  RegisterDialogWindows(dialogs);
  ui::FrmCom com;
  std::unique_ptr<QWidget> w = dialogs.BuildWindow("frmCom", nullptr);
  FormBinder binder(com, w.get());
  std::vector<std::string> clicks;
  for (int i = 0; i < 3; ++i)
    com.optParity[i].Click = [&clicks, i] { clicks.push_back("parity " + std::to_string(i)); };
  com.optParity[0].SetValue(true);
  com.optDataBits[1].SetValue(true);
  clicks.clear();
  w->show();
  auto* odd = w->findChild<QRadioButton*>("optParity_2");
  QTest::mouseClick(odd, Qt::LeftButton);
  QTest::mouseClick(odd, Qt::LeftButton);  // already set: stays set, no second Click
  EXPECT_EQ(clicks, (std::vector<std::string>{"parity 2"}));
  EXPECT_TRUE(com.optParity[2].Value());
  EXPECT_FALSE(com.optParity[0].Value());
  EXPECT_FALSE(w->findChild<QRadioButton*>("optParity_0")->isChecked());
  EXPECT_TRUE(odd->isChecked());
  EXPECT_TRUE(w->findChild<QRadioButton*>("optDataBits_1")->isChecked())
      << "another group is left alone";
}

// Texts, captions, values, list positions and visibility are compared for
// every control after a real session (ampdesk_window_test); here, what that
// comparison does not see.
TEST(FormBinderModelToWidget, PropertiesOfEachKindOfControlFollowTheModel) {
  BoundPanel p;
  ui::FrmMain& f = p.f;

  f.txtAtnDB.SetLocked(true);
  f.txtAtnDB.SetBackColor(ui::RGB(255, 255, 0));
  EXPECT_TRUE(p.Widget<QLineEdit>("txtAtnDB")->isReadOnly());
  EXPECT_EQ(p.Widget<QLineEdit>("txtAtnDB")->palette().color(QPalette::Active, QPalette::Base),
            QColor(255, 255, 0));
  f.txtAtnDB.SetLocked(false);
  EXPECT_FALSE(p.Widget<QLineEdit>("txtAtnDB")->isReadOnly());
  // A readout that is read-only by design stays so whatever Locked says.
  EXPECT_TRUE(p.Widget<QLineEdit>("txtFdBm")->isReadOnly());

  f.Label31.SetForeColor(ui::QBColor(2));
  auto* state = p.Widget<QLabel>("Label31");
  EXPECT_EQ(state->palette().color(QPalette::Active, state->foregroundRole()), QColor(0, 128, 0))
      << "the colour the label is drawn with, on whatever background it sits";

  f.chkRFI.SetValue(2);
  EXPECT_EQ(p.Widget<QCheckBox>("chkRFI")->checkState(), Qt::PartiallyChecked);

  f.fraAtten.SetEnabled(false);
  EXPECT_FALSE(p.Widget<QLineEdit>("txtAtnDB")->isEnabled());  // inside the disabled frame
  f.fraAtten.SetEnabled(true);
  f.txtAtnDB.SetEnabled(false);
  f.fraAtten.SetEnabled(false);
  f.fraAtten.SetEnabled(true);
  EXPECT_FALSE(p.Widget<QLineEdit>("txtAtnDB")->isEnabled())
      << "the field's own setting outlives its frame's";

  // An unchecked entry shows no check box at all.
  f.mnuUseEnet.SetChecked(true);
  f.mnuUseEnet.SetChecked(false);
  EXPECT_FALSE(p.Widget<QAction>("mnuUseEnet")->isCheckable());

  f.sbStatusBar.SetPanelText(0, "Searching: A, 9600,N,8,1");
  ASSERT_NE(p.binder->StatusPanel("sbStatusBar", 0), nullptr);
  EXPECT_EQ(p.binder->StatusPanel("sbStatusBar", 0)->text(), "Searching: A, 9600,N,8,1");
  EXPECT_EQ(p.binder->StatusPanel("sbStatusBar", 2), nullptr);

  f.UpDown3.SetRange(0, 4096);
  EXPECT_EQ(p.Widget<QSpinBox>("UpDown3")->maximum(), 4096);
}

TEST(FormBinderModelToWidget, StatusListsStackTheirShownLabelsByRow) {
  BoundPanel p;
  ui::FrmMain& f = p.f;
  for (int w = 0; w < 4; ++w)
    for (int i = 0; i < 6; ++i) f.FaultWord(w)[i].SetVisible(false);
  f.NoFaults.SetVisible(false);

  f.FaultBbit[1].SetTop(0);
  f.FaultBbit[1].SetVisible(true);
  f.FaultAbit[3].SetTop(1);
  f.FaultAbit[3].SetVisible(true);
  f.FaultDbit[0].SetTop(2);
  f.FaultDbit[0].SetVisible(true);
  QWidget* box = p.Widget<QLabel>("FaultAbit_0")->parentWidget();
  ASSERT_TRUE(box->property("rowsByTop").toBool());
  EXPECT_TRUE(p.Widget<QGroupBox>("fraFaults")->isAncestorOf(box));
  EXPECT_EQ(ShownRows(box),
            (std::vector<std::string>{"FaultBbit_1", "FaultAbit_3", "FaultDbit_0"}));

  // The next poll moves a label up: the order follows.
  f.FaultBbit[1].SetVisible(false);
  f.FaultDbit[0].SetTop(0);
  EXPECT_EQ(ShownRows(box), (std::vector<std::string>{"FaultDbit_0", "FaultAbit_3"}));
  // Two labels on one row (a label the last poll left shown) both stay readable.
  f.FaultAbit[3].SetTop(0);
  EXPECT_EQ(ShownRows(box), (std::vector<std::string>{"FaultAbit_3", "FaultDbit_0"}));
  // The stretch that keeps the rows at the top stays below them.
  auto* layout = box->layout();
  EXPECT_NE(layout->itemAt(layout->count() - 1)->spacerItem(), nullptr);
}

TEST(FormBinderWidgetToModel, ClicksReachTheHooksAndSetValuesFirst) {
  BoundPanel p;
  ui::FrmMain& f = p.f;
  std::vector<std::string> events;
  f.btnConnect.Click = [&] { events.push_back("connect"); };
  f.chkPS.Click = [&] { events.push_back("chkPS=" + std::to_string(f.chkPS.Value())); };
  f.cmbWgSw1.Click = [&] { events.push_back("sw1=" + std::to_string(f.cmbWgSw1.ListIndex())); };
  f.mnuUseEnet.Click = [&] {
    events.push_back("useEnet");
    f.mnuUseEnet.SetChecked(!f.mnuUseEnet.Checked());
  };
  f.mnuWatts.Click = [&] { events.push_back("watts"); };  // leaves its mark alone
  f.lblSBandFrq.DblClick = [&] { events.push_back("subband dblclick"); };
  f.lblSBandFrq.Click = [&] { events.push_back("subband click"); };
  ShowActive(p.w);

  f.chkPS.SetValue(2);
  events.clear();
  QTest::mouseClick(p.Widget<QPushButton>("btnConnect"), Qt::LeftButton);
  QTest::mouseClick(p.Widget<QCheckBox>("chkPS"), Qt::LeftButton);  // grayed: checks it
  QTest::mouseClick(p.Widget<QCheckBox>("chkPS"), Qt::LeftButton);  // and unchecks it
  auto* sw1 = p.Widget<QComboBox>("cmbWgSw1");
  sw1->activated(1);  // what the list emits when the operator picks an entry
  sw1->activated(1);  // the same entry again changes nothing
  p.Widget<QAction>("mnuUseEnet")->trigger();
  p.Widget<QAction>("mnuWatts")->trigger();
  f.lblSBandFrq.SetCaption("14000 - 14250");
  // QTest's double click is the double-click event alone; the first click
  // of a real double click comes before it.
  QTest::mouseClick(p.Widget<QLabel>("lblSBandFrq"), Qt::LeftButton);
  QTest::mouseDClick(p.Widget<QLabel>("lblSBandFrq"), Qt::LeftButton);

  EXPECT_EQ(events, (std::vector<std::string>{"connect", "chkPS=1", "chkPS=0", "sw1=1", "useEnet",
                                              "watts", "subband click", "subband dblclick"}));
  EXPECT_EQ(p.Widget<QCheckBox>("chkPS")->checkState(), Qt::Unchecked);
  EXPECT_EQ(f.cmbWgSw1.ListIndex(), 1);
  EXPECT_TRUE(p.Widget<QAction>("mnuUseEnet")->isChecked());
  // The action toggled itself when triggered; the model, which did not
  // check it, wins.
  EXPECT_FALSE(p.Widget<QAction>("mnuWatts")->isChecked());
}

TEST(FormBinderWidgetToModel, AHandlerThatRefusesAClickPutsTheBoxBack) {
  BoundPanel p;
  // As a handler does when the unit is not in remote mode.
  bool inHandler = false;
  p.f.chkRFI.Click = [&] {
    if (inHandler) return;
    inHandler = true;
    p.f.chkRFI.SetValue(0);
    inHandler = false;
  };
  ShowActive(p.w);
  QTest::mouseClick(p.Widget<QCheckBox>("chkRFI"), Qt::LeftButton);
  EXPECT_EQ(p.f.chkRFI.Value(), 0);
  EXPECT_FALSE(p.Widget<QCheckBox>("chkRFI")->isChecked());
}

TEST(FormBinderWidgetToModel, KeysPassThroughKeyPressAndAreDroppedOrReplaced) {
  BoundPanel p;
  ui::FrmMain& f = p.f;
  std::vector<int> seen;
  // A numeric field: digits, "." and Backspace pass; Enter is handled; the rest is dropped.
  f.txtAtnDB.KeyPress = [&](int& k) {
    seen.push_back(k);
    if (k == 13) {
      f.txtFdBm.SetText("sent " + f.txtAtnDB.Text());
      k = 0;
    } else if (k != 8 && k != '.' && (k < '0' || k > '9')) {
      k = 0;
    }
  };
  // An address field raises small letters to capitals.
  f.txtAdr.KeyPress = [&](int& k) {
    if (k >= 'a' && k <= 'z') k -= 32;
  };
  int changes = 0;
  f.txtAtnDB.Change = [&] { ++changes; };
  ShowActive(p.w);
  auto* atn = p.Widget<QLineEdit>("txtAtnDB");
  atn->setFocus();

  QTest::keyClicks(atn, "1x2.5");
  EXPECT_EQ(atn->text(), "12.5");
  EXPECT_EQ(f.txtAtnDB.Text(), "12.5");
  EXPECT_EQ(changes, 4);
  QTest::keyClick(atn, Qt::Key_Backspace);
  QTest::keyClick(atn, Qt::Key_Return);
  EXPECT_EQ(f.txtAtnDB.Text(), "12.");
  EXPECT_EQ(f.txtFdBm.Text(), "sent 12.");
  EXPECT_EQ(seen, (std::vector<int>{'1', 'x', '2', '.', '5', 8, 13}));
  // Keys without a character (arrows) are not KeyPress events.
  QTest::keyClick(atn, Qt::Key_Left);
  EXPECT_EQ(seen.size(), 7u);

  auto* adr = p.Widget<QLineEdit>("txtAdr");
  adr->setFocus();
  QTest::keyClicks(adr, "b");
  EXPECT_EQ(adr->text(), "B");
  EXPECT_EQ(f.txtAdr.Text(), "B");
}

TEST(FormBinderWidgetToModel, FocusMovesReportLostFocusBeforeGotFocusAndValidateCanHoldIt) {
  BoundPanel p;
  ui::FrmMain& f = p.f;
  std::vector<std::string> events;
  bool refuse = false;
  f.txtDateTime.GotFocus = [&] { events.push_back("clock got"); };
  f.txtDateTime.Validate = [&](bool& cancel) {
    events.push_back("clock validate");
    cancel = refuse;
  };
  f.txtDateTime.LostFocus = [&] { events.push_back("clock lost"); };
  f.txtSN.GotFocus = [&] { events.push_back("sn got"); };
  f.txtSN.LostFocus = [&] { events.push_back("sn lost"); };
  ShowActive(p.w);
  auto* clock = p.Widget<QLineEdit>("txtDateTime");
  auto* sn = p.Widget<QLineEdit>("txtSN");

  clock->setFocus(Qt::MouseFocusReason);
  sn->setFocus(Qt::MouseFocusReason);
  EXPECT_EQ(events,
            (std::vector<std::string>{"clock got", "clock validate", "clock lost", "sn got"}));

  clock->setFocus(Qt::MouseFocusReason);
  events.clear();
  refuse = true;
  sn->setFocus(Qt::TabFocusReason);
  ASSERT_TRUE(PumpUntil([&] { return clock->hasFocus(); }, 2000));
  PumpUntil([] { return false; }, 50);
  EXPECT_EQ(events, (std::vector<std::string>{"clock validate"}))
      << "the round trip back to the field is not reported";

  refuse = false;
  events.clear();
  sn->setFocus(Qt::TabFocusReason);
  EXPECT_EQ(events, (std::vector<std::string>{"clock validate", "clock lost", "sn got"}));
}

TEST(FormBinderWidgetToModel, UpDownArrowsRaiseUpAndDownClicksWithoutSteppingTheBox) {
  BoundPanel p;
  std::vector<std::string> events;
  p.f.UpDown1.UpClick = [&] { events.push_back("up"); };
  p.f.UpDown1.DownClick = [&] { events.push_back("down"); };
  p.f.UpDown1.SetRange(0, 10);
  p.f.UpDown1.SetValue(10);
  ShowActive(p.w);
  auto* sb = p.Widget<QSpinBox>("UpDown1");
  ASSERT_GT(sb->width(), 0);

  QTest::mouseClick(sb, Qt::LeftButton, {},
                    SpinArrow(sb, QStyle::SC_SpinBoxUp));  // at the top already
  QTest::mouseClick(sb, Qt::LeftButton, {}, SpinArrow(sb, QStyle::SC_SpinBoxDown));
  QTest::keyClick(sb, Qt::Key_Up);
  EXPECT_EQ(events, (std::vector<std::string>{"up", "down", "up"}));
  EXPECT_EQ(sb->value(), 10);
  EXPECT_EQ(p.f.UpDown1.Value(), 10);

  p.f.UpDown1.SetEnabled(false);
  QTest::mouseClick(sb, Qt::LeftButton, {}, SpinArrow(sb, QStyle::SC_SpinBoxUp));
  EXPECT_EQ(events.size(), 3u);
}

TEST(FormBinderEcho, WritesOfTheModelRaiseTheirEventsOnceAndNoneComesBack) {
  BoundPanel p;
  ui::FrmMain& f = p.f;
  int clicks = 0, listClicks = 0, changes = 0, menuClicks = 0;
  f.chkConstPwr.Click = [&] { ++clicks; };
  f.cmbFhiTripType.Click = [&] { ++listClicks; };
  f.txtConstLvl.Change = [&] { ++changes; };
  f.mnuRack.Click = [&] { ++menuClicks; };
  ShowActive(p.w);

  f.chkConstPwr.SetValue(1);
  f.cmbFhiTripType.SetListIndex(2);
  f.txtConstLvl.SetText("58.8");
  f.mnuRack.SetChecked(true);
  f.chkConstPwr.SetEnabled(false);
  f.chkConstPwr.SetEnabled(true);
  f.cmbFhiTripType.AddItem("Latch");
  p.binder->SyncAll();

  EXPECT_EQ(clicks, 1);
  EXPECT_EQ(listClicks, 1);
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(menuClicks, 0);
  EXPECT_TRUE(p.Widget<QCheckBox>("chkConstPwr")->isChecked());
  EXPECT_EQ(p.Widget<QComboBox>("cmbFhiTripType")->currentIndex(), 2);
  EXPECT_EQ(p.Widget<QLineEdit>("txtConstLvl")->text(), "58.8");
}

TEST(FormBinderEcho, ModelWritesToAFocusedFieldRaiseNoFocusEvents) {
  BoundPanel p;
  int focusEvents = 0;
  p.f.txtAtnDB.GotFocus = [&] { ++focusEvents; };
  p.f.txtAtnDB.LostFocus = [&] { ++focusEvents; };
  p.f.txtAtnDB.Validate = [&](bool&) { ++focusEvents; };
  ShowActive(p.w);
  auto* atn = p.Widget<QLineEdit>("txtAtnDB");
  atn->setFocus(Qt::MouseFocusReason);
  focusEvents = 0;
  // Disabling the field that has the focus moves the focus away: that is the
  // program's doing, not the operator's.
  p.f.txtAtnDB.SetEnabled(false);
  EXPECT_FALSE(atn->hasFocus());
  EXPECT_EQ(focusEvents, 0);
}

}  // namespace
}  // namespace amp
