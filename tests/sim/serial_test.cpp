// The simulated unit on its pseudo-terminal, opened as a host opens a port.
#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>
#include <memory>
#include <regex>

#include "host_side.h"
#include "sim/simulator.h"

using amp::sim::Simulator;
using namespace simtest;

namespace {

constexpr int kReplyWaitMs = 2000;
constexpr int kSilenceMs = 250;

std::string TempPath(const char* stem) {
  return ::testing::TempDir() + stem + std::to_string(getpid()) + ".log";
}

std::vector<std::string> ReadLines(const std::string& path) {
  std::ifstream in(path);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

class SerialUnit : public ::testing::Test {
 protected:
  void StartSim(Simulator::Options o = {}) {
    o.tcp = false;
    o.serial = true;
    sim_ = std::make_unique<Simulator>(std::move(o));
    std::string error;
    ASSERT_TRUE(sim_->Start(&error)) << error;
    ASSERT_TRUE(sim_->SerialPath().starts_with("/dev/"));
    port_ = OpenSerial(sim_->SerialPath(), B9600);
    ASSERT_TRUE(port_.valid());
  }
  void TearDown() override {
    port_.Reset();
    if (sim_) sim_->Stop();
  }

  std::unique_ptr<Simulator> sim_;
  Fd port_;
};

TEST_F(SerialUnit, AnswersOnlyItsOwnAddressAndChecksFrames) {
  std::string log = TempPath("ampsim_serial_");
  std::remove(log.c_str());
  Simulator::Options o;
  o.frameLog = log;
  StartSim(o);

  // Priming CR LF first, as a host does when it opens the port.
  ASSERT_TRUE(SendAll(port_.get(), "\r\n" + SerialFrame('A', "1")));
  EXPECT_EQ(ReadExactly(port_.get(), 7, kReplyWaitMs),
            Bytes({0x06, 0x41, 0x31, 0x41, 0x41, 0x03, 0x75}));

  ASSERT_TRUE(SendAll(port_.get(), Bytes({0x02, 0x41, 0x3F, 0x21, 0x23, 0x28, 0x03, 0x55})));
  std::string status =
      Bytes({0x06, 0x41, 0x3F, 0x50}) + std::string(11, 0x40) + Bytes({0x03, 0x6B});
  EXPECT_EQ(ReadExactly(port_.get(), status.size(), kReplyWaitMs), status);

  // Another unit's frame on the bus: not ours, not a word.
  ASSERT_TRUE(SendAll(port_.get(), SerialFrame('B', "1")));
  EXPECT_EQ(ReadFor(port_.get(), kSilenceMs), "");

  // Damaged in transit: refused.
  ASSERT_TRUE(SendAll(port_.get(), Bytes({0x02, 0x41, 0x31, 0x03, 0x70})));
  EXPECT_EQ(ReadExactly(port_.get(), 4, kReplyWaitMs), Bytes({0x15, 0x41, 0x03, 0x57}));

  // The host closes and reopens the port: the unit is still there.
  port_.Reset();
  port_ = OpenSerial(sim_->SerialPath(), B9600);
  ASSERT_TRUE(port_.valid());
  ASSERT_TRUE(SendAll(port_.get(), SerialFrame('A', "?!#9")));
  EXPECT_EQ(ReadExactly(port_.get(), 14, kReplyWaitMs),
            ExpectedReply(true, 'A', "?P" + std::string(8, '@')));

  EXPECT_EQ(sim_->ReceivedFrames(), (std::vector<std::string>{"1", "?!#(", "1", "?!#9"}));
  sim_->Stop();
  auto lines = ReadLines(log);
  ASSERT_EQ(lines.size(), 5u);  // the other unit's frame is on the wire too
  EXPECT_TRUE(std::regex_match(
      lines[1], std::regex(R"(\d+\.\d{3} rx 02 41 3F 21 23 28 03 55  <STX>A\?!#\(<ETX>U)")))
      << lines[1];
  EXPECT_NE(lines[2].find("<STX>B1<ETX>"), std::string::npos);
  std::remove(log.c_str());
}

TEST_F(SerialUnit, OtherLineSettingsAndPrintableFraming) {
  Simulator::Options o;
  o.line = "19200,N,8,2";
  o.printable = true;
  o.unit.address = 'C';
  StartSim(o);
  // The fixture opened at 9600,N,8,1: nothing understood until the host
  // matches both speed and stop bits.
  ASSERT_TRUE(SendAll(port_.get(), PrintableFrame('C', "1")));
  EXPECT_EQ(ReadFor(port_.get(), kSilenceMs), "");
  ASSERT_TRUE(SetSerialSpeed(port_.get(), B19200));
  ASSERT_TRUE(SendAll(port_.get(), PrintableFrame('C', "1")));
  EXPECT_EQ(ReadFor(port_.get(), kSilenceMs), "");
  ASSERT_TRUE(SetSerialSpeed(port_.get(), B19200, CSTOPB));
  ASSERT_TRUE(SendAll(port_.get(), PrintableFrame('C', "1")));
  std::string reply = PrintableFrame('C', "1AA");
  EXPECT_EQ(ReadExactly(port_.get(), reply.size(), kReplyWaitMs), reply);
  // A bad printable checksum is refused with an empty body.
  ASSERT_TRUE(SendAll(port_.get(), "{C1}!"));
  reply = PrintableFrame('C', "");
  EXPECT_EQ(ReadExactly(port_.get(), reply.size(), kReplyWaitMs), reply);
}

TEST(SerialByteTiming, RepliesTakeTheirWireTime) {
  Simulator::Options o;
  o.serial = true;
  o.tcpPort = 0;
  o.baud = 9600;
  o.byteTimingOnTcp = true;
  Simulator sim(o);
  std::string error;
  ASSERT_TRUE(sim.Start(&error)) << error;
  Fd port = OpenSerial(sim.SerialPath(), B9600);
  ASSERT_TRUE(port.valid());

  // 17 bytes of 10 bits at 9600 baud: 17.7 ms on the wire.
  auto t0 = Clock::now();
  ASSERT_TRUE(SendAll(port.get(), SerialFrame('A', "?!#(")));
  auto chunks = ReadChunks(port.get(), 17, kReplyWaitMs);
  auto elapsed = Clock::now() - t0;
  std::string joined;
  for (const auto& c : chunks) joined += c.bytes;
  EXPECT_EQ(joined, ExpectedReply(true, 'A', "?P" + std::string(11, '@')));
  EXPECT_GE(elapsed, std::chrono::microseconds(17700));
  EXPECT_LT(elapsed, std::chrono::milliseconds(1000));
  EXPECT_GE(chunks.size(), 2u);  // trickles in rather than arriving at once

  // Over TCP only when asked; 19 bytes with CR LF: 19.8 ms.
  Fd conn = ConnectTcp(sim.TcpPort());
  ASSERT_TRUE(conn.valid());
  t0 = Clock::now();
  ASSERT_TRUE(SendAll(conn.get(), TcpFrame('A', "?!#(")));
  EXPECT_EQ(ReadExactly(conn.get(), 19, kReplyWaitMs).size(), 19u);
  EXPECT_GE(Clock::now() - t0, std::chrono::microseconds(19800));
}

}  // namespace
