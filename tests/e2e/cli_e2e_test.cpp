// ampdesk-cli as an operator runs it, against ampsim started as a separate
// program, over loopback TCP and a pseudo-terminal.
#include <gtest/gtest.h>

#include <QProcess>
#include <QStringList>

#include <string>
#include <vector>

#include "qt/sim_process.h"

namespace amp {
namespace {

struct CliRun {
  int code = -1;
  std::string out, err;
};

CliRun Cli(const std::vector<std::string>& args, int timeoutMs = 30000) {
  QProcess p;
  QStringList q;
  for (auto& a : args) q << QString::fromStdString(a);
  p.start(AMPDESK_CLI_EXE, q);
  CliRun r;
  if (!p.waitForFinished(timeoutMs)) {
    p.kill();
    p.waitForFinished(2000);
    r.err = "timed out";
    return r;
  }
  r.code = p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
  r.out = p.readAllStandardOutput().toStdString();
  r.err = p.readAllStandardError().toStdString();
  return r;
}

std::vector<std::string> Lines(const std::string& s) {
  std::vector<std::string> out;
  size_t b = 0;
  for (size_t e; (e = s.find('\n', b)) != std::string::npos; b = e + 1) out.push_back(s.substr(b, e - b));
  return out;
}

struct Unit {
  explicit Unit(std::vector<std::string> args) {
    std::string err;
    ok = sim.Start(AMPSIM_EXE, args, &err);
    EXPECT_TRUE(ok) << err;
  }
  std::string Tcp() const { return sim.TcpHost() + ":" + std::to_string(sim.TcpPort()); }
  SimProcess sim;
  bool ok = false;
};

TEST(CliEndToEnd, StatusOverTcpAndSerial) {
  Unit tcp({"--tcp", "127.0.0.1:0", "--status", "Q@@@,@A@@,@@@B"});
  ASSERT_TRUE(tcp.ok);
  CliRun r = Cli({"--tcp", tcp.Tcp(), "status", "--json"});
  EXPECT_EQ(r.code, 0) << r.err;
  EXPECT_NE(r.out.find("\"ok\": true"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("\"summary\": \"Q@@@\""), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("\"fault\": \"@A@@\""), std::string::npos) << r.out;

  Unit serial({"--no-tcp", "--serial", "--baud", "9600", "--status", "P@@@,@@@@,B@@@"});
  ASSERT_TRUE(serial.ok);
  r = Cli({"--serial", serial.sim.SerialPath(), "status"});
  EXPECT_EQ(r.code, 0) << r.err;
  // The text form shows the meaningful bits of each status character.
  EXPECT_NE(r.out.find("summary 10 00 00 00"), std::string::npos) << r.out;
}

TEST(CliEndToEnd, SendAndTrace) {
  Unit u({"--tcp", "127.0.0.1:0"});
  ASSERT_TRUE(u.ok);
  const std::string trace = ::testing::TempDir() + "/ampdesk-trace.txt";
  std::remove(trace.c_str());
  CliRun r = Cli({"--tcp", u.Tcp(), "--trace", trace, "send", "1", "NOSUCH"});
  EXPECT_EQ(r.code, 1);  // one of the two was refused
  auto lines = Lines(r.out);
  ASSERT_EQ(lines.size(), 2u) << r.out;
  EXPECT_EQ(lines[0].rfind("1 -> <ACK>A1", 0), 0u) << lines[0];
  EXPECT_EQ(lines[1].rfind("NOSUCH -> FAILED <NAK>", 0), 0u) << lines[1];
  FILE* f = std::fopen(trace.c_str(), "r");
  ASSERT_NE(f, nullptr);
  char buf[4096] = {};
  const size_t n = std::fread(buf, 1, sizeof buf - 1, f);
  std::fclose(f);
  const std::string text(buf, n);
  EXPECT_NE(text.find(" tx 02 41 31 03 4D 0D 0A  <STX>A1<ETX>M<CR><LF>"), std::string::npos) << text;
  EXPECT_NE(text.find(" rx 15 41 4E"), std::string::npos) << text;
}

TEST(CliEndToEnd, MonitorAndPulledPlug) {
  Unit u({"--no-tcp", "--serial", "--silent-after", "4"});
  ASSERT_TRUE(u.ok);
  // The unit answers the id word, the first read's query and two polls, then
  // falls silent: three polls in a row fail and end the session.
  CliRun r = Cli({"--serial", u.sim.SerialPath(), "--json", "monitor", "--polls", "10"}, 90000);
  EXPECT_EQ(r.code, 1) << r.err;
  auto lines = Lines(r.out);
  ASSERT_EQ(lines.size(), 5u) << r.out;
  EXPECT_NE(lines[1].find("\"ok\": true"), std::string::npos) << lines[1];
  EXPECT_NE(lines[2].find("\"missedPollsLeft\": 1"), std::string::npos) << lines[2];
  EXPECT_NE(lines[3].find("\"missedPollsLeft\": 0"), std::string::npos) << lines[3];
  EXPECT_NE(lines[4].find("\"connected\": false"), std::string::npos) << lines[4];
  EXPECT_NE(r.err.find("session ended"), std::string::npos) << r.err;
}

TEST(CliEndToEnd, MonitorCountsPolls) {
  Unit u({"--tcp", "127.0.0.1:0"});
  ASSERT_TRUE(u.ok);
  CliRun r = Cli({"--tcp", u.Tcp(), "--json", "monitor", "--polls", "2"});
  EXPECT_EQ(r.code, 0) << r.err;
  auto lines = Lines(r.out);
  ASSERT_EQ(lines.size(), 2u) << r.out;
  EXPECT_EQ(lines[1].rfind("{\"poll\": 2, \"ok\": true, \"connected\": true", 0), 0u) << lines[1];
}

TEST(CliEndToEnd, FailuresAndBadArguments) {
  // Nobody listens on a port that was just freed.
  int freePort = 0;
  {
    Unit u({"--tcp", "127.0.0.1:0"});
    ASSERT_TRUE(u.ok);
    freePort = u.sim.TcpPort();
  }
  CliRun r = Cli({"--tcp", "127.0.0.1:" + std::to_string(freePort), "status"});
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("Ethernet Communication Error: Unable to Connect to Unit"), std::string::npos)
      << r.err;

  r = Cli({"--serial", "/dev/does-not-exist", "status"});
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("/dev/does-not-exist"), std::string::npos) << r.err;

  for (const auto& args : std::vector<std::vector<std::string>>{
           {"status"},
           {"--tcp", "127.0.0.1:99999", "status"},
           {"--tcp", "h", "--serial", "/dev/x", "status"},
           {"--tcp", "127.0.0.1", "frobnicate"},
           {"--bogus", "status"},
           {"--address", "AB", "--tcp", "127.0.0.1", "status"},
           {"--tcp", "127.0.0.1"},
       }) {
    r = Cli(args);
    EXPECT_EQ(r.code, 2) << args.back();
    EXPECT_NE(r.err.find("ampdesk-cli: "), std::string::npos);
    EXPECT_NE(r.err.find("--help"), std::string::npos);
  }
  r = Cli({"--help"});
  EXPECT_EQ(r.code, 0);
  EXPECT_NE(r.out.find("monitor [--polls N]"), std::string::npos);
}

}  // namespace
}  // namespace amp
