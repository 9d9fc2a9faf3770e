// ampdesk-cli as an operator runs it, against ampsim started as a separate
// program, over loopback TCP and a pseudo-terminal.
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>

#include <cmath>
#include <csignal>
#include <filesystem>
#include <fstream>
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

TEST(CliEndToEnd, StatusTextWattsAndADataDirectoryThatCannotBeMade) {
  Unit u({"--tcp", "127.0.0.1:0"});
  ASSERT_TRUE(u.ok);
  CliRun r = Cli({"--tcp", u.Tcp(), "--watts", "status"});
  EXPECT_EQ(r.code, 0) << r.err;
  EXPECT_NE(r.out.find("Session     connected"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("SN S12034"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find(" W"), std::string::npos) << r.out;
  EXPECT_NE(r.out.find("Watts"), std::string::npos) << r.out;

  // A file where the folder should go: the box is shown and fails the run.
  const std::string blocker = FreshFile("ampdesk-cli-blocker");
  std::ofstream(blocker) << "x";
  QProcess p;
  p.setProcessEnvironment(CliEnvironment());
  p.start(AMPDESK_CLI_EXE, {"--tcp", QString::fromStdString(u.Tcp()), "--data-dir",
                            QString::fromStdString(blocker + "/AmpDesk"), "status", "--json"});
  ASSERT_TRUE(p.waitForFinished(60000));
  EXPECT_EQ(p.exitCode(), 1);
  const std::string err = p.readAllStandardError().toStdString();
  EXPECT_NE(err.find("File I/O Error: " + blocker + "/AmpDesk: "), std::string::npos) << err;
  const QJsonObject s = Json(Lines(p.readAllStandardOutput().toStdString()).at(0));
  ASSERT_EQ(s["messages"].toArray().size(), 1);
  EXPECT_EQ(Str(s["messages"].toArray()[0].toObject(), "title"), "File I/O Error");
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
  CliRun r = Cli({"--tcp", u.Tcp(), "--json", "monitor", "--polls", "3"});
  EXPECT_EQ(r.code, 0) << r.err;
  const auto lines = Lines(r.out);
  ASSERT_EQ(lines.size(), 3u) << r.out;
  for (int i = 0; i < 3; ++i) {
    const QJsonObject s = Json(lines[static_cast<size_t>(i)]);
    EXPECT_EQ(s["poll"].toInt(), i + 1);
    EXPECT_TRUE(s["ok"].toBool());
    EXPECT_TRUE(s["connected"].toBool());
    EXPECT_EQ(s["missedPollsLeft"].toInt(), 2);
    EXPECT_FALSE(Str(Control(s, "txtFdBm"), "text").empty());
  }
}

TEST(CliEndToEnd, AUnitThatStopsAnsweringEndsTheSession) {
  Unit u({"--no-tcp", "--serial"});
  ASSERT_TRUE(u.ok);
  QProcess p;
  p.setProcessEnvironment(CliEnvironment());
  p.start(AMPDESK_CLI_EXE,
          {"--serial", QString::fromStdString(u.serial), "--data-dir",
           QString::fromStdString(DataDir()), "--json", "monitor", "--polls", "20"});
  // The first good poll, then the cable is pulled.
  std::string out;
  QElapsedTimer t;
  t.start();
  while (t.elapsed() < 20000 && out.find('\n') == std::string::npos) {
    p.waitForReadyRead(200);
    out += p.readAllStandardOutput().toStdString();
  }
  ASSERT_NE(out.find('\n'), std::string::npos) << "no first poll";
  u.Signal(SIGUSR1);
  ASSERT_TRUE(p.waitForFinished(60000));
  EXPECT_EQ(p.exitCode(), 1);
  out += p.readAllStandardOutput().toStdString();
  const auto lines = Lines(out);
  ASSERT_GE(lines.size(), 4u) << out;
  ASSERT_LT(lines.size(), 20u) << out;
  EXPECT_TRUE(Json(lines[0])["ok"].toBool());
  const QJsonObject last = Json(lines.back());
  EXPECT_FALSE(last["connected"].toBool());
  EXPECT_FALSE(last["ok"].toBool());
  EXPECT_EQ(Str(Control(last, "btnConnect"), "caption"), "Connect");
  EXPECT_EQ(Json(lines[lines.size() - 2])["missedPollsLeft"].toInt(), 0);
  EXPECT_NE(p.readAllStandardError().toStdString().find("session ended"), std::string::npos);
}

// ------------------------------------------------------------------ script

TEST(CliEndToEnd, ScriptSwitchesToWattsAndBackAndAnswersTheSerialDialog) {
  Unit u({"--no-tcp", "--serial"});
  ASSERT_TRUE(u.ok);
  const std::string script =
      "# the display units\n"
      "click mnuWatts\n"
      "dump\n"
      "click mnuWatts\n"
      "dump\n"
      "# the serial settings of COM1, the unit's line\n"
      "click mnuComPort(0)\n"
      "select frmCom.cbBaud 19200\n"
      "click frmCom.optParity(1)\n"
      "dump\n"
      "click frmCom.cmdOK\n"
      "# open again: the dialog starts from what the link now uses\n"
      "click mnuComPort(0)\n"
      "dump\n"
      "select frmCom.cbBaud 9600\n"
      "click frmCom.optParity(0)\n"
      "click frmCom.cmdOK\n"
      "poll\n";
  CliRun r = Cli({"--serial", u.serial, "--json", "script", "-"}, 60000, script);
  EXPECT_EQ(r.code, 0) << r.err;
  const auto lines = Lines(r.out);
  ASSERT_EQ(lines.size(), 5u) << r.out;

  const QJsonObject watts = Json(lines[0]), dBm = Json(lines[1]);
  EXPECT_EQ(Str(Control(watts, "mnuWatts"), "caption"), "Display dBm");
  EXPECT_EQ(Str(Control(dBm, "mnuWatts"), "caption"), "Display Watts");
  for (const char* unitLabel : {"Label64", "Label5", "Label8", "Label71"}) {
    EXPECT_EQ(Str(Control(watts, unitLabel), "caption"), "Watts") << unitLabel;
    EXPECT_EQ(Str(Control(dBm, unitLabel), "caption"), "dBm") << unitLabel;
  }
  const double fwdW = std::stod(Str(Control(watts, "txtFdBm"), "text"));
  const double fwddBm = std::stod(Str(Control(dBm, "txtFdBm"), "text"));
  EXPECT_NEAR(fwdW, std::pow(10.0, (fwddBm - 30.0) / 10.0), fwdW * 0.02);

  const QJsonObject inDialog = Json(lines[2]);
  EXPECT_EQ(Str(inDialog["dialog"].toObject(), "name"), "frmCom");
  EXPECT_EQ(Str(inDialog["dialog"].toObject(), "caption"), "Com1 Port Settings");
  EXPECT_EQ(Str(Control(inDialog, "cbBaud", "dialog"), "text"), "19200");
  EXPECT_TRUE(Control(inDialog, "optParity(1)", "dialog")["value"].toBool());
  const QJsonObject reopened = Json(lines[3]);
  EXPECT_EQ(Str(Control(reopened, "cbBaud", "dialog"), "text"), "19200");
  EXPECT_TRUE(Control(reopened, "optParity(1)", "dialog")["value"].toBool());

  // Back on the unit's settings the poll is good and nothing was left open.
  const QJsonObject end = Json(lines[4]);
  EXPECT_TRUE(end["connected"].toBool());
  EXPECT_TRUE(end["dialog"].isNull());
  EXPECT_TRUE(end["messages"].toArray().isEmpty()) << r.err;
}

TEST(CliEndToEnd, ScriptDialogLeftOpenAndActionsThatCannotRun) {
  Unit u({"--tcp", "127.0.0.1:0"});
  ASSERT_TRUE(u.ok);
  const std::string file = FreshFile("ampdesk-cli-open.txt");
  std::ofstream(file) << "click mnuHelpAbout\n";
  CliRun r = Cli({"--tcp", u.Tcp(), "--json", "script", file});
  EXPECT_EQ(r.code, 0) << r.err;
  const QJsonObject s = Json(Lines(r.out).at(0));
  EXPECT_EQ(Str(s["dialog"].toObject(), "name"), "frmAbout");
  EXPECT_NE(r.err.find("frmAbout"), std::string::npos) << r.err;

  // The About dialog's button reports the missing tool: a failure box.
  r = Cli({"--tcp", u.Tcp(), "script", "-"}, 60000,
          "click mnuHelpAbout\nclick frmAbout.cmdSysInfo\nclick frmAbout.cmdOK\n");
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("AmpDesk: System Information Is Unavailable At This Time"),
            std::string::npos)
      << r.err;

  // The main panel cannot be used while a dialog is open.
  r = Cli({"--tcp", u.Tcp(), "script", "-"}, 60000, "click mnuHelpAbout\nclick mnuWatts\n");
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("<stdin>: line 2: mnuWatts: frmAbout is open in front of frmMain"),
            std::string::npos)
      << r.err;
}

