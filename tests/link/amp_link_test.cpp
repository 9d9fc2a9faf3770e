// The serial frame layer against a scripted port: bytes on the wire, the
// receive state machine, port opening and the link's settings.
#include <gtest/gtest.h>

#include "basic/checksum.h"
#include "link/amp_link.h"
#include "support/fakes.h"

namespace amp {
namespace {

using test::FakeClock;
using test::FakeCommPort;
using test::FakeEventPump;

// A unit's reply with its XOR checksum appended.
std::string Reply(std::string frame) {
  frame += static_cast<char>(XorChecksum(frame));
  return frame;
}

struct LinkFixture : ::testing::Test {
  FakeClock clock;
  FakeEventPump pump{clock};
  FakeCommPort port{clock};
  AmpLink link{clock, pump};

  void SetUp() override {
    link.SetCommControl(&port);
    link.SetDeviceAddress("A");
    link.SetCommSettings("9600,N,8,1");
  }
};

TEST_F(LinkFixture, SendBuildsByteExactFrames) {
  link.send(2, "1", "");
  EXPECT_EQ(port.writes.back(), std::string("\x02\x41\x31\x03\x71", 5));
  EXPECT_EQ(link.TxMessage, port.writes.back());

  link.send(2, "?!#(", "");
  EXPECT_EQ(port.writes.back(), std::string("\x02\x41\x3F\x21\x23\x28\x03\x55", 8));

  // A new address is taken before framing and kept for later frames.
  link.send(2, "1", "C");
  EXPECT_EQ(link.DeviceAddress(), "C");
  EXPECT_EQ(port.writes.back(), std::string("\x02\x43\x31\x03\x73", 5));
}

TEST_F(LinkFixture, PortOpensLazilyOnceWithPrimingPair) {
  EXPECT_FALSE(port.isOpen);
  link.send(2, "1", "");
  link.send(2, "1", "");
  ASSERT_EQ(port.writes.size(), 3u);
  EXPECT_EQ(port.writes[0], "\r\n");  // the priming pair, only on opening
  EXPECT_EQ(port.commPort, 1);
  EXPECT_EQ(port.settings, "9600,N,8,1");
  const std::vector<std::string> order = {"CommPort=1", "Settings=9600,N,8,1", "RTSEnable=1",
                                          "PortOpen=1"};
  EXPECT_EQ(std::vector<std::string>(port.calls.begin(), port.calls.begin() + 4), order);
  EXPECT_GE(clock.now, 1050);  // waited 50 ms after priming
  EXPECT_EQ(port.inputLen, 0);
}

TEST_F(LinkFixture, PortTroubleIsErrorNine) {
  // The device cannot be opened: the host's text stands in entry 9, nothing is sent.
  port.openError = "Cannot open /dev/ttyUSB0: No such file or directory";
  link.send(2, "1", "");
  EXPECT_EQ(link.ErrNumber(), 9);
  EXPECT_EQ(link.ErrString(), port.openError);
  EXPECT_TRUE(port.writes.empty());
  // Receive on a port that cannot be opened reports success with no reply.
  link.RxMessage = "old";
  EXPECT_EQ(link.Receive(), 0);
  EXPECT_EQ(link.RxMessage, "old");
  EXPECT_EQ(link.ErrNumber(), 9);

  AmpLink unset{clock, pump};
  unset.send(2, "1", "");
  EXPECT_EQ(unset.ErrNumber(), 9);
  EXPECT_EQ(unset.ErrString(), "Com Port Not Set");
}

TEST_F(LinkFixture, SettingsAndPortNumber) {
  EXPECT_EQ(link.PortNumber(), 1);
  EXPECT_TRUE(link.SetPortNumber(3));
  EXPECT_TRUE(port.isOpen);  // a new port number opens the port at once
  EXPECT_EQ(port.commPort, 3);
  EXPECT_FALSE(link.SetPortNumber(11));
  EXPECT_FALSE(link.SetPortNumber(0));
  EXPECT_EQ(link.PortNumber(), 3);
  EXPECT_EQ(link.ErrNumber(), 9);
  EXPECT_EQ(link.ErrString(), "Invalid Port Number");

  // Settings go to an open port at once, without closing it.
  link.SetCommSettings("19200,E,7,1");
  EXPECT_EQ(port.settings, "19200,E,7,1");
  EXPECT_TRUE(port.isOpen);

  EXPECT_FLOAT_EQ(link.MsgTimeout(), 5.0f);
  link.SetMsgTimeout(0.6f);
  EXPECT_FLOAT_EQ(link.MsgTimeout(), 0.6f);
  link.SetMsgTimeout(32767.0f);
  EXPECT_FLOAT_EQ(link.MsgTimeout(), 0.6f);

  link.SetDeviceAddress("XYZ");
  EXPECT_EQ(link.DeviceAddress(), "X");
  EXPECT_EQ(AmpLink(clock, pump).DeviceAddress(), "@");
}

TEST_F(LinkFixture, ReceiveFramesAndDropsNoise) {
  link.send(2, "1", "");
  // Text before the start byte is dropped.
  port.Arrive("junk" + Reply("\006A1AB\003"));
  EXPECT_EQ(link.Receive(), 0);
  EXPECT_EQ(link.RxMessage, Reply("\006A1AB\003"));

  // Two start bytes: the frame restarts at the second.
  port.Arrive("\002A12" + Reply("\006A1AB\003"));
  EXPECT_EQ(link.Receive(), 0);
  EXPECT_EQ(link.RxMessage, Reply("\006A1AB\003"));

  // `{` inside an STX frame is body text.
  port.Arrive(Reply("\002Ax{y\003"));
  EXPECT_EQ(link.Receive(), 0);
  EXPECT_EQ(link.RxMessage.substr(2, 3), "x{y");

  // `{` inside an ACK frame restarts it as a printable frame.
  std::string printable = "{Az}";
  printable += static_cast<char>(PrintableChecksum(printable));
  port.Arrive("\006Axx" + printable);
  EXPECT_EQ(link.Receive(), 0);
  EXPECT_EQ(link.RxMessage, printable);

  // `}` ends an STX frame just as ETX does; the next byte is taken as checksum.
  port.Arrive("\002Aa}bc\003");
  EXPECT_EQ(link.Receive(), 2);
  EXPECT_EQ(link.RxMessage, "\002Aa}b");
  port.SetInBufferCount(0);

  // An ACK frame checks with XOR even from a unit in printable mode: the
  // printable sum of 06 41 7A 7D is '!', their XOR is '@'.
  port.Arrive("\006Az}!");
  EXPECT_EQ(link.Receive(), 2);
  port.Arrive("\006Az}@");
  EXPECT_EQ(link.Receive(), 0);
}

TEST_F(LinkFixture, ReceiveErrors) {
  link.send(2, "1", "");
  // NAK with a good checksum is "Command Not Acknowledged".
  port.Arrive(Reply("\025A1\003"));
  EXPECT_EQ(link.Receive(), 6);
  EXPECT_EQ(link.ErrString(), "Command Not Acknowledged");
  // NAK with a bad checksum reports the checksum: the NAK test runs only on error 0.
  port.Arrive(std::string("\025A1\003") + "\x7f");
  EXPECT_EQ(link.Receive(), 2);
  EXPECT_EQ(link.ErrString(), "Checksum Error");

  // Address check only when asked for.
  port.Arrive(Reply("\006B1\003"));
  EXPECT_EQ(link.Receive(), 1);
  EXPECT_EQ(link.ErrString(), "Bad Address");
  link.SetCheckAddress(false);
  port.Arrive(Reply("\006B1\003"));
  EXPECT_EQ(link.Receive(), 0);

  // Time-outs: nothing at all, or a frame that stops short.
  link.SetMsgTimeout(2.0f);
  const int64_t t0 = clock.now;
  EXPECT_EQ(link.Receive(), 8);
  EXPECT_EQ(link.ErrString(), "No Response");
  EXPECT_GE(clock.now - t0, 2000);
  EXPECT_LE(clock.now - t0, 2002);
  port.Arrive("\006A1");
  EXPECT_EQ(link.Receive(), 7);
  EXPECT_EQ(link.ErrString(), "Incomplete Response");
  EXPECT_EQ(link.RxMessage, "\006A1");
}

TEST_F(LinkFixture, TimeoutStillConsumesOneWaitingByte) {
  link.send(2, "1", "");
  link.SetMsgTimeout(1.0f);
  // The frame's start comes at once, the rest just after the deadline.
  port.Arrive("\006A");
  port.Arrive("12\x03", 1001);
  EXPECT_EQ(link.Receive(), 7);
  EXPECT_EQ(link.RxMessage,
            "\006A1");  // exactly one late byte was taken
  EXPECT_EQ(port.InBufferCount(), 2);

  // A checksum byte read in the timed-out pass clears the time-out error.
  port.SetInBufferCount(0);
  std::string frame = Reply("\006A1\003");
  port.Arrive(frame.substr(0, 4));
  port.Arrive(frame.substr(4), 1001);
  EXPECT_EQ(link.Receive(), 0);
  EXPECT_EQ(link.RxMessage, frame);
}

TEST_F(LinkFixture, HugeResponseLimit) {
  link.send(2, "1", "");
  // 16384 characters in all pass (ACK, address, 16380 of body, ETX, checksum).
  port.Arrive(Reply("\006A" + std::string(16380, 'x') + "\x03"));
  EXPECT_EQ(link.Receive(), 0);
  EXPECT_EQ(link.RxMessage.size(), 16384u);

  port.Arrive("\006A" + std::string(16382, 'y') + "zz");
  EXPECT_EQ(link.Receive(), 4);
  EXPECT_EQ(link.ErrString(), "Huge Response");
  EXPECT_EQ(link.RxMessage.size(), 16385u);
  EXPECT_EQ(port.InBufferCount(), 1);  // reading stopped right there
}

TEST_F(LinkFixture, ClearDropsPendingBytesAndWaitsDoNotSpin) {
  link.send(2, "1", "");
  port.Arrive("stale");
  link.Clear();
  EXPECT_EQ(port.InBufferCount(), 0);
  link.SetMsgTimeout(2.0f);
  EXPECT_EQ(link.Receive(), 8);
  // The receive loop blocked in the port instead of polling it in a tight loop.
  EXPECT_LE(port.waits, 5);
}

}  // namespace
}  // namespace amp
