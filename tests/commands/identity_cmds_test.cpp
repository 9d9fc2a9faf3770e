// Identity and factory commands against a scripted unit. Reply bodies follow
// the echo rules of the command language: the body starts at position 3 of
// the frame (after the status byte and the address), ETX and checksum end it.
#include <gtest/gtest.h>

#include <array>

#include "commands/identity_cmds.h"
#include "commands/reader_support.h"
#include "support/scripted_unit.h"

namespace amp {
namespace {

using test::ScriptedUnit;

// The checksum byte may be any value. Where a test relies on a character
// being absent from the reply, the checksum must not be that character.
void AnswerWithout(ScriptedUnit& u, const std::string& command, const std::string& body,
                   char absent) {
  const std::string frame = ScriptedUnit::Frame('\x06', body);
  ASSERT_NE(frame.back(), absent) << body;
  u.Raw(command, frame);
}

TEST(IdentityCmds, UnitIdWordPacksSixBitsOfTwoCharacters) {
  ScriptedUnit u;
  // 'E' is 0x45 (low six bits 5), 'I' 0x49 (9): 5 x 256 + 9.
  u.Answer("1", "1EI");
  // Only the low six bits count: '?' (0x3F) is 63, 0x7F is 63 too.
  u.Answer("1", "1?\x7F");
  EXPECT_EQ(ReadUnitIDWord(u.comms), 5 * 256 + 9);
  EXPECT_EQ(ReadUnitIDWord(u.comms), 63 * 256 + 63);

  ScriptedUnit refused;
  refused.Refuse("1");
  EXPECT_EQ(ReadUnitIDWord(refused.comms), -1);

  // A reply with no "1" anywhere in the frame.
  ScriptedUnit none;
  const std::string noOne = ScriptedUnit::Frame('\x06', "ZZ");
  ASSERT_EQ(noOne.find('1'), std::string::npos);
  none.Raw("1", noOne);
  EXPECT_EQ(ReadUnitIDWord(none.comms), -1);

  // A "1" that is only the checksum, the last byte: nothing follows it to
  // read, which must give -1 rather than a read past the reply.
  std::string lastOne;
  for (char ch = ' '; ch <= '~' && lastOne.empty(); ++ch) {
    if (ch == '1') continue;
    const std::string f = ScriptedUnit::Frame('\x06', std::string("Z") + ch);
    if (f.back() == '1') lastOne = f;
  }
  ASSERT_FALSE(lastOne.empty());
  ScriptedUnit tail;
  tail.Raw("1", lastOne);
  EXPECT_EQ(ReadUnitIDWord(tail.comms), -1);
}

TEST(IdentityCmds, UnitVersionFields) {
  // Replies to one command are queued up front and used in order.
  ScriptedUnit u;
  auto& f = u.comms.gRespFields;
  // Fields are counted from just after the first "0", so the echo's second
  // "0" leads the firmware field: "0" + "2251-004" is 9 characters, and the
  // stray "0" is stepped over, leaving 8 that take the prefix as they stand.
  u.Answer("00", "002251-004/A12345/2.5/Nov 01 2008");
  // A 7-character firmware field is dashed 4-3.
  u.Answer("00", "00225100/S1/1.0/x");
  // Other lengths are taken as they stand, without a prefix.
  u.Answer("00", "00AB/S1/1.0/x");
  // The date runs over printable characters only.
  u.Answer("00", "002251-004/S/2.5/Nov 01 2008\r12:00");

  EXPECT_TRUE(ReadUnitVersion(u.comms, "715-2251-004"));
  EXPECT_EQ(f[0], "426-2251-004");
  EXPECT_EQ(f[1], "A12345");
  EXPECT_EQ(f[2], "2.5");
  EXPECT_EQ(f[3], "Nov 01 2008");
  EXPECT_EQ(u.sent.back(), "00");

  EXPECT_TRUE(ReadUnitVersion(u.comms, "715-2268-004"));  // this firmware's prefix is "418-"
  EXPECT_EQ(f[0], "418-0225-100");

  EXPECT_TRUE(ReadUnitVersion(u.comms, ""));
  EXPECT_EQ(f[0], "0AB");

  EXPECT_TRUE(ReadUnitVersion(u.comms, ""));
  EXPECT_EQ(f[3], "Nov 01 2008");
}

TEST(IdentityCmds, UnitVersionWithMissingSlashes) {
  ScriptedUnit u;
  auto& f = u.comms.gRespFields;
  AnswerWithout(u, "00", "00ABC", '/');
  AnswerWithout(u, "00", "002251-004/SN7/2.5", '/');
  AnswerWithout(u, "00", "002251-004/SN7", '/');
  u.Answer("00", "00//2.5/");

  // No "/" at all: every field empty, still a good read.
  f = {"x", "x", "x", "x"};
  EXPECT_TRUE(ReadUnitVersion(u.comms, ""));
  for (size_t i = 0; i < 4; ++i) EXPECT_EQ(f[i], "") << i;

  // Two "/": the revision runs to the ETX and the list ends there.
  f[3] = "x";
  EXPECT_TRUE(ReadUnitVersion(u.comms, ""));
  EXPECT_EQ(f[1], "SN7");
  EXPECT_EQ(f[2], "2.5");
  EXPECT_EQ(f[3], "");

  // One "/": the serial has no end and stays empty, as does what follows.
  EXPECT_TRUE(ReadUnitVersion(u.comms, ""));
  EXPECT_EQ(f[0], "426-2251-004");
  EXPECT_EQ(f[1], "");
  EXPECT_EQ(f[2], "");

  // Empty fields between slashes.
  EXPECT_TRUE(ReadUnitVersion(u.comms, ""));
  EXPECT_EQ(f[0], "0");
  EXPECT_EQ(f[1], "");
  EXPECT_EQ(f[2], "2.5");
  EXPECT_EQ(f[3], "");

  ScriptedUnit refused;
  refused.Refuse("00");
  EXPECT_FALSE(ReadUnitVersion(refused.comms, ""));

  // No "0" after the status byte: no fields to find.
  ScriptedUnit noZero;
  const std::string frame = ScriptedUnit::Frame('\x06', "XY/Q");
  ASSERT_EQ(frame.find('0'), std::string::npos);
  noZero.Raw("00", frame);
  EXPECT_FALSE(ReadUnitVersion(noZero.comms, ""));
}

TEST(IdentityCmds, SecondaryAndBootVersions) {
  ScriptedUnit u;
  u.Answer("0S", "0SV1.23");
  u.Answer("0S", "0S");
  u.Answer("0S", "0X12");
  EXPECT_EQ(ReadUnitSerialText(u.comms), "SV1.23");  // the "S" is kept
  EXPECT_EQ(ReadUnitSerialText(u.comms), "S");
  EXPECT_EQ(ReadUnitSerialText(u.comms), "");

  u.Answer("0C", "0C1.07");
  u.Answer("0C", "0C");  // nothing after the "C"
  u.Answer("0C", "0Q1.07");
  EXPECT_EQ(ReadCPLDVersion(u.comms), "1.07");
  EXPECT_EQ(ReadCPLDVersion(u.comms), "");
  EXPECT_EQ(ReadCPLDVersion(u.comms), "");

  ScriptedUnit refused;
  refused.Refuse("0S");
  refused.Refuse("0C");
  EXPECT_EQ(ReadUnitSerialText(refused.comms), "");
  EXPECT_EQ(ReadCPLDVersion(refused.comms), "");
}

TEST(IdentityCmds, FirmwareIdentityAndConfigurationWord) {
  ScriptedUnit u;
  // The identity is taken to one byte short of the end, so the ETX is still
  // on it; leading blanks go.
  u.Answer("YT", "YT  T 715-2251-004 Rev B");
  u.Refuse("YT");
  EXPECT_EQ(ReadUnitType(u.comms), "T 715-2251-004 Rev B\x03");
  EXPECT_EQ(ReadUnitType(u.comms), "");

  u.Answer("YM?", "YM513");
  u.Answer("YM?", "YMxyz");
  u.Answer("YM?", "YM70000");
  u.Refuse("YM?");
  EXPECT_EQ(ReadUnitCfgWord(u.comms), 513);
  EXPECT_EQ(ReadUnitCfgWord(u.comms), 0);  // no number: Val gives 0
  // Unguarded: a word beyond 16 bits reaches the caller.
  EXPECT_THROW(ReadUnitCfgWord(u.comms), ConversionFailure);
  EXPECT_EQ(ReadUnitCfgWord(u.comms), -1);
}

TEST(IdentityCmds, DateTimeAndTwentyCharacterName) {
  ScriptedUnit u;
  u.Answer("?%", "?11/01/2008 13:45:10");
  u.Answer("?%", "?12:00\r99");  // a control byte ends the text
  u.Answer("?%", "?");
  u.Refuse("?%");
  EXPECT_EQ(ReadDateTime(u.comms), "11/01/2008 13:45:10");
  EXPECT_EQ(ReadDateTime(u.comms), "12:00");
  EXPECT_EQ(ReadDateTime(u.comms), "");
  EXPECT_EQ(ReadDateTime(u.comms), "");

  const std::string name20 = "UPLINK SSPA 400W KU ";
  ASSERT_EQ(name20.size(), 20u);
  u.Answer(".?P131", ".P131 " + name20);
  u.Answer(".?P131", ".P131 " + name20 + "X");
  u.Answer(".?P131", ".P131 " + name20.substr(0, 19));
  u.Answer(".?P131", "131 " + name20 + "XX");
  EXPECT_EQ(ReadPN20(u.comms), name20);
  EXPECT_EQ(ReadPN20(u.comms), name20);  // only 20 are taken
  EXPECT_EQ(ReadPN20(u.comms), "");      // 19 is too short
  EXPECT_EQ(ReadPN20(u.comms), "");      // echo without ".P": data too early
}

TEST(IdentityCmds, ScalersAndDigitalPots) {
  ScriptedUnit u;
  u.Answer("YO0?", "YO0 1200");
  u.Refuse("YO1?");
  u.Answer("YO2?", "YO2 70000");  // too large for 16 bits: that entry stays -1
  u.Answer("YO3?", "YO3 -5");
  AnswerWithout(u, "YO4?", "YO4", ' ');  // no blank: no value
  std::array<int16_t, 5> scalers{7, 7, 7, 7, 7};
  EXPECT_TRUE(ReadAdcScalers(u.comms, scalers));
  EXPECT_EQ(scalers, (std::array<int16_t, 5>{1200, -1, -1, -5, -1}));
  EXPECT_EQ(u.sent, (std::vector<std::string>{"YO0?", "YO1?", "YO2?", "YO3?", "YO4?"}));

  u.Answer("YP4?", "YP4 128");
  EXPECT_EQ(ReadDigitalPot(u.comms, 4), 128);
  u.Answer("YP10?", "YP10 3");
  EXPECT_EQ(ReadDigitalPot(u.comms, 10), 3);
  AnswerWithout(u, "YP5?", "YP5", ' ');
  EXPECT_EQ(ReadDigitalPot(u.comms, 5), -1);
  u.Refuse("YP6?");
  EXPECT_EQ(ReadDigitalPot(u.comms, 6), -1);

  u.Answer("YP3?", "YP3 12.5");
  u.Answer("YP3?", "YP3 1e39");  // beyond single precision
  u.Refuse("YP3?");
  EXPECT_FLOAT_EQ(ReadOverdriveTripLevel(u.comms), 12.5f);
  EXPECT_FLOAT_EQ(ReadOverdriveTripLevel(u.comms), -1.0f);
  EXPECT_FLOAT_EQ(ReadOverdriveTripLevel(u.comms), -1.0f);
}

TEST(IdentityCmds, TemperatureCoefficient) {
  ScriptedUnit u;
  const std::string table18 = "10:25,20:30,30:35X";
  ASSERT_EQ(table18.size(), 18u);
  u.Answer("YB?", "YB0.075");
  u.Answer("YB?", "YB" + table18);
  u.Answer("YB?", "YB" + table18.substr(0, 17));
  u.Answer("YB?", "YB");
  u.Raw("YB?", ScriptedUnit::Frame('\x06', "B0.075", 'Y'));
  // Short form: 5 characters.
  EXPECT_EQ(ReadTempCoefficient(u.comms), "0.075");
  // Table form: the frame is longer than 22 bytes and the text runs to the
  // ETX. With 18 characters the ETX stands at 23, past 22: kept.
  EXPECT_EQ(ReadTempCoefficient(u.comms), table18);
  // With 17 the frame is 23 bytes and its ETX stands at 22: not beyond it.
  EXPECT_EQ(ReadTempCoefficient(u.comms), "");
  // Too short to hold anything.
  EXPECT_EQ(ReadTempCoefficient(u.comms), "");
  // The echo must open the body: here "YB" spans the address and the body.
  EXPECT_EQ(ReadTempCoefficient(u.comms), "");
}

TEST(IdentityCmds, SubBandTemperatureCoefficients) {
  ScriptedUnit u;
  auto& f = u.comms.gRespFields;
  const std::string table = "10:25,20:30,30:35,40:40";
  u.Answer("YB1?", "YB0.075s1");
  u.Answer("YB2?", "YB" + table + "s2");  // the "s" ends the table text
  u.Refuse("YB3?");
  f[2] = "stale";
  EXPECT_TRUE(ReadSubBandTempCoefficients(u.comms, 3));
  EXPECT_EQ(f[0], "0.075");
  EXPECT_EQ(f[1], table);
  EXPECT_EQ(f[2], "");
  EXPECT_EQ(u.sent, (std::vector<std::string>{"YB1?", "YB2?", "YB3?"}));

  // A short reply that is not longer than 12 bytes gives nothing.
  ScriptedUnit shortReply;
  shortReply.Answer("YB1?", "YB0.075");
  EXPECT_FALSE(ReadSubBandTempCoefficients(shortReply.comms, 1));
  EXPECT_EQ(shortReply.comms.gRespFields[0], "");

  // An "s" early in a long reply ends the text at or before 22: dropped.
  ScriptedUnit earlyS;
  earlyS.Answer("YB1?", "YB1.0s1 and more text to be long");
  EXPECT_FALSE(ReadSubBandTempCoefficients(earlyS.comms, 1));

  // No sub-bands, or more than seven: nothing is asked.
  ScriptedUnit none;
  EXPECT_FALSE(ReadSubBandTempCoefficients(none.comms, 0));
  EXPECT_FALSE(ReadSubBandTempCoefficients(none.comms, 8));
  EXPECT_TRUE(none.sent.empty());
}

TEST(IdentityCmds, OneDigitSwitchesAndParameterLog) {
  ScriptedUnit u;
  u.Answer("PBUH?", "PBUH1");
  u.Answer("PBUH?", "PBUH0");
  u.Answer("PBUH?", "PBUHx");
  u.Refuse("PBUH?");
  EXPECT_EQ(ReadUpcAvailability(u.comms), 1);
  EXPECT_EQ(ReadUpcAvailability(u.comms), 0);
  // Unguarded: a non-digit reaches the caller.
  EXPECT_THROW(ReadUpcAvailability(u.comms), ConversionFailure);
  EXPECT_EQ(ReadUpcAvailability(u.comms), -1);

  u.Answer("PBW?", "PBW1");
  u.Refuse("PBW?");
  EXPECT_EQ(ReadLEDMode(u.comms), 1);
  EXPECT_EQ(ReadLEDMode(u.comms), -1);

  u.Answer(".?P349", ".P349 1");
  u.Answer(".?P349", ".P349 0");
  u.Answer(".?P349", ".P3491");
  u.Refuse(".?P349");
  EXPECT_EQ(ReadParamLogEnable(u.comms), 1);
  EXPECT_EQ(ReadParamLogEnable(u.comms), 0);
  EXPECT_EQ(ReadParamLogEnable(u.comms), -1);  // no ".P349 " echo
  EXPECT_EQ(ReadParamLogEnable(u.comms), -1);
}

TEST(IdentityCmds, ProductIdFourFields) {
  ScriptedUnit u;
  u.Answer("PBO?", "PBO715-2295-001;MFR;SN0042;FBDC-KU-400");
  u.Answer("PBO?", "PBO715-2295-001;MFR;SN0042");  // three fields
  u.Refuse("PBO?");
  ProductID id = ReadProductID(u.comms);
  EXPECT_EQ(id.partNumber, "715-2295-001");
  EXPECT_EQ(id.manufacturerID, "MFR");
  EXPECT_EQ(id.serialNumber, "SN0042");
  EXPECT_EQ(id.functionalID, "FBDC-K");  // first 6 characters only

  id = ReadProductID(u.comms);
  EXPECT_EQ(id.partNumber, "");
  EXPECT_EQ(id.functionalID, "");
  EXPECT_EQ(ReadProductID(u.comms).serialNumber, "");
}

TEST(IdentityCmds, SetTexts) {
  EXPECT_EQ(CmdUnitPartNumber("426-2251-004"), "YK426-2251-004");
  EXPECT_EQ(CmdUnitSerialNumber("A12345"), "YLA12345");
  EXPECT_EQ(CmdUnitCfgWord(513), "YM513");
  EXPECT_EQ(CmdDateTime("11/01/2008 13:45:10"), "%11/01/2008 13:45:10");
  EXPECT_EQ(CmdAdcScaler(10, 1200), "YO10 1200");
  // Pot counts as the configuration file writes them: a blank ahead of a
  // count that is not negative, none ahead of a minus sign.
  EXPECT_EQ(CmdDigitalPot(1, 40), "YP1 40");
  EXPECT_EQ(CmdDigitalPot(6, 0), "YP6 0");
  EXPECT_EQ(CmdDigitalPot(4, -3), "YP4-3");
  EXPECT_EQ(CmdOverdriveTripLevel(12), "YP3 12.0");
  EXPECT_EQ(CmdOverdriveTripLevel(3.04), "YP3 3.0");
  EXPECT_EQ(CmdSubBandTempCoefficient("0.075", 3), "YB0.075s3");
  EXPECT_EQ(CmdTWTTempCoefficient(0.05), "YBT0.050");
  EXPECT_EQ(CmdTWTAmbientTemperature(25), "PJT25.000");
  EXPECT_EQ(CmdWaveguideConfig("2 - Redundant"), "PC2");
  EXPECT_EQ(CmdWaveguideConfig(""), "");
}

}  // namespace
}  // namespace amp
