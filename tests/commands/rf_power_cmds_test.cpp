// RF power readers against scripted replies, and the per-unit choices of
// command text. Rows mark the edges of each reader's position and length
// tests; that ordinary replies parse is checked against every profile.
#include "commands/rf_power_cmds.h"

#include <gtest/gtest.h>

#include "command_rig.h"
#include "commands/reader_support.h"

namespace amp {
namespace {

using namespace test;

// A reply of `body` whose checksum byte is `checksum`. The checksum is the
// XOR of the frame, so the address byte (not checked by the scripted link)
// can be chosen to make it come out so.
std::string AckEndingIn(const std::string& body, char checksum) {
  const char address = static_cast<char>(Ack(body, '\0').back() ^ checksum);
  if (address < 0x20 || address > 0x7e) ADD_FAILURE() << "no printable address for " << body;
  return Ack(body, address);
}

std::string Limit(const PowerLimitRecord& r) {
  return Text(r.ok) + "|" + r.state + "|" + r.limit + "|" + r.limit2;
}
template <int Band, int Project, int Fw = 150>
std::string MinPower(Comms& c) {
  return ReadBandMinPower(c, Fw, Project, Band);
}
template <int Band, int Project, int Fw = 150>
std::string MaxPower(Comms& c) {
  return ReadBandMaxPower(c, Fw, Project, Band);
}

TEST(RfPowerReaders, PositionsLengthsAndStopCodes) {
  const std::string five = Ack("7", '?');
  ExpectReads({
      {R(ReadAttenuation), "?A", AckEndingIn("?7.5", 'Z'), "7.5"},  // checksum never joins
      {R(ReadAttenuation), "?A", Ack("?3.0", '?'), "?3.0"},  // "?" in the address found first
      {R(ReadAttenuation), "?A", "12.5", ""},
      {R(ReadAtnCount), "8", "82047.5", "2047"},  // "." ends the walk
      {R(ReadAtnCount), "8", "899999", "-1"},     // beyond 16 bits, guarded
      {R(ReadAtnCount), "8", Ack("8100", '8'), "8100"},
      {R(ReadAtnCount), "8", kRefused, "-1"},
      {R(ReadDLAtten), "?/", "? 12.5xyz", " 12."},  // four, untrimmed
      {R(ReadDLAtten), "?/", "12.5", ""},
      {RF(1, ReadGainBalance), "PG?", "PG02.5", "0|2.5"},  // Len 10 passes
      {RF(1, ReadGainBalance), "PG?", "PG1.5", "-1|old"},  // Len 9 fails
      {RF(1, ReadGainBalance), "PG?", "PGx 3.5", "-1|3.5"},
      {R(ReadGainBalance), "PG?", Ack("G13.5xx", 'P'), "-1"},      // "PG" at 2
      {RF(2, ReadUnitGain), "PBJ?", "PBJ0125", "true|0|125\x03"},  // Len 11 passes
      {R(ReadUnitGain), "PBJ?", "PBJ012", "false"},                // Len 10 fails
      {R(ReadUnitGain), "PBJ?", "PXJ01234", "false"},
      {R(ReadConstPowerLevel), "G?", "G63.9", "63.9"},
      {R(ReadConstPowerLevel), "G?", "G64.0", ""},
      {R(ReadConstPowerLevel), "G?", "G0", "0.0"},
      {R(ReadConstPowerLevel), "G?", "G-0.5", ""},
      {R(ReadConstPowerLevel), "G?", Ack("G45.5", 'B'), ""},  // echo behind our address only
      {R(ReadFwdRF), "?P", "?<5.0", "<5.0"},
      {R(ReadRevRF), "?Q", "? 9.1", "9.1"},
      {R(ReadFwdRF), "?P", "42.5", ""},
      {R(ReadRevRF), "?Q", Ack("", '?'), ""},  // Len 4 fails, Len 5 passes with ETX
      {R(ReadRevRF), "?Q", five, five.substr(2)},
      {RF(3, ReadRFTripLevels), "?HLR", "?F45.0A40.0",
       "true|F45.0|A40.0|\x03" + Ack("?F45.0A40.0").substr(14)},
      {RF(3, ReadRFTripLevels), "?HLR", "?F45.0A40.", "false|F45.0|A40.\x03|old"},
      {R(ReadRFTripLevels), "?HLR", "F45.0A40.0D30.0", "false"},
      {R(ReadRevRFOffset), "PR?", "PR1.5dB", " 1.5"},  // a letter ends the scan
      {R(ReadRevRFOffset), "PR?", "PR2=5", " 2"},
      {R(ReadRevRFOffset), "PR?", Ack("R", 'P'), " 0"},  // Len 5 holds, scan meets ETX
      {R(ReadRevRFOffset), "PR?", "P1.5", ""},
      {R(ReadReturnLoss), "PS?", Ack("S12", 'P'), "-1"},  // "PS" at 2
      {R([](Comms& c) { return Limit(ReadPowerLimitFaultLevel(c)); }), "POO?", "POO3.0<=1",
       "true|3.0<||"},
      {R([](Comms& c) { return Limit(ReadPowerLimitFaultLevel(c)); }), "POO?", "POO3.",
       "true|3.||"},
      {R([](Comms& c) { return Limit(ReadPowerLimitFaultLevel(c)); }), "POO?", "POO3", "false|||"},
      {R([](Comms& c) { return Limit(ReadPowerLimit(c)); }), "PO?", "PO045.25;40.125",
       "true|0|45.25|40.13"},
      {R([](Comms& c) { return Limit(ReadPowerLimit(c)); }), "PO?", "PO145",
       "true|1|45.0|"},                                                                   // Len 9
      {R([](Comms& c) { return Limit(ReadPowerLimit(c)); }), "PO?", "PO14", "false|||"},  // Len 8
      // ";" is searched in the whole message: in the address it lies before
      // the data, as the checksum it makes an empty second level.
      {R([](Comms& c) { return Limit(ReadPowerLimit(c)); }), "PO?", Ack("PO145.0", ';'),
       "true|1|45.0|"},
      {R([](Comms& c) { return Limit(ReadPowerLimit(c)); }), "PO?", AckEndingIn("PO145.25", ';'),
       "true|1|45.25|0.0"},
      {R(MaxPower<1, 50>), ".?P71", ".P71 450", "45.0"},  // listed project: tenths
      {R(MaxPower<1, 94>), ".?P71", ".P71 450", "450.0"},
      {R(MaxPower<1, 94, 200>), ".?P71", ".P71 450", "45.0"},  // newer firmware
      {R(MaxPower<1, 107>), ".?P71", ".P71 450", "45.0"},
      {R(MaxPower<1, 139>), ".?P71", ".P71 450", "450.0"},
      {R(MinPower<1, 93>), ".?P66", ".P66 5", "5.0"},
      {R(MinPower<1, 94>), ".?P66", ".P66 5", "0.5"},
      {R(MinPower<1, 93, 200>), ".?P66", ".P66 5", "0.5"},
      {R(MinPower<1, 50>), ".?P66", ".P66 ", "0.0"},             // Val of ETX and checksum
      {R(MinPower<1, 50>), ".?P66", Ack(".P66 5", ' '), "0.0"},  // blank address first
      {R(MinPower<1, 50>), ".?P66", Ack("", ' '), ""},           // Len 4
      {R(MinPower<1, 50>), ".?P66", Ack("5", ' '), "0.5"},       // Len 5
      {R(MinPower<1, 50>), ".?P66", ".P66", ""},
      {R(MaxPower<1, 127>), "PBRC?", "xRC5", "5.0"},  // tail "RC" > 3 and Len > 7
      {R(MaxPower<1, 127>), "PBRC?", "RC5x", ""},
      {R(MaxPower<1, 127>), "PBRC?", "xRC", ""},
      {R(MinPower<1, 139>), "PBRF?", "PBRF0.5", "0.5"},
      {R(ReadMaxAtten), ".?P203", ".P203 3x", "-1"},  // strict
      {R(ReadMaxAtten), ".?P203", ".P203 ", "-1"},
      {R(ReadMaxAtten), ".?P203", ".P20 300", "-1"},  // blank at 7 fails
      {R(ReadAttenRange), ".?P334", ".P334 5", "0.5"},
      {R(ReadAttenRange), ".?P334", ".P334 ", ""},
  });
}

TEST(RfPowerReaders, FactoryTripsAndBandLimitQueries) {
  auto u = Replying("YFTF?", AckEndingIn("YFTF43.0", '7'));  // ETX stepped over: digit joins
  u->Raw("YFTR?", AckEndingIn("YFTR2x0.5 dBm", 'Z'));        // other bytes skipped, blank ends
  EXPECT_EQ(ReadFactoryTripLevels(u->comms), 0);
  EXPECT_EQ(u->comms.gRespFields[0], "43.07");
  EXPECT_EQ(u->comms.gRespFields[1], "20.5");
  u = Replying("YFTF?", AckEndingIn("FTF43.0", 'z'));  // tail "TF" at 4: no level
  u->Refuse("YFTR?");
  EXPECT_EQ(ReadFactoryTripLevels(u->comms), -1);
  EXPECT_EQ(u->comms.gRespFields[0], "");
  u = Refusing("YFTF?");
  EXPECT_EQ(ReadFactoryTripLevels(u->comms), -1);
  EXPECT_EQ(u->sent, Sent{"YFTF?"});

  u = Answering(".?P71", ".P71 450");
  u->Answer(".?P66", ".P66 5");
  for (int band : {5, 0, 2, 3, 4}) ReadBandMaxPower(u->comms, 150, 50, band);
  for (int band : {9, 2, 3, 4}) ReadBandMinPower(u->comms, 150, 50, band);
  EXPECT_EQ(u->sent, (Sent{".?P71", ".?P71", ".?P118", ".?P122", ".?P126", ".?P66", ".?P116",
                           ".?P120", ".?P124"}));
}

TEST(RfPowerCommands, TextsAndCountCommandsByUnit) {
  EXPECT_EQ(CmdTripLevel(RfTrip::RevHigh, TripType::Alarm, 3.25, true), "OAM3.3");
  EXPECT_EQ(CmdAtnCount(".D9", -5), ".D9-5");
  EXPECT_EQ(CmdConstPower(12345.67, false), "G12345.7");

  EXPECT_EQ(ForwardAnalogCountCommand(10, "C"), ".?A9");
  EXPECT_EQ(ForwardAnalogCountCommand(26, "C"), ".?A6");
  EXPECT_EQ(ForwardAnalogCountCommand(62, "Ku"), ".?A2");
  EXPECT_EQ(ForwardAnalogCountCommand(62, "Ka"), ".?A1");
  for (int p : {127, 500, 99, 510}) EXPECT_EQ(ForwardAnalogCountCommand(p, "Ku"), ".?A4") << p;
  EXPECT_EQ(ForwardAnalogCountCommand(11, "Ku"), ".?A1");

  EXPECT_EQ(ReverseAnalogCountCommand(10, 300, true), ".?A10");
  EXPECT_EQ(ReverseAnalogCountCommand(26, 300, true), ".?A7");
  EXPECT_EQ(ReverseAnalogCountCommand(58, 300, true), ".?A2");
  for (int p : {34, 54, 127, 500, 99, 510})
    EXPECT_EQ(ReverseAnalogCountCommand(p, 300, true), ".?A5") << p;
  EXPECT_EQ(ReverseAnalogCountCommand(20, 200, false), ".?A3");
  EXPECT_EQ(ReverseAnalogCountCommand(20, 100, true), ".?A3");
  EXPECT_EQ(ReverseAnalogCountCommand(20, 199, false), ".?A2");

  for (int p : {10, 11, 38, 52, 53, 107, 114, 127})
    EXPECT_EQ(AtnCountCommandFor(p, false), ".D1") << p;
  EXPECT_EQ(AtnCountCommandFor(20, true), ".D1");
  EXPECT_EQ(AtnCountCommandFor(20, false), ".D9");

  EXPECT_EQ(MinAtnCountFor(20, 199, false, false), 2048);
  EXPECT_EQ(MinAtnCountFor(20, 200, false, false), 0);
  EXPECT_EQ(MinAtnCountFor(20, 100, true, false), 0);
  EXPECT_EQ(MinAtnCountFor(20, 100, false, true), 0);
  EXPECT_EQ(MinAtnCountFor(102, 100, false, false), 0);
  EXPECT_EQ(MinAtnCountFor(107, 100, false, false), 0);
}

}  // namespace
}  // namespace amp
