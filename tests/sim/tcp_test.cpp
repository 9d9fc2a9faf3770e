// The simulated unit over TCP, seen from the host's side of a socket.
#include <gtest/gtest.h>
#include <unistd.h>

#include <memory>

#include "host_side.h"
#include "sim/simulator.h"

using amp::sim::Simulator;
using namespace simtest;

namespace {

constexpr int kReplyWaitMs = 2000;  // generous: the machine is shared
constexpr int kSilenceMs = 200;     // how long "no answer" is watched for

const std::string kCrLf = "\r\n";

class TcpUnit : public ::testing::Test {
 protected:
  void StartSim(Simulator::Options o = {}) {
    o.tcpPort = 0;
    sim_ = std::make_unique<Simulator>(std::move(o));
    std::string error;
    ASSERT_TRUE(sim_->Start(&error)) << error;
    ASSERT_GT(sim_->TcpPort(), 0);
    conn_ = ConnectTcp(sim_->TcpPort());
    ASSERT_TRUE(conn_.valid());
  }
  void TearDown() override {
    if (sim_) sim_->Stop();
  }

  bool Send(std::string_view bytes) { return SendAll(conn_.get(), bytes); }
  // Sends one command and returns the reply through its CR LF.
  std::string Ask(std::string_view text, char address = 'A') {
    if (!Send(TcpFrame(address, text))) return "<send failed>";
    return ReadUntil(conn_.get(), kCrLf, kReplyWaitMs);
  }
  std::string Ack(std::string_view body) { return ExpectedReply(true, 'A', body) + kCrLf; }
  std::string Nak(std::string_view body) { return ExpectedReply(false, 'A', body) + kCrLf; }

