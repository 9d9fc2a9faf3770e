// The one exchange path over serial and TCP, the socket's events and the
// socket close, against scripted parts.
#include <gtest/gtest.h>

#include "support/link_parts.h"

namespace amp {
namespace {

using namespace amp::test;

struct CommsFixture : ::testing::Test, LinkParts {
  void UseTcp() {
    comms.gUseEnet = true;
    sock.state = TcpSocket::sckConnected;
  }
};

TEST_F(CommsFixture, SerialExchange) {
  // The empty command sends nothing and succeeds with an empty reply.
  comms.Link.RxMessage = "stale";
  EXPECT_TRUE(comms.ExchangeCommand(""));
  EXPECT_TRUE(comms.Link.RxMessage.empty());
  EXPECT_TRUE(port.writes.empty());

  // Bytes left over from an earlier reply are dropped before sending.
  port.isOpen = true;
  port.Arrive("leftover");
  port.onWrite = [this](const std::string&) { port.Arrive(Reply("\006A1@A\003"), 30); };
  EXPECT_TRUE(comms.ExchangeCommand("1"));
  EXPECT_EQ(port.clears, 1);
  EXPECT_EQ(comms.Link.RxMessage, Reply("\006A1@A\003"));

  // A refused command fails silently unless the caller asks for the box.
  port.onWrite = [this](const std::string&) { port.Arrive(Reply("\025AK\003")); };
  EXPECT_FALSE(comms.ExchangeCommand("K99"));
  EXPECT_TRUE(dialogs.boxes.empty());
  EXPECT_FALSE(comms.ExchangeCommand("K99", true));
  ASSERT_EQ(dialogs.boxes.size(), 1u);
  EXPECT_EQ(dialogs.boxes[0].title, "Communication Error");
  EXPECT_EQ(dialogs.boxes[0].text, "Command Not Acknowledged");
  EXPECT_EQ(dialogs.boxes[0].icon, MsgIcon::Exclamation);

  // No reply at all: False after the time-out, the reply left empty.
  port.onWrite = nullptr;
  EXPECT_FALSE(comms.ExchangeCommand("1"));
  EXPECT_TRUE(comms.Link.RxMessage.empty());
}

TEST_F(CommsFixture, TcpFrameAndReply) {
  UseTcp();
  sock.onSend = [this](const std::string&) { sock.Deliver(Reply("\006A1@A\003") + "\r\n", 5); };
  EXPECT_TRUE(comms.ExchangeCommand("?!#("));
  ASSERT_EQ(sock.sent.size(), 1u);
  EXPECT_EQ(sock.sent[0], std::string("\x02\x41\x3F\x21\x23\x28\x03\x4D\x0D\x0A", 10));
  // The reply is kept through its CR; the LF in the same piece is dropped.
  EXPECT_EQ(comms.Link.RxMessage, Reply("\006A1@A\003") + "\r");
  EXPECT_TRUE(comms.mTcpRxBuffer.empty());
  EXPECT_TRUE(comms.gTcpReply.empty());

  // Neither checksum nor address is judged on TCP: only the first byte.
  sock.onSend = [this](const std::string&) { sock.Deliver("\006Zjunk\003\177\r", 1); };
  EXPECT_TRUE(comms.ExchangeCommand("1"));
  sock.onSend = [this](const std::string&) { sock.Deliver(Reply("\025A1\003") + "\r", 1); };
  EXPECT_FALSE(comms.ExchangeCommand("1"));
  EXPECT_EQ(comms.Link.RxMessage[0], NAK);  // the refusal stays readable
}

TEST_F(CommsFixture, TcpReplySplitAcrossSegmentsAndStrayLf) {
  UseTcp();
  const std::string frame = Reply("\006A1@A\003");
  sock.onSend = [&](const std::string&) {
    sock.Deliver(frame.substr(0, 3), 2);
    sock.Deliver(frame.substr(3) + "\r", 10);
    sock.Deliver("\n", 20);  // the LF comes on its own
  };
  EXPECT_TRUE(comms.ExchangeCommand("1"));
  EXPECT_EQ(comms.Link.RxMessage, frame + "\r");
  pump.Sleep(50);
  pump.DoEvents();
  EXPECT_EQ(comms.mTcpRxBuffer, "\n");

  // The stray LF becomes the first byte of the next reply, which then fails.
  sock.onSend = [&](const std::string&) { sock.Deliver(frame + "\r\n", 2); };
  EXPECT_FALSE(comms.ExchangeCommand("1"));
  EXPECT_EQ(comms.Link.RxMessage, "\n" + frame + "\r");
  // A checksum byte that happens to be CR ends the reply there.
  std::string body = "\006A";
  body += static_cast<char>(0x06 ^ 0x41 ^ 0x03 ^ 0x0D);  // body byte chosen so the checksum is CR
  body += "\x03";
  ASSERT_EQ(XorChecksum(body), 0x0D);
  sock.onSend = [&](const std::string&) { sock.Deliver(body + "\r" + "\r\n", 2); };
  EXPECT_TRUE(comms.ExchangeCommand("1"));
  EXPECT_EQ(comms.Link.RxMessage, body + "\r");
}

TEST_F(CommsFixture, BabblingPeerCannotFillMemory) {
  UseTcp();
  // Text that never ends in CR: the buffer keeps at most one frame's worth.
  for (int i = 0; i < 40; ++i) {
    sock.Deliver(std::string(1000, 'x'), 0);
    pump.DoEvents();
  }
  EXPECT_LE(comms.mTcpRxBuffer.size(), static_cast<size_t>(AmpLink::kMaxFrame));
  EXPECT_GE(comms.mTcpRxBuffer.size(), 16000u);  // the latest bytes stay
  // Replies that arrive while no exchange waits do not pile up without end.
  for (int i = 0; i < 40; ++i) {
    sock.Deliver(std::string(999, 'y') + "\r", 0);
    pump.DoEvents();
  }
  EXPECT_LE(comms.gTcpReply.size(), 2u * AmpLink::kMaxFrame);
  // The next exchange forgets all of it and takes its own reply.
  sock.onSend = [this](const std::string&) { sock.Deliver(Reply("\006A1@A\003") + "\r\n", 2); };
  EXPECT_TRUE(comms.ExchangeCommand("1"));
  EXPECT_EQ(comms.Link.RxMessage, Reply("\006A1@A\003") + "\r");
}

TEST_F(CommsFixture, TcpTimeoutAndLateReply) {
  UseTcp();
  const std::string late = Reply("\006Alate\003") + "\r\n";
  sock.onSend = [&](const std::string&) { sock.Deliver(late, 16000); };
  const int64_t t0 = clock.now;
  EXPECT_FALSE(comms.ExchangeCommand("1"));
  EXPECT_GE(clock.now - t0, 15000);
  EXPECT_LT(clock.now - t0, 15200);
  EXPECT_TRUE(comms.Link.RxMessage.empty());
  EXPECT_EQ(sock.state, TcpSocket::sckConnected);  // a time-out does not end the session
  EXPECT_TRUE(panel.log.empty());

  // The late reply arrives during the next exchange and is taken as its reply.
  sock.onSend = nullptr;
  EXPECT_TRUE(comms.ExchangeCommand("2"));
  EXPECT_EQ(comms.Link.RxMessage, late.substr(0, late.size() - 1));
}

TEST_F(CommsFixture, DeadSocketEndsSessionWithoutBox) {
  comms.gUseEnet = true;
  timer.enabled = true;
  for (int state : {TcpSocket::sckClosed, TcpSocket::sckClosing, TcpSocket::sckError}) {
    panel.log.clear();
    sock.state = state;
    timer.enabled = true;
    EXPECT_FALSE(comms.ExchangeCommand("1")) << state;
    EXPECT_FALSE(timer.enabled);
    EXPECT_TRUE(panel.Saw("ClearForm"));
    EXPECT_TRUE(panel.Saw("DisableForm"));
    EXPECT_EQ(panel.caption, "Connect");
    EXPECT_EQ(sock.state, TcpSocket::sckClosed);
  }
  EXPECT_TRUE(dialogs.boxes.empty());
  EXPECT_TRUE(sock.sent.empty());

  // A socket still connecting: nothing happens and the exchange fails.
  panel.log.clear();
  sock.state = TcpSocket::sckConnecting;
  timer.enabled = true;
  EXPECT_FALSE(comms.ExchangeCommand("1"));
  EXPECT_TRUE(timer.enabled);
  EXPECT_TRUE(panel.log.empty());
}

TEST_F(CommsFixture, CloseSocketWaitsAtMostThreeSeconds) {
  sock.state = TcpSocket::sckConnected;
  EXPECT_TRUE(comms.CloseSocket());
  sock.state = TcpSocket::sckConnected;
  sock.closeLeavesClosing = true;  // a socket that never reaches closed
  const int64_t t0 = clock.now;
  EXPECT_FALSE(comms.CloseSocket());
  EXPECT_GE(clock.now - t0, 3000);
  EXPECT_LT(clock.now - t0, 3100);
  // It reaches closed a little later.
  sock.state = TcpSocket::sckConnected;
  pump.After(200, [&] { sock.state = TcpSocket::sckClosed; });
  EXPECT_TRUE(comms.CloseSocket());
}

TEST_F(CommsFixture, SocketEvents) {
  // Error: the four-line box, then the session ends.
  comms.gFirstReadPending = comms.gFirstReadDone = true;
  timer.enabled = true;
  sock.state = TcpSocket::sckConnected;
  sock.FireError(10054, "Connection is reset by remote side");
  ASSERT_EQ(dialogs.boxes.size(), 1u);
  EXPECT_EQ(dialogs.boxes[0].title, "TCP/IP Socket Error");
  EXPECT_EQ(dialogs.boxes[0].text,
            "Error No.: 10054\r\nDescr: Connection is reset by remote side\r\nScode: 0\r\nSource: "
            "TcpSocket\r\n");
  EXPECT_FALSE(timer.enabled);
  EXPECT_EQ(sock.closes, 1);
  EXPECT_EQ(panel.caption, "Connect");
  EXPECT_TRUE(panel.Saw("enable:btnConnect"));
  EXPECT_TRUE(panel.Saw("enable:mnuConnect"));
  EXPECT_FALSE(comms.gFirstReadPending);
  EXPECT_FALSE(comms.gFirstReadDone);

  // Connect: the first read runs at once, then the timer starts.
  panel.log.clear();
  comms.gUseEnet = true;
  panel.onFirstTimeRead = [this] { comms.gFirstReadDone = true; };
  sock.FireConnect();
  EXPECT_TRUE(panel.Saw("FirstTimeRead"));
  EXPECT_EQ(panel.caption, "Disconnect");
  EXPECT_TRUE(timer.enabled);
  EXPECT_FALSE(comms.gFirstReadPending);
  EXPECT_TRUE(panel.Saw("disable:mnuConnect"));
  EXPECT_TRUE(panel.Saw("disable:mnuAdvSrch"));
  EXPECT_TRUE(panel.Saw("enable:mnuAtnCal"));
  EXPECT_TRUE(panel.Saw("EnableForm"));

  // A connect event while the session runs over serial does nothing.
  panel.log.clear();
  comms.gUseEnet = false;
  timer.enabled = false;
  sock.FireConnect();
  EXPECT_TRUE(panel.log.empty());
  EXPECT_FALSE(timer.enabled);

  // A connection request is accepted on the closed socket.
  sock.FireConnectionRequest(42);
  EXPECT_EQ(sock.accepted, 42);
}

}  // namespace
}  // namespace amp
