// ampdesk-cli as an operator runs it, against ampsim started as a separate
// program, over loopback TCP and a pseudo-terminal.
#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>

#include <filesystem>
#include <string>
#include <vector>

#include "e2e/cli_runner.h"

namespace amp {
namespace {

using namespace e2e;

// ------------------------------------------------------------------ status

TEST(CliEndToEnd, StatusJsonShowsEachProfileAsItIs) {
  struct Case {
    const char* profile;
    bool serial;
    const char* kind;
    bool tube;
  };
  for (const Case& c :
       {Case{"sspa120", false, "SSPA", false}, Case{"twta127", true, "TWTA", true}}) {
    SCOPED_TRACE(c.profile);
    Unit u = c.serial ? Unit({"--no-tcp", "--serial", "--profile", c.profile})
                      : Unit({"--tcp", "127.0.0.1:0", "--profile", c.profile});
    ASSERT_TRUE(u.ok);
    const auto values = ProfileValues(c.profile);
    CliRun r = c.serial ? Cli({"--serial", u.serial, "status", "--json"})
                        : Cli({"--tcp", u.Tcp(), "status", "--json"});
    ASSERT_EQ(r.code, 0) << r.err;
    const auto lines = Lines(r.out);
    ASSERT_EQ(lines.size(), 1u) << r.out;
    const QJsonObject s = Json(lines[0]);
    EXPECT_TRUE(s["connected"].toBool());
    EXPECT_EQ(Str(s["form"].toObject(), "name"), "frmMain");
    EXPECT_TRUE(s["messages"].toArray().isEmpty()) << r.err;
    EXPECT_TRUE(s["dialog"].isNull());
    EXPECT_EQ(Str(Control(s, "txtSN"), "text"), values.at("unit.serial"));
    EXPECT_EQ(Str(Control(s, "txtFrmRev"), "text"), values.at("fw.rev"));
    EXPECT_EQ(Str(Control(s, "txtCplDate"), "text"), values.at("fw.date"));
    const std::string pn = Str(Control(s, "txtPN"), "text");
    EXPECT_EQ(pn.substr(pn.size() - values.at("unit.part").size()), values.at("unit.part"));
    EXPECT_EQ(Str(Control(s, "lblUnitTempType"), "caption"), c.kind);
    EXPECT_EQ(Str(Control(s, "btnConnect"), "caption"), "Disconnect");
    EXPECT_EQ(Control(s, "chkPS")["value"].toInt(), 1);
    EXPECT_EQ(Str(Control(s, "Label64"), "caption"), "dBm");
    // The poll filled the fault list: no faults on either unit.
    EXPECT_TRUE(Control(s, "NoFaults")["visible"].toBool());
    EXPECT_FALSE(Control(s, "FaultAbit(3)")["visible"].toBool());
    EXPECT_TRUE(Control(s, "mnuComPort(0)").contains("caption"));
    EXPECT_EQ(Str(Control(s, "txtAdr"), "text"), "A");
  }
  // The session wrote nothing but its data directory, which the first read made.
  EXPECT_TRUE(fs::is_directory(DataDir()));
}

TEST(CliEndToEnd, StatusTextInWatts) {
  Unit u({"--tcp", "127.0.0.1:0"});
  ASSERT_TRUE(u.ok);
  CliRun r = Cli({"--tcp", u.Tcp(), "--watts", "status"});
  EXPECT_EQ(r.code, 0) << r.err;
  EXPECT_NE(r.out.find("Session     connected"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("SN S12034"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find(" W"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("Watts"), std::string::npos) << r.out;
}

// -------------------------------------------------------------------- send

TEST(CliEndToEnd, SendASetCommandAndItsQuery) {
  Unit u({"--no-tcp", "--serial"});
  ASSERT_TRUE(u.ok);
  const std::string trace = FreshFile("ampdesk-cli-trace.txt");
  CliRun r = Cli({"--serial", u.serial, "--trace", trace, "send", "K12.5", "?A", "NOSUCH"});
  EXPECT_EQ(r.code, 1) << r.err;  // the last one was refused
  const auto lines = Lines(r.out);
  ASSERT_EQ(lines.size(), 3u) << r.out;
  EXPECT_EQ(lines[0], "K12.5 -> [ACK]AK12.5[ETX]");
  EXPECT_EQ(lines[1], "?A -> [ACK]A?12.5[ETX]");
  EXPECT_EQ(lines[2].rfind("NOSUCH -> FAILED [NAK]A", 0), 0u) << lines[2];
  const std::string text = ReadAll(trace);
  EXPECT_NE(text.find("<STX>AK12.5<ETX>"), std::string::npos) << text;

  r = Cli({"--serial", u.serial, "--json", "send", "?A"});
  EXPECT_EQ(r.code, 0) << r.err;
  const QJsonObject s = Json(Lines(r.out).at(0));
  EXPECT_TRUE(s["ok"].toBool());
  EXPECT_EQ(Str(s, "reply"), "[ACK]A?12.5[ETX]");
}

// ----------------------------------------------------------------- monitor

TEST(CliEndToEnd, MonitorPrintsOneStateAPoll) {
  Unit u({"--tcp", "127.0.0.1:0"});
  ASSERT_TRUE(u.ok);
  CliRun r = Cli({"--tcp", u.Tcp(), "--json", "monitor", "--polls", "2"});
  EXPECT_EQ(r.code, 0) << r.err;
  const auto lines = Lines(r.out);
  ASSERT_EQ(lines.size(), 2u) << r.out;
  for (int i = 0; i < 2; ++i) {
    const QJsonObject s = Json(lines[static_cast<size_t>(i)]);
    EXPECT_EQ(s["poll"].toInt(), i + 1);
    EXPECT_TRUE(s["ok"].toBool());
    EXPECT_TRUE(s["connected"].toBool());
    EXPECT_EQ(s["missedPollsLeft"].toInt(), 2);
    EXPECT_FALSE(Str(Control(s, "txtFdBm"), "text").empty());
  }
}

// ---------------------------------------------------------------- searching

// How the search walks addresses and settings is the connect tests' (in
// tests/app); here the options that choose it.
TEST(CliEndToEnd, TheSearchOptions) {
  // A unit at address E on 19200,E,7,1, past the plain search's A to C.
  Unit u({"--no-tcp", "--serial", "--address", "E", "--line", "19200,E,7,1"});
  ASSERT_TRUE(u.ok);
  CliRun r =
      Cli({"--serial", u.serial, "--settings", "19200,E,7,1", "--search", "extended", "status"});
  EXPECT_EQ(r.code, 0) << r.err;
  // The address alone: the settings are searched.
  r = Cli({"--serial", u.serial, "--address", "E", "status", "--json"});
  EXPECT_EQ(r.code, 0) << r.err;
  EXPECT_EQ(Str(Control(Json(Lines(r.out).at(0)), "txtAdr"), "text"), "E");
  // Both: the single address is polled, and only on those settings.
  r = Cli({"--serial", u.serial, "--address", "E", "--settings", "9600,N,8,1", "status"});
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("Connect: Unit Not Found"), std::string::npos) << r.err;
}

// -------------------------------------------------------- bad input, failures

TEST(CliEndToEnd, BadScriptLinesAreRefusedBeforeAnythingIsSent) {
  const std::string log = FreshFile("ampdesk-cli-frames.log");
  Unit u({"--tcp", "127.0.0.1:0", "--frame-log", log});
  ASSERT_TRUE(u.ok);
  // The grammar and the controls are checked by the script's unit tests.
  CliRun r = Cli({"--tcp", u.Tcp(), "script", "-"}, 30000, "click mnuWatts\nclick txtNope\n");
  EXPECT_EQ(r.code, 2);
  EXPECT_NE(r.err.find("<stdin>: line 2: unknown control 'txtNope'"), std::string::npos) << r.err;
  EXPECT_TRUE(r.out.empty()) << r.out;
  r = Cli({"--tcp", u.Tcp(), "script", "/no/such/script"});
  EXPECT_EQ(r.code, 2);
  EXPECT_NE(r.err.find("cannot read the script /no/such/script"), std::string::npos) << r.err;
  // Not one frame reached the unit.
  EXPECT_EQ(ReadAll(log), "");
}

TEST(CliEndToEnd, FailuresAndBadArguments) {
  // A refused connection is the connect tests'; a missing device here.
  CliRun r = Cli({"--serial", "/dev/does-not-exist", "status"});
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("/dev/does-not-exist"), std::string::npos) << r.err;

  for (const auto& args : std::vector<std::vector<std::string>>{
           {"status"},
           {"--tcp", "127.0.0.1:99999", "status"},
           {"--tcp", "h", "--serial", "/dev/x", "status"},
           {"--tcp", "127.0.0.1", "frobnicate"},
           {"--bogus", "status"},
           {"--address", "AB", "--serial", "/dev/null", "status"},
           {"--tcp", "127.0.0.1", "--address", "B", "status"},
           {"--serial", "/dev/null", "--address", "B", "--search", "extended", "status"},
           {"--serial", "/dev/null", "--search", "deep", "status"},
           {"--serial", "/dev/null", "--settings", "9600,N,8", "status"},
           {"--serial", "COM11", "status"},
           {"--tcp", "127.0.0.1", "--answer", "maybe", "status"},
           {"--tcp", "127.0.0.1", "status", "extra"},
           {"--tcp", "127.0.0.1", "monitor", "--polls", "0"},
           {"--tcp", "127.0.0.1", "send"},
           {"--tcp", "127.0.0.1", "script"},
           {"--tcp", "127.0.0.1", "script", "a", "b"},
           {"--tcp", "127.0.0.1", "--data-dir"},
           {"--tcp", "127.0.0.1"}}) {
    r = Cli(args);
    EXPECT_EQ(r.code, 2) << args.back();
    EXPECT_NE(r.err.find("ampdesk-cli: "), std::string::npos) << r.err;
    EXPECT_NE(r.err.find("--help"), std::string::npos) << r.err;
    EXPECT_TRUE(r.out.empty());
  }
}

}  // namespace
}  // namespace amp
