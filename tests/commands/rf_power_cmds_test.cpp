// RF power readers against scripted replies, the set-command texts, and the
// per-unit choices of command text.
#include "commands/rf_power_cmds.h"

#include <gtest/gtest.h>

#include <memory>

#include "command_rig.h"
#include "commands/reader_support.h"

namespace amp {
namespace {

using namespace test;
using Sent = std::vector<std::string>;

// A reply of `body` whose checksum byte is `checksum`. The checksum is the
// XOR of the frame, so the address byte (not checked by the scripted link)
// can be chosen to make it come out so. Bodies are picked so that this
// address is printable: a control byte there would upset the frame itself.
std::string AckEndingIn(const std::string& body, char checksum) {
  const char address = static_cast<char>(Ack(body, '\0').back() ^ checksum);
  if (address < 0x20 || address > 0x7e) ADD_FAILURE() << "no printable address for " << body;
  return Ack(body, address);
}

void Prefill(Comms& c) {
  for (auto& f : c.gRespFields) f = "old";
}

TEST(RfPowerAttenuation, LocatesTheValueBehindTheEchoAndStopsAtTheEtx) {
  EXPECT_EQ(ReadAttenuation(Replying("?A", Ack("?12.5"))->comms), "12.5");
  // A printable checksum is never part of the value.
  EXPECT_EQ(ReadAttenuation(Replying("?A", AckEndingIn("?7.5", 'Z'))->comms), "7.5");
  // A "?" in the address byte is found first: the whole body is taken.
  EXPECT_EQ(ReadAttenuation(Replying("?A", Ack("?3.0", '?'))->comms), "?3.0");
  EXPECT_EQ(ReadAttenuation(Replying("?A", Ack("12.5"))->comms), "");  // no echo
  EXPECT_EQ(ReadAttenuation(Refusing("?A")->comms), "");

  EXPECT_EQ(ReadAtnCount(Replying("8", Ack("81024"))->comms), 1024);
  EXPECT_EQ(ReadAtnCount(Replying("8", Ack("82047.5"))->comms), 2047);  // "." (46) ends the walk
  EXPECT_EQ(ReadAtnCount(Replying("8", Ack("899999"))->comms), -1);     // beyond 16 bits, guarded
  // An address "8" is found first: the digits are then read from the body.
  EXPECT_EQ(ReadAtnCount(Replying("8", Ack("8100", '8'))->comms), 8100);
  EXPECT_EQ(ReadAtnCount(Refusing("8")->comms), -1);
}

TEST(RfPowerAttenuation, DacAndDownlinkReadsShareTheSlashQuery) {
  // Open end: the ETX stops the number even before a digit checksum.
  EXPECT_EQ(ReadAtnDac(Replying("?/", AckEndingIn("?02048", '7'))->comms), 2048);
  EXPECT_EQ(ReadAtnDac(Replying("?/", Ack("?70000"))->comms), -1);
  EXPECT_EQ(ReadAtnDac(Replying("?/", Ack("2048"))->comms), -1);
  EXPECT_EQ(ReadAtnDac(Refusing("?/")->comms), -1);
  EXPECT_EQ(ReadDLAtten(Replying("?/", Ack("? 12.5xyz"))->comms), " 12.");  // four, untrimmed
  EXPECT_EQ(ReadDLAtten(Replying("?/", Ack("12.5"))->comms), "");
  EXPECT_EQ(ReadDLAtten(Refusing("?/")->comms), "");
}

TEST(RfPowerLinearizer, AmplitudePhaseAndOptionalSlope) {
  auto u = Replying("?Zz", Ack("?20481024"));
  Comms& c = u->comms;
  Prefill(c);
  EXPECT_TRUE(ReadLinearizer(c, false));
  EXPECT_EQ(c.gRespFields[0], "2048");
  EXPECT_EQ(c.gRespFields[1], "1024");
  EXPECT_EQ(c.gRespFields[2], "old");
  EXPECT_EQ(u->sent, Sent{"?Zz"});

  u->Answer("?/", "?0512");
  EXPECT_TRUE(ReadLinearizer(c, true));
  EXPECT_EQ(c.gRespFields[2], "0512");
  EXPECT_EQ(u->sent, (Sent{"?Zz", "?Zz", "?/"}));
  // A refused slope read clears the slope; the linearizer itself was read.
  auto v = Replying("?Zz", Ack("?20481024"));
  v->Refuse("?/");
  v->comms.gRespFields[2] = "old";
  EXPECT_TRUE(ReadLinearizer(v->comms, true));
  EXPECT_EQ(v->comms.gRespFields[2], "");

  // Len > 8: a body of five characters (Len 9) passes, four (Len 8) fails.
  auto nine = Replying("?Zz", Ack("?1234"));
  EXPECT_TRUE(ReadLinearizer(nine->comms, false));
  EXPECT_EQ(nine->comms.gRespFields[0], "1234");
  auto eight = Replying("?Zz", Ack("?123"));
  Prefill(eight->comms);
  EXPECT_FALSE(ReadLinearizer(eight->comms, false));
  EXPECT_EQ(eight->comms.gRespFields[0], "old");
  EXPECT_FALSE(ReadLinearizer(Refusing("?Zz")->comms, true));
}

// The five per-sub-band replies of a unit that has them all.
std::unique_ptr<ScriptedUnit> SubBandUnit() {
  auto u = Replying("PZ?3", Ack("PZ31234"));
  u->Answer("Pz?3", "Pz30567");
  u->Answer("P/?3", "P/30012");
  u->Answer("PG?3", "PG102.5");
  u->Answer("P|?3", "P|30100");
  return u;
}

TEST(RfPowerLinearizer, SubBandChainRunsOnceTheAmplitudeWasRead) {
  auto u = SubBandUnit();
  Prefill(u->comms);
  EXPECT_TRUE(ReadSubBandLinearizer(u->comms, 3));
  const std::array<std::string, 6> expected{"1234", "0567", "0012", "1", "02.5", "0100"};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(u->comms.gRespFields[i], expected[i]) << i;
  EXPECT_EQ(u->comms.gRespFields[6], "old");
  EXPECT_EQ(u->sent, (Sent{"PZ?3", "Pz?3", "P/?3", "PG?3", "P|?3"}));

  // A refused step in the middle does not stop the chain.
  auto v = std::make_unique<ScriptedUnit>();
  v->Answer("PZ?3", "PZ31234");
  v->Refuse("Pz?3");
  v->Answer("P/?3", "P/30012");
  v->Answer("PG?3", "PG102.5");
  v->Answer("P|?3", "P|30100");
  EXPECT_TRUE(ReadSubBandLinearizer(v->comms, 3));
  EXPECT_EQ(v->comms.gRespFields[1], "");
  EXPECT_EQ(v->comms.gRespFields[2], "0012");
  EXPECT_EQ(v->comms.gRespFields[5], "0100");
  EXPECT_EQ(v->sent.size(), 5u);

  // A refused "P|" falls back to the float supply's per-sub-band read.
  auto w = Replying("PZ?3", Ack("PZ31234"));
  w->Refuse("P|?3");
  w->Answer("YC?:3", "YC1850:3");
  EXPECT_TRUE(ReadSubBandLinearizer(w->comms, 3));
  EXPECT_EQ(w->comms.gRespFields[5], "1850");
  EXPECT_EQ(w->sent, (Sent{"PZ?3", "Pz?3", "P/?3", "PG?3", "P|?3", "YC?:3"}));
  auto x = Replying("PZ?3", Ack("PZ31234"));
  x->Refuse("P|?3");
  x->Refuse("YC?:3");
  Prefill(x->comms);
  EXPECT_TRUE(ReadSubBandLinearizer(x->comms, 3));
  EXPECT_EQ(x->comms.gRespFields[5], "");
  // An answered "P|" that cannot be located does not fall back.
  auto y = Replying("PZ?3", Ack("PZ31234"));
  y->Answer("P|?3", "0100");
  EXPECT_TRUE(ReadSubBandLinearizer(y->comms, 3));
  EXPECT_EQ(y->sent.back(), "P|?3");
  EXPECT_EQ(y->comms.gRespFields[5], "");

  // Without the amplitude nothing else is asked and all six are cleared.
  auto z = Refusing("PZ?1");
  Prefill(z->comms);
  EXPECT_FALSE(ReadSubBandLinearizer(z->comms, 1));
  EXPECT_EQ(z->sent, Sent{"PZ?1"});
  for (int i = 0; i < 6; ++i) EXPECT_EQ(z->comms.gRespFields[i], "") << i;
}

TEST(RfPowerGain, GainBalance) {
  auto u = Replying("PG?", Ack("PG1-2.5"));
  EXPECT_EQ(ReadGainBalance(u->comms), 1);
  EXPECT_EQ(u->comms.gRespFields[0], "-2.5");
  u = Replying("PG?", Ack("PG02.5"));  // Len 10 passes
  EXPECT_EQ(ReadGainBalance(u->comms), 0);
  EXPECT_EQ(u->comms.gRespFields[0], "2.5");
  EXPECT_EQ(ReadGainBalance(Replying("PG?", Ack("PG1.5"))->comms), -1);  // Len 9 fails
  // A state that is not a digit keeps -1; the value is still taken.
  u = Replying("PG?", Ack("PGx 3.5"));
  EXPECT_EQ(ReadGainBalance(u->comms), -1);
  EXPECT_EQ(u->comms.gRespFields[0], "3.5");
  EXPECT_EQ(ReadGainBalance(Replying("PG?", Ack("G13.5xx", 'P'))->comms), -1);  // "PG" at 2
  EXPECT_EQ(ReadGainBalance(Refusing("PG?")->comms), -1);
}

TEST(RfPowerGain, IfGainBalanceAndUnitGain) {
  auto u = Replying("PBCG?", Ack("PBCG12"));
  EXPECT_TRUE(ReadIFGainBalance(u->comms));
  EXPECT_EQ(u->comms.gRespFields[0], "12.0");
  u = Replying("PBCG?", Ack("PBCG"));  // ETX right behind the echo
  Prefill(u->comms);
  EXPECT_FALSE(ReadIFGainBalance(u->comms));
  EXPECT_EQ(u->comms.gRespFields[0], "");
  u = Replying("PBCG?", Ack("PBCG5"));
  EXPECT_TRUE(ReadIFGainBalance(u->comms));
  EXPECT_EQ(u->comms.gRespFields[0], "5.0");
  EXPECT_FALSE(ReadIFGainBalance(Replying("PBCG?", Ack("BCG5", 'P'))->comms));
  u = Refusing("PBCG?");
  Prefill(u->comms);
  EXPECT_FALSE(ReadIFGainBalance(u->comms));
  EXPECT_EQ(u->comms.gRespFields[0], "");

  u = Replying("PBJ?", Ack("PBJ1 3.5"));
  EXPECT_TRUE(ReadUnitGain(u->comms));
  EXPECT_EQ(u->comms.gRespFields[0], "1");
  EXPECT_EQ(u->comms.gRespFields[1], "3.5");
  u = Replying("PBJ?", Ack("PBJ0125"));  // Len 11 passes
  EXPECT_TRUE(ReadUnitGain(u->comms));
  EXPECT_EQ(u->comms.gRespFields[0], "0");
  EXPECT_FALSE(ReadUnitGain(Replying("PBJ?", Ack("PBJ012"))->comms));  // Len 10 fails
  EXPECT_FALSE(ReadUnitGain(Replying("PBJ?", Ack("PXJ01234"))->comms));
  EXPECT_FALSE(ReadUnitGain(Refusing("PBJ?")->comms));
}

TEST(RfPowerReadings, ConstantPowerLevelInItsRange) {
  EXPECT_EQ(ReadConstPowerLevel(Replying("G?", Ack("G45.5"))->comms), "45.5");
  EXPECT_EQ(ReadConstPowerLevel(Replying("G?", Ack("G63.9"))->comms), "63.9");
  EXPECT_EQ(ReadConstPowerLevel(Replying("G?", Ack("G64.0"))->comms), "");
  EXPECT_EQ(ReadConstPowerLevel(Replying("G?", Ack("G0"))->comms), "0.0");
  EXPECT_EQ(ReadConstPowerLevel(Replying("G?", Ack("G-0.5"))->comms), "");
  // The echo is located with our unit's address in front of it.
  EXPECT_EQ(ReadConstPowerLevel(Replying("G?", Ack("G45.5", 'B'))->comms), "");
  EXPECT_EQ(ReadConstPowerLevel(Refusing("G?")->comms), "");
}

TEST(RfPowerReadings, ForwardAndReverseReadings) {
  EXPECT_EQ(ReadFwdRF(Replying("?P", Ack("?42.5"))->comms), "42.5");
  EXPECT_EQ(ReadFwdRF(Replying("?P", Ack("?<5.0"))->comms), "<5.0");
  EXPECT_EQ(ReadRevRF(Replying("?Q", Ack("? 9.1"))->comms), "9.1");
  EXPECT_EQ(ReadFwdRF(Replying("?P", Ack("42.5"))->comms), "");
  // Len > 4: with "?" as the address, an empty body (Len 4) fails and a
  // one-character body (Len 5) passes, taking ETX and checksum along.
  EXPECT_EQ(ReadRevRF(Replying("?Q", Ack("", '?'))->comms), "");
  const std::string five = Ack("7", '?');
  EXPECT_EQ(ReadRevRF(Replying("?Q", five)->comms), five.substr(2));
  EXPECT_EQ(ReadFwdRF(Refusing("?P")->comms), "");
  EXPECT_EQ(ReadRevRF(Refusing("?Q")->comms), "");
}

TEST(RfPowerTrips, TripLevelFields) {
  auto u = Replying("?HLR", Ack("?F45.0A40.0D30.0"));
  EXPECT_TRUE(ReadRFTripLevels(u->comms));
  EXPECT_EQ(u->comms.gRespFields[0], "F45.0");
  EXPECT_EQ(u->comms.gRespFields[1], "A40.0");
  EXPECT_EQ(u->comms.gRespFields[2], "D30.0");
  // The third field starts at 14: it is read (and true) at Len 15, not at
  // Len 14, where the second field runs into the ETX.
  u = Replying("?HLR", Ack("?F45.0A40.0"));
  Prefill(u->comms);
  EXPECT_TRUE(ReadRFTripLevels(u->comms));
  EXPECT_NE(u->comms.gRespFields[2], "old");
  u = Replying("?HLR", Ack("?F45.0A40."));
  Prefill(u->comms);
  EXPECT_FALSE(ReadRFTripLevels(u->comms));
  EXPECT_EQ(u->comms.gRespFields[0], "F45.0");
  EXPECT_EQ(u->comms.gRespFields[1], "A40.\x03");
  EXPECT_EQ(u->comms.gRespFields[2], "old");
  EXPECT_FALSE(ReadRFTripLevels(Replying("?HLR", Ack("F45.0A40.0D30.0"))->comms));
  EXPECT_FALSE(ReadRFTripLevels(Refusing("?HLR")->comms));
}

TEST(RfPowerTrips, FactoryTripsKeepDigitsAndPoints) {
  auto u = Replying("YFTF?", AckEndingIn("YFTF43.0", 'Z'));
  u->Raw("YFTR?", AckEndingIn("YFTR2x0.5 dBm", 'Z'));  // other bytes skipped, blank ends
  EXPECT_EQ(ReadFactoryTripLevels(u->comms), 0);
  EXPECT_EQ(u->comms.gRespFields[0], "43.0");
  EXPECT_EQ(u->comms.gRespFields[1], "20.5");
  // The ETX is stepped over, so a digit checksum joins the number.
  u = Replying("YFTF?", AckEndingIn("YFTF43.0", '7'));
  u->Raw("YFTR?", AckEndingIn("YFTR20.5", 'Z'));
  EXPECT_EQ(ReadFactoryTripLevels(u->comms), 0);
  EXPECT_EQ(u->comms.gRespFields[0], "43.07");
  // Tail "TF" > 4: at 4 (an echo without its "Y") the level stays empty.
  u = Replying("YFTF?", AckEndingIn("FTF43.0", 'z'));
  u->Raw("YFTR?", AckEndingIn("YFTR20.5", 'Z'));
  Prefill(u->comms);
  EXPECT_EQ(ReadFactoryTripLevels(u->comms), 0);
  EXPECT_EQ(u->comms.gRespFields[0], "");
  EXPECT_EQ(u->comms.gRespFields[1], "20.5");

  u = Replying("YFTF?", AckEndingIn("YFTF43.0", 'Z'));
  u->Refuse("YFTR?");
  EXPECT_EQ(ReadFactoryTripLevels(u->comms), -1);
  EXPECT_EQ(u->comms.gRespFields[0], "43.0");
  u = Refusing("YFTF?");
  Prefill(u->comms);
  EXPECT_EQ(ReadFactoryTripLevels(u->comms), -1);
  EXPECT_EQ(u->sent, Sent{"YFTF?"});
  EXPECT_EQ(u->comms.gRespFields[0], "");
  EXPECT_EQ(u->comms.gRespFields[1], "");
}

TEST(RfPowerTrips, ScannedValuesStopOnAnyStopCode) {
  EXPECT_EQ(ReadRevRFOffset(Replying("PR?", Ack("PR-2.5"))->comms), "-2.5");
  EXPECT_EQ(ReadRevRFOffset(Replying("PR?", Ack("PR1.5"))->comms), " 1.5");
  EXPECT_EQ(ReadRevRFOffset(Replying("PR?", Ack("PR 0"))->comms), " 0");
  // A letter or "=" (61..127) ends the scan instead of holding it forever.
  EXPECT_EQ(ReadRevRFOffset(Replying("PR?", Ack("PR1.5dB"))->comms), " 1.5");
  EXPECT_EQ(ReadRevRFOffset(Replying("PR?", Ack("PR2=5"))->comms), " 2");
  // Len > 4 holds at 5 with "P" as the address; the scan meets the ETX.
  EXPECT_EQ(ReadRevRFOffset(Replying("PR?", Ack("R", 'P'))->comms), " 0");
  EXPECT_EQ(ReadRevRFOffset(Replying("PR?", Ack("P1.5"))->comms), "");
  EXPECT_EQ(ReadRevRFOffset(Refusing("PR?")->comms), "");

  PowerLimitRecord r = ReadPowerLimitFaultLevel(Replying("POO?", Ack("POO3.0"))->comms);
  EXPECT_TRUE(r.ok);
  EXPECT_EQ(r.state, "3.0");
  EXPECT_EQ(ReadPowerLimitFaultLevel(Replying("POO?", Ack("POO 3.0dB"))->comms).state, " 3.0");
  // "<" (60) is the last code taken, "=" (61) the first that stops.
  EXPECT_EQ(ReadPowerLimitFaultLevel(Replying("POO?", Ack("POO3.0<=1"))->comms).state, "3.0<");
  EXPECT_EQ(ReadPowerLimitFaultLevel(Replying("POO?", Ack("POO3."))->comms).state, "3.");  // Len 9
  r = ReadPowerLimitFaultLevel(Replying("POO?", Ack("POO3"))->comms);                      // Len 8
  EXPECT_FALSE(r.ok);
  EXPECT_EQ(r.state, "");
  EXPECT_FALSE(ReadPowerLimitFaultLevel(Refusing("POO?")->comms).ok);
}

TEST(RfPowerLimits, ReturnLossIsUnguarded) {
  EXPECT_FLOAT_EQ(ReadReturnLoss(Replying("PS?", Ack("PS12.5"))->comms), 12.5f);
  EXPECT_THROW(ReadReturnLoss(Replying("PS?", Ack("PS1e39"))->comms), ConversionFailure);
  EXPECT_FLOAT_EQ(ReadReturnLoss(Replying("PS?", Ack("S12", 'P'))->comms), -1.0f);  // "PS" at 2
  EXPECT_FLOAT_EQ(ReadReturnLoss(Refusing("PS?")->comms), -1.0f);
}

TEST(RfPowerLimits, PowerLimitOneAndTwoLevels) {
  PowerLimitRecord r = ReadPowerLimit(Replying("PO?", Ack("PO145.0"))->comms);
  EXPECT_TRUE(r.ok);
  EXPECT_EQ(r.state, "1");
  EXPECT_EQ(r.limit, "45.0");
  EXPECT_EQ(r.limit2, "");
  r = ReadPowerLimit(Replying("PO?", Ack("PO045.25;40.125"))->comms);
  EXPECT_EQ(r.state, "0");
  EXPECT_EQ(r.limit, "45.25");   // "##0.0##"
  EXPECT_EQ(r.limit2, "40.13");  // "##0.0#", half away from zero
  EXPECT_EQ(ReadPowerLimit(Replying("PO?", Ack("PO145"))->comms).limit, "45.0");  // Len 9
  EXPECT_FALSE(ReadPowerLimit(Replying("PO?", Ack("PO14"))->comms).ok);           // Len 8
  // The ";" is searched in the whole message: one in the address lies
  // before the data and is ignored, a checksum ";" makes an empty second.
  r = ReadPowerLimit(Replying("PO?", Ack("PO145.0", ';'))->comms);
  EXPECT_EQ(r.limit, "45.0");
  EXPECT_EQ(r.limit2, "");
  r = ReadPowerLimit(Replying("PO?", AckEndingIn("PO145.25", ';'))->comms);
  EXPECT_EQ(r.limit, "45.25");
  EXPECT_EQ(r.limit2, "0.0");
  EXPECT_FALSE(ReadPowerLimit(Refusing("PO?")->comms).ok);
}

TEST(RfPowerLimits, BandLimitsByProjectAndFirmware) {
  auto u = Replying(".?P71", Ack(".P71 450"));
  Comms& c = u->comms;
  EXPECT_EQ(ReadBandMaxPower(c, 150, 50, 1), "45.0");   // listed project
  EXPECT_EQ(ReadBandMaxPower(c, 150, 94, 1), "450.0");  // kept in dB
  EXPECT_EQ(ReadBandMaxPower(c, 200, 94, 1), "45.0");   // newer firmware
  EXPECT_EQ(ReadBandMaxPower(c, 150, 107, 1), "45.0");
  EXPECT_EQ(ReadBandMaxPower(c, 150, 102, 1), "45.0");
  u->sent.clear();
  for (int band : {5, 0, 2, 3, 4}) ReadBandMaxPower(c, 150, 50, band);
  EXPECT_EQ(u->sent, (Sent{".?P71", ".?P71", ".?P118", ".?P122", ".?P126"}));

  u->Answer(".?P66", ".P66 5");
  EXPECT_EQ(ReadBandMinPower(c, 150, 93, 1), "5.0");
  EXPECT_EQ(ReadBandMinPower(c, 150, 94, 1), "0.5");
  EXPECT_EQ(ReadBandMinPower(c, 200, 93, 1), "0.5");
  EXPECT_EQ(ReadBandMinPower(c, 150, 107, 1), "0.5");
  u->sent.clear();
  for (int band : {9, 2, 3, 4}) ReadBandMinPower(c, 150, 50, band);
  EXPECT_EQ(u->sent, (Sent{".?P66", ".?P116", ".?P120", ".?P124"}));

  // Project 127 has queries of its own; 139 only for the minimum.
  u->sent.clear();
  u->Answer("PBRC?", "PBRC45.5");
  u->Answer("PBRF?", "PBRF0.5");
  EXPECT_EQ(ReadBandMaxPower(c, 150, 127, 2), "45.5");
  EXPECT_EQ(ReadBandMinPower(c, 150, 127, 2), "0.5");
  EXPECT_EQ(ReadBandMinPower(c, 150, 139, 1), "0.5");
  EXPECT_EQ(ReadBandMaxPower(c, 150, 139, 1), "450.0");  // in dB, unlike 127
  EXPECT_EQ(u->sent, (Sent{"PBRC?", "PBRF?", "PBRF?", ".?P71"}));
  // Tail "RC" > 3 and Len > 7.
  EXPECT_EQ(ReadBandMaxPower(Replying("PBRC?", Ack("xRC5"))->comms, 150, 127, 1), "5.0");
  EXPECT_EQ(ReadBandMaxPower(Replying("PBRC?", Ack("RC5x"))->comms, 150, 127, 1), "");
  EXPECT_EQ(ReadBandMaxPower(Replying("PBRC?", Ack("xRC"))->comms, 150, 127, 1), "");
  EXPECT_EQ(ReadBandMaxPower(Refusing("PBRC?")->comms, 150, 127, 1), "");
}

TEST(RfPowerLimits, BandLimitValueEdges) {
  // An empty value leaves only ETX and checksum: Val of them is 0.
  EXPECT_EQ(ReadBandMinPower(Replying(".?P66", Ack(".P66 "))->comms, 150, 50, 1), "0.0");
  // A blank address is found first: the echo itself is read as the value.
  EXPECT_EQ(ReadBandMinPower(Replying(".?P66", Ack(".P66 5", ' '))->comms, 150, 50, 1), "0.0");
  EXPECT_EQ(ReadBandMinPower(Replying(".?P66", Ack("", ' '))->comms, 150, 50, 1), "");      // Len 4
  EXPECT_EQ(ReadBandMinPower(Replying(".?P66", Ack("5", ' '))->comms, 150, 50, 1), "0.5");  // Len 5
  EXPECT_EQ(ReadBandMinPower(Replying(".?P66", Ack(".P66"))->comms, 150, 50, 1), "");
  EXPECT_EQ(ReadBandMinPower(Refusing(".?P66")->comms, 150, 50, 1), "");
}

TEST(RfPowerLimits, AttenuationLimits) {
  auto u = Replying(".?P203", Ack(".P203 300"));
  u->Answer(".?P320", ".P320 255");
  u->Answer(".?P321", ".P321 ");  // an empty value passes: Val 0
  u->Refuse(".?P322");
  Prefill(u->comms);
  EXPECT_FALSE(ReadMaxAttenTable(u->comms));
  EXPECT_EQ(u->comms.gRespFields[0], "30");
  EXPECT_EQ(u->comms.gRespFields[1], "25.5");
  EXPECT_EQ(u->comms.gRespFields[2], "0");
  EXPECT_EQ(u->comms.gRespFields[3], "");
  EXPECT_EQ(u->comms.gRespFields[4], "old");
  EXPECT_EQ(u->sent, (Sent{".?P203", ".?P320", ".?P321", ".?P322"}));
  u = Replying(".?P203", Ack(".P20 300"));  // blank at 7 fails the test
  Prefill(u->comms);
  EXPECT_TRUE(ReadMaxAttenTable(u->comms));
  EXPECT_EQ(u->comms.gRespFields[0], "");

  EXPECT_EQ(ReadMaxAtten(Replying(".?P203", Ack(".P203 300"))->comms), 300);
  EXPECT_EQ(ReadMaxAtten(Replying(".?P203", Ack(".P203 3x"))->comms), -1);  // strict
  EXPECT_EQ(ReadMaxAtten(Replying(".?P203", Ack(".P203 "))->comms), -1);
  EXPECT_EQ(ReadMaxAtten(Replying(".?P203", Ack(".P20 300"))->comms), -1);
  EXPECT_EQ(ReadMaxAtten(Refusing(".?P203")->comms), -1);

  EXPECT_EQ(ReadAttenRange(Replying(".?P334", Ack(".P334 200"))->comms), "20.0");
  EXPECT_EQ(ReadAttenRange(Replying(".?P334", Ack(".P334 5"))->comms), "0.5");
  EXPECT_EQ(ReadAttenRange(Replying(".?P334", Ack(".P334 "))->comms),
            "");  // ETX right after the blank
  EXPECT_EQ(ReadAttenRange(Replying(".?P334", Ack(".P334"))->comms), "");
  EXPECT_EQ(ReadAttenRange(Refusing(".?P334")->comms), "");
}

TEST(RfPowerSetCommands, TextsAndPictures) {
  EXPECT_EQ(CmdAtndB("12.50"), "K12.50");
  EXPECT_EQ(CmdAtnCount(".D9", 1024), ".D9 1024");
  EXPECT_EQ(CmdAtnCount(".D1", 0), ".D1 0");
  EXPECT_EQ(CmdAtnCount(".D9", -5), ".D9-5");
  EXPECT_EQ(CmdAtnCountC(4095), "C4095");
  EXPECT_EQ(CmdAtnSlopeText("007"), "P/007");
  EXPECT_EQ(CmdAtnSlope(12.25), "P/12.3");
  EXPECT_EQ(CmdAtnSlope(3), "P/3.0");
  EXPECT_EQ(CmdAtnSlope(-0.04), "P/0.0");
  EXPECT_EQ(CmdLinAmplitude("007"), "PZ007");
  EXPECT_EQ(CmdLinPhase("7"), "Pz7");
  EXPECT_EQ(CmdSubBandLinAmplitude("1234", 3), "PZ1234:3");
  EXPECT_EQ(CmdSubBandLinPhase("0567", 1), "Pz0567:1");
  EXPECT_EQ(CmdSubBandSlope("0012", 8), "P/0012:8");
  EXPECT_EQ(CmdSubBandSupply("0100", 2), "P|0100:2");
  EXPECT_EQ(CmdSubBandGainBalance("1", 4), "PG1:4");
  EXPECT_EQ(CmdGainBalanceEnable(true), "PG1");
  EXPECT_EQ(CmdGainBalanceEnable(false), "PG0");
  EXPECT_EQ(CmdGainBalance(-2.46), "PG-2.5");
  EXPECT_EQ(CmdUnitGain("1"), "PBJ1");
  EXPECT_EQ(CmdConstPower(45, true), "GM45.0");
  EXPECT_EQ(CmdConstPower(12345.67, false), "G12345.7");
  EXPECT_EQ(CmdConstPower(0.05, false), "G0.1");
  EXPECT_EQ(CmdGoToPower(45.04, true), "EM45.0");
  EXPECT_EQ(CmdGoToPower(123456.78, false), "E123456.8");
  EXPECT_EQ(CmdTripLevel(RfTrip::FwdHigh, TripType::Fault, 45, true), "MFM45.0");
  EXPECT_EQ(CmdTripLevel(RfTrip::FwdLow, TripType::Disabled, 12.5, false), "LD12.5");
  EXPECT_EQ(CmdTripLevel(RfTrip::RevHigh, TripType::Alarm, 3.25, true), "OAM3.3");
  EXPECT_EQ(CmdTripLevelFileLine(RfTrip::FwdHigh, TripType::Alarm, 20), "MA20.0");
  EXPECT_EQ(CmdFactoryFwdTrip(43), "YFTF43.0");
  EXPECT_EQ(CmdFactoryRevTrip(-1.55), "YFTR-1.6");
  EXPECT_EQ(CmdFactoryTripMargin(10.5), "YFTM11");
  EXPECT_EQ(CmdFactoryTripMargin(5), "YFTM5");
  for (int p : {126, 127, 129, 135}) EXPECT_FALSE(FactoryTripMarginApplies(p)) << p;
  EXPECT_TRUE(FactoryTripMarginApplies(128));
  EXPECT_EQ(CmdRevRFOffset(-3), "PR-3.0");
  EXPECT_EQ(CmdReturnLoss(18.25), "PS18.3");
  EXPECT_EQ(CmdPowerLimit(45), "PO45.0");
  EXPECT_EQ(CmdPowerLimitEnable(true), "PO1");
  EXPECT_EQ(CmdPowerLimitEnable(false), "PO0");
  EXPECT_EQ(CmdPowerLimitTwoLevel("45.25", "40.1"), "PO45.25;40.1");
  EXPECT_EQ(CmdPowerLimitFaultLevel(1.5), "POO1.5");
  EXPECT_EQ(CmdMaxAtten(30), "YAM30.0");
  EXPECT_EQ(CmdBandMaxAtten(2, "25.5"), ".P320 25.5");
  EXPECT_EQ(CmdBandMaxAtten(4, "30"), ".P322 30");
  EXPECT_EQ(CmdBandMaxAtten(1, "30"), "");
  EXPECT_EQ(CmdBandMaxAtten(5, "30"), "");
  EXPECT_EQ(CmdAttenRange(20), ".P334 200");
  EXPECT_EQ(CmdAttenRange(17.5), ".P334 175");
}

TEST(RfPowerUnitChoices, CountCommandsByProject) {
  EXPECT_EQ(ForwardAnalogCountCommand(10, "C"), ".?A9");
  EXPECT_EQ(ForwardAnalogCountCommand(26, "C"), ".?A6");
  EXPECT_EQ(ForwardAnalogCountCommand(62, "Ku"), ".?A2");
  EXPECT_EQ(ForwardAnalogCountCommand(62, "Ka"), ".?A1");
  for (int p : {127, 500, 99, 510}) EXPECT_EQ(ForwardAnalogCountCommand(p, "Ku"), ".?A4") << p;
  EXPECT_EQ(ForwardAnalogCountCommand(11, "Ku"), ".?A1");

  EXPECT_EQ(ReverseAnalogCountCommand(10, 300, true), ".?A10");
  EXPECT_EQ(ReverseAnalogCountCommand(26, 300, true), ".?A7");
  EXPECT_EQ(ReverseAnalogCountCommand(11, 300, true), ".?A2");
  EXPECT_EQ(ReverseAnalogCountCommand(58, 300, true), ".?A2");
  for (int p : {34, 54, 127, 500, 99, 510})
    EXPECT_EQ(ReverseAnalogCountCommand(p, 300, true), ".?A5") << p;
  EXPECT_EQ(ReverseAnalogCountCommand(20, 200, false), ".?A3");
  EXPECT_EQ(ReverseAnalogCountCommand(93, 100, false), ".?A3");
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
