// The link layer on the real host parts (QSerialPort on a pseudo-terminal,
// QTcpSocket on loopback) against the simulated unit, with its faults. Missed
// polls are the poll tests'; line settings and a vanishing device the Qt port
// tests'; the unit that goes away is the unplug test's.
#include <gtest/gtest.h>

#include <QElapsedTimer>

#include "e2e/profile_host.h"

namespace amp {
namespace {

using sim::Simulator;

// A unit of the simulator's own defaults, answered with half a second's
// patience and without checking the address of the replies.
struct Session : test::ProfileHost {
  explicit Session(bool serial, const sim::UnitState& unit = {})
      : ProfileHost(WithUnit(Options("", serial), unit)) {
    comms.Link.SetCheckAddress(false);
    comms.Link.SetMsgTimeout(0.5f);
  }
  void UseSerial(const std::string& settings = "9600,N,8,1") { Connect(true, 'A', settings); }
  bool UseTcp() { return Connect(false, 'A'); }
  static sim::Simulator::Options WithUnit(sim::Simulator::Options o, const sim::UnitState& unit) {
    o.unit = unit;
    return o;
  }
};
constexpr bool kSerial = true, kTcp = false;

TEST(SerialEndToEnd, ExchangesThroughPseudoTerminal) {
  sim::UnitState unit;  // status groups "Q@@A", "@B@@", "@@@D"
  unit.summary = {0x11, 0, 0, 0x01};
  unit.fault = {0, 0x02, 0, 0};
  unit.alarm = {0, 0, 0, 0x04};
  Session s(kSerial, unit);
  ASSERT_TRUE(s.started);
  s.UseSerial();
  ASSERT_TRUE(s.comms.ExchangeCommand("1"));
  EXPECT_EQ(s.comms.Link.TxMessage, std::string("\x02\x41\x31\x03\x71", 5));
  EXPECT_EQ(s.comms.Link.RxMessage.substr(0, 3),
            "\x06"
            "A1");
  EXPECT_EQ(s.comms.Link.RxMessage.size(), 7u);

  ASSERT_TRUE(s.comms.ReadStatusBlock());
  EXPECT_EQ(s.comms.gRespFields[0], "Q@@A");
  EXPECT_EQ(s.comms.gRespFields[1], "@B@@");
  EXPECT_EQ(s.comms.gRespFields[2], "@@@D");
  // An unknown command is refused by the unit.
  EXPECT_FALSE(s.comms.ExchangeCommand("ZZZ9"));
  EXPECT_EQ(s.comms.Link.ErrNumber(), AmpLink::NotAcknowledged);
  // The unit saw exactly the frames sent, the priming pair not among them.
  const std::vector<std::string> seen = {"1", "?!#(", "ZZZ9"};
  EXPECT_EQ(s.unit.ReceivedFrames(), seen);
}

TEST(SerialEndToEnd, FaultsGiveTheirErrorNumbers) {
  Session s(kSerial);
  ASSERT_TRUE(s.started);
  s.UseSerial();
  Simulator::Faults f;
  f.badChecksumEvery = 1;
  s.unit.SetFaults(f);
  EXPECT_FALSE(s.comms.ExchangeCommand("1"));
  EXPECT_EQ(s.comms.Link.ErrString(), "Checksum Error");

  f = {};
  f.prefix = "noise\r\n";
  s.unit.SetFaults(f);
  EXPECT_TRUE(s.comms.ExchangeCommand("1"));  // text before the start byte is dropped

  f = {};
  f.nakEvery = 1;
  s.unit.SetFaults(f);
  s.dialogs.Expect("Command Not Acknowledged");
  EXPECT_FALSE(s.comms.ExchangeCommand("1", true));

  f = {};
  f.dropEvery = 1;
  s.unit.SetFaults(f);
  QElapsedTimer t;
  t.start();
  EXPECT_FALSE(s.comms.ExchangeCommand("1"));
  EXPECT_EQ(s.comms.Link.ErrNumber(), AmpLink::NoResponse);
  EXPECT_GE(t.elapsed(), 480);
  EXPECT_LT(t.elapsed(), 1500);

  // A babbling line never makes a good frame and never hangs the exchange.
  f = {};
  f.babble = true;
  f.dropEvery = 1;
  s.unit.SetFaults(f);
  t.restart();
  EXPECT_FALSE(s.comms.ExchangeCommand("1"));
  EXPECT_LT(t.elapsed(), 1500);
}

TEST(TcpEndToEnd, ExchangeSplitRepliesAndStrayLf) {
  Session s(kTcp);
  ASSERT_TRUE(s.started);
  ASSERT_TRUE(s.UseTcp());
  ASSERT_TRUE(s.comms.ExchangeCommand("?!#("));
  EXPECT_EQ(s.comms.Link.TxMessage, std::string("\x02\x41\x3F\x21\x23\x28\x03\x4D\x0D\x0A", 10));
  EXPECT_EQ(s.comms.Link.RxMessage.back(), '\r');
  EXPECT_EQ(s.comms.Link.RxMessage.substr(0, 3),
            "\x06"
            "A?");

  // A reply in two segments is joined.
  Simulator::Faults f;
  f.splitMs = 60;
  s.unit.SetFaults(f);
  ASSERT_TRUE(s.comms.ExchangeCommand("1"));
  EXPECT_EQ(s.comms.Link.RxMessage.size(), 8u);  // ACK A 1 c1 c2 ETX checksum CR

  // An LF that comes on its own stays behind and spoils the next reply.
  f = {};
  f.lfSeparate = true;
  s.unit.SetFaults(f);
  ASSERT_TRUE(s.comms.ExchangeCommand("1"));
  ASSERT_TRUE(test::PumpUntil([&] { return s.comms.mTcpRxBuffer == "\n"; }, 2000));
  s.unit.SetFaults({});
  EXPECT_FALSE(s.comms.ExchangeCommand("1"));
  EXPECT_EQ(s.comms.Link.RxMessage[0], '\n');
  EXPECT_TRUE(s.comms.ExchangeCommand("1"));  // and the line is clean again
}

}  // namespace
}  // namespace amp