  std::unique_ptr<Simulator> sim_;
  Fd conn_;
};

TEST_F(TcpUnit, RepliesAreByteExact) {
  StartSim();
  EXPECT_EQ(Ask("1"), Bytes({0x06, 0x41, 0x31, 0x41, 0x41, 0x03, 0x75, 0x0D, 0x0A}));
  // The documented status reply: ACK, A, '?', P and eleven '@', ETX, 6B.
  std::string status = Bytes({0x06, 0x41, 0x3F, 0x50});
  status += std::string(11, 0x40) + Bytes({0x03, 0x6B}) + kCrLf;
  EXPECT_EQ(Ask("?!#("), status);
  EXPECT_EQ(Ask("?!#9"), Ack("?P" + std::string(8, '@')));
  EXPECT_EQ(Ask("ZZ9"), Nak("ZZ9"));
  // Point to point: any address is answered, always with the unit's own.
  EXPECT_EQ(Ask("1", 'B'), Ack("1AA"));

  EXPECT_EQ(sim_->ReceivedFrames(), (std::vector<std::string>{"1", "?!#(", "?!#9", "ZZ9", "1"}));

  // A unit of its own: status groups "Q@@@", "@B@@", "C@@D" and id 0x3F05.
  Simulator::Options o;
  o.unit.summary = {0x11, 0, 0, 0};
  o.unit.fault = {0, 0x02, 0, 0};
  o.unit.alarm = {0x03, 0, 0, 0x04};
  o.unit.unitId = 0x3F05;
  StartSim(o);
  EXPECT_EQ(Ask("?!#("), Ack("?Q@@@@B@@C@@D"));
  EXPECT_EQ(Ask("?!#9"), Ack("?Q@@@@B@@C"));
  EXPECT_EQ(Ask("1"), Ack("1\x7F"
                          "E"));
}

TEST_F(TcpUnit, PrintableFramingWithCrOnlyLineEnd) {
  Simulator::Options o;
  o.printable = true;
  o.tcpCrOnly = true;
  StartSim(o);
  ASSERT_TRUE(Send("{A1}M\r\n"));
  EXPECT_EQ(ReadUntil(conn_.get(), "\r", kReplyWaitMs), "{A1AA}p\r");
  ASSERT_TRUE(Send("{A?!#(}M\r\n"));
  EXPECT_EQ(ReadUntil(conn_.get(), "\r", kReplyWaitMs),
            PrintableFrame('A', "?P" + std::string(11, '@')) + "\r");
  // No ACK/NAK byte in this framing: a refusal has an empty body.
  ASSERT_TRUE(Send("{AXY}M\r\n"));
  EXPECT_EQ(ReadUntil(conn_.get(), "\r", kReplyWaitMs), PrintableFrame('A', "") + "\r");
  // A unit set up for printable framing does not understand STX frames.
  ASSERT_TRUE(Send(TcpFrame('A', "1")));
  EXPECT_EQ(ReadFor(conn_.get(), kSilenceMs), "");
}

TEST_F(TcpUnit, PartialBatchedAndNoisyInput) {
  StartSim();
  // One byte per segment.
  for (char c : TcpFrame('A', "1")) {
    ASSERT_TRUE(Send(std::string(1, c)));
    usleep(3000);
  }
  EXPECT_EQ(ReadUntil(conn_.get(), kCrLf, kReplyWaitMs), Ack("1AA"));

  // Three frames with line noise between them in one write: three replies in order.
  ASSERT_TRUE(
      Send(TcpFrame('A', "1") + "noise\x7F" + TcpFrame('A', "?!#9") + "\r\n" + TcpFrame('A', "Q")));
  std::string expected = Ack("1AA") + Ack("?P" + std::string(8, '@')) + Nak("Q");
  EXPECT_EQ(ReadExactly(conn_.get(), expected.size(), kReplyWaitMs), expected);

  // A frame cut off by a new connection is forgotten; the newcomer is served
  // and the old connection is closed.
  ASSERT_TRUE(
      Send(std::string("\x02"
                       "A?!")));
  Fd second = ConnectTcp(sim_->TcpPort());
  ASSERT_TRUE(second.valid());
  EXPECT_TRUE(PeerClosed(conn_.get(), kReplyWaitMs));
  conn_ = std::move(second);
  ASSERT_TRUE(Send("#(\x03M\r\n" + TcpFrame('A', "1")));
  EXPECT_EQ(ReadUntil(conn_.get(), kCrLf, kReplyWaitMs), Ack("1AA"));
}

// Dropped, refused, corrupted, split and babbled replies and the pulled plug
// reach the host's link in the end-to-end tests; these faults do not.
TEST_F(TcpUnit, CloseDelayAndSilentAfterFollowTheirCounts) {
  StartSim();
  Simulator::Faults f;
  f.closeEvery = 2;
  sim_->SetFaults(f);
  EXPECT_EQ(Ask("1"), Ack("1AA"));
  ASSERT_TRUE(Send(TcpFrame('A', "1")));
  EXPECT_TRUE(PeerClosed(conn_.get(), kReplyWaitMs));
  conn_ = ConnectTcp(sim_->TcpPort());
  ASSERT_TRUE(conn_.valid());
  EXPECT_EQ(Ask("1"), Ack("1AA"));  // third frame

  f = {};
  f.delayMs = 150;
  sim_->SetFaults(f);
  auto t0 = Clock::now();
  EXPECT_EQ(Ask("1"), Ack("1AA"));
  EXPECT_GE(Clock::now() - t0, std::chrono::milliseconds(150));

  f = {};
  f.silentAfter = 2;
  sim_->SetFaults(f);
  EXPECT_EQ(Ask("1"), Ack("1AA"));
  EXPECT_EQ(Ask("1"), Ack("1AA"));
  ASSERT_TRUE(Send(TcpFrame('A', "?!#(")));
  EXPECT_EQ(ReadFor(conn_.get(), kSilenceMs), "");
  EXPECT_TRUE(sim_->Silent());
  EXPECT_EQ(sim_->ReceivedFrames().back(), "?!#(");  // heard, not answered
  // Plugging back in restarts the count: two more answers, then quiet.
  sim_->SetSilent(false);
  EXPECT_EQ(Ask("1"), Ack("1AA"));
  EXPECT_EQ(Ask("?!#9"), Ack("?P" + std::string(8, '@')));
  ASSERT_TRUE(Send(TcpFrame('A', "1")));
  EXPECT_EQ(ReadFor(conn_.get(), kSilenceMs), "");
}

TEST(SimulatorLifecycle, StartSaysWhyItCannotRun) {
  Simulator::Options o;
  o.tcpPort = 0;
  Simulator first(o);
  std::string error;
  ASSERT_TRUE(first.Start(&error)) << error;
  EXPECT_FALSE(first.Start(&error));
  EXPECT_NE(error.find("already running"), std::string::npos);

  Simulator::Options taken = o;
  taken.tcpPort = first.TcpPort();
  Simulator second(taken);
  EXPECT_FALSE(second.Start(&error));
  EXPECT_NE(error.find("cannot listen on 127.0.0.1:" + std::to_string(first.TcpPort())),
            std::string::npos)
      << error;

  Simulator::Options badLine = o;
  badLine.line = "9600,N,9,1";
  EXPECT_FALSE(Simulator(badLine).Start(&error));
  EXPECT_NE(error.find("data bits"), std::string::npos) << error;

  Simulator::Options nothing = o;
  nothing.tcp = false;
  EXPECT_FALSE(Simulator(nothing).Start(&error));

  Simulator::Options badLog = o;
  badLog.frameLog = "/nonexistent-dir/frames.log";
  EXPECT_FALSE(Simulator(badLog).Start(&error));
  EXPECT_NE(error.find("frame log"), std::string::npos) << error;

  first.Stop();
  first.Stop();
  // The port is free again once stopped.
  EXPECT_TRUE(second.Start(&error)) << error;
}

}  // namespace
