// QtTcpSocket against a QTcpServer on the loopback interface.
#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>

#include <gtest/gtest.h>

#include "qt/qt_tcp_socket.h"
#include "qt_test_support.h"

namespace amp {
namespace {

using test::PumpUntil;

// Records the events in order; `inside` is set around calls into the socket,
// and an event seen then was delivered re-entrantly.
struct Recorder {
  std::string log, data;
  int errors = 0, lastError = 0, reentered = 0;
  std::string lastDescription, lastSource;
  long lastScode = 0, lastTotal = 0;
  bool inside = false, takeData = true;

  explicit Recorder(QtTcpSocket& s) {
    auto note = [this](char what) {
      reentered += inside;
      log += what;
    };
    TcpSocket::Events e;
    e.Connect = [note] { note('C'); };
    e.DataArrival = [this, note, &s](long total) {
      note('D');
      lastTotal = total;
      if (takeData) data += s.GetData();
    };
    e.Error = [this, note](int number, const std::string& description, long scode,
                           const std::string& source) {
      note('E');
      ++errors, lastError = number, lastDescription = description, lastScode = scode,
                lastSource = source;
    };
    e.Close = [note] { note('X'); };
    s.SetEvents(e);
  }
};

struct Server {
  QTcpServer server;
  QTcpSocket* peer = nullptr;
  Server() { EXPECT_TRUE(server.listen(QHostAddress::LocalHost, 0)); }
  bool Accept() {
    if (!PumpUntil([&] { return server.hasPendingConnections(); })) return false;
    return (peer = server.nextPendingConnection()) != nullptr;
  }
  std::string Receive(size_t count) {
    std::string got;
    PumpUntil([&] { return got.append(peer->readAll().toStdString()).size() >= count; });
    return got;
  }
};

void ConnectTo(QtTcpSocket& s, int port) {
  s.SetRemoteHost("127.0.0.1");
  s.SetRemotePort(port);
  s.Connect();
}

TEST(QtTcpSocket, ConnectsCarriesDataAndSeesThePeerClose) {
  Server server;
  QtTcpSocket s;
  Recorder rec(s);
  EXPECT_EQ(s.State(), TcpSocket::sckClosed);
  ConnectTo(s, server.server.serverPort());
  EXPECT_NE(s.State(), TcpSocket::sckClosed);
  ASSERT_TRUE(PumpUntil([&] { return rec.log == "C"; }));
  EXPECT_EQ(s.State(), TcpSocket::sckConnected);
  ASSERT_TRUE(server.Accept());

  server.peer->write("hello");
  server.peer->flush();
  ASSERT_TRUE(PumpUntil([&] { return rec.data.size() >= 5; }));
  EXPECT_EQ(rec.data, "hello");
  EXPECT_EQ(rec.lastTotal, 5);

  // A large block arrives whole, flushed from the event loop.
  std::string block(300000, 'a');
  for (size_t i = 0; i < block.size(); ++i) block[i] = static_cast<char>('a' + i % 26);
  rec.inside = true;
  s.SendData("ping\r");
  s.SendData(block);
  EXPECT_EQ(s.GetData(), "");
  rec.inside = false;
  EXPECT_EQ(server.Receive(block.size() + 5), "ping\r" + block);

  // What the peer sent before closing waits for GetData after the close.
  rec.takeData = false;
  server.peer->write("bye");
  server.peer->disconnectFromHost();
  ASSERT_TRUE(PumpUntil([&] { return rec.log.find('X') != std::string::npos; }));
  EXPECT_EQ(rec.log, "CDDX");
  EXPECT_EQ(rec.lastTotal, 3);
  EXPECT_EQ(s.State(), TcpSocket::sckClosing);
  rec.inside = true;
  EXPECT_EQ(s.GetData(), "bye");
  s.Close();
  rec.inside = false;
  EXPECT_EQ(s.State(), TcpSocket::sckClosed);
  PumpUntil([] { return false; }, 100);
  EXPECT_EQ(rec.log, "CDDX");
  EXPECT_EQ(rec.errors, 0);
  EXPECT_EQ(rec.reentered, 0);
}

TEST(QtTcpSocket, RefusedConnectionIsAnErrorStateUntilClose) {
  int freed = 0;
  {
    QTcpServer probe;
    ASSERT_TRUE(probe.listen(QHostAddress::LocalHost, 0));
    freed = probe.serverPort();
  }
  QtTcpSocket s;
  Recorder rec(s);
  ConnectTo(s, freed);
  ASSERT_TRUE(PumpUntil([&] { return rec.errors > 0; }));
  EXPECT_EQ(rec.log, "E");
  EXPECT_EQ(rec.lastError, 10061);
  EXPECT_EQ(rec.lastDescription, "Connection is forcefully rejected");
  EXPECT_EQ(rec.lastSource, "TcpSocket");
  EXPECT_LT(rec.lastScode, 0);  // an HRESULT failure code
  EXPECT_EQ(s.State(), TcpSocket::sckError);

  rec.inside = true;
  s.Close();
  EXPECT_EQ(s.State(), TcpSocket::sckClosed);
  s.SendData("x");  // without a connection: reported, not silently lost
  rec.inside = false;
  ASSERT_TRUE(PumpUntil([&] { return rec.errors == 2; }));
  EXPECT_EQ(rec.lastError, 40006);

  s.SetRemoteHost("");  // no host at all fails without a lookup
  s.Connect();
  ASSERT_TRUE(PumpUntil([&] { return rec.errors == 3; }));
  EXPECT_EQ(rec.lastError, 11001);
  EXPECT_EQ(rec.reentered, 0);
}

// The error handler of the panel closes the socket from inside the event.
TEST(QtTcpSocket, AHandlerMayCloseTheSocketFromInsideAnEvent) {
  Server server;
  QtTcpSocket s;
  TcpSocket::Events events;
  events.DataArrival = [&](long) { s.Close(); };
  s.SetEvents(events);
  ConnectTo(s, server.server.serverPort());
  ASSERT_TRUE(server.Accept());
  server.peer->write("x");
  server.peer->flush();
  ASSERT_TRUE(PumpUntil([&] { return s.State() == TcpSocket::sckClosed; }));
  PumpUntil([] { return false; }, 100);  // what was queued for it is dropped
}

}  // namespace
}  // namespace amp
