// Transmitter, heater, helix, cathode, hours and tube-life readers and set
// texts, against scripted replies laid out as the unit sends them.
#include <gtest/gtest.h>

#include "commands/reader_support.h"
#include "commands/transmitter_cmds.h"
#include "support/scripted_unit.h"

namespace amp {
namespace {

using test::ScriptedUnit;

// The reply to one scripted command, through one reader.
template <class Reader>
auto ReadWith(const std::string& command, const std::string& body, Reader reader) {
  ScriptedUnit u;
  u.Answer(command, body);
  return reader(u.comms);
}

// The same with the unit's address byte chosen, to put a tail into it.
template <class Reader>
auto ReadAddressed(const std::string& command, const std::string& body, char address,
                   Reader reader) {
  ScriptedUnit u;
  u.Raw(command, ScriptedUnit::Frame('\x06', body, address));
  return reader(u.comms);
}

template <class Reader>
auto ReadRefused(const std::string& command, Reader reader) {
  ScriptedUnit u;
  u.Refuse(command);
  return reader(u.comms);
}

TEST(TransmitterCmds, StatusWordsSingly) {
  struct Case {
    int k;
    const char* request;
  };
  for (const Case& k : {Case{1, "?!"}, Case{2, "?("}, Case{3, "?#"}}) {
    ScriptedUnit u;
    u.Answer(k.request, "?0A1F");
    EXPECT_EQ(ReadStatusWord(u.comms, k.k), "0A1F") << k.request;
    EXPECT_EQ(u.sent, (std::vector<std::string>{k.request}));
  }
  {
    // Only words 1 to 3 exist: nothing goes to the unit for others.
    ScriptedUnit u;
    EXPECT_EQ(ReadStatusWord(u.comms, 4), "");
    EXPECT_EQ(ReadStatusWord(u.comms, 0), "");
    EXPECT_TRUE(u.sent.empty());
  }
  // A "?" in the address byte is found first: the word then starts at the
  // body's first character.
  EXPECT_EQ(ReadAddressed("?!", "?0A1F", '?', [](Comms& c) { return ReadStatusWord(c, 1); }),
            "?0A1");
  EXPECT_EQ(ReadWith("?!", "0A1F", [](Comms& c) { return ReadStatusWord(c, 1); }), "");
  EXPECT_EQ(ReadRefused("?(", [](Comms& c) { return ReadStatusWord(c, 2); }), "");
}

TEST(TransmitterCmds, RfInhibitStateAndPolarity) {
  EXPECT_EQ(ReadWith(".?P54", ".P54 0", ReadRFInhibitState), 0);
  EXPECT_EQ(ReadWith(".?P54", ".P54 1", ReadRFInhibitState), -1);
  EXPECT_EQ(ReadWith(".?P54", ".P54 x", ReadRFInhibitState), -1);
  // Len > 7: a reply of 8 characters is read, one of 7 is not.
  EXPECT_EQ(ReadWith(".?P54", "P5 0", ReadRFInhibitState), 0);
  EXPECT_EQ(ReadWith(".?P54", "P 0", ReadRFInhibitState), -1);
  // Only the first character after the blank counts.
  EXPECT_EQ(ReadWith(".?P54", ".P54 05", ReadRFInhibitState), 0);
  EXPECT_EQ(ReadRefused(".?P54", ReadRFInhibitState), -1);

  EXPECT_EQ(ReadWith("PTI?", "PTI0", ReadRFPolarity), 0);
  EXPECT_EQ(ReadWith("PTI?", "PTI1", ReadRFPolarity), 1);
  EXPECT_EQ(ReadWith("PTI?", "PTI7", ReadRFPolarity), 1);
  EXPECT_EQ(ReadWith("PTI?", "PTIx", ReadRFPolarity), -1);
  EXPECT_EQ(ReadWith("PTI?", "PX0", ReadRFPolarity), -1);
  // "TI" split across address and body (tail at 2 passes tail + 1 > 2), in
  // the shortest reply Len > 5 lets through.
  EXPECT_EQ(ReadAddressed("PTI?", "I0", 'T', ReadRFPolarity), 0);
  EXPECT_EQ(ReadRefused("PTI?", ReadRFPolarity), -1);
}

TEST(TransmitterCmds, OneDigitSettings) {
  EXPECT_EQ(ReadWith("PBA?", "PBA0", ReadAutoXmitRestore), 0);
  EXPECT_EQ(ReadWith("PBA?", "PBA1", ReadAutoXmitRestore), 1);
  EXPECT_EQ(ReadWith("PBA?", "PBAx", ReadAutoXmitRestore), 0);  // Val of a letter
  // tail "BA" > 2: at 3 it passes, at 2 (in the address) it does not.
  EXPECT_EQ(ReadWith("PBA?", "BA1", ReadAutoXmitRestore), 1);
  EXPECT_EQ(ReadAddressed("PBA?", "A1", 'B', ReadAutoXmitRestore), -1);
  EXPECT_EQ(ReadRefused("PBA?", ReadAutoXmitRestore), -1);

  EXPECT_EQ(ReadWith("PX?", "PX2", ReadStartupMode), 2);
  EXPECT_EQ(ReadWith("PX?", "PX12", ReadStartupMode), 1);           // one character only
  EXPECT_EQ(ReadAddressed("PX?", "X2", 'P', ReadStartupMode), -1);  // tail + 2 = 4
  EXPECT_EQ(ReadRefused("PX?", ReadStartupMode), -1);

  EXPECT_EQ(ReadWith(":?", ":1", ReadHeaterStandby), 1);
  EXPECT_EQ(ReadWith(":?", ":0", ReadHeaterStandby), 0);
  EXPECT_EQ(ReadWith(":?", ":x", ReadHeaterStandby), -1);
  EXPECT_EQ(ReadWith(":?", ":", ReadHeaterStandby), -1);  // ETX is no digit
  // The ":" must stand at 3 exactly: one in the address byte spoils the read.
  EXPECT_EQ(ReadAddressed(":?", ":1", ':', ReadHeaterStandby), -1);
  EXPECT_EQ(ReadRefused(":?", ReadHeaterStandby), -1);

  EXPECT_EQ(ReadWith("PBH?", "PBH1", ReadHeaterState), 1);
  EXPECT_EQ(ReadWith("PBH?", "PBH0", ReadHeaterState), 0);
  EXPECT_EQ(ReadWith("PBH?", "BH1", ReadHeaterState), -1);  // tail at 3, not 4
  EXPECT_EQ(ReadWith("PBH?", "PBH", ReadHeaterState), -1);
  EXPECT_EQ(ReadWith("PBH?", "PBH-", ReadHeaterState), -1);
  EXPECT_EQ(ReadRefused("PBH?", ReadHeaterState), -1);
}

TEST(TransmitterCmds, HoursTimers) {
  EXPECT_EQ(ReadWith("?M", "?012345", ReadHeaterHours), 12345);
  EXPECT_EQ(ReadWith("?M", "?1234567", ReadHeaterHours), 123456);  // six characters only
  // Len > 6: two characters after "?" (Len 7) are read, one (Len 6) is not.
  EXPECT_EQ(ReadWith("?M", "?12", ReadHeaterHours), 12);
  EXPECT_EQ(ReadWith("?M", "?1", ReadHeaterHours), -1);
  EXPECT_EQ(ReadWith("?M", "12345678", ReadHeaterHours), -1);  // no "?"
  EXPECT_EQ(ReadRefused("?M", ReadHeaterHours), -1);

  ScriptedUnit u;
  u.Answer("?N", "?999999");
  EXPECT_EQ(ReadXmitHours(u.comms), 999999);
  EXPECT_EQ(u.sent, (std::vector<std::string>{"?N"}));
}

TEST(TransmitterCmds, HelixFields) {
  ScriptedUnit u;
  u.Answer("?VI", "?12340567");
  u.Answer("?VI", "?1234056");  // seven data characters
  u.Answer("?VIvi", "?1111222233334444");
  u.Answer("?VIvi", "?11112222");  // one tube's worth
  EXPECT_TRUE(ReadHelixValues(u.comms, false));
  EXPECT_EQ(u.comms.gRespFields[0], "1234");
  EXPECT_EQ(u.comms.gRespFields[1], "0567");
  // The current field would reach the ETX: it keeps its earlier text and
  // the read fails, though the voltage was taken.
  u.comms.gRespFields[0] = u.comms.gRespFields[1] = "old";
  EXPECT_FALSE(ReadHelixValues(u.comms, false));
  EXPECT_EQ(u.comms.gRespFields[0], "1234");
  EXPECT_EQ(u.comms.gRespFields[1], "old");
  EXPECT_TRUE(ReadHelixValues(u.comms, true));
  EXPECT_EQ(u.comms.gRespFields[2], "3333");
  EXPECT_EQ(u.comms.gRespFields[3], "4444");
  // Two tubes asked, one answered: [1] is read, yet the read fails.
  u.comms.gRespFields[3] = "old";
  EXPECT_FALSE(ReadHelixValues(u.comms, true));
  EXPECT_EQ(u.comms.gRespFields[1], "2222");
  EXPECT_EQ(u.comms.gRespFields[3], "old");
  EXPECT_EQ(u.sent, (std::vector<std::string>{"?VI", "?VI", "?VIvi", "?VIvi"}));
  EXPECT_FALSE(ReadWith("?VI", "12340567", [](Comms& c) { return ReadHelixValues(c, false); }));
}

TEST(TransmitterCmds, HelixRatioAndTripAreUnguarded) {
  EXPECT_EQ(ReadWith("YGHI?", "YGHI12", ReadHelixCurrentRatio), 12);
  EXPECT_EQ(ReadWith("YGHI?", "YGHI12.5", ReadHelixCurrentRatio), 12);  // ties to even
  EXPECT_EQ(ReadWith("YGHI?", "YGHI-3", ReadHelixCurrentRatio), -1);    // negative dropped
  EXPECT_EQ(ReadWith("YGHI?", "GHI12", ReadHelixCurrentRatio), -1);     // tail at 4, not 5
  EXPECT_EQ(ReadRefused("YGHI?", ReadHelixCurrentRatio), -1);
  {
    // Not guarded: the failure reaches the caller.
    ScriptedUnit u;
    u.Answer("YGHI?", "YGHI40000");
    EXPECT_THROW(ReadHelixCurrentRatio(u.comms), ConversionFailure);
  }

  EXPECT_EQ(ReadWith("YFTH?", "YFTH12.5", ReadHelixCurrentTrip), "12.5");
  EXPECT_EQ(ReadWith("YFTH?", "YFTH1", ReadHelixCurrentTrip), "1");  // ETX at 8 > 7
  EXPECT_EQ(ReadWith("YFTH?", "YFTH", ReadHelixCurrentTrip), "");    // ETX at 7
  EXPECT_EQ(ReadWith("YFTH?", "FTH12", ReadHelixCurrentTrip), "");
  EXPECT_EQ(ReadRefused("YFTH?", ReadHelixCurrentTrip), "");
}

TEST(TransmitterCmds, HeaterVoltageFallsBackOnlyOnRefusal) {
  EXPECT_FLOAT_EQ(ReadWith("PHV?", "PHV6.30", ReadHeaterVoltage), 6.3f);
  EXPECT_FLOAT_EQ(ReadWith("PHV?", "PHV12.345", ReadHeaterVoltage), 12.3f);  // four characters
  {
    // Refused: the status-style query, data right after its "?".
    ScriptedUnit u;
    u.Refuse("PHV?");
    u.Answer("?J", "?6.25");
    EXPECT_FLOAT_EQ(ReadHeaterVoltage(u.comms), 6.25f);
    EXPECT_EQ(u.sent, (std::vector<std::string>{"PHV?", "?J"}));
  }
  {
    // Accepted but too short (the field would reach the ETX): no fallback.
    ScriptedUnit u;
    u.Answer("PHV?", "PHV6.3");
    u.Answer("?J", "?6.25");
    EXPECT_FLOAT_EQ(ReadHeaterVoltage(u.comms), 0.0f);
    EXPECT_EQ(u.sent, (std::vector<std::string>{"PHV?"}));
  }
  {
    ScriptedUnit u;
    u.Refuse("PHV?");
    u.Refuse("?J");
    EXPECT_FLOAT_EQ(ReadHeaterVoltage(u.comms), 0.0f);
    EXPECT_EQ(u.sent, (std::vector<std::string>{"PHV?", "?J"}));
  }

  EXPECT_FLOAT_EQ(ReadWith("PHI?", "PHI1.25", ReadHeaterCurrent), 1.25f);
  EXPECT_FLOAT_EQ(ReadWith("PHI?", "PHI1.2", ReadHeaterCurrent), 0.0f);
  EXPECT_FLOAT_EQ(ReadWith("PHI?", "P1.25", ReadHeaterCurrent), 0.0f);
  EXPECT_FLOAT_EQ(ReadRefused("PHI?", ReadHeaterCurrent), 0.0f);
}

TEST(TransmitterCmds, CathodeCurrentAndItsFallback) {
  EXPECT_EQ(ReadWith("?C", "?0123", ReadCathodeCurrent), 123);
  EXPECT_EQ(ReadWith("?C", "?12345", ReadCathodeCurrent), 1234);  // four characters
  EXPECT_EQ(ReadWith("?C", "?-012", ReadCathodeCurrent), -1);     // negative dropped
  // A "?" in the address passes "?" + 1 > 2; Len > 4 then decides:
  // an empty body (Len 4) is no reading, a one-character body (Len 5) is 0.
  EXPECT_EQ(ReadAddressed("?C", "", '?', ReadCathodeCurrent), -1);
  EXPECT_EQ(ReadAddressed("?C", "x", '?', ReadCathodeCurrent), 0);
  {
    // "?C" answered without a "?": no reading and no second command.
    ScriptedUnit u;
    u.Answer("?C", "0123");
    u.Answer("PBFC?", "PBFC145");
    EXPECT_EQ(ReadCathodeCurrent(u.comms), -1);
    EXPECT_EQ(u.sent, (std::vector<std::string>{"?C"}));
  }
  {
    // Refused: "PBFC?", number open to the end. Its test passes without the
    // "BFC" tail too (read from the body's start); an oversized value is
    // guarded and leaves the default.
    ScriptedUnit u;
    u.Refuse("?C");
    u.Answer("PBFC?", "PBFC145");
    u.Answer("PBFC?", "77");
    u.Answer("PBFC?", "PBFC99999");
    EXPECT_EQ(ReadCathodeCurrent(u.comms), 145);
    EXPECT_EQ(ReadCathodeCurrent(u.comms), 77);
    EXPECT_EQ(ReadCathodeCurrent(u.comms), -1);
    EXPECT_EQ(u.sent, (std::vector<std::string>{"?C", "PBFC?", "?C", "PBFC?", "?C", "PBFC?"}));
  }
}

TEST(TransmitterCmds, CathodeMonitorSettings) {
  EXPECT_EQ(ReadWith("PBFS?", "PBFS1", ReadCathodeSense), 1);
  EXPECT_EQ(ReadWith("PBFS?", "PBFS3", ReadCathodeSense), 1);
  EXPECT_EQ(ReadWith("PBFS?", "PBFS0", ReadCathodeSense), 0);
  EXPECT_EQ(ReadWith("PBFS?", "PBFSx", ReadCathodeSense), -1);  // strict conversion
  // The test tail + 3 > 2 holds even when the tail is missing (0 + 3): the
  // value is then taken from the body's first character.
  EXPECT_EQ(ReadWith("PBFS?", "1", ReadCathodeSense), 1);
  EXPECT_EQ(ReadWith("PBFS?", "PBFM1", ReadCathodeSense), -1);
  EXPECT_EQ(ReadRefused("PBFS?", ReadCathodeSense), -1);

  // Kept only above 0.
  EXPECT_EQ(ReadWith("PBFM?", "PBFM5", ReadCathodeMode), 5);
  EXPECT_EQ(ReadWith("PBFM?", "PBFM0", ReadCathodeMode), -1);
  EXPECT_EQ(ReadWith("PBFI?", "PBFI120", ReadIdealCathodeCurrent), 120);
  EXPECT_EQ(ReadWith("PBFI?", "PBFI-4", ReadIdealCathodeCurrent), -1);
  EXPECT_EQ(ReadWith("PBFA?", "PBFA2500", ReadAnodeVoltage), 2500);
  EXPECT_EQ(ReadWith("PBFA?", "PBFA0", ReadAnodeVoltage), -1);
  // Kept when 0 or more, else 0.
  EXPECT_EQ(ReadWith("PBFO?", "PBFO0", ReadCathodeScalar), 0);
  EXPECT_EQ(ReadWith("PBFO?", "PBFO4095", ReadCathodeScalar), 4095);
  EXPECT_EQ(ReadWith("PBFO?", "PBFO-5", ReadCathodeScalar), 0);
  // Any integer.
  EXPECT_EQ(ReadWith("PBFT?", "PBFT-5", ReadAnodeScale), -5);
  EXPECT_EQ(ReadWith("PBFT?", "PBFT6000", ReadAnodeScale), 6000);
  EXPECT_EQ(ReadWith("PBFT?", "PBFT70000", ReadAnodeScale), 0);  // guarded overflow
  // The tail may stand anywhere, even in the address byte; without it the
  // number is read from the start of the body.
  EXPECT_EQ(ReadAddressed("PBFA?", "FA900", 'B', ReadAnodeVoltage), 900);
  EXPECT_EQ(ReadWith("PBFA?", "900", ReadAnodeVoltage), 900);
  EXPECT_EQ(ReadWith("PBFA?", "PBF900", ReadAnodeVoltage), -1);  // "P" is no number
  EXPECT_EQ(ReadRefused("PBFT?", ReadAnodeScale), 0);

  // The negative anode echo must open the body: number at 7.
  EXPECT_TRUE(ReadWith("PBFE?", "PBFE1", ReadNegativeAnodeEnable));
  EXPECT_TRUE(ReadWith("PBFE?", "PBFE2", ReadNegativeAnodeEnable));
  EXPECT_FALSE(ReadWith("PBFE?", "PBFE0", ReadNegativeAnodeEnable));
  EXPECT_FALSE(ReadWith("PBFE?", "BFE1", ReadNegativeAnodeEnable));
  EXPECT_FALSE(ReadWith("PBFE?", "PBFE99999", ReadNegativeAnodeEnable));
  EXPECT_FALSE(ReadRefused("PBFE?", ReadNegativeAnodeEnable));
  EXPECT_EQ(ReadWith("PBFF?", "PBFF150", ReadNegativeAnodeStart), 150);
  EXPECT_EQ(ReadWith("PBFF?", "PBFF-20", ReadNegativeAnodeStart), -20);
  EXPECT_EQ(ReadWith("PBFF?", "XPBFF150", ReadNegativeAnodeStart), 0);
  EXPECT_EQ(ReadRefused("PBFF?", ReadNegativeAnodeStart), 0);
}

TEST(TransmitterCmds, TubeLifeParametersAndEstimate) {
  {
    ScriptedUnit u;
    u.Answer("QEP?", "QEP1200;0.85;3000.6");
    EXPECT_TRUE(ReadTwtEolParams(u.comms));
    EXPECT_EQ(u.comms.gRespFields[0], "1200");
    EXPECT_EQ(u.comms.gRespFields[1], "0.85");
    EXPECT_EQ(u.comms.gRespFields[2], "3001");
  }
  {
    // Guarded third value: an oversized number keeps the earlier text, yet
    // the parameters count as read.
    ScriptedUnit u;
    u.Answer("QEP?", "QEP1;2;99999");
    u.comms.gRespFields[2] = "old";
    EXPECT_TRUE(ReadTwtEolParams(u.comms));
    EXPECT_EQ(u.comms.gRespFields[2], "old");
  }
  {
    // Only one separator: the first text is taken, the read fails.
    ScriptedUnit u;
    u.Answer("QEP?", "QEP1200;0.85");
    u.comms.gRespFields[1] = "old";
    EXPECT_FALSE(ReadTwtEolParams(u.comms));
    EXPECT_EQ(u.comms.gRespFields[0], "1200");
    EXPECT_EQ(u.comms.gRespFields[1], "old");
  }
  EXPECT_FALSE(ReadWith("QEP?", "QEP;0.85;3000", ReadTwtEolParams));  // empty first text
  EXPECT_FALSE(ReadWith("QEP?", "QEP12;;3000", ReadTwtEolParams));    // empty second text
  EXPECT_FALSE(ReadWith("QEP?", "XQEP12;3;4", ReadTwtEolParams));     // tail at 5
  EXPECT_FALSE(ReadRefused("QEP?", ReadTwtEolParams));

  EXPECT_EQ(ReadWith("QEC", "QEC12;", ReadTwtEolEstimate), "12");
  EXPECT_EQ(ReadWith("QEC", "QEC;", ReadTwtEolEstimate), "");
  EXPECT_EQ(ReadWith("QEC", "QEC12", ReadTwtEolEstimate), "");
  EXPECT_EQ(ReadWith("QEC", "EC12;", ReadTwtEolEstimate), "");
  // The ";" is searched from the message start: one in the address wins.
  EXPECT_EQ(ReadAddressed("QEC", "QEC12;", ';', ReadTwtEolEstimate), "");
  EXPECT_EQ(ReadRefused("QEC", ReadTwtEolEstimate), "");

  EXPECT_EQ(TwtEolEstimateText("12"), "12 Years");
  EXPECT_EQ(TwtEolEstimateText("6Mo"), "6 Months");
  EXPECT_EQ(TwtEolEstimateText("1"), "???");
  EXPECT_EQ(TwtEolEstimateText("1234"), "???");
  EXPECT_EQ(TwtEolEstimateText(""), "???");
}

TEST(TransmitterCmds, SetTexts) {
  EXPECT_EQ(CmdHours(0, 0), "YH000000000000");
  EXPECT_EQ(CmdHours(1234, 56789), "YH001234056789");
  EXPECT_EQ(CmdHours(12.5, 7.4), "YH000013000007");  // half away from zero
  EXPECT_EQ(CmdHelixCurrentRatio(85), "YGHI85");
  EXPECT_EQ(CmdHelixCurrentTrip("12.5"), "YFTH12.5");
  EXPECT_EQ(CmdCathodeMonitorState(5), "PBFS5");
  EXPECT_EQ(CmdAnodeScale(6000), "PBFT6000");
  EXPECT_EQ(CmdAnodeScale(0.4), "PBFT0");
  EXPECT_EQ(CmdNegativeAnodeStart(-20), "PBFF-20");
  EXPECT_EQ(CmdAnodeVoltage(2499.5), "PBFA2500");
  EXPECT_EQ(CmdAnodeVoltage(-3.5), "PBFA-4");
  EXPECT_EQ(CmdCathodeScalar(4095), "PBFO4095");
  EXPECT_EQ(CmdIdealCathodeCurrent(120.49), "PBFI120");
  EXPECT_EQ(CmdIdealCathodeCurrent(0), "PBFI0");
}

}  // namespace
}  // namespace amp
