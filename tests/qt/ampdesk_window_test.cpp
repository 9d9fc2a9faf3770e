// The desktop program end to end: its options, and its window driving a real
// session with the simulated unit over loopback (and its pseudo-terminal),
// with every widget showing what the panel model holds.
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QMouseEvent>
#include <QProcess>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTextStream>
#include <QWheelEvent>
#include <csignal>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "qt/desktop_app.h"
#include "ui_test_support.h"

namespace amp {
namespace {

using test::PumpUntil;

QString Q(const std::string& s) { return QString::fromStdString(s); }

// Every control of the panel against its widget: texts, captions, values,
// list positions and whether it is shown. Returns the mismatches.
std::vector<std::string> MismatchesBetweenModelAndWindow(DesktopApp& app) {
  std::vector<std::string> out;
  ui::FrmMain& f = app.desk().frmMain;
  for (ui::Control* c : f.Controls()) {
    QObject* o = app.binder().Bound(c->Name());
    auto bad = [&](const std::string& what, const QString& shown, const std::string& model) {
      out.push_back(c->Name() + " " + what + ": widget '" + shown.toStdString() + "', model '" +
                    model + "'");
    };
    if (auto* m = dynamic_cast<ui::MenuItem*>(c)) {
      QAction* a = qobject_cast<QAction*>(o);
      if (auto* menu = qobject_cast<QMenu*>(o)) a = menu->menuAction();
      if (!a) continue;
      if (a->text() != Q(m->Caption())) bad("caption", a->text(), m->Caption());
      if (a->isVisible() != m->Visible())
        bad("visible", a->isVisible() ? "shown" : "hidden", m->Visible() ? "shown" : "hidden");
      // A hidden action reports itself disabled whatever it was set to.
      if (m->Visible() && a->isEnabled() != m->Enabled())
        bad("enabled", a->isEnabled() ? "yes" : "no", m->Enabled() ? "yes" : "no");
      if (a->isChecked() != m->Checked())
        bad("checked", a->isChecked() ? "yes" : "no", m->Checked() ? "yes" : "no");
      continue;
    }
    auto* w = qobject_cast<QWidget*>(o);
    if (!w) continue;
    if (w->isHidden() == c->Visible())
      bad("visible", w->isHidden() ? "hidden" : "shown", c->Visible() ? "shown" : "hidden");
    if (auto* t = dynamic_cast<ui::TextBox*>(c)) {
      if (auto* le = qobject_cast<QLineEdit*>(w); le && le->text() != Q(t->Text()))
        bad("text", le->text(), t->Text());
    } else if (auto* l = dynamic_cast<ui::Label*>(c)) {
      if (auto* ql = qobject_cast<QLabel*>(w); ql && ql->text() != Q(l->Caption()))
        bad("caption", ql->text(), l->Caption());
    } else if (auto* chk = dynamic_cast<ui::CheckBox*>(c)) {
      auto* qc = qobject_cast<QCheckBox*>(w);
      if (qc && qc->isChecked() != (chk->Value() == 1))
        bad("value", qc->isChecked() ? "1" : "0", std::to_string(chk->Value()));
    } else if (auto* list = dynamic_cast<ui::ListControl*>(c)) {
      auto* cb = qobject_cast<QComboBox*>(w);
      if (cb && cb->currentIndex() != list->ListIndex())
        bad("index", QString::number(cb->currentIndex()), std::to_string(list->ListIndex()));
      if (cb && cb->count() != list->ListCount())
        bad("items", QString::number(cb->count()), std::to_string(list->ListCount()));
    } else if (auto* cmd = dynamic_cast<ui::CommandButton*>(c)) {
      auto* b = qobject_cast<QPushButton*>(w);
      if (b && b->text() != Q(cmd->Caption())) bad("caption", b->text(), cmd->Caption());
    }
  }
  return out;
}

// The captions a button had when mouse presses reached it.
struct PressSpy : QObject {
  std::vector<std::string> captions;
  bool eventFilter(QObject* o, QEvent* e) override {
    if (e->type() == QEvent::MouseButtonPress)
      captions.push_back(static_cast<QPushButton*>(o)->text().toStdString());
    return false;
  }
};

class AmpdeskWindow : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(dir_.isValid());
    qputenv("AMPSIM", AMPSIM_EXE);
  }
  DesktopOptions Demo(const std::string& profile) {
    DesktopOptions o;
    o.demo = true;
    o.demoProfile = profile;
    o.settingsFile = SettingsPath();
    return o;
  }
  std::string SettingsPath() const { return dir_.filePath("AmpDesk.ini").toStdString(); }
  static bool SessionUp(DesktopApp& app) {
    return app.desk().frmMain.btnConnect.Caption() == "Disconnect" &&
           !app.desk().frmMain.txtFdBm.Text().empty();
  }
  QTemporaryDir dir_;
};

