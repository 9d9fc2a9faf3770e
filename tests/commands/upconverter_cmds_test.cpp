// Upconverter and float supply readers against scripted replies, and their
// set texts.
#include <gtest/gtest.h>

#include <memory>

#include "command_rig.h"
#include "commands/reader_support.h"
#include "commands/upconverter_cmds.h"

namespace amp {
namespace {

using namespace test;

// A distinct marker in every entry, so that a test sees which a reader wrote.
void Mark(Comms& c) {
  for (size_t i = 0; i < c.gRespFields.size(); ++i) c.gRespFields[i] = "m" + std::to_string(i);
}

TEST(UpconverterCmds, BucValuesAndTheirDefaults) {
  EXPECT_FLOAT_EQ(ReadBucAtten(Answering("PBCA?", "PBCA12.5")->comms), 12.5f);
  // The test is on the tail's place only: an echo without data reads 0 dB,
  // which tells the caller an upconverter is there.
  EXPECT_FLOAT_EQ(ReadBucAtten(Answering("PBCA?", "PBCA")->comms), 0.0f);
  // Nor does it guard against the tail starting in the address byte.
  EXPECT_FLOAT_EQ(ReadBucAtten(RawReply("PBCA?", "A3", 'C')->comms), 3.0f);
  EXPECT_FLOAT_EQ(ReadBucAtten(Answering("PBCA?", "12.5")->comms), -1.0f);  // no echo
  EXPECT_FLOAT_EQ(ReadBucPower(Answering("PBCP?", "PBCP-23.4")->comms), -23.4f);
  EXPECT_FLOAT_EQ(ReadBucSetPoint(Answering("PBCS?", "PBCS-20.0")->comms), -20.0f);
  EXPECT_FLOAT_EQ(ReadBucTemperature(Answering("PBCT?", "PBCT41.5")->comms), 41.5f);
  EXPECT_FLOAT_EQ(ReadBucMaxAtten(Answering("PBCN?", "PBCN25")->comms), 25.0f);
  EXPECT_FLOAT_EQ(ReadBucOffset(Answering("PBCO?", "PBCO-1.5")->comms), -1.5f);
  EXPECT_FLOAT_EQ(ReadBucIdeal(Answering("PBCI?", "PBCI-18")->comms), -18.0f);
  EXPECT_EQ(ReadBucMode(Answering("PBCM?", "PBCM2")->comms), 2);
  EXPECT_EQ(ReadBucMode(Answering("PBCM?", "PBCM99999")->comms), -1);  // guarded

  // Refused: each reader's own "not read" value.
  EXPECT_FLOAT_EQ(ReadBucAtten(Refusing("PBCA?")->comms), -1.0f);
  EXPECT_FLOAT_EQ(ReadBucPower(Refusing("PBCP?")->comms), -60.0f);
  EXPECT_FLOAT_EQ(ReadBucSetPoint(Refusing("PBCS?")->comms), -60.0f);
  EXPECT_FLOAT_EQ(ReadBucTemperature(Refusing("PBCT?")->comms), -60.0f);
  EXPECT_FLOAT_EQ(ReadBucMaxAtten(Refusing("PBCN?")->comms), 31.5f);
  EXPECT_FLOAT_EQ(ReadBucOffset(Refusing("PBCO?")->comms), 0.0f);
  EXPECT_FLOAT_EQ(ReadBucIdeal(Refusing("PBCI?")->comms), 0.0f);
  EXPECT_EQ(ReadBucMode(Refusing("PBCM?")->comms), -1);
}

TEST(UpconverterCmds, FloatSupplyListsFillTheSharedFields) {
  Unit u = Answering("YCA?", "YCA1;2;3;4;5;6;7;8");
  Mark(u->comms);
  ASSERT_TRUE(ReadAmcAnalogs(u->comms));
  EXPECT_EQ(u->comms.gRespFields[0], "1");
  EXPECT_EQ(u->comms.gRespFields[7], "8");
  EXPECT_EQ(u->comms.gRespFields[8], "");    // end of the list
  EXPECT_EQ(u->comms.gRespFields[9], "m9");  // beyond it untouched

  u = Answering("YCA?", "YCA1;2;3;4;5;6;7");  // 7 values: refused
  Mark(u->comms);
  EXPECT_FALSE(ReadAmcAnalogs(u->comms));
  EXPECT_EQ(u->comms.gRespFields[0], "m0");

  // 11 values fill every entry; 12 are accepted but the twelfth has no
  // entry to go to.
  u = Answering("YCA?", "YCA1;2;3;4;5;6;7;8;9;10;11");
  ASSERT_TRUE(ReadAmcAnalogs(u->comms));
  EXPECT_EQ(u->comms.gRespFields[10], "11");
  u = Answering("YCA?", "YCA1;2;3;4;5;6;7;8;9;10;11;12");
  ASSERT_TRUE(ReadAmcAnalogs(u->comms));
  EXPECT_EQ(u->comms.gRespFields[10], "11");

  u = Answering("YCA?", "YCA1;2;3;4;5;6;7;8;9;10;11;12;13");  // 13: refused whole
  Mark(u->comms);
  EXPECT_FALSE(ReadAmcAnalogs(u->comms));
  EXPECT_EQ(u->comms.gRespFields[0], "m0");
  EXPECT_FALSE(ReadAmcAnalogs(Answering("YCA?", "YCA")->comms));  // nothing before ETX
  EXPECT_FALSE(ReadAmcAnalogs(Refusing("YCA?")->comms));

  u = Answering("YCD?", "YCD6.3;1.5;2.5;0.9");
  Mark(u->comms);
  ASSERT_TRUE(ReadAmcSettings(u->comms));
  EXPECT_EQ(u->comms.gRespFields[0], "6.3");  // heater voltage
  EXPECT_EQ(u->comms.gRespFields[1], "1.5");  // focus off
  EXPECT_EQ(u->comms.gRespFields[2], "2.5");  // focus on
  EXPECT_EQ(u->comms.gRespFields[3], "0.9");  // heater current
  EXPECT_EQ(u->comms.gRespFields[4], "");
  EXPECT_EQ(u->comms.gRespFields[5], "m5");
  EXPECT_FALSE(ReadAmcSettings(Answering("YCD?", "YCD6.3;1.5;2.5")->comms));
  // No upper bound of its own: a long list fills what there is.
  u = Answering("YCD?", "YCD0;1;2;3;4;5;6;7;8;9;10;11;12;13;14");
  ASSERT_TRUE(ReadAmcSettings(u->comms));
  EXPECT_EQ(u->comms.gRespFields[10], "10");

  EXPECT_EQ(ReadAmcStatus(Answering("YCI?", "YCI0")->comms), 0);
  EXPECT_EQ(ReadAmcStatus(Answering("YCI?", "YCI3")->comms), 3);
  EXPECT_EQ(ReadAmcStatus(Answering("YCI?", "YCI70000")->comms), -1);  // guarded
  EXPECT_EQ(ReadAmcStatus(Refusing("YCI?")->comms), -1);
}

TEST(UpconverterCmds, SupplySetValueWithAndWithoutSubBand) {
  Unit u = Answering("YC?", "YC1234");
  PSVsetRecord r = ReadPSVset(u->comms);
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.value, 1234);
  EXPECT_EQ(u->sent, (std::vector<std::string>{"YC?"}));

