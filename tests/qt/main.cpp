// Qt's sockets, timers and serial ports need a QCoreApplication on the test
// thread, so these tests bring their own main.
#include <gtest/gtest.h>

#include <QCoreApplication>

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  // A unit search started by any test stays on this machine.
  qputenv("AMPDESK_UDP_TARGET", "127.0.0.1");
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
