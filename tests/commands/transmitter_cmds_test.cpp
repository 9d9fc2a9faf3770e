// Transmitter, heater, helix, cathode, hours and tube-life readers against
// scripted replies: the edges of each reader's position and length tests,
// and the fallback queries.
#include <gtest/gtest.h>

#include "command_rig.h"
#include "commands/reader_support.h"
#include "commands/transmitter_cmds.h"

namespace amp {
namespace {

using namespace test;

std::string StatusWord1(Comms& c) { return ReadStatusWord(c, 1); }

TEST(TransmitterReaders, PositionsLengthsAndRanges) {
  ExpectReads({
      {R(StatusWord1), "?!", Ack("?0A1F", '?'), "?0A1"},  // "?" in the address found first
      {R(StatusWord1), "?!", "0A1F", ""},
      {R(ReadRFInhibitState), ".?P54", ".P54 1", "-1"},
      {R(ReadRFInhibitState), ".?P54", "P5 0", "0"},  // Len 8 read, Len 7 not
      {R(ReadRFInhibitState), ".?P54", "P 0", "-1"},
      {R(ReadRFPolarity), "PTI?", "PTI7", "1"},
      {R(ReadRFPolarity), "PTI?", "PTIx", "-1"},
      {R(ReadRFPolarity), "PTI?", Ack("I0", 'T'), "0"},  // tail at 2, Len 6
      {R(ReadAutoXmitRestore), "PBA?", "PBAx", "0"},     // Val of a letter
      {R(ReadAutoXmitRestore), "PBA?", "BA1", "1"},      // tail at 3 passes, at 2 not
      {R(ReadAutoXmitRestore), "PBA?", Ack("A1", 'B'), "-1"},
      {R(ReadStartupMode), "PX?", "PX12", "1"},  // one character only
      {R(ReadStartupMode), "PX?", Ack("X2", 'P'), "-1"},
      {R(ReadHeaterStandby), ":?", ":x", "-1"},
      {R(ReadHeaterStandby), ":?", ":", "-1"},             // ETX is no digit
      {R(ReadHeaterStandby), ":?", Ack(":1", ':'), "-1"},  // ":" must stand at 3
      {R(ReadHeaterState), "PBH?", "BH1", "-1"},
      {R(ReadHeaterState), "PBH?", "PBH-", "-1"},
      {R(ReadHeaterHours), "?M", "?1234567", "123456"},  // six characters only
      {R(ReadHeaterHours), "?M", "?12", "12"},           // Len 7 read, Len 6 not
      {R(ReadHeaterHours), "?M", "?1", "-1"},
      {R(ReadHeaterHours), "?M", "12345678", "-1"},
      {R(ReadXmitHours), "?N", "?999999", "999999"},
      {R(ReadHelixCurrentRatio), "YGHI?", "YGHI12.5", "12"},  // ties to even
      {R(ReadHelixCurrentRatio), "YGHI?", "YGHI-3", "-1"},
      {R(ReadHelixCurrentRatio), "YGHI?", "GHI12", "-1"},  // tail at 4, not 5
      {R(ReadHelixCurrentTrip), "YFTH?", "YFTH1", "1"},    // ETX at 8 > 7
      {R(ReadHelixCurrentTrip), "YFTH?", "YFTH", ""},
      {R(ReadHeaterVoltage), "PHV?", "PHV12.345", "12.3"},  // four characters
      {R(ReadHeaterCurrent), "PHI?", "PHI1.2", "0"},
      {R(ReadHeaterCurrent), "PHI?", "P1.25", "0"},
      {R(ReadCathodeCurrent), "?C", "?12345", "1234"},  // four characters
      {R(ReadCathodeCurrent), "?C", "?-012", "-1"},
      {R(ReadCathodeCurrent), "?C", Ack("", '?'), "-1"},  // Len 4
      {R(ReadCathodeCurrent), "?C", Ack("x", '?'), "0"},  // Len 5
      {R(ReadCathodeSense), "PBFS?", "PBFS3", "1"},
      {R(ReadCathodeSense), "PBFS?", "PBFS0", "0"},
      {R(ReadCathodeSense), "PBFS?", "PBFSx", "-1"},  // strict
      {R(ReadCathodeSense), "PBFS?", "1", "1"},       // no tail: from the body's start
      {R(ReadCathodeMode), "PBFM?", "PBFM0", "-1"},
      {R(ReadIdealCathodeCurrent), "PBFI?", "PBFI-4", "-1"},
      {R(ReadCathodeScalar), "PBFO?", "PBFO0", "0"},
      {R(ReadCathodeScalar), "PBFO?", "PBFO-5", "0"},
      {R(ReadAnodeScale), "PBFT?", "PBFT-5", "-5"},
      {R(ReadAnodeScale), "PBFT?", "PBFT70000", "0"},            // guarded
      {R(ReadAnodeVoltage), "PBFA?", Ack("FA900", 'B'), "900"},  // tail may sit in the address
      {R(ReadAnodeVoltage), "PBFA?", "PBF900", "-1"},
      {R(ReadNegativeAnodeEnable), "PBFE?", "PBFE2", "true"},
      {R(ReadNegativeAnodeEnable), "PBFE?", "BFE1", "false"},
      {R(ReadNegativeAnodeEnable), "PBFE?", "PBFE99999", "false"},
      {R(ReadNegativeAnodeStart), "PBFF?", "PBFF-20", "-20"},
      {R(ReadNegativeAnodeStart), "PBFF?", "XPBFF150", "0"},
      {RF(3, ReadTwtEolParams), "QEP?", "QEP1200;0.85;3000.6", "true|1200|0.85|3001"},
      {RF(3, ReadTwtEolParams), "QEP?", "QEP1;2;99999", "true|1|2|old"},  // guarded third
      {RF(2, ReadTwtEolParams), "QEP?", "QEP1200;0.85", "false|1200|old"},
      {R(ReadTwtEolParams), "QEP?", "QEP;0.85;3000", "false"},
      {R(ReadTwtEolParams), "QEP?", "QEP12;;3000", "false"},
      {R(ReadTwtEolParams), "QEP?", "XQEP12;3;4", "false"},
      {R(ReadTwtEolEstimate), "QEC", "QEC12;", "12"},
      {R(ReadTwtEolEstimate), "QEC", "QEC12", ""},
      {R(ReadTwtEolEstimate), "QEC", Ack("QEC12;", ';'), ""},  // ";" from the message start
  });
  EXPECT_THROW(ReadHelixCurrentRatio(Answering("YGHI?", "YGHI40000")->comms), ConversionFailure);
}

TEST(TransmitterReaders, WhichCommandsGoOut) {
  auto u = std::make_unique<ScriptedUnit>();
  u->Answer("?(", "?0A1F");
  EXPECT_EQ(ReadStatusWord(u->comms, 2), "0A1F");
  EXPECT_EQ(ReadStatusWord(u->comms, 4), "");  // only words 1 to 3 exist
  EXPECT_EQ(ReadStatusWord(u->comms, 0), "");
  EXPECT_EQ(u->sent, Sent{"?("});

  u = Answering("?VI", "?1234056");  // the current field reaches the ETX
  EXPECT_FALSE(ReadHelixValues(u->comms, false));
  u->Answer("?VIvi", "?11112222");  // two tubes asked, one answered
  EXPECT_FALSE(ReadHelixValues(u->comms, true));
  EXPECT_EQ(u->comms.gRespFields[1], "2222");
  EXPECT_EQ(u->sent, (Sent{"?VI", "?VIvi"}));

  // The heater voltage falls back on refusal only, not on a short reply.
  u = Refusing("PHV?");
  u->Answer("?J", "?6.25");
  EXPECT_FLOAT_EQ(ReadHeaterVoltage(u->comms), 6.25f);
  u = Answering("PHV?", "PHV6.3");
  EXPECT_FLOAT_EQ(ReadHeaterVoltage(u->comms), 0.0f);
  EXPECT_EQ(u->sent, Sent{"PHV?"});

  // The cathode current falls back on refusal only; the fallback's test
  // passes without its tail, and an oversized value is guarded.
  u = Answering("?C", "0123");
  EXPECT_EQ(ReadCathodeCurrent(u->comms), -1);
  EXPECT_EQ(u->sent, Sent{"?C"});
  u = Refusing("?C");
  u->Answer("PBFC?", "77");
  u->Answer("PBFC?", "PBFC99999");
  EXPECT_EQ(ReadCathodeCurrent(u->comms), 77);
  EXPECT_EQ(ReadCathodeCurrent(u->comms), -1);
  EXPECT_EQ(u->sent, (Sent{"?C", "PBFC?", "?C", "PBFC?"}));
}

TEST(TransmitterReaders, TubeLifeEstimateText) {
  EXPECT_EQ(TwtEolEstimateText("12"), "12 Years");
  EXPECT_EQ(TwtEolEstimateText("6Mo"), "6 Months");
  for (const char* odd : {"1", "1234", ""}) EXPECT_EQ(TwtEolEstimateText(odd), "???") << odd;
}

}  // namespace
}  // namespace amp
