// The first read and the panel's states with and without a unit, against
// scripted units: the order of the reads, the defaults a silent unit leaves,
// and the fork between tube and solid-state panels.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "unit_rig.h"

namespace amp {
namespace {

using test::ScriptedUnit;
using test::VersionBody;

// A panel as the application holds it, started without a unit.
struct Bench : test::UnitBench {
  Bench() {
    first.ClearForm();
    first.DisableForm();
  }
};

// An SSPA of project 120 that reports `summary` and answers "?(" when
// `alarmWord` is set. Replies to one command are used in order, so tests
// script the status and the constant level here or not at all.
void ScriptSolidState(ScriptedUnit& s, const std::string& summary = "?T@A@", bool alarmWord = true,
                      const std::string& constLevel = "G50.0") {
  s.Answer("YT", "YTSSPA 715-0120-003 V3.10");
  s.Answer("0C", "0C1.2");
  s.Answer("00", VersionBody("3120-001", "S12034", "3.10", "2016-05-12"));
  s.Answer("?!", summary);
  if (alarmWord) {
    s.Answer("?(", "?@@@@");
  } else {
    s.Refuse("?(");
  }
  if (!constLevel.empty()) s.Answer("G?", constLevel);
}

void ScriptTube127(ScriptedUnit& s) {
  s.Answer("YT", "YTTWTA 715-0127-005 V5.40");
  s.Answer("0C", "0C2.1");
  s.Answer("00", VersionBody("4127-020", "T40188", "5.40", "2018-10-15"));
  s.Answer("?!", "?T@E@");
  s.Answer("?(", "?@@@@");
}

std::set<std::string> DisabledControls(const ui::FrmMain& f) {
  std::set<std::string> names;
  for (const ui::Control* c : f.Controls())
    if (!c->Enabled()) names.insert(c->Name());
  return names;
}

TEST(FirstTimeRead, AsksInTheOrderEachStepRestsOn) {
  Bench b;
  ScriptSolidState(b.s);
  b.first.FirstTimeRead();

  // The first time each of these goes out; one per step or group of steps.
  const std::vector<std::string> order = {
      "YT",     "0C",   "00",     "PBS1?",  "YB?",   "YM?",   "PS?",  "PO?",    "YFTF?",  ".?P334",
      ".?P349", "QS?",  "PBA?",   "PTI?",   "YJ?",   "PBG?",  "PX?",  ".?P131", ".?P203", "TF?",
      "YIF?",   "YIA?", ".?P151", ".?P212", "?%",    "?A",    "PBJ?", "YCI?",   "?P",     "?Q",
      "?!",     "?(",   "?M",     "?N",     "N?",    "X1?",   "X2?",  "XR?",    ".?B1",   "T?",
      ".?P71",  "PG?",  "PBKF?",  "PBKA?",  "PBKI?", "PBKL?", "?T",   ".?P54",  "G?",     "?HLR",
      "PR?",    "YC?",  "PBCA?",  ".?P92",  "PEI?",  "PBW?",  "PBO?"};
  long last = -1;
  for (const std::string& command : order) {
    const long at = b.IndexOf(command);
    ASSERT_GE(at, 0) << command << " was never sent";
    EXPECT_GT(at, last) << command << " came before the step it follows";
    last = at;
  }
  // The constant level is asked twice and the second answer kept.
  EXPECT_EQ(b.Sent("G?"), 2);
  EXPECT_EQ(b.f.txtConstLvl.Text(), "50.0");
  EXPECT_TRUE(b.s.comms.gFirstReadDone);
  EXPECT_FALSE(b.st.gInPanelUpdate);
}

TEST(FirstTimeRead, ChecksWrittenDuringTheReadSendNothing) {
  Bench b;
  ScriptSolidState(b.s, "?V@A@");  // transmitter on, constant power on
  std::vector<bool> guardedClicks;
  b.f.chkPS.Click = [&] { guardedClicks.push_back(b.st.gInPanelUpdate); };
  b.f.chkConstPwr.Click = [&] { guardedClicks.push_back(b.st.gInPanelUpdate); };
  b.first.FirstTimeRead();
  EXPECT_EQ(b.f.chkPS.Value(), 1);
  EXPECT_EQ(b.f.chkConstPwr.Value(), 1);
  ASSERT_EQ(guardedClicks.size(), 2u);
  EXPECT_TRUE(guardedClicks[0] && guardedClicks[1]);
}

TEST(FirstTimeRead, SilentUnitStillComesUpWithDefaults) {
  Bench b;
  b.first.FirstTimeRead();
  // No identity: an old tube of project -1, whose constant level is not asked.
  EXPECT_TRUE(b.u.gIsTWTA);
  EXPECT_EQ(b.u.gProjectID, -1);
  EXPECT_EQ(b.Sent("G?"), 0);
  EXPECT_TRUE(b.s.comms.gOneCharAlarm);
  EXPECT_EQ(b.s.comms.StatusQuery(), "?!#9");
  EXPECT_FLOAT_EQ(b.v.gMaxAttendB, 30.0f);
  EXPECT_FLOAT_EQ(b.v.gFwdMaxdBm, 50.0f);
  EXPECT_FLOAT_EQ(b.v.gFwdMindBm, 0.1f);
  EXPECT_FLOAT_EQ(b.v.gRevRFOffset, -100.0f);
  EXPECT_FALSE(b.f.mnuReturnLoss.Visible() || b.f.mnuMaxPwrLvl.Visible());
  EXPECT_TRUE(b.f.btnGoToPwr.Enabled());
  EXPECT_TRUE(b.s.comms.gFirstReadDone);
  EXPECT_FALSE(b.st.gInPanelUpdate);
}

// The poll's summary writes the tube's state over Label31; without one the
// panel still says what the transmitter box means. Project 127 offers the
// arc test whatever its fault word says, even with none.
TEST(FirstTimeRead, Tube127WithoutSummaryOrFaultWord) {
  Bench b;
  b.s.Answer("YT", "YTTWTA 715-0127-005 V5.40");
  b.first.FirstTimeRead();
  EXPECT_EQ(b.f.Label31.Caption(), "HV On");
  EXPECT_TRUE(b.f.mnuWgArcTest.Visible());
}

TEST(FirstTimeRead, OemNameMustHaveTwentyCharacters) {
  Bench shorter;
  ScriptSolidState(shorter.s);
  shorter.v.gOemName = "a name from before   ";
  shorter.s.Answer(".?P131", ".P131 KU 400W SSPA   ORV0");  // 19 characters
  shorter.first.FirstTimeRead();
  EXPECT_EQ(shorter.v.gOemName, "");
  EXPECT_FALSE(shorter.f.mnuOemName.Enabled());
}

TEST(FirstTimeRead, ConstantLevelInTheDisplayUnit) {
  Bench b;
  ScriptSolidState(b.s, "?T@A@", true, "");
  b.s.Answer("G?", "G47.0");
  b.s.Answer("G?", "G50.0");
  b.f.mnuWatts.SetCaption("Display dBm");  // Watts are showing
  b.first.FirstTimeRead();
  EXPECT_TRUE(b.st.gDisplayWatts);
  // Only the second answer counts: 50 dBm is 100 W, written as the plain
  // number text.
  EXPECT_EQ(b.f.txtConstLvl.Text(), "100");
  EXPECT_EQ(b.Sent("G?"), 2);
}

TEST(FirstTimeRead, TouchScreenTubeKeepsItsOwnParameterLog) {
  // Were the column-log switch asked, this unit's 1 would show the download
  // entry and halve the full fault log.
  Bench b;
  b.s.Answer("YT", "YTTWTA 715-0099-002 V6.10");
  b.s.Answer("00", VersionBody("4099-010", "T50211", "6.10", "2017-03-01"));
  b.s.Answer(".?P349", ".P349 1");
  b.first.FirstTimeRead();
  EXPECT_FALSE(b.Sent(".?P349"));
  EXPECT_FALSE(b.f.mnuPLog.Visible());
  EXPECT_EQ(b.v.gFaultLogSize, 1000);
}

TEST(FirstTimeRead, InletTemperatureOnlyWithinItsRange) {
  // A reading inside the range is shown end to end by the project 127 unit.
  Bench hot;
  ScriptTube127(hot.s);
  hot.s.Answer("PBKI?", "PBKI25");
  hot.s.Answer("?t", "?119.0");
  hot.first.FirstTimeRead();
  EXPECT_FALSE(hot.st.gInletTemp);
  EXPECT_FALSE(hot.f.txtTemp2.Visible());

  // Without an inlet alarm level the inlet is not asked at all.
  Bench none;
  ScriptTube127(none.s);
  none.first.FirstTimeRead();
  EXPECT_EQ(none.IndexOf("?t"), -1);
}

TEST(InitUnitCfg, ConfigurationWordBecomesFlags) {
  // The dual-tube bit means a second umbilical on a solid-state unit.
  Bench sspa;
  sspa.u.gProjectID = 120;
  sspa.s.Answer("YM?", "YM51");  // 32 + 16 + 2 + 1
  sspa.first.InitUnitCfg();
  EXPECT_FALSE(sspa.u.gIsDualTWT);
  EXPECT_TRUE(sspa.f.mnu2ndUmbilical.Checked());
  EXPECT_TRUE(sspa.f.mnuRack.Checked());
  EXPECT_TRUE(sspa.v.gRevPwrTempOption);
  EXPECT_TRUE(sspa.v.gDCVMonitorOption);

  // Unknown word: unchecked entries and the word 1.
  Bench unknown;
  unknown.u.gProjectID = 120;
  unknown.f.mnuRack.SetChecked(true);
  unknown.s.Refuse("YM?");
  unknown.first.InitUnitCfg();
  EXPECT_EQ(unknown.u.gUnitCfgFlags, 1);
  EXPECT_FALSE(unknown.f.mnuRack.Checked());

  // Project 139 has no word to read.
  Bench fbdc;
  fbdc.u.gProjectID = 139;
  fbdc.first.InitUnitCfg();
  EXPECT_EQ(fbdc.IndexOf("YM?"), -1);
}

TEST(PanelForms, DisableFormInItsOrder) {
  Bench b;
  b.first.EnableForm();
  for (ui::Control* c : b.f.Controls()) c->SetEnabled(true);
  b.f.mnuAutoClrBUC.SetChecked(true);
  b.v.mEnterHandled = true;
  std::vector<std::string> order;
  b.f.AddObserver([&](ui::Control* c) {
    if (c && !c->Enabled() && std::find(order.begin(), order.end(), c->Name()) == order.end())
      order.push_back(c->Name());
  });
  b.first.DisableForm();

  const std::vector<std::string> expected = {
      "txtPN",           "txtSN",           "txtAdr",           "txtDateTime",
      "txtAtnDB",        "txtAtnCnt",       "UpDown1",          "UpDown2",
      "UpDown3",         "UpDown4",         "txtLinAmp",        "txtLinPhase",
      "cmbWgCfg",        "cmbRfBand",       "mnuCalTables(0)",  "mnuCalTables(1)",
      "mnuCalTables(2)", "mnuCalTables(3)", "mnuCalTables(4)",  "mnuCalTables(5)",
      "mnuCalTables(6)", "mnuCalTables(7)", "txtPSHours",       "txtXmtHours",
      "txtConstLvl",     "cmbWgSw1",        "cmbWgSw2",         "chkAutoMode",
      "chkPS",           "chkRFI",          "chkConstPwr",      "txtFhiLvl",
      "txtFloLvl",       "txtRhiLvl",       "mnuPsVset",        "cmbFhiTripType",
      "cmbFloTripType",  "cmbRhiTripType",  "mnuAtnCal",        "mnuLoadFile",
      "mnuSaveAs",       "mnuMfgInfo",      "mnuISense",        "mnuDnldFltLog",
      "mnuFaultLog",     "mnuRRfOffset",    "mnuFltAlm",        "Command7",
      "mnu2ndUmbilical", "mnuEnetCfg",      "mnuMaxPwrLvl",     "mnuAmpCom",
      "mnuRfBandCfg",    "mnuStartupCfg",   "mnuClrHrs",        "mnuWatts",
      "btnFaultReset",   "mnuHtrStby",      "mnuSumFltTest",    "mnuAutoClrBUC",
      "mnuGainBal",      "mnuModelCfgPN",   "mnuTempTripLevels"};
  EXPECT_EQ(order, expected);
  EXPECT_EQ(DisabledControls(b.f), std::set<std::string>(expected.begin(), expected.end()));
  EXPECT_FALSE(b.f.mnuAutoClrBUC.Checked());
  EXPECT_TRUE(b.f.mnuUseEnet.Enabled());
  EXPECT_FALSE(b.v.mEnterHandled);
  for (const ui::MenuItem* m :
       {&b.f.mnuHtrStby, &b.f.mnuWgArcTest, &b.f.mnuRfiInvert, &b.f.mnulcBucSetup,
        &b.f.mnuReturnLoss, &b.f.mnuAutoHVDisable, &b.f.mnuTrendLogs})
    EXPECT_FALSE(m->Visible()) << m->Name();
}

TEST(PanelForms, EnableFormLeavesEntriesToTheirOwners) {
  Bench b;
  b.first.EnableForm();
  // Everything the panel's start turned off is back, except what other
  // steps own (the heater standby entry and the go-to-power button come
  // with the first read), the reverse and drive calibration tables, and
  // mnuFltAlm for good.
  const std::set<std::string> stillOff = {"cmbRfBand",       "mnuPsVset",       "mnuAtnCal",
                                          "mnuMaxPwrLvl",    "mnuGainBal",      "mnuFltAlm",
                                          "mnuCalTables(2)", "mnuCalTables(3)", "mnuCalTables(6)",
                                          "mnuCalTables(7)", "btnGoToPwr",      "mnuHtrStby"};
  EXPECT_EQ(DisabledControls(b.f), stillOff);
  EXPECT_FALSE(b.f.mnuTrendLogs.Visible());

  // A hidden fault log entry, or a hidden Ethernet entry, is passed over.
  Bench hidden;
  hidden.f.mnuFaultLog.SetVisible(false);
  hidden.f.mnuUseEnet.SetVisible(false);
  hidden.v.gHasTrendLog = true;
  hidden.first.EnableForm();
  EXPECT_FALSE(hidden.f.mnuFaultLog.Enabled());
  EXPECT_FALSE(hidden.f.mnuEnetCfg.Enabled());
  EXPECT_TRUE(hidden.f.mnuTrendLogs.Visible());
}

TEST(PanelForms, ClearFormEmptiesThePanelButNotTheAlarmPlaceholder) {
  Bench b;
  ScriptTube127(b.s);
  b.s.Answer("PO?", "PO159.3");
  b.s.Answer(".?B1", ".B1Ku,14.00");
  b.s.Answer("T?", "TKu,14.00");
  b.first.FirstTimeRead();
  ASSERT_EQ(b.v.gMaxPowerLevel, "59.3");
  ASSERT_EQ(b.v.gBandNames[1], "Ku");
  b.f.NoAlarms.SetVisible(true);
  b.f.NoFaults.SetVisible(true);
  b.f.txtFdBm.SetText("55.0");
  b.f.mnuLEDMode.SetChecked(true);
  std::vector<bool> guardedClicks;
  b.f.chkPS.Click = [&] { guardedClicks.push_back(b.st.gInPanelUpdate); };

  b.first.ClearForm();
  EXPECT_TRUE(b.f.NoAlarms.Visible());  // no clearing step hides it
  EXPECT_FALSE(b.f.NoFaults.Visible());
  EXPECT_FALSE(b.f.Label31.Visible());
  EXPECT_EQ(b.f.Caption(), "AmpDesk Control Utility");
  EXPECT_TRUE(b.st.gInPanelUpdate);
  EXPECT_FALSE(b.st.gInletTemp);
  EXPECT_FALSE(b.s.comms.gFirstReadDone);
  for (const ui::TextBox* t : {&b.f.txtPN, &b.f.txtSN, &b.f.txtFrmRev, &b.f.txtCplDate, &b.f.txtAdr,
                               &b.f.txtFdBm, &b.f.txtConstLvl, &b.f.txtTemp})
    EXPECT_EQ(t->Text(), "") << t->Name();
  EXPECT_EQ(b.f.cmbRfBand.ListIndex(), -1);
  EXPECT_EQ(b.f.chkPS.Value(), 0);
  ASSERT_EQ(guardedClicks.size(), 1u);  // the check box was on; its Click ran silenced
  EXPECT_TRUE(guardedClicks[0]);
  EXPECT_FALSE(b.f.mnuLEDMode.Visible() || b.f.mnuLEDMode.Checked());
  // The descriptor forgets the unit; the next read starts from nothing.
  EXPECT_FALSE(b.u.gIsProject127);
  EXPECT_EQ(b.u.gFWPartNumber, "");
  EXPECT_EQ(b.v.gMaxPowerLevel, "-1");
  EXPECT_EQ(b.v.gBandNames[1], "");
}

}  // namespace
}  // namespace amp