TEST_F(AmpdeskWindow, ADemoSessionFillsTheWindowWithWhatThePanelModelHolds) {
  for (const char* profile : {"twta127", "sspa120"}) {
    SCOPED_TRACE(profile);
    DesktopApp app(Demo(profile));
    int ends = 0;
    app.onEnd = [&] { ++ends; };
    std::string error;
    ASSERT_TRUE(app.Start(&error)) << error;
    ASSERT_TRUE(PumpUntil([&] { return SessionUp(app); }, 20000))
        << "no session with the simulated unit";
    // A few polls go by; the window follows each of them.
    PumpUntil([] { return false; }, 3000);

    EXPECT_EQ(MismatchesBetweenModelAndWindow(app), std::vector<std::string>{});
    EXPECT_EQ(app.window().windowTitle(), Q(app.desk().frmMain.Caption()));
    EXPECT_EQ(ends, 0);
  }
}

TEST_F(AmpdeskWindow, TheConnectButtonEndsTheSessionAndClosingTheWindowUnloadsAndSaves) {
  // The operator's stored target: the demo must not replace it.
  {
    QSettings stored(dir_.filePath("AmpDesk.ini"), QSettings::IniFormat);
    stored.setValue("Settings/UseIP", "10.1.2.3");
    stored.setValue("Settings/UseEnet", "False");
    stored.setValue("Settings/EthPort", "2101");
  }
  DesktopApp app(Demo("sspa120"));
  int ends = 0;
  app.onEnd = [&] { ++ends; };
  std::string error;
  ASSERT_TRUE(app.Start(&error)) << error;
  ASSERT_TRUE(PumpUntil([&] { return SessionUp(app); }, 20000));
  auto* connect = app.window().findChild<QPushButton*>("btnConnect");
  EXPECT_EQ(connect->text(), "Disconnect");

  connect->click();
  EXPECT_EQ(connect->text(), "Connect");
  EXPECT_EQ(app.window().findChild<QLineEdit*>("txtFdBm")->text(), "");
  EXPECT_FALSE(app.window().findChild<QLineEdit*>("txtAtnDB")->isEnabled());

  // The dBm/Watts choice is the operator's and is kept.
  app.window().findChild<QAction*>("mnuWatts")->trigger();
  app.window().close();
  EXPECT_EQ(ends, 1);
  EXPECT_TRUE(app.desk().Unloaded());
  QSettings saved(dir_.filePath("AmpDesk.ini"), QSettings::IniFormat);
  EXPECT_EQ(saved.value("Settings/UseIP").toString(), "10.1.2.3");
  EXPECT_EQ(saved.value("Settings/UseEnet").toString(), "False");
  EXPECT_EQ(saved.value("Settings/EthPort").toString(), "2101");
  EXPECT_TRUE(saved.contains("Settings/UnitsSetting"));
}