  u = Answering("YC?:2", "YC70000:2");  // a 32-bit value; the index is not used
  r = ReadPSVset(u->comms, 2);
  EXPECT_EQ(r.status, 0);
  EXPECT_EQ(r.value, 70000);
  EXPECT_EQ(u->sent, (std::vector<std::string>{"YC?:2"}));
  u = Answering("YC?:0", "YC5");  // 0 is a sub-band too
  EXPECT_EQ(ReadPSVset(u->comms, 0).value, 5);
  EXPECT_EQ(u->sent, (std::vector<std::string>{"YC?:0"}));

  EXPECT_EQ(ReadPSVset(Refusing("YC?")->comms).status, -1);
  EXPECT_EQ(ReadPSVset(Answering("YC?", "1234")->comms).status, -1);  // no echo
  r = ReadPSVset(Answering("YC?", "YC99999999999")->comms);           // does not fit
  EXPECT_EQ(r.status, -1);
  EXPECT_EQ(r.value, 0);

  EXPECT_EQ(ReadModelCfgPN(Answering("YJ?", "YJ300123-01 B")->comms), "300123-01 B");
  EXPECT_EQ(ReadModelCfgPN(Answering("YJ?", "YJ")->comms), "");
  EXPECT_EQ(ReadModelCfgPN(Refusing("YJ?")->comms), "");
}

TEST(UpconverterCmds, SetTexts) {
  EXPECT_EQ(CmdBucSetPoint(-20), "PBCS-20.0");
  EXPECT_EQ(CmdBucSetPoint(-12.25), "PBCS-12.3");
  EXPECT_EQ(CmdBucOffset(-0.04), "PBCO0.0");
  EXPECT_EQ(CmdBucAtten(0.5), "PBCA0.5");
  EXPECT_EQ(CmdBucAtten(7), "PBCA7.0");
  EXPECT_EQ(CmdAmcHeaterVoltage(6.3), "YCD0 6.3");
  EXPECT_EQ(CmdAmcHeaterVoltage(6), "YCD0 6.0");
  EXPECT_EQ(CmdAmcHeaterCurrent(1.125), "YCD1 1.13");
  EXPECT_EQ(CmdAmcFocusOffVoltage(1.25), "YCD2 1.3");
  EXPECT_EQ(CmdAmcFocusOnVoltage(12), "YCD3 12.0");
  EXPECT_EQ(CmdAmcFocusOnVoltage(-2.25), "YCD3 -2.3");
  EXPECT_EQ(CmdPSVset(-5), "YC-5");
}

}  // namespace
}  // namespace amp
