// The attenuation and linearizer fields and their arrows: which keys pass,
// what Enter, leaving a field and each arrow send, the range rules that
// differ between a field and its arrows, and the one Enter that stops all
// resending on leaving.
#include <gtest/gtest.h>

#include "panel_rig.h"

namespace amp {
namespace {

using test::PowerControlsRig;

class Attenuation : public ::testing::Test {
 protected:
  PowerControlsRig r;
};

TEST_F(Attenuation, FieldPassesDigitsPointAndBackspaceOnly) {
  for (int k : {int{'0'}, int{'9'}, int{'.'}, 8}) EXPECT_EQ(r.Key(r.f.txtAtnDB, k), k);
  for (int k : {int{'a'}, int{'-'}, int{' '}, int{'+'}, int{','}})
    EXPECT_EQ(r.Key(r.f.txtAtnDB, k), 0);
  for (ui::TextBox* box : {&r.f.txtLinAmp, &r.f.txtLinPhase}) {
    EXPECT_EQ(r.Key(*box, '7'), '7');
    EXPECT_EQ(r.Key(*box, '.'), 0);  // the linearizer takes whole numbers
  }
  EXPECT_TRUE(r.s.sent.empty());
}

TEST_F(Attenuation, PastedNegativeValuePutsBackTheUnitsAttenuation) {
  r.s.Answer("?A", "?12.25");
  r.f.txtAtnDB.SetText("-3");
  r.atn.SetAtndB();
  EXPECT_EQ(r.s.sent, (std::vector<std::string>{"?A"}));
  EXPECT_EQ(r.f.txtAtnDB.Text(), "12.3");
}

TEST_F(Attenuation, OneEnterStopsResendOnLeavingEveryFieldUntilTheFormIsDisabled) {
  r.f.txtAtnDB.SetText("5.0");
  r.Leave(r.f.txtAtnDB);  // no Enter yet: leaving sends
  r.f.txtLinPhase.SetText("12");
  r.Leave(r.f.txtLinPhase);
  EXPECT_EQ(r.s.sent, (std::vector<std::string>{"K5.0", "Pz12"}));

  r.TypeEnter(r.f.txtLinAmp, "100");
  r.s.sent.clear();
  r.f.txtAtnDB.SetText("6.0");
  r.Leave(r.f.txtAtnDB);
  r.Leave(r.f.txtLinAmp);
  r.Leave(r.f.txtLinPhase);
  r.Leave(r.f.txtAtnDB);
  EXPECT_TRUE(r.s.sent.empty());

  r.first.DisableForm();
  r.Leave(r.f.txtAtnDB);
  EXPECT_EQ(r.s.sent, (std::vector<std::string>{"K6.0"}));
}

TEST_F(Attenuation, EnterOutOfRangeShowsTheBoxAndDoesNotStopResending) {
  r.TypeEnter(r.f.txtLinAmp, "4096");
  ASSERT_EQ(r.s.dialogs.boxes.size(), 1u);
  EXPECT_EQ(r.s.dialogs.boxes[0].title, "Parameter Range Error");
  EXPECT_EQ(r.s.dialogs.boxes[0].text, "Value out of range.");
  EXPECT_EQ(r.s.dialogs.boxes[0].icon, MsgIcon::Exclamation);
  EXPECT_EQ(r.f.txtLinAmp.Text(), "4096");
  EXPECT_TRUE(r.s.sent.empty());
  r.Leave(r.f.txtLinAmp);  // the same test on leaving, in silence
  EXPECT_TRUE(r.s.sent.empty());
  EXPECT_EQ(r.s.dialogs.boxes.size(), 1u);
  r.f.txtLinAmp.SetText("4095");
  r.Leave(r.f.txtLinAmp);
  EXPECT_EQ(r.s.sent, (std::vector<std::string>{"PZ4095"}));
}

TEST_F(Attenuation, LinearizerArrowsReachOneMoreThanTheFieldAccepts) {
  r.TypeEnter(r.f.txtLinAmp, "007");  // the amplitude keeps leading zeros, the phase not
  r.TypeEnter(r.f.txtLinPhase, "007");
  r.f.txtLinAmp.SetText("4095");
  r.f.UpDown3.UpClick();
  EXPECT_EQ(r.f.txtLinAmp.Text(), "4096");
  r.f.UpDown3.UpClick();
  EXPECT_EQ(r.f.txtLinAmp.Text(), "4096");
  r.f.txtLinPhase.SetText("1");
  r.f.UpDown4.DownClick();
  r.f.UpDown4.DownClick();
  EXPECT_EQ(r.f.txtLinPhase.Text(), "0");
  r.f.txtLinPhase.SetText("0010");
  r.f.UpDown4.UpClick();
  EXPECT_EQ(r.s.sent, (std::vector<std::string>{"PZ007", "Pz7", "PZ4096", "Pz0", "Pz11"}));
  EXPECT_TRUE(r.s.dialogs.boxes.empty());
}

TEST_F(Attenuation, UpArrowStepsTheHeldPowerWhileConstantPowerIsOn) {
  r.v.gUsedBmTripLevels = true;
  r.SetHeld(r.f.chkConstPwr, 1);
  r.s.Answer("G?", "G40.1");
  r.f.txtConstLvl.SetText("40.0");
  r.f.txtAtnDB.SetText("10.0");
  r.f.UpDown1.UpClick();
  EXPECT_EQ(r.s.sent, (std::vector<std::string>{"GM40.1", "G?"}));
  EXPECT_EQ(r.f.txtConstLvl.Text(), "40.1");
  EXPECT_EQ(r.f.txtAtnDB.Text(), "10.0");

  // An empty level is 0, which drops constant power without a word.
  r.s.sent.clear();
  r.f.txtConstLvl.SetText("");
  r.f.UpDown1.DownClick();
  EXPECT_EQ(r.f.chkConstPwr.Value(), 0);
  EXPECT_TRUE(r.s.sent.empty());
  EXPECT_TRUE(r.s.dialogs.boxes.empty());
}

// ------------------------------------------------------- Attenuator count

TEST_F(Attenuation, CountFieldIsReadOnlyExceptOnTheDownconverter) {
  for (int k : {int{'5'}, 8, 13}) EXPECT_EQ(r.Key(r.f.txtAtnCnt, k), 0);
  r.f.txtAtnCnt.SetText("12");
  r.Leave(r.f.txtAtnCnt);
  r.f.UpDown2.UpClick();
  EXPECT_TRUE(r.s.sent.empty());
  EXPECT_EQ(r.f.txtAtnCnt.Text(), "12");
}

TEST_F(Attenuation, DownconverterCountFieldAndArrows) {
  r.v.gIsFBDCUnit = true;
  EXPECT_EQ(r.Key(r.f.txtAtnCnt, '.'), '.');
  r.TypeEnter(r.f.txtAtnCnt, "12.25");
  EXPECT_EQ(r.s.sent, (std::vector<std::string>{"P/12.25"}));
  EXPECT_EQ(r.f.txtAtnCnt.Text(), "12.3");

  r.v.mEnterHandled = false;
  r.TypeEnter(r.f.txtAtnCnt, "5000");
  EXPECT_EQ(r.BoxTitles(), (std::vector<std::string>{"Parameter Range Error"}));
  EXPECT_EQ(r.f.txtAtnCnt.Text(), "5000");
  r.Leave(r.f.txtAtnCnt);  // out of range and still not handled: silent
  EXPECT_EQ(r.s.sent.size(), 1u);

  // The arrows have no range test at all.
  r.f.UpDown2.UpClick();
  EXPECT_EQ(r.f.txtAtnCnt.Text(), "5000.1");
  r.f.txtAtnCnt.SetText("0");
  r.f.UpDown2.DownClick();
  EXPECT_EQ(r.s.sent, (std::vector<std::string>{"P/12.25", "P/5000.1", "P/-0.1"}));
}

}  // namespace
}  // namespace amp
