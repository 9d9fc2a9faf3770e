// Connecting from the panel with the real host parts: ampsim's
// pseudo-terminal through QSerialPort, and loopback TCP through QTcpSocket.
//
// A search waits 0.6 s on every address where no unit answers. To keep these
// runs short the link's clock runs four times as fast as the wall clock (and
// the port is asked for input in short waits, so the faster clock is
// consulted often): a silent probe costs 150 ms, and a unit that answers has
// 150 ms of real time to do it, which a simulator on the same machine meets
// with a wide margin.
#include <gtest/gtest.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QTcpServer>
#include <QTimer>
#include <algorithm>

#include "app/amp_desk.h"
#include "app/desk_rig.h"
#include "qt/qt_comm_port.h"
#include "qt/qt_event_pump.h"
#include "qt/qt_tcp_socket.h"
#include "qt/qt_test_support.h"
#include "qt/qt_timer.h"
#include "sim/profile.h"
#include "sim/simulator.h"

namespace amp {
namespace {

using sim::Simulator;

constexpr int kSpeedUp = 4;

class FastClock final : public Clock {
 public:
  FastClock() { wall_.start(); }
  int64_t NowMs() override { return 1'000'000 + wall_.elapsed() * kSpeedUp; }

 private:
  QElapsedTimer wall_;
};

// QtCommPort with its waits for input cut short.
class ShortWaitPort final : public CommPort {
 public:
  explicit ShortWaitPort(CommPort& inner) : inner_(inner) {}
  std::string SetCommPort(int port) override { return inner_.SetCommPort(port); }
  std::string SetSettings(std::string_view s) override { return inner_.SetSettings(s); }
  std::string SetRTSEnable(bool on) override { return inner_.SetRTSEnable(on); }
  std::string SetPortOpen(bool open) override { return inner_.SetPortOpen(open); }
  bool PortOpen() const override { return inner_.PortOpen(); }
  void SetInputLen(int n) override { inner_.SetInputLen(n); }
  int InBufferCount() override { return inner_.InBufferCount(); }
  void SetInBufferCount(int n) override { inner_.SetInBufferCount(n); }
  std::string Input() override { return inner_.Input(); }
  std::string Output(std::string_view bytes) override { return inner_.Output(bytes); }
  bool WaitForInput(int ms) override { return inner_.WaitForInput(std::min(ms, 10)); }

 private:
  CommPort& inner_;
};

// Whether this kernel's pseudo-terminals keep data bits and parity. Recent
// Linux forces 8 bits without parity on them, so a unit behind one can only
// tell speed and stop bits apart, and a search finds it on the first text
// with its speed.
bool PtyKeepsCharFormat() {
  int master = -1, slave = -1;
  if (openpty(&master, &slave, nullptr, nullptr, nullptr) != 0) return false;
  termios t{};
  bool keeps = false;
  if (tcgetattr(slave, &t) == 0) {
    t.c_cflag = (t.c_cflag & ~CSIZE) | CS7 | PARENB;
    termios back{};
    keeps = tcsetattr(slave, TCSANOW, &t) == 0 && tcgetattr(slave, &back) == 0 &&
            (back.c_cflag & CSIZE) == CS7 && (back.c_cflag & PARENB);
  }
  close(slave);
  close(master);
  return keeps;
}

Simulator::Options Unit(bool serial, char address, const std::string& line = "9600,N,8,1") {
  Simulator::Options o;
  o.tcpPort = 0;
  o.tcp = !serial;
  o.serial = serial;
  o.line = line;
  std::string err;
  EXPECT_TRUE(sim::LoadProfile(sim::ResolveProfile("sspa120"), o.unit, &err)) << err;
  o.unit.address = address;
  return o;
}

// An AmpDesk on the host's real parts, loaded with COM1 bound to the unit's
// pseudo-terminal.
struct Desk {
  explicit Desk(Simulator::Options opts) : unit(std::move(opts)) {
    std::string err;
    started = unit.Start(&err);
    EXPECT_TRUE(started) << err;
    if (!unit.SerialPath().empty()) slots.Bind(1, unit.SerialPath());
    desk.Form_Load();
  }
  ~Desk() { desk.Form_Unload(); }

