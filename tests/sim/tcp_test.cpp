// The simulated unit over TCP, seen from the host's side of a socket.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <memory>
#include <regex>
#include <sstream>

#include "host_side.h"
#include "sim/simulator.h"

using amp::sim::Reply;
using amp::sim::Simulator;
using amp::sim::UnitState;
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
  void SetUp() override {}
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

  ASSERT_TRUE(sim_->SetStatus("Q@@@", "@B@@", "C@@D"));
  sim_->WithState([](UnitState& u) { u.unitId = 0x3F05; });
  EXPECT_EQ(Ask("?!#("), Ack("?Q@@@@B@@C@@D"));
  EXPECT_EQ(Ask("?!#9"), Ack("?Q@@@@B@@C"));
  EXPECT_EQ(Ask("1"), Ack("1\x7F"
                          "E"));
  EXPECT_FALSE(sim_->SetStatus("Q@@", "@@@@", "@@@@"));

  EXPECT_EQ(sim_->ReceivedFrames(),
            (std::vector<std::string>{"1", "?!#(", "?!#9", "ZZ9", "1", "?!#(", "?!#9", "1"}));
  sim_->ClearReceivedFrames();
  EXPECT_TRUE(sim_->ReceivedFrames().empty());
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
            ExpectedPrintableReply('A', "?P" + std::string(11, '@')) + "\r");
  // No ACK/NAK byte in this framing: a refusal has an empty body.
  ASSERT_TRUE(Send("{AXY}M\r\n"));
  EXPECT_EQ(ReadUntil(conn_.get(), "\r", kReplyWaitMs), ExpectedPrintableReply('A', "") + "\r");
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

TEST_F(TcpUnit, DropNakAndBadChecksumFollowTheirCounts) {
  StartSim();
  Simulator::Faults f;
  f.dropEvery = 2;
  sim_->SetFaults(f);
  ASSERT_TRUE(Send(TcpFrame('A', "1") + TcpFrame('A', "?!#(") + TcpFrame('A', "1") +
                   TcpFrame('A', "?!#(")));
  std::string twoIds = Ack("1AA") + Ack("1AA");
  EXPECT_EQ(ReadExactly(conn_.get(), twoIds.size(), kReplyWaitMs), twoIds);
  EXPECT_EQ(ReadFor(conn_.get(), kSilenceMs), "");

  f = {};
  f.nakEvery = 2;
  sim_->SetFaults(f);
  ASSERT_TRUE(Send(TcpFrame('A', "1") + TcpFrame('A', "?!#(") + TcpFrame('A', "1")));
  // An injected NAK echoes the mnemonic the unit matched ("?!", whose items follow).
  std::string mixed = Ack("1AA") + Nak("?!") + Ack("1AA");
  EXPECT_EQ(ReadExactly(conn_.get(), mixed.size(), kReplyWaitMs), mixed);

  f = {};
  f.badChecksumEvery = 3;
  sim_->SetFaults(f);  // counting starts again
  std::string good = Ack("1AA");
  EXPECT_EQ(Ask("1"), good);
  EXPECT_EQ(Ask("1"), good);
  std::string third = Ask("1");
  ASSERT_EQ(third.size(), good.size());
  size_t sumAt = good.size() - 3;
  EXPECT_EQ(third.substr(0, sumAt), good.substr(0, sumAt));
  EXPECT_NE(third[sumAt], good[sumAt]);
  EXPECT_EQ(Ask("1"), good);

  sim_->SetFaults({});
  EXPECT_EQ(Ask("1"), good);
}

TEST_F(TcpUnit, PrefixDelayAndSilence) {
  StartSim();
  Simulator::Faults f;
  f.prefix = "xy\r\n";
  sim_->SetFaults(f);
  ASSERT_TRUE(Send(TcpFrame('A', "1")));
  std::string withPrefix = "xy\r\n" + Ack("1AA");
  EXPECT_EQ(ReadExactly(conn_.get(), withPrefix.size(), kReplyWaitMs), withPrefix);

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
  ASSERT_TRUE(Send(TcpFrame('A', "1")));
  EXPECT_EQ(ReadFor(conn_.get(), kSilenceMs), "");
  EXPECT_TRUE(sim_->Silent());

  // Plugging back in restarts the count: two more answers, then quiet.
  sim_->SetSilent(false);
  EXPECT_EQ(Ask("1"), Ack("1AA"));
  EXPECT_EQ(Ask("?!#9"), Ack("?P" + std::string(8, '@')));
  ASSERT_TRUE(Send(TcpFrame('A', "1")));
  EXPECT_EQ(ReadFor(conn_.get(), kSilenceMs), "");

  sim_->SetFaults({});
  sim_->SetSilent(true);
  sim_->ClearReceivedFrames();
  ASSERT_TRUE(Send(TcpFrame('A', "?!#(")));
  EXPECT_EQ(ReadFor(conn_.get(), kSilenceMs), "");
  EXPECT_EQ(sim_->ReceivedFrames(), std::vector<std::string>{"?!#("});  // heard, not answered
  sim_->SetSilent(false);
  EXPECT_EQ(Ask("1"), Ack("1AA"));
}

