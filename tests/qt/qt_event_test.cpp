// The event pump and the repeating timer on a real Qt event loop.
#include <QElapsedTimer>
#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <memory>

#include <gtest/gtest.h>

#include "qt/qt_timer.h"
#include "qt_test_support.h"

namespace amp {
namespace {

using test::PumpUntil;

TEST(QtEventPump, WaitForEventsWakesOnDataAndOtherwiseBlocks) {
  QtEventPump pump;
  QTcpServer server;
  ASSERT_TRUE(server.listen(QHostAddress::LocalHost, 0));
  QTcpSocket client;
  client.connectToHost(QHostAddress::LocalHost, server.serverPort());
  ASSERT_TRUE(PumpUntil([&] {
    return client.state() == QAbstractSocket::ConnectedState && server.hasPendingConnections();
  }));
  QTcpSocket* peer = server.nextPendingConnection();
  for (int i = 0; i < 5; ++i) pump.DoEvents();

  // Idle: each call blocks for its time instead of returning at once.
  QElapsedTimer clock;
  clock.start();
  int calls = 0;
  for (; clock.elapsed() < 400 && calls < 1000; ++calls) pump.WaitForEvents(100);
  EXPECT_LE(calls, 12) << "WaitForEvents returned early without events";

  // Data on a socket ends the wait long before its limit.
  peer->write("x");
  peer->flush();
  clock.restart();
  for (int i = 0; i < 5 && client.bytesAvailable() == 0; ++i) pump.WaitForEvents(3000);
  EXPECT_EQ(client.bytesAvailable(), 1);
  EXPECT_LT(clock.elapsed(), 2500);
}

TEST(QtTimer, TicksRepeatedlyAndDropsTicksDueInsideItsHandler) {
  QtTimer timer;
  int ticks = 0, depth = 0, maxDepth = 0;
  timer.SetHandler([&] {
    maxDepth = std::max(maxDepth, ++depth);
    if (++ticks == 1) PumpUntil([] { return false; }, 200);  // waits across several periods
    --depth;
  });
  timer.SetInterval(20);
  PumpUntil([] { return false; }, 60);
  EXPECT_EQ(ticks, 0);  // not enabled yet

  timer.SetEnabled(true);
  ASSERT_TRUE(PumpUntil([&] { return ticks >= 3; }));
  EXPECT_EQ(maxDepth, 1);

  timer.SetEnabled(false);
  PumpUntil([] { return false; }, 20);  // a tick already queued may still land
  const int stopped = ticks;
  PumpUntil([] { return false; }, 100);
  EXPECT_EQ(ticks, stopped);

  timer.SetInterval(0);  // keeps an enabled timer silent
  timer.SetEnabled(true);
  PumpUntil([] { return false; }, 100);
  EXPECT_EQ(ticks, stopped);

  // A handler may destroy its own timer.
  auto owned = std::make_unique<QtTimer>();
  owned->SetHandler([&] { owned.reset(); });
  owned->SetInterval(10);
  owned->SetEnabled(true);
  ASSERT_TRUE(PumpUntil([&] { return owned == nullptr; }));
  PumpUntil([] { return false; }, 50);
}

}  // namespace
}  // namespace amp
