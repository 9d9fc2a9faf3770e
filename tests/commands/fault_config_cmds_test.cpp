// Fault configuration readers against scripted replies, and their set texts.
#include <gtest/gtest.h>

#include <memory>

#include "command_rig.h"
#include "commands/fault_config_cmds.h"
#include "commands/reader_support.h"

namespace amp {
namespace {

using namespace test;

// Two replies to the same command, in order; an empty body refuses.
Unit Twice(const std::string& command, const std::string& first, const std::string& second) {
  auto u = std::make_unique<ScriptedUnit>();
  for (const std::string* body : {&first, &second}) {
    if (body->empty())
      u->Refuse(command);
    else
      u->Answer(command, *body);
  }
  return u;
}

TEST(FaultConfigCmds, EnableMasksAndTheSecondFaultWord) {
  int32_t word = -7, word2 = 77;
  Unit u = Answering("YIF?", "YIF12345");
  EXPECT_TRUE(ReadFaultEnable(u->comms, word, word2));
  EXPECT_EQ(word, 12345);
  EXPECT_EQ(word2, 77);  // no comma: the second word stays

  u = Answering("YIF?", "YIF7,9");
  EXPECT_TRUE(ReadFaultEnable(u->comms, word, word2));
  EXPECT_EQ(word, 7);
  EXPECT_EQ(word2, 9);

  // A comma at 5, where the data start, is not taken: it must stand beyond.
  // The mask itself then reads as 0.
  word2 = 77;
  u = Answering("YIF?", "IF,3");
  EXPECT_TRUE(ReadFaultEnable(u->comms, word, word2));
  EXPECT_EQ(word, 0);
  EXPECT_EQ(word2, 77);
  u = Answering("YIF?", "YIF,3");
  EXPECT_TRUE(ReadFaultEnable(u->comms, word, word2));
  EXPECT_EQ(word2, 3);

  // The echo with nothing behind it still passes: the ETX ends the number.
  word = 5;
  u = Answering("YIF?", "YIF");
  EXPECT_TRUE(ReadFaultEnable(u->comms, word, word2));
  EXPECT_EQ(word, 0);

  // "IF" split over the address byte and the body: data would start at 4.
  word = 5;
  u = RawReply("YIF?", "F12", 'I');
  EXPECT_FALSE(ReadFaultEnable(u->comms, word, word2));
  EXPECT_EQ(word, 5);

  // Unguarded: a mask that does not fit 32 bits reaches the caller.
  u = Answering("YIF?", "YIF4294967295");
  EXPECT_THROW(ReadFaultEnable(u->comms, word, word2), ConversionFailure);
  u = Answering("YIF?", "YIF1,4294967295");
  EXPECT_THROW(ReadFaultEnable(u->comms, word, word2), ConversionFailure);
  EXPECT_EQ(word, 1);  // the first word was taken before the second failed

  u = Answering("YIA?", "YIA255");
  EXPECT_TRUE(ReadAlarmEnable(u->comms, word));
  EXPECT_EQ(word, 255);
  u = Answering("YIA?", "YIA99999999999");
  EXPECT_THROW(ReadAlarmEnable(u->comms, word), ConversionFailure);
  word = 3;
  u = Refusing("YIA?");
  EXPECT_FALSE(ReadAlarmEnable(u->comms, word));
  EXPECT_EQ(word, 3);
}

TEST(FaultConfigCmds, LatchParametersNeedTheirBlankBeyondSeven) {
  EXPECT_EQ(ReadLowLineLatch(Answering(".?P151", ".P151 1")->comms), 1);
  EXPECT_EQ(ReadLowLineLatch(Answering(".?P151", ".P15 1")->comms), -1);  // blank at 7
  // An empty value passes the test; Val of nothing is 0.
  EXPECT_EQ(ReadLowLineLatch(Answering(".?P151", ".P151 ")->comms), 0);
  // Guarded: a value beyond 16 bits keeps the default.
  EXPECT_EQ(ReadLowLineLatch(Answering(".?P151", ".P151 99999")->comms), -1);
  EXPECT_EQ(ReadExtIlokLatch(Answering(".?P212", ".P212 2")->comms), 2);
  EXPECT_EQ(ReadExtIlokLatch(Refusing(".?P212")->comms), -1);
}

TEST(FaultConfigCmds, TempFaultLevelSendsTwiceThenFallsBack) {
  // Old units: the numbered parameter alone.
  Unit u = Answering(".?P4", ".P4 70");
  EXPECT_EQ(ReadTempFaultLevel(u->comms, true), "70");
  EXPECT_EQ(u->sent, (std::vector<std::string>{".?P4"}));
  EXPECT_EQ(ReadTempFaultLevel(Answering(".?P4", ".P4 ")->comms, true), "");
  // No blank: only the ETX is tested against it, so the text runs from the
  // status byte up to the ETX.
  const std::string frame = ScriptedUnit::Frame('\x06', ".P470");
  EXPECT_EQ(ReadTempFaultLevel(Answering(".?P4", ".P470")->comms, true),
            frame.substr(0, frame.size() - 2));

  // Both answered: the second reply counts; "##0" rounds.
  u = Twice("PBKF?", "PBKF70", "PBKF74.6");
  EXPECT_EQ(ReadTempFaultLevel(u->comms, false), "75");
  EXPECT_EQ(u->sent, (std::vector<std::string>{"PBKF?", "PBKF?"}));
  EXPECT_EQ(ReadTempFaultLevel(Twice("PBKF?", "", "PBKF-5")->comms, false), "-5");
  // First good, second refused: the latest reply is empty, and no fallback.
  u = Twice("PBKF?", "PBKF70", "");
  EXPECT_EQ(ReadTempFaultLevel(u->comms, false), "");
  EXPECT_EQ(u->sent, (std::vector<std::string>{"PBKF?", "PBKF?"}));
  // Both refused: ".?P136", whose blank must stand beyond 6.
  for (const auto& [reply, expected] :
       {std::pair{".P136 80", "80"}, {".P13 81", "81"}, {".P1 82", ""}}) {
    u = Refusing("PBKF?");
    u->Answer(".?P136", reply);
    EXPECT_EQ(ReadTempFaultLevel(u->comms, false), expected) << reply;
    EXPECT_EQ(u->sent, (std::vector<std::string>{"PBKF?", "PBKF?", ".?P136"}));
  }
  // The echo must begin the body ("KF" at 5 exactly) and the reply reach 8.
  EXPECT_EQ(ReadTempFaultLevel(Answering("PBKF?", "xPBKF70")->comms, false), "");
  EXPECT_EQ(ReadTempFaultLevel(Answering("PBKF?", "BKF70")->comms, false), "");
  EXPECT_EQ(ReadTempFaultLevel(Answering("PBKF?", "PBKF7")->comms, false), "7");  // Len 9
  EXPECT_EQ(ReadTempFaultLevel(Answering("PBKF?", "PBKF")->comms, false), "");    // Len 8
}

TEST(FaultConfigCmds, AlarmAndInletLevelsAndLatching) {
  Unit u = Refusing("PBKA?");
  u->Answer(".?P179", ".P179 65");
  EXPECT_EQ(ReadTempAlarmLevel(u->comms), "65");
  EXPECT_EQ(u->sent, (std::vector<std::string>{"PBKA?", "PBKA?", ".?P179"}));
  EXPECT_EQ(ReadTempAlarmLevel(Answering("PBKA?", "PBKA60")->comms), "60");
  EXPECT_EQ(ReadTempAlarmLevel(Answering("PBKA?", "PBKF60")->comms), "");  // wrong echo

  EXPECT_EQ(ReadInletDiffAlarmLevel(Answering("PBKI?", "PBKI12.4")->comms), "12");
  u = Refusing("PBKI?");
  EXPECT_EQ(ReadInletDiffAlarmLevel(u->comms), "");
  EXPECT_EQ(u->sent, (std::vector<std::string>{"PBKI?"}));  // once, no fallback

  u = Answering("PBKL?", "PBKL1");
  EXPECT_EQ(ReadLatchTempFaults(u->comms), 1);
  EXPECT_EQ(u->sent, (std::vector<std::string>{"PBKL?", "PBKL?"}));
  EXPECT_EQ(ReadLatchTempFaults(Answering("PBKL?", "PBKL12")->comms), 1);  // one character
  EXPECT_EQ(ReadLatchTempFaults(Answering("PBKL?", "PBKLx")->comms), -1);  // strict
  EXPECT_EQ(ReadLatchTempFaults(Answering("PBKL?", "PBKL")->comms), -1);
  u = Refusing("PBKL?");
  EXPECT_EQ(ReadLatchTempFaults(u->comms), -1);
  EXPECT_EQ(u->sent.size(), 2u);
}

TEST(FaultConfigCmds, TemperaturesAndTheirRanges) {
  Unit u = Answering("?T", "?0045");
  u->comms.gRespFields[1] = "old";
  EXPECT_EQ(ReadTemperature(u->comms), 45);
  EXPECT_EQ(u->comms.gRespFields[0], "0045");
  EXPECT_EQ(u->comms.gRespFields[1], "");

  u = Answering("?T", "?0121");
  EXPECT_EQ(ReadTemperature(u->comms), -125);
  EXPECT_EQ(u->comms.gRespFields[0], "0121");  // the text stays
  EXPECT_EQ(ReadTemperature(Answering("?T", "?0120")->comms), 120);
  EXPECT_EQ(ReadTemperature(Answering("?T", "?-040")->comms), -40);
  EXPECT_EQ(ReadTemperature(Answering("?T", "?-041")->comms), -125);
  EXPECT_EQ(ReadTemperature(Answering("?T", "?9e99")->comms), -125);  // guarded overflow

  u = Answering("?TT", "?00450038");
  EXPECT_EQ(ReadTemperature(u->comms, true), 45);
  EXPECT_EQ(u->sent, (std::vector<std::string>{"?TT"}));
  EXPECT_EQ(u->comms.gRespFields[1], "0038");
  u = Answering("?TT", "?0045----");
  EXPECT_EQ(ReadTemperature(u->comms, true), 45);
  EXPECT_EQ(u->comms.gRespFields[1], "");

  u = Answering("?T", "T0045");
  u->comms.gRespFields[0] = "kept";
  EXPECT_EQ(ReadTemperature(u->comms), -125);
  EXPECT_EQ(u->comms.gRespFields[0], "kept");

  u = Answering("?t", "?25.4");
  EXPECT_FLOAT_EQ(ReadInletTemperature(u->comms), 25.4f);
  EXPECT_EQ(u->comms.gRespFields[0], "25");
  // A "?" in the address byte is found first and fails the test.
  EXPECT_FLOAT_EQ(ReadInletTemperature(RawReply("?t", "?25", '?')->comms), -50.0f);

  EXPECT_EQ(ReadMaxCalTemp(Answering(".?P332", ".P332 85.5")->comms), "86");
  EXPECT_EQ(ReadMinCalTemp(Answering(".?P333", ".P333 -10")->comms), "-10");
  EXPECT_EQ(ReadMinCalTemp(Answering(".?P333", ".P3 -10")->comms), "");
  EXPECT_EQ(ReadMinCalTemp(Answering(".?P333", ".P333 ")->comms), "0");

  // "PBG?" is converted strictly up to the frame's end, and every frame
  // ends in ETX and checksum: a whole reply never converts.
  EXPECT_EQ(ReadFanTemperature(Answering("PBG?", "PBG25")->comms), -1);
}

TEST(FaultConfigCmds, DcInputTextsMustBeNumbers) {
  Unit u = Answering("PBDV?", "PBDV27.5");
  EXPECT_TRUE(ReadDCVInput(u->comms));
  EXPECT_EQ(u->comms.gRespFields[0], "27.5");
  u = Answering("PBDV?", "PBDVabc");
  EXPECT_FALSE(ReadDCVInput(u->comms));
  EXPECT_EQ(u->comms.gRespFields[0], "abc");
  u = Answering("PBDV?", "BDV27");  // "DV" at 4: 4 + 1 is not beyond 5
  u->comms.gRespFields[0] = "stale";
  EXPECT_FALSE(ReadDCVInput(u->comms));
  EXPECT_EQ(u->comms.gRespFields[0], "");  // cleared before the send
  EXPECT_FALSE(ReadDCVInput(Answering("PBDV?", "PBDV")->comms));
  u = Refusing("PBDV?");
  u->comms.gRespFields[0] = "stale";
  EXPECT_FALSE(ReadDCVInput(u->comms));
  EXPECT_EQ(u->comms.gRespFields[0], "");

  u = Answering("PBDR?", "PBDR1.05");
  EXPECT_TRUE(ReadDCVRatio(u->comms));
  EXPECT_EQ(u->comms.gRespFields[0], "1.05");

  u = Answering("PBDAL?", "PBDAL44.0");
  EXPECT_TRUE(ReadDCVLimit(u->comms, 1));
  EXPECT_EQ(u->comms.gRespFields[0], "44.0");
  u = Answering("PBDFH?", "PBDFH56");
  EXPECT_TRUE(ReadDCVLimit(u->comms, 4));
  EXPECT_EQ(u->comms.gRespFields[0], "56");
  EXPECT_EQ(u->sent, (std::vector<std::string>{"PBDFH?"}));
  EXPECT_TRUE(ReadDCVLimit(Answering("PBDAH?", "PBDAH52")->comms, 2));
  EXPECT_TRUE(ReadDCVLimit(Answering("PBDFL?", "PBDFL40")->comms, 3));
  EXPECT_FALSE(ReadDCVLimit(Answering("PBDFL?", "PBDFL")->comms, 3));
  // The whole echo is the tail; starting in the address byte it is at 2.
  EXPECT_FALSE(ReadDCVLimit(RawReply("PBDAH?", "BDAH50", 'P')->comms, 2));
  u = std::make_unique<ScriptedUnit>();
  EXPECT_FALSE(ReadDCVLimit(u->comms, 0));
  EXPECT_FALSE(ReadDCVLimit(u->comms, 5));
  EXPECT_TRUE(u->sent.empty());
}

TEST(FaultConfigCmds, CurrentSenseValues) {
  Unit u = Answering("?IiJj", "?0012001300140015");
  ASSERT_TRUE(ReadCurrentSense(u->comms));
  EXPECT_EQ(u->comms.gRespFields[0], "0012");
  EXPECT_EQ(u->comms.gRespFields[1], "0013");
  EXPECT_EQ(u->comms.gRespFields[2], "0014");
  EXPECT_EQ(u->comms.gRespFields[3], "0015");
  EXPECT_TRUE(ReadCurrentSense(Answering("?IiJj", "?001200130014")->comms));      // Len 17
  EXPECT_FALSE(ReadCurrentSense(Answering("?IiJj", "?00120013001")->comms));      // Len 16
  EXPECT_FALSE(ReadCurrentSense(Answering("?IiJj", "0012001300140015")->comms));  // no "?"

  EXPECT_EQ(ReadCurrentSenseGain(Answering(".?P92", ".P92 12.5")->comms), "12.5");
  EXPECT_EQ(ReadCurrentSenseGain(Answering(".?P92", ".P92 ")->comms), "");     // empty passes
  EXPECT_EQ(ReadCurrentSenseGain(Answering(".?P92", ".P9 12.5")->comms), "");  // blank at 6
  EXPECT_FLOAT_EQ(ReadCurrentSenseResistor(Answering(".?P93", ".P93 0.25")->comms), 0.25f);
  EXPECT_FLOAT_EQ(ReadCurrentSenseResistor(Answering(".?P93", ".P93 n/a")->comms), 0.0f);
  EXPECT_FLOAT_EQ(ReadCurrentSenseResistor(Refusing(".?P93")->comms), 0.0f);

  EXPECT_EQ(ReadWGArcDetectorType(Answering("PTW?", "PTW1")->comms), 1);
  EXPECT_EQ(ReadWGArcDetectorType(Answering("PTW?", "PTW")->comms), 0);  // ETX: Val gives 0
  EXPECT_EQ(ReadWGArcDetectorType(Refusing("PTW?")->comms), -1);
}

TEST(FaultConfigCmds, SetTexts) {
  EXPECT_EQ(CmdFaultEnable(-1, 3), "YIF-1,3");
  EXPECT_EQ(CmdLowLineLatch(1), ".P151 1");
  EXPECT_EQ(CmdDCVLimit(4, "56"), "PBDFH56");
  EXPECT_EQ(CmdDCVLimit(5, "56"), "");
  EXPECT_EQ(CmdTempFaultLevel("70", true), ".P4 70");
  EXPECT_EQ(CmdTempFaultLevel("70", false), "PBKF70");
  EXPECT_EQ(CmdTempFaultParam("70"), ".P136 70");
  EXPECT_EQ(CmdTempAlarmParam("65"), ".P179 65");
  EXPECT_EQ(CmdLatchTempFaults(true), "PBKL1");
  EXPECT_EQ(CmdCurrentSenseGain(12.25), "YIG12.3");  // half away from zero
  EXPECT_EQ(CmdCurrentSenseGain(7), "YIG7.0");
  EXPECT_EQ(CmdCurrentSenseGain(-1.26), "YIG-1.3");
  EXPECT_EQ(CmdCurrentSenseResistor(0.1), "YIR0.1");
  EXPECT_EQ(CmdCurrentSenseResistor(2), "YIR2.0");
  EXPECT_EQ(CmdCurrentSenseResistor(0.12345), "YIR0.123");
  EXPECT_EQ(CmdCurrentSenseResistor(0.0125), "YIR0.013");
  EXPECT_EQ(CmdWGArcDetectorType(0), "PTW0");
  EXPECT_EQ(CmdWGArcDetectorType(2), "PTW1");
}

}  // namespace
}  // namespace amp
