// The operator's controls of the main panel, driven through ampdesk-cli
// script against ampsim run as a separate program over loopback TCP. Each case
// checks both sides: the panel state the command line prints and the frames
// the simulated unit logged as received.
#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonObject>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "e2e/cli_runner.h"

namespace amp {
namespace {

using namespace e2e;

// A stored profile with `extra` appended, in the test's temporary directory:
// a later key replaces an earlier one, and "[unit]" leads back to the unit
// keys.
std::string DerivedProfile(const std::string& base, const std::string& name,
                           const std::string& extra) {
  const std::string path = FreshFile(name + ".profile");
  std::ofstream(path) << ReadAll(std::string(AMPSIM_PROFILE_DIR) + "/" + base + ".profile") << "\n"
                      << extra;
  return path;
}

std::string Text(const QJsonObject& state, const char* control) {
  return Str(Control(state, control), "text");
}
std::string Caption(const QJsonObject& state, const char* control) {
  return Str(Control(state, control), "caption");
}
int Value(const QJsonObject& state, const char* control) {
  return Control(state, control)["value"].toInt();
}
bool Visible(const QJsonObject& state, const char* control, const char* where = "form") {
  return Control(state, control, where)["visible"].toBool();
}

size_t Count(const std::string& text, const std::string& what) {
  size_t n = 0;
  for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + what.size()))
    ++n;
  return n;
}

std::string OneDecimal(double v) {
  char buf[32];
  std::snprintf(buf, sizeof buf, "%.1f", v);
  return buf;
}

// ----------------------------------------------------------- remote guard

TEST(OperatorEndToEnd, ALocalUnitIsLeftAloneAndTheCheckBoxesGoBack) {
  Bench b("local", {"--local"});
  ASSERT_TRUE(b.unit.ok);
  const auto run = b.Script(
      "click chkPS\n"
      "dump\n"
      "click chkRFI\n"
      "click btnFaultReset\n"
      "select cmbWgCfg 5\n"
      "type txtAtnDB 5\n"
      "dump\n");
  EXPECT_EQ(run.code, 1) << run.err;  // the refusals are failure boxes
  ASSERT_EQ(run.states.size(), 3u) << run.err;
  // One box per action: the put-back of a check box runs no second pass.
  EXPECT_EQ(Count(run.err, "Communication Error: Not in Remote Mode"), 5u) << run.err;
  EXPECT_EQ(Boxes(run.states[0]),
            std::vector<std::string>{"Communication Error: Not in Remote Mode"});
  EXPECT_EQ(Value(run.states[0], "chkPS"), 1);
  const QJsonObject& end = run.states[1];
  EXPECT_EQ(Boxes(end).size(), 5u);
  EXPECT_EQ(Value(end, "chkPS"), 1);
  EXPECT_EQ(Value(end, "chkRFI"), 0);
  // A combo is not put back; the next status writes it.
  EXPECT_EQ(Control(end, "cmbWgCfg")["listIndex"].toInt(), 5);
  // The key of a refused field stays in it.
  EXPECT_EQ(Text(end, "txtAtnDB"), "10.05");
  EXPECT_EQ(b.SetsSent(), Sets{});
}

// ------------------------------------------------------------ transmitter