TEST_F(AmpdeskWindow, ASerialDeviceNamedOnTheCommandLineIsFoundAndPolled) {
  SimProcess sim;
  std::string error;
  ASSERT_TRUE(sim.Start(AMPSIM_EXE, {"--tcp", "127.0.0.1:0", "--serial"}, &error)) << error;
  ASSERT_FALSE(sim.SerialPath().empty());
  // Found by the search, then by polling the one address given.
  for (const char* address : {"", "A"}) {
    SCOPED_TRACE(std::string("address '") + address + "'");
    DesktopOptions o;
    o.serialDevice = sim.SerialPath();
    o.settingsFile = SettingsPath();
    o.address = address;
    DesktopApp app(o);
    app.onEnd = [] {};
    ASSERT_TRUE(app.Start(&error)) << error;
    // The operator clicks the button ("Terminate") while the unit is read:
    // the click acts neither then nor later on the "Disconnect" it becomes.
    ui::FrmMain& f = app.desk().frmMain;
    auto* button = app.window().findChild<QPushButton*>("btnConnect");
    PressSpy pressedAs;
    button->installEventFilter(&pressedAs);
    bool clicked = false;
    const int watch = f.AddObserver([&](ui::Control* c) {
      if (clicked || c != &f.txtPN || f.txtPN.Text().empty()) return;  // the first read has begun
      clicked = true;
      const QPoint at = button->rect().center();
      QCoreApplication::postEvent(
          button, new QMouseEvent(QEvent::MouseButtonPress, at, button->mapToGlobal(at),
                                  Qt::LeftButton, Qt::LeftButton, Qt::NoModifier));
      QCoreApplication::postEvent(
          button, new QMouseEvent(QEvent::MouseButtonRelease, at, button->mapToGlobal(at),
                                  Qt::LeftButton, Qt::NoButton, Qt::NoModifier));
    });
    ASSERT_TRUE(PumpUntil([&] { return SessionUp(app); }, 30000))
        << "the unit on " << sim.SerialPath() << " was not found";
    f.RemoveObserver(watch);
    PumpUntil([] { return false; }, 300);
    EXPECT_TRUE(clicked);
    EXPECT_EQ(pressedAs.captions, std::vector<std::string>{});
    EXPECT_EQ(button->text(), "Disconnect");
    EXPECT_TRUE(f.Timer1.TimerEnabled());
    EXPECT_EQ(MismatchesBetweenModelAndWindow(app), std::vector<std::string>{});
    // The slot the device went into is the one the menu shows checked.
    int checked = 0;
    for (int i = 0; i < 10; ++i)
      if (app.window().findChild<QAction*>(QString("mnuComPort_%1").arg(i))->isChecked()) ++checked;
    EXPECT_EQ(checked, 1);
    EXPECT_EQ(app.window().findChild<QAction*>("mnuPollEn")->isChecked(), *address != 0);
    app.window().close();
  }
}

// Frames the simulated unit received (its --frame-log) that carry exactly
// `command` after the address.
int FramesReceived(const QString& log, const std::string& command) {
  QFile f(log);
  if (!f.open(QIODevice::ReadOnly)) return -1;
  const QString wanted = Q("<STX>A" + command + "<ETX>");
  int n = 0;
  QTextStream in(&f);
  for (int i = 0; i < 100000 && !in.atEnd(); ++i)
    if (in.readLine().contains(wanted)) ++n;
  return n;
}

class AmpdeskScript : public AmpdeskWindow {
 protected:
  // A demo run of `profile` with `script` as its --script file.
  DesktopOptions Scripted(const std::string& profile, const std::string& script,
                          std::vector<std::string> simArgs = {}) {
    const std::string path = dir_.filePath("run.txt").toStdString();
    std::ofstream(path) << script;
    DesktopOptions o = Demo(profile);
    o.script = path;
    o.simArgs = std::move(simArgs);
    return o;
  }
};