// ---------------------------------------------------------------- searching

TEST(CliEndToEnd, TheSearchOptions) {
  // A unit at address E on 19200,E,7,1.
  Unit u({"--no-tcp", "--serial", "--address", "E", "--line", "19200,E,7,1"});
  ASSERT_TRUE(u.ok);
  auto address = [](const CliRun& r) {
    return Str(Control(Json(Lines(r.out).at(0)), "txtAdr"), "text");
  };

  // The plain search stops at C.
  CliRun r = Cli({"--serial", u.serial, "--settings", "19200,E,7,1", "status", "--json"});
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("Connect: Unit Not Found"), std::string::npos) << r.err;
  EXPECT_FALSE(Json(Lines(r.out).at(0))["connected"].toBool());

  for (const char* depth : {"extended", "advanced"}) {
    r = Cli(
        {"--serial", u.serial, "--settings", "19200,E,7,1", "--search", depth, "status", "--json"});
    EXPECT_EQ(r.code, 0) << depth << r.err;
    EXPECT_EQ(address(r), "E") << depth;
  }
  // The address alone: the settings are searched.
  r = Cli({"--serial", u.serial, "--address", "E", "status", "--json"});
  EXPECT_EQ(r.code, 0) << r.err;
  EXPECT_EQ(address(r), "E");
  // Both: the single address is polled, and only on those settings.
  r = Cli(
      {"--serial", u.serial, "--address", "E", "--settings", "19200,E,7,1", "status", "--json"});
  EXPECT_EQ(r.code, 0) << r.err;
  r = Cli({"--serial", u.serial, "--address", "E", "--settings", "9600,N,8,1", "status"});
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("Connect: Unit Not Found"), std::string::npos) << r.err;
}

