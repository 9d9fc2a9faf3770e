// The transmitter, RF inhibit, fault reset and heater controls: what reaches
// the unit, what the panel keeps when the unit is in local mode or refuses,
// and that the panel's own writes never echo back to the unit.
#include <gtest/gtest.h>

#include "panel_rig.h"

namespace amp {
namespace {

using test::PowerControlsRig;

class Transmit : public ::testing::Test {
 protected:
  Transmit() {
    r.u.gProjectID = 10;  // a unit whose RF inhibit state is read back
    r.s.Answer("@", "");
    r.s.Answer("I", "");
    r.s.Answer("J", "");
    r.s.Answer("B", "");
  }
  PowerControlsRig r;
};

TEST_F(Transmit, SwitchingOnPausesThePollAndRefreshesTheUnitsReadouts) {
  r.u.gIsTWTA = true;
  r.s.Answer(".?P54", ".P54 0");
  r.tx.DisableConstPwrInput();
  // Sample the poll timer and what was sent half-way through the wait.
  bool timerDuringWait = true;
  size_t sentDuringWait = 0;
  r.s.pump.After(500, [&] {
    timerDuringWait = r.f.Timer1.TimerEnabled();
    sentDuringWait = r.s.sent.size();
  });
  const int64_t start = r.s.clock.now;

  r.f.chkPS.SetValue(1);

  EXPECT_FALSE(timerDuringWait);
  EXPECT_EQ(sentDuringWait, 1u);  // only "@" before the second is up
  EXPECT_TRUE(r.f.Timer1.TimerEnabled());
  EXPECT_GE(r.s.clock.now - start, 1000);
  EXPECT_TRUE(r.tx.IsTxOn());
  EXPECT_TRUE(r.f.chkConstPwr.Enabled());
  EXPECT_TRUE(r.f.txtConstLvl.Enabled());
  // Tube readouts, then the RF readings, then the inhibit state.
  ASSERT_EQ(r.s.sent.front(), "@");
  const int helix = r.IndexOf("?VI"), fwd = r.IndexOf("?P"), rfi = r.IndexOf(".?P54");
  EXPECT_GT(helix, 0);
  EXPECT_GT(fwd, helix);
  EXPECT_GT(rfi, fwd);
  EXPECT_EQ(rfi, static_cast<int>(r.s.sent.size()) - 1);

  test::PowerControlsRig solid;  // a solid-state unit has no tube readouts
  solid.u.gProjectID = 10;
  solid.s.Answer("@", "");
  solid.s.Answer(".?P54", ".P54 0");
  solid.f.chkPS.SetValue(1);
  EXPECT_EQ(solid.IndexOf("?VI"), -1);
  EXPECT_GT(solid.IndexOf(".?P54"), 0);
}

TEST_F(Transmit, ConstantPowerInputFollowsOnlyAnAcknowledgedSwitchOff) {
  r.SetHeld(r.f.chkPS, 1);
  r.tx.EnableConstPwrInput();

  r.s.Refuse("A");
  r.s.Answer("A", "");  // for the second try
  r.s.Answer(".?P54", ".P54 0");
  r.f.chkPS.SetValue(0);
  EXPECT_EQ(r.Sent("A"), 1);
  EXPECT_EQ(r.f.chkPS.Value(), 0);  // left as the operator set it
  EXPECT_TRUE(r.f.chkConstPwr.Enabled());
  EXPECT_TRUE(r.f.txtConstLvl.Enabled());
  EXPECT_TRUE(r.f.Timer1.TimerEnabled());
  EXPECT_TRUE(r.s.dialogs.boxes.empty());  // a refusal is silent

  r.SetHeld(r.f.chkPS, 1);
  r.f.chkPS.SetValue(0);
  EXPECT_EQ(r.Sent("A"), 2);
  EXPECT_FALSE(r.f.chkConstPwr.Enabled());
  EXPECT_FALSE(r.f.txtConstLvl.Enabled());
  EXPECT_FALSE(r.tx.IsTxOn());
}

TEST_F(Transmit, InhibitReadBackAfterTheTransmitterKeepsBothInStep) {
  // The unit inhibits RF as the transmitter comes on: the read-back checks
  // chkRFI outside any panel update, which sends "I" exactly once.
  r.s.Answer(".?P54", ".P54 1");
  r.f.chkPS.SetValue(1);
  EXPECT_EQ(r.f.chkRFI.Value(), 1);
  EXPECT_EQ(r.Sent("I"), 1);
  EXPECT_EQ(r.Sent("J"), 0);
  EXPECT_EQ(r.s.sent.back(), "I");

  // Unchanged on the next switch: no Click, nothing more.
  r.SetHeld(r.f.chkPS, 0);
  r.f.chkPS.SetValue(1);
  EXPECT_EQ(r.Sent("I"), 1);
}

TEST_F(Transmit, FaultResetRunsWithThePollStoppedAndIgnoresTheEchoGuard) {
  bool timerAtSend = true;
  r.s.port.onWrite = [&, inner = r.s.port.onWrite](const std::string& frame) {
    timerAtSend = r.f.Timer1.TimerEnabled();
    inner(frame);
  };
  r.st.gInPanelUpdate = true;  // a button is never pressed by the program itself
  r.f.btnFaultReset.RaiseClick();
  EXPECT_EQ(r.Sent("B"), 1);
  EXPECT_FALSE(timerAtSend);
  EXPECT_TRUE(r.f.Timer1.TimerEnabled());
}

TEST_F(Transmit, HeaterEntryReassertsItsMarkWhileStandbyToggles) {
  r.f.mnuHeaterState.SetChecked(true);
  r.f.mnuHeaterState.RaiseClick();
  r.f.mnuHeaterState.RaiseClick();
  EXPECT_EQ(r.Sent("PBH1"), 2);
  EXPECT_TRUE(r.f.mnuHeaterState.Checked());
  r.f.mnuHeaterState.SetChecked(false);
  r.f.mnuHeaterState.RaiseClick();
  EXPECT_EQ(r.Sent("PBH0"), 1);
  EXPECT_FALSE(r.f.mnuHeaterState.Checked());

  r.f.mnuHtrStby.RaiseClick();
  EXPECT_TRUE(r.f.mnuHtrStby.Checked());
  r.f.mnuHtrStby.RaiseClick();
  EXPECT_FALSE(r.f.mnuHtrStby.Checked());
  EXPECT_EQ(r.Sent(":1"), 1);
  EXPECT_EQ(r.Sent(":0"), 1);
  EXPECT_EQ(r.s.sent[r.s.sent.size() - 2], ":1");
}

TEST_F(Transmit, AutoRestoreEntrySendsTheInverseOfItsMarkEvenInLocalMode) {
  r.st.gRemoteMode = false;
  r.f.mnuAutoHVDisable.RaiseClick();
  EXPECT_TRUE(r.f.mnuAutoHVDisable.Checked());
  EXPECT_EQ(r.s.sent.back(), "PBA0");
  r.f.mnuAutoHVDisable.RaiseClick();
  EXPECT_FALSE(r.f.mnuAutoHVDisable.Checked());
  EXPECT_EQ(r.s.sent.back(), "PBA1");
  EXPECT_TRUE(r.s.dialogs.boxes.empty());
}

}  // namespace
}  // namespace amp