TEST_F(AmpdeskScript, ClickingTheTransmitterBoxTurnsTheUnitOnAndTheWindowShowsIt) {
  // The unit starts in standby (S1: standby and remote, no transmitter bit).
  const QString log = dir_.filePath("frames.log");
  DesktopApp app(Scripted("twta127", "# the operator's first action\nclick chkPS\nwait 3000\n",
                          {"--status=L@E@,@@@@,@@@@", "--frame-log=" + log.toStdString()}));
  app.onEnd = [] {};
  std::string error;
  ASSERT_TRUE(app.Start(&error)) << error;
  ASSERT_TRUE(PumpUntil([&] { return app.ScriptEnded(); }, 40000))
      << "the script did not run to its end";
  EXPECT_FALSE(app.ScriptFailed());

  ui::FrmMain& f = app.desk().frmMain;
  EXPECT_EQ(FramesReceived(log, "@"), 1) << "the transmitter-on command, once";
  EXPECT_EQ(FramesReceived(log, "A"), 0) << "no transmitter-off command";
  // What the unit reported after the command, in the model and the window.
  EXPECT_EQ(f.chkPS.Value(), 1);
  EXPECT_EQ(f.Label31.Caption(), "HV On");
  EXPECT_TRUE(app.window().findChild<QCheckBox*>("chkConstPwr")->isEnabled())
      << "constant power can be set with the transmitter on";
  EXPECT_EQ(MismatchesBetweenModelAndWindow(app), std::vector<std::string>{});
  app.window().close();
}

TEST_F(AmpdeskScript, ADialogIsShownAsAWindowWhileTheScriptAnswersIt) {
  DesktopApp app(
      Scripted("sspa120", "click mnuHelpAbout\nwait 400\nclick frmAbout.cmdOK\nwait 100\n"));
  app.onEnd = [] {};
  std::string error;
  ASSERT_TRUE(app.Start(&error)) << error;
  // Seen from outside while the script is inside the dialog; nobody clicks.
  std::string title;
  bool loadedThen = false;
  auto seen = test::WhenModalAppears(
      [&](QWidget* w) {
        title = w->windowTitle().toStdString();
        loadedThen = app.desk().frmAbout.Loaded();
      },
      30000);
  ASSERT_TRUE(PumpUntil([&] { return app.ScriptEnded(); }, 40000));
  EXPECT_FALSE(app.ScriptFailed());
  EXPECT_TRUE(*seen) << "the dialog was never shown";
  EXPECT_EQ(title, "About AmpDesk");
  EXPECT_TRUE(loadedThen);
  EXPECT_FALSE(app.desk().frmAbout.Loaded()) << "the script's OK closed it";
  EXPECT_EQ(app.dialogs().ActiveFormWindow(), nullptr);
  app.window().close();
}

// A slip of the operator's hand on a transmitting unit: the poll is stopped,
// so every frame the unit gets from then on is one the slip sent.
class AmpdeskSlips : public AmpdeskWindow {
 protected:
  DesktopApp& Transmitting() {
    DesktopOptions o = Demo("sspa120");
    o.simArgs = {"--frame-log=" + log_.toStdString()};
    app_ = std::make_unique<DesktopApp>(o);
    app_->onEnd = [] {};
    std::string error;
    EXPECT_TRUE(app_->Start(&error)) << error;
    EXPECT_TRUE(PumpUntil([&] { return SessionUp(*app_); }, 20000));
    app_->desk().frmMain.Timer1.SetTimerEnabled(false);
    PumpUntil([] { return false; }, 200);
    EXPECT_EQ(app_->desk().frmMain.chkPS.Value(), 1);
    app_->window().findChild<QPushButton*>("btnConnect")->setFocus();
    return *app_;
  }
  int Frames() const {
    QFile f(log_);
    if (!f.open(QIODevice::ReadOnly)) return -1;
    return static_cast<int>(f.readAll().count("<STX>"));
  }
  const QString log_ = dir_.filePath("frames.log");
  std::unique_ptr<DesktopApp> app_;
};

