// The configuration dialogs, the Configuration menu's switches and the
// command console, over a scripted unit.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "control/command_console.h"
#include "control/config_switches.h"
#include "control/limit_dialogs.h"
#include "control/upconverter_dialog.h"
#include "panel_rig.h"

namespace amp::test {
namespace {

using Sent = std::vector<std::string>;

struct ConfigRig : PanelRig {
  UpconverterDialog buc{ctx};
  LimitDialogs limits{ctx};
  ConfigSwitches switches{ctx};
  CommandConsole console{ctx};
  ConfigRig() {
    buc.Wire();
    limits.Wire();
    switches.Wire();
    console.Wire();
    f.Timer1.SetTimerEnabled(true);
  }
  void Open(ui::Form& form) {
    form.SetLoaded(true);
    form.Load();
  }
};

TEST(UpconverterDialog, AdjustResultFallsOnTheHalfDecibelGridCutDown) {
  const std::vector<std::pair<double, double>> rows = {{12.34, 12.0}, {12.7, 12.5}, {31.9, 31.5},
                                                       {0.25, 0.0},   {0.49, 0.5},  {0.75, 0.5},
                                                       {-1.3, -1.0}};
  for (const auto& [in, out] : rows)
    EXPECT_DOUBLE_EQ(UpconverterDialog::AdjustResult(in), out) << in;
}

TEST(UpconverterDialog, FieldsClampAndStepsStopWithoutABox) {
  ConfigRig r;
  r.v.gBucAttenuation = 0.0f;
  r.v.gBucMaxAtten = 30.0f;
  r.v.gBucMode = 1;
  ui::FrmLcBucSetup& d = r.buc.frmlcBucSetup;
  r.Open(d);
  EXPECT_TRUE(r.s.sent.empty()) << "opening sends nothing";
  EXPECT_TRUE(d.Timer1.TimerEnabled());
  r.Leave(d.txtlcBucA);  // an untouched field sends nothing on leaving
  r.TypeEnter(d.txtlcBucO, "40");
  r.TypeEnter(d.txtlcBucO, "-40");
  r.TypeEnter(d.txtlcBucA, "-12.7");  // the minus is dropped here
  r.TypeEnter(d.txtlcBucA, "40");     // beyond the unit's maximum
  r.TypeEnter(d.txtlcBucS, "-2a0");
  d.UpDown1.DownClick();  // 30.0 -> 29.5
  r.v.gBucAttenuation = 0.0f;
  d.UpDown1.DownClick();
  r.v.gBucAttenuation = 31.5f;
  d.UpDown1.UpClick();
  EXPECT_EQ(r.s.sent, (Sent{"PBCO31.5", "PBCO-31.5", "PBCA12.5", "PBCA30.0", "PBCS-20.0",
                            "PBCA29.5", "PBCA0.0", "PBCA31.5"}));
  EXPECT_EQ(d.txtlcBucA.Text(), "31.5");
  EXPECT_TRUE(r.s.dialogs.boxes.empty());
}

TEST(UpconverterDialog, LiveReadingsOnlyWhileEnabledAndOpen) {
  ConfigRig r;
  r.v.gBucMode = 1;
  r.u.gUnitCfgFlags = 1;
  r.s.Answer("1", "1");
  r.s.Answer("PBCP?", "PBCP-20.5");
  r.s.Answer("PBCI?", "PBCI1.5");
  r.s.Answer("PBCT?", "PBCT38.5");
  ui::FrmLcBucSetup& d = r.buc.frmlcBucSetup;
  r.Open(d);
  r.buc.Timer1_Timer();
  EXPECT_TRUE(r.s.sent.empty()) << "the upconverter is not in use";
  d.chklcBucEn.SetValue(1);
  // An offset entered while a reading waits for its reply goes out after it.
  auto unitSide = r.s.port.onWrite;
  r.s.port.onWrite = [&r, &d, unitSide](const std::string& frame) {
    unitSide(frame);
    if (frame.find("PBCP?") != std::string::npos) r.TypeEnter(d.txtlcBucO, "5");
  };
  r.buc.Timer1_Timer();
  EXPECT_EQ(r.s.sent, (Sent{"YM1025", "1", "PBCP?", "PBCI?", "PBCT?", "PBCO5.0"}));
  EXPECT_EQ(d.txtlcBucPwr.Text(), "-20.5");
  EXPECT_EQ(d.txtlcBucIdeal.BackColor(), ui::QBColor(12));
  d.btnOK.Click();
  EXPECT_FALSE(d.Timer1.TimerEnabled());
  r.s.sent.clear();
  r.buc.Timer1_Timer();
  EXPECT_TRUE(r.s.sent.empty());
}

TEST(ConfigSwitches, ConfigurationWordSensesAndTheUnguardedTests) {
  ConfigRig r;
  r.u.gUnitCfgFlags = 2 | 512;
  r.f.mnuRack.SetChecked(true);
  r.f.mnu2ndUmbilical.SetChecked(true);
  r.f.mnuAutoClrBUC.SetChecked(true);
  r.f.mnuRack.Click();          // checked: sets bit 1
  r.f.mnu2ndUmbilical.Click();  // checked: clears bit 2
  r.f.mnuAutoClrBUC.Click();    // checked: clears bit 512
  r.f.mnuRack.Click();          // now unchecked: clears bit 1
  EXPECT_EQ(r.s.sent, (Sent{"YM515", "YM513", "YM1", "YM0"}));
  EXPECT_TRUE(r.f.mnuRack.Checked());
  EXPECT_FALSE(r.f.mnu2ndUmbilical.Checked());

  r.s.sent.clear();
  r.st.gRemoteMode = false;
  r.f.mnuRack.Click();
  r.f.mnuWgArcTest.Click();
  r.f.mnuSumFltTest.Click();
  EXPECT_EQ(r.s.sent, (Sent{"PCT", "PCS"}));
  EXPECT_EQ(r.BoxTitles(), Sent{"Communication Error"});
}

TEST(ConfigSwitches, InputBoxesSendOnlyANumberAndThePollResumes) {
  ConfigRig r;
  r.v.gReturnLoss = 12.0f;
  r.f.mnuReturnLoss.Click();  // cancelled
  r.s.dialogs.inputs = {"abc", "15"};
  r.f.mnuReturnLoss.Click();
  r.f.mnuReturnLoss.Click();
  r.v.gRevRFOffset = -100.0f;
  r.f.mnuRRfOffset.Click();
  EXPECT_EQ(r.s.sent, Sent{"PS15.0"});
  EXPECT_EQ(r.BoxTitles(), Sent{"Reverse RF Offset"});
  EXPECT_EQ(r.s.dialogs.prompts[0],
            "Return Loss Level (dB)|Enter New Return Loss Value (dB)\r\n\r\nCurrent Value: 12.0|");
  EXPECT_TRUE(r.f.Timer1.TimerEnabled());
}

TEST(LimitDialogs, TemperatureTripsFallBackToTheParameter) {
  for (const bool pic : {false, true}) {
    ConfigRig r;
    r.u.gPICProcessor = pic;
    r.v.gTempFaultLevel = "80";
    r.v.gTempAlarmLevel = "70";
    r.s.Refuse("PBKF85");
    r.s.dialogs.onModal = [&r](ui::Form&) {
      ui::FrmTempLimits& d = r.limits.frmTempLimits;
      EXPECT_TRUE(r.s.sent.empty()) << "opening sends nothing";
      r.Type(d.txtFltTripLvl, "8x5");
      r.Enter(d.txtFltTripLvl);  // Enter is dropped: only OK sends
      d.btnOK.Click();
    };
    r.f.mnuTempTripLevels.Click();
    EXPECT_EQ(r.s.sent, pic ? Sent{".P4 85"} : (Sent{"PBKF85", ".P136 85"}));
    EXPECT_TRUE(r.f.Timer1.TimerEnabled());
  }
}

TEST(LimitDialogs, PowerLimitSendsOnlyWhatChanged) {
  ConfigRig r;
  r.st.gDisplayWatts = true;
  r.v.gMaxPowerLevel = "46.53";  // 45.0 W as Load shows it
  r.v.gMaxPowerFault = "2.0";
  ui::FrmPwrLimit& d = r.limits.frmPwrLimit;
  r.s.dialogs.onModal = [&d](ui::Form&) { d.cmdOK.Click(); };
  r.f.mnuMaxPwrLvl.Click();
  EXPECT_TRUE(r.s.sent.empty());
  EXPECT_EQ(d.Text1.Text(), "45.0");

  r.st.gDisplayWatts = false;
  r.s.dialogs.onModal = [&r, &d](ui::Form&) {
    r.Type(d.Text1, "45");
    d.Check1.SetValue(1);
    d.cmdOK.Click();
  };
  r.f.mnuMaxPwrLvl.Click();
  EXPECT_EQ(r.s.sent, (Sent{"PO45.0", "PO1"}));
}

TEST(LimitDialogs, PowerSaveOutsideRemoteModeClosesWithoutSending) {
  ConfigRig r;
  r.v.gPowerSaveOn = 0;
  r.v.gPowerSaveLevel = 3;
  ui::FrmPowerSave& d = r.limits.frmPowerSave;
  r.s.dialogs.onModal = [&r, &d](ui::Form&) {
    d.cmbPowerLevel.SetListIndex(7);
    d.chkPowerMode.SetValue(1);
    r.st.gRemoteMode = false;
    d.cmdOK.Click();
  };
  r.f.mnuPowerSave.Click();
  EXPECT_TRUE(r.s.sent.empty());
  EXPECT_EQ(r.BoxTitles(), Sent{"NOT REMOTE MODE"});
  EXPECT_FALSE(d.Loaded());
}

TEST(CommandConsole, HistoryWithoutRepeatsAndLongRepliesSplitAtTheTop) {
  ConfigRig r;
  r.s.Answer("?A", "A55.0");
  r.s.Answer("?Z", std::string(130, 'z'));
  r.s.Refuse("K99");
  ui::FrmCmdLine& d = r.console.frmCmdLine;
  r.s.dialogs.onModal = [&r, &d](ui::Form&) {
    for (const char* cmd : {"?A", "?A", "K99", "?Z"}) {
      d.cmbCmd.SetText(cmd);
      int enter = 13;
      d.cmbCmd.KeyPress(enter);
    }
    d.cmbCmd.SetListIndex(0);  // choosing from the history sends nothing
    d.btnClose.Click();
  };
  r.f.mnuCmdLine.Click();
  EXPECT_EQ(r.s.sent, (Sent{"?A", "?A", "K99", "?Z"}));
  EXPECT_EQ(d.cmbCmd.Items(), (Sent{"?A", "K99", "?Z"}));
  EXPECT_EQ(d.cmbCmd.Text(), "?A");
  // 141 characters: "[ACK]" + "A" + 130 z + "[ETX]".
  ASSERT_EQ(d.List1.ListCount(), 4);
  EXPECT_EQ(d.List1.List(0), "[ACK]A" + std::string(94, 'z'));
  EXPECT_EQ(d.List1.List(1), std::string(36, 'z') + "[ETX]");
  EXPECT_TRUE(r.f.Timer1.TimerEnabled());
}

TEST(ConfigDialogs, OpeningAnyDialogSendsNothingAndThePollResumes) {
  ConfigRig r;
  r.v.gBucMode = 2;
  r.v.gStartupMode = 1;
  r.v.gPowerSaveLevel = 2;
  for (ui::MenuItem* entry : {&r.f.mnulcBucSetup, &r.f.mnuMaxPwrLvl, &r.f.mnuTempTripLevels,
                              &r.f.mnuPowerSave, &r.f.mnuGainBal, &r.f.mnuStartupCfg,
                              &r.f.mnuCmdLine, &r.f.mnuFltAlm, &r.f.mnuISense, &r.f.mnuPsVset}) {
    SCOPED_TRACE(entry->Name());
    bool pollStopped = false;
    r.s.dialogs.onModal = [&](ui::Form&) { pollStopped = !r.f.Timer1.TimerEnabled(); };
    entry->Click();
    EXPECT_TRUE(r.SetCommands().empty());
    EXPECT_TRUE(r.f.Timer1.TimerEnabled());
    EXPECT_FALSE(r.st.gInPanelUpdate);
    if (!r.s.dialogs.modals.empty()) {
      EXPECT_TRUE(pollStopped);
    }
    r.s.dialogs.modals.clear();
  }
  EXPECT_FALSE(r.buc.frmlcBucSetup.Timer1.TimerEnabled());
}

}  // namespace
}  // namespace amp::test
