// The summary list and the controls that follow the unit's state: captions,
// rows and colours, the check boxes and switch lists, the waveguide
// configuration, and that none of these writes reaches a handler as an
// operator's action.
#include <gtest/gtest.h>

#include "display_rig.h"

namespace amp {
namespace {

using test::DisplayRig;
using test::Status;

// S1 bits
constexpr int kOn = 16, kStandby = 8, kRemote = 4, kConst = 2, kInhibit = 1;

class Summary : public ::testing::Test {
 protected:
  void SetUp() override { r.d.ClearSummaryStatus(); }
  DisplayRig r;
};

TEST_F(Summary, FieldsOfOtherLengthsChangeNothing) {
  const std::string before = r.f.DumpJson();
  for (const std::string& field :
       {Status({kOn | kRemote, 32, 4}), Status({kOn | kRemote, 32, 4, 3, 0}), std::string()}) {
    r.d.SetSummaryStatus(field);
    EXPECT_EQ(r.f.DumpJson(), before);
    EXPECT_FALSE(r.st.gRemoteMode);
  }
}

TEST_F(Summary, TwtaTransmitterStates) {
  r.u.gIsTWTA = true;
  r.d.SetSummaryStatus(Status({kOn | kRemote, 0, 0, 0}));
  EXPECT_EQ(r.f.Label31.Caption(), "HV On");
  EXPECT_EQ(r.f.Label31.Top(), 0);
  EXPECT_EQ(r.f.Label31.ForeColor(), ui::QBColor(2));
  EXPECT_TRUE(r.f.Label31.Visible());
  EXPECT_EQ(r.f.Label33.Caption(), "Remote");
  EXPECT_EQ(r.f.Label33.Top(), 1);
  EXPECT_TRUE(r.st.gRemoteMode);
  EXPECT_EQ(r.f.chkPS.Value(), 1);

  // Standby with the automatic high voltage armed counts as on.
  r.d.SetSummaryStatus(Status({kStandby, 1, 0, 0}));
  EXPECT_EQ(r.f.Label31.Caption(), "Standby");
  EXPECT_EQ(r.f.Label32.Caption(), "Auto HV On");
  EXPECT_EQ(r.f.Label32.Top(), 1);
  EXPECT_EQ(r.f.Label32.ForeColor(), ui::QBColor(2));
  EXPECT_TRUE(r.f.Label32.Visible());
  EXPECT_EQ(r.f.Label33.Caption(), "Local");
  EXPECT_EQ(r.f.Label33.Top(), 2);
  EXPECT_FALSE(r.st.gRemoteMode);
  EXPECT_EQ(r.f.chkPS.Value(), 1);

  r.d.SetSummaryStatus(Status({0, 0, 0, 0}));
  EXPECT_EQ(r.f.Label31.Caption(), "FTD");
  EXPECT_FALSE(r.f.Label32.Visible());
  EXPECT_EQ(r.f.Label33.Top(), 1);
  EXPECT_EQ(r.f.chkPS.Value(), 0);

  r.d.SetSummaryStatus(Status({0, 1, 0, 0}));
  EXPECT_EQ(r.f.Label31.Caption(), "FTD");
  EXPECT_TRUE(r.f.Label32.Visible());
  EXPECT_EQ(r.f.chkPS.Value(), 1);
}

TEST_F(Summary, TwtaThatIsOnKeepsLabel32FromTheLastPoll) {
  r.u.gIsTWTA = true;
  r.d.SetSummaryStatus(Status({kStandby, 1, 0, 0}));
  ASSERT_TRUE(r.f.Label32.Visible());
  r.d.SetSummaryStatus(Status({kOn, 0, 0, 0}));
  EXPECT_TRUE(r.f.Label32.Visible());
  EXPECT_EQ(r.f.Label32.Caption(), "Auto HV On");
  // Both stand in row 1.
  EXPECT_EQ(r.f.Label32.Top(), 1);
  EXPECT_EQ(r.f.Label33.Top(), 1);
}

TEST_F(Summary, EveryRowInOrderWithItsColour) {
  r.u.gIsTWTA = true;
  r.d.SetSummaryStatus(Status({kOn | kRemote | kConst | kInhibit, 32 | 16, 32, 32}));
  const std::vector<ui::Label*> order = {&r.f.Label31,       &r.f.Label33,      &r.f.Label34,
                                         &r.f.Label35,       &r.f.Label36,      &r.f.Label13,
                                         &r.f.lblSBUCWarmup, &r.f.lbllcBucDrive};
  for (size_t i = 0; i < order.size(); ++i) {
    EXPECT_TRUE(order[i]->Visible()) << order[i]->Name();
    EXPECT_EQ(order[i]->Top(), static_cast<int>(i)) << order[i]->Name();
  }
  EXPECT_EQ(r.f.Label36.ForeColor(), ui::QBColor(12));
  EXPECT_EQ(r.f.Label13.ForeColor(), ui::QBColor(2));
  EXPECT_EQ(r.f.lbllcBucDrive.ForeColor(), ui::RGB(255, 102, 0));
  EXPECT_EQ(r.f.chkConstPwr.Value(), 1);

  r.d.SetSummaryStatus(Status({kOn, 0, 0, 0}));
  for (ui::Label* l : {&r.f.Label34, &r.f.Label35, &r.f.Label36, &r.f.Label13, &r.f.lblSBUCWarmup,
                       &r.f.lbllcBucDrive})
    EXPECT_FALSE(l->Visible()) << l->Name();
  EXPECT_TRUE(r.f.Label33.Visible());
  EXPECT_EQ(r.f.chkConstPwr.Value(), 0);
}

TEST_F(Summary, SspaStatesAndTheWarmupThatLeavesTheTransmitterBox) {
  r.f.Label32.SetVisible(true);
  r.f.Label32.SetCaption("as before");
  r.d.SetSummaryStatus(Status({kOn, 1, 0, 0}));
  EXPECT_EQ(r.f.Label31.Caption(), "Vdd On");
  EXPECT_EQ(r.f.chkPS.Value(), 1);
  EXPECT_EQ(r.f.Label33.Top(), 1);  // the SSPA path never gives Label32 a row

  r.d.SetSummaryStatus(Status({0, 0, 0, 0}));
  EXPECT_EQ(r.f.Label31.Caption(), "Warmup");
  EXPECT_EQ(r.f.chkPS.Value(), 1);

  r.d.SetSummaryStatus(Status({kStandby, 0, 0, 0}));
  EXPECT_EQ(r.f.Label31.Caption(), "Standby");
  EXPECT_EQ(r.f.chkPS.Value(), 0);

  r.d.SetSummaryStatus(Status({0, 0, 0, 0}));
  EXPECT_EQ(r.f.chkPS.Value(), 0);
  EXPECT_TRUE(r.f.Label32.Visible());
  EXPECT_EQ(r.f.Label32.Caption(), "as before");
}

TEST_F(Summary, WaveguideConfigurationIndex) {
  r.d.SetSummaryStatus(Status({0, 0, 0, 32 | 3}));  // bit 5 is the IF drive
  EXPECT_EQ(r.f.cmbWgCfg.ListIndex(), 3);
  r.d.SetSummaryStatus(Status({0, 0, 0, 6}));
  EXPECT_EQ(r.f.cmbWgCfg.ListIndex(), 5);
  EXPECT_EQ(r.f.cmbWgCfg.Text(), "6 - Standalone w/load");
  // 7 has no row: the list refuses it and keeps its selection.
  r.d.SetSummaryStatus(Status({0, 0, 0, 7}));
  EXPECT_EQ(r.f.cmbWgCfg.ListIndex(), 5);
  r.d.SetSummaryStatus(Status({0, 0, 0, 0}));
  EXPECT_EQ(r.f.cmbWgCfg.ListIndex(), 0);
}

TEST_F(Summary, SwitchPositionsAndAutomaticMode) {
  r.d.SetAutoModeSumStatus(16 | 4 | 2);
  EXPECT_EQ(r.f.cmbWgSw2.ListIndex(), 1);
  EXPECT_EQ(r.f.cmbWgSw1.ListIndex(), 1);
  EXPECT_EQ(r.f.chkAutoMode.Value(), 1);

  // Clear position bits leave the lists alone.
  r.d.SetAutoModeSumStatus(0);
  EXPECT_EQ(r.f.cmbWgSw2.ListIndex(), 1);
  EXPECT_EQ(r.f.cmbWgSw1.ListIndex(), 1);
  EXPECT_EQ(r.f.chkAutoMode.Value(), 0);

  // Both bits of a switch: position A is written last.
  r.d.SetAutoModeSumStatus(16 | 8 | 2 | 1);
  EXPECT_EQ(r.f.cmbWgSw2.ListIndex(), 0);
  EXPECT_EQ(r.f.cmbWgSw1.ListIndex(), 0);
}

TEST_F(Summary, StatusWritesAreNotOperatorClicks) {
  r.u.gIsTWTA = true;
  r.st.gInPanelUpdate = false;
  std::vector<std::string> clicks;
  auto watch = [&](ui::Control& c) {
    c.Click = [&, name = c.Name()] {
      clicks.push_back(name + (r.st.gInPanelUpdate ? ":held" : ":OPERATOR"));
    };
  };
  for (ui::Control* c :
       std::initializer_list<ui::Control*>{&r.f.chkPS, &r.f.chkConstPwr, &r.f.chkAutoMode,
                                           &r.f.cmbWgCfg, &r.f.cmbWgSw1, &r.f.cmbWgSw2})
    watch(*c);

  r.d.SetSummaryStatus(Status({kOn | kConst, 0, 16 | 4 | 1, 2}));
  EXPECT_EQ(clicks,
            (std::vector<std::string>{"chkPS:held", "chkConstPwr:held", "cmbWgSw2:held",
                                      "chkAutoMode:held", "cmbWgSw1:held", "cmbWgCfg:held"}));
  EXPECT_FALSE(r.st.gInPanelUpdate);

  // The same state again moves nothing, so nothing clicks.
  clicks.clear();
  r.d.SetSummaryStatus(Status({kOn | kConst, 0, 16 | 4 | 1, 2}));
  EXPECT_TRUE(clicks.empty());

  // Nested inside another update the flag stays set afterwards.
  r.st.gInPanelUpdate = true;
  r.d.SetSummaryStatus(Status({kStandby, 0, 0, 0}));
  EXPECT_TRUE(r.st.gInPanelUpdate);
  EXPECT_EQ(clicks, (std::vector<std::string>{"chkPS:held", "chkConstPwr:held", "chkAutoMode:held",
                                              "cmbWgCfg:held"}));
}

TEST_F(Summary, ClearHidesTheWholeList) {
  r.u.gIsTWTA = true;
  r.d.SetSummaryStatus(Status({kStandby | kRemote | kConst | kInhibit, 1 | 32 | 16, 32, 32}));
  r.d.ClearSummaryStatus();
  for (ui::Label* l : {&r.f.Label31, &r.f.Label32, &r.f.Label33, &r.f.Label34, &r.f.Label35,
                       &r.f.Label36, &r.f.Label13, &r.f.lblSBUCWarmup, &r.f.lbllcBucDrive})
    EXPECT_FALSE(l->Visible()) << l->Name();
}

TEST(RfInhibitStatus, FollowsTheUnitWhereTheUnitHasTheRead) {
  DisplayRig r;
  r.d.UpdateRFIStatus();  // no unit yet: project -1
  for (int p : {25, 26, 27, 99, 500, 510}) {
    r.u.gProjectID = p;
    r.d.UpdateRFIStatus();
  }
  EXPECT_TRUE(r.s.sent.empty());

  r.u.gProjectID = 20;
  r.s.Answer(".?P54", ".P54 1");
  r.s.Answer(".?P54", ".P54 0");
  r.d.UpdateRFIStatus();
  EXPECT_EQ(r.f.chkRFI.Value(), 1);
  r.d.UpdateRFIStatus();
  EXPECT_EQ(r.f.chkRFI.Value(), 0);

  // A unit that refuses the read is shown as inhibited.
  DisplayRig refused;
  refused.u.gProjectID = 20;
  refused.s.Refuse(".?P54");
  refused.d.UpdateRFIStatus();
  EXPECT_EQ(refused.f.chkRFI.Value(), 1);
}

}  // namespace
}  // namespace amp