TEST_F(AmpdeskSlips, AWheelOverAListOrAnUpDownWithoutTheFocusSendsNothing) {
  DesktopApp& app = Transmitting();
  std::vector<QWidget*> wheeled;
  for (QComboBox* cb : app.window().findChildren<QComboBox*>()) wheeled.push_back(cb);
  for (QAbstractSpinBox* sb : app.window().findChildren<QAbstractSpinBox*>()) wheeled.push_back(sb);
  int live = 0;
  const int before = Frames();
  for (QWidget* w : wheeled) {
    live += w->isEnabled() && w->isVisible();
    for (int dy : {120, -120, -120}) {
      const QPointF at = QRectF(w->rect()).center();
      QWheelEvent notch(at, w->mapToGlobal(at), {}, {0, dy}, Qt::NoButton, Qt::NoModifier,
                        Qt::NoScrollPhase, false);
      QApplication::sendEvent(w, &notch);
    }
    EXPECT_EQ(Frames(), before) << w->objectName().toStdString();
  }
  EXPECT_GE(live, 3) << "the session left too few lists and up-downs to wheel";
  EXPECT_EQ(MismatchesBetweenModelAndWindow(app), std::vector<std::string>{});
}

TEST_F(AmpdeskSlips, EnterOnTheClocksResetUnitBoxSendsNothing) {
  DesktopApp& app = Transmitting();
  const int before = Frames();
  std::string title;
  auto answered = test::WhenModalAppears(
      [&](QWidget* box) {
        title = box->windowTitle().toStdString();
        QTest::keyClick(box->focusWidget() ? box->focusWidget() : box, Qt::Key_Return);
      },
      5000, [](QWidget* w) { return qobject_cast<QMessageBox*>(w) != nullptr; });
  app.window().findChild<QPushButton*>("Command7")->click();
  EXPECT_TRUE(*answered);
  EXPECT_EQ(title, "Reset Unit?");
  PumpUntil([] { return false; }, 200);
  EXPECT_EQ(Frames(), before) << "neither the clock (\"%\") nor a reset (\"~\") goes out";
}

// The shared options and their checks are ampdesk-cli's end-to-end tests;
// these are the desktop program's own.
TEST(AmpdeskOptions, ReadsEachOptionAndRefusesWhatMakesNoSense) {
  struct Case {
    std::vector<std::string> args;
    std::string error;  // part of the expected message; "" for none
  };
  const Case cases[] = {
      {{}, ""},
      {{"--demo", "twta127", "--screenshot", "/tmp/x.png", "--after", "6000"}, ""},
      {{"--tcp", "192.0.2.10:2101", "--settings-file", "/tmp/a.ini", "--trace", "-"}, ""},
      {{"--demo", "--tcp", "192.0.2.10"}, "at most one"},
      {{"--after", "100"}, "goes with --screenshot"},
      {{"--screenshot", "x.png", "--after", "soon"}, "milliseconds"},
      {{"--demo", "dualtwt108", "--tcp-later"}, "unknown argument '--tcp-later'"},
      {{"--serial", "COM2", "--settings", "19200,N,8,1", "--address", "B"}, ""},
      {{"--demo", "--sim-arg", "--local", "--sim-arg=--status=L@E@,@@@@,@@@@"}, ""},
      {{"--tcp", "192.0.2.10", "--sim-arg", "--local"}, "goes with --demo"},
      {{"--demo", "--script=run.txt"}, ""},
      {{"--script", "run.txt"}, "needs a unit"},
      {{"--demo", "--script="}, "needs a value"},
      {{"--help=yes"}, "takes no value"},
  };
  for (const Case& c : cases) {
    DesktopOptions o;
    const std::string err = ParseDesktopOptions(c.args, o);
    std::string joined;
    for (const auto& a : c.args) joined += a + " ";
    if (c.error.empty()) {
      EXPECT_EQ(err, "") << joined;
    } else {
      EXPECT_NE(err.find(c.error), std::string::npos) << joined << "gave '" << err << "'";
    }
  }
  DesktopOptions d;
  ASSERT_EQ(
      ParseDesktopOptions({"--demo", "dualtwt108", "--screenshot", "s.png", "--after", "250"}, d),
      "");
  EXPECT_TRUE(d.demo);
  EXPECT_EQ(d.demoProfile, "dualtwt108");
  EXPECT_EQ(d.screenshot, "s.png");
  EXPECT_EQ(d.screenshotAfterMs, 250);
  DesktopOptions sa;
  ASSERT_EQ(ParseDesktopOptions({"--demo=sspa120", "--sim-arg", "--local",
                                 "--sim-arg=--status=L@A@,H@@@,@@@@", "--script", "run.txt"},
                                sa),
            "");
  EXPECT_EQ(sa.demoProfile, "sspa120");
  EXPECT_EQ(sa.simArgs, (std::vector<std::string>{"--local", "--status=L@A@,H@@@,@@@@"}));
  EXPECT_EQ(sa.script, "run.txt");
  DesktopOptions t;
  ASSERT_EQ(ParseDesktopOptions({"--tcp", "127.0.0.1:2101"}, t), "");
  EXPECT_EQ(t.tcpHost, "127.0.0.1");
  EXPECT_EQ(t.tcpPort, 2101);
}