  void Click(ui::Control& c) { c.RaiseClick(); }
  std::vector<std::string> BoxTexts() const {
    std::vector<std::string> out;
    for (const auto& b : dialogs.boxes) out.push_back(b.title + ": " + b.text);
    return out;
  }

  Simulator unit;
  bool started = false;
  ComSlots slots;
  QtCommPort qtPort{slots};
  ShortWaitPort port{qtPort};
  QtTcpSocket sock;
  QtTimer timer;
  QtEventPump pump;
  FastClock clock;
  test::FakeDialogs dialogs;
  test::MemorySettings settings;
  AmpDesk desk{AmpDeskHost{port, slots, sock, timer, pump, clock, dialogs, settings}};
  ui::FrmMain& f = desk.frmMain;
};

TEST(ConnectEndToEnd, PlainSearchFindsUnitOnItsLineSettings) {
  Desk s(Unit(true, 'C', "38400,O,7,1"));
  ASSERT_TRUE(s.started);
  QElapsedTimer wall;
  wall.start();
  s.Click(s.f.btnConnect);
  EXPECT_LT(wall.elapsed(), 9000);
  EXPECT_TRUE(s.dialogs.boxes.empty());
  EXPECT_EQ(s.f.btnConnect.Caption(), "Disconnect");
  EXPECT_EQ(s.desk.comms.Link.DeviceAddress(), "C");
  EXPECT_EQ(s.desk.comms.Link.CommSettings(), PtyKeepsCharFormat() ? "38400,O,7,1" : "38400,N,8,1");
  EXPECT_FLOAT_EQ(s.desk.comms.Link.MsgTimeout(), 2.0f);
  // The first read identified the unit and the poll runs.
  EXPECT_EQ(s.desk.unit.gProjectID, 120);
  EXPECT_TRUE(s.desk.comms.gFirstReadDone);
  EXPECT_TRUE(s.timer.Enabled());
  s.unit.ClearReceivedFrames();
  s.desk.comms.Timer1_Timer();
  const auto frames = s.unit.ReceivedFrames();
  ASSERT_FALSE(frames.empty());
  EXPECT_EQ(frames.front().substr(0, 3), "?!#");
  EXPECT_EQ(s.desk.comms.session.gMissedPolls, 2);  // the poll was good

  s.Click(s.f.btnConnect);
  EXPECT_EQ(s.f.btnConnect.Caption(), "Connect");
  EXPECT_FALSE(s.timer.Enabled());
}

TEST(ConnectEndToEnd, TerminateEndsTheSearchAndRestoresTheLink) {
  Desk s(Unit(true, 'A'));
  ASSERT_TRUE(s.started);
  s.unit.SetSilent(true);
  s.desk.comms.Link.SetCommSettings("4800,N,8,2");
  // The operator presses the button again while the search runs.
  QTimer::singleShot(400, [&] { s.Click(s.f.btnConnect); });
  QElapsedTimer wall;
  wall.start();
  s.Click(s.f.btnConnect);
  EXPECT_LT(wall.elapsed(), 2000);
  EXPECT_EQ(s.BoxTexts(), std::vector<std::string>{"Connect: Unit Not Found"});
  EXPECT_EQ(s.f.btnConnect.Caption(), "Connect");
  EXPECT_FALSE(s.desk.gTerminateSearch);
  EXPECT_EQ(s.desk.comms.Link.CommSettings(), "4800,N,8,2");
  EXPECT_EQ(s.desk.comms.Link.DeviceAddress(), "A");
  EXPECT_FLOAT_EQ(s.desk.comms.Link.MsgTimeout(), 2.0f);
  EXPECT_TRUE(s.f.mnuConnect.Enabled());
  EXPECT_FALSE(s.timer.Enabled());
}

TEST(ConnectEndToEnd, PollSingleAddress) {
  Desk s(Unit(true, 'B'));
  ASSERT_TRUE(s.started);
  s.Click(s.f.mnuPollEn);
  s.dialogs.inputs = {"C"};
  s.Click(s.f.mnuPollAdrs);
  s.Click(s.f.btnConnect);  // nobody at C
  EXPECT_EQ(s.BoxTexts(), std::vector<std::string>{"Connect: Unit Not Found"});

  s.dialogs.inputs = {"B"};
  s.Click(s.f.mnuPollAdrs);
  s.unit.ClearReceivedFrames();
  s.Click(s.f.btnConnect);
  EXPECT_EQ(s.f.btnConnect.Caption(), "Disconnect");
  EXPECT_EQ(s.desk.comms.Link.DeviceAddress(), "B");
  const auto frames = s.unit.ReceivedFrames();
  ASSERT_FALSE(frames.empty());
  EXPECT_EQ(frames.front(), "1");  // one probe, then the first read
  EXPECT_EQ(std::count(frames.begin(), frames.end(), "1"), 1);
  EXPECT_EQ(s.desk.unit.gProjectID, 120);
}

TEST(ConnectEndToEnd, TcpRefusedShowsTheBox) {
  // A loopback port that nobody listens on.
  QTcpServer probe;
  ASSERT_TRUE(probe.listen(QHostAddress::LocalHost, 0));
  const int closedPort = probe.serverPort();
  probe.close();

  Desk s(Unit(false, 'A'));
  ASSERT_TRUE(s.started);
  s.Click(s.f.mnuUseEnet);
  s.dialogs.inputs = {"127.0.0.1", std::to_string(closedPort)};
  s.Click(s.f.mnuEnterIP);
  s.Click(s.f.mnuEthPort);
  s.Click(s.f.btnConnect);
  ASSERT_FALSE(s.dialogs.boxes.empty());
  const test::Box& last = s.dialogs.boxes.back();
  EXPECT_EQ(last.title, "Ethernet Communication Error");
  EXPECT_EQ(last.text, "Unable to Connect to Unit");
  EXPECT_EQ(last.icon, MsgIcon::Exclamation);
  EXPECT_EQ(s.f.btnConnect.Caption(), "Connect");
  EXPECT_TRUE(s.f.btnConnect.Enabled());
  EXPECT_TRUE(s.f.mnuConnect.Enabled());
  EXPECT_FALSE(s.timer.Enabled());
}

TEST(ConnectEndToEnd, TcpSessionStartsFromTheConnectEvent) {
  Desk s(Unit(false, 'A'));
  ASSERT_TRUE(s.started);
  s.Click(s.f.mnuUseEnet);
  s.dialogs.inputs = {"127.0.0.1", std::to_string(s.unit.TcpPort())};
  s.Click(s.f.mnuEnterIP);
  s.Click(s.f.mnuEthPort);
  s.Click(s.f.btnConnect);
  // The connect event may still be on its way: the first read runs from it.
  EXPECT_TRUE(test::PumpUntil([&] { return s.desk.comms.gFirstReadDone; }, 5000));
  EXPECT_TRUE(s.dialogs.boxes.empty());
  EXPECT_EQ(s.f.btnConnect.Caption(), "Disconnect");
  EXPECT_EQ(s.desk.unit.gProjectID, 120);
  EXPECT_TRUE(s.timer.Enabled());

  s.Click(s.f.btnConnect);
  EXPECT_EQ(s.f.btnConnect.Caption(), "Connect");
  EXPECT_EQ(s.sock.State(), TcpSocket::sckClosed);
  EXPECT_FALSE(s.timer.Enabled());
}

}  // namespace
}  // namespace amp
