// QtCommPort on a real pseudo-terminal: the test holds the master side and
// plays the amplifier; the port under test opens the slave through a slot.
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

#include "qt/qt_comm_port.h"

namespace amp {
namespace {

struct Pty {
  int master = posix_openpt(O_RDWR | O_NOCTTY);
  std::string path =
      master >= 0 && grantpt(master) == 0 && unlockpt(master) == 0 ? ptsname(master) : "";
  ~Pty() { Hangup(); }
  void Hangup() {
    if (master >= 0) close(master);
    master = -1;
  }
  void Write(const std::string& bytes) {
    ASSERT_EQ(write(master, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  }
  std::string Read(size_t count) {  // what the port sent, within 2 s
    std::string got;
    char buf[256];
    QElapsedTimer clock;
    clock.start();
    for (pollfd pfd{master, POLLIN, 0}; got.size() < count && clock.elapsed() < 2000;) {
      if (poll(&pfd, 1, 50) <= 0) continue;
      const ssize_t n = read(master, buf, sizeof buf);
      if (n <= 0) break;
      got.append(buf, static_cast<size_t>(n));
    }
    return got;
  }
  termios Line() const {  // a pty master reports its slave's settings
    termios tio{};
    tcgetattr(master, &tio);
    return tio;
  }
};

// Polls the port, with no event loop, until it reports `count` bytes.
bool WaitForCount(QtCommPort& port, int count) {
  QElapsedTimer clock;
  clock.start();
  while (port.InBufferCount() < count && clock.elapsed() < 2000) port.WaitForInput(50);
  return port.InBufferCount() == count;
}

class QtCommPortTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_FALSE(pty.path.empty()) << "no pseudo-terminal available";
    table.Bind(3, pty.path);
    port.SetCommPort(3);
  }
  Pty pty;
  ComSlots table;
  QtCommPort port{table};
};

TEST_F(QtCommPortTest, OpensAppliesSettingsAndWrites) {
  EXPECT_EQ(port.SetSettings("19200,E,7,2"), "");
  EXPECT_EQ(port.SetRTSEnable(true), "");  // a pty has no modem lines; not an error
  ASSERT_EQ(port.SetPortOpen(true), "");
  EXPECT_TRUE(port.PortOpen());
  // A pty keeps 8 data bits without parity whatever is asked; the rate and
  // the stop bits do reach it.
  termios tio = pty.Line();
  EXPECT_EQ(cfgetospeed(&tio), B19200);
  EXPECT_TRUE(tio.c_cflag & CSTOPB);
  EXPECT_FALSE(tio.c_lflag & (ICANON | ECHO));  // raw: no line editing, no echo

  EXPECT_EQ(port.SetSettings("9600,o,8,1"), "");  // applied at once when open
  tio = pty.Line();
  EXPECT_EQ(cfgetospeed(&tio), B9600);
  EXPECT_FALSE(tio.c_cflag & CSTOPB);

  EXPECT_EQ(port.Output("\x02PING\r\n"), "");  // raw bytes, no newline translation
  EXPECT_EQ(pty.Read(7), "\x02PING\r\n");

  EXPECT_EQ(port.SetPortOpen(true), "Port already open");
  EXPECT_EQ(port.SetCommPort(4), "Port already open");
  EXPECT_EQ(port.PortNumber(), 3);
  EXPECT_EQ(port.SetPortOpen(false), "");
  EXPECT_FALSE(port.PortOpen());
  EXPECT_EQ(port.Output("x"), "Operation valid only when the port is open");
}

TEST_F(QtCommPortTest, ReceivesWithoutAnEventLoop) {
  ASSERT_EQ(port.SetPortOpen(true), "");
  QElapsedTimer clock;
  clock.start();
  EXPECT_FALSE(port.WaitForInput(150));  // blocks for its time, no spinning
  EXPECT_GE(clock.elapsed(), 100);

  pty.Write("ABC");
  EXPECT_TRUE(port.WaitForInput(2000));
  ASSERT_TRUE(WaitForCount(port, 3));
  port.SetInputLen(1);
  EXPECT_EQ(port.Input(), "A");
  EXPECT_EQ(port.InBufferCount(), 2);
  EXPECT_EQ(port.Input(), "B");
  EXPECT_EQ(port.Input(), "C");
  EXPECT_EQ(port.Input(), "");

  // Dropping the buffer covers what Qt holds and what the host still queues.
  port.SetInputLen(0);
  pty.Write("stale");
  ASSERT_TRUE(WaitForCount(port, 5));
  pty.Write("queued");
  usleep(100 * 1000);  // lands in the host's queue; the port is not asked
  port.SetInBufferCount(0);
  EXPECT_EQ(port.InBufferCount(), 0);
  EXPECT_FALSE(port.WaitForInput(100));

  pty.Write("0123456789");
  ASSERT_TRUE(WaitForCount(port, 10));
  EXPECT_EQ(port.Input(), "0123456789");
}

TEST_F(QtCommPortTest, RejectsBadValuesAndExplainsOpenFailures) {
  EXPECT_EQ(port.SetCommPort(0), "Invalid Port Number");
  EXPECT_EQ(port.SetCommPort(11), "Invalid Port Number");
  EXPECT_EQ(port.PortNumber(), 3);
  for (const char* bad :
       {"", "9600", "9600,N,8", "9600,N,8,1,1", "fast,N,8,1", "9600,X,8,1", "9600,NN,8,1",
        "9600,N,9,1", "9600,N,4,1", "9600,N,8,3", "9600,N,8,1.2", "-9600,N,8,1", "0,N,8,1"})
    EXPECT_EQ(port.SetSettings(bad), "Invalid property value") << bad;
  EXPECT_EQ(port.Settings(), "9600,N,8,1");
  EXPECT_EQ(port.SetSettings(" 4800 , s , 5 , 1.5 "), "");

  port.SetCommPort(5);
  EXPECT_EQ(port.SetPortOpen(true), "COM5 is not bound to a serial device");
  QTemporaryDir dir;
  const std::string missing = dir.filePath("ttyGone0").toStdString();
  table.Bind(6, missing);
  port.SetCommPort(6);
  const std::string why = port.SetPortOpen(true);
  EXPECT_EQ(why.rfind("Cannot open " + missing + ": No such file", 0), 0u) << why;

  // A device another port holds is busy.
  QtCommPort holder(table);
  holder.SetCommPort(3);
  ASSERT_EQ(holder.SetPortOpen(true), "");
  port.SetCommPort(3);
  const std::string busy = port.SetPortOpen(true);
  EXPECT_EQ(busy.rfind("Cannot open " + pty.path + ": the device is in use", 0), 0u) << busy;
  EXPECT_FALSE(port.PortOpen());

  // Bad text leaves an open line as it was.
  ASSERT_EQ(holder.SetSettings("2400,N,8,2"), "");
  EXPECT_EQ(holder.SetSettings("4800,Q,8,1"), "Invalid property value");
  const termios tio = pty.Line();
  EXPECT_EQ(cfgetospeed(&tio), B2400);
  EXPECT_TRUE(tio.c_cflag & CSTOPB);
  EXPECT_EQ(holder.Settings(), "2400,N,8,2");
}

TEST_F(QtCommPortTest, VanishedDeviceClosesThePortAndKeepsItsBytes) {
  ASSERT_EQ(port.SetPortOpen(true), "");
  pty.Write("last");
  ASSERT_TRUE(WaitForCount(port, 4));
  pty.Hangup();  // the adapter is pulled out
  EXPECT_EQ(port.InBufferCount(), 4);
  EXPECT_FALSE(port.PortOpen());
  EXPECT_EQ(port.Input(), "last");
  const std::string why = port.Output("x");
  EXPECT_EQ(why.rfind("COM3 (" + pty.path + ") is no longer available", 0), 0u) << why;
  EXPECT_EQ(port.SetPortOpen(false), "");
  EXPECT_EQ(port.Output("x"), "Operation valid only when the port is open");

  // A receive loop blocked on an idle line is woken by the hang-up.
  Pty other;
  table.Bind(4, other.path);
  port.SetCommPort(4);
  ASSERT_EQ(port.SetPortOpen(true), "");
  other.Hangup();
  QElapsedTimer clock;
  clock.start();
  EXPECT_FALSE(port.WaitForInput(3000));
  EXPECT_LT(clock.elapsed(), 2500);
  EXPECT_FALSE(port.PortOpen());
}

}  // namespace
}  // namespace amp