TEST(CliEndToEnd, ThePlainSearchTriesTheSettingsInTurn) {
  Unit u({"--no-tcp", "--serial", "--address", "C", "--line", "4800,N,8,1"});
  ASSERT_TRUE(u.ok);
  CliRun r = Cli({"--serial", u.serial, "--json", "status"}, 90000);
  EXPECT_EQ(r.code, 0) << r.err;
  EXPECT_EQ(Str(Control(Json(Lines(r.out).at(0)), "txtAdr"), "text"), "C");
}

// -------------------------------------------------------- bad input, failures

TEST(CliEndToEnd, BadScriptLinesAreRefusedBeforeAnythingIsSent) {
  const std::string log = FreshFile("ampdesk-cli-frames.log");
  Unit u({"--tcp", "127.0.0.1:0", "--frame-log", log});
  ASSERT_TRUE(u.ok);
  struct Case {
    const char* script;
    const char* says;
  };
  for (const Case& c : {Case{"click mnuWatts\n\n# fine so far\nclick txtNope\n",
                             "<stdin>: line 4: unknown control 'txtNope'"},
                        Case{"click mnuWatts\nfrobnicate mnuWatts\n",
                             "<stdin>: line 2: unknown action 'frobnicate'"},
                        Case{"click frmNope.cmdOK\n", "<stdin>: line 1: no form named 'frmNope'"},
                        Case{"click mnuComPort(0)\nselect frmCom.cmdOK 1\n",
                             "line 2: select does not apply to cmdOK"},
                        Case{"wait soon\n", "line 1: wait takes milliseconds"}}) {
    CliRun r = Cli({"--tcp", u.Tcp(), "script", "-"}, 30000, c.script);
    EXPECT_EQ(r.code, 2) << c.script;
    EXPECT_NE(r.err.find(c.says), std::string::npos) << r.err;
    EXPECT_TRUE(r.out.empty()) << r.out;
  }
  CliRun r = Cli({"--tcp", u.Tcp(), "script", "/no/such/script"});
  EXPECT_EQ(r.code, 2);
  EXPECT_NE(r.err.find("cannot read the script /no/such/script"), std::string::npos) << r.err;
  // Not one frame reached the unit.
  EXPECT_EQ(ReadAll(log), "");
}

