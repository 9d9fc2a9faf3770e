// Identity and factory readers against scripted replies. The body starts at
// position 3 of the frame (after the status byte and the address), ETX and
// checksum end it.
#include <gtest/gtest.h>

#include "command_rig.h"
#include "commands/identity_cmds.h"
#include "commands/reader_support.h"

namespace amp {
namespace {

using namespace test;

// A frame of `body` whose checksum is not `absent`, for rows that rely on a
// character missing from the whole reply.
std::string AckWithout(const std::string& body, char absent) {
  std::string f = Ack(body);
  for (char a = 'A'; f.back() == absent || f.find(absent) == 1; ++a) f = Ack(body, a);
  return f;
}
// A frame whose checksum byte is "1", with no other "1" in it.
std::string EndingInOne() {
  for (char ch = ' '; ch <= '~'; ++ch)
    if (ch != '1' && Ack(std::string("Z") + ch).back() == '1') return Ack(std::string("Z") + ch);
  return "";
}

template <int N>
std::string Version(Comms& c) {
  const bool ok = ReadUnitVersion(c, N == 1 ? "715-2251-004" : N == 2 ? "715-2268-004" : "");
  std::string s = Text(ok);
  for (int i = 0; i < 4; ++i) s += "|" + c.gRespFields[i];
  return s;
}

std::string Product(Comms& c) {
  const ProductID id = ReadProductID(c);
  return id.partNumber + "|" + id.manufacturerID + "|" + id.serialNumber + "|" + id.functionalID;
}

TEST(IdentityReaders, PositionsLengthsAndFields) {
  const std::string name20 = "UPLINK SSPA 400W KU ";
  const std::string table18 = "10:25,20:30,30:35X";
  ExpectReads({
      // Six low bits of each character: 'E' 5, 'I' 9; '?' and 0x7F both 63.
      {R(ReadUnitIDWord), "1", "1EI", "1289"},
      {R(ReadUnitIDWord), "1", "1?\x7F", "16191"},
      {R(ReadUnitIDWord), "1", AckWithout("ZZ", '1'), "-1"},
      {R(ReadUnitIDWord), "1", EndingInOne(), "-1"},  // nothing follows the checksum "1"
      // From the first "0": the echo's second "0" leads the firmware field.
      {R(Version<1>), "00", "002251-004/A12345/2.5/Nov 01 2008",
       "true|426-2251-004|A12345|2.5|Nov 01 2008"},
      {R(Version<2>), "00", "00225100/S1/1.0/x", "true|418-0225-100|S1|1.0|x"},  // 7: dashed 4-3
      {R(Version<3>), "00", "00AB/S1/1.0/x", "true|0AB|S1|1.0|x"},
      {R(Version<3>), "00", "002251-004/S/2.5/Nov 01 2008\r12:00",
       "true|426-2251-004|S|2.5|Nov 01 2008"},
      {R(Version<3>), "00", AckWithout("00ABC", '/'), "true||||"},
      {R(Version<3>), "00", AckWithout("002251-004/SN7/2.5", '/'), "true|426-2251-004|SN7|2.5|"},
      {R(Version<3>), "00", AckWithout("002251-004/SN7", '/'), "true|426-2251-004|||"},
      {R(Version<3>), "00", "00//2.5/", "true|0||2.5|"},
      {R(Version<3>), "00", AckWithout("XY/Q", '0'), "false|old|old|old|old"},
      {R(ReadUnitSerialText), "0S", "0SV1.23", "SV1.23"},  // the "S" is kept
      {R(ReadUnitSerialText), "0S", "0X12", ""},
      {R(ReadCPLDVersion), "0C", "0C", ""},
      {R(ReadCPLDVersion), "0C", "0Q1.07", ""},
      {R(ReadUnitType), "YT", "YT  T 715 Rev B", "T 715 Rev B\x03"},  // ETX still on
      {R(ReadUnitCfgWord), "YM?", "YMxyz", "0"},
      {R(ReadDateTime), "?%", "?12:00\r99", "12:00"},  // a control byte ends it
      {R(ReadDateTime), "?%", "?", ""},
      {R(ReadPN20), ".?P131", ".P131 " + name20 + "X", name20},
      {R(ReadPN20), ".?P131", ".P131 " + name20.substr(0, 19), ""},
      {R(ReadPN20), ".?P131", "131 " + name20 + "XX", ""},
      {R(ReadTempCoefficient), "YB?", "YB" + table18, table18},  // ETX at 23, past 22
      {R(ReadTempCoefficient), "YB?", "YB" + table18.substr(0, 17), ""},
      {R(ReadTempCoefficient), "YB?", "YB", ""},
      {R(ReadTempCoefficient), "YB?", Ack("B0.075", 'Y'), ""},  // echo must open the body
      {R(ReadUpcAvailability), "PBUH?", kRefused, "-1"},
      {R(ReadParamLogEnable), ".?P349", ".P3491", "-1"},
      {R(Product), "PBO?", "PBO715-2295-001;MFR;SN0042;FBDC-KU-400",
       "715-2295-001|MFR|SN0042|FBDC-K"},
      {R(Product), "PBO?", "PBO715-2295-001;MFR;SN0042", "|||"},
  });
  EXPECT_THROW(ReadUnitCfgWord(Answering("YM?", "YM70000")->comms), ConversionFailure);
  EXPECT_THROW(ReadUpcAvailability(Answering("PBUH?", "PBUHx")->comms), ConversionFailure);
}

TEST(IdentityReaders, ScalersAndSubBandCoefficients) {
  auto u = Answering("YO0?", "YO0 1200");
  u->Refuse("YO1?");
  u->Answer("YO2?", "YO2 70000");  // too large: that entry stays -1
  u->Answer("YO3?", "YO3 -5");
  u->Raw("YO4?", AckWithout("YO4", ' '));  // no blank: no value
  std::array<int16_t, 5> scalers{7, 7, 7, 7, 7};
  EXPECT_TRUE(ReadAdcScalers(u->comms, scalers));
  EXPECT_EQ(scalers, (std::array<int16_t, 5>{1200, -1, -1, -5, -1}));

  const std::string table = "10:25,20:30,30:35,40:40";
  u = Answering("YB1?", "YB0.075s1");
  u->Answer("YB2?", "YB" + table + "s2");  // the "s" ends the table text
  u->Refuse("YB3?");
  EXPECT_TRUE(ReadSubBandTempCoefficients(u->comms, 3));
  EXPECT_EQ(u->comms.gRespFields[0], "0.075");
  EXPECT_EQ(u->comms.gRespFields[1], table);
  EXPECT_EQ(u->comms.gRespFields[2], "");
  // An "s" early in a long reply ends the text at or before 22: dropped.
  EXPECT_FALSE(ReadSubBandTempCoefficients(Answering("YB1?", "YB1.0s1 and more text")->comms, 1));
  u = std::make_unique<ScriptedUnit>();
  EXPECT_FALSE(ReadSubBandTempCoefficients(u->comms, 0));
  EXPECT_FALSE(ReadSubBandTempCoefficients(u->comms, 8));
  EXPECT_TRUE(u->sent.empty());
}

}  // namespace
}  // namespace amp
