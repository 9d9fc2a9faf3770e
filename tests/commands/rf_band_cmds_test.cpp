// RF band, sub-band, RF frequency and cal-factor readers and set texts,
// against scripted replies laid out as the unit sends them.
#include <gtest/gtest.h>

#include "command_rig.h"
#include "commands/rf_band_cmds.h"

namespace amp {
namespace {

using namespace test;

const std::string kEtx = "\x03";

// The reply to one scripted command (the whole frame given), through one
// reader; the unit's field 0 starts as "old" to show what a reader leaves.
template <class Reader>
auto ReadFrame(const std::string& command, const std::string& frame, Reader reader,
               std::string* field0 = nullptr) {
  ScriptedUnit u;
  if (frame.empty()) {
    u.Refuse(command);
  } else {
    u.Raw(command, frame);
  }
  u.comms.gRespFields[0] = "old";
  auto result = reader(u.comms);
  if (field0 != nullptr) *field0 = u.comms.gRespFields[0];
  return result;
}

TEST(RfBandCmds, CurrentBandNameAndFrequency) {
  std::string f0;
  EXPECT_EQ(ReadFrame("T?", Ack("TKu,14.250"), ReadCurrentBand, &f0), "Ku");
  // Seven characters after the comma: a six-character frequency takes the
  // ETX with it.
  EXPECT_EQ(f0, "14.250" + kEtx);
  // Left blanks of the frequency go; the checksum rides along at the end.
  const std::string frame = Ack("TKa, 29.5");
  EXPECT_EQ(ReadFrame("T?", frame, ReadCurrentBand, &f0), "Ka");
  EXPECT_EQ(f0, "29.5" + kEtx + frame.back());
  // A long frequency is cut at seven characters; digits end the name.
  EXPECT_EQ(ReadFrame("T?", Ack("TKu2,14.1234567"), ReadCurrentBand, &f0), "Ku");
  EXPECT_EQ(f0, "14.1234");
  EXPECT_EQ(ReadFrame("T?", Ack("TC"), ReadCurrentBand, &f0), "C");
  EXPECT_EQ(f0, "");  // no comma: cleared
  // The body must begin with "T": one in the address byte is not enough,
  // and a rejected reply leaves the frequency entry alone.
  EXPECT_EQ(ReadFrame("T?", Ack("Ku,14.0", 'T'), ReadCurrentBand, &f0), "");
  EXPECT_EQ(f0, "old");
  EXPECT_EQ(ReadFrame("T?", "", ReadCurrentBand, &f0), "");
  EXPECT_EQ(f0, "old");
}

TEST(RfBandCmds, BandInfoNameFrequencyAndUnsupported) {
  auto band = [](int n) { return [n](Comms& c) { return ReadBandInfo(c, n); }; };
  std::string f0;
  EXPECT_EQ(ReadFrame(".?B1", Ack(".B1Ku,14.00"), band(1), &f0), "Ku");
  EXPECT_EQ(f0, "14.0");  // "#0.0#" drops a zero second place
  EXPECT_EQ(ReadFrame(".?B2", Ack(".B2Ka,29.125"), band(2), &f0), "Ka");
  EXPECT_EQ(f0, "29.13");
  // An unused band: empty name, frequency cleared.
  EXPECT_EQ(ReadFrame(".?B3", Ack(".B3"), band(3), &f0), "");
  EXPECT_EQ(f0, "");
  // A refused read is a distinct answer and touches no field; so does a
  // reply without the ".B" echo, which gives the empty name.
  EXPECT_EQ(ReadFrame(".?B4", "", band(4), &f0), kBandNotSupported);
  EXPECT_EQ(f0, "old");
  EXPECT_EQ(ReadFrame(".?B1", Ack("Ku,14.0"), band(1), &f0), "");
  EXPECT_EQ(f0, "old");
  // A comma in the address byte is found before the real one: the
  // frequency is then read from the body's start, which is no number.
  EXPECT_EQ(ReadFrame(".?B1", Ack(".B1Ku,14.0", ','), band(1), &f0), "Ku");
  EXPECT_EQ(f0, "0.0");

  ScriptedUnit u;
  u.Answer(".?B3", ".B3");
  ReadBandInfo(u.comms, 3);
  EXPECT_EQ(u.sent, (std::vector<std::string>{".?B3"}));
}

TEST(RfBandCmds, RfFrequencyWholeMegahertz) {
  EXPECT_EQ(ReadFrame("TF?", Ack("TF14250"), ReadRFFrequency), "14250");
  EXPECT_EQ(ReadFrame("TF?", Ack("TF14250.6"), ReadRFFrequency), "14251");
  EXPECT_EQ(ReadFrame("TF?", Ack("TF1234.5"), ReadRFFrequency), "1234");  // ties to even
  EXPECT_EQ(ReadFrame("TF?", Ack("TF"), ReadRFFrequency), "0");           // ETX ends the number
  EXPECT_EQ(ReadFrame("TF?", Ack("TF99999"), ReadRFFrequency), "");       // beyond 16 bits
  EXPECT_EQ(ReadFrame("TF?", Ack("XX14250"), ReadRFFrequency), "");       // no echo
  EXPECT_EQ(ReadFrame("TF?", "", ReadRFFrequency), "");
}

TEST(RfBandCmds, SubBandTableStopsAtFirstRefusal) {
  ScriptedUnit u;
  u.Answer("PBS1?", "PBS125.75");
  u.Answer("PBS2?", "PBS230.55");
  u.Answer("PBS3?", "PBS300.00");  // a zero frequency is no sub-band
  u.Answer("PBS4?", "PBS413.00");
  u.Refuse("PBS5?");
  for (auto& f : u.comms.gRespFields) f = "stale";
  EXPECT_TRUE(ReadSubBandTable(u.comms));
  EXPECT_EQ(u.comms.gRespFields[0], "25.75");
  EXPECT_EQ(u.comms.gRespFields[1], "30.55");
  EXPECT_EQ(u.comms.gRespFields[2], "");
  EXPECT_EQ(u.comms.gRespFields[3], "13.00");
  for (int i = 4; i < 8; ++i) EXPECT_EQ(u.comms.gRespFields[i], "") << i;
  EXPECT_EQ(u.comms.gRespFields[8], "stale");  // only 0..7 belong to the table
  EXPECT_EQ(u.sent, (std::vector<std::string>{"PBS1?", "PBS2?", "PBS3?", "PBS4?", "PBS5?"}));
}

TEST(RfBandCmds, SubBandTableEchoPositionAndFullWalk) {
  {
    // All eight answered: eight reads, no ninth.
    ScriptedUnit u;
    for (int n = 1; n <= 8; ++n) {
      const std::string d = std::to_string(n);
      u.Answer("PBS" + d + "?", "PBS" + d + "1" + d + ".50");  // "11.50" .. "18.50"
    }
    EXPECT_TRUE(ReadSubBandTable(u.comms));
    EXPECT_EQ(u.sent.size(), 8u);
    EXPECT_EQ(u.comms.gRespFields[0], "11.50");
    EXPECT_EQ(u.comms.gRespFields[7], "18.50");
  }
  {
    // "BS" at 3 (echo without the "P") fails the position test: the entry
    // stays empty, and with no entry located the table is not read.
    ScriptedUnit u;
    u.Answer("PBS1?", "BS125.75");
    u.Refuse("PBS2?");
    EXPECT_FALSE(ReadSubBandTable(u.comms));
    EXPECT_EQ(u.comms.gRespFields[0], "");
  }
  {
    ScriptedUnit u;
    u.Refuse("PBS1?");
    EXPECT_FALSE(ReadSubBandTable(u.comms));
    EXPECT_EQ(u.sent, (std::vector<std::string>{"PBS1?"}));
  }
}

TEST(RfBandCmds, CurrentSubBand) {
  std::string f0;
  EXPECT_EQ(ReadFrame("PBS?", Ack("PBS325.75"), ReadCurrentSubBand, &f0), 3);
  EXPECT_EQ(f0, "25.75");
  EXPECT_EQ(ReadFrame("PBS?", Ack("PBS0 0.00"), ReadCurrentSubBand, &f0), 0);
  EXPECT_EQ(f0, "0.00");
  // A non-digit index is no reading, but the frequency still goes to [0].
  EXPECT_EQ(ReadFrame("PBS?", Ack("PBSx12.00"), ReadCurrentSubBand, &f0), -1);
  EXPECT_EQ(f0, "12.00");
  // "BS" at 3 fails the test (tail + 1 > 4); [0] keeps its text.
  EXPECT_EQ(ReadFrame("PBS?", Ack("BS325.75"), ReadCurrentSubBand, &f0), -1);
  EXPECT_EQ(f0, "old");
  EXPECT_EQ(ReadFrame("PBS?", "", ReadCurrentSubBand), -1);
}

TEST(RfBandCmds, CalFactorList) {
  EXPECT_EQ(ReadFrame("QS?", Ack("QS14.0,0.5;14.5,-0.7;"), ReadCalFactors), "14.0,0.5;14.5,-0.7;");
  EXPECT_EQ(ReadFrame("QS?", Ack("QS"), ReadCalFactors), "0.0,0.0;");  // one zero pair
  // The echo must open the body: "QS" at 4 or at 2 (in the address) fails.
  EXPECT_EQ(ReadFrame("QS?", Ack("XQS1,2;"), ReadCalFactors), "");
  EXPECT_EQ(ReadFrame("QS?", Ack("S1,2;", 'Q'), ReadCalFactors), "");
  EXPECT_EQ(ReadFrame("QS?", "", ReadCalFactors), "");
}

TEST(RfBandCmds, SetTexts) {
  EXPECT_EQ(CmdCurrentBand("Ku"), "TKu");
  EXPECT_EQ(CmdBandInfo(1, "Ku", "14.00"), ".B1Ku,14.00");
  EXPECT_EQ(CmdBandInfo(3, "Ka", ""), ".B3Ka");  // no frequency, no comma
  EXPECT_EQ(CmdBandAbsent(2), ".P109 255");
  EXPECT_EQ(CmdBandAbsent(3), ".P110 255");
  EXPECT_EQ(CmdBandAbsent(4), ".P111 255");
  EXPECT_EQ(CmdBandAbsent(1), "");
  EXPECT_EQ(CmdBandAbsent(5), "");

  EXPECT_EQ(CmdRFFrequency(14250), "TF14250");
  EXPECT_EQ(CmdRFFrequency(14250.5), "TF14251");  // pictures round half away
  EXPECT_EQ(CmdRFFrequency(0.4), "TF0");
  EXPECT_EQ(CmdRFFrequency(-12.5), "TF-13");

  EXPECT_EQ(CmdSelectSubBand(1), "PBS1");
  EXPECT_EQ(CmdSelectSubBand(8), "PBS8");
  EXPECT_EQ(CmdSelectSubBand(0), "PBS");
  EXPECT_EQ(CmdSelectSubBand(9), "PBS");
  EXPECT_EQ(CmdSubBandFrequency(2, "25.75"), "PBS225.75");
  EXPECT_EQ(CmdSubBandFrequency(4, kClearedSubBandFrequency), "PBS400.00");

  std::array<std::string, 10> f;
  std::array<std::string, 10> db;
  f[0] = "14.0";
  db[0] = "0.5";
  f[1] = "14.5";
  db[1] = "-0.7";
  EXPECT_EQ(CmdCalFactors(f, db), "QS14.0,0.5;14.5,-0.7;,;,;,;,;,;,;,;,;");
}

}  // namespace
}  // namespace amp