TEST(OperatorEndToEnd, TheTransmitterAndTheInhibitAndWhatThePollPutsRight) {
  {
    SCOPED_TRACE("on, inhibited, released, off");
    Bench b("tx", {"--status", "L@A@,@@@@,@@@@"});
    ASSERT_TRUE(b.unit.ok);
    const auto run = b.Script(
        "dump\nclick chkPS\npoll\ndump\nclick chkRFI\npoll\ndump\n"
        "click chkRFI\nclick chkPS\npoll\ndump\n");
    EXPECT_EQ(run.code, 0) << run.err;
    ASSERT_EQ(run.states.size(), 5u);
    EXPECT_EQ(Value(run.states[0], "chkPS"), 0);
    EXPECT_EQ(Caption(run.states[0], "Label31"), "Standby");
    EXPECT_EQ(Value(run.states[1], "chkPS"), 1);
    EXPECT_EQ(Caption(run.states[1], "Label31"), "Vdd On");
    EXPECT_TRUE(Control(run.states[1], "chkConstPwr")["enabled"].toBool());
    EXPECT_FALSE(Visible(run.states[1], "Label35"));
    EXPECT_EQ(Value(run.states[2], "chkRFI"), 1);
    EXPECT_TRUE(Visible(run.states[2], "Label35"));  // the unit reports the inhibit
    EXPECT_EQ(Value(run.states[3], "chkPS"), 0);
    EXPECT_EQ(Caption(run.states[3], "Label31"), "Standby");
    EXPECT_FALSE(Visible(run.states[3], "Label35"));
    EXPECT_FALSE(Control(run.states[3], "chkConstPwr")["enabled"].toBool());
    EXPECT_TRUE(Boxes(run.states[3]).empty()) << run.err;
    EXPECT_EQ(b.SetsSent(), (Sets{"@", "I", "J", "A"}));
  }
  SCOPED_TRACE("refused while a fault stands");
  Bench b("tx-fault", {"--status", "L`A@,@D@@,@@@@"});
  ASSERT_TRUE(b.unit.ok);
  const auto run = b.Script("click chkPS\ndump\npoll\ndump\n");
  EXPECT_EQ(run.code, 0) << run.err;
  ASSERT_EQ(run.states.size(), 3u);
  // The refused "@" leaves the box as the operator left it, silently ...
  EXPECT_EQ(Value(run.states[0], "chkPS"), 1);
  EXPECT_TRUE(Boxes(run.states[0]).empty()) << run.err;
  // ... and the poll that puts it back does not echo "A" to the unit.
  EXPECT_EQ(Value(run.states[1], "chkPS"), 0);
  EXPECT_EQ(Caption(run.states[1], "Label31"), "Standby");
  EXPECT_EQ(b.SetsSent(), Sets{"@"});
}

// ---------------------------------------------------------- clock, reset

TEST(OperatorEndToEnd, TheNowButtonAsksBeforeResettingATransmittingUnit) {
  Bench b("now", {});
  ASSERT_TRUE(b.unit.ok);
  const std::string unitClock = ProfileValues("sspa120").at("clock");
  const std::string question = "Reset Unit?: This will reset the unit and \r\ntake it offline";

  auto cancelled = b.Script("click Command7\ndump\n", {"--answer", "cancel"});
  EXPECT_EQ(cancelled.code, 0) << cancelled.err;
  ASSERT_EQ(cancelled.states.size(), 2u);
  EXPECT_NE(cancelled.err.find("Reset Unit?: This will reset the unit and \\ntake it offline"),
            std::string::npos)
      << cancelled.err;
  EXPECT_EQ(Boxes(cancelled.states[0]), std::vector<std::string>{question});
  EXPECT_EQ(Text(cancelled.states[0], "txtDateTime"), unitClock);
  EXPECT_EQ(b.SetsSent(), Sets{});

  // A unit that starts up in standby: the reset that sets the clock drops
  // the transmitter, and the poll shows it without sending anything back.
  const CliRun startup = Cli({"--tcp", b.unit.Tcp(), "send", "PX1"});
  ASSERT_EQ(startup.code, 0) << startup.err;
  auto accepted = b.Script("click Command7\ndump\npoll\ndump\n", {"--answer", "ok"});
  EXPECT_EQ(accepted.code, 0) << accepted.err;
  ASSERT_EQ(accepted.states.size(), 3u);
  EXPECT_EQ(Boxes(accepted.states[0]), std::vector<std::string>{question});
  const std::string now = Text(accepted.states[0], "txtDateTime");
  EXPECT_TRUE(std::regex_match(now, std::regex(R"(\d{4}/\d{2}/\d{2},\d{2}:\d{2})"))) << now;
  EXPECT_EQ(b.SetsSent(), (Sets{"PX1", "%" + now, "~"}));
  EXPECT_EQ(Value(accepted.states[1], "chkPS"), 0);
  EXPECT_EQ(Caption(accepted.states[1], "Label31"), "Standby");
}

