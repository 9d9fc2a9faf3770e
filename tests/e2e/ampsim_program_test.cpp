// The ampsim program as a host's test rig runs it: its command line, its
// list of profiles and the clean stop on SIGTERM. The ready line, both links
// and the plug pulled by SIGUSR1 are what the other end-to-end tests run it by.
#include <gtest/gtest.h>

#include <QTcpSocket>

#include <csignal>
#include <string>
#include <vector>

#include "e2e/cli_runner.h"

namespace amp {
namespace {

using namespace e2e;

CliRun Ampsim(const std::vector<std::string>& args) {
  return RunProgram(AMPSIM_EXE, Args(args), 10000);
}

TEST(AmpsimProgram, StopsCleanlyOnSigterm) {
  Unit u({"--tcp", "127.0.0.1:0", "--serial"});
  ASSERT_TRUE(u.ok);
  EXPECT_TRUE(u.serial.starts_with("/dev/")) << u.serial;
  QTcpSocket conn;
  conn.connectToHost("127.0.0.1", static_cast<quint16>(u.port));
  ASSERT_TRUE(conn.waitForConnected(3000));
  u.Signal(SIGTERM);
  ASSERT_TRUE(u.proc.waitForFinished(3000));
  EXPECT_EQ(u.proc.exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(u.proc.exitCode(), 0);
  EXPECT_TRUE(conn.state() == QAbstractSocket::UnconnectedState || conn.waitForDisconnected(3000))
      << "the connection outlived the program";
}

TEST(AmpsimProgram, RejectsBadCommandLinesWithUsage) {
  const std::vector<std::vector<std::string>> bad = {
      {"--bogus"},
      {"--drop-every", "x"},
      {"--delay", "-5"},
      {"--tcp", "127.0.0.1"},
      {"--tcp", "127.0.0.1:70000"},
      {"--status", "P@@@"},
      {"--status", "P@@@,@@@@,@@?@"},
      {"--line", "9600,N,8"},
      {"--unit-id", "0x4000"},
      {"--address", "AB"},
      {"--address"},
      {"--babble=yes"},
      {"--prefix", "\\q"},
      {"--no-tcp"},
      {"stray"},
  };
  for (const auto& args : bad) {
    CliRun o = Ampsim(args);
    std::string shown = args[0] + (args.size() > 1 ? " " + args[1] : "");
    EXPECT_EQ(o.code, 2) << shown;
    EXPECT_TRUE(o.err.starts_with("ampsim: ")) << shown << ": " << o.err;
    EXPECT_NE(o.err.find("Usage: ampsim"), std::string::npos) << shown;
    EXPECT_EQ(o.out, "") << shown;
  }

  CliRun missing = Ampsim({"--tcp", "127.0.0.1:0", "--profile", "/nonexistent/unit.profile"});
  EXPECT_EQ(missing.code, 2);
  EXPECT_NE(missing.err.find("/nonexistent/unit.profile"), std::string::npos);

  CliRun help = Ampsim({"--help"});
  EXPECT_EQ(help.code, 0);
  // The usage names the options, the fault switches among them.
  for (const char* option : {"  --profile ", "  --drop-every ", "  --silent-after ", "  --local "})
    EXPECT_NE(help.out.find(option), std::string::npos) << option;
}

TEST(AmpsimProgram, ListsProfilesAndRejectsUnknownNames) {
  CliRun list = Ampsim({"--list-profiles"});
  EXPECT_EQ(list.code, 0);
  for (const char* name :
       {"twta127\n", "dualtwt108\n", "sspa102\n", "fbdc2295\n", "bucsspa\n", "oldunit\n"})
    EXPECT_NE(list.out.find(name), std::string::npos) << name;

  CliRun unknown = Ampsim({"--tcp", "127.0.0.1:0", "--profile", "no-such-unit"});
  EXPECT_EQ(unknown.code, 2);
  EXPECT_NE(unknown.err.find("no profile named 'no-such-unit'"), std::string::npos) << unknown.err;
  EXPECT_NE(unknown.err.find("twta127"), std::string::npos) << "the known names are listed";
}

}  // namespace
}  // namespace amp
