// Fault and alarm lists against status words: which labels show, in which
// row, what each is called on which unit, and what a poll leaves alone.
#include <gtest/gtest.h>

#include "display_rig.h"

namespace amp {
namespace {

using test::DisplayRig;
using test::Shown;
using test::ShownRows;
using test::Status;
using Names = std::vector<std::string>;

class FaultList : public ::testing::Test {
 protected:
  void SetUp() override {
    r.d.InitFaultsAlarms();
    r.d.ClearFaultStatus();
  }
  DisplayRig r;
};

// ------------------------------------------------------------------ TWTA

TEST_F(FaultList, TwtaRowsRunFromBit5DownAndWordAToDWithoutGaps) {
  r.u.gIsTWTA = true;
  // D5 is not part of the tube's fault list: it never shows.
  r.d.SetFaultStatus(Status({0b100001, 0b000100, 0b001000, 0b110000}));
  const auto rows = ShownRows(r.f, "Fault");
  ASSERT_EQ(rows.size(), 5u);
  const Names expected = {"FaultAbit(5)", "FaultAbit(0)", "FaultBbit(2)", "FaultCbit(3)",
                          "FaultDbit(4)"};
  for (size_t i = 0; i < rows.size(); ++i) {
    EXPECT_EQ(rows[i].first, static_cast<int>(i));
    EXPECT_EQ(rows[i].second, expected[i]);
  }
  EXPECT_FALSE(r.f.NoFaults.Visible());

  // The next poll clears them all and the placeholder takes the first row.
  r.f.NoFaults.SetTop(7);
  r.d.SetFaultStatus(Status({0, 0, 0, 0}));
  EXPECT_TRUE(Shown(r.f, "Fault").empty());
  EXPECT_TRUE(r.f.NoFaults.Visible());
  EXPECT_EQ(r.f.NoFaults.Top(), 0);
}

TEST_F(FaultList, TwtaStopsEarlyWhenMoreThanEightRowsAreTaken) {
  r.u.gIsTWTA = true;
  r.d.SetFaultStatus(Status({0, 0, 0b000001, 0b000001}));
  ASSERT_EQ(Shown(r.f, "Fault"), (Names{"FaultCbit(0)", "FaultDbit(0)"}));

  // Nine faults in words A and B: C and D are not looked at, so their labels
  // keep the rows of the last poll, and the "No Faults" step is skipped.
  r.d.SetFaultStatus(Status({63, 0b000111, 0, 0}));
  EXPECT_TRUE(r.f.FaultCbit[0].Visible());
  EXPECT_EQ(r.f.FaultCbit[0].Top(), 0);
  EXPECT_TRUE(r.f.FaultDbit[0].Visible());
  EXPECT_EQ(r.f.FaultDbit[0].Top(), 1);
  EXPECT_EQ(r.f.FaultBbit[0].Top(), 8);

  // The placeholder left visible by an empty poll stays through a long list.
  r.d.SetFaultStatus(Status({0, 0, 0, 0}));
  ASSERT_TRUE(r.f.NoFaults.Visible());
  r.d.SetFaultStatus(Status({63, 0b000111, 0, 0}));
  EXPECT_TRUE(r.f.NoFaults.Visible());
}

TEST_F(FaultList, TwtaEightRowsStillReachWordsCAndD) {
  r.u.gIsTWTA = true;
  r.d.SetFaultStatus(Status({0, 0, 0b000001, 0b000001}));
  r.d.SetFaultStatus(Status({63, 0b000011, 0, 0b000010}));
  EXPECT_FALSE(r.f.FaultCbit[0].Visible());
  EXPECT_FALSE(r.f.FaultDbit[0].Visible());
  EXPECT_TRUE(r.f.FaultDbit[1].Visible());
  EXPECT_EQ(r.f.FaultDbit[1].Top(), 8);
}

TEST_F(FaultList, TwtaStopsAfterWordCWhenItPassesEightRows) {
  r.u.gIsTWTA = true;
  r.d.SetFaultStatus(Status({0, 0, 0, 0b000001}));
  // 7 rows in A and B, 2 more in C: D is left as it stood.
  r.d.SetFaultStatus(Status({63, 0b000001, 0b000011, 0}));
  EXPECT_TRUE(r.f.FaultCbit[0].Visible());
  EXPECT_EQ(r.f.FaultCbit[0].Top(), 8);
  EXPECT_TRUE(r.f.FaultDbit[0].Visible());
}

TEST_F(FaultList, ShortFieldsLeaveTheListAlone) {
  r.u.gIsTWTA = true;
  r.d.SetFaultStatus(Status({1, 0, 0, 0}));
  r.d.SetFaultStatus(Status({0, 0, 0}));
  EXPECT_EQ(Shown(r.f, "Fault"), (Names{"FaultAbit(0)"}));

  r.u.gIsTWTA = false;
  r.d.SetFaultStatus(Status({0, 0}));
  r.d.SetFaultStatus("");
  EXPECT_EQ(Shown(r.f, "Fault"), (Names{"FaultAbit(0)"}));
  EXPECT_FALSE(r.f.NoFaults.Visible());
}

// ------------------------------------------------------------------ SSPA

TEST_F(FaultList, SspaBitsItIgnoresGiveNoFaults) {
  // C: bits 5, 3, 2; D: bits 5, 4, 2, 0. None of them is an SSPA fault.
  r.d.SetFaultStatus(Status({0, 0, 0b101100, 0b110101}));
  EXPECT_TRUE(Shown(r.f, "Fault").empty());
  EXPECT_TRUE(r.f.NoFaults.Visible());
}

TEST_F(FaultList, SspaWordsCAndDInTheirOwnOrder) {
  r.d.SetFaultStatus(Status({0, 0b100000, 0b010000, 0b001010}));
  // D bit 1 comes before D bit 3.
  EXPECT_EQ(Shown(r.f, "Fault"),
            (Names{"FaultBbit(5)", "FaultCbit(4)", "FaultDbit(1)", "FaultDbit(3)"}));

  // C bits 1 and 0 belong to project 55 only; elsewhere they stay as they are.
  r.f.FaultCbit[1].SetVisible(true);
  r.f.FaultCbit[1].SetTop(9);
  r.d.SetFaultStatus(Status({0, 0, 0b000011, 0}));
  EXPECT_TRUE(r.f.FaultCbit[1].Visible());
  EXPECT_EQ(r.f.FaultCbit[1].Top(), 9);
  EXPECT_FALSE(r.f.FaultCbit[0].Visible());
  EXPECT_TRUE(r.f.NoFaults.Visible());

  r.u.gProjectID = 55;
  r.d.SetFaultStatus(Status({0, 0, 0b000011, 0}));
  EXPECT_EQ(Shown(r.f, "Fault"), (Names{"FaultCbit(1)", "FaultCbit(0)"}));
}

TEST_F(FaultList, SspaThreeCharacterFieldIsDecodedWithoutWordD) {
  r.f.FaultDbit[1].SetVisible(true);
  r.d.SetFaultStatus(Status({0b000010, 0, 0}));
  EXPECT_EQ(Shown(r.f, "Fault"), (Names{"FaultAbit(1)"}));
}

// --------------------------------------------------- RF inhibit follow-up

TEST_F(FaultList, AFaultListReadsTheInhibitStateWithoutEchoingIt) {
  r.u.gIsTWTA = true;
  r.u.gProjectID = 20;
  r.st.gInPanelUpdate = false;
  std::vector<bool> seen;
  r.f.chkRFI.Click = [&] { seen.push_back(r.st.gInPanelUpdate); };
  r.s.Answer(".?P54", ".P54 1");

  r.d.SetFaultStatus(Status({0, 0, 0, 0}));
  EXPECT_EQ(r.Sent(".?P54"), 0);  // nothing to follow while there is no fault

  r.d.SetFaultStatus(Status({0b000010, 0, 0, 0}));
  EXPECT_EQ(r.Sent(".?P54"), 1);
  EXPECT_EQ(r.f.chkRFI.Value(), 1);
  EXPECT_EQ(seen, std::vector<bool>{true});
  EXPECT_FALSE(r.st.gInPanelUpdate);

  // Units without the inhibit read are not asked.
  r.u.gProjectID = 25;
  r.d.SetFaultStatus(Status({0b000010, 0, 0, 0}));
  EXPECT_EQ(r.Sent(".?P54"), 1);
}

// ---------------------------------------------------------------- alarms

TEST_F(FaultList, TwtaAlarmRowsAndTheWordsItReads) {
  r.u.gIsTWTA = true;
  r.u.gProjectID = 38;
  r.d.SetAlarmStatus(Status({63, 63, 63, 63}));
  EXPECT_EQ(Shown(r.f, "Alarm"),
            (Names{"AlarmAbit(5)", "AlarmAbit(4)", "AlarmAbit(3)", "AlarmAbit(2)", "AlarmAbit(1)",
                   "AlarmAbit(0)", "AlarmBbit(1)", "AlarmCbit(5)", "AlarmCbit(4)", "AlarmCbit(3)",
                   "AlarmCbit(2)", "AlarmDbit(2)", "AlarmDbit(1)", "AlarmDbit(0)"}));
  EXPECT_EQ(ShownRows(r.f, "Alarm").back().first, 13);
  EXPECT_FALSE(r.f.NoAlarms.Visible());
}

TEST_F(FaultList, TwtaAlarmBit2IsLeftAloneOutsideItsProjects) {
  r.u.gIsTWTA = true;
  r.u.gProjectID = 20;
  r.f.AlarmAbit[2].SetVisible(true);
  r.f.AlarmAbit[2].SetTop(4);
  r.d.SetAlarmStatus(Status({0b000100, 0, 0, 0}));
  EXPECT_TRUE(r.f.AlarmAbit[2].Visible());
  EXPECT_EQ(r.f.AlarmAbit[2].Top(), 4);
  EXPECT_TRUE(r.f.NoAlarms.Visible());  // the bit took no row

  r.f.AlarmAbit[2].SetVisible(false);
  r.d.SetAlarmStatus(Status({0b000100, 0, 0, 0}));
  EXPECT_FALSE(r.f.AlarmAbit[2].Visible());

  r.u.gProjectID = 52;
  r.d.SetAlarmStatus(Status({0b000101, 0, 0, 0}));
  EXPECT_EQ(Shown(r.f, "Alarm"), (Names{"AlarmAbit(2)", "AlarmAbit(0)"}));
}

TEST_F(FaultList, OneCharacterAlarmsReadWordAOnly) {
  r.s.comms.gOneCharAlarm = true;
  r.f.AlarmBbit[1].SetVisible(true);
  for (bool twta : {true, false}) {
    r.u.gIsTWTA = twta;
    r.d.SetAlarmStatus(Status({0}));
    EXPECT_TRUE(r.f.NoAlarms.Visible());
    r.d.SetAlarmStatus(Status({0b100001}));
    EXPECT_FALSE(r.f.NoAlarms.Visible());
    EXPECT_EQ(r.f.AlarmAbit[5].Top(), 0);
    EXPECT_EQ(r.f.AlarmAbit[0].Top(), 1);
    EXPECT_TRUE(r.f.AlarmBbit[1].Visible()) << "word B is not part of a one-character field";
  }
}

TEST_F(FaultList, SspaAlarmsSkipBit1AndGateThePowerMismatch) {
  r.f.AlarmAbit[1].SetVisible(true);
  r.f.AlarmBbit[0].SetVisible(true);
  r.f.AlarmBbit[0].SetTop(6);
  r.d.SetAlarmStatus(Status({63, 0b000111, 0b111111, 0b000111}));
  EXPECT_TRUE(r.f.AlarmBbit[0].Visible());
  EXPECT_EQ(r.f.AlarmBbit[0].Top(), 6);
  EXPECT_TRUE(r.f.AlarmAbit[1].Visible());
  EXPECT_FALSE(r.f.AlarmDbit[2].Visible());  // D has bits 1 and 0 only
  EXPECT_EQ(r.f.AlarmDbit[0].Top(), 12);

  r.f.AlarmAbit[1].SetVisible(false);
  r.u.gPwrMisMatchAlarm = true;
  r.d.SetAlarmStatus(Status({0b000011, 0b000101, 0b000100, 0b000011}));
  EXPECT_EQ(Shown(r.f, "Alarm"), (Names{"AlarmAbit(0)", "AlarmBbit(0)", "AlarmBbit(2)",
                                        "AlarmCbit(2)", "AlarmDbit(1)", "AlarmDbit(0)"}));

  r.u.gPwrMisMatchAlarm = false;
  r.u.gFWFamilyD = true;
  r.d.SetAlarmStatus(Status({0, 0b000001, 0, 0}));
  EXPECT_EQ(Shown(r.f, "Alarm"), (Names{"AlarmBbit(0)"}));
}

TEST_F(FaultList, EmptyAlarmFieldChangesNothing) {
  r.d.SetAlarmStatus(Status({0b010000, 0, 0, 0}));
  r.d.SetAlarmStatus("");
  EXPECT_EQ(Shown(r.f, "Alarm"), (Names{"AlarmAbit(4)"}));
}

TEST_F(FaultList, ClearingHidesEveryLabelButNoAlarms) {
  r.d.SetFaultStatus(Status({0, 0, 0, 0}));
  r.d.SetAlarmStatus(Status({0, 0, 0, 0}));
  r.d.SetFaultStatus(Status({63, 63, 0, 0}));
  r.d.SetAlarmStatus(Status({63, 0, 0, 0}));
  r.d.SetAlarmStatus(Status({0, 0, 0, 0}));
  r.f.AlarmDbit[5].SetVisible(true);
  r.d.ClearFaultStatus();
  EXPECT_TRUE(Shown(r.f, "Fault").empty());
  EXPECT_TRUE(Shown(r.f, "Alarm").empty());
  EXPECT_FALSE(r.f.NoFaults.Visible());
  EXPECT_TRUE(r.f.NoAlarms.Visible());
}

// ----------------------------------------------------------------- names

class FaultNames : public ::testing::Test {
 protected:
  std::string C(int bit) { return r.f.FaultCbit[bit].Caption(); }
  std::string D(int bit) { return r.f.FaultDbit[bit].Caption(); }
  DisplayRig r;
};

TEST_F(FaultNames, EveryLabelIsRed) {
  for (int w = 0; w < 4; ++w) {
    r.f.FaultWord(w)[0].SetForeColor(ui::QBColor(2));
    r.f.AlarmWord(w)[5].SetForeColor(ui::QBColor(2));
  }
  r.d.InitFaultsAlarms();
  for (int w = 0; w < 4; ++w) {
    for (int bit = 0; bit < 6; ++bit) {
      EXPECT_EQ(r.f.FaultWord(w)[bit].ForeColor(), ui::QBColor(12));
      EXPECT_EQ(r.f.AlarmWord(w)[bit].ForeColor(), ui::QBColor(12));
    }
  }
}

TEST_F(FaultNames, TubeUnitsByProject) {
  r.u.gIsTWTA = true;
  r.u.gProjectID = 127;
  r.d.InitFaultNames();
  EXPECT_EQ(C(0), "ExtRef Lock");
  EXPECT_EQ(C(2), "Heater");
  EXPECT_EQ(D(5), "");  // project 127 names no return loss

  r.u.gProjectID = 38;
  r.d.InitFaultNames();
  EXPECT_EQ(C(2), "24V Present");
  EXPECT_EQ(D(5), "Return Loss");

  // A later unit that names fewer bits leaves the others as they were.
  r.u.gProjectID = 34;
  r.d.InitFaultNames();
  EXPECT_EQ(C(0), "ExtRef Lock");
  EXPECT_EQ(C(2), "Heater");
}

TEST_F(FaultNames, FirstMatchingRuleWins) {
  r.u.gIsTWTA = true;
  r.u.gProjectID = 70;
  r.u.gNewDualTWT = true;
  r.d.InitFaultNames();
  EXPECT_EQ(C(0), "ExtRef Lock");
  EXPECT_EQ(C(2), "Heater");
  EXPECT_EQ(D(5), "Return Loss");

  // The two-tube rule stands before the new dual tube's.
  r.u.gIsDualTWT = true;
  r.d.InitFaultNames();
  EXPECT_EQ(C(0), "HV Over 2");
  EXPECT_EQ(C(3), "Helix Arc Latch 2");
  EXPECT_EQ(C(5), "HV Under 2");
  EXPECT_EQ(D(2), "Power Mismatch");

  // Projects 25 and 27 come before everything.
  r.u.gProjectID = 27;
  r.d.InitFaultNames();
  EXPECT_EQ(C(0), "Missing Phase");
  EXPECT_EQ(C(3), "Fast VSWR");
}

TEST_F(FaultNames, SolidStateUnits) {
  r.u.gProjectID = 20;
  r.f.FaultAbit[5].SetCaption("earlier");
  r.f.FaultDbit[1].SetCaption("earlier");
  r.d.InitFaultNames();
  EXPECT_EQ(r.f.FaultAbit[2].Caption(), "DCV Input");
  EXPECT_EQ(r.f.FaultAbit[5].Caption(), "earlier");
  EXPECT_EQ(r.f.FaultBbit[0].Caption(), "Waveguide Arc");
  EXPECT_EQ(D(1), "earlier");

  r.u.gFWFamilyD = true;
  r.u.gFWFamilyB = true;
  r.d.InitFaultNames();
  EXPECT_EQ(r.f.FaultAbit[5].Caption(), "Over Current");
  EXPECT_EQ(r.f.FaultBbit[0].Caption(), "Inhibit Fail");
  EXPECT_EQ(D(1), "Over Drive");

  r.f.FaultDbit[1].SetCaption("earlier");
  r.u.gProjectID = 55;
  r.d.InitFaultNames();
  EXPECT_EQ(D(1), "earlier");
  EXPECT_EQ(C(0), "ExtRef Lock");
  EXPECT_EQ(C(1), "ExtRef Pres");
}

TEST_F(FaultNames, AlarmNamesFollowProjectAndFamily) {
  r.u.gProjectID = 38;
  r.u.gFWFamilyD = true;
  r.d.InitAlarmNames();
  EXPECT_EQ(r.f.AlarmAbit[2].Caption(), "TLT Alarm");
  EXPECT_EQ(r.f.AlarmBbit[0].Caption(), "Sys Power");
  EXPECT_EQ(r.f.AlarmAbit[1].Caption(), "");

  r.u.gProjectID = 20;
  r.d.InitAlarmNames();
  EXPECT_EQ(r.f.AlarmAbit[2].Caption(), "Inhibit Fail");

  r.u.gFWFamilyD = false;
  r.d.InitAlarmNames();
  EXPECT_EQ(r.f.AlarmAbit[2].Caption(), "DCV Input");
  EXPECT_EQ(r.f.AlarmBbit[0].Caption(), "Pwr Mismatch");
}

}  // namespace
}  // namespace amp