// ------------------------------------------------------------ attenuation

TEST(OperatorEndToEnd, AttenuationTypedOrStepped) {
  Bench b("atten", {});
  ASSERT_TRUE(b.unit.ok);
  // .?P203 gives the largest attenuation in tenths of a dB.
  const std::string maxAtten =
      OneDecimal(std::stod(ProfileValues("sspa120").at("param.203")) / 10.0);
  ASSERT_EQ(maxAtten, "30.0");
  const auto run = b.Script(
      "set txtAtnDB \"\"\n"
      "type txtAtnDB 30.5\n"
      "key txtAtnDB Enter\n"
      "dump\n"
      "set txtAtnDB 29.8\n"
      "up UpDown1\nup UpDown1\nup UpDown1\nup UpDown1\n"
      "dump\n"
      "set txtAtnDB 0.1\n"
      "down UpDown1\ndown UpDown1\ndown UpDown1\n"
      "dump\n");
  EXPECT_EQ(run.code, 0) << run.err;
  ASSERT_EQ(run.states.size(), 4u);
  // Typed: the text goes out as it stands, past the largest value.
  EXPECT_EQ(Text(run.states[0], "txtAtnDB"), "30.5");
  // Stepped: stops at the largest value, and at 0.0.
  EXPECT_EQ(Text(run.states[1], "txtAtnDB"), maxAtten);
  EXPECT_EQ(Text(run.states[2], "txtAtnDB"), "0.0");
  EXPECT_EQ(b.SetsSent(), (Sets{"K30.5", "K29.9", "K30.0", "K0.0"}));
}

// --------------------------------------------------------- constant power

TEST(OperatorEndToEnd, ConstantPowerLevels) {
  // A unit whose band floor read fails, so the floor is 0.1 dBm; it takes
  // levels in dBm ("GM").
  const std::string profile =
      DerivedProfile("sspa120", "sspa120-no-floor", "[unit]\nlacks = param.66\n");
  const std::string maxdBm = OneDecimal(std::stod(ProfileValues("sspa120").at("param.71")) / 10.0);
  const std::string script =
      "dump\n"
      "click chkConstPwr\n"
      "set txtConstLvl \"\"\n"
      "type txtConstLvl 1.1\n"
      "key txtConstLvl Enter\n"
      "dump\n"
      "set txtConstLvl \"\"\n"
      "type txtConstLvl 1.0\n"
      "key txtConstLvl Enter\n"
      "dump\n";
  Bench b("const-dbm", {"--profile", profile});
  ASSERT_TRUE(b.unit.ok);
  const auto run = b.Script(script);
  EXPECT_EQ(run.code, 1) << run.err;
  ASSERT_EQ(run.states.size(), 4u);
  // Switching on holds the power present now.
  const std::string present = Text(run.states[0], "txtFdBm");
  EXPECT_EQ(Value(run.states[1], "chkConstPwr"), 1);
  EXPECT_EQ(Text(run.states[1], "txtConstLvl"), "1.1");  // read back from the unit
  EXPECT_TRUE(Boxes(run.states[1]).empty()) << run.err;
  EXPECT_EQ(Boxes(run.states[2]),
            std::vector<std::string>{"Range Error: Value out of Range\r\n\r\nValid Range: 1.1 to " +
                                     maxdBm + " dBm"});
  EXPECT_EQ(Value(run.states[2], "chkConstPwr"), 0);  // dropped back, without "H"
  EXPECT_EQ(b.SetsSent(), (Sets{"GM" + OneDecimal(std::stod(present)), "GM1.1"}));
}

