// Edge cases of the reads that fit the panel to a unit, against scripted
// units: holes in the sub-band list, the trip line being edited, absent
// limits and network, the cathode monitor's modes and the data directory.
// The ordinary cases run against every simulated profile end to end.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>

#include "unit_rig.h"

namespace amp {
namespace {

using test::ScriptedUnit;

using Bench = test::UnitBench;

TEST(SubBands, NoCurrentSubBandHidesTheMenuAndLabel) {
  for (const char* current : {"PBS0     ", "PBS9     "}) {
    Bench b;
    b.s.Answer("PBS1?", "PBS125.75");
    b.s.Answer("PBS2?", "PBS230.55");
    for (int n = 3; n <= 8; ++n) b.s.Refuse("PBS" + std::to_string(n) + "?");
    b.s.Answer("PBS?", current);
    b.setup.UpdateSubBands();
    EXPECT_EQ(b.v.gSubBandCount, 2) << current;
    EXPECT_EQ(b.v.gCurrentSubBand, 0) << current;
    EXPECT_FALSE(b.f.mnuSubBands.Visible()) << current;
    EXPECT_FALSE(b.f.lblSBandFrq.Visible()) << current;
  }
  // A unit without sub-bands is not asked for the current one.
  Bench none;
  none.s.Refuse("PBS1?");
  none.setup.UpdateSubBands();
  EXPECT_FALSE(none.Sent("PBS?"));
  EXPECT_FALSE(none.f.mnuSubBands.Visible());
}

TEST(Bands, UnitWithoutBandCommandStopsAtTheFirstRefusal) {
  Bench b;
  b.s.Refuse(".?B1");
  b.v.gRfBandSupported = true;
  b.setup.InitcmbRfBand();
  EXPECT_FALSE(b.v.gRfBandSupported);
  EXPECT_FALSE(b.Sent(".?B2"));
  EXPECT_EQ(b.f.cmbRfBand.ListCount(), 0);
}

TEST(TripLevels, ShortReplyChangesNothing) {
  Bench b;
  b.s.Answer("?HLR", "?F57.0");
  b.f.txtFhiLvl.SetText("52.0");
  b.setup.InitRFTripLevels();
  EXPECT_EQ(b.f.txtFhiLvl.Text(), "52.0");
}

TEST(Limits, PowerLimitAndItsFaultLevel) {
  // A unit's limit, state and fault level show end to end; the second limit
  // only here.
  Bench b;
  b.s.Answer("PO?", "PO159.3;58.0");
  b.setup.InitPowerLimit();
  EXPECT_EQ(b.v.gMaxPowerLevel2, "58.0");

  Bench none;
  none.s.Refuse("PO?");
  none.v.gMaxPowerFault = "3.0";
  none.setup.InitPowerLimit();
  EXPECT_FALSE(none.f.mnuMaxPwrLvl.Visible());
  EXPECT_EQ(none.v.gMaxPowerFault, "-1");
  EXPECT_FALSE(none.Sent("POO?"));
}

TEST(Limits, OffsetAndFactoryTripsFallToTheirDefaults) {
  Bench b;
  b.s.Answer("PR?", "PR-2.5");
  b.s.Refuse("YFTF?");
  b.v.gFactoryFwdTrip = "61.0";
  b.setup.InitReverseRFOffset();
  b.setup.InitFactoryTripLevels();
  EXPECT_FLOAT_EQ(b.v.gRevRFOffset, -2.5f);
  EXPECT_EQ(b.v.gFactoryFwdTrip, "0.0");
  EXPECT_EQ(b.v.gFactoryRevTrip, "0.0");
  EXPECT_EQ(b.v.gFactoryTripMargin, "0");

  Bench none;
  none.s.Refuse("PR?");
  none.v.gRevRFOffset = 1.0f;
  none.setup.InitReverseRFOffset();
  EXPECT_FLOAT_EQ(none.v.gRevRFOffset, -100.0f);
}

TEST(Network, NetburnerPortAndUnitsWithoutNetwork) {
  // The Netburner board always serves port 2000 and is not asked.
  Bench nb;
  nb.u.gProjectID = 139;
  nb.u.gNetburnerProcessor = true;
  nb.s.Answer("PEI?", "PEI10.0.0.7");
  nb.s.Refuse("PER?");
  nb.setup.InitEnetParams();
  EXPECT_FALSE(nb.Sent("PEP?"));
  EXPECT_EQ(nb.v.gEthPort, 2000);
  EXPECT_EQ(nb.v.gGateway, "0");
  EXPECT_EQ(nb.v.gNetMask, "255.255.255.0");
  EXPECT_FALSE(nb.f.mnuOpenWebpage.Enabled());

  // No network interface: the menus and the socket stay as they were.
  Bench none;
  none.s.sock.SetRemoteHost("127.0.0.1");
  none.s.sock.SetRemotePort(2001);
  none.s.Refuse("PEI?");
  none.setup.InitEnetParams();
  EXPECT_FALSE(none.Sent("PEN?"));
  EXPECT_EQ(none.s.sock.RemoteHost(), "127.0.0.1");
  EXPECT_EQ(none.f.mnuEnterIP.Caption(), "IP Address:    127.0.0.1");
  EXPECT_EQ(none.f.mnuEthPort.Caption(), "Ethernet Port: 2001");
}

TEST(TubeMonitors, CathodeDisplayOnlyWhenMonitored) {
  Bench b;
  b.s.Answer("PBFE?", "PBFE1");
  b.s.Answer("PBFF?", "PBFF300");
  b.s.Answer("PBFM?", "PBFM2");
  b.s.Answer("PBFO?", "PBFO5000");
  b.s.Answer("PBFI?", "PBFI180");
  b.setup.InitCathodeCurrentDisplay();
  EXPECT_TRUE(b.v.gNegAnodeEnabled);
  EXPECT_EQ(b.v.gNegAnodeStart, 300);
  EXPECT_TRUE(b.st.gCathodeDisplay);
  EXPECT_EQ(b.v.gCathodeScalar, 4095);  // clamped
  EXPECT_EQ(b.v.gIdealCathodeCurrent, 180);
  EXPECT_TRUE(b.f.txtCathI.Visible());

  Bench off;
  off.st.gCathodeDisplay = true;
  off.s.Answer("PBFM?", "PBFM3");
  off.setup.InitCathodeCurrentDisplay();
  EXPECT_FALSE(off.st.gCathodeDisplay);
  EXPECT_FALSE(off.Sent("PBFF?"));
  EXPECT_FALSE(off.Sent("PBFO?"));
  EXPECT_FALSE(off.f.txtCathI.Visible());
}

TEST(DataDirectory, CreatedOnceOrReported) {
  namespace fs = std::filesystem;
  const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
  const fs::path root = fs::temp_directory_path() / ("ampdesk-dd-" + std::to_string(stamp));
  Bench b;
  b.v.gDataDirectory = (root / "OrvanTech" / "AmpDesk").string();
  b.setup.InitDataDirectory();
  EXPECT_TRUE(fs::is_directory(b.v.gDataDirectory));
  EXPECT_TRUE(b.s.dialogs.boxes.empty());
  b.setup.InitDataDirectory();  // already there: nothing to do
  EXPECT_TRUE(b.s.dialogs.boxes.empty());

  // A file where a folder should be: the box, and the read goes on.
  const fs::path blocker = root / "file";
  std::ofstream(blocker) << "x";
  Bench blocked;
  blocked.v.gDataDirectory = (blocker / "AmpDesk").string();
  blocked.setup.InitDataDirectory();
  ASSERT_EQ(blocked.s.dialogs.boxes.size(), 1u);
  EXPECT_EQ(blocked.s.dialogs.boxes[0].title, "File I/O Error");
  fs::remove_all(root);
}

}  // namespace
}  // namespace amp
