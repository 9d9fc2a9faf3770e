#include "control/trip_level_controls.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "panel_rig.h"

namespace amp::test {
namespace {

constexpr int kBackspace = 8;
constexpr int kEnter = 13;
constexpr int kFault = 1;
constexpr int kAlarm = 2;

const std::vector<std::string> kNothing;

struct TripTest : ::testing::Test {
  BandTripRig r;
  TripLevelControls trips{r.ctx};
  void SetUp() override { trips.Wire(); }
  void Enter(ui::TextBox& box) { r.Key(box, kEnter); }
};

// ------------------------------------------------------------ focus and poll

TEST_F(TripTest, PollSparesTheLineWhoseControlsHaveTheFocus) {
  r.s.Answer("?HLR", "?F57.0A40.0D47.0");
  r.f.txtFloLvl.SetText("4");
  r.f.cmbFloTripType.GotFocus();
  r.setup.InitRFTripLevels();
  EXPECT_EQ(r.f.txtFloLvl.Text(), "4");
  EXPECT_EQ(r.f.cmbFloTripType.ListIndex(), -1);
  EXPECT_EQ(r.f.txtFhiLvl.Text(), "57.0");
  EXPECT_EQ(r.f.cmbFhiTripType.ListIndex(), kFault);
  EXPECT_EQ(r.f.txtRhiLvl.Text(), "47.0");

  // Leaving and the next poll run end to end on the operator's panel.
  // The poll moved three combos; none of their Clicks sent a set.
  EXPECT_EQ(r.SetCommands(), kNothing);
  EXPECT_FALSE(r.st.gInPanelUpdate);
}

TEST_F(TripTest, FocusFlagsBelongToTheirOwnLine) {
  r.f.txtRhiLvl.GotFocus();
  EXPECT_TRUE(r.v.mRhiHasFocus);
  EXPECT_FALSE(r.v.mFhiHasFocus || r.v.mFloHasFocus);
  r.f.cmbRhiTripType.LostFocus();  // either control's leaving clears it
  EXPECT_FALSE(r.v.mRhiHasFocus);
  r.f.cmbFhiTripType.GotFocus();
  EXPECT_TRUE(r.v.mFhiHasFocus);
  r.f.txtFhiLvl.LostFocus();
  EXPECT_FALSE(r.v.mFhiHasFocus);
}

// ------------------------------------------------------------- key filter

TEST_F(TripTest, LevelFieldTakesOnlyANumber) {
  for (int k : {kBackspace, int{'4'}, int{'5'}, int{'.'}, int{'5'}})
    EXPECT_EQ(r.Key(r.f.txtFhiLvl, k), k);
  for (int k : {'a', '-', '+', ' ', 'E', ','}) EXPECT_EQ(r.Key(r.f.txtFhiLvl, k), 0) << k;
  EXPECT_EQ(r.f.txtFhiLvl.Text(), "45.5");
  EXPECT_FALSE(r.v.mEnterHandled);

  // Enter on an empty field sends nothing, yet counts as handled.
  EXPECT_EQ(r.Key(r.f.txtRhiLvl, kEnter), 0);
  EXPECT_TRUE(r.v.mEnterHandled);
  EXPECT_TRUE(r.s.sent.empty());
  EXPECT_TRUE(r.s.dialogs.boxes.empty());
}

// --------------------------------------------------------------- dBm/Watts

TEST_F(TripTest, LevelGoesOutInDbmOnlyWhileTheUnitAndThePanelUseDbm) {
  r.s.Answer("?HLR", "?F45.0D12.0D47.0");

  // Both in dBm: the "M" form.
  r.v.gUsedBmTripLevels = true;
  r.Show(r.f.cmbFhiTripType, kFault);
  r.Type(r.f.txtFhiLvl, "45");
  Enter(r.f.txtFhiLvl);
  EXPECT_EQ(r.s.sent, (std::vector<std::string>{"MFM45.0", "?HLR"}));
  EXPECT_EQ(r.f.txtFhiLvl.Text(), "45.0");  // read back from the unit

  // Watts showing: Watts and no "M", although the unit takes dBm.
  r.s.sent.clear();
  r.st.gDisplayWatts = true;
  r.f.txtFloLvl.SetText("12.5");
  r.Show(r.f.cmbFloTripType, 0);
  Enter(r.f.txtFloLvl);
  EXPECT_EQ(r.SetCommands(), std::vector<std::string>{"LD12.5"});

  // A unit that takes Watts only: a dBm level is converted.
  r.s.sent.clear();
  r.st.gDisplayWatts = false;
  r.v.gUsedBmTripLevels = false;
  r.f.txtRhiLvl.SetText("50");
  r.Show(r.f.cmbRhiTripType, kAlarm);
  Enter(r.f.txtRhiLvl);
  EXPECT_EQ(r.SetCommands(), std::vector<std::string>{"OA100.0"});
  EXPECT_TRUE(r.s.dialogs.boxes.empty());
}

TEST_F(TripTest, TypeChangeSendsTheStandingLevelWithTheNewLetters) {
  r.v.gUsedBmTripLevels = true;
  r.f.txtRhiLvl.SetText("47.5");
  r.f.cmbRhiTripType.SetListIndex(kFault);
  r.f.cmbRhiTripType.SetListIndex(0);
  EXPECT_EQ(r.SetCommands(), (std::vector<std::string>{"OFM47.5", "ODM47.5"}));

  // An empty level: choosing a type sends nothing.
  r.s.sent.clear();
  r.f.cmbFloTripType.SetListIndex(kFault);
  EXPECT_TRUE(r.s.sent.empty());
  EXPECT_TRUE(r.s.dialogs.boxes.empty());
}

// ------------------------------------------------------------ range boxes

TEST_F(TripTest, LevelOutOfRangeShowsBothBoxesAndSendsNothing) {
  r.v.gUsedBmTripLevels = true;
  r.f.txtFloLvl.SetText("65");
  Enter(r.f.txtFloLvl);
  // Every line's box carries the forward-high title.
  EXPECT_EQ(r.BoxTitles(),
            (std::vector<std::string>{"Range Error", "Range Error - Forward High RF Trip"}));
  const std::string& text = r.s.dialogs.boxes[1].text;
  EXPECT_EQ(text.rfind("Value out of Range", 0), 0u) << text;
  // The band's own floor, without the margin of the first box.
  EXPECT_NE(text.find("Valid Range: 0.1 to 60.0 dBm"), std::string::npos) << text;
  EXPECT_EQ(r.s.dialogs.boxes[1].icon, MsgIcon::Exclamation);
  EXPECT_TRUE(r.s.sent.empty());
  EXPECT_EQ(r.f.txtFloLvl.Text(), "65");  // the operator's text stays

  // A level of 0 is refused in silence by the range rule: only this box.
  r.s.dialogs.boxes.clear();
  r.f.txtRhiLvl.SetText("0");
  Enter(r.f.txtRhiLvl);
  EXPECT_EQ(r.BoxTitles(), std::vector<std::string>{"Range Error - Forward High RF Trip"});

  // In Watts the box gives the band in Watts, again from the band's floor.
  r.s.dialogs.boxes.clear();
  r.st.gDisplayWatts = true;
  r.v.gFwdMindBm = 40.0f;
  r.f.txtFhiLvl.SetText("1500");
  Enter(r.f.txtFhiLvl);
  ASSERT_EQ(r.s.dialogs.boxes.size(), 2u);
  EXPECT_NE(r.s.dialogs.boxes[1].text.find("Valid Range: 10.0 to 1000.0 Watts"), std::string::npos)
      << r.s.dialogs.boxes[1].text;
  EXPECT_TRUE(r.s.sent.empty());
}

// ---------------------------------------------------------------- refusal

TEST_F(TripTest, RefusedSetIsSilentAndTheLineSnapsBack) {
  r.v.gUsedBmTripLevels = true;
  r.s.Refuse("MAM52.0");
  r.s.Answer("?HLR", "?F50.0D12.0D47.0");
  r.f.txtFhiLvl.SetText("52");
  r.f.cmbFhiTripType.SetListIndex(kAlarm);
  EXPECT_EQ(r.Sent("MAM52.0"), 1);
  EXPECT_TRUE(r.s.dialogs.boxes.empty());
  EXPECT_EQ(r.f.txtFhiLvl.Text(), "50.0");
  EXPECT_EQ(r.f.cmbFhiTripType.ListIndex(), kFault);
  // Writing the unit's type back did not send it again.
  EXPECT_EQ(r.SetCommands(), std::vector<std::string>{"MAM52.0"});
}

// ------------------------------------------------- first-read helpers

TEST(TripSetup, DbmLevelsDependOnUnitAndFirmware) {
  BandTripRig r;
  struct Case {
    int32_t project;
    bool tube;
    int fw;
    bool dBm;
  };
  const Case cases[] = {
      {-1, false, 900, false},  // no unit
      {99, true, 100, true},    // named units take dBm whatever their firmware
      {510, false, 1, true},   {40, true, 533, false},  // tube units from firmware 534
      {40, true, 534, true},   {30, false, 7, false},   // these three from firmware 8
      {93, false, 8, true},    {102, false, 0, true},
      {107, false, 0, true},   {40, false, 260, false},  // the rest from firmware 261
      {40, false, 261, true},
  };
  for (const Case& c : cases) {
    r.u.gProjectID = c.project;
    r.u.gIsTWTA = c.tube;
    r.u.gFWVersion = c.fw;
    EXPECT_EQ(r.setup.CanUsedBmTripLevels(), c.dBm) << c.project << " fw " << c.fw;
  }
}

TEST(TripSetup, FactoryTripsIgnoreTheMarginLeftByTheReadBefore) {
  BandTripRig r;
  r.s.Answer("YFTF?", "YFTF61.5");
  r.s.Answer("YFTR?", "YFTR20.0 ");
  r.s.comms.gRespFields[2] = "5";
  r.setup.InitFactoryTripLevels();
  EXPECT_EQ(r.v.gFactoryFwdTrip, "61.5");
  EXPECT_EQ(r.v.gFactoryRevTrip, "20.0");
  EXPECT_EQ(r.v.gFactoryTripMargin, "0");
}

}  // namespace
}  // namespace amp::test