// ------------------------------------------------------------- trip lines

TEST(OperatorEndToEnd, ThePollSparesTheTripLineBeingEdited) {
  Bench b("trips", {});
  ASSERT_TRUE(b.unit.ok);
  const auto values = ProfileValues("sspa120");
  const auto run = b.Script(
      "set txtFhiLvl 12.0\n"
      "set txtRhiLvl 13.0\n"
      "focus txtFloLvl\n"
      "set txtFloLvl 42.0\n"
      "poll 4\n"
      "dump\n"
      "leave txtFloLvl\n"
      "poll 4\n"
      "dump\n"
      "focus txtFloLvl\n"
      "set txtFloLvl \"\"\n"
      "type txtFloLvl 42.5\n"
      "key txtFloLvl Enter\n"
      "leave txtFloLvl\n"
      "poll 4\n"
      "dump\n");
  EXPECT_EQ(run.code, 0) << run.err;
  ASSERT_EQ(run.states.size(), 4u);
  // The fourth poll re-reads the trip levels: the other two lines show the
  // unit's levels again, the line with the cursor keeps the operator's text.
  EXPECT_EQ(Text(run.states[0], "txtFhiLvl"), values.at("trip.fwd_hi.level"));
  EXPECT_EQ(Text(run.states[0], "txtRhiLvl"), values.at("trip.rev_hi.level"));
  EXPECT_EQ(Text(run.states[0], "txtFloLvl"), "42.0");
  // Leaving the field sends nothing; the next read puts the unit's level back.
  EXPECT_EQ(Text(run.states[1], "txtFloLvl"), values.at("trip.fwd_lo.level"));
  EXPECT_EQ(Str(Control(run.states[1], "cmbFloTripType"), "text"), "Alarm");
  // Enter sets it, in dBm on this unit, with the line's type.
  EXPECT_EQ(Text(run.states[2], "txtFloLvl"), "42.5");
  EXPECT_EQ(b.SetsSent(), Sets{"LAM42.5"});
}

// -------------------------------------------------------------- sub-bands

TEST(OperatorEndToEnd, SubBandsEndAtTheFirstHole) {
  const auto values = ProfileValues("bucsspa");
  const std::string first = values.at("subband.1.freq"), second = values.at("subband.2.freq");
  const std::string profile =
      DerivedProfile("bucsspa", "bucsspa-hole", "[values]\nsubband.3.freq = 00.00\n");
  Bench b("subband-hole", {"--profile", profile});
  ASSERT_TRUE(b.unit.ok);
  const auto run = b.Script(
      "dump\n"
      "dblclick lblSBandFrq\n"
      "click frmSetSubBand.optSelectedSB(0)\n"
      "dump\n"
      "poll 4\n"
      "dump\n");
  EXPECT_EQ(run.code, 0) << run.err;
  ASSERT_EQ(run.states.size(), 4u);
  const QJsonObject& start = run.states[0];
  EXPECT_TRUE(Visible(start, "mnuSubBands"));
  EXPECT_EQ(Caption(start, "mnuSubB1"), "#1   " + first + " GHz");
  EXPECT_EQ(Caption(start, "mnuSubB2"), "#2   " + second + " GHz");
  EXPECT_FALSE(Visible(start, "mnuSubB3"));
  EXPECT_FALSE(Visible(start, "mnuSubB4"));  // has a frequency, but after the hole
  EXPECT_TRUE(Control(start, "mnuSubB2")["checked"].toBool());
  EXPECT_EQ(Caption(start, "lblSBandFrq"), "#2   " + second + " GHz");

  // Sub-band 1 is chosen: its menu item is checked at once, the label waits
  // for the poll that reads the unit's current sub-band.
  const QJsonObject& chosen = run.states[1];
  EXPECT_TRUE(chosen["dialog"].isNull());
  EXPECT_TRUE(Control(chosen, "mnuSubB1")["checked"].toBool());
  EXPECT_EQ(Caption(chosen, "lblSBandFrq"), "#2   " + second + " GHz");
  EXPECT_EQ(Caption(run.states[2], "lblSBandFrq"), "#1   " + first + " GHz");
  EXPECT_EQ(b.SetsSent(), Sets{"PBS1"});
}

