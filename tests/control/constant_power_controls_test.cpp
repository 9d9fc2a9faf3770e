// Constant power and go-to-power: the range rule in dBm and in Watts with its
// exact box texts, what is sent on a unit that takes dBm and on one that
// takes Watts, the box that drops back without reaching the unit, and the
// states in which the go-to button keeps quiet.
#include <gtest/gtest.h>

#include "panel_rig.h"

namespace amp {
namespace {

using test::PowerControlsRig;

class ConstantPower : public ::testing::Test {
 protected:
  ConstantPower() {
    r.v.gFwdMindBm = 0.1f;
    r.v.gFwdMaxdBm = 50.0f;
    r.s.Answer("H", "");
    // Transmitter up and unfaulted, as the summary status shows it.
    r.f.Label31.SetCaption("Tx On");
    r.f.Label31.SetVisible(true);
    r.f.Label35.SetVisible(false);
    r.f.Label36.SetVisible(false);
  }
  PowerControlsRig r;
};

TEST_F(ConstantPower, DbmUnitRefusesOneDbAboveTheFloorAndAcceptsTheNextTenth) {
  r.v.gUsedBmTripLevels = true;
  r.SetHeld(r.f.chkConstPwr, 1);
  r.s.Answer("G?", "G1.1");

  r.TypeEnter(r.f.txtConstLvl, "1.0");
  ASSERT_EQ(r.s.dialogs.boxes.size(), 1u);
  EXPECT_EQ(r.s.dialogs.boxes[0].title, "Range Error");
  EXPECT_EQ(r.s.dialogs.boxes[0].text, "Value out of Range\r\n\r\nValid Range: 1.1 to 50.0 dBm");
  EXPECT_EQ(r.s.dialogs.boxes[0].icon, MsgIcon::Exclamation);
  EXPECT_TRUE(r.s.sent.empty());  // not even "H": the unit keeps its level
  EXPECT_EQ(r.f.chkConstPwr.Value(), 0);
  EXPECT_FALSE(r.st.gInPanelUpdate);

  r.SetHeld(r.f.chkConstPwr, 1);
  r.TypeEnter(r.f.txtConstLvl, "1.1");
  EXPECT_EQ(r.s.sent, (std::vector<std::string>{"GM1.1", "G?"}));
  EXPECT_EQ(r.f.txtConstLvl.Text(), "1.1");
  EXPECT_EQ(r.f.chkConstPwr.Value(), 1);
  EXPECT_EQ(r.s.dialogs.boxes.size(), 1u);
}

TEST_F(ConstantPower, WattUnitNeedsOneWattAboveTheFloor) {
  // The box names 1.1 dBm, yet in Watts the floor is about 1.001 W, so a
  // dBm level under 30.1 is refused.
  r.SetHeld(r.f.chkConstPwr, 1);
  r.s.Answer("G?", "G30.1");
  EXPECT_FALSE(r.cp.SetConstPwr(30.0f));
  EXPECT_EQ(r.s.dialogs.boxes.back().text,
            "Value out of Range\r\n\r\nValid Range: 1.1 to 50.0 dBm");
  EXPECT_TRUE(r.s.sent.empty());

  r.SetHeld(r.f.chkConstPwr, 1);
  EXPECT_TRUE(r.cp.SetConstPwr(30.1f));
  EXPECT_EQ(r.s.sent, (std::vector<std::string>{"G1.0", "G?"}));
  EXPECT_EQ(r.f.txtConstLvl.Text(), "30.1");
}

TEST_F(ConstantPower, WattsOnDisplayGiveTheWattRangeAndWattFields) {
  r.st.gDisplayWatts = true;
  r.v.gUsedBmTripLevels = true;  // Watts shown: the plain "G" form all the same
  r.SetHeld(r.f.chkConstPwr, 1);
  r.s.Answer("G?", "G40.0");

  EXPECT_FALSE(r.cp.SetConstPwr(1.0f));
  EXPECT_EQ(r.s.dialogs.boxes.back().text,
            "Value out of Range\r\n\r\nValid Range: 1.0 to 100.0 Watts");
  EXPECT_FALSE(r.cp.SetConstPwr(100.5f));

  r.SetHeld(r.f.chkConstPwr, 1);
  EXPECT_TRUE(r.cp.SetConstPwr(10.0f));
  EXPECT_EQ(r.s.sent, (std::vector<std::string>{"G10.0", "G?"}));
  EXPECT_EQ(r.f.txtConstLvl.Text(), "10.0");  // 40 dBm read back, shown in Watts
}

TEST_F(ConstantPower, EnterWithTheBoxOffChecksTheRangeButSendsNothing) {
  r.v.gUsedBmTripLevels = true;
  r.TypeEnter(r.f.txtConstLvl, "60");
  EXPECT_EQ(r.BoxTitles(), (std::vector<std::string>{"Range Error"}));
  r.TypeEnter(r.f.txtConstLvl, "40");
  EXPECT_TRUE(r.s.sent.empty());
  EXPECT_EQ(r.f.txtConstLvl.Text(), "40");
  EXPECT_EQ(r.BoxTitles().size(), 1u);
}

TEST_F(ConstantPower, CheckingHoldsThePowerPresentNow) {
  r.v.gUsedBmTripLevels = true;
  r.s.Answer("G?", "G45.0");
  r.f.txtFdBm.SetText("45.0");
  r.f.txtConstLvl.SetText("20.0");
  r.f.chkConstPwr.SetValue(1);
  EXPECT_EQ(r.s.sent, (std::vector<std::string>{"GM45.0", "G?"}));
  EXPECT_EQ(r.f.txtConstLvl.Text(), "45.0");

  r.f.chkConstPwr.SetValue(0);
  EXPECT_EQ(r.s.sent.back(), "H");
}

TEST_F(ConstantPower, CheckingBelowTheDetectorRangeUsesTheLevelField) {
  r.v.gUsedBmTripLevels = true;
  r.s.Answer("G?", "G20.0");
  r.f.txtFdBm.SetText("< 10.0");
  r.f.txtConstLvl.SetText("20.0");
  r.f.chkConstPwr.SetValue(1);
  EXPECT_EQ(r.s.sent.front(), "GM20.0");

  // With the field empty the level is 0: the box drops back at once with
  // neither a message nor a command.
  r.s.sent.clear();
  r.SetHeld(r.f.chkConstPwr, 0);
  r.f.txtConstLvl.SetText("");
  r.f.chkConstPwr.SetValue(1);
  EXPECT_EQ(r.f.chkConstPwr.Value(), 0);
  EXPECT_TRUE(r.s.sent.empty());
  EXPECT_TRUE(r.s.dialogs.boxes.empty());
}

TEST_F(ConstantPower, LeavingTheLevelResendsOnlyWhileHeldAndNoEnterWasHandled) {
  r.v.gUsedBmTripLevels = true;
  r.s.Answer("G?", "G33.0");
  r.f.txtConstLvl.SetText("33.0");
  r.Leave(r.f.txtConstLvl);  // box off
  EXPECT_TRUE(r.s.sent.empty());
  r.SetHeld(r.f.chkConstPwr, 1);
  r.Leave(r.f.txtConstLvl);
  EXPECT_EQ(r.s.sent.front(), "GM33.0");

  r.s.sent.clear();
  r.TypeEnter(r.f.txtAtnDB, "3");
  r.s.sent.clear();
  r.Leave(r.f.txtConstLvl);
  EXPECT_TRUE(r.s.sent.empty());
}

TEST_F(ConstantPower, GoToPowerOutOfRangeShowsBothBoxesInDbm) {
  r.st.gDisplayWatts = true;
  r.f.txtConstLvl.SetText("500");
  r.f.btnGoToPwr.RaiseClick();
  EXPECT_EQ(r.BoxTitles(), (std::vector<std::string>{"Range Error", "Range Error - GoTo Power"}));
  EXPECT_EQ(r.s.dialogs.boxes[1].text, "Value out of Range\r\n\r\nValid Range: 1.1 to 50.0 dBm");
  EXPECT_EQ(r.s.dialogs.boxes[1].icon, MsgIcon::Exclamation);

  // A level of 0 or less skips the first box.
  r.s.dialogs.boxes.clear();
  r.f.txtConstLvl.SetText("");
  r.f.btnGoToPwr.RaiseClick();
  EXPECT_EQ(r.BoxTitles(), (std::vector<std::string>{"Range Error - GoTo Power"}));
  EXPECT_TRUE(r.s.sent.empty());
}

TEST_F(ConstantPower, GoToPowerPicksTheFormByTheUnitAlone) {
  r.f.txtConstLvl.SetText("40");
  r.f.btnGoToPwr.RaiseClick();  // Watts unit, dBm shown
  r.v.gUsedBmTripLevels = true;
  r.f.btnGoToPwr.RaiseClick();
  // A dBm unit with Watts shown still gets "EM", carrying the Watt value.
  r.st.gDisplayWatts = true;
  r.f.txtConstLvl.SetText("25");
  r.f.btnGoToPwr.RaiseClick();
  EXPECT_EQ(r.s.sent, (std::vector<std::string>{"E10.0", "EM40.0", "EM25.0"}));
  EXPECT_TRUE(r.s.dialogs.boxes.empty());
}

TEST_F(ConstantPower, GoToPowerKeepsQuietUnlessTheTransmitterIsUpAndUnfaulted) {
  r.v.gUsedBmTripLevels = true;
  r.f.txtConstLvl.SetText("40");
  for (const char* state : {"Standby", "FTD", "Warmup"}) {
    r.f.Label31.SetCaption(state);
    r.f.btnGoToPwr.RaiseClick();
  }
  r.f.Label31.SetCaption("HV On");
  r.f.Label31.SetVisible(false);
  r.f.btnGoToPwr.RaiseClick();
  r.f.Label31.SetVisible(true);
  r.f.Label35.SetVisible(true);  // RF inhibited
  r.f.btnGoToPwr.RaiseClick();
  r.f.Label35.SetVisible(false);
  r.f.Label36.SetVisible(true);  // summary fault
  r.f.btnGoToPwr.RaiseClick();
  r.f.Label36.SetVisible(false);
  r.st.gInPanelUpdate = true;
  r.f.btnGoToPwr.RaiseClick();
  EXPECT_TRUE(r.s.sent.empty());
  EXPECT_TRUE(r.s.dialogs.boxes.empty());

  r.st.gInPanelUpdate = false;
  r.f.btnGoToPwr.RaiseClick();
  EXPECT_EQ(r.s.sent, (std::vector<std::string>{"EM40.0"}));
}

}  // namespace
}  // namespace amp