TEST(CliEndToEnd, FailuresAndBadArguments) {
  // Nobody listens on a port that was just freed.
  int freePort = 0;
  {
    Unit u({"--tcp", "127.0.0.1:0"});
    ASSERT_TRUE(u.ok);
    freePort = u.port;
  }
  CliRun r = Cli({"--tcp", "127.0.0.1:" + std::to_string(freePort), "status"});
  EXPECT_EQ(r.code, 1);
  EXPECT_NE(r.err.find("Ethernet Communication Error: Unable to Connect to Unit"),
            std::string::npos)
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
           {"--tcp", "127.0.0.1"},
       }) {
    r = Cli(args);
    EXPECT_EQ(r.code, 2) << args.back();
    EXPECT_NE(r.err.find("ampdesk-cli: "), std::string::npos) << r.err;
    EXPECT_NE(r.err.find("--help"), std::string::npos) << r.err;
    EXPECT_TRUE(r.out.empty());
  }
  r = Cli({"--help"});
  EXPECT_EQ(r.code, 0);
  for (const char* documented :
       {"--tcp HOST[:PORT]", "--serial DEVICE", "--settings TEXT", "--address C",
        "--search extended|advanced", "--watts", "--data-dir DIR", "--answer ok|cancel|yes|no",
        "--input TEXT", "--json", "monitor [--polls N]", "send TEXT...", "script FILE|-",
        "select CONTROL INDEX|TEXT", "Exit codes"})
    EXPECT_NE(r.out.find(documented), std::string::npos) << documented;
}

TEST(CliEndToEnd, InputBoxesAreAnsweredInOrder) {
  Unit u({"--tcp", "127.0.0.1:0"});
  ASSERT_TRUE(u.ok);
  // The poll address box: the first answer is refused, the second taken,
  // and a third box finds no answer left and is cancelled.
  CliRun r = Cli({"--tcp", u.Tcp(), "--input", "AB", "--input", "D", "--json", "script", "-"},
                 60000, "click mnuPollAdrs\nclick mnuPollAdrs\nclick mnuPollAdrs\n");
  EXPECT_EQ(r.code, 1) << r.err;  // the refused address was a failure box
  EXPECT_NE(r.err.find("AmpDesk: Address Error"), std::string::npos) << r.err;
  EXPECT_NE(r.err.find("no --input left"), std::string::npos) << r.err;
  const QJsonObject s = Json(Lines(r.out).at(0));
  EXPECT_EQ(Str(Control(s, "mnuPollAdrs"), "caption"), "Poll Address D");
  ASSERT_EQ(s["messages"].toArray().size(), 1);
}

}  // namespace
}  // namespace amp