// -------------------------------------------------------------- waveguide

TEST(OperatorEndToEnd, TheLastWaveguideItemIsSix) {
  Bench b("waveguide", {});
  ASSERT_TRUE(b.unit.ok);
  const auto run = b.Script("dump\nselect cmbWgCfg 6 - Standalone w/load\npoll\ndump\n");
  EXPECT_EQ(run.code, 0) << run.err;
  ASSERT_EQ(run.states.size(), 3u);
  EXPECT_EQ(Control(run.states[0], "cmbWgCfg")["listIndex"].toInt(), 0);
  // The unit's status now reports 6, which the panel shows as the sixth item.
  EXPECT_EQ(Control(run.states[1], "cmbWgCfg")["listIndex"].toInt(), 5);
  EXPECT_EQ(b.SetsSent(), Sets{"PC6"});
}

// ---------------------------------------------------------------- address

// Over the serial line, where the address is what picks the unit out of
// those on the bus.
TEST(OperatorEndToEnd, TheUnitAddressChangedOverTheSerialLine) {
  Bench b("address", {}, Line::kSerial);
  ASSERT_TRUE(b.unit.ok);
  const auto run = b.Script("set txtAdr \"\"\ntype txtAdr b\nkey txtAdr Enter\npoll\ndump\n");
  EXPECT_EQ(run.code, 0) << run.err;
  ASSERT_EQ(run.states.size(), 2u);
  EXPECT_EQ(Text(run.states[0], "txtAdr"), "B");
  EXPECT_TRUE(run.states[0]["connected"].toBool());
  const auto values = ProfileValues("sspa120");
  EXPECT_EQ(b.SetsSent(), Sets{"XR" + values.at("rs485.wire") + values.at("rs485.term") + "B"});
  // The frames after the change go to the new address, and are answered.
  const auto frames = FramesIn(b.log);
  ASSERT_FALSE(frames.empty());
  EXPECT_EQ(frames.back()[0], 'B') << frames.back();
  EXPECT_TRUE(Boxes(run.states[1]).empty()) << run.err;
}

// ------------------------------------------------- configuration dialogs

// The commands received after the last `marker`, with their time from it in
// milliseconds (the log's lines start with the time in seconds).
std::vector<std::pair<long long, std::string>> After(const std::string& log,
                                                     const std::string& marker) {
  const std::vector<std::string> frames = FramesIn(log), lines = Lines(ReadAll(log));
  std::vector<std::pair<long long, std::string>> out;
  for (size_t i = 0; i < frames.size() && i < lines.size(); ++i) {
    if (frames[i].substr(1) == marker) out.clear();
    out.emplace_back(std::llround(std::stod(lines[i]) * 1000), frames[i].substr(1));
  }
  if (out.empty() || out[0].second != marker) {
    ADD_FAILURE() << "no " << marker;
    return {};
  }
  const long long t0 = out[0].first;
  for (auto& frame : out) frame.first -= t0;
  return {out.begin() + 1, out.end()};
}

