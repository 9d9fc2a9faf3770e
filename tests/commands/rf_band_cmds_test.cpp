// RF band, sub-band, RF frequency and cal-factor readers against scripted
// replies.
#include <gtest/gtest.h>

#include "command_rig.h"
#include "commands/rf_band_cmds.h"

namespace amp {
namespace {

using namespace test;

template <int N>
std::string Band(Comms& c) {
  return ReadBandInfo(c, N);
}

TEST(RfBandReaders, PositionsLengthsAndFields) {
  const std::string withChecksum = Ack("TKa, 29.5");
  ExpectReads({
      // Seven characters after the comma: a six-character frequency takes
      // the ETX along; left blanks go.
      {RF(1, ReadCurrentBand), "T?", "TKu,14.250", "Ku|14.250\x03"},
      {RF(1, ReadCurrentBand), "T?", withChecksum,
       "Ka|29.5\x03" + withChecksum.substr(withChecksum.size() - 1)},
      {RF(1, ReadCurrentBand), "T?", "TKu2,14.1234567", "Ku|14.1234"},  // digits end the name
      {RF(1, ReadCurrentBand), "T?", "TC", "C|"},                       // no comma: cleared
      {RF(1, ReadCurrentBand), "T?", Ack("Ku,14.0", 'T'), "|old"},      // "T" must open the body
      {RF(1, Band<1>), ".?B1", ".B1Ku,14.00", "Ku|14.0"},               // "#0.0#"
      {RF(1, Band<2>), ".?B2", ".B2Ka,29.125", "Ka|29.13"},
      {RF(1, Band<3>), ".?B3", ".B3", "|"},  // an unused band
      {RF(1, Band<4>), ".?B4", kRefused, std::string(kBandNotSupported) + "|old"},
      {RF(1, Band<1>), ".?B1", "Ku,14.0", "|old"},
      {RF(1, Band<1>), ".?B1", Ack(".B1Ku,14.0", ','), "Ku|0.0"},  // comma in the address first
      {R(ReadRFFrequency), "TF?", "TF14250.6", "14251"},
      {R(ReadRFFrequency), "TF?", "TF1234.5", "1234"},  // ties to even
      {R(ReadRFFrequency), "TF?", "TF", "0"},
      {R(ReadRFFrequency), "TF?", "TF99999", ""},  // beyond 16 bits
      {R(ReadRFFrequency), "TF?", "XX14250", ""},
      {RF(1, ReadCurrentSubBand), "PBS?", "PBS0 0.00", "0|0.00"},
      {RF(1, ReadCurrentSubBand), "PBS?", "PBSx12.00", "-1|12.00"},
      {RF(1, ReadCurrentSubBand), "PBS?", "BS325.75", "-1|old"},  // tail + 1 > 4 fails
      {R(ReadCalFactors), "QS?", "QS14.0,0.5;14.5,-0.7;", "14.0,0.5;14.5,-0.7;"},
      {R(ReadCalFactors), "QS?", "QS", "0.0,0.0;"},
      {R(ReadCalFactors), "QS?", "XQS1,2;", ""},
      {R(ReadCalFactors), "QS?", Ack("S1,2;", 'Q'), ""},
  });
}

TEST(RfBandReaders, SubBandTableStopsAtFirstRefusal) {
  auto u = Answering("PBS1?", "PBS125.75");
  u->Answer("PBS2?", "BS230.55");   // echo at 3 fails: entry empty
  u->Answer("PBS3?", "PBS300.00");  // a zero frequency is no sub-band
  u->Answer("PBS4?", "PBS413.00");
  u->Refuse("PBS5?");
  for (auto& f : u->comms.gRespFields) f = "stale";
  EXPECT_TRUE(ReadSubBandTable(u->comms));
  const std::vector<std::string> want{"25.75", "", "", "13.00", "", "", "", "", "stale"};
  EXPECT_EQ(
      std::vector<std::string>(u->comms.gRespFields.begin(), u->comms.gRespFields.begin() + 9),
      want);
  EXPECT_EQ(u->sent, (Sent{"PBS1?", "PBS2?", "PBS3?", "PBS4?", "PBS5?"}));

  u = std::make_unique<ScriptedUnit>();
  for (int n = 1; n <= 8; ++n) {
    const std::string d = std::to_string(n);
    u->Answer("PBS" + d + "?", "PBS" + d + "1" + d + ".50");
  }
  EXPECT_TRUE(ReadSubBandTable(u->comms));
  EXPECT_EQ(u->sent.size(), 8u);  // no ninth
  EXPECT_EQ(u->comms.gRespFields[7], "18.50");
  EXPECT_FALSE(ReadSubBandTable(Answering("PBS1?", "BS125.75")->comms));
}

}  // namespace
}  // namespace amp