// The program itself, as scripts and the documentation run it.
class AmpdeskProgram : public ::testing::Test {
 protected:
  int Run(const QStringList& args, QString* err = nullptr, int ms = 30000) {
    QProcess p;
    auto env = QProcessEnvironment::systemEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("AMPSIM", AMPSIM_EXE);
    p.setProcessEnvironment(env);
    p.start(AMPDESK_EXE, args);
    if (!p.waitForFinished(ms)) {
      p.kill();
      p.waitForFinished(3000);
      return -1;
    }
    if (err) *err = QString::fromLocal8Bit(p.readAllStandardError());
    return p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -2;
  }
};

TEST_F(AmpdeskProgram, HelpBadArgumentsAndAScreenshotOfADemoSession) {
  EXPECT_EQ(Run({"--help"}), 0);
  QString err;
  EXPECT_EQ(Run({"--tcp", "192.0.2.10", "--demo"}, &err), 2);
  EXPECT_EQ(Run({"--demo", "nosuchunit", "--screenshot", "/dev/null"}, &err), 1);
  EXPECT_TRUE(err.contains("simulated amplifier")) << err.toStdString();

  QTemporaryDir dir;
  ASSERT_TRUE(dir.isValid());
  const QString png = dir.filePath("panel.png");
  EXPECT_EQ(Run({"--demo", "twta127", "--settings-file", dir.filePath("s.ini"), "--screenshot", png,
                 "--after", "4000"},
                &err),
            0)
      << err.toStdString();
  QImage shot(png);
  ASSERT_FALSE(shot.isNull());
  EXPECT_GE(shot.width(), 1000);
  EXPECT_GE(shot.height(), 600);
  // The settings of that run went to the file named, not the user's.
  EXPECT_TRUE(QFile::exists(dir.filePath("s.ini")));

  EXPECT_EQ(
      Run({"--demo", "--screenshot", dir.filePath("no/such/folder/x.png"), "--after", "200"}, &err),
      1);
  EXPECT_TRUE(err.contains("cannot save the screenshot")) << err.toStdString();
}

// The child processes of `pid`, from /proc.
std::vector<long> ChildrenOf(qint64 pid) {
  std::vector<long> out;
  const QString tasks = QString("/proc/%1/task").arg(pid);
  for (const QString& task : QDir(tasks).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    QFile f(tasks + "/" + task + "/children");
    if (!f.open(QIODevice::ReadOnly)) continue;
    for (const QByteArray& word : f.readAll().split(' '))
      if (!word.trimmed().isEmpty()) out.push_back(word.trimmed().toLong());
  }
  return out;
}