// The console sends a marker; every small dialog then opens and closes
// without a command, and the poll is back within 3 s. Then one switch.
TEST(OperatorEndToEnd, ConfigurationDialogsOpenSilentlyAndThePollResumes) {
  for (const Line line : {Line::kTcp, Line::kSerial}) {
    SCOPED_TRACE(line == Line::kTcp ? "tcp" : "pty");
    Bench b(line == Line::kTcp ? "dialogs-tcp" : "dialogs-pty", {}, line);
    ASSERT_TRUE(b.unit.ok);
    const auto run = b.Script(
        "click mnuCmdLine\n"
        "set frmCmdLine.cmbCmd YT\nkey frmCmdLine.cmbCmd Enter\nkey frmCmdLine.cmbCmd Enter\n"
        "dump\nclick frmCmdLine.btnClose\n"
        "click mnuMaxPwrLvl\nclick frmPwrLimit.cmdOK\n"
        "click mnuTempTripLevels\nclick frmTempLimits.btnCancel\n"
        "click mnuPowerSave\nclick FrmPowerSave.cmdOK\n"
        "click mnuGainBal\nclick frmGainBal.cmdOK\n"
        "click mnuStartupCfg\nclick frmStartup.Command1\n"
        "wait 3000\nclick mnuRack\ndump\n");
    EXPECT_EQ(run.code, 0) << run.err;
    ASSERT_EQ(run.states.size(), 3u);
    EXPECT_EQ(Control(run.states[0], "cmbCmd", "dialog")["items"].toArray().size(), 1);
    EXPECT_EQ(Control(run.states[0], "List1", "dialog")["items"].toArray().size(), 2);
    const auto after = After(b.log, "YT");
    ASSERT_FALSE(after.empty());
    EXPECT_EQ(after[0].second, "?!#(") << "the first frame after the dialogs is a poll";
    EXPECT_LE(after[0].first, 3000);
    EXPECT_EQ(b.SetsSent(), Sets{"YM8"}) << "an unchecked Rack Unit clears its bit";
    EXPECT_TRUE(Control(run.states[1], "mnuRack")["checked"].toBool());
  }
}

// The upconverter dialog reads the IF side live on its own timer, never
// beside the poll, and the poll is back within 3 s of OK.
TEST(OperatorEndToEnd, UpconverterReadingsRunOnlyWhileTheDialogIsOpen) {
  Bench b("upconverter", {"--profile", "bucsspa"});
  ASSERT_TRUE(b.unit.ok);
  const auto run = b.Script(
      "click mnuCmdLine\nset frmCmdLine.cmbCmd YT\nkey frmCmdLine.cmbCmd Enter\n"
      "click frmCmdLine.btnClose\n"
      "click mnulcBucSetup\nclick frmlcBucSetup.chklcBucEn\nwait 2500\ndump\n"
      "set frmlcBucSetup.txtlcBucO \"\"\ntype frmlcBucSetup.txtlcBucO -40\n"
      "key frmlcBucSetup.txtlcBucO Enter\nclick frmlcBucSetup.btnOK\nwait 3000\n");
  EXPECT_EQ(run.code, 0) << run.err;
  ASSERT_EQ(run.states.size(), 2u);
  EXPECT_NE(Str(Control(run.states[0], "txtlcBucPwr", "dialog"), "text"), "");
  EXPECT_NE(Str(Control(run.states[0], "txtlcBucTemp", "dialog"), "text"), "");
  EXPECT_EQ(b.SetsSent(), (Sets{"YM1032", "PBCO-31.5"}));
  const auto after = After(b.log, "YT");
  ASSERT_FALSE(after.empty());
  EXPECT_EQ(after[0].second, "YM1032") << "opening sent nothing";
  long long closed = -1, poll = -1;
  int readings = 0, late = 0;
  for (const auto& [ms, command] : after) {
    if (command == "PBCP?") ++(closed < 0 ? readings : late);
    if (command == "PBCO-31.5") closed = ms;
    if (command == "?!#(" && poll < 0) poll = ms;
  }
  EXPECT_GE(readings, 2);
  EXPECT_EQ(late, 0) << "the dialog's timer stops with it";
  EXPECT_GT(poll, closed) << "no poll while the dialog was open";
  EXPECT_LE(poll - closed, 3000);
}

}  // namespace
}  // namespace amp
