// The unit's network and ports through ampdesk-cli against ampsim run as
// separate programs: the unit search by UDP on loopback, the Ethernet dialog
// over TCP, the unit's serial port over the pseudo-terminal, and what
// opening and closing each dialog does to the line.
#include <gtest/gtest.h>

#include <QHostAddress>
#include <QJsonArray>
#include <QUdpSocket>
#include <algorithm>
#include <string>
#include <vector>

#include "e2e/cli_runner.h"

namespace amp {
namespace {

using namespace e2e;

// A loopback UDP port nobody holds at the moment.
int FreeUdpPort() {
  QUdpSocket s;
  EXPECT_TRUE(s.bind(QHostAddress::LocalHost, 0));
  return s.localPort();
}

// The port of "udp=HOST:PORT" in a unit's ready line.
std::string UdpPort(const Unit& u) { return u.ready.substr(u.ready.rfind(':') + 1); }

std::vector<std::string> Discover(const std::string& target, const std::string& remote,
                                  std::vector<std::string> more = {}, int* code = nullptr) {
  std::vector<std::string> args = {"discover", "--udp-target", target, "--udp-ports",
                                   std::to_string(FreeUdpPort()) + ":" + remote};
  args.insert(args.end(), more.begin(), more.end());
  const CliRun r = Cli(args, 30000);
  if (code) *code = r.code;
  return Lines(r.out);
}

TEST(NetworkEndToEnd, TwoUnitsAnswerAShortAnswerIsRefusedAndAChoiceConnects) {
  // Both listen on the loopback broadcast address and one port, each
  // answering from its own address, the first with a refused short datagram
  // ahead of its answer; both take TCP on one port number.
  const std::string logA = FreshFile("net-a.frames"), logB = FreshFile("net-b.frames");
  Unit a({"--tcp", "127.0.0.2:0", "--udp", "127.255.255.255:0", "--udp-from", "127.0.0.2",
          "--udp-short", "--udp-description", "Orvan unit A on loopback", "--frame-log", logA});
  const std::string port = UdpPort(a), tcp = std::to_string(a.port);
  Unit b({"--tcp", "127.0.0.3:" + tcp, "--udp", "127.255.255.255:" + port, "--udp-from",
          "127.0.0.3", "--udp-description", "ORVAN unit B on loopback", "--frame-log", logB});
  ASSERT_TRUE(a.ok && b.ok);

  std::vector<std::string> listed = Discover("127.255.255.255", port);
  std::sort(listed.begin(), listed.end());
  EXPECT_EQ(listed, (std::vector<std::string>{"127.0.0.2       Orvan unit A on loopback",
                                              "127.0.0.3       ORVAN unit B on loopback",
                                              "Search Complete"}));

  int code = -1;
  const auto lines = Discover("127.255.255.255", port, {"--connect", "1", "--port", tcp}, &code);
  ASSERT_EQ(code, 0);
  ASSERT_EQ(lines.size(), 4u);
  const std::string chosen = lines[0].substr(0, lines[0].find(' '));
  EXPECT_EQ(lines.back(), "connected to " + chosen + ":" + tcp);
  // The session ran against the unit chosen, and only that one.
  EXPECT_FALSE(FramesIn(chosen == "127.0.0.2" ? logA : logB).empty());
  EXPECT_TRUE(FramesIn(chosen == "127.0.0.2" ? logB : logA).empty());
}

TEST(NetworkEndToEnd, NoAnswerListsOnlyTheEndAndAFloodStaysBounded) {
  EXPECT_EQ(Discover("127.0.0.1", std::to_string(FreeUdpPort())),
            std::vector<std::string>{"Search Complete"});

  Unit flood({"--udp", "127.0.0.1:0", "--udp-flood", "10000"});
  int code = -1;
  const auto out = Discover("127.0.0.1", UdpPort(flood), {"--json"}, &code);
  EXPECT_EQ(code, 0);
  ASSERT_EQ(out.size(), 1u);
  EXPECT_EQ(Json(out[0])["units"].toArray().size(), 100);
}

TEST(NetworkEndToEnd, OpeningTheDialogsSendsNothingAndThePollComesBack) {
  Bench bench("net-dialogs", {"--profile", "fbdc2295"});
  const std::string udp = std::to_string(FreeUdpPort()) + ":" + std::to_string(FreeUdpPort());
  const auto run = bench.Script(
      "click mnuEnetCfg\nclick frmEnetCfg.cmdCancel\n"
      "click mnuAmpCom\nclick frmAmpCom.Command1\n"
      "click mnuLLDPCfg\nclick frmLLDPConfig.btnClose\n"
      "click mnuLocateIP\nclick frmLocateIP.btnClose\n"
      "wait 3000\n",
      {"--udp-ports", udp});
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_EQ(bench.SetsSent(), Sets{});
  const auto frames = FramesIn(bench.log);
  // The last dialog's reads, then the poll again.
  const auto lastRead = std::find(frames.rbegin(), frames.rend(), "AQlldpSetupConfig?");
  ASSERT_NE(lastRead, frames.rend());
  EXPECT_NE(std::find_if(frames.rbegin(), lastRead,
                         [](const std::string& f) { return f.rfind("A?!", 0) == 0; }),
            lastRead)
      << "no poll after the dialogs closed";
}

TEST(NetworkEndToEnd, EthernetOverTcpSendsTheModeButNeverTheReset) {
  Bench bench("net-enet", {});
  const auto run = bench.Script(
      "click mnuEnetCfg\nclick frmEnetCfg.optDhcp\nclick frmEnetCfg.cmdOK\n", {"--answer", "yes"});
  ASSERT_FALSE(run.states.empty());
  EXPECT_EQ(bench.SetsSent(), Sets{"PEO1"});
  const auto boxes = Boxes(run.states.back());
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].substr(0, 24), "Ethernet Configuration: ");
}

TEST(NetworkEndToEnd, TheUnitsSerialPortIsSetOverThePty) {
  Bench bench("net-com", {}, Line::kSerial);
  const auto run =
      bench.Script("click mnuAmpCom\nclick frmAmpCom.btnSet232\nclick frmAmpCom.Command1\n");
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_EQ(bench.SetsSent(), Sets{"X1009600N81"});
}

}  // namespace
}  // namespace amp
