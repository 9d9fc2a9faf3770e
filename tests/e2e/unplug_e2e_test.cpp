// The unit's plug pulled during a session and put back: ampsim runs as its
// own process (SIGUSR1 pulls the plug, the next one puts it back), and the
// real AmpDesk on the host's Qt parts talks to it over loopback TCP or over
// the pseudo-terminal. ampsim's frame log shows the polls sent into the
// silence.
//
// Over serial a unit gets 2 s to answer, less than the poll interval, so the
// three missed polls cost three intervals. Over TCP a poll waits 15 s for its
// reply; the link's clock runs six times as fast as the wall clock there, so
// each missed poll again costs about one interval.
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <csignal>
#include <string>

#include "app/amp_desk.h"
#include "app/desk_rig.h"
#include "e2e/cli_runner.h"
#include "qt/qt_comm_port.h"
#include "qt/qt_event_pump.h"
#include "qt/qt_tcp_socket.h"
#include "qt/qt_test_support.h"
#include "qt/qt_timer.h"

namespace amp {
namespace {

class ScaledClock final : public Clock {
 public:
  explicit ScaledClock(int speedUp) : speedUp_(speedUp) { wall_.start(); }
  int64_t NowMs() override { return 1'000'000 + wall_.elapsed() * speedUp_; }

 private:
  int speedUp_;
  QElapsedTimer wall_;
};

// Long enough for a connect and a first read, or for three missed polls.
constexpr int kStepMs = 15000;

struct Session {
  Session(e2e::Unit& unit, bool serial) : unit(unit), clock(serial ? 1 : 6) {
    if (serial) {
      comSlots.Bind(1, unit.serial);
      settings.Set("UseEnet", "False");
      settings.Set("CurrentPort", "1");
      settings.Set("ComSettings", "9600,N,8,1");
    } else {
      settings.Set("UseEnet", "True");
      settings.Set("UseIP", "127.0.0.1");
      settings.Set("EthPort", std::to_string(unit.port));
    }
    dialogs.ExpectNoBox();  // a lost unit is told by the panel alone
    desk.Form_Load();
  }
  ~Session() { desk.Form_Unload(); }

  // Presses Connect and waits for the first read to finish.
  bool Connect() {
    f.btnConnect.RaiseClick();
    return test::PumpUntil(
        [&] { return f.btnConnect.Caption() == "Disconnect" && desk.comms.gFirstReadDone; },
        kStepMs);
  }

  // SIGUSR1 to ampsim, and its word that the plug is out (or back in). The
  // wait runs no events, so no poll goes out while the plug changes.
  bool TogglePlug(const std::string& word) {
    unit.Signal(SIGUSR1);
    unit.proc.setReadChannel(QProcess::StandardError);
    QElapsedTimer wall;
    wall.start();
    while (stderrText.find(word) == std::string::npos && wall.elapsed() < 5000) {
      unit.proc.waitForReadyRead(100);
      stderrText += unit.proc.readAllStandardError().toStdString();
    }
    return stderrText.find(word) != std::string::npos;
  }

  void ExpectSessionUp() {
    EXPECT_EQ(f.btnConnect.Caption(), "Disconnect");
    EXPECT_TRUE(desk.comms.gFirstReadDone);
    EXPECT_EQ(desk.unit.gProjectID, 120);
    EXPECT_FALSE(f.txtFdBm.Text().empty());
    EXPECT_FALSE(f.txtPN.Text().empty());
    EXPECT_TRUE(f.txtAtnDB.Enabled());
    EXPECT_TRUE(f.Timer1.TimerEnabled());
  }

  void ExpectSessionEnded() {
    EXPECT_EQ(f.btnConnect.Caption(), "Connect");
    EXPECT_FALSE(desk.comms.gFirstReadDone);
    EXPECT_EQ(f.txtFdBm.Text(), "");
    EXPECT_EQ(f.txtPN.Text(), "");
    EXPECT_FALSE(f.txtAtnDB.Enabled());
    EXPECT_FALSE(f.chkPS.Enabled());
    EXPECT_FALSE(f.Timer1.TimerEnabled());
    EXPECT_TRUE(f.mnuConnect.Enabled());
  }

  e2e::Unit& unit;
  std::string stderrText;
  ComSlots comSlots;
  QtCommPort port{comSlots};
  QtTcpSocket sock;
  QtTimer timer;
  QtEventPump pump;
  ScaledClock clock;
  test::FakeDialogs dialogs;
  test::MemorySettings settings;
  AmpDesk desk{AmpDeskHost{port, comSlots, sock, timer, pump, clock, dialogs, settings}};
  ui::FrmMain& f = desk.frmMain;
};

// Status polls among the frames ampsim logged, answered or not.
int Polls(const std::string& frameLog) {
  int n = 0;
  for (size_t at = 0; (at = frameLog.find("?!#", at)) != std::string::npos; ++at) ++n;
  return n;
}

void UnplugAndComeBack(e2e::Unit& unit, const std::string& log, bool serial) {
  ASSERT_TRUE(unit.ok);
  Session s(unit, serial);
  ASSERT_TRUE(s.Connect());
  s.ExpectSessionUp();

  ASSERT_TRUE(s.TogglePlug("silent"));
  const size_t pulledAt = e2e::ReadAll(log).size();
  ASSERT_TRUE(test::PumpUntil([&] { return s.f.btnConnect.Caption() == "Connect"; }, kStepMs));
  s.ExpectSessionEnded();
  // The third unanswered poll ended the session.
  EXPECT_EQ(Polls(e2e::ReadAll(log).substr(pulledAt)), 3);

  ASSERT_TRUE(s.TogglePlug("answering again"));
  ASSERT_TRUE(s.Connect());
  s.ExpectSessionUp();
}

TEST(UnplugEndToEnd, OverTcp) {
  const std::string log = e2e::FreshFile("unplug-tcp.log");
  e2e::Unit unit({"--tcp", "127.0.0.1:0", "--frame-log", log});
  UnplugAndComeBack(unit, log, false);
}

TEST(UnplugEndToEnd, OverThePseudoTerminal) {
  const std::string log = e2e::FreshFile("unplug-pty.log");
  e2e::Unit unit({"--no-tcp", "--serial", "--frame-log", log});
  UnplugAndComeBack(unit, log, true);
}

}  // namespace
}  // namespace amp