TEST_F(TcpUnit, CloseSplitAndLateLineFeed) {
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
  ASSERT_TRUE(Send(TcpFrame('A', "1")));
  EXPECT_TRUE(PeerClosed(conn_.get(), kReplyWaitMs));
  conn_ = ConnectTcp(sim_->TcpPort());
  ASSERT_TRUE(conn_.valid());

  f = {};
  f.splitMs = 80;
  sim_->SetFaults(f);
  std::string reply = Ack("?P" + std::string(11, '@'));
  ASSERT_TRUE(Send(TcpFrame('A', "?!#(")));
  auto chunks = ReadChunks(conn_.get(), reply.size(), kReplyWaitMs);
  ASSERT_GE(chunks.size(), 2u);
  std::string joined;
  for (const auto& c : chunks) joined += c.bytes;
  EXPECT_EQ(joined, reply);
  EXPECT_LT(chunks.front().bytes.size(), reply.size());
  EXPECT_GE(chunks.back().at - chunks.front().at, std::chrono::milliseconds(70));

  f = {};
  f.lfSeparate = true;
  sim_->SetFaults(f);
  ASSERT_TRUE(Send(TcpFrame('A', "1")));
  chunks = ReadChunks(conn_.get(), Ack("1AA").size(), kReplyWaitMs);
  ASSERT_GE(chunks.size(), 2u);
  EXPECT_EQ(chunks.back().bytes, "\n");
  EXPECT_TRUE(chunks.front().bytes.starts_with("\x06"));
  EXPECT_GE(chunks.back().at - chunks.front().at, std::chrono::milliseconds(40));
}

TEST_F(TcpUnit, BabbleIsBoundedJunkThatNeverBreaksAReply) {
  StartSim();
  Simulator::Faults f;
  f.babble = true;
  sim_->SetFaults(f);
  std::string junk = ReadFor(conn_.get(), 400);
  // About 1 kB/s: 400 ms gives some hundreds of bytes, never a flood.
  EXPECT_GT(junk.size(), 100u);
  EXPECT_LT(junk.size(), 1200u);
  for (char c : {'\x02', '\x03', '\x06', '\x15'}) EXPECT_EQ(junk.find(c), std::string::npos);

  ASSERT_TRUE(Send(TcpFrame('A', "1")));
  std::string stream = ReadFor(conn_.get(), 300);
  EXPECT_NE(stream.find(Ack("1AA")), std::string::npos);

  sim_->SetFaults({});
  ReadFor(conn_.get(), 100);  // whatever was already in flight
  EXPECT_EQ(ReadFor(conn_.get(), 150), "");
}

TEST_F(TcpUnit, AddedCommandsAnswerAndLocalModeRefusesSettings) {
  StartSim();
  sim_->AddCommand("PWR", [](UnitState& u, std::string_view) {
    auto it = u.values.find("power");
    return Reply::Ack("PWR" + (it == u.values.end() ? std::string("0") : it->second));
  });
  sim_->AddCommand(
      "SETP",
      [](UnitState& u, std::string_view args) {
        if (args.empty()) return Reply::Nak("SETP");
        u.values["power"] = std::string(args);
        return Reply::Ack("SETP");
      },
      /*remoteOnly=*/true);

  EXPECT_EQ(Ask("PWR"), Ack("PWR0"));
  EXPECT_EQ(Ask("SETP750"), Ack("SETP"));
  EXPECT_EQ(Ask("PWR"), Ack("PWR750"));
  EXPECT_EQ(Ask("SETP"), Nak("SETP"));
  sim_->WithState([](UnitState& u) { u.remote = false; });
  EXPECT_EQ(Ask("SETP10"), Nak("SETP"));
  EXPECT_EQ(sim_->State().values.at("power"), "750");
}

TEST(SimulatorFrameLog, AppendsOneLinePerFrame) {
  std::string path = ::testing::TempDir() + "ampsim_frames_" + std::to_string(getpid()) + ".log";
  std::remove(path.c_str());
  Simulator::Options o;
  o.tcpPort = 0;
  o.frameLog = path;
  {
    Simulator sim(o);
    std::string error;
    ASSERT_TRUE(sim.Start(&error)) << error;
    Fd conn = ConnectTcp(sim.TcpPort());
    ASSERT_TRUE(SendAll(conn.get(), TcpFrame('A', "?!#(") + TcpFrame('C', "1")));
    std::string replies = ExpectedReply(true, 'A', "?P" + std::string(11, '@')) + kCrLf +
                          ExpectedReply(true, 'A', "1AA") + kCrLf;
    EXPECT_EQ(ReadExactly(conn.get(), replies.size(), kReplyWaitMs), replies);
    sim.Stop();
  }
  std::ifstream in(path);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_TRUE(std::regex_match(
      lines[0], std::regex(R"(\d+\.\d{3} rx 02 41 3F 21 23 28 03 4D  <STX>A\?!#\(<ETX>M)")))
      << lines[0];
  EXPECT_TRUE(
      std::regex_match(lines[1], std::regex(R"(\d+\.\d{3} rx 02 43 31 03 4D  <STX>C1<ETX>M)")))
      << lines[1];
  std::remove(path.c_str());
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
  EXPECT_FALSE(first.Running());
  // The port is free again once stopped.
  EXPECT_TRUE(second.Start(&error)) << error;
}

}  // namespace