// Gone, or a zombie nobody has reaped yet.
bool Ended(long pid) {
  QFile f(QString("/proc/%1/stat").arg(pid));
  if (!f.open(QIODevice::ReadOnly)) return true;
  const QByteArray stat = f.readAll();
  const auto close = stat.lastIndexOf(')');
  return close < 0 || stat.mid(close + 2, 1) == "Z";
}

TEST_F(AmpdeskProgram, TheDemoUnitEndsWithTheProgramOnAStopSignalOrAKill) {
  QTemporaryDir dir;
  ASSERT_TRUE(dir.isValid());
  struct Case {
    const char* program;
    QStringList args;
    int signal;
  };
  const QStringList desk = {"--demo", "--settings-file", dir.filePath("s.ini")};
  const QStringList cli = {"--demo", "--data-dir", dir.path(), "monitor"};
  const Case cases[] = {{AMPDESK_EXE, desk, SIGTERM},    {AMPDESK_EXE, desk, SIGINT},
                        {AMPDESK_EXE, desk, SIGHUP},     {AMPDESK_EXE, desk, SIGKILL},
                        {AMPDESK_CLI_EXE, cli, SIGTERM}, {AMPDESK_CLI_EXE, cli, SIGKILL}};
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.program) + " " + strsignal(c.signal));
    QProcess p;
    auto env = QProcessEnvironment::systemEnvironment();
    env.insert("QT_QPA_PLATFORM", "offscreen");
    env.insert("AMPSIM", AMPSIM_EXE);
    p.setProcessEnvironment(env);
    p.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    p.start(c.program, c.args);
    ASSERT_TRUE(p.waitForStarted(5000));
    std::vector<long> sim;
    // The simulated unit runs, and the program had time to reach its loop.
    for (int i = 0; i < 200 && sim.empty(); ++i) {
      p.waitForFinished(50);
      sim = ChildrenOf(p.processId());
    }
    ASSERT_EQ(sim.size(), 1u);
    p.waitForFinished(1500);
    QElapsedTimer clock;
    clock.start();
    ::kill(static_cast<pid_t>(p.processId()), c.signal);
    while (!Ended(sim[0]) && clock.elapsed() < 5000) p.waitForFinished(10);
    const qint64 ms = clock.elapsed();
    std::printf("%s, %s: the simulated unit ended %lld ms after the signal\n",
                QFileInfo(c.program).fileName().toLocal8Bit().constData(), strsignal(c.signal),
                static_cast<long long>(ms));
    EXPECT_LT(ms, 1000);
    EXPECT_TRUE(p.waitForFinished(5000) || p.state() == QProcess::NotRunning);
    if (c.signal != SIGKILL) {
      EXPECT_EQ(p.exitStatus(), QProcess::NormalExit);
    }
  }
}

// The script language and its errors are the panel script's (tests/cli);
// here, that the program stops on one before it starts anything.
TEST_F(AmpdeskProgram, ABadScriptIsReportedWithItsLineBeforeAnythingStarts) {
  QTemporaryDir dir;
  ASSERT_TRUE(dir.isValid());
  const QString path = dir.filePath("bad.txt");
  std::ofstream(path.toStdString()) << "click chkPS\nclick chkNoSuchBox\n";
  QString err;
  EXPECT_EQ(Run({"--demo", "--settings-file", dir.filePath("s.ini"), "--script", path}, &err), 2);
  EXPECT_TRUE(err.contains("line 2: unknown control 'chkNoSuchBox'")) << err.toStdString();
  EXPECT_FALSE(err.contains("simulated amplifier")) << "nothing is started for a bad script";
}

}  // namespace
}  // namespace amp
