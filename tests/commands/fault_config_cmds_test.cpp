// Fault configuration readers against scripted replies: the edges of each
// position and length test, and the fallback queries.
#include <gtest/gtest.h>

#include "command_rig.h"
#include "commands/fault_config_cmds.h"
#include "commands/reader_support.h"

namespace amp {
namespace {

using namespace test;

std::string FaultWords(Comms& c) {
  int32_t word = -7, word2 = 77;
  const bool ok = ReadFaultEnable(c, word, word2);
  return Text(ok) + "|" + Text(word) + "|" + Text(word2);
}
std::string NewTempFault(Comms& c) { return ReadTempFaultLevel(c, false); }
std::string OldTempFault(Comms& c) { return ReadTempFaultLevel(c, true); }
std::string SecondTemperature(Comms& c) { return Text(ReadTemperature(c, true)); }
template <int K>
std::string DcvLimit(Comms& c) {
  return Text(ReadDCVLimit(c, K));
}

TEST(FaultConfigReaders, PositionsLengthsAndRanges) {
  const std::string noBlank = Ack(".P470");
  ExpectReads({
      {R(FaultWords), "YIF?", "YIF12345", "true|12345|77"},  // no comma: second word stays
      {R(FaultWords), "YIF?", "IF,3", "true|0|77"},  // a comma where the data start is not taken
      {R(FaultWords), "YIF?", "YIF,3", "true|0|3"},
      {R(FaultWords), "YIF?", Ack("F12", 'I'), "false|-7|77"},  // "IF" over the address
      {R(ReadLowLineLatch), ".?P151", ".P15 1", "-1"},          // blank at 7
      {R(ReadLowLineLatch), ".?P151", ".P151 ", "0"},
      {R(ReadLowLineLatch), ".?P151", ".P151 99999", "-1"},  // guarded
      {R(OldTempFault), ".?P4", ".P4 ", ""},
      {R(OldTempFault), ".?P4", noBlank, noBlank.substr(0, noBlank.size() - 2)},  // no blank
      {R(NewTempFault), "PBKF?", "xPBKF70", ""},  // "KF" at 5 exactly
      {R(NewTempFault), "PBKF?", "BKF70", ""},
      {R(NewTempFault), "PBKF?", "PBKF7", "7"},  // Len 9
      {R(NewTempFault), "PBKF?", "PBKF", ""},    // Len 8
      {R(ReadTempAlarmLevel), "PBKA?", "PBKF60", ""},
      {R(ReadInletDiffAlarmLevel), "PBKI?", "PBKI12.4", "12"},
      {R(ReadLatchTempFaults), "PBKL?", "PBKL12", "1"},
      {R(ReadLatchTempFaults), "PBKL?", "PBKLx", "-1"},  // strict
      {R(ReadLatchTempFaults), "PBKL?", "PBKL", "-1"},
      {RF(2, [](Comms& c) { return ReadTemperature(c); }), "?T", "?0045", "45|0045|"},
      {RF(1, [](Comms& c) { return ReadTemperature(c); }), "?T", "?0121", "-125|0121"},
      {RF(1, [](Comms& c) { return ReadTemperature(c); }), "?T", "T0045", "-125|old"},
      {R([](Comms& c) { return ReadTemperature(c); }), "?T", "?0120", "120"},
      {R([](Comms& c) { return ReadTemperature(c); }), "?T", "?-040", "-40"},
      {R([](Comms& c) { return ReadTemperature(c); }), "?T", "?-041", "-125"},
      {R([](Comms& c) { return ReadTemperature(c); }), "?T", "?9e99", "-125"},  // guarded
      {RF(2, SecondTemperature), "?TT", "?00450038", "45|0045|0038"},
      {RF(2, SecondTemperature), "?TT", "?0045----", "45|0045|"},
      {RF(1, ReadInletTemperature), "?t", "?25.4", "25.4|25"},
      {R(ReadInletTemperature), "?t", Ack("?25", '?'), "-50"},  // "?" in the address first
      {R(ReadMaxCalTemp), ".?P332", ".P332 85.5", "86"},
      {R(ReadMinCalTemp), ".?P333", ".P3 -10", ""},
      {R(ReadMinCalTemp), ".?P333", ".P333 ", "0"},
      // Converted strictly to the frame's end, ETX and checksum included.
      {R(ReadFanTemperature), "PBG?", "PBG25", "-1"},
      {RF(1, ReadDCVInput), "PBDV?", "PBDVabc", "false|abc"},
      {RF(1, ReadDCVInput), "PBDV?", "BDV27", "false|"},  // cleared before the send
      {R(ReadDCVInput), "PBDV?", "PBDV", "false"},
      {RF(1, DcvLimit<4>), "PBDFH?", "PBDFH56", "true|56"},
      {R(DcvLimit<2>), "PBDAH?", "PBDAH52", "true"},
      {R(DcvLimit<3>), "PBDFL?", "PBDFL", "false"},
      {R(DcvLimit<2>), "PBDAH?", Ack("BDAH50", 'P'), "false"},  // echo from the address
      {RF(4, ReadCurrentSense), "?IiJj", "?0012001300140015", "true|0012|0013|0014|0015"},
      {R(ReadCurrentSense), "?IiJj", "?001200130014", "true"},  // Len 17
      {R(ReadCurrentSense), "?IiJj", "?00120013001", "false"},  // Len 16
      {R(ReadCurrentSense), "?IiJj", "0012001300140015", "false"},
      {R(ReadCurrentSenseGain), ".?P92", ".P92 ", ""},
      {R(ReadCurrentSenseGain), ".?P92", ".P9 12.5", ""},  // blank at 6
      {R(ReadCurrentSenseResistor), ".?P93", ".P93 0.25", "0.25"},
      {R(ReadCurrentSenseResistor), ".?P93", ".P93 n/a", "0"},
  });
  int32_t word = 0, word2 = 0;
  EXPECT_THROW(ReadFaultEnable(Answering("YIF?", "YIF1,4294967295")->comms, word, word2),
               ConversionFailure);
  EXPECT_EQ(word, 1);  // the first word was taken before the second failed
  EXPECT_THROW(ReadAlarmEnable(Answering("YIA?", "YIA99999999999")->comms, word),
               ConversionFailure);
}

TEST(FaultConfigReaders, TemperatureLevelsAskTwiceThenFallBack) {
  auto u = Answering("PBKF?", "PBKF70");
  u->Answer("PBKF?", "PBKF74.6");  // the second reply counts; "##0" rounds
  EXPECT_EQ(ReadTempFaultLevel(u->comms, false), "75");
  u = Answering("PBKF?", "PBKF70");
  u->Refuse("PBKF?");  // the latest reply is empty, and no fallback
  EXPECT_EQ(ReadTempFaultLevel(u->comms, false), "");
  EXPECT_EQ(u->sent, (Sent{"PBKF?", "PBKF?"}));
  // Both refused: ".?P136", whose blank must stand beyond 6.
  for (const auto& [reply, expected] : {std::pair{".P13 81", "81"}, {".P1 82", ""}}) {
    u = Refusing("PBKF?");
    u->Answer(".?P136", reply);
    EXPECT_EQ(ReadTempFaultLevel(u->comms, false), expected) << reply;
    EXPECT_EQ(u->sent, (Sent{"PBKF?", "PBKF?", ".?P136"}));
  }
  u = Refusing("PBKA?");
  u->Answer(".?P179", ".P179 65");
  EXPECT_EQ(ReadTempAlarmLevel(u->comms), "65");
  EXPECT_EQ(u->sent, (Sent{"PBKA?", "PBKA?", ".?P179"}));
  u = Refusing("PBKI?");
  EXPECT_EQ(ReadInletDiffAlarmLevel(u->comms), "");
  u->Refuse("PBKL?");
  EXPECT_EQ(ReadLatchTempFaults(u->comms), -1);
  EXPECT_EQ(u->sent, (Sent{"PBKI?", "PBKL?", "PBKL?"}));
  u = std::make_unique<ScriptedUnit>();
  EXPECT_FALSE(ReadDCVLimit(u->comms, 0));
  EXPECT_FALSE(ReadDCVLimit(u->comms, 5));
  EXPECT_TRUE(u->sent.empty());
}

}  // namespace
}  // namespace amp
